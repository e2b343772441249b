// How a menu bar's popups are opened, one after another, and how the keyboard leads to them.
#include <cctype>

#include "menus/menu_bar_parts.h"

namespace {

/*
 * Where a mouse message of a menu's loop happened, on the screen. Some systems pass the screen's
 * co-ordinates in it, some the client's of the message's window.
 */
CPoint ScreenPointOf(const MSG& message) {
    const CPoint packed(message.lParam);
    CPoint mapped(packed);
    if (message.hwnd && ::ClientToScreen(message.hwnd, &mapped) && mapped == message.pt) return message.pt;
    return packed;
}

// The mouse's buttons, pressed, released or clicked twice; moves and the wheel are not among them.
bool IsMouseButton(UINT message) { return message >= WM_LBUTTONDOWN && message < WM_MOUSEWHEEL; }

bool IsDown(int key) { return ::GetKeyState(key) < 0; }

}  // namespace

// ---------------------------------------------------------------- states

void CSkinMenuBar::SetTrackingState(TRACKINGSTATE state, int button) {
    if (state == m_trackingState) return;
    if (state == TRACKING_IDLE) button = -1;
    SetHotItem(button);
    if (state == TRACKING_POPUP) {
        m_bEscapeSeen = FALSE;
        m_bLeftArrowMoves = m_bRightArrowMoves = TRUE;
        m_nPopupButton = button;
    }
    m_trackingState = state;
}

void CSkinMenuBar::ToggleTrackButtonMode() {
    if (m_trackingState == TRACKING_IDLE)
        SetTrackingState(TRACKING_BUTTON, 0);
    else if (m_trackingState == TRACKING_BUTTON)
        SetTrackingState(TRACKING_IDLE, 0);
}

int CSkinMenuBar::GetNextOrPrevButton(int button, BOOL previous) const {
    const int count = GetButtonCount();
    if (previous) return button - 1 < 0 ? count - 1 : button - 1;
    return button + 1 >= count ? 0 : button + 1;
}

// The window goes, perhaps from under an open popup.
void CSkinMenuBar::EndTracking() {
    if (activeMenuBarTarget == this) {
        activeMenuBarTarget = nullptr;
        ::EndMenu();
    }
    m_trackingState = TRACKING_IDLE;
    m_nHotItem = m_nPopupButton = m_nNextPopupButton = -1;
    m_hOpenPopup = nullptr;
}

// ---------------------------------------------------------------- the frame's messages

BOOL CSkinMenuBar::TranslateFrameMessage(MSG* message) {
    if (!message || !m_hWnd) return FALSE;
    if (IsMouseButton(message->message)) {
        // A click elsewhere ends the keyboard mode, and happens.
        if (message->hwnd != m_hWnd && m_trackingState >= TRACKING_BUTTON) SetTrackingState(TRACKING_IDLE);
        return FALSE;
    }
    if (message->message != WM_SYSKEYDOWN && message->message != WM_SYSKEYUP &&
        message->message != WM_KEYDOWN)
        return FALSE;

    const bool alt = (HIWORD(message->lParam) & KF_ALTDOWN) != 0;
    const auto key = static_cast<UINT>(message->wParam);
    if (key == VK_MENU || (key == VK_F10 && !IsDown(VK_SHIFT) && !IsDown(VK_CONTROL) && !alt)) {
        if (message->message == WM_SYSKEYUP) ToggleTrackButtonMode();
        return TRUE;
    }
    if (message->message == WM_SYSKEYUP) return FALSE;
    if (m_trackingState == TRACKING_BUTTON && OnTrackingKey(key)) return TRUE;
    if ((alt || m_trackingState == TRACKING_BUTTON) && OnAccelerator(key, alt)) return TRUE;
    if (m_trackingState >= TRACKING_BUTTON) SetTrackingState(TRACKING_IDLE);
    return FALSE;
}

// After a popup the bar may be gone: nothing of it is looked at.
BOOL CSkinMenuBar::OnTrackingKey(UINT key) {
    switch (key) {
        case VK_ESCAPE:
            SetTrackingState(TRACKING_IDLE);
            return TRUE;
        case VK_SPACE:
        case VK_UP:
        case VK_DOWN:
            TrackPopup(GetHotItem());
            return TRUE;
        case VK_LEFT:
        case VK_RIGHT:
            SetHotItem(GetNextOrPrevButton(GetHotItem(), key == VK_LEFT));
            return TRUE;
        default:
            return FALSE;
    }
}

// The key's code is compared with letters as it is, whatever the keyboard makes of it.
BOOL CSkinMenuBar::OnAccelerator(UINT key, bool alt) {
    if (key > 0xFF || !std::isalnum(static_cast<int>(key))) return FALSE;
    UINT id = 0;
    if (MapAccelerator(static_cast<char>(key), id)) {
        TrackPopup(static_cast<int>(id));
        return TRUE;
    }
    if (alt || m_trackingState != TRACKING_BUTTON) return FALSE;
    ::MessageBeep(0);
    return TRUE;
}

void CSkinMenuBar::OnKeyDown(UINT key) { OnTrackingKey(key); }

// ---------------------------------------------------------------- popups

/*
 * With a maximised child the system has put that child's menu before the frame's first item; it
 * is passed over, and the search never runs beyond the menu's end.
 */
HMENU CSkinMenuBar::SubMenuOf(int button) const {
    const int position = tavix::PositionOfButton(m_hMenu, button, ShowsMaximizedChild() ? 1 : 0);
    return position < 0 ? nullptr : ::GetSubMenu(m_hMenu, position);
}

void CSkinMenuBar::TrackPopup(int button) {
    const tavix::MenuBarPresence present(*this);
    while (button >= 0) {
        HWND owner = GetOwner();
        m_nNextPopupButton = -1;
        PressButton(button, TRUE);
        ::UpdateWindow(m_hWnd);
        // So the popup opens with its first item selected.
        ::PostMessageA(owner, WM_KEYDOWN, VK_DOWN, 1);
        ::PostMessageA(owner, WM_KEYUP, VK_DOWN, 1);
        SetTrackingState(TRACKING_POPUP, button);

        activeMenuBarTarget = this;
        HHOOK hook = ::SetWindowsHookExA(WH_MSGFILTER, &MenuInputFilter, nullptr, ::GetCurrentThreadId());
        menuInputHook = hook;
        CRect rect;
        GetItemRect(button, rect);
        ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<POINT*>(static_cast<RECT*>(&rect)), 2);
        TPMPARAMS params{};
        const CPoint at = m_mdiButtons.PopupPosition(rect, params);
        m_hOpenPopup = SubMenuOf(button);
        ::TrackPopupMenuEx(m_hOpenPopup, TPM_VERTICAL, at.x, at.y, owner, &params);

        if (hook) ::UnhookWindowsHookEx(hook);
        // A bar of another thread may have come in between; these are not its to clear.
        if (menuInputHook == hook) menuInputHook = nullptr;
        if (activeMenuBarTarget == this) activeMenuBarTarget = nullptr;
        // A command may have ended the frame, and the bar with it.
        if (!present) return;
        m_hOpenPopup = nullptr;
        PressButton(button, FALSE);
        ::UpdateWindow(m_hWnd);
        SetTrackingState(m_bEscapeSeen ? TRACKING_BUTTON : TRACKING_IDLE, button);
        button = m_nNextPopupButton;
    }
}

void CSkinMenuBar::CancelMenuAndTrackNewOne(int button) {
    if (button == m_nPopupButton) return;
    ::PostMessageA(GetOwner(), WM_CANCELMODE, 0, 0);
    InvalidateButton(m_nNextPopupButton);
    m_nNextPopupButton = button;
}

// ---------------------------------------------------------------- while a popup is open

LRESULT CALLBACK CSkinMenuBar::MenuInputFilter(int code, WPARAM wParam, LPARAM lParam) {
    AFX_MAINTAIN_STATE2 state(AfxGetLibraryModuleState());
    CSkinMenuBar* bar = activeMenuBarTarget;
    // One bar in the process has its popup open, but not necessarily one of this thread.
    if (code == MSGF_MENU && bar && AfxMapHWND(true)->HasPermanent(bar)) {
        try {
            if (bar->OnMenuInput(*reinterpret_cast<MSG*>(lParam))) return 1;
        } catch (...) {
            // Nothing may fly through the platform's frames: the message goes its way.
        }
    }
    return ::CallNextHookEx(menuInputHook, code, wParam, lParam);
}

BOOL CSkinMenuBar::OnMenuInput(MSG& message) {
    switch (message.message) {
        case WM_KEYDOWN: {
            const UINT key = LOBYTE(message.wParam);
            const bool moves =
                (key == VK_LEFT && m_bLeftArrowMoves) || (key == VK_RIGHT && m_bRightArrowMoves);
            if (moves) {
                CancelMenuAndTrackNewOne(GetNextOrPrevButton(m_nPopupButton, key == VK_LEFT));
                return TRUE;
            }
            // The popup still sees it and closes; the bar then stays in keyboard mode.
            if (key == VK_ESCAPE) m_bEscapeSeen = TRUE;
            return FALSE;
        }
        case WM_MOUSEMOVE: {
            CPoint point = ScreenPointOf(message);
            ::ScreenToClient(m_hWnd, &point);
            if (point == m_ptLastMouse) return FALSE;
            const int button = HitTest(point);
            if (IsValidButton(button) && button != m_nPopupButton) CancelMenuAndTrackNewOne(button);
            m_ptLastMouse = point;
            return FALSE;
        }
        case WM_LBUTTONDOWN: {
            CPoint point = ScreenPointOf(message);
            ::ScreenToClient(m_hWnd, &point);
            if (HitTest(point) != m_nPopupButton) return FALSE;
            CancelMenuAndTrackNewOne(-1);
            return TRUE;
        }
        default:
            return FALSE;
    }
}

// The item is read as a position, also where it is a command: with such a number a popup's place may
// keep the right arrow from leaving.
void CSkinMenuBar::OnMenuSelect(HMENU menu, UINT item) {
    if (m_trackingState == TRACKING_IDLE) return;
    m_bRightArrowMoves = ::GetSubMenu(menu, static_cast<int>(item)) == nullptr;
    m_bLeftArrowMoves = menu == m_hOpenPopup;
}

void CSkinMenuBar::OnInitMenuPopup() { m_mdiButtons.FillWindowMenu(); }
