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
std::string NameOfModule(HMODULE module);

}  // namespace tavix_test
