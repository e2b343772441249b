// A popup's window and its menu find each other, in whichever order they come.
#include "menus/menu_binding.h"
#include "menu_fixture.h"

namespace tavix_test {
namespace {

using MenuBinding = MenuTest;

DWORD CALLBACK BindOnAnotherThread(void* menu) {
    tavix::BindPopupMenu(nullptr, static_cast<HMENU>(menu));
    return tavix::ThreadMenus().pendingMenu == menu;
}

TEST_F(MenuBinding, EveryPopupWindowGetsASkin) {
    BarePopup popup;
    ASSERT_NE(popup.Skin(), nullptr);
    EXPECT_STREQ(popup.Skin()->GetRuntimeClass()->m_lpszClassName, "CSkinMenu");
    EXPECT_EQ(popup.Skin()->Menu(), nullptr);
}

TEST_F(MenuBinding, AWindowThatCameFirstTakesTheMenu) {
    OwnedMenu menu;
    menu.Item(1, "One");
    BarePopup popup;
    EXPECT_EQ(tavix::ThreadMenus().pendingSkin, popup.Skin());
    popup.Bind(*owner, menu);
    EXPECT_EQ(popup.Skin()->Menu(), menu);
    EXPECT_EQ(popup.Skin()->OwnerWindow(), *owner);
    EXPECT_EQ(tavix::ThreadMenus().pendingSkin, nullptr);
    EXPECT_EQ(popup.Skin()->Items().size(), 1u);
}

TEST_F(MenuBinding, AMenuThatCameFirstWaitsForItsWindow) {
    OwnedMenu menu;
    menu.Item(1, "One");
    ::SendMessageA(*owner, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(static_cast<HMENU>(menu)), 0);
    EXPECT_EQ(tavix::ThreadMenus().pendingMenu, menu);
    BarePopup popup;
    EXPECT_EQ(popup.Skin()->Menu(), menu);
    EXPECT_EQ(popup.Skin()->Items().size(), 1u);
    EXPECT_EQ(tavix::ThreadMenus().pendingMenu, nullptr);
    EXPECT_EQ(tavix::ThreadMenus().pendingSkin, nullptr);
    // The owner is told with the menu only; that notice has gone by.
    EXPECT_EQ(popup.Skin()->OwnerWindow(), nullptr);
}

TEST_F(MenuBinding, ACancelledPopupWipesAPendingBinding) {
    OwnedMenu menu;
    menu.Item(1, "One");
    ::SendMessageA(*owner, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(static_cast<HMENU>(menu)), 0);
    ::SendMessageA(*owner, WM_UNINITMENUPOPUP, reinterpret_cast<WPARAM>(static_cast<HMENU>(menu)), 0);
    EXPECT_EQ(tavix::ThreadMenus().pendingMenu, nullptr);
    BarePopup popup;
    EXPECT_EQ(popup.Skin()->Menu(), nullptr) << "the next window is not the cancelled one's";
    ::SendMessageA(*owner, WM_UNINITMENUPOPUP, 0, 0);
    EXPECT_EQ(tavix::ThreadMenus().pendingSkin, nullptr);
    popup.Bind(*owner, menu);
    EXPECT_EQ(popup.Skin()->Menu(), nullptr);
    ::SendMessageA(*owner, WM_UNINITMENUPOPUP, 0, 0);
}

TEST_F(MenuBinding, TheEndOfAPopupReachesNoHandlerOfTheHost) {
    ::SendMessageA(*owner, WM_UNINITMENUPOPUP, 1, 2);
    EXPECT_FALSE(owner->log.Has(WM_UNINITMENUPOPUP));
}

TEST_F(MenuBinding, TheHostHearsOfThePopupBeforeItsItemsAreConverted) {
    OwnedMenu menu;
    menu.Item(1, "One");
    UINT typeSeen = 1;
    owner->handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_INITMENUPOPUP) return {};
        typeSeen = ItemInfo(menu, 0, MIIM_FTYPE).fType;
        menu.Item(2, "Added at the last moment");
        return 66;
    };
    BarePopup popup;
    EXPECT_EQ(::SendMessageA(*owner, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(static_cast<HMENU>(menu)), 0),
              66);
    EXPECT_EQ(typeSeen, static_cast<UINT>(MFT_STRING));
    EXPECT_EQ(popup.Skin()->Items().size(), 2u);
}

TEST_F(MenuBinding, WhatIsNoMenuBindsWithoutItems) {
    BarePopup popup;
    HMENU none = reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(0xFFF1));
    popup.Bind(*owner, none);
    EXPECT_EQ(popup.Skin()->Menu(), nullptr);
    EXPECT_EQ(tavix::ThreadMenus().SkinOf(none), popup.Skin());
    EXPECT_EQ(popup.Skin()->OwnerWindow(), *owner);
    popup.Destroy();
    EXPECT_EQ(tavix::ThreadMenus().SkinOf(none), nullptr) << "a skin that is gone stays in no table";
}

TEST_F(MenuBinding, NoMenuAtAllIsHarmless) {
    BarePopup popup;
    popup.Bind(*owner, nullptr);
    EXPECT_EQ(popup.Skin()->Menu(), nullptr);
    EXPECT_EQ(popup.Skin()->OwnerWindow(), nullptr);
    popup.Destroy();
    EXPECT_TRUE(tavix::ThreadMenus().skins.IsEmpty());
}

TEST_F(MenuBinding, OfTwoMenusWithEqualLowWordsTheLaterOneWins) {
    const auto handle = [](ULONG_PTR value) { return reinterpret_cast<HMENU>(value); };
    BarePopup first;
    first.Bind(*owner, handle(0x10FFF1));
    BarePopup second;
    second.Bind(*owner, handle(0x20FFF1));
    EXPECT_EQ(tavix::ThreadMenus().SkinOf(handle(0x10FFF1)), second.Skin());
    first.Destroy();
    EXPECT_EQ(tavix::ThreadMenus().SkinOf(handle(0x20FFF1)), second.Skin()) << "it keeps its place";
    second.Destroy();
    EXPECT_TRUE(tavix::ThreadMenus().skins.IsEmpty());
}

TEST_F(MenuBinding, AMenuThatShowsIsToldItsNewOwner) {
    OwnedMenu menu;
    menu.Item(1, "One");
    BarePopup popup;
    popup.Bind(*owner, menu);
    MenuOwner other;
    popup.Bind(other, menu);
    EXPECT_EQ(popup.Skin()->OwnerWindow(), other);
    EXPECT_EQ(tavix::ThreadMenus().pendingMenu, nullptr);
}

TEST_F(MenuBinding, ASubmenusSkinIsFoundWhenItsParentIsConvertedLater) {
    OwnedMenu menu;
    HMENU submenu = menu.Submenu("More");
    ::AppendMenuA(submenu, MF_STRING, 5, "Five");
    BarePopup child;
    child.Bind(*owner, submenu);
    EXPECT_FALSE(child.Skin()->IsSubMenu());
    BarePopup parent;
    parent.Bind(*owner, menu);
    EXPECT_TRUE(child.Skin()->IsSubMenu());
    EXPECT_EQ(child.Skin()->ParentMenu(), menu);
    EXPECT_FALSE(parent.Skin()->IsSubMenu());
}

TEST_F(MenuBinding, ASubmenuThatOpensFromAShownPopupIsNotMarked) {
    OwnedMenu menu;
    ::AppendMenuA(menu.Submenu("More"), MF_STRING, 5, "Five");
    BarePopup parent;
    parent.Bind(*owner, menu);
    BarePopup child;
    child.Bind(*owner, ::GetSubMenu(menu, 0));
    EXPECT_FALSE(child.Skin()->IsSubMenu()) << "the parent was converted before";
}

TEST_F(MenuBinding, APopupOfAnUnskinnedWindowStaysUnbound) {
    ProbeWindow plain;
    OwnedMenu menu;
    menu.Item(1, "One");
    BarePopup popup;
    popup.Bind(plain, menu);
    EXPECT_EQ(popup.Skin()->Menu(), nullptr);
    EXPECT_EQ(ItemInfo(menu, 0, MIIM_FTYPE).fType, static_cast<UINT>(MFT_STRING));
    CSkinMenu* waiting = tavix::ThreadMenus().pendingSkin;
    EXPECT_EQ(waiting, popup.Skin());
    popup.Destroy();
    EXPECT_EQ(tavix::ThreadMenus().pendingSkin, nullptr) << "what is gone waits no more";
}

TEST_F(MenuBinding, ADialogBindsItsPopupsToo) {
    HWND dialog = MakeEmptyDialog();
    ASSERT_TRUE(IsSkinned(dialog));
    OwnedMenu menu;
    menu.Item(1, "One");
    {
        BarePopup popup;
        EXPECT_EQ(
            ::SendMessageA(dialog, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(static_cast<HMENU>(menu)), 0),
            0);
        EXPECT_EQ(popup.Skin()->Menu(), menu);
        EXPECT_EQ(popup.Skin()->OwnerWindow(), dialog);
    }
    ::SendMessageA(dialog, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(static_cast<HMENU>(menu)), 0);
    BarePopup popup;
    EXPECT_EQ(popup.Skin()->Menu(), menu) << "the menu may come first there too";
    ::DestroyWindow(dialog);
}

TEST_F(MenuBinding, AMenuThatOpensAgainBeforeItsFormerWindowEndsIsGivenBackFirst) {
    OwnedMenu menu;
    menu.Item(1, "One").HostDrawn(2, 0x1234);
    const std::vector<ItemFacts> before = FactsOf(menu);
    BarePopup former;
    former.Bind(*owner, menu);
    BarePopup popup;
    popup.Bind(*owner, menu);
    EXPECT_TRUE(former.Skin()->Items().empty());
    ASSERT_EQ(popup.Skin()->Items().size(), 2u);
    EXPECT_EQ(popup.Skin()->Items()[0]->m_dwMarker, CSkinMenuItem::kConverted);
    EXPECT_EQ(popup.Skin()->Items()[1]->m_dwHostItemData, 0x1234u);
    former.Destroy();
    EXPECT_NE(FactsOf(menu), before) << "it is the new window's now";
    popup.Destroy();
    EXPECT_EQ(FactsOf(menu), before);
}

TEST_F(MenuBinding, EachThreadPairsItsOwnPopups) {
    BarePopup popup;
    ASSERT_EQ(tavix::ThreadMenus().pendingSkin, popup.Skin());
    OwnedMenu menu;
    HANDLE thread = ::CreateThread(nullptr, 0, &BindOnAnotherThread, static_cast<HMENU>(menu), 0, nullptr);
    ::WaitForSingleObject(thread, INFINITE);
    DWORD pairedItself = 0;
    ::GetExitCodeThread(thread, &pairedItself);
    ::CloseHandle(thread);
    EXPECT_EQ(pairedItself, 1u);
    EXPECT_EQ(popup.Skin()->Menu(), nullptr);
    EXPECT_EQ(tavix::ThreadMenus().pendingMenu, nullptr);
}

}  // namespace
}  // namespace tavix_test
