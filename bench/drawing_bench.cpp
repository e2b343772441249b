/* The pixel routines beside the same done pixel by pixel through the platform. */
#include "benches.h"
#include "draw/bitmap_draw.h"
#include "draw/bitmap_region.h"
#include "draw/gradient.h"
#include "draw/offscreen.h"
#include "draw/skin_bitmap.h"

namespace bench {

namespace {

constexpr COLORREF kKey = RGB(255, 0, 255);

/* A rounded corner's or mark's pixels: key outside a disc, colours inside. */
void MakeMark(tavix::CSkinBitmap& bitmap, int side) {
    HDC screen = ::GetDC(nullptr);
    bitmap.Attach(::CreateCompatibleBitmap(screen, side, side));
    ::ReleaseDC(nullptr, screen);
    CMemoryDC dc;
    SelectionGuard selected(dc, bitmap.GetSafeHandle());
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int dx = 2 * x - side + 1;
            const int dy = 2 * y - side + 1;
            const bool inside = dx * dx + dy * dy < side * side;
            ::SetPixel(dc, x, y, inside ? RGB(x * 200 / side, y * 200 / side, 99) : kKey);
        }
    }
}

void RegionByPixels(CRgn& region, HBITMAP bitmap, int side) {
    CMemoryDC dc;
    SelectionGuard selected(dc, bitmap);
    region.CreateRectRgn(0, 0, 0, 0);
    for (int x = 0; x < side; ++x) {
        for (int y = 0; y < side; ++y) {
            if (::GetPixel(dc, x, y) != kKey) continue;
            CRgn pixel;
            pixel.CreateRectRgn(x, y, x + 1, y + 1);
            region.CombineRgn(region, pixel, RGN_OR);
        }
    }
}

void DrawByPixels(HDC target, HDC source, int side) {
    for (int x = 0; x < side; ++x) {
        for (int y = 0; y < side; ++y) {
            const COLORREF colour = ::GetPixel(source, x, y);
            if (colour != kKey) ::SetPixel(target, x, y, colour);
        }
    }
}

/* What the library paints on: the surface of its off-screen painter. */
class PaintTarget {
public:
    PaintTarget(int width, int height) : m_window(nullptr), m_surface(m_window, CRect(0, 0, width, height)) {}
    CDC& Dc() { return m_surface.Dc(); }

private:
    CClientDC m_window;
    tavix::OffscreenSurface m_surface;
};

void MeasureRegion(Report& report) {
    constexpr int kSide = 32;
    tavix::CSkinBitmap corner;
    MakeMark(corner, kSide);
    CRgn fast;
    CRgn slow;
    tavix::RegionFromBitmapKey(&fast, &corner, kKey);
    RegionByPixels(slow, corner, kSide);
    const bool same = ::EqualRgn(fast, slow) != 0;
    const auto byPixels = [&] {
        CRgn region;
        RegionByPixels(region, corner, kSide);
    };
    Pair pair = MeasureInTurns(
        [&] {
            CRgn region;
            tavix::RegionFromBitmapKey(&region, &corner, kKey);
        },
        200, byPixels, 2);
    report.AtLeastAsFast("region of a 32x32 corner, combine a pixel", pair, 50);
    // Anew each time: the handle changes hands, and what was derived from it is gone.
    pair = MeasureInTurns(
        [&] {
            CBitmap plain;
            plain.Attach(corner.GetSafeHandle());
            CRgn region;
            tavix::RegionFromBitmapKey(&region, &plain, kKey);
            plain.Detach();
        },
        50, byPixels, 2);
    report.AtLeastAsFast("the same, of a bitmap seen for the first time", pair, 50);
    report.Amount("the two regions are the same", same, 1, "yes = 1", "= 1", same);
}

void MeasureKeyed(Report& report) {
    constexpr int kSide = 16;
    tavix::CSkinBitmap mark;
    MakeMark(mark, kSide);
    PaintTarget target(64, 64);
    CMemoryDC source;
    const Pair pair =
        MeasureInTurns([&] { tavix::DrawTransparent(&target.Dc(), &mark, 0, 0, kSide, kSide, kKey); }, 500,
                       [&] {
                           SelectionGuard selected(source, mark.GetSafeHandle());
                           DrawByPixels(target.Dc(), source, kSide);
                       },
                       2);
    report.AtLeastAsFast("keyed 16x16 mark, GetPixel and SetPixel", pair, 30);

    constexpr int kLarge = 256;
    tavix::CSkinBitmap large;
    MakeMark(large, kLarge);
    PaintTarget wide(kLarge, kLarge);
    CMemoryDC largeSource;
    SelectionGuard selected(largeSource, large.GetSafeHandle());
    const Pair blit =
        MeasureInTurns([&] { tavix::DrawTransparent(&wide.Dc(), &large, 0, 0, kLarge, kLarge, kKey); }, 100,
                       [&] { ::BitBlt(wide.Dc(), 0, 0, kLarge, kLarge, largeSource, 0, 0, SRCCOPY); }, 100);
    report.AtMost("keyed 256x256, BitBlt of that size", blit, 4);
}

void MeasureGradient(Report& report) {
    constexpr int kWidth = 800;
    constexpr int kHeight = 600;
    const CRect area(0, 0, kWidth, kHeight);
    PaintTarget target(kWidth, kHeight);
    CBrush brush(RGB(40, 80, 120));
    const Pair pair = MeasureInTurns(
        [&] { tavix::DrawGradient(&target.Dc(), area, RGB(250, 250, 255), RGB(180, 190, 210), 0, 0); }, 20,
        [&] { target.Dc().FillRect(area, brush); }, 20);
    report.AtMost("gradient 800x600, one FillRect of that area", pair, 2);
}

}  // namespace

void MeasureDrawing(Report& report) {
    MeasureRegion(report);
    MeasureKeyed(report);
    MeasureGradient(report);
}

}  // namespace bench
