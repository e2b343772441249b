#include "commonctrls/list_view_skin.h"

#include <mbstring.h>

#include "engine/window_class.h"
#include "scroll/host_bars.h"
#include "scroll/scroll_host.h"
#include "tavixskin/framework/gdi.h"

namespace {

constexpr DWORD kEdges = WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE;

// A list or tree view is framed if the host gave it this title.
constexpr char kFramedTitle[] = "Tavix_PaneO";

// Fixed: no skin changes them.
constexpr COLORREF kFrameTopLeft = 0xC6D6D6;
constexpr COLORREF kFrameBottomRight = 0xBDD6D6;

bool IsFramed(HWND window) {
    const tavix::WindowClassName name(window);
    if (!name.Is("systreeview32") && !name.Is("SysListView32")) return true;
    char title[256] = {};
    ::GetWindowTextA(window, title, sizeof title);
    return _mbsicmp(reinterpret_cast<const unsigned char*>(title),
                    reinterpret_cast<const unsigned char*>(kFramedTitle)) == 0;
}

}  // namespace

LRESULT CSkinListView::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            Default(message, wParam, lParam);
            OnCreate();
            return 0;
        case WM_NCCALCSIZE:
            Default(message, wParam, lParam);
            OnNcCalcSize(lParam);
            return 0;
        case WM_NCPAINT:
            Default(message, wParam, lParam);
            PaintFrame();
            return 0;
        case WM_SHOWWINDOW:
            OnShowWindow(wParam);
            return Default(message, wParam, lParam);
        default:
            return Default(message, wParam, lParam);
    }
}

void CSkinListView::OnCreate() {
    creationExStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE));
    ::SetWindowLongA(m_hWnd, GWL_EXSTYLE, static_cast<LONG>(creationExStyle & ~kEdges));
    InstallScrollHost(m_hWnd);
    // The area around the client was measured with the edge, before this message.
    if (creationExStyle & kEdges)
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

// The room of the former edge's inner line stays.
void CSkinListView::OnNcCalcSize(LPARAM lParam) const {
    if (creationExStyle & kEdges) ::InflateRect(reinterpret_cast<RECT*>(lParam), -1, -1);
}

// The bars are siblings of the window, so they don't follow it on their own.
void CSkinListView::OnShowWindow(WPARAM wParam) {
    tavix::BarsFollowHost(m_hWnd, wParam == 1, horzBarWasVisible, vertBarWasVisible);
}

void CSkinListView::PaintFrame() const {
    if (!IsFramed(m_hWnd)) return;
    CRect window;
    GetWindowRect(&window);
    window.OffsetRect(-window.left, -window.top);
    CWindowDC dc(m_hWnd);
    dc.Draw3dRect(window, kFrameTopLeft, kFrameBottomRight);
}
