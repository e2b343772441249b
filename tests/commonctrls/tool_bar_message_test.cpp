// Tool bars: what the skin answers, what goes on to the native control, the button under the mouse, real
// input.
#include "support/object_rounds.h"
#include "tool_bar_fixture.h"

namespace tavix_test {
namespace {

constexpr UINT_PTR kHotTimer = 4991;
constexpr char kClass[] = "ToolbarWindow32";

class ToolBarMessages : public ToolBarTest {
protected:
    const Look m_normal{0, Look::Whole, false, Normal, Effect::Plain};
    const Look m_hot{70, Look::Whole, false, Normal, Effect::Lifted};
    const Look m_pressed{71, Look::Whole, false, Normal, Effect::Pushed};

    void MakeThree() {
        Make({{}, {}, {BTNS_BUTTON, TBSTATE_ENABLED, 1}});
        Shown();
    }
    /* As it shows now, nothing being repainted but what is invalid. */
    Picture ShownNow() {
        ::UpdateWindow(bar);
        return PictureOfClient(bar);
    }
    Picture HotModel(int hot) {
        std::vector<std::optional<Look>> looks(3, m_normal);
        if (hot >= 0) looks[static_cast<std::size_t>(hot)] = m_hot;
        return Model(looks);
    }
    /* Ends the timer if it runs. */
    bool EndTimer() { return ::KillTimer(bar, kHotTimer) != 0; }
    CRect Invalid() const {
        CRect rect;
        ::GetUpdateRect(bar, &rect, FALSE);
        return rect;
    }
};

// ---------------------------------------------------------------- messages

TEST_P(ToolBarMessages, OnlyPaintingStopsAtTheSkin) {
    ClassSpy below(kClass);
    MakeThree();
    EXPECT_TRUE(below.log.Has(WM_CREATE));
    EXPECT_TRUE(below.log.Has(WM_SIZE));
    below.log.Clear();

    Canvas canvas(30, 20, RGB(1, 2, 3));
    EXPECT_EQ(::SendMessageA(bar, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0), 1);
    EXPECT_EQ(canvas.Take().CountOf(RGB(1, 2, 3)), 600);
    ::InvalidateRect(bar, nullptr, TRUE);
    EXPECT_EQ(::SendMessageA(bar, WM_PAINT, 0, 0), 0);
    EXPECT_FALSE(::GetUpdateRect(bar, nullptr, FALSE));
    EXPECT_EQ(::SendMessageA(bar, WM_NCPAINT, 1, 0), 0);
    for (const UINT message : {WM_ERASEBKGND, WM_PAINT, WM_NCPAINT, WM_NCCALCSIZE})
        EXPECT_FALSE(below.log.Has(message)) << message;

    for (const UINT message : {WM_SIZE, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_TIMER, WM_SETFOCUS,
                               WM_KILLFOCUS, WM_CAPTURECHANGED, WM_ENABLE, WM_MOUSELEAVE, WM_USER + 300}) {
        below.log.Clear();
        ::SendMessageA(bar, message, 0, 0);
        EXPECT_TRUE(below.log.Has(message)) << message << " goes on";
    }
    ::DestroyWindow(bar);
}

TEST_P(ToolBarMessages, AnswersOfTheNativeControlAreReplacedWhereTheSkinHasItsOwn) {
    ClassSpy below(kClass);
    MakeThree();
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        switch (received.message) {
            case WM_SIZE:
            case WM_LBUTTONDOWN:
            case WM_LBUTTONUP:
            case WM_MOUSEMOVE:
            case WM_CAPTURECHANGED:
            case WM_TIMER:
            case WM_USER + 300:
                return 77;
        }
        return std::nullopt;
    };
    for (const UINT message : {WM_SIZE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEMOVE})
        EXPECT_EQ(::SendMessageA(bar, message, 0, MAKELPARAM(250, 10)), 0) << message;
    for (const UINT message : {WM_CAPTURECHANGED, WM_TIMER, WM_USER + 300})
        EXPECT_EQ(::SendMessageA(bar, message, 5, 0), 77) << message;
    ::DestroyWindow(bar);
}

TEST_P(ToolBarMessages, CreationGoesOnWhateverTheNativeControlAnswers) {
    ClassSpy below(kClass);
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_CREATE) return -1;
        return std::nullopt;
    };
    HWND window = CreateControl(GetParam().charset, Parent(), kClass, "", kBarStyle, {0, 0, 50, 50});
    EXPECT_NE(window, nullptr);
    ::DestroyWindow(window);
}

TEST_P(ToolBarMessages, BorderIsTakenFromBarsOfMoreThan30PixelsOnly) {
    Make({});
    const struct {
        CRect window, client;
    } cases[] = {{{10, 20, 210, 51}, {11, 23, 209, 48}},
                 {{10, 20, 210, 50}, {10, 20, 210, 50}},
                 {{0, 0, 1, 31}, {1, 3, 0, 28}},
                 {{0, 0, 0, 0}, {0, 0, 0, 0}}};
    for (const auto& [window, client] : cases) {
        CRect rect = window;
        EXPECT_EQ(::SendMessageA(bar, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect)), 0);
        EXPECT_TRUE(rect == client) << window.bottom;
        NCCALCSIZE_PARAMS sizes{};
        sizes.rgrc[0] = window;
        EXPECT_EQ(::SendMessageA(bar, WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&sizes)), 0);
        EXPECT_TRUE(CRect(sizes.rgrc[0]) == client) << window.bottom;
    }
    EXPECT_EQ(::SendMessageA(bar, WM_NCCALCSIZE, FALSE, 0), 0) << "nothing to change";
}

TEST_P(ToolBarMessages, NewSizeInvalidatesAll) {
    MakeThree();
    ::ValidateRect(bar, nullptr);
    EXPECT_EQ(::SendMessageA(bar, WM_SIZE, SIZE_RESTORED, MAKELPARAM(298, 34)), 0);
    EXPECT_TRUE(Invalid() == CRect(0, 0, 298, 34));
    for (const int height : {28, 50, 30, 31}) {
        ::SetWindowPos(bar, nullptr, 0, 0, 300, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        EXPECT_EQ(ClientSize().cy, height > 30 ? height - 6 : height);
        EXPECT_EQ(ShownNow(), HotModel(-1)) << height;
    }
}

// The native control was asked for the first measures: the skin comes after them.
TEST_P(ToolBarMessages, BorderComesWithTheFirstChangeOfSizeOrFrame) {
    bar = CreateControl(GetParam().charset, Parent(), kClass, "", kBarStyle, {20, 30, 320, 70});
    EXPECT_EQ(ClientSize().cx, 300);
    ::SetWindowPos(bar, nullptr, 0, 0, 0, 0,
                   SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    EXPECT_EQ(ClientSize().cx, 298);
    EXPECT_EQ(ClientSize().cy, 34);
}

TEST_P(ToolBarMessages, ChangeOfSkinRepaints) {
    MakeThree();
    skin.SetBitmap(74, 11, 80, RGB(3, 60, 90));
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    EXPECT_EQ(ShownNow().At(290, 5), RGB(3, 60, 90));
    EXPECT_EQ(PictureOfWindow(bar).At(150, 0), RGB(3, 60, 90)) << "the border too";
}

TEST_P(ToolBarMessages, BarThatErasesItselfStaysNative) {
    HWND native = CreateControl(GetParam().charset, Parent(), kClass, "", kBarStyle | TBSTYLE_CUSTOMERASE,
                                {0, 0, 50, 50});
    EXPECT_FALSE(IsSkinned(native));
    HWND skinned =
        CreateControl(GetParam().charset, Parent(), kClass, "", kBarStyle | 0xDF00, {0, 0, 50, 50});
    EXPECT_TRUE(IsSkinned(skinned)) << "whatever the other styles";
    ::DestroyWindow(native);
    ::DestroyWindow(skinned);
}

// ---------------------------------------------------------------- the button under the mouse

TEST_P(ToolBarMessages, ButtonTurnsHotAtOnceWithoutARepaint) {
    MakeThree();
    ClassSpy below(kClass);
    ::ValidateRect(bar, nullptr);
    EXPECT_EQ(Move(MiddleOf(1)), 0);
    EXPECT_EQ(PictureOfClient(bar).At(ItemRect(1).left, ItemRect(1).top), Flat(70));
    ::ValidateRect(bar, nullptr);
    EXPECT_EQ(ShownNow().At(ItemRect(0).left, ItemRect(0).top), Flat(74));
    EXPECT_EQ(Shown(), HotModel(1));
    EXPECT_TRUE(EndTimer());
}

TEST_P(ToolBarMessages, MouseTakesTheHotLookFromButtonToButton) {
    MakeThree();
    for (const int button : {0, 1, 2, 1, 0}) {
        Move(MiddleOf(button));
        EXPECT_EQ(ShownNow(), HotModel(button)) << button;
        Move(MiddleOf(button) /* again */);
        EXPECT_EQ(ShownNow(), HotModel(button)) << button;
        EXPECT_EQ(Shown(), HotModel(button)) << button;
    }
    EXPECT_TRUE(EndTimer());
}

// Those that show a button under the mouse by themselves.
TEST_P(ToolBarMessages, StylesOfTheNativeControlChangeNothing) {
    for (const int style : {TBSTYLE_FLAT, TBSTYLE_FLAT | TBSTYLE_TRANSPARENT, TBSTYLE_LIST | TBSTYLE_FLAT,
                            TBSTYLE_TOOLTIPS, TBSTYLE_WRAPABLE | TBSTYLE_ALTDRAG}) {
        Make({{}, {}, {}}, 40, static_cast<DWORD>(style));
        EXPECT_EQ(Shown(), HotModel(-1)) << std::hex << style;
        for (const int button : {1, 2}) {
            Move(MiddleOf(button));
            EXPECT_EQ(ShownNow(), HotModel(button)) << std::hex << style;
        }
        Move({-1, 10});
        EXPECT_EQ(ShownNow(), HotModel(-1)) << std::hex << style;
        ::DestroyWindow(bar);
    }
}

// No button is drawn by its owner, whatever that would answer.
TEST_P(ToolBarMessages, OwnerIsNotAskedForCustomDrawing) {
    int asked = 0;
    Parent().handler = [&asked](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_NOTIFY) return std::nullopt;
        if (reinterpret_cast<const NMHDR*>(received.lParam)->code == NM_CUSTOMDRAW) ++asked;
        return std::nullopt;
    };
    MakeThree();
    EXPECT_EQ(Shown(), HotModel(-1));
    EXPECT_EQ(asked, 0);
    Parent().handler = nullptr;
}

// The repaint comes before the bar forgets the button, so the look stays until the next one.
TEST_P(ToolBarMessages, ButtonLeftForAnEmptyPlaceLooksHotUntilItIsRepainted) {
    MakeThree();
    Move(MiddleOf(1));
    ::UpdateWindow(bar);
    Move(Nowhere());
    EXPECT_EQ(PictureOfClient(bar), HotModel(1));
    EXPECT_EQ(Shown(), HotModel(-1));
    // A move to a button after that is one from no button.
    Move(MiddleOf(2));
    EXPECT_EQ(ShownNow(), HotModel(2));
}

TEST_P(ToolBarMessages, SeparatorIsNoButton) {
    Make({{BTNS_SEP}, {}, {BTNS_SEP}, {}});
    const auto model = [&](int hot) {
        return Model({{}, hot == 1 ? m_hot : m_normal, {}, hot == 3 ? m_hot : m_normal});
    };
    Move(MiddleOf(0));
    EXPECT_EQ(ShownNow(), model(-1));
    EXPECT_FALSE(EndTimer());
    Move(MiddleOf(1));
    EXPECT_EQ(ShownNow(), model(1));
    Move(MiddleOf(2));
    EXPECT_EQ(Shown(), model(-1));
    Move(MiddleOf(3));
    EXPECT_EQ(ShownNow(), model(3));
}

// The hit test tells separators by negative indices, of which the first is none.
TEST_P(ToolBarMessages, FirstSeparatorTakesTheHotLookAtOnce) {
    Make({{BTNS_SEP}, {}, {}});
    Move(MiddleOf(1));
    ASSERT_EQ(ShownNow(), Model({{}, m_hot, m_normal}));
    CPoint at = MiddleOf(0);
    if (::SendMessageA(bar, TB_HITTEST, 0, reinterpret_cast<LPARAM>(static_cast<POINT*>(&at))) != 0)
        GTEST_SKIP() << "this version of the controls tells it by another index";
    Move(at);
    EXPECT_EQ(ShownNow(), Model({{}, m_normal, m_normal}));
}

TEST_P(ToolBarMessages, DisabledButtonUnderTheMouseIsKeptButDoesNotShow) {
    Make({{BTNS_BUTTON, 0, 0}, {}});
    const Look grey{0, Look::Whole, false, Normal, Effect::Silhouette};
    Move(MiddleOf(0));
    EXPECT_EQ(ShownNow(), Model({grey, m_normal}));
    SetState(0, TBSTATE_ENABLED);
    EXPECT_EQ(Shown(), Model({m_hot, m_normal})) << "as soon as it is enabled";
    EXPECT_TRUE(EndTimer());
}

TEST_P(ToolBarMessages, PointOutsideTheClientAreaDropsTheHotButton) {
    MakeThree();
    const CSize size = ClientSize();
    for (const CPoint outside : {CPoint(-1, 10), CPoint(size.cx, 10), CPoint(10, -1), CPoint(10, size.cy)}) {
        Move(MiddleOf(0));
        ASSERT_EQ(ShownNow(), HotModel(0));
        Move(outside);
        EXPECT_EQ(ShownNow(), HotModel(-1)) << outside.x << " " << outside.y;
        EXPECT_FALSE(EndTimer()) << "there is nothing to wait for";
    }
}

TEST_P(ToolBarMessages, TimerFindsThatTheMouseHasLeft) {
    MakeThree();
    ClassSpy below(kClass);
    MoveMouse(bar, MiddleOf(1));
    ASSERT_TRUE(PumpUntil([&] { return ShownNow() == HotModel(1); }));
    PumpMessages(50);
    EXPECT_EQ(ShownNow(), HotModel(1)) << "while the mouse stays, so does the look";
    // Out of the bar at one go: the bar itself hears nothing of it.
    MoveMouse(Parent(), {200, 250});
    EXPECT_TRUE(PumpUntil([&] { return ShownNow() == HotModel(-1); }));
    EXPECT_FALSE(EndTimer());
}

TEST_P(ToolBarMessages, OneTickIsEnoughToDropTheHotButton) {
    MakeThree();
    MoveMouse(Parent(), {200, 250});  // where the real mouse is
    Move(MiddleOf(2));
    ASSERT_EQ(ShownNow(), HotModel(2));
    EXPECT_EQ(::SendMessageA(bar, WM_TIMER, kHotTimer, 0), 0);
    EXPECT_EQ(PictureOfClient(bar), HotModel(-1));
    EXPECT_FALSE(EndTimer());
}

TEST_P(ToolBarMessages, OtherTimersAreTheControlsOwn) {
    ClassSpy below(kClass);
    MakeThree();
    const auto reaches = [&](UINT_PTR timer) {
        below.log.Clear();
        ::SendMessageA(bar, WM_TIMER, timer, 0);
        return below.log.Has(WM_TIMER);
    };
    EXPECT_TRUE(reaches(0)) << "though no hot timer runs";
    EXPECT_TRUE(reaches(kHotTimer)) << "not the skin's while none of its runs";
    MoveMouse(bar, MiddleOf(0));
    ASSERT_TRUE(PumpUntil([&] { return ShownNow() == HotModel(0); }));
    EXPECT_TRUE(reaches(7));
    EXPECT_TRUE(reaches(0));
    EXPECT_FALSE(reaches(kHotTimer));
    ParkMouse();
    ::DestroyWindow(bar);
}

TEST_P(ToolBarMessages, LossOfTheCaptureDropsAnyHotButtonButTheFirst) {
    MakeThree();
    for (const int button : {0, 1, 2}) {
        const HWND others[] = {nullptr, Parent()};
        for (const HWND other : others) {
            Move(MiddleOf(button));
            ASSERT_EQ(ShownNow(), HotModel(button));
            ::SendMessageA(bar, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(bar));
            EXPECT_EQ(ShownNow(), HotModel(button)) << "its own capture";
            ::SendMessageA(bar, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(other));
            EXPECT_EQ(Shown(), HotModel(button == 0 ? 0 : -1)) << button;
        }
    }
}

TEST_P(ToolBarMessages, ButtonsThatGoWhileOneIsHotAreSafe) {
    MakeThree();
    Move(MiddleOf(2));
    while (::SendMessageA(bar, TB_BUTTONCOUNT, 0, 0)) ::SendMessageA(bar, TB_DELETEBUTTON, 0, 0);
    EXPECT_EQ(Shown(), Model({}));
    Move({5, 5});
    ::SendMessageA(bar, WM_TIMER, kHotTimer, 0);
    Move({-5, 5});
    EXPECT_EQ(Shown(), Model({}));
    EXPECT_FALSE(EndTimer());
}

// ---------------------------------------------------------------- presses

TEST_P(ToolBarMessages, PressAndReleaseShowAndCommand) {
    MakeThree();
    Parent().log.Clear();
    Parent().log.Listen({WM_COMMAND});
    Move(MiddleOf(1));
    EXPECT_EQ(Press(MiddleOf(1)), 0);
    EXPECT_EQ(ShownNow(), Model({m_normal, m_pressed, m_normal}));
    EXPECT_EQ(LetGo(MiddleOf(1)), 0);
    EXPECT_EQ(Shown(), HotModel(-1)) << "the hot look went with the capture";
    EXPECT_EQ(Parent().log.Count(WM_COMMAND), 1);
    EXPECT_EQ(LOWORD(Parent().log.Entries().front().wParam), 101);
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_P(ToolBarMessages, ReleaseTakesTheCaptureFromAnyWindow) {
    MakeThree();
    ::SetCapture(Parent());
    LetGo(Nowhere());
    EXPECT_EQ(::GetCapture(), nullptr);
}

// The native control may have stopped tracking by itself: the skin sees to it that the press ends.
TEST_P(ToolBarMessages, PressCarriedOffItsButtonIsLifted) {
    ClassSpy below(kClass);
    MakeThree();
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_MOUSEMOVE) return 0;
        return std::nullopt;
    };
    const CPoint outside(-5, 10);
    for (const CPoint to : {MiddleOf(2), Nowhere(), outside}) {
        Press(MiddleOf(1));
        ASSERT_TRUE(Facts(1).fsState & TBSTATE_PRESSED);
        below.log.Clear();
        Move(MiddleOf(1));
        EXPECT_FALSE(below.log.Has(TB_PRESSBUTTON));
        EXPECT_TRUE(Facts(1).fsState & TBSTATE_PRESSED) << "still on it";
        Move(to);
        EXPECT_FALSE(Facts(1).fsState & TBSTATE_PRESSED);
        ASSERT_EQ(below.log.Count(TB_PRESSBUTTON), 1);
        for (const Received& entry : below.log.Entries()) {
            if (entry.message != TB_PRESSBUTTON) continue;
            EXPECT_EQ(entry.wParam, 101u);
            EXPECT_EQ(entry.lParam, 0);
        }
        Move({-5, 10});
        LetGo({-5, 10});
    }
    // Once let go, nothing is lifted any more.
    SetState(1, TBSTATE_ENABLED | TBSTATE_PRESSED);
    Move(Nowhere());
    Move(outside);
    EXPECT_TRUE(Facts(1).fsState & TBSTATE_PRESSED);
    ::DestroyWindow(bar);
}

TEST_P(ToolBarMessages, PressOfADropDownButtonIsNotLifted) {
    ClassSpy below(kClass);
    Make({{}, {BTNS_DROPDOWN}});
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_MOUSEMOVE || received.message == WM_LBUTTONDOWN) return 0;
        return std::nullopt;
    };
    SetState(1, TBSTATE_ENABLED | TBSTATE_PRESSED);
    Press(MiddleOf(1));
    Move(MiddleOf(0));
    EXPECT_TRUE(Facts(1).fsState & TBSTATE_PRESSED);
    SetState(0, TBSTATE_ENABLED | TBSTATE_PRESSED);
    Press(MiddleOf(0));
    Press(MiddleOf(1));
    Move(MiddleOf(1));
    EXPECT_FALSE(Facts(0).fsState & TBSTATE_PRESSED) << "the button before it still counts as pressed";
    ::DestroyWindow(bar);
}

TEST_P(ToolBarMessages, ClickOfTheRealMouseCommands) {
    MakeThree();
    Parent().log.Clear();
    Parent().log.Listen({WM_COMMAND});
    ClickMouse(bar, MiddleOf(2));
    EXPECT_TRUE(PumpUntil([&] { return Parent().log.Has(WM_COMMAND); }));
    EXPECT_EQ(LOWORD(Parent().log.Entries().front().wParam), 102);
    MoveMouse(Parent(), {200, 250});
    EXPECT_TRUE(PumpUntil([&] { return Shown() == HotModel(-1); }));
}

TEST_P(ToolBarMessages, BarDestroyedByItsOwnCommandOrDropDownIsLeftAlone) {
    Make({{}, {BTNS_DROPDOWN}});
    Parent().handler = [this](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_COMMAND) ::DestroyWindow(bar);
        return std::nullopt;
    };
    Move(MiddleOf(0));
    const CPoint first = MiddleOf(0);
    Press(first);
    LetGo(first);
    EXPECT_FALSE(::IsWindow(bar));

    Make({{}, {BTNS_DROPDOWN}});
    Parent().handler = [this](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_NOTIFY) return std::nullopt;
        if (reinterpret_cast<const NMHDR*>(received.lParam)->code != TBN_DROPDOWN) return std::nullopt;
        ::DestroyWindow(bar);
        return TBDDRET_DEFAULT;
    };
    const CPoint second = MiddleOf(1);
    Press(second);
    if (::IsWindow(bar)) LetGo(second);  // some versions tell only now
    EXPECT_FALSE(::IsWindow(bar));
    Parent().handler = nullptr;
}

TEST_P(ToolBarMessages, LeavesNoObjects) {
    ExpectNoMoreObjects([this] {
        Make({{}, {BTNS_DROPDOWN}, {BTNS_BUTTON, 0, 1}, {BTNS_CHECK, TBSTATE_ENABLED | TBSTATE_CHECKED}});
        SetState(0, TBSTATE_ENABLED | TBSTATE_INDETERMINATE);
        Shown();
        Move(MiddleOf(1));
        Move(MiddleOf(0));
        Press(MiddleOf(0));
        Shown();
        LetGo(MiddleOf(0));
        ::SendMessageA(bar, WM_NCPAINT, 1, 0);
        ::SetWindowPos(bar, nullptr, 0, 0, 200, 26, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        Shown();
        ::DestroyWindow(bar);
    });
}

INSTANTIATE_TEST_SUITE_P(Worlds, ToolBarMessages, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
