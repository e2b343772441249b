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

// Rows of texts are all alike: what their places follow from is asked once for all.
void CSkinListBox::PaintTexts(CDC& dc) {
    const int first = std::max(topItem, 0);
    const int end = std::min(CurrentLayout().End(), ItemCount());
    const int height = HeightOf(0);
    const bool enabled = IsWindowEnabled();
    CRect client;
    GetClientRect(&client);
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    CRect row = RowRect(first);
    for (int i = first; i < end && row.top < client.bottom; ++i, row.OffsetRect(0, height)) {
        const bool marked = multiSelect && selectionMap.Has(i);
        if (multiSelect || i != current || !enabled)
            DrawTextRow(dc, i, row, client, marked ? RowLook::Selected : RowLook::Plain, false);
    }
}

// Straight to the screen. Nothing for an item that the rows and columns have no room for.
void CSkinListBox::DrawRow(int item, RowLook look) {
    if (item < topItem || item > CurrentLayout().End() || !HasItem(item)) return;
    CClientDC dc(m_hWnd);
    if (!dc.m_hDC) return;
    CRect client;
    GetClientRect(&client);
    if (IsOwnerDrawn()) {
        DrawOwnerRow(dc, item, client, look == RowLook::Selected);
        return;
    }
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    DrawTextRow(dc, item, RowRect(item), client, look, true);
}

void CSkinListBox::DrawOwnerRow(CDC& dc, int item, const CRect& client, bool selected) {
    const CRect row = ItemRect(item);
    CRect shown;
    ::IntersectRect(&shown, &row, &client);
    const ClipScope clipping(dc, shown);
    // A row that is drawn plain carries no id.
    SendDrawItem(dc, item, selected ? ODS_SELECTED : ODS_DEFAULT,
                 selected ? static_cast<UINT>(GetDlgCtrlID()) : 0, row);
}

void CSkinListBox::DrawTextRow(CDC& dc, int item, const CRect& row, const CRect& client, RowLook look,
                               bool ownContext) const {
    CRect shown = row;
    shown.bottom = std::min(row.bottom, clientRect.bottom);
    if (!::IntersectRect(&shown, &shown, &client)) return;
    const std::wstring text =
        tavix::ReadItemText({m_pfnPrevWndProc, m_hWnd}, LB_GETTEXTLEN, LB_GETTEXT, item);
    const CPoint at(row.left + textOffset, row.top);
    if (look == RowLook::Selected) {
        dc.FillSolidRect(shown, SkinColour(CLR_HIGHLIGHT));
        tavix::DrawRowText(dc, at, shown, text, SkinColour(CLR_TEXT_HIGHLIGHT));
        return;
    }
    if (ownContext) dc.FillSolidRect(shown, kBareRow);
    // The system's colours, not the skin's.
    tavix::DrawRowText(dc, at, shown, text,
                       ::GetSysColor(IsWindowEnabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
}

void CSkinListBox::SendDrawItem(HDC dc, int item, UINT state, UINT id, const CRect& row) {
    HWND parent = GetParent();
    if (!parent) return;
    const auto data = static_cast<ULONG_PTR>(AskNative(LB_GETITEMDATA, static_cast<WPARAM>(item)));
    DRAWITEMSTRUCT facts = tavix::DrawItemOf({m_hWnd, id, item, state, row, data}, dc);
    ::SendMessageA(parent, WM_DRAWITEM, controlId, reinterpret_cast<LPARAM>(&facts));
}
