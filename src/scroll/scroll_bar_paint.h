/* The faces of scroll bars: from a state to the parts that show, and from the parts to a picture. */
#pragma once

#include "scroll/scroll_bar_geometry.h"
#include "tavixskin/framework/gdi.h"

namespace tavix {

/* What the face of a scroll bar depends on. */
struct ScrollBarState {
    bool enabled = true;
    bool first_arrow_pressed = false;
    bool second_arrow_pressed = false;
    bool thumb_pressed = false;
    bool thumb_fits = true;  // the track is as long as the thumb
};

/* What shows of a scroll bar. Null bitmaps are left out. All art is that of an upright bar. */
struct ScrollBarParts {
    CBitmap* track;
    CBitmap* first_arrow;
    CBitmap* second_arrow;
    bool has_thumb;
    CBitmap* thumb_first;
    CBitmap* thumb_middle;
    CBitmap* thumb_last;
    CSize grip_margin;  // of the end that belongs to a normal thumb, pressed or not
    COLORREF grip_first;
    COLORREF grip_second;
};

ScrollBarParts ScrollBarPartsOf(const ScrollBarState& state);

/*
 * Paints the whole bar over `rects.client`. A horizontal bar shows the art transposed: what is up
 * in it is left on the bar. Without a track its room is black.
 */
void PaintScrollBar(CDC& dc, const ScrollBarRects& rects, bool horizontal, const ScrollBarParts& parts);

/* Paints a size grip on a surface: the background, and the picture at `corner`'s bottom right. */
void PaintSizeGrip(CDC& dc, const RECT& area, const RECT& corner, COLORREF background);

}  // namespace tavix
