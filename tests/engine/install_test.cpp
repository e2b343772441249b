// The seven exported functions, and a thread's way into the skin and out of it.
#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

#include "controls/button_skin.h"
#include "engine_objects.h"
#include "frames/dialog_skin.h"
#include "frames/frame_skin.h"
#include "tavixskin.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

using namespace tavix_test;

namespace {

constexpr DWORD kEveryKindOfId[] = {0,   1,   20,   78,         127,        128,       254,
                                    255, 256, 1000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

DWORD ThisThread() { return ::GetCurrentThreadId(); }

// What a host does after a start, whatever came of it: makes windows, paints them, ends them.
void UseWindows() {
    HostWindow frame("Tavix_PaneA", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    ASSERT_NE(frame.Handle(), nullptr);
    HWND button = CreateControl(Charset::Ansi, frame, "BUTTON", "press", WS_TABSTOP, {10, 10, 90, 36});
    ASSERT_NE(button, nullptr);
    HWND dialog = ::CreateWindowExA(0, "#32770", "dialog", WS_POPUP | WS_CAPTION | WS_VISIBLE, 50, 50, 200,
                                    100, frame, nullptr, nullptr, nullptr);
    ASSERT_NE(dialog, nullptr);
    ::RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
    PumpMessages();
    EXPECT_EQ(::SendMessageA(button, BM_GETCHECK, 0, 0), 0);
    EXPECT_EQ(::SendMessageA(frame, WM_NULL, 0, 0), 0);
    ::DestroyWindow(dialog);
    const HWND window = frame;
    frame.Destroy();
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_FALSE(::IsWindow(button));
}

// ---------------------------------------------------------------- in and out

TEST(Install, SkinsTheThreadUntilItIsUninstalled) {
    ASSERT_EQ(::IsSkinnedThread(ThisThread()), 0);
    ASSERT_EQ(::InstallTavixSkin(SharedSkin().Path()), 1);
    EXPECT_EQ(::IsSkinnedThread(ThisThread()), 1);
    ::UnInstallTavixSkin();
    EXPECT_EQ(::IsSkinnedThread(ThisThread()), 0);
    ::UnInstallTavixSkin();
    EXPECT_EQ(::IsSkinnedThread(ThisThread()), 0);
}

TEST(Install, CanBeDoneAgainAfterwards) {
    for (int i = 0; i < 5; ++i) {
        Skinned skinned;
        HostWindow frame("Tavix_PaneA");
        EXPECT_TRUE(HasSkin<CSkinFrame>(frame));
    }
    HostWindow frame("Tavix_PaneA");
    EXPECT_TRUE(frame.IsNative()) << "without a skin nothing is subclassed";
}

TEST(Install, IsRefusedASecondTimeAndTheSkinStays) {
    Skinned skinned;
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    const HBITMAP bitmap = ::GetTavixSkinHBITMAP(BMP_FRAME_CAPTION_TILE);
    const int count = BitmapCount();
    EXPECT_GT(count, 100);

    EXPECT_EQ(::InstallTavixSkin(SharedSkin().Path()), 0);
    FileWith other("no skin");
    EXPECT_EQ(::InstallTavixSkin(other.Path()), 0);

    EXPECT_EQ(CTavixSkin::GetCurrentThreadSkin(), engine);
    EXPECT_EQ(::GetTavixSkinHBITMAP(BMP_FRAME_CAPTION_TILE), bitmap);
    EXPECT_EQ(BitmapCount(), count);
    HostWindow frame("Tavix_PaneA");
    EXPECT_TRUE(HasSkin<CSkinFrame>(frame));
}

TEST(Install, LeavesTheWindowsThatExistNative) {
    HostWindow before("Tavix_PaneA", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    HWND button = CreateControl(Charset::Ansi, before, "BUTTON", "press", 0, {0, 0, 50, 20});
    const WNDPROC native = ProcedureOf(button);
    {
        Skinned skinned;
        ::RedrawWindow(before, nullptr, nullptr,
                       RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
        ::SendMessageA(before, WM_SIZE, 0, 0);
        ::SendMessageA(before, WM_INITDIALOG, 0, 0);
        PumpMessages();
        EXPECT_TRUE(before.IsNative());
        EXPECT_EQ(ProcedureOf(button), native);
        EXPECT_EQ(HeadOf(before), nullptr);
        EXPECT_EQ(HeadOf(button), nullptr);
        // Only what is created from now on is met.
        HWND later = CreateControl(Charset::Ansi, before, "BUTTON", "press", 0, {0, 0, 50, 20});
        EXPECT_TRUE(HasSkin<CSkinButton>(later));
        ::DestroyWindow(later);
    }
    EXPECT_TRUE(before.IsNative());
}

TEST(Install, EntersHookAndEngineInTheMaps) {
    const WORD key = static_cast<WORD>(ThisThread());
    void* value = nullptr;
    EXPECT_FALSE(CTavixSkin::GetHookedThreadList()->Lookup(key, value));
    EXPECT_FALSE(CTavixSkin::GetThreadSkinData()->Lookup(key, value));
    {
        Skinned skinned;
        ASSERT_TRUE(CTavixSkin::GetThreadSkinData()->Lookup(key, value));
        EXPECT_EQ(value, CTavixSkin::GetCurrentThreadSkin());
        EXPECT_NE(value, nullptr);
        ASSERT_TRUE(CTavixSkin::GetHookedThreadList()->Lookup(key, value));
        EXPECT_NE(value, nullptr);
    }
    EXPECT_FALSE(CTavixSkin::GetHookedThreadList()->Lookup(key, value));
    EXPECT_FALSE(CTavixSkin::GetThreadSkinData()->Lookup(key, value));
}

TEST(Exports, PutTheModuleStateBack) {
    AFX_MODULE_STATE* former = AfxGetModuleState();
    ASSERT_NE(former, AfxGetLibraryModuleState());
    const auto unchanged = [former] {
        return AfxGetModuleState() == former && AfxGetThreadState()->m_nMaintainDepth == 0;
    };
    for (int round = 0; round < 2; ++round) {
        ::InstallTavixSkin(round ? SharedSkin().Path() : nullptr);
        EXPECT_TRUE(unchanged());
        ::IsSkinnedThread(ThisThread());
        ::RegisterSkinWnd(nullptr);
        ::UnRegisterSkinWnd(nullptr);
        ::GetTavixSkinHBITMAP(0);
        EXPECT_TRUE(unchanged());
        ::SetSkinFromFile(SharedSkin().Path());
        EXPECT_TRUE(unchanged());
        ::UnInstallTavixSkin();
        EXPECT_TRUE(unchanged());
    }
}

// ---------------------------------------------------------------- what stands at the path

class InstallPath : public testing::Test {
protected:
    static void Expect(const char* path, int result) {
        EXPECT_EQ(::InstallTavixSkin(path), result);
        EXPECT_EQ(::IsSkinnedThread(ThisThread()), result);
        EXPECT_EQ(BitmapCount(), 0);
        UseWindows();
        ::UnInstallTavixSkin();
        EXPECT_EQ(::IsSkinnedThread(ThisThread()), 0);
    }
};

TEST_F(InstallPath, NullIsRefused) { Expect(nullptr, 0); }
TEST_F(InstallPath, EmptyIsRefused) { Expect("", 0); }
TEST_F(InstallPath, WithNothingThereIsRefused) {
    TempFile missing;
    ASSERT_FALSE(missing.Exists());
    Expect(missing.Path(), 0);
    EXPECT_FALSE(missing.Exists()) << "an install creates no file";
}
TEST_F(InstallPath, TooLongIsRefused) { Expect(std::string(5000, 'x').c_str(), 0); }

TEST_F(InstallPath, OfAFolderGivesAnEmptySkin) {
    char folder[MAX_PATH + 1] = {};
    ::GetTempPathA(sizeof folder, folder);
    const DWORD attributes = ::GetFileAttributesA(folder);
    Expect(folder, 1);
    EXPECT_EQ(::GetFileAttributesA(folder), attributes);
}

TEST_F(InstallPath, OfAnEmptyFileGivesAnEmptySkin) {
    FileWith file("");
    Expect(file.Path(), 1);
    EXPECT_EQ(file.Contents(), "");
}

TEST_F(InstallPath, OfATextFileGivesAnEmptySkin) {
    const std::string text = "[Skin]\r\nname=none\r\n" + std::string(3000, '.');
    FileWith file(text);
    Expect(file.Path(), 1);
    EXPECT_EQ(file.Contents(), text) << "what is no skin is left as it was";
}

TEST_F(InstallPath, OfAPictureFileGivesAnEmptySkin) {
    std::string bmp = "BM";
    bmp.resize(600, '\xD0');
    FileWith file(bmp);
    Expect(file.Path(), 1);
}

TEST_F(InstallPath, OfAnotherProgramsCompoundFileGivesAnEmptySkin) {
    TempFile file(".doc");
    IStorage* storage = nullptr;
    ASSERT_EQ(::StgCreateDocfile(file.WidePath().c_str(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE,
                                 0, &storage),
              S_OK);
    IStream* stream = nullptr;
    ASSERT_EQ(storage->CreateStream(L"WordDocument", STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream),
              S_OK);
    EXPECT_EQ(stream->Write("no skin at all", 14, nullptr), S_OK);
    stream->Release();
    storage->Release();

    Expect(file.Path(), 1);

    // Loading adds what a skin file has, and leaves alone what it knows nothing of.
    ASSERT_EQ(::StgOpenStorage(file.WidePath().c_str(), nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, nullptr, 0,
                               &storage),
              S_OK);
    ASSERT_EQ(storage->OpenStream(L"WordDocument", nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream),
              S_OK);
    char text[20] = {};
    ULONG read = 0;
    stream->Read(text, sizeof text, &read);
    EXPECT_EQ(std::string(text, read), "no skin at all");
    stream->Release();
    storage->Release();
}

TEST_F(InstallPath, OfADamagedSkinGivesAnEmptySkin) {
    TestSkin skin;
    skin.Write();
    HANDLE file = ::CreateFileA(skin.Path(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    ::SetFilePointer(file, 700, nullptr, FILE_BEGIN);
    ::SetEndOfFile(file);
    ::CloseHandle(file);
    Expect(skin.Path(), 1);
}

// ---------------------------------------------------------------- the functions one by one

TEST(IsSkinnedThread, ComparesTheLowSixteenBits) {
    const DWORD id = ThisThread();
    Skinned skinned;
    EXPECT_EQ(::IsSkinnedThread(id), 1);
    EXPECT_EQ(::IsSkinnedThread(id ^ 0x00010000), 1);
    EXPECT_EQ(::IsSkinnedThread(id ^ 0xFFFF0000), 1);
    EXPECT_EQ(CTavixSkin::IsSkinnedThread(id ^ 0x00070000), 1);
    EXPECT_EQ(::IsSkinnedThread(id ^ 1), 0);
    EXPECT_EQ(::IsSkinnedThread(id ^ 0x8000), 0);
    EXPECT_EQ(::IsSkinnedThread(0), 0);
}

TEST(IsSkinnedThread, MayBeAskedForOtherThreads) {
    const DWORD main = ThisThread();
    Skinned skinned;
    InAnotherThread([main] {
        EXPECT_EQ(::IsSkinnedThread(main), 1);
        EXPECT_EQ(::IsSkinnedThread(ThisThread()), 0);
    });
}

TEST(TavixSkinHbitmap, IsThatOfTheSkin) {
    Skinned skinned;
    const TestSkin& skin = SharedSkin();
    int known = 0;
#define TAVIX_EXPECT_BITMAP(number, name, record, use)                                            \
    {                                                                                             \
        BITMAP facts{};                                                                           \
        EXPECT_NE(::GetObjectA(::GetTavixSkinHBITMAP(number), sizeof facts, &facts), 0) << #name; \
        EXPECT_EQ(facts.bmWidth, skin.BitmapSize(number).cx) << #name;                            \
        EXPECT_EQ(facts.bmHeight, skin.BitmapSize(number).cy) << #name;                           \
        ++known;                                                                                  \
    }
    TAVIX_BITMAP_IDS(TAVIX_EXPECT_BITMAP)
#undef TAVIX_EXPECT_BITMAP
    EXPECT_EQ(BitmapCount(), known);
}

TEST(TavixSkinHbitmap, OfAnUnusedNumberIsNull) {
    Skinned skinned;
    for (DWORD id :
         {20u, 78u, 128u, 200u, 254u, 255u, 256u, 510u, 1000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu})
        EXPECT_EQ(::GetTavixSkinHBITMAP(id), nullptr) << id;
}

TEST(TavixSkinHbitmap, IsTheSameFromTheEngineAndFromTheStatic) {
    Skinned skinned;
    CBitmap* bitmap = CTavixSkin::GetGloalTavixSkinBmp(BMP_MENU_CHECK);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(CTavixSkin::GetCurrentThreadSkin()->GetTavixSkinBmp(BMP_MENU_CHECK), bitmap);
    EXPECT_EQ(::GetTavixSkinHBITMAP(BMP_MENU_CHECK), static_cast<HBITMAP>(*bitmap));
}

TEST(TavixSkinHbitmap, DiesWithTheSkin) {
    HBITMAP bitmap = nullptr;
    {
        Skinned skinned;
        bitmap = ::GetTavixSkinHBITMAP(BMP_COMBO_LEFT);
        EXPECT_EQ(::GetObjectType(bitmap), static_cast<DWORD>(OBJ_BITMAP));
    }
    EXPECT_EQ(::GetObjectType(bitmap), 0u);
}

TEST(RegisterFunctions, ReadNothingAndAnswerOne) {
    for (int round = 0; round < 2; ++round) {
        ProbeWindow window;
        EXPECT_EQ(::RegisterSkinWnd(window), 1);
        EXPECT_EQ(::RegisterSkinWnd(nullptr), 1);
        EXPECT_EQ(::RegisterSkinWnd(reinterpret_cast<HWND>(0x12345678)), 1);
        EXPECT_EQ(::UnRegisterSkinWnd(window), 1);
        EXPECT_EQ(::UnRegisterSkinWnd(window), 1);
        if (round == 0) {
            ASSERT_EQ(::InstallTavixSkin(SharedSkin().Path()), 1);
        }
    }
    EXPECT_TRUE(CTavixSkin::GetCurrentThreadSkin()->GetRegistedSkinWnd()->IsEmpty());
    ProbeWindow window;
    EXPECT_EQ(::RegisterSkinWnd(window), 1);
    EXPECT_EQ(::SetSkinFromFile(SharedSkin().Path()), 1);
    EXPECT_FALSE(window.log.Has(0x703)) << "the exported function registers nothing";
    ::UnInstallTavixSkin();
}

// ---------------------------------------------------------------- a thread without a skin

void UseEverythingUnskinned() {
    EXPECT_EQ(::IsSkinnedThread(ThisThread()), 0);
    ::UnInstallTavixSkin();
    EXPECT_EQ(::SetSkinFromFile(SharedSkin().Path()), 0);
    EXPECT_EQ(::SetSkinFromFile(nullptr), 0);
    EXPECT_EQ(::RegisterSkinWnd(nullptr), 1);
    EXPECT_EQ(::UnRegisterSkinWnd(nullptr), 1);
    for (DWORD id : kEveryKindOfId) {
        EXPECT_EQ(::GetTavixSkinHBITMAP(id), nullptr);
        EXPECT_EQ(CTavixSkin::GetGloalTavixSkinBmp(id), nullptr);
        EXPECT_EQ(CTavixSkin::GetGloalTavixSkinColor(id), 0u);
        EXPECT_EQ(CTavixSkin::GetGloalTavixSkinSize(id), 0u);
    }
    EXPECT_EQ(CTavixSkin::GetCurrentThreadSkin(), nullptr);
    UseWindows();
}

TEST(UnskinnedThread, MayCallEverything) {
    UseEverythingUnskinned();
    InAnotherThread(UseEverythingUnskinned);
}

TEST(UnskinnedThread, IsNotSkinnedByAnothersInstall) {
    Skinned skinned;
    InAnotherThread([] {
        UseEverythingUnskinned();
        HostWindow frame("Tavix_PaneA");
        EXPECT_TRUE(frame.IsNative());
    });
    EXPECT_EQ(::IsSkinnedThread(ThisThread()), 1) << "another thread's uninstall is its own affair";
    EXPECT_GT(BitmapCount(), 100);
}

TEST(SecondThread, HasASkinOfItsOwn) {
    TestSkin second;
    second.SetBitmapSize(BMP_MENU_CHECK, 33, 44).SetColour(CLR_MENU_BACK, RGB(1, 2, 3)).Write();
    const DWORD main = ThisThread();
    Skinned skinned;
    const HBITMAP mine = ::GetTavixSkinHBITMAP(BMP_MENU_CHECK);
    InAnotherThread([&second, main, mine] {
        ASSERT_EQ(::InstallTavixSkin(second.Path()), 1);
        EXPECT_EQ(::IsSkinnedThread(ThisThread()), 1);
        EXPECT_EQ(::IsSkinnedThread(main), 1);
        const HBITMAP theirs = ::GetTavixSkinHBITMAP(BMP_MENU_CHECK);
        EXPECT_NE(theirs, mine);
        BITMAP facts{};
        ::GetObjectA(theirs, sizeof facts, &facts);
        EXPECT_EQ(facts.bmWidth, 33);
        EXPECT_EQ(CTavixSkin::GetGloalTavixSkinColor(CLR_MENU_BACK), RGB(1, 2, 3));
        {
            HostWindow frame("Tavix_PaneA");
            EXPECT_TRUE(HasSkin<CSkinFrame>(frame));
        }
        ::UnInstallTavixSkin();
        EXPECT_EQ(::IsSkinnedThread(main), 1);
    });
    EXPECT_EQ(::GetTavixSkinHBITMAP(BMP_MENU_CHECK), mine);
    EXPECT_EQ(CTavixSkin::GetGloalTavixSkinColor(CLR_MENU_BACK), SharedSkin().Colour(CLR_MENU_BACK));
}

TEST(SecondThread, CanBeTheOnlySkinnedOne) {
    InAnotherThread([] {
        Skinned skinned;
        UseWindows();
        HWND dialog =
            ::CreateWindowExA(0, "#32770", "", WS_POPUP, 0, 0, 90, 90, nullptr, nullptr, nullptr, nullptr);
        EXPECT_TRUE(HasSkin<CSkinDialog>(dialog));
        ::DestroyWindow(dialog);
    });
    EXPECT_EQ(::IsSkinnedThread(ThisThread()), 0);
    HostWindow frame("Tavix_PaneA");
    EXPECT_TRUE(frame.IsNative());
}

}  // namespace
