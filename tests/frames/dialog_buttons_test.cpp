/* A dialog's four caption buttons in all their combinations: place, picture, hit test, command. */
#include <map>
#include <string>
#include <vector>

#include "frames/host_dialog.h"
#include "frames/host_frame.h"
#include "tavixskin.h"

namespace tavix_test {
namespace {

constexpr int kWidth = kDialogPlace.right - kDialogPlace.left;

struct ButtonKind {
    LRESULT code;
    DWORD style;
    int pressed;  // how the skin names it while it is pressed
    UINT message;
    WPARAM command;
};
// From the right.
constexpr ButtonKind kButtons[] = {{HTCLOSE, WS_SYSMENU, 4, WM_CLOSE, 0},
                                   {HTMAXBUTTON, WS_MAXIMIZEBOX, 1, WM_SYSCOMMAND, SC_MAXIMIZE},
                                   {HTMINBUTTON, WS_MINIMIZEBOX, 2, WM_SYSCOMMAND, SC_MINIMIZE},
                                   {HTHELP, DS_CONTEXTHELP, 3, WM_SYSCOMMAND, SC_CONTEXTHELP}};

/* Where each button that a style has should stand. */
std::map<LRESULT, CRect> Places(DWORD style) {
    std::map<LRESULT, CRect> places;
    int right = kWidth - 8;
    for (const ButtonKind& button : kButtons) {
        if (!(style & button.style)) continue;
        places[button.code] = CRect(right - 16, 4, right, 20);
        right -= 18;
    }
    return places;
}

/* One skin serves all sets: none of the tests changes it. */
class DialogButtonSet : public testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite() {
        ParkMouse();
        DialogSkin installed;
        ASSERT_EQ(::InstallTavixSkin(installed.Write()), 1);
    }
    static void TearDownTestSuite() { ::UnInstallTavixSkin(); }
    ~DialogButtonSet() override { ::ReleaseCapture(); }

    DWORD Style() const {
        DWORD style = WS_POPUP | WS_CAPTION;
        for (int i = 0; i < 4; ++i)
            if (GetParam() >> i & 1) style |= kButtons[i].style;
        return style;
    }

    DialogSkin skin;  // as it is installed
};
std::string NameOfSet(const testing::TestParamInfo<int>& info) {
    const char* const names[] = {"Close", "Max", "Min", "Help"};
    std::string name;
    for (int i = 0; i < 4; ++i)
        if (info.param >> i & 1) name += names[i];
    return name.empty() ? "None" : name;
}
INSTANTIATE_TEST_SUITE_P(All, DialogButtonSet, testing::Range(0, 16), NameOfSet);

TEST_P(DialogButtonSet, StandsFromTheRightWithoutGapsForWhatIsMissing) {
    HostDialog dialog({.style = Style()});
    const std::map<LRESULT, CRect> places = Places(Style());
    for (const ButtonKind& button : kButtons) {
        const auto place = places.find(button.code);
        if (place != places.end())
            EXPECT_EQ(dialog.Button(button.code), place->second) << button.code;
        else
            EXPECT_TRUE(dialog.Button(button.code).IsRectEmpty()) << button.code;
    }
}

TEST_P(DialogButtonSet, IsPaintedInEveryState) {
    HostDialog dialog({.style = Style()});
    for (int state = 0; state <= 2; ++state) {
        dialog.Skin().SetStates(state, (state + 1) % 3, (state + 2) % 3, state);
        EXPECT_EQ(PaintedDifference(skin, dialog, LookOf(dialog)), "") << state;
    }
}

TEST_P(DialogButtonSet, IsHitAtEveryPixelOfAButtonAndNowhereElse) {
    HostDialog dialog({.style = Style()});
    dialog.handler = Answering(WM_NCHITTEST, HTGROWBOX);
    const std::map<LRESULT, CRect> places = Places(Style());
    const auto expected = [&](POINT at) -> LRESULT {
        for (const auto& [code, place] : places)
            if (place.PtInRect(at)) return code;
        return HTGROWBOX;
    };
    for (int x = kWidth - 100; x < kWidth; ++x)
        for (const int y : {0, 3, 4, 12, 19, 20, 23}) {
            const POINT at{x, y};
            ASSERT_EQ(dialog.Send(WM_NCHITTEST, 0, dialog.Packed(at)), expected(at)) << x << "," << y;
        }
}

TEST_P(DialogButtonSet, WithdrawsTheSystemsAnswersForButtons) {
    HostDialog dialog({.style = Style()});
    for (const LRESULT answer : kButtonCodes) {
        dialog.handler = Answering(WM_NCHITTEST, answer);
        EXPECT_EQ(dialog.Send(WM_NCHITTEST, 0, dialog.Packed({200, 120})), HTNOWHERE) << answer;
    }
    for (const LRESULT answer :
         {HTCLIENT, HTCAPTION, HTSYSMENU, HTLEFT, HTBORDER, HTNOWHERE, HTTRANSPARENT}) {
        dialog.handler = Answering(WM_NCHITTEST, answer);
        EXPECT_EQ(dialog.Send(WM_NCHITTEST, 0, dialog.Packed({200, 120})), answer);
    }
}

TEST_P(DialogButtonSet, APressShowsCapturesAndKeepsTheHostOut) {
    HostDialog dialog({.style = Style()});
    for (const auto& [code, place] : Places(Style())) {
        dialog.Skin().SetStates(1, 1, 1, 1);
        dialog.log.Clear();
        MessageSpy spy(dialog);
        spy.log.Listen({WM_NCPAINT});
        EXPECT_EQ(dialog.Send(WM_NCLBUTTONDOWN, static_cast<WPARAM>(code), dialog.Packed(Middle(place))), 0);
        EXPECT_FALSE(spy.log.Has(WM_NCPAINT)) << "painted by a direct call";
        // Nothing is sent for it, and it shows at once.
        const CRect rect = dialog.Rect();
        EXPECT_EQ(DifferenceOutside(ExpectedDialog(skin, rect.Width(), rect.Height(), LookOf(dialog)),
                                    PictureOfWindow(dialog), dialog.Client()),
                  "");
        EXPECT_EQ(::GetCapture(), dialog.window);
        EXPECT_FALSE(dialog.log.Has(WM_NCLBUTTONDOWN));
        for (const ButtonKind& button : kButtons) {
            if (button.code == code) {
                EXPECT_EQ(dialog.Skin().Pressed(), button.pressed);
            }
        }
        const std::map<LRESULT, int> states{
            {HTCLOSE, 2000}, {HTMAXBUTTON, 200}, {HTMINBUTTON, 20}, {HTHELP, 2}};
        EXPECT_EQ(dialog.States(), states.at(code)) << "that one pressed, all others normal";
        ::ReleaseCapture();
    }
}

TEST_P(DialogButtonSet, AReleaseOnThePressedButtonSendsItsCommandAndLeavesItHot) {
    HostDialog dialog({.style = Style()});
    std::vector<Received> commands;
    int pressedInCommand = -1;
    dialog.handler = [&](const Received& r) -> std::optional<LRESULT> {
        if (r.message != WM_CLOSE && r.message != WM_SYSCOMMAND) return std::nullopt;
        commands.push_back(r);
        pressedInCommand = dialog.Skin().Pressed();
        return 0;
    };
    const std::map<LRESULT, CRect> places = Places(Style());
    for (const ButtonKind& button : kButtons) {
        const auto place = places.find(button.code);
        if (place == places.end()) continue;
        commands.clear();
        const POINT at = Middle(place->second);
        dialog.Send(WM_NCLBUTTONDOWN, static_cast<WPARAM>(button.code), dialog.Packed(at));
        const POINT inClient = dialog.InClient(at);
        EXPECT_EQ(dialog.Send(WM_LBUTTONUP, 0, MAKELPARAM(inClient.x, inClient.y)), 0);
        const Received expected{dialog, button.message, button.command, 0};
        ASSERT_EQ(commands.size(), 1u) << button.code;
        EXPECT_EQ(commands[0], expected);
        EXPECT_EQ(pressedInCommand, button.pressed) << "the press ends after the command";
        EXPECT_EQ(dialog.Skin().Pressed(), 0);
        EXPECT_NE(::GetCapture(), dialog.window);
        const std::map<LRESULT, int> states{
            {HTCLOSE, 1000}, {HTMAXBUTTON, 100}, {HTMINBUTTON, 10}, {HTHELP, 1}};
        EXPECT_EQ(dialog.States(), states.at(button.code));
        EXPECT_EQ(PaintedDifference(skin, dialog, LookOf(dialog)), "");
    }
}

TEST_P(DialogButtonSet, AReleaseElsewhereSendsNothing) {
    HostDialog dialog({.style = Style()});
    const std::map<LRESULT, CRect> places = Places(Style());
    for (const ButtonKind& pressed : kButtons) {
        const auto release = [&](POINT inWindow) {
            dialog.log.Clear();
            dialog.Send(WM_NCLBUTTONDOWN, static_cast<WPARAM>(pressed.code), dialog.Packed({0, 0}));
            const POINT at = dialog.InClient(inWindow);
            dialog.Send(WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
            EXPECT_FALSE(dialog.log.Has(WM_CLOSE));
            EXPECT_FALSE(dialog.log.Has(WM_SYSCOMMAND));
            EXPECT_EQ(dialog.Skin().Pressed(), 0);
            EXPECT_NE(::GetCapture(), dialog.window);
        };
        for (const auto& [code, place] : places)
            if (code != pressed.code) release(Middle(place));
        release({200, 120});
        EXPECT_EQ(dialog.States(), 0);
    }
}

class DialogButtons : public DialogTest {
protected:
    /* The system command of a press and release on a button; none is carried out. */
    WPARAM CommandOf(HostDialog& dialog, LRESULT code) const {
        WPARAM command = 0;
        dialog.handler = [&](const Received& r) -> std::optional<LRESULT> {
            if (r.message != WM_SYSCOMMAND) return std::nullopt;
            command = r.wParam;
            return 0;
        };
        const POINT at = Middle(dialog.Button(code));
        dialog.Send(WM_NCLBUTTONDOWN, static_cast<WPARAM>(code), dialog.Packed(at));
        // Worked out by the platform: an iconic window has its client area elsewhere.
        const CRect rect = dialog.Rect();
        POINT client{rect.left + at.x, rect.top + at.y};
        ::ScreenToClient(dialog, &client);
        dialog.Send(WM_LBUTTONUP, 0, MAKELPARAM(client.x, client.y));
        dialog.handler = nullptr;
        return command;
    }
};

TEST_F(DialogButtons, MaximiseAndMinimiseTurnIntoRestore) {
    HostDialog dialog;
    EXPECT_EQ(CommandOf(dialog, HTMAXBUTTON), static_cast<WPARAM>(SC_MAXIMIZE));
    EXPECT_EQ(CommandOf(dialog, HTMINBUTTON), static_cast<WPARAM>(SC_MINIMIZE));
    ::ShowWindow(dialog, SW_MAXIMIZE);
    EXPECT_EQ(CommandOf(dialog, HTMAXBUTTON), static_cast<WPARAM>(SC_RESTORE));
    EXPECT_EQ(CommandOf(dialog, HTMINBUTTON), static_cast<WPARAM>(SC_MINIMIZE));
    ::ShowWindow(dialog, SW_MINIMIZE);
    EXPECT_EQ(CommandOf(dialog, HTMINBUTTON), static_cast<WPARAM>(SC_RESTORE));
    ::ShowWindow(dialog, SW_RESTORE);
}

// The point that such a message brings is of the screen, and moves by the client area's place all the same.
TEST_F(DialogButtons, ANonClientReleaseTestsAShiftedPoint) {
    HostDialog dialog;
    dialog.handler = Answering(WM_CLOSE, 0);
    const POINT close = Middle(dialog.Button(HTCLOSE));
    const auto pressAndRelease = [&](POINT screen) {
        dialog.log.Clear();
        dialog.Send(WM_NCLBUTTONDOWN, HTCLOSE, dialog.Packed(close));
        dialog.Send(WM_NCLBUTTONUP, HTCLOSE, MAKELPARAM(screen.x, screen.y));
        return dialog.log.Count(WM_CLOSE);
    };
    const CRect rect = dialog.Rect();
    const CRect client = dialog.Client();
    const POINT onScreen{rect.left + close.x, rect.top + close.y};
    EXPECT_EQ(pressAndRelease(onScreen), 0);
    EXPECT_EQ(dialog.States(), 0);
    EXPECT_EQ(pressAndRelease({onScreen.x - rect.left - client.left, onScreen.y - rect.top - client.top}), 1);
    EXPECT_EQ(dialog.States(), 1000);
}

TEST_F(DialogButtons, AButtonWithoutAPlaceCanBePressedByItsCodeAndSendsNothing) {
    HostDialog dialog({.style = WS_POPUP | WS_CAPTION});
    dialog.log.Clear();
    dialog.Send(WM_NCLBUTTONDOWN, HTCLOSE, 0);
    EXPECT_EQ(dialog.Skin().Pressed(), 4);
    dialog.Send(WM_LBUTTONUP, 0, 0);
    EXPECT_EQ(dialog.Skin().Pressed(), 0);
    EXPECT_FALSE(dialog.log.Has(WM_CLOSE));
}

TEST_F(DialogButtons, StandAlsoWhereThereIsNoCaption) {
    const DWORD style = WS_POPUP | kAllDialogButtons;
    HostDialog dialog({.style = style});
    const std::map<LRESULT, CRect> places = Places(style);
    for (const LRESULT code : kButtonCodes) {
        EXPECT_EQ(dialog.Button(code), places.at(code));
        EXPECT_EQ(dialog.Send(WM_NCHITTEST, 0, dialog.Packed(Middle(places.at(code)))), code);
    }
}

TEST_F(DialogButtons, WithoutInitDialogThereAreNone) {
    HWND window = ::CreateWindowExA(0, "#32770", "", kDialogStyle, 140, 110, 400, 240, nullptr, nullptr,
                                    ::GetModuleHandleA(nullptr), nullptr);
    ASSERT_TRUE(window);
    ASSERT_TRUE(IsSkinned(window));
    EXPECT_NE(::GetWindowLongA(window, GWL_STYLE) & WS_SYSMENU, 0) << "nothing was taken from the style";
    for (int x = 0; x < 400; ++x) {
        const LRESULT hit = ::SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(140 + x, 122));
        for (const LRESULT code : kButtonCodes) ASSERT_NE(hit, code) << x;
    }
    ::DestroyWindow(window);
}

TEST_F(DialogButtons, KeepTheGeometryThatTheSkinHadWhenTheDialogWasMade) {
    HostDialog dialog;
    skin.SetButtons(SZ_DLG_BUTTONS, -20, 2, 10, 12);
    UseChangedSkin();
    ::SetWindowPos(dialog, nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(dialog.Button(HTCLOSE), CRect(276, 4, 292, 20));
    HostDialog later;
    EXPECT_EQ(later.Button(HTCLOSE), CRect(kWidth - 30, 2, kWidth - 20, 14));
    EXPECT_EQ(later.Button(HTMAXBUTTON), CRect(kWidth - 42, 2, kWidth - 32, 14));
}

}  // namespace
}  // namespace tavix_test
