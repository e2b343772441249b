#include "draw/bitmap_draw.h"

#include <gtest/gtest.h>

#include <climits>

#include "draw/skin_bitmap.h"
#include "draw_fixture.h"
#include "main/gui_objects.h"

using namespace tavix_test;
using namespace tavix;

namespace {

/* A bitmap selected into a context of its own, as the definitions read it. */
class Selected {
public:
    explicit Selected(HBITMAP bitmap) : m_guard(m_dc, bitmap) {}
    operator HDC() const { return m_dc; }

private:
    CMemoryDC m_dc;
    SelectionGuard m_guard;
};

void PlainTransparent(HDC dc, HBITMAP bitmap, const SIZE& size, int left, int top, COLORREF key) {
    const Selected source(bitmap);
    for (int x = 0; x < size.cx; ++x)
        for (int y = 0; y < size.cy; ++y) {
            const COLORREF pixel = ::GetPixel(source, x, y);
            if (pixel != key) ::SetPixel(dc, left + x, top + y, pixel);
        }
}

void PlainStretch(HDC dc, HBITMAP bitmap, const SIZE& size, const RECT& rect) {
    const Selected source(bitmap);
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    const int middle = size.cy / 2;
    ::BitBlt(dc, rect.left, rect.top, width, size.cy, source, 0, 0, SRCCOPY);
    for (int y = middle; y < height - middle; ++y)
        ::BitBlt(dc, rect.left, rect.top + y, width, 1, source, 0, middle, SRCCOPY);
    ::BitBlt(dc, rect.left, rect.bottom - middle, width, middle, source, 0, middle, SRCCOPY);
}

/* One random source, held both as a plain bitmap and as one of the skin. */
struct Source {
    Source(Random& random, COLORREF key)
        : depth(kAllDepths[random.Between(0, 7)]),
          size{random.Between(1, random.OneIn(6) ? 150 : 24), random.Between(1, random.OneIn(6) ? 120 : 24)} {
        HBITMAP handle = RandomBitmap(random, depth, size, key);
        in_skin = random.OneIn(2);
        (in_skin ? skin : plain).Attach(handle);
    }
    CBitmap* Bitmap() { return in_skin ? &skin : &plain; }
    HBITMAP Handle() { return *Bitmap(); }

    int depth;
    SIZE size;
    bool in_skin;
    CBitmap plain;
    CSkinBitmap skin;
};

using Draw = std::function<void(CDC&, Source&)>;

/* Runs both drawings on many sources, states and places. */
void Compare(TargetType type, unsigned seed, int rounds, bool plain_mapping,
             const std::function<std::pair<Draw, Draw>(Random&, Source&, COLORREF key)>& make) {
    Target target(type);
    Random random(seed + static_cast<unsigned>(type));
    for (int i = 0; i < rounds; ++i) {
        COLORREF key = random.OneIn(2) ? 3 : random.Colour();
        Source source(random, key);
        if (random.OneIn(2)) {
            const Selected selected(source.Handle());
            const POINT at{random.Between(0, source.size.cx - 1), random.Between(0, source.size.cy - 1)};
            key = ::GetPixel(selected, at.x, at.y);
        }
        const auto state = RandomState(random, plain_mapping);
        const auto [expected, actual] = make(random, source, key);
        const auto run = [&](const Draw& draw) {
            return target.Draw(state, [&](HDC handle) {
                CDC dc(handle);
                draw(dc, source);
            });
        };
        const std::string difference = Difference(run(expected), run(actual));
        ASSERT_EQ(difference, "") << NameOf(type) << ", round " << i << ", source of depth " << source.depth
                                  << ", " << source.size.cx << " by " << source.size.cy
                                  << (source.in_skin ? ", of the skin" : ", plain");
    }
}

void CompareTransparent(TargetType type, int rounds, bool plain_mapping) {
    Compare(type, 3000, rounds, plain_mapping, [](Random& random, Source&, COLORREF key) {
        const int left = random.Between(-30, Target::kSize.cx);
        const int top = random.Between(-30, Target::kSize.cy);
        return std::pair<Draw, Draw>(
            [=](CDC& dc, Source& s) { PlainTransparent(dc, s.Handle(), s.size, left, top, key); },
            [=](CDC& dc, Source& s) { DrawTransparent(&dc, s.Bitmap(), left, top, left + 3, top, key); });
    });
}

/* A bitmap whose rows have colours of their own. */
void FillRows(CBitmap& bitmap, const std::vector<COLORREF>& rows, int width) {
    void* bits = nullptr;
    bitmap.Attach(MakeDib(32, {width, static_cast<LONG>(rows.size())}, true, {}, &bits));
    DWORD* pixel = static_cast<DWORD*>(bits);
    for (const COLORREF c : rows)
        for (int x = 0; x < width; ++x) *pixel++ = RGB(GetBValue(c), GetGValue(c), GetRValue(c));
}

COLORREF At(const Picture& picture, int x, int y) {
    const DWORD p = picture[static_cast<std::size_t>(y * Target::kSize.cx + x)];
    return RGB(GetBValue(p), GetGValue(p), GetRValue(p));
}

}  // namespace

TEST(Transparent, EqualsPixelByPixelOnEveryTarget) {
    for (const TargetType type : kAllTargets) {
        CompareTransparent(type, 200, true);
        if (HasFatalFailure()) return;
    }
}

TEST(Transparent, EqualsPixelByPixelUnderScaledAndTurnedCoordinates) {
    for (const TargetType type : kAllTargets) {
        CompareTransparent(type, 40, false);
        if (HasFatalFailure()) return;
    }
}

TEST(Transparent, RectangleSmallerThanTheBitmapStillDrawsTheWholeBitmap) {
    CBitmap bitmap;
    FillRows(bitmap, {RGB(1, 1, 1), RGB(2, 2, 2), RGB(3, 0, 0)}, 4);
    Target target(TargetType::Compatible);
    const Picture before = target.Draw(nullptr, [](HDC) {});
    const Picture picture = target.Draw(nullptr, [&](HDC handle) {
        CDC dc(handle);
        EXPECT_EQ(DrawTransparent(&dc, &bitmap, 10, 10, 11, 11, 3), 1);
    });
    EXPECT_EQ(At(picture, 13, 11), RGB(2, 2, 2));
    EXPECT_EQ(At(picture, 13, 12), At(before, 13, 12));  // the key's row
    EXPECT_EQ(At(picture, 14, 11), At(before, 14, 11));
}

TEST(Transparent, KeyWithATopByteHidesNothing) {
    CBitmap bitmap;
    FillRows(bitmap, {RGB(3, 0, 0)}, 1);
    for (const TargetType type : {TargetType::Compatible, TargetType::Surface, TargetType::Dib16}) {
        Target target(type);
        const Picture picture = target.Draw(nullptr, [&](HDC handle) {
            CDC dc(handle);
            DrawTransparent(&dc, &bitmap, 5, 6, 0, 0, 0x01000003);
        });
        EXPECT_EQ(GetRValue(At(picture, 5, 6)), type == TargetType::Dib16 ? 0 : 3);
    }
}

TEST(Transparent, NullIsPassedOver) {
    Target target(TargetType::Compatible);
    CDC dc(target.Dc());
    CBitmap without_handle;
    EXPECT_EQ(DrawTransparent(&dc, nullptr, 0, 0, 1, 1, 3), 1);
    EXPECT_EQ(DrawTransparent(&dc, &without_handle, 0, 0, 1, 1, 3), 1);
    EXPECT_EQ(DrawVerticalStretch(&dc, nullptr, {0, 0, 5, 5}, 0), 1);
    EXPECT_EQ(DrawVerticalStretch(&dc, &without_handle, {0, 0, 5, 5}, 0), 1);
    DrawBitmap(dc, nullptr, 0, 0);
    DrawBitmap(dc, &without_handle, 0, 0);
    DrawBitmapIn(dc, nullptr, {0, 0, 5, 5});
    EXPECT_EQ(TileHorizontally(dc, nullptr, 3, 500, 0), 3);
    EXPECT_EQ(TileHorizontally(dc, &without_handle, 3, INT_MAX, 0), 3);
}

TEST(BitmapDraw, CopiesEqualTheirBlitsOnEveryTarget) {
    for (const TargetType type : kAllTargets) {
        for (const bool plain_mapping : {true, false}) {
            const int rounds = plain_mapping ? 150 : 30;
            Compare(type, 4000, rounds, plain_mapping, [](Random& random, Source&, COLORREF) {
                const int x = random.Between(-30, Target::kSize.cx);
                const int y = random.Between(-30, Target::kSize.cy);
                return std::pair<Draw, Draw>(
                    [=](CDC& dc, Source& s) {
                        const Selected source(s.Handle());
                        ::BitBlt(dc, x, y, s.size.cx, s.size.cy, source, 0, 0, SRCCOPY);
                    },
                    [=](CDC& dc, Source& s) { DrawBitmap(dc, s.Bitmap(), x, y); });
            });
            if (HasFatalFailure()) return;
        }
    }
}

TEST(BitmapDraw, PartsEqualTheirBlitsOnEveryTarget) {
    for (const TargetType type : kAllTargets) {
        Compare(type, 5000, 100, true, [](Random& random, Source&, COLORREF) {
            const int x = random.Between(-10, Target::kSize.cx);
            const int y = random.Between(-10, Target::kSize.cy);
            const RECT rect{x, y, x + random.Between(1, 40), y + random.Between(1, 40)};
            return std::pair<Draw, Draw>(
                [=](CDC& dc, Source& s) {
                    const Selected source(s.Handle());
                    const CRect r(rect);
                    ::BitBlt(dc, r.left, r.top, r.Width(), r.Height(), source, 0, 0, SRCCOPY);
                },
                [=](CDC& dc, Source& s) { DrawBitmapIn(dc, s.Bitmap(), rect); });
        });
        if (HasFatalFailure()) return;
    }
}

TEST(BitmapDraw, AnEmptyRectangleTakesNothing) {
    CBitmap bitmap;
    FillRows(bitmap, {0, 0, 0}, 3);
    Target target(TargetType::Compatible);
    const Picture before = target.Draw(nullptr, [](HDC) {});
    const Picture after = target.Draw(nullptr, [&](HDC handle) {
        CDC dc(handle);
        DrawBitmapIn(dc, &bitmap, {5, 5, 5, 9});
        DrawBitmapIn(dc, &bitmap, {9, 9, 5, 5});
    });
    EXPECT_EQ(Difference(before, after), "");
}

TEST(VerticalStretch, EqualsItsBlitsOnEveryTarget) {
    for (const TargetType type : kAllTargets) {
        for (const bool plain_mapping : {true, false}) {
            const int rounds = plain_mapping ? 150 : 20;
            Compare(type, 6000, rounds, plain_mapping, [](Random& random, Source&, COLORREF) {
                const int x = random.Between(-20, Target::kSize.cx);
                const int y = random.Between(-60, Target::kSize.cy);
                const int height = random.OneIn(4) ? random.Between(-20, 3) : random.Between(0, 120);
                // A negative width mirrors, with the platform's own rules for it.
                const RECT rect{x, y, x + random.Between(random.OneIn(8) ? -20 : 0, 40), y + height};
                return std::pair<Draw, Draw>(
                    [=](CDC& dc, Source& s) { PlainStretch(dc, s.Handle(), s.size, rect); },
                    [=](CDC& dc, Source& s) { DrawVerticalStretch(&dc, s.Bitmap(), rect, 0); });
            });
            if (HasFatalFailure()) return;
        }
    }
}

TEST(VerticalStretch, RepeatsTheMiddleRowAndKeepsBothHalves) {
    CBitmap bitmap;
    const COLORREF a = RGB(10, 0, 0), b = RGB(20, 0, 0), c = RGB(30, 0, 0), d = RGB(40, 0, 0);
    FillRows(bitmap, {a, b, c, d}, 6);
    Target target(TargetType::Compatible);
    const Picture picture = target.Draw(nullptr, [&](HDC handle) {
        CDC dc(handle);
        DrawVerticalStretch(&dc, &bitmap, {2, 1, 30, 11}, 0);
    });
    const COLORREF expected[10] = {a, b, c, c, c, c, c, c, c, d};
    for (int y = 0; y < 10; ++y) EXPECT_EQ(At(picture, 7, 1 + y), expected[y]) << y;
    // Nothing comes from beyond the bitmap's own width.
    EXPECT_EQ(At(picture, 8, 5), At(target.Draw(nullptr, [](HDC) {}), 8, 5));
}

TEST(VerticalStretch, LowRectangleTakesTheWholeBitmapAndTheLowerHalfOverIt) {
    CBitmap bitmap;
    const COLORREF a = RGB(10, 0, 0), b = RGB(20, 0, 0), c = RGB(30, 0, 0), d = RGB(40, 0, 0);
    FillRows(bitmap, {a, b, c, d}, 6);
    Target target(TargetType::Compatible);
    const Picture picture = target.Draw(nullptr, [&](HDC handle) {
        CDC dc(handle);
        DrawVerticalStretch(&dc, &bitmap, {0, 10, 6, 13}, 0);
    });
    const COLORREF expected[4] = {a, c, d, d};
    for (int y = 0; y < 4; ++y) EXPECT_EQ(At(picture, 2, 10 + y), expected[y]) << y;
}

TEST(VerticalStretch, AbsurdHeightCostsNoMoreThanWhatShows) {
    Random random(9);
    for (const int depth : {0, -1}) {
        CBitmap bitmap;
        bitmap.Attach(RandomBitmap(random, depth, {9, 15}, 3));
        for (const TargetType type : kAllTargets) {
            Target target(type);
            CDC dc(target.Dc());
            const ULONGLONG start = ::GetTickCount64();
            DrawVerticalStretch(&dc, &bitmap, {0, -1000000000, 20, 1000000000}, 0);
            DrawVerticalStretch(&dc, &bitmap, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, 0);
            DrawVerticalStretch(&dc, &bitmap, {INT_MAX, INT_MAX, INT_MIN, INT_MIN}, 0);
            EXPECT_LT(::GetTickCount64() - start, 1000u) << NameOf(type);
        }
    }
}

TEST(Tiles, EqualTheirBlitsOnEveryTarget) {
    for (const TargetType type : kAllTargets) {
        for (const bool plain_mapping : {true, false}) {
            const int rounds = plain_mapping ? 150 : 30;
            Compare(type, 7000, rounds, plain_mapping, [](Random& random, Source&, COLORREF) {
                const int from = random.Between(-300, Target::kSize.cx);
                const int end = from + random.Between(-5, 500);
                const int y = random.Between(-20, Target::kSize.cy);
                return std::pair<Draw, Draw>(
                    [=](CDC& dc, Source& s) {
                        const Selected source(s.Handle());
                        for (int x = from; x < end; x += s.size.cx)
                            ::BitBlt(dc, x, y, s.size.cx, s.size.cy, source, 0, 0, SRCCOPY);
                    },
                    [=](CDC& dc, Source& s) {
                        int x = from;
                        while (x < end) x += s.size.cx;
                        EXPECT_EQ(TileHorizontally(dc, s.Bitmap(), from, end, y), x);
                    });
            });
            if (HasFatalFailure()) return;
        }
    }
}

TEST(Tiles, FarEndsNeitherOverflowNorTakeTime) {
    Random random(8);
    for (const int depth : {0, -1}) {
        CBitmap bitmap;
        bitmap.Attach(RandomBitmap(random, depth, {7, 5}, 3));
        for (const TargetType type : kAllTargets) {
            Target target(type);
            CDC dc(target.Dc());
            const ULONGLONG start = ::GetTickCount64();
            EXPECT_EQ(TileHorizontally(dc, &bitmap, 0, INT_MAX, 3), INT_MAX);
            EXPECT_EQ(TileHorizontally(dc, &bitmap, INT_MIN, INT_MAX, 3), INT_MAX);
            EXPECT_EQ(TileHorizontally(dc, &bitmap, INT_MIN, INT_MIN + 1, 3), INT_MIN + 7);
            EXPECT_EQ(TileHorizontally(dc, &bitmap, INT_MIN, 0, INT_MAX), 5);
            EXPECT_EQ(TileHorizontally(dc, &bitmap, 5, 5, 3), 5);
            EXPECT_LT(::GetTickCount64() - start, 1000u) << NameOf(type);
        }
    }
}

TEST(BitmapDraw, BitmapSelectedElsewhereStillDraws) {
    Random random(21);
    for (const int depth : {0, 32, 24}) {
        CBitmap bitmap;
        bitmap.Attach(RandomBitmap(random, depth, {20, 16}, 3));
        for (const TargetType type : {TargetType::Compatible, TargetType::Surface, TargetType::Dib16}) {
            Target target(type);
            const auto draw = [&](HDC handle) {
                CDC dc(handle);
                DrawBitmap(dc, &bitmap, 1, 2);
                DrawTransparent(&dc, &bitmap, 30, 5, 0, 0, 3);
                TileHorizontally(dc, &bitmap, 0, 60, 28);
                DrawVerticalStretch(&dc, &bitmap, {45, 0, 60, 30}, 0);
            };
            const Picture expected = target.Draw(nullptr, draw);
            const Selected held(bitmap);
            const Picture actual = target.Draw(nullptr, draw);
            EXPECT_EQ(Difference(expected, actual), "") << NameOf(type) << ", depth " << depth;
        }
    }
}

TEST(BitmapDraw, BitmapCanBeDeletedRightAfterItWasDrawn) {
    Random random(22);
    for (const TargetType type : kAllTargets) {
        Target target(type);
        CDC dc(target.Dc());
        for (const int depth : kAllDepths) {
            CBitmap bitmap;
            bitmap.Attach(RandomBitmap(random, depth, {8, 8}, 3));
            DrawBitmap(dc, &bitmap, 1, 2);
            DrawTransparent(&dc, &bitmap, 30, 5, 0, 0, 3);
            const HGDIOBJ handle = bitmap.m_hObject;
            EXPECT_TRUE(bitmap.DeleteObject());
            EXPECT_EQ(::GetObjectType(handle), 0u) << NameOf(type) << ", depth " << depth;
        }
    }
}

TEST(BitmapDraw, DrawingLeavesNoObjects) {
    Random random(23);
    Target targets[] = {Target(TargetType::Compatible), Target(TargetType::Dib16),
                        Target(TargetType::Window)};
    const auto round = [&] {
        for (const int depth : {0, -1, 8}) {
            CSkinBitmap bitmap;
            bitmap.Attach(RandomBitmap(random, depth, {12, 9}, 3));
            for (Target& target : targets) {
                CDC dc(target.Dc());
                DrawBitmap(dc, &bitmap, 1, 2);
                DrawTransparent(&dc, &bitmap, 30, 5, 0, 0, 3);
                TileHorizontally(dc, &bitmap, 0, 60, 28);
                DrawVerticalStretch(&dc, &bitmap, {45, 0, 60, 30}, 0);
            }
        }
    };
    round();
    const int before = CountGdiObjects();
    for (int i = 0; i < 300; ++i) round();
    EXPECT_LE(CountGdiObjects() - before, 1);
}

TEST(DarkenColour, ScalesEachChannelAndClearsTheTopByte) {
    EXPECT_EQ(DarkenColor(0, RGB(10, 128, 255)), RGB(10, 128, 255));
    EXPECT_EQ(DarkenColor(255, RGB(10, 128, 255)), RGB(0, 0, 0));
    EXPECT_EQ(DarkenColor(51, RGB(10, 128, 255)), RGB(8, 102, 204));
    EXPECT_EQ(DarkenColor(127, RGB(1, 2, 3)), RGB(1, 1, 2));  // 0.50, 1.00 and 1.51, rounded
    EXPECT_EQ(DarkenColor(0, 0xFF0A0B0C), 0x000A0B0Cu);
}
