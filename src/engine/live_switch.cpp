/* The change of skin while windows are open. */
#include <utility>
#include <vector>

#include "engine/skin_wnd_base.h"
#include "engine/skin_wnd_proc.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

namespace {

// Sent to the registered windows after a change of skin, both parameters 0.
constexpr UINT kSkinChangedMessage = 0x703;
// One object for all threads and processes that load the library.
constexpr char kSwitchMutexName[] = "Tavix";

}  // namespace

int CTavixSkin::SetNewSkin(CString path) {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());

    // The former handle is closed only now: it keeps the mutex alive until the new handle does.
    HANDLE former = m_hMutex;
    m_hMutex = ::CreateMutexA(nullptr, FALSE, kSwitchMutexName);
    if (former) ::CloseHandle(former);
    ::WaitForSingleObject(m_hMutex, INFINITE);

    UnLoadSkin();
    // A missing file leaves the thread with an empty skin and the owner of the mutex: no other
    // thread changes a skin until this one has either succeeded or ended.
    if (!LoadSkin(std::move(path))) return 0;
    ::ReleaseMutex(m_hMutex);

    // A window's repaint may create and destroy windows, so the walk goes over a copy and asks
    // for each window again.
    std::vector<HWND> windows;
    windows.reserve(static_cast<std::size_t>(m_lstSkinWnd.GetCount()));
    for (POSITION at = m_lstSkinWnd.GetStartPosition(); at;) {
        void* window = nullptr;
        void* head = nullptr;
        m_lstSkinWnd.GetNextAssoc(at, window, head);
        windows.push_back(static_cast<HWND>(window));
    }
    for (HWND window : windows) {
        // A host may end the skinning inside a repaint; then this engine is gone.
        if (GetCurrentThreadSkin() != this) return 1;
        if (CSkinWndBaseClass* head = m_lstSkinWnd.Lookup(window)) {
            tavix::SkinInUse use(head);
            head->RepaintSkin();
        }
    }
    for (int i = 0; GetCurrentThreadSkin() == this && i < m_lstRegistedSkinWnd.GetSize(); ++i)
        ::SendMessageA(m_lstRegistedSkinWnd[i], kSkinChangedMessage, 0, 0);
    return 1;
}
