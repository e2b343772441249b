/* The mouse on a dialog's caption. Members are those of dialog_skin.h. */
#include "engine/skin_values.h"
#include "frames/dialog_skin.h"
#include "frames/frame_skin.h"
#include "frames/non_client.h"

namespace {

constexpr int kHot = 1;
constexpr int kPressed = 2;

// The answer for the icon; it equals no code of the system.
constexpr LRESULT kHitIcon = 22;

bool IsButton(LRESULT hitCode) {
    return hitCode == HTCLOSE || hitCode == HTMAXBUTTON || hitCode == HTMINBUTTON || hitCode == HTHELP;
}

// How m_nPressed names a button; 0 for what is none.
int PressedCode(LRESULT hitCode) {
    switch (hitCode) {
        case HTMAXBUTTON:
            return 1;
        case HTMINBUTTON:
            return 2;
        case HTHELP:
            return 3;
        case HTCLOSE:
            return 4;
        default:
            return 0;
    }
}

}  // namespace

int* CSkinDialog::StateOf(LRESULT hitCode) {
    switch (hitCode) {
        case HTMAXBUTTON:
            return &m_nMaxState;
        case HTMINBUTTON:
            return &m_nMinState;
        case HTHELP:
            return &m_nHelpState;
        case HTCLOSE:
            return &m_nCloseState;
        default:
            return nullptr;
    }
}

LRESULT CSkinDialog::HitTest(LRESULT answer, CPoint screen) const {
    CRect window;
    GetWindowRect(&window);
    const CPoint point(screen.x - window.left, screen.y - window.top);
    // While the right button is down nothing of the dialog is hit: neither sizing nor dragging.
    if (::GetKeyState(VK_RBUTTON) < 0) return HTNOWHERE;
    const CRect icon(CPoint(tavix::SkinExtent(SZ_DLG_LEFT), 5), tavix::SmallIconSize());
    if (icon.PtInRect(point) && SmallIcon()) return kHitIcon;
    // A button that does not exist has an empty rectangle.
    if (m_rcClose.PtInRect(point)) return HTCLOSE;
    if (m_rcMax.PtInRect(point)) return HTMAXBUTTON;
    if (m_rcMin.PtInRect(point)) return HTMINBUTTON;
    if (m_rcHelp.PtInRect(point)) return HTHELP;
    // The system's answer for a button that is not drawn is withdrawn.
    return IsButton(answer) ? HTNOWHERE : answer;
}

void CSkinDialog::OnNcMouseMove(WPARAM hitCode, LPARAM lParam) {
    if (::GetCapture() != m_hWnd) RepaintNonClient();
    ClearStates();
    const LRESULT hit = HitTest(static_cast<LRESULT>(hitCode), CPoint(lParam));
    int* state = StateOf(hit);
    if (!state) return;
    *state = m_nPressed == PressedCode(hit) ? kPressed : kHot;
    RepaintNonClient();
    // Each move restarts the one timer that notices the mouse leaving.
    m_nTimer = static_cast<UINT>(::SetTimer(m_hWnd, tavix::kHoverTimerId, tavix::kHoverTimerPeriod, nullptr));
}

void CSkinDialog::OnTimer(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_nTimer || wParam != m_nTimer) {
        Default(message, wParam, lParam);
        return;
    }
    const CPoint mouse(static_cast<LPARAM>(::GetMessagePos()));
    if (!IsButton(HitTest(0, mouse))) {
        ::KillTimer(m_hWnd, m_nTimer);
        ClearStates();
        RepaintNonClient();
    }
}

void CSkinDialog::OnNcLButtonDown(UINT message, WPARAM wParam, LPARAM lParam) {
    int* state = StateOf(static_cast<LRESULT>(wParam));
    if (!state) {
        Default(message, wParam, lParam);
        return;
    }
    ClearStates();
    m_nPressed = PressedCode(static_cast<LRESULT>(wParam));
    *state = kPressed;
    SetCapture();
    OnNcPaint();
}

void CSkinDialog::OnNcLButtonUp(UINT message, WPARAM wParam, LPARAM lParam) {
    if (IsButton(static_cast<LRESULT>(wParam)))
        Release(wParam, lParam);
    else
        Default(message, wParam, lParam);
}

// A release outside the client area brings a point of the screen and has it shifted all the same;
// with the capture taken by the press it is the client's message that comes.
void CSkinDialog::Release(WPARAM wParam, LPARAM lParam) {
    ::ReleaseCapture();
    CPoint point(lParam);
    ::ClientToScreen(m_hWnd, &point);
    const LRESULT hit = HitTest(static_cast<LRESULT>(wParam), point);
    ClearStates();
    int* state = StateOf(hit);
    if (state) *state = kHot;
    RepaintNonClient();
    if (state && m_nPressed == PressedCode(hit)) SendCommandOf(hit);
    m_nPressed = 0;
}

void CSkinDialog::SendCommandOf(LRESULT hitCode) {
    switch (hitCode) {
        case HTHELP:
            ::SendMessageA(m_hWnd, WM_SYSCOMMAND, SC_CONTEXTHELP, 0);
            break;
        case HTMAXBUTTON:
            ::SendMessageA(m_hWnd, WM_SYSCOMMAND, ::IsZoomed(m_hWnd) ? SC_RESTORE : SC_MAXIMIZE, 0);
            break;
        case HTMINBUTTON:
            ::SendMessageA(m_hWnd, WM_SYSCOMMAND, ::IsIconic(m_hWnd) ? SC_RESTORE : SC_MINIMIZE, 0);
            break;
        case HTCLOSE:
            ::SendMessageA(m_hWnd, WM_CLOSE, 0, 0);
            break;
        default:
            break;
    }
}
