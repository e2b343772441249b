#include "engine/skin_wnd_proc.h"

#include "engine/skin_wnd_base.h"
#include "framework/thread_slot.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

namespace {

/*
 * One call of the shared procedure that is on the stack. A handler may destroy its own window
 * (a click that closes a dialog), and so end the object whose code is still running: the
 * object is then handed to the outermost call that uses it and deleted when that one returns.
 */
struct Activation {
    CSkinWndBaseClass* head;
    CSkinWndBaseClass* doomed;
    Activation* outer;
};

struct ActivationStack {
    Activation* innermost = nullptr;
};
tavix::ThreadSlot<ActivationStack> g_activations;

void DeleteWhenUnused(CSkinWndBaseClass* skin) {
    Activation* outermost = nullptr;
    for (Activation* a = g_activations.Get().innermost; a; a = a->outer)
        if (a->head == skin) outermost = a;
    if (outermost)
        outermost->doomed = skin;
    else
        delete skin;
}

class ActivationScope {
public:
    explicit ActivationScope(CSkinWndBaseClass* head) : m_stack(g_activations.Get()), m_activation{head, nullptr, m_stack.innermost} {
        m_stack.innermost = &m_activation;
    }
    ~ActivationScope() {
        m_stack.innermost = m_activation.outer;
        delete m_activation.doomed;
    }
    ActivationScope(const ActivationScope&) = delete;
    ActivationScope& operator=(const ActivationScope&) = delete;

private:
    ActivationStack& m_stack;
    Activation m_activation;
};

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

LRESULT ForwardOrphan(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WNDPROC previous = reinterpret_cast<WNDPROC>(::GetPropA(window, kOrphanProperty));
    if (!previous) return ::DefWindowProcA(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) ::RemovePropA(window, kOrphanProperty);
    return ::CallWindowProcA(previous, window, message, wParam, lParam);
}

// The window ends: its objects leave before the window's own procedure hears of it.
LRESULT EndWindow(CSubclassWndMap* map, CSkinWndBaseClass* head, HWND window, WPARAM wParam, LPARAM lParam) {
    WNDPROC previous = head->PreviousProc();
    map->RemoveAllSkins(window);
    const LRESULT result = ::CallWindowProcA(previous, window, WM_NCDESTROY, wParam, lParam);
    DeleteWhenUnused(head);
    return result;
}

/*
 * A colour message that a child sent its parent goes on to the child's own skin. True if that
 * answered with something other than 0; `result` is the answer in either case, untouched if
 * the control has no skin.
 */
bool ReflectColourMessage(CSubclassWndMap* map, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    if (message < WM_CTLCOLORMSGBOX || message > WM_CTLCOLORSTATIC) return false;
    CSkinWndBaseClass* control = map->Lookup(reinterpret_cast<HWND>(lParam));
    if (!control) return false;
    result = control->WindowProc(message, wParam, lParam);
    return result != 0;
}

LRESULT ColourOfStatic(CSubclassWndMap* map, CSkinWndBaseClass* head, WPARAM wParam, LPARAM lParam) {
    LRESULT result = head->WindowProc(WM_CTLCOLORSTATIC, wParam, lParam);
    HWND parent = ::GetParent(reinterpret_cast<HWND>(lParam));
    // The system's visual-style subclass marks the windows that it routes colour messages for.
    if (parent && ::GetPropA(parent, "UxSubclassInfo")) return head->WindowProc(WM_CTLCOLORSTATIC, wParam, lParam);
    ReflectColourMessage(map, WM_CTLCOLORSTATIC, wParam, lParam, result);
    return result;
}

LRESULT Dispatch(CSubclassWndMap* map, CSkinWndBaseClass* head, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCDESTROY: return EndWindow(map, head, window, wParam, lParam);
        case WM_CTLCOLORSTATIC: return ColourOfStatic(map, head, wParam, lParam);
        // Neither the skin nor the window hears of it: what opened the popup has ended it already.
        case WM_UNINITMENUPOPUP: return 0;
        default: return head->WindowProc(message, wParam, lParam);
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
        ActivationScope activation(head);
        return Dispatch(map, head, window, message, wParam, lParam);
    } catch (...) {
        // Out of memory is all that can be thrown here; nothing may fly through the platform's frames.
        return ::DefWindowProcA(window, message, wParam, lParam);
    }
}

namespace tavix {

void ReleaseOrphan(CSkinWndBaseClass* head, HWND window) {
    ::SetPropA(window, kOrphanProperty, reinterpret_cast<HANDLE>(head->PreviousProc()));
    DeleteWhenUnused(head);
}

}  // namespace tavix
