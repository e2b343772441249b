// List boxes: what creation takes away, the frame, the shape, the life of the bar.
#include <algorithm>

#include "controls/list_box_fixture.h"

namespace tavix_test {
namespace {

class ListBoxCreate : public ListBoxTest {};
INSTANTIATE_TEST_SUITE_P(Worlds, ListBoxCreate, kControlWorlds, NameOfWorld);

constexpr DWORD kTaken = WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_MULTIPLESEL | LBS_EXTENDEDSEL |
                         LBS_MULTICOLUMN | LBS_USETABSTOPS;

TEST_P(ListBoxCreate, StylesOfBehaviourAreNotSeenAfterwards) {
    for (DWORD taken : {DWORD{WS_BORDER}, DWORD{WS_VSCROLL}, DWORD{WS_HSCROLL}, DWORD{LBS_MULTIPLESEL},
                        DWORD{LBS_EXTENDEDSEL}, DWORD{LBS_MULTICOLUMN}, DWORD{LBS_USETABSTOPS}, kTaken}) {
        MakeList(taken | LBS_NOTIFY | LBS_SORT, 1);
        const auto style = static_cast<DWORD>(::GetWindowLongA(list, GWL_STYLE));
        EXPECT_EQ(style & kTaken, 0u) << taken;
        EXPECT_TRUE(style & WS_CLIPCHILDREN);
        // The others stay.
        EXPECT_EQ(style & (LBS_NOTIFY | LBS_SORT | WS_CHILD | WS_VISIBLE),
                  static_cast<DWORD>(LBS_NOTIFY | LBS_SORT | WS_CHILD | WS_VISIBLE));
        ::DestroyWindow(list);
    }
}

TEST_P(ListBoxCreate, NativeControlIsToldTheStrippedStyles) {
    ClassSpy spy("ListBox");
    std::optional<LONG> told;
    spy.handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_CREATE)
            told = reinterpret_cast<const CREATESTRUCTW*>(received.lParam)->style;
        return std::nullopt;
    };
    MakeList(kTaken, 0);
    ASSERT_TRUE(told);
    EXPECT_EQ(static_cast<DWORD>(*told) & kTaken, 0u);
    EXPECT_TRUE(*told & WS_CLIPCHILDREN);
    ::DestroyWindow(list);
}

TEST_P(ListBoxCreate, AnHiddenListStaysHidden) {
    list = ::CreateWindowExA(0, "ListBox", "", WS_CHILD | WS_VSCROLL, 0, 0, 100, 100, Parent(), nullptr,
                             nullptr, nullptr);
    EXPECT_FALSE(::GetWindowLongA(list, GWL_STYLE) & WS_VISIBLE);
}

TEST_P(ListBoxCreate, FrameTakesTheMarginsOfItsEdges) {
    MakeList(WS_VSCROLL | WS_BORDER, 3, {150, 80});
    CRect client;
    ::GetClientRect(list, &client);
    EXPECT_EQ(client, CRect(0, 0, 150, 80));
    CRect window;
    ::GetWindowRect(list, &window);
    POINT origin{0, 0};
    ::ClientToScreen(list, &origin);
    EXPECT_EQ(origin.x - window.left, kLeftEdge);
    EXPECT_EQ(origin.y - window.top, kTopEdge);
}

TEST_P(ListBoxCreate, CalculationTakesTheFirstRectangleWhateverTheFlag) {
    MakeList(0, 0);
    for (WPARAM flag : {0, 1}) {
        NCCALCSIZE_PARAMS params{};
        params.rgrc[0] = {10, 20, 110, 220};
        params.rgrc[1] = {1, 2, 3, 4};
        EXPECT_EQ(Send(WM_NCCALCSIZE, flag, reinterpret_cast<LPARAM>(&params)), 0);
        EXPECT_EQ(CRect(params.rgrc[0]),
                  CRect(10 + kLeftEdge, 20 + kTopEdge, 110 - kRightEdge, 220 - kBottomEdge));
        EXPECT_EQ(CRect(params.rgrc[1]), CRect(1, 2, 3, 4));
    }
    RECT tiny{0, 0, 2, 2};
    Send(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&tiny));
    EXPECT_EQ(CRect(tiny), CRect(kLeftEdge, kTopEdge, kLeftEdge, kTopEdge));
    EXPECT_EQ(Send(WM_NCCALCSIZE, FALSE, 0), 0);
}

TEST_P(ListBoxCreate, ChangedSkinKeepsTheOldThickness) {
    MakeList(0, 2);
    skin.SetBitmapSize(61, 7, 20).SetBitmapSize(62, 20, 7);
    UseChangedSkin();
    RECT rect{0, 0, 100, 100};
    Send(WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect));
    EXPECT_EQ(CRect(rect), CRect(kLeftEdge, kTopEdge, 100 - kRightEdge, 100 - kBottomEdge));
}

TEST_P(ListBoxCreate, MessagesThatAreSwallowedNeverReachTheNativeControl) {
    ClassSpy spy("ListBox");
    MakeList(0, 3);
    spy.log.Clear();
    EXPECT_EQ(Send(WM_NCMOUSEMOVE, HTVSCROLL, 0), 0);
    EXPECT_EQ(Send(WM_NCLBUTTONDOWN, HTVSCROLL, 0), 0);
    EXPECT_EQ(Send(WM_NCLBUTTONDBLCLK, HTVSCROLL, 0), 0);
    EXPECT_EQ(Send(WM_PRINT, 0, PRF_CLIENT), 0);
    EXPECT_EQ(Send(WM_ERASEBKGND, 0, 0), 1);
    EXPECT_EQ(Send(WM_NCPAINT, 1, 0), 0);
    EXPECT_EQ(Send(WM_PAINT, 0, 0), 0);
    for (UINT message : {WM_NCMOUSEMOVE, WM_NCLBUTTONDOWN, WM_NCLBUTTONDBLCLK, WM_PRINT, WM_ERASEBKGND,
                         WM_NCPAINT, WM_PAINT, WM_NCCALCSIZE})
        EXPECT_FALSE(spy.log.Has(static_cast<UINT>(message))) << message;
    ::DestroyWindow(list);
}

// ---------------------------------------------------------------- shape

TEST_P(ListBoxCreate, WithoutPureRedTheWindowStaysRectangular) {
    MakeList(0, 0, {100, 50});
    HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(::GetWindowRgn(list, region), SIMPLEREGION);
    CRect box;
    ::GetRgnBox(region, &box);
    EXPECT_EQ(box, CRect(0, 0, 100 + kLeftEdge + kRightEdge, 50 + kTopEdge + kBottomEdge));
    ::DeleteObject(region);
}

TEST_P(ListBoxCreate, PureRedPixelsOfTheFourCornersAreCut) {
    // A red pixel in each, at another place; the transparent key of the skin cuts nothing.
    const auto red = [](int atX, int atY) {
        return [=](int x, int y) {
            return x == atX && y == atY ? RGB(255, 0, 0) : x == 5 ? TestSkin::kTransparent : RGB(9, 9, 9);
        };
    };
    skin.SetBitmap(57, 6, 6, red(0, 1)).SetBitmap(58, 6, 6, red(2, 0));
    skin.SetBitmap(59, 6, 6, red(1, 4)).SetBitmap(60, 6, 6, red(3, 3));
    UseChangedSkin();
    MakeList(0, 0, {100, 50});
    const int width = 100 + kLeftEdge + kRightEdge, height = 50 + kTopEdge + kBottomEdge;
    HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    ASSERT_EQ(::GetWindowRgn(list, region), COMPLEXREGION);
    const std::vector<CPoint> holes{
        {0, 1}, {width - 6 + 2, 0}, {1, height - 6 + 4}, {width - 6 + 3, height - 6 + 3}};
    int out = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (!::PtInRegion(region, x, y)) {
                ++out;
                EXPECT_NE(std::find(holes.begin(), holes.end(), CPoint(x, y)), holes.end()) << x << "," << y;
            }
    EXPECT_EQ(out, 4);
    ::DeleteObject(region);
}

TEST_P(ListBoxCreate, CornersOfAChangedSkinAreCutAtTheNextSize) {
    MakeList(0, 0, {100, 50});
    const auto kindOfRegion = [this] {
        HRGN region = ::CreateRectRgn(0, 0, 0, 0);
        const int kind = ::GetWindowRgn(list, region);
        ::DeleteObject(region);
        return kind;
    };
    skin.SetBitmap(57, 6, 6, [](int x, int y) { return x + y < 2 ? RGB(255, 0, 0) : RGB(9, 9, 9); });
    UseChangedSkin();
    PumpMessages();
    EXPECT_EQ(kindOfRegion(), SIMPLEREGION) << "painted anew, in the old shape";
    Resize({101, 50});
    EXPECT_EQ(kindOfRegion(), COMPLEXREGION);
    skin.SetBitmap(57, 6, 6, RGB(9, 9, 9));
    UseChangedSkin();
    PumpMessages();
    EXPECT_EQ(kindOfRegion(), COMPLEXREGION);
    Resize({100, 50});
    EXPECT_EQ(kindOfRegion(), SIMPLEREGION);
}

// ---------------------------------------------------------------- the bar

TEST_P(ListBoxCreate, BarComesWithTheFirstItemThatDoesNotFit) {
    MakeList(WS_VSCROLL, 3);
    EXPECT_EQ(Bar(), nullptr);
    while (Count() < 8) Add("More");
    EXPECT_EQ(Bar(), nullptr);
    Add("Ninth");
    ASSERT_NE(Bar(), nullptr);
    EXPECT_TRUE(BarShows());
    EXPECT_EQ(static_cast<DWORD>(::GetWindowLongA(Bar(), GWL_STYLE)) & 0x5000'0005u, 0x5000'0005u);
    const SCROLLINFO info = BarInfo();
    EXPECT_EQ(info.nMin, 0);
    EXPECT_EQ(info.nMax, 8);
    EXPECT_EQ(info.nPage, 8u);
    CRect place;
    ::GetWindowRect(Bar(), &place);
    ::MapWindowPoints(nullptr, list, reinterpret_cast<POINT*>(static_cast<RECT*>(&place)), 2);
    EXPECT_EQ(place, CRect(200 - ::GetSystemMetrics(SM_CXVSCROLL), 0, 200, 96));
}

TEST_P(ListBoxCreate, BarIsHiddenAndKeptWhenTheItemsFitAgain) {
    MakeList(WS_VSCROLL, 9);
    HWND bar = Bar();
    ASSERT_TRUE(BarShows());
    Send(LB_DELETESTRING, 0);
    EXPECT_EQ(Bar(), bar);
    EXPECT_FALSE(BarShows());
    Add("Again");
    EXPECT_EQ(Bar(), bar);
    EXPECT_TRUE(BarShows());
    Send(LB_RESETCONTENT);
    EXPECT_EQ(Bar(), bar);
    EXPECT_FALSE(BarShows());
}

// As hosts refill their lists: hidden, on a page that does not show, or with the painting held up.
TEST_P(ListBoxCreate, BarGoesWithItsItemsAlsoWhileNothingOfTheListShows) {
    const std::pair<const char*, std::function<void(bool)>> ways[] = {
        {"hidden", [this](bool off) { ::ShowWindow(list, off ? SW_HIDE : SW_SHOW); }},
        {"parent hidden", [this](bool off) { ::ShowWindow(Parent(), off ? SW_HIDE : SW_SHOW); }},
        {"painting held up", [this](bool off) { Send(WM_SETREDRAW, !off); }},
    };
    for (const auto& [name, hold] : ways) {
        SCOPED_TRACE(name);
        MakeList(WS_VSCROLL, 20);
        ASSERT_TRUE(BarShows());
        HWND bar = Bar();
        hold(true);
        Send(LB_RESETCONTENT);
        for (int i = 0; i < 3; ++i) Add("few");
        hold(false);
        EXPECT_FALSE(BarShows());
        EXPECT_EQ(Bar(), bar) << "kept for the next time";
        hold(true);
        for (int i = 0; i < 20; ++i) Add("many");
        hold(false);
        EXPECT_TRUE(BarShows());
        ::DestroyWindow(list);
    }
}

TEST_P(ListBoxCreate, WithoutTheStyleThereIsNoBar) {
    MakeList(WS_HSCROLL, 100);
    EXPECT_EQ(::GetWindow(list, GW_CHILD), nullptr);
}

TEST_P(ListBoxCreate, HeightDecidesHowManyRowsFit) {
    struct Row {
        int height;
        DWORD style;
        int rows;
    };
    for (const Row& row : {Row{96, 0, 8}, Row{100, 0, 8}, Row{105, 0, 8}, Row{106, 0, 9},
                           Row{106, LBS_MULTICOLUMN, 8}, Row{24, 0, 2}}) {
        MakeList(WS_VSCROLL | row.style, 50, {200, row.height});
        EXPECT_EQ(Rows(), row.rows) << row.height;
        ::DestroyWindow(list);
    }
}

TEST_P(ListBoxCreate, SizeBoundsTheTopItemAndRenewsTheBar) {
    MakeList(WS_VSCROLL, 20);
    SetTop(12);
    Resize({200, 120});
    EXPECT_EQ(Top(), 10);
    EXPECT_EQ(Rows(), 10);
    EXPECT_TRUE(BarShows());
    Resize({150, 240});
    EXPECT_EQ(Top(), 0);
    EXPECT_FALSE(BarShows());
    EXPECT_EQ(Rows(), 20);
    Resize({150, 48});
    EXPECT_TRUE(BarShows());
    CRect place;
    ::GetWindowRect(Bar(), &place);
    ::MapWindowPoints(nullptr, list, reinterpret_cast<POINT*>(static_cast<RECT*>(&place)), 2);
    EXPECT_EQ(place, CRect(150 - ::GetSystemMetrics(SM_CXVSCROLL), 0, 150, 48));
}

TEST_P(ListBoxCreate, EmptyClientAreaChangesNothing) {
    MakeList(WS_VSCROLL, 20);
    SetTop(12);
    Resize({-kLeftEdge - kRightEdge, -kTopEdge - kBottomEdge});
    EXPECT_EQ(Top(), 12);
    EXPECT_EQ(Rows(), 8);
    Add("More");
    Resize({200, 96});
    EXPECT_EQ(Rows(), 8);
}

TEST_P(ListBoxCreate, BarFollowsTheListsEnabledStateAtEachPaint) {
    MakeList(WS_VSCROLL, 20);
    ::UpdateWindow(list);
    EXPECT_TRUE(::IsWindowEnabled(Bar()));
    ::EnableWindow(list, FALSE);
    ::InvalidateRect(list, nullptr, FALSE);
    ::UpdateWindow(list);
    EXPECT_FALSE(::IsWindowEnabled(Bar()));
    ::EnableWindow(list, TRUE);
    ::InvalidateRect(list, nullptr, FALSE);
    ::UpdateWindow(list);
    EXPECT_TRUE(::IsWindowEnabled(Bar()));
}

TEST_P(ListBoxCreate, ItemHeightFollowsTheFirstItem) {
    MakeList(WS_VSCROLL, 20);
    EXPECT_EQ(Rows(), 8);
    Send(LB_SETITEMHEIGHT, 0, 24);
    EXPECT_EQ(Rows(), 8);
    LayOut();
    EXPECT_EQ(Rows(), 4);
}

}  // namespace
}  // namespace tavix_test
