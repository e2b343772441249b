#include "draw/gradient.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "draw/surface.h"

namespace tavix {
namespace {

constexpr int kBand = 2;

BYTE Channel(BYTE first, BYTE second, int offset, int span) {
    return static_cast<BYTE>(first + ::MulDiv(second - first, offset, span));
}

/* Differences and sums as a 32-bit register makes them: an absurd rectangle wraps. */
int Wrap(std::int64_t value) { return static_cast<int>(static_cast<std::uint32_t>(value)); }

/* The colours along the gradient's axis. */
class Ramp {
public:
    Ramp(COLORREF first, COLORREF second, int length) : m_first(first), m_second(second), m_span(length - kBand) {}

    /* Offset of the band that a pixel of the axis lies in. */
    static int BandOf(int offset) { return offset - offset % kBand; }
    bool IsBand(int band) const { return band <= m_span; }
    int Span() const { return m_span; }
    COLORREF Colour(int band) const {
        return IsBand(band) ? GradientColour(m_first, m_second, band, m_span) : m_second;
    }
    DibPixel Pixel(int band) const { return SwapRedBlue(Colour(band)); }

private:
    COLORREF m_first;
    COLORREF m_second;
    int m_span;
};

/* Writes the pixels of `count` offsets of the axis from `offset` on, side by side. */
void WriteRow(DibPixel* out, const Ramp& ramp, int offset, int count) {
    while (count > 0) {
        const int band = Ramp::BandOf(offset);
        const DibPixel pixel = ramp.Pixel(band);
        for (int i = offset - band; i < kBand && count > 0; ++i, ++offset, --count) *out++ = pixel;
    }
}

/* Writes `rows` rows of one colour a band, from `offset` of the axis on. */
void WriteColumns(DibPixel* out, int pitch, int width, const Ramp& ramp, int offset, int rows) {
    while (rows > 0) {
        const int band = Ramp::BandOf(offset);
        const DibPixel pixel = ramp.Pixel(band);
        for (int i = offset - band; i < kBand && rows > 0; ++i, ++offset, --rows, out += pitch)
            std::fill_n(out, width, pixel);
    }
}

void RepeatRow(const DibPixel* row, DibPixel* out, int pitch, int width, int rows) {
    for (; rows > 0; --rows, out += pitch) std::memcpy(out, row, static_cast<std::size_t>(width) * sizeof *row);
}

/* Draws the shown part straight into a surface's memory. */
void DrawInMemory(const PixelAccess& access, const RECT& rect, const RECT& shown, const Ramp& ramp,
                  bool horizontal) {
    const int width = shown.right - shown.left;
    const int height = shown.bottom - shown.top;
    DibPixel* out = access.At(shown.left, shown.top);
    if (!horizontal) {
        WriteColumns(out, access.Pitch(), width, ramp, Wrap(std::int64_t{shown.top} - rect.top), height);
        return;
    }
    WriteRow(out, ramp, Wrap(std::int64_t{shown.left} - rect.left), width);
    RepeatRow(out, out + access.Pitch(), access.Pitch(), width, height - 1);
}

/* Composes strips that stay in the processor's cache, and blits them. */
bool DrawByStrips(HDC dc, const RECT& rect, const RECT& shown, const Ramp& ramp, bool horizontal) {
    const int width = shown.right - shown.left;
    const int height = shown.bottom - shown.top;
    const int rows = std::clamp(kScratchPixels / 2 / width, 1, height);
    Surface* strip = ScratchSurface(width, rows);
    if (!strip) return false;
    ::GdiFlush();
    if (horizontal) {
        WriteRow(strip->Row(0), ramp, Wrap(std::int64_t{shown.left} - rect.left), width);
        RepeatRow(strip->Row(0), strip->Row(0) + strip->width, strip->width, width, rows - 1);
    }
    for (int done = 0; done < height; done += rows) {
        const int now = std::min(rows, height - done);
        if (!horizontal) {
            const int offset = Wrap(std::int64_t{shown.top} + done - rect.top);
            if (done) ::GdiFlush();  // the strip's last blit has to be through
            WriteColumns(strip->Row(0), strip->width, width, ramp, offset, now);
        }
        if (!::BitBlt(dc, shown.left, shown.top + done, width, now, strip->dc, 0, 0, SRCCOPY)) return false;
    }
    return true;
}

/* Fills rectangles with changing colours without making a brush for each. */
class Filler {
public:
    Filler(CDC& dc, bool nearest)
        : m_dc(dc),
          m_nearest(nearest),
          m_selected(dc, ::GetStockObject(DC_BRUSH)),
          m_former(::SetDCBrushColor(dc, 0)) {}
    ~Filler() {
        if (m_former != CLR_INVALID) ::SetDCBrushColor(m_dc, m_former);
    }
    void Fill(const RECT& rect, COLORREF colour) {
        if (m_nearest) {
            m_dc.FillSolidRect(rect, ::GetNearestColor(m_dc, colour));
        } else {
            ::SetDCBrushColor(m_dc, colour);
            ::FillRect(m_dc, &rect, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
        }
    }

private:
    CDC& m_dc;
    bool m_nearest;
    SelectionGuard m_selected;
    COLORREF m_former;
};

/*
 * Band by band through the platform, as for devices of few colours, scaled or turned
 * co-ordinates and rectangles that are not normalised. Bands off the clip box are passed over.
 */
void DrawByBands(CDC& dc, const RECT& rect, const RECT& box, const Ramp& ramp, bool horizontal, bool nearest) {
    Filler filler(dc, nearest);
    filler.Fill(rect, ramp.Colour(ramp.Span() + 1));
    const int start = horizontal ? rect.left : rect.top;
    // A pixel of slack: scaled co-ordinates round.
    const std::int64_t from = std::int64_t{horizontal ? box.left : box.top} - start - kBand;
    const std::int64_t end = std::int64_t{horizontal ? box.right : box.bottom} - start + kBand;
    const std::int64_t last = std::min<std::int64_t>(ramp.Span(), end);
    for (std::int64_t i = from > 0 ? from - from % kBand : 0; i <= last; i += kBand) {
        RECT band = rect;
        if (horizontal) {
            band.left = Wrap(start + i);
            band.right = Wrap(start + i + kBand);
        } else {
            band.top = Wrap(start + i);
            band.bottom = Wrap(start + i + kBand);
        }
        filler.Fill(band, ramp.Colour(static_cast<int>(i)));
    }
}

}  // namespace

COLORREF GradientColour(COLORREF first, COLORREF second, int offset, int span) {
    return RGB(Channel(GetRValue(first), GetRValue(second), offset, span),
               Channel(GetGValue(first), GetGValue(second), offset, span),
               Channel(GetBValue(first), GetBValue(second), offset, span));
}

void DrawGradient(CDC* dc, const RECT& rect, COLORREF first, COLORREF second, int horizontal, int nearest) {
    if (!dc || !dc->m_hDC) return;
    RECT box;
    const int shape = ::GetClipBox(*dc, &box);
    if (shape == ERROR || shape == NULLREGION) return;
    if (nearest && ::GetDeviceCaps(*dc, NUMCOLORS) == -1) nearest = 0;

    const int width = Wrap(std::int64_t{rect.right} - rect.left);
    const int height = Wrap(std::int64_t{rect.bottom} - rect.top);
    const bool across = horizontal != 0;
    // Two less than a length near the lowest value would wrap to a huge span.
    const Ramp ramp(first, second, std::max(across ? width : height, -1));
    // A top byte would ask for a palette's entry: the platform knows which.
    const bool plain_colour = !(second & 0xFF000000u);
    if (!nearest && plain_colour && width > 0 && height > 0 && HasPlainMapping(*dc)) {
        RECT shown;
        if (!::IntersectRect(&shown, &rect, &box)) return;
        PixelAccess access;
        if (OpenPixels(*dc, access)) {
            DrawInMemory(access, rect, shown, ramp, across);
            return;
        }
        if (KindOfTarget(*dc) != TargetKind::Unknown && DrawByStrips(*dc, rect, shown, ramp, across)) return;
    }
    DrawByBands(*dc, rect, box, ramp, across, nearest != 0);
}

}  // namespace tavix
