#include "engine/quiet_skins.h"

#include "engine/window_class.h"

LRESULT CSkinClientWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCRBUTTONDOWN || message == WM_NCRBUTTONUP) {
        if (tavix::WindowClassName(m_hWnd).Is("Tavix_PaneK")) return 0;
    }
    return Default(message, wParam, lParam);
}

LRESULT CSkinMDIClient::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_MDISETMENU) return Default(message, wParam, lParam);
    HWND frame = GetParent();
    Default(message, wParam, lParam);
    if (frame) ::SendMessageA(frame, WM_MDISETMENU, wParam, lParam);
    return 0;
}

LRESULT CSkinMDIFrame::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(message, wParam, lParam);
    return message == WM_PAINT ? 0 : result;
}
