/* What a frame looks like, held against the rules pixel by pixel. */
#include <gtest/gtest.h>

#include "draw/offscreen.h"
#include "frames/frame_paint.h"
#include "frames/host_frame.h"
#include "frames/paint_model.h"
#include "main/gui_objects.h"
#include "tavixskin.h"
#include "tavixskin/framework/wnd.h"

namespace tavix_test {
namespace {

RECT ClientInWindow(HWND window) {
    CRect windowRect;
    CRect client;
    ::GetWindowRect(window, &windowRect);
    ::GetClientRect(window, &client);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    client.OffsetRect(-windowRect.left, -windowRect.top);
    return client;
}

class FramePaint : public testing::Test {
protected:
    FramePaint() { ParkMouse(); }

    FrameLook Look(const HostFrame& frame) const {
        const FrameSkinTestAccess access = frame.Skin();
        return {access.Style(),      access.Close(),    access.Max(),     access.Min(),
                access.CloseState(), access.MaxState(), access.MinState()};
    }
    void ExpectLook(const HostFrame& frame, const FrameLook& look) {
        frame.Send(WM_NCPAINT, 1);
        const CRect rect = frame.Rect();
        const Picture expected = ExpectedFrame(skin, rect.Width(), rect.Height(), look);
        EXPECT_EQ(DifferenceOutside(expected, PictureOfWindow(frame), ClientInWindow(frame)), "");
    }

    FramesOnlySkin skin;
    SkinnedThread thread{skin};
};

TEST_F(FramePaint, DrawsBordersCaptionButtonsAndGrip) {
    HostFrame frame;
    ExpectLook(frame, Look(frame));
}

TEST_F(FramePaint, LooksTheSameActiveAndInactive) {
    HostFrame frame;
    frame.Send(WM_NCACTIVATE, TRUE);
    const Picture active = PictureOfWindow(frame);
    frame.Send(WM_NCACTIVATE, FALSE);
    EXPECT_EQ(PictureOfWindow(frame), active);
}

TEST_F(FramePaint, ShowsEachButtonInEachState) {
    HostFrame frame;
    for (int state = 0; state <= 2; ++state) {
        frame.Skin().SetStates(state, 0, 0);
        ExpectLook(frame, Look(frame));
        frame.Skin().SetStates(0, state, 0);
        ExpectLook(frame, Look(frame));
        frame.Skin().SetStates(0, 0, state);
        ExpectLook(frame, Look(frame));
    }
}

TEST_F(FramePaint, EveryCombinationOfStylesShowsItsOwnParts) {
    for (const DWORD caption : {0ul, static_cast<DWORD>(WS_CAPTION), static_cast<DWORD>(WS_BORDER)})
        for (const DWORD menu : {0ul, static_cast<DWORD>(WS_SYSMENU)})
            for (const DWORD boxes :
                 {0ul, static_cast<DWORD>(WS_MINIMIZEBOX), static_cast<DWORD>(WS_MAXIMIZEBOX),
                  static_cast<DWORD>(WS_MINIMIZEBOX | WS_MAXIMIZEBOX)}) {
                HostFrame frame(WS_POPUP | WS_VISIBLE | caption | menu | boxes);
                SCOPED_TRACE(testing::Message() << std::hex << (caption | menu | boxes));
                ExpectLook(frame, Look(frame));
            }
}

TEST_F(FramePaint, OddSizesAndNarrowWindowsPaintTheEndsOverEachOther) {
    for (const SIZE size : {SIZE{401, 241}, SIZE{14, 60}, SIZE{30, 30}, SIZE{61, 39}, SIZE{9, 31}}) {
        HostFrame frame(WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_SYSMENU,
                        {50, 50, 50 + size.cx, 50 + size.cy});
        SCOPED_TRACE(testing::Message() << size.cx << "x" << size.cy);
        ExpectLook(frame, Look(frame));
    }
}

TEST_F(FramePaint, AMenuBarGetsStripsPatchesAndCrossedBorderColours) {
    // Patches that are not flat, so that it shows which rows the colours are read from.
    const auto stripes = [](int x, int y) { return RGB(40 + y * 5, 90 + x, 200 - y * 4); };
    skin.SetBitmap(BMP_TOOL_FRAME_LEFT, 4, 20, stripes);
    skin.SetBitmap(BMP_TOOL_FRAME_RIGHT, 5, 20, [&](int x, int y) { return stripes(y, x); });
    ASSERT_EQ(SetSkinFromFile(skin.Write()), 1);
    HostFrame frame;
    CWnd bar;
    ASSERT_TRUE(bar.CreateEx(0, "Static", "", WS_CHILD, CRect(0, 0, 10, 10), frame, 1));
    ::SetPropA(frame, "menubar", &bar);
    frame.Send(WM_NCPAINT, 1);
    const Picture picture = PictureOfWindow(frame);
    const int height = frame.Rect().Height();
    // White, then the shade, at both sides: from the caption down over the strip's height.
    EXPECT_EQ(picture.At(2, 24), RGB(255, 255, 255));
    EXPECT_EQ(picture.At(2, 33), RGB(255, 255, 255));
    EXPECT_EQ(picture.At(2, 43), RGB(0xEA, 0xEA, 0xEA));
    EXPECT_EQ(picture.At(396, 43), RGB(0xEA, 0xEA, 0xEA));
    // The left patch stands one pixel in; two columns further the border line no longer covers it.
    EXPECT_EQ(picture.At(2, 44), stripes(1, 0));
    EXPECT_EQ(picture.At(3, 50), stripes(2, 6));
    // Below the patches each border starts in the colour read at the other one.
    const COLORREF atLeft = stripes(1, 18);           // x = 2, two rows above the border at 64
    const COLORREF atRight = stripes(19, 397 - 395);  // x = 397, one row above it
    EXPECT_EQ(picture.At(396, 64), atLeft);
    EXPECT_EQ(picture.At(2, 64), atRight);
    EXPECT_EQ(picture.At(2, height - 5), skin.Colour(6));
    ::RemovePropA(frame, "menubar");
    bar.DestroyWindow();
    ExpectLook(frame, Look(frame));
}

TEST_F(FramePaint, APropertyThatIsNoWindowObjectIsNotLookedInto) {
    HostFrame frame;
    ::SetPropA(frame, "menubar", reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(0x10)));
    ExpectLook(frame, Look(frame));
    ::RemovePropA(frame, "menubar");
}

TEST_F(FramePaint, TheTitleStandsOnThePlateInTheHighlightColour) {
    skin.SetBitmapSize(BMP_FRAME_CAPTION_TITLE, 160, 24);
    ASSERT_EQ(SetSkinFromFile(skin.Write()), 1);
    HostFrame plain;
    HostFrame titled(kFullStyle, kFramePlace, "Title");
    titled.Send(WM_NCPAINT, 1);
    const Picture with = PictureOfWindow(titled);
    const COLORREF text = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
    const COLORREF plate = TestSkin::ColourOfBitmap(BMP_FRAME_CAPTION_TITLE);
    int textPixels = 0;
    const int plateLeft = (400 - 160) / 2;
    for (int y = 0; y < 24; ++y) {
        for (int x = plateLeft; x < plateLeft + 160; ++x) {
            if (with.At(x, y) == plate) continue;
            ++textPixels;
            EXPECT_GE(x, plateLeft + 30);
            EXPECT_LT(x, plateLeft + 130);
        }
    }
    EXPECT_GT(textPixels, 20);
    EXPECT_GT(with.CountOf(text), 10);
}

TEST_F(FramePaint, ATitleLongerThanThePlateIsCutWithoutAnEllipsis) {
    skin.SetBitmapSize(BMP_FRAME_CAPTION_TITLE, 120, 24);
    ASSERT_EQ(SetSkinFromFile(skin.Write()), 1);
    HostFrame frame(kFullStyle, kFramePlace,
                    "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW");
    frame.Send(WM_NCPAINT, 1);
    const Picture picture = PictureOfWindow(frame);
    const COLORREF plate = TestSkin::ColourOfBitmap(BMP_FRAME_CAPTION_TITLE);
    const auto inked = [&](int from, int to) {
        int count = 0;
        for (int x = from; x < to; ++x)
            for (int y = 0; y < 24; ++y) count += picture.At(x, y) != plate;
        return count;
    };
    EXPECT_EQ(inked(140, 170), 0) << "the margin left of the text";
    EXPECT_EQ(inked(230, 260), 0) << "the margin right of it";
    EXPECT_GT(inked(170, 180), 10) << "text up to the cut on the left, no gap for dots";
    EXPECT_GT(inked(220, 230), 10);
}

TEST_F(FramePaint, CornersAreCutByTheBorderWidthInTheRegionAndByTheBitmapInThePainting) {
    const auto corner = [](int x, int y) { return x + y < 3 ? RGB(255, 0, 0) : RGB(1, 2, 3); };
    skin.SetBitmap(BMP_FRAME_CAPTION_LEFT, 8, 24, corner);
    skin.SetBitmap(BMP_FRAME_CAPTION_RIGHT, 10, 24,
                   [](int x, int y) { return x >= 9 && y < 2 ? RGB(255, 0, 0) : RGB(1, 2, 3); });
    ASSERT_EQ(SetSkinFromFile(skin.Write()), 1);
    HostFrame frame;
    CRgn region;
    region.CreateRectRgn(0, 0, 0, 0);
    ASSERT_NE(::GetWindowRgn(frame, region), ERROR);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x) EXPECT_EQ(::PtInRegion(region, x, y) != 0, x + y >= 3) << x << "," << y;
    // The right border is 5 wide, so the shape's tenth column lies at 400 - 5 + 9: outside.
    EXPECT_TRUE(::PtInRegion(region, 399, 0));
    EXPECT_TRUE(::PtInRegion(region, 399, 1));
    skin.SetSize(SZ_FRAME_RIGHT, 10);
    ASSERT_EQ(SetSkinFromFile(skin.Write()), 1);
    ::SetWindowPos(frame, nullptr, 0, 0, 390, 240, SWP_NOMOVE | SWP_NOZORDER);
    ::GetWindowRgn(frame, region);
    EXPECT_FALSE(::PtInRegion(region, 389, 0));
    EXPECT_FALSE(::PtInRegion(region, 389, 1));
    EXPECT_TRUE(::PtInRegion(region, 389, 2));
    EXPECT_TRUE(::PtInRegion(region, 388, 0));
}

TEST_F(FramePaint, TheClientAreaIsNeverPaintedOver) {
    HostFrame frame;
    const CRect client(0, 0, 391, 210);
    {
        CClientDC dc(frame);
        dc.FillSolidRect(client, RGB(7, 77, 177));
    }
    frame.Send(WM_NCPAINT, 1);
    EXPECT_EQ(PictureOfClient(frame).CountOf(RGB(7, 77, 177)), 391 * 210);
}

TEST_F(FramePaint, PaintsOnAMemoryContextWithoutAnyWindow) {
    Canvas canvas(200, 100, RGB(9, 9, 9));
    CDC dc(canvas.Dc());
    const tavix::FrameParts parts{.style = WS_CAPTION | WS_SYSMENU,
                                  .hasMenuBar = false,
                                  .closeState = 2,
                                  .maxState = 0,
                                  .minState = 0,
                                  .buttons = tavix::LayoutFrameButtons(200, CRect(-60, 4, 16, 16)),
                                  .title = "",
                                  .titleFont = nullptr};
    tavix::PaintFrame(dc, CSize(200, 100), parts);
    const FrameLook look{parts.style, parts.buttons.close, parts.buttons.max, parts.buttons.min, 2};
    // Inside the frame all is the border colour, which a window never shows.
    EXPECT_EQ(DifferenceOutside(ExpectedFrame(skin, 200, 100, look), canvas.Take(), {0, 0, 0, 0}), "");
}

// Any bitmap may be missing: each alone, and all at once.
TEST_F(FramePaint, PaintsWithAnyBitmapMissing) {
    for (DWORD id = BMP_FRAME_CLOSE_NORMAL; id <= BMP_FRAME_GRIPPER; ++id) {
        FramesOnlySkin poor;
        poor.RemoveBitmap(id);
        ASSERT_EQ(SetSkinFromFile(poor.Write()), 1);
        HostFrame frame(kFullStyle, kFramePlace, "Title");
        EXPECT_EQ(frame.Send(WM_NCPAINT, 1), 0);
        EXPECT_EQ(PictureOfWindow(frame).At(0, 100), PictureOfWindow(frame).At(0, 101));
    }
    FramesOnlySkin bare;
    bare.RemoveBitmaps(skinFrame);
    ASSERT_EQ(SetSkinFromFile(bare.Write()), 1);
    HostFrame frame;
    frame.Send(WM_NCPAINT, 1);
    EXPECT_EQ(PictureOfWindow(frame).At(0, 239), bare.Colour(15));
}

TEST_F(FramePaint, PaintsWithSizesAndBitmapsOfAbsurdExtent) {
    for (const DWORD size : {0u, 1u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 5000u}) {
        for (DWORD id : {SZ_FRAME_LEFT, SZ_FRAME_RIGHT, SZ_FRAME_BOTTOM, SZ_FRAME_CAPTION,
                         SZ_FRAME_MENU_STRIP, SZ_MIN_TRACK_X, SZ_MIN_TRACK_Y}) {
            FramesOnlySkin odd;
            odd.SetSize(id, size);
            ASSERT_EQ(SetSkinFromFile(odd.Write()), 1);
            const DWORD start = ::GetTickCount();
            HostFrame frame(kFullStyle, kFramePlace, "Title");
            frame.Send(WM_NCPAINT, 1);
            ::SetWindowPos(frame, nullptr, 0, 0, 200, 150, SWP_NOMOVE | SWP_NOZORDER | SWP_FRAMECHANGED);
            EXPECT_LT(::GetTickCount() - start, 2000u) << id << " " << size;
        }
    }
    FramesOnlySkin large;
    for (DWORD id : {BMP_FRAME_CAPTION_LEFT, BMP_FRAME_CAPTION_RIGHT, BMP_FRAME_GRIPPER}) {
        // Every second pixel is cut away: the worst that a region can be made of.
        large.SetBitmap(id, 1500, 1500,
                        [](int x, int y) { return (x + y) % 2 ? RGB(255, 0, 0) : RGB(0, 0, 9); });
    }
    large.SetBitmapSize(BMP_FRAME_CAPTION_TILE, 1, 1).SetButtons(SZ_FRAME_BUTTONS, -128, -128, 127, 127);
    ASSERT_EQ(SetSkinFromFile(large.Write()), 1);
    const DWORD start = ::GetTickCount();
    HostFrame frame;
    frame.Send(WM_NCPAINT, 1);
    EXPECT_LT(::GetTickCount() - start, 5000u);
}

TEST_F(FramePaint, ThousandsOfPaintingsHoldNothing) {
    HostFrame frame(kFullStyle, kFramePlace, "Title");
    const auto paint = [&](int times) {
        for (int i = 0; i < times; ++i) frame.Send(WM_NCPAINT, 1);
    };
    paint(100);
    const int before = CountGdiObjects();
    paint(2000);
    EXPECT_LE(CountGdiObjects() - before, 1);
}

TEST_F(FramePaint, FramesComeAndGoWithoutATrace) {
    const auto live = [] {
        for (int i = 0; i < 30; ++i) HostFrame frame(kFullStyle, kFramePlace, "Title");
        PumpMessages(1);
    };
    live();
    const int objects = CountGdiObjects();
    const int windows = CountUserObjects();
    live();
    live();
    EXPECT_LE(CountGdiObjects() - objects, 1);
    EXPECT_LE(CountUserObjects() - windows, 1);
}

}  // namespace
}  // namespace tavix_test
