#include "tavixskin/framework/control_bar.h"

#include <commctrl.h>

#include "tavixskin/framework/frame_wnd.h"

IMPLEMENT_DYNAMIC(CControlBar, CWnd)
IMPLEMENT_DYNAMIC(CToolBar, CControlBar)

BEGIN_MESSAGE_MAP(CControlBar, CWnd)
    ON_MESSAGE(WM_CREATE, &CControlBar::OnCreate)
    ON_MESSAGE(WM_LBUTTONDOWN, &CControlBar::OnLButtonDown)
    ON_MESSAGE(WM_IDLEUPDATECMDUI, &CControlBar::OnIdleUpdateCmdUI)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CToolBar, CControlBar)
    ON_MESSAGE(WM_NCCREATE, &CToolBar::OnNcCreate)
    ON_MESSAGE(WM_NCHITTEST, &CToolBar::OnNcHitTest)
END_MESSAGE_MAP()

namespace {

// What a bar is wider than its buttons, on either side.
constexpr int kMargin = 2;

// As long as a window can be.
constexpr int kStretched = 32767;

class CToolCmdUI final : public CCmdUI {
public:
    CToolCmdUI(HWND bar, UINT id, UINT index) : CCmdUI(id, index), m_bar(bar) {}
    void Enable(bool on) override {
        const LRESULT isOn = ::SendMessageA(m_bar, TB_ISBUTTONENABLED, m_nID, 0);
        if ((isOn > 0) != on) ::SendMessageA(m_bar, TB_ENABLEBUTTON, m_nID, MAKELONG(on, 0));
    }

private:
    HWND m_bar;
};

}  // namespace

// ---------------------------------------------------------------- CControlBar

CControlBar::CControlBar() = default;
CControlBar::~CControlBar() = default;

DWORD CControlBar::GetBarStyle() const { return m_dwStyle; }

void CControlBar::SetBarStyle(DWORD style) {
    if (style == m_dwStyle) return;
    const DWORD former = m_dwStyle;
    m_dwStyle = style;
    OnBarStyleChange(former, style);
}

CSize CControlBar::CalcFixedLayout(bool stretch, bool horizontal) {
    return {stretch && horizontal ? kStretched : 0, stretch && !horizontal ? kStretched : 0};
}

void CControlBar::OnUpdateCmdUI(bool) {}
void CControlBar::OnBarStyleChange(DWORD, DWORD) {}

LRESULT CControlBar::OnCreate(WPARAM, LPARAM) { return Default(); }

LRESULT CControlBar::OnIdleUpdateCmdUI(WPARAM wParam, LPARAM) {
    if (::GetWindowLongA(m_hWnd, GWL_STYLE) & WS_VISIBLE) OnUpdateCmdUI(wParam != 0);
    return 0;
}

LRESULT CControlBar::OnLButtonDown(WPARAM, LPARAM) {
    // The state that goes with the last message taken from the queue.
    const int button = ::GetSystemMetrics(SM_SWAPBUTTON) ? VK_RBUTTON : VK_LBUTTON;
    return ::GetKeyState(button) < 0 ? Default() : 0;
}

// ---------------------------------------------------------------- CToolBar

CToolBar::CToolBar() = default;
CToolBar::~CToolBar() = default;

bool CToolBar::Create(HWND parent, DWORD style, UINT id) {
    if (m_hWnd) return false;
    m_dwStyle = style & CBRS_ALL;
    if (!(m_dwStyle & CBRS_ALIGN_ANY)) m_dwStyle |= CBRS_ALIGN_TOP;
    // The frame places and sizes the bar, not the control itself.
    constexpr DWORD kPlaced = CCS_NOPARENTALIGN | CCS_NOMOVEY | CCS_NODIVIDER | CCS_NORESIZE;
    return CreateEx(0, nullptr, "", (style & ~CBRS_ALL) | kPlaced, CRect(), parent, id);
}

bool CToolBar::PreCreateWindow(CREATESTRUCTA& create) {
    const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&wanted);
    if (!create.lpszClass) create.lpszClass = TOOLBARCLASSNAMEA;
    return CControlBar::PreCreateWindow(create);
}

LRESULT CToolBar::OnNcCreate(WPARAM, LPARAM) {
    const LRESULT result = Default();
    if (result) ::SendMessageA(m_hWnd, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    return result;
}

LRESULT CToolBar::OnNcHitTest(WPARAM, LPARAM) { return HTCLIENT; }

void CToolBar::SetSizes(SIZE button, SIZE image) {
    ::SendMessageA(m_hWnd, TB_SETBITMAPSIZE, 0, MAKELONG(image.cx, image.cy));
    ::SendMessageA(m_hWnd, TB_SETBUTTONSIZE, 0, MAKELONG(button.cx, button.cy));
}

void CToolBar::GetItemRect(int index, RECT& rect) const {
    if (!::SendMessageA(m_hWnd, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect)))
        rect = {};
}

CSize CToolBar::CalcFixedLayout(bool stretch, bool horizontal) {
    CSize size = CControlBar::CalcFixedLayout(stretch, horizontal);
    const int count = static_cast<int>(::SendMessageA(m_hWnd, TB_BUTTONCOUNT, 0, 0));
    // Without a button the bar is as high, or as wide, as one would be.
    const auto button = static_cast<DWORD>(::SendMessageA(m_hWnd, TB_GETBUTTONSIZE, 0, 0));
    const auto raise = [](LONG& value, LONG least) {
        if (value < least) value = least;
    };
    raise(horizontal ? size.cy : size.cx, horizontal ? HIWORD(button) : LOWORD(button));
    for (int i = 0; i < count; ++i) {
        CRect item;
        GetItemRect(i, item);
        raise(size.cx, item.right);
        raise(size.cy, item.bottom);
    }
    (horizontal ? size.cy : size.cx) += 2 * kMargin;
    return size;
}

void CToolBar::OnUpdateCmdUI(bool disableIfNoHandler) {
    CWnd* target = FromHandlePermanent(GetOwner());
    const HWND window = m_hWnd;
    const int count = static_cast<int>(::SendMessageA(m_hWnd, TB_BUTTONCOUNT, 0, 0));
    for (int i = 0; i < count && FromHandlePermanent(window) == this; ++i) {
        TBBUTTON button{};
        if (!::SendMessageA(m_hWnd, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button)))
            continue;
        if (button.fsStyle & BTNS_SEP) continue;
        CToolCmdUI ui(m_hWnd, static_cast<UINT>(button.idCommand), static_cast<UINT>(i));
        // The bar itself comes first, then the window that its commands go to.
        if (UpdateCommand(ui) || (target && target->UpdateCommand(ui))) continue;
        if (disableIfNoHandler) ui.Enable(false);
    }
}
