#include "draw/bitmap_draw.h"

#include <algorithm>
#include <climits>
#include <cstdint>

#include "draw/bitmap_rows.h"
#include "draw/compose.h"

namespace tavix {
namespace {

/* The clip box in logical co-ordinates; false if nothing can show. */
bool ShownBox(HDC dc, RECT& box) {
    const int shape = ::GetClipBox(dc, &box);
    return shape != ERROR && shape != NULLREGION;
}

/* Copies the top-left part of a bitmap, at most `size`, to (x, y). */
void DrawPart(HDC dc, CBitmap* bitmap, int x, int y, const SIZE& size) {
    BitmapRows rows(bitmap);
    const CSize part(std::min<int>(size.cx, rows.Width()), std::min<int>(size.cy, rows.Height()));
    if (part.cx <= 0 || part.cy <= 0) return;
    const auto write = [&](DibPixel* out, int left, int row, int width) {
        if (const DibPixel* pixels = rows.Row(row - y)) CopyPixels(out, pixels + (left - x), width);
    };
    if (rows.AreColours() && ComposeRows(dc, AreaAt(x, y, part), Beneath::Nothing, write)) return;
    if (const SourceBitmap source(*bitmap); source)
        ::BitBlt(dc, x, y, part.cx, part.cy, source.Dc(), 0, 0, SRCCOPY);
}

/* A bitmap whose middle row is repeated until it is as high as a rectangle. */
class StretchedColumn {
public:
    StretchedColumn(const RECT& rect, const CSize& size)
        : m_rect(rect),
          m_high(size.cy),
          m_middle(size.cy / 2),
          m_width(std::int64_t{rect.right} - rect.left) {}

    std::int64_t LowerTop() const { return std::int64_t{m_rect.bottom} - m_middle; }
    std::int64_t RepeatTop() const { return std::int64_t{m_rect.top} + m_middle; }
    int Middle() const { return m_middle; }
    std::int64_t Width() const { return m_width; }

    /*
     * The bitmap's row that ends up in row `y` of the target, or -1. The whole bitmap is drawn at
     * the top, then the repeated row, then the lower half at the bottom, over what is there.
     */
    int SourceRow(std::int64_t y) const {
        if (y >= LowerTop() && y < m_rect.bottom) return static_cast<int>(m_middle + (y - LowerTop()));
        if (y >= RepeatTop() && y < LowerTop()) return m_middle;
        const std::int64_t from_top = y - m_rect.top;
        return from_top >= 0 && from_top < m_high ? static_cast<int>(from_top) : -1;
    }

private:
    RECT m_rect;
    int m_high;
    int m_middle;
    std::int64_t m_width;
};

/* The same by blits, one a row, for targets that allow nothing else. */
void BlitStretched(HDC dc, CBitmap* bitmap, const RECT& rect, int high, const StretchedColumn& column) {
    RECT box;
    if (!ShownBox(dc, box) || column.LowerTop() < INT_MIN) return;
    const SourceBitmap source(*bitmap);
    if (!source) return;
    // The platform cuts the source at the bitmap's own width.
    const int width = static_cast<int>(std::clamp<std::int64_t>(column.Width(), -INT_MAX, INT_MAX));
    ::BitBlt(dc, rect.left, rect.top, width, high, source.Dc(), 0, 0, SRCCOPY);
    // A little slack, since scaled co-ordinates round.
    const std::int64_t end = std::min<std::int64_t>(column.LowerTop(), std::int64_t{box.bottom} + 2);
    for (std::int64_t y = std::max<std::int64_t>(column.RepeatTop(), std::int64_t{box.top} - 2); y < end; ++y)
        ::BitBlt(dc, rect.left, static_cast<int>(y), width, 1, source.Dc(), 0, column.Middle(), SRCCOPY);
    ::BitBlt(dc, rect.left, static_cast<int>(column.LowerTop()), width, column.Middle(), source.Dc(), 0,
             column.Middle(), SRCCOPY);
}

/* Copies `width` pixels of an endless row of tiles, from `phase` pixels into a tile on. */
void CopyTiled(DibPixel* out, const DibPixel* tile, int tile_width, int phase, int width) {
    const int first = std::min(width, tile_width - phase);
    CopyPixels(out, tile + phase, first);
    // A whole tile, if there is room for one, and then what is there doubles.
    const int whole = std::min(width - first, tile_width);
    CopyPixels(out + first, tile, whole);
    for (int done = whole, room = width - first; done > 0 && done < room;) {
        const int now = std::min(done, room - done);
        CopyPixels(out + first + done, out + first, now);
        done += now;
    }
}

/* One blit a tile, of those in the clip box. */
void BlitTiles(HDC dc, CBitmap* bitmap, const CSize& size, int from, std::int64_t count, int y) {
    RECT box;
    if (!ShownBox(dc, box)) return;
    const std::int64_t before = (std::int64_t{box.left} - from) / size.cx - 1;
    const std::int64_t after = (std::int64_t{box.right} - from) / size.cx + 1;
    const std::int64_t last = std::min(after, count);
    const SourceBitmap source(*bitmap);
    if (!source) return;
    for (std::int64_t i = std::max<std::int64_t>(before, 0); i < last; ++i)
        ::BitBlt(dc, static_cast<int>(from + i * size.cx), y, size.cx, size.cy, source.Dc(), 0, 0, SRCCOPY);
}

}  // namespace

COLORREF DarkenColor(int amount, COLORREF colour) {
    const auto darker = [left = 255 - amount](BYTE channel) {
        return static_cast<BYTE>(::MulDiv(channel, left, 255));
    };
    return RGB(darker(GetRValue(colour)), darker(GetGValue(colour)), darker(GetBValue(colour)));
}

int DrawVerticalStretch(CDC* dc, CBitmap* bitmap, const RECT& rect, COLORREF) {
    if (!dc || !dc->m_hDC || !bitmap) return 1;
    BitmapRows rows(bitmap);
    if (rows.Width() <= 0 || rows.Height() <= 0) return 1;
    const StretchedColumn column(rect, rows.Size());
    // A rectangle with its top below its bottom gets two pieces apart: rare enough for blits.
    if (column.Width() > 0 && rect.bottom >= rect.top && rows.AreColours()) {
        const std::int64_t whole = std::int64_t{rect.top} + rows.Height();
        const std::int64_t bottom = std::max<std::int64_t>(rect.bottom, whole);
        RECT area = AreaAt(rect.left, rect.top, rows.Size());
        area.right = std::min(area.right, rect.right);
        area.bottom = static_cast<LONG>(std::min<std::int64_t>(bottom, INT_MAX));
        // With less height than half of the bitmap's, the lower half starts above the rectangle.
        const std::int64_t top = std::min<std::int64_t>(rect.top, column.LowerTop());
        area.top = static_cast<LONG>(std::max<std::int64_t>(top, INT_MIN));
        const auto write = [&](DibPixel* out, int x, int y, int width) {
            const int from = column.SourceRow(y);
            if (const DibPixel* row = rows.Row(from)) CopyPixels(out, row + (x - rect.left), width);
        };
        if (ComposeRows(*dc, area, Beneath::Nothing, write)) return 1;
    }
    BlitStretched(*dc, bitmap, rect, rows.Height(), column);
    return 1;
}

void DrawBitmap(CDC& dc, CBitmap* bitmap, int x, int y) {
    if (dc.m_hDC && bitmap) DrawPart(dc, bitmap, x, y, {INT_MAX, INT_MAX});
}

void DrawBitmapIn(CDC& dc, CBitmap* bitmap, const RECT& rect) {
    if (!dc.m_hDC || !bitmap || ::IsRectEmpty(&rect)) return;
    const auto length = [](LONG from, LONG to) {
        return static_cast<LONG>(std::min<std::int64_t>(std::int64_t{to} - from, INT_MAX));
    };
    DrawPart(dc, bitmap, rect.left, rect.top, {length(rect.left, rect.right), length(rect.top, rect.bottom)});
}

int TileHorizontally(CDC& dc, CBitmap* bitmap, int from, int end, int y) {
    BitmapRows rows(bitmap);
    if (rows.Width() <= 0 || from >= end) return from;
    const std::int64_t count = (std::int64_t{end} - from + rows.Width() - 1) / rows.Width();
    const std::int64_t after = from + count * rows.Width();
    const int result = static_cast<int>(std::min<std::int64_t>(after, INT_MAX));
    if (!dc.m_hDC || rows.Height() <= 0) return result;

    RECT area = AreaAt(from, y, rows.Size());
    area.right = result;
    const auto write = [&](DibPixel* out, int x, int row, int width) {
        const int phase = static_cast<int>((std::int64_t{x} - from) % rows.Width());
        if (const DibPixel* tile = rows.Row(row - y)) CopyTiled(out, tile, rows.Width(), phase, width);
    };
    if (!rows.AreColours() || !ComposeRows(dc, area, Beneath::Nothing, write))
        BlitTiles(dc, bitmap, rows.Size(), from, count, y);
    return result;
}

}  // namespace tavix
