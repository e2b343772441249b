#include "tavixskin/framework/frame_wnd.h"

#include <algorithm>

#include "tavixskin/framework/splitter_wnd.h"

IMPLEMENT_DYNAMIC(CFrameWnd, CWnd)
IMPLEMENT_DYNAMIC(CMDIFrameWnd, CFrameWnd)
IMPLEMENT_DYNAMIC(CMDIChildWnd, CFrameWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
    ON_MESSAGE(WM_SIZE, &CFrameWnd::OnSize)
END_MESSAGE_MAP()

namespace {

CControlBar* ControlBarOf(HWND window) {
    CWnd* object = CWnd::FromHandlePermanent(window);
    return object && object->IsKindOf(RUNTIME_CLASS(CControlBar)) ? static_cast<CControlBar*>(object)
                                                                  : nullptr;
}

// Cuts the strip that a bar of that size takes from its side of the area.
CRect TakeStrip(CRect& area, DWORD style, CSize size) {
    CRect strip = area;
    const int height = std::clamp<int>(size.cy, 0, std::max(area.Height(), 0));
    const int width = std::clamp<int>(size.cx, 0, std::max(area.Width(), 0));
    if (style & CBRS_ALIGN_BOTTOM)
        area.bottom = strip.top = area.bottom - height;
    else if (style & CBRS_ALIGN_LEFT)
        area.left = strip.right = area.left + width;
    else if (style & CBRS_ALIGN_RIGHT)
        area.right = strip.left = area.right - width;
    else
        area.top = strip.bottom = area.top + height;
    return strip;
}

void Place(HWND window, const CRect& rect) {
    ::SetWindowPos(window, nullptr, rect.left, rect.top, rect.Width(), rect.Height(),
                   SWP_NOZORDER | SWP_NOACTIVATE);
}

template <class Visit>
void ForEachBar(HWND frame, Visit visit) {
    HWND next = nullptr;
    for (HWND child = ::GetWindow(frame, GW_CHILD); child; child = next) {
        next = ::GetWindow(child, GW_HWNDNEXT);
        if (CControlBar* bar = ControlBarOf(child)) visit(*bar);
    }
}

}  // namespace

// ---------------------------------------------------------------- CFrameWnd

CFrameWnd::CFrameWnd() = default;
CFrameWnd::~CFrameWnd() = default;

bool CFrameWnd::Create(const char* className, const char* title, DWORD style, const RECT& rect, HMENU menu,
                       HWND parent, DWORD exStyle) {
    m_hMenuAtCreation = menu;
    const bool isMade = CreateEx(exStyle, className, title, style, rect, parent, 0);
    m_hMenuAtCreation = nullptr;
    return isMade;
}

bool CFrameWnd::PreCreateWindow(CREATESTRUCTA& create) {
    if (m_hMenuAtCreation) create.hMenu = m_hMenuAtCreation;
    return CWnd::PreCreateWindow(create);
}

HWND CFrameWnd::GetActiveFrame() const { return m_hWnd; }

HWND CFrameWnd::FrameOf(HWND window) {
    HWND top = nullptr;
    for (HWND above = ::GetAncestor(window, GA_PARENT); above && above != ::GetDesktopWindow();
         above = ::GetAncestor(above, GA_PARENT)) {
        const CWnd* object = FromHandlePermanent(above);
        if (object && object->IsKindOf(RUNTIME_CLASS(CFrameWnd))) return above;
        top = above;
    }
    return top;
}

CRect CFrameWnd::PlaceBars() const {
    CRect rest;
    ::GetClientRect(m_hWnd, &rest);
    ForEachBar(m_hWnd, [&rest](CControlBar& bar) {
        if (!(::GetWindowLongA(bar.m_hWnd, GWL_STYLE) & WS_VISIBLE)) return;
        const DWORD style = bar.GetBarStyle();
        const bool isHorizontal = (style & CBRS_ORIENT_HORZ) != 0 || !(style & CBRS_ALIGN_ANY);
        Place(bar.m_hWnd, TakeStrip(rest, style, bar.CalcFixedLayout(true, isHorizontal)));
    });
    return rest;
}

void CFrameWnd::RecalcLayout() {
    if (!m_hWnd) return;
    const CRect rest = PlaceBars();
    if (HWND content = ::GetDlgItem(m_hWnd, AFX_IDW_PANE_FIRST)) Place(content, rest);
}

LRESULT CFrameWnd::OnSize(WPARAM wParam, LPARAM) {
    const LRESULT result = Default();
    if (wParam != SIZE_MINIMIZED) RecalcLayout();
    return result;
}

void CFrameWnd::UpdateBars() const {
    ForEachBar(m_hWnd,
               [](const CControlBar& bar) { ::SendMessageA(bar.m_hWnd, WM_IDLEUPDATECMDUI, TRUE, 0); });
}

// ---------------------------------------------------------------- CMDIFrameWnd

CMDIFrameWnd::CMDIFrameWnd() = default;
CMDIFrameWnd::~CMDIFrameWnd() = default;

bool CMDIFrameWnd::CreateClient(HMENU windowMenu, DWORD exStyle) {
    if (!m_hWnd || m_hWndMDIClient) return false;
    CLIENTCREATESTRUCT create{windowMenu, AFX_IDM_FIRST_MDICHILD};
    m_hWndMDIClient = ::CreateWindowExA(
        exStyle, "MDIClient", "", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0, 0, 0,
        m_hWnd, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(AFX_IDW_PANE_FIRST)),
        ::GetModuleHandleA(nullptr), &create);
    if (m_hWndMDIClient) RecalcLayout();
    return m_hWndMDIClient != nullptr;
}

HWND CMDIFrameWnd::MDIGetActive(BOOL* maximised) const {
    if (maximised) *maximised = FALSE;
    if (!m_hWndMDIClient) return nullptr;
    return reinterpret_cast<HWND>(
        ::SendMessageA(m_hWndMDIClient, WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(maximised)));
}

HWND CMDIFrameWnd::GetActiveFrame() const {
    HWND child = MDIGetActive();
    return child ? child : m_hWnd;
}

void CMDIFrameWnd::RecalcLayout() {
    if (!m_hWnd) return;
    const CRect rest = PlaceBars();
    if (m_hWndMDIClient) Place(m_hWndMDIClient, rest);
}

LRESULT CMDIFrameWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    // The system would give the client the whole area: its place is RecalcLayout's to choose.
    if (message == WM_SIZE) return 0;
    return ::DefFrameProcA(m_hWnd, m_hWndMDIClient, message, wParam, lParam);
}

// ---------------------------------------------------------------- CMDIChildWnd

CMDIChildWnd::CMDIChildWnd() = default;
CMDIChildWnd::~CMDIChildWnd() = default;

bool CMDIChildWnd::Create(const CMDIFrameWnd& frame, const char* className, const char* title, DWORD style,
                          const RECT& rect) {
    return CreateEx(WS_EX_MDICHILD, className, title, style | WS_CHILD | WS_CLIPSIBLINGS, rect,
                    frame.m_hWndMDIClient, 0);
}

LRESULT CMDIChildWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::DefMDIChildProcA(m_hWnd, message, wParam, lParam);
}
