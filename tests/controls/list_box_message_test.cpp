// The messages by which programs fill, ask and select in list boxes.
#include "controls/list_box_fixture.h"

namespace tavix_test {
namespace {

class ListBoxMessage : public ListBoxTest {};
INSTANTIATE_TEST_SUITE_P(Worlds, ListBoxMessage, kControlWorlds, NameOfWorld);

const std::vector<int> kNone{};

// ---------------------------------------------------------------- the current item

TEST_P(ListBoxMessage, NewListHasNothingSelected) {
    MakeList(0, 5);
    EXPECT_EQ(Current(), LB_ERR);
    EXPECT_EQ(Top(), 0);
}

TEST_P(ListBoxMessage, SettingTheCurrentItemTellsTheParent) {
    MakeList(0, 5);
    EXPECT_EQ(Send(LB_SETCURSEL, 3), 1);
    EXPECT_EQ(Current(), 3);
    EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
    // Each time, whether it changes anything or not.
    EXPECT_EQ(Send(LB_SETCURSEL, 3), 1);
    EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
    EXPECT_EQ(Send(LB_SETCURSEL, static_cast<WPARAM>(-1)), 1);
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
}

TEST_P(ListBoxMessage, CurrentItemBeyondTheEndIsRefused) {
    MakeList(0, 5);
    Select(2);
    EXPECT_EQ(Send(LB_SETCURSEL, 5), LB_ERR);
    EXPECT_EQ(Send(LB_SETCURSEL, 0x7FFF'FFFF), LB_ERR);
    EXPECT_EQ(Current(), 2);
    EXPECT_EQ(Told(), Codes{});
}

TEST_P(ListBoxMessage, MultipleSelectionHasNoCurrentItemToSet) {
    for (DWORD style : {LBS_MULTIPLESEL, LBS_EXTENDEDSEL}) {
        MakeList(style, 5);
        EXPECT_EQ(Send(LB_SETCURSEL, 1), LB_ERR);
        EXPECT_EQ(Told(), Codes{});
        EXPECT_EQ(Current(), -1);
        ::DestroyWindow(list);
    }
}

TEST_P(ListBoxMessage, NativeControlHearsOfNoSelection) {
    ClassSpy spy("ListBox");
    MakeList(0, 5);
    spy.log.Clear();
    Select(3);
    EXPECT_EQ(Current(), 3);
    EXPECT_FALSE(spy.log.Has(LB_SETCURSEL));
    EXPECT_FALSE(spy.log.Has(LB_GETCURSEL));
    // So that what is not emulated answers for an empty selection.
    EXPECT_EQ(Send(LB_GETSEL, 3), 0);
    ::DestroyWindow(list);
}

TEST_P(ListBoxMessage, ColumnsAnswerWithTheNativeSelection) {
    MakeList(LBS_MULTICOLUMN, 5);
    Select(3);
    EXPECT_EQ(Current(), LB_ERR);
}

// ---------------------------------------------------------------- the top item

TEST_P(ListBoxMessage, TopItemIsSetWithinTheItems) {
    MakeList(WS_VSCROLL, 20);
    EXPECT_EQ(Send(LB_SETTOPINDEX, 4), 0);
    EXPECT_EQ(Top(), 4);
    EXPECT_EQ(Send(LB_SETTOPINDEX, 4), 0);
    EXPECT_EQ(Send(LB_SETTOPINDEX, 19), 0);
    EXPECT_EQ(Top(), 19);
    EXPECT_EQ(Send(LB_SETTOPINDEX, 20), LB_ERR);
    EXPECT_EQ(Send(LB_SETTOPINDEX, static_cast<WPARAM>(-1)), LB_ERR);
    EXPECT_EQ(Top(), 19);
    EXPECT_EQ(Pos(), 0) << "the bar stays where it was";
}

TEST_P(ListBoxMessage, NewTopItemInvalidatesTheList) {
    MakeList(0, 20);
    Validate();
    Send(LB_SETTOPINDEX, 0);
    EXPECT_TRUE(Invalid().IsRectEmpty());
    Send(LB_SETTOPINDEX, 1);
    EXPECT_EQ(Invalid(), CRect(0, 0, 200, 96));
}

// ---------------------------------------------------------------- marks

TEST_P(ListBoxMessage, MarksAreSetOneByOne) {
    for (DWORD style : {LBS_MULTIPLESEL, LBS_EXTENDEDSEL, LBS_MULTIPLESEL | LBS_EXTENDEDSEL}) {
        MakeList(static_cast<DWORD>(style), 5);
        EXPECT_EQ(Send(LB_SETSEL, TRUE, 1), 1);
        EXPECT_EQ(Send(LB_SETSEL, 77, 4), 1);
        EXPECT_EQ(Marked(), (std::vector{1, 4}));
        EXPECT_EQ(Send(LB_SETSEL, FALSE, 1), 1);
        EXPECT_EQ(Marked(), (std::vector{4}));
        EXPECT_EQ(Send(LB_SETSEL, TRUE, 5), LB_ERR);
        EXPECT_EQ(Send(LB_SETSEL, TRUE, -1), LB_ERR);
        EXPECT_EQ(Marked(), (std::vector{4}));
        EXPECT_EQ(Told(), Codes{});
        ::DestroyWindow(list);
    }
}

TEST_P(ListBoxMessage, SingleSelectionAnswersNoMarks) {
    MakeList(0, 5);
    Select(1);
    int items[8] = {-7};
    EXPECT_EQ(Send(LB_GETSELCOUNT), LB_ERR);
    EXPECT_EQ(Send(LB_GETSELITEMS, 8, reinterpret_cast<LPARAM>(items)), LB_ERR);
    EXPECT_EQ(items[0], -7);
    EXPECT_EQ(Send(LB_SETSEL, TRUE, 1), LB_ERR);
    EXPECT_EQ(Send(LB_SELITEMRANGEEX, 0, 3), LB_ERR);
}

TEST_P(ListBoxMessage, RangeLeavesItsLastItemOut) {
    MakeList(LBS_MULTIPLESEL, 8);
    EXPECT_EQ(Send(LB_SELITEMRANGEEX, 2, 5), 1);
    EXPECT_EQ(Marked(), (std::vector{2, 3, 4}));
    EXPECT_EQ(Send(LB_SELITEMRANGEEX, 5, 2), 1);
    EXPECT_EQ(Marked(), (std::vector{2, 3, 4}));
    EXPECT_EQ(Send(LB_SELITEMRANGEEX, 6, 6), 1);
    EXPECT_EQ(Marked(), (std::vector{2, 3, 4}));
    EXPECT_EQ(Send(LB_SELITEMRANGEEX, 2, 8), LB_ERR);
    EXPECT_EQ(Send(LB_SELITEMRANGEEX, 8, 2), LB_ERR);
    EXPECT_EQ(Send(LB_SELITEMRANGEEX, static_cast<WPARAM>(-1), 2), LB_ERR);
    EXPECT_EQ(Send(LB_SELITEMRANGEEX, 1, -1), LB_ERR);
    EXPECT_EQ(Told(), Codes{});
}

TEST_P(ListBoxMessage, MarkedItemsNeverExceedTheRoomThatTheCallerNames) {
    MakeList(LBS_MULTIPLESEL, 8);
    Mark({1, 3, 5});
    int items[4] = {-7, -7, -7, -7};
    EXPECT_EQ(Send(LB_GETSELITEMS, 2, reinterpret_cast<LPARAM>(items)), 3) << "how many there are";
    EXPECT_EQ(items[0], 1);
    EXPECT_EQ(items[1], 3);
    EXPECT_EQ(items[2], -7);
    EXPECT_EQ(Send(LB_GETSELITEMS, 4, reinterpret_cast<LPARAM>(items)), 3);
    EXPECT_EQ(items[2], 5);
    EXPECT_EQ(items[3], -7);
    EXPECT_EQ(Send(LB_GETSELITEMS, 4, 0), 3);
    EXPECT_EQ(Send(LB_GETSELITEMS, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(items)), 3);
}

// ---------------------------------------------------------------- items that come and go

TEST_P(ListBoxMessage, NewItemsMoveTheCurrentOne) {
    MakeList(0, 5);
    Select(2);
    EXPECT_EQ(Insert(0, "First"), 0);
    EXPECT_EQ(Current(), 3);
    EXPECT_EQ(Insert(3, "At it"), 3);
    EXPECT_EQ(Current(), 4);
    EXPECT_EQ(Insert(5, "After it"), 5);
    EXPECT_EQ(Current(), 4);
    EXPECT_EQ(Insert(-1, "Last"), 8);
    EXPECT_EQ(Add("The end"), 9);
    EXPECT_EQ(Current(), 4);
    EXPECT_EQ(Told(), Codes{});
}

TEST_P(ListBoxMessage, SortedItemsMoveTheCurrentOneFromWhereTheyLand) {
    MakeList(LBS_SORT, 0);
    Add("M");
    Select(0);
    EXPECT_EQ(Add("A"), 0);
    EXPECT_EQ(Current(), 1);
    EXPECT_EQ(Add("Z"), 2);
    EXPECT_EQ(Current(), 1);
}

TEST_P(ListBoxMessage, NewItemsMoveTheMarks) {
    MakeList(LBS_MULTIPLESEL, 4);
    Mark({1, 2});
    Insert(2, "Between");
    EXPECT_EQ(Marked(), (std::vector{1, 3}));
    Insert(0, "First");
    EXPECT_EQ(Marked(), (std::vector{2, 4}));
}

TEST_P(ListBoxMessage, ItemThatIsRefusedChangesNothing) {
    MakeList(LBS_MULTIPLESEL, 4);
    Mark({1});
    EXPECT_EQ(Insert(9, "Beyond"), LB_ERR);
    EXPECT_EQ(Marked(), std::vector{1});
    EXPECT_EQ(Send(LB_DELETESTRING, 9), LB_ERR);
    EXPECT_EQ(Send(LB_DELETESTRING, static_cast<WPARAM>(-1)), LB_ERR);
    EXPECT_EQ(Marked(), std::vector{1});
    EXPECT_EQ(Told(), Codes{});
    EXPECT_EQ(Count(), 4);
}

TEST_P(ListBoxMessage, ItemsThatComeAndGoPaintTheFrame) {
    MakeList(0, 3);
    {
        MessageSpy spy(list);
        spy.log.Listen({WM_NCPAINT});
        Add("One more");
        EXPECT_EQ(spy.log.Count(WM_NCPAINT), 1);
        Insert(0, "One more");
        EXPECT_EQ(spy.log.Count(WM_NCPAINT), 2);
        Send(LB_DELETESTRING, 0);
        EXPECT_EQ(spy.log.Count(WM_NCPAINT), 3);
        Insert(99, "Refused");
        EXPECT_EQ(spy.log.Count(WM_NCPAINT), 4);
        Send(LB_RESETCONTENT);
        EXPECT_EQ(spy.log.Count(WM_NCPAINT), 4);
    }
}

TEST_P(ListBoxMessage, DeletingAboveTheCurrentItemLeavesItsIndex) {
    MakeList(0, 6);
    Select(2);
    EXPECT_EQ(Send(LB_DELETESTRING, 0), 5);
    EXPECT_EQ(Current(), 2);
    EXPECT_EQ(Told(), Codes{});
}

TEST_P(ListBoxMessage, DeletingMovesACurrentItemAtTheEndAndTellsTheParent) {
    MakeList(WS_VSCROLL, 20);
    SetTop(9);
    Select(18);
    // 19 are left: the current item is at the end then.
    Send(LB_DELETESTRING, 3);
    EXPECT_EQ(Current(), 18);
    EXPECT_EQ(Top(), 8);
    EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
    Send(LB_DELETESTRING, 3);
    EXPECT_EQ(Current(), 17);
    EXPECT_EQ(Top(), 7);
    EXPECT_EQ(Told(), Codes{LBN_SELCHANGE});
}

TEST_P(ListBoxMessage, DeletingTheLastItemTellsTheParentTwice) {
    MakeList(0, 1);
    EXPECT_EQ(Send(LB_DELETESTRING, 0), 0);
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(Top(), 0);
    EXPECT_EQ(Told(), (Codes{LBN_SELCHANGE, LBN_SELCHANGE}));
}

TEST_P(ListBoxMessage, ListThatFitsAgainStartsAtItsFirstItem) {
    MakeList(WS_VSCROLL, 10);
    SetTop(2);
    Send(LB_DELETESTRING, 9);
    EXPECT_EQ(Top(), 2);
    Send(LB_DELETESTRING, 8);
    EXPECT_EQ(Top(), 0);
}

TEST_P(ListBoxMessage, DeletingTakesTheLastMarkAndLeavesTheOthersInPlace) {
    MakeList(LBS_MULTIPLESEL, 5);
    Mark({1, 3, 4});
    EXPECT_EQ(Send(LB_DELETESTRING, 0), 4);
    EXPECT_EQ(Marked(), (std::vector{1, 3}));
    EXPECT_EQ(Send(LB_DELETESTRING, 1), 3);
    EXPECT_EQ(Marked(), (std::vector{1}));
}

TEST_P(ListBoxMessage, EmptyingForgetsTheCurrentItemAndKeepsTheMarks) {
    MakeList(WS_VSCROLL, 20);
    Select(4);
    SetTop(3);
    Send(LB_RESETCONTENT);
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(Top(), 0);
    EXPECT_EQ(Told(), Codes{});
    EXPECT_FALSE(BarShows());
    ::DestroyWindow(list);

    MakeList(LBS_MULTIPLESEL, 4);
    Mark({1, 2});
    Send(LB_RESETCONTENT);
    EXPECT_EQ(Send(LB_GETSELCOUNT), 2);
    for (int i = 0; i < 3; ++i) Add("New");
    // Each came in front of the old marks, or between them where it landed.
    EXPECT_EQ(Send(LB_GETSELCOUNT), 2);
}

TEST_P(ListBoxMessage, MarksOfItemsThatCameByAnotherRoadCanBeSet) {
    MakeList(LBS_MULTIPLESEL, 2);
    ASSERT_GT(Send(LB_DIR, DDL_READWRITE | DDL_DIRECTORY, reinterpret_cast<LPARAM>("c:\\windows\\*")), 2);
    const int last = Count() - 1;
    EXPECT_EQ(Send(LB_SETSEL, TRUE, last), 1);
    EXPECT_EQ(Marked(), std::vector{last});
    RepaintedClient(list);
}

// ---------------------------------------------------------------- points

TEST_P(ListBoxMessage, PointInsideHasTheFlagAndItsItem) {
    MakeList(0, 5);
    EXPECT_EQ(Send(LB_ITEMFROMPOINT, 0, Packed(RowPoint(0))), MAKELONG(0, 1));
    EXPECT_EQ(Send(LB_ITEMFROMPOINT, 0, Packed(RowPoint(4))), MAKELONG(4, 1));
    EXPECT_EQ(Send(LB_ITEMFROMPOINT, 0, Packed(RowPoint(5))), MAKELONG(0xFFFF, 1));
    EXPECT_EQ(Send(LB_ITEMFROMPOINT, 0, MAKELPARAM(-1, 5)), MAKELONG(0xFFFF, 0));
    EXPECT_EQ(Send(LB_ITEMFROMPOINT, 0, MAKELPARAM(5, 96)), MAKELONG(0xFFFF, 0));
}

TEST_P(ListBoxMessage, PointsCountFromTheTopItemAndEndAtTheBar) {
    MakeList(WS_VSCROLL, 30);
    SetTop(10);
    EXPECT_EQ(Send(LB_ITEMFROMPOINT, 0, Packed(RowPoint(2))), MAKELONG(12, 1));
    EXPECT_EQ(Send(LB_ITEMFROMPOINT, 0, Packed(RowPoint(2, 195))), MAKELONG(0xFFFF, 1));
}

// ---------------------------------------------------------------- focus

TEST_P(ListBoxMessage, FocusIsToldAndKeptFromTheNativeControl) {
    ClassSpy spy("ListBox");
    MakeList(0, 3);
    spy.log.Listen({WM_SETFOCUS, WM_KILLFOCUS});
    spy.log.Clear();
    EXPECT_EQ(Send(WM_SETFOCUS, 0, 0), 0);
    EXPECT_EQ(Told(), Codes{LBN_SETFOCUS});
    EXPECT_EQ(Send(WM_KILLFOCUS, 0, 0), 0);
    EXPECT_EQ(Told(), Codes{LBN_KILLFOCUS});
    EXPECT_TRUE(spy.log.Entries().empty());
    ::DestroyWindow(list);
}

TEST_P(ListBoxMessage, OtherMessagesGoToTheNativeControl) {
    ClassSpy spy("ListBox");
    MakeList(LBS_WANTKEYBOARDINPUT, 3);
    spy.log.Listen({LB_GETCOUNT, WM_HSCROLL, WM_CHAR, LB_SETITEMDATA, LB_FINDSTRING, LB_GETANCHORINDEX});
    spy.log.Clear();
    for (UINT message : {WM_HSCROLL, LB_SETITEMDATA, LB_GETANCHORINDEX}) {
        Send(static_cast<UINT>(message), 0, 0);
        EXPECT_TRUE(spy.log.Has(static_cast<UINT>(message))) << message;
    }
    ::DestroyWindow(list);
}

}  // namespace
}  // namespace tavix_test
