/* The three tables and who owns what is in them. */
#include <cstdio>

#include "main/gui_objects.h"
#include "storage_access.h"

namespace tavix_test {
namespace {

// Counts its own end.
class CountedBitmap : public CBitmap {
public:
    explicit CountedBitmap(int& ended) : m_ended(ended) {}
    ~CountedBitmap() override { ++m_ended; }

private:
    int& m_ended;
};

TEST(SkinFace, StartsWithTheSystemsTextColoursAndNothingElse) {
    const CTavixSkinFace face;
    EXPECT_EQ(face.GetColor(0), ::GetSysColor(8));
    EXPECT_EQ(face.GetColor(1), ::GetSysColor(14));
    EXPECT_EQ(face.GetColor(2), ::GetSysColor(17));
    for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) {
        EXPECT_EQ(face.GetBmp(id), nullptr) << id;
        EXPECT_EQ(face.GetSize(id), 0u) << id;
        if (id > 2) {
            EXPECT_EQ(face.GetColor(id), 0u) << id;
        }
    }
}

TEST(SkinFace, DoesNotFollowTheSystemsColours) {
    const CTavixSkinFace before;
    const COLORREF former = before.GetColor(CLR_TEXT);
    const int element = COLOR_WINDOWTEXT;
    const COLORREF other = former ^ RGB(1, 2, 3);
    ASSERT_TRUE(::SetSysColors(1, &element, &other));
    EXPECT_EQ(before.GetColor(CLR_TEXT), former);
    EXPECT_EQ(CTavixSkinFace().GetColor(CLR_TEXT), other);
    ASSERT_TRUE(::SetSysColors(1, &element, &former));
}

TEST(SkinFace, LoadingLeavesTheTextColoursAlone) {
    TestSkin skin;
    CTavixSkinFace face;
    face.SetColor(CLR_TEXT, RGB(9, 9, 9));
    face.LoadSkin(skin.Write());
    EXPECT_EQ(face.GetColor(CLR_TEXT), RGB(9, 9, 9));
    EXPECT_EQ(face.GetColor(CLR_TRANSPARENT), TestSkin::kTransparent);
}

TEST(SkinFace, UnloadingEmptiesTheBitmapsAndKeepsTheNumbers) {
    TestSkin skin;
    CTavixSkinFace face;
    face.LoadSkin(skin.Write());
    face.SetBmp(254, MakeBitmap(1, 1, RGB(1, 1, 1)).release());
    face.UnLoadSkin();
    for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) EXPECT_EQ(face.GetBmp(id), nullptr) << id;
    EXPECT_EQ(face.GetColor(CLR_MENU_BACK), skin.Colour(CLR_MENU_BACK));
    EXPECT_EQ(face.GetColor(CLR_TRANSPARENT), TestSkin::kTransparent);
    EXPECT_EQ(face.GetSize(SZ_FRAME_CAPTION), skin.Size(SZ_FRAME_CAPTION));
    face.UnLoadSkin();
}

TEST(SkinFace, ASecondSkinReplacesWhatItProvidesAtOnce) {
    TestSkin first, second;
    second.SetBitmap(BMP_MENU_CHECK, 3, 3, RGB(7, 7, 7)).SetSize(SZ_FRAME_LEFT, 99);
    CTavixSkinFace face;
    face.LoadSkin(first.Write());
    ASSERT_EQ(PixelOf(face.GetBmp(BMP_MENU_CHECK)), TestSkin::ColourOfBitmap(BMP_MENU_CHECK));
    face.LoadSkin(second.Write());
    EXPECT_EQ(PixelOf(face.GetBmp(BMP_MENU_CHECK)), RGB(7, 7, 7));
    EXPECT_EQ(face.GetSize(SZ_FRAME_LEFT), 99u);
}

TEST(SkinFace, AFileThatIsNoSkinChangesNothing) {
    TestSkin skin;
    TempFile other;
    CTavixSkinFace face;
    face.LoadSkin(skin.Write());
    CBitmap* const bitmap = face.GetBmp(BMP_MENU_CHECK);
    FILE* text = std::fopen(other.Path(), "w");
    ASSERT_NE(text, nullptr);
    std::fputs("not a skin", text);
    std::fclose(text);
    face.LoadSkin(other.Path());
    EXPECT_EQ(face.GetBmp(BMP_MENU_CHECK), bitmap);
    EXPECT_EQ(face.GetSize(SZ_FRAME_CAPTION), skin.Size(SZ_FRAME_CAPTION));
}

TEST(SkinFace, SettingABitmapDestroysTheFormerOne) {
    int ended = 0;
    {
        CTavixSkinFace face;
        face.SetBmp(5, new CountedBitmap(ended));
        face.SetBmp(5, new CountedBitmap(ended));
        EXPECT_EQ(ended, 1);
        face.SetBmp(5, nullptr);
        EXPECT_EQ(ended, 2);
        face.SetBmp(254, new CountedBitmap(ended));
    }
    EXPECT_EQ(ended, 3);
}

TEST(SkinFace, SettingTheObjectThatAnIdHoldsKeepsIt) {
    int ended = 0;
    CTavixSkinFace face;
    auto* bitmap = new CountedBitmap(ended);
    face.SetBmp(5, bitmap);
    face.SetBmp(5, bitmap);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(face.GetBmp(5), bitmap);
}

TEST(SkinFace, AnObjectOfTwoIdsIsDestroyedOnceAndLast) {
    int ended = 0;
    CTavixSkinFace face;
    auto* shared = new CountedBitmap(ended);
    for (const DWORD id : {0u, 7u, 254u}) face.SetBmp(id, shared);
    face.SetBmp(7, new CountedBitmap(ended));
    EXPECT_EQ(ended, 0);
    face.SetBmp(0, nullptr);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(face.GetBmp(254), shared);
    face.UnLoadSkin();
    EXPECT_EQ(ended, 2);
    shared = new CountedBitmap(ended);
    face.SetBmp(1, shared);
    face.SetBmp(2, shared);
    face.UnLoadSkin();
    EXPECT_EQ(ended, 3);
}

TEST(SkinFace, AWrapperWithoutAHandleEndsWithTheFace) {
    int ended = 0;
    {
        CTavixSkinFace face;
        face.SetBmp(3, new CountedBitmap(ended));
    }
    EXPECT_EQ(ended, 1);
}

TEST(SkinFace, IdsOutOfRangeReadAsNothingAndAreNotWritten) {
    CTavixSkinFace face;
    const auto bitmap = MakeBitmap(1, 1, RGB(1, 1, 1));
    for (const DWORD id : {255u, 256u, 510u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        face.SetBmp(id, bitmap.get());  // stays the caller's
        face.SetColor(id, RGB(1, 2, 3));
        face.SetSize(id, 77);
        EXPECT_EQ(face.GetBmp(id), nullptr) << id;
        EXPECT_EQ(face.GetColor(id), 0u) << id;
        EXPECT_EQ(face.GetSize(id), 0u) << id;
    }
    for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) {
        EXPECT_EQ(face.GetBmp(id), nullptr) << id;
        EXPECT_EQ(face.GetSize(id), 0u) << id;
    }
}

TEST(SkinFace, LoadingAndUnloadingLeavesNoObjectsBehind) {
    TestSkin whole, sparse;
    sparse.RemoveBitmap(BMP_FRAME_CLOSE_HOT).RemoveBitmaps(skinDockBar).RemoveBitmap(BMP_TOOL_SPARE);
    whole.Write();
    sparse.Write();
    const auto round = [&] {
        CTavixSkinFace face;
        face.LoadSkin(whole.Path());
        face.LoadSkin(sparse.Path());
        face.UnLoadSkin();
        face.LoadSkin(sparse.Path());
        face.LoadSkin(whole.Path());
    };
    round();  // first uses fill the platform's caches
    const int before = CountGdiObjects();
    ASSERT_GE(before, 0);
    constexpr int kRounds = 8;
    for (int i = 0; i < kRounds; ++i) round();
    // A leak would show once a round at least.
    EXPECT_LT(CountGdiObjects() - before, kRounds / 2);
}

}  // namespace
}  // namespace tavix_test
