// Trackbars and animations: native painting over a colour of the parent's.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include "support/control_test.h"
#include "support/object_rounds.h"
#include "tavixskin/framework/geometry.h"

namespace tavix_test {
namespace {

constexpr COLORREF kLeft = RGB(200, 10, 10), kRight = RGB(10, 200, 10), kOrigin = RGB(10, 10, 200);
constexpr COLORREF kGround = RGB(120, 120, 120);

class ColourMessage : public ControlTest {
protected:
    static void SetUpTestSuite() {
        INITCOMMONCONTROLSEX all{sizeof all, ICC_BAR_CLASSES | ICC_ANIMATE_CLASS};
        ::InitCommonControlsEx(&all);
    }
    void SetUp() override {
        ControlTest::SetUp();
        UseParent(WS_POPUP | WS_VISIBLE, SIZE{400, 300}, POINT{100, 100}, kGround);
    }
    HWND Make(const char* className, const RECT& place, DWORD style = 0) {
        HWND window = CreateControl(GetParam().charset, Parent(), className, "", style, place);
        EXPECT_TRUE(IsSkinned(window));
        ::UpdateWindow(Parent());
        return window;
    }
    void Dot(int x, int y, COLORREF colour) {
        HDC dc = ::GetDC(Parent());
        ::SetPixel(dc, x, y, colour);
        ::ReleaseDC(Parent(), dc);
    }
    /* The colour of the brush that the control's skin answers with; `result` gets the brush. */
    COLORREF Ask(HWND control, HDC dc, HBRUSH* result = nullptr) {
        const auto brush = reinterpret_cast<HBRUSH>(::SendMessageA(
            control, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(control)));
        if (result) *result = brush;
        LOGBRUSH facts{};
        EXPECT_NE(::GetObjectA(brush, sizeof facts, &facts), 0);
        EXPECT_EQ(facts.lbStyle, static_cast<UINT>(BS_SOLID));
        return facts.lbColor;
    }

    Canvas canvas{10, 10, RGB(1, 2, 3)};
};

// ---------------------------------------------------------------- trackbars

class TrackbarSkin : public ColourMessage {};

TEST_P(TrackbarSkin, TakesThePixelLeftOfItsTop) {
    HWND trackbar = Make("msctls_trackbar32", {50, 60, 200, 90});
    Dot(49, 60, kLeft);
    Dot(201, 60, kRight);
    Dot(0, 0, kOrigin);
    EXPECT_EQ(Ask(trackbar, canvas.Dc()), kLeft);
}

TEST_P(TrackbarSkin, AtTheParentsLeftEdgeItTakesThePixelOnItsRight) {
    HWND trackbar = Make("msctls_trackbar32", {0, 60, 150, 90});
    Dot(151, 60, kRight);
    EXPECT_EQ(Ask(trackbar, canvas.Dc()), kRight);
    HWND second = Make("msctls_trackbar32", {1, 120, 150, 150});
    Dot(0, 120, kLeft);
    EXPECT_EQ(Ask(second, canvas.Dc()), kLeft) << "one pixel of room is enough";
}

TEST_P(TrackbarSkin, OutsideTheParentItTakesTheParentsFirstPixel) {
    HWND trackbar = Make("msctls_trackbar32", {50, 400, 200, 430});
    Dot(0, 0, kOrigin);
    EXPECT_EQ(Ask(trackbar, canvas.Dc()), kOrigin);
}

TEST_P(TrackbarSkin, OnAParentWithoutAPixelItTakesNoColourAsItStands) {
    HWND trackbar = Make("msctls_trackbar32", {50, 60, 200, 90});
    ::SetWindowPos(Parent(), nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(Ask(trackbar, canvas.Dc()), CLR_INVALID);
}

TEST_P(TrackbarSkin, RenewsItsBrushAtEachColourMessage) {
    HWND trackbar = Make("msctls_trackbar32", {50, 60, 200, 90});
    Dot(49, 60, kLeft);
    EXPECT_EQ(Ask(trackbar, canvas.Dc()), kLeft);
    Dot(49, 60, kRight);
    EXPECT_EQ(Ask(trackbar, canvas.Dc()), kRight);
}

TEST_P(TrackbarSkin, AllElseGoesToTheNativeControl) {
    ClassSpy below("msctls_trackbar32");
    HWND trackbar = Make("msctls_trackbar32", {50, 60, 200, 90});
    below.log.Clear();
    ::SendMessageA(trackbar, TBM_SETPOS, TRUE, 7);
    EXPECT_EQ(::SendMessageA(trackbar, TBM_GETPOS, 0, 0), 7);
    ::SendMessageA(trackbar, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0);
    ::InvalidateRect(trackbar, nullptr, TRUE);
    ::UpdateWindow(trackbar);
    for (const UINT message : {UINT{TBM_SETPOS}, UINT{TBM_GETPOS}, UINT{WM_ERASEBKGND}, UINT{WM_PAINT}})
        EXPECT_TRUE(below.log.Has(message)) << message;
    below.log.Clear();
    Ask(trackbar, canvas.Dc());
    EXPECT_FALSE(below.log.Has(WM_CTLCOLORSTATIC)) << "but the colour message doesn't";
    ::DestroyWindow(trackbar);
}

TEST_P(TrackbarSkin, BlendsIntoASkinnedParent) {
    // A skinned dialog hands the colour message on to the control's skin.
    HWND dialog = ::CreateWindowExA(0, "#32770", "", WS_POPUP | WS_VISIBLE, 100, 100, 300, 200, nullptr,
                                    nullptr, nullptr, nullptr);
    ASSERT_TRUE(IsSkinned(dialog));
    HWND trackbar =
        CreateControl(GetParam().charset, dialog, "msctls_trackbar32", "", TBS_NOTICKS, {40, 80, 200, 110});
    ::RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    HDC dc = ::GetDC(dialog);
    const COLORREF beside = ::GetPixel(dc, 39, 80);
    ::ReleaseDC(dialog, dc);
    ASSERT_NE(beside, ::GetSysColor(COLOR_3DFACE));
    ::RedrawWindow(trackbar, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    const Picture shown = PictureOfClient(trackbar);
    EXPECT_GT(shown.CountOf(beside), shown.width * shown.height / 2);
    ::DestroyWindow(dialog);
}

// ---------------------------------------------------------------- animations

class AnimateSkin : public ColourMessage {
protected:
    static constexpr RECT kPlace{50, 60, 150, 100};
    static constexpr int kRow = (40 + 60) / 2;  // by the height and the top, which is not the middle
};

TEST_P(AnimateSkin, TakesThePixelOnItsLeftInItsOddRow) {
    HWND animation = Make("SysAnimate32", kPlace);
    Dot(49, kRow, kLeft);
    Dot(151, kRow, kRight);
    EXPECT_EQ(Ask(animation, canvas.Dc()), kLeft);
    EXPECT_EQ(::GetBkColor(canvas.Dc()), kLeft);
}

TEST_P(AnimateSkin, RowIsTheMiddleOnlyAtTheParentsTop) {
    HWND animation = Make("SysAnimate32", {50, 0, 150, 40});
    Dot(49, 20, kLeft);
    EXPECT_EQ(Ask(animation, canvas.Dc()), kLeft);
    HWND lower = Make("SysAnimate32", kPlace);
    Dot(49, 80, kLeft);
    EXPECT_EQ(Ask(lower, canvas.Dc()), kGround) << "not in its middle";
}

TEST_P(AnimateSkin, AtTheParentsLeftEdgeItTakesThePixelOnItsRight) {
    HWND animation = Make("SysAnimate32", {0, 60, 100, 100});
    Dot(101, kRow, kRight);
    EXPECT_EQ(Ask(animation, canvas.Dc()), kRight);
}

TEST_P(AnimateSkin, OutsideTheParentItTakesTheDialogueColour) {
    HWND animation = Make("SysAnimate32", {500, 60, 600, 100});
    EXPECT_EQ(Ask(animation, canvas.Dc()), skin.Colour(26));
    EXPECT_EQ(::GetBkColor(canvas.Dc()), skin.Colour(26));
}

TEST_P(AnimateSkin, ModeOfTheContextStays) {
    HWND animation = Make("SysAnimate32", kPlace);
    for (const int mode : {OPAQUE, TRANSPARENT}) {
        ::SetBkMode(canvas.Dc(), mode);
        Ask(animation, canvas.Dc());
        EXPECT_EQ(::GetBkMode(canvas.Dc()), mode);
    }
}

TEST_P(AnimateSkin, MovedToAnotherGroundItChangesItsBrushAtTheNextMessage) {
    HWND animation = Make("SysAnimate32", kPlace);
    EXPECT_EQ(Ask(animation, canvas.Dc()), kGround);
    ::MoveWindow(animation, 200, 60, 100, 40, TRUE);
    ::UpdateWindow(Parent());
    Dot(199, kRow, kLeft);
    EXPECT_EQ(Ask(animation, canvas.Dc()), kLeft);
}

TEST_P(AnimateSkin, EraseIsAnsweredWithNothingDrawn) {
    ClassSpy below("SysAnimate32");
    HWND animation = Make("SysAnimate32", kPlace);
    below.log.Clear();
    EXPECT_EQ(::SendMessageA(animation, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0), 1);
    EXPECT_EQ(canvas.Take().CountOf(RGB(1, 2, 3)), 100);
    EXPECT_FALSE(below.log.Has(WM_ERASEBKGND));
    ::SendMessageA(animation, ACM_STOP, 0, 0);
    EXPECT_TRUE(below.log.Has(ACM_STOP)) << "all else goes on";
    ::DestroyWindow(animation);
}

// ---------------------------------------------------------------- both

class ColourMessageSkins : public ColourMessage {};

TEST_P(ColourMessageSkins, KeepOneBrushAndGiveItBack) {
    const auto round = [this](const char* className) {
        HWND control = Make(className, {50, 60, 150, 100});
        for (int i = 0; i < 5; ++i) Ask(control, canvas.Dc());
        ::DestroyWindow(control);
    };
    for (const char* className : {"msctls_trackbar32", "SysAnimate32"}) {
        SCOPED_TRACE(className);
        ExpectNoMoreObjects([&] { round(className); });
    }
}

INSTANTIATE_TEST_SUITE_P(Worlds, TrackbarSkin, kControlWorlds, NameOfWorld);
INSTANTIATE_TEST_SUITE_P(Worlds, AnimateSkin, kControlWorlds, NameOfWorld);
INSTANTIATE_TEST_SUITE_P(Worlds, ColourMessageSkins, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
