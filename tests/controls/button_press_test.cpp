// Hover, press and release: each transition, by single messages.
#include "controls/button_fixture.h"

namespace tavix_test {
namespace {

class ButtonPress : public ButtonTest {
protected:
    HWND MakeListenedButton(DWORD type) {
        HWND button = MakeButton(type);
        Parent().log.Listen({WM_COMMAND});
        ::SetFocus(Parent());
        return button;
    }
    static LRESULT Send(HWND button, UINT message, POINT point) {
        return ::SendMessageA(button, message, 0, Packed(point));
    }
    static void Key(HWND button, UINT message) { ::SendMessageA(button, message, VK_SPACE, 0); }
    using Notifications = std::vector<Received>;
};
INSTANTIATE_TEST_SUITE_P(Worlds, ButtonPress, kControlWorlds, NameOfWorld);

TEST_P(ButtonPress, PointerInsideTurnsTheButtonHotAndTakesCapture) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    EXPECT_EQ(Send(button, WM_MOUSEMOVE, kInside), 0);
    EXPECT_FALSE(::GetUpdateRect(button, nullptr, FALSE)) << "it is painted at once";
    EXPECT_EQ(FaceOf(PictureOfClient(button)), HotFace());
    EXPECT_EQ(::GetCapture(), button);
    EXPECT_NE(::GetFocus(), button);
    // A second move inside changes nothing.
    ::ReleaseCapture();
    Send(button, WM_MOUSEMOVE, {1, 1});
    EXPECT_EQ(::GetCapture(), nullptr);
    EXPECT_EQ(ShownFace(button), HotFace());
}

TEST_P(ButtonPress, PointerLeavingMakesItNormalAndReleasesCapture) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    Send(button, WM_MOUSEMOVE, kInside);
    EXPECT_EQ(Send(button, WM_MOUSEMOVE, kOutside), 0);
    EXPECT_FALSE(::GetUpdateRect(button, nullptr, FALSE)) << "it is painted at once";
    EXPECT_EQ(FaceOf(PictureOfClient(button)), NormalFace());
    EXPECT_EQ(::GetCapture(), nullptr);
    EXPECT_TRUE(Parent().log.Entries().empty());
}

TEST_P(ButtonPress, EdgesOfTheClientAreaCountAsTheRectangleDoes) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    struct Row {
        POINT point;
        bool inside;
    };
    for (const Row& row : {Row{{0, 0}, true}, Row{{99, 29}, true}, Row{{100, 29}, false},
                           Row{{99, 30}, false}, Row{{-1, 0}, false}, Row{{0, -1}, false}}) {
        Send(button, WM_MOUSEMOVE, row.point);
        EXPECT_EQ(ShownFace(button), row.inside ? HotFace() : NormalFace())
            << row.point.x << ", " << row.point.y;
        Send(button, WM_MOUSEMOVE, kOutside);
    }
}

TEST_P(ButtonPress, PressInsideTakesFocusAndCapture) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    EXPECT_EQ(Send(button, WM_LBUTTONDOWN, kInside), 0);
    EXPECT_EQ(ShownFace(button), PressedFace());
    EXPECT_EQ(::GetFocus(), button);
    EXPECT_EQ(::GetCapture(), button);
    EXPECT_TRUE(Parent().log.Entries().empty());
}

TEST_P(ButtonPress, PressWithAPointOutsideLeavesTheFaceNormal) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    Send(button, WM_LBUTTONDOWN, kOutside);
    EXPECT_EQ(ShownFace(button), NormalFace());
}

TEST_P(ButtonPress, DraggingOutOfAPressedButtonKeepsPressAndCapture) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    Send(button, WM_LBUTTONDOWN, kInside);
    Send(button, WM_MOUSEMOVE, kOutside);
    EXPECT_EQ(ShownFace(button), NormalFace());
    EXPECT_EQ(::GetCapture(), button);
    Send(button, WM_MOUSEMOVE, kInside);
    EXPECT_EQ(ShownFace(button), PressedFace());
    EXPECT_EQ(::GetCapture(), button);
}

TEST_P(ButtonPress, ReleaseInsideClicksOnce) {
    for (DWORD type : {BS_PUSHBUTTON, BS_DEFPUSHBUTTON}) {
        HWND button = MakeListenedButton(static_cast<DWORD>(type));
        Send(button, WM_LBUTTONDOWN, kInside);
        EXPECT_EQ(Send(button, WM_LBUTTONUP, kInside), 0);
        EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
        EXPECT_EQ(ShownFace(button), NormalFace());
        EXPECT_EQ(::GetCapture(), nullptr);
        EXPECT_FALSE(::SendMessageA(button, BM_GETSTATE, 0, 0) & BST_PUSHED);
        ::DestroyWindow(button);
    }
}

TEST_P(ButtonPress, ReleaseOutsideClicksNothing) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    Send(button, WM_LBUTTONDOWN, kInside);
    Send(button, WM_MOUSEMOVE, kOutside);
    EXPECT_EQ(Send(button, WM_LBUTTONUP, kOutside), 0);
    EXPECT_TRUE(Parent().log.Entries().empty());
    EXPECT_EQ(ShownFace(button), NormalFace());
    EXPECT_EQ(::GetCapture(), nullptr);
}

// The point of the release is not looked at: what counts is where the last move was.
TEST_P(ButtonPress, ReleaseOfAHotButtonClicksWhateverItsPoint) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    Send(button, WM_MOUSEMOVE, kInside);
    Send(button, WM_LBUTTONUP, kOutside);
    EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
}

TEST_P(ButtonPress, ReleaseOfACoolButtonClicksNothing) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    Send(button, WM_LBUTTONUP, kInside);
    EXPECT_TRUE(Parent().log.Entries().empty());
}

TEST_P(ButtonPress, SpaceKeyPressesAndClicks) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    Key(button, WM_KEYDOWN);
    EXPECT_EQ(ShownFace(button), PressedFace());
    EXPECT_EQ(::GetFocus(), button);
    Key(button, WM_KEYDOWN);  // the key repeats
    EXPECT_TRUE(Parent().log.Entries().empty());
    Key(button, WM_KEYUP);
    EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
    EXPECT_EQ(ShownFace(button), NormalFace());
    Key(button, WM_KEYUP);
    EXPECT_EQ(Parent().log.Count(WM_COMMAND), 1);
}

TEST_P(ButtonPress, SpaceKeyClicksACheckBoxWithoutCheckingIt) {
    for (DWORD type : {BS_CHECKBOX, BS_AUTOCHECKBOX}) {
        SCOPED_TRACE(type);
        HWND button = MakeListenedButton(static_cast<DWORD>(type));
        Key(button, WM_KEYDOWN);
        EXPECT_EQ(::GetFocus(), button);
        Key(button, WM_KEYUP);
        EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
        EXPECT_EQ(::SendMessageA(button, BM_GETCHECK, 0, 0), BST_UNCHECKED);
        ::DestroyWindow(button);
        Parent().log.Clear();
    }
}

// The native radio button may click by itself when it gets the focus; the space key adds its own click.
TEST_P(ButtonPress, SpaceKeyClicksOtherTypesToo) {
    for (DWORD type : {BS_AUTORADIOBUTTON, BS_RADIOBUTTON, BS_3STATE, BS_AUTO3STATE, BS_OWNERDRAW}) {
        SCOPED_TRACE(type);
        HWND button = MakeListenedButton(static_cast<DWORD>(type));
        Key(button, WM_KEYDOWN);
        Parent().log.Clear();
        Key(button, WM_KEYUP);
        EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
        ::DestroyWindow(button);
        Parent().log.Clear();
    }
}

TEST_P(ButtonPress, ClickOnAnAutoCheckBoxTogglesAndNotifiesByTheNativeControl) {
    HWND button = MakeListenedButton(BS_AUTOCHECKBOX);
    for (LRESULT state : {BST_CHECKED, BST_UNCHECKED}) {
        Parent().log.Clear();
        Send(button, WM_LBUTTONDOWN, kInside);
        EXPECT_EQ(Send(button, WM_LBUTTONUP, kInside), 0);
        EXPECT_EQ(::SendMessageA(button, BM_GETCHECK, 0, 0), state);
        EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
        EXPECT_FALSE(::GetUpdateRect(button, nullptr, FALSE));
        EXPECT_EQ(PictureOfClient(button).At(6, 14),
                  TestSkin::ColourOfBitmap(state ? BMP_BTN_CHECK_ON : BMP_BTN_CHECK_OFF));
    }
}

TEST_P(ButtonPress, ClickOnAnAutoRadioButtonChecksItAndUnchecksItsNeighbour) {
    HWND first = MakeListenedButton(BS_AUTORADIOBUTTON | WS_GROUP);
    HWND second = MakeButton(BS_AUTORADIOBUTTON, {20, 60, 120, 90});
    for (HWND button : {first, second}) {
        Parent().log.Clear();
        Send(button, WM_LBUTTONDOWN, kInside);
        Send(button, WM_LBUTTONUP, kInside);
        EXPECT_EQ(::SendMessageA(first, BM_GETCHECK, 0, 0), button == first ? BST_CHECKED : BST_UNCHECKED);
        EXPECT_EQ(::SendMessageA(second, BM_GETCHECK, 0, 0), button == second ? BST_CHECKED : BST_UNCHECKED);
        EXPECT_TRUE(Parent().log.Has(WM_COMMAND));
        EXPECT_EQ(Shown(first).At(6, 14),
                  TestSkin::ColourOfBitmap(button == first ? BMP_BTN_RADIO_ON : BMP_BTN_RADIO_OFF));
        EXPECT_EQ(Shown(second).At(6, 14),
                  TestSkin::ColourOfBitmap(button == second ? BMP_BTN_RADIO_ON : BMP_BTN_RADIO_OFF));
    }
}

// The release leaves both flags of a check box set: the pointer may leave without the capture ending.
TEST_P(ButtonPress, PressedCheckBoxNoLongerReleasesCaptureWhenThePointerLeaves) {
    HWND button = MakeListenedButton(BS_AUTOCHECKBOX);
    const auto leaveKeepsCapture = [&] {
        Send(button, WM_MOUSEMOVE, kOutside);
        ::ReleaseCapture();
        Send(button, WM_MOUSEMOVE, kInside);
        EXPECT_EQ(::GetCapture(), button);
        Send(button, WM_MOUSEMOVE, kOutside);
        return ::GetCapture() == button;
    };
    EXPECT_FALSE(leaveKeepsCapture());
    Send(button, WM_LBUTTONDOWN, kInside);
    Send(button, WM_LBUTTONUP, kInside);
    EXPECT_TRUE(leaveKeepsCapture());
    ::ReleaseCapture();
    ::SendMessageA(button, WM_ENABLE, TRUE, 0);
    EXPECT_FALSE(leaveKeepsCapture());
}

TEST_P(ButtonPress, ReleaseOverAThreeStateBoxIsLost) {
    for (DWORD type : {BS_3STATE, BS_AUTO3STATE}) {
        HWND button = MakeListenedButton(static_cast<DWORD>(type));
        Send(button, WM_LBUTTONDOWN, kInside);
        EXPECT_EQ(Send(button, WM_LBUTTONUP, kInside), 0);
        EXPECT_TRUE(Parent().log.Entries().empty());
        EXPECT_EQ(::SendMessageA(button, BM_GETCHECK, 0, 0), BST_UNCHECKED);
        ::ReleaseCapture();
        ::DestroyWindow(button);
    }
}

TEST_P(ButtonPress, OwnerDrawnButtonKeepsTheNativePress) {
    HWND button = MakeListenedButton(BS_OWNERDRAW);
    Send(button, WM_LBUTTONDOWN, kInside);
    EXPECT_TRUE(::SendMessageA(button, BM_GETSTATE, 0, 0) & BST_PUSHED);
    // Native tracking: the move is passed on.
    ::SendMessageA(button, WM_MOUSEMOVE, MK_LBUTTON, Packed(kOutside));
    EXPECT_FALSE(::SendMessageA(button, BM_GETSTATE, 0, 0) & BST_PUSHED);
    ::SendMessageA(button, WM_MOUSEMOVE, MK_LBUTTON, Packed(kInside));
    Send(button, WM_LBUTTONUP, kInside);
    EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
}

TEST_P(ButtonPress, DisablingKeepsThePressAndEnablingForgetsIt) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    Send(button, WM_LBUTTONDOWN, kInside);
    ::SendMessageA(button, WM_ENABLE, FALSE, 0);
    EXPECT_EQ(ShownFace(button), PressedFace()) << "the flags stay, and the window itself is still enabled";
    ::SendMessageA(button, WM_ENABLE, 2, 0);
    EXPECT_EQ(ShownFace(button), NormalFace());
    Send(button, WM_LBUTTONUP, kInside);
    EXPECT_TRUE(Parent().log.Entries().empty());
}

TEST_P(ButtonPress, ButtonDisabledWhilePressedLooksDisabledAndStillClicks) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON);
    Send(button, WM_LBUTTONDOWN, kInside);
    ::EnableWindow(button, FALSE);
    EXPECT_EQ(ShownFace(button), DisabledFace());
    Send(button, WM_LBUTTONUP, kInside);
    EXPECT_EQ(Parent().log.Entries(), Notifications{ClickOf(Parent(), button)});
    EXPECT_EQ(ShownFace(button), DisabledFace());
}

TEST_P(ButtonPress, DoubleClickIsASecondPress) {
    HWND button = MakeListenedButton(BS_PUSHBUTTON | BS_NOTIFY);
    ::SetFocus(button);
    Parent().log.Clear();
    Send(button, WM_LBUTTONDOWN, kInside);
    Send(button, WM_LBUTTONUP, kInside);
    Send(button, WM_LBUTTONDBLCLK, kInside);
    EXPECT_EQ(ShownFace(button), PressedFace());
    Send(button, WM_LBUTTONUP, kInside);
    const Received click = ClickOf(Parent(), button);
    Notifications clicks;
    for (const Received& entry : Parent().log.Entries()) {
        EXPECT_NE(HIWORD(entry.wParam), BN_DOUBLECLICKED);
        if (HIWORD(entry.wParam) == BN_CLICKED) clicks.push_back(entry);
    }
    EXPECT_EQ(clicks, (Notifications{click, click}));
}

TEST_P(ButtonPress, ButtonWithoutAParentClicksNobody) {
    HWND button = ::CreateWindowExA(0, "Button", "Alone", WS_POPUP | WS_VISIBLE, 10, 10, 100, 30, nullptr,
                                    nullptr, ::GetModuleHandleA(nullptr), nullptr);
    ASSERT_TRUE(IsSkinned(button));
    EXPECT_EQ(ShownFace(button), NormalFace());
    Send(button, WM_LBUTTONDOWN, kInside);
    EXPECT_EQ(ShownFace(button), PressedFace());
    EXPECT_EQ(Send(button, WM_LBUTTONUP, kInside), 0);
    ::EnableWindow(button, FALSE);
    EXPECT_EQ(ShownFace(button), DisabledFace());
    ::DestroyWindow(button);
}

}  // namespace
}  // namespace tavix_test
