/* CSkinMenuItem: what the library keeps of an item of an open popup. */
#pragma once

#include <windows.h>

#include <memory>

#include "tavixskin/framework/geometry.h"
#include "tavixskin/framework/image_list.h"
#include "tavixskin/framework/string.h"

/*
 * While a popup is open the address of a record is its item's data. The thread knows all its live
 * records, so that an item that the host has changed meanwhile is never taken for one.
 */
class CSkinMenuItem : public CObject {
public:
    /* Marks an item that the library turned into owner-draw; a host's own owner-draw item has 0. */
    static constexpr DWORD kConverted = 0x10101010;

    bool IsConverted() const { return m_dwMarker == kConverted; }

    ULONG_PTR m_dwHostItemData = 0;  // the item's data before
    DWORD m_dwMarker = 0;
    CString m_strText;   // with "&" and tab as in the menu
    UINT_PTR m_nID = 0;  // the command, the submenu's handle, or 0 for a separator
    int m_nPosition = 0;
    UINT m_nFlags = 0;  // MF_ bits: the state at the conversion, and what the item became
    /* Icons 0 normal, 1 hot, 2 disabled; the conversion makes none. */
    std::unique_ptr<CImageList> m_pImageList;
    MENUITEMINFOA m_savedInfo{};      // the item before: type, id, submenu, bitmap and data
    MENUITEMINFOA m_convertedInfo{};  // type and id as the conversion left them
    CSize m_textSize{-1, -1};         // negative until it is measured
};
