#include "import_slots.h"

#include <psapi.h>

#include <cstdint>
#include <cstring>

namespace tavix_test {

namespace {

const std::uint8_t* BytesOf(HMODULE module) { return reinterpret_cast<const std::uint8_t*>(module); }

const IMAGE_IMPORT_DESCRIPTOR* ImportsOf(HMODULE module) {
    const std::uint8_t* base = BytesOf(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const DWORD at = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    return at ? reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + at) : nullptr;
}

}  // namespace

ImportSlots SlotsOf(HMODULE module) {
    ImportSlots slots;
    for (const IMAGE_IMPORT_DESCRIPTOR* import = ImportsOf(module); import && import->Name; ++import) {
        // Some modules' slots are not aligned as pointers are.
        for (const std::uint8_t* slot = BytesOf(module) + import->FirstThunk;; slot += sizeof(FARPROC)) {
            FARPROC held;
            std::memcpy(&held, slot, sizeof held);
            if (!held) break;
            slots[slot] = held;
        }
    }
    return slots;
}

std::vector<HMODULE> LoadedModules() {
    std::vector<HMODULE> modules(1024);
    DWORD bytes = 0;
    ::K32EnumProcessModules(::GetCurrentProcess(), modules.data(),
                            static_cast<DWORD>(modules.size() * sizeof(HMODULE)), &bytes);
    modules.resize(bytes / sizeof(HMODULE));
    return modules;
}

std::map<HMODULE, ImportSlots> SlotsOfAllModules() {
    std::map<HMODULE, ImportSlots> all;
    for (HMODULE module : LoadedModules()) all[module] = SlotsOf(module);
    return all;
}

FARPROC* SlotOf(HMODULE module, const char* importedModule, const char* function) {
    const std::uint8_t* base = BytesOf(module);
    for (const IMAGE_IMPORT_DESCRIPTOR* import = ImportsOf(module); import && import->Name; ++import) {
        if (_stricmp(reinterpret_cast<const char*>(base + import->Name), importedModule) != 0) continue;
        auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + import->OriginalFirstThunk);
        auto* slot = reinterpret_cast<const FARPROC*>(base + import->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (std::strcmp(entry->Name, function) == 0) return const_cast<FARPROC*>(slot);
        }
    }
    return nullptr;
}

int CountReplacedSlots() {
    HMODULE self = ::GetModuleHandleA(nullptr);
    MODULEINFO own{};
    ::K32GetModuleInformation(::GetCurrentProcess(), self, &own, sizeof own);
    int count = 0;
    for (const auto& [module, slots] : SlotsOfAllModules()) {
        if (module == self) continue;
        for (const auto& [slot, held] : slots) {
            const auto* code = reinterpret_cast<const std::uint8_t*>(reinterpret_cast<void*>(held));
            count += code >= BytesOf(self) && code < BytesOf(self) + own.SizeOfImage;
        }
    }
    return count;
}

void SlotTakeover::Write(FARPROC function) {
    if (!m_slot) return;
    DWORD protection = 0;
    ::VirtualProtect(m_slot, sizeof *m_slot, PAGE_EXECUTE_READWRITE, &protection);
    *m_slot = function;
    ::VirtualProtect(m_slot, sizeof *m_slot, protection, &protection);
}

std::string NameOfModule(HMODULE module) {
    char path[MAX_PATH] = {};
    ::GetModuleFileNameA(module, path, sizeof path);
    return path;
}

}  // namespace tavix_test
