/* What a thread knows of its open popups. */
#pragma once

#include <windows.h>

#include "tavixskin/framework/containers.h"

class CSkinMenu;
class CSkinMenuItem;

namespace tavix {

/*
 * Popups and the windows that own them belong to one thread, so the pairing of the two does too.
 */
struct MenuState {
    CMapWordToPtr skins;               // by the low word of their menu's handle; the last one wins
    CSkinMenu* pendingSkin = nullptr;  // the skin of a window that waits for its menu
    HMENU pendingMenu = nullptr;       // a menu that waits for its window
    CMapPtrToPtr records;              // every live record, and the skin that it belongs to

    CSkinMenu* SkinOf(HMENU menu) const;
    void SetSkinOf(HMENU menu, CSkinMenu* skin);
    /* The skin ends. Entries that another one has taken over stay. */
    void ForgetSkin(const CSkinMenu* skin);
    /* The record behind an item's data; null for data of the host's. */
    CSkinMenuItem* RecordOf(ULONG_PTR itemData) const;
    CSkinMenu* SkinOfRecord(const CSkinMenuItem* record) const;
    /* The skin with a record of that id; the last one in the map's order. */
    CSkinMenu* FindSkinByItemId(UINT_PTR id) const;
};

/* The calling thread's. */
MenuState& ThreadMenus();

}  // namespace tavix
