// Native scroll bar controls that the library takes over, and bars whose hosts end them.
#include <fstream>

#include "bar_fixture.h"
#include "import_slots.h"
#include "main/gui_objects.h"
#include "support/common_controls.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {
namespace {

class ScrollControl : public BarTest {
protected:
    static CSkinScrollBar* BarOf(HWND window) {
        CWnd* object = CWnd::FromHandlePermanent(window);
        const bool is = object && object->IsKindOf(RUNTIME_CLASS(CSkinScrollBar));
        return is ? static_cast<CSkinScrollBar*>(object) : nullptr;
    }
    static LRESULT SendTo(HWND window, UINT message, Axis axis, int along, WPARAM wParam = MK_LBUTTON) {
        return ::SendMessageA(window, message, wParam, Packed(At(axis, along, kBreadth / 2)));
    }
    /* Runs once, at the first notification. */
    void OnNotification(std::function<void()> action) {
        Parent().handler = [this, action,
                            done = false](const Received& received) mutable -> std::optional<LRESULT> {
            if (received.message != Message() || done) return std::nullopt;
            done = true;
            action();
            return 0;
        };
    }
};
INSTANTIATE_TEST_SUITE_P(Axes, ScrollControl, kBothAxes, NameOfAxis);

TEST_P(ScrollControl, IsTakenOverInEitherCharacterSetAndWorld) {
    for (ControlsVersion version : {ControlsVersion::V5, ControlsVersion::V6})
        for (Charset charset : {Charset::Ansi, Charset::Unicode}) {
            ControlsWorld world(version);
            SCOPED_TRACE(std::string(NameOf(version)) + NameOf(charset));
            HWND control = MakeControl(charset);
            CSkinScrollBar* taken = BarOf(control);
            ASSERT_NE(taken, nullptr);
            EXPECT_EQ(taken->m_bAttached, 1);
            EXPECT_EQ(taken->m_bHorz, GetParam() == Axis::Across);
            EXPECT_FALSE(IsSkinned(control));
            EXPECT_EQ(::GetWindowLongPtrA(control, GWLP_WNDPROC), reinterpret_cast<LONG_PTR>(&AfxWndProc));
            EXPECT_EQ(::GetClassLongA(control, GCL_STYLE) & CS_DBLCLKS, 0u);
            ::DestroyWindow(control);
            EXPECT_EQ(CWnd::FromHandlePermanent(control), nullptr);
        }
}

TEST_P(ScrollControl, ObeysTheSystemsScrollFunctions) {
    HWND control = MakeControl(Charset::Ansi);
    SCROLLINFO info{sizeof info, SIF_ALL, 1, 60, 6, 20, 0};
    EXPECT_EQ(::SetScrollInfo(control, SB_CTL, &info, TRUE), 20);
    const CSkinScrollBar* taken = BarOf(control);
    ASSERT_NE(taken, nullptr);
    EXPECT_EQ(taken->m_nMin, 1);
    EXPECT_EQ(taken->m_nMax, 60);
    EXPECT_EQ(taken->m_nPage, 6);
    EXPECT_EQ(taken->m_nPos, 20);
    SCROLLINFO read{sizeof read, SIF_ALL, 0, 0, 0, 0, 0};
    EXPECT_TRUE(::GetScrollInfo(control, SB_CTL, &read));
    EXPECT_EQ(read.nPos, 20);
    EXPECT_EQ(read.nMax, 60);
    EXPECT_EQ(::GetScrollPos(control, SB_CTL), 20);
}

TEST_P(ScrollControl, NotificationsCarryItsHandle) {
    HWND control = MakeControl(Charset::Ansi);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 60, 6, 20, 0};
    ::SetScrollInfo(control, SB_CTL, &info, TRUE);
    Parent().log.Clear();
    SendTo(control, WM_LBUTTONDOWN, GetParam(), 4);
    SendTo(control, WM_LBUTTONUP, GetParam(), 4, 0);
    EXPECT_EQ(Notifications(reinterpret_cast<LPARAM>(control)), (std::vector<Told>{{SB_LINEUP, 0}}));
}

TEST_P(ScrollControl, ShowsTheSkin) {
    HWND control = MakeControl(Charset::Ansi);
    const Picture picture = RepaintedClient(control);
    EXPECT_GT(picture.CountOf(TestSkin::ColourOfBitmap(BMP_SB_ARROW_NORMAL)), 0);
    EXPECT_GT(picture.CountOf(TestSkin::ColourOfBitmap(BMP_SB_TRACK)), 0);
    ::EnableWindow(control, FALSE);
    EXPECT_GT(PictureOfClient(control).CountOf(TestSkin::ColourOfBitmap(BMP_SB_ARROW_DISABLED)), 0);
}

// A control that is there before the thread is skinned has a state to take over.
TEST_P(ScrollControl, KeepsTheStateThatItHad) {
    ::UnInstallTavixSkin();
    HWND control = MakeControl(Charset::Ansi);
    SCROLLINFO info{sizeof info, SIF_ALL, 5, 80, 7, 33, 0};
    ::SetScrollInfo(control, SB_CTL, &info, FALSE);
    ASSERT_EQ(::InstallTavixSkin(skin.Write()), 1);
    EXPECT_EQ(BarOf(control), nullptr);
    CSkinScrollBar taken;
    EXPECT_EQ(taken.AttachControl(control), 1);
    EXPECT_EQ(taken.m_nMin, 5);
    EXPECT_EQ(taken.m_nMax, 80);
    EXPECT_EQ(taken.m_nPage, 7);
    EXPECT_EQ(taken.m_nPos, 33);
    EXPECT_EQ(taken.m_nThumbPixel, taken.PosToPixel(33));
    EXPECT_EQ(BarOf(control), &taken);
    CSkinScrollBar second;
    EXPECT_EQ(second.AttachControl(control), 0);
    EXPECT_EQ(second.m_hWnd, nullptr);
    EXPECT_EQ(second.m_bAttached, 1);
    EXPECT_EQ(BarOf(control), &taken);
}

// Systems differ in the pages that they take; this answer has one of more than INT_MAX.
BOOL WINAPI AnswerWithAHugePage(HWND, int, SCROLLINFO* info) {
    *info = {sizeof(SCROLLINFO), SIF_ALL, 3, 300, 0x80000010, 40, 40};
    return TRUE;
}

// Pages are signed: a negative one leaves the page as it is, and the thumb fills the track.
TEST_P(ScrollControl, HugeNativePageCountsAsNegative) {
    EndSkinning();
    HWND control = MakeControl(Charset::Ansi);
    const SlotTakeover system(::GetModuleHandleA(nullptr), "user32.dll", "GetScrollInfo",
                              &AnswerWithAHugePage);
    ASSERT_NE(system.Former(), nullptr);
    CSkinScrollBar taken;
    ASSERT_EQ(taken.AttachControl(control), 1);
    EXPECT_EQ(taken.m_nMax, 300);
    EXPECT_EQ(taken.m_nPage, 0);
    EXPECT_EQ(taken.m_nThumbLen, taken.TrackLength());
    EXPECT_EQ(taken.m_nPos, 40);

    MakeBarWith(0, 100, 10, 20);
    bar->RefreshFromOwner();
    EXPECT_EQ(bar->m_nMax, 300);
    EXPECT_EQ(bar->m_nPage, 10);
    EXPECT_EQ(bar->m_nThumbLen, bar->TrackLength());
    EXPECT_EQ(bar->m_nPos, 40);
}

TEST_P(ScrollControl, WindowWithAnObjectOfItsOwnKeepsIt) {
    CWnd own;
    ASSERT_TRUE(own.CreateEx(0, "ScrollBar", "", WS_CHILD | AxisStyle(), Place(), Parent(), 9));
    EXPECT_EQ(CWnd::FromHandlePermanent(own.m_hWnd), &own);
    EXPECT_EQ(BarOf(own.m_hWnd), nullptr);
    // A second meeting is refused as well, and leaves nothing behind.
    EXPECT_EQ(CTavixSkin::GetCurrentThreadSkin()->AddControl(own.m_hWnd, nullptr), 1);
    EXPECT_EQ(CWnd::FromHandlePermanent(own.m_hWnd), &own);
}

// ---------------------------------------------------------------- hosts that end their bars

TEST_P(ScrollControl, ControlMayBeDestroyedByAnyNotification) {
    for (int along : {4, kLength - 4, 30, kLength - 30})
        for (bool whole : {false, true}) {
            UseParent(0);
            HWND parent = Parent(), control = MakeControl(Charset::Ansi);
            SCROLLINFO info{sizeof info, SIF_ALL, 0, 100, 5, 50, 0};
            ::SetScrollInfo(control, SB_CTL, &info, TRUE);
            OnNotification([&] { ::DestroyWindow(whole ? parent : control); });
            SendTo(control, WM_LBUTTONDOWN, GetParam(), along);
            EXPECT_FALSE(::IsWindow(control));
        }
}

TEST_P(ScrollControl, ControlMayBeDestroyedWhileItsThumbIsDraggedOrReleased) {
    for (int code : {SB_THUMBTRACK, SB_THUMBPOSITION}) {
        UseParent(0);
        HWND control = MakeControl(Charset::Unicode);
        SCROLLINFO info{sizeof info, SIF_ALL, 0, 100, 5, 50, 0};
        ::SetScrollInfo(control, SB_CTL, &info, TRUE);
        Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message == Message() && LOWORD(received.wParam) == code) ::DestroyWindow(control);
            return std::nullopt;
        };
        const CRect thumb = BarOf(control)->Rects().thumb;
        const int start = (GetParam() == Axis::Upright ? thumb.top : thumb.left) + 3;
        SendTo(control, WM_LBUTTONDOWN, GetParam(), start);
        SendTo(control, WM_MOUSEMOVE, GetParam(), start + 20);
        SendTo(control, WM_LBUTTONUP, GetParam(), start + 20, 0);
        EXPECT_FALSE(::IsWindow(control)) << code;
    }
}

TEST_P(ScrollControl, ControlMayBeDestroyedByItsTimer) {
    HWND control = MakeControl(Charset::Ansi);
    MoveMouse(control, At(GetParam(), 6, 8));
    SendTo(control, WM_LBUTTONDOWN, GetParam(), 6);
    OnNotification([&] { ::DestroyWindow(control); });
    ::SendMessageA(control, WM_TIMER, 4991, 0);
    EXPECT_FALSE(::IsWindow(control));
    ParkMouse();
}

TEST_P(ScrollControl, ControlMayBeDestroyedByItsPainting) {
    struct Row {
        UINT message;
        WPARAM wParam;
        int along;
    };
    for (const Row& row : {Row{WM_MOUSEMOVE, 0, 6}, Row{WM_LBUTTONDOWN, MK_LBUTTON, 6}, Row{WM_ENABLE, 1, 0},
                           Row{SBM_SETRANGE, 0, 0}, Row{SBM_SETPOS, 3, 1}}) {
        UseParent(0);
        HWND control = MakeControl(Charset::Ansi);
        ::UpdateWindow(control);
        MessageSpy spy(control);
        spy.handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message != WM_PAINT) return std::nullopt;
            ::DestroyWindow(control);
            return 0;
        };
        ::SendMessageA(control, row.message, row.wParam, Packed(At(GetParam(), row.along, 8)));
        EXPECT_FALSE(::IsWindow(control)) << row.message;
    }
}

// Counts the accesses to memory that is not there: inside a callback the platform may swallow the exception.
class FaultWatch {
public:
    FaultWatch() : m_handler(::AddVectoredExceptionHandler(TRUE, &Note)) { s_faults = 0; }
    ~FaultWatch() { ::RemoveVectoredExceptionHandler(m_handler); }
    FaultWatch(const FaultWatch&) = delete;
    FaultWatch& operator=(const FaultWatch&) = delete;
    int Count() const { return s_faults; }

private:
    static LONG CALLBACK Note(EXCEPTION_POINTERS* exception) {
        s_faults += exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION;
        return EXCEPTION_CONTINUE_SEARCH;
    }
    static inline int s_faults = 0;
    void* m_handler;
};

// Lives as long as its window, in pages of its own that go with it.
class GuardedBar final : public CSkinScrollBar {
public:
    static void* operator new(std::size_t size) {
        return ::VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    }
    static void operator delete(void* place) { ::VirtualFree(place, 0, MEM_RELEASE); }

private:
    void PostNcDestroy() override { delete this; }
};

TEST_P(ScrollControl, BarMayBeDestroyedAtTheStartOfItsPainting) {
    const FaultWatch faults;
    for (UINT message : {WM_ERASEBKGND, WM_NCPAINT})
        for (DWORD style : {DWORD{0}, DWORD{SBS_SIZEGRIP}}) {
            BorrowedWindow parent(Parent());
            auto* guarded = new GuardedBar;
            ASSERT_EQ(guarded->Create(AxisStyle() | style | WS_VISIBLE, Place(), &parent, 7), 1);
            const HWND window = guarded->m_hWnd;
            ::UpdateWindow(window);
            MessageSpy spy(window);
            spy.log.Listen({WM_PAINT, message});
            bool isPainting = false;
            spy.handler = [&](const Received& received) -> std::optional<LRESULT> {
                isPainting |= received.message == WM_PAINT;
                if (isPainting && received.message == message) ::DestroyWindow(window);
                return std::nullopt;
            };
            ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
            ::UpdateWindow(window);
            EXPECT_EQ(spy.log.Messages(), (std::vector<UINT>{WM_PAINT, message}));
            EXPECT_FALSE(::IsWindow(window));
            EXPECT_EQ(faults.Count(), 0) << "the object that is gone was used";
        }
}

TEST_P(ScrollControl, BarMayBeDeletedByItsNotification) {
    MakeBarWith(0, 100, 10, 40);
    HWND window = bar->m_hWnd;
    OnNotification([&] { bar.reset(); });
    SendAt(WM_LBUTTONDOWN, 10);
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(bar, nullptr);
}

TEST_P(ScrollControl, BarMayBeDestroyedByTheLossOfTheFocus) {
    ASSERT_TRUE(BringToFront(Parent()));
    HWND control = MakeControl(Charset::Ansi);
    HWND other = CreateControl(Charset::Ansi, Parent(), "Edit", "", 0, {200, 200, 250, 220});
    ::SetFocus(other);
    Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_SETFOCUS) ::DestroyWindow(control);
        return std::nullopt;
    };
    SendTo(control, WM_LBUTTONDOWN, GetParam(), 6);
    EXPECT_FALSE(::IsWindow(control));
    EXPECT_NE(::GetCapture(), control);
}

// ---------------------------------------------------------------- the skin's end

TEST_P(ScrollControl, LivesOnWhenTheSkinEndsWhileItIsHeld) {
    HWND control = MakeControl(Charset::Ansi);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 100, 5, 50, 0};
    ::SetScrollInfo(control, SB_CTL, &info, TRUE);
    SendTo(control, WM_LBUTTONDOWN, GetParam(), 6);
    EXPECT_GT(CountReplacedSlots(), 0);
    ::UnInstallTavixSkin();
    EXPECT_EQ(CountReplacedSlots(), 0);
    ::SendMessageA(control, WM_TIMER, 4991, 0);
    SendTo(control, WM_LBUTTONUP, GetParam(), 6, 0);
    RepaintedClient(control);
    Parent().log.Clear();
    SendTo(control, WM_LBUTTONDOWN, GetParam(), 6);
    EXPECT_EQ(Notifications(reinterpret_cast<LPARAM>(control)), (std::vector<Told>{{SB_LINEUP, 0}}));
    ::DestroyWindow(control);
    EXPECT_EQ(CWnd::FromHandlePermanent(control), nullptr);
}

TEST_P(ScrollControl, SkinMayEndInsideANotification) {
    HWND control = MakeControl(Charset::Ansi);
    OnNotification([] {
        EXPECT_GT(CountReplacedSlots(), 0);
        ::UnInstallTavixSkin();
        EXPECT_EQ(CountReplacedSlots(), 0);
    });
    SendTo(control, WM_LBUTTONDOWN, GetParam(), 6);
    SendTo(control, WM_LBUTTONUP, GetParam(), 6, 0);
    EXPECT_NE(BarOf(control), nullptr);
    EXPECT_FALSE(::IsSkinnedThread(::GetCurrentThreadId()));
}

TEST_P(ScrollControl, FileThatIsNoSkinGivesBarsWithoutArt) {
    const TempFile noSkin;
    std::ofstream(noSkin.Path()) << "not a skin";
    ASSERT_EQ(::SetSkinFromFile(noSkin.Path()), 1);
    HWND control = MakeControl(Charset::Ansi);
    EXPECT_EQ(RepaintedClient(control).At(5, 5), RGB(0, 0, 0));
}

// ---------------------------------------------------------------- nothing is left behind

TEST_P(ScrollControl, ThousandBarsLeaveNothingBehind) {
    const auto round = [&](int count) {
        for (int i = 0; i < count; ++i) {
            HWND control = MakeControl(i % 2 ? Charset::Ansi : Charset::Unicode, i % 5 ? 0 : SBS_SIZEGRIP);
            ::UpdateWindow(control);
            SendTo(control, WM_LBUTTONDOWN, GetParam(), 6);
            if (i % 3) SendTo(control, WM_LBUTTONUP, GetParam(), 6, 0);
            ::DestroyWindow(control);
            MakeBarWith(0, 100, 10, 40);
            ::UpdateWindow(bar->m_hWnd);
            bar.reset();
        }
        PumpMessages(0);
    };
    round(10);
    const int user = CountUserObjects();
    int gdi = CountGdiObjects(), grown = 0;
    ASSERT_GT(gdi, 0);
    for (int i = 0; i < 5; ++i) {
        round(100);
        const int now = CountGdiObjects();
        grown += now > gdi;
        gdi = now;
    }
    EXPECT_LT(grown, 3);
    EXPECT_EQ(CountUserObjects(), user);
}

TEST_P(ScrollControl, ThousandPaintingsLeaveNothingBehind) {
    MakeBarWith(0, 100, 10, 40);
    Canvas canvas(kLength, kLength, 0);
    const auto round = [&](int count) {
        for (int i = 0; i < count; ++i) {
            bar->m_bThumbPressed = i % 2;
            ::EnableWindow(bar->m_hWnd, i % 10 != 0);
            ::RedrawWindow(bar->m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
            bar->PaintTo(canvas.Dc(), 0, 0, kLength, kLength);
        }
    };
    round(50);
    int gdi = CountGdiObjects(), grown = 0;
    for (int i = 0; i < 5; ++i) {
        round(200);
        const int now = CountGdiObjects();
        grown += now > gdi;
        gdi = now;
    }
    EXPECT_LT(grown, 3);
}

}  // namespace
}  // namespace tavix_test
