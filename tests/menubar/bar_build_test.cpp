// What a menu bar makes of a menu.
#include <windows.h>

#include <commctrl.h>

#include "menubar/bar_fixture.h"
#include "support/common_controls.h"

namespace tavix_test {
namespace {

using MenuBarBuild = BarTest;

std::string ClassOf(HWND window) {
    char name[64] = {};
    ::GetClassNameA(window, name, sizeof name);
    return name;
}

class MenuBarWorlds : public testing::WithParamInterface<ControlsVersion>, public BarTest {
    ControlsWorld m_world{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Worlds, MenuBarWorlds, testing::Values(ControlsVersion::V5, ControlsVersion::V6),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(MenuBarWorlds, HasAButtonForEachItemSideBySide) {
    MakeBar(MakeUsualMenu());
    EXPECT_EQ(ClassOf(bar.m_hWnd), "SkinMenuBar");
    ASSERT_EQ(Access().ButtonCount(), 4);
    int right = ItemRect(0).left;
    for (int i = 0; i < 4; ++i) {
        const CRect item = ItemRect(i);
        EXPECT_EQ(item.left, right) << i;
        EXPECT_GT(item.Width(), 10) << i;
        EXPECT_EQ(item.top, ItemRect(0).top);
        right = item.right;
        CRect byId;
        EXPECT_TRUE(bar.GetRect(static_cast<UINT>(i), byId));
        EXPECT_EQ(byId, item);
    }
    EXPECT_LT(ItemRect(0).Width(), ItemRect(2).Width() + ItemRect(3).Width());
    // As wide as the frame's client area, and as high as a button and a margin.
    CRect client;
    ::GetClientRect(frame.m_hWnd, &client);
    EXPECT_EQ(WindowRect().Width(), client.Width());
    EXPECT_EQ(WindowRect().Height(), ItemRect(0).bottom + 4);
}

TEST_P(MenuBarWorlds, ItsButtonsAreEnabledTextsWithTheirItemsPositions) {
    MakeBar(MakeUsualMenu());
    const char* texts[] = {"&File", "&Edit", "&View", "&Help"};
    for (int i = 0; i < 4; ++i) {
        TBBUTTON button{};
        ASSERT_TRUE(::SendMessageA(bar.m_hWnd, TB_GETBUTTON, static_cast<WPARAM>(i),
                                   reinterpret_cast<LPARAM>(&button)));
        EXPECT_EQ(button.iBitmap, -1);
        EXPECT_EQ(button.idCommand, i);
        EXPECT_EQ(button.fsState, TBSTATE_ENABLED);
        EXPECT_EQ(button.fsStyle, BTNS_AUTOSIZE);
        EXPECT_EQ(button.dwData, 0u);
        EXPECT_EQ(button.iString, i);
        char text[64] = {};
        ::SendMessageA(bar.m_hWnd, TB_GETBUTTONTEXTA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        EXPECT_STREQ(text, texts[i]);
        EXPECT_STREQ(Access().Texts()[i], texts[i]);
    }
    EXPECT_EQ(::GetWindowLongA(bar.m_hWnd, GWL_STYLE) & (TBSTYLE_FLAT | TBSTYLE_TRANSPARENT), 0)
        << "on only while buttons are added";
}

TEST_P(MenuBarWorlds, MapsLettersWhateverTheirCaseToItemsPositions) {
    MakeBar(MakeMenu({{"&File", 1}, {"R && &D", 2}, {"None", 3}, {"&Ümlaut", 4}, {"&7 up", 5}, {"End&", 6}}));
    const auto map = [&](char key) {
        UINT id = 99;
        return Access().MapAccelerator(key, id) ? static_cast<int>(id) : -1;
    };
    EXPECT_EQ(map('F'), 0);
    EXPECT_EQ(map('f'), 0);
    EXPECT_EQ(map('D'), 1);
    EXPECT_EQ(map('&'), -1);
    EXPECT_EQ(map('N'), -1);
    EXPECT_EQ(map('7'), 4);
    EXPECT_EQ(map('E'), -1);
}

TEST_F(MenuBarBuild, AnItemWithoutTextHasNoButtonAndTheOthersKeepTheirPositions) {
    const HMENU menu = MakeMenu({{"&A", 1}, {nullptr}, {"&B", 2}, {"", 3}, {"&C", 4}});
    MakeBar(menu);
    ASSERT_EQ(Access().ButtonCount(), 3);
    const int positions[] = {0, 2, 4};
    for (int i = 0; i < 3; ++i) {
        TBBUTTON button{};
        ::SendMessageA(bar.m_hWnd, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        EXPECT_EQ(button.idCommand, positions[i]);
    }
    UINT id = 0;
    EXPECT_TRUE(Access().MapAccelerator('C', id));
    EXPECT_EQ(id, 4u) << "a position, taken for a button by those who ask";
}

TEST_F(MenuBarBuild, EqualTextsShareAStringAndPaintingTakesEntriesInTheirOrder) {
    MakeBar(MakeMenu({{"Same", 1}, {"Same", 2}, {"Other", 3}}));
    ASSERT_EQ(Access().ButtonCount(), 3);
    EXPECT_EQ(Access().Texts().GetSize(), 2);
    EXPECT_STREQ(Access().Texts()[1], "Other") << "what button 1 paints";
    int strings[3];
    for (int i = 0; i < 3; ++i) {
        TBBUTTON button{};
        ::SendMessageA(bar.m_hWnd, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        strings[i] = static_cast<int>(button.iString);
    }
    EXPECT_EQ(strings[0], strings[1]);
    EXPECT_NE(strings[0], strings[2]);
}

TEST_F(MenuBarBuild, ASecondMenuKeepsTheFirstOnesTexts) {
    MakeBar(MakeMenu({{"One", 1}, {"Two", 2}}));
    const HMENU first = bar.GetMenu();
    const HMENU second = MakeMenu({{"Two", 1}, {"Three", 2}});
    EXPECT_EQ(bar.LoadMenuA(second, nullptr), first);
    EXPECT_EQ(bar.GetMenu(), second);
    EXPECT_EQ(Access().ButtonCount(), 2);
    ASSERT_EQ(Access().Texts().GetSize(), 3);
    EXPECT_STREQ(Access().Texts()[0], "One") << "painted on the button of Two";
    EXPECT_STREQ(Access().Texts()[2], "Three");
    ::DestroyMenu(first);
}

TEST_F(MenuBarBuild, SynchronizingGivesEachButtonItsOwnText) {
    MakeBar(MakeMenu({{"One", 1}, {"Two", 2}}));
    const HMENU frames = ::GetMenu(frame.m_hWnd);
    const HMENU other = MakeMenu({{"Same", 1}, {nullptr}, {"Same", 2}, {"Third", 3}});
    bar.SynchronizeMenubar(other);
    EXPECT_EQ(bar.GetMenu(), other);
    EXPECT_EQ(::GetMenu(frame.m_hWnd), frames) << "the frame's is left alone";
    ASSERT_EQ(Access().ButtonCount(), 3);
    ASSERT_EQ(Access().Texts().GetSize(), 3);
    EXPECT_STREQ(Access().Texts()[0], "Same");
    EXPECT_STREQ(Access().Texts()[1], "Same");
    EXPECT_STREQ(Access().Texts()[2], "Third");
    TBBUTTON button{};
    ::SendMessageA(bar.m_hWnd, TB_GETBUTTON, 1, reinterpret_cast<LPARAM>(&button));
    EXPECT_EQ(button.iString, 0) << "an entry's index, though the control's strings begin with older ones";
    EXPECT_EQ(button.idCommand, 2);
    bar.SynchronizeMenubar(nullptr);
    EXPECT_EQ(Access().ButtonCount(), 0);
    EXPECT_EQ(bar.GetMenu(), nullptr);
    ::DestroyMenu(other);
}

TEST_F(MenuBarBuild, LongTextsEndAfter63Characters) {
    const std::string longText(200, 'w'), exact(63, 'x');
    MakeBar(MakeMenu({{longText.c_str(), 1}, {exact.c_str(), 2}}));
    EXPECT_EQ(Access().Texts()[0].GetLength(), 63);
    EXPECT_EQ(Access().Texts()[1].GetLength(), 63);
    bar.SynchronizeMenubar(bar.GetMenu());
    EXPECT_EQ(Access().Texts()[0].GetLength(), 63);
    EXPECT_EQ(Access().ButtonCount(), 2);
}

TEST_F(MenuBarBuild, TheFrameGetsTheMenuTheMessageAndTheProperty) {
    frame.log.Listen({1029});
    const HMENU menu = MakeUsualMenu();
    MakeBar(menu);
    EXPECT_EQ(::GetMenu(frame.m_hWnd), menu);
    EXPECT_EQ(::GetPropA(frame.m_hWnd, "menubar"), &bar);
    // The frame's skin takes the message.
    EXPECT_FALSE(frame.log.Has(1029));
}

TEST_F(MenuBarBuild, AFrameWithoutAMenuGetsNone) {
    const HMENU former = ::GetMenu(frame.m_hWnd);
    ::SetMenu(frame.m_hWnd, nullptr);
    ::DestroyMenu(former);
    const HMENU menu = MakeUsualMenu();
    MakeBar(menu);
    EXPECT_EQ(::GetMenu(frame.m_hWnd), nullptr);
    EXPECT_EQ(::GetPropA(frame.m_hWnd, "menubar"), nullptr);
    EXPECT_EQ(Access().ButtonCount(), 4) << "the bar shows it all the same";
    ::DestroyMenu(menu);
}

TEST_F(MenuBarBuild, ANullOrEmptyMenuLeavesNoButtons) {
    MakeBar(MakeUsualMenu());
    const HMENU usual = bar.GetMenu();
    const HMENU empty = ::CreateMenu();
    EXPECT_EQ(bar.LoadMenuA(empty, nullptr), usual);
    EXPECT_EQ(Access().ButtonCount(), 0);
    const HMENU window = ::CreatePopupMenu();
    Access().SetWindowMenu(window);
    EXPECT_EQ(bar.LoadMenuA(static_cast<HMENU>(nullptr), nullptr), empty);
    EXPECT_EQ(bar.GetMenu(), nullptr);
    EXPECT_EQ(Access().ButtonCount(), 0);
    EXPECT_EQ(Access().WindowMenu(), window) << "a null menu leaves the window menu as it was";
    EXPECT_EQ(::GetMenu(frame.m_hWnd), nullptr);
    bar.LoadMenuA("no such resource");
    bar.LoadMenuA(UINT{12345});
    EXPECT_EQ(Access().ButtonCount(), 0);
    for (const HMENU menu : {usual, empty, window}) ::DestroyMenu(menu);
}

TEST_F(MenuBarBuild, ADeadMenuIsAnEmptyOne) {
    MakeBar(MakeUsualMenu());
    const HMENU dead = ::CreateMenu();
    ::DestroyMenu(dead);
    bar.SynchronizeMenubar(dead);
    EXPECT_EQ(Access().ButtonCount(), 0);
    EXPECT_FALSE(Paint().pixels.empty());
    EXPECT_EQ(Access().SubMenuOf(0), nullptr);
}

TEST_F(MenuBarBuild, WorksWithoutAWindow) {
    const HMENU menu = MakeUsualMenu();
    EXPECT_EQ(bar.LoadMenuA(menu, nullptr), nullptr);
    EXPECT_EQ(bar.GetMenu(), menu);
    bar.SynchronizeMenubar(menu);
    EXPECT_EQ(bar.GetMenu(), menu);
    EXPECT_EQ(Access().Texts().GetSize(), 0);
    EXPECT_EQ(bar.GetHotItem(), -1);
    int popup = 0;
    EXPECT_EQ(bar.GetTrackingState(popup), CSkinMenuBar::TRACKING_IDLE);
    EXPECT_EQ(popup, -1);
    MSG key{nullptr, WM_SYSKEYUP, VK_MENU, 0, 0, {}};
    EXPECT_FALSE(bar.TranslateFrameMessage(&key));
    bar.OnKeyDown(VK_DOWN);
    bar.DrawCaptionBtn(nullptr);
    ::DestroyMenu(menu);
}

TEST_F(MenuBarBuild, OneBarAProcessUntilItsClassIsEnded) {
    MakeBar(MakeUsualMenu());
    {
        CSkinMenuBar second;
        EXPECT_FALSE(second.Create(frame.m_hWnd));
        EXPECT_EQ(second.m_hWnd, nullptr);
    }
    bar.DestroyWindow();
    CSkinMenuBar third;
    EXPECT_FALSE(third.Create(frame.m_hWnd)) << "the class is still there";
    EndBarClass();
    EXPECT_TRUE(third.Create(frame.m_hWnd));
    third.DestroyWindow();
}

TEST_F(MenuBarBuild, TheEndTakesThePropertyFromAFrameWithAMenuOnly) {
    MakeBar(MakeUsualMenu());
    bar.DestroyWindow();
    EXPECT_EQ(::GetPropA(frame.m_hWnd, "menubar"), nullptr);
    EXPECT_EQ(Access().FrameHook().GetSafeHwnd(), nullptr);

    EndBarClass();
    ASSERT_TRUE(bar.Create(frame.m_hWnd));
    const HMENU menu = ::GetMenu(frame.m_hWnd);
    bar.LoadMenuA(menu, nullptr);
    ::SetMenu(frame.m_hWnd, nullptr);
    bar.DestroyWindow();
    EXPECT_EQ(::GetPropA(frame.m_hWnd, "menubar"), &bar) << "left over";
    // The frame doesn't look into it.
    EXPECT_EQ(::SendMessageA(frame.m_hWnd, 1797, 0, 0), 0);
    EXPECT_EQ(::SendMessageA(frame.m_hWnd, WM_MDISETMENU, 0, 0), 0);
    ::SendMessageA(frame.m_hWnd, WM_NCPAINT, 1, 0);
    ::RemovePropA(frame.m_hWnd, "menubar");
    ::DestroyMenu(menu);
}

TEST_F(MenuBarBuild, ItsFontIsTheSystemsForMenusAndFollowsIt) {
    MakeBar(MakeUsualMenu());
    const auto font = [&] { return reinterpret_cast<HFONT>(::SendMessageA(bar.m_hWnd, WM_GETFONT, 0, 0)); };
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = 340;
    ::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    LOGFONTA used{};
    ASSERT_NE(::GetObjectA(font(), sizeof used, &used), 0);
    EXPECT_EQ(used.lfHeight, metrics.lfMenuFont.lfHeight);
    EXPECT_STREQ(used.lfFaceName, metrics.lfMenuFont.lfFaceName);
    // A font of the host's is taken away and deleted with the next change.
    const HFONT hosts = ::CreateFontIndirectA(&used);
    ::SendMessageA(bar.m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(hosts), FALSE);
    ::SendMessageA(frame.m_hWnd, WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_NE(font(), hosts);
    EXPECT_NE(::GetObjectA(font(), sizeof used, &used), 0);
}

TEST_F(MenuBarBuild, TakesTheNativeMenuFromAWindowWhenAsked) {
    MakeBar(MakeUsualMenu());
    const HMENU menu = ::GetMenu(frame.m_hWnd);
    EXPECT_EQ(::SendMessageA(bar.m_hWnd, 2124, reinterpret_cast<WPARAM>(frame.m_hWnd), 0), 0);
    EXPECT_EQ(::GetMenu(frame.m_hWnd), nullptr);
    EXPECT_EQ(::SendMessageA(bar.m_hWnd, 2124, 0, 0), 0);
    ::DestroyMenu(menu);
}

TEST_F(MenuBarBuild, TheIdlePassEnablesItsButtons) {
    MakeBar(MakeUsualMenu());
    ::SendMessageA(bar.m_hWnd, TB_ENABLEBUTTON, 1, FALSE);
    frame.UpdateBars();
    EXPECT_TRUE(::SendMessageA(bar.m_hWnd, TB_ISBUTTONENABLED, 1, 0));
}

// ---------------------------------------------------------------- what the frame does with the bar

TEST_F(MenuBarBuild, TheFrameBringsItUpToDate) {
    MakeBar(MakeUsualMenu());
    const HMENU usual = bar.GetMenu();
    const HMENU other = MakeMenu({{"One", 1}});
    // Another menu of the frame's, announced as MDI does.
    ::SetMenu(frame.m_hWnd, other);
    frame.log.Listen({WM_MDISETMENU});
    ::SendMessageA(frame.m_hWnd, WM_MDISETMENU, 0, 0);
    EXPECT_EQ(bar.GetMenu(), other);
    EXPECT_EQ(Access().ButtonCount(), 1);
    EXPECT_TRUE(frame.log.Has(WM_MDISETMENU)) << "and goes on to the frame";
    // One that the host hands over.
    CMenu handed(usual);
    EXPECT_EQ(::SendMessageA(frame.m_hWnd, 1796, reinterpret_cast<WPARAM>(&handed), 0), 0);
    EXPECT_EQ(bar.GetMenu(), usual);
    EXPECT_EQ(::SendMessageA(frame.m_hWnd, 1796, 0, 0), 0);
    EXPECT_EQ(bar.GetMenu(), usual);
    // The frame's, unless it is empty or missing: then the one that the bar was loaded with.
    ::SendMessageA(frame.m_hWnd, 1797, 0, 0);
    EXPECT_EQ(bar.GetMenu(), other);
    ::SetMenu(frame.m_hWnd, nullptr);
    ::SendMessageA(frame.m_hWnd, 1797, 0, 0);
    EXPECT_EQ(bar.GetMenu(), usual);
    const HMENU empty = ::CreateMenu();
    ::SetMenu(frame.m_hWnd, empty);
    bar.SynchronizeMenubar(other);
    ::SendMessageA(frame.m_hWnd, 1797, 0, 0);
    EXPECT_EQ(bar.GetMenu(), usual);
    ::DestroyMenu(other);
}

TEST_F(MenuBarBuild, TheFrameSwallowsTheSystemsMenuKey) {
    MakeBar(MakeUsualMenu());
    frame.log.Listen({WM_SYSCOMMAND});
    ::SendMessageA(frame.m_hWnd, WM_SYSCOMMAND, SC_KEYMENU, 0);
    EXPECT_FALSE(frame.log.Has(WM_SYSCOMMAND));
}

}  // namespace
}  // namespace tavix_test
