// Group boxes: the open etched frame, the ground beneath it, and what goes on to the native control.
#include "controls/group_box_skin.h"

#include <cstring>

#include "controls/text_fixture.h"

namespace tavix_test {
namespace {

class GroupBox : public TextTest {
protected:
    HWND MakeBox(const char* text = "Options", const RECT& place = kTextPlace, DWORD style = 0,
                 DWORD exStyle = 0) {
        HWND box = Make("Button", BS_GROUPBOX | style, place, text, exStyle);
        EXPECT_NE(SkinOf<CSkinGroupBox>(box), nullptr);
        return box;
    }
    static SIZE Extent(HDC dc, const char* text) {
        const HGDIOBJ former = ::SelectObject(dc, ::GetStockObject(DEFAULT_GUI_FONT));
        SIZE extent{};
        ::GetTextExtentPoint32A(dc, text, static_cast<int>(std::strlen(text)), &extent);
        ::SelectObject(dc, former);
        return extent;
    }
    /* The pixels of a straight line without its end. */
    static void Line(HDC dc, POINT from, POINT to, COLORREF colour) {
        const auto step = [](LONG a, LONG b) { return a < b ? 1 : a > b ? -1 : 0; };
        for (POINT at = from; at.x != to.x || at.y != to.y;) {
            ::SetPixel(dc, at.x, at.y, colour);
            at.x += step(at.x, to.x);
            at.y += step(at.y, to.y);
        }
    }
    static void Lines(HDC dc, std::initializer_list<POINT> points, COLORREF colour) {
        for (const POINT* at = points.begin(); at + 1 != points.end(); ++at) Line(dc, at[0], at[1], colour);
    }
    /* A box of that size as it ought to look. */
    Picture Model(int width, int height, const char* text, COLORREF ground = kParentColour) {
        Canvas model(width, height, ground);
        HDC dc = model.Dc();
        const auto [cx, cy] = Extent(dc, text);
        const LONG right = width - 1, bottom = height - 1, middle = cy / 2;
        Lines(dc, {{cx + 3, middle + 1}, {right, middle + 1}, {right, bottom}, {1, bottom}, {1, cy + 4}},
              skin.Colour(60));
        Lines(dc,
              {{cx + 4, middle}, {right - 1, middle}, {right - 1, bottom - 1}, {0, bottom - 1}, {0, cy + 3}},
              skin.Colour(61));
        const HGDIOBJ former = ::SelectObject(dc, ::GetStockObject(DEFAULT_GUI_FONT));
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, TextColour());
        RECT at{1, 1, 1 + cx, 1 + cy};
        ::DrawTextA(dc, text, -1, &at, 37);
        ::SelectObject(dc, former);
        return model.Take();
    }
    /* Over the ground as its parent has painted it. */
    Picture ShownAfresh(HWND box) {
        ::InvalidateRect(Parent(), nullptr, TRUE);
        ::UpdateWindow(Parent());
        ::InvalidateRect(box, nullptr, TRUE);
        return Shown(box);
    }
};
INSTANTIATE_TEST_SUITE_P(Worlds, GroupBox, kControlWorlds, NameOfWorld);

TEST_P(GroupBox, FrameIsEtchedAndOpenWhereTheCaptionStands) {
    for (const char* text : {"Options", "A rather long caption", "&Mnemonic", "i"}) {
        EXPECT_EQ(ShownAfresh(MakeBox(text, {40, 30, 240, 100})), Model(200, 70, text)) << text;
        UseParent(0);
    }
}

TEST_P(GroupBox, WithoutACaptionTheCornerStaysOpen) {
    const Picture shown = ShownAfresh(MakeBox(""));
    EXPECT_EQ(shown, Model(120, 60, ""));
    const SIZE extent = Extent(canvas.Dc(), "");
    for (int x = 0; x < 3; ++x)
        for (int y = 0; y <= extent.cy + 3; ++y) EXPECT_EQ(shown.At(x, y), kParentColour) << x << ", " << y;
    EXPECT_EQ(shown.At(4, extent.cy / 2), skin.Colour(61));
    EXPECT_EQ(shown.At(0, extent.cy + 4), skin.Colour(61));
    EXPECT_EQ(shown.At(1, extent.cy + 5), skin.Colour(60));
}

TEST_P(GroupBox, CaptionsEndAfter255Characters) {
    const std::string longText(400, 'l');
    EXPECT_EQ(ShownAfresh(MakeBox(longText.c_str(), {0, 0, 400, 60})),
              Model(400, 60, longText.substr(0, 255).c_str()));
}

TEST_P(GroupBox, WiderCaptionThanTheBoxDrawsTheTopLineBackwards) {
    const char text[] = "A caption that is wider than its box";
    EXPECT_EQ(ShownAfresh(MakeBox(text, {20, 20, 80, 70})), Model(60, 50, text));
}

TEST_P(GroupBox, TinyBoxesArePaintedToo) {
    for (const int extent : {1, 2, 3, 10}) {
        EXPECT_EQ(ShownAfresh(MakeBox("x", {20, 20, 20 + extent, 20 + extent})), Model(extent, extent, "x"))
            << extent;
        UseParent(0);
    }
}

TEST_P(GroupBox, DisabledLooksLikeEnabled) {
    HWND box = MakeBox();
    const Picture enabled = ShownAfresh(box);
    ::EnableWindow(box, FALSE);
    EXPECT_FALSE(::IsWindowEnabled(box));
    EXPECT_EQ(ShownAfresh(box), enabled);
    EXPECT_EQ(ShownAfresh(MakeBox("Options", {40, 100, 160, 160}, WS_DISABLED)), enabled);
}

// ---------------------------------------------------------------- the ground

TEST_P(GroupBox, OverAParentThatClipsItsChildrenTakesTheColourOnItsLeft) {
    UseParent(WS_CLIPCHILDREN);
    DotAbout(kTextPlace);
    EXPECT_EQ(ShownAfresh(MakeBox()), Model(120, 60, "Options", kLeftColour));
}

TEST_P(GroupBox, AtTheParentsLeftEdgeTakesTheColourOnItsRight) {
    UseParent(WS_CLIPCHILDREN);
    DotAbout(kAtLeftEdge);
    EXPECT_EQ(ShownAfresh(MakeBox("Options", kAtLeftEdge)), Model(120, 60, "Options", kRightColour));
}

TEST_P(GroupBox, FromEdgeToEdgeTakesTheColourOfTheParentsCorner) {
    UseParent(WS_CLIPCHILDREN);
    DotAbout(kEdgeToEdge);
    EXPECT_EQ(ShownAfresh(MakeBox("Options", kEdgeToEdge)), Model(400, 60, "Options", kOriginColour));
}

TEST_P(GroupBox, ColoursAreThoseOfTheSkinInForce) {
    HWND box = MakeBox();
    skin.SetColour(60, RGB(90, 0, 0)).SetColour(61, RGB(0, 90, 0));
    UseChangedSkin();
    EXPECT_EQ(ShownAfresh(box), Model(120, 60, "Options"));
}

// ---------------------------------------------------------------- messages

TEST_P(GroupBox, LosesItsEdgesBeforeTheNativeControlIsCreated) {
    ClassSpy below("Button");
    DWORD atCreation = ~0u;
    below.handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_CREATE)
            atCreation = static_cast<DWORD>(::GetWindowLongA(received.window, GWL_EXSTYLE));
        return std::nullopt;
    };
    constexpr DWORD kEdges = WS_EX_CLIENTEDGE | WS_EX_STATICEDGE;
    HWND box = MakeBox("Options", kTextPlace, 0, kEdges | WS_EX_RIGHT);
    EXPECT_EQ(atCreation & kEdges, 0u);
    EXPECT_EQ(static_cast<DWORD>(::GetWindowLongA(box, GWL_EXSTYLE)) & (kEdges | WS_EX_RIGHT),
              static_cast<DWORD>(WS_EX_RIGHT));
    EXPECT_EQ(SkinOf<CSkinGroupBox>(box)->CreationExStyle() & kEdges, kEdges);
    ::DestroyWindow(box);
}

TEST_P(GroupBox, IsNotMadeIfTheNativeControlRefuses) {
    ClassSpy below("Button");
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_CREATE) return -1;
        return std::nullopt;
    };
    EXPECT_EQ(::CreateWindowExA(0, "Button", "", WS_CHILD | BS_GROUPBOX, 0, 0, 9, 9, Parent(), nullptr,
                                nullptr, nullptr),
              nullptr);
}

TEST_P(GroupBox, AnswersZeroWhateverTheNativeControlSays) {
    ClassSpy below("Button");
    HWND box = MakeBox();
    below.handler = [](const Received&) -> std::optional<LRESULT> { return 77; };
    below.log.Clear();
    EXPECT_EQ(::SendMessageA(box, WM_SIZE, SIZE_RESTORED, MAKELPARAM(120, 60)), 0);
    EXPECT_EQ(::SendMessageA(box, WM_ENABLE, TRUE, 0), 0);
    EXPECT_EQ(::SendMessageA(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("Other")), 0);
    EXPECT_EQ(below.log.Messages(), (std::vector<UINT>{WM_SIZE, WM_ENABLE, WM_SETTEXT}));
    EXPECT_EQ(::SendMessageA(box, WM_MOUSEMOVE, 0, 0), 77) << "all else is the native control's";
    EXPECT_EQ(::SendMessageA(box, WM_SETFOCUS, 0, 0), 77);
    below.handler = nullptr;
    ::DestroyWindow(box);
}

TEST_P(GroupBox, PaintsAndErasesAlone) {
    ClassSpy below("Button");
    HWND box = MakeBox();
    below.log.Clear();
    ::InvalidateRect(box, nullptr, TRUE);
    EXPECT_EQ(::SendMessageA(box, WM_PAINT, 0, 0), 0);
    EXPECT_FALSE(::GetUpdateRect(box, nullptr, FALSE));
    EXPECT_EQ(::SendMessageA(box, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0), 1);
    EXPECT_EQ(canvas.Take().CountOf(kCanvasColour), 100);
    EXPECT_FALSE(below.log.Has(WM_PAINT));
    EXPECT_FALSE(below.log.Has(WM_ERASEBKGND));
    ::DestroyWindow(box);
}

TEST_P(GroupBox, ChangeHasTheParentRepaintInItsOwnTime) {
    HWND box = MakeBox();
    const auto change = [&](const std::function<void()>& apply) {
        ::UpdateWindow(Parent());
        ::UpdateWindow(box);
        ASSERT_FALSE(::GetUpdateRect(Parent(), nullptr, FALSE));
        Parent().log.Clear();
        apply();
        EXPECT_FALSE(Parent().log.Has(WM_PAINT));
        const RECT expected = PlaceIn(Parent(), box), invalid = InvalidPart(Parent());
        EXPECT_TRUE(::EqualRect(&invalid, &expected));
    };
    change([&] { ::SetWindowTextA(box, "Other"); });
    change([&] { ::EnableWindow(box, FALSE); });
    change([&] { ::EnableWindow(box, TRUE); });
    // With the ground erased no pixel of the former text is left.
    ::UpdateWindow(Parent());
    EXPECT_EQ(Shown(box), Model(120, 60, "Other"));
}

TEST_P(GroupBox, WithoutAParentWorksToo) {
    HWND box = MakeAlone("Button", BS_GROUPBOX);
    ASSERT_NE(SkinOf<CSkinGroupBox>(box), nullptr);
    ::SetWindowTextA(box, "Alone");
    ::EnableWindow(box, FALSE);
    const SIZE extent = Extent(canvas.Dc(), "Alone");
    EXPECT_EQ(RepaintedClient(box).At(118, extent.cy / 2 + 5), skin.Colour(61));
    ::DestroyWindow(box);
}

TEST_P(GroupBox, KeepsNoObjects) {
    HWND box = MakeBox();
    ExpectNoGrowth([&] {
        ::SetWindowTextA(box, "One");
        RepaintedClient(box);
    });
}

}  // namespace
}  // namespace tavix_test
