#include "controls/combo_box_paint.h"

#include <algorithm>
#include <vector>

#include "draw/bitmap_draw.h"
#include "draw/bitmap_region.h"
#include "draw/menu_font.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "tavixskin/value_ids.h"

namespace tavix {

namespace {

/* More runs of key-coloured pixels than a shape has that anybody drew; they cost the whole desktop dear. */
constexpr int kMostCapRuns = 1'024;

/* The rectangles of a region. */
std::vector<RECT> RectsOf(const CRgn& region) {
    std::vector<BYTE> buffer(::GetRegionData(region, 0, nullptr));
    auto* data = reinterpret_cast<RGNDATA*>(buffer.data());
    if (!::GetRegionData(region, static_cast<DWORD>(buffer.size()), data)) return {};
    const RECT* first = reinterpret_cast<const RECT*>(data->Buffer);
    return {first, first + data->rdh.nCount};
}

/*
 * Where a piece that DrawVerticalStretch draws to that height is key-coloured: its upper half, its middle
 * row all the way, its lower half. No picture of it is made: this runs at each painting of a frame.
 */
void MakeStretchedKeyRegion(CRgn& shape, CBitmap* piece, const CSize& size, int height, COLORREF key) {
    const int middle = size.cy / 2, lowerTop = height - middle;
    CRgn whole, rows;
    RegionFromBitmapKey(&whole, piece, key);
    shape.CreateRectRgn(0, 0, 0, 0);
    const auto takeRows = [&](int from, int to) {
        rows.CreateRectRgn(0, from, size.cx, to);
        rows.CombineRgn(rows, whole, RGN_AND);
    };
    takeRows(0, std::min(middle, lowerTop));
    shape.CombineRgn(shape, rows, RGN_OR);
    takeRows(middle, 2 * middle);
    rows.OffsetRgn(0, lowerTop - middle);
    shape.CombineRgn(shape, rows, RGN_OR);
    if (lowerTop <= middle) return;
    takeRows(middle, middle + 1);
    CRgn column;
    for (const RECT& run : RectsOf(rows)) {
        column.CreateRectRgn(run.left, middle, run.right, lowerTop);
        shape.CombineRgn(shape, column, RGN_OR);
    }
}

/* Takes the key-coloured pixels of an end piece, as high as the window, out of the region. */
void CutCap(CRgn& region, const CSize& window, CBitmap* cap, int left) {
    const CSize size = BitmapSize(cap);
    const COLORREF key = SkinColour(CLR_TRANSPARENT);
    if (size.cx <= 0 || size.cy <= 0 || HasMoreKeyRuns(cap, key, size, kMostCapRuns)) return;
    CRgn shape;
    MakeStretchedKeyRegion(shape, cap, size, window.cy, key);
    shape.OffsetRgn(left, 0);
    region.CombineRgn(region, shape, RGN_DIFF);
}

DWORD DibColour(COLORREF colour) {
    return static_cast<DWORD>(GetRValue(colour)) << 16 | static_cast<DWORD>(GetGValue(colour)) << 8 |
           static_cast<DWORD>(GetBValue(colour));
}

}  // namespace

ComboHit HitTestCombo(const CRect& client, int arrowWidth, const POINT& point) {
    if (!client.PtInRect(point)) return ComboHit::Outside;
    return point.x >= client.right - arrowWidth ? ComboHit::Arrow : ComboHit::Body;
}

int ComboPieceWidth(CBitmap* piece) { return std::clamp<int>(BitmapSize(piece).cx, 0, 0x7FFF); }

CRect ComboArrowRect(const CRect& client) {
    CRect arrow = client;
    arrow.left = arrow.right - ComboPieceWidth(SkinBitmap(BMP_COMBO_DROP_HOT));
    return arrow;
}

CRect ComboFrameArrowRect(const CRect& window) {
    CRect arrow = window;
    arrow.right -= ComboPieceWidth(SkinBitmap(BMP_COMBO_RIGHT));
    arrow.left = arrow.right - ComboPieceWidth(SkinBitmap(BMP_COMBO_DROP_NORMAL));
    arrow.top += kComboFrameDown;
    arrow.bottom += kComboFrameDown;
    return arrow;
}

void MakeComboRegion(CRgn& region, const CSize& window) {
    region.CreateRectRgn(0, 0, window.cx, window.cy);
    CBitmap* right = SkinBitmap(BMP_COMBO_RIGHT);
    CutCap(region, window, SkinBitmap(BMP_COMBO_LEFT), 0);
    CutCap(region, window, right, window.cx - ComboPieceWidth(right));
}

void PaintComboFrame(CDC& dc, const CSize& window) {
    // What no piece covers is never left to chance.
    dc.FillSolidRect(CRect(CPoint(0, 0), window), RGB(0, 0, 0));
    CBitmap* const left = SkinBitmap(BMP_COMBO_LEFT);
    CBitmap* const tile = SkinBitmap(BMP_COMBO_TILE);
    CBitmap* const right = SkinBitmap(BMP_COMBO_RIGHT);
    const int height = window.cy, rightStart = window.cx - ComboPieceWidth(right);
    const auto draw = [&](CBitmap* piece, int from, int to) {
        if (piece) DrawVerticalStretch(&dc, piece, {from, 0, to, height}, 0);
    };
    const int leftWidth = ComboPieceWidth(left), step = ComboPieceWidth(tile);
    draw(left, 0, leftWidth);
    if (step > 0)
        for (int x = leftWidth; x <= rightStart; x += step) draw(tile, x, x + step);
    draw(right, rightStart, window.cx);
}

// White, whatever the skin's and the system's colours are.
CRect PaintComboFace(CDC& dc, const CRect& client, bool hot) {
    dc.FillSolidRect(client, RGB(255, 255, 255));
    CBitmap* const arrow = SkinBitmap(hot ? BMP_COMBO_DROP_HOT : BMP_COMBO_DROP_NORMAL);
    CRect room = client;
    room.right -= ComboPieceWidth(arrow);
    if (arrow) DrawBitmap(dc, arrow, room.right, 0);
    return room;
}

void PaintComboText(CDC& dc, const CRect& room, const char* text) {
    CRect place = room;
    const int formerMode = ::SetBkMode(dc, TRANSPARENT);
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    dc.DrawText(text, -1, place, DT_VCENTER | DT_SINGLELINE);
    ::SetBkMode(dc, formerMode);
}

OwnerRowSurface::OwnerRowSurface(DRAWITEMSTRUCT& item)
    : m_target(item.hDC), m_place(item.rcItem), m_dc(item.hDC) {
    const std::int64_t width = std::int64_t{m_place.right} - m_place.left;
    const std::int64_t height = std::int64_t{m_place.bottom} - m_place.top;
    constexpr int kLargest = 0x7FFF;
    if (!m_dc.m_hDC || width <= 0 || height <= 0 || width > kLargest || height > kLargest) return;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = static_cast<LONG>(width);
    info.bmiHeader.biHeight = -static_cast<LONG>(height);
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    if (!m_bitmap.Attach(::CreateDIBSection(m_dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0))) return;
    m_formerBitmap = ::SelectObject(m_dc, m_bitmap);
    m_bits = static_cast<DWORD*>(bits);
    CreateMenuFont(m_font);
    if (m_font.GetSafeHandle()) m_formerFont = ::SelectObject(m_dc, m_font);
    const CRect area(0, 0, static_cast<int>(width), static_cast<int>(height));
    m_dc.FillSolidRect(area, RGB(255, 255, 255));
    item.hDC = m_dc;
    item.rcItem = area;
}

OwnerRowSurface::~OwnerRowSurface() {
    if (m_formerFont) ::SelectObject(m_dc, m_formerFont);
    if (m_formerBitmap) ::SelectObject(m_dc, m_formerBitmap);
}

void OwnerRowSurface::Present(UINT state) {
    ::GdiFlush();
    if (state == ODS_SELECTED) {
        const DWORD system = DibColour(::GetSysColor(COLOR_HIGHLIGHT));
        const DWORD skin = DibColour(SkinColour(CLR_HIGHLIGHT));
        DWORD* const end =
            m_bits + static_cast<std::size_t>(m_place.Width()) * static_cast<std::size_t>(m_place.Height());
        for (DWORD* pixel = m_bits; pixel != end; ++pixel)
            if ((*pixel & 0xFFFFFF) == system) *pixel = skin;
    }
    ::BitBlt(m_target, m_place.left, m_place.top, m_place.Width(), m_place.Height(), m_dc, 0, 0, SRCCOPY);
}

}  // namespace tavix
