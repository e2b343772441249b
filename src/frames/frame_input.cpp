/* The mouse and the menus of a frame. Members are those of frame_skin.h. */
#include "engine/skin_values.h"
#include "frames/frame_skin.h"
#include "frames/non_client.h"
#include "tavixskin/framework/menu.h"

namespace {

constexpr int kNormal = 0;
constexpr int kHot = 1;
constexpr int kPressed = 2;

bool IsButton(LRESULT hitCode) {
    return hitCode == HTCLOSE || hitCode == HTMAXBUTTON || hitCode == HTMINBUTTON;
}

LPARAM Packed(CPoint point) { return MAKELPARAM(point.x, point.y); }

}  // namespace

void CSkinFrame::SetStates(int close, int max, int min) {
    m_nCloseState = close;
    m_nMaxState = max;
    m_nMinState = min;
}

int* CSkinFrame::StateOf(LRESULT hitCode) {
    switch (hitCode) {
        case HTCLOSE:
            return &m_nCloseState;
        case HTMAXBUTTON:
            return &m_nMaxState;
        case HTMINBUTTON:
            return &m_nMinState;
        default:
            return nullptr;
    }
}

/*
 * Turns the button under the point hot, a pressed one too; elsewhere the states stay. All three
 * buttons are there for the test, whether the window shows them or not.
 */
LRESULT CSkinFrame::HitTest(LRESULT answer, CPoint screen) {
    CRect window;
    GetWindowRect(&window);
    const CPoint inWindow(screen.x - window.left, screen.y - window.top);

    if (m_rcClose.PtInRect(inWindow)) {
        answer = HTCLOSE;
        SetStates(kHot, kNormal, kNormal);
    } else if (m_rcMax.PtInRect(inWindow)) {
        answer = HTMAXBUTTON;
        SetStates(kNormal, kHot, kNormal);
    } else if (m_rcMin.PtInRect(inWindow)) {
        answer = HTMINBUTTON;
        SetStates(kNormal, kNormal, kHot);
    }

    // The icon's rectangle is the window's and the point the screen's: it answers at the top-left
    // of the screen only, and hosts have come to expect the caption to drag everywhere else.
    const CSize icon = tavix::SmallIconSize();
    const CRect iconRect(CPoint(tavix::SkinExtent(SZ_FRAME_LEFT), 5), icon);
    if (iconRect.PtInRect(screen)) answer = HTSYSMENU;
    if (IsButton(answer)) return answer;

    // The top strip drags, with or without a caption to be seen.
    CRect caption(window.left, window.top, window.right,
                  window.top + tavix::SkinExtent(SZ_FRAME_CAPTION) + 1);
    caption.DeflateRect(1, 1);
    return caption.PtInRect(screen) ? HTCAPTION : answer;
}

void CSkinFrame::OnNcMouseMove(WPARAM hitCode) {
    // The hit test has turned the button under the mouse hot before this message comes.
    if (!AnyState()) return;
    SetStates(kNormal, kNormal, kNormal);
    if (int* state = StateOf(static_cast<LRESULT>(hitCode))) {
        *state = kHot;
        // No message tells of the mouse leaving the non-client area; the timer looks for it.
        if (!m_nTimer)
            m_nTimer = static_cast<UINT>(
                ::SetTimer(m_hWnd, tavix::kHoverTimerId, tavix::kHoverTimerPeriod, nullptr));
    }
    RepaintNonClient();
}

LRESULT CSkinFrame::OnTimer(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_nTimer || wParam != m_nTimer) return Default(message, wParam, lParam);
    const CPoint mouse(static_cast<LPARAM>(::GetMessagePos()));
    if (IsButton(HitTest(0, mouse))) return 0;
    ::KillTimer(m_hWnd, m_nTimer);
    SetStates(kNormal, kNormal, kNormal);
    RepaintNonClient();
    ::ReleaseCapture();
    m_nTimer = 0;
    return 0;
}

bool CSkinFrame::Press(LRESULT hitCode, CPoint screen) {
    int* state = StateOf(HitTest(hitCode, screen));
    if (!state) return false;
    *state = kPressed;
    RepaintNonClient();
    SetCapture();
    return true;
}

void CSkinFrame::OnNcLButtonDown(UINT message, WPARAM wParam, LPARAM lParam) {
    if (Press(static_cast<LRESULT>(wParam), CPoint(lParam))) return;
    // A maximised frame is neither dragged nor sized.
    if (::IsZoomed(m_hWnd)) return;
    Default(message, wParam, lParam);
    RepaintNonClient();
}

void CSkinFrame::OnNcLButtonDblClk(WPARAM hitCode, LPARAM lParam) {
    if (hitCode != HTCAPTION) return;
    ::ReleaseCapture();
    ::SendMessageA(m_hWnd, WM_SYSCOMMAND, ::IsZoomed(m_hWnd) ? SC_RESTORE : SC_MAXIMIZE,
                   Packed(CPoint(lParam)));
}

void CSkinFrame::OnMouseMove(WPARAM keys, LPARAM lParam) {
    // The point is the client's and the test the screen's: while a button is held, the test is off
    // by the place of the client area.
    if (int* state = StateOf(HitTest(0, CPoint(lParam)))) {
        SetStates(kNormal, kNormal, kNormal);
        *state = keys & MK_LBUTTON ? kPressed : kHot;
    }
    RepaintNonClient();
}

LRESULT CSkinFrame::OnLButtonUp(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!AnyState()) return Default(message, wParam, lParam);
    Release(CPoint(lParam));
    return 0;
}

// The hit test sets the state of the button under the mouse, so a release carries out that
// button's command, whichever button the press was on.
void CSkinFrame::Release(CPoint client) {
    ::ReleaseCapture();
    CPoint screen = client;
    ::ClientToScreen(m_hWnd, &screen);

    UINT command = 0;
    WPARAM parameter = 0;
    switch (HitTest(0, screen)) {
        case HTCLOSE:
            if (m_nCloseState) command = WM_CLOSE;
            break;
        case HTMAXBUTTON:
            if (m_nMaxState && (m_dwStyle & WS_MAXIMIZEBOX)) {
                command = WM_SYSCOMMAND;
                parameter = ::IsZoomed(m_hWnd) ? SC_RESTORE : SC_MAXIMIZE;
            }
            break;
        case HTMINBUTTON:
            if (m_nMinState && (m_dwStyle & WS_MINIMIZEBOX)) {
                command = WM_SYSCOMMAND;
                parameter = ::IsIconic(m_hWnd) ? SC_RESTORE : SC_MINIMIZE;
            }
            break;
        default:
            SetStates(kNormal, kNormal, kNormal);
            break;
    }

    // The command may end the window; only what is left of it is repainted.
    if (command && ::IsWindow(m_hWnd)) {
        SetStates(kNormal, kNormal, kNormal);
        ::SendMessageA(m_hWnd, command, parameter, Packed(screen));
    }
    if (::IsWindow(m_hWnd)) RepaintNonClient();
}

LRESULT CSkinFrame::OnSysCommand(UINT message, WPARAM wParam, LPARAM lParam) {
    // The menu bar control handles the menu keys by itself.
    if (wParam == SC_KEYMENU && !::IsIconic(m_hWnd) && tavix::AnnouncesMenuBar(m_hWnd)) return 0;
    return Default(message, wParam, lParam);
}

void CSkinFrame::OnInitMenuPopup(UINT message, WPARAM wParam, LPARAM lParam) {
    Default(message, wParam, lParam);
    HMENU menu = reinterpret_cast<HMENU>(wParam);
    if (menu && menu == ::GetSystemMenu(m_hWnd, FALSE)) UpdateSystemMenu(menu);
}

// A host asks for its bar to show the menu of an object.
void CSkinFrame::OnSyncMenuObject(WPARAM wParam) const {
    const auto* menu = reinterpret_cast<const CMenu*>(wParam);
    if (menu) tavix::SynchronizeMenuBar(m_hWnd, menu->GetSafeHmenu());
}

// And for the frame's own menu; an empty one stands for the menu that the bar was loaded with.
void CSkinFrame::OnSyncMenu() const {
    HMENU menu = ::GetMenu(m_hWnd);
    tavix::SynchronizeMenuBar(m_hWnd, ::GetMenuItemCount(menu) >= 1 ? menu : m_hMenu);
}

// The system would disable these items, since the window's style lacks their bits by now.
void CSkinFrame::UpdateSystemMenu(HMENU menu) const {
    const bool iconic = ::IsIconic(m_hWnd) != 0;
    const bool zoomed = ::IsZoomed(m_hWnd) != 0;
    const auto enable = [menu](UINT command, bool on) {
        ::EnableMenuItem(menu, command, MF_BYCOMMAND | (on ? MF_ENABLED : MF_GRAYED | MF_DISABLED));
    };
    enable(SC_MINIMIZE, (m_dwStyle & WS_MINIMIZEBOX) && !iconic);
    enable(SC_MAXIMIZE, (m_dwStyle & WS_MAXIMIZEBOX) && !zoomed);
    enable(SC_RESTORE, zoomed || iconic);
    enable(SC_MOVE, !zoomed && !iconic);
    enable(SC_SIZE, !zoomed && !iconic);
}
