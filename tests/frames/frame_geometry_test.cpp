#include "frames/frame_geometry.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/skin_values.h"
#include "frames/dialog_geometry.h"

namespace {

using namespace tavix;

TEST(FrameGeometry, PlacesThreeButtonsFromTheLeftOnePixelApart) {
    const FrameButtonRects rects = LayoutFrameButtons(400, CRect(-60, 4, 16, 18));
    EXPECT_EQ(rects.min, CRect(340, 4, 356, 22));
    EXPECT_EQ(rects.max, CRect(357, 4, 373, 22));
    EXPECT_EQ(rects.close, CRect(374, 4, 390, 22));
}

TEST(FrameGeometry, TakesTheBordersFromEverySide) {
    EXPECT_EQ(DeflateByBorders(CRect(10, 20, 300, 200), {4, 24, 5, 6}), CRect(14, 44, 295, 194));
}

TEST(DialogGeometry, PlacesOnlyTheButtonsThatExistFromTheRightTwoPixelsApart) {
    const CRect buttons(-8, 4, 16, 18);
    // Every combination: close, maximise, minimise, help, in this order from the right.
    for (int mask = 0; mask < 16; ++mask) {
        const DialogButtons present{(mask & 1) != 0, (mask & 2) != 0, (mask & 4) != 0, (mask & 8) != 0};
        const DialogButtonRects rects = LayoutDialogButtons(400, buttons, present);
        int right = 392;
        const struct {
            bool exists;
            CRect rect;
        } inOrder[] = {{present.close, rects.close},
                       {present.max, rects.max},
                       {present.min, rects.min},
                       {present.help, rects.help}};
        for (const auto& button : inOrder) {
            if (!button.exists) {
                EXPECT_TRUE(button.rect.IsRectEmpty()) << mask;
                continue;
            }
            EXPECT_EQ(button.rect, CRect(right - 16, 4, right, 22)) << mask;
            right -= 18;
        }
    }
}

TEST(CaptionButtonGeometry, UnpacksFourSignedBytes) {
    const CaptionButtonGeometry g = UnpackCaptionButtons(0x1514D803);
    EXPECT_EQ(g.top, 3);
    EXPECT_EQ(g.left, -40);
    EXPECT_EQ(g.width, 20);
    EXPECT_EQ(g.height, 21);
}

TEST(CaptionButtonGeometry, UnpacksEveryByteValueWithItsSign) {
    for (int byte = 0; byte < 256; ++byte) {
        const int value = byte < 128 ? byte : byte - 256;
        const CaptionButtonGeometry g = UnpackCaptionButtons(static_cast<DWORD>(byte) * 0x01010101u);
        EXPECT_EQ(g.top, value);
        EXPECT_EQ(g.left, value);
        EXPECT_EQ(g.width, value);
        EXPECT_EQ(g.height, value);
    }
}

TEST(FrameGeometry, ButtonsOfAnyGeometryAreOneWidthAndOnePixelApart) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(-128, 127);
    std::uniform_int_distribution<int> width(0, 5000);
    for (int i = 0; i < 10'000; ++i) {
        const CRect buttons(byte(random), byte(random), byte(random), byte(random));
        const int windowWidth = width(random);
        const FrameButtonRects rects = LayoutFrameButtons(windowWidth, buttons);
        ASSERT_EQ(rects.min.left, windowWidth + buttons.left);
        ASSERT_EQ(rects.max.left, rects.min.right + 1);
        ASSERT_EQ(rects.close.left, rects.max.right + 1);
        for (const CRect& rect : {rects.min, rects.max, rects.close}) {
            ASSERT_EQ(rect.Width(), buttons.right);
            ASSERT_EQ(rect.top, buttons.top);
            ASSERT_EQ(rect.Height(), buttons.bottom);
        }
    }
}

}  // namespace
