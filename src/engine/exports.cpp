/* The seven functions of the C interface. */
#include <shlwapi.h>

#include <memory>
#include <new>

#include "tavixskin.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

extern "C" {

int __cdecl InstallTavixSkin(const char* path) try {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
    if (!path || !::PathFileExistsA(path)) return 0;
    if (CTavixSkin::IsSkinnedThread(::GetCurrentThreadId())) return 0;
    std::unique_ptr<CTavixSkin> engine(new (std::nothrow) CTavixSkin);
    if (!engine) return 0;
    // A file that can't be read leaves an empty skin, and the install goes on.
    engine->LoadSkin(path);
    // From here on the thread owns it, also if the platform refuses the hook.
    return engine.release()->InstallSkin();
} catch (...) {
    return 0;
}

void __cdecl UnInstallTavixSkin(void) try {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
    if (CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin()) engine->UnInstallSkin();
} catch (...) {
}

int __cdecl IsSkinnedThread(DWORD threadId) try {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
    return CTavixSkin::IsSkinnedThread(threadId);
} catch (...) {
    return 0;
}

int __cdecl SetSkinFromFile(const char* path) try {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
    if (!CTavixSkin::IsSkinnedThread(::GetCurrentThreadId())) return 0;
    return CTavixSkin::GetCurrentThreadSkin()->SetNewSkin(path);
} catch (...) {
    return 0;
}

int __cdecl RegisterSkinWnd(HWND) try {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
    return 1;
} catch (...) {
    return 1;
}

int __cdecl UnRegisterSkinWnd(HWND) try {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
    return 1;
} catch (...) {
    return 1;
}

HBITMAP __cdecl GetTavixSkinHBITMAP(DWORD id) try {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
    CBitmap* bitmap = CTavixSkin::GetGloalTavixSkinBmp(id);
    return bitmap ? static_cast<HBITMAP>(*bitmap) : nullptr;
} catch (...) {
    return nullptr;
}

}  // extern "C"
