/* The painting of a frame's non-client area, free of windows. */
#pragma once

#include "frames/frame_geometry.h"
#include "tavixskin/framework/gdi.h"

namespace tavix {

struct FrameParts {
    DWORD style;      // before stripping: caption, system menu, the two boxes
    bool hasMenuBar;  // light strips and patches beside the menu bar
    int closeState, maxState, minState;
    FrameButtonRects buttons;
    const char* title;
    HFONT titleFont;
};

/* Paints the whole frame at (0, 0); the context may show a part of it only. */
void PaintFrame(CDC& dc, CSize window, const FrameParts& parts);

}  // namespace tavix
