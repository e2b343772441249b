#include "tavixskin/skin_splitter_wnd.h"

#include "engine/skin_values.h"
#include "tavixskin/value_ids.h"

IMPLEMENT_DYNAMIC(CSkinSplitterWnd, CSplitterWnd)

namespace {

// Of bars and boxes, whatever the skin.
constexpr COLORREF kGround = 0xE3E3E3;

void DrawLine(CDC& dc, CRect& rect, COLORREF colour) {
    dc.Draw3dRect(rect, colour, colour);
    rect.DeflateRect(1, 1);
}

}  // namespace

CSkinSplitterWnd::CSkinSplitterWnd() {
    m_cxSplitter += 2;
    m_cySplitter += 2;
    m_cxSplitterGap += 2;
    m_cySplitterGap += 2;
    m_cxBorderShare = m_cyBorderShare = 1;
    m_cxBorder = m_cyBorder = 1;
}

CSkinSplitterWnd::~CSkinSplitterWnd() = default;

void CSkinSplitterWnd::OnDrawSplitter(CDC* pDC, CSplitterWnd::ESplitType nType, const CRect& rect) {
    if (!pDC) {
        CSplitterWnd::OnDrawSplitter(nullptr, nType, rect);  // has it drawn later
        return;
    }
    CRect rc = rect;
    switch (nType) {
        case splitBox:
            DrawLine(*pDC, rc, kGround);
            DrawLine(*pDC, rc, kGround);
            break;
        case splitBar:
            DrawLine(*pDC, rc, kGround);
            break;
        case splitBorder:
            // The inside belongs to the pane.
            DrawLine(*pDC, rc, tavix::SkinColour(CLR_GROUP_OUTER));
            DrawLine(*pDC, rc, tavix::SkinColour(CLR_GROUP_INNER));
            return;
        case splitIntersection:
        default:
            break;
    }
    pDC->FillSolidRect(rc, kGround);
}

// The splitter below takes a column away that gets too small; this one stops the drag there.
void CSkinSplitterWnd::TrackColumnSize(int x, int col) {
    int size = 0;
    if (!ColumnSizeAt(x, col, size)) return;
    CRowColInfo& info = m_pColInfo[static_cast<std::size_t>(col)];
    const CRowColInfo& next = m_pColInfo[static_cast<std::size_t>(col) + 1];
    const int both = info.nCurSize + next.nCurSize;
    if (size < info.nMinSize) {
        info.nIdealSize = size = info.nMinSize;
    } else if (both - next.nMinSize < size) {
        // The ideal size stays: such a drag changes nothing.
        size = both - next.nMinSize;
    } else {
        info.nIdealSize = size;
    }
    // True only where there is too little room for both columns.
    DropNarrowColumn(col, size);
}
