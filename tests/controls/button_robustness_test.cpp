// Buttons in bad company: hosts that destroy them, skins without art, thousands of them.
#include <fstream>

#include "controls/button_fixture.h"
#include "main/gui_objects.h"

namespace tavix_test {
namespace {

class ButtonRobustness : public ButtonTest {
protected:
    /* Runs when the first message of a kind reaches the parent. */
    void OnParent(UINT message, std::function<void()> action) {
        Parent().handler = [message, action,
                            done = false](const Received& received) mutable -> std::optional<LRESULT> {
            if (received.message != message || done) return std::nullopt;
            done = true;
            action();
            return 0;
        };
    }
    static void Click(HWND button) {
        ::SendMessageA(button, WM_LBUTTONDOWN, 0, Packed(kInside));
        ::SendMessageA(button, WM_LBUTTONUP, 0, Packed(kInside));
    }
};
INSTANTIATE_TEST_SUITE_P(Worlds, ButtonRobustness, kControlWorlds, NameOfWorld);

TEST_P(ButtonRobustness, ButtonMayBeDestroyedByItsOwnClick) {
    for (DWORD type : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON, BS_OWNERDRAW}) {
        SCOPED_TRACE(type);
        UseParent(0);
        HWND button = MakeButton(static_cast<DWORD>(type));
        OnParent(WM_COMMAND, [button] { ::DestroyWindow(button); });
        Click(button);
        EXPECT_FALSE(::IsWindow(button));
        EXPECT_FALSE(IsSkinned(button));
    }
}

TEST_P(ButtonRobustness, ParentMayBeDestroyedByAClick) {
    for (DWORD type : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON, BS_OWNERDRAW}) {
        SCOPED_TRACE(type);
        HWND parent = UseParent(0);
        HWND button = MakeButton(static_cast<DWORD>(type));
        OnParent(WM_COMMAND, [parent] { ::DestroyWindow(parent); });
        Click(button);
        EXPECT_FALSE(::IsWindow(parent));
        EXPECT_FALSE(IsSkinned(button));
    }
}

TEST_P(ButtonRobustness, ButtonMayBeDestroyedByTheSpaceKey) {
    HWND button = MakeButton(BS_AUTOCHECKBOX);
    OnParent(WM_COMMAND, [button] { ::DestroyWindow(button); });
    ::SendMessageA(button, WM_KEYDOWN, VK_SPACE, 0);
    ::SendMessageA(button, WM_KEYUP, VK_SPACE, 0);
    EXPECT_FALSE(::IsWindow(button));
}

// The parent repaints in the middle of many of the button's messages.
TEST_P(ButtonRobustness, ButtonMayBeDestroyedWhileTheParentRepaints) {
    struct Row {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };
    const LPARAM text = reinterpret_cast<LPARAM>("New");
    for (const Row& row : {Row{WM_ENABLE, 1, 0}, Row{BM_SETSTATE, 1, 0}, Row{BM_SETCHECK, 1, 0},
                           Row{WM_LBUTTONDOWN, 0, Packed(kInside)}, Row{WM_LBUTTONDBLCLK, 0, Packed(kInside)},
                           Row{WM_SETTEXT, 0, text}})
        for (DWORD type : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
            SCOPED_TRACE(std::to_string(row.message) + ", type " + std::to_string(type));
            UseParent(0);
            HWND button = MakeButton(static_cast<DWORD>(type));
            OnParent(WM_PAINT, [button] { ::DestroyWindow(button); });
            ::SendMessageA(button, row.message, row.wParam, row.lParam);
            EXPECT_FALSE(::IsWindow(button));
            ::ValidateRect(Parent(), nullptr);
        }
}

TEST_P(ButtonRobustness, OwnerDrawnButtonMayBeDestroyedByTheQuestionForItsBrush) {
    for (bool answersWithBrush : {false, true}) {
        UseParent(0);
        HWND button = MakeButton(BS_OWNERDRAW);
        Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message != WM_CTLCOLORBTN) return std::nullopt;
            ::DestroyWindow(button);
            return answersWithBrush ? reinterpret_cast<LRESULT>(::GetStockObject(WHITE_BRUSH)) : 0;
        };
        for (int i = 0; i < 2 && ::IsWindow(button); ++i)
            EXPECT_EQ(::SendMessageA(button, WM_ERASEBKGND, 0, 0), 1);
        EXPECT_FALSE(::IsWindow(button));
    }
}

TEST_P(ButtonRobustness, ButtonMayBeDestroyedByItsOwnPainting) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    MessageSpy spy(button);
    spy.handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_PAINT) return std::nullopt;
        ::DestroyWindow(button);
        return 0;
    };
    ::SendMessageA(button, WM_MOUSEMOVE, 0, Packed(kInside));
    EXPECT_FALSE(::IsWindow(button));
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_P(ButtonRobustness, FileThatIsNoSkinGivesButtonsWithoutArt) {
    const TempFile noSkin;
    std::ofstream(noSkin.Path()) << "not a skin";
    ASSERT_EQ(::SetSkinFromFile(noSkin.Path()), 1);
    for (DWORD type : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON, BS_OWNERDRAW}) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(static_cast<DWORD>(type));
        Click(button);
        ::SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
        RepaintedClient(button);
        EXPECT_TRUE(IsSkinned(button));
        ::DestroyWindow(button);
    }
}

TEST_P(ButtonRobustness, LongTextIsKeptWhole) {
    const std::string text(10000, 'x');
    for (DWORD type : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        HWND button = MakeButton(static_cast<DWORD>(type), kButtonPlace, text.c_str());
        EXPECT_EQ(::GetWindowTextLengthA(button), 10000);
        ::SetWindowTextA(button, (text + "y").c_str());
        ::ReleaseCapture();
        EXPECT_EQ(::GetWindowTextLengthA(button), 10001);
        EXPECT_NE(RepaintedClient(button).CountOf(kParentColour), 100 * 30);
    }
}

TEST_P(ButtonRobustness, OddSizesAreSurvived) {
    for (DWORD type = 0; type < 16; ++type) {
        if (type == BS_GROUPBOX) continue;
        HWND button = MakeButton(type);
        for (const SIZE size :
             {SIZE{0, 0}, SIZE{1, 1}, SIZE{0, 30}, SIZE{30, 0}, SIZE{3, 2}, SIZE{20000, 3}}) {
            ::SetWindowPos(button, nullptr, -50, -7, size.cx, size.cy, SWP_NOZORDER);
            ::RedrawWindow(button, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
            Click(button);
            EXPECT_TRUE(::IsWindow(button));
            ::ReleaseCapture();
        }
        ::DestroyWindow(button);
    }
}

// The two tests below run in each of the four worlds: a thousand buttons and ten thousand paintings
// in all. One object more may be the platform's; growth that comes again with each round is a leak.
TEST_P(ButtonRobustness, ThousandButtonsLeaveNothingBehind) {
    constexpr DWORD kTypes[] = {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON, BS_OWNERDRAW,
                                BS_AUTO3STATE};
    const auto round = [&](int count) {
        for (int i = 0; i < count; ++i) {
            HWND button =
                CreateControl(GetParam().charset, Parent(), "Button", "Label", kTypes[i % 5], kButtonPlace);
            ::UpdateWindow(button);
            if (i % 10 < 5) Click(button);
            ::DestroyWindow(button);
        }
        PumpMessages(0);
    };
    round(10);
    const int user = CountUserObjects();
    int gdi = CountGdiObjects(), grown = 0;
    ASSERT_GT(gdi, 0);
    for (int i = 0; i < 5; ++i) {
        round(50);
        const int now = CountGdiObjects();
        grown += now > gdi;
        gdi = now;
    }
    EXPECT_LT(grown, 3);
    EXPECT_EQ(CountUserObjects(), user);
}

TEST_P(ButtonRobustness, ThousandsOfPaintingsLeaveNothingBehind) {
    for (DWORD type : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        UseParent(type == BS_PUSHBUTTON ? 0 : WS_CLIPCHILDREN);
        HWND button = MakeButton(static_cast<DWORD>(type));
        const auto round = [&](int count) {
            for (int i = 0; i < count; ++i)
                ::RedrawWindow(button, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        };
        round(50);
        int gdi = CountGdiObjects(), grown = 0;
        for (int i = 0; i < 5; ++i) {
            round(170);
            const int now = CountGdiObjects();
            grown += now > gdi;
            gdi = now;
        }
        EXPECT_LT(grown, 3) << "type " << type;
    }
}

}  // namespace
}  // namespace tavix_test
