#include "tavixskin/framework/wnd.h"

#include <utility>

IMPLEMENT_DYNAMIC(CWnd, CObject)

const AFX_MSGMAP_ENTRY CWnd::messageEntries[] = {{0, 0, 0, 0, nullptr}};
const AFX_MSGMAP CWnd::messageMap = {nullptr, CWnd::messageEntries};
const AFX_MSGMAP* CWnd::GetMessageMap() const { return &CWnd::messageMap; }

// ---------------------------------------------------------------- handle maps

CWnd* CHandleMap::LookupPermanent(HWND window) const {
    void* object = nullptr;
    m_permanentMap.Lookup(window, object);
    return static_cast<CWnd*>(object);
}

bool CHandleMap::HasPermanent(const void* object) const {
    for (POSITION at = m_permanentMap.GetStartPosition(); at;) {
        void* window = nullptr;
        void* value = nullptr;
        m_permanentMap.GetNextAssoc(at, window, value);
        if (value == object) return true;
    }
    return false;
}

CWnd* CHandleMap::FromHandle(HWND window) {
    if (!window) return nullptr;
    if (CWnd* permanent = LookupPermanent(window)) return permanent;
    void* object = nullptr;
    if (!m_temporaryMap.Lookup(window, object)) {
        CWnd* made = new CWnd;
        made->m_hWnd = window;
        made->m_bTemporary = true;
        m_temporaryMap.SetAt(window, made);
        object = made;
    }
    return static_cast<CWnd*>(object);
}

void CHandleMap::SetPermanent(HWND window, CWnd* object) { m_permanentMap.SetAt(window, object); }

void CHandleMap::RemovePermanent(HWND window) { m_permanentMap.RemoveKey(window); }

void CHandleMap::DeleteTemp() {
    if (m_temporaryMap.IsEmpty()) return;
    for (POSITION at = m_temporaryMap.GetStartPosition(); at;) {
        void* key = nullptr;
        void* object = nullptr;
        m_temporaryMap.GetNextAssoc(at, key, object);
        CWnd* window = static_cast<CWnd*>(object);
        window->m_hWnd = nullptr;  // the window is not the wrapper's to destroy
        delete window;
    }
    m_temporaryMap.RemoveAll();
}

// ---------------------------------------------------------------- life of a window object

CWnd::~CWnd() {
    if (!m_hWnd || m_bTemporary) return;
    DestroyWindow();
    // A window that was only attached, or that can't be destroyed, must not lead to a dead object.
    if (m_hWnd) UnsubclassWindow();
}

CWnd* CWnd::FromHandle(HWND window) { return AfxMapHWND(true)->FromHandle(window); }

CWnd* CWnd::FromHandlePermanent(HWND window) {
    CHandleMap* map = AfxMapHWND(false);
    return map && window ? map->LookupPermanent(window) : nullptr;
}

bool CWnd::Attach(HWND window) {
    if (!window || m_hWnd || FromHandlePermanent(window)) return false;
    AfxMapHWND(true)->SetPermanent(window, this);
    m_hWnd = window;
    return true;
}

HWND CWnd::Detach() {
    if (!m_hWnd) return nullptr;
    if (CHandleMap* map = AfxMapHWND(false)) map->RemovePermanent(m_hWnd);
    return std::exchange(m_hWnd, nullptr);
}

bool CWnd::SubclassWindow(HWND window) {
    if (!Attach(window)) return false;
    const LONG_PTR former =
        ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc));
    // A window of a class of the framework's own has no other procedure below.
    if (former != reinterpret_cast<LONG_PTR>(&AfxWndProc)) m_pfnSuper = reinterpret_cast<WNDPROC>(former);
    return true;
}

HWND CWnd::UnsubclassWindow() {
    if (m_hWnd && m_pfnSuper)
        ::SetWindowLongPtrA(m_hWnd, GWLP_WNDPROC,
                            reinterpret_cast<LONG_PTR>(std::exchange(m_pfnSuper, nullptr)));
    return Detach();
}

// Meets the window before its first message, so that the object sees WM_NCCREATE and WM_CREATE.
LRESULT CALLBACK AfxCbtHookProc(int code, WPARAM wParam, LPARAM lParam) {
    AFX_THREAD_STATE* state = AfxGetThreadState();
    HHOOK hook = state->m_hHookCreate;
    if (code == HCBT_CREATEWND && state->m_pWndInit)
        std::exchange(state->m_pWndInit, nullptr)->SubclassWindow(reinterpret_cast<HWND>(wParam));
    return ::CallNextHookEx(hook, code, wParam, lParam);
}

namespace {

bool IsFrameworkClass(const CREATESTRUCTA& create) {
    WNDCLASSA facts{};
    return ::GetClassInfoA(create.hInstance, create.lpszClass, &facts) && facts.lpfnWndProc == &AfxWndProc;
}

}  // namespace

bool CWnd::CreateEx(DWORD exStyle, const char* className, const char* title, DWORD style, const RECT& rect,
                    HWND parent, UINT id, void* parameter, HINSTANCE instance) {
    if (m_hWnd) return false;
    const CRect place(rect);
    CREATESTRUCTA create{};
    create.lpCreateParams = parameter;
    create.hInstance = instance ? instance : ::GetModuleHandleA(nullptr);
    create.hMenu = reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id));
    create.hwndParent = parent;
    create.x = place.left;
    create.y = place.top;
    create.cx = place.Width();
    create.cy = place.Height();
    create.style = static_cast<LONG>(style);
    create.lpszName = title;
    create.lpszClass = className;
    create.dwExStyle = exStyle;
    return PreCreateWindow(create) && CreateFrom(create);
}

// A window whose class has the framework's own procedure meets its object there, at its first message. One of
// another class needs a hook, of which the system asks at each step of the window's making.
bool CWnd::CreateFrom(const CREATESTRUCTA& create) {
    AFX_THREAD_STATE* state = AfxGetThreadState();
    HHOOK hook = nullptr;
    if (!IsFrameworkClass(create)) {
        hook = ::SetWindowsHookExA(WH_CBT, &AfxCbtHookProc, nullptr, ::GetCurrentThreadId());
        if (!hook) return false;
    }
    HHOOK formerHook = std::exchange(state->m_hHookCreate, hook);
    CWnd* formerWindow = std::exchange(state->m_pWndInit, this);
    HWND window =
        ::CreateWindowExA(create.dwExStyle, create.lpszClass, create.lpszName,
                          static_cast<DWORD>(create.style), create.x, create.y, create.cx, create.cy,
                          create.hwndParent, create.hMenu, create.hInstance, create.lpCreateParams);
    state->m_pWndInit = formerWindow;
    if (hook) ::UnhookWindowsHookEx(hook);
    state->m_hHookCreate = formerHook;
    return window != nullptr;
}

bool CWnd::PreCreateWindow(CREATESTRUCTA&) { return true; }

bool CWnd::DestroyWindow() { return m_hWnd && ::DestroyWindow(m_hWnd); }

// ---------------------------------------------------------------- messages

// The object of a window, which at the first message of one that is being made is its maker.
CWnd* CWnd::ObjectOf(HWND window, AFX_THREAD_STATE& thread) {
    CWnd* object = FromHandlePermanent(window);
    if (object || !thread.m_pWndInit || thread.m_hHookCreate) return object;
    CWnd* maker = std::exchange(thread.m_pWndInit, nullptr);
    return maker->Attach(window) ? maker : nullptr;
}

LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // Windows of the framework belong to the library, whoever sends them a message.
    AFX_MAINTAIN_STATE2 state(AfxGetLibraryModuleState());
    CWnd* object = CWnd::ObjectOf(window, *state.ThreadState());
    if (!object) return ::DefWindowProcA(window, message, wParam, lParam);

    MSG& inFlight = state.ThreadState()->m_lastSentMsg;
    const MSG former = inFlight;
    inFlight.hwnd = window;
    inFlight.message = message;
    inFlight.wParam = wParam;
    inFlight.lParam = lParam;
    LRESULT result = 0;
    try {
        if (message == WM_NCDESTROY)
            object->OnNcDestroy();
        else
            result = object->WindowProc(message, wParam, lParam);
    } catch (...) {
        // Nothing may fly through the platform's frames; the message counts as unhandled.
        result = ::DefWindowProcA(window, message, wParam, lParam);
    }
    inFlight = former;
    return result;
}

void CWnd::OnNcDestroy() {
    LRESULT result = 0;
    const MSG message = AfxGetThreadState()->m_lastSentMsg;
    if (!OnWndMsg(message.message, message.wParam, message.lParam, &result)) Default();
    if (m_hWnd) UnsubclassWindow();
    PostNcDestroy();
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result)) return result;
    return DefWindowProc(message, wParam, lParam);
}

bool CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const UINT command = LOWORD(wParam);
    // Without a control it comes from a menu or, marked by a 1 in its high word, from an accelerator.
    const UINT code = lParam ? HIWORD(wParam) : 0;
    for (const AFX_MSGMAP* map = GetMessageMap(); map; map = map->pBaseMap) {
        for (const AFX_MSGMAP_ENTRY* e = map->lpEntries; e->pfn; ++e) {
            if (e->nMessage != message) continue;
            if (message == WM_COMMAND && (code != e->nCode || command < e->nID || command > e->nLastID))
                continue;
            *result = (this->*e->pfn)(wParam, lParam);
            return true;
        }
    }
    return false;
}

bool CWnd::UpdateCommand(CCmdUI& ui) {
    for (const AFX_MSGMAP* map = GetMessageMap(); map; map = map->pBaseMap) {
        for (const AFX_MSGMAP_ENTRY* e = map->lpEntries; e->pfn; ++e) {
            if (e->nMessage != WM_COMMAND || e->nCode != CN_UPDATE_COMMAND_UI) continue;
            if (ui.m_nID < e->nID || ui.m_nID > e->nLastID) continue;
            (this->*e->pfn)(ui.m_nID, reinterpret_cast<LPARAM>(&ui));
            return true;
        }
    }
    return false;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_pfnSuper) return ::CallWindowProcA(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProcA(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
    const MSG& message = AfxGetThreadState()->m_lastSentMsg;
    return DefWindowProc(message.message, message.wParam, message.lParam);
}
