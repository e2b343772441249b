#include "draw/bitmap_draw.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

#include "draw/skin_bitmap.h"
#include "draw/surface.h"

namespace tavix {
namespace {

/* The clip box in logical co-ordinates; false if nothing can show. */
bool ShownBox(HDC dc, RECT& box) {
    const int shape = ::GetClipBox(dc, &box);
    return shape != ERROR && shape != NULLREGION;
}

/* Sets the mode that repeats pixels when stretching, for a scope. */
class RepeatingStretch {
public:
    explicit RepeatingStretch(HDC dc) : m_dc(dc), m_former(::SetStretchBltMode(dc, COLORONCOLOR)) {}
    ~RepeatingStretch() { ::SetStretchBltMode(m_dc, m_former); }

private:
    HDC m_dc;
    int m_former;
};

/* Copies one row of the source to `count` rows of the target. */
void RepeatSourceRow(HDC dc, int left, int top, int width, int count, HDC source, int row) {
    if (count > 1 && HasPlainMapping(dc)) {
        const RepeatingStretch mode(dc);
        if (::StretchBlt(dc, left, top, width, count, source, 0, row, width, 1, SRCCOPY)) return;
    }
    for (int i = 0; i < count; ++i) ::BitBlt(dc, left, top + i, width, 1, source, 0, row, SRCCOPY);
}

/* Tiles are few or the target is special: each by a blit of its own. */
void BlitTiles(HDC dc, HDC source, const CSize& size, std::int64_t x, std::int64_t tiles, int y) {
    for (; tiles > 0; --tiles, x += size.cx)
        ::BitBlt(dc, static_cast<int>(x), y, size.cx, size.cy, source, 0, 0, SRCCOPY);
}

/* Composes several tiles side by side, and blits them together. */
bool BlitTileStrips(HDC dc, HDC source, const CSize& size, std::int64_t x, std::int64_t tiles, int y) {
    constexpr int kStripWidth = 512;
    const std::int64_t together = std::min<std::int64_t>(tiles, kStripWidth / size.cx);
    const int width = static_cast<int>(together) * size.cx;
    if (together < 2 || size.cy > kScratchPixels / width) return false;
    Surface* strip = ScratchSurface(width, size.cy);
    if (!strip || !::BitBlt(strip->dc, 0, 0, size.cx, size.cy, source, 0, 0, SRCCOPY)) return false;
    ::GdiFlush();
    for (int row = 0; row < size.cy; ++row) {
        DibPixel* pixels = strip->Row(row);
        // What is there doubles until the strip is full.
        for (int done = size.cx; done < width;) {
            const int now = std::min(done, width - done);
            std::memcpy(pixels + done, pixels, static_cast<std::size_t>(now) * sizeof *pixels);
            done += now;
        }
    }
    for (; tiles > 0; tiles -= together, x += width) {
        const int now = static_cast<int>(std::min(tiles, together)) * size.cx;
        ::BitBlt(dc, static_cast<int>(x), y, now, size.cy, strip->dc, 0, 0, SRCCOPY);
    }
    return true;
}

}  // namespace

COLORREF DarkenColor(int amount, COLORREF colour) {
    const auto darker = [amount](BYTE channel) { return static_cast<BYTE>(::MulDiv(channel, 255 - amount, 255)); };
    return RGB(darker(GetRValue(colour)), darker(GetGValue(colour)), darker(GetBValue(colour)));
}

int DrawVerticalStretch(CDC* dc, CBitmap* bitmap, const RECT& rect, COLORREF) {
    RECT box;
    if (!dc || !bitmap || !ShownBox(*dc, box)) return 1;
    const CSize size = BitmapSize(bitmap);
    const SourceBitmap source(*bitmap);
    if (!source || size.cx <= 0 || size.cy <= 0) return 1;

    const std::int64_t asked = std::int64_t{rect.right} - rect.left;
    if (asked < INT_MIN) return 1;
    // Nothing lies right of the bitmap's own width.
    const int width = static_cast<int>(std::min<std::int64_t>(asked, size.cx));
    const std::int64_t height = std::int64_t{rect.bottom} - rect.top;
    const int middle = size.cy / 2;

    ::BitBlt(*dc, rect.left, rect.top, width, size.cy, source.Dc(), 0, 0, SRCCOPY);
    const std::int64_t from = std::max<std::int64_t>(middle, std::int64_t{box.top} - rect.top - 1);
    const std::int64_t end = std::min<std::int64_t>(height - middle, std::int64_t{box.bottom} - rect.top + 1);
    if (from < end)
        RepeatSourceRow(*dc, rect.left, static_cast<int>(rect.top + from), width, static_cast<int>(end - from),
                        source.Dc(), middle);
    ::BitBlt(*dc, rect.left, static_cast<int>(std::int64_t{rect.bottom} - middle), width, middle, source.Dc(), 0,
             middle, SRCCOPY);
    return 1;
}

void DrawBitmap(CDC& dc, CBitmap* bitmap, int x, int y) {
    if (!bitmap) return;
    const CSize size = BitmapSize(bitmap);
    const SourceBitmap source(*bitmap);
    if (source) ::BitBlt(dc, x, y, size.cx, size.cy, source.Dc(), 0, 0, SRCCOPY);
}

void DrawBitmapIn(CDC& dc, CBitmap* bitmap, const RECT& rect) {
    if (!bitmap || ::IsRectEmpty(&rect)) return;
    const CSize size = BitmapSize(bitmap);
    const SourceBitmap source(*bitmap);
    if (!source) return;
    const std::int64_t width = std::min<std::int64_t>(std::int64_t{rect.right} - rect.left, size.cx);
    const std::int64_t height = std::min<std::int64_t>(std::int64_t{rect.bottom} - rect.top, size.cy);
    ::BitBlt(dc, rect.left, rect.top, static_cast<int>(width), static_cast<int>(height), source.Dc(), 0, 0, SRCCOPY);
}

int TileHorizontally(CDC& dc, CBitmap* bitmap, int from, int end, int y) {
    const CSize size = BitmapSize(bitmap);
    if (size.cx <= 0 || from >= end) return from;
    const std::int64_t count = (std::int64_t{end} - from + size.cx - 1) / size.cx;
    const std::int64_t after = from + count * size.cx;
    const int result = static_cast<int>(std::min<std::int64_t>(after, INT_MAX));

    RECT box;
    if (!ShownBox(dc, box) || y >= box.bottom || std::int64_t{y} + size.cy <= box.top) return result;
    // Tiles off the clip box are counted, not walked over.
    const std::int64_t first = std::clamp<std::int64_t>((std::int64_t{box.left} - from) / size.cx - 1, 0, count);
    const std::int64_t last = std::clamp<std::int64_t>((std::int64_t{box.right} - from) / size.cx + 1, 0, count);
    if (first >= last) return result;
    const SourceBitmap source(*bitmap);
    if (!source) return result;

    const std::int64_t x = from + first * size.cx;
    const std::int64_t tiles = last - first;
    // One bit a pixel takes the target's own two colours, which a strip would not have.
    BITMAP facts{};
    const bool coloured = ::GetObjectA(bitmap->m_hObject, sizeof facts, &facts) && facts.bmBitsPixel > 1;
    const bool strips = tiles >= 4 && coloured && HasPlainMapping(dc) && KindOfTarget(dc) != TargetKind::Unknown;
    if (!strips || !BlitTileStrips(dc, source.Dc(), size, x, tiles, y))
        BlitTiles(dc, source.Dc(), size, x, tiles, y);
    return result;
}

}  // namespace tavix
