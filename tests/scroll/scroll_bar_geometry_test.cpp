// The arithmetic of scroll bars, beside a second writing of its rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <random>

#include "scroll/scroll_bar_geometry.h"

using namespace tavix;

#if defined(__i386__) && defined(__GNUC__)
#pragma GCC target("sse2,fpmath=sse")
#endif

namespace {

// ---------------------------------------------------------------- the rules, written a second time

/* Values that stay so small that plain arithmetic holds them. */
struct Model {
    long long min, max, page, pos, thumb, arrow, length;

    long long Track() const { return length - 2 * arrow; }
    long long ToPixel(long long position) const {
        const long long avail = Track() - thumb;
        double scale =
            page > 0 ? double(avail) / double(max - min - page + 2) : double(avail) / double(max - min + 1);
        if (Track() <= thumb) scale = 0;
        double d = double(position - min) * scale;
        if (page >= 0 && position == max - page + 1) d = double(avail);
        if (page == 0 && position == max) d = double(avail);
        return d >= 0 ? (long long)std::ceil(double(arrow) + d) : 0;
    }
    // Only where there is room to move in: without it there is nothing to divide by.
    long long ToPos(long long pixel) const {
        const long long avail = Track() - thumb;
        const double r =
            page > 0 ? double(max - min - page + 1) / double(avail) : double(max - min + 1) / double(avail);
        long long v = (long long)(double(pixel - arrow) * r + 0.5) + min;
        if (page > 0 && v > max - page + 1) v = max - page + 1;
        if (page == 0 && v > max) v = max;
        return v;
    }
    void Range(long long lo, long long hi) {
        if (lo > hi) hi = lo;
        min = lo, max = hi;
        page = std::clamp(page, 0LL, max - min + 1);
        if (pos < lo) pos = lo;
        Settle();
    }
    void Position(long long to) {
        pos = to;
        if (pos < min) {
            pos = min;
        } else {
            page = std::clamp(page, 0LL, max - min + 1);
            Settle();
        }
    }
    void Settle() {
        const long long last = max - std::max(page - 1, 0LL);
        if (pos > last) pos = last > min ? last : min;
    }
    long long Page(long long to) {
        if (to < 0) {
            thumb = Track();
            return -1;
        }
        if (to >= max - min + 1) {
            page = max - min + 1;
            thumb = Track();
        } else if (to == 0) {
            page = 0;
            thumb = 15;
        } else {
            thumb = (long long)(double(Track()) * double(float(to)) / double(max - min + 2));
            if (thumb < 13) thumb = 12;
            page = to;
        }
        return page;
    }
    bool operator==(const ScrollBarValues& b) const {
        return min == b.min && max == b.max && page == b.page && pos == b.pos && thumb == b.thumb_len &&
               arrow == b.arrow_len;
    }
};

ScrollBarValues ValuesOf(const Model& m) {
    return {int(m.min), int(m.max), int(m.page), int(m.pos), int(m.thumb), int(m.arrow)};
}

::testing::AssertionResult Same(const Model& m, const ScrollBarValues& b) {
    if (m == b) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "expected min " << m.min << " max " << m.max << " page " << m.page << " pos " << m.pos
           << " thumb " << m.thumb << ", got " << b.min << " " << b.max << " " << b.page << " " << b.pos
           << " " << b.thumb_len;
}

/* What no int holds is told as the nearest one that does. */
long long AsInt(long long value) { return std::clamp<long long>(value, INT_MIN, INT_MAX); }

/* Draws small numbers and large ones alike. */
class Numbers {
public:
    long long Any(long long most) {
        switch (Below(4)) {
            case 0:
                return Below(20) - 5;
            case 1:
                return Below(2 * most + 1) - most;
            case 2:
                return Below(300);
            default:
                return Below(10'000) - 5'000;
        }
    }
    long long Below(long long end) {
        return static_cast<long long>(m_engine() % static_cast<std::uint64_t>(end));
    }

private:
    std::mt19937_64 m_engine{20240607};
};

TEST(ScrollBarGeometry, FollowsItsRulesOverManyStates) {
    Numbers numbers;
    for (int round = 0; round < 60'000; ++round) {
        Model model{0, 0, 0, 0, numbers.Below(60), numbers.Below(30), numbers.Below(1200)};
        ScrollBarValues bar = ValuesOf(model);
        const int length = int(model.length);
        for (int step = 0; step < 6; ++step) {
            SCOPED_TRACE(round);
            const long long a = numbers.Any(1'000'000'000), b = numbers.Any(1'000'000'000);
            switch (numbers.Below(3)) {
                case 0:
                    model.Range(a, b);
                    SetRange(bar, int(a), int(b));
                    break;
                case 1:
                    model.Position(a);
                    SetPos(bar, int(a));
                    break;
                default:
                    ASSERT_EQ(SetPage(bar, length, int(a)), model.Page(a));
            }
            ASSERT_TRUE(Same(model, bar));
            for (long long pos :
                 {model.pos, model.min, model.max, model.max - model.page + 1, numbers.Any(1000)})
                ASSERT_EQ(PosToPixel(bar, length, int(pos)), AsInt(model.ToPixel(pos))) << pos;
            ASSERT_EQ(TrackLength(length, bar.arrow_len), model.Track());
            if (model.Track() == model.thumb) continue;
            for (long long pixel : {AsInt(model.ToPixel(model.pos)), model.arrow, numbers.Below(1300) - 50})
                ASSERT_EQ(PixelToPos(bar, length, int(pixel)), AsInt(model.ToPos(pixel))) << pixel;
        }
    }
}

TEST(ScrollBarGeometry, PlacesThumbAndArrowsOverManyStates) {
    Numbers numbers;
    for (int round = 0; round < 20'000; ++round) {
        const int along = int(numbers.Below(600)), across = int(numbers.Below(40));
        Model model{0, 0, 0, 0, 0, numbers.Below(30), along};
        model.Range(numbers.Any(10'000), numbers.Any(10'000));
        model.Page(numbers.Any(5'000));
        model.Position(numbers.Any(10'000));
        const ScrollBarValues bar = ValuesOf(model);
        const int arrow = bar.arrow_len;
        long long start = model.ToPixel(model.pos);
        if (start + model.thumb > model.Track() + arrow) start = model.Track() - model.thumb;
        ASSERT_EQ(ThumbStart(bar, along), start);
        const int from = int(start), to = int(start + model.thumb);

        const ScrollBarRects v = RectsOf(bar, CRect(0, 0, across, along), false, from);
        ASSERT_EQ(v.first_arrow, CRect(1, 1, across - 1, arrow - 1));
        ASSERT_EQ(v.second_arrow, CRect(1, along - arrow + 1, across - 1, along - 1));
        ASSERT_EQ(v.thumb, CRect(1, from, across - 1, to));
        ASSERT_EQ(v.client, CRect(0, 0, across, along));
        const ScrollBarRects h = RectsOf(bar, CRect(0, 0, along, across), true, from);
        ASSERT_EQ(h.first_arrow, CRect(1, 1, arrow - 1, across - 1));
        ASSERT_EQ(h.second_arrow, CRect(along - arrow + 1, 1, along - 1, across - 1));
        ASSERT_EQ(h.thumb, CRect(from, 0, to, across));
        ASSERT_EQ(h.client, CRect(0, 0, along, across));
    }
}

// ---------------------------------------------------------------- single rules

constexpr int kLength = 240, kArrow = 20, kTrack = 200;

ScrollBarValues Bar(int min, int max, int page) {
    ScrollBarValues bar{min, max, 0, min, 0, kArrow};
    SetPage(bar, kLength, page);
    return bar;
}

TEST(ScrollBarGeometry, ThumbWithoutAPageHasFifteenPixels) {
    ScrollBarValues bar = Bar(0, 100, 0);
    EXPECT_EQ(bar.thumb_len, 15);
    EXPECT_EQ(SetPage(bar, kLength, 0), 0);
}

TEST(ScrollBarGeometry, PageOfTheWholeRangeFillsTheTrack) {
    for (int page : {101, 102, 5000, INT_MAX}) {
        const ScrollBarValues bar = Bar(0, 100, page);
        EXPECT_EQ(bar.thumb_len, kTrack);
        EXPECT_EQ(bar.page, 101);
    }
}

TEST(ScrollBarGeometry, NegativePageFillsTheTrackAndKeepsThePage) {
    ScrollBarValues bar = Bar(0, 100, 10);
    for (int page : {-1, -7, INT_MIN}) {
        EXPECT_EQ(SetPage(bar, kLength, page), -1);
        EXPECT_EQ(bar.thumb_len, kTrack);
        EXPECT_EQ(bar.page, 10);
    }
}

TEST(ScrollBarGeometry, ThumbIsNeverShorterThanTwelve) {
    // 200 pixels over 1000: five pages a pixel.
    EXPECT_EQ(Bar(0, 998, 1).thumb_len, 12);
    EXPECT_EQ(Bar(0, 998, 59).thumb_len, 12);
    EXPECT_EQ(Bar(0, 998, 60).thumb_len, 12);
    EXPECT_EQ(Bar(0, 998, 64).thumb_len, 12);
    EXPECT_EQ(Bar(0, 998, 65).thumb_len, 13);
    EXPECT_EQ(Bar(0, 998, 70).thumb_len, 14);
}

TEST(ScrollBarGeometry, LastPositionIsTheVeryEndOfTheTrack) {
    for (int page : {0, 1, 2, 7, 50, 99}) {
        const ScrollBarValues bar = Bar(0, 100, page);
        EXPECT_EQ(PosToPixel(bar, kLength, 100 - page + 1), kArrow + kTrack - bar.thumb_len) << page;
    }
    const ScrollBarValues bar = Bar(0, 100, 0);
    EXPECT_EQ(PosToPixel(bar, kLength, 100), kArrow + kTrack - bar.thumb_len);
    EXPECT_LT(PosToPixel(bar, kLength, 99), kArrow + kTrack - bar.thumb_len);
}

TEST(ScrollBarGeometry, TrackShorterThanTheThumbHasNoScale) {
    ScrollBarValues bar{0, 100, 10, 0, 60, kArrow};
    for (int pos : {0, 1, 50, 90}) EXPECT_EQ(PosToPixel(bar, 90, pos), kArrow) << pos;
    // The end would lie before the first arrow.
    EXPECT_EQ(PosToPixel(bar, 90, 91), 0);
}

TEST(ScrollBarGeometry, PositionsBeforeTheRangeStartAtZero) {
    const ScrollBarValues bar = Bar(10, 100, 10);
    EXPECT_EQ(PosToPixel(bar, kLength, 10), kArrow);
    EXPECT_EQ(PosToPixel(bar, kLength, 9), 0);
    EXPECT_EQ(PosToPixel(bar, kLength, INT_MIN), 0);
}

TEST(ScrollBarGeometry, ThereAndBackIsOffByAUnitOfRange) {
    // 91 last positions with a page of 10: the way there divides by 92 and the way back takes 91.
    const ScrollBarValues bar = Bar(0, 100, 10);
    const int room = kTrack - bar.thumb_len;
    EXPECT_EQ(PosToPixel(bar, kLength, 46), kArrow + static_cast<int>(std::ceil(46.0 * room / 92)));
    EXPECT_EQ(PixelToPos(bar, kLength, kArrow + room / 2), static_cast<int>(room / 2 * (91.0 / room) + 0.5));
    EXPECT_EQ(PixelToPos(bar, kLength, kArrow + room), 91);
    EXPECT_EQ(PixelToPos(bar, kLength, kArrow + room + 50), 91);
}

TEST(ScrollBarGeometry, PixelsBeforeTheTrackAreBeforeTheRange) {
    const ScrollBarValues bar = Bar(0, 100, 0);
    EXPECT_LT(PixelToPos(bar, kLength, 0), 0);
    EXPECT_EQ(PixelToPos(bar, kLength, 4000), 100);
}

TEST(ScrollBarGeometry, PageAndPositionStayInANarrowerRange) {
    ScrollBarValues bar = Bar(0, 100, 40);
    SetPos(bar, 60);
    SetRange(bar, 0, 50);
    EXPECT_EQ(bar.page, 40);
    EXPECT_EQ(bar.pos, 11);
    SetRange(bar, 20, 29);
    EXPECT_EQ(bar.page, 10);
    EXPECT_EQ(bar.pos, 20);
    SetRange(bar, 30, 5);
    EXPECT_EQ(bar.max, 30);
    EXPECT_EQ(bar.page, 1);
    EXPECT_EQ(bar.pos, 30);
}

TEST(ScrollBarGeometry, DraggedThumbStaysOnItsTrack) {
    const ScrollBarValues bar{0, 100, 10, 0, 30, kArrow};
    // From 60, held 5 pixels from the thumb's start.
    EXPECT_EQ(DraggedThumbStart(bar, kLength, 60, 70, 65, 5), 65);
    EXPECT_EQ(DraggedThumbStart(bar, kLength, 60, 50, 65, 5), 45);
    EXPECT_EQ(DraggedThumbStart(bar, kLength, 60, 500, 65, 5), kLength - kArrow - 30);
    EXPECT_EQ(DraggedThumbStart(bar, kLength, 60, -500, 65, 5), kArrow);
    EXPECT_EQ(DraggedThumbStart(bar, kLength, 61, 65, 65, 5), 61);
}

TEST(ScrollBarGeometry, ThumbLongerThanItsTrackGoesToTheEndOfTheMove) {
    const ScrollBarValues bar{0, 100, 10, 0, 300, kArrow};
    EXPECT_EQ(DraggedThumbStart(bar, kLength, 0, 70, 65, 5), kArrow);
    EXPECT_EQ(DraggedThumbStart(bar, kLength, 0, 60, 65, 5), kLength - kArrow - 300);
}

TEST(ScrollBarGeometry, HitsPartsInTheirOrder) {
    ScrollBarValues bar{0, 100, 10, 0, 30, kArrow};
    const ScrollBarRects rects = RectsOf(bar, CRect(0, 0, 17, kLength), false, 100);
    EXPECT_EQ(HitTest(rects, CPoint(8, 1)), ScrollBarPart::FirstArrow);
    EXPECT_EQ(HitTest(rects, CPoint(8, kArrow - 2)), ScrollBarPart::FirstArrow);
    EXPECT_EQ(HitTest(rects, CPoint(8, 0)), ScrollBarPart::Track);
    EXPECT_EQ(HitTest(rects, CPoint(8, kArrow - 1)), ScrollBarPart::Track);
    EXPECT_EQ(HitTest(rects, CPoint(0, 5)), ScrollBarPart::Track);
    EXPECT_EQ(HitTest(rects, CPoint(8, kLength - 2)), ScrollBarPart::SecondArrow);
    EXPECT_EQ(HitTest(rects, CPoint(8, kLength - 1)), ScrollBarPart::Track);
    EXPECT_EQ(HitTest(rects, CPoint(8, 100)), ScrollBarPart::Thumb);
    EXPECT_EQ(HitTest(rects, CPoint(8, 129)), ScrollBarPart::Thumb);
    EXPECT_EQ(HitTest(rects, CPoint(8, 130)), ScrollBarPart::Track);
    EXPECT_EQ(HitTest(rects, CPoint(0, 110)), ScrollBarPart::Track);
    EXPECT_EQ(HitTest(rects, CPoint(17, 110)), ScrollBarPart::None);
    EXPECT_EQ(HitTest(rects, CPoint(8, -1)), ScrollBarPart::None);
    // An arrow wins over a thumb that lies on it.
    EXPECT_EQ(HitTest(RectsOf(bar, CRect(0, 0, 17, kLength), false, 0), CPoint(8, 5)),
              ScrollBarPart::FirstArrow);
}

// ---------------------------------------------------------------- hostile values

TEST(ScrollBarGeometry, AnyValuesAreSafe) {
    constexpr int kValues[] = {INT_MIN, INT_MIN + 1, -70'000, -1, 0, 1, 12, 13, 70'000, INT_MAX - 1, INT_MAX};
    int results = 0;
    for (int min : kValues)
        for (int max : kValues)
            for (int page : kValues)
                for (int arrow : {INT_MIN, 0, 17, INT_MAX})
                    for (int length : {0, 1, 34, 200, INT_MAX})
                        for (int thumb : {INT_MIN, 0, 15, INT_MAX}) {
                            // Straight into the values, as a host's native bar may bring them.
                            ScrollBarValues bar{min, max, page, min, thumb, arrow};
                            const int pixel = PosToPixel(bar, length, max);
                            PixelToPos(bar, length, pixel);
                            PixelToPos(bar, length, INT_MAX);
                            PixelToPos(bar, length, INT_MIN);
                            const int start = ThumbStart(bar, length);
                            const ScrollBarRects rects = RectsOf(bar, CRect(0, 0, 17, length), false, start);
                            HitTest(rects, CPoint(5, 5));
                            Inflated(rects.thumb, 2);
                            DraggedThumbStart(bar, length, start, INT_MAX, INT_MIN, INT_MIN);
                            SetPage(bar, length, page);
                            SetPos(bar, page);
                            SetRange(bar, max, min);
                            EXPECT_GE(bar.page, 0);
                            EXPECT_LE(bar.min, bar.max);
                            EXPECT_GE(bar.pos, bar.min);
                            EXPECT_LE(bar.pos, bar.max);
                            ++results;
                        }
    EXPECT_EQ(results, 11 * 11 * 11 * 4 * 5 * 4);
}

TEST(ScrollBarGeometry, TheWidestRangeMapsToTheWholeTrack) {
    ScrollBarValues bar{0, 0, 0, 0, 0, kArrow};
    SetRange(bar, INT_MIN, INT_MAX);
    SetPage(bar, kLength, 0);
    EXPECT_EQ(PosToPixel(bar, kLength, INT_MIN), kArrow);
    EXPECT_EQ(PosToPixel(bar, kLength, INT_MAX), kArrow + kTrack - 15);
    EXPECT_NEAR(PosToPixel(bar, kLength, 0), kArrow + (kTrack - 15) / 2.0, 1);
    EXPECT_EQ(PixelToPos(bar, kLength, kArrow), INT_MIN);
    EXPECT_EQ(PixelToPos(bar, kLength, kArrow + kTrack - 15), INT_MAX);
    EXPECT_NEAR(PixelToPos(bar, kLength, kArrow + (kTrack - 15) / 2), 0, 2e7);
}

TEST(ScrollBarGeometry, BarWithoutPixelsHasPlaces) {
    ScrollBarValues bar = Bar(0, 100, 10);
    SetPage(bar, 0, 10);
    EXPECT_EQ(bar.thumb_len, 12);
    EXPECT_EQ(TrackLength(0, kArrow), -2 * kArrow);
    EXPECT_EQ(PosToPixel(bar, 0, 50), kArrow);
    EXPECT_EQ(ThumbStart(bar, 0), -2 * kArrow - 12);
    // No room at all, and none to divide by.
    bar.thumb_len = 0;
    bar.arrow_len = 0;
    EXPECT_EQ(PixelToPos(bar, 0, 0), 0);
    EXPECT_EQ(PixelToPos(bar, 0, 5), 91);
}

}  // namespace
