#include "draw/dib_image.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>

#include "dib_fixture.h"
#include "draw/skin_bitmap.h"
#include "draw_fixture.h"
#include "main/gui_objects.h"

using namespace tavix_test;
using namespace tavix;

namespace {

/* The image's bitmap, and its facts. */
struct Converted {
    explicit Converted(const Bytes& image) {
        HDC display = ::GetDC(nullptr);
        bitmap.Attach(DibImageToBitmap(display, image));
        ::ReleaseDC(nullptr, display);
        if (bitmap.m_hObject) ::GetObjectA(bitmap, sizeof facts, &facts);
    }
    explicit operator bool() const { return bitmap.m_hObject != nullptr; }
    CBitmap bitmap;
    BITMAP facts{};
};

bool IsRefused(const DibParts& parts) { return !Converted(parts.Image()); }

/* The file image of a bitmap as bytes; empty on failure. */
Bytes ImageOfHandle(HBITMAP bitmap) {
    void* block = nullptr;
    DWORD size = 0;
    HDC display = ::GetDC(nullptr);
    const int done = BitmapToDibImage(display, bitmap, &block, &size);
    ::ReleaseDC(nullptr, display);
    if (!done) {
        EXPECT_EQ(block, nullptr);
        EXPECT_EQ(size, 0u);
        return {};
    }
    const std::byte* bytes = static_cast<const std::byte*>(block);
    Bytes image(bytes, bytes + size);
    EXPECT_TRUE(::HeapFree(::GetProcessHeap(), 0, block));
    return image;
}

}  // namespace

TEST(DibImage, GivesTheImagesPixelsInEveryDepth) {
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        for (const int height : {5, -5}) {
            const DibParts parts = SampleDib(bits, 7, height);
            const Converted made(parts.Image());
            ASSERT_TRUE(made) << bits;
            EXPECT_EQ(made.facts.bmWidth, 7);
            EXPECT_EQ(made.facts.bmHeight, 5);
            EXPECT_EQ(made.facts.bmBits, nullptr);  // a device's bitmap, no DIB
            const PixelImage image = ReadPixels(made.bitmap);
            for (int y = 0; y < 5; ++y)
                for (int x = 0; x < 7; ++x)
                    EXPECT_EQ(image.pixels[static_cast<std::size_t>(y * 7 + x)], SampleColour(bits, x, y))
                        << bits << " bits, height " << height << ", at " << x << ", " << y;
        }
    }
}

TEST(DibImage, OneBitGivesAMonochromeBitmapAndOthersTheDevicesFormat) {
    HDC display = ::GetDC(nullptr);
    const int depth = ::GetDeviceCaps(display, BITSPIXEL) * ::GetDeviceCaps(display, PLANES);
    ::ReleaseDC(nullptr, display);
    const Converted mono(SampleDib(1, 9, 4).Image());
    ASSERT_TRUE(mono);
    EXPECT_EQ(mono.facts.bmBitsPixel * mono.facts.bmPlanes, 1);
    for (const int bits : {4, 8, 16, 24, 32}) {
        const Converted colours(SampleDib(bits, 9, 4).Image());
        ASSERT_TRUE(colours);
        EXPECT_EQ(colours.facts.bmBitsPixel * colours.facts.bmPlanes, depth);
    }
}

TEST(DibImage, TheTypeWordIsNotLookedAt) {
    Bytes image = SampleDib(24, 4, 4).Image();
    image[0] = std::byte{'X'};
    EXPECT_TRUE(Converted(image));
}

TEST(DibImage, LongerHeadersAndMasksAreRead) {
    for (const DWORD header : {40u, 52u, 56u, 108u, 124u}) {
        DibParts parts = SampleDib(32, 3, 2);
        parts.head.biSize = header;
        EXPECT_TRUE(Converted(parts.Image())) << header;
        parts.head.biCompression = BI_BITFIELDS;
        parts.masks = {0x000000FF, 0x0000FF00, 0x00FF0000};  // red and blue change places
        const Converted made(parts.Image());
        ASSERT_TRUE(made) << header;
        const COLORREF c = SampleColour(32, 1, 1);
        EXPECT_EQ(ReadPixels(made.bitmap).pixels[4], RGB(GetBValue(c), GetGValue(c), GetRValue(c))) << header;
    }
}

TEST(DibImage, RunLengthImagesAreDecoded) {
    DibParts eight = SampleDib(8, 6, 2);
    eight.head.biCompression = BI_RLE8;
    eight.bits = BytesOf({4, 1, 2, 2, 0, 0, 0, 3, 5, 6, 7, 0, 3, 4, 0, 1});
    const Converted first(eight.Image());
    ASSERT_TRUE(first);
    const auto pixels = ReadPixels(first.bitmap).pixels;
    const int rows[2][6] = {{5, 6, 7, 4, 4, 4}, {1, 1, 1, 1, 2, 2}};
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(pixels[static_cast<std::size_t>(i)], SampleTableColour(8, rows[i / 6][i % 6])) << i;

    DibParts four = SampleDib(4, 6, 1);
    four.head.biCompression = BI_RLE4;
    four.bits = BytesOf({3, 0x12, 0, 3, 0x34, 0x50, 0, 1});
    const Converted second(four.Image());
    ASSERT_TRUE(second);
    const int row[6] = {1, 2, 1, 3, 4, 5};
    const auto line = ReadPixels(second.bitmap).pixels;
    for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(line[i], SampleTableColour(4, row[i])) << i;
}

TEST(DibImage, RunLengthImagesThatLeaveTheImageAreRefused) {
    const auto refused = [](std::vector<int> stream) {
        DibParts parts = SampleDib(8, 6, 2);
        parts.head.biCompression = BI_RLE8;
        parts.bits = BytesOf(stream);
        return IsRefused(parts);
    };
    EXPECT_FALSE(refused({6, 1, 0, 0, 6, 2, 0, 1}));
    EXPECT_FALSE(refused({6, 1, 0, 0, 6, 2}));              // ends with its bytes
    EXPECT_FALSE(refused({6, 1, 0, 0, 6, 2, 0, 0, 0, 1}));  // a line's end after the last line
    EXPECT_TRUE(refused({7, 1, 0, 1}));                     // a run past the right edge
    EXPECT_TRUE(refused({0, 4, 1, 2, 3, 4, 3, 1, 0, 1}));
    EXPECT_TRUE(refused({0, 7, 1, 2, 3, 4, 5, 6, 7, 0, 0, 1}));
    EXPECT_TRUE(refused({6, 1, 0, 0, 6, 2, 0, 0, 1, 1, 0, 1}));  // a third row
    EXPECT_TRUE(refused({0, 2, 7, 0, 0, 1}));                    // moves right of the image
    EXPECT_TRUE(refused({0, 2, 0, 3, 0, 1}));                    // moves above it
    EXPECT_TRUE(refused({0, 6, 1, 2, 3}));                       // pixels cut off
    EXPECT_TRUE(refused({0, 2, 1}));
    EXPECT_TRUE(refused({6, 1, 0}));
    EXPECT_TRUE(refused({}));
}

TEST(DibImage, RunLengthImagesOfAHugeAreaAreRefused) {
    DibParts parts = SampleDib(8, 6, 2);
    parts.head.biCompression = BI_RLE8;
    parts.head.biWidth = 32767;
    parts.head.biHeight = 32767;
    parts.bits = BytesOf({0, 1});
    EXPECT_TRUE(IsRefused(parts));
}

TEST(DibImage, UnsoundHeadersAreRefused) {
    const auto refused = [](int bits, const std::function<void(DibParts&)>& change) {
        DibParts parts = SampleDib(bits, 7, 5);
        change(parts);
        return IsRefused(parts);
    };
    for (const int bits : {1, 4, 8, 16, 24, 32}) EXPECT_FALSE(refused(bits, [](DibParts&) {}));
    for (const DWORD size : {0u, 12u, 39u, 0x7FFFFFFFu, 0xFFFFFFFFu})
        EXPECT_TRUE(refused(24, [size](DibParts& s) { s.stated_header = size; })) << size;
    for (const int planes : {0, 2, 3, 0xFFFF})
        EXPECT_TRUE(refused(24, [planes](DibParts& s) { s.head.biPlanes = static_cast<WORD>(planes); }));
    for (const int bits : {0, 2, 3, 5, 15, 31, 33, 48, 64, 0xFFFF})
        EXPECT_TRUE(refused(32, [bits](DibParts& s) { s.head.biBitCount = static_cast<WORD>(bits); }))
            << bits;
    for (const LONG width : {0L, -1L, -7L, 32768L, 0x7FFFFFFFL, LONG_MIN})
        EXPECT_TRUE(refused(24, [width](DibParts& s) { s.head.biWidth = width; })) << width;
    for (const LONG height : {0L, 32768L, -32768L, 0x7FFFFFFFL, LONG_MIN})
        EXPECT_TRUE(refused(24, [height](DibParts& s) { s.head.biHeight = height; })) << height;
    for (const DWORD compression : {4u, 5u, 6u, 11u, 0xFFFFFFFFu})
        EXPECT_TRUE(refused(32, [compression](DibParts& s) { s.head.biCompression = compression; }));
}

TEST(DibImage, CompressionHasToFitTheDepth) {
    const auto refused = [](int bits, DWORD compression, int height) {
        DibParts parts = SampleDib(bits, 6, height);
        parts.head.biCompression = compression;
        parts.bits = BytesOf({0, 1, 0, 1});
        parts.masks = {0xF800, 0x07E0, 0x001F};
        parts.bits.resize(4000);
        return IsRefused(parts);
    };
    for (const int bits : {1, 4, 16, 24, 32}) EXPECT_TRUE(refused(bits, BI_RLE8, 2)) << bits;
    for (const int bits : {1, 8, 16, 24, 32}) EXPECT_TRUE(refused(bits, BI_RLE4, 2)) << bits;
    for (const int bits : {1, 4, 8, 24}) EXPECT_TRUE(refused(bits, BI_BITFIELDS, 2)) << bits;
    EXPECT_FALSE(refused(8, BI_RLE8, 2));
    EXPECT_TRUE(refused(8, BI_RLE8, -2));  // runs go upwards only
    EXPECT_FALSE(refused(16, BI_BITFIELDS, 2));
}

TEST(DibImage, MasksHaveToBeSound) {
    const auto refused = [](int bits, std::vector<DWORD> masks) {
        DibParts parts = SampleDib(bits, 6, 3);
        parts.head.biCompression = BI_BITFIELDS;
        parts.masks = masks;
        return IsRefused(parts);
    };
    EXPECT_FALSE(refused(16, {0x7C00, 0x03E0, 0x001F}));
    EXPECT_FALSE(refused(32, {0xFF000000, 0x00FF0000, 0x0000FF00}));
    EXPECT_TRUE(refused(16, {0x7C00, 0x03E0, 0x0000}));    // none
    EXPECT_TRUE(refused(16, {0x7C00, 0x07E0, 0x001F}));    // one bit twice
    EXPECT_TRUE(refused(16, {0x5C00, 0x03E0, 0x001F}));    // a gap
    EXPECT_TRUE(refused(16, {0x1F0000, 0x03E0, 0x001F}));  // beyond the pixel
    EXPECT_TRUE(refused(32, {0xFFFFFFFF, 0xFF00, 0xFF}));
}

TEST(DibImage, EverythingHasToLieWithinTheImage) {
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        const DibParts parts = SampleDib(bits, 7, 5);
        const Bytes image = parts.Image();
        // Cut off anywhere, it is refused, whatever part is missing.
        for (std::size_t length = 0; length < image.size(); ++length) {
            const Bytes cut(image.begin(), image.begin() + static_cast<std::ptrdiff_t>(length));
            ASSERT_FALSE(Converted(cut)) << bits << " bits, " << length << " bytes";
        }
        const DWORD end = static_cast<DWORD>(image.size());
        for (const DWORD offset : {end, end - 1, 0x7FFFFFFFul, 0xFFFFFFFFul}) {
            DibParts moved = parts;
            moved.stated_offset = offset;
            EXPECT_TRUE(IsRefused(moved)) << bits << " bits, offset " << offset;
        }
    }
}

TEST(DibImage, ColourTableMayBeShorterButNotMissing) {
    DibParts parts = SampleDib(8, 7, 5);
    parts.head.biClrUsed = 10;
    parts.table.resize(10);
    EXPECT_FALSE(IsRefused(parts));
    parts.head.biClrUsed = 0xFFFFFFFF;  // no more count than the depth has
    EXPECT_TRUE(IsRefused(parts));
    parts = SampleDib(8, 7, 5);
    parts.head.biClrUsed = 0xFFFFFFFF;
    EXPECT_FALSE(IsRefused(parts));
    parts = SampleDib(24, 7, 5);
    parts.head.biClrUsed = 0xFFFFFFFF;  // a mere hint there
    EXPECT_FALSE(IsRefused(parts));
}

TEST(BitmapToDib, WritesTheBitmapsOwnDepth) {
    Random random(61);
    for (const int depth : {1, 4, 8, 16, 24, 32}) {
        for (const int width : {1, 7, 32, 33}) {
            CBitmap bitmap;
            bitmap.Attach(RandomBitmap(random, depth, {width, 6}, 3));
            const Bytes image = ImageOfHandle(bitmap);
            const std::size_t entries = depth <= 8 ? std::size_t{1} << depth : 0;
            const std::size_t row = (static_cast<std::size_t>(width * depth) + 31) / 32 * 4;
            const std::size_t start = 54 + entries * 4;
            ASSERT_EQ(image.size(), start + row * 6) << depth;
            BITMAPFILEHEADER file;
            BITMAPINFOHEADER head;
            std::memcpy(&file, image.data(), sizeof file);
            std::memcpy(&head, image.data() + sizeof file, sizeof head);
            EXPECT_EQ(file.bfType, 0x4D42);
            EXPECT_EQ(file.bfSize, image.size());
            EXPECT_EQ(file.bfReserved1 | file.bfReserved2, 0);
            EXPECT_EQ(file.bfOffBits, start);
            EXPECT_EQ(head.biSize, 40u);
            EXPECT_EQ(head.biWidth, width);
            EXPECT_EQ(head.biHeight, 6);
            EXPECT_EQ(head.biPlanes, 1);
            EXPECT_EQ(head.biBitCount, depth);
            EXPECT_EQ(head.biCompression, static_cast<DWORD>(BI_RGB));

            const Converted back(image);
            ASSERT_TRUE(back) << depth;
            const PixelImage before = ReadPixels(bitmap);
            // A monochrome bitmap has no colours but black and white.
            if (depth == 1) continue;
            EXPECT_EQ(ReadPixels(back.bitmap).pixels, before.pixels) << depth << ", width " << width;
        }
    }
}

TEST(BitmapToDib, BitmapOf24BitsHasNoColourTable) {
    CBitmap bitmap;
    void* bits = nullptr;
    bitmap.Attach(MakeDib(24, {3, 2}, false, {}, &bits));
    const Bytes image = ImageOfHandle(bitmap);
    ASSERT_EQ(image.size(), 54u + 12u * 2u);
    EXPECT_EQ(std::to_integer<int>(image[10]), 54);
}

TEST(BitmapToDib, DeviceBitmapsComeBackTheSame) {
    Random random(62);
    for (const int depth : {0, -1}) {
        CBitmap bitmap;
        bitmap.Attach(RandomBitmap(random, depth, {37, 21}, 3));
        const Converted back(ImageOfHandle(bitmap));
        ASSERT_TRUE(back);
        EXPECT_EQ(ReadPixels(back.bitmap).pixels, ReadPixels(bitmap).pixels);
    }
}

TEST(BitmapToDib, WhatIsNoBitmapIsRefused) {
    EXPECT_TRUE(ImageOfHandle(nullptr).empty());
    EXPECT_TRUE(ImageOfHandle(reinterpret_cast<HBITMAP>(::GetStockObject(WHITE_BRUSH))).empty());
    HBITMAP deleted = ::CreateBitmap(4, 4, 1, 32, nullptr);
    ::DeleteObject(deleted);
    EXPECT_TRUE(ImageOfHandle(deleted).empty());
}

TEST(DibImage, NeitherWayLeavesObjects) {
    Random random(63);
    CBitmap bitmap;
    bitmap.Attach(RandomBitmap(random, 0, {20, 20}, 3));
    const Bytes image = ImageOfHandle(bitmap);
    DibParts broken = SampleDib(24, 7, 5);
    broken.head.biPlanes = 9;
    const auto round = [&] {
        EXPECT_TRUE(Converted(image));
        EXPECT_TRUE(IsRefused(broken));
        EXPECT_FALSE(ImageOfHandle(bitmap).empty());
    };
    round();
    const int before = CountGdiObjects();
    for (int i = 0; i < 300; ++i) round();
    EXPECT_LE(CountGdiObjects() - before, 1);
}
