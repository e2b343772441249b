#include "controls/list_rows.h"

#include "draw/text_scope.h"

namespace tavix {

void DrawRowText(CDC& dc, const POINT& at, const CString& text, COLORREF colour) {
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const TextScope scope(dc, colour);
    ::TextOutA(dc, at.x, at.y, text.c_str(), text.GetLength());
}

DRAWITEMSTRUCT DrawItemOf(const OwnerDrawnRow& row, HDC dc) {
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_LISTBOX;
    item.CtlID = row.controlId;
    item.itemID = static_cast<UINT>(row.item);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = row.state;
    item.hwndItem = row.list;
    item.hDC = dc;
    item.rcItem = row.place;
    item.itemData = row.data;
    return item;
}

}  // namespace tavix
