/* The arithmetic of a scroll bar: lengths, rectangles, and the way between positions and pixels. */
#pragma once

#include "tavixskin/framework/geometry.h"

namespace tavix {

/*
 * What the arithmetic works on. Any values are safe: results that an int can't hold become the
 * nearest one that it can, and what is no number becomes 0.
 */
struct ScrollBarValues {
    int min = 0;
    int max = 0;
    int page = 0;
    int pos = 0;
    int thumb_len = 0;  // along the bar, in pixels
    int arrow_len = 0;  // of each arrow button
};

/* The parts of a bar that a point can hit. */
enum class ScrollBarPart { None = 0, FirstArrow = 1, SecondArrow = 2, Thumb = 3, Track = 4 };

/* `length` is the bar's own throughout: its client width if it is horizontal, else its height. */
int TrackLength(int length, int arrow_len);

/* Where the thumb of a position starts. Positions before the range start at 0, off the track. */
int PosToPixel(const ScrollBarValues& bar, int length, int pos);
/*
 * The position of a thumb that starts there. Not the exact inverse: with a page it counts one unit
 * of range less.
 */
int PixelToPos(const ScrollBarValues& bar, int length, int pixel);

/* Each keeps the page within the range and the position where a page still fits behind it. */
void SetRange(ScrollBarValues& bar, int min, int max);
void SetPos(ScrollBarValues& bar, int pos);
/* Sets the thumb's length with the page. The result is the page, or -1 for a negative one. */
int SetPage(ScrollBarValues& bar, int length, int page);

struct ScrollBarRects {
    CRect client;
    CRect first_arrow;
    CRect second_arrow;
    CRect thumb;
};

/* Where the thumb starts while nobody drags it. */
int ThumbStart(const ScrollBarValues& bar, int length);
/* The rectangles of a bar whose thumb starts at `thumb_start`. */
ScrollBarRects RectsOf(const ScrollBarValues& bar, const RECT& client, bool horizontal, int thumb_start);
ScrollBarPart HitTest(const ScrollBarRects& rects, const POINT& point);

/*
 * Where the dragged thumb goes when the mouse has moved from `last` to `mouse` along the bar, with
 * the thumb held `grab` pixels from its start. `start` is where it is.
 */
int DraggedThumbStart(const ScrollBarValues& bar, int length, int start, int mouse, int last, int grab);

/* The same rectangle with the axes exchanged. */
inline CRect Transposed(const RECT& r) { return {r.top, r.left, r.bottom, r.right}; }

/* A sum that stays within the range of an int. */
int SaturatedSum(int a, int b);

/* The rectangle larger by that much on all sides. */
CRect Inflated(const RECT& rect, int by);

}  // namespace tavix
