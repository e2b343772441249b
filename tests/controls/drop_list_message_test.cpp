/* Lists of combo boxes: rows and hit tests as plain values, then the messages of the list. */
#include "combo_fixture.h"
#include "controls/drop_rows.h"

namespace tavix_test {
namespace {

using tavix::CountVisibleRows;
using tavix::DropHit;
using tavix::DropRows;
using tavix::ScrolledTop;

TEST(DropRowsArithmetic, RowThatFitsHalfCounts) {
    EXPECT_EQ(CountVisibleRows(147, 14), 11);
    EXPECT_EQ(CountVisibleRows(146, 14), 10);
    EXPECT_EQ(CountVisibleRows(140, 14), 10);
    EXPECT_EQ(CountVisibleRows(7, 14), 1);
    EXPECT_EQ(CountVisibleRows(6, 14), 0);
    EXPECT_EQ(CountVisibleRows(100, 0), 0);
    EXPECT_EQ(CountVisibleRows(-5, 14), 0);
    for (int height = 1; height < 400; ++height)
        for (int item = 1; item < 40; ++item)
            ASSERT_EQ(CountVisibleRows(height, item), static_cast<int>(double(height) / item + 0.5));
}

TEST(DropRowsArithmetic, PointIsOutsideOnARowInTheStripOrOnNothing) {
    const DropRows rows{CRect(0, 0, 100, 147), 10, 0, 11, 14, 0};
    int item = 5;
    for (const POINT outside : {POINT{-1, 5}, POINT{100, 5}, POINT{5, -1}, POINT{5, 147}}) {
        EXPECT_EQ(rows.HitTest(outside, item), DropHit::Outside);
        EXPECT_EQ(item, -1);
    }
    EXPECT_EQ(rows.HitTest({0, 0}, item), DropHit::Row);
    EXPECT_EQ(item, 0);
    EXPECT_EQ(rows.HitTest({99, 139}, item), DropHit::Row);
    EXPECT_EQ(item, 9);
    EXPECT_EQ(rows.HitTest({50, 140}, item), DropHit::Nothing) << "a row without an item";
    EXPECT_EQ(rows.HitTest({99, 146}, item), DropHit::Nothing) << "the row goes before the strip";
    EXPECT_EQ(item, -1);
}

TEST(DropRowsArithmetic, PartlyCoveredRowIsHitAsLongAsItCounts) {
    DropRows rows{CRect(0, 0, 100, 147), 40, 7, 11, 14, 17};
    int item = -1;
    EXPECT_EQ(rows.HitTest({10, 146}, item), DropHit::Row);
    EXPECT_EQ(item, 17);
    rows.visible = 10;
    EXPECT_EQ(rows.HitTest({10, 146}, item), DropHit::Nothing);
    EXPECT_EQ(rows.HitTest({83, 146}, item), DropHit::Nothing);
    EXPECT_EQ(rows.HitTest({84, 146}, item), DropHit::Bar);
}

TEST(DropRowsArithmetic, StripIsSixteenWideWhateverTheBar) {
    const DropRows rows{CRect(0, 0, 100, 140), 40, 0, 10, 14, 20};
    int item = -1;
    EXPECT_EQ(rows.HitTest({79, 20}, item), DropHit::Row);
    EXPECT_EQ(rows.HitTest({80, 20}, item), DropHit::Nothing) << "between the rows and the strip";
    EXPECT_EQ(rows.HitTest({83, 20}, item), DropHit::Nothing);
    EXPECT_EQ(rows.HitTest({84, 20}, item), DropHit::Bar);
    EXPECT_EQ(rows.HitTest({99, 20}, item), DropHit::Bar);
}

TEST(DropRowsArithmetic, EachScrollCode) {
    // code, top, count, visible, thumb
    EXPECT_EQ(ScrolledTop(SB_LINEUP, 3, 20, 5, 0), 2);
    EXPECT_EQ(ScrolledTop(SB_LINEUP, 0, 20, 5, 0), 0);
    EXPECT_EQ(ScrolledTop(SB_LINEDOWN, 14, 20, 5, 0), 15);
    EXPECT_EQ(ScrolledTop(SB_LINEDOWN, 15, 20, 5, 0), 15);
    EXPECT_EQ(ScrolledTop(SB_PAGEUP, 9, 20, 5, 0), 5) << "one row stays";
    EXPECT_EQ(ScrolledTop(SB_PAGEUP, 3, 20, 5, 0), 0);
    EXPECT_EQ(ScrolledTop(SB_PAGEUP, 0, 20, 5, 0), 0);
    EXPECT_EQ(ScrolledTop(SB_PAGEDOWN, 2, 20, 5, 0), 7);
    EXPECT_EQ(ScrolledTop(SB_PAGEDOWN, 12, 20, 5, 0), 15) << "the last page";
    EXPECT_EQ(ScrolledTop(SB_PAGEDOWN, 15, 20, 5, 0), 15);
    EXPECT_EQ(ScrolledTop(SB_PAGEDOWN, 17, 20, 5, 0), 17) << "less than a page is left";
    EXPECT_EQ(ScrolledTop(SB_THUMBPOSITION, 2, 20, 5, 11), 11);
    EXPECT_EQ(ScrolledTop(SB_THUMBTRACK, 2, 20, 5, 12), 12);
    for (const int code : {SB_TOP, SB_BOTTOM, SB_ENDSCROLL, 99, -1})
        EXPECT_EQ(ScrolledTop(code, 4, 20, 5, 12), 4);
    for (const int top : {INT_MIN, INT_MAX})
        for (int code = 0; code < 9; ++code) ScrolledTop(code, top, INT_MAX, INT_MAX, 0);
}

class DropListMessages : public ComboTest {
protected:
    // More than any platform opens a list for.
    static constexpr int kMany = 120;
    // The native control's own word on the closing comes first.
    inline static const std::vector<int> kClosed{CBN_SELENDCANCEL, CBN_CLOSEUP};
    inline static const std::vector<int> kChosen{CBN_SELENDCANCEL, CBN_CLOSEUP, CBN_SELENDOK, CBN_CLOSEUP,
                                                 CBN_SELCHANGE};

    int Visible() { return CountVisibleRows(ClientOf(list).Height(), RowHeight()); }
    void MakeLong() {
        MakeListOnly(kMany);
        Open();
        ASSERT_TRUE(::IsWindowVisible(Bar()));
    }
    int Scroll(int code, int position = 0) {
        EXPECT_EQ(SendList(WM_VSCROLL, MAKEWPARAM(code, position)), 0);
        return List().topItem;
    }
    int BarInfo(UINT mask) {
        const SCROLLINFO info = ScrollInfoOf(Bar());
        return mask == SIF_POS ? info.nPos : mask == SIF_PAGE ? static_cast<int>(info.nPage) : info.nMax;
    }
};

TEST_P(DropListMessages, BarIsThereForWhatDoesNotFit) {
    MakeListOnly(3);
    Open();
    ASSERT_TRUE(Bar());
    EXPECT_EQ(::GetDlgCtrlID(Bar()), 10001);
    EXPECT_FALSE(::IsWindowVisible(Bar()));
    EXPECT_FALSE(::IsWindowEnabled(Bar()));
    for (int i = 3; i < 40; ++i) Add("Item " + std::to_string(i));
    EXPECT_TRUE(::IsWindowVisible(Bar()));
    EXPECT_TRUE(::IsWindowEnabled(Bar()));
    EXPECT_EQ(BarInfo(SIF_RANGE), 39);
    EXPECT_EQ(BarInfo(SIF_PAGE), Visible());
    const CRect place = PlaceIn(list, Bar());
    CRect window;
    ::GetWindowRect(list, &window);
    const int width = ::GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_EQ(place.left, window.Width() - width - 1);
    EXPECT_EQ(place.Width(), width);
    EXPECT_EQ(place.Height(), ClientOf(list).Height());
    for (int i = 39; i > 2; --i) SendList(LB_DELETESTRING, static_cast<WPARAM>(i));
    EXPECT_FALSE(::IsWindowVisible(Bar()));
}

TEST_P(DropListMessages, ListWithoutANativeBarHasTheSkinsInItsClientArea) {
    Make(CBS_DROPDOWNLIST, 40);
    Open();
    const CRect place = PlaceIn(list, Bar());
    EXPECT_EQ(place.right, ClientOf(list).right - 1);
    EXPECT_EQ(place.Width(), ::GetSystemMetrics(SM_CXVSCROLL));
}

TEST_P(DropListMessages, FrameIsOnePixel) {
    MakeListOnly(3);
    RECT sizes{10, 20, 110, 220};
    EXPECT_EQ(SendList(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&sizes)), 0);
    EXPECT_TRUE(CRect(sizes) == CRect(11, 21, 109, 219));
    Open();
    CRect window;
    ::GetWindowRect(list, &window);
    EXPECT_TRUE(ClientOf(list) == CRect(0, 0, window.Width() - 2, window.Height() - 2));
}

TEST_P(DropListMessages, PointerSelectsTheRowUnderIt) {
    MakeLong();
    EXPECT_EQ(Current(), -1);
    for (const int row : {2, 0, 3}) {
        EXPECT_EQ(SendList(WM_MOUSEMOVE, 0, At(RowPoint(row))), 0);
        EXPECT_EQ(Current(), row);
    }
    ::ValidateRect(list, nullptr);
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(3)));
    EXPECT_FALSE(::GetUpdateRect(list, nullptr, FALSE)) << "the same row again";
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(4)));
    CRect changed;
    ::GetUpdateRect(list, &changed, FALSE);
    const int width = ::GetSystemMetrics(SM_CXVSCROLL), height = RowHeight();
    EXPECT_TRUE(changed == CRect(0, 3 * height, ClientOf(list).right - width, 5 * height));
    EXPECT_EQ(Text(), "") << "nothing is chosen yet";
}

TEST_P(DropListMessages, CurrentItemOutOfRangeIsRefused) {
    MakeListOnly(4);
    EXPECT_EQ(List().SetCurrentItem(2), 2);
    for (const int bad : {-1, 4, INT_MAX, INT_MIN}) EXPECT_EQ(List().SetCurrentItem(bad), -1);
    EXPECT_EQ(List().currentItem, 2);
    EXPECT_EQ(List().SetCurrentItem(2), 2);
}

TEST_P(DropListMessages, ScrollCodesMoveTopItemAndBar) {
    MakeLong();
    const int visible = Visible(), last = kMany - visible;
    EXPECT_EQ(Scroll(SB_LINEUP), 0);
    EXPECT_EQ(Scroll(SB_LINEDOWN), 1);
    EXPECT_EQ(BarInfo(SIF_POS), 1);
    EXPECT_EQ(Scroll(SB_PAGEDOWN), 1 + visible);
    EXPECT_EQ(Scroll(SB_PAGEUP), 2);
    EXPECT_EQ(Scroll(SB_TOP), 2);
    EXPECT_EQ(Scroll(SB_ENDSCROLL), 2);
    for (int i = 0; i < 20; ++i) Scroll(SB_PAGEDOWN);
    EXPECT_EQ(List().topItem, last) << "stops with the last page";
    EXPECT_EQ(Scroll(SB_LINEDOWN), last);
    EXPECT_EQ(BarInfo(SIF_POS), last);
    EXPECT_EQ(Scroll(SB_LINEUP), last - 1);
    EXPECT_NEAR(Scroll(SB_THUMBTRACK, 5), last - 1, 2) << "the thumb's place counts, not the message's";
    SCROLLINFO info{sizeof info, SIF_POS, 0, 0, 0, 7, 0};
    ::SendMessageA(Bar(), SBM_SETSCROLLINFO, TRUE, reinterpret_cast<LPARAM>(&info));
    const int thumb = Scroll(SB_THUMBPOSITION, 30);
    EXPECT_NEAR(thumb, 7, 2);
}

TEST_P(DropListMessages, EndOfScrollingTakesTheMouseBack) {
    MakeLong();
    ::SetCapture(Parent());
    Scroll(SB_ENDSCROLL);
    EXPECT_EQ(::GetCapture(), list);
}

TEST_P(DropListMessages, WheelMovesOneRowWhateverItsTurn) {
    MakeLong();
    const auto turn = [this](int delta) {
        EXPECT_EQ(SendList(WM_MOUSEWHEEL, MAKEWPARAM(0, delta)), 0);
        return List().topItem;
    };
    EXPECT_EQ(turn(-120), 1);
    EXPECT_EQ(turn(-1200), 2);
    EXPECT_EQ(turn(-1), 3);
    EXPECT_EQ(turn(120), 2);
    EXPECT_EQ(turn(32767), 1);
    EXPECT_EQ(turn(0), 0) << "no turn counts as up";
    Send(CB_RESETCONTENT);
    EXPECT_EQ(turn(-120), 0) << "no bar, no wheel";
}

TEST_P(DropListMessages, EmptyListHasRowsOfFourteenThatSelectNothing) {
    MakeListOnly(0, CBS_NOINTEGRALHEIGHT);
    Open();
    // What lies below the rows, at the right edge, is the bar's: the moves there tell how high rows are.
    MessageSpy spy(Bar());
    spy.log.Listen({WM_MOUSEMOVE});
    const auto movesBelow = [&](int clientHeight) {
        ::SetWindowPos(list, nullptr, 0, 0, 160, clientHeight + 2,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        EXPECT_EQ(ClientOf(list).bottom, clientHeight);
        spy.log.Clear();
        for (int y = 0; y < clientHeight; ++y) SendList(WM_MOUSEMOVE, 0, At({ClientOf(list).right - 3, y}));
        return spy.log.Count(WM_MOUSEMOVE);
    };
    EXPECT_EQ(movesBelow(147), 0) << "eleven rows";
    EXPECT_EQ(movesBelow(146), 6) << "ten of them";
    EXPECT_EQ(Current(), -1);
    Add("One");
    SendList(LB_RESETCONTENT);
    EXPECT_EQ(Send(CB_GETCOUNT), 0);
    EXPECT_EQ(movesBelow(147), 0);
    EXPECT_EQ(movesBelow(146), 6);
    EXPECT_EQ(Current(), -1);
}

TEST_P(DropListMessages, WithoutABarScrollingStillFollowsItsRules) {
    MakeListOnly(5);
    Open();
    ::SetWindowPos(list, nullptr, 0, 0, 160, 2 * RowHeight() + 2, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ::DestroyWindow(Bar());
    EXPECT_EQ(Scroll(SB_LINEDOWN), 1);
    EXPECT_EQ(Scroll(SB_THUMBTRACK, 3), 1) << "there is no thumb";
    EXPECT_EQ(SendList(WM_MOUSEWHEEL, MAKEWPARAM(0, 120)), 0);
    EXPECT_EQ(List().topItem, 1);
    RepaintedClient(list);
    Add("More");
    SendList(WM_MOUSEMOVE, 0, At({ClientOf(list).right - 2, 3}));
    SendList(WM_LBUTTONDOWN, MK_LBUTTON, At({ClientOf(list).right - 2, 3}));
    EXPECT_TRUE(IsOpen());
}

TEST_P(DropListMessages, ReleaseOnARowChoosesIt) {
    MakeLong();
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(2)));
    SendList(WM_LBUTTONDOWN, MK_LBUTTON, At(RowPoint(2)));
    EXPECT_TRUE(IsOpen()) << "the press does nothing";
    EXPECT_EQ(Notices(), std::vector<int>{CBN_DROPDOWN});
    EXPECT_EQ(SendList(WM_LBUTTONUP, 0, At(RowPoint(2))), 0);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Text(), "Item 2");
    EXPECT_NE(::GetCapture(), combo);
    EXPECT_EQ(Notices(), kChosen);
}

TEST_P(DropListMessages, ReleaseBelowTheItemsClosesWithoutAChoice) {
    MakeListOnly(1);
    Open();
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(0)));
    ::SetWindowPos(list, nullptr, 0, 0, 160, 120, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Parent().log.Clear();
    SendList(WM_LBUTTONUP, 0, At({10, 60}));
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Notices(), kClosed);
    EXPECT_EQ(::GetCapture(), combo);
}

TEST_P(DropListMessages, PressOutsideClosesAndHandsTheMouseToTheComboBox) {
    for (const UINT press : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
        MakeLong();
        SendList(WM_LBUTTONUP, 0, At({-30, -30}));
        EXPECT_TRUE(IsOpen()) << "a release outside does nothing";
        EXPECT_EQ(SendList(press, MK_LBUTTON, At({-30, -30})), 0);
        EXPECT_FALSE(IsOpen());
        EXPECT_EQ(::GetCapture(), combo);
        ::ReleaseCapture();
        ::DestroyWindow(combo);
    }
}

TEST_P(DropListMessages, StripHandsTheMouseOnToTheBar) {
    MakeLong();
    MessageSpy spy(Bar());
    spy.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_MOUSEMOVE || received.message == WM_LBUTTONDOWN) return 0;
        return std::nullopt;
    };
    spy.log.Listen({WM_MOUSEMOVE, WM_LBUTTONDOWN});
    const CPoint there(ClientOf(list).right - 5, 20);
    POINT mapped = there;
    ::MapWindowPoints(list, Bar(), &mapped, 1);
    SendList(WM_MOUSEMOVE, MK_SHIFT, At(there));
    SendList(WM_LBUTTONDOWN, MK_LBUTTON, At(there));
    SendList(WM_LBUTTONUP, 0, At(there));
    ASSERT_EQ(spy.log.Entries().size(), 2u);
    EXPECT_EQ(spy.log.Entries()[0], (Received{Bar(), WM_MOUSEMOVE, MK_SHIFT, At(mapped)}));
    EXPECT_EQ(spy.log.Entries()[1], (Received{Bar(), WM_LBUTTONDOWN, MK_LBUTTON, At(mapped)}));
    EXPECT_TRUE(IsOpen());
}

TEST_P(DropListMessages, KeysAreToldOfOrIgnored) {
    ClassSpy below("ComboBox");
    MakeListOnly(4);
    List().SetCurrentItem(1);
    below.log.Clear();
    below.log.Listen({WM_COMMAND});
    for (const int key :
         {VK_SHIFT, VK_CONTROL, VK_RETURN, VK_PRIOR, VK_NEXT, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN})
        EXPECT_EQ(SendList(WM_KEYDOWN, static_cast<WPARAM>(key)), 0);
    EXPECT_TRUE(below.log.Entries().empty());
    EXPECT_EQ(SendList(WM_KEYDOWN, 'I'), 0);
    ASSERT_EQ(below.log.Count(WM_COMMAND), 1);
    const Received told = below.log.Entries().front();
    EXPECT_EQ(HIWORD(told.wParam), LBN_SELCHANGE);
    EXPECT_EQ(LOWORD(told.wParam), ::GetDlgCtrlID(list));
    EXPECT_EQ(told.lParam, reinterpret_cast<LPARAM>(list));
    EXPECT_EQ(Current(), 1);
    ::DestroyWindow(combo);  // before the spy
}

TEST_P(DropListMessages, CaptureChangesAreSwallowedAndItemsGoToTheNativeList) {
    ClassSpy below("ComboLBox");
    MakeListOnly(2);
    below.log.Clear();
    SendList(WM_CAPTURECHANGED);
    EXPECT_FALSE(below.log.Has(WM_CAPTURECHANGED));
    EXPECT_EQ(SendList(LB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("First")), 0);
    EXPECT_EQ(SendList(LB_DELETESTRING, 0), 2);
    EXPECT_TRUE(below.log.Has(LB_INSERTSTRING) && below.log.Has(LB_DELETESTRING));
    EXPECT_EQ(SendList(CB_DELETESTRING, 0), 0);
    EXPECT_TRUE(below.log.Has(CB_DELETESTRING));
    EXPECT_EQ(Send(CB_GETCOUNT), 2) << "which means nothing to a list box";
    ::DestroyWindow(combo);  // before the spy
}

TEST_P(DropListMessages, ListOfAnotherParentIsTheNativeControl) {
    HWND other =
        CreateControl(GetParam().charset, Parent(), "ComboLBox", "", WS_VSCROLL, {20, 160, 180, 280}, 7);
    ASSERT_TRUE(IsSkinned(other));
    EXPECT_FALSE(::FindWindowExA(other, nullptr, "TavixScrollBar10", nullptr));
    for (int i = 0; i < 50; ++i) ::SendMessageA(other, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("Row"));
    RepaintedClient(other);
    for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEWHEEL, WM_VSCROLL})
        ::SendMessageA(other, message, 0, At({10, 10}));
    ::SendMessageA(other, WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(::SendMessageA(other, LB_GETCOUNT, 0, 0), 50);
    ::DestroyWindow(other);
    // A parent with a skin of another kind is no combo box either.
    HWND button = CreateControl(GetParam().charset, Parent(), "Button", "", 0, {200, 160, 300, 280}, 8);
    ASSERT_TRUE(IsSkinned(button));
    HWND inside = CreateControl(GetParam().charset, button, "ComboLBox", "", 0, {0, 0, 90, 90}, 9);
    ASSERT_TRUE(IsSkinned(inside));
    EXPECT_FALSE(::FindWindowExA(inside, nullptr, "TavixScrollBar10", nullptr));
    RepaintedClient(inside);
    ::DestroyWindow(button);
}

INSTANTIATE_TEST_SUITE_P(Worlds, DropListMessages, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
