#include "scroll/scroll_bar_geometry.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>

// Every operation rounds to double precision, on the 32-bit machine too: one more pixel is lost or
// won by a bit that the wide registers of its older unit would keep.
#if defined(__i386__) && defined(__GNUC__)
#pragma GCC target("sse2,fpmath=sse")
#endif

namespace tavix {
namespace {

int Saturated(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, INT_MIN, INT_MAX));
}

// What is no number counts as 0; the ends leave room for a sum with any int.
std::int64_t Truncated(double value) {
    constexpr std::int64_t kMost = std::int64_t{1} << 62;
    constexpr double kEnd = static_cast<double>(kMost);
    if (std::isnan(value)) return 0;
    if (value >= kEnd) return kMost;
    return value <= -kEnd ? -kMost : static_cast<std::int64_t>(value);
}

/* In double precision, where a division by zero gives infinity, or no number. */
double Ratio(std::int64_t dividend, std::int64_t divisor) {
    static_assert(std::numeric_limits<double>::is_iec559);
    return static_cast<double>(dividend) / static_cast<double>(divisor);
}

std::int64_t Span(const ScrollBarValues& bar) { return std::int64_t{bar.max} - bar.min; }

std::int64_t WideTrack(int length, int arrow_len) { return length - 2 * std::int64_t{arrow_len}; }

/* The pixels that the thumb has to move in. */
std::int64_t Room(const ScrollBarValues& bar, int length) {
    return WideTrack(length, bar.arrow_len) - bar.thumb_len;
}

/* The last position with a whole page behind it. */
std::int64_t LastPos(const ScrollBarValues& bar) {
    return bar.max - std::max<std::int64_t>(std::int64_t{bar.page} - 1, 0);
}

void KeepPageInRange(ScrollBarValues& bar) {
    bar.page = Saturated(std::max<std::int64_t>(std::min<std::int64_t>(bar.page, Span(bar) + 1), 0));
}

void KeepPosBeforeLast(ScrollBarValues& bar) {
    const std::int64_t last = LastPos(bar);
    if (bar.pos > last) bar.pos = last > bar.min ? Saturated(last) : bar.min;
}

}  // namespace

int SaturatedSum(int a, int b) { return Saturated(std::int64_t{a} + b); }

CRect Inflated(const RECT& rect, int by) {
    return {SaturatedSum(rect.left, -by), SaturatedSum(rect.top, -by), SaturatedSum(rect.right, by),
            SaturatedSum(rect.bottom, by)};
}

int TrackLength(int length, int arrow_len) { return Saturated(WideTrack(length, arrow_len)); }

int PosToPixel(const ScrollBarValues& bar, int length, int pos) {
    const std::int64_t room = Room(bar, length);
    double scale = Ratio(room, bar.page > 0 ? Span(bar) - bar.page + 2 : Span(bar) + 1);
    if (room <= 0) scale = 0;
    double distance = static_cast<double>(std::int64_t{pos} - bar.min) * scale;
    const bool at_end = bar.page >= 0 && pos == std::int64_t{bar.max} - bar.page + 1;
    if (at_end || (bar.page == 0 && pos == bar.max)) distance = static_cast<double>(room);
    if (!(distance >= 0)) return 0;
    return Saturated(Truncated(std::ceil(bar.arrow_len + distance)));
}

int PixelToPos(const ScrollBarValues& bar, int length, int pixel) {
    const std::int64_t room = Room(bar, length);
    const double ratio = Ratio(bar.page > 0 ? Span(bar) - bar.page + 1 : Span(bar) + 1, room);
    const double units = static_cast<double>(std::int64_t{pixel} - bar.arrow_len) * ratio;
    std::int64_t pos = Truncated(units + 0.5) + bar.min;
    if (bar.page > 0) pos = std::min(pos, std::int64_t{bar.max} - bar.page + 1);
    if (bar.page == 0) pos = std::min<std::int64_t>(pos, bar.max);
    return Saturated(pos);
}

void SetRange(ScrollBarValues& bar, int min, int max) {
    bar.min = min;
    bar.max = std::max(min, max);
    KeepPageInRange(bar);
    bar.pos = std::max(bar.pos, min);
    KeepPosBeforeLast(bar);
}

void SetPos(ScrollBarValues& bar, int pos) {
    bar.pos = pos;
    if (bar.pos < bar.min) {
        bar.pos = bar.min;
        return;
    }
    KeepPageInRange(bar);
    KeepPosBeforeLast(bar);
}

int SetPage(ScrollBarValues& bar, int length, int page) {
    constexpr int kThumbWithoutPage = 15;
    constexpr int kShortestThumb = 12;
    const int track = TrackLength(length, bar.arrow_len);
    if (page < 0) {
        bar.thumb_len = track;
        return -1;
    }
    if (page >= Span(bar) + 1) {
        bar.page = Saturated(Span(bar) + 1);
        bar.thumb_len = track;
    } else if (page == 0) {
        bar.page = 0;
        bar.thumb_len = kThumbWithoutPage;
    } else {
        // The page has passed through single precision ever since: large ones lose their last bits.
        const double product = static_cast<double>(track) * static_cast<double>(static_cast<float>(page));
        const int computed = Saturated(Truncated(product / static_cast<double>(Span(bar) + 2)));
        bar.thumb_len = std::max(computed, kShortestThumb);
        bar.page = page;
    }
    return bar.page;
}

int ThumbStart(const ScrollBarValues& bar, int length) {
    const std::int64_t start = PosToPixel(bar, length, bar.pos);
    const std::int64_t track = WideTrack(length, bar.arrow_len);
    // A thumb that would cover the second arrow goes back, without the room of the first one.
    return start + bar.thumb_len > track + bar.arrow_len ? Saturated(track - bar.thumb_len)
                                                         : static_cast<int>(start);
}

ScrollBarRects RectsOf(const ScrollBarValues& bar, const RECT& client, bool horizontal, int thumb_start) {
    // Measured along an upright bar; a horizontal one has the axes exchanged.
    const CRect c = horizontal ? Transposed(client) : CRect(client);
    const auto arrow = [&c](int top, int bottom) {
        const int upper = SaturatedSum(top, 1);
        return CRect(SaturatedSum(c.left, 1), upper, SaturatedSum(c.right, -1), SaturatedSum(bottom, -1));
    };
    const int arrow_back = Saturated(-std::int64_t{bar.arrow_len});
    const int thumb_end = SaturatedSum(thumb_start, bar.thumb_len);
    // Only an upright bar's thumb keeps a pixel from either side.
    const int margin = horizontal ? 0 : 1;
    ScrollBarRects rects{
        c, arrow(c.top, SaturatedSum(c.top, bar.arrow_len)),
        arrow(SaturatedSum(c.bottom, arrow_back), c.bottom),
        CRect(SaturatedSum(c.left, margin), thumb_start, SaturatedSum(c.right, -margin), thumb_end)};
    if (!horizontal) return rects;
    return {client, Transposed(rects.first_arrow), Transposed(rects.second_arrow), Transposed(rects.thumb)};
}

ScrollBarPart HitTest(const ScrollBarRects& rects, const POINT& point) {
    if (rects.first_arrow.PtInRect(point)) return ScrollBarPart::FirstArrow;
    if (rects.second_arrow.PtInRect(point)) return ScrollBarPart::SecondArrow;
    if (rects.thumb.PtInRect(point)) return ScrollBarPart::Thumb;
    return rects.client.PtInRect(point) ? ScrollBarPart::Track : ScrollBarPart::None;
}

int DraggedThumbStart(const ScrollBarValues& bar, int length, int start, int mouse, int last, int grab) {
    if (mouse == last) return start;  // moved across the bar only
    const std::int64_t low = bar.arrow_len;
    const std::int64_t high = std::int64_t{length} - bar.arrow_len - bar.thumb_len;
    const std::int64_t wanted = std::int64_t{mouse} - grab;
    // Which end wins matters to a thumb that is longer than its track.
    return Saturated(mouse > last ? std::max(std::min(wanted, high), low)
                                  : std::min(std::max(wanted, low), high));
}

}  // namespace tavix
