// Presses, repeats, dragging and hover, message by message.
#include "bar_fixture.h"

namespace tavix_test {
namespace {

constexpr UINT_PTR kTimer = 4991;

using Notes = std::vector<Told>;

class BarInput : public BarTest {
protected:
    // A track from 20 to 180, positions 0 to 91, a thumb of 15 pixels that starts well inside.
    void SetUp() override {
        BarTest::SetUp();
        MakeBarWith(0, 100, 10, 40);
        ASSERT_EQ(bar->m_nThumbLen, 15);
    }
    int ThumbMiddle() const { return ThumbFrom() + 7; }
    static constexpr int kFirst = 10, kSecond = 190, kBefore = 25, kAfter = 170;
};
INSTANTIATE_TEST_SUITE_P(Axes, BarInput, kBothAxes, NameOfAxis);

// ---------------------------------------------------------------- presses

TEST_P(BarInput, PressOnTheFirstArrowStepsAndRepeats) {
    SendAt(WM_LBUTTONDOWN, kFirst);
    EXPECT_EQ(Notifications(), (Notes{{SB_LINEUP, 0}}));
    EXPECT_TRUE(bar->m_bArrow1Pressed);
    EXPECT_FALSE(bar->m_bArrow2Pressed);
    EXPECT_EQ(bar->m_nRepeatPart, 1);
    EXPECT_TRUE(bar->m_bRepeatFirst);
    EXPECT_EQ(bar->m_nRepeatTimer, kTimer);
    EXPECT_EQ(::GetCapture(), bar->m_hWnd);
    SendAt(WM_LBUTTONUP, kFirst, 0);
    EXPECT_FALSE(bar->m_bArrow1Pressed);
    EXPECT_EQ(bar->m_nRepeatTimer, 0u);
    EXPECT_EQ(bar->m_nRepeatPart, 0);
    EXPECT_EQ(::GetCapture(), nullptr);
    EXPECT_EQ(Notifications().size(), 1u);
}

TEST_P(BarInput, PressOnTheSecondArrowStepsAndRepeats) {
    SendAt(WM_LBUTTONDOWN, kSecond);
    EXPECT_EQ(Notifications(), (Notes{{SB_LINEDOWN, 0}}));
    EXPECT_TRUE(bar->m_bArrow2Pressed);
    EXPECT_EQ(bar->m_nRepeatPart, 2);
    SendAt(WM_LBUTTONUP, kSecond, 0);
    EXPECT_FALSE(bar->m_bArrow2Pressed);
    EXPECT_EQ(bar->m_nRepeatPart, 0);
}

TEST_P(BarInput, PressOnTheTrackPages) {
    SendAt(WM_LBUTTONDOWN, kBefore);
    EXPECT_EQ(bar->m_nRepeatPart, 3);
    SendAt(WM_LBUTTONUP, kBefore, 0);
    SendAt(WM_LBUTTONDOWN, kAfter);
    EXPECT_EQ(bar->m_nRepeatPart, 4);
    SendAt(WM_LBUTTONUP, kAfter, 0);
    EXPECT_EQ(Notifications(), (Notes{{SB_PAGEUP, 0}, {SB_PAGEDOWN, 0}}));
}

TEST_P(BarInput, PressOnTheThumbSaysNothingUntilItIsReleased) {
    SendAt(WM_LBUTTONDOWN, ThumbMiddle());
    EXPECT_TRUE(bar->m_bThumbPressed);
    EXPECT_FALSE(bar->m_bDragging);
    EXPECT_EQ(bar->m_nGrabOffset, 7);
    EXPECT_EQ(bar->m_nRepeatTimer, 0u);
    EXPECT_TRUE(Notifications().empty());
    const int pos = bar->PixelToPos(bar->m_nThumbPixel);
    SendAt(WM_LBUTTONUP, ThumbMiddle(), 0);
    EXPECT_EQ(Notifications(), (Notes{{SB_THUMBPOSITION, pos}}));
    EXPECT_FALSE(bar->m_bThumbPressed);
    EXPECT_EQ(bar->m_nLastTrackPos, -1);
}

TEST_P(BarInput, PressJustBehindTheThumbTellsItsPosition) {
    const int behind = ThumbFrom() + bar->m_nThumbLen;
    SendAt(WM_LBUTTONDOWN, behind);
    EXPECT_EQ(Notifications(), (Notes{{SB_THUMBPOSITION, bar->PixelToPos(bar->m_nThumbPixel)}}));
    EXPECT_EQ(bar->m_nRepeatTimer, 0u);
    EXPECT_FALSE(bar->m_bThumbPressed);
    Parent().log.Clear();
    SendAt(WM_LBUTTONUP, behind, 0);
    SendAt(WM_LBUTTONDOWN, behind + 1);
    EXPECT_EQ(Notifications(), (Notes{{SB_PAGEDOWN, 0}}));
}

TEST_P(BarInput, EdgeOfAnArrowBelongsToTheTrack) {
    SendAt(WM_LBUTTONDOWN, 0);
    SendAt(WM_LBUTTONUP, 0, 0);
    SendAt(WM_LBUTTONDOWN, kLength - 1);
    EXPECT_EQ(Notifications(), (Notes{{SB_PAGEUP, 0}, {SB_PAGEDOWN, 0}}));
}

TEST_P(BarInput, BarWithoutArrowsTellsThePositionOnItsTrack) {
    bar->m_nArrowLen = 0;
    SendAt(WM_LBUTTONDOWN, 3);
    EXPECT_EQ(Notifications(), (Notes{{SB_THUMBPOSITION, bar->PixelToPos(bar->m_nThumbPixel)}}));
    EXPECT_EQ(bar->m_nGrabOffset, 0);
}

TEST_P(BarInput, DoublePressIsTwoPresses) {
    for (int i = 0; i < 2; ++i) {
        SendAt(WM_LBUTTONDOWN, kFirst);
        SendAt(WM_LBUTTONUP, kFirst, 0);
    }
    EXPECT_EQ(Notifications(), (Notes{{SB_LINEUP, 0}, {SB_LINEUP, 0}}));
}

TEST_P(BarInput, PressGivesTheFocusToTheParent) {
    ASSERT_TRUE(BringToFront(Parent()));
    HWND other = CreateControl(Charset::Ansi, Parent(), "Edit", "", 0, {200, 200, 250, 220});
    ::SetFocus(other);
    SendAt(WM_LBUTTONDOWN, kFirst);
    EXPECT_EQ(::GetFocus(), Parent().Handle());
}

TEST_P(BarInput, DisabledBarIgnoresTheMouse) {
    const int middle = ThumbMiddle();
    ::EnableWindow(bar->m_hWnd, FALSE);
    for (int along : {kFirst, kSecond, kBefore, kAfter, middle}) {
        SendAt(WM_MOUSEMOVE, along, 0);
        SendAt(WM_LBUTTONDOWN, along);
        SendAt(WM_MOUSEMOVE, along + 5);
        SendAt(WM_LBUTTONUP, along + 5, 0);
    }
    EXPECT_TRUE(Notifications().empty());
    EXPECT_EQ(bar->m_nHotPart, 0);
    EXPECT_NE(::GetCapture(), bar->m_hWnd);
}

TEST_P(BarInput, ReleaseOfADropListsBarGivesTheMouseToTheParent) {
    bar->m_bDropListBar = 1;
    SendAt(WM_LBUTTONDOWN, kFirst);
    SendAt(WM_LBUTTONUP, kFirst, 0);
    EXPECT_EQ(::GetCapture(), Parent().Handle());
}

// ---------------------------------------------------------------- dragging

TEST_P(BarInput, DragTellsEachPositionOnce) {
    const int start = ThumbMiddle();
    SendAt(WM_LBUTTONDOWN, start);
    Notes expected;
    int last = -1;
    for (int step = 1; step <= 30; ++step) {
        SendAt(WM_MOUSEMOVE, start + step);
        EXPECT_TRUE(bar->m_bDragging);
        const int pos = bar->PixelToPos(start + step - 7);
        if (pos == 40 || pos == last) continue;
        EXPECT_EQ(bar->m_nThumbPixel, start + step - 7);
        EXPECT_EQ(ThumbFrom(), start + step - 7);
        expected.push_back({SB_THUMBTRACK, last = pos});
    }
    SendAt(WM_LBUTTONUP, start + 30, 0);
    expected.push_back({SB_THUMBPOSITION, last});
    EXPECT_GT(expected.size(), 10u);
    EXPECT_EQ(Notifications(), expected);
    // The host took no notice: the thumb is back.
    EXPECT_EQ(bar->m_nThumbPixel, bar->PosToPixel(40));
    EXPECT_FALSE(bar->m_bDragging);
}

TEST_P(BarInput, SamePositionIsToldAgainAfterARelease) {
    const int start = ThumbMiddle();
    for (int i = 0; i < 2; ++i) {
        Parent().log.Clear();
        SendAt(WM_LBUTTONDOWN, start);
        SendAt(WM_MOUSEMOVE, start + 20);
        SendAt(WM_MOUSEMOVE, start + 21);
        SendAt(WM_MOUSEMOVE, start + 20);
        const int there = bar->PixelToPos(start + 20 - 7), further = bar->PixelToPos(start + 21 - 7);
        ASSERT_NE(there, 40);
        SendAt(WM_LBUTTONUP, start + 20, 0);
        Notes expected{{SB_THUMBTRACK, there}};
        if (further != there)
            expected.insert(expected.end(), {{SB_THUMBTRACK, further}, {SB_THUMBTRACK, there}});
        expected.push_back({SB_THUMBPOSITION, there});
        EXPECT_EQ(Notifications(), expected);
    }
}

TEST_P(BarInput, DragEndsAtTheEndsOfTheTrack) {
    const int start = ThumbMiddle();
    SendAt(WM_LBUTTONDOWN, start);
    SendAt(WM_MOUSEMOVE, 3000);
    EXPECT_EQ(bar->m_nThumbPixel, 180 - 15);
    SendAt(WM_MOUSEMOVE, -3000);
    EXPECT_EQ(bar->m_nThumbPixel, 20);
    EXPECT_EQ(Notifications(), (Notes{{SB_THUMBTRACK, 91}, {SB_THUMBTRACK, 0}}));
}

TEST_P(BarInput, MoveAcrossTheBarKeepsTheThumb) {
    const int start = ThumbMiddle();
    SendAt(WM_LBUTTONDOWN, start);
    SendAt(WM_MOUSEMOVE, start + 30);
    const int pixel = bar->m_nThumbPixel;
    Send(WM_MOUSEMOVE, MK_LBUTTON, At(GetParam(), start + 30, 300));
    EXPECT_EQ(bar->m_nThumbPixel, pixel);
    EXPECT_EQ(Notifications().size(), 1u);
}

TEST_P(BarInput, DragWithAnyOtherFlagsIsHover) {
    const int start = ThumbMiddle();
    SendAt(WM_LBUTTONDOWN, start);
    for (WPARAM flags :
         {MK_LBUTTON | MK_SHIFT, MK_LBUTTON | MK_CONTROL, MK_LBUTTON | MK_RBUTTON, 0, MK_SHIFT}) {
        SendAt(WM_MOUSEMOVE, start + 30, flags);
        EXPECT_FALSE(bar->m_bDragging);
        EXPECT_EQ(bar->m_nHotPart, 4);
    }
    EXPECT_TRUE(Notifications().empty());
}

TEST_P(BarInput, NoDragWithoutTheCaptureOrAtTheSamePoint) {
    const int start = ThumbMiddle();
    SendAt(WM_LBUTTONDOWN, start);
    SendAt(WM_MOUSEMOVE, start);
    EXPECT_FALSE(bar->m_bDragging);
    ::ReleaseCapture();
    SendAt(WM_MOUSEMOVE, start + 30);
    EXPECT_FALSE(bar->m_bDragging);
    EXPECT_TRUE(Notifications().empty());
}

TEST_P(BarInput, ReturnToThePositionSnapsWithoutAMessage) {
    const int start = ThumbMiddle();
    SendAt(WM_LBUTTONDOWN, start);
    SendAt(WM_MOUSEMOVE, start + 30);
    Parent().log.Clear();
    SendAt(WM_MOUSEMOVE, start);
    EXPECT_TRUE(Notifications().empty());
    EXPECT_EQ(bar->m_nThumbPixel, bar->PosToPixel(40));
}

TEST_P(BarInput, HostThatFollowsTheThumbHearsItGoOn) {
    Parent().handler = [this](const Received& received) -> std::optional<LRESULT> {
        if (received.message == Message() && LOWORD(received.wParam) == SB_THUMBTRACK)
            ::SendMessageA(bar->m_hWnd, SBM_SETPOS, HIWORD(received.wParam), TRUE);
        return std::nullopt;
    };
    const int start = ThumbMiddle();
    SendAt(WM_LBUTTONDOWN, start);
    for (int step = 4; step <= 40; step += 4) SendAt(WM_MOUSEMOVE, start + step);
    const int pos = bar->m_nPos;
    EXPECT_NEAR(pos, 40 + 40 * 91 / 145, 2);
    SendAt(WM_LBUTTONUP, start + 40, 0);
    const Notes notes = Notifications();
    ASSERT_GE(notes.size(), 8u);
    EXPECT_EQ(notes.back().code, SB_THUMBPOSITION);
    for (std::size_t i = 1; i + 1 < notes.size(); ++i) EXPECT_GT(notes[i].pos, notes[i - 1].pos);
}

TEST_P(BarInput, NegativePositionsTravelInTheirLowWord) {
    SetInfo(*bar, -100, -1, 10, -50);
    Parent().log.Clear();
    SendAt(WM_LBUTTONDOWN, ThumbMiddle());
    SendAt(WM_MOUSEMOVE, -3000);
    EXPECT_EQ(Notifications(), (Notes{{SB_THUMBTRACK, -100}}));
    EXPECT_EQ(Parent().log.Entries().back().wParam, static_cast<WPARAM>(0xFF9C0005u));
}

// ---------------------------------------------------------------- hover

TEST_P(BarInput, MoveFindsThePartUnderTheMouse) {
    const std::pair<int, int> kParts[] = {
        {kFirst, 1}, {kSecond, 2}, {ThumbMiddle(), 3}, {kBefore, 4}, {-5, 0}};
    for (const auto& [along, part] : kParts) {
        SendAt(WM_MOUSEMOVE, along, 0);
        EXPECT_EQ(bar->m_nHotPart, part);
    }
    EXPECT_TRUE(Notifications().empty());
}

TEST_P(BarInput, EntryStartsTheWatchForTheLeaving) {
    EXPECT_EQ(bar->m_nHoverTimer, 0u);
    SendAt(WM_MOUSEMOVE, kFirst, 0);
    EXPECT_EQ(bar->m_nHoverTimer, kTimer);
    // The mouse is far away.
    ParkMouse();
    EXPECT_TRUE(PumpUntil([&] { return bar->m_nHoverTimer == 0; }));
    EXPECT_EQ(bar->m_nHotPart, 1);
}

TEST_P(BarInput, EachChangeOfPartRepaintsBoth) {
    SendAt(WM_MOUSEMOVE, kFirst, 0);
    MessageSpy spy(bar->m_hWnd);
    spy.log.Listen({WM_PAINT});
    SendAt(WM_MOUSEMOVE, kFirst + 1, 0);
    EXPECT_EQ(spy.log.Count(WM_PAINT), 0);
    SendAt(WM_MOUSEMOVE, kBefore, 0);
    EXPECT_EQ(spy.log.Count(WM_PAINT), 2);
}

// ---------------------------------------------------------------- the timer, tick by tick

TEST_P(BarInput, TickWithoutTheCaptureEndsTheRepeat) {
    SendAt(WM_LBUTTONDOWN, kFirst);
    Parent().log.Clear();
    ::ReleaseCapture();
    ::SendMessageA(bar->m_hWnd, WM_TIMER, kTimer, 0);
    EXPECT_TRUE(Notifications().empty());
    EXPECT_EQ(bar->m_nRepeatTimer, 0u);
    EXPECT_EQ(bar->m_nRepeatPart, 0);
    EXPECT_FALSE(bar->m_bArrow1Pressed);
}

TEST_P(BarInput, FirstTickShortensTheDelay) {
    SendAt(WM_LBUTTONDOWN, kSecond);
    EXPECT_TRUE(bar->m_bRepeatFirst);
    ::SendMessageA(bar->m_hWnd, WM_TIMER, kTimer, 0);
    EXPECT_FALSE(bar->m_bRepeatFirst);
    EXPECT_EQ(bar->m_nRepeatTimer, kTimer);
    // The cursor is parked elsewhere: no step.
    EXPECT_EQ(Notifications(), (Notes{{SB_LINEDOWN, 0}}));
}

TEST_P(BarInput, ForeignTimersAreForeign) {
    SendAt(WM_LBUTTONDOWN, kFirst);
    Parent().log.Clear();
    ::SendMessageA(bar->m_hWnd, WM_TIMER, 1, 0);
    ::SendMessageA(bar->m_hWnd, WM_TIMER, 0, 0);
    EXPECT_TRUE(Notifications().empty());
    EXPECT_TRUE(bar->m_bRepeatFirst);
}

TEST_P(BarInput, ReentryDuringARepeatTurnsItsTimerIntoTheHoverTimer) {
    SendAt(WM_LBUTTONDOWN, kFirst);
    ::SendMessageA(bar->m_hWnd, WM_TIMER, kTimer, 0);
    SendAt(WM_MOUSEMOVE, -40);
    SendAt(WM_MOUSEMOVE, kFirst);
    EXPECT_EQ(bar->m_nHoverTimer, kTimer);
    EXPECT_EQ(bar->m_nRepeatTimer, kTimer);
    EXPECT_EQ(bar->m_nRepeatPart, 1);
}

}  // namespace
}  // namespace tavix_test
