// Mouse, keyboard and scrolling of list boxes, by messages.
#include "controls/list_box_fixture.h"

namespace tavix_test {
namespace {

class ListBoxInput : public ListBoxTest {
protected:
    static int BarWidth() { return ::GetSystemMetrics(SM_CXVSCROLL); }
};
INSTANTIATE_TEST_SUITE_P(Worlds, ListBoxInput, kControlWorlds, NameOfWorld);

// ---------------------------------------------------------------- presses

TEST_P(ListBoxInput, PressSelectsAndTheReleaseTells) {
    MakeFocused(0, 5);
    Press(RowPoint(2));
    EXPECT_EQ(Current(), 2);
    EXPECT_EQ(Told(), Codes{});
    LetGo(RowPoint(2));
    EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
    Press(RowPoint(7));
    EXPECT_EQ(Current(), 2) << "below the last item";
}

TEST_P(ListBoxInput, AnyReleaseTellsTheParent) {
    MakeFocused(WS_VSCROLL, 20);
    for (POINT at : {RowPoint(0), POINT{195, 40}, POINT{-50, 300}}) {
        EXPECT_EQ(Send(WM_LBUTTONUP, 0, Packed(at)), 0);
        EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
    }
}

TEST_P(ListBoxInput, PressTakesTheFocusUnlessItIsOutside) {
    MakeList(0, 2);
    BringToFront(Parent());
    ::SetFocus(Parent());
    Told();
    Press({-1, 5});
    EXPECT_EQ(::GetFocus(), Parent().Handle());
    Press(RowPoint(5));
    EXPECT_EQ(::GetFocus(), list);
    EXPECT_EQ(Told(), Codes{LBN_SETFOCUS});
    Press(RowPoint(1));
    EXPECT_EQ(Told(), Codes{});
}

TEST_P(ListBoxInput, PressWithAModifierDoesNothingToASingleSelection) {
    MakeFocused(0, 5);
    Select(1);
    Press(RowPoint(3), MK_SHIFT);
    Press(RowPoint(3), MK_CONTROL);
    EXPECT_EQ(Current(), 1);
}

TEST_P(ListBoxInput, PressRedrawsTwoRowsWithoutAPainting) {
    MakeFocused(0, 5);
    Select(1);
    RepaintedClient(list);
    Press(RowPoint(3));
    EXPECT_TRUE(Invalid().IsRectEmpty());
    EXPECT_EQ(PictureOfClient(list).At(190, 3 * kItemHeight + 2), skin.Colour(CLR_HIGHLIGHT));
    EXPECT_EQ(PictureOfClient(list).At(190, 1 * kItemHeight + 2), RGB(255, 255, 255));
}

TEST_P(ListBoxInput, PressOfAMultipleSelectionLeavesOneMark) {
    MakeFocused(LBS_EXTENDEDSEL, 8);
    Mark({0, 4, 6});
    Press(RowPoint(2));
    EXPECT_EQ(Marked(), std::vector{2});
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(Told(), Codes{});
}

TEST_P(ListBoxInput, ModifiersToggleAMark) {
    MakeFocused(LBS_MULTIPLESEL, 8);
    Mark({1});
    for (WPARAM key : {MK_SHIFT, MK_CONTROL, MK_SHIFT | MK_CONTROL}) {
        Press(RowPoint(5), key);
        EXPECT_EQ(Marked(), (std::vector{1, 5})) << "no range";
        Press(RowPoint(5), key);
        EXPECT_EQ(Marked(), std::vector{1});
    }
}

TEST_P(ListBoxInput, DraggingAddsMarks) {
    MakeFocused(LBS_MULTIPLESEL, 8);
    Mark({1});
    EXPECT_EQ(Send(WM_MOUSEMOVE, MK_LBUTTON, Packed(RowPoint(3))), 0);
    Send(WM_MOUSEMOVE, MK_LBUTTON, Packed(RowPoint(4)));
    Send(WM_MOUSEMOVE, MK_LBUTTON, Packed(RowPoint(3)));
    EXPECT_EQ(Marked(), (std::vector{1, 3, 4}));
    Send(WM_MOUSEMOVE, 0, Packed(RowPoint(6)));
    EXPECT_EQ(Marked(), (std::vector{1, 3, 4}));
    EXPECT_EQ(Told(), Codes{});
}

TEST_P(ListBoxInput, DraggingMovesNoSingleSelection) {
    MakeFocused(0, 8);
    Select(1);
    Send(WM_MOUSEMOVE, MK_LBUTTON, Packed(RowPoint(3)));
    EXPECT_EQ(Current(), 1);
}

TEST_P(ListBoxInput, MovingOutsideReleasesTheMouse) {
    MakeFocused(WS_VSCROLL, 20);
    ::SetCapture(Parent());
    Send(WM_MOUSEMOVE, 0, Packed(RowPoint(3)));
    EXPECT_EQ(::GetCapture(), Parent().Handle());
    Send(WM_MOUSEMOVE, 0, Packed({-1, 5}));
    EXPECT_EQ(::GetCapture(), nullptr);
    ::SetCapture(Parent());
    Send(WM_MOUSEMOVE, 0, Packed({199, 5}));
    EXPECT_EQ(::GetCapture(), nullptr) << "over the bar's strip";
}

TEST_P(ListBoxInput, MovingBelowTheItemsKeepsTheMouse) {
    MakeFocused(0, 2);
    ::SetCapture(Parent());
    Send(WM_MOUSEMOVE, 0, Packed(RowPoint(5)));
    EXPECT_EQ(::GetCapture(), Parent().Handle());
}

TEST_P(ListBoxInput, PressOnTheBarsStripGoesToTheBar) {
    MakeFocused(WS_VSCROLL, 20);
    MessageSpy spy(Bar());
    spy.log.Listen({WM_LBUTTONDOWN});
    spy.handler = [](const Received& received) -> std::optional<LRESULT> {
        return received.message == WM_LBUTTONDOWN ? std::optional<LRESULT>(0) : std::nullopt;
    };
    Press({200 - BarWidth(), 40});
    ASSERT_EQ(spy.log.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(spy.log.Entries()[0].wParam, WPARAM{MK_LBUTTON});
    EXPECT_EQ(spy.log.Entries()[0].lParam, MAKELPARAM(200 - BarWidth(), 40));
    // The strip is the bar's even while that is hidden.
    ::ShowWindow(Bar(), SW_HIDE);
    Press({199, 40});
    EXPECT_EQ(spy.log.Count(WM_LBUTTONDOWN), 2);
    EXPECT_EQ(Current(), -1);
}

TEST_P(ListBoxInput, DoubleClickOnAnItemTellsTheParent) {
    ClassSpy spy("ListBox");
    MakeFocused(0, 3);
    EXPECT_EQ(Send(WM_LBUTTONDBLCLK, MK_LBUTTON, Packed(RowPoint(1))), 0);
    EXPECT_EQ(Told(), Codes{LBN_DBLCLK});
    EXPECT_TRUE(spy.log.Has(WM_LBUTTONDBLCLK));
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, Packed(RowPoint(5)));
    EXPECT_EQ(Told(), Codes{});
    EXPECT_EQ(Current(), -1) << "a double click selects nothing";
    ::DestroyWindow(list);
}

// Of three columns' items those of a scrolled list's further columns could be hit; WS_HSCROLL leaves one.
TEST_P(ListBoxInput, HorizontalBarAskedForLeavesOneColumnToHit) {
    for (const bool asked : {false, true}) {
        MakeList(LBS_MULTICOLUMN | LBS_MULTIPLESEL | (asked ? WS_HSCROLL : 0), 40, {400, 96});
        SetTop(10);
        // Item 10 is of the second eight, so that it answers in the second column.
        Press({10, 6});
        Press({310, 6});
        EXPECT_EQ(Marked(), std::vector<int>{});
        Press({200, 6});
        EXPECT_EQ(Marked(), asked ? std::vector<int>{} : std::vector{10});
        ::DestroyWindow(list);
    }
}

// ---------------------------------------------------------------- scrolling

TEST_P(ListBoxInput, ScrollCodesMoveTopItemAndBar) {
    struct Row {
        int from;
        int code;
        int position;
        int top;
        int pos;  // the bar starts where the list does
    };
    // 20 items in 8 rows: the last page begins at 12.
    for (const Row& row :
         {Row{5, SB_LINEUP, 0, 4, 4}, Row{0, SB_LINEUP, 0, 0, 0}, Row{5, SB_LINEDOWN, 0, 6, 6},
          Row{12, SB_LINEDOWN, 0, 12, 12}, Row{10, SB_PAGEUP, 0, 2, 2}, Row{5, SB_PAGEUP, 0, 0, 0},
          Row{2, SB_PAGEDOWN, 0, 10, 10}, Row{9, SB_PAGEDOWN, 0, 12, 12}, Row{3, SB_THUMBPOSITION, 7, 7, 7},
          Row{3, SB_THUMBTRACK, 8, 8, 8}, Row{3, SB_BOTTOM, 0, 11, 12}, Row{12, SB_BOTTOM, 0, 12, 12},
          Row{3, SB_TOP, 0, 3, 3}, Row{3, SB_ENDSCROLL, 0, 3, 3}}) {
        MakeList(WS_VSCROLL, 20);
        Scroll(SB_THUMBPOSITION, row.from);
        ::UpdateWindow(list);
        Validate();
        ASSERT_EQ(Pos(), row.from);
        EXPECT_EQ(Send(WM_VSCROLL, MAKEWPARAM(row.code, row.position), 0), 0);
        EXPECT_EQ(Top(), row.top) << row.code << " from " << row.from;
        EXPECT_EQ(Pos(), row.pos) << row.code << " from " << row.from;
        EXPECT_EQ(Told(), Codes{});
        ::DestroyWindow(list);
    }
}

TEST_P(ListBoxInput, ScrollingInvalidatesTheRowsOnly) {
    MakeList(WS_VSCROLL, 20);
    RepaintedClient(list);
    Scroll(SB_LINEDOWN);
    EXPECT_EQ(Invalid(), CRect(0, 0, 200 - BarWidth(), 96));
    Validate();
    Scroll(SB_TOP);
    EXPECT_TRUE(Invalid().IsRectEmpty());
}

TEST_P(ListBoxInput, ListWithoutABarDoesNotScroll) {
    MakeList(0, 20);
    for (int code : {SB_LINEDOWN, SB_PAGEDOWN, SB_BOTTOM, SB_THUMBPOSITION}) Scroll(code, 4);
    Send(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(Top(), 0);
}

TEST_P(ListBoxInput, WheelMovesALineANotch) {
    MakeList(WS_VSCROLL, 20);
    const auto wheel = [&](int delta) {
        return Send(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
    };
    EXPECT_EQ(wheel(-120), 0);
    EXPECT_EQ(Top(), 1);
    wheel(-1200);
    EXPECT_EQ(Top(), 2);
    wheel(1);
    EXPECT_EQ(Top(), 1);
    wheel(0);
    EXPECT_EQ(Top(), 0);
    ::ShowWindow(Bar(), SW_HIDE);
    wheel(-120);
    EXPECT_EQ(Top(), 0) << "needs a bar that shows";
}

// ---------------------------------------------------------------- keys

TEST_P(ListBoxInput, KeysOfPagesAndEndsAreTakenAndDoNothing) {
    ClassSpy spy("ListBox");
    MakeList(WS_VSCROLL, 20);
    Select(3);
    spy.log.Listen({WM_KEYDOWN});
    for (WORD key : {VK_PRIOR, VK_NEXT, VK_END, VK_HOME}) Key(key);
    EXPECT_EQ(Current(), 3);
    EXPECT_EQ(Top(), 0);
    EXPECT_EQ(Told(), Codes{});
    EXPECT_FALSE(spy.log.Has(WM_KEYDOWN));
    for (WORD key : {VK_SHIFT, VK_CONTROL, VK_RETURN, VK_F8, VK_SELECT}) Key(key);
    EXPECT_EQ(spy.log.Count(WM_KEYDOWN), 5) << "these go on";
    ::DestroyWindow(list);
}

TEST_P(ListBoxInput, DownMovesAndScrollsAtTheEnd) {
    MakeList(WS_VSCROLL, 20);
    Key(VK_DOWN);
    EXPECT_EQ(Current(), 0);
    for (int i = 1; i < 8; ++i) Key(VK_DOWN);
    EXPECT_EQ(Current(), 7);
    EXPECT_EQ(Top(), 0);
    Key(VK_DOWN);
    EXPECT_EQ(Current(), 8);
    EXPECT_EQ(Top(), 1);
    EXPECT_EQ(Pos(), 1);
    EXPECT_EQ(Told(), Codes(9, LBN_SELCHANGE));
}

TEST_P(ListBoxInput, DownOnTheLastItemStaysAndTells) {
    MakeList(0, 3);
    Select(2);
    Key(VK_DOWN);
    EXPECT_EQ(Current(), 2);
    EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
}

TEST_P(ListBoxInput, DownInvalidatesAll) {
    MakeList(0, 3);
    Validate();
    Key(VK_DOWN);
    EXPECT_EQ(Invalid(), CRect(0, 0, 200, 96));
}

TEST_P(ListBoxInput, UpMovesAndScrollsAtTheTop) {
    MakeList(WS_VSCROLL, 20);
    Scroll(SB_THUMBPOSITION, 5);
    Select(6);
    Key(VK_UP);
    EXPECT_EQ(Current(), 5);
    EXPECT_EQ(Top(), 5);
    Key(VK_UP);
    EXPECT_EQ(Current(), 4);
    EXPECT_EQ(Top(), 4);
    EXPECT_EQ(Pos(), 4);
    EXPECT_EQ(Told(), (Codes{LBN_SELCHANGE, LBN_SELCHANGE}));
}

TEST_P(ListBoxInput, UpOnTheFirstItemStaysAndTells) {
    MakeList(0, 3);
    Select(0);
    Key(VK_UP);
    EXPECT_EQ(Current(), 0);
    EXPECT_EQ(Top(), 0);
    EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
}

TEST_P(ListBoxInput, LeftAndRightNeedColumns) {
    MakeList(WS_VSCROLL, 40);
    Select(9);
    SetTop(2);
    Key(VK_LEFT);
    Key(VK_RIGHT);
    EXPECT_EQ(Current(), 9);
    EXPECT_EQ(Top(), 2);
    EXPECT_EQ(Told(), (Codes{LBN_SELCHANGE, LBN_SELCHANGE}));
}

TEST_P(ListBoxInput, KeysOfColumnsMoveByARowfulOfItems) {
    // The current item of such a list can't be asked for; the top item tells what the keys did.
    MakeList(LBS_MULTICOLUMN, 40, {340, 96});
    Select(3);
    Validate();
    Key(VK_RIGHT);
    EXPECT_EQ(Top(), 8);
    EXPECT_EQ(Invalid(), CRect(0, 0, 340, 96));
    Key(VK_RIGHT);
    EXPECT_EQ(Top(), 16);
    Key(VK_LEFT);
    EXPECT_EQ(Top(), 8);
    Key(VK_LEFT);
    EXPECT_EQ(Top(), 0);
    Key(VK_LEFT);
    EXPECT_EQ(Top(), 0) << "the current item is in the first rows";
    for (int i = 0; i < 6; ++i) Key(VK_RIGHT);
    EXPECT_EQ(Top(), 32);
    Key(VK_UP);
    EXPECT_EQ(Top(), 32) << "only the current item moved";
    Select(32);
    Key(VK_UP);
    EXPECT_EQ(Top(), 24);
    // A column's last item still counts as shown going down.
    Select(31);
    Key(VK_DOWN);
    EXPECT_EQ(Top(), 24);
    Key(VK_DOWN);
    EXPECT_EQ(Top(), 32);
}

TEST_P(ListBoxInput, MultipleSelectionOnlyTellsOfKeys) {
    MakeList(LBS_MULTIPLESEL, 20);
    Mark({4});
    for (WORD key : {VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN}) Key(key);
    EXPECT_EQ(Marked(), std::vector{4});
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(Told(), Codes(4, LBN_SELCHANGE));
}

}  // namespace
}  // namespace tavix_test
