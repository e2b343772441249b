// A menu bar in a user's hands: popups by mouse and keys, one after another.
#include "menubar/bar_user.h"

namespace tavix_test {
namespace {

using MenuBarUser = BarUserTest;
using Menus = std::vector<HMENU>;
using Ids = std::vector<UINT>;

TEST_F(MenuBarUser, AltAloneLightsTheFirstButtonAndAltAgainPutsItOut) {
    Start();
    user->Presses(VK_MENU, Hot(0)).Presses(VK_MENU, Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_TRUE(user->passed.Entries().empty()) << "the frame sees neither key";
    EXPECT_TRUE(OpenedMenus().empty());
}

TEST_F(MenuBarUser, F10DoesTheSame) {
    Start();
    user->Presses(VK_F10, Hot(0)).Presses(VK_F10, Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_TRUE(user->passed.Entries().empty());
}

TEST_F(MenuBarUser, ShiftF10IsTheFrames) {
    Start();
    user->Does(
            "Shift", [] { SendKeyDown(VK_SHIFT); }, [] { return ::GetAsyncKeyState(VK_SHIFT) < 0; })
        .Presses(VK_F10)
        .Does("Shift up", [] { SendKeyUp(VK_SHIFT); })
        .Waits();
    EXPECT_TRUE(user->Run());
    EXPECT_TRUE(Idle()());
    EXPECT_TRUE(user->passed.Has(WM_SYSKEYDOWN));
}

TEST_F(MenuBarUser, ArrowsMoveTheLightAroundAndEscapePutsItOut) {
    Start();
    user->Presses(VK_MENU, Hot(0))
        .Presses(VK_RIGHT, Hot(1))
        .Presses(VK_LEFT, Hot(0))
        .Presses(VK_LEFT, Hot(3))
        .Presses(VK_RIGHT, Hot(0))
        .Presses(VK_ESCAPE, Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_TRUE(OpenedMenus().empty());
}

TEST_F(MenuBarUser, DownUpAndSpaceOpenTheLitButtonWithItsFirstItemSelected) {
    Start();
    for (const WORD key : {VK_DOWN, VK_UP, VK_SPACE}) {
        SCOPED_TRACE(key);
        frame.log.Clear();
        user->Presses(VK_MENU, Hot(0))
            .Presses(VK_RIGHT, Hot(1))
            .Presses(key, Selected(Popup(1), 201))
            .Presses(VK_RETURN, Commanded(201))
            .WaitsFor("rest", Idle());
        EXPECT_TRUE(user->Run());
        EXPECT_EQ(OpenedMenus(), Menus{Popup(1)});
        EXPECT_EQ(Commands(), Ids{201});
    }
}

TEST_F(MenuBarUser, ALetterOpensInKeyboardModeAndWithAltWithout) {
    Start();
    user->Presses(VK_MENU, Hot(0))
        .Presses('V', OpenedWithItem(2))
        .Presses(VK_RETURN, Commanded(301))
        .WaitsFor("rest", Idle())
        .PressesWithAlt('E', OpenedWithItem(1))
        .Presses(VK_DOWN, Selected(Popup(1), 202))
        .Presses(VK_RETURN, Commanded(202))
        .WaitsFor("rest", Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), (Menus{Popup(2), Popup(1)}));
    EXPECT_EQ(Commands(), (Ids{301, 202}));
}

TEST_F(MenuBarUser, ALetterOfNoButtonIsUsedUpInKeyboardModeAndOtherKeysEndIt) {
    Start();
    user->Presses(VK_MENU, Hot(0)).Presses('Q').Waits().WaitsFor("the light", Hot(0));
    EXPECT_TRUE(user->Run());
    EXPECT_FALSE(user->passed.Has(WM_KEYDOWN));
    user->Presses(VK_TAB, Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_TRUE(user->passed.Has(WM_KEYDOWN)) << "the key goes on";
}

TEST_F(MenuBarUser, KeysWhoseCodesAreLettersCountAsThose) {
    Start();
    static_assert(VK_NUMPAD6 == 'f' && VK_F5 == 't');
    user->Presses(VK_MENU, Hot(0))
        .Presses(VK_F5)
        .WaitsFor("the light", Hot(0))
        .Presses(VK_NUMPAD6, OpenedWithItem(0))
        .Presses(VK_ESCAPE, Hot(0))
        .Presses(VK_ESCAPE, Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), Menus{Popup(0)});
}

TEST_F(MenuBarUser, ALetterOfNoButtonWithAltIsTheFramesAndEndsKeyboardMode) {
    Start();
    user->Presses(VK_MENU, Hot(0)).PressesWithAlt('Q', Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_TRUE(user->passed.Has(WM_SYSKEYDOWN));
}

TEST_F(MenuBarUser, EscapeInAPopupOpenedByMouseLeavesKeyboardModeOnItsButton) {
    Start();
    user->MovesTo(MiddleOf(1))
        .Clicks(OpenedWithItem(1))
        .Presses(VK_ESCAPE, Hot(1))
        .Presses(VK_ESCAPE, Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), Menus{Popup(1)});
    EXPECT_TRUE(Commands().empty());
}

TEST_F(MenuBarUser, RightArrowGoesFromButtonToButtonAndAround) {
    Start();
    user->PressesWithAlt('E', OpenedWithItem(1))
        .Presses(VK_RIGHT, OpenedWithItem(2))
        .Presses(VK_RIGHT, OpenedWithItem(3))
        .Presses(VK_RIGHT, OpenedWithItem(0))
        .Presses(VK_RETURN, Commanded(101))
        .WaitsFor("rest", Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), (Menus{Popup(1), Popup(2), Popup(3), Popup(0)}));
    EXPECT_EQ(Commands(), Ids{101});
}

TEST_F(MenuBarUser, LeftArrowGoesBackAndAround) {
    Start();
    user->PressesWithAlt('E', OpenedWithItem(1))
        .Presses(VK_LEFT, OpenedWithItem(0))
        .Presses(VK_LEFT, OpenedWithItem(3))
        .Presses(VK_ESCAPE, Hot(3))
        .Presses(VK_ESCAPE, Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), (Menus{Popup(1), Popup(0), Popup(3)}));
}

TEST_F(MenuBarUser, RightArrowOpensANestedPopupAndLeftArrowClosesIt) {
    Start();
    const HMENU file = Popup(0), recent = ::GetSubMenu(file, 1);
    user->PressesWithAlt('F', OpenedWithItem(0))
        .Presses(VK_DOWN, Selected(file, 1))
        .Presses(VK_RIGHT, Selected(recent, 111))
        .WaitsFor("two popups", [] { return CountPopups() == 2; })
        .Presses(VK_LEFT, [] { return CountPopups() == 1; })
        .WaitsFor("the same button", Opened(0))
        .Presses(VK_UP, Selected(file, 101))
        .Presses(VK_LEFT, OpenedWithItem(3))
        .Presses(VK_RETURN, Commanded(404))
        .WaitsFor("rest", Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), (Menus{file, recent, Popup(3)}));
    EXPECT_EQ(Commands(), Ids{404});
}

TEST_F(MenuBarUser, RightArrowInANestedPopupLeavesForTheNextButton) {
    Start();
    const HMENU file = Popup(0), recent = ::GetSubMenu(file, 1);
    user->PressesWithAlt('F', OpenedWithItem(0))
        .Presses(VK_DOWN, Selected(file, 1))
        .Presses(VK_RIGHT, Selected(recent, 111))
        .Presses(VK_RIGHT, OpenedWithItem(1))
        .Presses(VK_RETURN, Commanded(201))
        .WaitsFor("rest", Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), (Menus{file, recent, Popup(1)}));
}

TEST_F(MenuBarUser, AClickOpensAndAClickOnAnItemCommands) {
    Start();
    user->MovesTo(MiddleOf(1))
        .Clicks(OpenedWithItem(1))
        .Does(
            "find the item",
            [this] {
                RECT item{};
                ::GetMenuItemRect(nullptr, Popup(1), 1, &item);
                ::SetCursorPos((item.left + item.right) / 2, (item.top + item.bottom) / 2);
            },
            Selected(Popup(1), 202))
        .Clicks(Commanded(202))
        .WaitsFor("rest", [this] { return State() == CSkinMenuBar::TRACKING_IDLE; });
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(Commands(), Ids{202});
    EXPECT_EQ(::GetCapture(), nullptr) << "the release went to the popup; the control must not wait for it";
}

TEST_F(MenuBarUser, AClickOnTheOpenButtonClosesAndDoesNotReopen) {
    Start();
    user->MovesTo(MiddleOf(1)).Clicks(OpenedWithItem(1)).Clicks([] { return CountPopups() == 0; }).Waits();
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(State(), CSkinMenuBar::TRACKING_IDLE);
    EXPECT_EQ(OpenedMenus(), Menus{Popup(1)});
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_F(MenuBarUser, TheMouseSlidesFromPopupToPopup) {
    Start();
    user->MovesTo(MiddleOf(0))
        .Clicks(OpenedWithItem(0))
        .MovesTo(MiddleOf(1), OpenedWithItem(1))
        .MovesTo(MiddleOf(3), OpenedWithItem(3))
        .MovesTo(MiddleOf(2), OpenedWithItem(2))
        .Presses(VK_RETURN, Commanded(301))
        .WaitsFor("rest", [this] { return State() == CSkinMenuBar::TRACKING_IDLE; });
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), (Menus{Popup(0), Popup(1), Popup(3), Popup(2)}));
    EXPECT_EQ(Commands(), Ids{301});
}

TEST_F(MenuBarUser, AClickElsewhereClosesTheBar) {
    Start();
    POINT away{250, 200};
    ::ClientToScreen(frame.m_hWnd, &away);
    user->MovesTo(MiddleOf(0))
        .Clicks(OpenedWithItem(0))
        .MovesToScreen(away)
        .Clicks([] { return CountPopups() == 0; })
        .WaitsFor("rest", [this] { return State() == CSkinMenuBar::TRACKING_IDLE; });
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), Menus{Popup(0)});
    EXPECT_TRUE(Commands().empty());
}

TEST_F(MenuBarUser, AClickElsewhereEndsKeyboardModeAndHappens) {
    Start();
    frame.log.Listen({WM_LBUTTONDOWN});
    POINT away{250, 200};
    ::ClientToScreen(frame.m_hWnd, &away);
    user->MovesToScreen(away).Presses(VK_MENU, Hot(0)).Clicks(Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_TRUE(frame.log.Has(WM_LBUTTONDOWN));
}

TEST_F(MenuBarUser, ButtonsStandForTheirItemsWhereOthersHaveNoText) {
    const HMENU menu = MakeMenu({{"&One", 0, {{"A", 11}}}});
    ::AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(MakeMenu({{"hidden", 99}}, true)), "");
    ::AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(MakeMenu({{"B", 22}}, true)), "&Two");
    Start(menu);
    ASSERT_EQ(Access().ButtonCount(), 2);
    user->Presses(VK_MENU, Hot(0))
        .Presses(VK_RIGHT, Hot(1))
        .Presses(VK_DOWN, OpenedWithItem(1))
        .Presses(VK_RETURN, Commanded(22))
        .WaitsFor("rest", Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), Menus{Popup(2)});
}

TEST_F(MenuBarUser, ALetterNamesAPositionThatIsTakenForAButton) {
    const HMENU menu =
        MakeMenu({{"&One", 0, {{"A", 11}}}, {"", 5}, {"&Two", 0, {{"B", 22}}}, {"T&hree", 0, {{"C", 33}}}});
    Start(menu);
    ASSERT_EQ(Access().ButtonCount(), 3);
    // Two stands at position 2, where the third button is; Three at 3, where none is.
    user->Presses(VK_MENU, Hot(0))
        .Presses('T', OpenedWithItem(2))
        .Presses(VK_RETURN, Commanded(33))
        .WaitsFor("rest", Idle())
        .Presses(VK_MENU, Hot(0))
        .Presses('H', Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), Menus{Popup(3)});
}

TEST_F(MenuBarUser, AnItemWithoutAPopupOpensNothing) {
    Start(MakeMenu({{"&Go", 77}, {"&File", 0, {{"A", 11}}}}));
    user->Presses(VK_MENU, Hot(0)).Presses('G', Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_TRUE(OpenedMenus().empty());
    EXPECT_TRUE(Commands().empty());
    EXPECT_TRUE(user->passed.Has(WM_KEYDOWN))
        << "the Down key that was to select the first item is the frame's";
}

}  // namespace
}  // namespace tavix_test
