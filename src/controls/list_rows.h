/* Rows of list boxes and drop-down lists: reading an item, drawing its text, having its owner draw it. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/*
 * An item's text, in the ANSI code page, from whoever keeps it: ask(message, wParam, lParam) answers as
 * the window would. False, with an empty text, if there is no such item.
 */
template <class Ask>
bool ReadItemText(Ask ask, UINT lengthMessage, UINT textMessage, int item, CString& text) {
    text.Empty();
    const auto index = static_cast<WPARAM>(item);
    const LRESULT length = ask(lengthMessage, index, LPARAM{0});
    // The length may be that of the Unicode text: no code page has more than four bytes a character.
    constexpr LRESULT kMostBytes = 4, kLongest = 0x0FFF'FFFF;
    if (length < 0 || length > kLongest) return false;
    char* buffer = text.GetBuffer(static_cast<int>(length * kMostBytes) + 1);
    buffer[0] = '\0';
    const bool read = ask(textMessage, index, reinterpret_cast<LPARAM>(buffer)) >= 0;
    if (!read) buffer[0] = '\0';
    text.ReleaseBuffer();
    return read;
}

/* Writes the text with its top left corner at `at`, in the system's dialogue font and over what is there. */
void DrawRowText(CDC& dc, const POINT& at, const CString& text, COLORREF colour);

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
