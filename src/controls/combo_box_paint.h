/* The faces of a combo box: its frame, its arrow and text, and the rows that its owner draws. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* What the frame takes from the window at each side. */
constexpr int kComboFrameAcross = 4, kComboFrameDown = 2;
/* What the edit leaves to the arrow, however wide that is. */
constexpr int kComboEditGap = 17;

enum class ComboHit { Outside = -1, Arrow = 0, Body = 1 };
/* The arrow answers where its hit area is, which is not where its bitmap shows. */
ComboHit HitTestCombo(const CRect& client, int arrowWidth, const POINT& point);

/* Width of a bitmap; 0 for none, and never more than a window can have. */
int ComboPieceWidth(CBitmap* piece);
/* Where the arrow shows: the client area's right end, as wide as the hot arrow's bitmap. */
CRect ComboArrowRect(const CRect& client);
/* Where a press on the frame opens the list, on the screen: two pixels lower than the window. */
CRect ComboFrameArrowRect(const CRect& window);

/* The window's shape: a rectangle less the key-coloured pixels of both end pieces. */
void MakeComboRegion(CRgn& region, const CSize& window);
void PaintComboFrame(CDC& dc, const CSize& window);
/* Background and arrow; the result is what is left for the content. */
CRect PaintComboFace(CDC& dc, const CRect& client, bool hot);
void PaintComboText(CDC& dc, const CRect& room, const char* text);

/*
 * A row of the list as its owner draws it in the system's colours, with the selection's colour
 * changed to the skin's. draw() draws into the structure's context and rectangle; the structure is
 * left with those of a surface that is gone.
 */
template <class Draw>
void PaintOwnerDrawnRow(DRAWITEMSTRUCT& item, Draw draw);

/* The surface behind the row; see above. */
class OwnerRowSurface {
public:
    explicit OwnerRowSurface(DRAWITEMSTRUCT& item);
    ~OwnerRowSurface();
    OwnerRowSurface(const OwnerRowSurface&) = delete;
    OwnerRowSurface& operator=(const OwnerRowSurface&) = delete;

    explicit operator bool() const { return m_bits != nullptr; }
    /* Colours the selection, if that is the row's whole state, and shows the row. */
    void Present(UINT state);

private:
    HDC m_target;
    CRect m_place;
    CMemoryDC m_dc;
    CBitmap m_bitmap;
    CFont m_font;
    DWORD* m_bits = nullptr;
    HGDIOBJ m_formerBitmap = nullptr;
    HGDIOBJ m_formerFont = nullptr;
};

template <class Draw>
void PaintOwnerDrawnRow(DRAWITEMSTRUCT& item, Draw draw) {
    OwnerRowSurface surface(item);
    if (!surface) return;
    draw();
    surface.Present(item.itemState);
}

}  // namespace tavix
