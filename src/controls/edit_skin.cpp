#include "controls/edit_skin.h"

#include "controls/parent_background.h"
#include "engine/skin_values.h"
#include "engine/window_class.h"
#include "scroll/host_bars.h"
#include "tavixskin/value_ids.h"

CSkinEdit::CSkinEdit()
    : enabledBrush(RGB(255, 255, 255)), disabledBrush(tavix::SkinColour(CLR_EDIT_BACK_DISABLED)) {}

LRESULT CSkinEdit::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            Default(message, wParam, lParam);
            TakeFrameOff();
            return 0;
        case WM_SETTEXT:
            Default(message, wParam, lParam);
            // The parent may have destroyed the edit at its notification.
            if (::IsWindow(m_hWnd)) Invalidate(TRUE);
            return 1;
        case WM_SHOWWINDOW:
            tavix::BarsFollowHost(m_hWnd, wParam == 1, horzBarVisible, vertBarVisible);
            return Default(message, wParam, lParam);
        case WM_NCPAINT:
            // Only a vertical bar needs it; whatever frame the native control has goes unpainted.
            if (::GetWindowLongA(m_hWnd, GWL_STYLE) & WS_VSCROLL) return Default(message, wParam, lParam);
            return 0;
        case WM_CTLCOLOREDIT:
            // Never comes from the system, which asks the parent: from a host that asks the edit itself.
            PrepareColours(reinterpret_cast<HDC>(wParam));
            return 0;
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<LRESULT>(PrepareColours(reinterpret_cast<HDC>(wParam)));
        default:
            return Default(message, wParam, lParam);
    }
}

// The client area grows at the next measuring of the frame, not before.
void CSkinEdit::TakeFrameOff() {
    exStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE));
    // A change is told to the window twice, also one that changes nothing.
    const auto takeOff = [this](int styles, DWORD bits) {
        const auto present = static_cast<DWORD>(::GetWindowLongA(m_hWnd, styles));
        if (present & bits) ::SetWindowLongA(m_hWnd, styles, static_cast<LONG>(present & ~bits));
    };
    takeOff(GWL_EXSTYLE, WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE);
    takeOff(GWL_STYLE, WS_BORDER);
    if (HWND parent = GetParent()) inComboBox = tavix::WindowClassName(parent).Is("Combobox");
}

// An enabled edit takes on the colour of the surface around it, a disabled one the skin's.
HBRUSH CSkinEdit::PrepareColours(HDC dc) {
    ::SetBkMode(dc, TRANSPARENT);
    if (!IsWindowEnabled()) {
        ::SetTextColor(dc, tavix::SkinColour(CLR_TEXT_DISABLED));
        return disabledBrush;
    }
    if (HWND parent = GetParent()) {
        const COLORREF around = tavix::ColourBesideControl(m_hWnd, parent, tavix::SecondTry::ParentOrigin);
        enabledBrush.DeleteObject();
        enabledBrush.CreateSolidBrush(around);
    }
    ::SetTextColor(dc, tavix::SkinColour(CLR_TEXT));
    return enabledBrush;
}
