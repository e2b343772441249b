/* Drawing of a bitmap less its key colour, in memory wherever the target allows it. */
#include <algorithm>
#include <exception>
#include <vector>

#include "draw/bitmap_draw.h"
#include "draw/keyed_pixels.h"
#include "draw/skin_bitmap.h"
#include "draw/surface.h"

namespace tavix {
namespace {

/* The keyed pixels of rows [top, top + count) of a bitmap. */
class KeyedRows {
public:
    KeyedRows(CBitmap& bitmap, const CSize& size, int top, int count, COLORREF key) : m_pitch(size.cx) {
        if (CSkinBitmap* skin = AsSkinBitmap(&bitmap)) {
            m_copy = skin->KeyedCopy(key);
            BITMAP facts{};
            if (m_copy && ::GetObjectA(m_copy, sizeof facts, &facts))
                m_rows = static_cast<const DibPixel*>(facts.bmBits) + std::ptrdiff_t{top} * m_pitch;
            return;
        }
        const std::size_t pixels = static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(count);
        m_own.resize(pixels);
        if (!ReadRows(bitmap, size.cx, size.cy, top, count, m_own.data())) return;
        MakeKeyed(m_own.data(), pixels, key);
        m_rows = m_own.data();
    }

    explicit operator bool() const { return m_rows != nullptr; }
    const DibPixel* Row(int y) const { return m_rows + std::ptrdiff_t{y} * m_pitch; }
    /* The whole bitmap as AlphaBlend takes it; null if only the rows are here. */
    HBITMAP Copy() const { return m_copy; }

private:
    int m_pitch;
    HBITMAP m_copy = nullptr;
    const DibPixel* m_rows = nullptr;
    std::vector<DibPixel> m_own;
};

/* A part of the bitmap, and where it goes. */
struct Part {
    int x, y;            // in the target
    int from_x, from_y;  // in the bitmap
    int width, height;
};

void DrawInMemory(const PixelAccess& access, const KeyedRows& rows, const Part& part) {
    DibPixel* out = access.At(part.x, part.y);
    for (int y = 0; y < part.height; ++y, out += access.Pitch())
        CopyKeyed(out, rows.Row(y) + part.from_x, part.width);
}

/* Rows that the scratch surface takes at once. */
int RowsAtOnce(const Part& part) { return std::clamp(kScratchPixels / part.width, 1, part.height); }

/* Reads the target, changes the copy, and writes it back. */
bool DrawThroughCopy(HDC dc, const KeyedRows& rows, const Part& part) {
    const int step = RowsAtOnce(part);
    Surface* copy = ScratchSurface(part.width, step);
    if (!copy) return false;
    for (int done = 0; done < part.height; done += step) {
        const int now = std::min(step, part.height - done);
        if (!::BitBlt(copy->dc, 0, 0, part.width, now, dc, part.x, part.y + done, SRCCOPY)) return false;
        ::GdiFlush();
        for (int y = 0; y < now; ++y)
            CopyKeyed(copy->Row(y), rows.Row(done + y) + part.from_x, part.width);
        if (!::BitBlt(dc, part.x, part.y + done, part.width, now, copy->dc, 0, 0, SRCCOPY)) return false;
    }
    return true;
}

/* Blends: the display need not be read back for it. */
bool DrawByBlending(HDC dc, const KeyedRows& rows, const Part& part) {
    const BLENDFUNCTION by_pixel{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    if (rows.Copy()) {
        const SourceBitmap source(rows.Copy());
        return source && ::AlphaBlend(dc, part.x, part.y, part.width, part.height, source.Dc(), part.from_x,
                                      part.from_y, part.width, part.height, by_pixel);
    }
    const int step = RowsAtOnce(part);
    Surface* source = ScratchSurface(part.width, step);
    if (!source) return false;
    for (int done = 0; done < part.height; done += step) {
        const int now = std::min(step, part.height - done);
        ::GdiFlush();
        for (int y = 0; y < now; ++y)
            std::copy_n(rows.Row(done + y) + part.from_x, part.width, source->Row(y));
        if (!::AlphaBlend(dc, part.x, part.y + done, part.width, now, source->dc, 0, 0, part.width, now, by_pixel))
            return false;
    }
    return true;
}

/* Pixel by pixel through the platform: targets of few colours, scaled or turned co-ordinates. */
void DrawByPixels(HDC dc, const KeyedRows& rows, const Part& part) {
    for (int x = 0; x < part.width; ++x)
        for (int y = 0; y < part.height; ++y)
            if (const DibPixel pixel = rows.Row(y)[part.from_x + x])
                ::SetPixel(dc, part.x + x, part.y + y, SwapRedBlue(pixel));
}

/* Cuts the whole bitmap at (left, top) down to what the clip box shows. */
bool ShownPart(const CSize& size, int left, int top, const RECT& box, Part& part) {
    const long long x = std::max<long long>(left, box.left);
    const long long y = std::max<long long>(top, box.top);
    const long long right = std::min<long long>(static_cast<long long>(left) + size.cx, box.right);
    const long long bottom = std::min<long long>(static_cast<long long>(top) + size.cy, box.bottom);
    if (x >= right || y >= bottom) return false;
    part = {static_cast<int>(x),        static_cast<int>(y),         static_cast<int>(x - left),
            static_cast<int>(y - top), static_cast<int>(right - x), static_cast<int>(bottom - y)};
    return true;
}

void DrawPart(HDC dc, CBitmap& bitmap, const CSize& size, const Part& part, COLORREF key) {
    const KeyedRows rows(bitmap, size, part.from_y, part.height, key);
    if (!rows) return;
    PixelAccess access;
    if (OpenPixels(dc, access)) {
        DrawInMemory(access, rows, part);
        return;
    }
    const TargetKind kind = HasPlainMapping(dc) ? KindOfTarget(dc) : TargetKind::Unknown;
    if (kind == TargetKind::Memory && DrawThroughCopy(dc, rows, part)) return;
    if (kind == TargetKind::Display && DrawByBlending(dc, rows, part)) return;
    DrawByPixels(dc, rows, part);
}

}  // namespace

int DrawTransparent(CDC* dc, CBitmap* bitmap, int left, int top, int, int, COLORREF key) {
    RECT box;
    if (!dc || !dc->m_hDC || !bitmap) return 1;
    const CSize size = BitmapSize(bitmap);
    if (size.cx <= 0 || size.cy <= 0) return 1;
    const int shape = ::GetClipBox(*dc, &box);
    if (shape == ERROR || shape == NULLREGION) return 1;
    Part part;
    if (!ShownPart(size, left, top, box, part)) return 1;
    try {
        DrawPart(*dc, *bitmap, size, part, key);
    } catch (const std::exception&) {
        // No memory for the pixels: the bitmap is left out.
    }
    return 1;
}

}  // namespace tavix
