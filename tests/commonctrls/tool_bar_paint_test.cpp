// Tool bars: what is painted.
#include "commonctrls/tool_bar_paint.h"

#include "tool_bar_fixture.h"

namespace tavix_test {
namespace {

class ToolBarPaint : public ToolBarTest {
protected:
    const Look m_normal{0, Look::Whole, false, Normal, Effect::Plain};

    /* The window's pixels outside its client area, painted anew over a mark. */
    Picture Border() {
        const CSize size = WindowSize();
        {
            CWindowDC dc(bar);
            dc.FillSolidRect(CRect(0, 0, size.cx, size.cy), kMark);
        }
        EXPECT_EQ(::SendMessageA(bar, WM_NCPAINT, 1, 0), 0);
        return PictureOfWindow(bar);
    }
    static constexpr COLORREF kMark = RGB(250, 10, 250);
};

// ---------------------------------------------------------------- background and border

TEST_P(ToolBarPaint, BarOf31HasABorderAndTheSkinsBackground) {
    Make({}, 31);
    EXPECT_EQ(ClientSize().cx, 298);
    EXPECT_EQ(ClientSize().cy, 25);
    CPoint origin;
    ::ClientToScreen(bar, &origin);
    CRect window;
    ::GetWindowRect(bar, &window);
    EXPECT_EQ(origin, CPoint(window.left + 1, window.top + 3));
    EXPECT_EQ(Shown().CountOf(Flat(74)), 298 * 25);
    const Picture border = Border();
    EXPECT_EQ(border.CountOf(Flat(74)), 300 * 31 - 298 * 25);
    EXPECT_EQ(border.CountOf(kMark), 298 * 25) << "the client area is left out";
}

TEST_P(ToolBarPaint, BarOf30HasNoBorderAndGoesOnWithItsParent) {
    Make({}, 30);
    EXPECT_EQ(ClientSize().cx, 300);
    EXPECT_EQ(ClientSize().cy, 30);
    EXPECT_EQ(Shown().CountOf(Parent().background), 300 * 30) << "a flat parent gives a flat bar";
    EXPECT_EQ(Border().CountOf(kMark), 300 * 30) << "nothing to paint around the client area";
}

TEST_P(ToolBarPaint, LowBarRunsFromTheColourLeftOfItToTheOneAtItsRight) {
    Make({}, 24);
    const COLORREF left = RGB(240, 30, 20), right = RGB(10, 40, 250);
    {
        CClientDC dc(Parent());
        dc.FillSolidRect(CRect(19, 30, 20, 31), left);
        dc.FillSolidRect(CRect(320, 30, 321, 31), right);
    }
    const Picture shown = Shown();
    for (int y = 0; y < 24; ++y) {
        const COLORREF colour = tavix::GradientColour(left, right, y / 2 * 2, 22);
        for (const int x : {0, 150, 299}) ASSERT_EQ(shown.At(x, y), colour) << x << " " << y;
    }
}

TEST_P(ToolBarPaint, HighBarOfASkinWithoutABackgroundSamplesItsParent) {
    skin.RemoveBitmaps(skinToolBar);
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    Make({}, 40);
    EXPECT_EQ(Shown().CountOf(Parent().background), 298 * 34);
    const Picture border = Border();
    for (int y = 0; y < 40; ++y) {
        const COLORREF colour = tavix::GradientColour(skin.Colour(63), skin.Colour(64), y / 2 * 2, 38);
        EXPECT_EQ(border.At(0, y), colour) << y;
        EXPECT_EQ(border.At(150, y), y < 3 || y >= 37 ? colour : kMark) << y;
        EXPECT_EQ(border.At(299, y), colour) << y;
    }
}

TEST_P(ToolBarPaint, BackgroundIsTiledFromTheWindowsLeftEdge) {
    const auto columns = [](int x, int y) { return RGB(20 * x, 100 + y, 7); };
    skin.SetBitmap(74, 11, 80, columns);
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    Make({}, 40);
    const Picture client = Shown(), border = Border();
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 300; ++x) {
            const bool inside = x >= 1 && x < 299 && y >= 3 && y < 37;
            const COLORREF shown = inside ? client.At(x - 1, y - 3) : border.At(x, y);
            ASSERT_EQ(shown, columns(x % 11, y)) << x << " " << y;
        }
    }
}

// The rows that no bitmap covers are the bar's gradient, not what happened to be there.
TEST_P(ToolBarPaint, RowsBelowALowBackgroundAreTheSkinsGradient) {
    skin.SetBitmapSize(74, 11, 25);
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    Make({}, 40);
    const Picture client = Shown(), border = Border();
    for (int y = 0; y < 40; ++y) {
        const COLORREF below = tavix::GradientColour(skin.Colour(63), skin.Colour(64), y / 2 * 2, 38);
        const COLORREF expected = y < 25 ? Flat(74) : below;
        EXPECT_EQ(border.At(0, y), expected) << y;
        EXPECT_EQ(y < 3 || y >= 37 ? border.At(50, y) : client.At(50, y - 3), expected) << y;
    }
}

TEST_P(ToolBarPaint, BarAtAnEdgeOfItsParentTakesTheColourOfItsOtherSide) {
    Make({}, 24);
    const auto place = [this](int left, int right) {
        ::SetWindowPos(bar, nullptr, left, 30, right - left, 24, SWP_NOZORDER | SWP_NOACTIVATE);
        ::UpdateWindow(Parent());
        return Shown();
    };
    EXPECT_EQ(place(0, 200).CountOf(Parent().background), 200 * 24);
    EXPECT_EQ(place(200, 400).CountOf(Parent().background), 200 * 24);
    // Over the parent's whole width there is nothing beside it: the skin's own gradient.
    const Picture whole = place(0, 400);
    for (int y = 0; y < 24; ++y)
        EXPECT_EQ(whole.At(7, y), tavix::GradientColour(skin.Colour(63), skin.Colour(64), y / 2 * 2, 22))
            << y;
}

TEST_P(ToolBarPaint, BarWithoutAParentHasTheSkinsGradient) {
    bar = ::CreateWindowExA(0, "ToolbarWindow32", "", WS_POPUP | WS_VISIBLE | kBarStyle, 40, 40, 200, 24,
                            nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(IsSkinned(bar));
    const Picture shown = Shown();
    EXPECT_EQ(shown.At(5, 0), skin.Colour(63));
    EXPECT_EQ(shown.At(5, 12), tavix::GradientColour(skin.Colour(63), skin.Colour(64), 12, 22));
    ::DestroyWindow(bar);
}

// ---------------------------------------------------------------- which buttons show, and how

TEST_P(ToolBarPaint, HiddenButtonTakesNoSpaceAndSeparatorShowsTheBackground) {
    Make({{},
          {BTNS_SEP},
          {BTNS_BUTTON, TBSTATE_ENABLED | TBSTATE_HIDDEN, 1},
          {BTNS_BUTTON, TBSTATE_ENABLED, 1}});
    EXPECT_EQ(ItemRect(3).left, ItemRect(1).right);
    EXPECT_EQ(Shown(), Model({m_normal, {}, {}, m_normal}));
}

// A combination of other bits with that of separators is none that shows either.
TEST_P(ToolBarPaint, ButtonWithTheSeparatorsBitDoesNotShow) {
    Make({{BTNS_SEP | BTNS_CHECK, TBSTATE_ENABLED | TBSTATE_CHECKED}, {}});
    EXPECT_EQ(Shown(), Model({{}, m_normal}));
}

TEST_P(ToolBarPaint, EveryStateOfAPlainButton) {
    const struct {
        int state;
        std::optional<Look> look;
    } cases[] = {
        {0, Look{0, Look::Whole, false, Normal, Effect::Silhouette}},
        {TBSTATE_WRAP, Look{0, Look::Whole, false, Normal, Effect::Silhouette}},
        {TBSTATE_ENABLED, m_normal},
        {TBSTATE_ENABLED | TBSTATE_WRAP, m_normal},
        {TBSTATE_ENABLED | TBSTATE_PRESSED, Look{71, Look::Whole, false, Normal, Effect::Pushed}},
        {TBSTATE_ENABLED | TBSTATE_PRESSED | TBSTATE_CHECKED,
         Look{71, Look::Whole, false, Normal, Effect::Pushed}},
        {TBSTATE_ENABLED | TBSTATE_CHECKED, m_normal},  // no check button
        {TBSTATE_ENABLED | TBSTATE_INDETERMINATE, Look{0, Look::Whole, false, Normal, Effect::Engraved}},
        {TBSTATE_ENABLED | TBSTATE_PRESSED | TBSTATE_INDETERMINATE,
         Look{71, Look::Whole, false, Normal, Effect::Engraved}},
        {TBSTATE_INDETERMINATE, {}},
        {TBSTATE_CHECKED, {}},
        {TBSTATE_PRESSED, {}},
        {TBSTATE_MARKED, {}},
        {TBSTATE_ENABLED | TBSTATE_MARKED, m_normal},
    };
    Make({{BTNS_BUTTON, TBSTATE_ENABLED, 1}});
    for (const auto& [state, look] : cases) {
        SetState(0, static_cast<BYTE>(state));
        ASSERT_EQ(Facts(0).fsState, state);
        EXPECT_EQ(Shown(), Model({look})) << "state " << state;
    }
}

TEST_P(ToolBarPaint, EveryFace) {
    const struct {
        BYTE style;
        int state;
        bool hot;
        Look look;
    } cases[] = {
        {BTNS_BUTTON, TBSTATE_ENABLED, false, {0, Look::Whole, false, Normal, Effect::Plain}},
        {BTNS_BUTTON, TBSTATE_ENABLED, true, {70, Look::Whole, false, Normal, Effect::Lifted}},
        {BTNS_BUTTON,
         TBSTATE_ENABLED | TBSTATE_PRESSED,
         false,
         {71, Look::Whole, false, Normal, Effect::Pushed}},
        {BTNS_BUTTON,
         TBSTATE_ENABLED | TBSTATE_PRESSED,
         true,
         {71, Look::Whole, false, Normal, Effect::Pushed}},
        {BTNS_DROPDOWN, 0, false, {0, Look::Whole, true, Normal, Effect::Silhouette}},
        {BTNS_DROPDOWN, 0, true, {0, Look::Whole, true, Normal, Effect::Silhouette}},
        {BTNS_DROPDOWN, TBSTATE_ENABLED, false, {0, Look::Whole, true, Normal, Effect::Plain}},
        {BTNS_DROPDOWN, TBSTATE_ENABLED, true, {76, Look::LessOne, false, Normal, Effect::Lifted}},
        {BTNS_DROPDOWN,
         TBSTATE_ENABLED | TBSTATE_PRESSED,
         true,
         {77, Look::LessOne, false, Normal, Effect::Pushed}},
        {BTNS_CHECK, TBSTATE_ENABLED, false, {0, Look::Whole, false, Normal, Effect::Plain}},
        {BTNS_CHECK, TBSTATE_ENABLED, true, {70, Look::Whole, false, Normal, Effect::Lifted}},
        {BTNS_CHECK,
         TBSTATE_ENABLED | TBSTATE_CHECKED,
         false,
         {71, Look::LessOne, false, Normal, Effect::Plain}},
        {BTNS_CHECKGROUP,
         TBSTATE_ENABLED | TBSTATE_CHECKED,
         false,
         {71, Look::LessOne, false, Normal, Effect::Plain}},
        {BTNS_CHECK,
         TBSTATE_ENABLED | TBSTATE_CHECKED | TBSTATE_PRESSED,
         false,
         {71, Look::Whole, false, Normal, Effect::Pushed}},
        {BTNS_CHECK | BTNS_DROPDOWN,
         TBSTATE_ENABLED | TBSTATE_CHECKED,
         false,
         {71, Look::LessOne, true, Normal, Effect::Plain}},
    };
    for (const auto& [style, state, hot, look] : cases) {
        Make({{}, {style, TBSTATE_ENABLED, 1}});
        SetState(1, static_cast<BYTE>(state));
        if (hot) Move(MiddleOf(1));
        EXPECT_EQ(Shown(), Model({m_normal, look}))
            << "style " << int{style} << " state " << state << " hot " << hot;
        ::DestroyWindow(bar);
    }
}

TEST_P(ToolBarPaint, CheckedButtonUnderTheMouseShowsItsCheck) {
    Make({{BTNS_CHECK, TBSTATE_ENABLED | TBSTATE_CHECKED}, {}});
    Move(MiddleOf(0));
    EXPECT_EQ(Shown(), Model({Look{71, Look::LessOne, false, Normal, Effect::Plain}, m_normal}));
    SetState(0, TBSTATE_ENABLED);
    EXPECT_EQ(Shown(), Model({Look{70, Look::Whole, false, Normal, Effect::Lifted}, m_normal}))
        << "it is hot";
}

TEST_P(ToolBarPaint, DisabledButtonWithoutImagesOfItsOwnIsAFlatGreyShape) {
    Make({{BTNS_BUTTON, 0, 0}});
    const Picture shown = Shown();
    EXPECT_EQ(shown, Model({Look{0, Look::Whole, false, Normal, Effect::Silhouette}}));
    EXPECT_EQ(shown.CountOf(::GetSysColor(COLOR_GRAYTEXT)), (kImageWidth - 3) * kImageHeight);
    EXPECT_EQ(shown.CountOf(ImageColour(Normal, 0)), 0);
}

// ---------------------------------------------------------------- images

TEST_P(ToolBarPaint, ImagesOfAStateAreUsedAsTheyAre) {
    Make({{BTNS_BUTTON, 0, 1}, {BTNS_BUTTON, TBSTATE_ENABLED, 0}, {}});
    Use(Disabled);
    Use(Hot);
    const Look disabled{0, Look::Whole, false, Disabled, Effect::Plain};
    const Look hot{70, Look::Whole, false, Hot, Effect::Lifted};
    EXPECT_EQ(Shown(), Model({disabled, m_normal, m_normal}));
    Move(MiddleOf(1));
    EXPECT_EQ(Shown(), Model({disabled, hot, m_normal}));
    SetState(1, TBSTATE_ENABLED | TBSTATE_PRESSED);
    EXPECT_EQ(Shown(), Model({disabled, Look{71, Look::Whole, false, Hot, Effect::Pushed}, m_normal}));
    // Hot images say themselves what can't be used; the ordinary ones are engraved.
    SetState(1, TBSTATE_ENABLED | TBSTATE_INDETERMINATE);
    EXPECT_EQ(Shown(), Model({disabled, Look{70, Look::Whole, false, Hot, Effect::Plain}, m_normal}));
    Move(Nowhere());
    EXPECT_EQ(Shown(), Model({disabled, Look{0, Look::Whole, false, Normal, Effect::Engraved}, m_normal}));
}

TEST_P(ToolBarPaint, WithoutImagesOnlyFacesShow) {
    Make({{}, {BTNS_DROPDOWN}, {BTNS_BUTTON, 0, 0}});
    ::SendMessageA(bar, TB_SETIMAGELIST, 0, 0);
    Move(MiddleOf(0));
    EXPECT_EQ(Shown(), Model({Look{70}, Look{0, Look::Whole, true}, {}}));
    // Images for one state are used for that state alone.
    Use(Hot);
    EXPECT_EQ(Shown(),
              Model({Look{70, Look::Whole, false, Hot, Effect::Lifted}, Look{0, Look::Whole, true}, {}}));
}

TEST_P(ToolBarPaint, IndexWithoutAnImageDrawsNone) {
    for (const int image : {I_IMAGENONE, I_IMAGECALLBACK, 2, 999, 0x7FFFFFFF, static_cast<int>(0x80000000)}) {
        Make({{BTNS_BUTTON, TBSTATE_ENABLED, image}, {BTNS_BUTTON, 0, image}});
        Move(MiddleOf(0));
        EXPECT_EQ(Shown(), Model({Look{70}, {}})) << image;
        ::DestroyWindow(bar);
    }
}

TEST_P(ToolBarPaint, ImagesThatGoAwayAreLeftOut) {
    Make({{}, {BTNS_BUTTON, TBSTATE_ENABLED, 1}});
    ASSERT_TRUE(::ImageList_Remove(images[Normal], 1));
    EXPECT_EQ(Shown(), Model({m_normal, {}}));
    ASSERT_TRUE(::ImageList_Remove(images[Normal], -1));
    EXPECT_EQ(Shown(), Model({}));
}

TEST_P(ToolBarPaint, ImagesWithAnAlphaChannelKeepTheirShape) {
    CImageList blended;
    ASSERT_TRUE(blended.Create(kImageWidth, kImageHeight, ILC_COLOR32, 1, 1));
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, kImageWidth, kImageHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0)));
    // The right half is there, the left one is not.
    for (int i = 0; i < kImageWidth * kImageHeight; ++i)
        static_cast<DWORD*>(bits)[i] = i % kImageWidth < kImageWidth / 2 ? 0 : 0xFF2060A0;
    ASSERT_EQ(::ImageList_Add(blended, bitmap, nullptr), 0);
    Make({{}, {BTNS_BUTTON, 0, 0}});
    ::SendMessageA(bar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(static_cast<HIMAGELIST>(blended)));
    const Picture shown = Shown();
    constexpr int kHalf = kImageWidth / 2 * kImageHeight;
    EXPECT_EQ(shown.CountOf(RGB(0x20, 0x60, 0xA0)), kHalf);
    EXPECT_EQ(shown.CountOf(::GetSysColor(COLOR_GRAYTEXT)), kHalf) << "the disabled one";
    EXPECT_EQ(shown.CountOf(Flat(74)), shown.width * shown.height - 2 * kHalf);
    Use(Normal);
}

TEST_P(ToolBarPaint, ImageLargerThanItsButtonIsCentredOverIt) {
    CImageList large;
    ASSERT_TRUE(large.Create(64, 40, ILC_COLOR24, 1, 1));
    const auto bitmap = MakeBitmap(64, 40, RGB(9, 200, 30));
    ASSERT_EQ(::ImageList_Add(large, *bitmap, nullptr), 0);
    const tavix::ToolButton button{{100, 50, 121, 61}, BTNS_BUTTON, TBSTATE_ENABLED, 0};
    Canvas canvas(200, 120, RGB(1, 2, 3));
    CDC dc(canvas.Dc());
    tavix::PaintToolButton(dc, button, {tavix::ToolButtonState::Normal, false}, {large, nullptr, nullptr},
                           99);
    // (21 - 64) / 2 and (11 - 40) / 2 are cut towards zero.
    const Picture shown = canvas.Take();
    EXPECT_EQ(shown.CountOf(RGB(9, 200, 30)), 64 * 40);
    EXPECT_EQ(shown.At(100 - 21 - 1, 50 - 14 - 1), RGB(9, 200, 30));
    EXPECT_EQ(shown.At(100 - 21 - 2, 50 - 14 - 1), RGB(1, 2, 3));
    EXPECT_EQ(shown.At(100 - 21 - 1, 50 - 14 - 2), RGB(1, 2, 3));
}

// ---------------------------------------------------------------- faces

TEST_P(ToolBarPaint, FaceOfAHotButtonIsNoHigherThanTheClientArea) {
    const tavix::ToolButton plain{{10, 20, 40, 60}, BTNS_BUTTON, TBSTATE_ENABLED, -1};
    const tavix::ToolButton drop{{50, 20, 90, 60}, BTNS_DROPDOWN, TBSTATE_ENABLED, -1};
    for (const int clientHeight : {25, 39, 40, 41, 0}) {
        Canvas canvas(100, 80, RGB(1, 2, 3));
        CDC dc(canvas.Dc());
        tavix::PaintToolButton(dc, plain, {tavix::ToolButtonState::Hot, false}, {}, clientHeight);
        tavix::PaintToolButton(dc, drop, {tavix::ToolButtonState::Hot, true}, {}, clientHeight);
        const Picture shown = canvas.Take();
        EXPECT_EQ(shown.CountOf(Flat(70)), 30 * std::min(clientHeight, 40)) << clientHeight;
        EXPECT_EQ(shown.CountOf(Flat(77)), 40 * 39) << "whatever the client area's height";
    }
}

TEST_P(ToolBarPaint, FacesAreStretchedWhole) {
    skin.SetBitmap(70, 2, 2, [](int x, int y) { return RGB(100 + 50 * x, 100 + 50 * y, 0); });
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    Make({{BTNS_BUTTON, TBSTATE_ENABLED, I_IMAGENONE}});
    Move(MiddleOf(0));
    const Picture shown = Shown();
    const CRect rect = ItemRect(0);
    for (int y = 0; y < rect.Height(); ++y)
        for (int x = 0; x < rect.Width(); ++x)
            ASSERT_EQ(shown.At(rect.left + x, rect.top + y),
                      RGB(100 + 50 * (2 * x / rect.Width()), 100 + 50 * (2 * y / rect.Height()), 0))
                << x << " " << y;
}

TEST_P(ToolBarPaint, ArrowLeavesOutItsKey) {
    skin.SetBitmap(75, 5, 3, [this](int x, int y) { return (x + y) % 2 ? skin.Colour(3) : RGB(3, 60, 9); });
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    Make({{BTNS_DROPDOWN, TBSTATE_ENABLED, I_IMAGENONE}});
    const Picture shown = Shown();
    EXPECT_EQ(shown.CountOf(skin.Colour(3)), 0);
    EXPECT_EQ(shown.CountOf(RGB(3, 60, 9)), 8);
    const CRect rect = ItemRect(0);
    EXPECT_EQ(shown.At(rect.right - 3 - 5, rect.bottom - 5 - 3), RGB(3, 60, 9)) << "top left";
    EXPECT_EQ(shown.At(rect.right - 3 - 1, rect.bottom - 5 - 1), RGB(3, 60, 9)) << "bottom right";
}

TEST_P(ToolBarPaint, SkinWithoutFacesShowsImages) {
    skin.RemoveBitmaps(skinToolBar);
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    Make({{}, {BTNS_DROPDOWN, TBSTATE_ENABLED, 1}, {BTNS_CHECK, TBSTATE_ENABLED | TBSTATE_CHECKED, 1}}, 30);
    Move(MiddleOf(0));
    const Look hot{0, Look::Whole, false, Normal, Effect::Lifted};
    EXPECT_EQ(Shown(), Model({hot, m_normal, m_normal}));
}

TEST_P(ToolBarPaint, TextsAreNotDrawn) {
    Make({{BTNS_BUTTON, TBSTATE_ENABLED, I_IMAGENONE}, {BTNS_BUTTON | BTNS_SHOWTEXT, TBSTATE_ENABLED, 0}}, 40,
         TBSTYLE_LIST);
    TBBUTTONINFOA info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_TEXT;
    char text[] = "Text";
    info.pszText = text;
    for (const WPARAM command : {100, 101})
        ASSERT_TRUE(::SendMessageA(bar, TB_SETBUTTONINFOA, command, reinterpret_cast<LPARAM>(&info)));
    EXPECT_EQ(Shown(), Model({{}, m_normal}));
}

TEST_P(ToolBarPaint, LowAndHighBarsPaintTheSameButtons) {
    for (const int height : {22, 30, 31, 60}) {
        Make({{}, {BTNS_DROPDOWN}, {BTNS_CHECK, TBSTATE_ENABLED | TBSTATE_CHECKED, 1}}, height);
        EXPECT_EQ(Shown(), Model({m_normal, Look{0, Look::Whole, true, Normal, Effect::Plain},
                                  Look{71, Look::LessOne, false, Normal, Effect::Plain}}))
            << height;
        ::DestroyWindow(bar);
    }
}

TEST_P(ToolBarPaint, BarOfAnySizeIsPainted) {
    Make({{}, {BTNS_DROPDOWN}});
    for (const SIZE size :
         {SIZE{300, 0}, SIZE{0, 40}, SIZE{1, 31}, SIZE{2, 37}, SIZE{300, 1}, SIZE{9, 9}, SIZE{390, 120}}) {
        ::SetWindowPos(bar, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        ::SendMessageA(bar, WM_NCPAINT, 1, 0);
        const Picture shown = Shown();
        EXPECT_FALSE(::GetUpdateRect(bar, nullptr, FALSE)) << size.cx << " " << size.cy;
        if (size.cy == 120) {
            EXPECT_EQ(shown.At(300, 70), Flat(74));
        }
    }
}

TEST_P(ToolBarPaint, PartThatIsInvalidIsPaintedAlone) {
    Make({{}, {BTNS_DROPDOWN}, {}});
    const Picture whole = Shown();
    const CSize size = ClientSize();
    {
        CClientDC dc(bar);
        dc.FillSolidRect(CRect(0, 0, size.cx, size.cy), kMark);
    }
    const CRect part(20, 6, 50, 20);
    ::InvalidateRect(bar, &part, FALSE);
    ::UpdateWindow(bar);
    const Picture shown = PictureOfClient(bar);
    for (int y = 0; y < size.cy; ++y)
        for (int x = 0; x < size.cx; ++x)
            ASSERT_EQ(shown.At(x, y), part.PtInRect({x, y}) ? whole.At(x, y) : kMark) << x << " " << y;
}

INSTANTIATE_TEST_SUITE_P(Worlds, ToolBarPaint, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
