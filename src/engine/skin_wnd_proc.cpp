#include "engine/skin_wnd_proc.h"

#include <atomic>
#include <utility>

#include "engine/skin_wnd_base.h"
#include "menus/menu_binding.h"
#include "menus/menu_skin.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

namespace {

/* Puts a message in flight for the length of a scope. */
class MessageScope {
public:
    MessageScope(MSG& inFlight, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
        : m_inFlight(inFlight), m_former(inFlight) {
        inFlight.hwnd = window;
        inFlight.message = message;
        inFlight.wParam = wParam;
        inFlight.lParam = lParam;
    }
    ~MessageScope() { m_inFlight = m_former; }
    MessageScope(const MessageScope&) = delete;
    MessageScope& operator=(const MessageScope&) = delete;

private:
    MSG& m_inFlight;
    MSG m_former;
};

// Set on windows that outlived their engine; the value is the previous procedure.
constexpr char kOrphanProperty[] = "TavixSkinPreviousProc";
// How many windows have it. Mostly none: then no new window needs to be asked for it.
std::atomic<int> g_orphans{0};

WNDPROC TakeOrphan(HWND window) {
    const auto previous = reinterpret_cast<WNDPROC>(::RemovePropA(window, kOrphanProperty));
    if (previous) --g_orphans;
    return previous;
}

LRESULT ForwardOrphan(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WNDPROC previous = reinterpret_cast<WNDPROC>(::GetPropA(window, kOrphanProperty));
    if (!previous) return ::DefWindowProcA(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) TakeOrphan(window);
    return ::CallWindowProcA(previous, window, message, wParam, lParam);
}

// The window ends: its objects leave before the window's own procedure hears of it.
LRESULT EndWindow(CSubclassWndMap* map, CSkinWndBaseClass* head, HWND window, WPARAM wParam, LPARAM lParam) {
    WNDPROC previous = head->PreviousProc();
    map->RemoveAllSkins(window);
    // An owner may end with the window: its object is not looked at from here on.
    CSkinWndBaseClass* ended = tavix::ReleaseKept(head);
    const LRESULT result = ::CallWindowProcA(previous, window, WM_NCDESTROY, wParam, lParam);
    tavix::DeleteWhenUnused(ended);
    return result;
}

/*
 * A popup ends one message sooner than other windows: its menu is given back before the native
 * procedure lets go of it.
 */
LRESULT EndPopup(CSubclassWndMap* map, CSkinWndBaseClass* head, HWND window, WPARAM wParam, LPARAM lParam) {
    WNDPROC previous = head->PreviousProc();
    map->RemoveAllSkins(window);
    static_cast<CSkinMenu*>(head)->RestoreItems();
    const LRESULT result = ::CallWindowProcA(previous, window, WM_DESTROY, wParam, lParam);
    tavix::DeleteWhenUnused(head);
    return result;
}

/*
 * A colour message that a child sent its parent goes on to the child's own skin. True if that
 * answered with something other than 0; `result` is the answer in either case, untouched if
 * the control has no skin.
 */
bool ReflectColourMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    if (message < WM_CTLCOLORMSGBOX || message > WM_CTLCOLORSTATIC) return false;
    // Asked for anew: the parent's handler may have ended the skinning.
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    CSkinWndBaseClass* control =
        engine ? engine->GetSkinWndList()->Lookup(reinterpret_cast<HWND>(lParam)) : nullptr;
    if (!control) return false;
    tavix::SkinInUse use(control);
    result = control->WindowProc(message, wParam, lParam);
    return result != 0;
}

LRESULT ColourOfStatic(CSkinWndBaseClass* head, WPARAM wParam, LPARAM lParam) {
    LRESULT result = head->WindowProc(WM_CTLCOLORSTATIC, wParam, lParam);
    HWND parent = ::GetParent(reinterpret_cast<HWND>(lParam));
    // The system's visual-style subclass marks the windows that it routes colour messages for.
    if (parent && ::GetPropA(parent, "UxSubclassInfo"))
        return head->WindowProc(WM_CTLCOLORSTATIC, wParam, lParam);
    ReflectColourMessage(WM_CTLCOLORSTATIC, wParam, lParam, result);
    return result;
}

LRESULT Dispatch(CSubclassWndMap* map, CSkinWndBaseClass* head, HWND window, UINT message, WPARAM wParam,
                 LPARAM lParam) {
    switch (message) {
        case WM_NCDESTROY:
            return EndWindow(map, head, window, wParam, lParam);
        case WM_CTLCOLORSTATIC:
            return ColourOfStatic(head, wParam, lParam);
        case WM_DESTROY:
            if (head->IsKindOf(RUNTIME_CLASS(CSkinMenu))) return EndPopup(map, head, window, wParam, lParam);
            return head->WindowProc(message, wParam, lParam);
        case WM_INITMENUPOPUP: {
            const LRESULT result = head->WindowProc(message, wParam, lParam);
            tavix::BindPopupMenu(window, reinterpret_cast<HMENU>(wParam));
            return result;
        }
        // Neither the skin nor the window hears of it: what opened the popup has ended it already.
        case WM_UNINITMENUPOPUP:
            tavix::ForgetPendingPopup();
            return 0;
        default:
            return head->WindowProc(message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK SkinWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    CSubclassWndMap* map = engine ? engine->GetSkinWndList() : nullptr;
    CSkinWndBaseClass* head = map ? map->Lookup(window) : nullptr;
    if (!head) return ForwardOrphan(window, message, wParam, lParam);

    try {
        AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
        MessageScope inFlight(moduleState.ThreadState()->m_lastSentMsg, window, message, wParam, lParam);
        tavix::SkinInUse use(head);
        return Dispatch(map, head, window, message, wParam, lParam);
    } catch (...) {
        // Out of memory is all that can be thrown here; nothing may fly through the platform's frames.
        return ::DefWindowProcA(window, message, wParam, lParam);
    }
}

namespace tavix {

// An object that belongs to another is that one's to keep alive, and may be gone at the scope's end.
SkinInUse::SkinInUse(CSkinWndBaseClass* skin) : m_skin(skin->m_bKeptByOwner ? nullptr : skin) {
    if (m_skin) ++m_skin->m_nUses;
}

SkinInUse::~SkinInUse() {
    if (m_skin && --m_skin->m_nUses == 0 && m_skin->m_bDoomed) delete m_skin;
}

// Deletes the object, at once or when the last scope that uses it ends.
void DeleteWhenUnused(CSkinWndBaseClass* skin) {
    if (!skin) return;
    skin->m_bDoomed = true;
    if (skin->m_nUses == 0) delete skin;
}

// Lets the objects go that belong to others; the result is the first that doesn't, and is to be deleted.
CSkinWndBaseClass* ReleaseKept(CSkinWndBaseClass* head) {
    CSkinWndBaseClass* skin = head;
    while (skin && skin->m_bKeptByOwner) {
        skin->m_hWnd = nullptr;
        skin = std::exchange(skin->m_pNextSkin, nullptr);
    }
    return skin;
}

void ReleaseOrphan(CSkinWndBaseClass* head, HWND window) {
    if (::SetPropA(window, kOrphanProperty, reinterpret_cast<HANDLE>(head->PreviousProc()))) ++g_orphans;
    DeleteWhenUnused(ReleaseKept(head));
}

WNDPROC AdoptOrphan(HWND window) { return g_orphans != 0 ? TakeOrphan(window) : nullptr; }

}  // namespace tavix
