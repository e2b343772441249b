// What a scroll bar answers to messages and calls, and who it speaks to.
#include <climits>

#include "bar_fixture.h"

namespace tavix_test {
namespace {

class BarMessage : public BarTest {
protected:
    static SCROLLINFO Info(HWND window, UINT mask) {
        SCROLLINFO info{sizeof info, mask, -1, -2, 3333, -4, -5};
        EXPECT_EQ(::SendMessageA(window, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(&info)), 1);
        EXPECT_EQ(info.fMask, mask);
        return info;
    }
    /* Whether the bar repaints at once. */
    template <class Action>
    int Paintings(Action action) {
        ::UpdateWindow(bar->m_hWnd);
        MessageSpy spy(bar->m_hWnd);
        spy.log.Listen({WM_PAINT});
        action();
        return spy.log.Count(WM_PAINT);
    }
    bool IsDirty() { return ::GetUpdateRect(bar->m_hWnd, nullptr, FALSE) != FALSE; }
};
INSTANTIATE_TEST_SUITE_P(Axes, BarMessage, kBothAxes, NameOfAxis);

// ---------------------------------------------------------------- a new bar

TEST_P(BarMessage, NewBarHasTheSystemsMeasures) {
    CSkinScrollBar fresh;
    EXPECT_EQ(fresh.m_nThumbLen, ::GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_EQ(fresh.m_nArrowLen, ::GetSystemMetrics(SM_CXHTHUMB));
    EXPECT_EQ(fresh.m_nPage, 0);
    EXPECT_EQ(fresh.m_bDropListBar, 0);
    EXPECT_EQ(fresh.m_bAttached, 0);
    EXPECT_EQ(fresh.m_hOwner, nullptr);
    EXPECT_TRUE(fresh.IsKindOf(RUNTIME_CLASS(CScrollBar)));
    EXPECT_STREQ(fresh.GetRuntimeClass()->m_lpszClassName, "CSkinScrollBar");
}

TEST_P(BarMessage, CreatesAChildOfItsOwnClass) {
    MakeBar(kLength, 0);
    char name[64] = {};
    ::GetClassNameA(bar->m_hWnd, name, sizeof name);
    EXPECT_STREQ(name, "TavixScrollBar10");
    EXPECT_EQ(::GetParent(bar->m_hWnd), Parent().Handle());
    EXPECT_EQ(::GetDlgCtrlID(bar->m_hWnd), 7);
    EXPECT_TRUE(::GetWindowLongA(bar->m_hWnd, GWL_STYLE) & WS_CHILD);
    EXPECT_EQ(bar->m_bHorz, GetParam() == Axis::Across);
    EXPECT_EQ(::GetClassLongA(bar->m_hWnd, GCL_STYLE) & CS_DBLCLKS, 0u);
    EXPECT_FALSE(IsSkinned(bar->m_hWnd));
    EXPECT_EQ(CWnd::FromHandlePermanent(bar->m_hWnd), bar.get());
    BorrowedWindow parent(Parent());
    EXPECT_EQ(bar->Create(AxisStyle(), Place(), &parent, 8), 0);
}

TEST_P(BarMessage, ClassIsTheLibrarysAndRegisteredOnce) {
    EXPECT_EQ(CSkinScrollBar::RegisterClass(), 1);
    EXPECT_EQ(CSkinScrollBar::RegisterClass(), 1);
    WNDCLASSA registered{};
    ASSERT_TRUE(::GetClassInfoA(::GetModuleHandleA(nullptr), "TavixScrollBar10", &registered));
    WNDCLASSA base{};
    ASSERT_TRUE(::GetClassInfoA(nullptr, "Static", &base));
    EXPECT_EQ(registered.lpfnWndProc, &AfxWndProc);
    EXPECT_EQ(registered.style | CS_DBLCLKS, base.style | CS_DBLCLKS);
    EXPECT_EQ(registered.style & CS_DBLCLKS, 0u);
    EXPECT_EQ(registered.hCursor, base.hCursor);
}

TEST_P(BarMessage, CreateFailsWithoutAParent) {
    CSkinScrollBar orphan;
    EXPECT_EQ(orphan.Create(AxisStyle(), Place(), nullptr, 1), 0);
    EXPECT_EQ(orphan.m_hWnd, nullptr);
}

// ---------------------------------------------------------------- SBM_ messages

TEST_P(BarMessage, SetPosAnswersOneAndGetPosThePosition) {
    MakeBarWith(0, 100, 10, 5);
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_SETPOS, 42, FALSE), 1);
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_GETPOS, 0, 0), 42);
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_SETPOS, 1000, FALSE), 1);
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_GETPOS, 0, 0), 91);
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_SETPOS, static_cast<WPARAM>(-9), FALSE), 1);
    EXPECT_EQ(bar->m_nPos, 0);
    EXPECT_EQ(bar->m_nThumbPixel, bar->PosToPixel(0));
}

TEST_P(BarMessage, SetPosRepaintsAtOnceOnlyIfAsked) {
    MakeBarWith(0, 100, 10, 5);
    EXPECT_EQ(Paintings([&] { ::SendMessageA(bar->m_hWnd, SBM_SETPOS, 42, FALSE); }), 0);
    EXPECT_TRUE(IsDirty());
    EXPECT_EQ(Paintings([&] { ::SendMessageA(bar->m_hWnd, SBM_SETPOS, 43, TRUE); }), 1);
    EXPECT_FALSE(IsDirty());
    ::ShowWindow(bar->m_hWnd, SW_HIDE);
    EXPECT_EQ(Paintings([&] { ::SendMessageA(bar->m_hWnd, SBM_SETPOS, 44, TRUE); }), 0);
}

TEST_P(BarMessage, GetRangeTellsBothEnds) {
    MakeBarWith(-7, 100, 10, 5);
    int min = 0, max = 0;
    ::SendMessageA(bar->m_hWnd, SBM_GETRANGE, reinterpret_cast<WPARAM>(&min), reinterpret_cast<LPARAM>(&max));
    EXPECT_EQ(min, -7);
    EXPECT_EQ(max, 100);
    bar->m_nMin = 300;
    ::SendMessageA(bar->m_hWnd, SBM_GETRANGE, reinterpret_cast<WPARAM>(&min), reinterpret_cast<LPARAM>(&max));
    EXPECT_EQ(min, 100);
    EXPECT_EQ(max, 100);
    ::SendMessageA(bar->m_hWnd, SBM_GETRANGE, 0, 0);
}

TEST_P(BarMessage, SetRangeWithoutAPageMakesItOne) {
    MakeBar();
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_SETRANGE, 5, 60), 0);
    EXPECT_EQ(bar->m_nMin, 5);
    EXPECT_EQ(bar->m_nMax, 60);
    EXPECT_EQ(bar->m_nPage, 1);
    EXPECT_EQ(bar->m_nPos, 5);
    EXPECT_EQ(bar->m_nThumbLen, 12);
    bar->SetPage(20);
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_SETRANGE, 5, 60), 0);
    EXPECT_EQ(bar->m_nPage, 20);
}

TEST_P(BarMessage, GetScrollInfoFillsWhatTheMaskNames) {
    MakeBarWith(1, 100, 10, 30);
    SCROLLINFO info = Info(bar->m_hWnd, 0);
    EXPECT_EQ(info.nMin, -1);
    EXPECT_EQ(info.nPage, 3333u);
    EXPECT_EQ(info.nPos, -4);
    EXPECT_EQ(info.nTrackPos, -5);
    info = Info(bar->m_hWnd, SIF_RANGE);
    EXPECT_EQ(info.nMin, 1);
    EXPECT_EQ(info.nMax, 100);
    EXPECT_EQ(info.nPos, -4);
    info = Info(bar->m_hWnd, SIF_PAGE);
    EXPECT_EQ(info.nPage, 10u);
    EXPECT_EQ(info.nMin, -1);
    info = Info(bar->m_hWnd, SIF_POS);
    EXPECT_EQ(info.nPos, 30);
    EXPECT_EQ(info.nTrackPos, -5);
    bar->m_nThumbPixel = 90;
    info = Info(bar->m_hWnd, SIF_TRACKPOS);
    EXPECT_EQ(info.nTrackPos, bar->PixelToPos(90));
    EXPECT_NE(info.nTrackPos, 30);
    EXPECT_EQ(info.nPos, -4);
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_GETSCROLLINFO, 0, 0), 0);
}

TEST_P(BarMessage, ShortScrollInfoHasNoTrackPosition) {
    MakeBarWith(1, 100, 10, 30);
    SCROLLINFO info{offsetof(SCROLLINFO, nTrackPos), SIF_ALL, 0, 0, 0, 0, -5};
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(&info)), 1);
    EXPECT_EQ(info.nPos, 30);
    EXPECT_EQ(info.nTrackPos, -5);
}

TEST_P(BarMessage, SetScrollInfoTakesWhatTheMaskNames) {
    MakeBarWith(0, 100, 10, 30);
    const auto set = [&](SCROLLINFO info) {
        return ::SendMessageA(bar->m_hWnd, SBM_SETSCROLLINFO, FALSE, reinterpret_cast<LPARAM>(&info));
    };
    EXPECT_EQ(set({sizeof(SCROLLINFO), 0, 7, 8, 9, 10, 0}), 30);
    EXPECT_EQ(bar->m_nMax, 100);
    EXPECT_EQ(set({sizeof(SCROLLINFO), SIF_POS, 7, 8, 9, 40, 0}), 40);
    EXPECT_EQ(bar->m_nThumbPixel, bar->PosToPixel(40));
    EXPECT_EQ(set({sizeof(SCROLLINFO), SIF_PAGE, 7, 8, 90, 10, 0}), 40);
    EXPECT_EQ(bar->m_nPage, 90);
    EXPECT_EQ(set({sizeof(SCROLLINFO), SIF_RANGE, 5, 50, 9, 10, 0}), 5);
    EXPECT_EQ(bar->m_nMin, 5);
    EXPECT_EQ(bar->m_nMax, 50);
    EXPECT_EQ(bar->m_nPage, 46);
    EXPECT_EQ(::SendMessageA(bar->m_hWnd, SBM_SETSCROLLINFO, TRUE, 0), 5);
}

TEST_P(BarMessage, SetScrollInfoRepaintsAtOnceOnlyIfAsked) {
    MakeBarWith(0, 100, 10, 30);
    SCROLLINFO info{sizeof info, SIF_POS, 0, 0, 0, 50, 0};
    const auto set = [&](WPARAM redraw) {
        ::SendMessageA(bar->m_hWnd, SBM_SETSCROLLINFO, redraw, reinterpret_cast<LPARAM>(&info));
    };
    EXPECT_EQ(Paintings([&] { set(FALSE); }), 0);
    EXPECT_EQ(Paintings([&] { set(TRUE); }), 1);
    // A page is shown at once in any case.
    info.fMask = SIF_PAGE;
    info.nPage = 20;
    EXPECT_EQ(Paintings([&] { set(FALSE); }), 1);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = 300;
    info.nPage = 30;
    EXPECT_EQ(Paintings([&] { set(TRUE); }), 1) << "all that is new at once";
}

TEST_P(BarMessage, HostileValuesAreSafe) {
    constexpr int kValues[] = {INT_MIN, -1, 0, 1, 13, INT_MAX};
    int rounds = 0;
    MakeBar();
    for (int min : kValues)
        for (int max : kValues)
            for (int page : kValues)
                for (int pos : kValues) {
                    SetInfo(*bar, min, max, page, pos);
                    SendAt(WM_MOUSEMOVE, 50);
                    SendAt(WM_LBUTTONDOWN, 50);
                    SendAt(WM_MOUSEMOVE, 80);
                    SendAt(WM_LBUTTONUP, 80, 0);
                    EXPECT_LE(bar->m_nMin, bar->m_nMax);
                    ++rounds;
                }
    EXPECT_EQ(rounds, 6 * 6 * 6 * 6);
}

// ---------------------------------------------------------------- the calls

TEST_P(BarMessage, CallsSendTheMessages) {
    MakeBarWith(0, 100, 10, 30);
    EXPECT_EQ(bar->GetScrollPos(), 30);
    EXPECT_EQ(bar->SetScrollPos(31, FALSE), 1);
    EXPECT_EQ(bar->GetScrollPos(), 31);
    bar->SetScrollRange(10, 20, FALSE);
    int min = 0, max = 0;
    bar->GetScrollRange(&min, &max);
    EXPECT_EQ(min, 10);
    EXPECT_EQ(max, 20);
    SCROLLINFO info{};
    info.fMask = SIF_POS;
    EXPECT_EQ(bar->GetScrollInfo(&info, SIF_RANGE), 1);
    EXPECT_EQ(info.fMask, static_cast<UINT>(SIF_RANGE));
    EXPECT_EQ(info.nMax, 20);
    EXPECT_EQ(info.nPos, 0);
    info.fMask = SIF_POS;
    EXPECT_EQ(bar->GetScrollInfo(&info, 0), 1);
    EXPECT_EQ(info.nPos, 11);
    info.nPos = 10;
    EXPECT_EQ(bar->SetScrollInfo(&info, FALSE), 10);
}

TEST_P(BarMessage, RangeWithRedrawSetsThePositionAgain) {
    MakeBarWith(0, 100, 10, 30);
    MessageSpy spy(bar->m_hWnd);
    spy.log.Listen({SBM_SETRANGE, SBM_SETPOS});
    bar->SetScrollRange(0, 50, TRUE);
    const std::vector<Received> expected{{bar->m_hWnd, SBM_SETRANGE, 0, 50},
                                         {bar->m_hWnd, SBM_SETPOS, 30, TRUE}};
    EXPECT_EQ(spy.log.Entries(), expected);
    spy.log.Clear();
    bar->SetScrollRange(0, 60, FALSE);
    EXPECT_EQ(spy.log.Messages(), std::vector<UINT>{SBM_SETRANGE});
}

TEST_P(BarMessage, CallsWithoutAWindowAnswerFromTheMembers) {
    MakeBarWith(0, 100, 10, 30);
    ::DestroyWindow(bar->m_hWnd);
    ASSERT_EQ(bar->m_hWnd, nullptr);
    EXPECT_EQ(bar->GetScrollPos(), 30);
    EXPECT_EQ(bar->SetScrollPos(60, TRUE), 30);
    EXPECT_EQ(bar->m_nPos, 30);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    EXPECT_EQ(bar->SetScrollInfo(&info, TRUE), 0);
    EXPECT_EQ(bar->GetScrollInfo(&info, SIF_ALL), 0);
    bar->SetScrollRange(0, 20, TRUE);
    int min = -1, max = -1;
    bar->GetScrollRange(&min, &max);
    EXPECT_EQ(min, 0);
    EXPECT_EQ(max, 20);
    bar->RefreshFromOwner();
    bar->SetPage(5);
}

TEST_P(BarMessage, RefreshCopiesTheOwnersBar) {
    UseParent(WS_VSCROLL | WS_HSCROLL);
    MakeBarWith(0, 100, 10, 30);
    SCROLLINFO info{sizeof info, SIF_ALL, 2, 80, 16, 11, 0};
    ::SetScrollInfo(Parent(), SB_HORZ, &info, FALSE);
    info = {sizeof info, SIF_ALL, 3, 90, 17, 12, 0};
    ::SetScrollInfo(Parent(), SB_VERT, &info, FALSE);
    bar->SetOwner(Parent().Handle());
    bar->RefreshFromOwner();
    const bool across = GetParam() == Axis::Across;
    EXPECT_EQ(bar->m_nMin, across ? 2 : 3);
    EXPECT_EQ(bar->m_nMax, across ? 80 : 90);
    EXPECT_EQ(bar->m_nPage, across ? 16 : 17);
    EXPECT_EQ(bar->m_nPos, across ? 11 : 12);
    EXPECT_EQ(bar->m_nThumbLen, 160 * bar->m_nPage / (bar->m_nMax - bar->m_nMin + 2));
}

// ---------------------------------------------------------------- who is told

TEST_P(BarMessage, TellsItsOwnerWithoutAHandle) {
    ProbeWindow owner;
    MakeBarWith(0, 100, 10, 30);
    EXPECT_EQ(bar->SetOwner(owner.Handle()), 1);
    EXPECT_EQ(bar->m_hOwner, owner.Handle());
    owner.log.Listen({WM_HSCROLL, WM_VSCROLL});
    SendAt(WM_LBUTTONDOWN, 10);
    EXPECT_EQ(owner.log.Entries(), (std::vector<Received>{{owner, Message(), SB_LINEUP, 0}}));
    EXPECT_TRUE(Parent().log.Entries().empty());
    BorrowedWindow window(owner);
    EXPECT_EQ(bar->SetOwner(&window), 1);
}

TEST_P(BarMessage, WithoutAnOwnerTheParentIsTold) {
    MakeBarWith(0, 100, 10, 30);
    SendAt(WM_LBUTTONDOWN, 10);
    EXPECT_EQ(Parent().log.Entries(), (std::vector<Received>{{Parent(), Message(), SB_LINEUP, 0}}));
}

TEST_P(BarMessage, WithoutAnOwnerOfItsOwnTheFrameworksIsTold) {
    ProbeWindow owner;
    owner.log.Listen({WM_HSCROLL, WM_VSCROLL});
    MakeBarWith(0, 100, 10, 30);
    bar->CWnd::SetOwner(owner);
    EXPECT_EQ(bar->m_hOwner, nullptr);
    SendAt(WM_LBUTTONDOWN, 10);
    EXPECT_EQ(owner.log.Entries(), (std::vector<Received>{{owner, Message(), SB_LINEUP, 0}}));
    EXPECT_TRUE(Parent().log.Entries().empty());
    // Its own comes first; one that does not exist makes it the framework's.
    bar->SetOwner(Parent().Handle());
    SendAt(WM_LBUTTONDOWN, 10);
    EXPECT_EQ(Parent().log.Entries().size(), 1u);
    EXPECT_EQ(bar->SetOwner(static_cast<HWND>(nullptr)), 0);
    EXPECT_EQ(bar->m_hOwner, owner.Handle());
}

TEST_P(BarMessage, RefreshReadsTheFrameworksOwnerToo) {
    ProbeWindow owner(WS_POPUP | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL);
    const SCROLLINFO info{sizeof info, SIF_ALL, 2, 80, 16, 11, 0};
    for (int code : {SB_HORZ, SB_VERT}) ::SetScrollInfo(owner, code, &info, FALSE);
    MakeBarWith(0, 100, 10, 30);
    bar->CWnd::SetOwner(owner);
    bar->RefreshFromOwner();
    EXPECT_EQ(bar->m_nMax, 80);
    EXPECT_EQ(bar->m_nPos, 11);
}

TEST_P(BarMessage, OwnerThatDoesNotExistMakesItTheParent) {
    MakeBarWith(0, 100, 10, 30);
    EXPECT_EQ(bar->SetOwner(reinterpret_cast<HWND>(0x7FFFFFF0)), 0);
    EXPECT_EQ(bar->m_hOwner, Parent().Handle());
    EXPECT_EQ(bar->SetOwner(static_cast<CWnd*>(nullptr)), 0);
    EXPECT_EQ(bar->m_hOwner, Parent().Handle());
    CSkinScrollBar without;
    EXPECT_EQ(without.SetOwner(static_cast<HWND>(nullptr)), 0);
    EXPECT_EQ(without.m_hOwner, nullptr);
}

// ---------------------------------------------------------------- single messages

TEST_P(BarMessage, RightButtonIsSwallowed) {
    MakeBarWith(0, 100, 10, 30);
    Parent().log.Listen({WM_HSCROLL, WM_VSCROLL, WM_CONTEXTMENU, WM_PARENTNOTIFY});
    EXPECT_EQ(SendAt(WM_RBUTTONDOWN, 10, MK_RBUTTON), 0);
    EXPECT_EQ(SendAt(WM_RBUTTONUP, 10, 0), 0);
    EXPECT_TRUE(Parent().log.Entries().empty());
    EXPECT_NE(::GetCapture(), bar->m_hWnd);
}

TEST_P(BarMessage, EnablingRepaintsAtOnce) {
    MakeBarWith(0, 100, 10, 30);
    EXPECT_EQ(Paintings([&] { ::EnableWindow(bar->m_hWnd, FALSE); }), 1);
    EXPECT_EQ(Paintings([&] { ::EnableWindow(bar->m_hWnd, TRUE); }), 1);
}

TEST_P(BarMessage, SizeAloneKeepsTheThumbsLength) {
    MakeBarWith(0, 100, 10, 30);
    const int length = bar->m_nThumbLen;
    const RECT larger = Place(400);
    ::MoveWindow(bar->m_hWnd, 20, 20, larger.right - 20, larger.bottom - 20, TRUE);
    EXPECT_EQ(bar->m_nThumbLen, length);
    EXPECT_EQ(bar->TrackLength(), 360);
}

TEST_P(BarMessage, FreshThumbStandsWhereThePositionIs) {
    MakeBar();
    bar->m_nArrowLen = ::GetSystemMetrics(SM_CXHTHUMB);
    EXPECT_EQ(bar->m_nThumbPixel, bar->PosToPixel(0));
    EXPECT_EQ(bar->m_nLastTrackPos, -1);
}

}  // namespace
}  // namespace tavix_test
