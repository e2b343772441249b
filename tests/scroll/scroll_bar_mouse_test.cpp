// Real mouse input in real time: what a user's press, hold and drag tell the host.
#include <algorithm>
#include <cmath>

#include "bar_fixture.h"

namespace tavix_test {
namespace {

using Notes = std::vector<Told>;

class BarMouse : public BarTest {
protected:
    void SetUp() override {
        BarTest::SetUp();
        MakeBarWith(0, 100, 10, 40);
        ASSERT_TRUE(BringToFront(Parent()));
        // The host of a list: steps follow the notifications.
        Parent().handler = [this](const Received& received) -> std::optional<LRESULT> {
            if (received.message != Message() || !bar) return std::nullopt;
            const int code = LOWORD(received.wParam);
            const int step = code == SB_LINEUP ? -1 : code == SB_LINEDOWN ? 1 : code == SB_PAGEUP ? -10 : 10;
            const bool moved = code == SB_THUMBTRACK || code == SB_THUMBPOSITION;
            const int pos = moved ? HIWORD(received.wParam) : bar->m_nPos + step;
            ::SendMessageA(bar->m_hWnd, SBM_SETPOS, static_cast<WPARAM>(pos), TRUE);
            return std::nullopt;
        };
    }
    void TearDown() override {
        ReleaseMouse();
        ParkMouse();
        BarTest::TearDown();
    }
    void MoveTo(int along) { MoveMouse(bar->m_hWnd, At(GetParam(), along, kBreadth / 2)); }
    std::size_t Count() { return Notifications().size(); }
    void ExpectAll(int code) {
        for (const Told& told : Notifications()) EXPECT_EQ(told, (Told{code, 0}));
    }
};
INSTANTIATE_TEST_SUITE_P(Axes, BarMouse, kBothAxes, NameOfAxis);

TEST_P(BarMouse, HeldArrowWaitsAndThenStepsTenTimesASecond) {
    MoveTo(190);
    const ULONGLONG pressed = ::GetTickCount64();
    PressMouse();
    ASSERT_TRUE(PumpUntil([&] { return Count() == 1; }));
    ASSERT_TRUE(PumpUntil([&] { return Count() == 2; }));
    const ULONGLONG second = ::GetTickCount64();
    ASSERT_TRUE(PumpUntil([&] { return Count() >= 7; }));
    const ULONGLONG seventh = ::GetTickCount64();
    ReleaseMouse();
    EXPECT_GE(second - pressed, 450u);
    EXPECT_LT(second - pressed, 1200u);
    EXPECT_GE(seventh - second, 400u);
    EXPECT_LT(seventh - second, 1500u);
    ExpectAll(SB_LINEDOWN);
    EXPECT_EQ(bar->m_nPos, 40 + static_cast<int>(Count()));
    const std::size_t count = Count();
    PumpMessages(300);
    EXPECT_EQ(Count(), count);
}

TEST_P(BarMouse, HeldArrowPausesWhileTheMouseIsBesideIt) {
    MoveTo(10);
    PressMouse();
    ASSERT_TRUE(PumpUntil([&] { return Count() >= 2; }));
    MoveTo(30);
    PumpMessages(50);
    const std::size_t count = Count();
    PumpMessages(350);
    EXPECT_EQ(Count(), count);
    MoveTo(10);
    EXPECT_TRUE(PumpUntil([&] { return Count() > count; }));
    ReleaseMouse();
    ExpectAll(SB_LINEUP);
}

TEST_P(BarMouse, HeldTrackPagesUntilTheThumbIsThere) {
    MoveTo(150);
    PressMouse();
    ASSERT_TRUE(PumpUntil([&] { return bar->Rects().thumb.PtInRect(At(GetParam(), 150, 5)) != 0; }, 4000));
    const std::size_t count = Count();
    PumpMessages(400);
    EXPECT_EQ(Count(), count);
    ExpectAll(SB_PAGEDOWN);
    EXPECT_EQ(bar->m_nPos, 40 + 10 * static_cast<int>(count));
    ReleaseMouse();
    EXPECT_EQ(Count(), count);
    EXPECT_EQ(bar->m_nRepeatTimer, 0u);
}

TEST_P(BarMouse, DragTellsAWholeJourney) {
    // The thumb of 15 pixels has 145 to go for 91 positions, from behind the arrow on.
    const int from = ThumbFrom(), grab = 7;
    const auto position = [](int thumb) { return static_cast<int>((thumb - 20) * 91 / 145.0 + 0.5); };
    const auto thumbAt = [](int pos) { return static_cast<int>(std::ceil(20 + pos * 145 / 92.0)); };
    MoveTo(from + grab);
    PressMouse();
    // The system may repeat a point and come back to one that is past: what counts is what the bar hears.
    MessageSpy spy(bar->m_hWnd);
    spy.log.Listen({WM_MOUSEMOVE});
    Notes stations;
    for (int step : {5, 10, 15, 20, 25, 30, 35, 40, 30, 20, 10, 0, -10, -20, -30}) {
        MoveTo(from + grab + step);
        stations.push_back({SB_THUMBTRACK, position(from + step)});
    }
    ReleaseMouse();
    ASSERT_TRUE(PumpUntil([&] { return Count() && Notifications().back().code == SB_THUMBPOSITION; }));
    Notes expected;
    int told = 40;
    POINT last = At(GetParam(), from + grab, kBreadth / 2);
    for (const Received& move : spy.log.Entries()) {
        const CPoint at(move.lParam);
        if (move.wParam != MK_LBUTTON || at == CPoint(last)) continue;
        const auto along = [&](POINT p) { return GetParam() == Axis::Upright ? p.y : p.x; };
        // A move across the bar leaves the thumb where the position put it.
        const int now = position(along(at) == along(last) ? thumbAt(told) : along(at) - grab);
        if (now != told) expected.push_back({SB_THUMBTRACK, now});
        told = now;
        last = at;
    }
    // Wherever the mouse was taken, the thumb has been, in that order.
    auto next = expected.begin();
    for (const Told& station : stations) {
        next = std::find(next, expected.end(), station);
        ASSERT_NE(next, expected.end()) << station.pos;
    }
    expected.push_back({SB_THUMBPOSITION, position(thumbAt(told))});
    EXPECT_EQ(Notifications(), expected);
    EXPECT_EQ(bar->m_nPos, expected.back().pos);
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_P(BarMouse, DoubleClickIsTwoPresses) {
    MessageSpy spy(bar->m_hWnd);
    spy.log.Listen({WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK});
    DoubleClickMouse(bar->m_hWnd, At(GetParam(), 10, 8));
    ASSERT_TRUE(PumpUntil([&] { return spy.log.Entries().size() >= 4; }));
    EXPECT_EQ(spy.log.Messages(),
              (std::vector<UINT>{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDOWN, WM_LBUTTONUP}));
    EXPECT_EQ(Notifications(), (Notes{{SB_LINEUP, 0}, {SB_LINEUP, 0}}));
}

TEST_P(BarMouse, DoubleClickOnAControlThatWasTakenOverIsTwoPresses) {
    bar.reset();
    HWND control = MakeControl(Charset::Unicode);
    MessageSpy spy(control);
    spy.log.Listen({WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK});
    DoubleClickMouse(control, At(GetParam(), 6, 8));
    ASSERT_TRUE(PumpUntil([&] { return spy.log.Entries().size() >= 4; }));
    EXPECT_EQ(spy.log.Messages(),
              (std::vector<UINT>{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDOWN, WM_LBUTTONUP}));
    EXPECT_EQ(Notifications(reinterpret_cast<LPARAM>(control)), (Notes{{SB_LINEUP, 0}, {SB_LINEUP, 0}}));
}

}  // namespace
}  // namespace tavix_test
