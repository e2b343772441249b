#include "draw/offscreen.h"

#include <gtest/gtest.h>

#include <climits>
#include <thread>

#include "draw/bitmap_draw.h"
#include "draw/bitmap_region.h"
#include "draw/gradient.h"
#include "draw/skin_bitmap.h"
#include "draw_fixture.h"
#include "main/gui_objects.h"

using namespace tavix_test;
using namespace tavix;

namespace {

COLORREF At(const Picture& picture, int x, int y) {
    const DWORD p = picture[static_cast<std::size_t>(y * Target::kSize.cx + x)];
    return RGB(GetBValue(p), GetGValue(p), GetRValue(p));
}

/* What a painter finds in a context, and may leave changed there. */
struct State {
    HGDIOBJ font, pen, brush, bitmap;
    COLORREF text, back;
    int mode, rop, stretch, map;
    UINT align;
    RECT clip;
    POINT at, brush_origin;

    static State Of(HDC dc) {
        State s{};
        s.font = ::GetCurrentObject(dc, OBJ_FONT);
        s.pen = ::GetCurrentObject(dc, OBJ_PEN);
        s.brush = ::GetCurrentObject(dc, OBJ_BRUSH);
        s.bitmap = ::GetCurrentObject(dc, OBJ_BITMAP);
        s.text = ::GetTextColor(dc);
        s.back = ::GetBkColor(dc);
        s.mode = ::GetBkMode(dc);
        s.rop = ::GetROP2(dc);
        s.stretch = ::GetStretchBltMode(dc);
        s.map = ::GetMapMode(dc);
        s.align = ::GetTextAlign(dc);
        ::GetClipBox(dc, &s.clip);
        ::GetCurrentPositionEx(dc, &s.at);
        ::GetBrushOrgEx(dc, &s.brush_origin);
        return s;
    }
    bool operator==(const State& o) const {
        return font == o.font && pen == o.pen && brush == o.brush && bitmap == o.bitmap && text == o.text &&
               back == o.back && mode == o.mode && rop == o.rop && stretch == o.stretch && map == o.map &&
               align == o.align && ::EqualRect(&clip, &o.clip) && at.x == o.at.x && at.y == o.at.y &&
               brush_origin.x == o.brush_origin.x && brush_origin.y == o.brush_origin.y;
    }
};

constexpr RECT kArea{10, 5, 50, 40};

}  // namespace

TEST(Offscreen, ShowsWhatWasPaintedInTheTargetsOwnCoordinates) {
    for (const TargetType type : kAllTargets) {
        // To a colour table each operation of the platform rounds in a way of its own.
        if (type == TargetType::Surface || type == TargetType::Dib8) continue;
        Target target(type);
        const auto prepare = [](HDC dc) { ::SetTextColor(dc, RGB(0, 0, 0)); };
        const auto paint = [](HDC dc) {
            CDC(dc).FillSolidRect(kArea, RGB(255, 255, 255));
            CDC(dc).FillSolidRect({12, 8, 30, 20}, RGB(0, 0, 0));
        };
        const Picture expected = target.Draw(prepare, paint);
        const Picture actual = target.Draw(
            prepare, [&](HDC dc) { PaintOffscreen(dc, kArea, [&](CDC& memory) { paint(memory); }); });
        EXPECT_EQ(Difference(expected, actual), "") << NameOf(type);
    }
}

TEST(Offscreen, PaintsNothingOutsideOfTheArea) {
    Target target(TargetType::Compatible);
    const Picture before = target.Draw(nullptr, [](HDC) {});
    const Picture after = target.Draw(nullptr, [](HDC dc) {
        PaintOffscreen(dc, kArea, [](CDC& memory) {
            RECT box{};
            EXPECT_EQ(::GetClipBox(memory, &box), SIMPLEREGION);
            EXPECT_TRUE(::EqualRect(&box, &kArea));
            memory.FillSolidRect({-1000, -1000, 1000, 1000}, RGB(1, 2, 3));
        });
    });
    EXPECT_EQ(At(after, 10, 5), RGB(1, 2, 3));
    EXPECT_EQ(At(after, 49, 39), RGB(1, 2, 3));
    EXPECT_EQ(At(after, 9, 5), At(before, 9, 5));
    EXPECT_EQ(At(after, 50, 39), At(before, 50, 39));
    EXPECT_EQ(At(after, 49, 40), At(before, 49, 40));
}

TEST(Offscreen, PresentsAPart) {
    Target target(TargetType::Compatible);
    const Picture before = target.Draw(nullptr, [](HDC) {});
    const Picture after = target.Draw(nullptr, [](HDC dc) {
        OffscreenSurface surface(dc, kArea);
        surface.Dc().FillSolidRect(kArea, RGB(1, 2, 3));
        surface.Present({0, 0, 20, 20});
        surface.Present({45, 35, 45, 60});
        surface.Present({500, 500, 600, 600});
    });
    EXPECT_EQ(At(after, 10, 5), RGB(1, 2, 3));
    EXPECT_EQ(At(after, 19, 19), RGB(1, 2, 3));
    EXPECT_EQ(At(after, 20, 19), At(before, 20, 19));
    EXPECT_EQ(At(after, 46, 36), At(before, 46, 36));
}

TEST(Offscreen, EmptyAndAbsurdAreasAreFalseAndPaintNothing) {
    Target target(TargetType::Compatible);
    const RECT areas[] = {{5, 5, 5, 20},       {5, 5, 20, 5},    {20, 20, 5, 5},
                          {0, 0, 0, 0},        {0, 0, 40000, 2}, {INT_MIN, INT_MIN, INT_MAX, INT_MAX},
                          {0, 0, 32767, 32767}};
    for (const RECT& area : areas) {
        OffscreenSurface surface(target.Dc(), area);
        EXPECT_FALSE(surface) << area.right << " by " << area.bottom;
        surface.Present();
        bool painted = false;
        PaintOffscreen(target.Dc(), area, [&painted](CDC&) { painted = true; });
        EXPECT_FALSE(painted);
    }
    EXPECT_TRUE(OffscreenSurface(target.Dc(), kArea));
}

TEST(Offscreen, EachPaintingStartsFromTheDefaults) {
    Target target(TargetType::Compatible);
    State first{};
    PaintOffscreen(target.Dc(), kArea, [&first](CDC& dc) { first = State::Of(dc); });
    CPen pen(PS_SOLID, 3, RGB(1, 1, 1));
    CBrush brush(RGB(2, 2, 2));
    PaintOffscreen(target.Dc(), kArea, [&](CDC& dc) {
        ::SelectObject(dc, ::GetStockObject(DEFAULT_GUI_FONT));
        ::SelectObject(dc, pen.m_hObject);
        ::SelectObject(dc, brush.m_hObject);
        ::SetTextColor(dc, RGB(3, 3, 3));
        ::SetBkColor(dc, RGB(4, 4, 4));
        ::SetBkMode(dc, TRANSPARENT);
        ::SetROP2(dc, R2_XORPEN);
        ::SetStretchBltMode(dc, HALFTONE);
        ::SetTextAlign(dc, TA_CENTER);
        ::IntersectClipRect(dc, 12, 12, 14, 14);
        ::MoveToEx(dc, 7, 7, nullptr);
        ::SetBrushOrgEx(dc, 3, 3, nullptr);
        ::SaveDC(dc);  // and never restored
        ::SetMapMode(dc, MM_LOMETRIC);
        ::SetViewportOrgEx(dc, 77, 66, nullptr);
        EXPECT_FALSE(State::Of(dc) == first);
    });
    // What was selected is free again.
    EXPECT_TRUE(pen.DeleteObject());
    EXPECT_TRUE(brush.DeleteObject());
    PaintOffscreen(target.Dc(), kArea, [&first](CDC& dc) { EXPECT_TRUE(State::Of(dc) == first); });
}

TEST(Offscreen, NestedPaintingsHaveSurfacesOfTheirOwn) {
    Target target(TargetType::Compatible);
    const Picture picture = target.Draw(nullptr, [](HDC dc) {
        PaintOffscreen(dc, kArea, [](CDC& outer) {
            outer.FillSolidRect(kArea, RGB(10, 0, 0));
            const RECT inside{20, 15, 30, 25};
            PaintOffscreen(outer, inside, [&](CDC& inner) {
                EXPECT_NE(inner.m_hDC, outer.m_hDC);
                inner.FillSolidRect(inside, RGB(20, 0, 0));
                PaintOffscreen(inner, {22, 17, 24, 19}, [&](CDC& innermost) {
                    EXPECT_NE(innermost.m_hDC, outer.m_hDC);
                    EXPECT_NE(innermost.m_hDC, inner.m_hDC);
                    innermost.FillSolidRect({22, 17, 24, 19}, RGB(30, 0, 0));
                });
                // The gradient goes to this surface's memory, not to the outer one's.
                DrawGradient(&inner, {26, 15, 28, 25}, RGB(40, 0, 0), RGB(40, 0, 0), 0, 0);
            });
        });
    });
    EXPECT_EQ(At(picture, 10, 5), RGB(10, 0, 0));
    EXPECT_EQ(At(picture, 20, 15), RGB(20, 0, 0));
    EXPECT_EQ(At(picture, 23, 18), RGB(30, 0, 0));
    EXPECT_EQ(At(picture, 26, 20), RGB(40, 0, 0));
    EXPECT_EQ(At(picture, 29, 24), RGB(20, 0, 0));
    EXPECT_EQ(At(picture, 30, 24), RGB(10, 0, 0));
}

TEST(Offscreen, OuterSurfaceMayEndBeforeTheInnerOne) {
    Target target(TargetType::Compatible);
    auto outer = std::make_unique<OffscreenSurface>(target.Dc(), kArea);
    auto inner = std::make_unique<OffscreenSurface>(target.Dc(), RECT{0, 0, 5, 5});
    outer.reset();
    inner->Dc().FillSolidRect({0, 0, 5, 5}, RGB(1, 2, 3));
    DrawGradient(&inner->Dc(), {0, 0, 1, 1}, RGB(9, 9, 9), RGB(9, 9, 9), 0, 0);
    inner->Present();
    EXPECT_EQ(::GetPixel(target.Dc(), 4, 4), RGB(1, 2, 3));
    EXPECT_EQ(::GetPixel(target.Dc(), 0, 0), RGB(9, 9, 9));
}

TEST(Offscreen, LargeAreasAreSurfacesToo) {
    Target target(TargetType::Compatible);
    const RECT large{-1000, -1000, 2000, 1500};
    OffscreenSurface surface(target.Dc(), large);
    ASSERT_TRUE(surface);
    surface.Dc().FillSolidRect(large, RGB(1, 2, 3));
    DrawGradient(&surface.Dc(), {3, 3, 4, 4}, RGB(9, 9, 9), RGB(9, 9, 9), 0, 0);
    surface.Present();
    EXPECT_EQ(::GetPixel(target.Dc(), 60, 46), RGB(1, 2, 3));
    EXPECT_EQ(::GetPixel(target.Dc(), 3, 3), RGB(9, 9, 9));
}

TEST(Offscreen, PainterThatSelectsABitmapOfItsOwnDrawsThere) {
    Target target(TargetType::Compatible);
    void* bits = nullptr;
    CBitmap own;
    own.Attach(MakeDib(32, {64, 64}, true, {}, &bits));
    PaintOffscreen(target.Dc(), {0, 0, 40, 40}, [&](CDC& dc) {
        const HGDIOBJ former = ::SelectObject(dc, own.m_hObject);
        DrawGradient(&dc, {0, 0, 4, 4}, RGB(5, 5, 5), RGB(5, 5, 5), 0, 0);
        EXPECT_EQ(::GetPixel(dc, 1, 1), RGB(5, 5, 5));
        ::SelectObject(dc, former);
    });
    EXPECT_EQ(static_cast<DWORD*>(bits)[0], 0x050505u);
}

TEST(Offscreen, TenThousandPaintingsLeaveNoObjects) {
    Target window(TargetType::Window);
    Random random(51);
    CSkinBitmap mark;
    mark.Attach(RandomBitmap(random, 0, {16, 16}, 3));
    const auto paint = [&](int i) {
        const RECT area{i % 20, i % 10, i % 20 + 20 + i % 30, i % 10 + 25};
        PaintOffscreen(window.Dc(), area, [&](CDC& dc) {
            DrawGradient(&dc, area, static_cast<COLORREF>(i), RGB(200, 100, 0), i % 2, 0);
            DrawTransparent(&dc, &mark, area.left + 2, area.top + 2, 0, 0, 3);
            CRgn corner;
            RegionFromBitmapKey(&corner, &mark, 3);
            if (i % 50 == 0) PaintOffscreen(dc, {0, 0, 9, 9}, [](CDC&) {});
        });
    };
    for (int i = 0; i < 200; ++i) paint(i);
    const int gdi = CountGdiObjects();
    const int user = CountUserObjects();
    for (int i = 0; i < 10000; ++i) paint(i);
    EXPECT_LE(CountGdiObjects() - gdi, 1);
    EXPECT_EQ(CountUserObjects(), user);
}

TEST(Offscreen, ThreadsFreeTheirSurfacesWhenTheyEnd) {
    const auto paint = [] {
        CMemoryDC screen;
        CBitmap bitmap;
        bitmap.Attach(::CreateBitmap(50, 50, 1, 32, nullptr));
        const SelectionGuard selected(screen, bitmap.m_hObject);
        PaintOffscreen(screen, {0, 0, 40, 40}, [&](CDC& dc) {
            DrawGradient(&dc, {0, 0, 40, 40}, 0, 0xFFFFFF, 0, 0);
            DrawBitmap(dc, &bitmap, 0, 0);
        });
        DrawGradient(&screen, {0, 0, 40, 40}, 0, 0xFFFFFF, 0, 0);
    };
    for (int i = 0; i < 3; ++i) std::thread(paint).join();
    const int before = CountGdiObjects();
    for (int i = 0; i < 40; ++i) std::thread(paint).join();
    EXPECT_LE(CountGdiObjects() - before, 2);
}
