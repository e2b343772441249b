// The mouse on a menu bar.
#include <windows.h>

#include <commctrl.h>

#include "menus/menu_bar_parts.h"

namespace {

// A maximised child's buttons, from the left.
constexpr int kMinimize = 1;
constexpr int kRestore = 2;
constexpr int kClose = 3;
constexpr WPARAM kCommands[] = {0, SC_MINIMIZE, SC_RESTORE, SC_CLOSE};

}  // namespace

void CSkinMenuBar::InvalidateButton(int button) const {
    CRect rect;
    GetItemRect(button, rect);
    ::InvalidateRect(m_hWnd, &rect, TRUE);
}

// The control's own hot button is another matter, and not used.
void CSkinMenuBar::SetHotItem(int button) {
    if (m_nHotItem != -1) InvalidateButton(m_nHotItem);
    m_nHotItem = button;
    if (button != -1) InvalidateButton(button);
}

// The first button is taken wherever the point is; a host may rely on it.
int CSkinMenuBar::HitTest(const POINT& point) const {
    CPoint at(point);
    const int button = ToolBarHitTest(&at);
    CRect client;
    ::GetClientRect(m_hWnd, &client);
    return button > 0 && !client.PtInRect(point) ? -1 : button;
}

int CSkinMenuBar::CaptionButtonAt(const POINT& inWindow) const {
    if (m_rcClose.PtInRect(inWindow)) return kClose;
    if (m_rcRestore.PtInRect(inWindow)) return kRestore;
    if (m_rcMinimize.PtInRect(inWindow)) return kMinimize;
    return 0;
}

bool CSkinMenuBar::AnyCaptionHot() const { return m_bCloseHot || m_bRestoreHot || m_bMinimizeHot; }

void CSkinMenuBar::SetCaptionHot(int index) {
    m_bCloseHot = index == kClose;
    m_bRestoreHot = index == kRestore;
    m_bMinimizeHot = index == kMinimize;
}

// False if the bar is gone.
bool CSkinMenuBar::PressCaptionButton(const POINT& client) {
    if (!ShowsMaximizedChild()) return true;
    const CRect inside = ClientInWindow();
    const int index = CaptionButtonAt(CPoint(client.x + inside.left, client.y + inside.top));
    if (!index) return true;
    SetCaptionHot(0);
    RepaintCaptionButtons();
    const tavix::MenuBarPresence present(*this);
    if (HWND active = ActiveFrame()) ::SendMessageA(active, WM_SYSCOMMAND, kCommands[index], 0);
    return static_cast<bool>(present);
}

// A click on a maximised child's icon opens nothing.
LRESULT CSkinMenuBar::OnLButtonDown(WPARAM wParam, LPARAM lParam) {
    const tavix::MenuBarPresence present(*this);
    const CPoint point(lParam);
    const int button = HitTest(point);
    if (IsValidButton(button))
        TrackPopup(button);
    else
        PressCaptionButton(point);
    return present ? CToolBar::OnLButtonDown(wParam, lParam) : 0;
}

LRESULT CSkinMenuBar::OnLButtonUp(WPARAM, LPARAM) { return Default(); }

LRESULT CSkinMenuBar::OnMouseMove(WPARAM, LPARAM lParam) {
    const CPoint point(lParam);
    CPoint at(point);
    const int button = ToolBarHitTest(&at);
    // A move that leads nowhere takes the hot look away.
    if (!IsValidButton(button) || m_ptLastMouse == point)
        SetHotItem(-1);
    else if (button != m_nHotItem)
        SetHotItem(button);

    if (ShowsMaximizedChild()) {
        const CRect inside = ClientInWindow();
        if (const int index = CaptionButtonAt(CPoint(point.x + inside.left, point.y + inside.top)))
            SetCaptionHot(index);
        if (AnyCaptionHot()) RepaintCaptionButtons();
    }
    if (m_nHotItem != -1 || AnyCaptionHot()) {
        TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, m_hWnd, 100};
        ::_TrackMouseEvent(&leave);
    }
    m_ptLastMouse = point;
    return 0;
}

LRESULT CSkinMenuBar::OnMouseLeave(WPARAM, LPARAM) {
    if (AnyCaptionHot()) {
        SetCaptionHot(0);
        RepaintCaptionButtons();
    }
    if (m_trackingState != TRACKING_POPUP && m_nHotItem != -1) SetHotItem(-1);
    return 0;
}
