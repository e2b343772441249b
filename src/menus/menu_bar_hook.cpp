#include "tavixskin/menu_bar_hook.h"

#include "tavixskin/skin_menu_bar.h"

CMenuBarHook::CMenuBarHook() : CSkinWndBaseClass(KeptByOwner{}) {}
CMenuBarHook::~CMenuBarHook() { Detach(); }

void CMenuBarHook::Attach(HWND window, CSkinMenuBar* owner) {
    m_pOwner = owner;
    if (window) CSkinWndBaseClass::Attach(window);
}

void CMenuBarHook::Detach() {
    if (!m_hWnd) return;
    CSkinWndBaseClass::Detach(m_hWnd);
    m_hWnd = nullptr;
    m_pNextSkin = nullptr;
}

bool CMenuBarHook::IsOnMdiClient() const { return m_hWnd == m_pOwner->m_hMdiClient; }

LRESULT CMenuBarHook::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    HWND window = m_hWnd;
    Inform(message, wParam, lParam);
    if (IsInChain(window, this)) return CSkinWndBaseClass::WindowProc(message, wParam, lParam);
    // What the bar did has ended it. The message is for those who are left.
    if (!::IsWindow(window)) return 0;
    const auto procedure = reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(window, GWLP_WNDPROC));
    return ::CallWindowProcA(procedure, window, message, wParam, lParam);
}

void CMenuBarHook::Inform(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
        case WM_MDIREFRESHMENU:
            if (IsOnMdiClient()) m_pOwner->CheckMinMaxState();
            break;
        case WM_SYSCOLORCHANGE:
            m_pOwner->UpdateFont();
            break;
        case WM_INITMENUPOPUP:
            // Only for a popup at the first place of its parent that is not a system menu.
            if (lParam >= 0 && lParam < 0x10000 && LOWORD(lParam) == 0 &&
                reinterpret_cast<HMENU>(wParam) == m_pOwner->m_mdiButtons.m_hWindowMenu)
                m_pOwner->OnInitMenuPopup();
            break;
        case WM_MENUSELECT:
            m_pOwner->OnMenuSelect(reinterpret_cast<HMENU>(lParam), LOWORD(wParam));
            break;
        default:
            break;
    }
}
