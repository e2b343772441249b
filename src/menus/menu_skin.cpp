#include "menus/menu_skin.h"

#include "draw/menu_font.h"
#include "draw/offscreen.h"
#include "engine/skin_values.h"
#include "menus/menu_state.h"

IMPLEMENT_DYNAMIC(CSkinMenu, CSkinWndBaseClass)

namespace {

constexpr int kStripeWidth = 25;  // of the stripe beneath the items' icons
// Of a popup that casts its own shadow; no skin value changes them.
constexpr COLORREF kOuterLine = 0xAEAEAE;
constexpr COLORREF kInnerLine = 0xFFFFF6;

/* A system that doesn't know the setting is taken to cast shadows. */
bool HasSystemDropShadow() {
    BOOL hasShadow = FALSE;
    return !::SystemParametersInfoA(SPI_GETDROPSHADOW, 0, &hasShadow, 0) || hasShadow;
}

/* A frame of one pixel inside the rectangle; of its lines only those that show on the context. */
void DrawLines(CDC& dc, const RECT& rect, COLORREF colour) {
    RECT shown;
    ::GetClipBox(dc, &shown);
    const RECT lines[] = {{rect.left, rect.top, rect.right, rect.top + 1},
                          {rect.left, rect.top, rect.left + 1, rect.bottom},
                          {rect.right - 1, rect.top, rect.right, rect.bottom},
                          {rect.left, rect.bottom - 1, rect.right, rect.bottom}};
    for (const RECT& line : lines) {
        RECT part;
        if (::IntersectRect(&part, &line, &shown)) dc.FillSolidRect(part, colour);
    }
}

/* What the skin's frame takes at the right and at the bottom. */
int FarBorder() { return HasSystemDropShadow() ? 1 : tavix::kShadowWidth + 1; }

}  // namespace

CSkinMenu::CSkinMenu() {
    tavix::CreateMenuFont(m_ItemFont);
    tavix::MenuState& menus = tavix::ThreadMenus();
    menus.pendingSkin = this;
    HMENU waiting = menus.pendingMenu;
    if (!waiting) return;
    menus.pendingMenu = nullptr;
    menus.pendingSkin = nullptr;
    menus.SetSkinOf(waiting, this);
    BindMenu(waiting);
}

CSkinMenu::~CSkinMenu() {
    RestoreItems();
    tavix::ThreadMenus().ForgetSkin(this);
}

void CSkinMenu::BindMenu(HMENU menu) {
    m_hMenu = menu;
    ConvertItems();
}

LRESULT CSkinMenu::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isBound = m_hMenu != nullptr;
    switch (message) {
        case WM_DESTROY:
        case WM_NCDESTROY:
            RestoreItems();
            return Default(message, wParam, lParam);
        case WM_PAINT:
            return OnPaint(message, wParam, lParam);
        case WM_ERASEBKGND:
            if (!isBound) break;
            EraseClient(CDC(reinterpret_cast<HDC>(wParam)));
            return 0;
        case WM_SHOWWINDOW:
            // A window that is hidden may be kept by the system, but its menu goes back to the host.
            if (!wParam) ::PostMessageA(m_hWnd, WM_DESTROY, 0, 0);
            return Default(message, wParam, lParam);
        case WM_WINDOWPOSCHANGING:
        case WM_WINDOWPOSCHANGED:
            if (!isBound) break;
            OnWindowPos(*reinterpret_cast<WINDOWPOS*>(lParam), message == WM_WINDOWPOSCHANGING);
            return 0;
        case WM_NCCALCSIZE:
            if (!isBound) break;
            // The first rectangle of the larger structure stands where the lone rectangle does.
            AdjustClientRect(*reinterpret_cast<RECT*>(lParam));
            return 0;
        case WM_NCPAINT:
            if (!isBound) break;
            if (m_hWnd && !m_backdrop) CaptureBackdrop();
            PaintFrame(reinterpret_cast<HRGN>(wParam));
            return 0;
        default:
            break;
    }
    return Default(message, wParam, lParam);
}

LRESULT CSkinMenu::OnPaint(UINT message, WPARAM wParam, LPARAM lParam) {
    Default(message, wParam, lParam);
    if (m_hMenu && !HasNativeBorder()) PaintMargin();
    PaintFrame(nullptr);
    return 1;
}

/*
 * Where the system draws a popup's border in the client area, it leaves room for it there; the
 * window then grows by what the skin's frame takes, so that all items fit.
 */
void CSkinMenu::OnWindowPos(WINDOWPOS& position, bool isChanging) {
    m_ptWindow = CPoint(position.x, position.y);
    if (!isChanging || (position.flags & SWP_NOSIZE) || HasNativeBorder()) return;
    position.cx += 1 + FarBorder();
    position.cy += 1 + FarBorder();
}

bool CSkinMenu::HasNativeBorder() const {
    constexpr LONG_PTR kStyles = WS_BORDER | WS_DLGFRAME | WS_THICKFRAME;
    constexpr LONG_PTR kExStyles = WS_EX_DLGMODALFRAME | WS_EX_CLIENTEDGE | WS_EX_STATICEDGE;
    return (::GetWindowLongPtrA(m_hWnd, GWL_STYLE) & kStyles) ||
           (::GetWindowLongPtrA(m_hWnd, GWL_EXSTYLE) & kExStyles);
}

void CSkinMenu::AdjustClientRect(RECT& rect) const {
    rect.left += 1;
    rect.top += 1;
    rect.right -= FarBorder();
    rect.bottom -= FarBorder();
}

void CSkinMenu::EraseClient(CDC dc) const {
    CRect client;
    GetClientRect(&client);
    dc.FillSolidRect(client, tavix::SkinColour(CLR_MENU_BACK));
    client.right = kStripeWidth;
    dc.FillSolidRect(client, tavix::SkinColour(CLR_MENU_STRIPE));
}

/* The border that the system has drawn within the client area is the skin's background. */
void CSkinMenu::PaintMargin() const {
    constexpr int kMargin = 3;
    const CClientDC dc(m_hWnd);
    if (!dc.GetSafeHdc()) return;
    CRect client;
    GetClientRect(&client);
    client.DeflateRect(kMargin, kMargin);
    ::ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
    EraseClient(CDC(dc.GetSafeHdc()));
}

/* Before the popup shows: what lies beneath it and its shadow. */
void CSkinMenu::CaptureBackdrop() {
    CRect window;
    GetWindowRect(&window);
    m_backdrop.Capture(m_ptWindow, window.Size());
}

void CSkinMenu::PaintFrame(HRGN region) const {
    CWindowDC dc(m_hWnd);
    if (!dc.GetSafeHdc()) return;
    if (region) ::SelectClipRgn(dc, region);
    CRect window;
    GetWindowRect(&window);
    CRect client;
    GetClientRect(&client);
    POINT origin{0, 0};
    ::ClientToScreen(m_hWnd, &origin);
    client.OffsetRect(origin.x - window.left, origin.y - window.top);
    ::ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
    const CRect whole(CPoint(), window.Size());
    const bool hasSystemShadow = HasSystemDropShadow();

    CRect hole;
    ::IntersectRect(&hole, &client, &whole);
    tavix::PaintOffscreenAround(dc, whole, hole, [&](CDC& picture) {
        picture.FillSolidRect(whole, tavix::SkinColour(CLR_MENU_BACK));
        if (hasSystemShadow) {
            DrawLines(picture, whole, tavix::SkinColour(CLR_MENU_BORDER));
            return;
        }
        const CRect frame(0, 0, whole.right - tavix::kShadowWidth, whole.bottom - tavix::kShadowWidth);
        DrawLines(picture, {1, 1, frame.right, frame.bottom}, kInnerLine);
        DrawLines(picture, frame, kOuterLine);
        tavix::PaintDropShadow(picture, whole.Size(), m_backdrop);
    });
}
