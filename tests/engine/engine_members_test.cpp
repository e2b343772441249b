// The members of the engine that a host can call.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "controls/button_skin.h"
#include "engine_objects.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

using namespace tavix_test;

namespace {

std::vector<HWND> Registered(CTavixSkin* engine) {
    std::vector<HWND> windows;
    auto* list = engine->GetRegistedSkinWnd();
    for (int i = 0; i < list->GetSize(); ++i) windows.push_back((*list)[i]);
    return windows;
}

HWND Fake(int number) { return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(number)); }
using Windows = std::vector<HWND>;

class EngineTest : public testing::Test {
protected:
    Skinned m_skinned;
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
};

TEST_F(EngineTest, ValuesAreThoseOfTheSkin) {
    const TestSkin& skin = SharedSkin();
    for (DWORD id : {CLR_TRANSPARENT, CLR_MENU_BACK, CLR_BTN_BORDER, CLR_SB_GRIP_PRESSED_DARK}) {
        EXPECT_EQ(engine->GetTavixSkinColor(id), skin.Colour(id));
        EXPECT_EQ(CTavixSkin::GetGloalTavixSkinColor(id), skin.Colour(id));
    }
    for (DWORD id : {SZ_FRAME_LEFT, SZ_DLG_CAPTION, SZ_MIN_TRACK_X}) {
        EXPECT_EQ(engine->GetTavixSkinSize(id), skin.Size(id));
        EXPECT_EQ(CTavixSkin::GetGloalTavixSkinSize(id), skin.Size(id));
    }
    EXPECT_EQ(engine->GetTavixSkinColor(CLR_TEXT), ::GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(engine->GetTavixSkinColor(CLR_TEXT_HIGHLIGHT), ::GetSysColor(COLOR_HIGHLIGHTTEXT));
    EXPECT_EQ(engine->GetTavixSkinColor(CLR_TEXT_DISABLED), ::GetSysColor(COLOR_GRAYTEXT));
}

TEST_F(EngineTest, NumbersBeyondTheTablesReadAsNothing) {
    for (DWORD id : {255u, 256u, 510u, 1020u, 0x40000000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        EXPECT_EQ(engine->GetTavixSkinBmp(id), nullptr);
        EXPECT_EQ(engine->GetTavixSkinColor(id), 0u);
        EXPECT_EQ(engine->GetTavixSkinSize(id), 0u);
    }
}

TEST_F(EngineTest, RegistersAWindowOnce) {
    EXPECT_EQ(engine->RegisterSkinWnd(Fake(8)), 1);
    EXPECT_EQ(engine->RegisterSkinWnd(Fake(4)), 1);
    EXPECT_EQ(engine->RegisterSkinWnd(Fake(8)), 1);
    EXPECT_EQ(engine->RegisterSkinWnd(Fake(4)), 1);
    EXPECT_EQ(Registered(engine), (Windows{Fake(8), Fake(4)}));
}

TEST_F(EngineTest, UnregistersInOrder) {
    for (int i = 1; i <= 5; ++i) engine->RegisterSkinWnd(Fake(i));
    EXPECT_EQ(engine->UnRegisterSkinWnd(Fake(3)), 1);
    EXPECT_EQ(Registered(engine), (Windows{Fake(1), Fake(2), Fake(4), Fake(5)}));
    EXPECT_EQ(engine->UnRegisterSkinWnd(Fake(5)), 1);
    EXPECT_EQ(engine->UnRegisterSkinWnd(Fake(1)), 1);
    EXPECT_EQ(Registered(engine), (Windows{Fake(2), Fake(4)}));
}

TEST_F(EngineTest, UnregisteringWhatIsNotListedEnds) {
    EXPECT_EQ(engine->UnRegisterSkinWnd(Fake(1)), 1);
    engine->RegisterSkinWnd(Fake(7));
    EXPECT_EQ(engine->UnRegisterSkinWnd(Fake(1)), 1);
    EXPECT_EQ(engine->UnRegisterSkinWnd(nullptr), 1);
    EXPECT_EQ(Registered(engine), (Windows{Fake(7)}));
}

TEST_F(EngineTest, RegistrationActsOnTheCallersEngine) {
    CTavixSkin unused;
    unused.RegisterSkinWnd(Fake(1));
    EXPECT_TRUE(Registered(&unused).empty());
    EXPECT_EQ(Registered(engine), (Windows{Fake(1)}));

    CTavixSkin* mine = engine;
    InAnotherThread([mine] {
        Skinned skinned;
        CTavixSkin* theirs = CTavixSkin::GetCurrentThreadSkin();
        mine->RegisterSkinWnd(Fake(2));
        EXPECT_EQ(Registered(theirs), (Windows{Fake(2)}));
        EXPECT_EQ(Registered(mine), (Windows{Fake(1)}));
        mine->UnRegisterSkinWnd(Fake(2));
        EXPECT_TRUE(Registered(theirs).empty());
    });
    unused.UnRegisterSkinWnd(Fake(1));
    EXPECT_TRUE(Registered(engine).empty());
}

TEST_F(EngineTest, AddControlActsOnTheCallersEngine) {
    HWND button = nullptr;
    CTavixSkin unused;
    ProbeWindow parent;
    button = CreateControl(Charset::Ansi, parent, "BUTTON", "", 0, {0, 0, 50, 20});
    EXPECT_TRUE(HasSkin<CSkinButton>(button));
    EXPECT_EQ(unused.AddControl(button, nullptr), 0) << "the caller's engine has it";
    EXPECT_EQ(unused.GetSkinWndList()->GetCount(), 0);
}

TEST_F(EngineTest, MembersOnAThreadWithoutAnEngineDoNothing) {
    CTavixSkin* mine = engine;
    InAnotherThread([mine] {
        EXPECT_EQ(mine->RegisterSkinWnd(Fake(1)), 1);
        EXPECT_EQ(mine->UnRegisterSkinWnd(Fake(1)), 1);
        HostWindow frame("Tavix_PaneA");
        EXPECT_EQ(mine->AddControl(frame, nullptr), 1);
        EXPECT_EQ(mine->AddControl_1(frame, nullptr), 1);
        EXPECT_TRUE(frame.IsNative());
    });
    EXPECT_TRUE(Registered(engine).empty());
}

TEST_F(EngineTest, LoadSkinTellsWhetherTheFileExists) {
    CTavixSkin other;
    EXPECT_EQ(other.LoadSkin(""), 0);
    EXPECT_EQ(other.LoadSkin("Z:\\no\\such\\file.skn"), 0);
    FileWith text("no skin");
    EXPECT_EQ(other.LoadSkin(text.Path()), 1);
    EXPECT_EQ(other.GetTavixSkinBmp(BMP_MENU_CHECK), nullptr);
    EXPECT_EQ(other.LoadSkin(SharedSkin().Path()), 1);
    ASSERT_NE(other.GetTavixSkinBmp(BMP_MENU_CHECK), nullptr);
    EXPECT_EQ(other.GetTavixSkinColor(CLR_MENU_BACK), SharedSkin().Colour(CLR_MENU_BACK));
    EXPECT_EQ(other.UnLoadSkin(), 1);
    EXPECT_EQ(other.GetTavixSkinBmp(BMP_MENU_CHECK), nullptr);
    EXPECT_EQ(other.GetTavixSkinColor(CLR_MENU_BACK), SharedSkin().Colour(CLR_MENU_BACK)) << "colours stay";
    EXPECT_EQ(other.UnLoadSkin(), 1);
}

TEST_F(EngineTest, ListsEverySkinnedWindow) {
    CSubclassWndMap* map = engine->GetSkinWndList();
    EXPECT_EQ(map->GetCount(), 0);
    {
        ProbeWindow parent;
        EXPECT_EQ(map->GetCount(), 0);
        HWND one = CreateControl(Charset::Ansi, parent, "BUTTON", "", 0, {0, 0, 50, 20});
        HWND two = CreateControl(Charset::Unicode, parent, "BUTTON", "", 0, {0, 0, 50, 20});
        EXPECT_EQ(map->GetCount(), 2);
        EXPECT_NE(map->Lookup(one), nullptr);
        EXPECT_NE(map->Lookup(two), nullptr);
        EXPECT_EQ(map->Lookup(one)->GetSafeHwnd(), one);
        EXPECT_EQ(map->Lookup(parent), nullptr);
        ::DestroyWindow(one);
        EXPECT_EQ(map->GetCount(), 1);
    }
    EXPECT_EQ(map->GetCount(), 0);
}

TEST_F(EngineTest, IsAnObjectOfItsClass) {
    EXPECT_STREQ(engine->GetRuntimeClass()->m_lpszClassName, "CTavixSkin");
    EXPECT_TRUE(engine->IsKindOf(RUNTIME_CLASS(CObject)));
}

TEST(Engine, TakesAllItsBitmapsWithIt) {
    std::vector<HBITMAP> bitmaps;
    {
        Skinned skinned;
        for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id)
            if (HBITMAP bitmap = ::GetTavixSkinHBITMAP(id)) bitmaps.push_back(bitmap);
    }
    EXPECT_GT(bitmaps.size(), 100u);
    for (HBITMAP bitmap : bitmaps) EXPECT_EQ(::GetObjectType(bitmap), 0u);
}

}  // namespace
