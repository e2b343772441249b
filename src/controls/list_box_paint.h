/* The frame of a list box: corners and edges from the skin's eight pieces. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* Paints the frame of a window of that size, in window co-ordinates, over the list's background. */
void PaintListFrame(CDC& dc, const CSize& window);

/* Takes the pixels of the corner pieces that are pure red from the region of a window of that size. */
void CutListCorners(CRgn& region, const CSize& window);

}  // namespace tavix
