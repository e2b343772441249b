#include "controls/header_skin.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdint>

#include "draw/offscreen.h"
#include "engine/skin_values.h"
#include "engine/window_call.h"
#include "tavixskin/value_ids.h"

namespace {

/* The bitmaps of one look, by which the skin shows whether an item is pressed. */
struct HeaderParts {
    CBitmap* left;
    CBitmap* tile;
    CBitmap* right;
};

HeaderParts PartsOf(bool pressed) {
    if (pressed)
        return {tavix::SkinBitmap(BMP_HEAD_DOWN_LEFT), tavix::SkinBitmap(BMP_HEAD_DOWN_TILE),
                tavix::SkinBitmap(BMP_HEAD_DOWN_RIGHT)};
    return {tavix::SkinBitmap(BMP_HEAD_LEFT), tavix::SkinBitmap(BMP_HEAD_TILE),
            tavix::SkinBitmap(BMP_HEAD_RIGHT)};
}

int WidthOf(const CBitmap* bitmap) { return bitmap ? static_cast<int>(bitmap->GetBitmapSize().cx) : 0; }

/* Draws pieces in their own width, stretched to the height of the header or of an item. */
class PieceStretcher {
public:
    PieceStretcher(CDC& dc, int width) : m_dc(dc), m_source(dc), m_width(width) {}

    /*
     * At x = from, from + width, ... while x < end; copies that lie outside the header are left out. A host
     * may have made an item as wide as a number can be.
     */
    void Repeat(const CBitmap* piece, std::int64_t from, std::int64_t end, int top, int height) const {
        if (!piece || from >= end) return;
        const CSize size = piece->GetBitmapSize();
        const SelectionGuard selection(m_source, *piece);
        if (!selection || size.cx <= 0) return;
        std::int64_t x = from < 0 ? from - from / size.cx * size.cx : from;
        for (end = std::min<std::int64_t>(end, m_width); x < end; x += size.cx)
            ::StretchBlt(m_dc, static_cast<int>(x), top, size.cx, height, m_source, 0, 0, size.cx, size.cy,
                         SRCCOPY);
    }

    void DrawItemFace(const CRect& item, const HeaderParts& parts) const {
        const auto draw = [&](const CBitmap* piece, std::int64_t from, std::int64_t end) {
            Repeat(piece, from, end, item.top, item.Height());
        };
        const std::int64_t left = item.left;
        const std::int64_t middle = left + WidthOf(parts.left);
        const std::int64_t right = std::int64_t{item.right} - WidthOf(parts.right);
        draw(parts.left, left, left + 1);
        draw(parts.tile, middle, item.right);
        draw(parts.right, right, right + 1);
    }

private:
    CDC& m_dc;
    CMemoryDC m_source;
    int m_width;  // of the header
};

/* An item as its window describes it. */
class ItemFacts {
public:
    ItemFacts(HWND header, int index) {
        m_item.mask = HDI_TEXT | HDI_FORMAT | HDI_BITMAP | HDI_IMAGE;
        m_item.pszText = m_text;
        m_item.cchTextMax = 100;
        tavix::CallWindow(header, HDM_GETITEMA, static_cast<WPARAM>(index),
                          reinterpret_cast<LPARAM>(&m_item));
    }
    ItemFacts(const ItemFacts&) = delete;
    ItemFacts& operator=(const ItemFacts&) = delete;

    bool Has(int format) const { return (m_item.fmt & format) != 0; }
    HBITMAP Bitmap() const { return m_item.hbm; }
    /* The control may have put a text of its own in the buffer's place. */
    const char* Text() const {
        return m_item.pszText && m_item.pszText != LPSTR_TEXTCALLBACKA ? m_item.pszText : "";
    }

private:
    char m_text[255] = {};
    HDITEMA m_item{};
};

void DrawItemBitmap(CDC& dc, const CRect& room, HBITMAP bitmap) {
    BITMAP facts{};
    if (!bitmap || !::GetObjectA(bitmap, sizeof facts, &facts)) return;
    CMemoryDC source(dc);
    const SelectionGuard selection(source, bitmap);
    if (selection)
        dc.BitBlt(room.left, (room.Height() - facts.bmHeight) / 2, facts.bmWidth, facts.bmHeight, source, 0,
                  0, SRCCOPY);
}

// Whatever an item says of its alignment, its text stands at the left.
void DrawItemContent(CDC& dc, CRect room, int width, const ItemFacts& item) {
    if (room.left >= width) return;
    constexpr int kIndent = 2;
    room.left += kIndent;
    if (item.Has(HDF_STRING))
        dc.DrawText(item.Text(), -1, room,
                    DT_VCENTER | DT_SINGLELINE | DT_NOCLIP | DT_NOPREFIX | DT_END_ELLIPSIS);
    else if (item.Has(HDF_BITMAP))
        DrawItemBitmap(dc, room, item.Bitmap());
}

}  // namespace

LRESULT CSkinHeader::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            return OnPaint();
        case WM_ERASEBKGND:
            return 1;
        case WM_LBUTTONDOWN:
            return OnButtonDown(wParam, lParam);
        case WM_LBUTTONUP:
            return OnButtonUp(wParam, lParam);
        case WM_NOTIFY:
            return OnNotify(wParam, lParam);
        default:
            return Default(message, wParam, lParam);
    }
}

int CSkinHeader::RepaintSkin() {
    Invalidate(TRUE);
    ::SendMessageA(m_hWnd, WM_NCPAINT, 0, 0);
    return 1;
}

LRESULT CSkinHeader::OnPaint() {
    CPaintDC dc(m_hWnd);
    CRect client;
    GetClientRect(&client);
    tavix::OffscreenSurface surface(dc, client);
    if (surface && PaintHeader(surface.Dc(), client)) surface.Present();
    return 0;
}

LRESULT CSkinHeader::OnButtonDown(WPARAM wParam, LPARAM lParam) {
    PressAt(CPoint(lParam));
    return Default(WM_LBUTTONDOWN, wParam, lParam);
}

LRESULT CSkinHeader::OnButtonUp(WPARAM wParam, LPARAM lParam) {
    Release();
    return Default(WM_LBUTTONUP, wParam, lParam);
}

// The codes are looked for where a notification has the sender's id: what comes in the record is the
// header's own and is never sent to the header itself.
LRESULT CSkinHeader::OnNotify(WPARAM wParam, LPARAM lParam) {
    const int id = static_cast<int>(wParam);
    if (id == static_cast<int>(HDN_BEGINTRACKA)) tracking = TRUE;
    if (id == static_cast<int>(HDN_ENDTRACKA)) tracking = FALSE;
    return Default(WM_NOTIFY, wParam, lParam);
}

int CSkinHeader::ItemCount() const { return static_cast<int>(tavix::CallWindow(m_hWnd, HDM_GETITEMCOUNT)); }

CRect CSkinHeader::ItemRect(int item) const {
    CRect rect;
    tavix::CallWindow(m_hWnd, HDM_GETITEMRECT, static_cast<WPARAM>(item),
                      reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect)));
    return rect;
}

// The dividers lie at an item's edges: a press there is none of the item.
void CSkinHeader::PressAt(const POINT& point) {
    if (tracking) return;
    const int count = ItemCount();
    for (int i = 0; i < count; ++i) {
        CRect strip = ItemRect(i);
        strip.SetRect(strip.left + 2, strip.top + 1, strip.right - 1, strip.bottom - 2);
        if (!strip.PtInRect(point)) continue;
        pressedItem = i;
        ::InvalidateRect(m_hWnd, &strip, FALSE);
        return;
    }
}

void CSkinHeader::Release() {
    if (pressedItem < 0) return;
    const CRect item = ItemRect(pressedItem);
    pressedItem = -1;
    ::InvalidateRect(m_hWnd, &item, FALSE);
}

// False if nothing is to be shown: the skin draws no header that has an item of its owner's drawing.
bool CSkinHeader::PaintHeader(CDC& dc, const CRect& client) const {
    const HeaderParts normal = PartsOf(false), pressed = PartsOf(true);
    if (!normal.tile) dc.FillSolidRect(client, RGB(0, 0, 0));  // what is shown is never left to chance
    const PieceStretcher stretcher(dc, client.right);
    stretcher.Repeat(normal.tile, 0, client.right, 0, client.Height());
    ::SetBkMode(dc, TRANSPARENT);
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const int count = ItemCount();
    for (int i = 0; i < count; ++i) {
        const CRect rect = ItemRect(i);
        const ItemFacts item(m_hWnd, i);
        if (item.Has(HDF_OWNERDRAW)) return false;
        stretcher.DrawItemFace(rect, i == pressedItem ? pressed : normal);
        DrawItemContent(dc, rect, client.right, item);
    }
    return true;
}
