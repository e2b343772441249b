// Functions replaced in import tables: which, where, and for how long.
#include "scroll/import_hook.h"

#include <gtest/gtest.h>

#include <psapi.h>

#include <atomic>
#include <cstring>
#include <thread>

#include "host_fixture.h"
#include "import_slots.h"
#include "scroll/api_hooks.h"
#include "support/window_probe.h"
#include "tavixskin.h"

using namespace tavix_test;

namespace {

// The client DLL that is always there.
HMODULE ClientModule() {
    Client();
    return ::GetModuleHandleA("scroll_client.dll");
}

FARPROC Real(const char* function) {
    for (const char* module : {"user32.dll", "kernel32.dll"})
        if (FARPROC found = ::GetProcAddress(::GetModuleHandleA(module), function)) return found;
    return nullptr;
}

FARPROC ReplacementFor(const char* function) {
    for (const tavix::HookRow& row : tavix::HookTable())
        if (std::string(row.functionName) == function) return row.replacement;
    return nullptr;
}

struct Interception {
    Interception() {
        Client();  // loaded before, so that its calls are replaced
        ::InstallApiHooks();
    }
    ~Interception() { ::UnInstallApiHooks(); }
};

BOOL WINAPI NeverAWindow(HWND) { return FALSE; }

int HooksInList() {
    int count = 0;
    for (const CImportHook* hook = CImportHook::s_pHookList; hook; hook = hook->m_pNext) ++count;
    return count;
}

// A copy of the client that is loaded for the length of a scope.
class LoadedCopy {
public:
    template <class Load>
    explicit LoadedCopy(Load load) : m_module(load(m_copy)) {
        EXPECT_NE(m_module, nullptr) << ::GetLastError();
    }
    ~LoadedCopy() { ::FreeLibrary(m_module); }
    HMODULE Module() const { return m_module; }
    FARPROC Slot(const char* function) const {
        FARPROC* slot = SlotOf(m_module, "user32.dll", function);
        return slot ? *slot : nullptr;
    }
    bool IsPatched() const { return Slot("SetScrollInfo") == ReplacementFor("SetScrollInfo"); }

private:
    ClientCopy m_copy;
    HMODULE m_module;
};

// ---------------------------------------------------------------- the table

struct ExpectedRow {
    const char* module;
    const char* function;
    bool isInTables;  // whether the row's module name is the one that import tables carry
};

const ExpectedRow kExpected[] = {
    {"Kernel32.dll", "LoadLibraryA", true},   {"Kernel32", "LoadLibraryW", false},
    {"Kernel32", "LoadLibraryExA", false},    {"Kernel32", "LoadLibraryExW", false},
    {"Kernel32.dll", "GetProcAddress", true}, {"User32.dll", "SetScrollInfo", true},
    {"User32.dll", "SetScrollRange", true},   {"User32.dll", "SetScrollPos", true},
    {"User32.dll", "MoveWindow", true},       {"User32.dll", "GetScrollInfo", true},
    {"User32.dll", "BringWindowToTop", true}, {"User32.dll", "ShowWindow", true},
    {"User32.dll", "ShowScrollBar", true},    {"User32.dll", "EnableScrollBar", true},
    {"User32.dll", "TrackPopupMenu", true},
};

TEST(HookTable, HasTheFifteenFunctionsInOrder) {
    const auto table = tavix::HookTable();
    ASSERT_EQ(table.size(), std::size(kExpected));
    for (std::size_t i = 0; i < table.size(); ++i) {
        EXPECT_STREQ(table[i].moduleName, kExpected[i].module);
        EXPECT_STREQ(table[i].functionName, kExpected[i].function);
        EXPECT_NE(table[i].replacement, nullptr);
    }
}

TEST(Interception, ReplacesEachRowAsItsModuleNameAllows) {
    HMODULE client = ClientModule();
    std::map<std::string, FARPROC> before;
    for (const ExpectedRow& row : kExpected) {
        const std::string file =
            std::string(row.module) + (std::string(row.module) == "Kernel32" ? ".dll" : "");
        FARPROC* slot = SlotOf(client, file.c_str(), row.function);
        ASSERT_NE(slot, nullptr) << row.function;
        EXPECT_EQ(*slot, Real(row.function));
        Interception on;
        EXPECT_EQ(*slot, row.isInTables ? ReplacementFor(row.function) : Real(row.function)) << row.function;
    }
    for (const ExpectedRow& row : kExpected) {
        FARPROC* slot = SlotOf(client, row.isInTables ? row.module : "kernel32.dll", row.function);
        EXPECT_EQ(*slot, Real(row.function)) << row.function;
    }
}

TEST(Interception, LeavesTheLibrarysOwnCallsAlone) {
    const ImportSlots before = SlotsOf(::GetModuleHandleA(nullptr));
    ASSERT_GT(before.size(), 20u);
    Interception on;
    EXPECT_EQ(SlotsOf(::GetModuleHandleA(nullptr)), before);
    // Not even when the program loads the library once more.
    char self[MAX_PATH] = {};
    ::GetModuleFileNameA(nullptr, self, sizeof self);
    HookNewlyLoadedModule(::GetModuleHandleA(nullptr), 0);
    EXPECT_EQ(SlotsOf(::GetModuleHandleA(nullptr)), before);
}

TEST(Interception, GivesEverySlotOfEveryModuleBackByteForByte) {
    ClientModule();
    { Interception loadsTheControls; }
    ::LoadLibraryA("comctl32.dll");
    ::LoadLibraryA("riched20.dll");
    const auto before = SlotsOfAllModules();
    ASSERT_GT(before.size(), 5u);
    int replaced = 0;
    {
        HostSkin skin;
        ProbeWindow parent;
        Pane pane(parent);
        const SCROLLINFO info = MakeInfo(SIF_ALL, 0, 100, 10, 5);
        Client().SetScrollInfo(pane, SB_VERT, &info, TRUE);
        const auto during = SlotsOfAllModules();
        for (const auto& [module, slots] : before)
            for (const auto& [slot, held] : slots) replaced += during.at(module).at(slot) != held;
    }
    EXPECT_GT(replaced, 12) << "the client's, and those of the system's own modules";
    const auto after = SlotsOfAllModules();
    for (const auto& [module, slots] : before) {
        ASSERT_TRUE(after.count(module)) << NameOfModule(module);
        EXPECT_EQ(after.at(module), slots) << NameOfModule(module);
    }
}

TEST(Interception, LeavesThePagesProtectedAsTheyWere) {
    HMODULE client = ClientModule();
    const auto protection = [client](const char* function) {
        MEMORY_BASIC_INFORMATION memory{};
        ::VirtualQuery(SlotOf(client, "user32.dll", function), &memory, sizeof memory);
        return memory.Protect;
    };
    const DWORD before = protection("SetScrollInfo");
    Interception on;
    // A page that was written to is the process's own copy from then on.
    const auto plain = [](DWORD protect) {
        return protect == PAGE_WRITECOPY ? DWORD{PAGE_READWRITE} : protect;
    };
    EXPECT_EQ(plain(protection("SetScrollInfo")), plain(before));
}

TEST(Interception, LoadsTheModulesOfTheScrollingControls) {
    HMODULE client = ClientModule();
    ASSERT_NE(client, nullptr);
    Interception on;
    for (const char* name : {"ComCtl32.dll", "Riched32.dll", "Riched20.dll"}) {
        HMODULE module = ::GetModuleHandleA(name);
        ASSERT_NE(module, nullptr) << name;
        const FARPROC* slot = SlotOf(module, "user32.dll", "SetScrollInfo");
        if (!slot) continue;
        EXPECT_EQ(*slot, ReplacementFor("SetScrollInfo")) << name;
    }
    FARPROC* slot = SlotOf(::GetModuleHandleA("comctl32.dll"), "user32.dll", "SetScrollInfo");
    ASSERT_NE(slot, nullptr);
}

// ---------------------------------------------------------------- modules that are loaded later

TEST(LaterModule, LoadedByTheReplacedLoaderIsPatched) {
    Interception on;
    LoadedCopy copy([](const ClientCopy& c) { return Client().LoadLibraryA(c.Path()); });
    EXPECT_TRUE(copy.IsPatched());
    for (const ExpectedRow& row : kExpected) {
        if (std::string(row.module) != "User32.dll") continue;
        EXPECT_EQ(copy.Slot(row.function), ReplacementFor(row.function)) << row.function;
    }
}

TEST(LaterModule, LoadedByALoaderThatIsNotReplacedInTablesIsNot) {
    Interception on;
    LoadedCopy wide([](const ClientCopy& c) { return Client().LoadLibraryW(c.WidePath().c_str()); });
    LoadedCopy ex([](const ClientCopy& c) { return Client().LoadLibraryExA(c.Path(), nullptr, 0); });
    LoadedCopy exWide(
        [](const ClientCopy& c) { return Client().LoadLibraryExW(c.WidePath().c_str(), nullptr, 0); });
    LoadedCopy own([](const ClientCopy& c) { return ::LoadLibraryA(c.Path()); });
    for (const LoadedCopy* copy : {&wide, &ex, &exWide, &own}) EXPECT_FALSE(copy->IsPatched());
}

template <class Function>
Function LookedUp(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(Client().GetProcAddress(::GetModuleHandleA("kernel32.dll"), name)));
}

TEST(LaterModule, LoadedThroughALookedUpPointerIsPatched) {
    Interception on;
    LoadedCopy wide([](const ClientCopy& c) {
        return LookedUp<decltype(&::LoadLibraryW)>("LoadLibraryW")(c.WidePath().c_str());
    });
    LoadedCopy ex([](const ClientCopy& c) {
        return LookedUp<decltype(&::LoadLibraryExA)>("LoadLibraryExA")(c.Path(), nullptr, 0);
    });
    LoadedCopy exWide([](const ClientCopy& c) {
        return LookedUp<decltype(&::LoadLibraryExW)>("LoadLibraryExW")(c.WidePath().c_str(), nullptr, 0);
    });
    LoadedCopy plain(
        [](const ClientCopy& c) { return LookedUp<decltype(&::LoadLibraryA)>("LoadLibraryA")(c.Path()); });
    for (const LoadedCopy* copy : {&wide, &ex, &exWide, &plain}) EXPECT_TRUE(copy->IsPatched());
}

constexpr DWORD kDataFlags[] = {LOAD_LIBRARY_AS_DATAFILE, LOAD_LIBRARY_AS_DATAFILE_EXCLUSIVE,
                                LOAD_LIBRARY_AS_IMAGE_RESOURCE,
                                LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE};

TEST(LaterModule, LoadedAsDataIsLeftAlone) {
    Interception on;
    // A copy that could be patched, and what is said about it.
    const LoadedCopy copy([](const ClientCopy& c) { return ::LoadLibraryA(c.Path()); });
    const ImportSlots before = SlotsOf(copy.Module());
    for (DWORD flags : kDataFlags) {
        HookNewlyLoadedModule(copy.Module(), flags);
        EXPECT_EQ(SlotsOf(copy.Module()), before) << flags;
    }
    HookNewlyLoadedModule(copy.Module(), LOAD_WITH_ALTERED_SEARCH_PATH);
    EXPECT_TRUE(copy.IsPatched()) << "other flags make no data of it";
}

TEST(LaterModule, ThatIsDataIsLeftAloneWhateverTheFlags) {
    Interception on;
    for (DWORD flags : kDataFlags) {
        ClientCopy copy;
        HMODULE module = LookedUp<decltype(&::LoadLibraryExA)>("LoadLibraryExA")(copy.Path(), nullptr, flags);
        ASSERT_NE(module, nullptr) << flags;
        MEMORY_BASIC_INFORMATION memory{};
        ::VirtualQuery(module, &memory, sizeof memory);
        const auto* bytes = static_cast<const char*>(memory.BaseAddress);
        const std::vector<char> before(bytes, bytes + memory.RegionSize);
        HookNewlyLoadedModule(module, 0);  // as a later load without the flags would
        EXPECT_EQ(std::memcmp(bytes, before.data(), before.size()), 0) << flags;
        ::FreeLibrary(module);
    }
}

TEST(LaterModule, ThatCantBeLoadedGivesTheLoadersAnswer) {
    Interception on;
    ::SetLastError(0);
    EXPECT_EQ(Client().LoadLibraryA("no such file at all.dll"), nullptr);
    const DWORD error = ::GetLastError();
    ::SetLastError(0);
    EXPECT_EQ(::LoadLibraryA("no such file at all.dll"), nullptr);
    EXPECT_EQ(error, ::GetLastError());
    EXPECT_NE(error, 0u);
    HookNewlyLoadedModule(nullptr, 0);
}

TEST(LaterModule, IsGivenBackWithTheRest) {
    std::optional<Interception> on(std::in_place);
    LoadedCopy copy([](const ClientCopy& c) { return Client().LoadLibraryA(c.Path()); });
    ASSERT_TRUE(copy.IsPatched());
    on.reset();
    EXPECT_EQ(copy.Slot("SetScrollInfo"), Real("SetScrollInfo"));
}

// By their places from the module's base: copies of a module lie elsewhere.
std::map<std::ptrdiff_t, FARPROC> PlacedSlotsOf(HMODULE module) {
    std::map<std::ptrdiff_t, FARPROC> placed;
    for (const auto& [slot, held] : SlotsOf(module))
        placed[static_cast<const char*>(slot) - reinterpret_cast<const char*>(module)] = held;
    return placed;
}

TEST(LaterModule, HoldsAfterwardsWhatOneThatWasNeverPatchedHolds) {
    std::optional<HostSkin> skin(std::in_place);
    const LoadedCopy plain([](const ClientCopy& c) { return Client().LoadLibraryA(c.Path()); });
    const LoadedCopy wide([](const ClientCopy& c) {
        return LookedUp<decltype(&::LoadLibraryW)>("LoadLibraryW")(c.WidePath().c_str());
    });
    const LoadedCopy ex([](const ClientCopy& c) {
        return LookedUp<decltype(&::LoadLibraryExA)>("LoadLibraryExA")(c.Path(), nullptr, 0);
    });
    const LoadedCopy exWide([](const ClientCopy& c) {
        return LookedUp<decltype(&::LoadLibraryExW)>("LoadLibraryExW")(c.WidePath().c_str(), nullptr, 0);
    });
    for (const LoadedCopy* copy : {&plain, &wide, &ex, &exWide}) ASSERT_TRUE(copy->IsPatched());
    skin.reset();
    const LoadedCopy fresh([](const ClientCopy& c) { return ::LoadLibraryA(c.Path()); });
    const auto expected = PlacedSlotsOf(fresh.Module());
    ASSERT_GT(expected.size(), std::size(kExpected));
    for (const LoadedCopy* copy : {&plain, &wide, &ex, &exWide})
        EXPECT_EQ(PlacedSlotsOf(copy->Module()), expected);
    EXPECT_EQ(CountReplacedSlots(), 0);
}

TEST(LaterModule, MayBeGoneAtTheEnd) {
    Interception on;
    for (int i = 0; i < 3; ++i)
        LoadedCopy copy([](const ClientCopy& c) { return Client().LoadLibraryA(c.Path()); });
}

TEST(LaterModule, KeepsTheLoadersLastError) {
    Interception on;
    ClientCopy copy;
    ::SetLastError(4711);
    HMODULE loaded = ::LoadLibraryA(copy.Path());
    const DWORD plain = ::GetLastError();
    ::FreeLibrary(loaded);
    ::SetLastError(4711);
    loaded = Client().LoadLibraryA(copy.Path());
    EXPECT_EQ(::GetLastError(), plain);
    ::FreeLibrary(loaded);
}

// ---------------------------------------------------------------- look-ups

TEST(LookUp, GivesTheReplacementOfEachFunction) {
    Interception on;
    for (const ExpectedRow& row : kExpected) {
        HMODULE module = ::GetModuleHandleA(row.module);
        EXPECT_EQ(Client().GetProcAddress(module, row.function), ReplacementFor(row.function))
            << row.function;
    }
}

TEST(LookUp, OfAnythingElseGivesTheFunction) {
    Interception on;
    HMODULE user = ::GetModuleHandleA("user32.dll");
    EXPECT_EQ(Client().GetProcAddress(user, "GetWindowRect"), ::GetProcAddress(user, "GetWindowRect"));
    EXPECT_EQ(Client().GetProcAddress(user, "setscrollinfo"), nullptr) << "names are case-sensitive";
}

TEST(LookUp, TakesOrdinalsAndFailsLikeTheRealOne) {
    Interception on;
    HMODULE user = ::GetModuleHandleA("user32.dll");
    for (int ordinal : {1, 2, 500, 0xFFFF, 0}) {
        const char* name = reinterpret_cast<const char*>(static_cast<ULONG_PTR>(ordinal));
        ::SetLastError(1);
        const FARPROC real = ::GetProcAddress(user, name);
        const DWORD realError = ::GetLastError();
        ::SetLastError(1);
        const FARPROC ours = Client().GetProcAddress(user, name);
        EXPECT_EQ(::GetLastError(), realError) << ordinal;
        EXPECT_EQ(ours, tavix::ReplacementOf(real)) << ordinal;
    }
    ::SetLastError(1);
    EXPECT_EQ(Client().GetProcAddress(user, "NoSuchFunction"), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
    EXPECT_EQ(Client().GetProcAddress(nullptr, "NoSuchFunction"), nullptr);
}

TEST(LookUp, PointerWorksAfterInterceptionHasEnded) {
    decltype(&::GetScrollInfo) pointer;
    {
        Interception on;
        pointer = reinterpret_cast<decltype(pointer)>(reinterpret_cast<void*>(
            Client().GetProcAddress(::GetModuleHandleA("user32.dll"), "GetScrollInfo")));
    }
    ProbeWindow window(WS_POPUP | WS_VISIBLE | WS_VSCROLL);
    SCROLLINFO info = MakeInfo(SIF_ALL, 0, 50, 5, 7);
    ::SetScrollInfo(window, SB_VERT, &info, FALSE);
    info = MakeInfo(SIF_ALL);
    EXPECT_TRUE(pointer(window, SB_VERT, &info));
    EXPECT_EQ(info.nMax, 50);
}

TEST(LookUp, PointerToALoaderPatchesNothingAfterTheEnd) {
    decltype(&::LoadLibraryExA) pointer;
    {
        Interception on;
        pointer = LookedUp<decltype(pointer)>("LoadLibraryExA");
    }
    LoadedCopy copy([pointer](const ClientCopy& c) { return pointer(c.Path(), nullptr, 0); });
    EXPECT_EQ(copy.Slot("SetScrollInfo"), Real("SetScrollInfo"));
}

// ---------------------------------------------------------------- installs and ends, again and again

TEST(RepeatedInstall, MakesTheLoaderHooksAfreshAndEndsWithTheFirstEnd) {
    const int before = HooksInList();
    ::InstallApiHooks();
    EXPECT_EQ(HooksInList() - before, 15);
    EXPECT_STREQ(CImportHook::s_pHookList->m_pszFunc, "TrackPopupMenu") << "the newest stands first";
    ::InstallApiHooks();
    EXPECT_EQ(HooksInList() - before, 20) << "the earlier loader hooks stay in the list";
    FARPROC* slot = SlotOf(ClientModule(), "user32.dll", "ShowWindow");
    FARPROC* loader = SlotOf(ClientModule(), "kernel32.dll", "LoadLibraryA");
    EXPECT_EQ(*slot, ReplacementFor("ShowWindow"));
    ::UnInstallApiHooks();
    EXPECT_EQ(*slot, Real("ShowWindow"));
    EXPECT_EQ(*loader, Real("LoadLibraryA"));
    EXPECT_EQ(HooksInList(), before);
    ::UnInstallApiHooks();
    ::UnInstallApiHooks();
    EXPECT_EQ(*loader, Real("LoadLibraryA"));
    {
        Interception again;
        EXPECT_EQ(*slot, ReplacementFor("ShowWindow"));
        EXPECT_EQ(*loader, ReplacementFor("LoadLibraryA"));
    }
    EXPECT_EQ(HooksInList(), before);
}

TEST(SlotOfSomebodyElse, IsNotTakenBack) {
    FARPROC* slot = SlotOf(ClientModule(), "user32.dll", "ShowWindow");
    {
        std::optional<Interception> on(std::in_place);
        SlotTakeover theirs(ClientModule(), "user32.dll", "ShowWindow", &NeverAWindow);
        EXPECT_EQ(theirs.Former(), ReplacementFor("ShowWindow"));
        on.reset();
        EXPECT_EQ(*slot, reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&NeverAWindow)));
        theirs.GiveBack(Real("ShowWindow"));
    }
    Interception on;
    EXPECT_EQ(*slot, ReplacementFor("ShowWindow"));
}

// ---------------------------------------------------------------- modules in the place of others

// All of these want the same address.
class PlacedModule {
public:
    template <class Load>
    PlacedModule(const char* name, Load load) : m_module(load(BesideTheProgram(name).c_str())) {
        EXPECT_NE(m_module, nullptr) << name << " " << ::GetLastError();
    }
    ~PlacedModule() {
        if (m_module) ::FreeLibrary(m_module);
    }
    PlacedModule(const PlacedModule&) = delete;
    PlacedModule& operator=(const PlacedModule&) = delete;
    HMODULE Module() const { return m_module; }
    DWORD Size() const {
        MODULEINFO info{};
        ::K32GetModuleInformation(::GetCurrentProcess(), m_module, &info, sizeof info);
        return info.SizeOfImage;
    }

private:
    HMODULE m_module;
};

struct FormerModule {
    HMODULE module;
    DWORD slot;  // from the module's base
};

// Has a module patched, and gone again. The note of its slot stays.
FormerModule PatchAndFree() {
    PlacedModule module("scroll_based_show.dll", Client().LoadLibraryA);
    const FARPROC* slot = SlotOf(module.Module(), "user32.dll", "ShowWindow");
    EXPECT_EQ(*slot, ReplacementFor("ShowWindow"));
    const auto* base = reinterpret_cast<const char*>(module.Module());
    return {module.Module(), static_cast<DWORD>(reinterpret_cast<const char*>(slot) - base)};
}

TEST(PlaceOfAFormerModule, MayBeTakenByASmallerOne) {
    Interception on;
    const FormerModule former = PatchAndFree();
    const PlacedModule small("scroll_based_small.dll", ::LoadLibraryA);
    ASSERT_EQ(small.Module(), former.module);
    ASSERT_LT(small.Size(), former.slot) << "nothing is there to be read";
    EXPECT_FALSE(tavix::ForgetReplacedSlots());
}

TEST(PlaceOfAFormerModule, MayBeTakenByOneThatHasSomethingElseThere) {
    Interception on;
    const FormerModule former = PatchAndFree();
    const PlacedModule large("scroll_based_large.dll", ::LoadLibraryA);
    ASSERT_EQ(large.Module(), former.module);
    ASSERT_GT(large.Size(), former.slot + sizeof(FARPROC));
    EXPECT_FALSE(tavix::ForgetReplacedSlots()) << "what is there is nobody's replacement of a replacement";
}

TEST(PlaceOfAFormerModule, MayBeTakenByOneWithTheSlotOfAnotherFunction) {
    Interception on;
    const FormerModule former = PatchAndFree();
    const PlacedModule other("scroll_based_raise.dll", ::LoadLibraryA);
    ASSERT_EQ(other.Module(), former.module);
    const FARPROC* slot = SlotOf(other.Module(), "user32.dll", "BringWindowToTop");
    ASSERT_EQ(reinterpret_cast<const char*>(slot),
              reinterpret_cast<const char*>(former.module) + former.slot);
    EXPECT_FALSE(tavix::ForgetReplacedSlots());
    EXPECT_EQ(*slot, Real("BringWindowToTop"));
}

TEST(PlaceOfAFormerModule, IsKnownAnewWithTheModuleThatTookIt) {
    Interception on;
    const FormerModule former = PatchAndFree();
    const PlacedModule other("scroll_based_raise.dll", Client().LoadLibraryA);
    ASSERT_EQ(other.Module(), former.module);
    FARPROC* slot = SlotOf(other.Module(), "user32.dll", "BringWindowToTop");
    ASSERT_EQ(*slot, ReplacementFor("BringWindowToTop"));
    // Somebody takes the slot over, and may call what was in it.
    const SlotTakeover theirs(other.Module(), "user32.dll", "BringWindowToTop", &NeverAWindow);
    EXPECT_TRUE(tavix::ForgetReplacedSlots());
    EXPECT_EQ(*slot, reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&NeverAWindow)));
}

TEST(PlaceOfAFormerModule, GivesBackASlotThatIsStillReplaced) {
    Interception on;
    const PlacedModule module("scroll_based_show.dll", Client().LoadLibraryA);
    const FARPROC* slot = SlotOf(module.Module(), "user32.dll", "ShowWindow");
    ASSERT_EQ(*slot, ReplacementFor("ShowWindow"));
    EXPECT_FALSE(tavix::ForgetReplacedSlots());
    EXPECT_EQ(*slot, Real("ShowWindow"));
}

// ---------------------------------------------------------------- one hook, one module

TEST(ImportHook, IsInForceFromItsConstructorToItsDestructor) {
    HMODULE module = ::GetModuleHandleA("comctl32.dll");
    if (!module) module = ::LoadLibraryA("comctl32.dll");
    FARPROC* slot = SlotOf(module, "user32.dll", "IsWindow");
    ASSERT_NE(slot, nullptr);
    const FARPROC real = *slot;
    const auto replacement = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&NeverAWindow));
    {
        CImportHook hook("USER32.DLL", "IsWindow", replacement, 1);
        EXPECT_EQ(hook.m_pfnOrig, real);
        EXPECT_EQ(CImportHook::s_pHookList, &hook);
        EXPECT_EQ(*slot, replacement);
    }
    EXPECT_EQ(*slot, real);
    EXPECT_NE(CImportHook::s_pHookList ? CImportHook::s_pHookList->m_pfnHook : nullptr, replacement);
}

TEST(ImportHook, ReachesTheLibrarysOwnCallsIfItIsToldTo) {
    FARPROC* slot = SlotOf(::GetModuleHandleA(nullptr), "user32.dll", "IsWindow");
    ASSERT_NE(slot, nullptr);
    const FARPROC real = *slot;
    const auto replacement = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&NeverAWindow));
    {
        CImportHook hook("user32.dll", "IsWindow", replacement, 0);
        EXPECT_EQ(*slot, replacement);
    }
    EXPECT_EQ(*slot, real);
}

TEST(ImportHook, OfWhatIsNotThereReplacesNothing) {
    const auto before = SlotsOfAllModules();
    {
        const auto replacement = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&NeverAWindow));
        CImportHook noFunction("user32.dll", "NoSuchFunction", replacement, 1);
        CImportHook noModule("no such module.dll", "IsWindow", replacement, 1);
        EXPECT_EQ(noFunction.m_pfnOrig, nullptr);
        EXPECT_EQ(noModule.m_pfnOrig, nullptr);
        EXPECT_EQ(SlotsOfAllModules(), before);
        ClientCopy copy;
        HMODULE module = ::LoadLibraryA(copy.Path());
        HookNewlyLoadedModule(module, 0);
        ::FreeLibrary(module);
    }
    EXPECT_EQ(SlotsOfAllModules(), before);
}

TEST(OneModule, ChangesTheFirstSlotOfTheFirstMatchingImport) {
    HMODULE client = ClientModule();
    const ImportSlots before = SlotsOf(client);
    const FARPROC real = Real("ShowWindow"), other = Real("GetProcAddress");
    const auto mark = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&NeverAWindow));
    ReplaceInOneModule("User32.dll", other, mark, client);
    EXPECT_EQ(SlotsOf(client), before) << "the address is looked for in that import alone";
    ReplaceInOneModule("User32", real, mark, client);
    EXPECT_EQ(SlotsOf(client), before) << "names are compared whole";
    ReplaceInOneModule("USER32.dll", real, mark, client);
    ImportSlots expected = before;
    expected[SlotOf(client, "user32.dll", "ShowWindow")] = mark;
    EXPECT_EQ(SlotsOf(client), expected);
    ReplaceInOneModule("USER32.dll", mark, real, client);
    EXPECT_EQ(SlotsOf(client), before);
}

TEST(OneModule, ThatIsNoneIsPassedOver) {
    const auto mark = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&NeverAWindow));
    char* memory = static_cast<char*>(::VirtualAlloc(nullptr, 0x10000, MEM_COMMIT, PAGE_READWRITE));
    for (void* place : {static_cast<void*>(nullptr), static_cast<void*>(memory),
                        reinterpret_cast<void*>(~static_cast<ULONG_PTR>(0) - 0xFFFF),
                        static_cast<void*>(reinterpret_cast<char*>(ClientModule()) + 0x1000)})
        ReplaceInOneModule("user32.dll", Real("ShowWindow"), mark, static_cast<HMODULE>(place));
    ClientCopy copy;
    HMODULE gone = ::LoadLibraryA(copy.Path());
    ::FreeLibrary(gone);
    ReplaceInOneModule("user32.dll", Real("ShowWindow"), mark, gone);
    ReplaceInOneModule(nullptr, Real("ShowWindow"), mark, ClientModule());
    ReplaceInOneModule("user32.dll", nullptr, mark, ClientModule());
    EXPECT_EQ(*SlotOf(ClientModule(), "user32.dll", "ShowWindow"), Real("ShowWindow"));
    ::VirtualFree(memory, 0, MEM_RELEASE);
}

// ---------------------------------------------------------------- threads

TEST(LoadingThreads, MayLoadWhileInterceptionComesAndGoes) {
    std::atomic<bool> isOver = false;
    std::atomic<int> loads = 0;
    const ClientCalls& client = Client();
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i)
        threads.emplace_back([&] {
            ClientCopy copy;
            while (!isOver) {
                HMODULE module = client.LoadLibraryA(copy.Path());
                client.GetProcAddress(module, kClientCallsExport);
                ::FreeLibrary(module);
                ++loads;
            }
        });
    const ImportSlots before = SlotsOf(ClientModule());
    for (int i = 0; i < 6; ++i) Interception on;
    isOver = true;
    for (std::thread& thread : threads) thread.join();
    EXPECT_GT(loads.load(), 0);
    EXPECT_EQ(SlotsOf(ClientModule()), before);
}

}  // namespace
