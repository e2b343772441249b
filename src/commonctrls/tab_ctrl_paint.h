/* The painting of a tab control, free of windows. */
#pragma once

#include <string>
#include <vector>

#include "tavixskin/framework/gdi.h"

namespace tavix {

struct TabFace {
    CRect rect;
    std::string text;
};

struct TabCtrlParts {
    CRect gradient;  // the parent's client area, seen from the control
    int selected;    // index of the selected tab, -1 for none
    std::vector<TabFace> tabs;
};

/* Paints the whole control; without tabs it is black. The context may show a part of it only. */
void PaintTabCtrl(CDC& dc, const RECT& client, const TabCtrlParts& parts);

}  // namespace tavix
