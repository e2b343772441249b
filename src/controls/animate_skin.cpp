#include "controls/animate_skin.h"

#include "controls/parent_background.h"

LRESULT CSkinAnimate::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_CTLCOLORSTATIC:
            return SampleBrushCentred(reinterpret_cast<HDC>(wParam));
        default:
            return Default(message, wParam, lParam);
    }
}

// The row is the control's middle only where it stands at its parent's top; dialogs that were laid out
// for it get the same pixel as ever.
COLORREF CSkinAnimate::ColourAtSides() const {
    HWND parent = GetParent();
    const CRect place = tavix::WindowRectIn(m_hWnd, parent);
    const int y = (place.Height() + static_cast<int>(place.top)) / 2;
    return tavix::ColourAtSides(parent, place, y);
}

LRESULT CSkinAnimate::SampleBrushCentred(HDC dc) {
    const COLORREF colour = ColourAtSides();
    backBrush.DeleteObject();
    backBrush.CreateSolidBrush(colour);
    ::SetBkColor(dc, colour);
    return reinterpret_cast<LRESULT>(backBrush.GetSafeHandle());
}
