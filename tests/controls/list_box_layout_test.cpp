// The arithmetic of list boxes, without windows.
#include "controls/list_box_layout.h"

#include <gtest/gtest.h>

namespace tavix_test {
namespace {

using tavix::HitTestList;
using tavix::ItemMarks;
using tavix::ListHit;
using tavix::ListLayout;
using tavix::ListPart;
using tavix::RowsThatFit;
using tavix::ScrollStep;
using tavix::ScrollStepOf;

TEST(ListBoxLayout, RowOfWhichFourFifthsShowCounts) {
    EXPECT_EQ(RowsThatFit(96, 12, false), 8);
    EXPECT_EQ(RowsThatFit(100, 12, false), 8);
    EXPECT_EQ(RowsThatFit(105, 12, false), 8);
    EXPECT_EQ(RowsThatFit(106, 12, false), 9);
    EXPECT_EQ(RowsThatFit(106, 12, true), 8);
    // Exactly four fifths.
    EXPECT_EQ(RowsThatFit(18, 10, false), 2);
    EXPECT_EQ(RowsThatFit(17, 10, false), 1);
    EXPECT_EQ(RowsThatFit(9, 12, false), 0);
    EXPECT_EQ(RowsThatFit(10, 12, false), 1);
}

TEST(ListBoxLayout, RowsOfNothingAreNone) {
    EXPECT_EQ(RowsThatFit(0, 12, false), 0);
    EXPECT_EQ(RowsThatFit(-5, 12, false), 0);
    EXPECT_EQ(RowsThatFit(96, 0, false), 0);
}

TEST(ListBoxLayout, RowsAgreeWithTheRuleForEveryHeight) {
    for (int item = 1; item <= 60; ++item)
        for (int height = 1; height <= 400; ++height) {
            const int whole = height / item;
            const int more = 5 * (height % item) >= 4 * item ? 1 : 0;
            ASSERT_EQ(RowsThatFit(height, item, false), whole + more) << height << " by " << item;
            ASSERT_EQ(RowsThatFit(height, item, true), whole);
        }
}

TEST(ListBoxLayout, ColumnsAreAtMost150Wide) {
    EXPECT_EQ(tavix::ColumnWidthOf(400, true), 150);
    EXPECT_EQ(tavix::ColumnWidthOf(120, true), 120);
    EXPECT_EQ(tavix::ColumnWidthOf(400, false), 400);
    EXPECT_EQ(tavix::ColumnsThatFit(300, 150), 2);
    EXPECT_EQ(tavix::ColumnsThatFit(301, 150), 3);
    EXPECT_EQ(tavix::ColumnsThatFit(299, 150), 2);
    EXPECT_EQ(tavix::ColumnsThatFit(120, 120), 1);
    EXPECT_EQ(tavix::ColumnsThatFit(120, 0), 0);
}

TEST(ListBoxLayout, TopItemLeavesNoMoreRoomThanItHasTo) {
    EXPECT_EQ(tavix::BoundedTopItem(3, 8, 20), 3);
    EXPECT_EQ(tavix::BoundedTopItem(12, 8, 20), 12);
    EXPECT_EQ(tavix::BoundedTopItem(15, 8, 20), 12);
    EXPECT_EQ(tavix::BoundedTopItem(15, 8, 5), 0);
    EXPECT_EQ(tavix::BoundedTopItem(-3, 8, 20), 0);
}

// ---------------------------------------------------------------- hits

ListLayout Single(int top = 0, int count = 20) {
    return {CRect(0, 0, 200, 96), top, 8, 1, 200, 12, count, false};
}
ListHit HitOf(int item) { return {ListPart::Item, item}; }

TEST(ListBoxHitTest, TellsTheParts) {
    const tavix::BarExtents bars{17, 0};
    EXPECT_EQ(HitTestList(Single(), bars, {-1, 5}), (ListHit{ListPart::Outside, -1}));
    EXPECT_EQ(HitTestList(Single(), bars, {5, 96}), (ListHit{ListPart::Outside, -1}));
    EXPECT_EQ(HitTestList(Single(), bars, {200, 5}), (ListHit{ListPart::Outside, -1}));
    EXPECT_EQ(HitTestList(Single(), bars, {183, 5}), (ListHit{ListPart::VertBar, -1}));
    EXPECT_EQ(HitTestList(Single(), bars, {182, 5}), HitOf(0));
    EXPECT_EQ(HitTestList(Single(), {17, 17}, {5, 79}), (ListHit{ListPart::HorzBar, -1}));
    EXPECT_EQ(HitTestList(Single(), {17, 17}, {190, 90}), (ListHit{ListPart::VertBar, -1}));
    EXPECT_EQ(HitTestList(Single(0, 2), bars, {5, 24}), (ListHit{ListPart::Nothing, -1}));
    EXPECT_EQ(HitTestList(Single(0, 0), bars, {5, 5}), (ListHit{ListPart::Nothing, -1}));
}

TEST(ListBoxHitTest, RowsCountFromTheTopItem) {
    EXPECT_EQ(HitTestList(Single(), {}, {0, 0}), HitOf(0));
    EXPECT_EQ(HitTestList(Single(), {}, {0, 11}), HitOf(0));
    EXPECT_EQ(HitTestList(Single(), {}, {199, 12}), HitOf(1));
    EXPECT_EQ(HitTestList(Single(5), {}, {0, 95}), HitOf(12));
    EXPECT_EQ(HitTestList(Single(12), {}, {0, 95}), HitOf(19));
    EXPECT_EQ(HitTestList(Single(18), {}, {0, 24}), (ListHit{ListPart::Nothing, -1}));
}

TEST(ListBoxHitTest, TheRowBelowThoseThatFitCanBeHit) {
    ListLayout layout = Single();
    layout.client.bottom = 100;
    EXPECT_EQ(HitTestList(layout, {}, {0, 98}), HitOf(8));
}

TEST(ListBoxHitTest, AColumnsWidthBoundsTheRow) {
    ListLayout layout = Single();
    layout.columnWidth = 183;
    EXPECT_EQ(HitTestList(layout, {}, {182, 0}), HitOf(0));
    EXPECT_EQ(HitTestList(layout, {}, {183, 0}), (ListHit{ListPart::Nothing, -1}));
}

// Columns move rows to the right and not up again, so that only the first column can be hit.
TEST(ListBoxHitTest, FurtherColumnsLieBelowTheClientArea) {
    const ListLayout layout{CRect(0, 0, 400, 96), 0, 8, 3, 150, 12, 60, true};
    EXPECT_EQ(HitTestList(layout, {}, {149, 0}), HitOf(0));
    EXPECT_EQ(HitTestList(layout, {}, {150, 0}), (ListHit{ListPart::Nothing, -1}));
    EXPECT_EQ(HitTestList(layout, {}, {10, 95}), HitOf(7));
    ListLayout tall = layout;
    tall.client.bottom = 300;
    EXPECT_EQ(HitTestList(tall, {}, {150, 96}), HitOf(8));
    EXPECT_EQ(HitTestList(tall, {}, {149, 96}), (ListHit{ListPart::Nothing, -1}));
}

TEST(ListBoxHitTest, BoundOfColumnsDoesNotMoveWithTheTopItem) {
    const ListLayout layout{CRect(0, 0, 400, 96), 25, 8, 3, 150, 12, 60, true};
    EXPECT_EQ(HitTestList(layout, {}, {10, 0}), (ListHit{ListPart::Nothing, -1}));
    ListLayout close = layout;
    close.top = 24;
    EXPECT_EQ(HitTestList(close, {}, {460, 0}), (ListHit{ListPart::Outside, -1}));
    close.client.right = 600;
    EXPECT_EQ(HitTestList(close, {}, {460, 0}), HitOf(24));
}

TEST(ListBoxHitTest, OddLayoutsHitNoItemThatIsNotThere) {
    for (int top : {-50, -1, 0, 19, 20, 70'000})
        for (int rows : {0, 1, 8})
            for (bool several : {false, true})
                for (int y = 0; y < 96; y += 5) {
                    ListLayout layout = Single(top);
                    layout.rows = rows;
                    layout.multiColumn = several;
                    const ListHit hit = HitTestList(layout, {}, {10, y});
                    if (hit.part == ListPart::Item) {
                        EXPECT_GE(hit.item, 0);
                        EXPECT_LT(hit.item, 20);
                    } else {
                        EXPECT_EQ(hit.item, -1);
                    }
                }
}

// ---------------------------------------------------------------- scrolling

using Step = std::optional<ScrollStep>;

TEST(ListBoxScrollStep, FollowsTheTable) {
    // 20 items, 8 rows; the bar stands elsewhere, to tell its steps apart.
    EXPECT_EQ(ScrollStepOf(SB_LINEUP, 0, 30, Single(0)), std::nullopt);
    EXPECT_EQ(ScrollStepOf(SB_LINEUP, 0, 30, Single(1)), Step({0, 29}));
    EXPECT_EQ(ScrollStepOf(SB_LINEDOWN, 0, 30, Single(11)), Step({12, 31}));
    EXPECT_EQ(ScrollStepOf(SB_LINEDOWN, 0, 30, Single(12)), std::nullopt);
    EXPECT_EQ(ScrollStepOf(SB_PAGEUP, 0, 30, Single(8)), Step({0, 22}));
    EXPECT_EQ(ScrollStepOf(SB_PAGEUP, 0, 30, Single(7)), Step({0, 23}));
    EXPECT_EQ(ScrollStepOf(SB_PAGEUP, 0, 30, Single(0)), Step({0, 30}));
    EXPECT_EQ(ScrollStepOf(SB_PAGEDOWN, 0, 3, Single(3)), Step({11, 11}));
    EXPECT_EQ(ScrollStepOf(SB_PAGEDOWN, 0, 3, Single(4)), Step({12, 11}));
    EXPECT_EQ(ScrollStepOf(SB_PAGEDOWN, 0, 15, Single(11)), Step({12, 19}));
    EXPECT_EQ(ScrollStepOf(SB_PAGEDOWN, 0, 3, Single(12)), std::nullopt);
    EXPECT_EQ(ScrollStepOf(SB_THUMBPOSITION, 6, 30, Single(2)), Step({6, 6}));
    EXPECT_EQ(ScrollStepOf(SB_THUMBTRACK, 7, 30, Single(2)), Step({7, 7}));
    EXPECT_EQ(ScrollStepOf(SB_BOTTOM, 0, 30, Single(2)), Step({11, 19}));
    EXPECT_EQ(ScrollStepOf(SB_BOTTOM, 0, 30, Single(12)), Step({12, 19}));
    EXPECT_EQ(ScrollStepOf(SB_TOP, 0, 30, Single(5)), std::nullopt);
    EXPECT_EQ(ScrollStepOf(SB_ENDSCROLL, 0, 30, Single(5)), std::nullopt);
    EXPECT_EQ(ScrollStepOf(99, 0, 30, Single(5)), std::nullopt);
}

// ---------------------------------------------------------------- marks

TEST(ListBoxMarks, MissingMarksCountAsUnmarked) {
    ItemMarks marks;
    EXPECT_FALSE(marks.Has(0));
    EXPECT_FALSE(marks.Has(-1));
    marks.Set(5, false);
    EXPECT_EQ(marks.Length(), 0);
    marks.Set(5, true);
    EXPECT_EQ(marks.Length(), 6);
    EXPECT_TRUE(marks.Has(5));
    EXPECT_EQ(marks.Count(), 1);
    marks.Set(-1, true);
    EXPECT_EQ(marks.Count(), 1);
}

TEST(ListBoxMarks, InsertedItemsMoveTheMarksBehindThem) {
    ItemMarks marks;
    for (int i = 0; i < 3; ++i) marks.Insert(i);
    marks.Set(1, true);
    marks.Insert(1);
    EXPECT_FALSE(marks.Has(1));
    EXPECT_TRUE(marks.Has(2));
    marks.Insert(100);
    EXPECT_EQ(marks.Length(), 5);
    marks.Remove(100);
    marks.Remove(-1);
    EXPECT_EQ(marks.Length(), 5);
    marks.Remove(0);
    EXPECT_TRUE(marks.Has(1));
}

}  // namespace
}  // namespace tavix_test
