// Tab controls: what is painted.
#include "commonctrls/tab_ctrl_paint.h"
#include "tab_ctrl_fixture.h"

namespace tavix_test {
namespace {

class TabCtrlPaint : public TabCtrlTest {};

TEST_P(TabCtrlPaint, WithoutTabsTheControlIsBlack) {
    Make({});
    const CSize size = ClientSize();
    EXPECT_EQ(Shown().CountOf(RGB(0, 0, 0)), size.cx * size.cy);
}

TEST_P(TabCtrlPaint, TabsAndFrameAreMadeOfTheirPieces) {
    Make({"General", "Details", "A longer name", "X"});
    EXPECT_EQ(Selected(), 0);
    EXPECT_EQ(Shown(), Model());
    EXPECT_EQ(Shown().At(5, 12), TestSkin::ColourOfBitmap(39)) << "the selected tab";
}

TEST_P(TabCtrlPaint, SelectionWearsItsOwnFaceWhereverItIs) {
    Make({"One", "Two", "Three"});
    for (int i : {1, 2, 0, -1}) {
        Select(i);
        ASSERT_EQ(Selected(), i);
        EXPECT_EQ(Shown(), Model()) << i;
    }
    const Picture none = Shown();
    EXPECT_EQ(none.CountOf(TestSkin::ColourOfBitmap(39)), 0);
    EXPECT_EQ(none.CountOf(RGB(255, 255, 255)), 0) << "white is the selected tab's text";
}

TEST_P(TabCtrlPaint, ChangeOfSelectionIsShownAtOnce) {
    Make({"One", "Two", "Three"});
    ::UpdateWindow(tabs);
    for (int i : {2, 1, 0}) {
        Select(i);
        ::UpdateWindow(tabs);
        EXPECT_EQ(PictureOfClient(tabs), Model()) << i;
    }
    Add("Four");
    ::UpdateWindow(tabs);
    EXPECT_EQ(PictureOfClient(tabs), Model()) << "a new tab";
}

TEST_P(TabCtrlPaint, TextIsWhiteOnTheSelectedTabAndTheSystemsElsewhere) {
    Make({"HHHH", "HHHH"});
    const Picture shown = Shown();
    const auto count = [&](const CRect& tab, COLORREF colour) {
        int n = 0;
        for (int y = tab.top; y < tab.bottom; ++y)
            for (int x = tab.left; x < tab.right; ++x) n += shown.At(x, y) == colour;
        return n;
    };
    EXPECT_GT(count(TabRect(0), RGB(255, 255, 255)), 10);
    EXPECT_EQ(count(TabRect(1), RGB(255, 255, 255)), 0);
    EXPECT_GT(count(TabRect(1), ::GetSysColor(COLOR_WINDOWTEXT)), 10);
}

TEST_P(TabCtrlPaint, FontOfTheHostIsNotUsed) {
    Make({"General", "Details"});
    LOGFONTA wanted{};
    wanted.lfHeight = -22;
    wanted.lfWeight = FW_BOLD;
    CFont font;
    ASSERT_TRUE(font.CreateFontIndirect(wanted));
    ::SendMessageA(tabs, WM_SETFONT, reinterpret_cast<WPARAM>(static_cast<HFONT>(font)), TRUE);
    EXPECT_EQ(Shown(), Model());
    ::SendMessageA(tabs, WM_SETFONT, 0, FALSE);
}

TEST_P(TabCtrlPaint, AmpersandUnderlinesTheNextLetter) {
    Make({"&Save", "Q && A"});
    EXPECT_EQ(Shown(), Model());
    texts = {"Save", "Q && A"};
    EXPECT_NE(Shown(), Model());
}

TEST_P(TabCtrlPaint, LongTextIsCutAfter254Characters) {
    Make({"x"}, {10, 20, 390, 150}, TCS_FIXEDWIDTH);
    const std::string text(300, 'i');
    TCITEMA item{};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<char*>(text.c_str());
    ASSERT_TRUE(::SendMessageA(tabs, TCM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item)));
    texts = {text.substr(0, 254)};
    EXPECT_EQ(Shown(), Model());
}

TEST_P(TabCtrlPaint, TabWithoutTextIsPainted) {
    Make({"", "Named"});
    EXPECT_EQ(Shown(), Model());
}

// The right end is painted over the left one.
TEST_P(TabCtrlPaint, EndsOfANarrowTabOverlap) {
    Make({"a", "b"}, {10, 20, 270, 150}, TCS_FIXEDWIDTH);
    skin.SetBitmapSize(36, 30, 17)
        .SetBitmapSize(38, 34, 16)
        .SetBitmapSize(39, 30, 17)
        .SetBitmapSize(41, 34, 16);
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    for (const int width : {40, 25, 12}) {
        ::SendMessageA(tabs, TCM_SETITEMSIZE, 0, MAKELPARAM(width, 22));
        const CRect tab = TabRect(0);
        ASSERT_LT(tab.Width(), 64);
        const Picture shown = Shown();
        EXPECT_EQ(shown, Model()) << width;
        if (width == 12) continue;  // the next tab covers what is looked at
        EXPECT_EQ(shown.At(std::max<int>(tab.right - 34, 0), tab.top), TestSkin::ColourOfBitmap(41)) << width;
    }
}

TEST_P(TabCtrlPaint, PiecesKeepTheirOwnHeight) {
    Make({"One", "Two"}, {10, 20, 270, 150}, TCS_FIXEDWIDTH);
    ::SendMessageA(tabs, TCM_SETITEMSIZE, 0, MAKELPARAM(80, 44));
    EXPECT_GT(TabRect(0).Height(), 30);
    EXPECT_EQ(Shown(), Model());
}

TEST_P(TabCtrlPaint, StripShowsTheParentsGradientWhateverTheControlsPlace) {
    skin.SetColour(26, RGB(0, 40, 250)).SetColour(27, RGB(250, 180, 0));
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    for (const POINT at : {POINT{10, 20}, POINT{0, 0}, POINT{120, 161}}) {
        Make({"One"}, {at.x, at.y, at.x + 260, at.y + 130});
        EXPECT_EQ(Shown(), Model({400, 300}, at)) << at.y;
        // Right of the tab, where no piece is. The container is no dialog.
        const COLORREF there = Shown().At(200, 4);
        EXPECT_EQ(there, tavix::GradientColour(RGB(0, 40, 250), RGB(250, 180, 0), (at.y + 4) / 2 * 2, 298));
        ::DestroyWindow(tabs);
    }
}

TEST_P(TabCtrlPaint, ControlMatchesTheDialogThatItIsIn) {
    skin.SetColour(26, RGB(0, 40, 250)).SetColour(27, RGB(250, 180, 0));
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    HWND dialog = ::CreateWindowExA(0, "#32770", "d", WS_POPUP | WS_CAPTION | WS_VISIBLE, 50, 50, 320, 240,
                                    nullptr, nullptr, nullptr, nullptr);
    MakeIn(dialog, {"One"}, {20, 31, 280, 150});
    ::UpdateWindow(dialog);
    const Picture around = RepaintedClient(dialog);
    for (int y = 33; y < 48; ++y) EXPECT_EQ(around.At(250, y), around.At(300, y)) << y;
    EXPECT_NE(around.At(300, 33), around.At(300, 47)) << "there is a gradient";
    ::DestroyWindow(dialog);
}

TEST_P(TabCtrlPaint, PartBeyondTheParentIsBlack) {
    const tavix::TabCtrlParts parts{{30, 5, 90, 90}, 0, {{{2, 2, 20, 18}, "a"}}};
    Canvas canvas(120, 100, RGB(9, 9, 9));
    CDC dc(canvas.Dc());
    tavix::PaintTabCtrl(dc, canvas.Area(), parts);
    const Picture shown = canvas.Take();
    EXPECT_EQ(shown.At(29, 8), RGB(0, 0, 0));
    EXPECT_EQ(shown.At(60, 4), RGB(0, 0, 0));
    EXPECT_EQ(shown.At(90, 8), RGB(0, 0, 0));
    EXPECT_EQ(shown.At(60, 5), skin.Colour(26));
    EXPECT_EQ(shown.At(89, 8), tavix::GradientColour(skin.Colour(26), skin.Colour(27), 2, 83));
}

TEST_P(TabCtrlPaint, ControlWithoutAParentIsPaintedOnBlack) {
    tabs = ::CreateWindowExA(0, "SysTabControl32", "", WS_POPUP | WS_VISIBLE, 40, 40, 260, 130, nullptr,
                             nullptr, nullptr, nullptr);
    ASSERT_TRUE(IsSkinned(tabs));
    texts.clear();
    Add("One");
    EXPECT_EQ(Shown(), Model({0, 0}, {0, 0}));
    EXPECT_EQ(Shown().At(200, 4), RGB(0, 0, 0));
    ::DestroyWindow(tabs);
}

TEST_P(TabCtrlPaint, SideEdgesOfAnyPieceHeightEndAtTheCorner) {
    Make({"One"});
    for (const int height : {1, 2, 5, 6, 7, 13, 40, 200}) {
        skin.SetBitmapSize(45, 2, height).SetBitmapSize(46, 3, height + 1);
        ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
        EXPECT_EQ(Shown(), Model()) << height;
    }
}

TEST_P(TabCtrlPaint, ControlOfAnySizeIsPainted) {
    Make({"One", "Two"});
    for (const SIZE size :
         {SIZE{260, 40}, SIZE{260, 20}, SIZE{260, 8}, SIZE{12, 60}, SIZE{5, 5}, SIZE{1, 1}, SIZE{390, 280}}) {
        ::SetWindowPos(tabs, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        ASSERT_EQ(ClientSize().cx, size.cx);
        EXPECT_EQ(Shown(), Model()) << size.cx << " by " << size.cy;
    }
    ::SetWindowPos(tabs, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ::InvalidateRect(tabs, nullptr, TRUE);
    ::UpdateWindow(tabs);
    EXPECT_TRUE(::IsWindow(tabs));
}

TEST_P(TabCtrlPaint, BottomCornersShowWhatIsBehindTheirKey) {
    const COLORREF key = skin.Colour(3);
    const auto keyed = [key](COLORREF colour) { return [=](int x, int y) { return x == y ? key : colour; }; };
    skin.SetBitmap(48, 7, 6, keyed(RGB(1, 90, 3))).SetBitmap(49, 9, 8, keyed(RGB(4, 80, 6)));
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    Make({"One"});
    const Picture shown = Shown();
    const CSize size = ClientSize();
    EXPECT_EQ(shown.CountOf(key), 0);
    EXPECT_EQ(shown.CountOf(RGB(1, 90, 3)), 7 * 6 - 6);
    EXPECT_EQ(shown.CountOf(RGB(4, 80, 6)), 9 * 8 - 8);
    // Below the page the parent's gradient is behind the left corner; the right one lies on the bottom
    // edge where that reaches under it.
    const int y = size.cy - 6 + 2, below = 20 + y;
    EXPECT_EQ(shown.At(2, y), tavix::GradientColour(skin.Colour(26), skin.Colour(27), below / 2 * 2, 298));
    EXPECT_EQ(shown.At(size.cx - 9 + 5, size.cy - 8 + 5), TestSkin::ColourOfBitmap(47));
}

TEST_P(TabCtrlPaint, SkinWithoutTabPiecesLeavesPageAndTexts) {
    Make({"One", "Two"});
    skin.RemoveBitmaps(skinTabCtrl);
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    const Picture shown = Shown();
    const CSize size = ClientSize();
    const int top = TabRect(0).bottom + 1;
    EXPECT_EQ(shown.CountOf(skin.Colour(39)), size.cx * (size.cy - top)) << "page without a frame";
    EXPECT_GT(shown.CountOf(RGB(255, 255, 255)), 3);
}

TEST_P(TabCtrlPaint, OtherStylesArePaintedAsIfTabsStoodOnTop) {
    for (const DWORD style :
         {static_cast<DWORD>(TCS_BOTTOM), static_cast<DWORD>(TCS_VERTICAL | TCS_MULTILINE),
          static_cast<DWORD>(TCS_VERTICAL | TCS_MULTILINE | TCS_RIGHT), static_cast<DWORD>(TCS_BUTTONS),
          static_cast<DWORD>(TCS_BUTTONS | TCS_FLATBUTTONS), static_cast<DWORD>(TCS_MULTILINE),
          static_cast<DWORD>(TCS_OWNERDRAWFIXED)}) {
        Make({"One", "Two", "A third one that is longer", "Number four", "Number five"}, {10, 20, 270, 150},
             style);
        Parent().log.Clear();
        EXPECT_EQ(Shown(), Model()) << std::hex << style;
        EXPECT_FALSE(Parent().log.Has(WM_DRAWITEM)) << "no owner draws";
        ::DestroyWindow(tabs);
    }
}

TEST_P(TabCtrlPaint, ImagesAreNotDrawnWhateverTheirIndex) {
    Make({"One", "Two", "Three"});
    HIMAGELIST images = ::ImageList_Create(12, 12, ILC_COLOR24, 1, 1);
    const auto bitmap = MakeBitmap(12, 12, RGB(250, 1, 130));
    ASSERT_EQ(::ImageList_Add(images, *bitmap, nullptr), 0);
    ::SendMessageA(tabs, TCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images));
    int tab = 0;
    for (const int image : {0, 7, -5}) {
        TCITEMA item{};
        item.mask = TCIF_IMAGE;
        item.iImage = image;
        ASSERT_TRUE(
            ::SendMessageA(tabs, TCM_SETITEMA, static_cast<WPARAM>(tab++), reinterpret_cast<LPARAM>(&item)));
    }
    EXPECT_EQ(Shown().CountOf(RGB(250, 1, 130)), 0);
    EXPECT_EQ(Shown(), Model());
    ::SendMessageA(tabs, TCM_SETIMAGELIST, 0, 0);
    ::ImageList_Destroy(images);
}

TEST_P(TabCtrlPaint, PartThatIsInvalidIsPaintedAlone) {
    Make({"One", "Two"});
    ::UpdateWindow(tabs);
    constexpr COLORREF kMark = RGB(250, 10, 250);
    {
        CClientDC dc(tabs);
        dc.FillSolidRect({0, 0, 260, 130}, kMark);
    }
    const CRect part(30, 5, 90, 60);
    ::InvalidateRect(tabs, &part, FALSE);
    ::UpdateWindow(tabs);
    const Picture shown = PictureOfClient(tabs), model = Model();
    for (int y = 0; y < 130; ++y)
        for (int x = 0; x < 260; ++x)
            ASSERT_EQ(shown.At(x, y), part.PtInRect({x, y}) ? model.At(x, y) : kMark) << x << " " << y;
}

INSTANTIATE_TEST_SUITE_P(Worlds, TabCtrlPaint, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
