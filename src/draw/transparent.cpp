/* Drawing of a bitmap less its key colour. */
#include "draw/bitmap_draw.h"
#include "draw/bitmap_rows.h"
#include "draw/compose.h"
#include "draw/keyed_pixels.h"

namespace tavix {
namespace {

/* Pixel by pixel through the platform: targets of few colours, scaled or turned co-ordinates. */
void DrawByPixels(HDC dc, BitmapRows& rows, int left, int top, COLORREF key) {
    for (int y = 0; y < rows.Height(); ++y) {
        const DibPixel* row = rows.Row(y);
        if (!row) return;
        for (int x = 0; x < rows.Width(); ++x) {
            const COLORREF colour = SwapRedBlue(row[x]);
            if (colour != key) ::SetPixel(dc, left + x, top + y, colour);
        }
    }
}

}  // namespace

int DrawTransparent(CDC* dc, CBitmap* bitmap, int left, int top, int, int, COLORREF key) {
    if (!dc || !dc->m_hDC || !bitmap) return 1;
    CSkinBitmap* skin = AsSkinBitmap(bitmap);
    if (const DibPixel* keyed = skin ? skin->KeyedRows(key) : nullptr) {
        const CSize size = skin->Size();
        const auto write = [&](DibPixel* out, int x, int y, int width, const DibPixel*) {
            CopyKeyed(out, keyed + std::ptrdiff_t{y - top} * size.cx + (x - left), width);
        };
        if (ComposeRows(*dc, AreaAt(left, top, size), Beneath::Target, write)) return 1;
    }

    BitmapRows rows(bitmap);
    if (rows.Width() <= 0 || rows.Height() <= 0) return 1;
    const auto write = [&](DibPixel* out, int x, int y, int width, const DibPixel*) {
        if (const DibPixel* row = rows.Row(y - top)) CopyButKey(out, row + (x - left), width, key);
    };
    if (!ComposeRows(*dc, AreaAt(left, top, rows.Size()), Beneath::Target, write))
        DrawByPixels(*dc, rows, left, top, key);
    return 1;
}

}  // namespace tavix
