/* CSkinSplitterWnd: a splitter for hosts, with wide, flat bars that go with the skin. */
#pragma once

#include "tavixskin/framework/splitter_wnd.h"

/*
 * Made by the host in place of a CSplitterWnd; the library makes none itself. Panes have a border
 * in colours of the calling thread's skin. A column that is dragged below its minimum stays at
 * the minimum; rows behave as those of a CSplitterWnd.
 */
class TAVIX_API CSkinSplitterWnd : public CSplitterWnd {
    DECLARE_DYNAMIC(CSkinSplitterWnd)
public:
    // None of the members is inline: an inline one would not be in the export table.
    CSkinSplitterWnd();
    ~CSkinSplitterWnd() override;

protected:
    void OnDrawSplitter(CDC* pDC, CSplitterWnd::ESplitType nType, const CRect& rect) override;
    void TrackColumnSize(int x, int col) override;
};
