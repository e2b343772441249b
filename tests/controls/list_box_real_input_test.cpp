// List boxes under the real mouse, wheel and keyboard, and all that the parent hears of it.
#include "controls/list_box_fixture.h"
#include "scroll/skin_scroll_bar.h"

namespace tavix_test {
namespace {

class ListBoxRealInput : public ListBoxTest {
protected:
    /* A list for real input on a parent that has the keyboard, and that records the releases it gets. */
    void MakeInFront(DWORD listStyle, int count) {
        MakeList(listStyle, count);
        ASSERT_TRUE(BringToFront(Parent()));
        ::SetFocus(Parent());
        Parent().log.Listen({WM_COMMAND, WM_LBUTTONUP});
        Parent().log.Clear();
    }
    void ClickWith(WORD key, POINT at) {
        // In this order: some window systems forget, while the pointer moves, that a key is down.
        MoveMouse(list, at);
        PressKey(key);
        PressMouse();
        ReleaseMouse();
        ReleaseKey(key);
    }
    /* Takes the mouse to the middle of a row, with its button as it is. */
    void MoveToRow(int row) { MoveMouse(list, RowPoint(row)); }
    CPoint MiddleOfThumb() {
        const auto* bar = static_cast<CSkinScrollBar*>(CWnd::FromHandlePermanent(Bar()));
        const CRect thumb = bar->Rects().thumb;
        return {(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2};
    }
};
INSTANTIATE_TEST_SUITE_P(Worlds, ListBoxRealInput, kControlWorlds, NameOfWorld);

TEST_P(ListBoxRealInput, ClicksAndKeysTellTheParentInThisOrder) {
    MakeInFront(WS_VSCROLL, 20);
    ClickMouse(list, RowPoint(2));
    EXPECT_TRUE(PumpUntil([&] { return Current() == 2; }));
    PressKey(VK_DOWN);
    ReleaseKey(VK_DOWN);
    PressKey(VK_HOME);
    ReleaseKey(VK_HOME);
    PressKey(VK_UP);
    ReleaseKey(VK_UP);
    EXPECT_TRUE(PumpUntil([&] { return Parent().log.Count(WM_COMMAND) >= 4; }));
    ::SetFocus(Parent());
    EXPECT_EQ(Current(), 2);
    EXPECT_EQ(Told(), (Codes{LBN_SETFOCUS, LBN_SELCHANGE, LBN_SELCHANGE, LBN_SELCHANGE, LBN_KILLFOCUS}));
    ParkMouse();
}

TEST_P(ListBoxRealInput, DoubleClickTellsReleaseDoubleClickRelease) {
    MakeFocused(0, 5);
    DoubleClickMouse(list, RowPoint(1));
    EXPECT_TRUE(PumpUntil([&] { return Parent().log.Count(WM_COMMAND) >= 3; }));
    EXPECT_EQ(Told(), (Codes{LBN_SELCHANGE, LBN_DBLCLK, LBN_SELCHANGE}));
    EXPECT_EQ(Current(), 1);
    ParkMouse();
}

TEST_P(ListBoxRealInput, PressOfTheBarsArrowScrolls) {
    MakeFocused(WS_VSCROLL, 20);
    RECT bar;
    ::GetClientRect(Bar(), &bar);
    ClickMouse(Bar(), {bar.right / 2, bar.bottom - 5});
    EXPECT_TRUE(PumpUntil([&] { return Top() == 1; }));
    EXPECT_EQ(Pos(), 1);
    EXPECT_EQ(Told(), Codes{});
    EXPECT_EQ(::GetFocus(), list);
    ParkMouse();
}

TEST_P(ListBoxRealInput, WheelMovesALineATurn) {
    MakeFocused(WS_VSCROLL, 20);
    MoveToRow(2);
    TurnWheel(-WHEEL_DELTA);
    EXPECT_EQ(Top(), 1);
    TurnWheel(-3 * WHEEL_DELTA);
    EXPECT_EQ(Top(), 2);
    EXPECT_EQ(Pos(), 2);
    TurnWheel(WHEEL_DELTA);
    EXPECT_EQ(Top(), 1);
    EXPECT_EQ(Told(), Codes{});
    ParkMouse();
}

TEST_P(ListBoxRealInput, ClicksWithModifiersToggleMarks) {
    MakeInFront(LBS_EXTENDEDSEL, 8);
    ClickMouse(list, RowPoint(1));
    EXPECT_EQ(Marked(), std::vector{1});
    ClickWith(VK_CONTROL, RowPoint(4));
    EXPECT_EQ(Marked(), (std::vector{1, 4}));
    ClickWith(VK_SHIFT, RowPoint(6));
    EXPECT_EQ(Marked(), (std::vector{1, 4, 6}));
    ClickWith(VK_CONTROL, RowPoint(1));
    EXPECT_EQ(Marked(), (std::vector{4, 6}));
    ClickMouse(list, RowPoint(2));
    EXPECT_EQ(Marked(), std::vector{2});
    ClickMouse(Parent(), {350, 250});
    ::SetFocus(Parent());
    EXPECT_EQ(Told(), (Codes{LBN_SETFOCUS, LBN_SELCHANGE, LBN_SELCHANGE, LBN_SELCHANGE, LBN_SELCHANGE,
                             LBN_SELCHANGE, LBN_KILLFOCUS}));
    ParkMouse();
}

TEST_P(ListBoxRealInput, DragMarksTheRowsItComesOver) {
    MakeInFront(LBS_MULTIPLESEL, 8);
    MoveToRow(1);
    PressMouse();
    for (int row : {3, 4, 3}) MoveToRow(row);
    EXPECT_EQ(Marked(), (std::vector{1, 3, 4}));
    EXPECT_EQ(Told(), Codes{LBN_SETFOCUS}) << "the change of selection is told at the release";
    ReleaseMouse();
    EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
    MoveToRow(6);
    EXPECT_EQ(Marked(), (std::vector{1, 3, 4}));
    ParkMouse();
}

// The mouse is not held: what happens beside the list is its parent's.
TEST_P(ListBoxRealInput, DragThatLeavesTheListIsToldToNobodyByIt) {
    for (const DWORD style : {DWORD{0}, DWORD{LBS_MULTIPLESEL}}) {
        MakeInFront(style, 8);
        const auto selected = [&] { return style ? Marked() : std::vector{Current()}; };
        MoveToRow(2);
        PressMouse();
        EXPECT_EQ(::GetCapture(), nullptr);
        MoveMouse(Parent(), {350, 250});
        EXPECT_EQ(selected(), std::vector{2});
        ReleaseMouse();
        EXPECT_EQ(Parent().log.Count(WM_LBUTTONUP), 1);
        EXPECT_EQ(Told(), Codes{LBN_SETFOCUS});
        // Back with the button down, it goes on; the release is told again.
        PressMouse();
        MoveToRow(5);
        EXPECT_EQ(selected(), style ? (std::vector{2, 5}) : std::vector{2});
        ReleaseMouse();
        EXPECT_EQ(Parent().log.Count(WM_LBUTTONUP), 0);
        EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
        ::DestroyWindow(list);
    }
    ParkMouse();
}

TEST_P(ListBoxRealInput, DragOfTheThumbScrollsAndTellsNothing) {
    MakeInFront(WS_VSCROLL, 20);
    const CPoint start = MiddleOfThumb();
    const auto dragDownBy = [&](int by) { MoveMouse(Bar(), {start.x, start.y + by}); };
    dragDownBy(0);
    PressMouse();
    EXPECT_EQ(::GetCapture(), Bar());
    dragDownBy(12);
    const int between = Top();
    EXPECT_GT(between, 0);
    EXPECT_LT(between, 12);
    dragDownBy(500);
    EXPECT_EQ(Top(), 12) << "the last page";
    dragDownBy(12);
    EXPECT_EQ(Top(), between);
    ReleaseMouse();
    EXPECT_EQ(Top(), between);
    EXPECT_EQ(Pos(), between);
    EXPECT_EQ(::GetCapture(), nullptr);
    EXPECT_EQ(::GetFocus(), list);
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(Told(), Codes{LBN_SETFOCUS});
    ParkMouse();
}

}  // namespace
}  // namespace tavix_test
