#include "tavixskin/framework/geometry.h"

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(Size, StartsAtZeroAndTakesItsParts) {
    EXPECT_EQ(CSize().cx, 0);
    EXPECT_EQ(CSize().cy, 0);
    const CSize size(SIZE{3, 4});
    EXPECT_EQ(size.cx, 3);
    EXPECT_EQ(size.cy, 4);
}

TEST(Point, UnpacksSignedWords) {
    const CPoint p(MAKELPARAM(static_cast<WORD>(-5), 300));
    EXPECT_EQ(p.x, -5);
    EXPECT_EQ(p.y, 300);
    const CPoint q(MAKELPARAM(0x7FFF, 0x8000));
    EXPECT_EQ(q.x, 32767);
    EXPECT_EQ(q.y, -32768);
}

TEST(Point, UnpacksEveryPair) {
    std::mt19937 random(5);
    for (int i = 0; i < 10000; ++i) {
        const int x = static_cast<short>(random());
        const int y = static_cast<short>(random());
        const CPoint p(MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y)));
        ASSERT_EQ(p.x, x);
        ASSERT_EQ(p.y, y);
    }
}

TEST(Point, MovesAndCompares) {
    CPoint p(1, 2);
    p.Offset(10, -10);
    EXPECT_TRUE(p == CPoint(11, -8));
    EXPECT_FALSE(p == CPoint(11, 8));
}

TEST(Rect, TellsItsParts) {
    const CRect r(10, 20, 110, 70);
    EXPECT_EQ(r.Width(), 100);
    EXPECT_EQ(r.Height(), 50);
    EXPECT_EQ(r.Size().cx, 100);
    EXPECT_EQ(r.Size().cy, 50);
    EXPECT_TRUE(r.TopLeft() == CPoint(10, 20));
    EXPECT_TRUE(CRect(POINT{10, 20}, SIZE{100, 50}) == r);
    EXPECT_TRUE(CRect(RECT{10, 20, 110, 70}) == r);
    EXPECT_FALSE(CRect() == r);
}

TEST(Rect, OwnsItsLeftAndTopEdgeOnly) {
    const CRect r(0, 0, 4, 4);
    EXPECT_TRUE(r.PtInRect(CPoint(0, 0)));
    EXPECT_TRUE(r.PtInRect(CPoint(3, 3)));
    EXPECT_FALSE(r.PtInRect(CPoint(4, 0)));
    EXPECT_FALSE(r.PtInRect(CPoint(0, 4)));
    EXPECT_FALSE(r.PtInRect(CPoint(-1, 0)));
}

TEST(Rect, MovesGrowsAndEmpties) {
    CRect r(1, 2, 3, 4);
    r.OffsetRect(10, 20);
    EXPECT_TRUE(r == CRect(11, 22, 13, 24));
    r.InflateRect(2, 3);
    EXPECT_TRUE(r == CRect(9, 19, 15, 27));
    r.DeflateRect(2, 3);
    EXPECT_TRUE(r == CRect(11, 22, 13, 24));
    r.SetRectEmpty();
    EXPECT_TRUE(r == CRect());
    EXPECT_TRUE(r.IsRectEmpty());
}

// The platform's own functions are the measure.
TEST(Rect, AgreesWithThePlatform) {
    std::mt19937 random(17);
    const auto some = [&random] { return static_cast<int>(random() % 41) - 20; };
    for (int i = 0; i < 20000; ++i) {
        const CRect r(some(), some(), some(), some());
        const CPoint p(some(), some());
        ASSERT_EQ(r.IsRectEmpty(), ::IsRectEmpty(&r) != 0);
        ASSERT_EQ(r.PtInRect(p), ::PtInRect(&r, p) != 0);
        const int dx = some(), dy = some();
        CRect moved = r, grown = r;
        moved.OffsetRect(dx, dy);
        grown.InflateRect(dx, dy);
        RECT wantMoved = r, wantGrown = r;
        ::OffsetRect(&wantMoved, dx, dy);
        ::InflateRect(&wantGrown, dx, dy);
        ASSERT_TRUE(moved == wantMoved);
        ASSERT_TRUE(grown == wantGrown);
    }
}

}  // namespace
