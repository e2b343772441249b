/* The mouse on a dialog: icon, right button, hover, timer, and presses by a real mouse. */
#include "frames/host_dialog.h"
#include "frames/host_frame.h"

namespace tavix_test {
namespace {

constexpr LRESULT kHitIcon = 22;

class DialogInput : public DialogTest {
protected:
    static LRESULT Hit(const HostDialog& dialog, POINT inWindow) {
        return dialog.Send(WM_NCHITTEST, 0, dialog.Packed(inWindow));
    }
    static LRESULT Hover(const HostDialog& dialog, LRESULT hitCode, POINT inWindow) {
        return dialog.Send(WM_NCMOUSEMOVE, static_cast<WPARAM>(hitCode), dialog.Packed(inWindow));
    }
    /* The real mouse over a point of the window. */
    static void MoveTo(const HostDialog& dialog, POINT inWindow) {
        MoveMouse(dialog, dialog.InClient(inWindow));
    }
};

class DialogIconHit : public DialogInput {};

TEST_F(DialogIconHit, AnswersItsOwnCodeAtTheBordersEdge) {
    HostDialog dialog;
    dialog.handler = Answering(WM_NCHITTEST, HTGROWBOX);
    const FlatIcon icon(RGB(1, 2, 3));
    dialog.Send(WM_SETICON, ICON_SMALL, icon);
    const CRect place(4, 5, 4 + ::GetSystemMetrics(SM_CXSMICON), 5 + ::GetSystemMetrics(SM_CYSMICON));
    for (int y = 0; y < 24; ++y)
        for (int x = 0; x < 40; ++x) {
            const LRESULT expected = place.PtInRect({x, y}) ? kHitIcon : HTGROWBOX;
            ASSERT_EQ(Hit(dialog, {x, y}), expected) << x << "," << y;
        }
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
    EXPECT_EQ(Hit(dialog, {10, 10}), HTGROWBOX) << "no icon, no answer";
}

TEST_F(DialogIconHit, ComesBeforeTheButtons) {
    HostDialog dialog({.place = CRect(100, 100, 128, 160)});
    const POINT both{10, 10};
    ASSERT_TRUE(dialog.Button(HTCLOSE).PtInRect(both));
    EXPECT_EQ(Hit(dialog, both), HTCLOSE);
    const FlatIcon icon(RGB(1, 2, 3));
    dialog.Send(WM_SETICON, ICON_SMALL, icon);
    EXPECT_EQ(Hit(dialog, both), kHitIcon);
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
}

TEST_F(DialogIconHit, FollowsTheSkinsLeftBorder) {
    HostDialog dialog;
    const FlatIcon icon(RGB(1, 2, 3));
    dialog.Send(WM_SETICON, ICON_SMALL, icon);
    skin.SetSize(SZ_DLG_LEFT, 30);
    UseChangedSkin();
    EXPECT_NE(Hit(dialog, {10, 10}), kHitIcon);
    EXPECT_EQ(Hit(dialog, {35, 10}), kHitIcon);
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
}

/* The real right mouse button, held down over a window's client area. */
class RightButtonHeld {
public:
    explicit RightButtonHeld(HWND window) {
        MoveMouse(window, {100, 100});
        Send(MOUSEEVENTF_RIGHTDOWN);
        EXPECT_TRUE(PumpUntil([] { return ::GetKeyState(VK_RBUTTON) < 0; }));
    }
    ~RightButtonHeld() {
        Send(MOUSEEVENTF_RIGHTUP);
        EXPECT_TRUE(PumpUntil([] { return ::GetKeyState(VK_RBUTTON) >= 0; }));
    }
    RightButtonHeld(const RightButtonHeld&) = delete;
    RightButtonHeld& operator=(const RightButtonHeld&) = delete;

private:
    static void Send(DWORD flags) {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flags;
        EXPECT_EQ(::SendInput(1, &input, sizeof input), 1u);
    }
};

TEST_F(DialogInput, WhileTheRightButtonIsDownNothingIsHit) {
    HostDialog dialog;
    BringToFront(dialog);
    const FlatIcon icon(RGB(1, 2, 3));
    dialog.Send(WM_SETICON, ICON_SMALL, icon);
    {
        const RightButtonHeld held(dialog);
        for (const POINT at : {POINT{10, 10}, POINT{100, 12}, POINT{200, 120}, POINT{399, 239}, POINT{0, 0}})
            EXPECT_EQ(Hit(dialog, at), HTNOWHERE);
        for (const LRESULT code : kButtonCodes) {
            EXPECT_EQ(Hit(dialog, Middle(dialog.Button(code))), HTNOWHERE);
            Hover(dialog, code, Middle(dialog.Button(code)));
            EXPECT_EQ(dialog.States(), 0);
        }
        EXPECT_EQ(dialog.Skin().Timer(), 0u);
    }
    EXPECT_EQ(Hit(dialog, {10, 10}), kHitIcon);
    EXPECT_EQ(Hit(dialog, Middle(dialog.Button(HTCLOSE))), HTCLOSE);
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
    ParkMouse();
}

TEST_F(DialogInput, AHitTestChangesNoState) {
    HostDialog dialog;
    dialog.Skin().SetStates(0, 2, 1, 0);
    for (const LRESULT code : kButtonCodes) Hit(dialog, Middle(dialog.Button(code)));
    EXPECT_EQ(dialog.States(), 210);
}

TEST_F(DialogInput, HoverTurnsTheButtonUnderThePointHotAndNoOther) {
    HostDialog dialog;
    const int hot[] = {1000, 100, 10, 1};
    for (int i = 0; i < 4; ++i) {
        // Not the code in the message but the point decides.
        EXPECT_EQ(Hover(dialog, HTCAPTION, Middle(dialog.Button(kButtonCodes[i]))), 0);
        EXPECT_EQ(dialog.States(), hot[i]);
        EXPECT_EQ(dialog.Skin().Timer(), 4991u);
        EXPECT_EQ(PaintedDifference(skin, dialog, LookOf(dialog)), "");
    }
    Hover(dialog, HTCLOSE, {100, 12});
    EXPECT_EQ(dialog.States(), 0);
    ::KillTimer(dialog, 4991);
}

TEST_F(DialogInput, HoverOverThePressedButtonShowsItPressed) {
    HostDialog dialog;
    const int pressed[] = {2000, 200, 20, 2};
    for (int i = 0; i < 4; ++i) {
        dialog.Send(WM_NCLBUTTONDOWN, static_cast<WPARAM>(kButtonCodes[i]), 0);
        Hover(dialog, HTCAPTION, {100, 12});
        EXPECT_EQ(dialog.States(), 0);
        Hover(dialog, HTCAPTION, Middle(dialog.Button(kButtonCodes[i])));
        EXPECT_EQ(dialog.States(), pressed[i]);
        const int other = (i + 1) % 4;
        Hover(dialog, HTCAPTION, Middle(dialog.Button(kButtonCodes[other])));
        EXPECT_EQ(dialog.States(), pressed[other] / 2) << "another one is but hot";
        dialog.Send(WM_LBUTTONUP, 0, 0);
    }
    ::KillTimer(dialog, 4991);
}

TEST_F(DialogInput, HoverRepaintsFirstUnlessTheMouseIsCaptured) {
    HostDialog dialog;
    MessageSpy spy(dialog);
    spy.log.Listen({WM_NCPAINT});
    const auto repaints = [&](POINT at) {
        spy.log.Clear();
        Hover(dialog, HTCAPTION, at);
        return spy.log.Count(WM_NCPAINT);
    };
    EXPECT_EQ(repaints({100, 12}), 1);
    EXPECT_EQ(repaints(Middle(dialog.Button(HTMINBUTTON))), 2);
    ::SetCapture(dialog);
    EXPECT_EQ(repaints({100, 12}), 0);
    EXPECT_EQ(repaints(Middle(dialog.Button(HTMINBUTTON))), 1);
    ::ReleaseCapture();
    ::KillTimer(dialog, 4991);
}

// The first repaint still shows what was hot; the move after it shows nothing of it.
TEST_F(DialogInput, LeavingForTheCaptionShowsAtTheNextMove) {
    HostDialog dialog;
    const POINT close = Middle(dialog.Button(HTCLOSE));
    const auto colour = [&] { return PictureOfWindow(dialog).At(close.x, close.y); };
    Hover(dialog, HTCAPTION, close);
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(BMP_DLG_CLOSE_HOT));
    Hover(dialog, HTCAPTION, {100, 12});
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(BMP_DLG_CLOSE_HOT));
    Hover(dialog, HTCAPTION, {100, 12});
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(BMP_DLG_CLOSE_NORMAL));
    ::KillTimer(dialog, 4991);
}

TEST_F(DialogInput, TheTimerEndsTheHoverWhenTheMouseHasLeft) {
    HostDialog dialog;
    BringToFront(dialog);
    MoveTo(dialog, {200, 120});
    Hover(dialog, HTCLOSE, Middle(dialog.Button(HTCLOSE)));
    ASSERT_EQ(dialog.States(), 1000);
    EXPECT_TRUE(PumpUntil([&] { return dialog.States() == 0; }));
    const POINT close = Middle(dialog.Button(HTCLOSE));
    EXPECT_EQ(PictureOfWindow(dialog).At(close.x, close.y), TestSkin::ColourOfBitmap(BMP_DLG_CLOSE_NORMAL));
    EXPECT_EQ(dialog.Skin().Timer(), 4991u) << "it keeps its id";
    MessageSpy spy(dialog);
    spy.log.Listen({WM_TIMER});
    PumpMessages(60);
    EXPECT_FALSE(spy.log.Has(WM_TIMER)) << "and runs no more";
    ParkMouse();
}

TEST_F(DialogInput, TicksAreTheSkinsAndLeaveTheCapture) {
    HostDialog dialog;
    BringToFront(dialog);
    MoveTo(dialog, {200, 120});
    Hover(dialog, HTCLOSE, Middle(dialog.Button(HTCLOSE)));
    ::SetCapture(dialog);
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_TIMER, 4991), 0);
    EXPECT_EQ(dialog.States(), 0);
    EXPECT_EQ(dialog.Send(WM_TIMER, 4991), 0) << "the skin's also when it has ended";
    EXPECT_FALSE(dialog.log.Has(WM_TIMER));
    EXPECT_EQ(::GetCapture(), dialog.window);
    ::ReleaseCapture();
    ParkMouse();
}

TEST_F(DialogInput, WhileTheMouseStaysTheTimerRunsOn) {
    HostDialog dialog;
    BringToFront(dialog);
    const POINT close = Middle(dialog.Button(HTCLOSE));
    MoveTo(dialog, close);
    ASSERT_TRUE(PumpUntil([&] { return dialog.States() == 1000; }));
    PumpMessages(80);
    EXPECT_EQ(dialog.States(), 1000);
    MoveTo(dialog, {200, 120});
    EXPECT_TRUE(PumpUntil([&] { return dialog.States() == 0; }));
    ParkMouse();
}

// A property page, a message box's kin: whatever has no caption has its timers for itself.
TEST_F(DialogInput, ADialogMayHaveTimersOfItsOwn) {
    HostDialog dialog;
    int ticks = 0;
    dialog.handler = [&](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_TIMER && r.wParam == 17) ++ticks;
        return std::nullopt;
    };
    ::SetTimer(dialog, 17, 10, nullptr);
    EXPECT_TRUE(PumpUntil([&] { return ticks >= 3; }));
    ::KillTimer(dialog, 17);
}

class DialogMouse : public DialogInput {
protected:
    ~DialogMouse() override { ParkMouse(); }

    static void Click(const HostDialog& dialog, LRESULT code) {
        MoveTo(dialog, Middle(dialog.Button(code)));
        PressMouse();
        ReleaseMouse();
    }
};

TEST_F(DialogMouse, APressAndReleaseClosesTheDialog) {
    HostDialog dialog;
    BringToFront(dialog);
    int closed = 0;
    dialog.handler = [&](const Received& r) -> std::optional<LRESULT> {
        if (r.message != WM_CLOSE) return std::nullopt;
        ++closed;
        ::DestroyWindow(r.window);
        return 0;
    };
    MoveTo(dialog, Middle(dialog.Button(HTCLOSE)));
    ASSERT_TRUE(PumpUntil([&] { return dialog.States() == 1000; }));
    PressMouse();
    ASSERT_TRUE(PumpUntil([&] { return dialog.States() == 2000; }));
    EXPECT_EQ(::GetCapture(), dialog.window);
    EXPECT_EQ(closed, 0);
    ReleaseMouse();
    EXPECT_TRUE(PumpUntil([&] { return !::IsWindow(dialog); }));
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_F(DialogMouse, AReleaseOffTheButtonTakesThePressBack) {
    HostDialog dialog;
    BringToFront(dialog);
    MoveTo(dialog, Middle(dialog.Button(HTCLOSE)));
    PressMouse();
    ASSERT_TRUE(PumpUntil([&] { return dialog.Skin().Pressed() == 4; }));
    // Captured, so that the dialog hears of the release anywhere.
    MoveTo(dialog, {200, 300});
    dialog.log.Clear();
    ReleaseMouse();
    EXPECT_TRUE(PumpUntil([&] { return dialog.Skin().Pressed() == 0; }));
    EXPECT_EQ(dialog.States(), 0);
    EXPECT_NE(::GetCapture(), dialog.window);
    EXPECT_FALSE(dialog.log.Has(WM_CLOSE));
    EXPECT_TRUE(::IsWindow(dialog));
}

// Under capture moves come to the client area, where the skin takes no notice of them.
TEST_F(DialogMouse, ThePressOutlivesAWayOutAndBack) {
    HostDialog dialog;
    BringToFront(dialog);
    int closed = 0;
    dialog.handler = [&](const Received& r) -> std::optional<LRESULT> {
        if (r.message != WM_CLOSE) return std::nullopt;
        ++closed;
        return 0;
    };
    const POINT close = Middle(dialog.Button(HTCLOSE));
    MoveTo(dialog, close);
    ASSERT_TRUE(PumpUntil([&] { return dialog.States() == 1000; }));
    PressMouse();
    ASSERT_TRUE(PumpUntil([&] { return dialog.States() == 2000; }));
    MoveTo(dialog, {200, 120});
    EXPECT_TRUE(PumpUntil([&] { return dialog.States() == 0; })) << "the hover timer sees the mouse leave";
    EXPECT_EQ(dialog.Skin().Pressed(), 4);
    EXPECT_EQ(::GetCapture(), dialog.window);
    MoveTo(dialog, close);
    ReleaseMouse();
    EXPECT_TRUE(PumpUntil([&] { return closed == 1; }));
    EXPECT_EQ(dialog.Skin().Pressed(), 0);
}

TEST_F(DialogMouse, AClickMaximisesAndAnotherRestores) {
    HostDialog dialog({.style = kDialogStyle | WS_THICKFRAME});
    BringToFront(dialog);
    const CRect before = dialog.Rect();
    Click(dialog, HTMAXBUTTON);
    EXPECT_TRUE(PumpUntil([&] { return ::IsZoomed(dialog) != 0; }));
    PumpMessages(50);
    Click(dialog, HTMAXBUTTON);
    EXPECT_TRUE(PumpUntil([&] { return ::IsZoomed(dialog) == 0; }));
    EXPECT_EQ(dialog.Rect(), before);
}

TEST_F(DialogMouse, AClickMinimises) {
    HostDialog dialog;
    BringToFront(dialog);
    Click(dialog, HTMINBUTTON);
    EXPECT_TRUE(PumpUntil([&] { return ::IsIconic(dialog) != 0; }));
}

TEST_F(DialogMouse, AClickAsksForHelp) {
    HostDialog dialog;
    BringToFront(dialog);
    WPARAM command = 0;
    dialog.handler = [&](const Received& r) -> std::optional<LRESULT> {
        if (r.message != WM_SYSCOMMAND) return std::nullopt;
        command = r.wParam;
        return 0;
    };
    Click(dialog, HTHELP);
    EXPECT_TRUE(PumpUntil([&] { return command != 0; }));
    EXPECT_EQ(command, static_cast<WPARAM>(SC_CONTEXTHELP));
}

}  // namespace
}  // namespace tavix_test
