// The library as a host meets it: loaded at run time, known by its C header only.
#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "loaded_library.h"

namespace tavix_test {
namespace {

// ---------------------------------------------------------------- what stands in the file

/* The tables of a loaded module, read as the platform's loader reads them. */
class ModuleTables {
public:
    explicit ModuleTables(HMODULE module) : m_base(reinterpret_cast<const BYTE*>(module)) {
        const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(m_base);
        EXPECT_EQ(dos->e_magic, IMAGE_DOS_SIGNATURE);
        m_headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(m_base + dos->e_lfanew);
        EXPECT_EQ(m_headers->Signature, static_cast<DWORD>(IMAGE_NT_SIGNATURE));
    }

    std::vector<std::string> Exports() const {
        const auto* directory = At<IMAGE_EXPORT_DIRECTORY>(Entry(IMAGE_DIRECTORY_ENTRY_EXPORT));
        const auto* names = At<DWORD>(directory->AddressOfNames);
        std::vector<std::string> all;
        for (DWORD i = 0; i < directory->NumberOfNames; ++i) all.emplace_back(At<char>(names[i]));
        return all;
    }

    std::set<std::string> ImportedModules() const {
        std::set<std::string> all;
        const auto* import = At<IMAGE_IMPORT_DESCRIPTOR>(Entry(IMAGE_DIRECTORY_ENTRY_IMPORT));
        for (; import->Name; ++import) {
            std::string name = At<char>(import->Name);
            std::transform(name.begin(), name.end(), name.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
            all.insert(name);
        }
        return all;
    }

    WORD Machine() const { return m_headers->FileHeader.Machine; }

private:
    template <class T>
    const T* At(DWORD offset) const {
        return reinterpret_cast<const T*>(m_base + offset);
    }
    DWORD Entry(int index) const { return m_headers->OptionalHeader.DataDirectory[index].VirtualAddress; }
    const BYTE* m_base;
    const IMAGE_NT_HEADERS* m_headers = nullptr;
};

TEST(LibraryFile, IsForTheMachineOfItsHost) {
    Library library;
    EXPECT_EQ(ModuleTables(library.Module()).Machine(), ModuleTables(::GetModuleHandleA(nullptr)).Machine());
}

TEST(LibraryFile, ExportsTheSevenFunctionsUndecorated) {
    Library library;
    const std::vector<std::string> exports = ModuleTables(library.Module()).Exports();
    for (const char* name : {"InstallTavixSkin", "UnInstallTavixSkin", "IsSkinnedThread", "SetSkinFromFile",
                             "RegisterSkinWnd", "UnRegisterSkinWnd", "GetTavixSkinHBITMAP"}) {
        EXPECT_EQ(std::count(exports.begin(), exports.end(), name), 1) << name;
        // Nor in a form that only some compilers' hosts would find.
        for (const char* prefix : {"_", "__"})
            EXPECT_EQ(std::count(exports.begin(), exports.end(), std::string(prefix) + name), 0)
                << prefix << name;
        for (const std::string& other : exports)
            EXPECT_NE(other.find(std::string(name) + "@"), 0u) << other << " is no cdecl name";
    }
}

// The compiler's scheme writes each part of a name after its length: the owner's, then the member's.
bool HasMember(const std::vector<std::string>& exports, const std::string& owner, const std::string& member) {
    return std::any_of(exports.begin(), exports.end(), [&](const std::string& name) {
        return name.find(owner + member) != std::string::npos;
    });
}

TEST(LibraryFile, ExportsTheMembersOfTheEngine) {
    Library library;
    const std::vector<std::string> exports = ModuleTables(library.Module()).Exports();
    for (const char* member : {"11InstallSkin",
                               "13UnInstallSkin",
                               "8LoadSkin",
                               "10UnLoadSkin",
                               "10SetNewSkin",
                               "10AddControl",
                               "12AddControl_1",
                               "17GetTavixSkinColor",
                               "15GetTavixSkinBmp",
                               "16GetTavixSkinSize",
                               "14GetSkinWndList",
                               "18GetRegistedSkinWnd",
                               "15RegisterSkinWnd",
                               "17UnRegisterSkinWnd",
                               "19GetHookedThreadList",
                               "17GetThreadSkinData",
                               "15IsSkinnedThread",
                               "22GetGloalTavixSkinColor",
                               "20GetGloalTavixSkinBmp",
                               "21GetGloalTavixSkinSize",
                               "C1Ev",
                               "D0Ev",
                               "D1Ev"})
        EXPECT_TRUE(HasMember(exports, "N10CTavixSkin", member)) << member;
}

TEST(LibraryFile, ExportsTheReaderAndWriterOfSkinFiles) {
    Library library;
    const std::vector<std::string> exports = ModuleTables(library.Module()).Exports();
    for (const char* member : {"8LoadSkin",
                               "10SaveToSkin",
                               "12LoadSkinItem",
                               "12SaveSkinItem",
                               "11SetSkinFace",
                               "10UnLoadSkin",
                               "11OpenRootStg",
                               "10OpenSubStg",
                               "7OpenStm",
                               "11ReadFromStm",
                               "10WriteToStm",
                               "14LoadBmpFromStm",
                               "13WriteBmpToStm",
                               "11RectToDword",
                               "15LoadSkinBtnInfo",
                               "17LoadSkinFrameInfo",
                               "18LoadSkinDialogInfo",
                               "19LoadSkinToolBarInfo",
                               "20LoadSkinComboboxInfo",
                               "19LoadSkinTabCtrlInfo",
                               "20LoadSkinHeadCtrlInfo",
                               "20LoadSkinEditCtrlInfo",
                               "23LoadSkinListBoxCtrlInfo",
                               "21LoadSkinScrollBarInfo",
                               "18LoadSkinGlobalInfo",
                               "16LoadSkinMenuInfo",
                               "19LoadSkinDockBarInfo",
                               "15SaveSkinBtnInfo",
                               "17SaveSkinFrameInfo",
                               "18SaveSkinDialogInfo",
                               "19SaveSkinToolBarInfo",
                               "20SaveSkinComboboxInfo",
                               "19SaveSkinTabCtrlInfo",
                               "20SaveSkinHeadCtrlInfo",
                               "17SaveSkinEditlInfo",
                               "19SaveSkinListBoxInfo",
                               "21SaveSkinScrollBarInfo",
                               "18SaveSkinGlobalInfo",
                               "16SaveSkinMenuInfo",
                               "19SaveSkinDockBarInfo"})
        EXPECT_TRUE(HasMember(exports, "N12CSkinStorage", member)) << member;
    for (const char* member : {"C1Ev", "D1Ev", "aSERKS_", "5ClearEv"})
        EXPECT_TRUE(HasMember(exports, "N11TSkinThemes", member)) << member;
}

TEST(LibraryFile, ExportsTheSplitterOfHosts) {
    Library library;
    const std::vector<std::string> exports = ModuleTables(library.Module()).Exports();
    for (const char* member : {"14OnDrawSplitterEP3CDCN12CSplitterWnd10ESplitTypeERK5CRect",
                               "15TrackColumnSizeEii", "C1Ev", "D0Ev", "D1Ev"})
        EXPECT_TRUE(HasMember(exports, "N16CSkinSplitterWnd", member)) << member;
    EXPECT_EQ(std::count(exports.begin(), exports.end(), "_ZTV16CSkinSplitterWnd"), 1);
    EXPECT_FALSE(HasMember(exports, "N16CSkinSplitterWnd", "12TrackRowSize")) << "rows are as in its base";
    // What a host calls on the base.
    for (const char* member :
         {"12CreateStatic", "6Create", "7SetPane", "10SetRowInfo", "13SetColumnInfo", "12RecalcLayout",
          "11SplitColumn", "8SplitRow", "10CreatePane", "12TrackRowSizeEii", "15TrackColumnSizeEii",
          "15DoKeyboardSplit", "C1Ev", "D1Ev"})
        EXPECT_TRUE(HasMember(exports, "N12CSplitterWnd", member)) << member;
    for (const char* member :
         {"7GetPane", "10GetRowInfo", "13GetColumnInfo", "12IdFromRowCol", "11GetRowCount"})
        EXPECT_TRUE(HasMember(exports, "NK12CSplitterWnd", member)) << member;
}

TEST(LibraryFile, ExportsTheMenuBarOfHosts) {
    Library library;
    const std::vector<std::string> exports = ModuleTables(library.Module()).Exports();
    for (const char* member : {"9LoadMenuAEP7HMENU__S1_",
                               "9LoadMenuAEPKc",
                               "9LoadMenuAEj",
                               "18SynchronizeMenubarEP7HMENU__",
                               "14DrawCaptionBtnEP3CDC",
                               "9OnKeyDownEj",
                               "21TranslateFrameMessageEP6tagMSG",
                               "11OnMenuInputER6tagMSG",
                               "10AdjustSizeE5CSizei",
                               "15PreCreateWindow",
                               "16OnBarStyleChange",
                               "10TrackPopupEi",
                               "24CancelMenuAndTrackNewOneEi",
                               "16SetTrackingState",
                               "21ToggleTrackButtonMode",
                               "12OnMenuSelect",
                               "15OnInitMenuPopup",
                               "15MenuInputFilter",
                               "10UpdateFont",
                               "16CheckMinMaxState",
                               "20RecomputeToolbarSize",
                               "19RecomputeMenuLayout",
                               "10SetHotItemEi",
                               "8OnCreate",
                               "9OnDestroy",
                               "7OnPaint",
                               "9OnNcPaint",
                               "12OnNcCalcSize",
                               "6OnSize",
                               "13OnLButtonDown",
                               "11OnLButtonUp",
                               "11OnMouseMove",
                               "12OnMouseLeave",
                               "18OnUpdateMenuButton",
                               "13OnSetMenuNull",
                               "12DeleteButton",
                               "10AddStrings",
                               "10AddButtons",
                               "8AutoSize",
                               "11PressButton",
                               "12SetImageList",
                               "19activeMenuBarTarget",
                               "13menuInputHook",
                               "17classCSkinMenuBar",
                               "C1Ev",
                               "D0Ev",
                               "D1Ev"})
        EXPECT_TRUE(HasMember(exports, "N12CSkinMenuBar", member)) << member;
    for (const char* member :
         {"7GetMenuEv", "16GetTrackingStateERi", "7GetRectEjR7tagRECT", "10GetHotItemEv", "7HitTest",
          "14GetButtonCount", "14ToolBarHitTest", "14MapAccelerator", "13IsValidButton",
          "19GetNextOrPrevButton", "15GetRuntimeClass", "13GetMessageMap"})
        EXPECT_TRUE(HasMember(exports, "NK12CSkinMenuBar", member)) << member;
    EXPECT_EQ(std::count(exports.begin(), exports.end(), "_ZTV12CSkinMenuBar"), 1);
    // What a host calls on the classes around it.
    for (const char* owner : {"N9CFrameWnd", "N12CMDIChildWnd", "N8CToolBar"})
        EXPECT_TRUE(HasMember(exports, owner, "6Create")) << owner;
    EXPECT_TRUE(HasMember(exports, "N12CMDIFrameWnd", "12CreateClient"));
    EXPECT_TRUE(HasMember(exports, "NK9CFrameWnd", "10UpdateBarsEv"));
}

TEST(LibraryFile, ImportsNothingButTheSystem) {
    const std::set<std::string> allowed{"KERNEL32.DLL", "USER32.DLL",  "GDI32.DLL",   "COMCTL32.DLL",
                                        "OLE32.DLL",    "SHLWAPI.DLL", "MSIMG32.DLL", "IMAGEHLP.DLL",
                                        "ADVAPI32.DLL", "MSVCRT.DLL",  "UCRTBASE.DLL"};
    Library library;
    const std::set<std::string> imports = ModuleTables(library.Module()).ImportedModules();
    EXPECT_TRUE(imports.count("USER32.DLL"));
    for (const std::string& name : imports)
        EXPECT_TRUE(allowed.count(name) || name.find("API-MS-WIN-") == 0) << name;
}

TEST(LibraryFile, TellsItsVersion) {
    DWORD unused = 0;
    const std::string path = LibraryPath();
    const DWORD size = ::GetFileVersionInfoSizeA(path.c_str(), &unused);
    ASSERT_GT(size, 0u);
    std::vector<char> block(size);
    ASSERT_TRUE(::GetFileVersionInfoA(path.c_str(), 0, size, block.data()));
    VS_FIXEDFILEINFO* facts = nullptr;
    UINT length = 0;
    ASSERT_TRUE(::VerQueryValueA(block.data(), "\\", reinterpret_cast<void**>(&facts), &length));
    EXPECT_EQ(facts->dwSignature, 0xFEEF04BDu);
    EXPECT_NE(facts->dwFileVersionMS | facts->dwFileVersionLS, 0u);
    EXPECT_EQ(facts->dwFileType, static_cast<DWORD>(VFT_DLL));
}

// ---------------------------------------------------------------- a skin file of the host's own making

/* A skin with one bitmap: the first of the dock bar's, number 96, of one colour. */
class SmallSkin {
public:
    static constexpr DWORD kBitmap = 96;

    SmallSkin(int width, int height) {
        char folder[MAX_PATH + 1] = {};
        ::GetTempPathA(sizeof folder, folder);
        static int count;
        m_path = std::string(folder) + "tavix_whole_" + std::to_string(::GetCurrentProcessId()) + "_" +
                 std::to_string(++count) + ".skn";
        constexpr DWORD kMode = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
        const std::wstring wide(m_path.begin(), m_path.end());
        IStorage* root = nullptr;
        IStorage* record = nullptr;
        EXPECT_EQ(::StgCreateDocfile(wide.c_str(), kMode | STGM_CREATE, 0, &root), S_OK);
        EXPECT_EQ(root->CreateStorage(L"DockBar", kMode, 0, 0, &record), S_OK);
        std::vector<char> data(0x480);
        std::strcpy(data.data(), "first");
        Write(record, L"Data", data);
        Write(record, L"first", BmpImage(width, height));
        record->Release();
        root->Release();
    }
    ~SmallSkin() { ::DeleteFileA(Path()); }
    SmallSkin(const SmallSkin&) = delete;
    SmallSkin& operator=(const SmallSkin&) = delete;
    const char* Path() const { return m_path.c_str(); }

private:
    static void Write(IStorage* storage, const wchar_t* name, const std::vector<char>& bytes) {
        IStream* stream = nullptr;
        EXPECT_EQ(storage->CreateStream(name, STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream), S_OK);
        EXPECT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), S_OK);
        stream->Release();
    }
    static std::vector<char> BmpImage(int width, int height) {
        const DWORD row = static_cast<DWORD>(width * 3 + 3) / 4 * 4;
        const DWORD bits = row * static_cast<DWORD>(height);
        BITMAPFILEHEADER file{};
        file.bfType = 0x4D42;
        file.bfOffBits = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
        file.bfSize = file.bfOffBits + bits;
        BITMAPINFOHEADER info{sizeof info, width, height, 1, 24, BI_RGB, bits, 0, 0, 0, 0};
        std::vector<char> image(file.bfSize, '\x40');
        std::memcpy(image.data(), &file, sizeof file);
        std::memcpy(image.data() + sizeof file, &info, sizeof info);
        return image;
    }
    std::string m_path;
};

int WidthOf(HBITMAP bitmap) {
    BITMAP facts{};
    return ::GetObjectA(bitmap, sizeof facts, &facts) ? facts.bmWidth : 0;
}

// ---------------------------------------------------------------- a host's life

// A frame with a button and a dialog, painted once.
class HostWindows {
public:
    HostWindows() {
        WNDCLASSA cls{};
        cls.lpfnWndProc = ::DefWindowProcA;
        cls.hInstance = ::GetModuleHandleA(nullptr);
        cls.lpszClassName = "Tavix_PaneA";
        ::RegisterClassA(&cls);
        frame = ::CreateWindowExA(0, "Tavix_PaneA", "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 300,
                                  200, nullptr, nullptr, cls.hInstance, nullptr);
        button = ::CreateWindowExA(0, "BUTTON", "button", WS_CHILD | WS_VISIBLE, 10, 10, 80, 25, frame,
                                   nullptr, cls.hInstance, nullptr);
        dialog = ::CreateWindowExA(0, "#32770", "dialog", WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 80,
                                   80, 200, 120, frame, nullptr, cls.hInstance, nullptr);
        EXPECT_TRUE(frame && button && dialog);
        Paint();
    }
    ~HostWindows() { Destroy(); }
    HostWindows(const HostWindows&) = delete;
    HostWindows& operator=(const HostWindows&) = delete;

    void Paint() const {
        ::RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_FRAME | RDW_ALLCHILDREN);
        ::RedrawWindow(dialog, nullptr, nullptr,
                       RDW_INVALIDATE | RDW_UPDATENOW | RDW_FRAME | RDW_ALLCHILDREN);
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageA(&message);
    }
    void Destroy() {
        ::DestroyWindow(dialog);
        ::DestroyWindow(frame);
        dialog = frame = button = nullptr;
        ::UnregisterClassA("Tavix_PaneA", ::GetModuleHandleA(nullptr));
    }
    // Whether the procedure of a window lies in the library.
    static bool IsIn(HMODULE module, HWND window) {
        HMODULE owner = nullptr;
        ::GetModuleHandleExA(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<const char*>(::GetWindowLongPtrA(window, GWLP_WNDPROC)), &owner);
        return owner == module;
    }

    HWND frame = nullptr, button = nullptr, dialog = nullptr;
};

TEST(Host, SkinsItsWindowsAndGoesWithoutATrace) {
    ASSERT_FALSE(IsLoaded());
    {
        SmallSkin skin(21, 11);
        Library library;
        ASSERT_EQ(library.install(skin.Path()), 1);
        EXPECT_TRUE(library.SkinnedNow());
        EXPECT_EQ(library.install(skin.Path()), 0);
        EXPECT_EQ(WidthOf(library.bitmap(SmallSkin::kBitmap)), 21);
        EXPECT_EQ(library.bitmap(0), nullptr);
        EXPECT_EQ(library.bitmap(255), nullptr);
        EXPECT_EQ(library.bitmap(0xFFFFFFFF), nullptr);
        {
            HostWindows windows;
            EXPECT_TRUE(HostWindows::IsIn(library.Module(), windows.frame));
            EXPECT_TRUE(HostWindows::IsIn(library.Module(), windows.dialog));
            EXPECT_TRUE(HostWindows::IsIn(library.Module(), windows.button));
            EXPECT_EQ(library.registerWindow(windows.frame), 1);
            EXPECT_EQ(library.unregisterWindow(windows.frame), 1);
        }
        library.uninstall();
        EXPECT_FALSE(library.SkinnedNow());
        EXPECT_EQ(library.bitmap(SmallSkin::kBitmap), nullptr);
        HostWindows native;
        EXPECT_FALSE(HostWindows::IsIn(library.Module(), native.frame));
    }
    EXPECT_FALSE(IsLoaded()) << "nothing keeps the library after its host let it go";
}

TEST(Host, ChangesItsSkinWhileWindowsAreOpen) {
    SmallSkin first(21, 11), second(33, 7);
    Library library;
    EXPECT_EQ(library.setSkin(first.Path()), 0) << "no skin to change yet";
    ASSERT_EQ(library.install(first.Path()), 1);
    {
        HostWindows windows;
        EXPECT_EQ(library.setSkin(second.Path()), 1);
        EXPECT_EQ(WidthOf(library.bitmap(SmallSkin::kBitmap)), 33);
        windows.Paint();
        EXPECT_EQ(library.setSkin(first.Path()), 1);
        EXPECT_EQ(WidthOf(library.bitmap(SmallSkin::kBitmap)), 21);
        windows.Paint();
    }
    library.uninstall();
}

TEST(Host, GetsItsAnswersWithoutASkin) {
    Library library;
    EXPECT_EQ(library.install(nullptr), 0);
    EXPECT_EQ(library.install(""), 0);
    EXPECT_EQ(library.install("Z:\\no\\such\\file.skn"), 0);
    EXPECT_FALSE(library.SkinnedNow());
    EXPECT_EQ(library.setSkin(nullptr), 0);
    EXPECT_EQ(library.bitmap(SmallSkin::kBitmap), nullptr);
    EXPECT_EQ(library.registerWindow(nullptr), 1);
    EXPECT_EQ(library.unregisterWindow(nullptr), 1);
    library.uninstall();
}

TEST(Host, MayHaveWindowsThatAreOlderOrYounger) {
    SmallSkin skin(21, 11);
    HostWindows older;
    {
        Library library;
        ASSERT_EQ(library.install(skin.Path()), 1);
        older.Paint();
        EXPECT_FALSE(HostWindows::IsIn(library.Module(), older.frame));
        library.uninstall();
    }
    EXPECT_FALSE(IsLoaded());
    older.Paint();
    HostWindows younger;
    younger.Paint();
    EXPECT_TRUE(::IsWindow(younger.button));
}

// ---------------------------------------------------------------- again and again

struct Resources {
    long handle, address;
    static Resources Now() {
        // Leaked handles drive the next handle's value up.
        HANDLE event = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
        ::CloseHandle(event);
        MEMORYSTATUSEX memory{};
        memory.dwLength = sizeof memory;
        ::GlobalMemoryStatusEx(&memory);
        return {static_cast<long>(reinterpret_cast<LONG_PTR>(event)),
                static_cast<long>((memory.ullTotalVirtual - memory.ullAvailVirtual) >> 10)};
    }
};

TEST(Loading, FiftyTimesLeavesNothingBehind) {
    SmallSkin skin(21, 11);
    const auto round = [&skin] {
        {
            Library library;
            ASSERT_EQ(library.install(skin.Path()), 1);
            {
                HostWindows windows;
                ASSERT_EQ(library.setSkin(skin.Path()), 1);
            }
            library.uninstall();
        }
        ASSERT_FALSE(IsLoaded());
    };
    for (int i = 0; i < 5; ++i) round();
    const Resources before = Resources::Now();
    const DWORD slot = ::FlsAlloc(nullptr);
    ::FlsFree(slot);
    for (int i = 0; i < 50; ++i) round();
    const Resources after = Resources::Now();
    EXPECT_LT(after.handle - before.handle, 4 * 25);
    EXPECT_LT(after.address - before.address, 50 * 64) << "in KiB";
    const DWORD slotAfter = ::FlsAlloc(nullptr);
    ::FlsFree(slotAfter);
    EXPECT_EQ(slotAfter, slot) << "the library gives its thread slots back";
}

TEST(Loading, MayBeDoneByEachThreadThatNeedsIt) {
    SmallSkin skin(21, 11);
    for (int i = 0; i < 10; ++i) {
        bool worked = false;
        std::thread([&] {
            Library library;
            worked = library.install(skin.Path()) == 1;
            HostWindows windows;
            worked = worked && HostWindows::IsIn(library.Module(), windows.frame);
            windows.Destroy();
            library.uninstall();
        }).join();
        ASSERT_TRUE(worked);
        ASSERT_FALSE(IsLoaded());
    }
}

TEST(Loading, OutlivesThreadsThatUsedTheLibrary) {
    SmallSkin skin(21, 11);
    Library library;
    for (int i = 0; i < 20; ++i) {
        std::thread([&] {
            EXPECT_EQ(library.install(skin.Path()), 1);
            { HostWindows windows; }
            library.uninstall();
        }).join();
    }
    // And of threads that used it without a skin.
    for (int i = 0; i < 20; ++i) std::thread([&] { EXPECT_EQ(library.bitmap(1), nullptr); }).join();
    EXPECT_FALSE(library.SkinnedNow());
}

TEST(Loading, MayEndBeforeAThreadThatUsedTheLibrary) {
    HANDLE used = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE freed = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::optional<Library> library;
    library.emplace();
    std::thread thread([&] {
        EXPECT_EQ(library->bitmap(1), nullptr);
        ::SetEvent(used);
        ::WaitForSingleObject(freed, INFINITE);
    });
    ::WaitForSingleObject(used, INFINITE);
    library.reset();
    EXPECT_FALSE(IsLoaded());
    ::SetEvent(freed);
    thread.join();  // what the library kept for the thread must not be freed by code that is gone
    ::CloseHandle(used);
    ::CloseHandle(freed);
}

// Last: the window keeps the library in the process for good.
TEST(ZLastOfAll, LibraryStaysForWindowsThatOutliveTheirSkin) {
    SmallSkin skin(21, 11);
    HostWindows* windows = nullptr;
    {
        Library library;
        ASSERT_EQ(library.install(skin.Path()), 1);
        windows = new HostWindows;
        library.uninstall();
    }
    EXPECT_TRUE(IsLoaded());
    windows->Paint();
    char text[20] = {};
    ::GetWindowTextA(windows->dialog, text, sizeof text);
    EXPECT_STREQ(text, "dialog");
    EXPECT_EQ(::SendMessageA(windows->button, BM_GETCHECK, 0, 0), 0);
    const HWND frame = windows->frame;
    delete windows;
    EXPECT_FALSE(::IsWindow(frame));
}

}  // namespace
}  // namespace tavix_test
