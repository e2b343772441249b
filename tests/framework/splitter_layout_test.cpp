// The arithmetic of a splitter, without windows.
#include "framework/splitter_layout.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <vector>

namespace {

using Info = CSplitterWnd::CRowColInfo;
using Line = std::vector<Info>;

std::vector<int> LayOut(Line line, int total, int gap) {
    tavix::LayOutPanes(line, total, gap);
    std::vector<int> sizes;
    for (const Info& pane : line) sizes.push_back(pane.nCurSize);
    return sizes;
}

using Sizes = std::vector<int>;

TEST(SplitterLayout, PanesGetWhatTheyAskForAndTheLastOneTheRest) {
    EXPECT_EQ(LayOut({{0, 100, 0}, {0, 50, 0}, {0, 1, 0}}, 314, 7), (Sizes{100, 50, 150}));
}

TEST(SplitterLayout, OnePaneGetsAllEvenBelowItsMinimum) {
    EXPECT_EQ(LayOut({{40, 5, 0}}, 30, 7), (Sizes{30}));
    EXPECT_EQ(LayOut({{40, 5, 0}}, -30, 7), (Sizes{0}));
    tavix::LayOutPanes({}, 100, 7);
}

TEST(SplitterLayout, PaneBelowItsMinimumIsNotShownAndTheOthersShareItsRoom) {
    EXPECT_EQ(LayOut({{30, 29, 0}, {0, 1, 0}}, 107, 7), (Sizes{0, 100})) << "the first";
    EXPECT_EQ(LayOut({{0, 30, 0}, {20, 19, 0}, {0, 1, 0}}, 114, 7), (Sizes{30, 0, 70})) << "in the middle";
    EXPECT_EQ(LayOut({{0, 90, 0}, {20, 50, 0}}, 107, 7), (Sizes{100, 0})) << "the last";
    EXPECT_EQ(LayOut({{30, 30, 0}, {0, 1, 0}}, 107, 7), (Sizes{30, 70})) << "just large enough";
}

TEST(SplitterLayout, WithoutRoomForAnyMinimumTheLastPaneGetsAll) {
    EXPECT_EQ(LayOut({{60, 60, 0}, {60, 60, 0}}, 47, 7), (Sizes{0, 40}));
}

TEST(SplitterLayout, WithoutRoomForTheGapsNothingIsShown) {
    EXPECT_EQ(LayOut({{0, 60, 0}, {0, 60, 0}, {0, 60, 0}}, 13, 7), (Sizes{0, 0, 0}));
    EXPECT_EQ(LayOut({{0, 60, 0}, {0, 60, 0}}, -100, 7), (Sizes{0, 0}));
}

TEST(SplitterLayout, SharesEveryPixelOutWhateverIsAskedFor) {
    std::mt19937 random(7);
    const auto upTo = [&random](int end) {
        return static_cast<int>(random() % static_cast<unsigned>(end + 1));
    };
    for (int round = 0; round < 20000; ++round) {
        Line line(static_cast<std::size_t>(1 + upTo(15)));
        for (Info& pane : line) pane = {upTo(60), upTo(150), upTo(500)};
        const int gap = upTo(12), total = upTo(900);
        const Line asked = line;
        tavix::LayOutPanes(line, total, gap);
        const int gaps = gap * static_cast<int>(line.size() - 1);
        int sum = 0, below = 0;
        for (std::size_t i = 0; i < line.size(); ++i) {
            ASSERT_GE(line[i].nCurSize, 0);
            ASSERT_EQ(line[i].nMinSize, asked[i].nMinSize);
            ASSERT_EQ(line[i].nIdealSize, asked[i].nIdealSize);
            sum += line[i].nCurSize;
            if (line[i].nCurSize && line[i].nCurSize < line[i].nMinSize) ++below;
        }
        ASSERT_EQ(sum, std::max(0, total - gaps));
        // Only where no pane fits is one shown below its minimum.
        if (below) {
            ASSERT_EQ(below, 1);
            ASSERT_EQ(line.back().nCurSize, sum);
        }
    }
}

TEST(SplitterLayout, GapsAreFoundWhereThePanesLeaveThem) {
    Line line{{0, 20, 20}, {0, 0, 0}, {0, 30, 30}};
    const int gap = 4;
    EXPECT_EQ(tavix::PaneStart(line, gap, 0), 0);
    EXPECT_EQ(tavix::PaneStart(line, gap, 1), 24);
    EXPECT_EQ(tavix::PaneStart(line, gap, 2), 28);
    EXPECT_EQ(tavix::PaneStart(line, gap, 3), 62);
    for (int position = -5; position < 70; ++position) {
        const int expected = position >= 20 && position < 24 ? 0 : position >= 24 && position < 28 ? 1 : -1;
        EXPECT_EQ(tavix::GapAt(line, gap, position), expected) << position;
    }
    EXPECT_EQ(tavix::GapAt({}, gap, 0), -1);
}

TEST(SplitterLayout, SplitNeedsRoomForBothMinimums) {
    EXPECT_TRUE(tavix::CanSplitPane(107, 30, 7, 30, 70));
    EXPECT_FALSE(tavix::CanSplitPane(107, 29, 7, 30, 70)) << "the first is too small";
    EXPECT_FALSE(tavix::CanSplitPane(107, 31, 7, 30, 70)) << "the second is too small";
    EXPECT_FALSE(tavix::CanSplitPane(107, 0, 7, 0, 0)) << "a pane of no size is none";
    EXPECT_FALSE(tavix::CanSplitPane(107, 100, 7, 0, 0));
    EXPECT_TRUE(tavix::CanSplitPane(107, 99, 7, 0, 0));
    EXPECT_FALSE(tavix::CanSplitPane(0, -2147483647 - 1, 7, 0, 0));
    EXPECT_FALSE(tavix::CanSplitPane(0, 2147483647, 7, 0, 0));
}

TEST(SplitterLayout, DragTellsWhichPaneItLeavesTooSmall) {
    const Info pane{20, 50, 50}, next{30, 50, 50};
    EXPECT_EQ(tavix::EndOfDrag(pane, next, 19), tavix::DragEnd::DropsThis);
    EXPECT_EQ(tavix::EndOfDrag(pane, next, -2147483647), tavix::DragEnd::DropsThis);
    EXPECT_EQ(tavix::EndOfDrag(pane, next, 20), tavix::DragEnd::Fits);
    EXPECT_EQ(tavix::EndOfDrag(pane, next, 70), tavix::DragEnd::Fits);
    EXPECT_EQ(tavix::EndOfDrag(pane, next, 71), tavix::DragEnd::DropsNext);
    EXPECT_EQ(tavix::EndOfDrag(pane, next, 2147483647), tavix::DragEnd::DropsNext);
}

TEST(SplitterLayout, SizesStayInTheirRange) {
    EXPECT_EQ(tavix::PaneSize(-1), 0);
    EXPECT_EQ(tavix::PaneSize(0), 0);
    EXPECT_EQ(tavix::PaneSize(32767), 32767);
    EXPECT_EQ(tavix::PaneSize(1LL << 40), 32767);
}

}  // namespace
