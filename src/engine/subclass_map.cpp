#include "tavixskin/subclass_map.h"

#include "engine/skin_wnd_base.h"

IMPLEMENT_DYNAMIC(CSubclassWndMap, CMapPtrToPtr)

void CSubclassWndMap::Remove(const CSkinWndBaseClass* skin) { RemoveKey(skin->GetSafeHwnd()); }

void CSubclassWndMap::RemoveAllSkins(HWND window) {
    while (CSkinWndBaseClass* head = Lookup(window)) {
        head->Detach(window);
        if (Lookup(window) == head) RemoveKey(window);  // a detach that changed nothing must not loop
    }
}
