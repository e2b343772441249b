// Tab controls: what the skin answers, what goes on to the native control, and real input.
#include "tab_ctrl_fixture.h"

#include "commonctrls/tab_ctrl_geometry.h"
#include "support/object_rounds.h"

namespace tavix_test {
namespace {

class TabCtrlMessages : public TabCtrlTest {
protected:
    CRect Adjust(bool toWindow, RECT rect) {
        EXPECT_EQ(::SendMessageA(tabs, TCM_ADJUSTRECT, toWindow, reinterpret_cast<LPARAM>(&rect)), 0);
        return rect;
    }
    CPoint MiddleOf(int index) const {
        const CRect rect = TabRect(index);
        return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    }
};

TEST_P(TabCtrlMessages, OnlyPaintingStopsAtTheSkin) {
    ClassSpy below("SysTabControl32");
    Make({"One"});
    EXPECT_TRUE(below.log.Has(WM_CREATE));
    EXPECT_TRUE(below.log.Has(WM_SIZE));
    below.log.Clear();  // the first WM_NCCALCSIZE comes before the skin does

    Canvas canvas(30, 20, RGB(1, 2, 3));
    EXPECT_EQ(::SendMessageA(tabs, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0), 1);
    EXPECT_EQ(canvas.Take().CountOf(RGB(1, 2, 3)), 600);
    ::InvalidateRect(tabs, nullptr, TRUE);
    EXPECT_EQ(::SendMessageA(tabs, WM_PAINT, 0, 0), 0);
    EXPECT_FALSE(::GetUpdateRect(tabs, nullptr, FALSE));
    EXPECT_EQ(::SendMessageA(tabs, WM_NCPAINT, 1, 0), 0);
    RECT rect{1, 2, 30, 40};
    EXPECT_EQ(::SendMessageA(tabs, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect)), 0);
    EXPECT_TRUE(CRect(rect) == CRect(1, 2, 30, 40)) << "all of it is client area";
    for (const UINT message : {WM_ERASEBKGND, WM_PAINT, WM_NCPAINT, WM_NCCALCSIZE})
        EXPECT_FALSE(below.log.Has(message)) << message;

    for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_TIMER, WM_SETFOCUS,
                               WM_KILLFOCUS, WM_CAPTURECHANGED, WM_ENABLE, WM_USER + 300}) {
        below.log.Clear();
        ::SendMessageA(tabs, message, 0, 0);
        EXPECT_TRUE(below.log.Has(message)) << message << " goes on";
    }
    ::ReleaseCapture();
    ::DestroyWindow(tabs);
}

TEST_P(TabCtrlMessages, AnswersOfTheNativeControlAreReplacedWhereTheSkinHasItsOwn) {
    ClassSpy below("SysTabControl32");
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_SIZE || received.message == WM_USER + 300) return 77;
        return std::nullopt;
    };
    Make({"One"});
    EXPECT_EQ(::SendMessageA(tabs, WM_SIZE, 0, MAKELPARAM(260, 130)), 0);
    EXPECT_EQ(::SendMessageA(tabs, WM_USER + 300, 0, 0), 77);
    ::DestroyWindow(tabs);
}

TEST_P(TabCtrlMessages, CreationGoesOnWhateverTheNativeControlAnswers) {
    ClassSpy below("SysTabControl32");
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_CREATE) return -1;
        return std::nullopt;
    };
    HWND window = CreateControl(GetParam().charset, Parent(), "SysTabControl32", "", 0, {0, 0, 50, 50});
    EXPECT_NE(window, nullptr);
    ::DestroyWindow(window);
}

// A border that the style names keeps the room that it had at the creation until the frame changes.
TEST_P(TabCtrlMessages, ClientAreaIsTheWholeWindowOnceTheFrameChanges) {
    for (const DWORD style : {0ul, static_cast<DWORD>(WS_BORDER), static_cast<DWORD>(WS_DLGFRAME)}) {
        tabs = CreateControl(GetParam().charset, Parent(), "SysTabControl32", "", style, {10, 20, 270, 150},
                             100, WS_EX_CLIENTEDGE);
        texts.clear();
        Add("One");
        EXPECT_LT(ClientSize().cx, 260);
        ::SetWindowPos(tabs, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
        EXPECT_EQ(ClientSize().cx, 260);
        EXPECT_EQ(ClientSize().cy, 130);
        EXPECT_EQ(Shown(), Model());
        EXPECT_EQ(PictureOfWindow(tabs), PictureOfClient(tabs));
        ::DestroyWindow(tabs);
    }
}

TEST_P(TabCtrlMessages, PageIsMovedIntoTheFrameOfTheSkin) {
    Make({"One"});
    for (const bool toWindow : {false, true}) {
        const RECT from{5, 6, 205, 106};
        // What the native control makes of it, below the skin.
        RECT native = from;
        const auto previous = reinterpret_cast<WNDPROC>(::GetClassLongPtrA(tabs, GCLP_WNDPROC));
        ::CallWindowProcA(previous, tabs, TCM_ADJUSTRECT, toWindow, reinterpret_cast<LPARAM>(&native));
        const CRect adjusted = Adjust(toWindow, from);
        EXPECT_TRUE(adjusted == CRect(native.left + 1, native.top + 2, native.right - 1, native.bottom + 1))
            << toWindow;
    }
    EXPECT_EQ(::SendMessageA(tabs, TCM_ADJUSTRECT, FALSE, 0), 0) << "nothing to adjust";
}

// The sides that the skin changes don't add up: a page's rectangle and back is another rectangle.
TEST_P(TabCtrlMessages, AdjustingThereAndBackShiftsARectangle) {
    Make({"One"});
    const CRect from(0, 0, 200, 100);
    const CRect back = Adjust(true, Adjust(false, from));
    EXPECT_TRUE(back == CRect(2, 4, 198, 102));
}

TEST_P(TabCtrlMessages, HoveringChangesNothing) {
    Make({"One", "Two", "Three"}, {10, 20, 270, 150}, TCS_TOOLTIPS);
    ::UpdateWindow(tabs);
    const Picture before = PictureOfClient(tabs);
    for (const int tab : {1, 2, 0, 1}) {
        MoveMouse(tabs, MiddleOf(tab));
        PumpMessages(30);
        EXPECT_EQ(PictureOfClient(tabs), before) << tab;
    }
    ParkMouse();
    PumpMessages(30);
    EXPECT_EQ(PictureOfClient(tabs), before);
}

TEST_P(TabCtrlMessages, ClickSelectsAsAUserDoes) {
    Make({"One", "Two", "Three"});
    ::UpdateWindow(tabs);
    Parent().log.Clear();
    MoveMouse(tabs, MiddleOf(2));
    PressMouse();
    ::UpdateWindow(tabs);
    EXPECT_EQ(PictureOfClient(tabs), Model()) << "pressed";
    ReleaseMouse();
    EXPECT_EQ(Selected(), 2);
    ::UpdateWindow(tabs);
    EXPECT_EQ(PictureOfClient(tabs), Model());
    EXPECT_TRUE(Parent().log.Has(WM_NOTIFY)) << "the native control tells of the selection";
    ParkMouse();
}

TEST_P(TabCtrlMessages, ArrowKeysSelect) {
    Make({"One", "Two", "Three"}, {10, 20, 270, 150}, WS_TABSTOP);
    ASSERT_TRUE(BringToFront(Parent()));
    ::SetFocus(tabs);
    ::SendMessageA(tabs, WM_KEYDOWN, VK_RIGHT, 0);
    ::SendMessageA(tabs, WM_KEYUP, VK_RIGHT, 0);
    EXPECT_EQ(Selected(), 1);
    ::UpdateWindow(tabs);
    EXPECT_EQ(PictureOfClient(tabs), Model()) << "without a mark of the focus";
}

TEST_P(TabCtrlMessages, GrowingShowsTheWholeFrame) {
    Make({"One", "Two"}, {10, 20, 150, 90});
    ::UpdateWindow(tabs);
    for (const SIZE size : {SIZE{260, 130}, SIZE{180, 130}, SIZE{180, 70}, SIZE{261, 71}}) {
        ::SetWindowPos(tabs, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        PumpMessages();
        ::UpdateWindow(tabs);
        EXPECT_EQ(LessChildren(PictureOfClient(tabs)), Model()) << size.cx << " " << size.cy;
    }
}

TEST_P(TabCtrlMessages, DeletedTabsGo) {
    Make({"One", "Two", "Three"});
    Select(2);
    ::SendMessageA(tabs, TCM_DELETEITEM, 0, 0);
    texts.erase(texts.begin());
    EXPECT_EQ(Shown(), Model());
    ::SendMessageA(tabs, TCM_DELETEALLITEMS, 0, 0);
    texts.clear();
    EXPECT_EQ(Shown(), Model());
}

TEST_P(TabCtrlMessages, ChangeOfSkinRepaints) {
    Make({"One"});
    ::UpdateWindow(tabs);
    skin.SetColour(39, RGB(3, 60, 90));
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    ::UpdateWindow(tabs);
    EXPECT_EQ(PictureOfClient(tabs).At(100, 80), RGB(3, 60, 90));
    EXPECT_EQ(PictureOfClient(tabs), Model());
}

// A page takes on the body's colour, whether the tab control or the dialog is its parent.
TEST_P(TabCtrlMessages, PageAndBodyHaveOneColour) {
    HWND dialog = ::CreateWindowExA(0, "#32770", "d", WS_POPUP | WS_CAPTION | WS_VISIBLE, 50, 50, 320, 240,
                                    nullptr, nullptr, nullptr, nullptr);
    MakeIn(dialog, {"One"}, {20, 31, 280, 190});
    const CRect inner = Adjust(false, {0, 0, 260, 159});
    for (HWND parent : {tabs, dialog}) {
        CRect place = inner;
        ::MapWindowPoints(tabs, parent, reinterpret_cast<POINT*>(static_cast<RECT*>(&place)), 2);
        HWND page = ::CreateWindowExA(0, "#32770", "", WS_CHILD | WS_VISIBLE | DS_CONTROL | WS_CLIPSIBLINGS,
                                      place.left, place.top, place.Width(), place.Height(), parent, nullptr,
                                      nullptr, nullptr);
        ::SetWindowPos(page, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        const Picture shown = RepaintedClient(page);
        EXPECT_EQ(shown.CountOf(skin.Colour(39)), shown.width * shown.height);
        ::DestroyWindow(page);
    }
    EXPECT_EQ(Shown().At(130, 80), skin.Colour(39));
    ::DestroyWindow(dialog);
}

TEST_P(TabCtrlMessages, LeavesNoObjects) {
    ExpectNoMoreObjects([this] {
        Make({"One", "Two", "Three"});
        Shown();
        Select(1);
        Shown();
        ::DestroyWindow(tabs);
    });
}

INSTANTIATE_TEST_SUITE_P(Worlds, TabCtrlMessages, kControlWorlds, NameOfWorld);

TEST(TabCtrlGeometry, BodyStartsOneBelowTheFirstTab) {
    EXPECT_TRUE(tavix::TabBody(RECT{0, 0, 200, 100}, RECT{2, 2, 50, 20}) == CRect(0, 21, 200, 100));
}

TEST(TabCtrlGeometry, LastPieceOfASideIsToldByTheCornersHeight) {
    EXPECT_EQ(tavix::TabEdgePieceHeight(0, 50, 10, 6), 10);
    EXPECT_EQ(tavix::TabEdgePieceHeight(43, 50, 10, 6), 10) << "reaches over the limit";
    EXPECT_EQ(tavix::TabEdgePieceHeight(44, 50, 10, 6), 6);
    EXPECT_EQ(tavix::TabEdgePieceHeight(30, 50, 10, 20), 10) << "never more than the piece has";
    EXPECT_EQ(tavix::TabEdgePieceHeight(45, 50, 10, 0), 10);
    EXPECT_EQ(tavix::TabEdgePieceHeight(49, 50, 10, 0), 10);
}

}  // namespace
}  // namespace tavix_test
