// What each replaced function does for scroll hosts, and for all other windows.
#include <gtest/gtest.h>

#include <climits>

#include "host_fixture.h"
#include "import_slots.h"
#include "scroll/api_hooks.h"
#include "scroll/scroll_rules.h"
#include "tavixskin.h"

using namespace tavix_test;

namespace {

class HookedFunction : public testing::Test {
protected:
    CSkinScrollBar& Bar(int code) const {
        const SCROLLHOST record = RecordOf(host);
        return code == SB_VERT ? *record.m_pVertBar : *record.m_pHorzBar;
    }
    HWND BarWindow(int code) const { return Bar(code).m_hWnd; }
    HWND Corner() const { return RecordOf(host).m_pStub->m_hWnd; }
    int SetInfo(int bar, UINT mask, int min, int max, UINT page, int pos) {
        const SCROLLINFO info = MakeInfo(mask, min, max, page, pos);
        return client.SetScrollInfo(host, bar, &info, TRUE);
    }
    // Both bars, with something to scroll.
    void ShowBoth() {
        SetInfo(SB_VERT, SIF_ALL, 0, 100, 10, 0);
        SetInfo(SB_HORZ, SIF_ALL, 0, 100, 10, 0);
    }
    int Shown() const {
        const SCROLLHOST record = RecordOf(host);
        return (record.m_bHorzShown ? 1 : 0) + (record.m_bVertShown ? 2 : 0);
    }
    // Bits: 1 horizontal bar, 2 vertical bar, 4 corner.
    int Windows() const {
        return IsShown(BarWindow(SB_HORZ)) + 2 * IsShown(BarWindow(SB_VERT)) + 4 * IsShown(Corner());
    }

    HostSkin m_skin;
    ProbeWindow m_parent;
    Pane host{m_parent};
    Pane other{m_parent, "Tavix_PaneN", {230, 30, 380, 180}};  // skinned, but no host
    const ClientCalls& client = Client();
};

constexpr int kBars[] = {SB_HORZ, SB_VERT};

// ---------------------------------------------------------------- SetScrollInfo

TEST_F(HookedFunction, SetScrollInfoBringsTheBarAndGivesItTheState) {
    for (int bar : kBars) {
        EXPECT_EQ(SetInfo(bar, SIF_ALL, 5, 104, 20, 33), 33);
        EXPECT_EQ(Bar(bar).m_nMin, 5);
        EXPECT_EQ(Bar(bar).m_nMax, 104);
        EXPECT_EQ(Bar(bar).m_nPage, 20);
        EXPECT_EQ(Bar(bar).m_nPos, 33);
        EXPECT_TRUE(IsShown(BarWindow(bar)));
        EXPECT_EQ(NativeInfoOf(host, bar).nMax, 104);
    }
    EXPECT_EQ(Windows(), 7);
    const CRect client_area = ClientPlaceOf(host);
    EXPECT_EQ(PlaceOf(BarWindow(SB_VERT)).left, client_area.right);
    EXPECT_EQ(PlaceOf(BarWindow(SB_VERT)).Height(), client_area.Height());
    EXPECT_EQ(PlaceOf(BarWindow(SB_HORZ)).top, client_area.bottom);
    EXPECT_EQ(PlaceOf(BarWindow(SB_HORZ)).Width(), client_area.Width());
}

TEST_F(HookedFunction, SetScrollInfoHidesABarWithAnEmptyRange) {
    for (int bar : kBars) {
        for (int max : {0, -1, INT_MIN}) {
            SetInfo(bar, SIF_ALL, 0, 100, 10, 0);
            ASSERT_TRUE(IsShown(BarWindow(bar)));
            SetInfo(bar, SIF_RANGE, 0, max, 0, 0);
            EXPECT_FALSE(IsShown(BarWindow(bar))) << max;
        }
    }
    EXPECT_EQ(Shown(), 0);
}

TEST_F(HookedFunction, SetScrollInfoHidesABarWhoseWholeRangeIsOnePage) {
    for (int bar : kBars) {
        SetInfo(bar, SIF_RANGE | SIF_PAGE, 10, 59, 50, 0);
        EXPECT_TRUE(IsShown(BarWindow(bar))) << "a page of max - min + 1 hides nothing";
        SetInfo(bar, SIF_RANGE | SIF_PAGE, 10, 59, 51, 0);
        EXPECT_FALSE(IsShown(BarWindow(bar))) << "one more does";
    }
}

TEST_F(HookedFunction, SetScrollInfoClipsThePositionForTheBarAlone) {
    for (int bar : kBars) {
        SetInfo(bar, SIF_RANGE | SIF_PAGE, 0, 100, 11, 0);
        EXPECT_EQ(SetInfo(bar, SIF_POS, 0, 0, 0, 5000), 90) << "the real function's own clipping";
        EXPECT_EQ(Bar(bar).m_nPos, 90);
        SetInfo(bar, SIF_POS, 0, 0, 0, -5);
        EXPECT_EQ(Bar(bar).m_nPos, 0);
    }
}

TEST_F(HookedFunction, SetScrollInfoWithoutABarYetAndAFailingReadGoesOn) {
    SCROLLINFO unread = MakeInfo(SIF_ALL);
    EXPECT_FALSE(::GetScrollInfo(host, SB_VERT, &unread));
    SetInfo(SB_VERT, SIF_RANGE | SIF_PAGE, 0, 9, 5, 0);
    EXPECT_TRUE(IsShown(BarWindow(SB_VERT)));
}

TEST_F(HookedFunction, SetScrollInfoGivesTheBarJustTheMembersOfTheMask) {
    SetInfo(SB_VERT, SIF_ALL, 0, 100, 10, 20);
    SetInfo(SB_VERT, SIF_PAGE, 77, 88, 30, 99);
    EXPECT_EQ(Bar(SB_VERT).m_nMax, 100);
    EXPECT_EQ(Bar(SB_VERT).m_nPage, 30);
    EXPECT_EQ(Bar(SB_VERT).m_nPos, 20);
    SetInfo(SB_VERT, 0, 7, 8, 9, 10);
    EXPECT_EQ(Bar(SB_VERT).m_nPage, 30);
}

TEST_F(HookedFunction, SetScrollInfoOfOtherWindowsIsTheRealOne) {
    const SCROLLINFO info = MakeInfo(SIF_ALL, 0, 100, 10, 42);
    EXPECT_EQ(client.SetScrollInfo(other, SB_VERT, &info, TRUE), 42);
    EXPECT_EQ(NativeInfoOf(other, SB_VERT).nPos, 42);
    HWND control =
        ::CreateWindowExA(0, "ScrollBar", "", WS_CHILD, 0, 0, 100, 17, m_parent, nullptr, nullptr, nullptr);
    EXPECT_EQ(client.SetScrollInfo(control, SB_CTL, &info, TRUE), 42);
    EXPECT_EQ(Shown(), 0);
}

// The rules alone, over the edges of all numbers.
TEST(ScrollInfoRules, HoldForTheEdgesOfAllNumbers) {
    const int edges[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, 100, INT_MAX - 1, INT_MAX};
    for (int min : edges)
        for (int max : edges)
            for (int page : edges)
                for (int pos : edges)
                    for (UINT mask = 0; mask < 8; ++mask) {
                        const UINT flags =
                            (mask & 1 ? SIF_RANGE : 0) | (mask & 2 ? SIF_PAGE : 0) | (mask & 4 ? SIF_POS : 0);
                        const SCROLLINFO given = MakeInfo(flags, min, max, static_cast<UINT>(page), pos);
                        const tavix::ScrollInfoVerdict v =
                            tavix::JudgeScrollInfo(MakeInfo(SIF_ALL, 0, 100, 10, 5), given);
                        if (flags & SIF_RANGE && min >= max) {
                            EXPECT_TRUE(v.hides);
                        }
                        if (!(flags & (SIF_RANGE | SIF_PAGE))) {
                            EXPECT_FALSE(v.hides);
                        }
                        if (!(flags & SIF_POS) || v.hides) {
                            EXPECT_EQ(v.position, pos);
                        }
                        if (flags == SIF_POS) {
                            EXPECT_EQ(v.position, pos < 0 ? 0 : pos > 91 ? 91 : pos);
                        }
                    }
}

TEST(ScrollInfoRules, CompareThePageWithTheCallersMinimum) {
    // The present range is 0 to 100; the caller's minimum counts without SIF_RANGE too.
    const SCROLLINFO present = MakeInfo(SIF_ALL, 0, 100, 10, 5);
    EXPECT_FALSE(tavix::JudgeScrollInfo(present, MakeInfo(SIF_PAGE, 0, 0, 101, 0)).hides);
    EXPECT_TRUE(tavix::JudgeScrollInfo(present, MakeInfo(SIF_PAGE, 0, 0, 102, 0)).hides);
    EXPECT_TRUE(tavix::JudgeScrollInfo(present, MakeInfo(SIF_PAGE, 50, 0, 52, 0)).hides);
    EXPECT_FALSE(tavix::JudgeScrollInfo(present, MakeInfo(SIF_PAGE, 50, 0, 51, 0)).hides);
    EXPECT_FALSE(tavix::JudgeScrollInfo(present, MakeInfo(SIF_PAGE, 200, 0, 102, 0)).hides)
        << "unsigned: a difference below 0 is a large number";
}

TEST(ScrollInfoRules, ClipThePositionByTheNewPage) {
    const SCROLLINFO present = MakeInfo(SIF_ALL, 0, 100, 10, 5);
    EXPECT_EQ(tavix::JudgeScrollInfo(present, MakeInfo(SIF_POS, 0, 0, 0, 95)).position, 91);
    EXPECT_EQ(tavix::JudgeScrollInfo(present, MakeInfo(SIF_PAGE | SIF_POS, 0, 0, 1, 100)).position, 100);
    EXPECT_EQ(tavix::JudgeScrollInfo(present, MakeInfo(SIF_PAGE | SIF_POS, 0, 0, 0, 101)).position, 100);
    EXPECT_EQ(tavix::JudgeScrollInfo(present, MakeInfo(SIF_RANGE | SIF_POS, 20, 60, 0, 3)).position, 20);
    EXPECT_EQ(tavix::JudgeScrollInfo(present, MakeInfo(SIF_RANGE | SIF_POS, 20, 10, 0, 3)).position, 3)
        << "nothing is clipped for a bar that hides";
}

// ---------------------------------------------------------------- SetScrollRange, SetScrollPos,
// GetScrollInfo

TEST_F(HookedFunction, SetScrollRangeShowsAndHides) {
    for (int bar : kBars) {
        EXPECT_TRUE(client.SetScrollRange(host, bar, -20, 80, TRUE));
        EXPECT_TRUE(IsShown(BarWindow(bar)));
        EXPECT_EQ(Bar(bar).m_nMin, -20);
        EXPECT_EQ(Bar(bar).m_nMax, 80);
        EXPECT_EQ(Bar(bar).m_nPage, 1) << "a bar without a page gets one by a range";
        EXPECT_EQ(NativeInfoOf(host, bar).nMin, -20);
        EXPECT_TRUE(client.SetScrollRange(host, bar, 7, 7, FALSE));
        EXPECT_FALSE(IsShown(BarWindow(bar)));
    }
    EXPECT_TRUE(client.SetScrollRange(other, SB_VERT, 3, 30, TRUE));
    EXPECT_EQ(NativeInfoOf(other, SB_VERT).nMax, 30);
}

TEST_F(HookedFunction, SetScrollRangeSetsThePositionAgainIfItRedraws) {
    ShowBoth();
    MessageSpy spy(BarWindow(SB_VERT));
    spy.log.Listen({SBM_SETRANGE, SBM_SETPOS});
    client.SetScrollRange(host, SB_VERT, 0, 50, FALSE);
    EXPECT_EQ(spy.log.Messages(), (std::vector<UINT>{SBM_SETRANGE}));
    spy.log.Clear();
    client.SetScrollRange(host, SB_VERT, 0, 60, TRUE);
    EXPECT_EQ(spy.log.Messages(), (std::vector<UINT>{SBM_SETRANGE, SBM_SETPOS}));
}

TEST_F(HookedFunction, SetScrollPosMovesTheBarOnlyToAnotherPosition) {
    ShowBoth();
    for (int bar : kBars) {
        MessageSpy spy(BarWindow(bar));
        spy.log.Listen({SBM_SETPOS});
        EXPECT_EQ(client.SetScrollPos(host, bar, 44, TRUE), 0) << "the real function's former position";
        EXPECT_EQ(Bar(bar).m_nPos, 44);
        EXPECT_EQ(client.SetScrollPos(host, bar, 44, TRUE), 44);
        EXPECT_EQ(spy.log.Count(SBM_SETPOS), 1);
        EXPECT_EQ(NativeInfoOf(host, bar).nPos, 44);
    }
    client.SetScrollRange(other, SB_VERT, 0, 50, FALSE);
    client.SetScrollPos(other, SB_VERT, 5, TRUE);
    EXPECT_EQ(NativeInfoOf(other, SB_VERT).nPos, 5);
}

TEST_F(HookedFunction, GetScrollInfoHasTheBarsWord) {
    ShowBoth();
    for (int bar : kBars) {
        Bar(bar).m_nMax = 777;
        SCROLLINFO info = MakeInfo(SIF_RANGE, -1, -1, 99, -1);
        EXPECT_TRUE(client.GetScrollInfo(host, bar, &info));
        EXPECT_EQ(info.nMax, 777);
        EXPECT_EQ(info.nPage, 99u) << "what the mask leaves out stays";
        EXPECT_EQ(info.fMask, UINT{SIF_RANGE});
    }
}

TEST_F(HookedFunction, GetScrollInfoAnswersBeforeThereIsABar) {
    SCROLLINFO info = MakeInfo(SIF_ALL);
    EXPECT_TRUE(client.GetScrollInfo(host, SB_VERT, &info));
    EXPECT_EQ(info.nPos, Bar(SB_VERT).m_nPos);
}

TEST_F(HookedFunction, GetScrollInfoStaysWithinTheCallersStructure) {
    ShowBoth();
    struct {
        SCROLLINFO info;
        int behind;
    } shorter = {MakeInfo(SIF_ALL, 0, 0, 0, 0), 0x5A5A5A5A};
    shorter.info.cbSize = offsetof(SCROLLINFO, nTrackPos);
    shorter.info.nTrackPos = 0x5A5A5A5A;
    EXPECT_TRUE(client.GetScrollInfo(host, SB_VERT, &shorter.info));
    EXPECT_EQ(shorter.info.nMax, 100);
    EXPECT_EQ(shorter.info.nTrackPos, 0x5A5A5A5A);
    EXPECT_EQ(shorter.info.cbSize, offsetof(SCROLLINFO, nTrackPos));
    EXPECT_EQ(shorter.info.fMask, UINT{SIF_ALL});
    EXPECT_EQ(shorter.behind, 0x5A5A5A5A);
}

// Codes that name no bar: a state that could be compared is nowhere to be read, so SetScrollInfo leaves the
// bars alone. The others take all but SB_VERT for the horizontal bar, which neither comes nor goes by it.
TEST_F(HookedFunction, OddBarCodesMeanTheHorizontalBarExceptToSetScrollInfo) {
    for (int code : {int{SB_BOTH}, -1, 7, INT_MAX}) {
        SCOPED_TRACE(code);
        ShowBoth();
        const SCROLLINFO info = MakeInfo(SIF_ALL, 1, 2, 3, 4);
        EXPECT_EQ(client.SetScrollInfo(host, code, &info, TRUE), ::SetScrollInfo(host, code, &info, TRUE));
        EXPECT_EQ(Bar(SB_HORZ).m_nMax, 100);
        EXPECT_EQ(client.SetScrollRange(host, code, 5, 50, FALSE),
                  ::SetScrollRange(host, code, 5, 50, FALSE));
        EXPECT_EQ(Bar(SB_HORZ).m_nMin, 5);
        EXPECT_EQ(Bar(SB_HORZ).m_nMax, 50);
        EXPECT_EQ(client.SetScrollPos(host, code, 20, FALSE), ::SetScrollPos(host, code, 20, FALSE));
        EXPECT_EQ(Bar(SB_HORZ).m_nPos, 20);
        SCROLLINFO read = MakeInfo(SIF_ALL);
        EXPECT_TRUE(client.GetScrollInfo(host, code, &read));
        EXPECT_EQ(read.nMin, 5);
        EXPECT_EQ(read.nPos, 20);
        client.SetScrollRange(host, code, 9, 9, FALSE);
        EXPECT_EQ(Bar(SB_HORZ).m_nMax, 9);
        EXPECT_EQ(Shown(), 3);
        EXPECT_EQ(Windows(), 7);
        EXPECT_EQ(Bar(SB_VERT).m_nMax, 100);
        EXPECT_EQ(NativeInfoOf(host, SB_HORZ).nMax, 100) << "the real functions know no such bar";
    }
}

// ---------------------------------------------------------------- ShowScrollBar, EnableScrollBar

TEST_F(HookedFunction, ShowScrollBarOfAControlCallsTheRealFunctionTwice) {
    HWND control =
        ::CreateWindowExA(0, "Static", "", WS_CHILD, 0, 0, 100, 17, m_parent, nullptr, nullptr, nullptr);
    MessageSpy spy(control);
    int shown = 0;
    spy.handler = [&](const Received& m) -> std::optional<LRESULT> {
        if (m.message != WM_WINDOWPOSCHANGED) return std::nullopt;
        if (!(reinterpret_cast<const WINDOWPOS*>(m.lParam)->flags & SWP_SHOWWINDOW)) return std::nullopt;
        // Hidden again at once, it is there for a second call to show.
        if (++shown == 1) ::ShowWindow(control, SW_HIDE);
        return std::nullopt;
    };
    EXPECT_TRUE(client.ShowScrollBar(control, SB_CTL, TRUE));
    EXPECT_EQ(shown, 2);
    ::ShowWindow(control, SW_HIDE);
    shown = 0;
    ::ShowScrollBar(control, SB_CTL, TRUE);
    EXPECT_EQ(shown, 1);
}

TEST_F(HookedFunction, ShowScrollBarShowsWhatItNames) {
    for (int from = 0; from < 4; ++from)
        for (int bar : {SB_HORZ, SB_VERT, SB_BOTH})
            for (int show : {0, 1}) {
                client.ShowScrollBar(host, SB_HORZ, from & 1);
                client.ShowScrollBar(host, SB_VERT, from >> 1);
                const int bits = bar == SB_BOTH ? 3 : bar == SB_VERT ? 2 : 1;
                const int expected = show ? from | bits : from & ~bits;
                EXPECT_EQ(client.ShowScrollBar(host, bar, show), 1);
                EXPECT_EQ(Shown(), expected);
                EXPECT_EQ(Windows(), expected == 3 ? 7 : expected);
                const LONG style = ::GetWindowLongA(host, GWL_STYLE);
                EXPECT_EQ((style & WS_HSCROLL) != 0, (expected & 1) != 0) << "the real function ran";
                EXPECT_EQ((style & WS_VSCROLL) != 0, (expected & 2) != 0);
            }
}

TEST_F(HookedFunction, ShowScrollBarLaysANewBarOneBreadthInside) {
    // The native bar has come already when the room for it is taken off once more.
    client.ShowScrollBar(host, SB_VERT, TRUE);
    const int breadth = ::GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_EQ(PlaceOf(BarWindow(SB_VERT)).left, ClientPlaceOf(host).right - breadth);
    client.ShowScrollBar(host, SB_VERT, TRUE);
    EXPECT_EQ(PlaceOf(BarWindow(SB_VERT)).left, ClientPlaceOf(host).right) << "the next call puts it right";
}

TEST_F(HookedFunction, ShowScrollBarRefreshesTheBarsAndBringsThemUp) {
    ShowBoth();
    ::SetScrollPos(host, SB_VERT, 31, FALSE);  // by the library's own road: the bar hears nothing
    ASSERT_EQ(Bar(SB_VERT).m_nPos, 0);
    ::SetWindowPos(other, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    client.ShowScrollBar(host, SB_BOTH, TRUE);
    EXPECT_EQ(Bar(SB_VERT).m_nPos, 31);
    EXPECT_EQ(::GetTopWindow(m_parent), BarWindow(SB_VERT)) << "the vertical bar last";
    EXPECT_EQ(::GetWindow(BarWindow(SB_VERT), GW_HWNDNEXT), BarWindow(SB_HORZ));
    client.ShowScrollBar(host, SB_HORZ, TRUE);
    EXPECT_EQ(::GetTopWindow(m_parent), BarWindow(SB_HORZ));
}

TEST_F(HookedFunction, ShowScrollBarOfOtherWindowsIsTheRealOne) {
    EXPECT_TRUE(client.ShowScrollBar(other, SB_VERT, TRUE));
    EXPECT_TRUE(::GetWindowLongA(other, GWL_STYLE) & WS_VSCROLL);
    EXPECT_EQ(Shown(), 0);
}

TEST_F(HookedFunction, EnableScrollBarKnowsTheVerticalBarAlone) {
    ShowBoth();
    for (HWND window : {HWND{host}, HWND{other}, HWND{nullptr}, reinterpret_cast<HWND>(INT_PTR{0x7770})}) {
        for (UINT bars : {UINT{SB_HORZ}, UINT{SB_BOTH}}) {
            EXPECT_EQ(client.EnableScrollBar(window, bars, ESB_DISABLE_BOTH), 1);
            EXPECT_TRUE(::IsWindowEnabled(BarWindow(SB_HORZ)));
            EXPECT_TRUE(::IsWindowEnabled(BarWindow(SB_VERT)));
        }
    }
    for (UINT arrows : {UINT{ESB_DISABLE_BOTH}, UINT{ESB_DISABLE_UP}, UINT{ESB_DISABLE_DOWN}, 77u}) {
        EXPECT_EQ(client.EnableScrollBar(host, SB_VERT, arrows), 1);
        EXPECT_FALSE(::IsWindowEnabled(BarWindow(SB_VERT)));
        EXPECT_EQ(client.EnableScrollBar(host, SB_VERT, ESB_ENABLE_BOTH), 1);
        EXPECT_TRUE(::IsWindowEnabled(BarWindow(SB_VERT)));
    }
}

TEST_F(HookedFunction, EnableScrollBarOfAWindowThatIsNoHostDoesNothing) {
    for (HWND window : {HWND{other}, HWND{m_parent}, HWND{nullptr}, reinterpret_cast<HWND>(INT_PTR{-1})})
        EXPECT_EQ(client.EnableScrollBar(window, SB_VERT, ESB_DISABLE_BOTH), 1);
}

// What reached the system's function, as a stand-in for it saw it.
struct {
    HWND window;
    UINT bars, arrows;
} g_enabled;
BOOL WINAPI NoteEnableScrollBar(HWND window, UINT bars, UINT arrows) {
    g_enabled = {window, bars, arrows};
    ::SetLastError(4711);
    return 815;
}

TEST_F(HookedFunction, EnableScrollBarOfAControlPassesItsArgumentsOn) {
    const SlotTakeover system(::GetModuleHandleA(nullptr), "user32.dll", "EnableScrollBar",
                              &NoteEnableScrollBar);
    ASSERT_NE(system.Former(), nullptr);
    for (UINT bars : {UINT{SB_CTL}, 4u, UINT_MAX})
        for (UINT arrows : {UINT{ESB_DISABLE_BOTH}, UINT{ESB_ENABLE_BOTH}, 0x12345678u}) {
            EXPECT_EQ(client.EnableScrollBar(host, bars, arrows), 815);
            EXPECT_EQ(::GetLastError(), 4711u);
            EXPECT_EQ(g_enabled.window, host);
            EXPECT_EQ(g_enabled.bars, bars);
            EXPECT_EQ(g_enabled.arrows, arrows);
        }
}

TEST_F(HookedFunction, EnableScrollBarOfAControlIsTheRealOne) {
    // A native one, under a name that is in no table.
    WNDCLASSA description{};
    ASSERT_TRUE(::GetClassInfoA(nullptr, "ScrollBar", &description));
    description.lpszClassName = "TavixTestNativeBar";
    description.hInstance = ::GetModuleHandleA(nullptr);
    ::RegisterClassA(&description);
    HWND control = ::CreateWindowExA(0, "TavixTestNativeBar", "", WS_CHILD, 0, 0, 100, 17, m_parent, nullptr,
                                     nullptr, nullptr);
    ASSERT_NE(control, nullptr);
    EXPECT_TRUE(client.EnableScrollBar(control, SB_CTL, ESB_DISABLE_BOTH));
    EXPECT_FALSE(::IsWindowEnabled(control));
    EXPECT_TRUE(client.EnableScrollBar(control, SB_CTL, ESB_ENABLE_BOTH));
    EXPECT_TRUE(::IsWindowEnabled(control));
}

// ---------------------------------------------------------------- MoveWindow, ShowWindow, BringWindowToTop

TEST_F(HookedFunction, MoveWindowTakesTheBarsAlong) {
    ShowBoth();
    EXPECT_TRUE(client.MoveWindow(host, 33, 44, 140, 120, TRUE));
    const CRect area = ClientPlaceOf(host);
    const int cx = ::GetSystemMetrics(SM_CXVSCROLL), cy = ::GetSystemMetrics(SM_CYHSCROLL);
    EXPECT_EQ(PlaceOf(host), CRect(33, 44, 173, 164));
    EXPECT_EQ(PlaceOf(BarWindow(SB_VERT)), CRect(area.right, area.top, area.right + cx, area.bottom));
    EXPECT_EQ(PlaceOf(BarWindow(SB_HORZ)), CRect(area.left, area.bottom, area.right, area.bottom + cy));
    EXPECT_EQ(PlaceOf(Corner()), CRect(area.right, area.bottom, area.right + cx, area.bottom + cy));
}

TEST_F(HookedFunction, MoveWindowOfAHostWithoutBarsBringsNone) {
    EXPECT_TRUE(client.MoveWindow(host, 33, 44, 140, 120, TRUE));
    EXPECT_EQ(Windows(), 0);
    EXPECT_TRUE(client.MoveWindow(other, 1, 2, 30, 40, TRUE));
    EXPECT_EQ(PlaceOf(other), CRect(1, 2, 31, 42));
}

TEST_F(HookedFunction, MoveWindowGivesTheSinkingClassItsVerticalBar) {
    for (const char* name : {"Tavix_PaneH", "TAVIX_paneh"}) {
        Pane sinking(m_parent, name);
        client.MoveWindow(sinking, 10, 10, 100, 100, TRUE);
        const SCROLLHOST record = RecordOf(sinking);
        EXPECT_EQ(record.m_bVertShown, 1);
        EXPECT_EQ(record.m_bHorzShown, 0);
        EXPECT_TRUE(IsShown(record.m_pVertBar->m_hWnd));
    }
}

TEST_F(HookedFunction, ShowWindowHidesAndShowsTheBarsThatAreWanted) {
    for (int wanted = 0; wanted < 4; ++wanted) {
        client.ShowScrollBar(host, SB_HORZ, wanted & 1);
        client.ShowScrollBar(host, SB_VERT, wanted >> 1);
        const int all = wanted == 3 ? 7 : wanted;
        EXPECT_TRUE(client.ShowWindow(host, SW_HIDE)) << "it was visible";
        EXPECT_EQ(RecordOf(host).m_bVisible, 0);
        EXPECT_EQ(Windows(), 0);
        EXPECT_FALSE(client.ShowWindow(host, SW_SHOW));
        EXPECT_EQ(RecordOf(host).m_bVisible, 1);
        EXPECT_EQ(Windows(), all);
    }
}

TEST_F(HookedFunction, ShowWindowKnowsTwoCommandsOnly) {
    ShowBoth();
    client.ShowWindow(host, SW_HIDE);
    for (int command : {SW_SHOWNA, SW_SHOWNOACTIVATE, SW_SHOWNORMAL}) {
        client.ShowWindow(host, command);
        EXPECT_EQ(RecordOf(host).m_bVisible, 0);
        EXPECT_EQ(Windows(), 0);
    }
    EXPECT_TRUE(IsShown(host));
}

TEST_F(HookedFunction, ABarThatComesWhileTheHostIsHiddenStaysHidden) {
    client.ShowWindow(host, SW_HIDE);
    ShowBoth();
    EXPECT_EQ(Shown(), 3);
    EXPECT_EQ(Windows(), 0);
    client.ShowWindow(host, SW_SHOW);
    EXPECT_EQ(Windows(), 7);
}

TEST_F(HookedFunction, BringWindowToTopBringsTheBarsAfterTheHost) {
    ShowBoth();
    ::SetWindowPos(other, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_TRUE(client.BringWindowToTop(host));
    const auto order = [this] {
        std::vector<HWND> windows;
        for (HWND w = ::GetTopWindow(m_parent); w; w = ::GetWindow(w, GW_HWNDNEXT)) windows.push_back(w);
        return windows;
    };
    EXPECT_EQ(order(),
              (std::vector<HWND>{Corner(), BarWindow(SB_VERT), BarWindow(SB_HORZ), HWND{host}, HWND{other}}));
    client.ShowScrollBar(host, SB_HORZ, FALSE);
    client.BringWindowToTop(other);
    client.BringWindowToTop(host);
    EXPECT_EQ(order()[0], BarWindow(SB_VERT));
    EXPECT_EQ(order()[1], HWND{host});
    client.ShowWindow(host, SW_HIDE);
    client.BringWindowToTop(host);
    EXPECT_EQ(order()[0], HWND{host}) << "a hidden host comes alone";
}

struct {
    HMENU menu;
    UINT flags;
    int x, y, reserved;
    HWND window;
    const RECT* rect;
} g_tracked;
BOOL WINAPI NoteTrackPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND window,
                               const RECT* rect) {
    g_tracked = {menu, flags, x, y, reserved, window, rect};
    ::SetLastError(4711);
    return 815;
}

TEST_F(HookedFunction, TrackPopupMenuPassesItsArgumentsOn) {
    const SlotTakeover system(::GetModuleHandleA(nullptr), "user32.dll", "TrackPopupMenu",
                              &NoteTrackPopupMenu);
    ASSERT_NE(system.Former(), nullptr);
    const HMENU menu = ::CreatePopupMenu();
    const RECT rect{1, 2, 3, 4};
    EXPECT_EQ(client.TrackPopupMenu(menu, 0x89ABCDEF, -7, INT_MAX, 99, host, &rect), 815);
    EXPECT_EQ(::GetLastError(), 4711u);
    EXPECT_EQ(g_tracked.menu, menu);
    EXPECT_EQ(g_tracked.flags, 0x89ABCDEF);
    EXPECT_EQ(g_tracked.x, -7);
    EXPECT_EQ(g_tracked.y, INT_MAX);
    EXPECT_EQ(g_tracked.reserved, 99);
    EXPECT_EQ(g_tracked.window, host);
    EXPECT_EQ(g_tracked.rect, &rect);
    ::DestroyMenu(menu);
}

TEST_F(HookedFunction, TrackPopupMenuIsTheRealOne) {
    const HMENU menu = ::CreatePopupMenu();
    ::AppendMenuA(menu, MF_STRING, 7, "item");
    ASSERT_TRUE(BringToFront(m_parent));
    m_parent.log.Clear();
    m_parent.log.Listen({WM_INITMENUPOPUP, WM_EXITMENULOOP});
    m_parent.handler = [&](const Received& received) -> std::optional<LRESULT> {
        // The keys choose the item.
        if (received.message == WM_INITMENUPOPUP) ::PostMessageA(m_parent, WM_KEYDOWN, VK_DOWN, 0);
        if (received.message == WM_ENTERIDLE) ::PostMessageA(m_parent, WM_KEYDOWN, VK_RETURN, 0);
        return std::nullopt;
    };
    EXPECT_EQ(client.TrackPopupMenu(menu, TPM_RETURNCMD, 150, 150, 0, m_parent, nullptr), 7);
    m_parent.handler = nullptr;
    EXPECT_EQ(m_parent.log.Messages(), (std::vector<UINT>{WM_INITMENUPOPUP, WM_EXITMENULOOP}));
    EXPECT_EQ(m_parent.log.Entries()[0].wParam, reinterpret_cast<WPARAM>(menu));
    ::DestroyMenu(menu);
    ::SetLastError(0);
    EXPECT_FALSE(client.TrackPopupMenu(nullptr, 0, 0, 0, 0, m_parent, nullptr));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_MENU_HANDLE});
}

// ---------------------------------------------------------------- what no caller should hand in

TEST_F(HookedFunction, TakesNoStructureAndWrongOnesLikeTheRealOne) {
    ShowBoth();
    // Wine answers a null structure with the number of an exception where Windows answers 0: either way the
    // answer is the real function's.
    EXPECT_EQ(client.SetScrollInfo(host, SB_VERT, nullptr, TRUE),
              ::SetScrollInfo(host, SB_VERT, nullptr, TRUE));
    EXPECT_EQ(client.GetScrollInfo(host, SB_VERT, nullptr), ::GetScrollInfo(host, SB_VERT, nullptr));
    for (UINT size : {0u, 4u, 23u, 25u, 27u, 29u, 4000u, UINT_MAX}) {
        SCROLLINFO info = MakeInfo(SIF_ALL, 0, 7, 8, 0);
        info.cbSize = size;
        EXPECT_EQ(client.SetScrollInfo(host, SB_VERT, &info, TRUE),
                  ::SetScrollInfo(host, SB_VERT, &info, TRUE));
        EXPECT_EQ(client.GetScrollInfo(host, SB_VERT, &info), ::GetScrollInfo(host, SB_VERT, &info));
        EXPECT_EQ(info.nMax, 7) << "untouched";
    }
    EXPECT_EQ(Bar(SB_VERT).m_nMax, 100);
    EXPECT_EQ(Shown(), 3);
}

TEST_F(HookedFunction, TakesAnyNumbers) {
    const int numbers[] = {INT_MIN, -1000, -1, 0, 1, 2, 3, 4, 100, INT_MAX};
    for (int bar : numbers) {
        for (int number : numbers) {
            for (int second : numbers) {
                const SCROLLINFO info = MakeInfo(static_cast<UINT>(number & 0x1F), number, second,
                                                 static_cast<UINT>(number), second);
                client.SetScrollInfo(host, bar, &info, FALSE);
                client.SetScrollRange(host, bar, number, second, FALSE);
            }
            client.SetScrollPos(host, bar, number, TRUE);
            client.EnableScrollBar(host, static_cast<UINT>(bar), static_cast<UINT>(number));
            client.ShowScrollBar(host, bar, number);
            SCROLLINFO read = MakeInfo(static_cast<UINT>(number));
            client.GetScrollInfo(host, bar, &read);
        }
        client.ShowWindow(host, bar);
    }
    for (int x : numbers)
        for (int width : numbers) client.MoveWindow(host, x, x, width, width, FALSE);
    EXPECT_TRUE(IsHost(host));
    EXPECT_TRUE(client.MoveWindow(host, 10, 10, 100, 100, TRUE));
}

TEST_F(HookedFunction, OfDeadAndForeignWindowsAnswersLikeTheRealOne) {
    HWND dead = other;
    other.Destroy();
    for (HWND window : {dead, HWND{nullptr}, reinterpret_cast<HWND>(INT_PTR{-1}), ::GetDesktopWindow()}) {
        SCROLLINFO info = MakeInfo(SIF_ALL), realInfo = info;
        const auto check = [](auto ours, auto real) {
            ::SetLastError(4711);
            const auto answer = ours();
            const DWORD error = ::GetLastError();
            ::SetLastError(4711);
            EXPECT_EQ(answer, real());
            EXPECT_EQ(error, ::GetLastError());
        };
        check([&] { return client.GetScrollInfo(window, SB_VERT, &info); },
              [&] { return ::GetScrollInfo(window, SB_VERT, &realInfo); });
        if (window == ::GetDesktopWindow()) continue;
        check([&] { return client.SetScrollInfo(window, SB_VERT, &info, TRUE); },
              [&] { return ::SetScrollInfo(window, SB_VERT, &info, TRUE); });
        check([&] { return client.SetScrollRange(window, SB_VERT, 0, 9, TRUE); },
              [&] { return ::SetScrollRange(window, SB_VERT, 0, 9, TRUE); });
        check([&] { return client.SetScrollPos(window, SB_VERT, 0, TRUE); },
              [&] { return ::SetScrollPos(window, SB_VERT, 0, TRUE); });
        check([&] { return client.MoveWindow(window, 0, 0, 9, 9, TRUE); },
              [&] { return ::MoveWindow(window, 0, 0, 9, 9, TRUE); });
        check([&] { return client.ShowWindow(window, SW_SHOW); },
              [&] { return ::ShowWindow(window, SW_SHOW); });
        check([&] { return client.BringWindowToTop(window); }, [&] { return ::BringWindowToTop(window); });
        check([&] { return client.ShowScrollBar(window, SB_VERT, TRUE); },
              [&] { return ::ShowScrollBar(window, SB_VERT, TRUE); });
    }
}

TEST_F(HookedFunction, OfADeadHostRemovesItAndIsTheRealOne) {
    using Call = std::function<void(HWND)>;
    const SCROLLINFO info = MakeInfo(SIF_ALL, 0, 9, 1, 0);
    SCROLLINFO read = MakeInfo(SIF_ALL);
    const Call calls[] = {
        [&](HWND w) { client.SetScrollInfo(w, SB_VERT, &info, TRUE); },
        [&](HWND w) { client.SetScrollRange(w, SB_VERT, 0, 9, TRUE); },
        [&](HWND w) { client.SetScrollPos(w, SB_VERT, 4, TRUE); },
        [&](HWND w) { client.GetScrollInfo(w, SB_HORZ, &read); },
        [&](HWND w) { client.ShowScrollBar(w, SB_BOTH, TRUE); },
        [&](HWND w) { client.EnableScrollBar(w, SB_VERT, 0); },
        [&](HWND w) { client.MoveWindow(w, 0, 0, 9, 9, TRUE); },
        [&](HWND w) { client.ShowWindow(w, SW_SHOW); },
        [&](HWND w) { client.BringWindowToTop(w); },
    };
    for (const Call& call : calls) {
        Pane pane(m_parent);
        const SCROLLHOST record = RecordOf(pane);
        const HWND window = pane;
        const HWND bars[] = {record.m_pVertBar->m_hWnd, record.m_pHorzBar->m_hWnd, record.m_pStub->m_hWnd};
        const int before = m_arrScrollHosts.GetSize();
        pane.Destroy();
        ASSERT_EQ(m_arrScrollHosts.GetSize(), before);
        ::SetLastError(4711);
        call(window);
        EXPECT_EQ(m_arrScrollHosts.GetSize(), before - 1);
        for (HWND bar : bars) EXPECT_FALSE(::IsWindow(bar));
    }
}

TEST_F(HookedFunction, LeavesTheRealFunctionsLastError) {
    ShowBoth();
    SCROLLINFO info = MakeInfo(SIF_ALL, 0, 100, 10, 20);
    // Without a redraw the real functions send nothing and set no error; the bar gets its messages.
    const auto untouched = [](auto call) {
        ::SetLastError(4711);
        call();
        EXPECT_EQ(::GetLastError(), 4711u);
    };
    untouched([&] { client.SetScrollInfo(host, SB_VERT, &info, FALSE); });
    untouched([&] { client.SetScrollRange(host, SB_VERT, 0, 50, FALSE); });
    untouched([&] { client.SetScrollPos(host, SB_VERT, 3, FALSE); });
    untouched([&] { client.GetScrollInfo(host, SB_VERT, &info); });
    untouched([&] { client.EnableScrollBar(host, SB_VERT, 0); });
}

}  // namespace
