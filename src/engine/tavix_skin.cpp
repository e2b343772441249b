#include "tavixskin/tavix_skin.h"

#include <shlwapi.h>

#include <utility>

#include "engine/interception.h"
#include "engine/skin_wnd_base.h"
#include "engine/skin_wnd_proc.h"
#include "engine/tab_controls.h"
#include "engine/window_hook.h"
#include "tavixskin/framework/wnd.h"

IMPLEMENT_DYNAMIC(CTavixSkin, CObject)

CMapWordToPtr CTavixSkin::m_lstHookedThread(10);
CMapWordToPtr CTavixSkin::m_lstThreadSkinData(10);

namespace {

// The sink of the engine's trace texts. It produces nothing.
void Trace(const char*) {}

// Functions are intercepted on the NT family of systems only.
bool IsNtFamily() { return ::GetVersion() < 0x80000000; }

}  // namespace

CTavixSkin::CTavixSkin() : m_hHook(nullptr), m_hMutex(nullptr) {}

CTavixSkin::~CTavixSkin() {
    if (m_hMutex) ::CloseHandle(m_hMutex);
    // A window that outlives the engine keeps a procedure of the library, so the code has to stay.
    const CHandleMap* frameworkWindows = AfxMapHWND(false);
    if (!m_lstSkinWnd.IsEmpty() || (frameworkWindows && frameworkWindows->HasPermanents()))
        AfxKeepLibraryLoaded();
    for (POSITION at = m_lstSkinWnd.GetStartPosition(); at;) {
        void* window = nullptr;
        void* head = nullptr;
        m_lstSkinWnd.GetNextAssoc(at, window, head);
        tavix::ReleaseOrphan(static_cast<CSkinWndBaseClass*>(head), static_cast<HWND>(window));
    }
}

int CTavixSkin::InstallSkin() {
    if (IsNtFamily()) InstallApiHooks();
    tavix::ForgetTabControls();
    m_hHook = ::SetWindowsHookExA(WH_CALLWNDPROC, &SkinHookProc, nullptr, ::GetCurrentThreadId());
    if (!m_hHook) {
        Trace("Fail to hook the thread");
        return 0;
    }
    Trace("Successfully hook thread");
    const WORD thread = static_cast<WORD>(::GetCurrentThreadId());
    m_lstHookedThread.SetAt(thread, m_hHook);
    m_lstThreadSkinData.SetAt(thread, this);
    return 1;
}

void CTavixSkin::UnInstallSkin() {
    ::UnhookWindowsHookEx(m_hHook);
    const WORD thread = static_cast<WORD>(::GetCurrentThreadId());
    m_lstHookedThread.RemoveKey(thread);
    m_lstThreadSkinData.RemoveKey(thread);
    if (IsNtFamily()) UnInstallApiHooks();
    Trace("Successfully Unhook thread");
    delete this;
}

int CTavixSkin::LoadSkin(CString path) {
    if (!::PathFileExistsA(path)) return 0;
    m_SkinFace.LoadSkin(std::move(path));
    return 1;
}

int CTavixSkin::UnLoadSkin() {
    m_SkinFace.UnLoadSkin();
    return 1;
}

DWORD CTavixSkin::GetTavixSkinColor(DWORD id) { return m_SkinFace.GetColor(id); }
CBitmap* CTavixSkin::GetTavixSkinBmp(DWORD id) { return m_SkinFace.GetBmp(id); }
DWORD CTavixSkin::GetTavixSkinSize(DWORD id) { return m_SkinFace.GetSize(id); }

CSubclassWndMap* CTavixSkin::GetSkinWndList() { return &m_lstSkinWnd; }
CArray<HWND, HWND*>* CTavixSkin::GetRegistedSkinWnd() { return &m_lstRegistedSkinWnd; }

CMapWordToPtr* CTavixSkin::GetHookedThreadList() { return &m_lstHookedThread; }
CMapWordToPtr* CTavixSkin::GetThreadSkinData() { return &m_lstThreadSkinData; }

int CTavixSkin::RegisterSkinWnd(HWND window) {
    CTavixSkin* engine = GetCurrentThreadSkin();
    if (!engine) return 1;
    CArray<HWND, HWND*>& list = engine->m_lstRegistedSkinWnd;
    for (int i = 0; i < list.GetSize(); ++i)
        if (list[i] == window) return 1;
    list.Add(&window);
    return 1;
}

int CTavixSkin::UnRegisterSkinWnd(HWND window) {
    CTavixSkin* engine = GetCurrentThreadSkin();
    if (!engine) return 1;
    CArray<HWND, HWND*>& list = engine->m_lstRegistedSkinWnd;
    for (int i = 0; i < list.GetSize(); ++i) {
        if (list[i] != window) continue;
        list.RemoveAt(i);
        return 1;
    }
    return 1;
}

int CTavixSkin::IsSkinnedThread(DWORD threadId) {
    void* engine = nullptr;
    m_lstThreadSkinData.Lookup(static_cast<WORD>(threadId), engine);
    return engine != nullptr;
}

DWORD CTavixSkin::GetGloalTavixSkinColor(DWORD id) {
    CTavixSkin* engine = GetCurrentThreadSkin();
    return engine ? engine->GetTavixSkinColor(id) : 0;
}

CBitmap* CTavixSkin::GetGloalTavixSkinBmp(DWORD id) {
    CTavixSkin* engine = GetCurrentThreadSkin();
    return engine ? engine->GetTavixSkinBmp(id) : nullptr;
}

DWORD CTavixSkin::GetGloalTavixSkinSize(DWORD id) {
    CTavixSkin* engine = GetCurrentThreadSkin();
    return engine ? engine->GetTavixSkinSize(id) : 0;
}
