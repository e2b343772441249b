/* The rows of a list as they lie in its client area: arithmetic on plain values. */
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>

#include "tavixskin/framework/geometry.h"

namespace tavix {

/* How many rows fit; one that fits half counts. */
constexpr int CountVisibleRows(int height, int itemHeight) {
    if (height <= 0 || itemHeight <= 0) return 0;
    return static_cast<int>((2 * std::int64_t{height} + itemHeight) / (2 * std::int64_t{itemHeight}));
}

/* Where a point lies: outside the client area, on no row, on a row, or in the scroll bar's strip. */
enum class DropHit { Outside = -1, Nothing = 0, Row = 1, Bar = 2 };

struct DropRows {
    CRect client;
    int count = 0;
    int top = 0;         // index of the first visible row; may be any number
    int visible = 0;     // rows that fit
    int itemHeight = 0;  // of every row
    int barWidth = 0;    // what a visible scroll bar takes from the rows' right

    /* Right edge less the visible bar. */
    CRect RowArea() const { return {client.left, client.top, client.right - barWidth, client.bottom}; }
    /* Any index gives a rectangle; far ones lie beyond all windows. */
    CRect RowRect(int item) const {
        constexpr std::int64_t kFar = 0x3FFFFFFF;
        const std::int64_t top64 = client.top + (std::int64_t{item} - top) * itemHeight;
        const LONG rowTop = static_cast<LONG>(std::clamp(top64, -kFar, kFar));
        return {client.left, rowTop, client.right - barWidth, rowTop + itemHeight};
    }
    bool Shows(int item) const { return item >= top && std::int64_t{item} < std::int64_t{top} + visible; }

    /* `item` is the row's index, -1 if none of the list's items is hit. */
    DropHit HitTest(const POINT& point, int& item) const {
        item = -1;
        if (!client.PtInRect(point)) return DropHit::Outside;
        if (itemHeight > 0 && point.x < client.right - barWidth) {
            const int k = (point.y - client.top) / itemHeight;
            if (k < visible) {
                const std::int64_t hit = std::int64_t{top} + k;
                if (hit < 0 || hit >= count) return DropHit::Nothing;
                item = static_cast<int>(hit);
                return DropHit::Row;
            }
        }
        // Whatever the scroll bar's width is.
        constexpr int kStrip = 16;
        return point.x >= client.right - kStrip ? DropHit::Bar : DropHit::Nothing;
    }
};

/* The first visible row after a scroll code. `trackPos` is where a scroll bar's thumb is. */
constexpr int ScrolledTop(int code, int top, int count, int visible, int trackPos) {
    std::int64_t t = top;
    const std::int64_t n = count, page = visible;
    switch (code) {
        case SB_LINEUP:
            if (t > 0) --t;
            break;
        case SB_LINEDOWN:
            if (n - t > page) ++t;
            break;
        case SB_PAGEUP:
            if (t > 0) t = std::max<std::int64_t>(t + 1 - page, 0);
            break;
        case SB_PAGEDOWN:
            if (n - t >= page) {
                t += page;
                if (n - t <= page) t = n - page;
            }
            break;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            t = trackPos;
            break;
        default:
            break;
    }
    return static_cast<int>(std::clamp<std::int64_t>(t, INT_MIN, INT_MAX));
}

}  // namespace tavix
