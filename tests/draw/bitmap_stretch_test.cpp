// Stretched bitmaps and tiles, beside the platform's own stretching of each.
#include <gtest/gtest.h>

#include <climits>

#include "draw/bitmap_draw.h"
#include "draw/offscreen.h"
#include "draw/skin_bitmap.h"
#include "support/test_skin.h"
#include "support/window_probe.h"
#include "tavixskin/framework/gdi.h"

using namespace tavix;
using namespace tavix_test;

namespace {

constexpr COLORREF kBackground = RGB(200, 100, 50);

COLORREF Pattern(int x, int y) { return RGB(11 * x + 3, 13 * y + 5, 7 * (x ^ y)); }

/* Both kinds of bitmap: one of the skin's, and any other. */
std::unique_ptr<CBitmap> Make(bool of_skin, int width, int height) {
    auto plain = MakeBitmap(width, height, Pattern);
    if (!of_skin) return plain;
    auto skin = std::make_unique<CSkinBitmap>();
    skin->Attach(plain->Detach());
    return skin;
}

/* As the platform stretches the bitmap, once for each place. */
Picture Stretched(CBitmap& bitmap, const std::vector<RECT>& places) {
    Canvas canvas(60, 50, kBackground);
    CMemoryDC memory(canvas.Dc());
    const SelectionGuard guard(memory, bitmap.GetSafeHandle());
    const CSize size = bitmap.GetBitmapSize();
    for (const CRect place : places)
        ::StretchBlt(canvas.Dc(), place.left, place.top, place.Width(), place.Height(), memory, 0, 0, size.cx,
                     size.cy, SRCCOPY);
    return canvas.Take();
}

/* What the painting makes, on a surface of the library's own or on a foreign context. */
template <class Paint>
Picture Painted(bool own, Paint paint) {
    Canvas canvas(60, 50, kBackground);
    if (own) {
        PaintOffscreen(canvas.Dc(), canvas.Area(), [&](CDC& dc) {
            dc.FillSolidRect(canvas.Area(), kBackground);
            paint(dc);
        });
    } else {
        CDC dc(canvas.Dc());
        paint(dc);
    }
    return canvas.Take();
}

TEST(StretchBitmap, IsThePlatformsOwnStretching) {
    for (bool of_skin : {false, true})
        for (bool own : {false, true})
            for (const CSize size : {CSize(7, 5), CSize(30, 20), CSize(20, 15), CSize(1, 1)}) {
                const auto bitmap = Make(of_skin, size.cx, size.cy);
                for (const RECT place : {RECT{3, 4, 23, 19}, RECT{-5, -6, 25, 14}, RECT{50, 40, 90, 70}}) {
                    const Picture expected = Stretched(*bitmap, {place});
                    EXPECT_EQ(Painted(own, [&](CDC& dc) { StretchBitmap(dc, bitmap.get(), place); }),
                              expected);
                }
            }
}

TEST(StretchTiles, StretchesEachCopyAcross) {
    for (bool of_skin : {false, true})
        for (bool own : {false, true})
            for (const int extent : {1, 4, 7, 31})
                for (const TileAxis axis : {TileAxis::Down, TileAxis::Across}) {
                    const bool down = axis == TileAxis::Down;
                    const auto bitmap = down ? Make(of_skin, 6, extent) : Make(of_skin, extent, 6);
                    for (const RECT area : {RECT{2, 3, 17, 38}, RECT{-4, -9, 30, 33}, RECT{5, 5, 11, 300}}) {
                        std::vector<RECT> places;
                        const LONG from = down ? area.top : area.left, to = down ? area.bottom : area.right;
                        for (LONG at = from; at < to; at += extent)
                            places.push_back(down ? RECT{area.left, at, area.right, at + extent}
                                                  : RECT{at, area.top, at + extent, area.bottom});
                        const Picture expected = Stretched(*bitmap, places);
                        EXPECT_EQ(Painted(own, [&](CDC& dc) { StretchTiles(dc, bitmap.get(), area, axis); }),
                                  expected)
                            << of_skin << own << " extent " << extent << " down " << down << " at "
                            << area.left;
                    }
                }
}

TEST(StretchTiles, EndsWithWhatShows) {
    const auto bitmap = Make(true, 6, 1);
    const Picture all = Painted(true, [&](CDC& dc) {
        StretchTiles(dc, bitmap.get(), {0, INT_MIN, 60, INT_MAX}, TileAxis::Down);
        StretchTiles(dc, bitmap.get(), {0, INT_MAX - 1, 60, INT_MAX}, TileAxis::Down);
    });
    EXPECT_EQ(all.CountOf(kBackground), 0);
}

TEST(StretchTiles, SkipsWhatIsMissingOrEmpty) {
    const auto bitmap = Make(true, 6, 4);
    CBitmap without;
    const Picture none = Painted(true, [&](CDC& dc) {
        for (const TileAxis axis : {TileAxis::Down, TileAxis::Across}) {
            StretchTiles(dc, nullptr, {0, 0, 10, 10}, axis);
            StretchTiles(dc, &without, {0, 0, 10, 10}, axis);
            StretchTiles(dc, bitmap.get(), {10, 10, 10, 20}, axis);
            StretchTiles(dc, bitmap.get(), {10, 10, 20, 10}, axis);
            StretchTiles(dc, bitmap.get(), {10, 10, 5, 5}, axis);
        }
        StretchBitmap(dc, nullptr, {0, 0, 10, 10});
        StretchBitmap(dc, &without, {0, 0, 10, 10});
        StretchBitmap(dc, bitmap.get(), {10, 10, 5, 5});
        StretchBitmap(dc, bitmap.get(), {INT_MIN, INT_MIN, INT_MAX, INT_MAX});
    });
    EXPECT_EQ(none.CountOf(kBackground), 60 * 50);
}

TEST(TransposeBitmap, ExchangesTheAxes) {
    for (bool of_skin : {false, true}) {
        const auto bitmap = Make(of_skin, 9, 4);
        CBitmap target;
        ASSERT_TRUE(TransposeBitmap(bitmap.get(), target));
        const PixelImage image = ImageOf(&target);
        ASSERT_EQ(image.width, 4);
        ASSERT_EQ(image.height, 9);
        for (int y = 0; y < 9; ++y)
            for (int x = 0; x < 4; ++x)
                ASSERT_EQ(image.pixels[static_cast<std::size_t>(y * 4 + x)], Pattern(y, x));
        // What the target held is replaced.
        CBitmap none;
        EXPECT_FALSE(TransposeBitmap(&none, target));
        EXPECT_EQ(target.m_hObject, nullptr);
    }
}

TEST(TransposeBitmap, CopyOfASkinBitmapIsKeptUntilItsHandleChanges) {
    CSkinBitmap bitmap;
    EXPECT_EQ(bitmap.Transposed(), nullptr);
    bitmap.Attach(MakeBitmap(5, 3, Pattern)->Detach());
    CSkinBitmap* copy = bitmap.Transposed();
    ASSERT_NE(copy, nullptr);
    const HGDIOBJ handle = copy->m_hObject;
    EXPECT_EQ(bitmap.Transposed(), copy);
    EXPECT_EQ(copy->m_hObject, handle);
    EXPECT_EQ(copy->Size().cx, 3);
    bitmap.DeleteObject();
    EXPECT_EQ(::GetObjectType(handle), 0u);
    EXPECT_EQ(bitmap.Transposed(), nullptr);
}

}  // namespace
