#include "draw/skin_bitmap.h"

#include <gtest/gtest.h>

#include "draw/bitmap_draw.h"
#include "draw_fixture.h"
#include "main/gui_objects.h"

using namespace tavix_test;
using namespace tavix;

namespace {

HBITMAP OneColour(COLORREF colour, const SIZE& size) {
    void* bits = nullptr;
    HBITMAP bitmap = MakeDib(32, size, true, {}, &bits);
    for (int i = 0; i < size.cx * size.cy; ++i)
        static_cast<DWORD*>(bits)[i] = RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour));
    return bitmap;
}

}  // namespace

TEST(ReadPixels, AgreesWithGetPixelInEveryDepth) {
    Random random(41);
    for (const int depth : kAllDepths) {
        for (int i = 0; i < 12; ++i) {
            const SIZE size{random.Between(1, 200), random.Between(1, i == 0 ? 200 : 40)};
            CBitmap bitmap;
            bitmap.Attach(RandomBitmap(random, depth, size, 3));
            const PixelImage image = ReadPixels(bitmap);
            ASSERT_EQ(image.width, size.cx);
            ASSERT_EQ(image.height, size.cy);
            CMemoryDC memory;
            const SelectionGuard selected(memory, bitmap.m_hObject);
            for (int y = 0; y < size.cy; y += 3)
                for (int x = 0; x < size.cx; ++x)
                    ASSERT_EQ(image.pixels.at(static_cast<std::size_t>(y * size.cx + x)),
                              ::GetPixel(memory, x, y))
                        << "depth " << depth << " at " << x << ", " << y;
        }
    }
}

TEST(ReadPixels, IsEmptyWithoutABitmap) {
    EXPECT_EQ(ReadPixels(nullptr).width, 0);
    HBITMAP deleted = OneColour(0, {2, 2});
    ::DeleteObject(deleted);
    EXPECT_TRUE(ReadPixels(deleted).pixels.empty());
    EXPECT_EQ(ReadPixels(static_cast<HBITMAP>(::GetStockObject(WHITE_BRUSH))).width, 0);
}

TEST(SkinBitmap, KnowsItsSizeAndClass) {
    CSkinBitmap bitmap;
    EXPECT_EQ(bitmap.Size().cx, 0);
    bitmap.Attach(OneColour(1, {7, 9}));
    EXPECT_EQ(bitmap.Size().cx, 7);
    EXPECT_EQ(bitmap.Size().cy, 9);
    EXPECT_EQ(AsSkinBitmap(&bitmap), &bitmap);
    EXPECT_TRUE(bitmap.IsKindOf(RUNTIME_CLASS(CBitmap)));
    CBitmap plain;
    EXPECT_EQ(AsSkinBitmap(&plain), nullptr);
    EXPECT_EQ(AsSkinBitmap(nullptr), nullptr);
    EXPECT_EQ(BitmapSize(nullptr).cx, 0);
    EXPECT_EQ(BitmapSize(&plain).cy, 0);
    EXPECT_EQ(BitmapSize(&bitmap).cy, 9);
}

TEST(SkinBitmap, DerivesAnewForANewHandle) {
    CSkinBitmap bitmap;
    bitmap.Attach(OneColour(RGB(1, 2, 3), {4, 4}));
    EXPECT_EQ(bitmap.Pixels().pixels[0], RGB(1, 2, 3));
    EXPECT_EQ(bitmap.KeyRegion(RGB(9, 9, 9)), nullptr);
    bitmap.Attach(OneColour(RGB(9, 9, 9), {5, 3}));
    EXPECT_EQ(bitmap.Size().cx, 5);
    EXPECT_EQ(bitmap.Pixels().pixels[0], RGB(9, 9, 9));
    RECT box{};
    ASSERT_NE(bitmap.KeyRegion(RGB(9, 9, 9)), nullptr);
    ::GetRgnBox(bitmap.KeyRegion(RGB(9, 9, 9)), &box);
    EXPECT_EQ(box.right, 5);
    // The handle is a public member; a host may change it there.
    HGDIOBJ former = bitmap.m_hObject;
    bitmap.m_hObject = OneColour(RGB(7, 7, 7), {6, 6});
    EXPECT_EQ(bitmap.Pixels().pixels.at(35), RGB(7, 7, 7));
    ::DeleteObject(former);
    bitmap.DeleteObject();
    EXPECT_EQ(bitmap.Size().cx, 0);
    EXPECT_TRUE(bitmap.Pixels().pixels.empty());
    EXPECT_EQ(bitmap.KeyRegion(RGB(7, 7, 7)), nullptr);
    EXPECT_EQ(bitmap.KeyedCopy(RGB(7, 7, 7)), nullptr);
}

TEST(SkinBitmap, KeepsARegionAndACopyForEachKey) {
    Random random(42);
    CSkinBitmap bitmap;
    bitmap.Attach(RandomBitmap(random, 0, {16, 16}, 3));
    const HRGN region = bitmap.KeyRegion(3);
    const HBITMAP copy = bitmap.KeyedCopy(3);
    ASSERT_NE(region, nullptr);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(bitmap.KeyRegion(255), nullptr);
    EXPECT_NE(bitmap.KeyedCopy(255), copy);
    EXPECT_EQ(bitmap.KeyRegion(3), region);
    EXPECT_EQ(bitmap.KeyedCopy(3), copy);
}

TEST(SkinBitmap, KeyedCopyIsTransparentJustWhereTheKeyIs) {
    Random random(43);
    CSkinBitmap bitmap;
    bitmap.Attach(RandomBitmap(random, 24, {20, 12}, 3));
    BITMAP facts{};
    ASSERT_TRUE(::GetObjectA(bitmap.KeyedCopy(3), sizeof facts, &facts));
    ASSERT_EQ(facts.bmBitsPixel, 32);
    const DWORD* keyed = static_cast<const DWORD*>(facts.bmBits);
    ASSERT_EQ(keyed, bitmap.KeyedRows(3));
    for (const COLORREF colour : bitmap.Pixels().pixels) {
        const DWORD opaque = 0xFF000000u | RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour));
        ASSERT_EQ(*keyed++, colour == 3 ? 0u : opaque);
    }
}

TEST(SkinBitmap, WhatIsDerivedDiesWithIt) {
    Random random(44);
    const auto round = [&random] {
        CSkinBitmap bitmap;
        bitmap.Attach(RandomBitmap(random, 0, {16, 16}, 3));
        for (const COLORREF key : {3, 255, 7}) {
            bitmap.KeyRegion(key);
            bitmap.KeyedCopy(key);
        }
        bitmap.Attach(RandomBitmap(random, 0, {5, 5}, 3));
        bitmap.KeyRegion(3);
    };
    round();
    const int before = CountGdiObjects();
    for (int i = 0; i < 300; ++i) round();
    EXPECT_LE(CountGdiObjects() - before, 1);
}

TEST(GuiObjects, CountsWhatIsMade) {
    std::vector<HGDIOBJ> brushes;
    const int before = CountGdiObjects();
    ASSERT_GE(before, 0);
    for (int i = 0; i < 50; ++i) brushes.push_back(::CreateSolidBrush(static_cast<COLORREF>(i)));
    EXPECT_EQ(CountGdiObjects() - before, 50);
    for (const HGDIOBJ brush : brushes) ::DeleteObject(brush);
    EXPECT_EQ(CountGdiObjects(), before);

    const auto make = [] {
        return ::CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr, nullptr, nullptr);
    };
    HWND first = make();  // a thread's first window brings helpers of the platform's own
    const int user = CountUserObjects();
    HWND window = make();
    HMENU menu = ::CreatePopupMenu();
    EXPECT_EQ(CountUserObjects() - user, 2);
    ::DestroyWindow(window);
    ::DestroyMenu(menu);
    EXPECT_EQ(CountUserObjects(), user);
    ::DestroyWindow(first);
}
