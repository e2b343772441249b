/* The import tables of the process's modules, read without the library. */
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace tavix_test {

/* The slots of all imports of a module: where they are, and what they hold. */
using ImportSlots = std::map<const void*, FARPROC>;
ImportSlots SlotsOf(HMODULE module);
/* Of all modules that are loaded now. */
std::vector<HMODULE> LoadedModules();
std::map<HMODULE, ImportSlots> SlotsOfAllModules();
/* The slot of one imported function, found by its name in the import table; null if there is none. */
FARPROC* SlotOf(HMODULE module, const char* importedModule, const char* function);
/* How many slots of all modules lead into this program, which the tests link the library into. */
int CountReplacedSlots();

/* Holds another function in a slot for the length of a scope; nothing if there is no such slot. */
class SlotTakeover {
public:
    template <class Result, class... Parameters>
    SlotTakeover(HMODULE importer, const char* importedModule, const char* function,
                 Result(WINAPI* replacement)(Parameters...))
        : m_slot(SlotOf(importer, importedModule, function)), m_former(m_slot ? *m_slot : nullptr) {
        Write(reinterpret_cast<FARPROC>(reinterpret_cast<void*>(replacement)));
    }
    ~SlotTakeover() { Write(m_former); }
    SlotTakeover(const SlotTakeover&) = delete;
    SlotTakeover& operator=(const SlotTakeover&) = delete;
    /* What the slot held before; null if there is none. */
    FARPROC Former() const { return m_former; }
    /* Puts this into the slot at the end, not what was there. */
    void GiveBack(FARPROC function) { m_former = function; }

private:
    void Write(FARPROC function);
    FARPROC* m_slot;
    FARPROC m_former;
};

std::string NameOfModule(HMODULE module);

}  // namespace tavix_test
