// The states of a menu bar, message by message, without a popup.
#include "menubar/bar_fixture.h"

namespace tavix_test {
namespace {

constexpr auto kIdle = CSkinMenuBar::TRACKING_IDLE;
constexpr auto kButton = CSkinMenuBar::TRACKING_BUTTON;
constexpr auto kPopup = CSkinMenuBar::TRACKING_POPUP;

constexpr LPARAM kAlt = static_cast<LPARAM>(KF_ALTDOWN) << 16;

class MenuBarStates : public BarTest {
protected:
    void SetUp() override {
        MakeBar(MakeUsualMenu());
        SetKeys(false, false);
    }
    void TearDown() override { SetKeys(false, false); }

    static void SetKeys(bool shift, bool control) {
        BYTE keys[256] = {};
        keys[VK_SHIFT] = shift ? 0x80 : 0;
        keys[VK_CONTROL] = control ? 0x80 : 0;
        ::SetKeyboardState(keys);
    }
    bool Translate(UINT message, WPARAM key, LPARAM lParam = 0, HWND window = nullptr) {
        MSG msg{window ? window : frame.m_hWnd, message, key, lParam, 0, {}};
        return bar.TranslateFrameMessage(&msg);
    }
    bool Menu(UINT message, WPARAM wParam, LPARAM lParam = 0) {
        MSG msg{frame.m_hWnd, message, wParam, lParam, 0, {}};
        return bar.OnMenuInput(msg);
    }
    LPARAM ScreenPoint(POINT inBar) {
        ::ClientToScreen(bar.m_hWnd, &inBar);
        return MAKELPARAM(inBar.x, inBar.y);
    }
    bool TakesCancelMode() {
        MSG message;
        bool found = false;
        while (::PeekMessageA(&message, frame.m_hWnd, WM_CANCELMODE, WM_CANCELMODE, PM_REMOVE)) found = true;
        return found;
    }
    void Expect(CSkinMenuBar::TRACKINGSTATE state, int hot) {
        EXPECT_EQ(State(), state);
        EXPECT_EQ(bar.GetHotItem(), hot);
    }
};

TEST_F(MenuBarStates, StartsAtRest) {
    Expect(kIdle, -1);
    int popup = 7;
    EXPECT_EQ(bar.GetTrackingState(popup), kIdle);
    EXPECT_EQ(popup, -1);
}

TEST_F(MenuBarStates, AltTogglesOnItsReleaseAndIsUsedUpBothTimes) {
    EXPECT_TRUE(Translate(WM_SYSKEYDOWN, VK_MENU, kAlt));
    Expect(kIdle, -1);
    EXPECT_TRUE(Translate(WM_SYSKEYUP, VK_MENU));
    Expect(kButton, 0);
    EXPECT_TRUE(Translate(WM_SYSKEYDOWN, VK_MENU, kAlt));
    EXPECT_TRUE(Translate(WM_SYSKEYUP, VK_MENU));
    Expect(kIdle, -1);
}

TEST_F(MenuBarStates, F10TogglesWithoutOtherKeysOnly) {
    EXPECT_TRUE(Translate(WM_SYSKEYDOWN, VK_F10));
    EXPECT_TRUE(Translate(WM_SYSKEYUP, VK_F10));
    Expect(kButton, 0);
    EXPECT_TRUE(Translate(WM_SYSKEYUP, VK_F10));
    Expect(kIdle, -1);
    SetKeys(true, false);
    EXPECT_FALSE(Translate(WM_SYSKEYUP, VK_F10));
    SetKeys(false, true);
    EXPECT_FALSE(Translate(WM_SYSKEYUP, VK_F10));
    SetKeys(false, false);
    EXPECT_FALSE(Translate(WM_SYSKEYUP, VK_F10, kAlt));
    Expect(kIdle, -1);
}

TEST_F(MenuBarStates, OtherMessagesAreNotLookedAt) {
    Access().SetTrackingState(kButton, 1);
    for (const UINT message : {WM_KEYUP, WM_CHAR, WM_MOUSEMOVE, WM_MOUSEWHEEL, WM_TIMER, WM_PAINT})
        EXPECT_FALSE(Translate(message, VK_ESCAPE)) << message;
    EXPECT_FALSE(Translate(WM_SYSKEYUP, 'F'));
    EXPECT_FALSE(bar.TranslateFrameMessage(nullptr));
    Expect(kButton, 1);
}

TEST_F(MenuBarStates, KeysMoveAndEndTheKeyboardMode) {
    Access().SetTrackingState(kButton, 0);
    EXPECT_TRUE(Translate(WM_KEYDOWN, VK_LEFT));
    Expect(kButton, 3);
    EXPECT_TRUE(Translate(WM_KEYDOWN, VK_RIGHT));
    Expect(kButton, 0);
    EXPECT_TRUE(Translate(WM_KEYDOWN, VK_RIGHT));
    Expect(kButton, 1);
    EXPECT_TRUE(Translate(WM_KEYDOWN, VK_ESCAPE));
    Expect(kIdle, -1);
    EXPECT_FALSE(Translate(WM_KEYDOWN, VK_LEFT)) << "the frame's at rest";
    EXPECT_FALSE(Translate(WM_KEYDOWN, VK_ESCAPE));
    Access().SetTrackingState(kButton, 2);
    EXPECT_FALSE(Translate(WM_KEYDOWN, VK_TAB));
    Expect(kIdle, -1);
}

TEST_F(MenuBarStates, LettersThatLeadNowhere) {
    EXPECT_FALSE(Translate(WM_KEYDOWN, 'Q'));
    EXPECT_FALSE(Translate(WM_SYSKEYDOWN, 'Q', kAlt));
    Access().SetTrackingState(kButton, 2);
    EXPECT_TRUE(Translate(WM_KEYDOWN, 'Q'));
    Expect(kButton, 2);
    EXPECT_FALSE(Translate(WM_SYSKEYDOWN, 'Q', kAlt));
    Expect(kIdle, -1);
    EXPECT_FALSE(Translate(WM_KEYDOWN, 0x1234)) << "no key's code";
}

TEST_F(MenuBarStates, ClicksElsewhereEndKeyboardModeThoseOnTheBarDoNot) {
    for (const UINT message : {WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDBLCLK, WM_LBUTTONUP}) {
        Access().SetTrackingState(kButton, 1);
        EXPECT_FALSE(Translate(message, 0, 0, bar.m_hWnd));
        Expect(kButton, 1);
        EXPECT_FALSE(Translate(message, 0));
        Expect(kIdle, -1);
        EXPECT_FALSE(Translate(message, 0));
    }
}

TEST_F(MenuBarStates, KeysForABarWithTheFocus) {
    Access().SetTrackingState(kButton, 0);
    bar.OnKeyDown(VK_RIGHT);
    Expect(kButton, 1);
    bar.OnKeyDown('Q');
    Expect(kButton, 1);
    bar.OnKeyDown(VK_ESCAPE);
    Expect(kIdle, -1);
    bar.OnKeyDown(VK_DOWN);
    Expect(kIdle, -1);
}

TEST_F(MenuBarStates, TogglingWhileAPopupIsOpenDoesNothing) {
    Access().SetTrackingState(kPopup, 2);
    Access().ToggleTrackButtonMode();
    Expect(kPopup, 2);
    Access().SetTrackingState(kPopup, 3);
    Expect(kPopup, 2);
    EXPECT_EQ(Access().PopupButton(), 2) << "the same state: nothing";
    Access().SetTrackingState(kIdle, 1);
    Expect(kIdle, -1);
    EXPECT_EQ(Access().PopupButton(), 2) << "stays";
}

TEST_F(MenuBarStates, GoesAroundAtBothEnds) {
    EXPECT_EQ(Access().GetNextOrPrevButton(0, TRUE), 3);
    EXPECT_EQ(Access().GetNextOrPrevButton(3, FALSE), 0);
    EXPECT_EQ(Access().GetNextOrPrevButton(1, TRUE), 0);
    EXPECT_EQ(Access().GetNextOrPrevButton(1, FALSE), 2);
    EXPECT_EQ(Access().GetNextOrPrevButton(-1, FALSE), 0);
    EXPECT_EQ(Access().GetNextOrPrevButton(-1, TRUE), 3);
}

TEST_F(MenuBarStates, ANegativeButtonOpensNothing) {
    Access().TrackPopup(-1);
    Expect(kIdle, -1);
    Access().SetTrackingState(kButton, -1);
    EXPECT_TRUE(Translate(WM_KEYDOWN, VK_DOWN));
    Expect(kButton, -1);
}

// ---------------------------------------------------------------- input of an open popup

TEST_F(MenuBarStates, ArrowsOfAPopupNameTheNextButtonWhileTheyMayMove) {
    Access().SetTrackingState(kPopup, 3);
    EXPECT_TRUE(Access().LeftArrowMoves());
    EXPECT_TRUE(Access().RightArrowMoves());
    EXPECT_TRUE(Menu(WM_KEYDOWN, VK_RIGHT));
    EXPECT_EQ(Access().NextPopupButton(), 0);
    EXPECT_TRUE(TakesCancelMode());
    EXPECT_TRUE(Menu(WM_KEYDOWN, VK_LEFT));
    EXPECT_EQ(Access().NextPopupButton(), 2);
    EXPECT_TRUE(TakesCancelMode());
    EXPECT_FALSE(Access().EscapeSeen());

    const HMENU file = ::GetSubMenu(bar.GetMenu(), 0);
    Access().SetOpenPopup(file);
    Access().OnMenuSelect(file, 1);
    EXPECT_FALSE(Access().RightArrowMoves()) << "it opens the nested popup";
    EXPECT_TRUE(Access().LeftArrowMoves());
    EXPECT_FALSE(Menu(WM_KEYDOWN, VK_RIGHT));
    Access().OnMenuSelect(::GetSubMenu(file, 1), 0);
    EXPECT_TRUE(Access().RightArrowMoves());
    EXPECT_FALSE(Access().LeftArrowMoves()) << "it closes the nested popup";
    EXPECT_FALSE(Menu(WM_KEYDOWN, VK_LEFT));
    EXPECT_FALSE(TakesCancelMode());
}

TEST_F(MenuBarStates, ACommandsNumberIsTakenForAPosition) {
    const HMENU popup = MakeMenu({{"Plain", 1}, {"Nested", 0, {{"A", 9}}}}, true);
    Access().SetTrackingState(kPopup, 0);
    Access().SetOpenPopup(popup);
    Access().OnMenuSelect(popup, 1);  // the command of the first item
    EXPECT_FALSE(Access().RightArrowMoves());
    Access().SetTrackingState(kIdle);
    Access().SetOpenPopup(nullptr);
    Access().OnMenuSelect(popup, 0);
    EXPECT_FALSE(Access().RightArrowMoves()) << "not looked at while idle";
    ::DestroyMenu(popup);
}

TEST_F(MenuBarStates, EscapeIsSeenAndPassedOn) {
    Access().SetTrackingState(kPopup, 1);
    EXPECT_FALSE(Menu(WM_KEYDOWN, 0x100 | VK_ESCAPE)) << "the low byte counts";
    EXPECT_TRUE(Access().EscapeSeen());
    EXPECT_FALSE(Menu(WM_KEYDOWN, 'A'));
    EXPECT_FALSE(Menu(WM_KEYUP, VK_RIGHT));
    EXPECT_FALSE(Menu(WM_CHAR, 'A'));
    EXPECT_FALSE(TakesCancelMode());
    Access().SetTrackingState(kIdle);
    Access().SetTrackingState(kPopup, 1);
    EXPECT_FALSE(Access().EscapeSeen()) << "forgotten with the next popup";
}

TEST_F(MenuBarStates, TheMouseOverAnotherButtonNamesIt) {
    Access().SetTrackingState(kPopup, 1);
    EXPECT_FALSE(Menu(WM_MOUSEMOVE, 0, ScreenPoint(MiddleOf(2)))) << "never used up";
    EXPECT_EQ(Access().NextPopupButton(), 2);
    EXPECT_TRUE(TakesCancelMode());
    EXPECT_FALSE(Menu(WM_MOUSEMOVE, 0, ScreenPoint(MiddleOf(2))));
    EXPECT_FALSE(TakesCancelMode()) << "the mouse hasn't moved";
    Menu(WM_MOUSEMOVE, 0, ScreenPoint(MiddleOf(1)));
    EXPECT_FALSE(TakesCancelMode()) << "the open one";
    Menu(WM_MOUSEMOVE, 0, ScreenPoint({ItemRect(3).right + 30, 5}));
    EXPECT_FALSE(TakesCancelMode());
    EXPECT_EQ(Access().NextPopupButton(), 2);
}

TEST_F(MenuBarStates, MousePointsMayBeOfTheMessagesWindow) {
    Access().SetTrackingState(kPopup, 1);
    POINT screen = MiddleOf(3);
    ::ClientToScreen(bar.m_hWnd, &screen);
    POINT client = screen;
    ::ScreenToClient(frame.m_hWnd, &client);
    MSG message{frame.m_hWnd, WM_MOUSEMOVE, 0, MAKELPARAM(client.x, client.y), 0, screen};
    EXPECT_FALSE(bar.OnMenuInput(message));
    EXPECT_EQ(Access().NextPopupButton(), 3);
    EXPECT_TRUE(TakesCancelMode());
}

TEST_F(MenuBarStates, AClickOnTheOpenButtonClosesIt) {
    Access().SetTrackingState(kPopup, 1);
    Access().CancelMenuAndTrackNewOne(2);
    TakesCancelMode();
    EXPECT_FALSE(Menu(WM_LBUTTONDOWN, 0, ScreenPoint(MiddleOf(2))));
    EXPECT_TRUE(Menu(WM_LBUTTONDOWN, 0, ScreenPoint(MiddleOf(1))));
    EXPECT_EQ(Access().NextPopupButton(), -1);
    EXPECT_TRUE(TakesCancelMode());
}

TEST_F(MenuBarStates, TheOpenButtonIsNotNamedAgain) {
    Access().SetTrackingState(kPopup, 1);
    Access().CancelMenuAndTrackNewOne(1);
    EXPECT_FALSE(TakesCancelMode());
    EXPECT_EQ(Access().NextPopupButton(), -1);
}

// ---------------------------------------------------------------- the mouse at rest

TEST_F(MenuBarStates, TheMouseLightsWhatItIsOverUntilItStaysPut) {
    const auto move = [&](POINT at) {
        ::SendMessageA(bar.m_hWnd, WM_MOUSEMOVE, 0, MAKELPARAM(at.x, at.y));
        return bar.GetHotItem();
    };
    EXPECT_EQ(move(MiddleOf(1)), 1);
    EXPECT_EQ(move({MiddleOf(1).x + 1, MiddleOf(1).y}), 1);
    EXPECT_EQ(move({MiddleOf(1).x + 1, MiddleOf(1).y}), -1) << "a move that leads nowhere";
    EXPECT_EQ(move(MiddleOf(2)), 2);
    EXPECT_EQ(move({ItemRect(3).right + 30, 5}), -1);
    EXPECT_EQ(State(), kIdle);
}

TEST_F(MenuBarStates, LeavingPutsTheLightOutUnlessAPopupIsOpen) {
    Access().SetHotItem(1);
    ::SendMessageA(bar.m_hWnd, WM_MOUSELEAVE, 0, 0);
    EXPECT_EQ(bar.GetHotItem(), -1);
    Access().SetTrackingState(kPopup, 2);
    ::SendMessageA(bar.m_hWnd, WM_MOUSELEAVE, 0, 0);
    EXPECT_EQ(bar.GetHotItem(), 2);
    Access().SetTrackingState(kIdle);
}

TEST_F(MenuBarStates, TheFirstButtonIsHitBeyondTheClientAreaToo) {
    EXPECT_EQ(Access().HitTest(MiddleOf(0)), 0);
    EXPECT_EQ(Access().HitTest(MiddleOf(2)), 2);
    EXPECT_LT(Access().HitTest({ItemRect(3).right + 30, 5}), 0);
    // A bar so low that the buttons reach below it.
    ::SetWindowPos(bar.m_hWnd, nullptr, 0, 0, 300, 4, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(Access().HitTest({MiddleOf(0).x, 8}), 0);
    EXPECT_EQ(Access().HitTest({MiddleOf(2).x, 8}), -1);
}

TEST_F(MenuBarStates, TheRealMouseLightsAndLeaves) {
    MoveMouse(bar.m_hWnd, {ItemRect(3).right + 60, 5});
    // The platform repeats moves now and then, and a repeated one puts the light out: so it goes on moving.
    int step = 0;
    EXPECT_TRUE(PumpUntil([&] {
        if (bar.GetHotItem() == 1) return true;
        POINT to = MiddleOf(1);
        to.x += step++ / 4 % 2;
        ::ClientToScreen(bar.m_hWnd, &to);
        ::SetCursorPos(to.x, to.y);
        return false;
    }));
    ParkMouse();
    EXPECT_TRUE(PumpUntil([&] { return bar.GetHotItem() == -1; }));
}

TEST_F(MenuBarStates, APressBesideTheButtonsDoesNothing) {
    MoveMouse(bar.m_hWnd, {ItemRect(3).right + 60, 5});
    PressMouse();
    EXPECT_EQ(State(), kIdle);
    ReleaseMouse();
    EXPECT_EQ(::GetCapture(), nullptr);
    ParkMouse();
}

}  // namespace
}  // namespace tavix_test
