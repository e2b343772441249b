#include "draw/gradient.h"

#include <gtest/gtest.h>

#include <climits>

#include "draw_fixture.h"

using namespace tavix_test;
using tavix::DrawGradient;
using tavix::GradientColour;

namespace {

/* The gradient as it is defined: a brush a band. */
void PlainGradient(HDC dc, const RECT& rect, COLORREF first, COLORREF second, bool horizontal) {
    const auto fill = [dc](const RECT& r, COLORREF colour) {
        const CBrush brush(colour);
        ::FillRect(dc, &r, brush);
    };
    fill(rect, second);
    const int span = static_cast<int>(horizontal ? rect.right - rect.left : rect.bottom - rect.top) - 2;
    for (int i = 0; i <= span; i += 2) {
        const auto channel = [&](int a, int b) { return static_cast<BYTE>(a + ::MulDiv(b - a, i, span)); };
        const COLORREF colour =
            RGB(channel(GetRValue(first), GetRValue(second)), channel(GetGValue(first), GetGValue(second)),
                channel(GetBValue(first), GetBValue(second)));
        RECT band = rect;
        if (horizontal) {
            band.left = rect.left + i;
            band.right = band.left + 2;
        } else {
            band.top = rect.top + i;
            band.bottom = band.top + 2;
        }
        fill(band, colour);
    }
}

void Compare(Target& target, TargetType type, Random& random, bool plain_mapping) {
    const RECT rect = random.Rect(Target::kSize);
    const COLORREF first = random.Colour();
    const COLORREF second = random.OneIn(5) ? first : random.Colour();
    const bool horizontal = random.OneIn(2);
    const auto state = RandomState(random, plain_mapping);
    const Picture expected =
        target.Draw(state, [&](HDC dc) { PlainGradient(dc, rect, first, second, horizontal); });
    const Picture actual = target.Draw(state, [&](HDC handle) {
        CDC dc(handle);
        DrawGradient(&dc, rect, first, second, horizontal, 0);
    });
    ASSERT_EQ(Difference(expected, actual), "")
        << NameOf(type) << ", rectangle (" << rect.left << ", " << rect.top << ", " << rect.right << ", "
        << rect.bottom << "), " << (horizontal ? "across" : "down");
}

/* The colours of a one-pixel line drawn by a gradient. */
std::vector<COLORREF> Line(int length, COLORREF first, COLORREF second, bool horizontal) {
    Target target(TargetType::Compatible);
    std::vector<COLORREF> line;
    target.Draw(nullptr, [&](HDC handle) {
        CDC dc(handle);
        const RECT rect{3, 4, horizontal ? 3 + length : 4, horizontal ? 5 : 4 + length};
        DrawGradient(&dc, rect, first, second, horizontal, 0);
        for (int i = 0; i < length; ++i)
            line.push_back(::GetPixel(handle, horizontal ? 3 + i : 3, horizontal ? 4 : 4 + i));
    });
    return line;
}

}  // namespace

TEST(Gradient, EqualsBandsOfBrushesOnEveryTarget) {
    for (const TargetType type : kAllTargets) {
        Target target(type);
        Random random(1000 + static_cast<unsigned>(type));
        for (int i = 0; i < 250; ++i) {
            Compare(target, type, random, true);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(Gradient, EqualsBandsOfBrushesUnderScaledAndTurnedCoordinates) {
    for (const TargetType type : kAllTargets) {
        Target target(type);
        Random random(2000 + static_cast<unsigned>(type));
        for (int i = 0; i < 60; ++i) {
            Compare(target, type, random, false);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(Gradient, HeightOfThreeLeavesTheLastRowInTheSecondColour) {
    const auto line = Line(3, RGB(10, 20, 30), RGB(200, 100, 50), false);
    EXPECT_EQ(line, (std::vector<COLORREF>{RGB(10, 20, 30), RGB(10, 20, 30), RGB(200, 100, 50)}));
}

TEST(Gradient, HeightOfTwoIsOneBandOfTheFirstColourLessOne) {
    const COLORREF odd = RGB(9, 255, 29);  // 0 less 1 is cut to eight bits
    EXPECT_EQ(Line(2, RGB(10, 0, 30), RGB(200, 100, 50), false), (std::vector<COLORREF>{odd, odd}));
    EXPECT_EQ(Line(2, RGB(10, 0, 30), RGB(200, 100, 50), true), (std::vector<COLORREF>{odd, odd}));
}

TEST(Gradient, HeightOfOneIsTheSecondColour) {
    EXPECT_EQ(Line(1, RGB(10, 20, 30), RGB(200, 100, 50), false), (std::vector<COLORREF>{RGB(200, 100, 50)}));
}

TEST(Gradient, EvenLengthEndsInTheSecondColour) {
    const auto line = Line(10, RGB(0, 0, 0), RGB(80, 160, 255), true);
    EXPECT_EQ(line.front(), RGB(0, 0, 0));
    EXPECT_EQ(line[2], RGB(20, 40, 64));
    EXPECT_EQ(line[3], line[2]);
    EXPECT_EQ(line.back(), RGB(80, 160, 255));
}

TEST(Gradient, ColourOfABandIsThatOfMulDiv) {
    Random random(5);
    for (int i = 0; i < 20000; ++i) {
        const COLORREF first = random.Colour();
        const COLORREF second = random.Colour();
        const int longest = random.OneIn(2) ? 50 : INT_MAX;
        const int span = random.OneIn(3) ? random.Between(-3, 3) : random.Between(1, longest);
        const int offset = random.Between(0, span > 0 ? span : 3);
        const auto channel = [&](int a, int b) {
            return static_cast<BYTE>(a + ::MulDiv(b - a, offset, span));
        };
        const COLORREF expected =
            RGB(channel(GetRValue(first), GetRValue(second)), channel(GetGValue(first), GetGValue(second)),
                channel(GetBValue(first), GetBValue(second)));
        ASSERT_EQ(GradientColour(first, second, offset, span), expected) << offset << " of " << span;
    }
}

TEST(Gradient, NearestColourChangesNothingOnATrueColourDevice) {
    Target target(TargetType::Compatible);
    const RECT rect{2, 3, 40, 44};
    Picture pictures[2];
    for (int nearest = 0; nearest < 2; ++nearest)
        pictures[nearest] = target.Draw(nullptr, [&](HDC handle) {
            CDC dc(handle);
            DrawGradient(&dc, rect, RGB(1, 2, 3), RGB(250, 120, 60), 0, nearest);
        });
    EXPECT_EQ(Difference(pictures[0], pictures[1]), "");
}

TEST(Gradient, AbsurdRectangleCostsNoMoreThanWhatShows) {
    for (const TargetType type : kAllTargets) {
        Target target(type);
        const ULONGLONG start = ::GetTickCount64();
        target.Draw(nullptr, [](HDC handle) {
            CDC dc(handle);
            for (int horizontal = 0; horizontal < 2; ++horizontal) {
                constexpr int kFar = 1000000000;
                DrawGradient(&dc, {-kFar, -kFar, kFar, kFar}, 0, 0xFFFFFF, horizontal, 0);
                DrawGradient(&dc, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, 0, 0xFFFFFF, horizontal, 0);
                DrawGradient(&dc, {INT_MAX, INT_MAX, INT_MIN, INT_MIN}, 0, 0xFFFFFF, horizontal, 0);
                DrawGradient(&dc, {0, 0, INT_MAX, INT_MAX}, 0, 0xFFFFFF, horizontal, 0);
            }
        });
        EXPECT_LT(::GetTickCount64() - start, 1000u) << NameOf(type);
    }
}

TEST(Gradient, AnEmptyClipDrawsNothing) {
    Target target(TargetType::Compatible);
    const Picture before = target.Draw(nullptr, [](HDC) {});
    const Picture after = target.Draw([](HDC dc) { ::IntersectClipRect(dc, 0, 0, 0, 0); },
                                      [](HDC handle) {
                                          CDC dc(handle);
                                          DrawGradient(&dc, {0, 0, 50, 40}, 0, 0xFFFFFF, 0, 0);
                                      });
    EXPECT_EQ(Difference(before, after), "");
    DrawGradient(nullptr, {0, 0, 5, 5}, 0, 0, 0, 0);  // no context, no crash
}

TEST(Gradient, LeavesTheContextsBrushAlone) {
    CMemoryDC memory;
    CBitmap mono;
    mono.Attach(::CreateBitmap(8, 8, 1, 1, nullptr));
    const SelectionGuard selected(memory, mono.m_hObject);
    const HGDIOBJ brush = ::GetCurrentObject(memory, OBJ_BRUSH);
    ::SetDCBrushColor(memory, RGB(1, 2, 3));
    DrawGradient(&memory, {0, 0, 8, 8}, 0, 0xFFFFFF, 0, 0);
    EXPECT_EQ(::GetCurrentObject(memory, OBJ_BRUSH), brush);
    EXPECT_EQ(::GetDCBrushColor(memory), RGB(1, 2, 3));
}
