#include "framework/splitter_layout.h"

#include <algorithm>

namespace tavix {

int PaneSize(long long size) { return static_cast<int>(std::clamp(size, 0LL, 0x7FFFLL)); }

void LayOutPanes(PaneLine line, int total, int gap) {
    if (line.empty()) return;
    const std::size_t last = line.size() - 1;
    int remaining = std::max(0, total - gap * static_cast<int>(last));
    std::size_t taker = last;  // who gets what nobody wants
    for (std::size_t i = 0; i <= last; ++i) {
        CSplitterWnd::CRowColInfo& pane = line[i];
        const int wanted = i == last ? remaining : std::min(pane.nIdealSize, remaining);
        pane.nCurSize = wanted < pane.nMinSize ? 0 : wanted;
        remaining -= pane.nCurSize;
        if (pane.nCurSize > 0) taker = i;
    }
    line[taker].nCurSize += remaining;
}

int PaneStart(ConstPaneLine line, int gap, std::size_t index) {
    int start = 0;
    for (std::size_t i = 0; i < index; ++i) start += line[i].nCurSize + gap;
    return start;
}

int GapAt(ConstPaneLine line, int gap, int position) {
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        const int end = PaneStart(line, gap, i + 1);
        if (position < end - gap) return -1;
        if (position < end) return static_cast<int>(i);
    }
    return -1;
}

bool CanSplitPane(int current, int before, int gap, int firstMin, int secondMin) {
    // A pane without a pixel would be none, even where the minimum allows it.
    return before >= std::max(firstMin, 1) &&
           static_cast<long long>(current) - before - gap >= std::max(secondMin, 1);
}

DragEnd EndOfDrag(const CSplitterWnd::CRowColInfo& pane, const CSplitterWnd::CRowColInfo& next, int size) {
    if (size < pane.nMinSize) return DragEnd::DropsThis;
    const long long both = static_cast<long long>(pane.nCurSize) + next.nCurSize;
    if (both < static_cast<long long>(size) + next.nMinSize) return DragEnd::DropsNext;
    return DragEnd::Fits;
}

}  // namespace tavix
