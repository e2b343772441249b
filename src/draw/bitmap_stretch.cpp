/* Bitmaps stretched by the platform, whose rounding is the picture's. */
#include <algorithm>
#include <climits>
#include <cstdint>

#include "draw/bitmap_draw.h"
#include "draw/bitmap_rows.h"
#include "draw/compose.h"

namespace tavix {
namespace {

// Beyond it the platform's own arithmetic gets tight; nothing of that size shows whole.
constexpr std::int64_t kLongestSide = 0xFFFF;

bool IsDrawable(const RECT& rect) {
    const std::int64_t width = std::int64_t{rect.right} - rect.left;
    const std::int64_t height = std::int64_t{rect.bottom} - rect.top;
    return width > 0 && height > 0 && width <= kLongestSide && height <= kLongestSide;
}

/* One bitmap on its way to one context, read or selected once for all its copies. */
class Stretcher {
public:
    Stretcher(HDC dc, CBitmap* bitmap) : m_dc(dc), m_bitmap(bitmap), m_size(BitmapSize(bitmap)) {
        CSkinBitmap* skin = AsSkinBitmap(bitmap);
        // Pixels at hand are stretched where they are: selecting the bitmap costs more than that.
        if (skin && !skin->IsMono()) m_rows = skin->Rows();
    }

    const CSize& Size() const { return m_size; }
    bool HasPixels() const { return m_size.cx > 0 && m_size.cy > 0; }

    void Draw(const RECT& rect) const {
        const int width = rect.right - rect.left;
        const int height = rect.bottom - rect.top;
        if (m_rows && width == m_size.cx && height == m_size.cy) {
            CDC dc(m_dc);
            DrawBitmap(dc, m_bitmap, rect.left, rect.top);
        } else if (m_rows) {
            BITMAPINFO info{};
            info.bmiHeader.biSize = sizeof info.bmiHeader;
            info.bmiHeader.biWidth = m_size.cx;
            info.bmiHeader.biHeight = -m_size.cy;
            info.bmiHeader.biPlanes = 1;
            info.bmiHeader.biBitCount = 32;
            ::StretchDIBits(m_dc, rect.left, rect.top, width, height, 0, 0, m_size.cx, m_size.cy, m_rows,
                            &info, DIB_RGB_COLORS, SRCCOPY);
        } else if (const SourceBitmap source(*m_bitmap); source) {
            ::StretchBlt(m_dc, rect.left, rect.top, width, height, source.Dc(), 0, 0, m_size.cx, m_size.cy,
                         SRCCOPY);
        }
    }

private:
    HDC m_dc;
    CBitmap* m_bitmap;
    CSize m_size;
    const DibPixel* m_rows = nullptr;
};

/* A rectangle's beginning and end along an axis. */
struct Stretch {
    LONG& from;
    LONG& to;
};
Stretch Along(RECT& rect, TileAxis axis) {
    return axis == TileAxis::Down ? Stretch{rect.top, rect.bottom} : Stretch{rect.left, rect.right};
}

bool Contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

/* Repeats what was drawn in `tile` up to `length` pixels along the axis, twice as much each time. */
void RepeatByDoubling(HDC dc, const RECT& tile, int length, TileAxis axis) {
    const int width = tile.right - tile.left;
    const int height = tile.bottom - tile.top;
    const bool down = axis == TileAxis::Down;
    for (int done = down ? height : width, room = length; done < room;) {
        const int now = std::min(done, room - done);
        ::BitBlt(dc, tile.left + (down ? 0 : done), tile.top + (down ? done : 0), down ? width : now,
                 down ? now : height, dc, tile.left, tile.top, SRCCOPY);
        done += now;
    }
}

}  // namespace

void StretchBitmap(CDC& dc, CBitmap* bitmap, const RECT& rect) {
    if (!dc.m_hDC || !bitmap || !IsDrawable(rect)) return;
    const Stretcher stretcher(dc, bitmap);
    if (stretcher.HasPixels()) stretcher.Draw(rect);
}

void StretchTiles(CDC& dc, CBitmap* bitmap, const RECT& rect, TileAxis axis) {
    if (!dc.m_hDC || !bitmap || ::IsRectEmpty(&rect)) return;
    const Stretcher stretcher(dc, bitmap);
    RECT box;
    const int shape = ::GetClipBox(dc, &box);
    if (!stretcher.HasPixels() || shape == ERROR || shape == NULLREGION) return;

    RECT tile = rect;
    const Stretch along = Along(tile, axis), shown = Along(box, axis);
    const int extent = axis == TileAxis::Down ? stretcher.Size().cy : stretcher.Size().cx;
    // Only whole copies that show; the first of them may begin before the clip box.
    const std::int64_t end = std::min(along.to, shown.to);
    const std::int64_t hidden = std::max<std::int64_t>((std::int64_t{shown.from} - along.from) / extent, 0);
    std::int64_t at = along.from + hidden * extent;
    for (bool first = true; at < end; at += extent, first = false) {
        along.from = static_cast<LONG>(at);
        along.to = static_cast<LONG>(std::min<std::int64_t>(at + extent, INT_MAX));
        if (!IsDrawable(tile)) return;
        stretcher.Draw(tile);
        // On a surface of our own what was drawn can be read back.
        if (!first || !IsOwnSurface(dc) || shape != SIMPLEREGION || !Contains(box, tile)) continue;
        const std::int64_t copies = (end - at + extent - 1) / extent;
        const std::int64_t room = std::max<std::int64_t>(shown.to - at, 0);
        RepeatByDoubling(dc, tile, static_cast<int>(std::min(copies * extent, room)), axis);
        return;
    }
}

}  // namespace tavix
