#include "menus/menu_state.h"

#include <algorithm>

#include "framework/thread_slot.h"
#include "menus/menu_skin.h"

namespace tavix {
namespace {

ThreadSlot<MenuState> g_menus;

WORD KeyOf(HMENU menu) { return LOWORD(reinterpret_cast<ULONG_PTR>(menu)); }

}  // namespace

MenuState& ThreadMenus() { return g_menus.Get(); }

CSkinMenu* MenuState::SkinOf(HMENU menu) const {
    void* skin = nullptr;
    skins.Lookup(KeyOf(menu), skin);
    return static_cast<CSkinMenu*>(skin);
}

void MenuState::SetSkinOf(HMENU menu, CSkinMenu* skin) { skins.SetAt(KeyOf(menu), skin); }

void MenuState::ForgetSkin(const CSkinMenu* skin) {
    for (POSITION at = skins.GetStartPosition(); at;) {
        WORD key = 0;
        void* value = nullptr;
        skins.GetNextAssoc(at, key, value);
        if (value == skin) skins.RemoveKey(key);
    }
    if (pendingSkin == skin) pendingSkin = nullptr;
}

CSkinMenuItem* MenuState::RecordOf(ULONG_PTR itemData) const {
    void* record = reinterpret_cast<void*>(itemData);
    void* skin = nullptr;
    return records.Lookup(record, skin) ? static_cast<CSkinMenuItem*>(record) : nullptr;
}

CSkinMenu* MenuState::SkinOfRecord(const CSkinMenuItem* record) const {
    void* skin = nullptr;
    records.Lookup(const_cast<CSkinMenuItem*>(record), skin);
    return static_cast<CSkinMenu*>(skin);
}

CSkinMenu* MenuState::FindSkinByItemId(UINT_PTR id) const {
    CSkinMenu* found = nullptr;
    for (POSITION at = skins.GetStartPosition(); at;) {
        WORD key = 0;
        void* value = nullptr;
        skins.GetNextAssoc(at, key, value);
        auto* skin = static_cast<CSkinMenu*>(value);
        if (std::ranges::any_of(skin->Items(), [id](const auto& item) { return item->m_nID == id; }))
            found = skin;
    }
    return found;
}

}  // namespace tavix
