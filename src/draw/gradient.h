/* Two-colour gradients. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/*
 * Fills the rectangle from `first` at its top to `second` at its bottom, or from left to right
 * with `horizontal`. Colour changes in bands of two pixels; an odd last row or column, and a
 * rectangle under two pixels, take `second`. `nearest` asks for the device's nearest colours
 * and matters on palette devices only.
 */
void DrawGradient(CDC* dc, const RECT& rect, COLORREF first, COLORREF second, int horizontal, int nearest);

/* The colour of the band that starts `offset` pixels into a gradient of `span` (length less 2). */
COLORREF GradientColour(COLORREF first, COLORREF second, int offset, int span);

}  // namespace tavix
