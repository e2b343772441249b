#include "controls/parent_background.h"

namespace tavix {

namespace {

void RepaintNow(HWND parent, const RECT& area) {
    ::InvalidateRect(parent, &area, TRUE);
    ::UpdateWindow(parent);
}

}  // namespace

CRect WindowRectIn(HWND window, HWND other) {
    CRect rect;
    ::GetWindowRect(window, &rect);
    ::MapWindowPoints(nullptr, other, reinterpret_cast<POINT*>(static_cast<RECT*>(&rect)), 2);
    return rect;
}

COLORREF ColourBesideControl(HWND control, HWND parent, SecondTry secondTry) {
    const CRect place = WindowRectIn(control, parent);
    const CClientDC dc(parent);
    const int x = place.left - 1 >= 0 ? place.left - 1 : place.right + 1;
    const COLORREF beside = ::GetPixel(dc, x, place.top);
    if (beside != CLR_INVALID || secondTry == SecondTry::None) return beside;
    return ::GetPixel(dc, 0, 0);
}

void SampleParentBackground(HWND control, CDC& dc, SecondTry secondTry) {
    HWND parent = ::GetParent(control);
    if (!parent || !(::GetWindowLongA(parent, GWL_STYLE) & WS_CLIPCHILDREN)) return;
    CRect client;
    ::GetClientRect(control, &client);
    dc.FillSolidRect(client, ColourBesideControl(control, parent, secondTry));
}

void RepaintUnderParent(HWND window) {
    if (HWND parent = ::GetParent(window)) RepaintNow(parent, WindowRectIn(window, parent));
}

void RepaintUnderParent(HWND window, const RECT& part) {
    HWND parent = ::GetParent(window);
    if (!parent) return;
    CRect area = part;
    ::MapWindowPoints(window, parent, reinterpret_cast<POINT*>(static_cast<RECT*>(&area)), 2);
    RepaintNow(parent, area);
}

}  // namespace tavix
