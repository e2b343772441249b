/* The arithmetic of a frame: plain values in, plain values out. */
#pragma once

#include "tavixskin/framework/geometry.h"

namespace tavix {

struct FrameButtonRects {
    CRect min, max, close;
};

/*
 * The caption buttons from the left: minimise, maximise, close, one pixel apart. `buttons`
 * holds the packed geometry: left (negative, from the window's right edge), top, and the
 * width and height of a button in right and bottom.
 */
inline FrameButtonRects LayoutFrameButtons(int windowWidth, const RECT& buttons) {
    const int y = buttons.top;
    const int w = buttons.right;
    const int h = buttons.bottom;
    const auto at = [&](int x) { return CRect(x, y, x + w, y + h); };
    const int x = windowWidth + buttons.left;
    return {at(x), at(x + w + 1), at(x + 2 * w + 2)};
}

struct BorderWidths {
    int left, top, right, bottom;
};

/* The client rectangle of a window rectangle. */
inline CRect DeflateByBorders(const RECT& window, const BorderWidths& b) {
    return {window.left + b.left, window.top + b.top, window.right - b.right, window.bottom - b.bottom};
}

}  // namespace tavix
