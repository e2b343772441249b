#include "controls/list_box_layout.h"

#include <algorithm>
#include <cstdint>

namespace tavix {

int RowsThatFit(int height, int itemHeight, bool multiColumn) {
    if (height <= 0 || itemHeight <= 0) return 0;
    const int rest = height % itemHeight;
    const bool lastShows = std::int64_t{rest} * 10 >= std::int64_t{itemHeight} * 8;
    return height / itemHeight + (lastShows && !multiColumn ? 1 : 0);
}

int ColumnWidthOf(int width, bool multiColumn) {
    constexpr int kWidest = 150;
    return multiColumn ? std::min(width, kWidest) : width;
}

int ColumnsThatFit(int width, int columnWidth) {
    if (columnWidth <= 0) return 0;
    return width / columnWidth + (width % columnWidth >= 1 ? 1 : 0);
}

int BoundedTopItem(int top, int rows, int count) {
    if (top >= count - rows) top = count - rows;
    return top < 1 ? 0 : top;
}

ListHit HitTestList(const ListLayout& layout, const BarExtents& bars, const POINT& point) {
    const CRect& client = layout.client;
    if (!client.PtInRect(point)) return {ListPart::Outside, -1};
    if (bars.vertWidth && point.x >= client.right - bars.vertWidth) return {ListPart::VertBar, -1};
    if (bars.horzHeight && point.y >= client.bottom - bars.horzHeight) return {ListPart::HorzBar, -1};
    // With several columns the bound does not move with the top item, so that a scrolled list is hit in
    // fewer of its rows.
    const int bound = layout.multiColumn ? layout.columns * layout.rows : layout.top + layout.rows;
    const int last = std::min(bound, layout.count - 1);
    for (int i = std::max(layout.top, 0); i <= last; ++i) {
        const std::int64_t top = client.top + (std::int64_t{i} - layout.top) * layout.itemHeight;
        if (top > point.y) break;
        const int column = layout.multiColumn && layout.rows > 0 ? i / layout.rows : 0;
        const std::int64_t left = client.left + std::int64_t{column} * layout.columnWidth;
        if (point.y < top + layout.itemHeight && point.x >= left && point.x < left + layout.columnWidth)
            return {ListPart::Item, i};
    }
    return {};
}

std::optional<ScrollStep> ScrollStepOf(int code, int position, int pos, const ListLayout& layout) {
    const int top = layout.top, rows = layout.rows, count = layout.count;
    const bool hasMore = top <= count - rows - 1;
    switch (code) {
        case SB_LINEUP:
            if (top > 0) return ScrollStep{top - 1, pos - 1};
            break;
        case SB_LINEDOWN:
            if (hasMore) return ScrollStep{top + 1, pos + 1};
            break;
        case SB_PAGEUP:
            return top - rows >= 0 ? ScrollStep{top - rows, pos - rows} : ScrollStep{0, pos - top};
        case SB_PAGEDOWN:
            if (hasMore)
                return ScrollStep{std::min(top + rows, count - rows), std::min(pos + rows, count - 1)};
            break;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            return ScrollStep{position, position};
        case SB_BOTTOM:
            // One short of the last page, unless that shows already.
            return ScrollStep{top != count - rows ? count - rows - 1 : top, count - 1};
        default:
            break;
    }
    return std::nullopt;
}

// ---------------------------------------------------------------- marks

bool ItemMarks::Has(int item) const {
    return item >= 0 && item < Length() && m_marks[static_cast<std::size_t>(item)] == '1';
}

void ItemMarks::Set(int item, bool marked) {
    if (item < 0) return;
    if (item >= Length()) {
        if (!marked) return;
        m_marks.resize(static_cast<std::size_t>(item) + 1, '0');
    }
    m_marks[static_cast<std::size_t>(item)] = marked ? '1' : '0';
}

void ItemMarks::Insert(int item) {
    if (item < 0) return;
    m_marks.insert(static_cast<std::size_t>(std::min(item, Length())), 1, '0');
}

void ItemMarks::Remove(int place) {
    if (place >= 0 && place < Length()) m_marks.erase(static_cast<std::size_t>(place), 1);
}

int ItemMarks::Count() const { return static_cast<int>(std::count(m_marks.begin(), m_marks.end(), '1')); }

}  // namespace tavix
