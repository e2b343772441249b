// The items of a popup's menu, changed to owner-draw and back. Members are those of menu_skin.h.
#include <algorithm>
#include <utility>

#include "menus/menu_skin.h"
#include "menus/menu_state.h"

namespace {

constexpr UINT kUnknownState = static_cast<UINT>(-1);

MENUITEMINFOA ReadItem(HMENU menu, int position) {
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_SUBMENU | MIIM_DATA | MIIM_BITMAP;
    if (!::GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info)) info.fMask = 0;
    return info;
}

void WriteItem(HMENU menu, int position, MENUITEMINFOA info, UINT mask) {
    info.fMask = mask;
    ::SetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info);
}

/* At most 255 characters of it. Read whole first: some systems leave a cut text without its end. */
CString CaptionOf(HMENU menu, int position) {
    constexpr int kLongest = 255;
    const UINT item = static_cast<UINT>(position);
    const int length = ::GetMenuStringA(menu, item, nullptr, 0, MF_BYPOSITION);
    CString text;
    if (length <= 0) return text;
    const int copied = ::GetMenuStringA(menu, item, text.GetBuffer(length), length + 1, MF_BYPOSITION);
    text.ReleaseBuffer(std::min(copied, kLongest));
    return text;
}

/* What kind of item it is decides its id, its flags and whether it has a caption. */
void Classify(CSkinMenuItem& record, HMENU menu, UINT state) {
    const MENUITEMINFOA& info = record.m_savedInfo;
    const int position = record.m_nPosition;
    constexpr UINT kDrawn = MF_BYPOSITION | MF_OWNERDRAW;
    if (info.hSubMenu) {
        record.m_nID = reinterpret_cast<UINT_PTR>(info.hSubMenu);
        // The high byte counts the submenu's items; counts that would read as a separator or a radio
        // item are cut.
        record.m_nFlags = (state & ~0x0A00u) | MF_POPUP | kDrawn;
        record.m_strText = CaptionOf(menu, position);
    } else if (info.fType & MFT_SEPARATOR) {
        record.m_nFlags = state | kDrawn;
    } else {
        record.m_nID = ::GetMenuItemID(menu, position);
        record.m_nFlags = info.fType & MFT_OWNERDRAW ? kDrawn : state | kDrawn;
        record.m_strText = CaptionOf(menu, position);
    }
}

}  // namespace

/*
 * The items keep their state, caption, bitmaps and submenu: only their type, id and data change,
 * so that nothing of the host's is lost.
 */
void CSkinMenu::ConvertItems() {
    RestoreItems();
    if (!m_hMenu) return;
    tavix::MenuState& menus = tavix::ThreadMenus();
    for (int position = 0;; ++position) {
        const UINT state = ::GetMenuState(m_hMenu, static_cast<UINT>(position), MF_BYPOSITION);
        if (state == kUnknownState) break;
        auto record = std::make_unique<CSkinMenuItem>();
        record->m_nPosition = position;
        record->m_savedInfo = ReadItem(m_hMenu, position);
        // A window that still shows this menu gives it back first.
        if (const CSkinMenuItem* former = menus.RecordOf(record->m_savedInfo.dwItemData)) {
            menus.SkinOfRecord(former)->RestoreItems();
            record->m_savedInfo = ReadItem(m_hMenu, position);
        }
        const MENUITEMINFOA& saved = record->m_savedInfo;
        if (!saved.fMask) continue;
        record->m_dwMarker = saved.fType & MFT_OWNERDRAW ? 0 : CSkinMenuItem::kConverted;
        record->m_dwHostItemData = saved.dwItemData;
        Classify(*record, m_hMenu, ::GetMenuState(m_hMenu, static_cast<UINT>(position), MF_BYPOSITION));
        if (saved.hSubMenu) {
            if (CSkinMenu* child = menus.SkinOf(saved.hSubMenu)) {
                child->m_hParentMenu = m_hMenu;
                child->m_bIsSubMenu = TRUE;
            }
        }

        MENUITEMINFOA& converted = record->m_convertedInfo;
        converted = saved;
        converted.dwItemData = reinterpret_cast<ULONG_PTR>(record.get());
        UINT mask = MIIM_DATA;
        if (record->IsConverted()) {
            mask |= MIIM_FTYPE | MIIM_ID;
            // A bitmap stays the item's; only the type that stands for a bare one goes.
            converted.fType = (saved.fType & ~static_cast<UINT>(MFT_BITMAP)) | MFT_OWNERDRAW;
            converted.wID = static_cast<UINT>(record->m_nID);
        }
        menus.records.SetAt(record.get(), this);
        const CSkinMenuItem& kept = *record;
        m_arrItems.push_back(std::move(record));
        WriteItem(m_hMenu, position, kept.m_convertedInfo, mask);
    }
}

void CSkinMenu::RestoreItems() {
    tavix::MenuState& menus = tavix::ThreadMenus();
    const bool isMenu = m_hMenu && ::IsMenu(m_hMenu);
    for (const auto& record : m_arrItems) {
        if (isMenu) RestoreItem(*record);
        menus.records.RemoveKey(record.get());
    }
    m_arrItems.clear();
}

/* Where the record's item is now: the host may have inserted and deleted others. -1 if it is gone. */
int CSkinMenu::FindItem(const CSkinMenuItem& record) const {
    const auto has = [&](int position) {
        const MENUITEMINFOA info = ReadItem(m_hMenu, position);
        return info.fMask && info.dwItemData == reinterpret_cast<ULONG_PTR>(&record);
    };
    if (has(record.m_nPosition)) return record.m_nPosition;
    for (int position = 0, count = ::GetMenuItemCount(m_hMenu); position < count; ++position)
        if (has(position)) return position;
    return -1;
}

void CSkinMenu::RestoreItem(const CSkinMenuItem& record) const {
    const MENUITEMINFOA& saved = record.m_savedInfo;
    const MENUITEMINFOA& converted = record.m_convertedInfo;
    int position = FindItem(record);
    UINT mask = MIIM_DATA;
    if (position < 0) {
        // The host has given the item other data, which stays.
        position = record.m_nPosition;
        mask = 0;
    }
    MENUITEMINFOA info = ReadItem(m_hMenu, position);
    if (!info.fMask) return;
    const bool isSameItem = info.wID == converted.wID && info.hSubMenu == converted.hSubMenu;
    if (!mask && (!isSameItem || tavix::ThreadMenus().RecordOf(info.dwItemData))) return;
    if (record.IsConverted() && (info.fType & MFT_OWNERDRAW)) {
        // What the conversion changed goes back; what the host changed since stays.
        info.fType ^= converted.fType ^ saved.fType;
        mask |= info.fType & MFT_BITMAP ? MIIM_TYPE : MIIM_FTYPE;
        info.dwTypeData = reinterpret_cast<char*>(info.hbmpItem);
    }
    if (info.wID == converted.wID && saved.wID != converted.wID) {
        info.wID = saved.wID;
        mask |= MIIM_ID;
    }
    info.dwItemData = record.m_dwHostItemData;
    if (!mask) return;
    WriteItem(m_hMenu, position, info, mask);
    // The type of a bare bitmap is set by the low word of its handle.
    if (mask & MIIM_TYPE) WriteItem(m_hMenu, position, info, MIIM_BITMAP);
}
