/* Drawing of skin bitmaps. A null bitmap is skipped everywhere. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/*
 * Draws all pixels of the bitmap but those of the key colour, at (left, top) in the bitmap's
 * own size. `right` and `bottom` are accepted and not used. Always 1.
 */
int DrawTransparent(CDC* dc, CBitmap* bitmap, int left, int top, int right, int bottom, COLORREF key);

/*
 * Stretches in height by repeating the middle row; both halves keep their size. The source is
 * cut at its own width. `unused` is accepted and not used. Always 1.
 */
int DrawVerticalStretch(CDC* dc, CBitmap* bitmap, const RECT& rect, COLORREF unused);

/* Each channel scaled by (255 - amount) / 255, rounded; the top byte is 0. */
COLORREF DarkenColor(int amount, COLORREF colour);

/* Copies the bitmap, in its own size, to (x, y). */
void DrawBitmap(CDC& dc, CBitmap* bitmap, int x, int y);

/* Copies the bitmap's top-left part of the rectangle's size into the rectangle. */
void DrawBitmapIn(CDC& dc, CBitmap* bitmap, const RECT& rect);

/*
 * Copies the bitmap, in its own size, to x = from, from + width, ... while x < end, all at y.
 * Only tiles that show in the context's clip box are drawn. The result is the x after the
 * last tile. A bitmap without width draws nothing.
 */
int TileHorizontally(CDC& dc, CBitmap* bitmap, int from, int end, int y);

/* Stretches the whole bitmap over the rectangle. An empty rectangle draws nothing. */
void StretchBitmap(CDC& dc, CBitmap* bitmap, const RECT& rect);

enum class TileAxis { Across, Down };

/*
 * Fills the rectangle along the axis with copies of the bitmap in its own extent, each stretched
 * over the rectangle's other side. The last copy may reach beyond the rectangle's end, where only
 * the context clips it. A bitmap without extent draws nothing.
 */
void StretchTiles(CDC& dc, CBitmap* bitmap, const RECT& rect, TileAxis axis);

}  // namespace tavix
