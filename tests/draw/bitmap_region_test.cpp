#include "draw/bitmap_region.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "draw/skin_bitmap.h"
#include "draw_fixture.h"

using namespace tavix_test;
using namespace tavix;

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);

/* One combine a pixel, as the regions are defined. */
void AddPlain(CRgn& region, HBITMAP bitmap, const SIZE& size, COLORREF key, bool equal) {
    CMemoryDC memory;
    const SelectionGuard selected(memory, bitmap);
    for (int x = 0; x < size.cx; ++x)
        for (int y = 0; y < size.cy; ++y) {
            if ((::GetPixel(memory, x, y) == key) != equal) continue;
            CRgn pixel;
            pixel.CreateRectRgn(x, y, x + 1, y + 1);
            region.CombineRgn(region, pixel, RGN_OR);
        }
}

bool IsEmpty(const CRgn& region) {
    RECT box;
    return ::GetRgnBox(region, &box) == NULLREGION;
}

}  // namespace

TEST(BitmapRegion, EqualsOneCombineAPixel) {
    Random random(31);
    for (int i = 0; i < 1500; ++i) {
        const int depth = kAllDepths[random.Between(0, 7)];
        const bool large = random.OneIn(10);
        const SIZE size{random.Between(1, large ? 60 : 20), random.Between(1, large ? 60 : 20)};
        COLORREF key = random.OneIn(2) ? kRed : random.Colour();
        CBitmap plain;
        CSkinBitmap skin;
        CBitmap& bitmap = random.OneIn(2) ? plain : skin;
        bitmap.Attach(RandomBitmap(random, depth, size, key));
        if (random.OneIn(2)) {
            CMemoryDC memory;
            const SelectionGuard selected(memory, bitmap.m_hObject);
            key = ::GetPixel(memory, random.Between(0, size.cx - 1), random.Between(0, size.cy - 1));
        }
        const SIZE extent{random.Between(-2, 70), random.Between(-2, 70)};
        const bool bounded = random.OneIn(3);
        const SIZE looked_at{bounded ? std::min(size.cx, extent.cx) : size.cx,
                             bounded ? std::min(size.cy, extent.cy) : size.cy};
        const bool equal = random.OneIn(2);
        CRgn expected, actual;
        expected.CreateRectRgn(0, 0, 0, 0);
        if (equal) {
            if (random.OneIn(2)) actual.CreateRectRgn(1, 2, 300, 400);  // what was there goes
            EXPECT_EQ(RegionFromBitmapKey(&actual, &bitmap, key, bounded ? &extent : nullptr), 1);
        } else {
            if (random.OneIn(2)) {  // what was there stays
                expected.CreateRectRgn(5, 5, 30, 12);
                actual.CreateRectRgn(5, 5, 30, 12);
            }
            EXPECT_EQ(RegionFromBitmapOpaque(&actual, &bitmap, key, bounded ? &extent : nullptr), 1);
        }
        AddPlain(expected, static_cast<HBITMAP>(bitmap.m_hObject), looked_at, key, equal);
        ASSERT_TRUE(::EqualRgn(expected, actual))
            << "round " << i << ", depth " << depth << ", " << size.cx << " by " << size.cy;
    }
}

TEST(BitmapRegion, KeyThatDoesNotOccurGivesAnEmptyRegionThatCutsNothing) {
    Random random(32);
    CSkinBitmap bitmap;
    bitmap.Attach(RandomBitmap(random, 0, {10, 10}, RGB(1, 2, 3)));
    CRgn corner;
    RegionFromBitmapKey(&corner, &bitmap, RGB(254, 253, 252));
    ASSERT_TRUE(corner.m_hObject);
    EXPECT_TRUE(IsEmpty(corner));
    CRgn window, whole;
    window.CreateRectRgn(0, 0, 50, 40);
    whole.CreateRectRgn(0, 0, 50, 40);
    window.CombineRgn(window, corner, RGN_DIFF);
    EXPECT_TRUE(::EqualRgn(window, whole));
}

TEST(BitmapRegion, NullBitmapGivesTheEmptyRegion) {
    CRgn region;
    region.CreateRectRgn(0, 0, 10, 10);
    EXPECT_EQ(RegionFromBitmapKey(&region, nullptr, kRed), 1);
    ASSERT_TRUE(region.m_hObject);
    EXPECT_TRUE(IsEmpty(region));
    CBitmap without_handle;
    EXPECT_EQ(RegionFromBitmapKey(&region, &without_handle, kRed), 1);
    EXPECT_TRUE(IsEmpty(region));
    CRgn opaque;
    EXPECT_EQ(RegionFromBitmapOpaque(&opaque, nullptr, kRed), 1);
    ASSERT_TRUE(opaque.m_hObject);
    EXPECT_TRUE(IsEmpty(opaque));
}

TEST(BitmapRegion, EveryPixelOfTheKeyMakesOneRectangle) {
    CBitmap bitmap;
    void* bits = nullptr;
    bitmap.Attach(MakeDib(32, {300, 200}, true, {}, &bits));
    std::fill_n(static_cast<DWORD*>(bits), 300 * 200, 0xFFFF0000u);
    CRgn region, expected;
    RegionFromBitmapKey(&region, &bitmap, kRed);
    expected.CreateRectRgn(0, 0, 300, 200);
    EXPECT_TRUE(::EqualRgn(region, expected));
    RegionFromBitmapKey(&region, &bitmap, 0x010000FF);  // no colour has a top byte
    EXPECT_TRUE(IsEmpty(region));
}

TEST(BitmapRegion, HundredThousandRectanglesAreCollectedInTime) {
    constexpr int kSide = 450;
    CBitmap bitmap;
    void* bits = nullptr;
    bitmap.Attach(MakeDib(32, {kSide, kSide}, true, {}, &bits));
    DWORD* pixels = static_cast<DWORD*>(bits);
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x) pixels[y * kSide + x] = (x + y) % 2 ? 0xFF0000u : 0u;
    const ULONGLONG start = ::GetTickCount64();
    CRgn region;
    RegionFromBitmapKey(&region, &bitmap, kRed);
    EXPECT_LT(::GetTickCount64() - start, 3000u);
    Random random(33);
    for (int i = 0; i < 2000; ++i) {
        const int x = random.Between(0, kSide - 1);
        const int y = random.Between(0, kSide - 1);
        ASSERT_EQ(::PtInRegion(region, x, y) != 0, (x + y) % 2 != 0) << x << ", " << y;
    }
}

TEST(BitmapRegion, BitmapSelectedElsewhereIsStillRead) {
    Random random(34);
    CBitmap bitmap;
    bitmap.Attach(RandomBitmap(random, 0, {16, 16}, kRed));
    CRgn free, held;
    RegionFromBitmapKey(&free, &bitmap, kRed);
    CMemoryDC memory;
    const SelectionGuard selected(memory, bitmap.m_hObject);
    RegionFromBitmapKey(&held, &bitmap, kRed);
    EXPECT_FALSE(IsEmpty(held));
    EXPECT_TRUE(::EqualRgn(free, held));
}
