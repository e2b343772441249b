// What a menu bar looks like. Its band and the black of its text are fixed; the hot and the open button
// take their colours from the skin.
#include "draw/bitmap_draw.h"
#include "draw/offscreen.h"
#include "engine/skin_values.h"
#include "frames/non_client.h"
#include "menus/menu_bar_parts.h"
#include "tavixskin/value_ids.h"

namespace {

constexpr COLORREF kText = 0x000000;
constexpr int kShadowWidth = 4;

/*
 * The shadow that an open button throws to its right: four columns, darker towards the button,
 * that begin four rows below its top. They start from the band's colour at the top right corner.
 */
void PaintShadow(CDC& dc, const CRect& button) {
    constexpr int kFirstShaded = 4;
    constexpr int kFirstFull = 8;
    const int right = button.right + kShadowWidth;
    COLORREF colour = ::GetPixel(dc, right - 1, button.top);
    for (int k = 1; k <= kShadowWidth; ++k) {
        const int x = right - k;
        const auto set = [&](int row, COLORREF pixel) { ::SetPixelV(dc, x, button.top + row, pixel); };
        for (int row = 0; row < kFirstShaded; ++row) {
            if (colour == CLR_INVALID) colour = ::GetPixel(dc, x, button.top + row);
            set(row, colour);
        }
        for (int row = kFirstShaded; row < kFirstFull; ++row)
            set(row, tavix::DarkenColor(k * 6 * (row - (kFirstShaded - 1)), colour));
        const COLORREF full = tavix::DarkenColor(k * 30, colour);
        for (int row = kFirstFull; row < button.Height(); ++row) set(row, full);
    }
}

/* Puts the window's context of the bar in the hands of a painting. */
template <class Paint>
void PaintOnWindow(HWND window, Paint paint) {
    CWindowDC dc(window);
    if (dc.GetSafeHdc()) paint(dc);
}

}  // namespace

LRESULT CSkinMenuBar::OnPaint(WPARAM, LPARAM) {
    const CPaintDC updated(m_hWnd);
    CRect clip;
    if (!updated.GetSafeHdc() || ::GetClipBox(updated, &clip) == ERROR) return 0;
    const CRect client = ClientInWindow();
    clip.OffsetRect(client.left, client.top);
    CRect window;
    ::GetWindowRect(m_hWnd, &window);
    window.OffsetRect(-window.left, -window.top);
    PaintOnWindow(m_hWnd, [&](CDC& dc) {
        tavix::PaintOffscreen(dc, clip, [&](CDC& surface) {
            tavix::PaintMenuBand(surface, window);
            PaintButtons(surface, client);
        });
    });
    return 0;
}

void CSkinMenuBar::PaintButtons(CDC& dc, const CRect& client) const {
    // Not the font that the buttons were measured with.
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const int mode = ::SetBkMode(dc, TRANSPARENT);
    const COLORREF former = ::SetTextColor(dc, kText);
    const bool isOpen = m_trackingState == TRACKING_POPUP;
    const int count = GetButtonCount();
    for (int i = 0; i < count; ++i) {
        CRect rect;
        GetItemRect(i, rect);
        rect.OffsetRect(client.left, client.top);
        const bool isLit = i == (isOpen ? m_nPopupButton : m_nHotItem);
        if (!isOpen || isLit) {
            const int margin = isOpen ? 1 : 2;
            rect.SetRect(rect.left, rect.top + margin, rect.right - kShadowWidth, rect.bottom - margin);
        }
        if (isLit) {
            dc.FillSolidRect(rect, tavix::SkinColour(CLR_MENU_SEL_BACK));
            if (isOpen) PaintShadow(dc, rect);
        }
        // Entry i, also where equal texts share an entry and the later ones have moved up.
        if (i >= m_buttonTexts.GetSize()) continue;
        ::SetTextColor(dc, isLit ? tavix::SkinColour(CLR_TEXT_HIGHLIGHT) : kText);
        dc.DrawText(m_buttonTexts[i], -1, rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    }
    ::SetTextColor(dc, former);
    ::SetBkMode(dc, mode);
}

LRESULT CSkinMenuBar::OnNcPaint(WPARAM, LPARAM) {
    PaintOnWindow(m_hWnd, [&](CDC& dc) {
        const CRect client = ClientInWindow();
        ::ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
        CRect window;
        ::GetWindowRect(m_hWnd, &window);
        window.OffsetRect(-window.left, -window.top);
        tavix::PaintMenuBand(dc, window);
        if (!ShowsMaximizedChild()) return;
        PaintActiveIcon(dc);
        DrawCaptionBtn(&dc);
    });
    return 0;
}

void CSkinMenuBar::PaintActiveIcon(CDC& dc) const {
    constexpr int kMargin = 5;
    const auto child = reinterpret_cast<HWND>(::SendMessageA(m_hMdiClient, WM_MDIGETACTIVE, 0, 0));
    const auto icon = child ? reinterpret_cast<HICON>(::GetClassLongPtrA(child, GCLP_HICONSM)) : nullptr;
    if (!icon) return;
    const CSize size = tavix::SmallIconSize();
    const auto copy = static_cast<HICON>(::CopyImage(icon, IMAGE_ICON, size.cx, size.cx, 0));
    if (!copy) return;
    ::DrawIconEx(dc, tavix::SkinExtent(SZ_DLG_LEFT) + kMargin, kMargin, copy, size.cx, size.cy, 0, nullptr,
                 DI_NORMAL);
    ::DestroyIcon(copy);
}

void CSkinMenuBar::DrawCaptionBtn(CDC* dc) {
    if (!dc) return;
    const auto draw = [dc](DWORD base, BOOL hot, const CRect& rect) {
        tavix::DrawBitmapIn(*dc, tavix::SkinBitmap(base + (hot ? 1 : 0)), rect);
    };
    draw(BMP_FRAME_MIN_NORMAL, m_bMinimizeHot, m_rcMinimize);
    draw(BMP_FRAME_MAX_NORMAL, m_bRestoreHot, m_rcRestore);
    draw(BMP_FRAME_CLOSE_NORMAL, m_bCloseHot, m_rcClose);
}

void CSkinMenuBar::RepaintCaptionButtons() {
    PaintOnWindow(m_hWnd, [&](CDC& dc) { DrawCaptionBtn(&dc); });
}
