// A splitter under the user's hands: real mouse and keys.
#include <algorithm>

#include "main/gui_objects.h"
#include "splitter_fixture.h"

namespace tavix_test {
namespace {

using Hit = CSplitterWnd::CHit;
using Sizes = std::vector<int>;

class SplitterTracking : public SplitterTest {
protected:
    void MakeTwoByTwo() {
        MakeStatic(2, 2);
        splitter.SetColumnInfo(0, 100, 30);
        splitter.SetColumnInfo(1, 100, 40);
        splitter.SetRowInfo(0, 80, 20);
        splitter.SetRowInfo(1, 80, 25);
        splitter.RecalcLayout();
        Settle();
    }
    // Presses a bar and takes it somewhere, still held.
    void Hold(POINT from, POINT to) {
        MoveMouse(splitter.m_hWnd, from);
        PressMouse();
        ASSERT_TRUE(splitter.IsTracking());
        MoveMouse(splitter.m_hWnd, to);
    }
    Picture Shown() {
        Settle();
        return PictureOfClient(parent);
    }
};

// ---------------------------------------------------------------- hit test and cursors

TEST_F(SplitterTracking, EveryPointIsAPaneABarOrACrossing) {
    MakeTwoByTwo();
    for (int y = -2; y < 302; ++y)
        for (int x = -2; x < 402; ++x) {
            const bool inside = x >= 0 && y >= 0 && x < 400 && y < 300;
            const Hit expected{inside && y >= 80 && y < 87 ? 0 : -1, inside && x >= 100 && x < 107 ? 0 : -1};
            ASSERT_EQ(splitter.HitTest({x, y}), expected) << x << " " << y;
        }
}

TEST_F(SplitterTracking, BoxesOfADynamicSplitterAreHit) {
    MakeDynamic(2, 2);
    EXPECT_EQ(splitter.HitTest({3, 3}), (Hit{0, 0, true}));
    EXPECT_EQ(splitter.HitTest({3, 150}), (Hit{-1, 0, true}));
    EXPECT_EQ(splitter.HitTest({150, 3}), (Hit{0, -1, true}));
    EXPECT_FALSE(splitter.HitTest({150, 150}));
    ASSERT_TRUE(splitter.SplitColumn(100));
    EXPECT_EQ(splitter.HitTest({3, 3}), (Hit{0, -1, true}));
    EXPECT_FALSE(splitter.HitTest({3, 150}));
    EXPECT_EQ(splitter.HitTest({103, 150}), (Hit{-1, 0}));
}

TEST_F(SplitterTracking, CursorTellsWhatCanBeDragged) {
    MakeTwoByTwo();
    const auto shapeAt = [this](POINT at) {
        MoveMouse(splitter.m_hWnd, at);
        ::SendMessageA(splitter.m_hWnd, WM_SETCURSOR, reinterpret_cast<WPARAM>(splitter.m_hWnd),
                       MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        return ::GetCursor();
    };
    EXPECT_EQ(shapeAt({103, 40}), ::LoadCursor(nullptr, IDC_SIZEWE));
    EXPECT_EQ(shapeAt({40, 83}), ::LoadCursor(nullptr, IDC_SIZENS));
    EXPECT_EQ(shapeAt({103, 83}), ::LoadCursor(nullptr, IDC_SIZEALL));
    EXPECT_EQ(shapeAt({40, 40}), ::LoadCursor(nullptr, IDC_ARROW));
}

// ---------------------------------------------------------------- dragging

TEST_F(SplitterTracking, BarsGoWhereTheyAreDragged) {
    MakeTwoByTwo();
    Drag({103, 40}, {183, 45});
    EXPECT_EQ(splitter.Widths(), (Sizes{180, 213}));
    EXPECT_EQ(splitter.Heights(), (Sizes{80, 213}));
    Drag({40, 83}, {45, 133});
    EXPECT_EQ(splitter.Heights(), (Sizes{130, 163}));
    Drag({183, 133}, {83, 103});
    EXPECT_EQ(splitter.Widths(), (Sizes{80, 313})) << "both bars at their crossing";
    EXPECT_EQ(splitter.Heights(), (Sizes{100, 193}));
    EXPECT_TRUE(splitter.PlaceOf(1, 1) == CRect(87, 107, 400, 300));
}

TEST_F(SplitterTracking, FirstOfThreeColumnsPushesTheOthers) {
    MakeStatic(1, 3);
    for (int i = 0; i < 3; ++i) splitter.SetColumnInfo(i, 100, 20);
    splitter.RecalcLayout();
    Settle();
    Drag({103, 40}, {123, 40});
    EXPECT_EQ(splitter.Widths(), (Sizes{120, 100, 166}));
    Drag({120 + 7 + 100 + 3, 40}, {20, 40});
    EXPECT_EQ(splitter.Widths(), (Sizes{120, 0, 266})) << "a bar stops at the one before it";
    Drag({120 + 7 + 3, 40}, {200, 40});
    EXPECT_EQ(splitter.Widths(), (Sizes{120, 70, 196})) << "and comes back from there";
}

TEST_F(SplitterTracking, ColumnDraggedBelowItsMinimumIsNotShown) {
    MakeTwoByTwo();
    Drag({103, 40}, {32, 40});
    EXPECT_EQ(splitter.Widths(), (Sizes{0, 393}));
    EXPECT_EQ(splitter.GetColumnCount(), 2);
    EXPECT_TRUE(splitter.PlaceOf(0, 0).IsRectEmpty());
    EXPECT_TRUE(::IsWindow(splitter.Pane(0, 0)));
    Drag({3, 40}, {153, 40});
    EXPECT_EQ(splitter.Widths(), (Sizes{150, 243})) << "its bar brings it back";
    Drag({153, 40}, {370, 40});
    EXPECT_EQ(splitter.Widths(), (Sizes{393, 0})) << "the next one just so";
}

TEST_F(SplitterTracking, RowDraggedBelowItsMinimumIsNotShown) {
    MakeTwoByTwo();
    Drag({40, 83}, {40, 5});
    EXPECT_EQ(splitter.Heights(), (Sizes{0, 293}));
    Drag({40, 3}, {40, 290});
    EXPECT_EQ(splitter.Heights(), (Sizes{293, 0}));
}

TEST_F(SplitterTracking, DynamicColumnDraggedBelowItsMinimumIsDeleted) {
    MakeDynamic(2, 2, {30, 30});
    ASSERT_TRUE(splitter.SplitColumn(100));
    Settle();
    HWND second = splitter.Pane(0, 1);
    Drag({103, 150}, {12, 150});
    EXPECT_EQ(splitter.GetColumnCount(), 1);
    EXPECT_EQ(splitter.Pane(0, 0), second);
    ASSERT_TRUE(splitter.SplitRow(100));
    Settle();
    HWND first = splitter.Pane(0, 0);
    Drag({150, 103}, {150, 290});
    EXPECT_EQ(splitter.GetRowCount(), 1);
    EXPECT_EQ(splitter.Pane(0, 0), first);
}

TEST_F(SplitterTracking, SplitBoxIsDraggedToASplit) {
    MakeDynamic(2, 2, {30, 30});
    Drag({3, 150}, {123, 150});
    ASSERT_EQ(splitter.GetColumnCount(), 2);
    EXPECT_EQ(splitter.Widths(), (Sizes{120, 273}));
    Drag({150, 3}, {150, 93});
    ASSERT_EQ(splitter.GetRowCount(), 2);
    EXPECT_EQ(splitter.Heights(), (Sizes{90, 203}));
}

TEST_F(SplitterTracking, CornerBoxSplitsBothWays) {
    MakeDynamic(2, 2, {30, 30});
    Drag({3, 3}, {123, 93});
    EXPECT_EQ(splitter.Widths(), (Sizes{120, 273}));
    EXPECT_EQ(splitter.Heights(), (Sizes{90, 203}));
    EXPECT_EQ(splitter.made.size(), 4u);
}

TEST_F(SplitterTracking, SplitBoxLetGoNearTheEdgeSplitsNothing) {
    MakeDynamic(1, 2, {30, 30});
    Drag({3, 150}, {20, 150});
    EXPECT_EQ(splitter.GetColumnCount(), 1);
    EXPECT_EQ(splitter.made.size(), 1u);
}

TEST_F(SplitterTracking, ClickOnABarChangesNothing) {
    MakeTwoByTwo();
    // Squeezed by its neighbours, the column keeps what it asked for.
    ::MoveWindow(splitter.m_hWnd, 0, 0, 100, 300, TRUE);
    const int ideal = splitter.m_pColInfo[0].nIdealSize;
    ClickMouse(splitter.m_hWnd, splitter.MiddleOf({-1, 0}));
    EXPECT_EQ(splitter.m_pColInfo[0].nIdealSize, ideal);
    EXPECT_FALSE(splitter.IsTracking());
}

TEST_F(SplitterTracking, ClickOnAPaneIsThePanes) {
    MakeTwoByTwo();
    MoveMouse(splitter.m_hWnd, {40, 40});
    PressMouse();
    EXPECT_FALSE(splitter.IsTracking());
    EXPECT_NE(::GetCapture(), splitter.m_hWnd);
    ReleaseMouse();
}

TEST_F(SplitterTracking, PointsFarAwayAreNoDanger) {
    MakeTwoByTwo();
    for (const int place : {-2147483647 - 1, 2147483647}) {
        splitter.TrackColumnSize(place, 0);
        splitter.TrackRowSize(place, 0);
        splitter.RecalcLayout();
        EXPECT_EQ(splitter.Widths()[0] + splitter.Widths()[1], 393);
    }
    const Sizes widths = splitter.Widths();
    for (const int index : {-1, 1, 2, 1000}) {
        splitter.TrackColumnSize(50, index);
        splitter.TrackRowSize(50, index);
        splitter.RecalcLayout();
    }
    EXPECT_EQ(splitter.Widths(), widths) << "no bar, no change";
}

// ---------------------------------------------------------------- the tracker bar

TEST_F(SplitterTracking, TrackerShowsInvertedWhereTheBarWillBe) {
    MakeTwoByTwo();
    const Picture before = Shown();
    Hold({103, 40}, {203, 40});
    const Picture during = PictureOfClient(parent);
    // Every other pixel of the bar, over panes and bars alike.
    const int parity = during.At(200, 0) == before.At(200, 0) ? 1 : 0;
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x) {
            const bool inverted = x >= 200 && x < 207 && (x + y) % 2 == parity;
            ASSERT_EQ(during.At(x, y), before.At(x, y) ^ (inverted ? 0xFFFFFFu : 0u)) << x << " " << y;
        }
    EXPECT_EQ(splitter.Widths(), (Sizes{100, 293})) << "the panes stay until the end";
    PressKey(VK_ESCAPE);
    ReleaseKey(VK_ESCAPE);
    EXPECT_EQ(Shown(), before);
    ReleaseMouse();
}

TEST_F(SplitterTracking, TrackerLeavesNothingBehind) {
    MakeTwoByTwo();
    const Picture before = Shown();
    Hold({103, 83}, {203, 150});
    for (int i = 0; i < 4; ++i) MoveMouse(splitter.m_hWnd, {60 + 70 * i, 20 + 60 * i});
    // A pane is painted anew below the tracker.
    ::InvalidateRect(splitter.Pane(0, 0), nullptr, TRUE);
    ::InvalidateRect(splitter.Pane(1, 1), nullptr, TRUE);
    Settle();
    MoveMouse(splitter.m_hWnd, {103, 83});
    ReleaseMouse();
    EXPECT_EQ(Shown(), before);
    EXPECT_EQ(splitter.inverted.size() % 2, 0u) << "each is taken away again";
}

TEST_F(SplitterTracking, PointerOutsideTakesTheTrackerToTheEdgeOnly) {
    MakeTwoByTwo();
    Hold({103, 40}, {-50, 40});
    EXPECT_TRUE(splitter.inverted.back() == CRect(0, 0, 7, 300));
    MoveMouse(splitter.m_hWnd, {450, 40});
    EXPECT_TRUE(splitter.inverted.back() == CRect(393, 0, 400, 300));
    ReleaseMouse();
    EXPECT_EQ(splitter.Widths(), (Sizes{393, 0}));
}

// ---------------------------------------------------------------- giving up

class SplitterGivingUp : public SplitterTracking {
protected:
    void ExpectNothingDone(const Picture& before) {
        EXPECT_FALSE(splitter.IsTracking());
        EXPECT_NE(::GetCapture(), splitter.m_hWnd);
        EXPECT_EQ(splitter.Widths(), (Sizes{100, 293}));
        EXPECT_EQ(splitter.inverted.size() % 2, 0u);
        EXPECT_EQ(Shown(), before);
        ReleaseMouse();
        EXPECT_EQ(splitter.Widths(), (Sizes{100, 293})) << "nor at the release";
    }
};

TEST_F(SplitterGivingUp, EscapeEndsTrackingAndGivesTheFocusBack) {
    MakeTwoByTwo();
    ASSERT_TRUE(BringToFront(parent));
    ::SetFocus(splitter.Pane(1, 1));
    const Picture before = Shown();
    Hold({103, 40}, {203, 40});
    EXPECT_EQ(::GetFocus(), splitter.m_hWnd);
    PressKey(VK_ESCAPE);
    ReleaseKey(VK_ESCAPE);
    EXPECT_EQ(::GetFocus(), splitter.Pane(1, 1));
    ExpectNothingDone(before);
}

TEST_F(SplitterGivingUp, LossOfTheCaptureEndsTracking) {
    MakeTwoByTwo();
    const Picture before = Shown();
    Hold({103, 40}, {203, 40});
    ::SetCapture(parent);
    EXPECT_FALSE(splitter.IsTracking());
    ::ReleaseCapture();
    ExpectNothingDone(before);
}

TEST_F(SplitterGivingUp, LossOfTheFocusEndsTracking) {
    MakeTwoByTwo();
    const Picture before = Shown();
    Hold({103, 40}, {203, 40});
    ::SetFocus(splitter.Pane(0, 1));
    EXPECT_EQ(::GetFocus(), splitter.Pane(0, 1)) << "and who took it has it";
    ExpectNothingDone(before);
}

TEST_F(SplitterGivingUp, CancelModeEndsTracking) {
    MakeTwoByTwo();
    const Picture before = Shown();
    Hold({103, 40}, {203, 40});
    ::SendMessageA(splitter.m_hWnd, WM_CANCELMODE, 0, 0);
    ExpectNothingDone(before);
}

TEST_F(SplitterGivingUp, NewSizeEndsTracking) {
    MakeTwoByTwo();
    Hold({103, 40}, {203, 40});
    ::MoveWindow(splitter.m_hWnd, 0, 0, 300, 300, TRUE);
    EXPECT_FALSE(splitter.IsTracking());
    EXPECT_EQ(splitter.Widths(), (Sizes{100, 193}));
    ReleaseMouse();
}

TEST_F(SplitterGivingUp, EndOfTheWindowEndsTracking) {
    MakeTwoByTwo();
    Hold({103, 40}, {203, 40});
    splitter.DestroyWindow();
    EXPECT_FALSE(splitter.IsTracking());
    EXPECT_EQ(::GetCapture(), nullptr);
    ReleaseMouse();
}

TEST_F(SplitterGivingUp, EndOfTheObjectEndsTracking) {
    TestSplitter* made = new TestSplitter;
    ASSERT_TRUE(made->CreateStatic(parent, 1, 2));
    ::MoveWindow(made->m_hWnd, 0, 0, 400, 300, TRUE);
    made->SetColumnInfo(0, 100, 10);
    made->MakeAllPanes();
    Settle();
    const HWND window = made->m_hWnd;
    MoveMouse(window, {103, 40});
    PressMouse();
    ASSERT_TRUE(made->IsTracking());
    delete made;
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(::GetCapture(), nullptr);
    ReleaseMouse();
}

// ---------------------------------------------------------------- double clicks and keys

TEST_F(SplitterTracking, DoubleClickSplitsADynamicSplitterAndTakesItBack) {
    MakeDynamic(2, 2);
    DoubleClickMouse(splitter.m_hWnd, {3, 150});
    ASSERT_EQ(splitter.GetColumnCount(), 2);
    EXPECT_EQ(splitter.Widths(), (Sizes{196, 197}));
    HWND first = splitter.Pane(0, 0);
    PumpMessages(::GetDoubleClickTime() + 50);
    DoubleClickMouse(splitter.m_hWnd, splitter.MiddleOf({-1, 0}));
    EXPECT_EQ(splitter.GetColumnCount(), 1);
    EXPECT_EQ(splitter.Pane(0, 0), first);
    PumpMessages(::GetDoubleClickTime() + 50);
    DoubleClickMouse(splitter.m_hWnd, {3, 3});
    EXPECT_EQ(splitter.GetRowCount(), 2);
    EXPECT_EQ(splitter.GetColumnCount(), 2);
    EXPECT_EQ(splitter.Heights(), (Sizes{146, 147}));
}

TEST_F(SplitterTracking, DoubleClickOnAStaticBarChangesNothing) {
    MakeTwoByTwo();
    DoubleClickMouse(splitter.m_hWnd, {103, 40});
    EXPECT_EQ(splitter.Widths(), (Sizes{100, 293}));
    EXPECT_FALSE(splitter.IsTracking());
}

TEST_F(SplitterTracking, KeysMoveTheBars) {
    MakeTwoByTwo();
    ASSERT_TRUE(BringToFront(parent));
    ::SetFocus(splitter.Pane(0, 1));
    ASSERT_TRUE(splitter.DoKeyboardSplit());
    EXPECT_FALSE(splitter.DoKeyboardSplit()) << "it is going on";
    const auto type = [](WORD key) {
        PressKey(key);
        ReleaseKey(key);
    };
    EXPECT_EQ(::SendMessageA(splitter.m_hWnd, WM_GETDLGCODE, 0, 0), DLGC_WANTALLKEYS);
    type(VK_RIGHT);
    type(VK_RIGHT);
    type(VK_LEFT);
    type(VK_DOWN);
    PressKey(VK_CONTROL);
    type(VK_UP);
    type(VK_RIGHT);
    ReleaseKey(VK_CONTROL);
    type('X');
    EXPECT_TRUE(splitter.IsTracking());
    type(VK_RETURN);
    EXPECT_EQ(splitter.Widths(), (Sizes{109, 284}));
    EXPECT_EQ(splitter.Heights(), (Sizes{87, 206}));
    EXPECT_EQ(::GetFocus(), splitter.Pane(0, 1));
    EXPECT_EQ(::SendMessageA(splitter.m_hWnd, WM_GETDLGCODE, 0, 0), 0);
    type(VK_RIGHT);
    EXPECT_EQ(splitter.Widths(), (Sizes{109, 284}));
}

TEST_F(SplitterTracking, KeysSplitADynamicSplitter) {
    MakeDynamic(1, 2);
    ASSERT_TRUE(BringToFront(parent));
    ASSERT_TRUE(splitter.DoKeyboardSplit());
    for (int i = 0; i < 5; ++i) {
        PressKey(VK_RIGHT);
        ReleaseKey(VK_RIGHT);
    }
    PressKey(VK_RETURN);
    ReleaseKey(VK_RETURN);
    EXPECT_EQ(splitter.Widths(), (Sizes{40, 353}));
}

TEST_F(SplitterTracking, WithoutABarThereIsNothingToTrack) {
    MakeStatic(1, 1);
    EXPECT_FALSE(splitter.DoKeyboardSplit());
    EXPECT_FALSE(splitter.IsTracking());
}

TEST_F(SplitterTracking, LeavesNoObjects) {
    MakeTwoByTwo();
    const auto round = [this] {
        Drag({103, 40}, {203, 40});
        Drag({203, 40}, {103, 40});
    };
    round();
    const long gdi = GdiObjectCount();
    const int user = CountUserObjects();
    for (int i = 0; i < 3; ++i) round();
    EXPECT_LE(GdiObjectCount(), gdi + 1);
    EXPECT_EQ(CountUserObjects(), user);
}

}  // namespace
}  // namespace tavix_test
