/* Combo boxes under the mouse and the keyboard, and all that the parent hears of it. */
#include "combo_fixture.h"

namespace tavix_test {
namespace {

using Codes = std::vector<int>;

class ComboBoxInput : public ComboTest {
protected:
    void Press(POINT at) { Send(WM_LBUTTONDOWN, MK_LBUTTON, At(at)); }

    /* A combo box of five on a parent that has the keyboard. */
    void MakeInFront(DWORD style, int items = 5) {
        Make(style | WS_VSCROLL, items);
        ASSERT_TRUE(BringToFront(Parent()));
        Parent().log.Clear();
    }
    void OpenByMouse() {
        ClickMouse(combo, ArrowPoint());
        ASSERT_TRUE(IsOpen());
        Parent().log.Clear();
    }
    /* A key down and up. Closing a list on the way, some window systems forget that a key is down. */
    static void Tap(WORD key) {
        INPUT inputs[2]{};
        for (INPUT& input : inputs) {
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = key;
            input.ki.wScan = static_cast<WORD>(::MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
        }
        inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
        EXPECT_EQ(::SendInput(2, inputs, sizeof(INPUT)), 2u);
        PumpMessages(60);
    }

    // Of the native control, which opens and closes the list.
    inline static const Codes kOpened{CBN_DROPDOWN}, kClosed{CBN_SELENDCANCEL, CBN_CLOSEUP};
    // Its word on the closing, and then the choice.
    inline static const Codes kChosen{CBN_SELENDCANCEL, CBN_CLOSEUP, CBN_SELENDOK, CBN_CLOSEUP,
                                      CBN_SELCHANGE};
};

TEST_P(ComboBoxInput, OnlyTheArrowOpensTheList) {
    MakeListOnly(3);
    Press(BodyPoint());
    EXPECT_FALSE(IsOpen());
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, At(BodyPoint()));
    EXPECT_FALSE(IsOpen());
    Press(ArrowPoint());
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(::GetCapture(), list);
    Send(CB_SHOWDROPDOWN, FALSE);
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, At(ArrowPoint()));
    EXPECT_TRUE(IsOpen()) << "a double click is a press";
}

TEST_P(ComboBoxInput, ArrowAnswersWhereTheSystemsThumbIsAsWideNotWhereItShows) {
    skin.SetBitmapSize(33, 40, 16).SetBitmapSize(34, 40, 16);
    UseChangedSkin();
    MakeListOnly(3);
    const int left = ClientOf(combo).right - ::GetSystemMetrics(SM_CXHTHUMB);
    Press({left - 1, 5});
    EXPECT_FALSE(IsOpen()) << "on the bitmap";
    Press({left, 5});
    EXPECT_TRUE(IsOpen());
}

TEST_P(ComboBoxInput, PressWhileOpenClosesAndKeepsTheMouse) {
    MakeListOnly(3);
    for (const POINT at : {POINT{BodyPoint()}, POINT{ArrowPoint()}, POINT{-20, -20}}) {
        Open();
        Press(at);
        EXPECT_FALSE(IsOpen());
        EXPECT_EQ(::GetCapture(), combo);
        Press({-20, -20});
        EXPECT_EQ(::GetCapture(), nullptr) << "the next press outside lets it go";
    }
}

TEST_P(ComboBoxInput, FrameAboveTheArrowOpensToo) {
    MakeListOnly(3);
    CRect window;
    ::GetWindowRect(combo, &window);
    const int right = window.right - skin.BitmapSize(31).cx, left = right - skin.BitmapSize(33).cx;
    const auto press = [this](int x, int y) { Send(WM_NCLBUTTONDOWN, HTBORDER, At({x, y})); };
    for (const POINT beside : {POINT{left - 1, window.top + 2}, POINT{right, window.top + 2},
                               POINT{left, window.top + 1}, POINT{left, window.bottom + 2}}) {
        press(beside.x, beside.y);
        EXPECT_FALSE(IsOpen());
    }
    press(left, window.top + 2);
    EXPECT_TRUE(IsOpen());
    press(0, 0);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(::GetCapture(), combo);
    ::ReleaseCapture();
    press(right - 1, window.bottom + 1);
    EXPECT_TRUE(IsOpen());
}

TEST_P(ComboBoxInput, MouseOpensMovesAndChooses) {
    for (const bool hasEdit : {false, true}) {
        SCOPED_TRACE(hasEdit);
        MakeInFront(hasEdit ? CBS_DROPDOWN : CBS_DROPDOWNLIST);
        ClickMouse(combo, ArrowPoint());
        EXPECT_TRUE(IsOpen()) << "and it stays open after the release";
        EXPECT_EQ(::GetCapture(), list);
        EXPECT_EQ(::GetFocus(), hasEdit ? edit : combo);
        EXPECT_EQ(Notices(), hasEdit ? (Codes{CBN_DROPDOWN, CBN_SETFOCUS}) : kOpened);
        MoveMouse(list, RowPoint(1));
        EXPECT_EQ(Current(), 1);
        MoveMouse(list, RowPoint(3));
        EXPECT_EQ(Current(), 3);
        EXPECT_EQ(Text(), "") << "until it is chosen";
        EXPECT_EQ(Notices(), Codes{}) << "the pointer's way is nobody's business";
        ClickMouse(list, RowPoint(3));
        EXPECT_FALSE(IsOpen());
        EXPECT_EQ(Text(), "Item 3");
        EXPECT_EQ(Notices(), kChosen);
        EXPECT_EQ(::GetCapture(), nullptr);
        EXPECT_EQ(::GetFocus(), hasEdit ? edit : combo);
        // The same item again.
        OpenByMouse();
        ClickMouse(list, RowPoint(3));
        EXPECT_EQ(Notices(), kChosen);
        ParkMouse();
        ::DestroyWindow(combo);
    }
}

TEST_P(ComboBoxInput, PressOutsideClosesWithoutAChoice) {
    MakeInFront(CBS_DROPDOWNLIST);
    OpenByMouse();
    MoveMouse(list, RowPoint(2));
    ClickMouse(Parent(), {350, 250});
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Notices(), kClosed);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Current(), 2) << "though the pointer has selected";
    EXPECT_EQ(::GetCapture(), combo);
    ClickMouse(Parent(), {350, 250});
    EXPECT_EQ(::GetCapture(), nullptr);
    EXPECT_EQ(Notices(), Codes{});
    ParkMouse();
}

TEST_P(ComboBoxInput, PressOnTheOpenComboBoxCloses) {
    MakeInFront(CBS_DROPDOWNLIST);
    for (const CPoint at : {BodyPoint(), ArrowPoint()}) {
        OpenByMouse();
        ClickMouse(combo, at);
        EXPECT_FALSE(IsOpen());
        EXPECT_EQ(Notices(), kClosed);
        EXPECT_EQ(::GetCapture(), combo);
        ClickMouse(Parent(), {350, 250});
        EXPECT_EQ(::GetCapture(), nullptr);
    }
    ParkMouse();
}

TEST_P(ComboBoxInput, ReturnTakesTheItemUnderThePointerAndCloses) {
    for (const DWORD style : {CBS_DROPDOWNLIST, CBS_DROPDOWN}) {
        MakeInFront(style);
        OpenByMouse();
        MoveMouse(list, RowPoint(2));
        Tap(VK_RETURN);
        EXPECT_FALSE(IsOpen());
        EXPECT_EQ(Current(), 2);
        EXPECT_EQ(Text(), "Item 2");
        // The text in an edit is a program's doing: of that edits tell a combo box, which tells nobody.
        EXPECT_EQ(Notices(), kClosed) << "of the choice nothing is told";
        ParkMouse();
        ::DestroyWindow(combo);
    }
}

TEST_P(ComboBoxInput, OtherKeysDoNothingWithoutAnEdit) {
    MakeInFront(CBS_DROPDOWNLIST);
    ::SetFocus(combo);
    Send(CB_SETCURSEL, 1);
    for (const bool open : {false, true}) {
        if (open) OpenByMouse();
        for (const int key : {VK_ESCAPE, VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_F4, int{'I'}})
            Tap(static_cast<WORD>(key));
        EXPECT_EQ(IsOpen(), open);
        EXPECT_EQ(Current(), 1);
        EXPECT_EQ(Text(), "Item 1");
        EXPECT_EQ(Notices(), Codes{});
    }
    ParkMouse();
}

TEST_P(ComboBoxInput, EditTakesWhatIsTyped) {
    MakeInFront(CBS_DROPDOWN);
    ::SetFocus(combo);
    EXPECT_EQ(::GetFocus(), edit);
    EXPECT_EQ(Notices(), Codes{CBN_SETFOCUS});
    Tap('X');
    EXPECT_EQ(Text(), "x");
    EXPECT_EQ(Notices(), (Codes{CBN_EDITUPDATE, CBN_EDITCHANGE}));
    ::SetFocus(Parent());
    EXPECT_EQ(Notices(), (Codes{CBN_SELENDCANCEL, CBN_KILLFOCUS}));
    EXPECT_EQ(Current(), -1);
}

TEST_P(ComboBoxInput, WheelScrollsTheOpenListByARow) {
    MakeInFront(CBS_DROPDOWNLIST, 120);
    OpenByMouse();
    ASSERT_TRUE(::IsWindowVisible(Bar()));
    MoveMouse(list, RowPoint(1));
    TurnWheel(-WHEEL_DELTA);
    EXPECT_EQ(List().topItem, 1);
    TurnWheel(-3 * WHEEL_DELTA);
    EXPECT_EQ(List().topItem, 2);
    TurnWheel(WHEEL_DELTA);
    EXPECT_EQ(List().topItem, 1);
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Notices(), Codes{});
    Send(CB_SHOWDROPDOWN, FALSE);
    TurnWheel(-WHEEL_DELTA);
    EXPECT_EQ(Current(), 1) << "over a closed one it does nothing";
    EXPECT_EQ(List().topItem, 1);
    ParkMouse();
}

TEST_P(ComboBoxInput, ListScrollsByItsBarAndGetsTheMouseBack) {
    MakeInFront(CBS_DROPDOWNLIST, 120);
    OpenByMouse();
    const CRect bar = ClientOf(Bar());
    ClickMouse(Bar(), {bar.right / 2, bar.bottom - 5});
    EXPECT_EQ(List().topItem, 1) << "the arrow below";
    EXPECT_EQ(::GetCapture(), list);
    EXPECT_TRUE(IsOpen());
    ClickMouse(Bar(), {bar.right / 2, bar.bottom - 30});
    const int page = List().topItem;
    EXPECT_GT(page, 2) << "the track";
    ClickMouse(Bar(), {bar.right / 2, 5});
    EXPECT_EQ(List().topItem, page - 1) << "the arrow above";
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Notices(), Codes{});
    MoveMouse(list, RowPoint(0));
    ClickMouse(list, RowPoint(0));
    EXPECT_EQ(Text(), "Item " + std::to_string(page - 1));
    EXPECT_EQ(Notices(), kChosen);
    ParkMouse();
}

TEST_P(ComboBoxInput, ArrowIsHotWhileThePointerIsOnIt) {
    MakeListOnly(2);
    const auto colour = [this] {
        ::UpdateWindow(combo);
        return PictureOfClient(combo).At(ClientOf(combo).right - 2, 2);
    };
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(33));
    MoveMouse(combo, BodyPoint());
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(33));
    MoveMouse(combo, ArrowPoint());
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(34));
    EXPECT_EQ(::GetCapture(), nullptr);
    PumpMessages(60);
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(34)) << "as long as it stays there";
    MoveMouse(combo, BodyPoint());
    EXPECT_TRUE(PumpUntil([&] { return colour() == TestSkin::ColourOfBitmap(33); }));
    ParkMouse();
}

INSTANTIATE_TEST_SUITE_P(Worlds, ComboBoxInput, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
