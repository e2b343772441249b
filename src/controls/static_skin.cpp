#include "controls/static_skin.h"

#include "controls/parent_background.h"
#include "engine/skin_values.h"
#include "engine/tab_controls.h"
#include "engine/window_class.h"
#include "tavixskin/value_ids.h"

namespace {

constexpr char kTabControl[] = "SysTabControl32";

bool ClipsChildren(HWND window) { return ::GetWindowLongA(window, GWL_STYLE) & WS_CLIPCHILDREN; }

}  // namespace

LRESULT CSkinStatic::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            Default(message, wParam, lParam);
            OnCreate();
            return 0;
        case WM_SETTEXT:
            return OnSetText(wParam, lParam);
        case WM_ERASEBKGND:
            return 1;
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<LRESULT>(ChooseBrush(reinterpret_cast<HDC>(wParam)));
        default:
            return Default(message, wParam, lParam);
    }
}

// A parent that clips its children would leave a hole; it paints beneath transparent ones.
void CSkinStatic::OnCreate() {
    style = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE));
    exStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE));
    HWND parent = GetParent();
    if (!IsIconStyle() && parent && ClipsChildren(parent))
        ::SetWindowLongA(m_hWnd, GWL_EXSTYLE, static_cast<LONG>(exStyle | WS_EX_TRANSPARENT));
}

// Nothing else wipes the former text out before the native control writes the new one.
LRESULT CSkinStatic::OnSetText(WPARAM wParam, LPARAM lParam) {
    {
        CClientDC dc(m_hWnd);
        tavix::SampleParentBackground(m_hWnd, dc, tavix::SecondTry::ParentOrigin);
    }
    const LRESULT result = Default(WM_SETTEXT, wParam, lParam);
    tavix::RepaintUnderParent(m_hWnd);
    return result;
}

HBRUSH CSkinStatic::ChooseBrush(HDC dc) {
    ::SetBkMode(dc, TRANSPARENT);
    const auto none = static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
    if (HWND parent = GetParent()) {
        const tavix::WindowClassName parentClass(parent);
        if (parentClass.Is(kTabControl)) return none;
        if (parentClass.Is("#32770")) {
            LookForTab(parent);
            if (overTabPage) return RenewBrush(tavix::SkinColour(CLR_TAB_PAGE));
        }
    }
    return IsIconStyle() ? RenewBrush(ColourBehindIcon()) : none;
}

HBRUSH CSkinStatic::RenewBrush(COLORREF colour) {
    backBrush.DeleteObject();
    backBrush.CreateSolidBrush(colour);
    return backBrush;
}

// Geometry alone counts: a tab control that is merely overlapped is found too. Once found, it counts for
// good, even after a move.
void CSkinStatic::LookForTab(HWND parent) {
    if (overTabPage) return;
    CRect place, tab, common;
    GetWindowRect(&place);
    for (HWND window : tavix::TabControlsBelow(parent)) {
        ::GetWindowRect(window, &tab);
        if (::IntersectRect(&common, &tab, &place)) overTabPage = TRUE;
    }
}

COLORREF CSkinStatic::ColourBehindIcon() const {
    HWND parent = GetParent();
    if (!parent) return tavix::SkinColour(CLR_DLG_BACK_FROM);
    const CRect place = tavix::WindowRectIn(m_hWnd, parent);
    return tavix::ColourAtSides(parent, place, place.top);
}
