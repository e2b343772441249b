/* Replacing a function in the import tables of the process's modules. */
#pragma once

#include <windows.h>

#include <span>
#include <vector>

/*
 * One replaced function, in force from the end of the constructor until the destructor. The two
 * names must live as long as the library, which may ask for them once more when interception ends.
 */
class CImportHook {
public:
    /* `excludeSelf` other than 0: the library's own import table stays as it is. */
    CImportHook(const char* moduleName, const char* functionName, FARPROC replacement, int excludeSelf);
    virtual ~CImportHook();
    CImportHook(const CImportHook&) = delete;
    CImportHook& operator=(const CImportHook&) = delete;

    const char* m_pszModule;  // as import tables name it
    const char* m_pszFunc;
    FARPROC m_pfnOrig = nullptr;  // null if there is no such function: nothing is replaced then
    FARPROC m_pfnHook;
    int m_bExcludeSelf;
    CImportHook* m_pNext;

    static CImportHook* s_pHookList;  // the newest first
};

/*
 * In every module of the process: where it imports from `moduleName`, the first slot that holds
 * `current` gets `replacement`. `excludeSelf` other than 0 passes the library's own module over.
 */
void ReplaceInAllModules(const char* moduleName, FARPROC current, FARPROC replacement, int excludeSelf);
/* The same in one module. A module that is gone, or is no loaded program code, is passed over. */
void ReplaceInOneModule(const char* moduleName, FARPROC current, FARPROC replacement, HMODULE module);
/*
 * All replaced functions in a module that was just loaded with `flags`, as LoadLibraryEx takes them.
 * Files loaded as data, and the library itself, are passed over.
 */
void HookNewlyLoadedModule(HMODULE module, DWORD flags);

namespace tavix {

/*
 * The modules that are loaded when it is made, which it keeps loaded. While it lives, walks of its
 * thread go through these instead of asking the system for each hook anew, which takes far longer
 * than the patching.
 */
class ModuleWalk {
public:
    ModuleWalk();
    ~ModuleWalk();
    ModuleWalk(const ModuleWalk&) = delete;
    ModuleWalk& operator=(const ModuleWalk&) = delete;

    std::span<const HMODULE> Modules() const { return m_modules; }

private:
    std::vector<HMODULE> m_modules;
};
/* How many modules replaced loader functions have brought so far. */
unsigned LoadsSeen();

/* What a caller who looks `found` up by its name gets: its replacement, or `found` itself. */
FARPROC ReplacementOf(FARPROC found);
/*
 * After hooks have ended: restores the slots of modules that came during the end. True if one holds
 * what somebody else put there since, who may still call the replacement. Forgets all slots.
 */
bool ForgetReplacedSlots();

}  // namespace tavix
