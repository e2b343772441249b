// A splitter's panes: making, placing, splitting, and the focus among them.
#include <algorithm>

#include "main/gui_objects.h"
#include "splitter_fixture.h"

namespace tavix_test {
namespace {

class SplitterPanes : public SplitterTest {};
using Sizes = std::vector<int>;

// ---------------------------------------------------------------- creation

TEST_F(SplitterPanes, StaticSplitterHasTheRowsAndColumnsItWasMadeWith) {
    ASSERT_TRUE(splitter.CreateStatic(parent, 2, 3, WS_CHILD | WS_VISIBLE, 0x1234));
    EXPECT_EQ(splitter.GetRowCount(), 2);
    EXPECT_EQ(splitter.GetColumnCount(), 3);
    EXPECT_FALSE(splitter.IsDynamic());
    EXPECT_EQ(::GetDlgItem(parent, 0x1234), splitter.m_hWnd);
    EXPECT_TRUE(::IsWindowVisible(splitter.m_hWnd));
    EXPECT_EQ(splitter.GetPane(0, 0), nullptr) << "the host makes the panes";
    EXPECT_TRUE(splitter.IsKindOf(RUNTIME_CLASS(CSplitterWnd)));
    EXPECT_FALSE(splitter.CreateStatic(parent, 1, 2)) << "it has a window";
    EXPECT_FALSE(splitter.Create(parent, 2, 2, {10, 10}));
    EXPECT_EQ(splitter.GetColumnCount(), 3);
}

TEST_F(SplitterPanes, NumbersOfPanesOutOfRangeMakeNoSplitter) {
    for (const auto& [rows, columns] : {std::pair{0, 1}, {1, 0}, {-1, 2}, {17, 1}, {1, 17}}) {
        EXPECT_FALSE(splitter.CreateStatic(parent, rows, columns)) << rows << " " << columns;
        EXPECT_EQ(splitter.m_hWnd, nullptr);
    }
    for (const auto& [rows, columns] : {std::pair{0, 1}, {1, 0}, {3, 1}, {1, 3}}) {
        EXPECT_FALSE(splitter.Create(parent, rows, columns, {10, 10})) << rows << " " << columns;
        EXPECT_EQ(splitter.m_hWnd, nullptr);
    }
    EXPECT_FALSE(splitter.CreateStatic(nullptr, 2, 2)) << "no parent";
    EXPECT_EQ(splitter.GetRowCount(), 0);
}

TEST_F(SplitterPanes, SixteenBySixteenPanesGetPlacesOfTheirOwn) {
    MakeStatic(16, 16);
    for (int i = 0; i < 16; ++i) {
        splitter.SetRowInfo(i, 10, 2);
        splitter.SetColumnInfo(i, 12, 2);
    }
    splitter.RecalcLayout();
    std::vector<CRect> places;
    for (int row = 0; row < 16; ++row)
        for (int column = 0; column < 16; ++column) {
            places.push_back(splitter.PlaceOf(row, column));
            EXPECT_TRUE(places.back() == splitter.GetPaneRect(row, column));
            int itsRow = -1, itsColumn = -1;
            EXPECT_TRUE(splitter.IsChildPane(splitter.Pane(row, column), &itsRow, &itsColumn));
            EXPECT_EQ(itsRow, row);
            EXPECT_EQ(itsColumn, column);
        }
    for (std::size_t a = 0; a < places.size(); ++a) {
        EXPECT_FALSE(places[a].IsRectEmpty());
        for (std::size_t b = a + 1; b < places.size(); ++b) {
            RECT common;
            EXPECT_FALSE(::IntersectRect(&common, &places[a], &places[b]));
        }
    }
}

TEST_F(SplitterPanes, DynamicSplitterStartsWithOnePane) {
    MakeDynamic(2, 2);
    EXPECT_TRUE(splitter.IsDynamic());
    EXPECT_EQ(splitter.GetRowCount(), 1);
    EXPECT_EQ(splitter.GetColumnCount(), 1);
    ASSERT_EQ(splitter.made.size(), 1u);
    // The split boxes have the left and top edges.
    EXPECT_TRUE(splitter.PlaceOf(0, 0) == CRect(7, 7, kClient.cx, kClient.cy));
    EXPECT_FALSE(::GetWindowLongA(splitter.m_hWnd, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL));
}

TEST_F(SplitterPanes, DynamicSplitterWithoutItsFirstPaneIsNotMade) {
    splitter.refused = POINT{0, 0};
    EXPECT_FALSE(splitter.Create(parent, 2, 2, {10, 10}));
    EXPECT_EQ(splitter.m_hWnd, nullptr);
    EXPECT_EQ(splitter.GetRowCount(), 0);
    splitter.refused.reset();
    EXPECT_TRUE(splitter.Create(parent, 2, 2, {10, 10})) << "it can be tried again";
    CSplitterWnd base;
    EXPECT_FALSE(base.Create(parent, 2, 2, {10, 10})) << "the base makes no pane";
}

// ---------------------------------------------------------------- panes and their sizes

TEST_F(SplitterPanes, LayoutPutsPanesSideBySideWithAGap) {
    MakeStatic(2, 2);
    splitter.SetColumnInfo(0, 100, 10);
    splitter.SetRowInfo(0, 80, 10);
    splitter.RecalcLayout();
    EXPECT_TRUE(splitter.PlaceOf(0, 0) == CRect(0, 0, 100, 80));
    EXPECT_TRUE(splitter.PlaceOf(0, 1) == CRect(107, 0, 400, 80));
    EXPECT_TRUE(splitter.PlaceOf(1, 0) == CRect(0, 87, 100, 300));
    EXPECT_TRUE(splitter.PlaceOf(1, 1) == CRect(107, 87, 400, 300));
    ::MoveWindow(splitter.m_hWnd, 0, 0, 250, 200, TRUE);
    EXPECT_TRUE(splitter.PlaceOf(1, 1) == CRect(107, 87, 250, 200)) << "with the splitter's size";
}

TEST_F(SplitterPanes, InfoOfRowsAndColumnsIsKeptInRange) {
    MakeStatic(2, 2);
    splitter.SetColumnInfo(0, 100, 30);
    splitter.SetRowInfo(1, -5, 40000);
    int current = -1, minimum = -1;
    splitter.RecalcLayout();
    splitter.GetColumnInfo(0, current, minimum);
    EXPECT_EQ(current, 100);
    EXPECT_EQ(minimum, 30);
    splitter.GetRowInfo(1, current, minimum);
    EXPECT_EQ(minimum, 32767);
    EXPECT_EQ(splitter.m_pRowInfo[1].nIdealSize, 0);
    for (const int index : {-1, 2, 1000}) {
        splitter.SetRowInfo(index, 1, 1);
        splitter.SetColumnInfo(index, 1, 1);
        splitter.GetRowInfo(index, current, minimum);
        EXPECT_EQ(current, 0);
        EXPECT_EQ(minimum, 0);
        EXPECT_EQ(splitter.GetPane(index, 0), nullptr);
        EXPECT_EQ(splitter.GetPane(0, index), nullptr);
        EXPECT_TRUE(splitter.GetPaneRect(0, index).IsRectEmpty());
    }
}

TEST_F(SplitterPanes, AnyWindowCanBecomeAPane) {
    ASSERT_TRUE(splitter.CreateStatic(parent, 1, 2));
    Fill();
    HWND popup = ::CreateWindowExA(0, "Static", "", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9, parent, nullptr,
                                   nullptr, nullptr);
    EXPECT_FALSE(splitter.SetPane(0, 2, popup, {50, 60}));
    EXPECT_FALSE(splitter.SetPane(-1, 0, popup, {50, 60}));
    EXPECT_FALSE(splitter.SetPane(0, 0, nullptr, {50, 60}));
    EXPECT_FALSE(splitter.SetPane(0, 0, splitter.m_hWnd, {50, 60})) << "not itself";
    EXPECT_FALSE(splitter.SetPane(0, 0, parent, {50, 60})) << "nor what it stands in";
    ASSERT_TRUE(splitter.SetPane(0, 0, popup, {50, 60}));
    EXPECT_FALSE(splitter.SetPane(0, 0, popup, {50, 60})) << "the place is taken";
    splitter.RecalcLayout();
    EXPECT_EQ(::GetParent(popup), splitter.m_hWnd);
    EXPECT_EQ(splitter.Pane(0, 0), popup);
    EXPECT_TRUE(splitter.PlaceOf(0, 0) == CRect(0, 0, 50, 300));
    EXPECT_FALSE(splitter.IsChildPane(parent, nullptr, nullptr));
    EXPECT_FALSE(splitter.IsChildPane(nullptr, nullptr, nullptr));
}

TEST_F(SplitterPanes, ControlsInPanesTalkToTheSplittersParent) {
    ASSERT_TRUE(splitter.CreateStatic(parent, 1, 2));
    HWND button = CreateControl(Charset::Ansi, splitter.m_hWnd, "Button", "", 0, {0, 0, 9, 9},
                                static_cast<int>(splitter.IdFromRowCol(0, 1)));
    parent.handler = [](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_NOTIFY) return 77;
        return std::nullopt;
    };
    parent.log.Clear();
    parent.log.Listen({WM_COMMAND, WM_NOTIFY});
    ::SendMessageA(button, BM_CLICK, 0, 0);
    ASSERT_EQ(parent.log.Count(WM_COMMAND), 1);
    EXPECT_EQ(parent.log.Entries()[0].wParam, MAKEWPARAM(splitter.IdFromRowCol(0, 1), BN_CLICKED));
    NMHDR notice{button, 5, 6};
    EXPECT_EQ(::SendMessageA(splitter.m_hWnd, WM_NOTIFY, 5, reinterpret_cast<LPARAM>(&notice)), 77);
    EXPECT_EQ(parent.log.Count(WM_NOTIFY), 1);
}

// ---------------------------------------------------------------- splitting

TEST_F(SplitterPanes, SplitAndDeleteGoFromOnePaneToFourAndBack) {
    MakeDynamic(2, 2);
    HWND first = splitter.Pane(0, 0);
    EXPECT_TRUE(splitter.SplitColumn(150));
    EXPECT_EQ(splitter.Widths(), (Sizes{150, 243}));
    EXPECT_EQ(splitter.PlaceOf(0, 0).left, 0) << "the box has gone";
    EXPECT_TRUE(splitter.SplitRow(100));
    EXPECT_EQ(splitter.Heights(), (Sizes{100, 193}));
    EXPECT_EQ(splitter.made.size(), 4u);
    for (int row = 0; row < 2; ++row)
        for (int column = 0; column < 2; ++column)
            EXPECT_TRUE(splitter.PlaceOf(row, column) == splitter.GetPaneRect(row, column));
    EXPECT_FALSE(splitter.SplitRow(100)) << "it has two";
    EXPECT_FALSE(splitter.SplitColumn(100));

    HWND last = splitter.Pane(1, 1);
    splitter.DeleteColumn(0);
    EXPECT_FALSE(::IsWindow(first));
    EXPECT_EQ(splitter.Pane(1, 0), last) << "the other column moves up";
    EXPECT_EQ(splitter.GetPane(0, 1), nullptr);
    splitter.DeleteRow(1);
    EXPECT_FALSE(::IsWindow(last));
    EXPECT_EQ(splitter.GetRowCount(), 1);
    EXPECT_TRUE(splitter.PlaceOf(0, 0) == CRect(7, 7, 400, 300)) << "with both boxes again";
    splitter.DeleteRow(0);
    splitter.DeleteColumn(0);
    EXPECT_NE(splitter.GetPane(0, 0), nullptr) << "the last pane stays";
}

TEST_F(SplitterPanes, SplitThatLeavesTooLittleRoomIsRefused) {
    MakeDynamic(2, 2, {50, 40});
    EXPECT_FALSE(splitter.SplitColumn(49));
    EXPECT_FALSE(splitter.SplitColumn(400 - 7 - 49));
    EXPECT_FALSE(splitter.SplitRow(39));
    EXPECT_FALSE(splitter.SplitRow(-100000));
    EXPECT_EQ(splitter.made.size(), 1u);
    EXPECT_TRUE(splitter.SplitColumn(400 - 7 - 50));
    EXPECT_EQ(splitter.Widths(), (Sizes{343, 50}));
}

TEST_F(SplitterPanes, SplitEndsWithoutATraceIfAPaneIsRefused) {
    MakeDynamic(2, 2);
    ASSERT_TRUE(splitter.SplitRow(100));
    splitter.refused = POINT{1, 1};
    EXPECT_FALSE(splitter.SplitColumn(100));
    EXPECT_EQ(splitter.GetColumnCount(), 1);
    EXPECT_EQ(splitter.GetPane(0, 1), nullptr) << "the pane that was made already has gone";
    EXPECT_EQ(splitter.Widths(), (Sizes{393}));
}

TEST_F(SplitterPanes, StaticSplitterIsNeitherSplitNorReduced) {
    MakeStatic(1, 2);
    EXPECT_FALSE(splitter.SplitRow(50));
    splitter.DeleteColumn(1);
    EXPECT_EQ(splitter.GetColumnCount(), 2);
    EXPECT_NE(splitter.GetPane(0, 1), nullptr);
}

TEST_F(SplitterPanes, OneWayDynamicSplitterSplitsThatWayOnly) {
    MakeDynamic(1, 2);
    EXPECT_FALSE(splitter.SplitRow(100));
    EXPECT_TRUE(splitter.PlaceOf(0, 0) == CRect(7, 0, 400, 300));
    EXPECT_TRUE(splitter.SplitColumn(100));
}

// ---------------------------------------------------------------- focus

TEST_F(SplitterPanes, FocusGoesRoundThePanes) {
    MakeStatic(2, 2);
    ASSERT_TRUE(BringToFront(parent));
    int row = -1, column = -1;
    EXPECT_EQ(splitter.GetActivePane(&row, &column), nullptr);
    const int order[][2] = {{0, 0}, {0, 1}, {1, 0}, {1, 1}, {0, 0}};
    for (const auto& at : order) {
        splitter.ActivateNext();
        ASSERT_NE(splitter.GetActivePane(&row, &column), nullptr);
        EXPECT_EQ(row, at[0]);
        EXPECT_EQ(column, at[1]);
        EXPECT_EQ(::GetFocus(), splitter.Pane(row, column));
    }
    splitter.ActivateNext(true);
    EXPECT_EQ(::GetFocus(), splitter.Pane(1, 1));
    ::SetFocus(splitter.m_hWnd);
    EXPECT_EQ(::GetFocus(), splitter.Pane(0, 0)) << "a splitter hands the focus on";
    HWND inner = CreateControl(Charset::Ansi, splitter.Pane(1, 0), "Edit", "", 0, {0, 0, 5, 5});
    ::SetFocus(inner);
    EXPECT_EQ(splitter.GetActivePane(&row, &column)->m_hWnd, splitter.Pane(1, 0)) << "of a pane's child too";
}

TEST_F(SplitterPanes, FocusOfADeletedPaneGoesToTheOneThatStays) {
    MakeDynamic(1, 2);
    ASSERT_TRUE(BringToFront(parent));
    ASSERT_TRUE(splitter.SplitColumn(100));
    splitter.SetActivePane(0, 1);
    HWND stays = splitter.Pane(0, 0);
    splitter.DeleteColumn(1);
    EXPECT_EQ(::GetFocus(), stays);
    ASSERT_TRUE(splitter.SplitColumn(100));
    stays = splitter.Pane(0, 1);
    splitter.SetActivePane(0, 1);
    splitter.DeleteColumn(0);
    EXPECT_EQ(::GetFocus(), stays) << "a pane that stays keeps it";
}

// ---------------------------------------------------------------- drawing

TEST_F(SplitterPanes, EachPartIsDrawnInItsPlace) {
    MakeStatic(2, 2);
    splitter.SetColumnInfo(0, 100, 10);
    splitter.SetRowInfo(0, 80, 10);
    splitter.RecalcLayout();
    splitter.drawn.clear();
    Settle();
    const auto has = [this](CSplitterWnd::ESplitType type, const CRect& rect) {
        return std::any_of(splitter.drawn.begin(), splitter.drawn.end(),
                           [&](const auto& d) { return d.type == type && d.rect == rect; });
    };
    EXPECT_EQ(splitter.drawn.size(), 7u);
    EXPECT_TRUE(has(CSplitterWnd::splitBar, {100, 0, 107, 300}));
    EXPECT_TRUE(has(CSplitterWnd::splitBar, {0, 80, 400, 87}));
    EXPECT_TRUE(has(CSplitterWnd::splitIntersection, {100, 80, 107, 87}));
    EXPECT_TRUE(has(CSplitterWnd::splitBorder, {107, 87, 400, 300}));
    const Picture picture = PictureOfClient(parent);
    EXPECT_EQ(picture.At(103, 40), ::GetSysColor(COLOR_3DFACE));
    EXPECT_EQ(picture.At(103, 83), ::GetSysColor(COLOR_3DFACE));
    EXPECT_EQ(picture.At(99, 40), kPaneColour);
    EXPECT_EQ(picture.At(107, 40), kPaneColour);
    EXPECT_EQ(picture.CountOf(kPaneColour), 393 * 293);
}

TEST_F(SplitterPanes, BoxesOfADynamicSplitterAreDrawn) {
    MakeDynamic(2, 2);
    splitter.drawn.clear();
    ::InvalidateRect(splitter.m_hWnd, nullptr, TRUE);
    Settle();
    std::vector<CRect> boxes;
    for (const auto& d : splitter.drawn)
        if (d.type == CSplitterWnd::splitBox) boxes.push_back(d.rect);
    ASSERT_EQ(boxes.size(), 3u);
    EXPECT_TRUE(boxes[0] == CRect(0, 7, 7, 300));
    EXPECT_TRUE(boxes[1] == CRect(7, 0, 400, 7));
    EXPECT_TRUE(boxes[2] == CRect(0, 0, 7, 7));
}

TEST_F(SplitterPanes, PlaceWithoutAPaneIsFilled) {
    ASSERT_TRUE(splitter.CreateStatic(parent, 1, 2));
    Fill();
    Settle();
    const Picture picture = PictureOfClient(parent);
    EXPECT_EQ(picture.CountOf(parent.background), 0);
    EXPECT_EQ(picture.At(200, 150), ::GetSysColor(COLOR_3DFACE));
}

TEST_F(SplitterPanes, WithoutAContextTheRectangleIsDrawnLater) {
    MakeStatic(1, 2);
    splitter.SetColumnInfo(0, 100, 10);
    splitter.RecalcLayout();
    Settle();
    const Picture before = PictureOfClient(parent);
    const CRect part(100, 10, 107, 30);
    splitter.OnDrawSplitter(nullptr, CSplitterWnd::splitBar, part);
    CRect area;
    EXPECT_TRUE(::GetUpdateRect(splitter.m_hWnd, &area, FALSE));
    EXPECT_TRUE(area == part);
    EXPECT_FALSE(::GetUpdateRect(splitter.Pane(0, 0), nullptr, FALSE));
    EXPECT_EQ(PictureOfClient(parent), before) << "nothing is drawn yet";
}

TEST_F(SplitterPanes, SplitterInASplitterFollowsItsPane) {
    ASSERT_TRUE(splitter.CreateStatic(parent, 1, 2));
    Fill();
    splitter.MakePane(0, 0);
    TestSplitter inner;
    ASSERT_TRUE(
        inner.CreateStatic(splitter.m_hWnd, 2, 1, WS_CHILD | WS_VISIBLE, splitter.IdFromRowCol(0, 1)));
    inner.MakeAllPanes();
    inner.SetRowInfo(0, 60, 10);
    splitter.SetColumnInfo(0, 100, 10);
    splitter.RecalcLayout();
    EXPECT_TRUE(splitter.PlaceOf(0, 1) == CRect(107, 0, 400, 300));
    EXPECT_TRUE(inner.PlaceOf(0, 0) == CRect(0, 0, 293, 60));
    EXPECT_TRUE(inner.PlaceOf(1, 0) == CRect(0, 67, 293, 300));
    splitter.drawn.clear();
    Settle();
    const auto borders = std::count_if(splitter.drawn.begin(), splitter.drawn.end(),
                                       [](const auto& d) { return d.type == CSplitterWnd::splitBorder; });
    EXPECT_EQ(borders, 1) << "the inner splitter frames its own panes";
    ASSERT_TRUE(BringToFront(parent));
    splitter.SetActivePane(0, 1);
    EXPECT_EQ(::GetFocus(), inner.Pane(0, 0));
}

TEST_F(SplitterPanes, ComeAndGoWithoutLeavingObjects) {
    const auto round = [this] {
        TestSplitter one;
        ASSERT_TRUE(one.Create(parent, 2, 2, {10, 10}));
        ::MoveWindow(one.m_hWnd, 0, 0, 200, 200, TRUE);
        ASSERT_TRUE(one.SplitColumn(50));
        ASSERT_TRUE(one.SplitRow(50));
        Settle();
        one.DeleteColumn(1);
        Settle();
    };
    for (int i = 0; i < 3; ++i) round();
    const long gdi = GdiObjectCount();
    const int user = CountUserObjects();
    for (int i = 0; i < 10; ++i) round();
    EXPECT_LE(GdiObjectCount(), gdi + 1);
    EXPECT_EQ(CountUserObjects(), user);
}

}  // namespace
}  // namespace tavix_test
