#include "scroll/stub_region_wnd.h"

#include "engine/skin_values.h"
#include "scroll/scroll_host.h"
#include "tavixskin/framework/gdi.h"
#include "tavixskin/value_ids.h"

IMPLEMENT_DYNAMIC(CStubRegionWnd, CWnd)

BEGIN_MESSAGE_MAP(CStubRegionWnd, CWnd)
    ON_MESSAGE(WM_PAINT, &CStubRegionWnd::OnPaint)
END_MESSAGE_MAP()

namespace {

constexpr int kSide = 20;
constexpr char kPlainChildClass[] = "TavixWnd10";

// Its procedure is the system's, so the class may outlive the library.
bool RegisterPlainChildClass() {
    WNDCLASSA known;
    const HINSTANCE instance = ::GetModuleHandleA(nullptr);
    if (::GetClassInfoA(instance, kPlainChildClass, &known)) return true;
    WNDCLASSA description{};
    description.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = ::DefWindowProcA;
    description.hInstance = instance;
    description.hCursor = ::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    description.lpszClassName = kPlainChildClass;
    return ::RegisterClassA(&description) || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace

int CStubRegionWnd::Create(const char* className, const char* title, DWORD style, const RECT& rect,
                           CWnd* parent, UINT id, void*) {
    if (!className) {
        if (!RegisterPlainChildClass()) return 0;
        className = kPlainChildClass;
    }
    const CRect place(CPoint(rect.left, rect.top), CSize(kSide, kSide));
    return CreateEx(0, className, title, style, place, parent ? parent->GetSafeHwnd() : nullptr, id);
}

LRESULT CStubRegionWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_NCPAINT:
            return 0;
        case kRefreshBar:
            tavix::RefreshHostBar(reinterpret_cast<HWND>(lParam), static_cast<int>(wParam));
            return 0;
        case kDropRemovedHosts:
            tavix::DropRemovedHosts();
            return 0;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

LRESULT CStubRegionWnd::OnPaint(WPARAM, LPARAM) {
    CPaintDC dc(m_hWnd);
    CBitmap* corner = tavix::SkinBitmap(BMP_SB_STUB);
    if (!dc.GetSafeHdc() || !corner) return 0;
    CRect client;
    ::GetClientRect(m_hWnd, &client);
    const CSize size = corner->GetBitmapSize();
    const CMemoryDC source(dc);
    const SelectionGuard selected(source, *corner);
    if (!selected) return 0;
    ::StretchBlt(dc, client.left, client.top, client.Width(), client.Height(), source, 0, 0, size.cx, size.cy,
                 SRCCOPY);
    return 0;
}
