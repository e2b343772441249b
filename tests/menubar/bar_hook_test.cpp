// The bar's place on top of the skins of its frame, and the end of each.
#include "engine/skin_wnd_base.h"
#include "frames/frame_skin.h"
#include "menubar/bar_user.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {
namespace {

CSkinWndBaseClass* HeadOf(HWND window) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    return engine ? engine->GetSkinWndList()->Lookup(window) : nullptr;
}

using MenuBarHook = BarTest;

TEST_F(MenuBarHook, StandsOnTopOfTheFramesSkinAndPassesEverythingOn) {
    CSkinWndBaseClass* skin = HeadOf(frame.m_hWnd);
    ASSERT_NE(dynamic_cast<CSkinFrame*>(skin), nullptr);
    MakeBar(MakeUsualMenu());
    EXPECT_EQ(HeadOf(frame.m_hWnd), &Access().FrameHook());
    EXPECT_TRUE(CSkinWndBaseClass::IsInChain(frame.m_hWnd, skin));
    frame.handler = [](const Received& r) -> std::optional<LRESULT> {
        return r.message == WM_APP + 9 ? std::optional<LRESULT>(static_cast<LRESULT>(r.wParam) + r.lParam)
                                       : std::nullopt;
    };
    EXPECT_EQ(::SendMessageA(frame.m_hWnd, WM_APP + 9, 40, 2), 42);
    char title[32] = {};
    ::SendMessageA(frame.m_hWnd, WM_GETTEXT, sizeof title, reinterpret_cast<LPARAM>(title));
    EXPECT_STREQ(title, "host") << "the frame's skin answers";
    bar.DestroyWindow();
    EXPECT_EQ(HeadOf(frame.m_hWnd), skin);
}

TEST_F(MenuBarHook, ABarCanBeMadeAgainAndAgain) {
    const HMENU menu = ::GetMenu(frame.m_hWnd);
    for (int i = 0; i < 5; ++i) {
        EndBarClass();
        ASSERT_TRUE(bar.Create(frame.m_hWnd));
        bar.LoadMenuA(menu, nullptr);
        EXPECT_EQ(Access().ButtonCount(), 4);
        bar.DestroyWindow();
    }
}

TEST_F(MenuBarHook, AnOwnerThatEndsFirstLetsGoOfIt) {
    // The bar stands in the frame but belongs to another window.
    auto owner = std::make_unique<ProbeWindow>();
    bar.SetOwner(*owner);
    MakeBar(MakeUsualMenu());
    EXPECT_EQ(HeadOf(*owner), &Access().FrameHook());
    EXPECT_EQ(Access().FrameHook().GetSafeHwnd(), owner->Handle());
    owner.reset();
    EXPECT_EQ(Access().FrameHook().GetSafeHwnd(), nullptr);
    bar.SetOwner(nullptr);
    EXPECT_FALSE(Paint().pixels.empty());
    bar.DestroyWindow();
}

TEST_F(MenuBarHook, AnOwnerWithASkinOfItsOwnEndsThatToo) {
    RegisterHostClass("Tavix_PaneB");
    HWND owner = ::CreateWindowExA(0, "Tavix_PaneB", "", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                                   nullptr, ::GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(dynamic_cast<CSkinFrame*>(HeadOf(owner)), nullptr);
    bar.SetOwner(owner);
    MakeBar(MakeUsualMenu());
    EXPECT_EQ(HeadOf(owner), &Access().FrameHook());
    // Run in each round of the watch over objects: the frame's skin holds a font.
    ::DestroyWindow(owner);
    EXPECT_EQ(HeadOf(owner), nullptr);
    EXPECT_EQ(Access().FrameHook().GetSafeHwnd(), nullptr);
    bar.SetOwner(nullptr);
    ::UnregisterClassA("Tavix_PaneB", ::GetModuleHandleA(nullptr));
}

TEST_F(MenuBarHook, SkinningMayEndBeforeTheBar) {
    MakeBar(MakeUsualMenu());
    ::UnInstallTavixSkin();
    EXPECT_EQ(Access().FrameHook().GetSafeHwnd(), nullptr);
    // The frame and the bar go on, unskinned.
    EXPECT_FALSE(Paint().pixels.empty());
    ::SendMessageA(frame.m_hWnd, WM_SYSCOLORCHANGE, 0, 0);
    ::SendMessageA(frame.m_hWnd, 1797, 0, 0);
    bar.DestroyWindow();
    ASSERT_EQ(::InstallTavixSkin(skin.Write()), 1);
}

TEST_F(MenuBarHook, WithoutASkinTheBarWorksByItself) {
    ::UnInstallTavixSkin();
    {
        EndBarClass();
        CFrameWnd plain;
        ASSERT_TRUE(
            plain.Create("Tavix_PaneA", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, kPlace, MakeUsualMenu()));
        CSkinMenuBar lone;
        ASSERT_TRUE(lone.Create(plain.m_hWnd));
        lone.LoadMenuA(::GetMenu(plain.m_hWnd), nullptr);
        plain.RecalcLayout();
        EXPECT_EQ(MenuBarTestAccess{lone}.ButtonCount(), 4);
        MenuBarTestAccess{lone}.SetHotItem(1);
        PumpMessages();
        // Colours of no skin are 0.
        CRect item;
        lone.GetItemRect(1, item);
        EXPECT_EQ(PictureOfClient(lone.m_hWnd).At(item.left, item.top + 2), RGB(0, 0, 0));
    }
    ASSERT_EQ(::InstallTavixSkin(skin.Write()), 1);
}

TEST_F(MenuBarHook, AFrameThatIsNoObjectOfTheFrameworkServesToo) {
    RegisterHostClass("Tavix_PaneC");
    HWND plain = ::CreateWindowExA(0, "Tavix_PaneC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 400, 300,
                                   nullptr, MakeUsualMenu(), ::GetModuleHandleA(nullptr), nullptr);
    ASSERT_TRUE(bar.Create(plain));
    const HMENU menu = ::GetMenu(plain);
    bar.LoadMenuA(menu, nullptr);
    EXPECT_EQ(::GetPropA(plain, "menubar"), &bar);
    EXPECT_EQ(Access().FrameHook().GetSafeHwnd(), plain);
    ::DestroyWindow(plain);
    EXPECT_EQ(bar.m_hWnd, nullptr);
    ::UnregisterClassA("Tavix_PaneC", ::GetModuleHandleA(nullptr));
}

// ---------------------------------------------------------------- ends while a popup is open

using MenuBarEnd = BarUserTest;

TEST_F(MenuBarEnd, TheFrameMayEndUnderAnOpenPopup) {
    Start();
    user->PressesWithAlt('F', OpenedWithItem(0))
        .Does(
            "end the frame", [&] { frame.DestroyWindow(); }, [&] { return CountPopups() == 0; });
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(bar.m_hWnd, nullptr);
    EXPECT_EQ(State(), CSkinMenuBar::TRACKING_IDLE);
    EXPECT_EQ(bar.GetHotItem(), -1);
}

TEST_F(MenuBarEnd, TheBarMayEndUnderItsOpenPopup) {
    Start();
    user->PressesWithAlt('F', OpenedWithItem(0))
        .Does(
            "end the bar", [&] { bar.DestroyWindow(); }, [&] { return CountPopups() == 0; });
    EXPECT_TRUE(user->Run());
    EXPECT_TRUE(::IsWindow(frame.m_hWnd));
}

TEST_F(MenuBarEnd, TheMenuMayEndWhileItIsOpen) {
    Start();
    user->PressesWithAlt('F', OpenedWithItem(0))
        .Does("end the menu",
              [&] {
                  const HMENU menu = bar.GetMenu();
                  ::SetMenu(frame.m_hWnd, nullptr);
                  ::DestroyMenu(menu);
              })
        .Waits()
        .Does(
            "close", [] { ::EndMenu(); }, [] { return CountPopups() == 0; })
        .WaitsFor("rest", [&] { return State() == CSkinMenuBar::TRACKING_IDLE; })
        // Its buttons are still there and lead nowhere.
        .PressesWithAlt('E')
        .WaitsFor("rest", [&] { return State() == CSkinMenuBar::TRACKING_IDLE; });
    EXPECT_TRUE(user->Run());
    ::RemovePropA(frame.m_hWnd, "menubar");
}

TEST_F(MenuBarEnd, ACommandMayEndTheFrame) {
    Start();
    frame.handler = [&](const Received& r) -> std::optional<LRESULT> {
        if (r.message != WM_COMMAND) return std::nullopt;
        ::DestroyWindow(r.window);
        return 0;
    };
    user->PressesWithAlt('V', OpenedWithItem(2)).Presses(VK_RETURN, [&] { return !frame.m_hWnd; });
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(Commands(), std::vector<UINT>{301});
}

/* A frame that owns its bar, and ends with its window, as a host's may. */
class SelfEnding : public CFrameWnd {
public:
    static inline int alive = 0;
    SelfEnding() { ++alive; }
    ~SelfEnding() override { --alive; }
    void PostNcDestroy() override { delete this; }
    CSkinMenuBar bar;
};

TEST_F(MenuBarEnd, TheObjectsMayEndWithTheWindowUnderAnOpenPopup) {
    auto* host = new SelfEnding;
    ASSERT_TRUE(host->Create("Tavix_PaneA", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, kPlace, MakeUsualMenu()));
    ASSERT_TRUE(host->bar.Create(host->m_hWnd));
    host->bar.LoadMenuA(::GetMenu(host->m_hWnd), nullptr);
    host->RecalcLayout();
    ASSERT_TRUE(BringToFront(host->m_hWnd));
    HWND window = host->m_hWnd;
    User ender(bar, window);  // this test's own bar is without a window and passes everything on
    ender
        .Does(
            "press",
            [&] {
                RECT place{};
                host->bar.GetItemRect(1, place);
                ::PostMessageA(host->bar.m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON,
                               MAKELPARAM(place.left + 5, place.top + 5));
            },
            [] { return CountPopups() == 1; })
        .Waits(80)
        .Does(
            "end", [&] { ::DestroyWindow(window); }, [] { return CountPopups() == 0; });
    EXPECT_TRUE(ender.Run());
    EXPECT_EQ(SelfEnding::alive, 0);
    EXPECT_FALSE(::IsWindow(window));
}

TEST_F(MenuBarEnd, TheObjectsMayEndInTheFramesOwnMessages) {
    auto* host = new SelfEnding;
    ASSERT_TRUE(host->Create("Tavix_PaneA", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, kPlace, MakeUsualMenu()));
    ASSERT_TRUE(host->bar.Create(host->m_hWnd));
    host->bar.LoadMenuA(::GetMenu(host->m_hWnd), nullptr);
    // WM_CLOSE passes the hook and the frame's skin on its way; both are ended by it.
    HWND window = host->m_hWnd;
    ::SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(SelfEnding::alive, 0);
    EXPECT_FALSE(::IsWindow(window));
}

}  // namespace
}  // namespace tavix_test
