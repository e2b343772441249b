/* The mouse on a frame: hit test, hover, press and release. */
#include <gtest/gtest.h>

#include "frames/host_frame.h"

namespace tavix_test {
namespace {

class FrameInput : public testing::Test {
protected:
    FrameInput() { ParkMouse(); }

    LRESULT Hit(const HostFrame& frame, POINT inWindow) const {
        return frame.Send(WM_NCHITTEST, 0, frame.Packed(inWindow));
    }
    void ExpectStates(const HostFrame& frame, int close, int max, int min) {
        EXPECT_EQ(frame.Skin().CloseState(), close);
        EXPECT_EQ(frame.Skin().MaxState(), max);
        EXPECT_EQ(frame.Skin().MinState(), min);
    }

    FramesOnlySkin skin;
    SkinnedThread thread{skin};
};

using FrameHitTest = FrameInput;

TEST_F(FrameHitTest, TurnsTheButtonUnderThePointHot) {
    HostFrame frame;
    EXPECT_EQ(Hit(frame, Middle(frame.Skin().Close())), HTCLOSE);
    ExpectStates(frame, 1, 0, 0);
    EXPECT_EQ(Hit(frame, Middle(frame.Skin().Max())), HTMAXBUTTON);
    ExpectStates(frame, 0, 1, 0);
    EXPECT_EQ(Hit(frame, Middle(frame.Skin().Min())), HTMINBUTTON);
    ExpectStates(frame, 0, 0, 1);
}

TEST_F(FrameHitTest, TurnsAPressedButtonHotAndLeavesStatesElsewhere) {
    HostFrame frame;
    frame.Skin().SetStates(2, 0, 0);
    Hit(frame, Middle(frame.Skin().Close()));
    ExpectStates(frame, 1, 0, 0);
    Hit(frame, {200, 100});
    ExpectStates(frame, 1, 0, 0);
}

TEST_F(FrameHitTest, AnswersForButtonsThatTheStyleLacks) {
    HostFrame frame(WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_SYSMENU);
    EXPECT_EQ(Hit(frame, Middle(frame.Skin().Max())), HTMAXBUTTON);
    EXPECT_EQ(Hit(frame, Middle(frame.Skin().Min())), HTMINBUTTON);
}

TEST_F(FrameHitTest, TheTopStripIsTheCaptionWithOrWithoutACaptionStyle) {
    for (const DWORD style : {kFullStyle, static_cast<DWORD>(WS_POPUP | WS_VISIBLE)}) {
        HostFrame frame(style);
        EXPECT_EQ(Hit(frame, {100, 10}), HTCAPTION);
        EXPECT_EQ(Hit(frame, {100, 1}), HTCAPTION);
        EXPECT_EQ(Hit(frame, {1, 23}), HTCAPTION);
        EXPECT_NE(Hit(frame, {100, 24}), HTCAPTION) << "the strip ends with the caption's height";
        EXPECT_NE(Hit(frame, {100, 0}), HTCAPTION) << "the outermost row is left to sizing";
        EXPECT_NE(Hit(frame, {399, 10}), HTCAPTION);
    }
}

TEST_F(FrameHitTest, TheIconAnswersNearTheTopLeftOfTheScreenOnly) {
    HostFrame frame;
    EXPECT_EQ(Hit(frame, {8, 10}), HTCAPTION);
    HostFrame atOrigin(kFullStyle, {0, 0, 300, 200});
    EXPECT_EQ(Hit(atOrigin, {8, 10}), HTCAPTION) << "the caption strip answers last and covers the icon";
    // A frame that starts above the screen's top has its strip elsewhere: the icon's place then shows.
    HostFrame above(kFullStyle, {-2, -40, 300, 200});
    EXPECT_EQ(above.Send(WM_NCHITTEST, 0, MAKELPARAM(8, 10)), HTSYSMENU);
}

TEST_F(FrameHitTest, ElsewhereTheHostsAnswerStands) {
    HostFrame frame;
    frame.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_NCHITTEST) return HTBOTTOMRIGHT;
        return std::nullopt;
    };
    EXPECT_EQ(Hit(frame, {399, 239}), HTBOTTOMRIGHT);
    EXPECT_EQ(Hit(frame, {200, 100}), HTBOTTOMRIGHT);
}

TEST_F(FrameInput, HoverKeepsOneButtonHotAndStartsOneTimer) {
    HostFrame frame;
    EXPECT_EQ(frame.Send(WM_NCMOUSEMOVE, HTCLOSE), 0);
    ExpectStates(frame, 0, 0, 0);
    EXPECT_EQ(frame.Skin().Timer(), 0u) << "without a state that the hit test set nothing begins";
    Hit(frame, Middle(frame.Skin().Close()));
    EXPECT_EQ(frame.Send(WM_NCMOUSEMOVE, HTCLOSE), 0);
    ExpectStates(frame, 1, 0, 0);
    EXPECT_EQ(frame.Skin().Timer(), 4991u);
    frame.Send(WM_NCMOUSEMOVE, HTMAXBUTTON);
    ExpectStates(frame, 0, 1, 0);
    frame.Send(WM_NCMOUSEMOVE, HTMINBUTTON);
    ExpectStates(frame, 0, 0, 1);
    frame.Send(WM_NCMOUSEMOVE, HTCAPTION);
    ExpectStates(frame, 0, 0, 0);
    EXPECT_FALSE(frame.log.Has(WM_NCMOUSEMOVE));
}

TEST_F(FrameInput, TheTimerEndsTheHoverWhenTheMouseHasLeft) {
    HostFrame frame;
    MoveMouse(frame, {200, 100});
    Hit(frame, Middle(frame.Skin().Close()));
    frame.Send(WM_NCMOUSEMOVE, HTCLOSE);
    ASSERT_EQ(frame.Skin().Timer(), 4991u);
    EXPECT_TRUE(PumpUntil([&] { return frame.Skin().Timer() == 0; }));
    ExpectStates(frame, 0, 0, 0);
}

TEST_F(FrameInput, WhileTheMouseStaysATickSetsTheButtonHotAgain) {
    HostFrame frame;
    BringToFront(frame);
    const POINT close = Middle(frame.Skin().Close());
    MoveMouse(frame, {close.x - 4, close.y - 24});
    ASSERT_TRUE(PumpUntil([&] { return frame.Skin().Timer() != 0; }));
    frame.Skin().SetStates(2, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return frame.Skin().CloseState() == 1; }));
    EXPECT_NE(frame.Skin().Timer(), 0u);
    // A tick asks where the mouse was at the last message, which some systems tell late: nudge it.
    int nudge = 0;
    EXPECT_TRUE(PumpUntil([&] {
        MoveMouse(frame, {200 + ++nudge % 2, 100});
        return frame.Skin().Timer() == 0;
    }));
    ExpectStates(frame, 0, 0, 0);
}

TEST_F(FrameInput, OtherTimersAreTheHosts) {
    HostFrame frame;
    frame.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_TIMER) return 55;
        return std::nullopt;
    };
    EXPECT_EQ(frame.Send(WM_TIMER, 7), 55);
    EXPECT_EQ(frame.Send(WM_TIMER, 0), 55) << "while no hover timer runs, 0 is nobody's but the host's";
}

TEST_F(FrameInput, APressTakesTheCaptureAndKeepsTheHostOut) {
    HostFrame frame;
    const struct {
        CRect rect;
        int close, max, min;
    } buttons[] = {
        {frame.Skin().Close(), 2, 0, 0}, {frame.Skin().Max(), 0, 2, 0}, {frame.Skin().Min(), 0, 0, 2}};
    for (const auto& button : buttons) {
        frame.log.Clear();
        EXPECT_EQ(frame.Send(WM_NCLBUTTONDOWN, HTCAPTION, frame.Packed(Middle(button.rect))), 0);
        ExpectStates(frame, button.close, button.max, button.min);
        EXPECT_EQ(::GetCapture(), frame.window);
        EXPECT_FALSE(frame.log.Has(WM_NCLBUTTONDOWN));
        ::ReleaseCapture();
    }
}

TEST_F(FrameInput, APressElsewhereIsTheHostsUnlessTheFrameIsMaximised) {
    HostFrame frame;
    frame.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_NCLBUTTONDOWN) return 9;
        return std::nullopt;
    };
    EXPECT_EQ(frame.Send(WM_NCLBUTTONDOWN, HTCAPTION, frame.Packed({100, 10})), 0);
    EXPECT_EQ(frame.log.Count(WM_NCLBUTTONDOWN), 1);
    ::ShowWindow(frame, SW_MAXIMIZE);
    frame.log.Clear();
    EXPECT_EQ(frame.Send(WM_NCLBUTTONDOWN, HTCAPTION, frame.Packed({100, 10})), 0);
    EXPECT_FALSE(frame.log.Has(WM_NCLBUTTONDOWN));
}

TEST_F(FrameInput, ADoubleClickOnTheCaptionMaximisesAndRestores) {
    HostFrame frame;
    frame.log.Clear();
    EXPECT_EQ(frame.Send(WM_NCLBUTTONDBLCLK, HTCAPTION, MAKELPARAM(12, 34)), 0);
    EXPECT_TRUE(::IsZoomed(frame));
    EXPECT_EQ(frame.Send(WM_NCLBUTTONDBLCLK, HTCAPTION, MAKELPARAM(12, 34)), 0);
    EXPECT_FALSE(::IsZoomed(frame));
    std::vector<Received> commands;
    for (const Received& r : frame.log.Entries())
        if (r.message == WM_SYSCOMMAND) commands.push_back(r);
    ASSERT_EQ(commands.size(), 2u);
    EXPECT_EQ(commands[0].wParam, static_cast<WPARAM>(SC_MAXIMIZE));
    EXPECT_EQ(commands[0].lParam, MAKELPARAM(12, 34));
    EXPECT_EQ(commands[1].wParam, static_cast<WPARAM>(SC_RESTORE));
    frame.log.Clear();
    frame.Send(WM_NCLBUTTONDBLCLK, HTCLOSE, 0);
    EXPECT_FALSE(frame.log.Has(WM_SYSCOMMAND));
    EXPECT_FALSE(frame.log.Has(WM_NCLBUTTONDBLCLK));
}

// Under capture the point is the client's and the test the screen's.
TEST_F(FrameInput, AMoveUnderCaptureTestsTheClientPointAsAScreenPoint) {
    HostFrame frame;
    const POINT close = frame.Screen(Middle(frame.Skin().Close()));
    EXPECT_EQ(frame.Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(close.x, close.y)), 0);
    ExpectStates(frame, 2, 0, 0);
    frame.Send(WM_MOUSEMOVE, 0, MAKELPARAM(close.x, close.y));
    ExpectStates(frame, 1, 0, 0);
    frame.Skin().SetStates(0, 0, 2);
    frame.Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(close.x, close.y));
    ExpectStates(frame, 2, 0, 0);
    frame.Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, 5));
    ExpectStates(frame, 2, 0, 0);
}

/* A release with the mouse at a point of the window, as the captured message brings it. */
void Release(const HostFrame& frame, POINT inWindow) {
    POINT point = frame.Screen(inWindow);
    ::ScreenToClient(frame, &point);
    EXPECT_EQ(frame.Send(WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y)), 0);
}

TEST_F(FrameInput, AReleaseSendsTheCommandOfTheButtonUnderTheMouse) {
    HostFrame frame;
    std::vector<Received> commands;
    frame.handler = [&](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_CLOSE || r.message == WM_SYSCOMMAND) {
            commands.push_back(r);
            return 0;
        }
        return std::nullopt;
    };
    const struct {
        CRect rect;
        UINT message;
        WPARAM wParam;
    } buttons[] = {{frame.Skin().Close(), WM_CLOSE, 0},
                   {frame.Skin().Max(), WM_SYSCOMMAND, SC_MAXIMIZE},
                   {frame.Skin().Min(), WM_SYSCOMMAND, SC_MINIMIZE}};
    for (const auto& button : buttons) {
        commands.clear();
        // The press was on another button: what counts is where the mouse is now.
        frame.Send(WM_NCLBUTTONDOWN, HTMINBUTTON, frame.Packed(Middle(frame.Skin().Min())));
        Release(frame, Middle(button.rect));
        ASSERT_EQ(commands.size(), 1u);
        EXPECT_EQ(commands[0].message, button.message);
        EXPECT_EQ(commands[0].wParam, button.wParam);
        EXPECT_EQ(commands[0].lParam, frame.Packed(Middle(button.rect)));
        ExpectStates(frame, 0, 0, 0);
        EXPECT_NE(::GetCapture(), frame.window);
    }
}

TEST_F(FrameInput, AReleaseOffAllButtonsSendsNothing) {
    HostFrame frame;
    frame.log.Clear();
    frame.Send(WM_NCLBUTTONDOWN, HTCLOSE, frame.Packed(Middle(frame.Skin().Close())));
    Release(frame, {200, 120});
    ExpectStates(frame, 0, 0, 0);
    EXPECT_FALSE(frame.log.Has(WM_CLOSE));
    EXPECT_FALSE(frame.log.Has(WM_LBUTTONUP));
}

TEST_F(FrameInput, AReleaseWithAllStatesNormalIsTheHosts) {
    HostFrame frame;
    frame.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_LBUTTONUP) return 31;
        return std::nullopt;
    };
    EXPECT_EQ(frame.Send(WM_LBUTTONUP, 0, MAKELPARAM(50, 50)), 31);
}

TEST_F(FrameInput, ButtonsThatTheStyleLacksSendNothing) {
    HostFrame frame(WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_SYSMENU);
    for (const CRect& rect : {frame.Skin().Max(), frame.Skin().Min()}) {
        frame.log.Clear();
        frame.Send(WM_NCLBUTTONDOWN, HTCAPTION, frame.Packed(Middle(rect)));
        Release(frame, Middle(rect));
        EXPECT_FALSE(frame.log.Has(WM_SYSCOMMAND));
    }
}

TEST_F(FrameInput, MaximiseAndMinimiseTurnIntoRestore) {
    HostFrame frame;
    ::ShowWindow(frame, SW_MAXIMIZE);
    frame.log.Clear();
    frame.Send(WM_NCLBUTTONDOWN, HTMAXBUTTON, frame.Packed(Middle(frame.Skin().Max())));
    Release(frame, Middle(frame.Skin().Max()));
    EXPECT_FALSE(::IsZoomed(frame));
    ::ShowWindow(frame, SW_MINIMIZE);
    frame.Skin().SetStates(0, 0, 1);
    Release(frame, Middle(frame.Skin().Min()));
    EXPECT_FALSE(::IsIconic(frame));
}

TEST_F(FrameInput, LosingTheActivationReleasesTheCaptureAndKeepsTheStateUntilTheNextMove) {
    HostFrame frame;
    frame.Send(WM_NCLBUTTONDOWN, HTCLOSE, frame.Packed(Middle(frame.Skin().Close())));
    frame.Send(WM_ACTIVATE, WA_INACTIVE);
    EXPECT_NE(::GetCapture(), frame.window);
    ExpectStates(frame, 2, 0, 0);
    frame.Send(WM_NCMOUSEMOVE, HTCLIENT);
    ExpectStates(frame, 0, 0, 0);
}

TEST_F(FrameInput, ClosingByTheMouseEndsTheWindowSafely) {
    HostFrame frame;
    BringToFront(frame);
    const POINT close = Middle(frame.Skin().Close());
    MoveMouse(frame, {close.x - 4, close.y - 24});
    EXPECT_TRUE(PumpUntil([&] { return frame.Skin().CloseState() == 1; }));
    PressMouse();
    EXPECT_TRUE(::IsWindow(frame));
    EXPECT_EQ(::GetCapture(), frame.window);
    ReleaseMouse();
    EXPECT_TRUE(PumpUntil([&] { return !::IsWindow(frame); }));
}

TEST_F(FrameInput, ARealClickMaximisesAndAnotherRestores) {
    HostFrame frame;
    BringToFront(frame);
    const auto clickMax = [&] {
        POINT point = frame.Screen(Middle(frame.Skin().Max()));
        ::ScreenToClient(frame, &point);
        ClickMouse(frame, point);
    };
    clickMax();
    EXPECT_TRUE(PumpUntil([&] { return ::IsZoomed(frame) != 0; }));
    PumpMessages(50);
    clickMax();
    EXPECT_TRUE(PumpUntil([&] { return ::IsZoomed(frame) == 0; }));
}

}  // namespace
}  // namespace tavix_test
