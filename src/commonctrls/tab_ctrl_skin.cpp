#include "commonctrls/tab_ctrl_skin.h"

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <utility>

#include "commonctrls/tab_ctrl_geometry.h"
#include "commonctrls/tab_ctrl_paint.h"
#include "draw/offscreen.h"
#include "engine/window_call.h"

namespace {

// What is shown of a tab's text at most, with the closing zero.
constexpr int kTextRoom = 255;

std::string TabText(HWND tabs, int index) {
    char text[kTextRoom + 1] = {};  // one more: a text that is cut off may come without its zero
    TCITEMA item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = kTextRoom;
    if (!tavix::CallWindow(tabs, TCM_GETITEMA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)))
        return {};
    // The control may have put a text of its own in the buffer's place.
    return item.pszText && item.pszText != LPSTR_TEXTCALLBACKA ? item.pszText : "";
}

}  // namespace

LRESULT CSkinTabCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
        case WM_SIZE:
            Default(message, wParam, lParam);
            return 0;
        case WM_PAINT:
            return OnPaint();
        case WM_ERASEBKGND:
            return 1;
        case WM_NCCALCSIZE:  // the client area is the whole window, whatever border the style names
        case WM_NCPAINT:
            return 0;
        case TCM_ADJUSTRECT:
            return OnAdjustRect(wParam, lParam);
        default:
            return Default(message, wParam, lParam);
    }
}

LRESULT CSkinTabCtrl::OnPaint() {
    CPaintDC dc(m_hWnd);
    CRect client;
    GetClientRect(&client);
    CRect shown;
    if (!::IntersectRect(&shown, &client, &dc.m_ps.rcPaint)) return 0;
    const tavix::TabCtrlParts parts = ReadParts();
    tavix::PaintOffscreen(dc, shown, [&](CDC& surface) { tavix::PaintTabCtrl(surface, client, parts); });
    return 0;
}

// The frame of the skin is another one than that which the native control leaves room for.
LRESULT CSkinTabCtrl::OnAdjustRect(WPARAM wParam, LPARAM lParam) {
    Default(TCM_ADJUSTRECT, wParam, lParam);
    if (RECT* rect = reinterpret_cast<RECT*>(lParam)) tavix::AdjustToTabFrame(*rect);
    return 0;
}

tavix::TabCtrlParts CSkinTabCtrl::ReadParts() const {
    tavix::TabCtrlParts parts{
        ParentArea(), static_cast<int>(tavix::CallWindow(m_hWnd, TCM_GETCURSEL, 0, 0)), {}};
    const int count = static_cast<int>(tavix::CallWindow(m_hWnd, TCM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        tavix::TabFace tab;
        tavix::CallWindow(m_hWnd, TCM_GETITEMRECT, static_cast<WPARAM>(i),
                          reinterpret_cast<LPARAM>(static_cast<RECT*>(&tab.rect)));
        tab.text = TabText(m_hWnd, i);
        parts.tabs.push_back(std::move(tab));
    }
    return parts;
}

// Empty for a window without a parent: nothing is behind its tabs.
CRect CSkinTabCtrl::ParentArea() const {
    CRect area;
    HWND parent = GetParent();
    if (!parent) return area;
    ::GetClientRect(parent, &area);
    CPoint origin;
    ::MapWindowPoints(m_hWnd, parent, &origin, 1);
    area.OffsetRect(-origin.x, -origin.y);
    return area;
}
