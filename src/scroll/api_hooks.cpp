#include "scroll/api_hooks.h"

#include <new>
#include <utility>
#include <vector>

#include "scroll/import_hook.h"
#include "scroll/scroll_host.h"
#include "tavixskin/framework/module_state.h"

namespace {

template <class Function>
FARPROC Address(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

// Three rows name their module without its ending. Import tables carry it, so these functions are
// replaced only for code that looks them up by name.
const tavix::HookRow kHooks[] = {
    {"Kernel32.dll", "LoadLibraryA", Address(tavix::HookedLoadLibraryA)},
    {"Kernel32", "LoadLibraryW", Address(tavix::HookedLoadLibraryW)},
    {"Kernel32", "LoadLibraryExA", Address(tavix::HookedLoadLibraryExA)},
    {"Kernel32", "LoadLibraryExW", Address(tavix::HookedLoadLibraryExW)},
    {"Kernel32.dll", "GetProcAddress", Address(tavix::HookedGetProcAddress)},
    {"User32.dll", "SetScrollInfo", Address(tavix::HookedSetScrollInfo)},
    {"User32.dll", "SetScrollRange", Address(tavix::HookedSetScrollRange)},
    {"User32.dll", "SetScrollPos", Address(tavix::HookedSetScrollPos)},
    {"User32.dll", "MoveWindow", Address(tavix::HookedMoveWindow)},
    {"User32.dll", "GetScrollInfo", Address(tavix::HookedGetScrollInfo)},
    {"User32.dll", "BringWindowToTop", Address(tavix::HookedBringWindowToTop)},
    {"User32.dll", "ShowWindow", Address(tavix::HookedShowWindow)},
    {"User32.dll", "ShowScrollBar", Address(tavix::HookedShowScrollBar)},
    {"User32.dll", "EnableScrollBar", Address(tavix::HookedEnableScrollBar)},
    {"User32.dll", "TrackPopupMenu", Address(tavix::HookedTrackPopupMenu)},
};
constexpr int kHookCount = sizeof kHooks / sizeof kHooks[0];
static_assert(kHookCount == 15);

// Modules that own scrolling controls: loaded before their imports are walked.
constexpr const char* kControlModules[] = {"ComCtl32.dll", "Riched32.dll", "Riched20.dll"};
constexpr int kControlModuleCount = sizeof kControlModules / sizeof kControlModules[0];

// All that interception holds, of the whole process. Plain pointers: nothing is to be undone while a
// process ends, when other modules may already be gone.
CImportHook* g_hooks[kHookCount];
HMODULE g_controlModules[kControlModuleCount];
// Loader hooks of earlier installs, which stay in the list until interception ends.
std::vector<CImportHook*> g_formerLoaderHooks;
// Import tables lead into the library: it stays loaded, whoever frees it, until they no longer do.
HMODULE g_ownReference = nullptr;

CImportHook* MakeHook(const tavix::HookRow& row) {
    return new (std::nothrow) CImportHook(row.moduleName, row.functionName, row.replacement, 1);
}

// Those of the rows from `first` to before `end` that have none, by one walk through the modules.
void MakeHooks(int first, int end) {
    const unsigned loads = tavix::LoadsSeen();
    {
        const tavix::ModuleWalk walk;
        for (int i = first; i < end; ++i)
            if (!g_hooks[i]) g_hooks[i] = MakeHook(kHooks[i]);
    }
    if (tavix::LoadsSeen() == loads) return;
    // A module that another thread loaded meanwhile met only the hooks of its moment.
    const tavix::ModuleWalk walk;
    for (int i = first; i < end; ++i)
        if (const CImportHook* hook = g_hooks[i])
            ReplaceInAllModules(hook->m_pszModule, hook->m_pfnOrig, hook->m_pfnHook, hook->m_bExcludeSelf);
}

void EndHook(CImportHook*& hook) { delete std::exchange(hook, nullptr); }

void EndHooks(int first, int end) {
    const tavix::ModuleWalk walk;
    for (int i = first; i < end; ++i) EndHook(g_hooks[i]);
}

}  // namespace

namespace tavix {

std::span<const HookRow> HookTable() { return kHooks; }

}  // namespace tavix

void InstallApiHooks() {
    if (!g_ownReference)
        ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                             reinterpret_cast<const char*>(&InstallApiHooks), &g_ownReference);
    // The loader's hooks are made afresh at each install, the others only where there is none.
    for (int i = 0; i < tavix::kLoaderHooks; ++i)
        if (CImportHook* former = std::exchange(g_hooks[i], nullptr)) g_formerLoaderHooks.push_back(former);
    MakeHooks(0, tavix::kLoaderHooks);
    for (int i = 0; i < kControlModuleCount; ++i)
        if (!g_controlModules[i]) g_controlModules[i] = ::LoadLibraryA(kControlModules[i]);
    MakeHooks(tavix::kLoaderHooks, kHookCount);
}

void UnInstallApiHooks() {
    tavix::RemoveAllScrollHosts();
    EndHooks(tavix::kLoaderHooks, kHookCount);
    for (HMODULE& module : g_controlModules) {
        if (module) ::FreeLibrary(module);
        module = nullptr;
    }
    EndHooks(0, tavix::kLoaderHooks);
    for (CImportHook*& hook : g_formerLoaderHooks) EndHook(hook);
    g_formerLoaderHooks.clear();
    // Whoever took a slot over may call, or give back, the replacement; so may a thread that is in one.
    if (tavix::ForgetReplacedSlots() || tavix::IsAnyReplacementRunning()) AfxKeepLibraryLoaded();
    // Not the last reference: whoever calls the uninstall holds one until that returns, as for any function
    // of a library. Otherwise this code would be gone before it could return.
    if (g_ownReference) ::FreeLibrary(std::exchange(g_ownReference, nullptr));
}
