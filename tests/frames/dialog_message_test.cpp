/* The messages of a dialog, one by one: what the dialog procedure hears, and the result. */
#include <string>

#include "frames/host_dialog.h"
#include "tavixskin.h"

namespace tavix_test {
namespace {

class DialogMessage : public DialogTest, public testing::WithParamInterface<Charset> {
protected:
    DialogSetup Setup(DWORD style = kDialogStyle) const { return {.style = style, .charset = GetParam()}; }
};
INSTANTIATE_TEST_SUITE_P(Charsets, DialogMessage, testing::Values(Charset::Ansi, Charset::Unicode),
                         [](const auto& info) { return std::string(NameOf(info.param)); });

TEST_P(DialogMessage, CreateReachesTheNativeProcedureAndAnswersZero) {
    ClassSpy native("#32770");
    native.log.Listen({WM_CREATE});
    HostDialog dialog(Setup());
    EXPECT_EQ(native.log.Count(WM_CREATE), 1);
    native.handler = Answering(WM_CREATE, -1);
    CREATESTRUCTA create{};
    EXPECT_EQ(dialog.Send(WM_CREATE, 0, reinterpret_cast<LPARAM>(&create)), 0);
    EXPECT_EQ(native.log.Count(WM_CREATE), 2);
}

TEST_P(DialogMessage, CreateNotesTheStyles) {
    HostDialog dialog(Setup());
    ::SetWindowLongA(dialog, GWL_STYLE, static_cast<LONG>(WS_POPUP | WS_DLGFRAME));
    ::SetWindowLongA(dialog, GWL_EXSTYLE, WS_EX_TOPMOST);
    CREATESTRUCTA create{};
    dialog.Send(WM_CREATE, 0, reinterpret_cast<LPARAM>(&create));
    EXPECT_EQ(dialog.Skin().Style(), dialog.WindowStyle());
    EXPECT_EQ(dialog.Skin().Style() & WS_CAPTION, static_cast<DWORD>(WS_DLGFRAME));
    EXPECT_EQ(dialog.Skin().ExStyle(), static_cast<DWORD>(::GetWindowLongA(dialog, GWL_EXSTYLE)));
}

TEST_P(DialogMessage, InitDialogReachesTheHostAndItsAnswerStands) {
    HostDialog dialog(Setup());
    EXPECT_EQ(dialog.log.Count(WM_INITDIALOG), 1);
    for (const LRESULT answer : {1, 0}) {
        dialog.handler = Answering(WM_INITDIALOG, answer);
        EXPECT_EQ(dialog.Send(WM_INITDIALOG), answer);
    }
    EXPECT_EQ(dialog.log.Count(WM_INITDIALOG), 3);
}

TEST_P(DialogMessage, InitDialogTakesTheButtonsFromTheStyleAndLeavesTheCaption) {
    DWORD seenByHost = 0;
    DialogSetup setup = Setup();
    setup.handler = [&](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_INITDIALOG)
            seenByHost = static_cast<DWORD>(::GetWindowLongA(r.window, GWL_STYLE));
        return std::nullopt;
    };
    HostDialog dialog(setup);
    EXPECT_EQ(seenByHost & kAllDialogButtons, kAllDialogButtons) << "the host's own code comes first";
    EXPECT_EQ(dialog.Skin().Style() & kDialogStyle, kDialogStyle);
    EXPECT_EQ(dialog.WindowStyle() & kAllDialogButtons, 0u);
    EXPECT_EQ(dialog.WindowStyle() & WS_CAPTION, static_cast<DWORD>(WS_CAPTION));
}

TEST_P(DialogMessage, ButtonsThatTheHostTakesAwayDuringInitDialogAreNotSeen) {
    DialogSetup setup = Setup();
    setup.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_INITDIALOG)
            ::SetWindowLongA(r.window, GWL_STYLE, ::GetWindowLongA(r.window, GWL_STYLE) & ~WS_MINIMIZEBOX);
        return std::nullopt;
    };
    HostDialog dialog(setup);
    EXPECT_FALSE(dialog.Button(HTMAXBUTTON).IsRectEmpty());
    EXPECT_TRUE(dialog.Button(HTMINBUTTON).IsRectEmpty());
}

TEST_P(DialogMessage, SizeReachesTheHostAndLaysTheButtonsOut) {
    HostDialog dialog(Setup());
    dialog.log.Clear();
    ::SetWindowPos(dialog, nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(dialog.log.Has(WM_SIZE));
    EXPECT_EQ(dialog.Button(HTCLOSE), CRect(276, 4, 292, 20));
    EXPECT_EQ(dialog.Button(HTMAXBUTTON), CRect(258, 4, 274, 20));
    EXPECT_EQ(dialog.Button(HTMINBUTTON), CRect(240, 4, 256, 20));
    EXPECT_EQ(dialog.Button(HTHELP), CRect(222, 4, 238, 20));
    dialog.handler = Answering(WM_SIZE, 7);
    EXPECT_EQ(dialog.Send(WM_SIZE), 0);
}

TEST_P(DialogMessage, ErasingAndPaintingAreTheSkins) {
    HostDialog dialog(Setup());
    const Canvas canvas(400, 240, 0);
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc())), 1);
    EXPECT_EQ(dialog.Send(WM_ERASEBKGND, 0), 1);
    EXPECT_EQ(dialog.Send(WM_NCPAINT, 1), 0);
    EXPECT_FALSE(dialog.log.Has(WM_ERASEBKGND));
    EXPECT_FALSE(dialog.log.Has(WM_NCPAINT));
}

TEST_P(DialogMessage, NcActivateRepaintsWithoutTheHost) {
    HostDialog dialog(Setup());
    MessageSpy spy(dialog);
    spy.log.Listen({WM_NCPAINT});
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_NCACTIVATE, FALSE), 1);
    EXPECT_EQ(dialog.Send(WM_NCACTIVATE, TRUE), 1);
    EXPECT_FALSE(dialog.log.Has(WM_NCACTIVATE));
    EXPECT_EQ(spy.log.Count(WM_NCPAINT), 2);
}

TEST_P(DialogMessage, NcCalcSizeTakesTheSkinsBordersWithoutTheHost) {
    HostDialog dialog(Setup());
    dialog.log.Clear();
    CRect rect(100, 100, 500, 400);
    EXPECT_EQ(dialog.Send(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect)), 0);
    EXPECT_EQ(rect, CRect(104, 124, 495, 394));
    NCCALCSIZE_PARAMS params{};
    params.rgrc[0] = CRect(0, 0, 200, 100);
    EXPECT_EQ(dialog.Send(WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&params)), 0);
    EXPECT_EQ(CRect(params.rgrc[0]), CRect(4, 24, 195, 94));
    EXPECT_FALSE(dialog.log.Has(WM_NCCALCSIZE));
    EXPECT_EQ(dialog.Client(), CRect(4, 24, 395, 234)) << "the open dialog has these borders already";
}

TEST_P(DialogMessage, NcCalcSizeWithAnyBitOfTheCaptionIsTheSkins) {
    for (const DWORD bit : {static_cast<DWORD>(WS_BORDER), static_cast<DWORD>(WS_DLGFRAME)}) {
        HostDialog dialog(Setup(WS_POPUP | bit));
        dialog.log.Clear();
        CRect rect(100, 100, 500, 400);
        EXPECT_EQ(dialog.Send(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect)), 0);
        EXPECT_EQ(rect, CRect(104, 124, 495, 394));
        EXPECT_FALSE(dialog.log.Has(WM_NCCALCSIZE));
    }
}

TEST_P(DialogMessage, NcCalcSizeWithoutACaptionIsTheHosts) {
    HostDialog dialog(Setup(WS_POPUP));
    dialog.log.Clear();
    CRect rect(100, 100, 500, 400);
    dialog.Send(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect));
    EXPECT_EQ(rect, CRect(100, 100, 500, 400)) << "a bare popup has no borders of the system either";
    EXPECT_TRUE(dialog.log.Has(WM_NCCALCSIZE));
    dialog.handler = Answering(WM_NCCALCSIZE, WVR_REDRAW);
    EXPECT_EQ(dialog.Send(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect)), WVR_REDRAW);
}

TEST_P(DialogMessage, HitTestAsksTheHostFirst) {
    HostDialog dialog(Setup());
    dialog.handler = Answering(WM_NCHITTEST, HTGROWBOX);
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_NCHITTEST, 0, dialog.Packed({200, 120})), HTGROWBOX);
    EXPECT_EQ(dialog.Send(WM_NCHITTEST, 0, dialog.Packed({384, 12})), HTCLOSE);
    EXPECT_EQ(dialog.log.Count(WM_NCHITTEST), 2);
}

TEST_P(DialogMessage, NcMouseMoveReachesTheHostAndAnswersZero) {
    HostDialog dialog(Setup());
    dialog.handler = Answering(WM_NCMOUSEMOVE, 3);
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_NCMOUSEMOVE, HTCAPTION, dialog.Packed({100, 12})), 0);
    EXPECT_EQ(dialog.log.Count(WM_NCMOUSEMOVE), 1);
}

TEST_P(DialogMessage, APressOffTheButtonsIsTheHosts) {
    HostDialog dialog(Setup());
    dialog.handler = Answering(WM_NCLBUTTONDOWN, 5);
    dialog.log.Clear();
    const LPARAM at = dialog.Packed({100, 12});
    EXPECT_EQ(dialog.Send(WM_NCLBUTTONDOWN, HTCAPTION, at), 0);
    EXPECT_EQ(dialog.Send(WM_NCLBUTTONDOWN, 22, at), 0) << "the icon is no button";
    ASSERT_EQ(dialog.log.Count(WM_NCLBUTTONDOWN), 2);
    EXPECT_NE(::GetCapture(), dialog.window);
    EXPECT_EQ(dialog.Skin().Pressed(), 0);
    const Received expected{dialog, WM_NCLBUTTONDOWN, HTCAPTION, at};
    EXPECT_EQ(dialog.log.Entries().front(), expected);
}

TEST_P(DialogMessage, ANonClientReleaseIsTheHostsUnlessItNamesAButton) {
    HostDialog dialog(Setup());
    dialog.handler = Answering(WM_NCLBUTTONUP, 5);
    dialog.log.Clear();
    for (const LRESULT code : kButtonCodes)
        EXPECT_EQ(dialog.Send(WM_NCLBUTTONUP, static_cast<WPARAM>(code), dialog.Packed({100, 12})), 0);
    EXPECT_FALSE(dialog.log.Has(WM_NCLBUTTONUP));
    for (const WPARAM code : {HTCAPTION, HTCLIENT, 22, 0})
        EXPECT_EQ(dialog.Send(WM_NCLBUTTONUP, code, dialog.Packed({100, 12})), 0);
    EXPECT_EQ(dialog.log.Count(WM_NCLBUTTONUP), 4);
}

TEST_P(DialogMessage, ReleasesInTheClientAreaDoNotReachTheHost) {
    HostDialog dialog(Setup());
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_LBUTTONUP, 0, MAKELPARAM(50, 50)), 0);
    EXPECT_FALSE(dialog.log.Has(WM_LBUTTONUP));
}

TEST_P(DialogMessage, OtherTimersReachTheHostAndAnswerZero) {
    HostDialog dialog(Setup());
    dialog.handler = Answering(WM_TIMER, 55);
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_TIMER, 7), 0);
    EXPECT_EQ(dialog.Send(WM_TIMER, 0), 0) << "no hover timer runs: 0 is nobody's but the host's";
    EXPECT_EQ(dialog.log.Count(WM_TIMER), 2);
}

TEST_P(DialogMessage, MenusReachTheHostAndAnswerZero) {
    HostDialog dialog(Setup());
    dialog.handler = Answering(WM_INITMENUPOPUP, 8);
    HMENU popup = ::CreatePopupMenu();
    ::AppendMenuA(popup, MF_STRING, 100, "Item");
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), MAKELPARAM(2, FALSE)), 0);
    EXPECT_EQ(dialog.log.Count(WM_INITMENUPOPUP), 1);
    ::DestroyMenu(popup);
}

TEST_P(DialogMessage, ButtonsOfAPageGetThePageColourAsBrush) {
    HostDialog outer(Setup());
    DialogSetup setup = Setup(DS_CONTROL | WS_CHILD);
    setup.parent = outer;
    setup.place = CRect(10, 10, 100, 60);
    HostDialog page(setup);
    page.log.Clear();
    const auto brush = reinterpret_cast<HBRUSH>(page.Send(WM_CTLCOLORBTN));
    ASSERT_TRUE(brush);
    LOGBRUSH info{};
    ASSERT_TRUE(::GetObjectA(brush, sizeof info, &info));
    EXPECT_EQ(info.lbStyle, static_cast<UINT>(BS_SOLID));
    EXPECT_EQ(info.lbColor, skin.Colour(CLR_TAB_PAGE));
    EXPECT_FALSE(page.log.Has(WM_CTLCOLORBTN));
    // It is made with the skin object: a change of skin leaves it.
    const COLORREF before = info.lbColor;
    skin.SetColour(CLR_TAB_PAGE, RGB(1, 2, 3));
    UseChangedSkin();
    EXPECT_EQ(reinterpret_cast<HBRUSH>(page.Send(WM_CTLCOLORBTN)), brush);
    ::GetObjectA(brush, sizeof info, &info);
    EXPECT_EQ(info.lbColor, before);
}

TEST_P(DialogMessage, ButtonsOfOtherDialogsGetNoBrush) {
    HostDialog dialog(Setup());
    dialog.handler = Answering(WM_CTLCOLORBTN, reinterpret_cast<LRESULT>(::GetStockObject(BLACK_BRUSH)));
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_CTLCOLORBTN), 0);
    EXPECT_FALSE(dialog.log.Has(WM_CTLCOLORBTN));
}

TEST_P(DialogMessage, OtherColourMessagesAreTheHosts) {
    HostDialog dialog(Setup());
    const auto white = reinterpret_cast<LRESULT>(::GetStockObject(WHITE_BRUSH));
    for (const UINT message : {WM_CTLCOLOREDIT, WM_CTLCOLORLISTBOX, WM_CTLCOLORDLG, WM_CTLCOLORSCROLLBAR}) {
        dialog.handler = Answering(message, white);
        EXPECT_EQ(dialog.Send(message), white) << std::hex << message;
    }
}

TEST_P(DialogMessage, ANewTitleReachesTheHostAndThenTheSkinsCaptionIsPaintedAgain) {
    HostDialog dialog(Setup());
    MessageSpy spy(dialog);
    spy.log.Listen({WM_SETTEXT, WM_NCPAINT});
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>("A title")), 1);
    EXPECT_EQ(dialog.log.Count(WM_SETTEXT), 1);
    ASSERT_GE(spy.log.Messages().size(), 2u);
    EXPECT_EQ(spy.log.Messages().front(), static_cast<UINT>(WM_SETTEXT));
    EXPECT_EQ(spy.log.Messages().back(), static_cast<UINT>(WM_NCPAINT));
    char title[32] = {};
    ::GetWindowTextA(dialog, title, sizeof title);
    EXPECT_STREQ(title, "A title");
    wchar_t wide[32] = {};
    ::GetWindowTextW(dialog, wide, 32);
    EXPECT_STREQ(wide, L"A title");
}

TEST_P(DialogMessage, ANewIconReachesTheHostAndThenTheSkinsCaptionIsPaintedAgain) {
    HostDialog dialog(Setup());
    const FlatIcon first(RGB(255, 0, 0));
    const FlatIcon second(RGB(0, 255, 0));
    dialog.Send(WM_SETICON, ICON_SMALL, first);
    MessageSpy spy(dialog);
    spy.log.Listen({WM_SETICON, WM_NCPAINT});
    dialog.log.Clear();
    EXPECT_EQ(dialog.Send(WM_SETICON, ICON_SMALL, second), static_cast<LRESULT>(first)) << "the former icon";
    EXPECT_EQ(dialog.log.Count(WM_SETICON), 1);
    ASSERT_GE(spy.log.Messages().size(), 2u);
    EXPECT_EQ(spy.log.Messages().back(), static_cast<UINT>(WM_NCPAINT));
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
}

TEST_P(DialogMessage, EverythingElseIsTheHosts) {
    HostDialog dialog(Setup());
    dialog.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_APP + 5) return static_cast<LRESULT>(r.wParam) + r.lParam;
        return std::nullopt;
    };
    EXPECT_EQ(dialog.Send(WM_APP + 5, 40, 2), 42);
    for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_RBUTTONUP, WM_COMMAND, WM_SYSCOMMAND,
                               WM_CLOSE, WM_ACTIVATE, WM_SHOWWINDOW, WM_GETMINMAXINFO, WM_NCLBUTTONDBLCLK}) {
        dialog.handler = Answering(message, 17);
        dialog.log.Clear();
        EXPECT_EQ(dialog.Send(message), 17) << std::hex << message;
        EXPECT_EQ(dialog.log.Count(message), 1) << std::hex << message;
    }
}

}  // namespace
}  // namespace tavix_test
