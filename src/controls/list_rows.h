/* Rows of list boxes and drop-down lists: reading an item, drawing its text, having its owner draw it. */
#pragma once

#include <string>

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* Who keeps the items: a window and the procedure below its skin. */
struct ItemStore {
    WNDPROC procedure;
    HWND window;
};

/* An item's text, by the messages for the length and for the text; empty if there is no such item. */
std::wstring ReadItemText(const ItemStore& store, UINT lengthMessage, UINT textMessage, int item);

/* Writes what of the text lies in `shown`, its top left corner at `at`, over what is there and in the
 * context's font. */
void DrawRowText(CDC& dc, const POINT& at, const RECT& shown, const std::wstring& text, COLORREF colour);

/* A row that its owner draws. */
struct OwnerDrawnRow {
    HWND list;
    UINT controlId;
    int item;
    UINT state;  // ODS_ flags
    CRect place;
    ULONG_PTR data;  // what the host has put by for the item
};

/* The structure that goes with WM_DRAWITEM: the whole row is to be drawn. */
DRAWITEMSTRUCT DrawItemOf(const OwnerDrawnRow& row, HDC dc);

}  // namespace tavix
