#include "draw/gradient.h"

#include <algorithm>
#include <cstdint>

#include "draw/compose.h"

namespace tavix {
namespace {

constexpr int kBand = 2;

/*
 * MulDiv for what a gradient hands it most: rounded to the nearest, halves away from zero, and
 * a division by a positive number that 32 bits hold together with the product.
 */
int Scale(int difference, int offset, int span) {
    constexpr int kFits = 1 << 22;  // times a channel's 255 and a half
    if (span <= 0 || span > kFits || offset < 0 || offset > span) return ::MulDiv(difference, offset, span);
    const int product = difference * offset;
    return (product + (product < 0 ? -span / 2 : span / 2)) / span;
}

BYTE Channel(BYTE first, BYTE second, int offset, int span) {
    return static_cast<BYTE>(first + Scale(second - first, offset, span));
}

/* Differences and sums as a 32-bit register makes them: an absurd rectangle wraps. */
int Wrap(std::int64_t value) { return static_cast<int>(static_cast<std::uint32_t>(value)); }

/* The colours along the gradient's axis. */
class Ramp {
public:
    Ramp(COLORREF first, COLORREF second, int length)
        : m_first(first), m_second(second), m_span(length - kBand) {}

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
void WriteAcross(DibPixel* out, const Ramp& ramp, int offset, int count) {
    while (count > 0) {
        const int band = Ramp::BandOf(offset);
        const DibPixel pixel = ramp.Pixel(band);
        for (int i = offset - band; i < kBand && count > 0; ++i, ++offset, --count) *out++ = pixel;
    }
}

bool DrawAcross(HDC dc, const RECT& rect, const Ramp& ramp) {
    const DibPixel* all = nullptr;  // one row, for all rows are alike
    return ComposeRows(dc, rect, Beneath::Nothing, [&](DibPixel* out, int x, int, int width) {
        if (!all) {
            DibPixel* row = RowBuffer(static_cast<std::size_t>(width));
            WriteAcross(row ? row : out, ramp, Wrap(std::int64_t{x} - rect.left), width);
            all = row;
        }
        if (all) CopyPixels(out, all, width);
    });
}

bool DrawDown(HDC dc, const RECT& rect, const Ramp& ramp) {
    int band = -1;
    DibPixel pixel = 0;
    return ComposeRows(dc, rect, Beneath::Nothing, [&](DibPixel* out, int, int y, int width) {
        const int here = Ramp::BandOf(Wrap(std::int64_t{y} - rect.top));
        if (here != band) pixel = ramp.Pixel(band = here);
        FillPixels(out, width, pixel);
    });
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
void DrawByBands(CDC& dc, const RECT& rect, const Ramp& ramp, bool horizontal, bool nearest) {
    RECT box;
    const int shape = ::GetClipBox(dc, &box);
    if (shape == ERROR || shape == NULLREGION) return;
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
    // The thread's own surfaces have all colours; asking the platform costs more than the gradient.
    if (nearest && (IsOwnSurface(*dc) || ::GetDeviceCaps(*dc, NUMCOLORS) == -1)) nearest = 0;

    const int width = Wrap(std::int64_t{rect.right} - rect.left);
    const int height = Wrap(std::int64_t{rect.bottom} - rect.top);
    const bool across = horizontal != 0;
    // Two less than a length near the lowest value would wrap to a huge span.
    const Ramp ramp(first, second, std::max(across ? width : height, -1));
    // A top byte would ask for a palette's entry: the platform knows which.
    const bool plain_colour = !(second & 0xFF000000u);
    if (!nearest && plain_colour && width > 0 && height > 0)
        if (across ? DrawAcross(*dc, rect, ramp) : DrawDown(*dc, rect, ramp)) return;
    DrawByBands(*dc, rect, ramp, across, nearest != 0);
}

}  // namespace tavix
