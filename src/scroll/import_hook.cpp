#include "scroll/import_hook.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <map>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include <imagehlp.h>
#include <tlhelp32.h>

#include "framework/srw_lock.h"
#include "scroll/api_hooks.h"
#include "tavixskin/framework/module_state.h"

CImportHook* CImportHook::s_pHookList = nullptr;

// The ANSI structure, which the walk through the modules tells its size.
static_assert(sizeof(MODULEENTRY32) == (sizeof(void*) == 4 ? 548 : 568));
static_assert(sizeof(IMAGE_IMPORT_DESCRIPTOR) == 20);
static_assert(sizeof(FARPROC) == sizeof(IMAGE_THUNK_DATA), "a slot holds an address");

namespace {

// Guards the list of hooks. No other call is made under it.
tavix::SrwLock g_listLock;
// Guards the writing of slots, whose pages change their protection meanwhile, and the notes below.
tavix::SrwLock g_slotLock;

// Where a slot is. Some modules' slots stand at any multiple of four, so none is read as a pointer.
using SlotAddress = std::uint8_t*;

FARPROC Held(SlotAddress slot) {
    FARPROC held;
    std::memcpy(&held, slot, sizeof held);
    return held;
}

// What was done to a slot of a module: where it imports from, what the slot held, what it holds now.
struct ReplacedSlot {
    HMODULE module;
    const char* importedModule;
    FARPROC former;
    FARPROC present;
};
using ReplacedSlots = std::map<SlotAddress, ReplacedSlot>;
// Never destroyed: replacements may be called while the process ends.
ReplacedSlots& g_replacedSlots = *new ReplacedSlots;

std::atomic<unsigned> g_loadsSeen = 0;

// The walk in use, and its thread; 0 if there is none.
std::atomic<DWORD> g_walkThread = 0;
const tavix::ModuleWalk* g_walk = nullptr;

// Keeps a module loaded for the length of a scope; empty if it is gone or no module of program code.
class ModuleInUse {
public:
    explicit ModuleInUse(HMODULE module) {
        if (!::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCSTR>(module),
                                  &m_module))
            m_module = nullptr;
        // An address inside a module names that module too.
        if (m_module && m_module != module) Release();
    }
    ~ModuleInUse() {
        if (m_module) Release();
    }
    explicit operator bool() const { return m_module != nullptr; }
    /* It stays loaded when this ends; somebody else frees it. */
    void Keep() { m_module = nullptr; }
    ModuleInUse(const ModuleInUse&) = delete;
    ModuleInUse& operator=(const ModuleInUse&) = delete;

private:
    void Release() { ::FreeLibrary(std::exchange(m_module, nullptr)); }
    HMODULE m_module = nullptr;
};

// A module's bytes, as far as its header says that there are any.
class Image {
public:
    explicit Image(HMODULE module) : m_base(reinterpret_cast<std::uint8_t*>(module)) {
        const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(m_base);
        if (dos->e_magic != IMAGE_DOS_SIGNATURE) return;
        const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(m_base + dos->e_lfanew);
        if (headers->Signature == IMAGE_NT_SIGNATURE) m_size = headers->OptionalHeader.SizeOfImage;
    }
    /* The bytes at a relative address, null if they aren't whole inside the image. */
    std::uint8_t* At(DWORD address, std::size_t size) const {
        return address == 0 || address > m_size || m_size - address < size ? nullptr : m_base + address;
    }
    DWORD AddressOf(const void* inside) const {
        return static_cast<DWORD>(static_cast<const std::uint8_t*>(inside) - m_base);
    }

private:
    std::uint8_t* m_base;
    DWORD m_size = 0;
};

// The first descriptor of an import from that module.
std::optional<IMAGE_IMPORT_DESCRIPTOR> FindImport(HMODULE module, const Image& image,
                                                  const char* moduleName) {
    ULONG size = 0;
    const void* first = ::ImageDirectoryEntryToData(module, TRUE, IMAGE_DIRECTORY_ENTRY_IMPORT, &size);
    if (!first) return std::nullopt;
    IMAGE_IMPORT_DESCRIPTOR import;
    for (DWORD at = image.AddressOf(first);; at += sizeof import) {
        const std::uint8_t* bytes = image.At(at, sizeof import);
        if (!bytes) return std::nullopt;
        std::memcpy(&import, bytes, sizeof import);
        if (!import.Name) return std::nullopt;
        const std::uint8_t* name = image.At(import.Name, 1);
        // Names of modules are plain ASCII, so no language's rules of comparison come in.
        if (name && _stricmp(moduleName, reinterpret_cast<const char*>(name)) == 0) return import;
    }
}

// The first slot of an import that the predicate takes, which gets its address and its number.
template <class Predicate>
SlotAddress FindSlotIf(const Image& image, const IMAGE_IMPORT_DESCRIPTOR& import, Predicate isWanted) {
    for (DWORD number = 0;; ++number) {
        const SlotAddress slot = image.At(import.FirstThunk + number * sizeof(FARPROC), sizeof(FARPROC));
        if (!slot || !Held(slot)) return nullptr;
        if (isWanted(slot, number)) return slot;
    }
}

SlotAddress FindSlot(const Image& image, const IMAGE_IMPORT_DESCRIPTOR& import, FARPROC content) {
    return FindSlotIf(image, import, [content](SlotAddress slot, DWORD) { return Held(slot) == content; });
}

// Whether the import's entry of that number asks for the function. True if the module doesn't tell.
bool AsksFor(const Image& image, const IMAGE_IMPORT_DESCRIPTOR& import, DWORD number,
             const char* importedModule, FARPROC function) {
    if (!import.OriginalFirstThunk) return true;
    IMAGE_THUNK_DATA entry;
    const std::uint8_t* bytes =
        image.At(import.OriginalFirstThunk + number * DWORD{sizeof entry}, sizeof entry);
    if (!bytes) return false;
    std::memcpy(&entry, bytes, sizeof entry);
    const char* name = reinterpret_cast<const char*>(IMAGE_ORDINAL(entry.u1.Ordinal));
    if (!IMAGE_SNAP_BY_ORDINAL(entry.u1.Ordinal)) {
        constexpr DWORD kHint = offsetof(IMAGE_IMPORT_BY_NAME, Name);
        name = reinterpret_cast<const char*>(image.At(static_cast<DWORD>(entry.u1.AddressOfData) + kHint, 1));
        if (!name) return false;
    }
    return ::GetProcAddress(::GetModuleHandleA(importedModule), name) == function;
}

// Another module may have come to the place of the one that was patched, with other slots or none
// there. In a module that is kept loaded.
bool IsStillThere(SlotAddress slot, const ReplacedSlot& replaced) {
    const Image image(replaced.module);
    const auto import = FindImport(replaced.module, image, replaced.importedModule);
    return import && FindSlotIf(image, *import, [&](SlotAddress found, DWORD number) {
               return found == slot &&
                      AsksFor(image, *import, number, replaced.importedModule, replaced.former);
           });
}

// Under the lock.
void NoteSlot(SlotAddress slot, const ReplacedSlot& replaced) {
    const auto known = g_replacedSlots.find(slot);
    if (known != g_replacedSlots.end() && known->second.former == replaced.present)
        g_replacedSlots.erase(known);
    else
        // What was known of the same place is of a module that is gone.
        g_replacedSlots.insert_or_assign(slot, replaced);
}

void WriteSlot(SlotAddress slot, const ReplacedSlot& change) {
    const tavix::SrwLock::Exclusive guard(g_slotLock);
    DWORD protection = 0, unused = 0;
    const bool isOpen = ::VirtualProtect(slot, sizeof(FARPROC), PAGE_EXECUTE_WRITECOPY, &protection);
    ::WriteProcessMemory(::GetCurrentProcess(), slot, &change.present, sizeof change.present, nullptr);
    if (isOpen) ::VirtualProtect(slot, sizeof(FARPROC), protection, &unused);
    try {
        if (Held(slot) == change.present) NoteSlot(slot, change);
    } catch (const std::bad_alloc&) {
        // Without the note nobody is asked about this slot later: the library stays for good.
        AfxKeepLibraryLoaded();
    }
}

// In a module that is kept loaded.
void ReplaceInModule(const char* moduleName, FARPROC current, FARPROC replacement, HMODULE module) {
    const Image image(module);
    const auto import = FindImport(module, image, moduleName);
    const SlotAddress slot = import ? FindSlot(image, *import, current) : nullptr;
    if (slot) WriteSlot(slot, {module, moduleName, current, replacement});
}

HMODULE OwnModule() {
    MEMORY_BASIC_INFORMATION memory{};
    if (!::VirtualQuery(reinterpret_cast<const void*>(&ReplaceInAllModules), &memory, sizeof memory))
        return nullptr;
    return static_cast<HMODULE>(memory.AllocationBase);
}

// The system asks to try again when modules come or go meanwhile.
HANDLE TakeModuleSnapshot() {
    for (int attempt = 0;; ++attempt) {
        HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, ::GetCurrentProcessId());
        if (snapshot != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_BAD_LENGTH || attempt == 20)
            return snapshot;
    }
}

constexpr std::size_t kMostModules = 4096;

void Link(CImportHook* hook) {
    const tavix::SrwLock::Exclusive guard(g_listLock);
    hook->m_pNext = CImportHook::s_pHookList;
    CImportHook::s_pHookList = hook;
}

void Unlink(CImportHook* hook) {
    const tavix::SrwLock::Exclusive guard(g_listLock);
    for (CImportHook** link = &CImportHook::s_pHookList; *link; link = &(*link)->m_pNext) {
        if (*link != hook) continue;
        *link = hook->m_pNext;
        return;
    }
}

bool IsInForce(FARPROC original, FARPROC replacement) {
    const tavix::SrwLock::Shared guard(g_listLock);
    for (const CImportHook* hook = CImportHook::s_pHookList; hook; hook = hook->m_pNext)
        if (hook->m_pfnOrig == original && hook->m_pfnHook == replacement) return true;
    return false;
}

// What a hook replaces, copied out of the list.
struct Replacement {
    const char* moduleName;
    FARPROC original;
    FARPROC replacement;
};

std::vector<Replacement> ReplacementsInForce() {
    std::vector<Replacement> all;
    const tavix::SrwLock::Shared guard(g_listLock);
    for (const CImportHook* hook = CImportHook::s_pHookList; hook; hook = hook->m_pNext)
        if (hook->m_pfnOrig) all.push_back({hook->m_pszModule, hook->m_pfnOrig, hook->m_pfnHook});
    return all;
}

}  // namespace

CImportHook::CImportHook(const char* moduleName, const char* functionName, FARPROC replacement,
                         int excludeSelf)
    : m_pszModule(moduleName), m_pszFunc(functionName), m_pfnHook(replacement), m_bExcludeSelf(excludeSelf) {
    HMODULE module = ::GetModuleHandleA(moduleName);
    if (!module) module = ::LoadLibraryA(moduleName);
    if (module) m_pfnOrig = ::GetProcAddress(module, functionName);
    // Other threads read the list: the object enters it whole.
    Link(this);
    ReplaceInAllModules(m_pszModule, m_pfnOrig, m_pfnHook, m_bExcludeSelf);
}

CImportHook::~CImportHook() {
    // First out of the list, so that no thread that loads a module brings the replacement back.
    Unlink(this);
    ReplaceInAllModules(m_pszModule, m_pfnHook, m_pfnOrig, m_bExcludeSelf);
}

void ReplaceInAllModules(const char* moduleName, FARPROC current, FARPROC replacement, int excludeSelf) {
    if (!moduleName || !current || !replacement) return;
    const HMODULE skipped = excludeSelf ? OwnModule() : nullptr;
    const bool isShared = g_walkThread.load() == ::GetCurrentThreadId();
    std::optional<tavix::ModuleWalk> own;
    for (HMODULE module : (isShared ? *g_walk : own.emplace()).Modules())
        if (module != skipped) ReplaceInModule(moduleName, current, replacement, module);
}

void ReplaceInOneModule(const char* moduleName, FARPROC current, FARPROC replacement, HMODULE module) {
    if (!moduleName || !current || !replacement || !module) return;
    const ModuleInUse inUse(module);
    if (inUse) ReplaceInModule(moduleName, current, replacement, module);
}

void HookNewlyLoadedModule(HMODULE module, DWORD flags) try {
    constexpr DWORD kAsData =
        LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_DATAFILE_EXCLUSIVE | LOAD_LIBRARY_AS_IMAGE_RESOURCE;
    // Such a module's handle has one of its lowest bits set, whichever flags this load had.
    const bool isData = (flags & kAsData) || (reinterpret_cast<std::uintptr_t>(module) & 3);
    if (!module || isData || module == OwnModule()) return;
    const ModuleInUse inUse(module);
    if (!inUse) return;
    g_loadsSeen.fetch_add(1);
    for (const Replacement& r : ReplacementsInForce()) {
        ReplaceInModule(r.moduleName, r.original, r.replacement, module);
        // Interception may have ended in another thread while this one wrote.
        if (!IsInForce(r.original, r.replacement))
            ReplaceInModule(r.moduleName, r.replacement, r.original, module);
    }
} catch (const std::bad_alloc&) {
}

namespace tavix {

ModuleWalk::ModuleWalk() {
    // Room for more than any program has: the list must not fail half-way.
    try {
        m_modules.reserve(kMostModules);
    } catch (const std::bad_alloc&) {
        return;
    }
    DWORD nobody = 0;
    if (g_walkThread.compare_exchange_strong(nobody, ::GetCurrentThreadId())) g_walk = this;
    HANDLE snapshot = TakeModuleSnapshot();
    if (snapshot == INVALID_HANDLE_VALUE) return;
    MODULEENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Module32First(snapshot, &entry); more && m_modules.size() < kMostModules;
         more = ::Module32Next(snapshot, &entry)) {
        ModuleInUse inUse(entry.hModule);
        if (!inUse) continue;
        m_modules.push_back(entry.hModule);
        inUse.Keep();
    }
    ::CloseHandle(snapshot);
}

ModuleWalk::~ModuleWalk() {
    if (g_walkThread.load() == ::GetCurrentThreadId() && g_walk == this) g_walkThread = 0;
    for (HMODULE module : m_modules) ::FreeLibrary(module);
}

unsigned LoadsSeen() { return g_loadsSeen.load(); }

FARPROC ReplacementOf(FARPROC found) {
    const SrwLock::Shared guard(g_listLock);
    for (const CImportHook* hook = CImportHook::s_pHookList; hook; hook = hook->m_pNext)
        if (hook->m_pfnOrig == found) return hook->m_pfnHook;
    return found;
}

bool ForgetReplacedSlots() {
    ReplacedSlots slots;
    {
        const SrwLock::Exclusive guard(g_slotLock);
        slots.swap(g_replacedSlots);
    }
    bool isForeign = false;
    for (const auto& [slot, replaced] : slots) {
        const ModuleInUse inUse(replaced.module);
        if (!inUse || !IsStillThere(slot, replaced)) continue;
        if (Held(slot) == replaced.present)
            WriteSlot(slot, {replaced.module, replaced.importedModule, replaced.present, replaced.former});
        else if (Held(slot) != replaced.former)
            isForeign = true;
    }
    const SrwLock::Exclusive guard(g_slotLock);
    g_replacedSlots.clear();
    return isForeign;
}

}  // namespace tavix
