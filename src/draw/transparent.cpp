/* Drawing of a bitmap less its key colour. */
#include "draw/bitmap_draw.h"
#include "draw/bitmap_rows.h"
#include "draw/compose.h"
#include "draw/keyed_pixels.h"

namespace tavix {
namespace {

/* Pixel by pixel through the platform: targets of few colours, scaled or turned co-ordinates. */
void DrawByPixels(HDC dc, CBitmap* bitmap, int left, int top, COLORREF key) {
    RECT box;
    const int shape = ::GetClipBox(dc, &box);
    if (shape == ERROR || shape == NULLREGION) return;
    const PixelImage image = ImageOf(bitmap);
    const RECT area = AreaAt(left, top, SIZE{image.width, image.height});
    // A little slack, since scaled co-ordinates round.
    ::InflateRect(&box, 2, 2);
    RECT shown;
    if (!::IntersectRect(&shown, &area, &box)) return;
    // Column by column: where co-ordinates shrink, the later of several pixels stays.
    for (int x = shown.left; x < shown.right; ++x) {
        for (int y = shown.top; y < shown.bottom; ++y) {
            const std::size_t row = static_cast<std::size_t>(y - top) * static_cast<std::size_t>(image.width);
            const COLORREF colour = image.pixels[row + static_cast<std::size_t>(x - left)];
            if (colour != key) ::SetPixel(dc, x, y, colour);
        }
    }
}

}  // namespace

int DrawTransparent(CDC* dc, CBitmap* bitmap, int left, int top, int, int, COLORREF key) {
    if (!dc || !dc->m_hDC || !bitmap) return 1;
    CSkinBitmap* skin = AsSkinBitmap(bitmap);
    if (const DibPixel* keyed = skin ? skin->KeyedRows(key) : nullptr) {
        const CSize size = skin->Size();
        const auto write = [&](DibPixel* out, int x, int y, int width) {
            CopyKeyed(out, keyed + std::ptrdiff_t{y - top} * size.cx + (x - left), width);
        };
        if (ComposeRows(*dc, AreaAt(left, top, size), Beneath::Target, write)) return 1;
    }

    BitmapRows rows(bitmap);
    if (rows.Width() <= 0 || rows.Height() <= 0) return 1;
    const auto write = [&](DibPixel* out, int x, int y, int width) {
        if (const DibPixel* row = rows.Row(y - top)) CopyButKey(out, row + (x - left), width, key);
    };
    if (!ComposeRows(*dc, AreaAt(left, top, rows.Size()), Beneath::Target, write))
        DrawByPixels(*dc, bitmap, left, top, key);
    return 1;
}

}  // namespace tavix
