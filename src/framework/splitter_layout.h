/* The arithmetic of a splitter along one axis: a line of panes with a gap between each two. */
#pragma once

#include <span>

#include "tavixskin/framework/splitter_wnd.h"

namespace tavix {

using PaneLine = std::span<CSplitterWnd::CRowColInfo>;
using ConstPaneLine = std::span<const CSplitterWnd::CRowColInfo>;

/* Brings a size into the range that sizes of panes have, 0 to 32767. */
int PaneSize(long long size);

/*
 * Shares `total` pixels out, gaps included. In their order the panes get their ideal size as far
 * as there is room, and the last one what remains. One that would be smaller than its minimum gets
 * 0; what that leaves at the end goes to the last pane that is shown, or to the last of all.
 */
void LayOutPanes(PaneLine line, int total, int gap);

/* Where the pane at `index` starts; at the line's size, where a further one would. */
int PaneStart(ConstPaneLine line, int gap, std::size_t index);

/* The index of the gap at that position, which is the index of the pane before it; -1 for none. */
int GapAt(ConstPaneLine line, int gap, int position);

/* Whether a first pane of `before` pixels leaves room for a second one, both at their minimum or more. */
bool CanSplitPane(int current, int before, int gap, int firstMin, int secondMin);

/* What a drag of the bar after a pane comes to for that pane and the next one. */
enum class DragEnd { Fits, DropsThis, DropsNext };
DragEnd EndOfDrag(const CSplitterWnd::CRowColInfo& pane, const CSplitterWnd::CRowColInfo& next, int size);

}  // namespace tavix
