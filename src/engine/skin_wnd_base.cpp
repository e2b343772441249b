#include "engine/skin_wnd_base.h"

#include "engine/skin_wnd_proc.h"
#include "menus/menu_binding.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

IMPLEMENT_DYNAMIC(CSkinWndBaseClass, CObject)

int CSkinWndBaseClass::RepaintSkin() {
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
    ::SendMessageA(m_hWnd, WM_NCPAINT, 0, 0);
    return 1;
}

LRESULT CSkinWndBaseClass::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_pNextSkin) {
        tavix::SkinInUse use(m_pNextSkin);
        return m_pNextSkin->WindowProc(message, wParam, lParam);
    }
    return ::CallWindowProcA(m_pfnPrevWndProc, m_hWnd, message, wParam, lParam);
}

LRESULT CSkinWndBaseClass::Default(UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_SYSCOLORCHANGE) return 0;
    // Not the arguments: a skin may have changed them, and hosts rely on hearing what was sent.
    MSG inFlight = AfxGetThreadState()->m_lastSentMsg;
    inFlight.hwnd = m_hWnd;
    return tavix::ForwardMenuMessage(m_pfnPrevWndProc, inFlight, lParam);
}

BOOL CSkinWndBaseClass::Attach(HWND window) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    if (!engine) return TRUE;
    CSubclassWndMap* map = engine->GetSkinWndList();
    CSkinWndBaseClass* head = map->Lookup(window);
    if (head == this) return TRUE;
    m_hWnd = window;
    if (head) {
        m_pNextSkin = head;
        m_pfnPrevWndProc = head->m_pfnPrevWndProc;
    } else if (WNDPROC previous = tavix::AdoptOrphan(window)) {
        // The shared procedure is among the window's procedures already, perhaps below another's;
        // a second place there would make it call itself.
        m_pfnPrevWndProc = previous;
    } else {
        m_pfnPrevWndProc = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SkinWndProc)));
    }
    map->Add(window, this);
    return TRUE;
}

bool CSkinWndBaseClass::IsInChain(HWND window, const CSkinWndBaseClass* skin) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    if (!engine) return false;
    for (const CSkinWndBaseClass* at = engine->GetSkinWndList()->Lookup(window); at; at = at->m_pNextSkin)
        if (at == skin) return true;
    return false;
}

BOOL CSkinWndBaseClass::Detach(HWND window) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    if (!engine) return TRUE;
    CSubclassWndMap* map = engine->GetSkinWndList();
    CSkinWndBaseClass* head = map->Lookup(window);
    if (head == this) {
        map->Remove(this);
        if (m_pNextSkin)
            map->Add(window, m_pNextSkin);
        else
            ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnPrevWndProc));
        return TRUE;
    }
    for (CSkinWndBaseClass* skin = head; skin; skin = skin->m_pNextSkin) {
        if (skin->m_pNextSkin != this) continue;
        skin->m_pNextSkin = m_pNextSkin;
        break;
    }
    return TRUE;
}
