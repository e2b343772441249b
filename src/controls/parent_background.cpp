#include "controls/parent_background.h"

#include "engine/skin_values.h"
#include "tavixskin/value_ids.h"

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

COLORREF ColourAtSides(HWND parent, const CRect& place, int row) {
    const CClientDC dc(parent);
    const COLORREF left = ::GetPixel(dc, place.left - 1, row);
    if (left != CLR_INVALID) return left;
    const COLORREF right = ::GetPixel(dc, place.right + 1, row);
    return right != CLR_INVALID ? right : SkinColour(CLR_DLG_BACK_FROM);
}

void InvalidateUnderParent(HWND window) {
    HWND parent = ::GetParent(window);
    if (!parent) return;
    const CRect area = WindowRectIn(window, parent);
    ::InvalidateRect(parent, &area, TRUE);
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
