// What a menu bar looks like, pixel by pixel.
#include "draw/bitmap_draw.h"
#include "draw/gradient.h"
#include "menubar/bar_fixture.h"
#include "tavixskin.h"

namespace tavix_test {
namespace {

using tavix::DarkenColor;
using TrackingState = CSkinMenuBar::TRACKINGSTATE;

class MenuBarPaint : public BarTest {
protected:
    void SetUp() override {
        MakeBar(MakeUsualMenu());
        // Away from the buttons, and nothing hot.
        PumpMessages();
    }
    /* The band at a row of the bar. */
    COLORREF Band(int y) {
        const int height = WindowRect().Height(), middle = height / 2;
        if (y < middle) return RGB(255, 255, 255);
        Canvas canvas(1, height, 0);
        CDC dc(canvas.Dc());
        tavix::DrawGradient(&dc, CRect(0, middle, 1, height), RGB(255, 255, 255), RGB(0xEA, 0xEA, 0xEA), 0,
                            0);
        return canvas.Take().At(0, y);
    }
    /* Every pixel of the picture outside a button's text is the band. */
    static bool IsText(COLORREF pixel) { return pixel == RGB(0, 0, 0); }
};

TEST_F(MenuBarPaint, TheBandIsWhiteAboveAndGreysBelow) {
    const Picture picture = Paint();
    const int x = ItemRect(3).right + 40;
    for (int y = 0; y < picture.height; ++y) EXPECT_EQ(picture.At(x, y), Band(y)) << y;
    EXPECT_EQ(picture.At(x, picture.height - 1), RGB(0xEA, 0xEA, 0xEA));
}

TEST_F(MenuBarPaint, TextsAreBlackOnTheBand) {
    const Picture picture = Paint();
    for (int i = 0; i < 4; ++i) {
        const CRect item = ItemRect(i);
        int black = 0;
        for (int y = item.top; y < item.bottom; ++y)
            for (int x = item.left; x < item.right; ++x)
                if (IsText(picture.At(x, y))) ++black;
        EXPECT_GT(black, 20) << i;
    }
    EXPECT_EQ(picture.CountOf(skin.Colour(CLR_MENU_SEL_BACK)), 0);
}

TEST_F(MenuBarPaint, TheHotButtonHasTheSkinsColoursInsideItsMargins) {
    Access().SetHotItem(1);
    PumpMessages();
    const Picture picture = Paint();
    const CRect item = ItemRect(1);
    const CRect lit(item.left, item.top + 2, item.right - 4, item.bottom - 2);
    const COLORREF back = skin.Colour(CLR_MENU_SEL_BACK), text = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
    for (const POINT corner : {POINT{lit.left, lit.top}, POINT{lit.right - 1, lit.top},
                               POINT{lit.left, lit.bottom - 1}, POINT{lit.right - 1, lit.bottom - 1}})
        EXPECT_EQ(picture.At(corner.x, corner.y), back);
    int inText = 0;
    for (int y = lit.top; y < lit.bottom; ++y)
        for (int x = lit.left; x < lit.right; ++x) {
            if (picture.At(x, y) == text) ++inText;
            EXPECT_FALSE(IsText(picture.At(x, y)));
        }
    EXPECT_GT(inText, 10);
    int outside = 0;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            if (!lit.PtInRect(CPoint(x, y)) && picture.At(x, y) == back) ++outside;
    EXPECT_EQ(outside, 0);
    EXPECT_EQ(picture.At(lit.right, lit.top + 5), Band(lit.top + 5)) << "no shadow";
}

TEST_F(MenuBarPaint, TheOpenButtonIsHigherAndThrowsAShadow) {
    Access().SetTrackingState(TrackingState::TRACKING_POPUP, 1);
    const Picture picture = Paint();
    const CRect item = ItemRect(1);
    const CRect lit(item.left, item.top + 1, item.right - 4, item.bottom - 1);
    EXPECT_EQ(picture.At(lit.left, lit.top), skin.Colour(CLR_MENU_SEL_BACK));
    EXPECT_EQ(picture.At(lit.right - 1, lit.bottom - 1), skin.Colour(CLR_MENU_SEL_BACK));
    EXPECT_EQ(picture.At(lit.left, lit.top - 1), Band(lit.top - 1));
    const COLORREF start = Band(lit.top);
    for (int k = 1; k <= 4; ++k)
        for (int row = 0; row < lit.Height(); ++row) {
            const COLORREF expected = row < 4   ? start
                                      : row < 8 ? DarkenColor(k * 6 * (row - 3), start)
                                                : DarkenColor(k * 30, start);
            EXPECT_EQ(picture.At(lit.right + 4 - k, lit.top + row), expected) << k << ' ' << row;
        }
    Access().SetTrackingState(TrackingState::TRACKING_IDLE);
}

TEST_F(MenuBarPaint, WhileOneIsOpenAHotButtonIsOrdinary) {
    Access().SetTrackingState(TrackingState::TRACKING_POPUP, 1);
    Access().SetHotItem(2);
    const Picture picture = Paint();
    const CRect item = ItemRect(2);
    EXPECT_EQ(picture.At(item.left + 1, item.top + 3), Band(item.top + 3));
    Access().SetTrackingState(TrackingState::TRACKING_IDLE);
}

TEST_F(MenuBarPaint, ButtonsPaintTheEntryAtTheirIndex) {
    const HMENU former = bar.GetMenu();
    const HMENU menu = MakeMenu({{"Same", 1}, {"Same", 2}, {"WWWW", 3}});
    bar.SynchronizeMenubar(menu);
    const Picture right = Paint();
    Access().Texts().RemoveAll();
    bar.LoadMenuA(menu, nullptr);
    // As if the pool were new: the array's first two entries are the two texts.
    Access().Texts().RemoveAll();
    Access().Texts().SetAtGrow(0, "Same");
    Access().Texts().SetAtGrow(1, "WWWW");
    const Picture shared = Paint();
    EXPECT_NE(shared, right);
    const CRect last = ItemRect(2);
    for (int y = 0; y < shared.height; ++y)
        for (int x = last.left; x < last.right; ++x)
            ASSERT_FALSE(IsText(shared.At(x, y))) << "no entry is left for it";
    ::DestroyMenu(former);
}

TEST_F(MenuBarPaint, RepaintsOnlyWhatIsInvalid) {
    Paint();
    HDC dc = ::GetWindowDC(bar.m_hWnd);
    const CRect item = ItemRect(0);
    ::SetPixel(dc, item.left + 1, item.top + 4, RGB(1, 2, 3));
    ::SetPixel(dc, ItemRect(3).right + 30, 5, RGB(1, 2, 3));
    ::ReleaseDC(bar.m_hWnd, dc);
    ::InvalidateRect(bar.m_hWnd, &item, FALSE);
    ::UpdateWindow(bar.m_hWnd);
    const Picture picture = PictureOfWindow(bar.m_hWnd);
    EXPECT_EQ(picture.At(item.left + 1, item.top + 4), Band(item.top + 4));
    EXPECT_EQ(picture.At(ItemRect(3).right + 30, 5), RGB(1, 2, 3));
}

TEST_F(MenuBarPaint, FollowsTheSkinAtItsNextPainting) {
    Access().SetHotItem(0);
    skin.SetColour(CLR_MENU_SEL_BACK, RGB(12, 200, 99));
    ASSERT_EQ(SetSkinFromFile(skin.Write()), 1);
    const CRect item = ItemRect(0);
    EXPECT_EQ(Paint().At(item.left, item.top + 2), RGB(12, 200, 99));
}

TEST_F(MenuBarPaint, MarginsOfTheFrameGoOnInItsBand) {
    ::SendMessageA(frame.m_hWnd, WM_NCPAINT, 1, 0);
    const Picture picture = PictureOfWindow(frame.m_hWnd);
    CRect window;
    ::GetWindowRect(frame.m_hWnd, &window);
    const int y = WindowRect().top - window.top + 3;
    EXPECT_EQ(picture.At(2, y), RGB(255, 255, 255));
    EXPECT_EQ(picture.At(picture.width - 4, y), RGB(255, 255, 255));
}

}  // namespace
}  // namespace tavix_test
