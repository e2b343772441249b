// Statics: the brush that shows what lies behind them, and texts that change.
#include "controls/static_skin.h"

#include <windows.h>

#include <commctrl.h>

#include "controls/text_fixture.h"

namespace tavix_test {
namespace {

bool IsIcon(DWORD type) { return (type & 3) == 3; }

class Static : public TextTest {
protected:
    HWND MakeStatic(DWORD type, const RECT& place = kTextPlace) {
        HWND window = Make("Static", type, place, "");
        EXPECT_NE(SkinOf<CSkinStatic>(window), nullptr);
        return window;
    }
    /* A dialog, as the class alone makes it one for a static. */
    HWND MakeDialog() {
        m_dialog = ::CreateWindowExA(0, "#32770", "", WS_POPUP | WS_VISIBLE, 100, 100, 400, 300, nullptr,
                                     nullptr, nullptr, nullptr);
        return m_dialog;
    }
    void TearDown() override {
        if (m_dialog) ::DestroyWindow(m_dialog);
        TextTest::TearDown();
    }
    static HWND MakeTab(HWND parent, const RECT& place) {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TAB_CLASSES};
        ::InitCommonControlsEx(&classes);
        return CreateControl(GetParam().charset, parent, "SysTabControl32", "", 0, place);
    }
    static LRESULT NoBrush() { return reinterpret_cast<LRESULT>(::GetStockObject(NULL_BRUSH)); }
    /* Whether the control's brush is that of a tab control's page. */
    bool HasPageColour(HWND control) {
        const LRESULT brush = AskColour(control);
        return brush != NoBrush() && ColourOf(brush) == skin.Colour(39);
    }

private:
    HWND m_dialog = nullptr;
};
INSTANTIATE_TEST_SUITE_P(Worlds, Static, kControlWorlds, NameOfWorld);

// ---------------------------------------------------------------- creation

TEST_P(Static, OfATextBecomesTransparentOnAParentThatClipsItsChildren) {
    for (const DWORD clipping : {DWORD{0}, DWORD{WS_CLIPCHILDREN}}) {
        UseParent(clipping);
        for (DWORD type = SS_LEFT; type <= SS_ETCHEDFRAME; ++type) {
            const auto exStyle = static_cast<DWORD>(::GetWindowLongA(MakeStatic(type), GWL_EXSTYLE));
            EXPECT_EQ((exStyle & WS_EX_TRANSPARENT) != 0, clipping && !IsIcon(type)) << "type " << type;
        }
    }
}

TEST_P(Static, KeepsItsOtherExtendedStyles) {
    UseParent(WS_CLIPCHILDREN);
    HWND text = Make("Static", SS_LEFT, kTextPlace, "", WS_EX_STATICEDGE);
    EXPECT_EQ(
        static_cast<DWORD>(::GetWindowLongA(text, GWL_EXSTYLE)) & (WS_EX_STATICEDGE | WS_EX_TRANSPARENT),
        DWORD{WS_EX_STATICEDGE | WS_EX_TRANSPARENT});
}

TEST_P(Static, IsMadeEvenIfTheNativeControlRefuses) {
    ClassSpy below("Static");
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_CREATE) return -1;
        return std::nullopt;
    };
    HWND text = MakeStatic(SS_LEFT);
    EXPECT_TRUE(::IsWindow(text));
    EXPECT_TRUE(below.log.Has(WM_CREATE));
    ::DestroyWindow(text);
}

// ---------------------------------------------------------------- brushes

TEST_P(Static, OfATextGetsNoBrushAndAnIconASolidOne) {
    DotAbout(kTextPlace);
    for (DWORD type = SS_LEFT; type <= SS_ETCHEDFRAME; ++type) {
        SCOPED_TRACE(type);
        HWND control = MakeStatic(type);
        for (const UINT message : {WM_CTLCOLORSTATIC, WM_CTLCOLOREDIT}) {
            ::SetBkMode(canvas.Dc(), OPAQUE);
            const LRESULT brush = AskColour(control, message);
            EXPECT_EQ(::GetBkMode(canvas.Dc()), TRANSPARENT);
            if (IsIcon(type))
                EXPECT_EQ(ColourOf(brush), kLeftColour);
            else
                EXPECT_EQ(brush, NoBrush());
        }
        ::DestroyWindow(control);
    }
}

TEST_P(Static, OfAnIconTakesThePixelOnItsRightIfThereIsNoneOnItsLeft) {
    DotAbout(kAtLeftEdge);
    EXPECT_EQ(ColourOf(AskColour(MakeStatic(SS_ICON, kAtLeftEdge))), kRightColour);
}

TEST_P(Static, OfAnIconWithoutAPixelBesideItTakesTheDialogueColour) {
    Dot(0, 0, kOriginColour);
    EXPECT_EQ(ColourOf(AskColour(MakeStatic(SS_ICON, kEdgeToEdge))), skin.Colour(26));
    EXPECT_EQ(ColourOf(AskColour(MakeStatic(SS_BLACKFRAME, {40, 400, 60, 420}))), skin.Colour(26));
}

TEST_P(Static, OfAnIconLooksAtItsParentAtEachMessage) {
    HWND icon = MakeStatic(SS_ICON);
    EXPECT_EQ(ColourOf(AskColour(icon)), kParentColour);
    DotAbout(kTextPlace);
    EXPECT_EQ(ColourOf(AskColour(icon)), kLeftColour);
}

TEST_P(Static, WithoutAParentTakesTheDialogueColour) {
    for (const DWORD type : {DWORD{SS_LEFT}, DWORD{SS_ICON}}) {
        HWND control = MakeAlone("Static", type);
        ASSERT_NE(SkinOf<CSkinStatic>(control), nullptr);
        const LRESULT brush = AskColour(control);
        if (IsIcon(type))
            EXPECT_EQ(ColourOf(brush), skin.Colour(26));
        else
            EXPECT_EQ(brush, NoBrush());
        ::SetWindowTextA(control, "x");  // nobody to repaint
        EXPECT_TRUE(::IsWindow(control));
        ::DestroyWindow(control);
    }
}

TEST_P(Static, OnATabControlShowsTheTabControl) {
    HWND tab = MakeTab(Parent(), {10, 10, 300, 200});
    for (const DWORD type : {DWORD{SS_LEFT}, DWORD{SS_ICON}, DWORD{SS_BLACKFRAME}})
        EXPECT_EQ(AskColour(MakeIn(tab, "Static", type, {20, 40, 80, 60}, "")), NoBrush()) << type;
}

TEST_P(Static, OnADialogueOverATabControlTakesThePageColourForGood) {
    HWND dialog = MakeDialog();
    HWND tab = MakeTab(dialog, {100, 100, 300, 250});
    for (DWORD type = SS_LEFT; type <= SS_ETCHEDFRAME; ++type) {
        if (type == SS_ETCHEDHORZ || type == SS_ETCHEDVERT) continue;  // the system makes lines of them
        SCOPED_TRACE(type);
        // They overlap by one pixel only.
        HWND control = MakeIn(dialog, "Static", type, {40, 40, 101, 101}, "");
        EXPECT_TRUE(HasPageColour(control));
        ::MoveWindow(control, 10, 10, 20, 20, FALSE);
        EXPECT_TRUE(HasPageColour(control)) << "even after a move";
        ::DestroyWindow(control);
    }
    ::DestroyWindow(tab);
}

TEST_P(Static, OnADialogueBesideATabControlIsAsAnywhere) {
    HWND dialog = MakeDialog();
    HWND text = MakeIn(dialog, "Static", SS_LEFT, {40, 40, 100, 100}, "");
    HWND icon = MakeIn(dialog, "Static", SS_ICON, {40, 40, 100, 100}, "");
    EXPECT_EQ(AskColour(text), NoBrush()) << "no tab control at all";
    HWND tab = MakeTab(dialog, {100, 100, 300, 250});
    EXPECT_EQ(AskColour(text), NoBrush()) << "edges that touch do not overlap";
    EXPECT_FALSE(HasPageColour(icon));
    ::MoveWindow(tab, 99, 99, 100, 100, FALSE);
    EXPECT_TRUE(HasPageColour(text)) << "looked for at each message until found";
}

TEST_P(Static, FindsATabControlInsideOtherWindows) {
    HWND dialog = MakeDialog();
    HWND between = MakeIn(dialog, "Static", SS_LEFT, {50, 50, 350, 250}, "");
    MakeTab(between, {10, 10, 200, 150});
    EXPECT_TRUE(HasPageColour(MakeIn(dialog, "Static", SS_LEFT, {100, 100, 150, 120}, "")));
}

TEST_P(Static, OnAnotherWindowDoesNotLookForTabControls) {
    MakeTab(Parent(), kTextPlace);
    EXPECT_EQ(AskColour(MakeStatic(SS_LEFT)), NoBrush());
}

TEST_P(Static, PageColourIsThatOfTheSkinInForce) {
    HWND dialog = MakeDialog();
    MakeTab(dialog, {100, 100, 300, 250});
    HWND text = MakeIn(dialog, "Static", SS_LEFT, {120, 120, 200, 140}, "");
    EXPECT_TRUE(HasPageColour(text));
    skin.SetColour(39, RGB(77, 66, 55));
    UseChangedSkin();
    EXPECT_TRUE(HasPageColour(text));
}

TEST_P(Static, ASkinnedDialogueHandsItsColourMessageOn) {
    HWND dialog = MakeDialog();
    HWND text = MakeIn(dialog, "Static", SS_LEFT, {20, 20, 120, 40}, "");
    HWND icon = MakeIn(dialog, "Static", SS_ICON, {20, 60, 60, 100}, "");
    const auto ask = [&](HWND control) {
        return ::SendMessageA(dialog, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(canvas.Dc()),
                              reinterpret_cast<LPARAM>(control));
    };
    EXPECT_EQ(ask(text), NoBrush());
    HDC dc = ::GetDC(dialog);
    const COLORREF beside = ::GetPixel(dc, 19, 60);
    ::ReleaseDC(dialog, dc);
    EXPECT_EQ(ColourOf(ask(icon)), beside);
}

// ---------------------------------------------------------------- texts

TEST_P(Static, FormerTextIsWipedOutBeforeTheNewOneComes) {
    UseParent(WS_CLIPCHILDREN);
    DotAbout(kTextPlace);
    ClassSpy below("Static");
    HWND text = Make("Static", SS_LEFT, kTextPlace, "Former");
    Picture before;
    below.handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_SETTEXT) before = PictureOfClient(text);
        return std::nullopt;
    };
    ::SetWindowTextA(text, "New");
    EXPECT_EQ(before.CountOf(kLeftColour), 120 * 60);
    ::DestroyWindow(text);
}

TEST_P(Static, WipesWithTheColourOnItsRightOrOfTheCorner) {
    for (const RECT& place : {kAtLeftEdge, kEdgeToEdge}) {
        UseParent(WS_CLIPCHILDREN);
        DotAbout(place);
        ClassSpy below("Static");
        HWND text = Make("Static", SS_LEFT, place, "Former");
        COLORREF before = CLR_INVALID;
        below.handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message == WM_SETTEXT) before = PictureOfClient(text).At(3, 3);
            return std::nullopt;
        };
        ::SetWindowTextA(text, "New");
        EXPECT_EQ(before, place.right == 400 ? kOriginColour : kRightColour);
        ::DestroyWindow(text);
    }
}

TEST_P(Static, LeavesTheWipingToAParentThatPaintsBelowItsChildren) {
    ClassSpy below("Static");
    HWND text = Make("Static", SS_LEFT, kTextPlace, "Former");
    Picture before;
    below.handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_SETTEXT) before = PictureOfClient(text);
        return std::nullopt;
    };
    const Picture former = PictureOfClient(text);
    ::SetWindowTextA(text, "New");
    EXPECT_EQ(before, former);
    ::DestroyWindow(text);
}

TEST_P(Static, NewTextHasTheParentRepaintAtOnce) {
    HWND text = Make("Static", SS_LEFT, kTextPlace, "Former");
    RECT painted{};
    Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_PAINT) painted = InvalidPart(Parent());
        return std::nullopt;
    };
    ::SetWindowTextA(text, "New");
    EXPECT_TRUE(::EqualRect(&painted, &kTextPlace));
    EXPECT_FALSE(::GetUpdateRect(Parent(), nullptr, FALSE));
}

TEST_P(Static, AnswersWhatTheNativeControlSays) {
    ClassSpy below("Static");
    HWND text = MakeStatic(SS_LEFT);
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_SETTEXT || received.message == WM_PAINT || received.message == STM_GETICON)
            return 77;
        return std::nullopt;
    };
    EXPECT_EQ(::SendMessageA(text, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("x")), 77);
    EXPECT_EQ(::SendMessageA(text, WM_PAINT, 0, 0), 77) << "the painting is its own";
    EXPECT_EQ(::SendMessageA(text, STM_GETICON, 0, 0), 77);
    below.handler = nullptr;
    ::DestroyWindow(text);
}

TEST_P(Static, ErasesNothing) {
    ClassSpy below("Static");
    HWND text = MakeStatic(SS_LEFT);
    below.log.Clear();
    EXPECT_EQ(::SendMessageA(text, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0), 1);
    EXPECT_EQ(canvas.Take().CountOf(kCanvasColour), 100);
    EXPECT_FALSE(below.log.Has(WM_ERASEBKGND));
    ::DestroyWindow(text);
}

TEST_P(Static, KeepsNoObjects) {
    HWND dialog = MakeDialog();
    MakeTab(dialog, {100, 100, 300, 250});
    ExpectNoGrowth([&] {
        HWND icon = MakeIn(dialog, "Static", SS_ICON, {20, 20, 60, 60}, "");
        HWND paged = MakeIn(dialog, "Static", SS_LEFT, {120, 120, 160, 160}, "");
        for (int i = 0; i < 5; ++i) {
            AskColour(icon);
            AskColour(paged);
            ::SetWindowTextA(paged, "x");
        }
        ::DestroyWindow(icon);
        ::DestroyWindow(paged);
    });
}

}  // namespace
}  // namespace tavix_test
