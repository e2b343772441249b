// What shows of a scroll bar, pixel by pixel.
#include <climits>

#include "bar_fixture.h"
#include "draw/bitmap_draw.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"

namespace tavix_test {
namespace {

constexpr COLORREF kFirstLine = RGB(1, 2, 3), kSecondLine = RGB(4, 5, 6);
constexpr COLORREF kPressedFirst = RGB(7, 8, 9), kPressedSecond = RGB(10, 11, 12);

class BarPaint : public BarTest {
protected:
    void SetUp() override {
        for (DWORD id = BMP_SB_ARROW_NORMAL; id <= BMP_SB_ARROW2_DISABLED; ++id)
            skin.SetBitmap(id, 15, 18, Flat(id));
        for (DWORD id : {BMP_SB_TRACK, BMP_SB_TRACK_DISABLED}) skin.SetBitmap(id, kBreadth, 6, Flat(id));
        for (DWORD id :
             {BMP_SB_THUMB_TOP, BMP_SB_THUMB_HOT_TOP, BMP_SB_THUMB_BOTTOM, BMP_SB_THUMB_HOT_BOTTOM})
            skin.SetBitmap(id, 15, 4, Flat(id));
        for (DWORD id : {BMP_SB_THUMB_TILE, BMP_SB_THUMB_HOT_TILE}) skin.SetBitmap(id, 15, 3, Flat(id));
        skin.SetColour(CLR_SB_GRIP_LIGHT, kFirstLine).SetColour(CLR_SB_GRIP_DARK, kSecondLine);
        skin.SetColour(CLR_SB_GRIP_PRESSED_LIGHT, kPressedFirst)
            .SetColour(CLR_SB_GRIP_PRESSED_DARK, kPressedSecond);
        BarTest::SetUp();
    }
    static COLORREF Flat(DWORD id) { return TestSkin::ColourOfBitmap(id); }

    /* The bar's picture in the co-ordinates of an upright bar. */
    class Upright {
    public:
        Upright(Axis axis, Picture picture) : m_axis(axis), m_picture(std::move(picture)) {}
        COLORREF At(int across, int along) const {
            return m_axis == Axis::Upright ? m_picture.At(across, along) : m_picture.At(along, across);
        }
        int Count(COLORREF colour) const { return m_picture.CountOf(colour); }

    private:
        Axis m_axis;
        Picture m_picture;
    };
    Upright Shown() {
        ::UpdateWindow(bar->m_hWnd);
        return {GetParam(), PictureOfClient(bar->m_hWnd)};
    }
    /* All of a rectangle of the upright bar is of one colour. */
    static void ExpectFilled(const Upright& picture, const RECT& area, COLORREF colour) {
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x)
                ASSERT_EQ(picture.At(x, y), colour) << "at " << x << ", " << y;
    }
    /* A thumb of known place and length, whatever the range. */
    void SetThumb(int from, int length) {
        bar->m_nThumbLen = length;
        bar->m_nThumbPixel = from;
        bar->m_bDragging = 1;
        ::InvalidateRect(bar->m_hWnd, nullptr, TRUE);
    }
    // An upright bar's thumb leaves a column of the track at either side.
    int Left() const { return GetParam() == Axis::Upright ? 1 : 0; }
    int Right() const { return kBreadth - Left(); }
};
INSTANTIATE_TEST_SUITE_P(Axes, BarPaint, kBothAxes, NameOfAxis);

TEST_P(BarPaint, EnabledBarShowsTrackArrowsAndThumb) {
    MakeBarWith(0, 100, 30, 40);
    SetThumb(60, 50);
    const Upright picture = Shown();
    ExpectFilled(picture, {1, 1, kBreadth - 1, 19}, Flat(BMP_SB_ARROW_NORMAL));
    ExpectFilled(picture, {1, kLength - 19, kBreadth - 1, kLength - 1}, Flat(BMP_SB_ARROW2_NORMAL));
    ExpectFilled(picture, {0, 0, kBreadth, 1}, Flat(BMP_SB_TRACK));
    // The column beside an upright bar's thumb.
    if (GetParam() == Axis::Upright) ExpectFilled(picture, {0, 0, 1, kLength}, Flat(BMP_SB_TRACK));
    ExpectFilled(picture, {0, 19, kBreadth, 60}, Flat(BMP_SB_TRACK));
    ExpectFilled(picture, {0, 110, kBreadth, kLength - 19}, Flat(BMP_SB_TRACK));
    ExpectFilled(picture, {Left(), 60, Right(), 64}, Flat(BMP_SB_THUMB_TOP));
    ExpectFilled(picture, {Left(), 64, Right(), 78}, Flat(BMP_SB_THUMB_TILE));
    ExpectFilled(picture, {Left(), 92, Right(), 106}, Flat(BMP_SB_THUMB_TILE));
    ExpectFilled(picture, {Left(), 106, Right(), 110}, Flat(BMP_SB_THUMB_BOTTOM));
}

TEST_P(BarPaint, PressedPartsShowTheirOwnArt) {
    MakeBarWith(0, 100, 30, 40);
    SetThumb(60, 50);
    bar->m_bArrow1Pressed = 1;
    EXPECT_EQ(Shown().At(8, 10), Flat(BMP_SB_ARROW_DOWN));
    EXPECT_EQ(Shown().At(8, kLength - 10), Flat(BMP_SB_ARROW2_NORMAL));
    bar->m_bArrow1Pressed = 0;
    bar->m_bArrow2Pressed = 1;
    bar->m_bThumbPressed = 1;
    SetThumb(60, 50);
    const Upright picture = Shown();
    EXPECT_EQ(picture.At(8, 10), Flat(BMP_SB_ARROW_NORMAL));
    EXPECT_EQ(picture.At(8, kLength - 10), Flat(BMP_SB_ARROW2_DOWN));
    ExpectFilled(picture, {Left(), 60, Right(), 64}, Flat(BMP_SB_THUMB_HOT_TOP));
    ExpectFilled(picture, {Left(), 64, Right(), 78}, Flat(BMP_SB_THUMB_HOT_TILE));
    ExpectFilled(picture, {Left(), 106, Right(), 110}, Flat(BMP_SB_THUMB_HOT_BOTTOM));
    EXPECT_EQ(picture.Count(kFirstLine), 0);
    EXPECT_EQ(picture.Count(kSecondLine), 0);
    const int breadth = Right() - Left() - 8;
    EXPECT_EQ(picture.Count(kPressedFirst), 4 * breadth);
    EXPECT_EQ(picture.Count(kPressedSecond), 5 * breadth);
    const int first = 60 + 25 - 6;
    ExpectFilled(picture, {Left() + 4, first + 1, Right() - 4, first + 2}, kPressedSecond);
    ExpectFilled(picture, {Left() + 4, first + 2, Right() - 4, first + 3}, kPressedFirst);
}

TEST_P(BarPaint, DisabledBarHasNoThumb) {
    MakeBarWith(0, 100, 30, 40);
    ::EnableWindow(bar->m_hWnd, FALSE);
    bar->m_bThumbPressed = bar->m_bArrow1Pressed = bar->m_bArrow2Pressed = 1;
    const Upright picture = Shown();
    ExpectFilled(picture, {1, 1, kBreadth - 1, 19}, Flat(BMP_SB_ARROW_DISABLED));
    ExpectFilled(picture, {1, kLength - 19, kBreadth - 1, kLength - 1}, Flat(BMP_SB_ARROW2_DISABLED));
    ExpectFilled(picture, {0, 19, kBreadth, kLength - 19}, Flat(BMP_SB_TRACK_DISABLED));
}

TEST_P(BarPaint, TrackShorterThanTheThumbHasNone) {
    MakeBarWith(0, 100, 30, 40);
    SetThumb(20, 161);
    EXPECT_EQ(Shown().Count(Flat(BMP_SB_THUMB_TOP)), 0);
    SetThumb(20, 160);
    EXPECT_NE(Shown().Count(Flat(BMP_SB_THUMB_TOP)), 0);
}

TEST_P(BarPaint, ShortThumbShowsItsEndsOnly) {
    MakeBarWith(0, 100, 30, 40);
    // Two ends and one pixel: no room for a copy of the middle.
    SetThumb(60, 7);
    const Upright picture = Shown();
    EXPECT_EQ(picture.Count(Flat(BMP_SB_THUMB_TILE)), 0);
    ExpectFilled(picture, {Left(), 60, Right(), 63}, Flat(BMP_SB_THUMB_TOP));
    ExpectFilled(picture, {Left(), 63, Right(), 67}, Flat(BMP_SB_THUMB_BOTTOM));
}

TEST_P(BarPaint, MiddleStartsOnlyWhereAWholeCopyFits) {
    skin.SetBitmap(BMP_SB_THUMB_BOTTOM, 15, 1, Flat(BMP_SB_THUMB_BOTTOM));
    UseChangedSkin();
    MakeBarWith(0, 100, 30, 40);
    SetThumb(60, 14);
    // Copies at 64, 67 and 70; the next would start at 71 at the latest. The last end is but one pixel.
    const Upright picture = Shown();
    EXPECT_EQ(picture.At(8, 72), Flat(BMP_SB_THUMB_TILE));
    EXPECT_EQ(picture.At(8, 73), Flat(BMP_SB_THUMB_BOTTOM));
    SetThumb(60, 15);
    EXPECT_EQ(Shown().At(8, 73), Flat(BMP_SB_TRACK));
}

// ---------------------------------------------------------------- grip lines

TEST_P(BarPaint, GripHasFivePairsLessTheFirstLine) {
    MakeBarWith(0, 100, 30, 40);
    SetThumb(60, 50);
    const Upright picture = Shown();
    const int first = 60 + 25 - 6;
    for (int i = 0; i < 5; ++i) {
        const RECT line{Left() + 4, first + 2 * i, Right() - 4, first + 2 * i + 1};
        ExpectFilled(picture, line, i ? kFirstLine : Flat(BMP_SB_THUMB_TILE));
        ExpectFilled(picture, {line.left, line.top + 1, line.right, line.bottom + 1}, kSecondLine);
        // Neither end goes further.
        EXPECT_EQ(picture.At(Left() + 3, first + 2 * i + 1), Flat(BMP_SB_THUMB_TILE));
        EXPECT_EQ(picture.At(Right() - 4, first + 2 * i + 1), Flat(BMP_SB_THUMB_TILE));
    }
    const int breadth = Right() - Left() - 8;
    EXPECT_EQ(picture.Count(kFirstLine), 4 * breadth);
    EXPECT_EQ(picture.Count(kSecondLine), 5 * breadth);
}

TEST_P(BarPaint, ShortThumbHasFewerGripLinesOrNone) {
    // The horizontal bar keeps the width of the end's art free, the upright one its height.
    skin.SetBitmap(BMP_SB_THUMB_TOP, 4, 4, Flat(BMP_SB_THUMB_TOP));
    UseChangedSkin();
    MakeBarWith(0, 100, 30, 40);
    const int breadth = Right() - Left() - 8;
    for (const auto& [length, pairs] : {std::pair{20, 5}, {16, 4}, {13, 3}, {10, 1}, {8, 0}}) {
        SetThumb(60, length);
        int expected = 0;
        for (int i = 0; i < 5; ++i) {
            const int line = 60 + length / 2 - 6 + 2 * i;
            expected += line >= 64 && line <= 60 + length - 4 - 1;
        }
        EXPECT_EQ(expected, pairs) << length;
        EXPECT_EQ(Shown().Count(kSecondLine), expected * breadth) << length;
    }
}

TEST_P(BarPaint, GripKeepsTheWidthOfTheArtFreeOnAHorizontalBar) {
    skin.SetBitmap(BMP_SB_THUMB_TOP, 23, 4, Flat(BMP_SB_THUMB_TOP));
    UseChangedSkin();
    MakeBarWith(0, 100, 30, 40);
    SetThumb(60, 50);
    const int breadth = Right() - Left() - 8;
    // Between 83 and 86 there is room for two pairs of the five.
    EXPECT_EQ(Shown().Count(kSecondLine), (GetParam() == Axis::Upright ? 5 : 2) * breadth);
}

// ---------------------------------------------------------------- the art's own axes

TEST_P(BarPaint, HorizontalBarShowsTheArtTransposed) {
    const auto pixel = [](int x, int y) { return RGB(10 * x, 10 * y, 100); };
    skin.SetBitmap(BMP_SB_ARROW_NORMAL, 15, 18, pixel);
    UseChangedSkin();
    MakeBarWith(0, 100, 30, 40);
    const Upright picture = Shown();
    for (int y = 0; y < 18; ++y)
        for (int x = 0; x < 15; ++x) ASSERT_EQ(picture.At(1 + x, 1 + y), pixel(x, y)) << x << ", " << y;
}

TEST_P(BarPaint, TrackRepeatsAlongTheBarAndStretchesAcrossIt) {
    const auto pixel = [](int x, int y) { return RGB(x ? 200 : 50, 20 * y, 7); };
    skin.SetBitmap(BMP_SB_TRACK, 2, 7, pixel);
    UseChangedSkin();
    MakeBar(kLength, WS_VISIBLE, 10);
    bar->m_nThumbLen = 1000;
    const Upright picture = Shown();
    for (int along = 20; along < 180; ++along) {
        ASSERT_EQ(picture.At(0, along), pixel(0, along % 7)) << along;
        ASSERT_EQ(picture.At(4, along), pixel(0, along % 7)) << along;
        ASSERT_EQ(picture.At(5, along), pixel(1, along % 7)) << along;
        ASSERT_EQ(picture.At(9, along), pixel(1, along % 7)) << along;
    }
}

TEST_P(BarPaint, StretchesAsThePlatformDoes) {
    // Sizes that the arrow's rectangle is neither.
    const auto pixel = [](int x, int y) { return RGB(12 * x, 9 * y, (x * 31 + y * 17) & 255); };
    for (const SIZE size : {SIZE{7, 9}, SIZE{15, 9}, SIZE{20, 25}, SIZE{1, 1}, SIZE{15, 18}}) {
        skin.SetBitmap(BMP_SB_ARROW_NORMAL, size.cx, size.cy, pixel);
        UseChangedSkin();
        MakeBarWith(0, 100, 30, 40);
        const CRect place = bar->Rects().first_arrow;
        const bool across = GetParam() == Axis::Across;
        const auto source = MakeBitmap(across ? size.cy : size.cx, across ? size.cx : size.cy,
                                       [&](int x, int y) { return across ? pixel(y, x) : pixel(x, y); });
        Canvas canvas(place.Width(), place.Height(), 0);
        {
            CMemoryDC memory(canvas.Dc());
            const SelectionGuard guard(memory, source->GetSafeHandle());
            const CSize from = source->GetBitmapSize();
            ::StretchBlt(canvas.Dc(), 0, 0, place.Width(), place.Height(), memory, 0, 0, from.cx, from.cy,
                         SRCCOPY);
        }
        const Picture expected = canvas.Take();
        ::UpdateWindow(bar->m_hWnd);
        const Picture picture = PictureOfClient(bar->m_hWnd);
        for (int y = 0; y < place.Height(); ++y)
            for (int x = 0; x < place.Width(); ++x)
                ASSERT_EQ(picture.At(place.left + x, place.top + y), expected.At(x, y))
                    << size.cx << " " << x << " " << y;
    }
}

TEST_P(BarPaint, TransposedArtIsMadeOnceAndDiesWithTheSkin) {
    auto* track = tavix::AsSkinBitmap(tavix::SkinBitmap(BMP_SB_ARROW_NORMAL));
    ASSERT_NE(track, nullptr);
    tavix::CSkinBitmap* first = track->Transposed();
    ASSERT_NE(first, nullptr);
    const HGDIOBJ handle = first->m_hObject;
    MakeBarWith(0, 100, 30, 40);
    Shown();
    EXPECT_EQ(track->Transposed()->m_hObject, handle);
    EXPECT_EQ(first->Size().cx, track->Size().cy);
    UseChangedSkin();
    EXPECT_EQ(::GetObjectType(handle), 0u);
}

// ---------------------------------------------------------------- missing art

TEST_P(BarPaint, MissingTrackLeavesNothingOfFormerPaintings) {
    skin.RemoveBitmaps(skinScrollbar);
    UseChangedSkin();
    {
        Canvas canvas(kLength, kLength, RGB(1, 1, 1));
        MakeBarWith(0, 100, 30, 40);
    }
    const Upright picture = Shown();
    EXPECT_EQ(picture.At(0, 0), RGB(0, 0, 0));
    EXPECT_EQ(picture.At(8, 30), RGB(0, 0, 0));
    EXPECT_EQ(picture.At(8, 10), RGB(0, 0, 0));
}

TEST_P(BarPaint, EngineMayBeMissingAtPaintTime) {
    MakeBarWith(0, 100, 30, 40);
    ::UnInstallTavixSkin();
    ::InvalidateRect(bar->m_hWnd, nullptr, TRUE);
    EXPECT_EQ(Shown().At(8, 30), RGB(0, 0, 0));
    SendAt(WM_LBUTTONDOWN, 10);
    SendAt(WM_LBUTTONUP, 10, 0);
    EXPECT_EQ(Notifications(), (std::vector<Told>{{SB_LINEUP, 0}}));
}

TEST_P(BarPaint, BarsOfAnySizePaint) {
    for (int length : {0, 1, 2, 5, 19, 20, 39, 40, 41, 60, 3000})
        for (int breadth : {0, 1, 2, 3, 17, 60}) {
            MakeBar(length, WS_VISIBLE, breadth);
            SetInfo(*bar, 0, 100, 10, 50);
            RepaintedClient(bar->m_hWnd);
            bar->m_bArrow1Pressed = 1;
            SetThumb(-5, 12);
            RepaintedClient(bar->m_hWnd);
            SetThumb(INT_MIN, INT_MAX);
            RepaintedClient(bar->m_hWnd);
            SetThumb(INT_MAX, INT_MAX);
            RepaintedClient(bar->m_hWnd);
            bar->m_nArrowLen = INT_MAX;
            RepaintedClient(bar->m_hWnd);
            bar->m_nArrowLen = INT_MIN;
            SetThumb(INT_MIN, INT_MAX);
            RepaintedClient(bar->m_hWnd);
            EXPECT_TRUE(::IsWindow(bar->m_hWnd));
        }
}

// ---------------------------------------------------------------- into another context

TEST_P(BarPaint, PaintToDrawsTheSamePictureElsewhere) {
    MakeBarWith(0, 100, 30, 40);
    SetThumb(60, 50);
    ::UpdateWindow(bar->m_hWnd);
    const Picture shown = PictureOfClient(bar->m_hWnd);
    Canvas canvas(260, 260, RGB(9, 9, 9));
    const RECT place{31, 22, 31 + shown.width, 22 + shown.height};
    bar->PaintTo(canvas.Dc(), place.left, place.top, place.right, place.bottom);
    EXPECT_EQ(PictureOfDc(canvas.Dc(), place), shown);
    const Picture all = canvas.Take();
    EXPECT_EQ(all.CountOf(RGB(9, 9, 9)), 260 * 260 - shown.width * shown.height);
    bar->PaintTo(canvas.Dc(), 5, 5, 5, 50);
    bar->PaintTo(canvas.Dc(), 50, 50, 5, 5);
    bar->PaintTo(canvas.Dc(), INT_MIN, INT_MIN, INT_MAX, INT_MAX);
    bar->PaintTo(nullptr, 0, 0, 10, 10);
    EXPECT_EQ(canvas.Take(), all);
}

TEST_P(BarPaint, PaintToTilesTheTrackOverTheRectangle) {
    MakeBarWith(0, 100, 30, 40);
    Canvas canvas(300, 300, RGB(9, 9, 9));
    const POINT end = At(GetParam(), kLength + 30, kBreadth + 10);
    bar->PaintTo(canvas.Dc(), 0, 0, end.x, end.y);
    const Upright picture(GetParam(), canvas.Take());
    ExpectFilled(picture, {0, kLength, kBreadth + 10, kLength + 30}, Flat(BMP_SB_TRACK));
    ExpectFilled(picture, {kBreadth, 0, kBreadth + 10, kLength}, Flat(BMP_SB_TRACK));
    EXPECT_EQ(picture.At(8, 10), Flat(BMP_SB_ARROW_NORMAL));
}

TEST_P(BarPaint, PaintToWithoutAWindowDrawsTheTrack) {
    MakeBarWith(0, 100, 30, 40);
    ::DestroyWindow(bar->m_hWnd);
    Canvas canvas(30, 30, RGB(9, 9, 9));
    bar->PaintTo(canvas.Dc(), 0, 0, 30, 30);
    EXPECT_EQ(canvas.Take().CountOf(Flat(BMP_SB_TRACK_DISABLED)), 900);
}

// ---------------------------------------------------------------- size grips

class SizeGrip : public BarPaint {
protected:
    void SetUp() override {
        // A triangle, its corner at the bottom right.
        skin.SetBitmap(BMP_FRAME_GRIPPER, 12, 12,
                       [](int x, int y) { return x + y >= 11 ? kGrip : TestSkin::kTransparent; });
        skin.SetColour(CLR_TRANSPARENT, TestSkin::kTransparent);
        BarPaint::SetUp();
    }
    static constexpr COLORREF kGrip = RGB(70, 80, 90);
    static constexpr COLORREF kParent = RGB(10, 120, 200);
};
INSTANTIATE_TEST_SUITE_P(Axes, SizeGrip, kBothAxes, NameOfAxis);

TEST_P(SizeGrip, ShowsItsPictureOverTheParentsColour) {
    MakeBar(20, WS_VISIBLE | SBS_SIZEGRIP, 20);
    ::SetWindowRgn(bar->m_hWnd, nullptr, FALSE);
    ::UpdateWindow(Parent());
    const Picture picture = RepaintedClient(bar->m_hWnd);
    EXPECT_EQ(picture.At(19, 19), kGrip);
    EXPECT_EQ(picture.At(19, 8), kGrip);
    EXPECT_EQ(picture.At(8, 19), kGrip);
    EXPECT_EQ(picture.At(8, 18), kParent);
    EXPECT_EQ(picture.At(0, 0), kParent);
    EXPECT_EQ(picture.CountOf(kGrip), 12 * 13 / 2);
    EXPECT_EQ(picture.CountOf(kParent), 400 - 12 * 13 / 2);
}

TEST_P(SizeGrip, AtTheParentsTopTakesTheColourBelow) {
    MakeBar(20, WS_VISIBLE | SBS_SIZEGRIP, 20);
    ::MoveWindow(bar->m_hWnd, 50, 0, 20, 20, FALSE);
    ::SetWindowRgn(bar->m_hWnd, nullptr, FALSE);
    ::UpdateWindow(Parent());
    const CClientDC dc(Parent());
    const CRect below(40, 20, 80, 30);
    const CBrush brush(RGB(200, 10, 10));
    ::FillRect(dc, &below, brush);
    EXPECT_EQ(RepaintedClient(bar->m_hWnd).At(0, 0), RGB(200, 10, 10));
}

// Where the parent has no pixel beside it that could be read.
TEST_P(SizeGrip, WithoutAColourOfTheParentHasTheSkins) {
    skin.SetColour(CLR_DLG_BACK_TO, RGB(61, 62, 63));
    UseChangedSkin();
    MakeBar(20, WS_VISIBLE | SBS_SIZEGRIP, 20);
    ::MoveWindow(bar->m_hWnd, -5, 50, 20, 20, FALSE);
    ::SetWindowRgn(bar->m_hWnd, nullptr, FALSE);
    ::UpdateWindow(Parent());
    const Picture picture = RepaintedClient(bar->m_hWnd);
    for (int x = 5; x < 20; ++x) EXPECT_EQ(picture.At(x, 0), RGB(61, 62, 63)) << x;
    EXPECT_EQ(picture.At(19, 19), kGrip);
    Canvas canvas(30, 30, RGB(9, 9, 9));
    bar->PaintTo(canvas.Dc(), 0, 0, 20, 20);
    EXPECT_EQ(canvas.Take().CountOf(RGB(61, 62, 63)), 400 - 12 * 13 / 2);
}

TEST_P(SizeGrip, IsNotCutIntoMoreRunsThanWindowsBear) {
    for (int rows : {128, 129}) {
        // 64 runs of key colour in each of 128 rows, and one in the row below.
        skin.SetBitmap(BMP_FRAME_GRIPPER, 128, rows,
                       [](int x, int y) { return y < 128 && x % 2 ? kGrip : TestSkin::kTransparent; });
        UseChangedSkin();
        MakeBar(140, WS_VISIBLE | SBS_SIZEGRIP, 140);
        CRgn region;
        region.CreateRectRgn(0, 0, 0, 0);
        EXPECT_EQ(::GetWindowRgn(bar->m_hWnd, region), rows == 128 ? COMPLEXREGION : ERROR) << rows;
    }
}

TEST_P(SizeGrip, HasTheShapeOfItsPictureInTheCorner) {
    MakeBar(20, WS_VISIBLE | SBS_SIZEGRIP, 20);
    ::MoveWindow(bar->m_hWnd, 20, 20, 30, 40, TRUE);
    CRgn region;
    region.CreateRectRgn(0, 0, 0, 0);
    ASSERT_EQ(::GetWindowRgn(bar->m_hWnd, region), COMPLEXREGION);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 30; ++x) {
            const int column = x - 18, row = y - 28;
            const bool inside = column >= 0 && row >= 0 && column + row >= 11;
            ASSERT_EQ(::PtInRegion(region, x, y) != 0, inside) << x << ", " << y;
        }
}

TEST_P(SizeGrip, PlainBarHasNoRegion) {
    MakeBar();
    CRgn region;
    region.CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(::GetWindowRgn(bar->m_hWnd, region), ERROR);
}

TEST_P(SizeGrip, WithoutArtItStaysWhole) {
    skin.RemoveBitmaps(skinFrame);
    UseChangedSkin();
    MakeBar(20, WS_VISIBLE | SBS_SIZEGRIP, 20);
    CRgn region;
    region.CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(::GetWindowRgn(bar->m_hWnd, region), ERROR);
    ::UpdateWindow(Parent());
    EXPECT_EQ(RepaintedClient(bar->m_hWnd).CountOf(kParent), 400);
}

TEST_P(SizeGrip, PaintToGoesToTheContextsOrigin) {
    MakeBar(20, WS_VISIBLE | SBS_SIZEGRIP, 20);
    ::UpdateWindow(Parent());
    Canvas canvas(60, 60, RGB(9, 9, 9));
    bar->PaintTo(canvas.Dc(), 4, 2, 24, 22);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.CountOf(RGB(9, 9, 9)), 3600 - 400);
    EXPECT_EQ(picture.At(0, 0), kParent);
    // The picture is placed by the rectangle's own end, and cut at the surface's.
    EXPECT_EQ(picture.At(19, 19), kGrip);
    EXPECT_EQ(picture.At(14, 19), kGrip);
    EXPECT_EQ(picture.At(13, 19), kParent);
    EXPECT_EQ(picture.CountOf(kGrip), 1 + 2 + 3 + 4 + 5 + 6);
}

}  // namespace
}  // namespace tavix_test
