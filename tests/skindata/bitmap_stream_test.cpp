/* Bitmaps as streams of a skin: every depth comes back to the pixel, and damage stays harmless. */
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "skindata/heap_block.h"
#include "skindata/record_io.h"
#include "storage_access.h"

namespace tavix_test {
namespace {

using tavix::ComPtr;
using tavix::HeapBlock;

// A picture of one depth in which neighbours differ. Its width makes rows end inside a word.
std::unique_ptr<CBitmap> PictureOf(int depth, int width, int height) {
    struct {
        BITMAPINFOHEADER head;
        RGBQUAD colours[256];
    } info{};
    info.head = {sizeof info.head, width, height, 1, static_cast<WORD>(depth), BI_RGB, 0, 0, 0, 0, 0};
    const int count = depth <= 8 ? 1 << depth : 0;
    for (int i = 0; i < count; ++i) {
        const auto level = static_cast<BYTE>(count == 2 ? 255 * i : i * 255 / (count - 1));
        info.colours[i] = {level, static_cast<BYTE>(255 - level), static_cast<BYTE>(level / 2), 0};
        if (count == 2) info.colours[i] = {level, level, level, 0};
    }
    void* bits = nullptr;
    auto bitmap = std::make_unique<CBitmap>();
    const auto* format = reinterpret_cast<const BITMAPINFO*>(&info);
    bitmap->Attach(::CreateDIBSection(nullptr, format, DIB_RGB_COLORS, &bits, nullptr, 0));
    EXPECT_NE(bits, nullptr);
    const int bytes = (width * depth + 31) / 32 * 4 * height;
    for (int i = 0; bits && i < bytes; ++i)
        static_cast<BYTE*>(bits)[i] = static_cast<BYTE>(i * 37 + (i >> 3) * 11);
    ::GdiFlush();
    return bitmap;
}

std::vector<BYTE> StreamBytes(OpenFile& open, const char* name) {
    ComPtr<IStream> stream;
    HeapBlock block;
    DWORD size = 0;
    EXPECT_EQ(open.access.OpenStm(open.root.Get(), name, stream.Put()), 1);
    EXPECT_EQ(open.access.ReadFromStm(stream.Get(), block.Put(), &size), 1);
    const auto* first = static_cast<const BYTE*>(block.Get());
    return {first, first + size};
}

DWORD Word(const std::vector<BYTE>& bytes, std::size_t at, int width) {
    DWORD value = 0;
    std::memcpy(&value, bytes.data() + at, static_cast<std::size_t>(width));
    return value;
}

class BitmapDepth : public testing::TestWithParam<int> {};

TEST_P(BitmapDepth, ComesBackToThePixel) {
    const int depth = GetParam();
    for (const SIZE size : {SIZE{1, 1}, SIZE{13, 7}, SIZE{33, 4}}) {
        SCOPED_TRACE(size.cx);
        OpenFile open;
        const auto picture = PictureOf(depth, size.cx, size.cy);
        ASSERT_EQ(open.access.WriteBmpToStm(open.root.Get(), "picture", picture.get()), 1);
        CBitmap* loaded = nullptr;
        ASSERT_EQ(open.access.LoadBmpFromStm(open.root.Get(), "picture", loaded), 1);
        const std::unique_ptr<CBitmap> owner(loaded);
        EXPECT_EQ(loaded->GetBitmapSize().cx, size.cx);
        EXPECT_EQ(loaded->GetBitmapSize().cy, size.cy);
        for (int y = 0; y < size.cy; ++y)
            for (int x = 0; x < size.cx; ++x)
                ASSERT_EQ(PixelOf(loaded, x, y), PixelOf(picture.get(), x, y)) << x << " " << y;
    }
}

TEST_P(BitmapDepth, IsWrittenAsAnUncompressedBmpFileOfThatDepth) {
    const auto depth = static_cast<DWORD>(GetParam());
    OpenFile open;
    const auto picture = PictureOf(GetParam(), 13, 7);
    ASSERT_EQ(open.access.WriteBmpToStm(open.root.Get(), "picture", picture.get()), 1);
    const std::vector<BYTE> bytes = StreamBytes(open, "picture");
    const DWORD entries = depth <= 8 ? 1u << depth : 0;
    const DWORD bits = 54 + 4 * entries;
    ASSERT_GE(bytes.size(), bits);
    EXPECT_EQ(bytes.size(), bits + (13 * depth + 31) / 32 * 4 * 7);
    EXPECT_EQ(Word(bytes, 0, 2), 0x4D42u);
    EXPECT_EQ(Word(bytes, 2, 4), bytes.size());
    EXPECT_EQ(Word(bytes, 6, 4), 0u);
    EXPECT_EQ(Word(bytes, 10, 4), bits);
    EXPECT_EQ(Word(bytes, 14, 4), 40u);
    EXPECT_EQ(Word(bytes, 18, 4), 13u);
    EXPECT_EQ(Word(bytes, 22, 4), 7u);
    EXPECT_EQ(Word(bytes, 26, 2), 1u);
    EXPECT_EQ(Word(bytes, 28, 2), depth);
    EXPECT_EQ(Word(bytes, 30, 4), 0u) << "compression";
}

TEST_P(BitmapDepth, LoadsAsTheDevicesFormatOrMonochrome) {
    OpenFile open;
    ASSERT_EQ(open.access.WriteBmpToStm(open.root.Get(), "picture", PictureOf(GetParam(), 8, 8).get()), 1);
    CBitmap* loaded = nullptr;
    ASSERT_EQ(open.access.LoadBmpFromStm(open.root.Get(), "picture", loaded), 1);
    const std::unique_ptr<CBitmap> owner(loaded);
    BITMAP facts{};
    ASSERT_NE(::GetObjectA(*loaded, sizeof facts, &facts), 0);
    const CClientDC screen(nullptr);
    EXPECT_EQ(facts.bmBitsPixel, GetParam() == 1 ? 1 : ::GetDeviceCaps(screen, BITSPIXEL));
}

INSTANTIATE_TEST_SUITE_P(All, BitmapDepth, testing::Values(1, 4, 8, 16, 24, 32));

TEST(BitmapStream, AStreamThatIsNoBmpGivesAWrapperWithoutAHandle) {
    OpenFile open;
    for (const std::string& bytes : {std::string("B"), std::string("no picture"), std::string(60, '\xFF')}) {
        open.Put(nullptr, "broken", bytes.data(), static_cast<DWORD>(bytes.size()));
        CBitmap* loaded = nullptr;
        ASSERT_EQ(open.access.LoadBmpFromStm(open.root.Get(), "broken", loaded), 1);
        ASSERT_NE(loaded, nullptr);
        EXPECT_EQ(loaded->GetSafeHandle(), nullptr);
        delete loaded;
    }
}

TEST(BitmapStream, AMissingOrEmptyOneLeavesTheVariableAlone) {
    OpenFile open;
    const auto former = MakeBitmap(1, 1, RGB(0, 0, 0));
    CBitmap* variable = former.get();
    EXPECT_EQ(open.access.LoadBmpFromStm(open.root.Get(), "missing", variable), 0);
    EXPECT_EQ(variable, former.get());
    EXPECT_TRUE(HasStream(open.root.Get(), L"missing"));
    EXPECT_EQ(open.access.LoadBmpFromStm(open.root.Get(), "missing", variable), 0);
    EXPECT_EQ(variable, former.get());
    EXPECT_EQ(open.access.LoadBmpFromStm(open.root.Get(), "", variable), 0);
    EXPECT_EQ(variable, former.get());
}

TEST(BitmapStream, NothingIsWrittenOfABitmapWithoutAHandle) {
    OpenFile open;
    CBitmap without;
    EXPECT_EQ(open.access.WriteBmpToStm(open.root.Get(), "w", &without), 0);
    EXPECT_EQ(open.access.WriteBmpToStm(open.root.Get(), "w", nullptr), 0);
    EXPECT_EQ(open.access.WriteBmpToStm(open.root.Get(), "", MakeBitmap(1, 1, RGB(0, 0, 0)).get()), 0);
}

TEST(BitmapStream, AShorterBitmapReplacesALongerOneWhole) {
    OpenFile open;
    ASSERT_EQ(open.access.WriteBmpToStm(open.root.Get(), "b", MakeBitmap(60, 60, RGB(1, 2, 3)).get()), 1);
    ASSERT_EQ(open.access.WriteBmpToStm(open.root.Get(), "b", MakeBitmap(2, 2, RGB(4, 5, 6)).get()), 1);
    EXPECT_EQ(StreamBytes(open, "b").size(), 54u + 8 * 2);
}

// What the face shows of it: the id holds the wrapper, and the next name does not inherit the
// bitmap before it.
TEST(BitmapStream, AnInvalidBmpEndsTheCarryingOver) {
    const auto good = MakeBitmap(2, 2, RGB(4, 5, 6));
    RecordSet records;
    const TSkinField* fields = GetSkinRecordLayout(skinButton)->fields + 18;
    ASSERT_EQ(fields[0].id, static_cast<DWORD>(BMP_BTN_CHECK_ON));
    records.SetBitmap(skinButton, fields[0], "good", good.get());
    records.SetBitmap(skinButton, fields[1], "broken", nullptr);
    records.SetBitmap(skinButton, fields[2], "missing", nullptr);
    OpenFile open;
    ASSERT_EQ(open.access.Save(skinButton, open.root.Get(), &records.button), 1);
    open.Put("Button", "broken", "BMno", 4);
    CTavixSkinFace face;
    ASSERT_EQ(tavix::LoadRecord(open.root.Get(), skinButton, &face, 16), 1);
    EXPECT_EQ(PixelOf(face.GetBmp(BMP_BTN_CHECK_ON)), RGB(4, 5, 6));
    ASSERT_NE(face.GetBmp(BMP_BTN_CHECK_OFF), nullptr);
    EXPECT_EQ(face.GetBmp(BMP_BTN_CHECK_OFF)->GetSafeHandle(), nullptr);
    EXPECT_EQ(face.GetBmp(BMP_BTN_RADIO_ON), face.GetBmp(BMP_BTN_CHECK_OFF));
    EXPECT_EQ(face.GetBmp(BMP_BTN_RADIO_OFF), face.GetBmp(BMP_BTN_CHECK_OFF));
}

}  // namespace
}  // namespace tavix_test
