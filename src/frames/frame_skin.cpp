#include "frames/frame_skin.h"

#include <cstring>

#include "engine/skin_values.h"
#include "frames/frame_paint.h"
#include "frames/non_client.h"
#include "tavixskin/framework/wnd.h"
#include "tavixskin/skin_menu_bar.h"

namespace {

/* What a frame's window loses, so that the system draws no caption, and the bits in between. */
constexpr DWORD kStrippedStyles = WS_MAXIMIZEBOX | WS_MINIMIZEBOX | WS_CAPTION | 0x00000200;
constexpr DWORD kAddedStyles = 0x00000100;

/* The skin's minimum sizes of a frame are stored with this added. */
constexpr int kMinTrackBias = 100;

}  // namespace

CSkinFrame::CSkinFrame() {
    const tavix::CaptionButtonGeometry g =
        tavix::UnpackCaptionButtons(CTavixSkin::GetGloalTavixSkinSize(SZ_FRAME_BUTTONS));
    m_rcButtons.SetRect(g.left, g.top, g.width, g.height);
    tavix::CreateTitleFont(m_Font);
}

LRESULT CSkinFrame::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!::IsWindow(m_hWnd)) return 0;
    switch (message) {
        case WM_CREATE:
            Default(message, wParam, lParam);
            OnCreate();
            return 0;
        case WM_SIZE:
            Default(message, wParam, lParam);
            OnSize();
            return 0;
        case WM_ACTIVATE:
            Default(message, wParam, lParam);
            OnActivate(wParam);
            return 0;
        case WM_SETTEXT:
            Default(message, wParam, lParam);
            OnSetText(lParam);
            return 0;
        case WM_GETTEXT:
            return OnGetText(message, wParam, lParam);
        case WM_ERASEBKGND:
            return 0;
        case WM_SHOWWINDOW:
            Default(message, wParam, lParam);
            ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_FRAMECHANGED);
            return 0;
        case WM_GETMINMAXINFO:
            OnGetMinMaxInfo(message, wParam, lParam);
            return 0;
        case WM_NCCALCSIZE:
            OnNcCalcSize(lParam);
            return 0;
        case WM_NCHITTEST:
            return HitTest(Default(message, wParam, lParam), CPoint(lParam));
        case WM_NCPAINT:
            OnNcPaint();
            return 0;
        case WM_NCACTIVATE:
            m_bActive = static_cast<int>(wParam);
            RepaintNonClient();
            return 1;
        case WM_NCMOUSEMOVE:
            OnNcMouseMove(wParam);
            return 0;
        case WM_NCLBUTTONDOWN:
            OnNcLButtonDown(message, wParam, lParam);
            return 0;
        case WM_NCLBUTTONDBLCLK:
            OnNcLButtonDblClk(wParam, lParam);
            return 0;
        case WM_MOUSEMOVE:
            OnMouseMove(wParam, lParam);
            return 0;
        case WM_LBUTTONUP:
            return OnLButtonUp(message, wParam, lParam);
        case WM_TIMER:
            return OnTimer(message, wParam, lParam);
        case WM_SYSCOMMAND:
            return OnSysCommand(message, wParam, lParam);
        case WM_INITMENUPOPUP:
            OnInitMenuPopup(message, wParam, lParam);
            return 0;
        case WM_MDISETMENU:
            tavix::SynchronizeMenuBar(m_hWnd, ::GetMenu(m_hWnd));
            Default(message, wParam, lParam);
            return 0;
        case tavix::kFrameSetMenu:
            m_hMenu = reinterpret_cast<HMENU>(wParam);
            return 0;
        case tavix::kFrameSyncMenuObject:
            OnSyncMenuObject(wParam);
            return 0;
        case tavix::kFrameSyncMenu:
            OnSyncMenu();
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

void CSkinFrame::OnCreate() {
    if (!::IsWindow(m_hWnd)) return;
    StripStyle();
    RepaintNonClient();
}

void CSkinFrame::StripStyle() {
    char title[255] = {};
    ::GetWindowTextA(m_hWnd, title, sizeof title);
    m_strTitle = title;
    if (HMENU menu = ::GetMenu(m_hWnd)) {
        m_hMenu = menu;
        m_bHasMenu = 1;
    }
    m_dwStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE));
    ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG>((m_dwStyle & ~kStrippedStyles) | kAddedStyles));
    m_bCacheTitle = 1;
}

void CSkinFrame::OnSize() {
    CRect window;
    GetWindowRect(&window);
    const tavix::FrameButtonRects rects = tavix::LayoutFrameButtons(window.Width(), m_rcButtons);
    m_rcMin = rects.min;
    m_rcMax = rects.max;
    m_rcClose = rects.close;
    // The right corner is placed by the border's width here and by the bitmap's in the painting;
    // a skin makes the two agree.
    tavix::SetCornerRegion(m_hWnd, tavix::SkinBitmap(BMP_FRAME_CAPTION_LEFT),
                           tavix::SkinBitmap(BMP_FRAME_CAPTION_RIGHT),
                           window.Width() - tavix::SkinExtent(SZ_FRAME_RIGHT));
    RepaintNonClient();
}

void CSkinFrame::OnActivate(WPARAM wParam) {
    // The whole word: an activation of a minimised window has a bit in its high half and is neither.
    if (wParam == WA_INACTIVE) {
        m_bActive = 0;
        ::ReleaseCapture();
    } else if (wParam == WA_ACTIVE || wParam == WA_CLICKACTIVE) {
        m_bActive = 1;
    }
    RepaintNonClient();
}

void CSkinFrame::OnSetText(LPARAM lParam) {
    if (!m_bCacheTitle) return;
    m_strTitle = reinterpret_cast<const char*>(lParam);
    RepaintNonClient();
}

LRESULT CSkinFrame::OnGetText(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_bCacheTitle) return Default(message, wParam, lParam);
    const int length = m_strTitle.GetLength();
    if (char* buffer = reinterpret_cast<char*>(lParam); buffer && wParam > 0) {
        // What the caller named is never exceeded, and the length returned is the full one.
        const std::size_t room = wParam - 1;
        const std::size_t copied =
            static_cast<std::size_t>(length) < room ? static_cast<std::size_t>(length) : room;
        std::memcpy(buffer, m_strTitle.c_str(), copied);
        buffer[copied] = 0;
    }
    return length;
}

void CSkinFrame::OnGetMinMaxInfo(UINT message, WPARAM wParam, LPARAM lParam) {
    CRect workArea;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &workArea, 0);
    Default(message, wParam, lParam);
    MINMAXINFO& info = *reinterpret_cast<MINMAXINFO*>(lParam);
    const auto raise = [](LONG& value, int least) {
        if (value < least) value = least;
    };
    raise(info.ptMinTrackSize.x, tavix::SkinExtent(SZ_MIN_TRACK_X) - kMinTrackBias);
    raise(info.ptMinTrackSize.y, tavix::SkinExtent(SZ_MIN_TRACK_Y) - kMinTrackBias);
    // A maximised frame hides its bottom border below the work area.
    info.ptMaxSize.y = workArea.Height() + tavix::SkinExtent(SZ_FRAME_BOTTOM);
}

void CSkinFrame::OnNcCalcSize(LPARAM lParam) const {
    RECT& rect = *reinterpret_cast<RECT*>(lParam);
    const int caption = tavix::HasCaption(m_dwStyle) ? tavix::SkinExtent(SZ_FRAME_CAPTION) : 0;
    rect = tavix::DeflateByBorders(
        rect, {tavix::SkinExtent(SZ_FRAME_LEFT), caption, tavix::SkinExtent(SZ_FRAME_RIGHT),
               tavix::SkinExtent(SZ_FRAME_BOTTOM)});
}

void CSkinFrame::OnNcPaint() {
    const tavix::FrameParts parts{
        .style = m_dwStyle,
        .hasMenuBar = tavix::FrameMenuBar(m_hWnd) != nullptr,
        .closeState = m_nCloseState,
        .maxState = m_nMaxState,
        .minState = m_nMinState,
        .buttons = {m_rcMin, m_rcMax, m_rcClose},
        .title = m_strTitle,
        .titleFont = m_Font,
    };
    tavix::NonClientArea area(m_hWnd, tavix::SkinBitmap(BMP_FRAME_CAPTION_LEFT),
                              tavix::SkinBitmap(BMP_FRAME_CAPTION_RIGHT));
    // With a menu bar one border takes a colour read at the other, so both are painted at once.
    area.Run(parts.hasMenuBar, [&](CDC& dc, CSize window) { tavix::PaintFrame(dc, window, parts); });
}

namespace tavix {

namespace {

// A property may be left over, or be another program's: only an object that the library knows is
// looked into.
CWnd* AnnouncedObject(HWND frame) {
    void* property = ::GetPropA(frame, kMenuBarProperty);
    const CHandleMap* map = property ? AfxMapHWND(false) : nullptr;
    return map && map->HasPermanent(property) ? static_cast<CWnd*>(property) : nullptr;
}

}  // namespace

bool AnnouncesMenuBar(HWND frame) { return ::GetPropA(frame, kMenuBarProperty) != nullptr; }

HWND FrameMenuBar(HWND frame) {
    const CWnd* bar = AnnouncedObject(frame);
    return bar && ::IsWindow(bar->GetSafeHwnd()) ? bar->GetSafeHwnd() : nullptr;
}

void SynchronizeMenuBar(HWND frame, HMENU menu) {
    CWnd* bar = AnnouncedObject(frame);
    if (bar && bar->IsKindOf(RUNTIME_CLASS(CSkinMenuBar)))
        static_cast<CSkinMenuBar*>(bar)->SynchronizeMenubar(menu);
}

}  // namespace tavix
