/* CSubclassWndMap: which skin object stands at the head of a window's chain. */
#pragma once

#include "tavixskin/framework/containers.h"

class CSkinWndBaseClass;

/* The keys are window handles. The map owns nothing: a skin object ends with its window. */
class TAVIX_API CSubclassWndMap : public CMapPtrToPtr {
    DECLARE_DYNAMIC(CSubclassWndMap)
public:
    CSubclassWndMap() : CMapPtrToPtr(10) {}

    /* The head skin object of the window, null if it has none. */
    CSkinWndBaseClass* Lookup(HWND window) const {
        void* head = nullptr;
        CMapPtrToPtr::Lookup(window, head);
        return static_cast<CSkinWndBaseClass*>(head);
    }
    /* Makes the object the head of the window. */
    void Add(HWND window, CSkinWndBaseClass* head) { SetAt(window, head); }
    /* Removes the entry of the object's window. */
    void Remove(const CSkinWndBaseClass* skin);
    /* Detaches every object of the window's chain; deletes none. */
    void RemoveAllSkins(HWND window);
};
