// The splitter that hosts make: its metrics, its drawing, and columns that stop at their minimum.
#include "tavixskin/skin_splitter_wnd.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "main/gui_objects.h"
#include "support/skinned_thread.h"
#include "support/window_probe.h"
#include "tavixskin.h"

namespace tavix_test {
namespace {

constexpr COLORREF kGround = 0xE3E3E3;
constexpr COLORREF kBack = RGB(1, 2, 3);
using Info = CSplitterWnd::CRowColInfo;
using Sizes = std::vector<int>;

/* Opens a splitter class, and makes panes of one colour. */
template <class Splitter>
class Opened : public Splitter {
public:
    using Splitter::GetHitRect;
    using Splitter::GetPaneRect;
    using Splitter::m_cxBorder;
    using Splitter::m_cxBorderShare;
    using Splitter::m_cxSplitter;
    using Splitter::m_cxSplitterGap;
    using Splitter::m_cyBorder;
    using Splitter::m_cyBorderShare;
    using Splitter::m_cySplitter;
    using Splitter::m_cySplitterGap;
    using Splitter::m_pColInfo;
    using Splitter::m_pRowInfo;
    using Splitter::OnDrawSplitter;
    using Splitter::TrackColumnSize;
    using Splitter::TrackRowSize;

    bool keepsColumns = false;  // columns to be deleted are only noted
    std::vector<int> deleted;

    void DeleteColumn(int column) override {
        deleted.push_back(column);
        if (!keepsColumns) Splitter::DeleteColumn(column);
    }
    HWND MakePane(int row, int column) {
        return CreateControl(Charset::Ansi, this->m_hWnd, "Static", "", SS_WHITERECT, {0, 0, 5, 5},
                             static_cast<int>(this->IdFromRowCol(row, column)));
    }
    void MakeAllPanes() {
        for (int row = 0; row < this->GetRowCount(); ++row)
            for (int column = 0; column < this->GetColumnCount(); ++column) MakePane(row, column);
        this->RecalcLayout();
    }
    Sizes Widths() const {
        Sizes all;
        for (int i = 0; i < this->GetColumnCount(); ++i)
            all.push_back(m_pColInfo[static_cast<std::size_t>(i)].nCurSize);
        return all;
    }
    CPoint MiddleOf(const CSplitterWnd::CHit& hit) const {
        const CRect rect = GetHitRect(hit);
        return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    }

protected:
    CWnd* CreatePane(int row, int column) override { return CWnd::FromHandle(MakePane(row, column)); }
};
using SkinSplitter = Opened<CSkinSplitterWnd>;
using BaseSplitter = Opened<CSplitterWnd>;

class SkinSplitterTest : public testing::Test {
protected:
    static constexpr SIZE kClient{400, 300};

    static void SetUpTestSuite() { ParkMouse(); }
    void TearDown() override {
        if (::GetAsyncKeyState(VK_LBUTTON) < 0) ReleaseMouse();
        ParkMouse();
    }
    void Show(CSplitterWnd& shown) {
        ::MoveWindow(shown.m_hWnd, 0, 0, kClient.cx, kClient.cy, TRUE);
        Settle();
    }
    void Settle() {
        ::RedrawWindow(parent, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        PumpMessages();
    }
    /* Columns of 100 pixels and what remains. */
    void MakeStatic(int rows, int columns) {
        ASSERT_TRUE(splitter.CreateStatic(parent, rows, columns));
        for (int i = 0; i < columns; ++i) splitter.SetColumnInfo(i, 100, 30);
        for (int i = 0; i < rows; ++i) splitter.SetRowInfo(i, 80, 25);
        splitter.MakeAllPanes();
        Show(splitter);
    }
    void MakeDynamic() {
        ASSERT_TRUE(splitter.Create(parent, 2, 2, {30, 25}));
        Show(splitter);
        ASSERT_TRUE(splitter.SplitColumn(100));
        Settle();
    }
    void Drag(POINT from, POINT to) {
        MoveMouse(splitter.m_hWnd, from);
        PressMouse();
        EXPECT_TRUE(splitter.IsTracking());
        MoveMouse(splitter.m_hWnd, to);
        ReleaseMouse();
        Settle();
    }
    /* Where a drag has to end for the column to get that width. */
    int DragTo(int column, int width) const { return splitter.GetPaneRect(0, column).left + width; }

    TestSkin skin;
    SkinnedThread thread{skin};
    ProbeWindow parent;
    SkinSplitter splitter;
};

// ---------------------------------------------------------------- what it is

TEST_F(SkinSplitterTest, HasWiderBarsAndAThinBorder) {
    const BaseSplitter base;
    EXPECT_EQ(splitter.m_cxSplitter, base.m_cxSplitter + 2);
    EXPECT_EQ(splitter.m_cySplitter, base.m_cySplitter + 2);
    EXPECT_EQ(splitter.m_cxSplitterGap, base.m_cxSplitterGap + 2);
    EXPECT_EQ(splitter.m_cySplitterGap, base.m_cySplitterGap + 2);
    EXPECT_EQ(splitter.m_cxBorderShare, 1);
    EXPECT_EQ(splitter.m_cyBorderShare, 1);
    EXPECT_EQ(splitter.m_cxBorder, 1);
    EXPECT_EQ(splitter.m_cyBorder, 1);
}

TEST_F(SkinSplitterTest, AddsNoMemberToItsBase) {
    EXPECT_EQ(sizeof(CSkinSplitterWnd), sizeof(CSplitterWnd));
    EXPECT_TRUE(splitter.IsKindOf(RUNTIME_CLASS(CSplitterWnd)));
    EXPECT_STREQ(splitter.GetRuntimeClass()->m_lpszClassName, "CSkinSplitterWnd");
}

TEST_F(SkinSplitterTest, IsNotSkinnedItself) {
    MakeStatic(1, 2);
    EXPECT_FALSE(IsSkinned(splitter.m_hWnd));
}

// ---------------------------------------------------------------- drawing

// A row of the table of parts: the colour of a pixel by its distance from the nearest edge.
struct PartRow {
    int type;
    const char* name;
    COLORREF outer, inner, inside;  // kBack: not drawn
};

class SkinSplitterParts : public SkinSplitterTest {
protected:
    Picture Draw(int type, const CRect& rect) {
        Canvas canvas(40, 30, kBack);
        CDC dc(canvas.Dc());
        splitter.OnDrawSplitter(&dc, static_cast<CSplitterWnd::ESplitType>(type), rect);
        dc.Detach();
        return canvas.Take();
    }
    static Picture Expected(const PartRow& row, const CRect& rect) {
        Picture picture{40, 30, {}};
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x) {
                const int depth =
                    std::min({x - rect.left, y - rect.top, rect.right - 1 - x, rect.bottom - 1 - y});
                picture.pixels.push_back(depth < 0    ? kBack
                                         : depth == 0 ? row.outer
                                         : depth == 1 ? row.inner
                                                      : row.inside);
            }
        return picture;
    }
    std::vector<PartRow> Rows() const {
        return {{0, "box", kGround, kGround, kGround},
                {1, "bar", kGround, kGround, kGround},
                {2, "intersection", kGround, kGround, kGround},
                {3, "border", skin.Colour(61), skin.Colour(60), kBack},
                {4, "any other", kGround, kGround, kGround},
                {-1, "any other", kGround, kGround, kGround},
                {1000, "any other", kGround, kGround, kGround}};
    }
};

TEST_F(SkinSplitterParts, AreDrawnAsTheTableOfPartsSays) {
    ASSERT_NE(skin.Colour(60), skin.Colour(61));
    for (const PartRow& row : Rows())
        for (const CRect& rect : {CRect(3, 4, 33, 24), CRect(0, 0, 40, 30), CRect(5, 6, 12, 29),
                                  CRect(2, 3, 8, 9), CRect(2, 3, 7, 8)})
            EXPECT_EQ(Draw(row.type, rect), Expected(row, rect)) << row.name << " in " << rect.Width();
}

TEST_F(SkinSplitterParts, ConstantsOfTheKindsOfPartAreTheTables) {
    EXPECT_EQ(CSplitterWnd::splitBox, 0);
    EXPECT_EQ(CSplitterWnd::splitBar, 1);
    EXPECT_EQ(CSplitterWnd::splitIntersection, 2);
    EXPECT_EQ(CSplitterWnd::splitBorder, 3);
}

TEST_F(SkinSplitterParts, BorderTakesItsColoursAtEachPainting) {
    skin.SetColour(60, RGB(9, 8, 7)).SetColour(61, RGB(70, 80, 90));
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    const CRect rect(3, 4, 33, 24);
    const PartRow row{3, "border", RGB(70, 80, 90), RGB(9, 8, 7), kBack};
    EXPECT_EQ(Draw(3, rect), Expected(row, rect));
}

TEST_F(SkinSplitterParts, WithoutAContextTheRectangleIsOnlyInvalidated) {
    MakeStatic(1, 2);
    const CRect part = CRect(splitter.GetHitRect({-1, 0}).left, 10, splitter.GetHitRect({-1, 0}).right, 30);
    const Picture before = PictureOfClient(parent);
    for (const int type : {0, 1, 2, 3, 4}) {
        ::ValidateRect(splitter.m_hWnd, nullptr);
        splitter.OnDrawSplitter(nullptr, static_cast<CSplitterWnd::ESplitType>(type), part);
        CRect area;
        ASSERT_TRUE(::GetUpdateRect(splitter.m_hWnd, &area, FALSE));
        EXPECT_TRUE(area == part);
        EXPECT_FALSE(::GetUpdateRect(splitter.GetPane(0, 0)->m_hWnd, nullptr, FALSE)) << "not the panes";
        EXPECT_EQ(PictureOfClient(parent), before);
    }
}

TEST_F(SkinSplitterParts, MakeUpTheWholeWindow) {
    MakeStatic(1, 2);
    const Picture picture = PictureOfClient(parent);
    const CRect left = splitter.GetPaneRect(0, 0), right = splitter.GetPaneRect(0, 1);
    EXPECT_TRUE(left == CRect(1, 1, 101, 299));
    EXPECT_TRUE(right == CRect(110, 1, 399, 299));
    EXPECT_EQ(picture.At(0, 0), skin.Colour(61));
    EXPECT_EQ(picture.At(100, 150), picture.At(1, 1)) << "the inner line lies below the pane";
    EXPECT_EQ(picture.At(101, 150), skin.Colour(61));
    for (int x = 102; x < 109; ++x) EXPECT_EQ(picture.At(x, 150), kGround) << x;
    EXPECT_EQ(picture.At(109, 150), skin.Colour(61));
    EXPECT_EQ(picture.At(399, 299), skin.Colour(61));
    EXPECT_EQ(picture.CountOf(skin.Colour(60)), 0);
    EXPECT_EQ(picture.CountOf(parent.background), 0);
}

TEST(SkinSplitterWithoutASkin, DrawsItsBorderInBlack) {
    SkinSplitter splitter;
    Canvas canvas(20, 20, kBack);
    CDC dc(canvas.Dc());
    splitter.OnDrawSplitter(&dc, CSplitterWnd::splitBorder, CRect(0, 0, 20, 20));
    splitter.OnDrawSplitter(&dc, CSplitterWnd::splitBar, CRect(5, 5, 9, 9));
    dc.Detach();
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(0, 0), 0u);
    EXPECT_EQ(picture.At(1, 1), 0u);
    EXPECT_EQ(picture.At(2, 2), kBack);
    EXPECT_EQ(picture.CountOf(kGround), 16);
}

// ---------------------------------------------------------------- columns, by the mouse

TEST_F(SkinSplitterTest, ColumnFollowsTheDrag) {
    MakeStatic(1, 2);
    Drag(splitter.MiddleOf({-1, 0}), {splitter.MiddleOf({-1, 0}).x + 60, 80});
    EXPECT_EQ(splitter.Widths(), (Sizes{160, 229}));
}

TEST_F(SkinSplitterTest, ColumnDraggedBelowItsMinimumEndsAtItsMinimum) {
    MakeStatic(1, 2);
    Drag(splitter.MiddleOf({-1, 0}), {8, 80});
    EXPECT_EQ(splitter.Widths(), (Sizes{30, 359}));
    EXPECT_EQ(splitter.m_pColInfo[0].nIdealSize, 30);
}

TEST_F(SkinSplitterTest, DynamicColumnDraggedBelowItsMinimumIsNotDeleted) {
    MakeDynamic();
    HWND first = splitter.GetPane(0, 0)->m_hWnd;
    Drag(splitter.MiddleOf({-1, 0}), {8, 80});
    EXPECT_EQ(splitter.GetColumnCount(), 2);
    EXPECT_EQ(splitter.Widths()[0], 30);
    EXPECT_TRUE(::IsWindow(first));
    EXPECT_TRUE(splitter.deleted.empty());
}

TEST_F(SkinSplitterTest, DragThatWouldSqueezeTheNextColumnHasNoEffect) {
    MakeStatic(1, 2);
    Drag(splitter.MiddleOf({-1, 0}), {395, 80});
    EXPECT_EQ(splitter.m_pColInfo[0].nIdealSize, 100);
    EXPECT_EQ(splitter.Widths(), (Sizes{100, 289}));
}

TEST_F(SkinSplitterTest, DynamicColumnIsNotSqueezedAwayEither) {
    MakeDynamic();
    Drag(splitter.MiddleOf({-1, 0}), {395, 80});
    EXPECT_EQ(splitter.GetColumnCount(), 2);
    EXPECT_EQ(splitter.Widths()[0], 100);
    EXPECT_TRUE(splitter.deleted.empty());
}

TEST_F(SkinSplitterTest, ColumnStopsJustWhereTheNextHasItsMinimum) {
    MakeStatic(1, 2);
    splitter.TrackColumnSize(DragTo(0, 359), 0);
    EXPECT_EQ(splitter.m_pColInfo[0].nIdealSize, 359);
    splitter.RecalcLayout();
    EXPECT_EQ(splitter.Widths(), (Sizes{359, 30}));
    splitter.TrackColumnSize(DragTo(0, 360), 0);
    EXPECT_EQ(splitter.m_pColInfo[0].nIdealSize, 359) << "one pixel more has no effect";
}

TEST_F(SkinSplitterTest, TwoColumnsTooSmallForBothMinimumsLoseTheFirst) {
    MakeStatic(1, 2);
    ::MoveWindow(splitter.m_hWnd, 0, 0, 60, 300, TRUE);
    splitter.TrackColumnSize(DragTo(0, 40), 0);
    EXPECT_EQ(splitter.m_pColInfo[0].nIdealSize, 0);
    splitter.RecalcLayout();
    EXPECT_EQ(splitter.Widths(), (Sizes{0, 49}));
    EXPECT_EQ(splitter.GetColumnCount(), 2) << "a static splitter deletes none";
}

TEST_F(SkinSplitterTest, TwoDynamicColumnsTooSmallForBothMinimumsLoseTheFirstForGood) {
    MakeDynamic();
    ::MoveWindow(splitter.m_hWnd, 0, 0, 60, 300, TRUE);
    HWND first = splitter.GetPane(0, 0)->m_hWnd, second = splitter.GetPane(0, 1)->m_hWnd;
    splitter.TrackColumnSize(DragTo(0, 40), 0);
    EXPECT_EQ(splitter.deleted, (Sizes{0}));
    EXPECT_FALSE(::IsWindow(first));
    EXPECT_EQ(splitter.GetPane(0, 0)->m_hWnd, second);
}

TEST_F(SkinSplitterTest, ColumnWithoutANextOneIsNotTracked) {
    MakeStatic(1, 2);
    const auto before = splitter.m_pColInfo;
    for (const int column : {-1, 1, 2, 15, 16, 100000}) splitter.TrackColumnSize(40, column);
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(splitter.m_pColInfo[i].nIdealSize, before[i].nIdealSize);
    SkinSplitter windowless;
    windowless.TrackColumnSize(40, 0);
    EXPECT_EQ(windowless.m_pColInfo[0].nIdealSize, 0);
}

// ---------------------------------------------------------------- columns, against a plain model

struct Outcome {
    int ideal;
    std::vector<int> deleted;
    bool operator==(const Outcome&) const = default;
};

Outcome Model(int size, const Info& info, const Info& next, bool isDynamic) {
    Outcome outcome{info.nIdealSize, {}};
    if (size < info.nMinSize)
        outcome.ideal = size = info.nMinSize;
    else if (info.nCurSize + next.nCurSize < size + next.nMinSize)
        size = info.nCurSize + next.nCurSize - next.nMinSize;
    else
        outcome.ideal = size;
    if (size < info.nMinSize) {
        outcome.ideal = 0;
        if (isDynamic) outcome.deleted = {0};
    } else if (info.nCurSize + next.nCurSize < size + next.nMinSize) {
        if (isDynamic) outcome.deleted = {1};
    }
    return outcome;
}

class SkinSplitterModel : public SkinSplitterTest {
protected:
    void Compare(bool isDynamic) {
        splitter.keepsColumns = true;
        std::mt19937 random(84);
        const auto upTo = [&random](int end) {
            return static_cast<int>(random() % static_cast<unsigned>(end + 1));
        };
        const int left = splitter.GetPaneRect(0, 0).left;
        int endsAtMinimum = 0, hasNoEffect = 0, follows = 0, loses = 0, losesNext = 0;
        for (int round = 0; round < 20000; ++round) {
            Info& info = splitter.m_pColInfo[0];
            Info& next = splitter.m_pColInfo[1];
            info = {upTo(120), upTo(200), upTo(200)};
            next = {upTo(120), upTo(200), upTo(200)};
            const int size = upTo(600) - 100;
            const Info given = info;
            const Outcome expected = Model(size, info, next, isDynamic);
            splitter.deleted.clear();
            splitter.TrackColumnSize(left + size, 0);
            ASSERT_EQ((Outcome{info.nIdealSize, splitter.deleted}), expected)
                << size << " of " << given.nMinSize << "/" << given.nIdealSize << "/" << given.nCurSize
                << " and " << next.nMinSize << "/" << next.nCurSize;
            ASSERT_EQ(info.nCurSize, given.nCurSize);
            if (expected.ideal == size) ++follows;
            if (expected.ideal == given.nMinSize && size < given.nMinSize) ++endsAtMinimum;
            if (expected.ideal == given.nIdealSize && size != given.nIdealSize) ++hasNoEffect;
            if (expected.ideal == 0 && given.nMinSize > 0) ++loses;
            if (expected.deleted == Sizes{1}) ++losesNext;
        }
        // Every branch was met.
        for (const int count : {endsAtMinimum, hasNoEffect, follows, loses}) EXPECT_GT(count, 500);
        EXPECT_TRUE(!isDynamic || losesNext > 500) << losesNext;
    }
};

TEST_F(SkinSplitterModel, StaticColumnsDoAsTheModel) {
    MakeStatic(1, 2);
    Compare(false);
}

TEST_F(SkinSplitterModel, DynamicColumnsDoAsTheModel) {
    MakeDynamic();
    Compare(true);
}

TEST_F(SkinSplitterTest, MiddleColumnIsMeasuredFromItsOwnPane) {
    MakeStatic(2, 3);
    splitter.TrackColumnSize(DragTo(1, 77), 1);
    EXPECT_EQ(splitter.m_pColInfo[0].nIdealSize, 100);
    EXPECT_EQ(splitter.m_pColInfo[1].nIdealSize, 77);
}

TEST_F(SkinSplitterTest, SizeIsMeasuredInThePanesClientArea) {
    ASSERT_TRUE(splitter.CreateStatic(parent, 1, 2));
    splitter.SetColumnInfo(0, 100, 30);
    CreateControl(Charset::Ansi, splitter.m_hWnd, "Static", "", 0, {0, 0, 5, 5},
                  static_cast<int>(splitter.IdFromRowCol(0, 0)), WS_EX_CLIENTEDGE);
    splitter.MakePane(0, 1);
    Show(splitter);
    const int edge = ::GetSystemMetrics(SM_CXEDGE);
    ASSERT_GT(edge, 0);
    splitter.TrackColumnSize(DragTo(0, 120), 0);
    EXPECT_EQ(splitter.m_pColInfo[0].nIdealSize, 120 - edge);
}

// ---------------------------------------------------------------- rows

TEST_F(SkinSplitterTest, RowDraggedBelowItsMinimumIsNotShown) {
    MakeStatic(2, 1);
    Drag(splitter.MiddleOf({0, -1}), {80, 8});
    EXPECT_EQ(splitter.m_pRowInfo[0].nIdealSize, 0);
    EXPECT_EQ(splitter.m_pRowInfo[0].nCurSize, 0);
}

TEST_F(SkinSplitterTest, DynamicRowDraggedBelowItsMinimumIsDeleted) {
    ASSERT_TRUE(splitter.Create(parent, 2, 1, {30, 25}));
    Show(splitter);
    ASSERT_TRUE(splitter.SplitRow(100));
    Settle();
    Drag(splitter.MiddleOf({0, -1}), {80, 14});
    EXPECT_EQ(splitter.GetRowCount(), 1);
}

TEST_F(SkinSplitterTest, RowsGetTheSizesOfAnOrdinarySplitter) {
    MakeStatic(2, 1);
    const int top = splitter.GetPaneRect(0, 0).top;
    for (const int size : {-10, 0, 24, 25, 100, 250, 264, 265, 400}) {
        splitter.SetRowInfo(0, 80, 25);
        splitter.RecalcLayout();
        splitter.TrackRowSize(top + size, 0);
        EXPECT_EQ(splitter.m_pRowInfo[0].nIdealSize, size < 25 ? 0 : size) << size;
    }
}

// ---------------------------------------------------------------- as a whole

TEST_F(SkinSplitterTest, StandsInAnotherOneWithoutADoubleBorder) {
    ASSERT_TRUE(splitter.CreateStatic(parent, 1, 2));
    splitter.SetColumnInfo(0, 100, 30);
    splitter.MakePane(0, 0);
    SkinSplitter inner;
    ASSERT_TRUE(
        inner.CreateStatic(splitter.m_hWnd, 2, 1, WS_CHILD | WS_VISIBLE, splitter.IdFromRowCol(0, 1)));
    inner.SetRowInfo(0, 80, 25);
    inner.MakeAllPanes();
    Show(splitter);
    const Picture picture = PictureOfClient(parent);
    const CRect place = splitter.GetPaneRect(0, 1);
    EXPECT_EQ(picture.At(place.left - 1, 200), kGround);
    EXPECT_EQ(picture.At(place.left, 200), skin.Colour(61)) << "the inner one's border";
    EXPECT_EQ(picture.At(399, 200), kGround);
    EXPECT_EQ(picture.At(398, 200), skin.Colour(61));
    EXPECT_EQ(picture.CountOf(parent.background), 0);
    const CPoint bar = inner.MiddleOf({0, -1});
    EXPECT_EQ(picture.At(place.left + bar.x, place.top + bar.y), kGround);
}

TEST_F(SkinSplitterTest, ComesAndGoesWithoutLeavingObjects) {
    const auto round = [this] {
        SkinSplitter one;
        ASSERT_TRUE(one.Create(parent, 2, 2, {10, 10}));
        Show(one);
        ASSERT_TRUE(one.SplitColumn(50));
        ASSERT_TRUE(one.SplitRow(50));
        Settle();
        MoveMouse(one.m_hWnd, one.MiddleOf({-1, 0}));
        PressMouse();
        MoveMouse(one.m_hWnd, {200, 200});
        ReleaseMouse();
        Settle();
    };
    for (int i = 0; i < 3; ++i) round();
    const long gdi = GdiObjectCount();
    const int user = CountUserObjects();
    for (int i = 0; i < 8; ++i) round();
    EXPECT_LE(GdiObjectCount(), gdi + 1);
    EXPECT_EQ(CountUserObjects(), user);
}

}  // namespace
}  // namespace tavix_test
