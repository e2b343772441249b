// Buttons under real mouse and keyboard input.
#include "controls/button_fixture.h"

namespace tavix_test {
namespace {

class ButtonInput : public ButtonTest {
protected:
    void SetUp() override {
        ButtonTest::SetUp();
        ParkMouse();
    }
    void TearDown() override {
        // A test that failed halfway leaves no button or key down for the next one.
        if (::GetAsyncKeyState(VK_LBUTTON) < 0) ReleaseMouse();
        if (::GetAsyncKeyState(VK_SPACE) < 0) ReleaseKey(VK_SPACE);
        ButtonTest::TearDown();
    }
    HWND MakeListenedButton(DWORD type) {
        HWND button = MakeButton(type);
        EXPECT_TRUE(BringToFront(Parent()));
        Parent().log.Listen({WM_COMMAND});
        Parent().log.Clear();
        return button;
    }
    using Notifications = std::vector<Received>;
};
INSTANTIATE_TEST_SUITE_P(Worlds, ButtonInput, kControlWorlds, NameOfWorld);

TEST_P(ButtonInput, PointerOverThePushButtonTurnsItHotAndLeavingTurnsItBack) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    MoveMouse(button, kInside);
    EXPECT_TRUE(PumpUntil([&] { return ShownFace(button) == HotFace(); }));
    MoveMouse(button, kOutside);
    EXPECT_TRUE(PumpUntil([&] { return ShownFace(button) == NormalFace(); }));
    EXPECT_TRUE(Parent().log.Entries().empty());
}

TEST_P(ButtonInput, ClickTellsTheParentOnce) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    MoveMouse(button, kInside);
    PressMouse();
    EXPECT_TRUE(PumpUntil([&] { return ShownFace(button) == PressedFace(); }));
    EXPECT_EQ(::GetFocus(), button);
    EXPECT_TRUE(Parent().log.Entries().empty());
    ReleaseMouse();
    EXPECT_TRUE(PumpUntil([&] { return Parent().log.Has(WM_COMMAND); }));
    PumpMessages(50);
    EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
}

TEST_P(ButtonInput, DraggingOutAndReleasingClicksNothing) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    MoveMouse(button, kInside);
    PressMouse();
    MoveMouse(button, kOutside);
    EXPECT_TRUE(PumpUntil([&] { return ShownFace(button) == NormalFace(); }));
    EXPECT_EQ(::GetCapture(), button);
    ReleaseMouse();
    EXPECT_TRUE(PumpUntil([&] { return ::GetCapture() == nullptr; }));
    PumpMessages(50);
    EXPECT_TRUE(Parent().log.Entries().empty());
    EXPECT_EQ(ShownFace(button), NormalFace());
}

TEST_P(ButtonInput, DoubleClickIsTwoClicks) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    MessageSpy spy(button);
    spy.log.Listen({WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK});
    DoubleClickMouse(button, kInside);
    EXPECT_TRUE(PumpUntil([&] { return Parent().log.Count(WM_COMMAND) == 2; }));
    const Received click = ClickOf(Parent(), button);
    EXPECT_EQ(Parent().log.Entries(), (Notifications{click, click}));
    const std::vector<UINT> expected{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONDOWN,
                                     WM_LBUTTONUP};
    EXPECT_EQ(spy.log.Messages(), expected);
}

TEST_P(ButtonInput, SpaceKeyClicksThePushButtonOnce) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    ::SetFocus(button);
    Parent().log.Clear();
    PressKey(VK_SPACE);
    EXPECT_TRUE(PumpUntil([&] { return ShownFace(button) == PressedFace(); }));
    EXPECT_TRUE(Parent().log.Entries().empty());
    ReleaseKey(VK_SPACE);
    EXPECT_TRUE(PumpUntil([&] { return Parent().log.Has(WM_COMMAND); }));
    PumpMessages(50);
    EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
    EXPECT_EQ(::GetFocus(), button);
    EXPECT_EQ(ShownFace(button), NormalFace());
}

TEST_P(ButtonInput, SpaceKeyClicksTheCheckBoxAndLeavesItsState) {
    HWND button = MakeListenedButton(BS_AUTOCHECKBOX);
    ::SetFocus(button);
    Parent().log.Clear();
    PressKey(VK_SPACE);
    ReleaseKey(VK_SPACE);
    EXPECT_TRUE(PumpUntil([&] { return Parent().log.Has(WM_COMMAND); }));
    EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
    EXPECT_EQ(::SendMessageA(button, BM_GETCHECK, 0, 0), BST_UNCHECKED);
}

TEST_P(ButtonInput, ClicksToggleTheAutoCheckBox) {
    HWND button = MakeListenedButton(BS_AUTOCHECKBOX);
    for (LRESULT state : {BST_CHECKED, BST_UNCHECKED}) {
        Parent().log.Clear();
        ClickMouse(button, kInside);
        EXPECT_TRUE(PumpUntil([&] { return ::SendMessageA(button, BM_GETCHECK, 0, 0) == state; }));
        PumpMessages(50);
        EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
        EXPECT_EQ(Shown(button).At(6, 14),
                  TestSkin::ColourOfBitmap(state ? BMP_BTN_CHECK_ON : BMP_BTN_CHECK_OFF));
        MoveMouse(button, kOutside);
        ::ReleaseCapture();
    }
}

TEST_P(ButtonInput, ClickOnTheAutoRadioButtonChecksIt) {
    HWND button = MakeListenedButton(BS_AUTORADIOBUTTON);
    ClickMouse(button, kInside);
    EXPECT_TRUE(PumpUntil([&] { return ::SendMessageA(button, BM_GETCHECK, 0, 0) == BST_CHECKED; }));
    EXPECT_TRUE(
        PumpUntil([&] { return Shown(button).At(6, 14) == TestSkin::ColourOfBitmap(BMP_BTN_RADIO_ON); }));
    EXPECT_TRUE(Parent().log.Has(WM_COMMAND));
}

TEST_P(ButtonInput, ClickOnAThreeStateBoxIsLost) {
    HWND button = MakeListenedButton(BS_AUTO3STATE);
    ClickMouse(button, kInside);
    PumpMessages(50);
    EXPECT_EQ(::SendMessageA(button, BM_GETCHECK, 0, 0), BST_UNCHECKED);
    EXPECT_TRUE(Parent().log.Entries().empty());
}

TEST_P(ButtonInput, OwnerDrawnButtonClicksNatively) {
    HWND button = MakeListenedButton(BS_OWNERDRAW);
    ClickMouse(button, kInside);
    EXPECT_TRUE(PumpUntil([&] { return Parent().log.Has(WM_COMMAND); }));
    EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
}

TEST_P(ButtonInput, DisabledButtonTakesNoClick) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON | WS_DISABLED);
    ClickMouse(button, kInside);
    PumpMessages(50);
    EXPECT_TRUE(Parent().log.Entries().empty());
    EXPECT_EQ(ShownFace(button), DisabledFace());
}

}  // namespace
}  // namespace tavix_test
