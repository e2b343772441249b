#include "controls/list_box_paint.h"

#include <algorithm>

#include "controls/list_box_skin.h"
#include "controls/list_rows.h"
#include "draw/bitmap_draw.h"
#include "draw/bitmap_region.h"
#include "draw/offscreen.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "frames/non_client.h"
#include "tavixskin/value_ids.h"

namespace {

using tavix::SkinBitmap;
using tavix::SkinColour;

// A row that loses its selection is white until the next painting, whatever the list's background.
constexpr COLORREF kBareRow = RGB(0xFF, 0xFF, 0xFF);

/* A piece of the frame and where it stands. */
struct Piece {
    CBitmap* bitmap;
    CSize size;
    explicit Piece(DWORD id) : bitmap(SkinBitmap(id)), size(tavix::BitmapSize(bitmap)) {}
};

/* Narrows a context's clipping for a scope. */
class ClipScope {
public:
    ClipScope(HDC dc, const RECT& area) : m_dc(dc), m_saved(::SaveDC(dc)) {
        ::IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
    }
    ~ClipScope() { ::RestoreDC(m_dc, m_saved); }
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;

private:
    HDC m_dc;
    int m_saved;
};

}  // namespace

namespace tavix {

void PaintListFrame(CDC& dc, const CSize& window) {
    const int width = window.cx, height = window.cy;
    dc.FillSolidRect(CRect(0, 0, width, height), SkinColour(CLR_LIST_BACK));
    const auto place = [&dc](const Piece& piece, int x, int y) { DrawBitmap(dc, piece.bitmap, x, y); };
    const auto across = [&](const Piece& piece, int from, int y) {
        StretchTiles(dc, piece.bitmap, CRect(from, y, width, y + piece.size.cy), TileAxis::Across);
    };
    const auto down = [&](const Piece& piece, int x, int from) {
        StretchTiles(dc, piece.bitmap, CRect(x, from, x + piece.size.cx, height), TileAxis::Down);
    };
    const Piece topLeft(BMP_LIST_TOPLEFT), top(BMP_LIST_TOP), topRight(BMP_LIST_TOPRIGHT);
    const Piece left(BMP_LIST_LEFT), right(BMP_LIST_RIGHT);
    const Piece bottomLeft(BMP_LIST_BOTTOMLEFT), bottom(BMP_LIST_BOTTOM), bottomRight(BMP_LIST_BOTTOMRIGHT);
    // In this order: an edge lies over the corner before it, and under the one after it.
    place(topLeft, 0, 0);
    across(top, topLeft.size.cx, 0);
    place(topRight, width - topRight.size.cx, 0);
    down(left, 0, topLeft.size.cy);
    down(right, width - right.size.cx, topRight.size.cy);
    place(bottomLeft, 0, height - bottomLeft.size.cy);
    across(bottom, bottomLeft.size.cx, height - bottom.size.cy);
    place(bottomRight, width - bottomRight.size.cx, height - bottomRight.size.cy);
}

void CutListCorners(CRgn& region, const CSize& window) {
    const auto cut = [&](DWORD id, bool atRight, bool atBottom) {
        const Piece corner(id);
        const CPoint at(atRight ? window.cx - corner.size.cx : 0, atBottom ? window.cy - corner.size.cy : 0);
        CutKeyPixels(region, corner.bitmap, kCornerKey, at, window);
    };
    cut(BMP_LIST_TOPLEFT, false, false);
    cut(BMP_LIST_TOPRIGHT, true, false);
    cut(BMP_LIST_BOTTOMLEFT, false, true);
    cut(BMP_LIST_BOTTOMRIGHT, true, true);
}

}  // namespace tavix

// The frame has no states: it looks the same disabled and without focus.
LRESULT CSkinListBox::OnNcPaint() {
    if (::IsWindowVisible(m_hWnd))
        tavix::NonClientArea(m_hWnd, nullptr, nullptr).Run(false, tavix::PaintListFrame);
    return 0;
}

LRESULT CSkinListBox::OnPaint() {
    CPaintDC dc(m_hWnd);
    if (dc.m_hDC) PaintItems(dc);
    return 0;
}

void CSkinListBox::PaintItems(CDC& target) {
    if (HasBarWindow()) ::EnableWindow(vertBar->m_hWnd, IsWindowEnabled());
    const CRect area = ClientLessBar();
    {
        const ClipScope clipping(target, area);
        CRect clip;
        ::GetClipBox(target, &clip);
        tavix::OffscreenSurface surface(target, area);
        if (!surface) return;
        CDC& dc = surface.Dc();
        ::IntersectClipRect(dc, clip.left, clip.top, clip.right, clip.bottom);
        dc.FillSolidRect(area, SkinColour(CLR_LIST_BACK));
        if (IsOwnerDrawn())
            PaintOwnerDrawn(dc, area, clip);
        else
            PaintTexts(dc);
        if (!IsAlive()) return;
        surface.Present(clip);
    }
    // The selection comes last, straight on the screen; in a disabled list over its plain row.
    if (!multiSelect && !IsOwnerDrawn() && current != -1) DrawRow(current, RowLook::Selected);
    PlaceVertBar();
}

// The parent may do anything in between, the list's end included.
void CSkinListBox::PaintOwnerDrawn(CDC& dc, const CRect& area, const CRect& clip) {
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    CRect row = area;
    row.bottom = area.top + HeightOfItems(topItem, 0);
    for (int i = std::max(topItem, 0); i < ItemCount() && row.bottom < clip.bottom; ++i) {
        row.top = row.bottom;
        row.bottom = row.top + HeightOf(i);
        CRect shown;
        if (!::IntersectRect(&shown, &row, &clip)) continue;
        SendDrawItem(dc, i, IsSelected(i) ? ODS_SELECTED : ODS_DEFAULT, controlId, row);
        if (!IsAlive()) return;
    }
}

void CSkinListBox::PaintTexts(CDC& dc) {
    const int end = std::min(CurrentLayout().End(), ItemCount());
    const bool enabled = IsWindowEnabled();
    for (int i = std::max(topItem, 0); i < end; ++i) {
        if (multiSelect)
            DrawRow(i, selectionMap.Has(i) ? RowLook::Selected : RowLook::Plain, &dc);
        else if (i != current || !enabled)
            DrawRow(i, RowLook::Plain, &dc);
    }
}

// Nothing for an item that the rows and columns have no room for. Without a context the row goes straight
// to the screen.
void CSkinListBox::DrawRow(int item, RowLook look, CDC* context) {
    if (item < topItem || item > CurrentLayout().End() || !HasItem(item)) return;
    if (context) return DrawRowOn(*context, item, look, false);
    CClientDC own(m_hWnd);
    if (own.m_hDC) DrawRowOn(own, item, look, true);
}

void CSkinListBox::DrawRowOn(CDC& dc, int item, RowLook look, bool ownContext) {
    const CRect row = ItemRect(item);
    CRect client, shown;
    GetClientRect(&client);
    ::IntersectRect(&shown, &row, &client);
    const ClipScope clipping(dc, shown);
    if (!IsOwnerDrawn()) {
        if (!shown.IsRectEmpty()) DrawTextRow(dc, item, row, look, ownContext);
        return;
    }
    const bool selected = look == RowLook::Selected;
    // A row that is drawn plain carries no id.
    SendDrawItem(dc, item, selected ? ODS_SELECTED : ODS_DEFAULT,
                 selected ? static_cast<UINT>(GetDlgCtrlID()) : 0, row);
}

void CSkinListBox::DrawTextRow(CDC& dc, int item, const CRect& row, RowLook look, bool ownContext) const {
    const std::wstring text =
        tavix::ReadItemText({m_pfnPrevWndProc, m_hWnd}, LB_GETTEXTLEN, LB_GETTEXT, item);
    const CPoint at(row.left + textOffset, row.top);
    if (look == RowLook::Selected) {
        dc.FillSolidRect(row, SkinColour(CLR_HIGHLIGHT));
        tavix::DrawRowText(dc, at, text, SkinColour(CLR_TEXT_HIGHLIGHT));
        return;
    }
    if (ownContext) dc.FillSolidRect(row, kBareRow);
    // The system's colours, not the skin's.
    tavix::DrawRowText(dc, at, text, ::GetSysColor(IsWindowEnabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
}

void CSkinListBox::SendDrawItem(HDC dc, int item, UINT state, UINT id, const CRect& row) {
    HWND parent = GetParent();
    if (!parent) return;
    const auto data = static_cast<ULONG_PTR>(AskNative(LB_GETITEMDATA, static_cast<WPARAM>(item)));
    DRAWITEMSTRUCT facts = tavix::DrawItemOf({m_hWnd, id, item, state, row, data}, dc);
    ::SendMessageA(parent, WM_DRAWITEM, controlId, reinterpret_cast<LPARAM>(&facts));
}
