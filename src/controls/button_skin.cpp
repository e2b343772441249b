#include "controls/button_skin.h"

#include "controls/button_paint.h"
#include "controls/control_text.h"
#include "controls/parent_background.h"
#include "draw/offscreen.h"
#include "engine/window_call.h"

LRESULT CSkinButton::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return OnCreate(wParam, lParam);
        case WM_SIZE:
            Default(message, wParam, lParam);
            return 0;
        case WM_ENABLE:
            return OnEnable(wParam, lParam);
        case WM_SETTEXT:
            return OnSetText(wParam, lParam);
        case WM_PAINT:
            return OnPaint(wParam, lParam);
        case WM_ERASEBKGND:
            return OnEraseBackground();
        case BM_SETCHECK:
            return OnSetCheck(wParam, lParam);
        case BM_SETSTATE:
            return OnSetState(wParam, lParam);
        case WM_CTLCOLORBTN:
            return OnColourButton(wParam);
        case WM_KEYDOWN:
            return OnKeyDown(wParam, lParam);
        case WM_KEYUP:
            return OnKeyUp(wParam, lParam);
        case WM_MOUSEMOVE:
            return OnMouseMove(wParam, lParam);
        case WM_LBUTTONDOWN:
            return OnButtonDown(wParam, lParam);
        case WM_LBUTTONUP:
            return OnButtonUp(wParam, lParam);
        case WM_LBUTTONDBLCLK:
            return OnDoubleClick(wParam, lParam);
        default:
            return Default(message, wParam, lParam);
    }
}

// The native control never hears of its creation: it leaves its state and its style as they are,
// and can't refuse a type that it doesn't know.
LRESULT CSkinButton::OnCreate(WPARAM wParam, LPARAM lParam) {
    const LRESULT result = ::DefWindowProcA(m_hWnd, WM_CREATE, wParam, lParam);
    style = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE));
    exStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE));
    return result;
}

// Only enabling forgets the press: a button that is disabled under the pointer keeps its flags.
LRESULT CSkinButton::OnEnable(WPARAM wParam, LPARAM lParam) {
    Default(WM_ENABLE, wParam, lParam);
    if (wParam) hot = pressed = FALSE;
    if (!IsAlive()) return 0;
    tavix::RepaintUnderParent(m_hWnd);
    if (IsAlive()) Invalidate(TRUE);
    return 0;
}

// A new text ends like a double click whose point is the text's address: an enabled button is
// sent a press. Programs that renew a button's text find it pressed, and have come to count on the
// order of messages that this gives. The answer is 0 where the native control says TRUE.
LRESULT CSkinButton::OnSetText(WPARAM wParam, LPARAM lParam) {
    Default(WM_SETTEXT, wParam, lParam);
    if (!IsAlive()) return 0;
    Invalidate(FALSE);
    UpdateWindow();
    return OnDoubleClick(wParam, lParam);
}

LRESULT CSkinButton::OnPaint(WPARAM wParam, LPARAM lParam) {
    font = reinterpret_cast<HFONT>(tavix::CallWindow(m_hWnd, WM_GETFONT));
    if (IsOwnerDrawnStyle())
        Default(WM_PAINT, wParam, lParam);
    else
        PaintButton();
    return 0;
}

LRESULT CSkinButton::OnEraseBackground() {
    if (IsOwnerDrawnStyle()) EraseOwnerDrawn();
    return 1;
}

LRESULT CSkinButton::OnSetCheck(WPARAM wParam, LPARAM lParam) {
    if (HasMark() && static_cast<WPARAM>(tavix::CallWindow(m_hWnd, BM_GETCHECK)) == wParam) return 0;
    const LRESULT result = Default(BM_SETCHECK, wParam, lParam);
    RepaintFace();
    return result;
}

LRESULT CSkinButton::OnSetState(WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(BM_SETSTATE, wParam, lParam);
    RepaintFace();
    return result;
}

LRESULT CSkinButton::OnColourButton(WPARAM wParam) {
    ::SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
    return reinterpret_cast<LRESULT>(::GetStockObject(NULL_BRUSH));
}

// The space key is the skin's for all types: a check box tells its parent of a click, and keeps
// its check state, as the native control that would change it never sees the key.
LRESULT CSkinButton::OnKeyDown(WPARAM wParam, LPARAM lParam) {
    if (wParam != VK_SPACE) return Default(WM_KEYDOWN, wParam, lParam);
    PressAt(CPoint(0, 0));
    return 0;
}

LRESULT CSkinButton::OnKeyUp(WPARAM wParam, LPARAM lParam) {
    if (wParam != VK_SPACE) return Default(WM_KEYUP, wParam, lParam);
    ReleasePush();
    return 0;
}

LRESULT CSkinButton::OnMouseMove(WPARAM wParam, LPARAM lParam) {
    if (IsOwnerDrawnStyle())
        Default(WM_MOUSEMOVE, wParam, lParam);
    else
        TrackHot(CPoint(lParam));
    return 0;
}

LRESULT CSkinButton::OnButtonDown(WPARAM wParam, LPARAM lParam) {
    Default(WM_LBUTTONDOWN, wParam, lParam);  // takes capture and focus
    if (IsOwnerDrawnStyle()) return 0;
    RepaintFace();
    PressAt(CPoint(lParam));
    return 0;
}

// The types that are none of push, check, radio and owner-drawn (three-state boxes among them)
// lose the message; the native control stays pressed.
LRESULT CSkinButton::OnButtonUp(WPARAM wParam, LPARAM lParam) {
    if (IsOwnerDrawnStyle()) {
        Default(WM_LBUTTONUP, wParam, lParam);
    } else if (IsPushStyle()) {
        ReleasePush();
    } else if (HasMark()) {
        Default(WM_LBUTTONUP, wParam, lParam);  // toggles and notifies
        RepaintFace();
    }
    return 0;
}

// A second press. The native control, which has a notification of its own for it, never sees it.
LRESULT CSkinButton::OnDoubleClick(WPARAM wParam, LPARAM lParam) {
    if (IsAlive() && IsWindowEnabled()) ::SendMessageA(m_hWnd, WM_LBUTTONDOWN, wParam, lParam);
    return 0;
}

void CSkinButton::PressAt(const POINT& point) {
    if (!IsAlive()) return;
    CRect client;
    GetClientRect(&client);
    if (!client.PtInRect(point)) return;
    hot = pressed = TRUE;
    ::InvalidateRect(m_hWnd, &client, FALSE);
    SetFocus();
}

// Clicks if the pointer is inside. The parent may destroy the button: nothing follows its call.
void CSkinButton::ReleasePush() {
    pressed = FALSE;
    ::ReleaseCapture();
    if (!IsAlive()) return;
    Invalidate(FALSE);
    if (!hot) return;
    hot = FALSE;
    if (HWND parent = GetParent())
        ::SendMessageA(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), BN_CLICKED),
                       reinterpret_cast<LPARAM>(m_hWnd));
}

// Capture is what delivers the move that leaves the button.
void CSkinButton::TrackHot(const POINT& point) {
    CRect client;
    GetClientRect(&client);
    const bool inside = client.PtInRect(point);
    if (inside == static_cast<bool>(hot)) return;
    hot = inside;
    Invalidate(TRUE);
    UpdateWindow();
    if (!IsAlive()) return;
    if (inside)
        SetCapture();
    else if (!pressed)
        ::ReleaseCapture();
}

// After anything that may have made the native control paint. The parent paints first, as it
// shows around the mark; of a check box or radio button only the mark is renewed, not the label.
void CSkinButton::RepaintFace() {
    if (!IsAlive()) return;
    CRect face;
    GetClientRect(&face);
    if (HasMark()) face = tavix::MarkColumn(face);
    tavix::RepaintUnderParent(m_hWnd, face);
    if (!IsAlive()) return;
    ::InvalidateRect(m_hWnd, &face, TRUE);
    UpdateWindow();
}

// Every second erase asks the parent for its brush. The erase in between is the one that this
// invalidation causes, and ends it.
void CSkinButton::EraseOwnerDrawn() {
    eraseToggle = !eraseToggle;
    HWND parent = GetParent();
    if (!eraseToggle || !parent) return;
    const CClientDC dc(m_hWnd);
    HBRUSH brush = reinterpret_cast<HBRUSH>(::SendMessageA(
        parent, WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(dc.m_hDC), reinterpret_cast<LPARAM>(m_hWnd)));
    if (!brush || !IsAlive()) return;
    CRect client;
    GetClientRect(&client);
    ::FillRect(dc, &client, brush);
    Invalidate(TRUE);
}

// Check boxes and radio buttons go straight to the window, over what the parent shows there. The
// types that are neither those nor push buttons stay blank.
void CSkinButton::PaintButton() {
    CPaintDC dc(m_hWnd);
    if (!dc.m_hDC) return;
    CRect client;
    GetClientRect(&client);
    const tavix::ControlText text(m_hWnd);
    const bool enabled = IsWindowEnabled();
    if (IsPushStyle()) {
        const tavix::PushState state{enabled, hot != FALSE, pressed != FALSE, ::GetFocus() == m_hWnd};
        tavix::PaintOffscreen(dc, client, [&](CDC& memory) {
            tavix::PaintPushFace(memory, client, tavix::PushPartsOf(state), text.c_str());
        });
        return;
    }
    if (!HasMark()) return;
    const bool checked = tavix::CallWindow(m_hWnd, BM_GETCHECK) != BST_UNCHECKED;
    // A radio button deliberately makes no second try for the colour beside it.
    tavix::SampleParentBackground(m_hWnd, dc,
                                  IsRadioStyle() ? tavix::SecondTry::None : tavix::SecondTry::ParentOrigin);
    tavix::PaintMarkFace(dc, client,
                         IsRadioStyle() ? tavix::RadioPartsOf(checked, enabled, font)
                                        : tavix::CheckPartsOf(checked, enabled, font),
                         text.c_str());
}
