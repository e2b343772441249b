/* The arithmetic of a dialog: plain values in, plain values out. */
#pragma once

#include "tavixskin/framework/geometry.h"

namespace tavix {

struct DialogButtons {
    bool close, max, min, help;
};

struct DialogButtonRects {
    CRect close, max, min, help;  // empty for a button that does not exist
};

/*
 * The caption buttons from the right: close, maximise, minimise, help, two pixels apart; only
 * those that exist take room. `buttons` holds the packed geometry: left (negative, where the
 * right-most button ends, from the window's right edge), top, width in right, height in bottom.
 */
inline DialogButtonRects LayoutDialogButtons(int windowWidth, const RECT& buttons,
                                             const DialogButtons& present) {
    constexpr int kGap = 2;
    const int w = buttons.right;
    int x = windowWidth + buttons.left;
    const auto place = [&](bool exists) {
        if (!exists) return CRect();
        const CRect rect(x - w, buttons.top, x, buttons.top + buttons.bottom);
        x -= w + kGap;
        return rect;
    };
    DialogButtonRects rects;
    rects.close = place(present.close);
    rects.max = place(present.max);
    rects.min = place(present.min);
    rects.help = place(present.help);
    return rects;
}

}  // namespace tavix
