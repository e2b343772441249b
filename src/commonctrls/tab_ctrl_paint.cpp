#include "commonctrls/tab_ctrl_paint.h"

#include "commonctrls/tab_ctrl_geometry.h"
#include "draw/bitmap_draw.h"
#include "draw/gradient.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"

namespace tavix {

namespace {

/* As TileHorizontally, the last tile cut at `end`. */
void TileUpTo(CDC& dc, CBitmap* bitmap, int from, int end, int y) {
    const CSize size = BitmapSize(bitmap);
    if (size.cx <= 0 || from >= end) return;
    const int whole = from + (end - from) / size.cx * size.cx;
    TileHorizontally(dc, bitmap, from, whole, y);
    DrawBitmapIn(dc, bitmap, CRect(whole, y, end, y + size.cy));
}

/* What the parent shows below the control; black where the control reaches beyond its parent. */
void PaintBehind(CDC& dc, const RECT& client, const RECT& gradient) {
    CRect covered;
    const bool any = ::IntersectRect(&covered, &client, &gradient) != 0;
    if (!any || !::EqualRect(&covered, &client)) dc.FillSolidRect(client, RGB(0, 0, 0));
    if (any) DrawGradient(&dc, gradient, SkinColour(CLR_DLG_BACK_FROM), SkinColour(CLR_DLG_BACK_TO), 0, 0);
}

void PaintSideEdge(CDC& dc, CBitmap* piece, int x, const CRect& body, int cornerHeight) {
    const CSize size = BitmapSize(piece);
    if (size.cy <= 0) return;
    const int limit = body.Height() - cornerHeight;
    for (int y = BitmapSize(SkinBitmap(BMP_TAB_PANE_TOPLEFT)).cy; y < limit; y += size.cy) {
        const int height = TabEdgePieceHeight(y, limit, size.cy, cornerHeight);
        const int top = body.top + y;
        DrawBitmapIn(dc, piece, CRect(x, top, x + size.cx, top + height));
    }
}

void PaintTopEdge(CDC& dc, const CRect& body) {
    CBitmap* left = SkinBitmap(BMP_TAB_PANE_TOPLEFT);
    CBitmap* right = SkinBitmap(BMP_TAB_PANE_TOPRIGHT);
    DrawBitmap(dc, left, 0, body.top);
    TileHorizontally(dc, SkinBitmap(BMP_TAB_PANE_TOP), BitmapSize(left).cx, body.right, body.top);
    DrawBitmap(dc, right, body.right - BitmapSize(right).cx, body.top);
}

/* The bottom edge ends where a side edge starts, not where the corner does; the corner covers it. */
void PaintBottomEdge(CDC& dc, const CRect& body) {
    const COLORREF key = SkinColour(CLR_TRANSPARENT);
    CBitmap* left = SkinBitmap(BMP_TAB_PANE_BOTTOMLEFT);
    CBitmap* tile = SkinBitmap(BMP_TAB_PANE_BOTTOM);
    CBitmap* right = SkinBitmap(BMP_TAB_PANE_BOTTOMRIGHT);
    const auto corner = [&](CBitmap* bitmap, int x) {
        DrawTransparent(&dc, bitmap, x, body.bottom - BitmapSize(bitmap).cy, 0, 0, key);
    };
    corner(left, 0);
    TileUpTo(dc, tile, BitmapSize(left).cx, body.right - BitmapSize(SkinBitmap(BMP_TAB_PANE_RIGHT)).cx,
             body.bottom - BitmapSize(tile).cy);
    corner(right, body.right - BitmapSize(right).cx);
}

void PaintBody(CDC& dc, const CRect& body) {
    const int cornerHeight = BitmapSize(SkinBitmap(BMP_TAB_PANE_BOTTOMLEFT)).cy;
    const CRect page(body.left, body.top, body.right, body.bottom - cornerHeight);
    if (!page.IsRectEmpty()) dc.FillSolidRect(page, SkinColour(CLR_TAB_PAGE));
    PaintTopEdge(dc, body);
    CBitmap* right = SkinBitmap(BMP_TAB_PANE_RIGHT);
    PaintSideEdge(dc, SkinBitmap(BMP_TAB_PANE_LEFT), 0, body, cornerHeight);
    PaintSideEdge(dc, right, body.right - BitmapSize(right).cx, body, cornerHeight);
    PaintBottomEdge(dc, body);
}

void PaintTab(CDC& dc, const TabFace& tab, bool selected) {
    CBitmap* left = SkinBitmap(selected ? BMP_TAB_SEL_LEFT : BMP_TAB_LEFT);
    CBitmap* middle = SkinBitmap(selected ? BMP_TAB_SEL_TILE : BMP_TAB_TILE);
    CBitmap* right = SkinBitmap(selected ? BMP_TAB_SEL_RIGHT : BMP_TAB_RIGHT);
    const CRect& rect = tab.rect;
    DrawBitmap(dc, left, rect.left, rect.top);
    TileUpTo(dc, middle, rect.left + BitmapSize(left).cx, rect.right, rect.top);
    DrawBitmap(dc, right, rect.right - BitmapSize(right).cx, rect.top);

    // Fixed colours: white stands out from the selected tab of every skin.
    ::SetTextColor(dc, selected ? RGB(255, 255, 255) : ::GetSysColor(COLOR_WINDOWTEXT));
    CRect room = rect;
    dc.DrawText(tab.text.c_str(), -1, room, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

}  // namespace

void PaintTabCtrl(CDC& dc, const RECT& client, const TabCtrlParts& parts) {
    if (parts.tabs.empty()) {
        dc.FillSolidRect(client, RGB(0, 0, 0));
        return;
    }
    PaintBehind(dc, client, parts.gradient);
    PaintBody(dc, TabBody(client, parts.tabs.front().rect));

    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const int mode = ::SetBkMode(dc, TRANSPARENT);
    const COLORREF former = ::GetTextColor(dc);
    for (std::size_t i = 0; i < parts.tabs.size(); ++i)
        PaintTab(dc, parts.tabs[i], static_cast<int>(i) == parts.selected);
    ::SetTextColor(dc, former);
    ::SetBkMode(dc, mode);
}

}  // namespace tavix
