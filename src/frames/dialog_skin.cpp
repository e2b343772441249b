#include "frames/dialog_skin.h"

#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "engine/tab_controls.h"
#include "engine/window_call.h"
#include "engine/window_class.h"
#include "frames/dialog_paint.h"
#include "frames/frame_geometry.h"
#include "frames/non_client.h"
#include "menus/menu_binding.h"

CSkinDialog::CSkinDialog() : m_Brush(tavix::SkinColour(CLR_TAB_PAGE)) {
    tavix::CreateTitleFont(m_Font);
    const tavix::CaptionButtonGeometry g =
        tavix::UnpackCaptionButtons(CTavixSkin::GetGloalTavixSkinSize(SZ_DLG_BUTTONS));
    m_rcButtons.SetRect(g.left, g.top, g.width, g.height);
}

LRESULT CSkinDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            OnCreate(message, wParam, lParam);
            return 0;
        case WM_INITDIALOG:
            return OnInitDialog(message, wParam, lParam);
        case WM_SIZE:
            Default(message, wParam, lParam);
            Layout();
            return 0;
        case WM_ERASEBKGND:
            OnEraseBkgnd(reinterpret_cast<HDC>(wParam));
            return 1;
        case WM_SETTEXT:
        case WM_SETICON:
            return OnChangedCaption(message, wParam, lParam);
        case WM_NCCALCSIZE:
            return OnNcCalcSize(message, wParam, lParam);
        case WM_NCHITTEST:
            return HitTest(Default(message, wParam, lParam), CPoint(lParam));
        case WM_NCPAINT:
            OnNcPaint();
            return 0;
        case WM_NCACTIVATE:
            RepaintNonClient();
            return 1;
        case WM_NCMOUSEMOVE:
            Default(message, wParam, lParam);
            OnNcMouseMove(wParam, lParam);
            return 0;
        case WM_NCLBUTTONDOWN:
            OnNcLButtonDown(message, wParam, lParam);
            return 0;
        case WM_NCLBUTTONUP:
            OnNcLButtonUp(message, wParam, lParam);
            return 0;
        case WM_LBUTTONUP:
            Release(wParam, lParam);
            return 0;
        case WM_TIMER:
            OnTimer(message, wParam, lParam);
            return 0;
        case WM_INITMENUPOPUP:
            Default(message, wParam, lParam);
            tavix::BindPopupMenu(m_hWnd, reinterpret_cast<HMENU>(wParam));
            return 0;
        case WM_CTLCOLORBTN:
            return reinterpret_cast<LRESULT>(m_dwStyle & DS_CONTROL ? static_cast<HBRUSH>(m_Brush) : nullptr);
        default:
            return Default(message, wParam, lParam);
    }
}

void CSkinDialog::OnCreate(UINT message, WPARAM wParam, LPARAM lParam) {
    m_dwStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE));
    m_dwExStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE));
    Default(message, wParam, lParam);
}

LRESULT CSkinDialog::OnInitDialog(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(message, wParam, lParam);
    if (!::IsWindow(m_hWnd)) return result;
    StripStyle();
    Layout();
    return result;
}

// The caption bits stay in the style, unlike a frame's: the dialog manager looks at them.
void CSkinDialog::StripStyle() {
    m_dwStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE));
    m_dwExStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE));
    if (m_dwStyle & WS_SYSMENU) m_bHasClose = 1;
    if (m_dwStyle & WS_MINIMIZEBOX) m_bHasMin = 1;
    if (m_dwStyle & WS_MAXIMIZEBOX) m_bHasMax = 1;
    if (m_dwStyle & DS_CONTEXTHELP) m_bHasHelp = 1;
    constexpr DWORD kButtonStyles = WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | DS_CONTEXTHELP;
    ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG>(m_dwStyle & ~kButtonStyles));
}

void CSkinDialog::Layout() {
    CRect window;
    GetWindowRect(&window);
    const tavix::DialogButtonRects rects = tavix::LayoutDialogButtons(
        window.Width(), m_rcButtons, {m_bHasClose != 0, m_bHasMax != 0, m_bHasMin != 0, m_bHasHelp != 0});
    m_rcClose = rects.close;
    m_rcMax = rects.max;
    m_rcMin = rects.min;
    m_rcHelp = rects.help;
    if (!tavix::HasCaption(m_dwStyle)) return;
    CBitmap* right = tavix::SkinBitmap(BMP_DLG_CAPTION_RIGHT);
    tavix::SetCornerRegion(m_hWnd, tavix::SkinBitmap(BMP_DLG_CAPTION_LEFT), right,
                           window.Width() - tavix::BitmapSize(right).cx);
}

LRESULT CSkinDialog::OnNcCalcSize(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!tavix::HasCaption(m_dwStyle)) return Default(message, wParam, lParam);
    RECT& rect = *reinterpret_cast<RECT*>(lParam);
    rect = tavix::DeflateByBorders(rect, {tavix::SkinExtent(SZ_DLG_LEFT), tavix::SkinExtent(SZ_DLG_CAPTION),
                                          tavix::SkinExtent(SZ_DLG_RIGHT), tavix::SkinExtent(SZ_DLG_BOTTOM)});
    return 0;
}

// The style still has a caption, so the window's own procedure draws a native one over the skin's
// when the title or the icon changes.
LRESULT CSkinDialog::OnChangedCaption(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(message, wParam, lParam);
    RepaintNonClient();
    return result;
}

HICON CSkinDialog::SmallIcon() const {
    return reinterpret_cast<HICON>(tavix::CallWindow(m_hWnd, WM_GETICON, ICON_SMALL));
}

void CSkinDialog::OnNcPaint() {
    char title[255] = {};
    ::GetWindowTextA(m_hWnd, title, sizeof title);
    const tavix::DialogParts parts{
        .style = m_dwStyle,
        .closeState = m_nCloseState,
        .maxState = m_nMaxState,
        .minState = m_nMinState,
        .helpState = m_nHelpState,
        .present = {m_bHasClose != 0, m_bHasMax != 0, m_bHasMin != 0, m_bHasHelp != 0},
        .buttons = {m_rcClose, m_rcMax, m_rcMin, m_rcHelp},
        .icon = SmallIcon(),
        .title = title,
        .titleFont = m_Font,
    };
    // A child dialog has no skin around its client area; a border that it may have is plain.
    const bool plain = (m_dwStyle & (DS_CONTROL | WS_CHILD)) != 0;
    // Without a caption the window keeps its corners, and they are painted.
    const bool cut = tavix::HasCaption(m_dwStyle);
    tavix::NonClientArea area(m_hWnd, cut ? tavix::SkinBitmap(BMP_DLG_CAPTION_LEFT) : nullptr,
                              cut ? tavix::SkinBitmap(BMP_DLG_CAPTION_RIGHT) : nullptr);
    area.Run(false, [&](CDC& dc, CSize window) {
        if (plain)
            dc.FillSolidRect(CRect(0, 0, window.cx, window.cy), RGB(0, 0, 0));
        else
            tavix::PaintDialog(dc, window, parts);
    });
}

// ---------------------------------------------------------------- background

void CSkinDialog::LookForCoveringTab(HWND ancestor) {
    CRect page, tab;
    GetWindowRect(&page);
    for (HWND window : tavix::TabControlsBelow(ancestor)) {
        ::GetWindowRect(window, &tab);
        if (page.left >= tab.left && page.top >= tab.top && page.right <= tab.right &&
            page.bottom <= tab.bottom)
            m_bOnTabPage = 1;
    }
}

/*
 * A page lies on a tab control if that is its parent, or if a tab control below any window up
 * the chain covers it. The walk goes to the top of the chain: dialogs do not end it.
 */
bool CSkinDialog::IsOnTabPage() {
    if (!(m_dwStyle & DS_CONTROL)) return false;
    HWND parent = GetParent();
    if (!parent) return false;
    if (tavix::WindowClassName(parent).Is("SysTabControl32")) return true;
    for (HWND p = parent; p && !m_bOnTabPage; p = ::GetParent(p)) LookForCoveringTab(p);
    return m_bOnTabPage != 0;
}

HWND CSkinDialog::CaptionedAncestor() const {
    for (HWND p = GetParent(); p; p = ::GetParent(p)) {
        const DWORD style = static_cast<DWORD>(::GetWindowLongA(p, GWL_STYLE));
        if (tavix::HasCaption(style) && tavix::WindowClassName(p).Is("#32770")) return p;
    }
    return nullptr;
}

void CSkinDialog::PaintBackground(HDC dc) {
    CRect client;
    GetClientRect(&client);
    CRect gradient = client;
    if (HWND ancestor = m_dwStyle & WS_CHILD ? CaptionedAncestor() : nullptr) {
        // The ancestor's client area, seen from this dialog's origin.
        ::GetClientRect(ancestor, &gradient);
        CPoint origin;
        ::MapWindowPoints(m_hWnd, ancestor, &origin, 1);
        gradient.OffsetRect(-origin.x, -origin.y);
    }
    tavix::PaintDialogBackground(dc, client, gradient);
}

void CSkinDialog::OnEraseBkgnd(HDC dc) {
    CRect client;
    GetClientRect(&client);
    const bool onTabPage = IsOnTabPage();
    if (dc) {
        if (onTabPage)
            CDC(dc).FillSolidRect(client, tavix::SkinColour(CLR_TAB_PAGE));
        else
            PaintBackground(dc);
        return;
    }
    // Without a context the window is painted by itself, and its own gradient serves.
    CPaintDC paint(m_hWnd);
    if (onTabPage)
        paint.FillSolidRect(client, tavix::SkinColour(CLR_TAB_PAGE));
    else
        tavix::PaintDialogBackground(paint, client, client);
}
