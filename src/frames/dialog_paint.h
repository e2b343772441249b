/* The painting of a dialog, free of windows. */
#pragma once

#include "frames/dialog_geometry.h"
#include "tavixskin/framework/gdi.h"

namespace tavix {

struct DialogParts {
    DWORD style;
    int closeState, maxState, minState, helpState;
    DialogButtons present;
    DialogButtonRects buttons;
    HICON icon;  // the window's small icon, null if it has none
    const char* title;
    HFONT titleFont;
};

/* Paints the whole non-client picture at (0, 0); the context may show a part of it only. */
void PaintDialog(CDC& dc, CSize window, const DialogParts& parts);

/*
 * The client gradient of a dialog whose client area is `gradient`, where it lies under `area`
 * of the context. A nested dialog shows the piece of its ancestor's gradient at its place.
 */
void PaintDialogBackground(HDC dc, const RECT& area, const RECT& gradient);

}  // namespace tavix
