// Windows that become scroll hosts, their records, and the layout of their bars.
#include "scroll/scroll_host.h"

#include <gtest/gtest.h>

#include <climits>
#include <thread>
#include <tuple>
#include <vector>

#include "engine/quiet_skins.h"
#include "host_fixture.h"
#include "main/gui_objects.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"
#include "tavixskin/value_ids.h"

using namespace tavix_test;

namespace {

class ScrollHost : public testing::Test {
protected:
    ~ScrollHost() override {
        while (m_arrScrollHosts.GetSize() > 0) ::RemoveScrollHost(m_arrScrollHosts[0]->m_hWnd);
    }
    // A window of a class that is in no table.
    HWND Child(DWORD style = WS_CHILD | WS_VISIBLE) {
        return ::CreateWindowExA(0, "Static", "child", style, 20, 30, 200, 150, m_parent, nullptr, nullptr,
                                 nullptr);
    }
    // In the Z-order.
    static HWND Below(HWND window) { return ::GetWindow(window, GW_HWNDNEXT); }
    ProbeWindow m_parent;
};

std::string ClassOf(HWND window) {
    char name[64] = {};
    ::GetClassNameA(window, name, sizeof name);
    return name;
}

TEST_F(ScrollHost, GetsThreeHiddenSiblings) {
    HWND host = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    const SCROLLHOST record = RecordOf(host);
    EXPECT_EQ(record.m_hWnd, host);
    EXPECT_EQ(record.m_bVisible, 1);
    EXPECT_EQ(record.m_bVertShown, 0);
    EXPECT_EQ(record.m_bHorzShown, 0);
    const HWND vertical = record.m_pVertBar->m_hWnd, horizontal = record.m_pHorzBar->m_hWnd,
               corner = record.m_pStub->m_hWnd;
    for (HWND window : {vertical, horizontal, corner}) {
        EXPECT_EQ(::GetParent(window), m_parent.Handle());
        EXPECT_FALSE(IsShown(window));
    }
    EXPECT_EQ(ClassOf(vertical), "TavixScrollBar10");
    EXPECT_EQ(static_cast<DWORD>(::GetWindowLongA(vertical, GWL_STYLE)), 0x44000001u);
    EXPECT_EQ(static_cast<DWORD>(::GetWindowLongA(horizontal, GWL_STYLE)), 0x44000000u);
    EXPECT_EQ(static_cast<DWORD>(::GetWindowLongA(corner, GWL_STYLE)) & ~DWORD{WS_CLIPSIBLINGS}, 0x40000000u);
    EXPECT_EQ(record.m_pVertBar->m_bHorz, 0);
    EXPECT_EQ(record.m_pHorzBar->m_bHorz, 1);
    EXPECT_EQ(record.m_pVertBar->m_hOwner, host);
    EXPECT_EQ(record.m_pHorzBar->m_hOwner, host);
    EXPECT_TRUE(PlaceOf(vertical).IsRectEmpty());
    EXPECT_EQ(PlaceOf(corner).Size().cx, 20);
    EXPECT_EQ(PlaceOf(corner).Size().cy, 20);
    char title[32] = {};
    ::GetWindowTextA(corner, title, sizeof title);
    EXPECT_STREQ(title, "Stub Region");
}

TEST_F(ScrollHost, NumbersItsWindowsByTheHostsThereAre) {
    HWND first = Child(), second = Child(), third = Child();
    const auto ids = [](HWND host) {
        const SCROLLHOST record = RecordOf(host);
        return std::tuple(static_cast<DWORD>(::GetDlgCtrlID(record.m_pVertBar->m_hWnd)),
                          static_cast<DWORD>(::GetDlgCtrlID(record.m_pHorzBar->m_hWnd)),
                          static_cast<DWORD>(::GetDlgCtrlID(record.m_pStub->m_hWnd)));
    };
    ASSERT_EQ(::InstallScrollHost(first), 1);
    ASSERT_EQ(::InstallScrollHost(second), 1);
    EXPECT_EQ(ids(first), std::tuple(0xFFFF0001u, 0xFFFF0002u, 0xFFFF0003u));
    EXPECT_EQ(ids(second), std::tuple(0xFFFF0005u, 0xFFFF0006u, 0xFFFF0007u));
    EXPECT_EQ(::RemoveScrollHost(first), 1);
    ASSERT_EQ(::InstallScrollHost(third), 1);
    EXPECT_EQ(ids(third), ids(second)) << "the number of a host that went comes again";
}

TEST_F(ScrollHost, LosesItsNativeBarsAndClipsItsSiblings) {
    HWND host = Child(WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL);
    ::SetWindowLongA(host, GWL_STYLE, ::GetWindowLongA(host, GWL_STYLE) & ~WS_CLIPSIBLINGS);
    ASSERT_EQ(::InstallScrollHost(host), 1);
    const LONG style = ::GetWindowLongA(host, GWL_STYLE);
    EXPECT_EQ(style & (WS_VSCROLL | WS_HSCROLL), 0);
    EXPECT_TRUE(style & WS_CLIPSIBLINGS);
}

TEST_F(ScrollHost, TakesTheStateThatTheWindowHas) {
    HWND host = Child();
    const SCROLLINFO info = MakeInfo(SIF_ALL, 3, 90, 11, 17);
    ::SetScrollInfo(host, SB_VERT, &info, FALSE);
    ASSERT_EQ(::InstallScrollHost(host), 1);
    const CSkinScrollBar& bar = *RecordOf(host).m_pVertBar;
    EXPECT_EQ(bar.m_nMin, 3);
    EXPECT_EQ(bar.m_nMax, 90);
    EXPECT_EQ(bar.m_nPage, 11);
    EXPECT_EQ(bar.m_nPos, 17);
}

TEST_F(ScrollHost, CantBeATopLevelWindowButKeepsWhatWasDone) {
    ProbeWindow top(WS_POPUP | WS_VISIBLE | WS_VSCROLL);
    EXPECT_EQ(::InstallScrollHost(top), 0);
    EXPECT_FALSE(IsHost(top));
    const LONG style = ::GetWindowLongA(top, GWL_STYLE);
    EXPECT_FALSE(style & WS_VSCROLL);
    EXPECT_TRUE(style & WS_CLIPSIBLINGS);
}

TEST_F(ScrollHost, CantBeADeadWindow) {
    HWND window = Child();
    ::DestroyWindow(window);
    EXPECT_EQ(::InstallScrollHost(window), 0);
    EXPECT_EQ(::InstallScrollHost(nullptr), 0);
    EXPECT_EQ(::InstallScrollHost(reinterpret_cast<HWND>(static_cast<INT_PTR>(-1))), 0);
}

TEST_F(ScrollHost, CantBeAWindowOfAnotherProgram) {
    HWND desktop = ::GetDesktopWindow();
    DWORD process = 0;
    ::GetWindowThreadProcessId(desktop, &process);
    ASSERT_NE(process, ::GetCurrentProcessId());
    const LONG style = ::GetWindowLongA(desktop, GWL_STYLE);
    EXPECT_EQ(::InstallScrollHost(desktop), 0);
    EXPECT_EQ(::GetWindowLongA(desktop, GWL_STYLE), style);
}

TEST_F(ScrollHost, StaysTheSameAtASecondInstall) {
    HWND host = Child(), above = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    const SCROLLHOST record = RecordOf(host);
    ::ShowScrollBar(host, SB_VERT, TRUE);
    ::SetWindowPos(above, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(::InstallScrollHost(host), 1);
    EXPECT_EQ(m_arrScrollHosts.GetSize(), 1);
    EXPECT_EQ(RecordOf(host).m_pVertBar, record.m_pVertBar);
    EXPECT_FALSE(::GetWindowLongA(host, GWL_STYLE) & WS_VSCROLL) << "the first steps run again";
    EXPECT_EQ(Below(host), above) << "it has risen";
}

TEST_F(ScrollHost, HasItsBarsAboveItAfterASecondInstallToo) {
    HWND host = Child(), other = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    ASSERT_EQ(::InstallScrollHost(other), 1);
    ASSERT_EQ(::InstallScrollHost(host), 1);
    const SCROLLHOST record = RecordOf(host);
    const HWND corner = record.m_pStub->m_hWnd, horizontal = record.m_pHorzBar->m_hWnd,
               vertical = record.m_pVertBar->m_hWnd;
    EXPECT_EQ(::GetTopWindow(m_parent), corner);
    EXPECT_EQ(Below(corner), horizontal);
    EXPECT_EQ(Below(horizontal), vertical);
    EXPECT_EQ(Below(vertical), host);
    EXPECT_EQ(Below(host), RecordOf(other).m_pStub->m_hWnd);
    // Those that somebody ended are left out.
    ::DestroyWindow(horizontal);
    ::DestroyWindow(corner);
    EXPECT_EQ(::InstallScrollHost(host), 1);
    EXPECT_EQ(::GetTopWindow(m_parent), vertical);
    EXPECT_EQ(Below(vertical), host);
}

TEST_F(ScrollHost, OfTheSinkingClassLeavesItsBarsWhereTheyAreAtASecondInstall) {
    Pane sinking(m_parent, "Tavix_PaneH");
    ASSERT_EQ(::InstallScrollHost(sinking), 1);
    const HWND corner = RecordOf(sinking).m_pStub->m_hWnd;
    HWND above = Child();
    ::SetWindowPos(above, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(::InstallScrollHost(sinking), 1);
    EXPECT_EQ(::GetTopWindow(m_parent), above);
    EXPECT_EQ(Below(above), corner);
    EXPECT_EQ(Below(sinking), nullptr);
}

TEST_F(ScrollHost, OfTheSinkingClassGoesToTheBottomOthersToTheTop) {
    HWND other = Child();
    Pane sinking(m_parent, "Tavix_PaneH"), rising(m_parent, "Tavix_PaneK");
    ::SetWindowPos(rising, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    ::SetWindowPos(sinking, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    ASSERT_EQ(::InstallScrollHost(sinking), 1);
    EXPECT_EQ(::GetWindow(other, GW_HWNDLAST), sinking);
    ASSERT_EQ(::InstallScrollHost(rising), 1);
    HWND below = RecordOf(rising).m_pVertBar->m_hWnd;
    EXPECT_EQ(::GetWindow(below, GW_HWNDNEXT), rising) << "bars lie just above their host";
    EXPECT_EQ(::GetTopWindow(m_parent), RecordOf(rising).m_pStub->m_hWnd);
}

TEST_F(ScrollHost, IsFoundByItsHandle) {
    HWND host = Child(), second = Child(), other = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    ASSERT_EQ(::InstallScrollHost(second), 1);
    EXPECT_EQ(::FindScrollHost(host, SB_VERT), 0);
    EXPECT_EQ(::FindScrollHost(second, SB_HORZ), 1);
    EXPECT_EQ(::FindScrollHost(second, -1), 1);
    EXPECT_EQ(::FindScrollHost(host, SB_CTL), -1);
    EXPECT_EQ(::FindScrollHost(other, SB_VERT), -3);
    EXPECT_EQ(::FindScrollHost(nullptr, SB_VERT), -3);
    EXPECT_EQ(::RemoveScrollHost(host), 1);
    EXPECT_EQ(::RemoveScrollHost(host), 0);
    EXPECT_EQ(::FindScrollHost(second, SB_VERT), 0) << "the order of the rest stays";
    EXPECT_FALSE(tavix::FindHostBars(host, SB_VERT));
    EXPECT_FALSE(tavix::FindHostBars(second, SB_CTL));
    EXPECT_TRUE(tavix::FindHostBars(second, SB_VERT));
}

// A quick look tells handles apart by a hash. Handles of windows that were made anew several times share one
// sooner than those of a row. Every third of the hosts goes again.
TEST_F(ScrollHost, IsFoundAmongHundreds) {
    constexpr int kWindows = 300;
    std::vector<HWND> windows;
    for (int i = 0; i < kWindows; ++i) {
        HWND window = Child();
        for (int again = 0; again < i % 8; ++again) {
            ::DestroyWindow(window);
            window = Child();
        }
        windows.push_back(window);
        if (i % 2 != 0) continue;
        ASSERT_EQ(::InstallScrollHost(windows.back()), 1);
    }
    for (int i = 0; i < kWindows; i += 6)
        ASSERT_EQ(::RemoveScrollHost(windows[static_cast<std::size_t>(i)]), 1);
    for (int i = 0; i < kWindows; ++i) {
        SCOPED_TRACE(i);
        HWND window = windows[static_cast<std::size_t>(i)];
        const bool isHost = i % 2 == 0 && i % 6 != 0;
        EXPECT_EQ(tavix::FindHostBars(window, SB_VERT).has_value(), isHost);
        EXPECT_TRUE(!isHost || tavix::MayBeHost(window));
    }
}

TEST_F(ScrollHost, GoesAtTheNextLookUpAfterItsWindow) {
    HWND host = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    const SCROLLHOST record = RecordOf(host);
    const HWND windows[] = {record.m_pVertBar->m_hWnd, record.m_pHorzBar->m_hWnd, record.m_pStub->m_hWnd};
    ::DestroyWindow(host);
    SCROLLHOST untouched;
    untouched.m_bVisible = 77;
    EXPECT_EQ(::GetScrollHostRecord(host, &untouched), -1);
    EXPECT_EQ(untouched.m_bVisible, 77);
    EXPECT_EQ(m_arrScrollHosts.GetSize(), 1) << "asking for the record removes nothing";
    EXPECT_EQ(::FindScrollHost(host, SB_VERT), -1);
    EXPECT_EQ(m_arrScrollHosts.GetSize(), 0);
    for (HWND window : windows) EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(::FindScrollHost(host, SB_VERT), -3);
}

TEST_F(ScrollHost, LeavesItsBarsStandingUntilSomebodyNamesIt) {
    HWND host = Child(), other = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    ::LayoutScrollHost(0, 1, 1, CRect());
    const SCROLLHOST record = RecordOf(host);
    const HWND windows[] = {record.m_pVertBar->m_hWnd, record.m_pHorzBar->m_hWnd, record.m_pStub->m_hWnd};
    ::DestroyWindow(host);
    PumpMessages();
    Client().SetScrollPos(other, SB_VERT, 1, TRUE);
    SCROLLHOST read;
    EXPECT_EQ(::GetScrollHostRecord(host, &read), -1);
    for (HWND window : windows) EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_EQ(::FindScrollHost(host, SB_CTL), -1) << "a call for a control names no host";
    for (HWND window : windows) EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_EQ(::FindScrollHost(host, -1), -1);
    for (HWND window : windows) EXPECT_FALSE(::IsWindow(window));
}

TEST_F(ScrollHost, SurvivesTheEndOfItsBars) {
    HWND host = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    const SCROLLHOST record = RecordOf(host);
    ::DestroyWindow(record.m_pVertBar->m_hWnd);
    ::DestroyWindow(record.m_pStub->m_hWnd);
    ::LayoutScrollHost(0, 1, 1, CRect());
    EXPECT_TRUE(IsShown(record.m_pHorzBar->m_hWnd));
    ::LayoutScrollHost(0, 0, 0, CRect());
    EXPECT_EQ(::RemoveScrollHost(host), 1);
}

TEST_F(ScrollHost, GoesWithItsParent) {
    HWND host;
    {
        ProbeWindow parent;
        host = ::CreateWindowExA(0, "Static", "", WS_CHILD, 0, 0, 50, 50, parent, nullptr, nullptr, nullptr);
        ASSERT_EQ(::InstallScrollHost(host), 1);
    }
    EXPECT_EQ(::FindScrollHost(host, SB_VERT), -1);
    EXPECT_EQ(m_arrScrollHosts.GetSize(), 0);
}

TEST_F(ScrollHost, RecordIsCopiedOut) {
    HWND host = Child(), other = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    ::LayoutScrollHost(0, 1, 0, CRect());
    SCROLLHOST record;
    EXPECT_EQ(::GetScrollHostRecord(host, &record), 0);
    EXPECT_EQ(record.m_bHorzShown, 1);
    EXPECT_EQ(record.m_bVertShown, 0);
    record.m_bHorzShown = 9;
    EXPECT_EQ(RecordOf(host).m_bHorzShown, 1);
    SCROLLHOST untouched;
    untouched.m_bHorzShown = 55;
    EXPECT_EQ(::GetScrollHostRecord(other, &untouched), -1);
    EXPECT_EQ(untouched.m_bHorzShown, 55);
    EXPECT_EQ(::GetScrollHostRecord(host, nullptr), 0);
}

// ---------------------------------------------------------------- layout

TEST(HostLayoutArithmetic, LaysBarsBesideTheClientArea) {
    const CSize thickness(17, 19);
    const tavix::HostLayout layout = tavix::LayoutOfHost(CRect(10, 20, 110, 220), thickness);
    EXPECT_EQ(layout.vertical, CRect(110, 20, 127, 220));
    EXPECT_EQ(layout.horizontal, CRect(10, 220, 110, 239));
    EXPECT_EQ(layout.corner, CRect(110, 220, 127, 239));
}

TEST(HostLayoutArithmetic, TakesTheRoomOfABarThatNewlyComes) {
    const CSize thickness(17, 19), none(0, 0), vertical(1, 0), horizontal(0, 1), both(1, 1);
    const CRect client(10, 20, 110, 220), narrower(10, 20, 93, 220), lower(10, 20, 110, 201);
    EXPECT_EQ(tavix::ClientWithNewBars(client, none, vertical, thickness), narrower);
    EXPECT_EQ(tavix::ClientWithNewBars(client, none, horizontal, thickness), lower);
    EXPECT_EQ(tavix::ClientWithNewBars(client, none, both, thickness), CRect(10, 20, 93, 201));
    EXPECT_EQ(tavix::ClientWithNewBars(client, vertical, both, thickness), lower);
    EXPECT_EQ(tavix::ClientWithNewBars(client, horizontal, both, thickness), narrower);
    EXPECT_EQ(tavix::ClientWithNewBars(client, both, both, thickness), client);
    EXPECT_EQ(tavix::ClientWithNewBars(client, both, none, thickness), client);
}

// All changes from one pair of bars to another, for a visible and a hidden host.
class HostLayoutChange : public ScrollHost, public testing::WithParamInterface<std::tuple<int, int, int>> {};

TEST_P(HostLayoutChange, FollowsTheRules) {
    const auto [from, to, visible] = GetParam();
    HWND host = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    const SCROLLHOST record = RecordOf(host);
    const HWND vertical = record.m_pVertBar->m_hWnd, horizontal = record.m_pHorzBar->m_hWnd,
               corner = record.m_pStub->m_hWnd;
    ::LayoutScrollHost(0, from & 1, from >> 1, CRect());
    tavix::SetHostVisible(host, visible);
    const bool wasShown[] = {IsShown(vertical), IsShown(horizontal), IsShown(corner)};
    const CRect before[] = {PlaceOf(vertical), PlaceOf(horizontal), PlaceOf(corner)};
    const bool isHorizontal = to & 1, isVertical = to & 2;
    ::LayoutScrollHost(0, isHorizontal, isVertical, CRect());

    const int cx = ::GetSystemMetrics(SM_CXVSCROLL), cy = ::GetSystemMetrics(SM_CYHSCROLL);
    CRect client = ClientPlaceOf(host);
    if (isVertical && !(from & 2)) client.right -= cx;
    if (isHorizontal && !(from & 1)) client.bottom -= cy;
    const bool isBoth = isHorizontal && isVertical;
    EXPECT_EQ(PlaceOf(vertical),
              isVertical ? CRect(client.right, client.top, client.right + cx, client.bottom) : before[0]);
    EXPECT_EQ(PlaceOf(horizontal),
              isHorizontal ? CRect(client.left, client.bottom, client.right, client.bottom + cy) : before[1]);
    EXPECT_EQ(PlaceOf(corner),
              isBoth ? CRect(client.right, client.bottom, client.right + cx, client.bottom + cy) : before[2]);
    EXPECT_EQ(IsShown(vertical), isVertical && (visible || wasShown[0]));
    EXPECT_EQ(IsShown(horizontal), isHorizontal && (visible || wasShown[1]));
    EXPECT_EQ(IsShown(corner), isBoth && (visible || wasShown[2]));
    EXPECT_EQ(RecordOf(host).m_bHorzShown, isHorizontal);
    EXPECT_EQ(RecordOf(host).m_bVertShown, isVertical);
}

INSTANTIATE_TEST_SUITE_P(AllPairs, HostLayoutChange,
                         testing::Combine(testing::Range(0, 4), testing::Range(0, 4), testing::Range(0, 2)));

TEST_F(ScrollHost, OfAHiddenHostIsMovedButNotShown) {
    HWND host = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    tavix::SetHostVisible(host, 0);
    ::LayoutScrollHost(0, 1, 1, CRect());
    const SCROLLHOST record = RecordOf(host);
    EXPECT_FALSE(PlaceOf(record.m_pVertBar->m_hWnd).IsRectEmpty());
    for (HWND bar : {record.m_pVertBar->m_hWnd, record.m_pHorzBar->m_hWnd, record.m_pStub->m_hWnd})
        EXPECT_FALSE(IsShown(bar));
}

TEST_F(ScrollHost, IsLaidOutByARectangleThatIsGiven) {
    HWND host = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    ::LayoutScrollHost(0, 1, 1, CRect(5, 6, 105, 86));
    EXPECT_EQ(PlaceOf(RecordOf(host).m_pVertBar->m_hWnd).TopLeft(), CPoint(105, 6));
    EXPECT_EQ(PlaceOf(RecordOf(host).m_pVertBar->m_hWnd).Height(), 80);
}

TEST_F(ScrollHost, LayoutTakesAnyNumbers) {
    HWND host = Child();
    ASSERT_EQ(::InstallScrollHost(host), 1);
    for (int index : {-1, 1, INT_MIN, INT_MAX}) ::LayoutScrollHost(index, 1, 1, CRect());
    EXPECT_EQ(RecordOf(host).m_bVertShown, 0);
    ::LayoutScrollHost(0, INT_MIN, INT_MAX, CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX));
    EXPECT_EQ(RecordOf(host).m_bVertShown, INT_MAX);
    tavix::LayoutHost(nullptr, 1, 1);
    tavix::LayoutHost(host, 0, 0);
    EXPECT_EQ(RecordOf(host).m_bVertShown, 0);
}

// ---------------------------------------------------------------- the corner

class Corner : public ScrollHost {
protected:
    // Returns what a corner of that size shows.
    Picture Painted(int width, int height) {
        CStubRegionWnd corner;
        EXPECT_TRUE(corner.Create(nullptr, "corner", WS_CHILD | WS_VISIBLE, CRect(10, 10, 500, 500),
                                  CWnd::FromHandle(m_parent), 7));
        EXPECT_EQ(PlaceOf(corner.m_hWnd), CRect(10, 10, 30, 30)) << "20 by 20 whatever was asked for";
        ::MoveWindow(corner.m_hWnd, 10, 10, width, height, FALSE);
        return RepaintedClient(corner.m_hWnd);
    }
};

TEST_F(Corner, StretchesItsBitmapOverTheWholeWindow) {
    TestSkin skin;
    skin.SetBitmap(BMP_SB_STUB, 2, 1, [](int x, int) { return x ? RGB(0, 200, 0) : RGB(0, 0, 200); });
    ASSERT_EQ(::InstallTavixSkin(skin.Write()), 1);
    const Picture picture = Painted(40, 30);
    ::UnInstallTavixSkin();
    EXPECT_EQ(picture.CountOf(RGB(0, 0, 200)), 20 * 30);
    EXPECT_EQ(picture.CountOf(RGB(0, 200, 0)), 20 * 30);
    EXPECT_EQ(picture.At(0, 29), RGB(0, 0, 200));
    EXPECT_EQ(picture.At(39, 0), RGB(0, 200, 0));
}

TEST_F(Corner, WithoutASkinPaintsNothing) {
    m_parent.background = RGB(1, 2, 3);
    const Picture picture = Painted(20, 20);
    EXPECT_EQ(picture.CountOf(TestSkin::ColourOfBitmap(BMP_SB_STUB)), 0);
}

TEST_F(Corner, AnswersErasingAndItsFrameItself) {
    CStubRegionWnd corner;
    ASSERT_TRUE(corner.Create(nullptr, "corner", WS_CHILD, CRect(), CWnd::FromHandle(m_parent), 7));
    EXPECT_EQ(::SendMessageA(corner.m_hWnd, WM_ERASEBKGND, 0, 0), 1);
    EXPECT_EQ(::SendMessageA(corner.m_hWnd, WM_NCPAINT, 1, 0), 0);
    EXPECT_EQ(::SendMessageA(corner.m_hWnd, WM_GETTEXTLENGTH, 0, 0), 6);
}

TEST_F(Corner, CantBeMadeInADeadWindow) {
    CWnd dead;
    CStubRegionWnd corner;
    EXPECT_FALSE(corner.Create(nullptr, "corner", WS_CHILD, CRect(), &dead, 7));
    EXPECT_FALSE(
        corner.Create("NoSuchClassOfWindows", "corner", WS_CHILD, CRect(), CWnd::FromHandle(m_parent), 7));
}

// ---------------------------------------------------------------- the classes of a host

TEST(HostClasses, BecomeHostsBeforeTheirSkin) {
    HostSkin skin;
    ProbeWindow parent;
    for (const char* name : {"Tavix_PaneH", "Tavix_PaneK", "Tavix_PaneL", "Tavix_PaneM", "TAVIX_PANEL"}) {
        Pane pane(parent, name);
        EXPECT_TRUE(IsHost(pane)) << name;
        CSkinWndBaseClass* head = CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->Lookup(pane);
        ASSERT_NE(head, nullptr);
        EXPECT_TRUE(typeid(*head) == typeid(CSkinClientWnd));
    }
    for (const char* name : {"Tavix_PaneD", "Tavix_PaneN", "Tavix_PaneZ"}) {
        Pane pane(parent, name);
        EXPECT_FALSE(IsHost(pane)) << name;
    }
}

TEST(HostClasses, AtTheTopLevelGetTheirSkinAlone) {
    HostSkin skin;
    Pane pane(nullptr, "Tavix_PaneK", {100, 100, 300, 300}, WS_POPUP | WS_VISIBLE);
    EXPECT_FALSE(IsHost(pane));
    EXPECT_NE(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->Lookup(pane), nullptr);
}

TEST(HostClasses, EndAsHostsWithTheSkin) {
    ProbeWindow parent;
    std::vector<HWND> windows;
    std::optional<HostSkin> skin(std::in_place);
    Pane first(parent), second(parent, "Tavix_PaneH");
    for (HWND host : {HWND{first}, HWND{second}}) {
        const SCROLLHOST record = RecordOf(host);
        for (HWND window : {record.m_pVertBar->m_hWnd, record.m_pHorzBar->m_hWnd, record.m_pStub->m_hWnd})
            windows.push_back(window);
    }
    skin.reset();
    for (HWND window : windows) EXPECT_FALSE(::IsWindow(window));
    EXPECT_TRUE(::IsWindow(first));
    const SCROLLINFO info = MakeInfo(SIF_ALL, 0, 100, 10, 5);
    Client().SetScrollInfo(first, SB_VERT, &info, TRUE);
    EXPECT_TRUE(::GetWindowLongA(first, GWL_STYLE) & WS_VSCROLL) << "its native bar serves again";
}

// ---------------------------------------------------------------- what is left

TEST(ManyHosts, ComeAndGoWithoutATrace) {
    HostSkin skin;
    ProbeWindow parent;
    const SCROLLINFO info = MakeInfo(SIF_ALL, 0, 100, 10, 5);
    const auto round = [&](int count) {
        for (int i = 0; i < count; ++i) {
            Pane pane(parent);
            Client().SetScrollInfo(pane, SB_VERT, &info, TRUE);
            Client().SetScrollInfo(pane, SB_HORZ, &info, TRUE);
            HWND host = pane;
            pane.Destroy();
            Client().SetScrollPos(host, SB_VERT, 1, FALSE);
        }
        PumpMessages(1);
    };
    round(20);
    const int gdi = CountGdiObjects(), user = CountUserObjects();
    round(1000);
    EXPECT_EQ(m_arrScrollHosts.GetSize(), 0);
    EXPECT_LE(CountGdiObjects() - gdi, 2);
    EXPECT_LE(CountUserObjects() - user, 2);
}

// Nobody names them again: some are outlived by their parents, others end with them.
TEST(ManyHosts, ThatMerelyDieEndWithTheSkinWithoutATrace) {
    const auto round = [](int count) {
        ProbeWindow lasting;
        {
            HostSkin skin;
            const SCROLLINFO info = MakeInfo(SIF_ALL, 0, 100, 10, 5);
            for (int i = 0; i < count; ++i) {
                std::optional<ProbeWindow> ending;
                if (i % 2) ending.emplace();
                Pane pane(ending ? ending->Handle() : lasting.Handle());
                Client().SetScrollInfo(pane, SB_VERT, &info, TRUE);
                Client().SetScrollInfo(pane, SB_HORZ, &info, TRUE);
                // The parent's end is the pane's too.
                if (ending)
                    ::DestroyWindow(*ending);
                else
                    pane.Destroy();
            }
            EXPECT_EQ(m_arrScrollHosts.GetSize(), count);
            EXPECT_NE(::GetTopWindow(lasting), nullptr) << "the bars of a host that died alone";
        }
        EXPECT_EQ(::GetTopWindow(lasting), nullptr);
        PumpMessages(1);
    };
    round(50);
    const int gdi = CountGdiObjects(), user = CountUserObjects();
    for (int i = 0; i < 10; ++i) round(100);
    EXPECT_LE(CountGdiObjects() - gdi, 2);
    EXPECT_LE(CountUserObjects() - user, 2);
}

}  // namespace
