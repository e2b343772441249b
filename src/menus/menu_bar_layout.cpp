// Where a menu bar's client area and the buttons of a maximised MDI child are.
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "menus/menu_bar_parts.h"
#include "tavixskin/value_ids.h"

bool CSkinMenuBar::ShowsMaximizedChild() const { return m_hMdiClient && m_mdiButtons.m_bChildMaximized; }

CRect CSkinMenuBar::ClientInWindow() const {
    CRect window;
    CRect client;
    CPoint origin;
    ::GetWindowRect(m_hWnd, &window);
    ::GetClientRect(m_hWnd, &client);
    ::ClientToScreen(m_hWnd, &origin);
    client.OffsetRect(origin.x - window.left, origin.y - window.top);
    return client;
}

void CSkinMenuBar::CheckMinMaxState() {
    if (!m_hMdiClient) return;
    BOOL isMaximized = FALSE;
    ::SendMessageA(m_hMdiClient, WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(&isMaximized));
    if (!isMaximized == !m_mdiButtons.m_bChildMaximized) return;
    m_mdiButtons.m_bChildMaximized = isMaximized;
    RecomputeToolbarSize();
    RecomputeMenuLayout();
    ::SendMessageA(m_hWnd, WM_NCPAINT, 0, 0);
}

// The frame keeps the bar's size, whatever stands at its ends.
void CSkinMenuBar::RecomputeToolbarSize() {}

void CSkinMenuBar::RecomputeMenuLayout() {
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                   SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void CSkinMenuBar::OnBarStyleChange(DWORD oldStyle, DWORD newStyle) {
    CToolBar::OnBarStyleChange(oldStyle, newStyle);
    RecomputeMenuLayout();
}

// Without a maximised child the client area is the whole window.
LRESULT CSkinMenuBar::OnNcCalcSize(WPARAM, LPARAM lParam) {
    if (!ShowsMaximizedChild()) return 0;
    m_mdiButtons.Layout();
    m_mdiButtons.AdjustNcRect(reinterpret_cast<RECT*>(lParam));
    return 0;
}

CSize CSkinMenuBar::AdjustSize(CSize size, BOOL horizontal) {
    return m_hMdiClient ? m_mdiButtons.AdjustSize(size, horizontal) : size;
}

LRESULT CSkinMenuBar::OnSize(WPARAM, LPARAM) {
    const LRESULT result = Default();
    RecomputeMenuLayout();
    if (ShowsMaximizedChild()) LayoutCaptionButtons();
    return result;
}

void CSkinMenuBar::LayoutCaptionButtons() {
    constexpr int kTop = 5;
    constexpr int kRightMargin = 1;
    constexpr int kGap = 2;
    const CSize size = tavix::BitmapSize(tavix::SkinBitmap(BMP_FRAME_MIN_NORMAL));
    CRect window;
    ::GetWindowRect(m_hWnd, &window);
    int right = window.Width() - kRightMargin;
    for (CRect* rect : {&m_rcClose, &m_rcRestore, &m_rcMinimize}) {
        // Without a bitmap there is no size to go by, and no button.
        rect->SetRectEmpty();
        if (size.cx <= 0 || size.cy <= 0) continue;
        rect->SetRect(right - size.cx, kTop, right, kTop + size.cy);
        right = rect->left - kGap;
    }
}
