/* The messages of a frame, one by one: what the window's own procedure hears, and the result. */
#include <gtest/gtest.h>

#include <string>

#include "frames/host_frame.h"
#include "tavixskin.h"
#include "tavixskin/framework/wnd.h"

namespace tavix_test {
namespace {

class FrameMessage : public testing::TestWithParam<Charset> {
protected:
    HostFrame Frame(DWORD style = kFullStyle, const char* title = "", HMENU menu = nullptr) {
        return HostFrame(style, kFramePlace, title, menu, GetParam());
    }
    FramesOnlySkin skin;
    SkinnedThread thread{skin};
};
INSTANTIATE_TEST_SUITE_P(Charsets, FrameMessage, testing::Values(Charset::Ansi, Charset::Unicode),
                         [](const auto& info) { return std::string(NameOf(info.param)); });

TEST_P(FrameMessage, CreateReachesTheHostAndThenTakesTheCaptionFromTheStyle) {
    HostFrame frame(kFullStyle, kFramePlace, "A title", nullptr, GetParam());
    EXPECT_EQ(frame.log.Count(WM_CREATE), 1);
    EXPECT_EQ(frame.Skin().Style() & kFullStyle, kFullStyle & ~WS_VISIBLE);
    const DWORD style = static_cast<DWORD>(::GetWindowLongA(frame, GWL_STYLE));
    EXPECT_EQ(style & (WS_MAXIMIZEBOX | WS_MINIMIZEBOX | WS_CAPTION | 0x200u), 0u);
    EXPECT_EQ(style & 0x100u, 0x100u);
    EXPECT_EQ(style & WS_SYSMENU, static_cast<DWORD>(WS_SYSMENU));
}

TEST_P(FrameMessage, CreateAnswersZeroWhateverTheHostAnswers) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    frame.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_CREATE) return -1;
        return std::nullopt;
    };
    CREATESTRUCTA created{};
    created.lpszClass = "Tavix_PaneA";
    created.lpszName = "";
    EXPECT_EQ(frame.Send(WM_CREATE, 0, reinterpret_cast<LPARAM>(&created)), 0);
}

TEST_P(FrameMessage, RemembersTheMenuThatTheWindowHadAtCreation) {
    HMENU menu = ::CreateMenu();
    ::AppendMenuA(menu, MF_STRING, 1, "File");
    HostFrame frame(kFullStyle, kFramePlace, "", menu, GetParam());
    EXPECT_EQ(frame.Skin().HasMenu(), 1);
    EXPECT_EQ(frame.Skin().Menu(), menu);
    HostFrame bare(kFullStyle, kFramePlace, "", nullptr, GetParam());
    EXPECT_EQ(bare.Skin().HasMenu(), 0);
    EXPECT_EQ(bare.Skin().Menu(), nullptr);
}

TEST_P(FrameMessage, AHostMayHandItAnotherMenu) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    HMENU menu = reinterpret_cast<HMENU>(0x1234);
    frame.log.Clear();
    EXPECT_EQ(frame.Send(1029, reinterpret_cast<WPARAM>(menu)), 0);
    EXPECT_EQ(frame.Skin().Menu(), menu);
    EXPECT_FALSE(frame.log.Has(1029));
}

TEST_P(FrameMessage, SizeReachesTheHostAndLaysTheButtonsOut) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    ::SetWindowPos(frame, nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(frame.log.Has(WM_SIZE));
    EXPECT_EQ(frame.Skin().Min(), CRect(240, 4, 256, 20));
    EXPECT_EQ(frame.Skin().Max(), CRect(257, 4, 273, 20));
    EXPECT_EQ(frame.Skin().Close(), CRect(274, 4, 290, 20));
    EXPECT_EQ(frame.Send(WM_SIZE, SIZE_RESTORED, 0), 0);
}

TEST_P(FrameMessage, ActivationIsNotedAndReleasesTheCaptureWhenLost) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    EXPECT_EQ(frame.Send(WM_ACTIVATE, WA_ACTIVE), 0);
    EXPECT_EQ(frame.Skin().Active(), 1);
    EXPECT_EQ(frame.Send(WM_ACTIVATE, WA_CLICKACTIVE), 0);
    EXPECT_EQ(frame.Skin().Active(), 1);
    ::SetCapture(frame);
    frame.log.Clear();
    EXPECT_EQ(frame.Send(WM_ACTIVATE, WA_INACTIVE), 0);
    EXPECT_EQ(frame.Skin().Active(), 0);
    EXPECT_NE(::GetCapture(), frame.window);
    EXPECT_TRUE(frame.log.Has(WM_ACTIVATE));
    // With a bit in the high word it is neither of the three.
    frame.Send(WM_ACTIVATE, MAKEWPARAM(WA_ACTIVE, 1));
    EXPECT_EQ(frame.Skin().Active(), 0);
}

TEST_P(FrameMessage, NcActivateIsAnsweredWithoutTheHost) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    frame.log.Clear();
    EXPECT_EQ(frame.Send(WM_NCACTIVATE, FALSE), 1);
    EXPECT_EQ(frame.Skin().Active(), 0);
    EXPECT_EQ(frame.Send(WM_NCACTIVATE, TRUE), 1);
    EXPECT_EQ(frame.Skin().Active(), 1);
    EXPECT_FALSE(frame.log.Has(WM_NCACTIVATE));
}

TEST_P(FrameMessage, TextGoesThroughTheSkin) {
    HostFrame frame(kFullStyle, kFramePlace, "First", nullptr, GetParam());
    char text[32] = {};
    EXPECT_EQ(::GetWindowTextA(frame, text, sizeof text), 5);
    EXPECT_STREQ(text, "First");
    frame.log.Clear();
    EXPECT_EQ(frame.Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>("Second title")), 0);
    EXPECT_TRUE(frame.log.Has(WM_SETTEXT));
    frame.log.Clear();
    EXPECT_EQ(frame.Send(WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text)), 12);
    EXPECT_STREQ(text, "Second title");
    EXPECT_FALSE(frame.log.Has(WM_GETTEXT));
    wchar_t wide[32] = {};
    ::GetWindowTextW(frame, wide, 32);
    EXPECT_STREQ(wide, L"Second title");
}

TEST_P(FrameMessage, GetTextKeepsWithinTheCallersBufferAndTellsTheFullLength) {
    HostFrame frame(kFullStyle, kFramePlace, "Warehouse", nullptr, GetParam());
    for (WPARAM room = 0; room <= 12; ++room) {
        char buffer[16];
        std::memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(frame.Send(WM_GETTEXT, room, reinterpret_cast<LPARAM>(buffer)), 9) << room;
        const std::size_t copied = std::min<std::size_t>(9, room == 0 ? 0 : room - 1);
        const std::size_t written = room == 0 ? 0 : copied + 1;
        EXPECT_EQ(std::string(buffer, copied), std::string("Warehouse", copied)) << room;
        EXPECT_EQ(std::string(buffer + written, sizeof buffer - written),
                  std::string(sizeof buffer - written, '#'))
            << room;
    }
    EXPECT_EQ(frame.Send(WM_GETTEXT, 5, 0), 9);
}

TEST_P(FrameMessage, EraseAndNcPaintDoNotReachTheHost) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    frame.log.Clear();
    const CClientDC dc(frame);
    EXPECT_EQ(frame.Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.GetSafeHdc())), 0);
    EXPECT_EQ(frame.Send(WM_NCPAINT, 1), 0);
    EXPECT_FALSE(frame.log.Has(WM_ERASEBKGND));
    EXPECT_FALSE(frame.log.Has(WM_NCPAINT));
}

TEST_P(FrameMessage, ShowingTheWindowRecalculatesItsFrame) {
    HostFrame frame(kFullStyle & ~WS_VISIBLE, kFramePlace, "", nullptr, GetParam());
    MessageSpy spy(frame);
    spy.log.Listen({WM_NCCALCSIZE});
    EXPECT_EQ(frame.Send(WM_SHOWWINDOW, TRUE, 0), 0);
    EXPECT_TRUE(spy.log.Has(WM_NCCALCSIZE));
    EXPECT_TRUE(frame.log.Has(WM_SHOWWINDOW));
}

TEST_P(FrameMessage, NcCalcSizeTakesTheSkinsBordersWithoutTheHost) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    frame.log.Clear();
    CRect rect(100, 100, 500, 400);
    EXPECT_EQ(frame.Send(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect)), 0);
    EXPECT_EQ(rect, CRect(104, 124, 495, 394));
    NCCALCSIZE_PARAMS params{};
    params.rgrc[0] = CRect(0, 0, 200, 100);
    EXPECT_EQ(frame.Send(WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&params)), 0);
    EXPECT_EQ(CRect(params.rgrc[0]), CRect(4, 24, 195, 94));
    EXPECT_FALSE(frame.log.Has(WM_NCCALCSIZE));
    CRect client;
    ::GetClientRect(frame, &client);
    EXPECT_EQ(client, CRect(0, 0, 400 - 9, 240 - 30));
}

TEST_P(FrameMessage, WithoutACaptionTheClientReachesTheTop) {
    HostFrame frame(WS_POPUP | WS_VISIBLE, kFramePlace, "", nullptr, GetParam());
    CRect rect(100, 100, 500, 400);
    frame.Send(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect));
    EXPECT_EQ(rect, CRect(104, 100, 495, 394));
}

TEST_P(FrameMessage, MinimumSizesComeFromTheSkinLessAHundred) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    CRect work;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    MINMAXINFO info{};
    info.ptMinTrackSize = {10, 300};
    EXPECT_EQ(frame.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info)), 0);
    EXPECT_EQ(info.ptMinTrackSize.x, 160);
    EXPECT_EQ(info.ptMinTrackSize.y, 300) << "a larger minimum stays";
    // A maximised frame hides its bottom border below the work area.
    EXPECT_EQ(info.ptMaxSize.y, work.Height() + 6);
    EXPECT_TRUE(frame.log.Has(WM_GETMINMAXINFO));
}

TEST_P(FrameMessage, SkinMinimumsOfAHundredAndLessLeaveTheDefault) {
    for (const DWORD size : {0u, 50u, 100u}) {
        skin.SetSize(SZ_MIN_TRACK_X, size).SetSize(SZ_MIN_TRACK_Y, size);
        ASSERT_EQ(SetSkinFromFile(skin.Write()), 1);
        HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
        MINMAXINFO info{};
        info.ptMinTrackSize = {1, 2};
        frame.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
        EXPECT_EQ(info.ptMinTrackSize.x, 1) << size;
        EXPECT_EQ(info.ptMinTrackSize.y, 2) << size;
    }
}

TEST_P(FrameMessage, SystemCommandsGoToTheHostButMenuKeysWithAMenuBar) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    frame.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_SYSCOMMAND) return 77;
        return std::nullopt;
    };
    EXPECT_EQ(frame.Send(WM_SYSCOMMAND, SC_KEYMENU), 77);
    ::SetPropA(frame, "menubar", reinterpret_cast<HANDLE>(1));
    frame.log.Clear();
    EXPECT_EQ(frame.Send(WM_SYSCOMMAND, SC_KEYMENU), 0);
    EXPECT_FALSE(frame.log.Has(WM_SYSCOMMAND));
    EXPECT_EQ(frame.Send(WM_SYSCOMMAND, SC_HOTKEY), 77);
    ::ShowWindow(frame, SW_MINIMIZE);
    EXPECT_EQ(frame.Send(WM_SYSCOMMAND, SC_KEYMENU), 77) << "an iconic frame keeps its menu keys";
    ::RemovePropA(frame, "menubar");
}

TEST_P(FrameMessage, MenuRequestsWithoutAMenuBarDoNothing) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    frame.log.Clear();
    EXPECT_EQ(frame.Send(1796, 0), 0);
    EXPECT_EQ(frame.Send(1797, 0), 0);
    EXPECT_FALSE(frame.log.Has(1796));
    EXPECT_FALSE(frame.log.Has(1797));
    EXPECT_EQ(frame.Send(WM_MDISETMENU), 0);
    EXPECT_TRUE(frame.log.Has(WM_MDISETMENU));
}

TEST_P(FrameMessage, EverythingElseIsTheHosts) {
    HostFrame frame(kFullStyle, kFramePlace, "", nullptr, GetParam());
    frame.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_APP + 5) return static_cast<LRESULT>(r.wParam) + r.lParam;
        return std::nullopt;
    };
    EXPECT_EQ(frame.Send(WM_APP + 5, 40, 2), 42);
}

struct SystemMenuCase {
    const char* name;
    DWORD style;
    int show;
    bool minimize, maximize, restore, move;
};

class FrameSystemMenu : public testing::TestWithParam<SystemMenuCase> {};
INSTANTIATE_TEST_SUITE_P(
    States, FrameSystemMenu,
    testing::Values(SystemMenuCase{"Normal", kFullStyle, SW_SHOWNORMAL, true, true, false, true},
                    SystemMenuCase{"Maximised", kFullStyle, SW_SHOWMAXIMIZED, true, false, true, false},
                    SystemMenuCase{"Iconic", kFullStyle, SW_SHOWMINIMIZED, false, true, true, false},
                    SystemMenuCase{"NoMinimiseBox", kFullStyle & ~WS_MINIMIZEBOX, SW_SHOWNORMAL, false, true,
                                   false, true},
                    SystemMenuCase{"NoMaximiseBox", kFullStyle & ~WS_MAXIMIZEBOX, SW_SHOWNORMAL, true, false,
                                   false, true}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_P(FrameSystemMenu, ItemsFollowTheStyleAtCreationAndTheWindowsState) {
    FramesOnlySkin skin;
    SkinnedThread thread(skin);
    HostFrame frame(GetParam().style);
    ::ShowWindow(frame, GetParam().show);
    HMENU menu = ::GetSystemMenu(frame, FALSE);
    const UINT items[] = {SC_MINIMIZE, SC_MAXIMIZE, SC_RESTORE, SC_MOVE, SC_SIZE};
    for (const UINT item : items) ::EnableMenuItem(menu, item, MF_BYCOMMAND | MF_ENABLED);
    EXPECT_EQ(frame.Send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), MAKELPARAM(0, TRUE)), 0);
    EXPECT_TRUE(frame.log.Has(WM_INITMENUPOPUP));
    const auto expectState = [menu](UINT item, bool enabled) {
        const UINT state = ::GetMenuState(menu, item, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED);
        EXPECT_EQ(state, enabled ? 0u : static_cast<UINT>(MF_GRAYED | MF_DISABLED)) << std::hex << item;
    };
    expectState(SC_MINIMIZE, GetParam().minimize);
    expectState(SC_MAXIMIZE, GetParam().maximize);
    expectState(SC_RESTORE, GetParam().restore);
    expectState(SC_MOVE, GetParam().move);
    expectState(SC_SIZE, GetParam().move);
}

TEST(FrameMenuPopup, OtherPopupsAreLeftAlone) {
    FramesOnlySkin skin;
    SkinnedThread thread(skin);
    HostFrame frame;
    HMENU popup = ::CreatePopupMenu();
    ::AppendMenuA(popup, MF_STRING, SC_RESTORE, "Restore");
    EXPECT_EQ(frame.Send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 0), 0);
    EXPECT_EQ(::GetMenuState(popup, SC_RESTORE, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED), 0u);
    ::DestroyMenu(popup);
}

}  // namespace
}  // namespace tavix_test
