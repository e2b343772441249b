#include "commonctrls/tool_bar_skin.h"

#include <windows.h>

#include <commctrl.h>

#include <utility>

#include "controls/parent_background.h"
#include "draw/gradient.h"
#include "draw/offscreen.h"
#include "engine/skin_values.h"
#include "engine/window_call.h"

namespace {

constexpr UINT_PTR kHotTimerId = 4991;
constexpr UINT kHotTimerPeriod = 10;  // milliseconds

/* The colours that the parent shows at both ends of a bar's top row; CLR_INVALID where it shows nothing. */
struct ParentColours {
    COLORREF left = CLR_INVALID;
    COLORREF right = CLR_INVALID;
};

ParentColours ColoursBeside(HWND bar) {
    HWND parent = ::GetParent(bar);
    if (!parent) return {};
    const CRect place = tavix::WindowRectIn(bar, parent);
    const CClientDC dc(parent);
    const ParentColours beside{::GetPixel(dc, place.left - 1, place.top),
                               ::GetPixel(dc, place.right, place.top)};
    // A bar that reaches an edge of its parent has no neighbour there.
    return {beside.left != CLR_INVALID ? beside.left : beside.right,
            beside.right != CLR_INVALID ? beside.right : beside.left};
}

}  // namespace

LRESULT CSkinToolBar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            Default(message, wParam, lParam);
            return 0;
        case WM_SIZE:
            Default(message, wParam, lParam);
            Invalidate(TRUE);
            return 0;
        case WM_PAINT:
            return OnPaint();
        case WM_ERASEBKGND:
            return 1;
        case WM_NCCALCSIZE:
            if (RECT* window = reinterpret_cast<RECT*>(lParam)) tavix::DeflateToolBar(*window);
            return 0;
        case WM_NCPAINT:
            return OnNcPaint();
        case WM_LBUTTONDOWN:
            Default(message, wParam, lParam);
            OnPress(CPoint(lParam));
            return 0;
        case WM_LBUTTONUP:
            Default(message, wParam, lParam);
            OnRelease();
            return 0;
        case WM_MOUSEMOVE:
            Default(message, wParam, lParam);
            TrackHot(CPoint(lParam));
            return 0;
        case WM_TIMER:
            return OnTimer(wParam, lParam);
        case WM_CAPTURECHANGED:
            return OnCaptureChanged(wParam, lParam);
        default:
            return Default(message, wParam, lParam);
    }
}

// ---------------------------------------------------------------- the control

int CSkinToolBar::ButtonCount() const { return static_cast<int>(tavix::CallWindow(m_hWnd, TB_BUTTONCOUNT)); }

int CSkinToolBar::HitTest(POINT point) const {
    return static_cast<int>(tavix::CallWindow(m_hWnd, TB_HITTEST, 0, reinterpret_cast<LPARAM>(&point)));
}

bool CSkinToolBar::ReadFacts(int index, TBBUTTON& facts) const {
    return index >= 0 && tavix::CallWindow(m_hWnd, TB_GETBUTTON, static_cast<WPARAM>(index),
                                           reinterpret_cast<LPARAM>(&facts));
}

// Empty for a button that is hidden or isn't there.
CRect CSkinToolBar::ItemRect(int index) const {
    CRect rect;
    const bool known = index >= 0 && tavix::CallWindow(m_hWnd, TB_GETITEMRECT, static_cast<WPARAM>(index),
                                                       reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect)));
    return known ? rect : CRect();
}

bool CSkinToolBar::ReadButton(int index, tavix::ToolButton& button) const {
    TBBUTTON facts{};
    if (!ReadFacts(index, facts)) return false;
    button = {ItemRect(index), facts.fsStyle, facts.fsState, facts.iBitmap};
    return true;
}

tavix::ToolBarImages CSkinToolBar::Images() const {
    const auto list = [this](UINT message) {
        return reinterpret_cast<HIMAGELIST>(tavix::CallWindow(m_hWnd, message));
    };
    return {list(TB_GETIMAGELIST), list(TB_GETHOTIMAGELIST), list(TB_GETDISABLEDIMAGELIST)};
}

void CSkinToolBar::InvalidateItem(int index, BOOL erase) const {
    const CRect rect = ItemRect(index);
    if (!rect.IsRectEmpty()) ::InvalidateRect(m_hWnd, &rect, erase);
}

// ---------------------------------------------------------------- painting

LRESULT CSkinToolBar::OnPaint() {
    CPaintDC dc(m_hWnd);
    tavix::PaintOffscreen(dc, dc.m_ps.rcPaint, [&](CDC& surface) { PaintToolBar(surface, dc.m_ps.rcPaint); });
    return 0;
}

LRESULT CSkinToolBar::OnNcPaint() const {
    CWindowDC dc(m_hWnd);
    CRect client;
    GetClientRect(&client);
    const CRect window = tavix::WindowRectIn(m_hWnd, m_hWnd);
    client.OffsetRect(-window.left, -window.top);
    ::ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
    tavix::PaintToolBarBackground(dc, CRect(CPoint(), window.Size()), tavix::SkinBitmap(BMP_TOOL_BACKGROUND));
    return 0;
}

void CSkinToolBar::PaintToolBar(CDC& dc, const RECT& shown) const {
    PaintBackground(dc);
    CRect client;
    GetClientRect(&client);
    const tavix::ToolBarImages images = Images();
    const int count = ButtonCount();
    for (int i = 0; i < count; ++i) {
        tavix::ToolButton button;
        CRect part;
        if (!ReadButton(i, button) || !::IntersectRect(&part, &button.rect, &shown)) continue;
        if (const auto look = tavix::LookOfToolButton(button, i == hotButton))
            tavix::PaintToolButton(dc, button, *look, images, client.Height());
    }
}

// A low bar goes on with what its parent shows left and right of it.
void CSkinToolBar::PaintBackground(CDC& dc) const {
    const CRect bar = tavix::WindowRectIn(m_hWnd, m_hWnd);
    CBitmap* bitmap = tavix::IsHighToolBar(bar) ? tavix::SkinBitmap(BMP_TOOL_BACKGROUND) : nullptr;
    const ParentColours beside = bitmap ? ParentColours() : ColoursBeside(m_hWnd);
    if (beside.left == CLR_INVALID)
        tavix::PaintToolBarBackground(dc, bar, bitmap);
    else
        tavix::DrawGradient(&dc, bar, beside.left, beside.right, 0, 0);
}

// Over the button as it shows, without a repaint.
void CSkinToolBar::PaintHot(int index) const {
    tavix::ToolButton button;
    if (!ReadButton(index, button) || !(button.state & TBSTATE_ENABLED)) return;
    CRect client;
    GetClientRect(&client);
    CClientDC dc(m_hWnd);
    tavix::PaintToolButton(dc, button, {tavix::ToolButtonState::Hot, false}, Images(), client.Height());
}

// ---------------------------------------------------------------- mouse

void CSkinToolBar::OnPress(const POINT& point) {
    const int index = HitTest(point);
    TBBUTTON facts{};
    if (ReadFacts(index, facts) && !(facts.fsStyle & BTNS_DROPDOWN)) pressedButton = index;
}

void CSkinToolBar::OnRelease() {
    ::ReleaseCapture();
    pressedButton = -1;
}

void CSkinToolBar::TrackHot(const POINT& point) {
    CRect client;
    GetClientRect(&client);
    if (client.PtInRect(point)) {
        if (!ItemRect(pressedButton).PtInRect(point)) LiftPressed();
        MoveHotTo(HitTest(point));
        return;
    }
    if (hotButton >= 0) {
        StopHotTimer();
        DropHot(FALSE);
    }
    LiftPressed();
}

// A press that was carried off its button shows no longer.
void CSkinToolBar::LiftPressed() const {
    TBBUTTON facts{};
    if (!ReadFacts(pressedButton, facts) || !(facts.fsState & TBSTATE_PRESSED)) return;
    ::SendMessageA(m_hWnd, TB_PRESSBUTTON, static_cast<WPARAM>(facts.idCommand), MAKELPARAM(FALSE, 0));
    InvalidateItem(pressedButton, FALSE);
    UpdateWindow();
}

void CSkinToolBar::MoveHotTo(int index) {
    TBBUTTON facts{};
    if (!ReadFacts(index, facts)) {
        // Repainted while it is still hot: the look stays until something else has the button painted.
        if (hotButton < 0) return;
        InvalidateItem(hotButton, FALSE);
        UpdateWindow();
        hotButton = -1;
        return;
    }
    if (facts.fsStyle == BTNS_SEP) index = -1;
    if (index == hotButton) return;
    const int former = std::exchange(hotButton, index);
    if (former >= 0) {
        InvalidateItem(former, TRUE);
        UpdateWindow();
    }
    if (index < 0) return;
    PaintHot(index);
    hotTimer = ::SetTimer(m_hWnd, kHotTimerId, kHotTimerPeriod, nullptr) ? kHotTimerId : 0;
}

void CSkinToolBar::DropHot(BOOL erase) {
    InvalidateItem(std::exchange(hotButton, -1), erase);
    UpdateWindow();
}

void CSkinToolBar::StopHotTimer() {
    if (hotTimer) ::KillTimer(m_hWnd, std::exchange(hotTimer, 0));
}

LRESULT CSkinToolBar::OnTimer(WPARAM wParam, LPARAM lParam) {
    if (!hotTimer || wParam != hotTimer) return Default(WM_TIMER, wParam, lParam);
    CheckHotLeft();
    return 0;
}

// No message tells of the mouse leaving the bar; the timer looks for it.
void CSkinToolBar::CheckHotLeft() {
    CPoint mouse(static_cast<LPARAM>(::GetMessagePos()));
    ::ScreenToClient(m_hWnd, &mouse);
    if (hotButton >= 0 && HitTest(mouse) == hotButton) return;
    StopHotTimer();
    DropHot(TRUE);
}

// The first button stays hot: only indices above 0 count here.
LRESULT CSkinToolBar::OnCaptureChanged(WPARAM wParam, LPARAM lParam) {
    if (reinterpret_cast<HWND>(lParam) != m_hWnd && hotButton > 0) DropHot(FALSE);
    return Default(WM_CAPTURECHANGED, wParam, lParam);
}
