// The items of an open menu are the library's records; afterwards the menu is what it was.
#include "menu_fixture.h"

namespace tavix_test {
namespace {

class MenuConversion : public MenuTest {
protected:
    void SetUp() override {
        MenuTest::SetUp();
        m_bitmap = ::CreateBitmap(12, 12, 1, 1, nullptr);
    }
    void TearDown() override {
        MenuTest::TearDown();
        ::DeleteObject(m_bitmap);
    }
    HBITMAP Bitmap() const { return m_bitmap; }

    /* Binds a popup to the menu for the length of the scope. */
    struct Open {
        Open(HWND owner, HMENU menu) { popup.Bind(owner, menu); }
        const CSkinMenuItem& Record(int position) const {
            return *popup.Skin()->Items().at(static_cast<std::size_t>(position));
        }
        BarePopup popup;
    };

private:
    HBITMAP m_bitmap = nullptr;
};

bool IsRecord(ULONG_PTR data) { return tavix::ThreadMenus().RecordOf(data) != nullptr; }

TEST_F(MenuConversion, AMenuOfEveryKindComesBackAsItWas) {
    OwnedMenu menu;
    AppendEveryKind(menu, Bitmap());
    const std::vector<ItemFacts> before = FactsOf(menu);
    ASSERT_GT(before.size(), 20u);
    for (int round = 0; round < 100; ++round) {
        {
            Open open(*owner, menu);
            ASSERT_EQ(open.popup.Skin()->Items().size(), before.size());
            ASSERT_NE(FactsOf(menu), before);
        }
        const std::vector<ItemFacts> after = FactsOf(menu);
        ASSERT_EQ(after.size(), before.size());
        for (std::size_t i = 0; i < before.size(); ++i) ASSERT_EQ(after[i], before[i]) << "round " << round;
    }
    EXPECT_TRUE(tavix::ThreadMenus().records.IsEmpty());
    EXPECT_TRUE(tavix::ThreadMenus().skins.IsEmpty());
}

TEST_F(MenuConversion, EveryItemIsOwnerDrawWhileTheMenuIsOpenAndKeepsItsState) {
    OwnedMenu menu;
    AppendEveryKind(menu, Bitmap());
    const std::vector<ItemFacts> before = FactsOf(menu);
    Open open(*owner, menu);
    const std::vector<ItemFacts> now = FactsOf(menu);
    for (std::size_t i = 0; i < before.size(); ++i) {
        SCOPED_TRACE(before[i].text + ", item " + std::to_string(i));
        EXPECT_TRUE(now[i].type & MFT_OWNERDRAW);
        EXPECT_EQ(now[i].state, before[i].state);
        EXPECT_EQ(now[i].text, before[i].text);
        EXPECT_EQ(now[i].submenu, before[i].submenu);
        EXPECT_EQ(now[i].bitmap, before[i].bitmap);
        EXPECT_TRUE(IsRecord(now[i].data));
    }
}

TEST_F(MenuConversion, ARecordKeepsWhatTheItemWas) {
    OwnedMenu menu;
    menu.Item(10, "&Plain\tCtrl+P", MF_CHECKED);
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_DATA;
    info.dwItemData = 0x4242;
    ::SetMenuItemInfoA(menu, 0, TRUE, &info);
    Open open(*owner, menu);
    const CSkinMenuItem& record = open.Record(0);
    EXPECT_EQ(record.m_dwMarker, 0x10101010u);
    EXPECT_EQ(record.m_dwHostItemData, 0x4242u);
    EXPECT_STREQ(record.m_strText, "&Plain\tCtrl+P");
    EXPECT_EQ(record.m_nID, 10u);
    EXPECT_EQ(record.m_nPosition, 0);
    EXPECT_EQ(record.m_nFlags, static_cast<UINT>(MF_CHECKED | MF_BYPOSITION | MF_OWNERDRAW));
    EXPECT_EQ(record.m_pImageList, nullptr);
    EXPECT_EQ(ItemInfo(menu, 0, MIIM_DATA).dwItemData, reinterpret_cast<ULONG_PTR>(&record));
}

TEST_F(MenuConversion, ASeparatorHasNoIdAndNoCaption) {
    OwnedMenu menu;
    ::AppendMenuA(menu, MF_SEPARATOR, 77, nullptr);
    Open open(*owner, menu);
    EXPECT_EQ(open.Record(0).m_nID, 0u);
    EXPECT_TRUE(open.Record(0).m_strText.IsEmpty());
    EXPECT_TRUE(open.Record(0).m_nFlags & MF_SEPARATOR);
    EXPECT_TRUE(open.Record(0).m_nFlags & MF_OWNERDRAW);
    EXPECT_TRUE(open.Record(0).m_nFlags & MF_BYPOSITION);
    EXPECT_EQ(open.Record(0).m_dwMarker, CSkinMenuItem::kConverted);
}

TEST_F(MenuConversion, ASubmenusRecordHasItsHandleAndNoSeparatorsOrRadiosFlag) {
    OwnedMenu menu;
    for (const int count : {0, 1, 2, 8, 10}) {
        HMENU submenu = menu.Submenu(std::to_string(count).c_str());
        for (int i = 0; i < count; ++i) ::AppendMenuA(submenu, MF_STRING, 1, "x");
    }
    Open open(*owner, menu);
    for (int i = 0; i < 5; ++i) {
        const CSkinMenuItem& record = open.Record(i);
        EXPECT_EQ(record.m_nID, reinterpret_cast<UINT_PTR>(::GetSubMenu(menu, i)));
        EXPECT_TRUE(record.m_nFlags & MF_POPUP);
        EXPECT_TRUE(record.m_nFlags & MF_OWNERDRAW);
        EXPECT_TRUE(record.m_nFlags & MF_BYPOSITION);
        EXPECT_FALSE(record.m_nFlags & 0x0A00);
        EXPECT_FALSE(ItemInfo(menu, i, MIIM_FTYPE).fType & (MFT_SEPARATOR | MFT_RADIOCHECK));
    }
}

TEST_F(MenuConversion, AHostDrawnItemIsMarkedAndNotConverted) {
    OwnedMenu menu;
    menu.HostDrawn(20, 0x5555, MF_CHECKED | MF_GRAYED);
    Open open(*owner, menu);
    EXPECT_EQ(open.Record(0).m_dwMarker, 0u);
    EXPECT_EQ(open.Record(0).m_dwHostItemData, 0x5555u);
    EXPECT_EQ(open.Record(0).m_nID, 20u);
    EXPECT_EQ(open.Record(0).m_nFlags, static_cast<UINT>(MF_BYPOSITION | MF_OWNERDRAW));
}

TEST_F(MenuConversion, LongCaptionsAreCutInTheRecordOnly) {
    OwnedMenu menu;
    const std::string just(255, 'a');
    const std::string tooLong(256, 'b');
    const std::string farTooLong(1000, 'c');
    menu.Item(1, just.c_str()).Item(2, tooLong.c_str()).Item(3, farTooLong.c_str()).Item(4, "");
    const std::vector<ItemFacts> before = FactsOf(menu);
    {
        Open open(*owner, menu);
        EXPECT_EQ(std::string(open.Record(0).m_strText), just);
        EXPECT_EQ(std::string(open.Record(1).m_strText), tooLong.substr(0, 255));
        EXPECT_EQ(std::string(open.Record(2).m_strText), farTooLong.substr(0, 255));
        EXPECT_TRUE(open.Record(3).m_strText.IsEmpty());
    }
    EXPECT_EQ(FactsOf(menu), before);
}

TEST_F(MenuConversion, FiveHundredItemsComeBack) {
    OwnedMenu menu;
    for (UINT i = 0; i < 500; ++i)
        menu.Item(i + 1, ("Item " + std::to_string(i)).c_str(), i % 3 ? 0 : MF_CHECKED);
    const std::vector<ItemFacts> before = FactsOf(menu);
    {
        Open open(*owner, menu);
        EXPECT_EQ(open.popup.Skin()->Items().size(), 500u);
    }
    EXPECT_EQ(FactsOf(menu), before);
}

TEST_F(MenuConversion, NestedMenusComeBackInWhicheverOrderTheyEnd) {
    OwnedMenu menu;
    HMENU submenu = menu.Submenu("More");
    AppendEveryKind(menu, Bitmap());
    AppendEveryKind(submenu, Bitmap());
    const std::vector<ItemFacts> before = FactsOf(menu);
    const std::vector<ItemFacts> beforeInside = FactsOf(submenu);
    for (const bool outerFirst : {false, true}) {
        BarePopup outer;
        outer.Bind(*owner, menu);
        BarePopup inner;
        inner.Bind(*owner, submenu);
        EXPECT_NE(FactsOf(submenu), beforeInside);
        (outerFirst ? outer : inner).Destroy();
        (outerFirst ? inner : outer).Destroy();
        EXPECT_EQ(FactsOf(menu), before);
        EXPECT_EQ(FactsOf(submenu), beforeInside);
    }
}

TEST_F(MenuConversion, RestoringTwiceIsHarmless) {
    OwnedMenu menu;
    AppendEveryKind(menu, Bitmap());
    const std::vector<ItemFacts> before = FactsOf(menu);
    Open open(*owner, menu);
    open.popup.Skin()->RestoreItems();
    EXPECT_EQ(FactsOf(menu), before);
    EXPECT_TRUE(open.popup.Skin()->Items().empty());
    open.popup.Skin()->RestoreItems();
    EXPECT_EQ(FactsOf(menu), before);
}

TEST_F(MenuConversion, ConvertingTwiceLosesNothing) {
    OwnedMenu menu;
    AppendEveryKind(menu, Bitmap());
    const std::vector<ItemFacts> before = FactsOf(menu);
    {
        Open open(*owner, menu);
        open.popup.Skin()->ConvertItems();
        EXPECT_EQ(open.popup.Skin()->Items().size(), before.size());
        EXPECT_EQ(open.Record(0).m_dwMarker, CSkinMenuItem::kConverted);
    }
    EXPECT_EQ(FactsOf(menu), before);
}

// ---------------------------------------------------------------- the host changes its menu meanwhile

TEST_F(MenuConversion, WhatTheHostChecksOrDisablesWhileTheMenuIsOpenStays) {
    OwnedMenu menu;
    menu.Item(1, "One").Item(2, "Two").Item(3, "Three");
    {
        Open open(*owner, menu);
        ::CheckMenuItem(menu, 1, MF_BYCOMMAND | MF_CHECKED);
        ::EnableMenuItem(menu, 2, MF_BYCOMMAND | MF_GRAYED);
        ::CheckMenuRadioItem(menu, 3, 3, 3, MF_BYCOMMAND);
    }
    const std::vector<ItemFacts> after = FactsOf(menu);
    EXPECT_EQ(after[0].state, static_cast<UINT>(MFS_CHECKED));
    EXPECT_EQ(after[1].state & MFS_GRAYED, MF_GRAYED | 0u);
    EXPECT_EQ(after[2].type, static_cast<UINT>(MFT_RADIOCHECK));
    EXPECT_EQ(after[2].state, static_cast<UINT>(MFS_CHECKED));
    for (const ItemFacts& facts : after) EXPECT_EQ(facts.data, 0u);
}

TEST_F(MenuConversion, ItemsThatMoveAreGivenBackWhereTheyAre) {
    OwnedMenu menu;
    menu.Item(1, "One").Item(2, "Two").Separator().HostDrawn(3, 0x33).Item(4, "Four");
    std::vector<ItemFacts> expected = FactsOf(menu);
    {
        Open open(*owner, menu);
        ::DeleteMenu(menu, 0, MF_BYPOSITION);
        ::InsertMenuA(menu, 2, MF_BYPOSITION | MF_STRING, 9, "New");
    }
    expected.erase(expected.begin());
    const std::vector<ItemFacts> after = FactsOf(menu);
    ASSERT_EQ(after.size(), 5u);
    EXPECT_EQ(after[2].text, "New");
    EXPECT_EQ(after[2].type, static_cast<UINT>(MFT_STRING));
    EXPECT_EQ(after[0], expected[0]);
    EXPECT_EQ(after[1], expected[1]);
    EXPECT_EQ(after[3], expected[2]);
    EXPECT_EQ(after[4], expected[3]);
}

TEST_F(MenuConversion, AnItemThatTheHostReplacesStaysTheHosts) {
    OwnedMenu menu;
    menu.Item(1, "One").Item(2, "Two");
    {
        Open open(*owner, menu);
        ::ModifyMenuA(menu, 0, MF_BYPOSITION | MF_STRING, 7, "Another one");
        ::ModifyMenuA(menu, 1, MF_BYPOSITION | MF_OWNERDRAW, 8, reinterpret_cast<const char*>(0x88));
    }
    const std::vector<ItemFacts> after = FactsOf(menu);
    EXPECT_EQ(after[0].text, "Another one");
    EXPECT_EQ(after[0].type, static_cast<UINT>(MFT_STRING));
    EXPECT_EQ(after[0].id, 7u);
    EXPECT_FALSE(IsRecord(after[0].data));
    EXPECT_EQ(after[0].data, 0u) << "no address of the library's stays behind";
    EXPECT_EQ(after[1].type, static_cast<UINT>(MFT_OWNERDRAW));
    EXPECT_EQ(after[1].data, 0x88u);
    EXPECT_EQ(after[1].id, 8u);
}

TEST_F(MenuConversion, DataThatTheHostSetsMeanwhileStays) {
    OwnedMenu menu;
    menu.Item(1, "One");
    {
        Open open(*owner, menu);
        MENUITEMINFOA info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_DATA;
        info.dwItemData = 0x9999;
        ::SetMenuItemInfoA(menu, 0, TRUE, &info);
    }
    const std::vector<ItemFacts> after = FactsOf(menu);
    EXPECT_EQ(after[0].data, 0x9999u);
    EXPECT_EQ(after[0].type, static_cast<UINT>(MFT_STRING)) << "the system draws it again";
    EXPECT_EQ(after[0].text, "One");
}

TEST_F(MenuConversion, AMenuThatIsEmptiedOrDestroyedWhileOpenIsForgotten) {
    {
        OwnedMenu menu;
        menu.Item(1, "One").Item(2, "Two");
        Open open(*owner, menu);
        while (::DeleteMenu(menu, 0, MF_BYPOSITION)) {
        }
        open.popup.Destroy();
        EXPECT_EQ(::GetMenuItemCount(menu), 0);
    }
    {
        OwnedMenu menu;
        menu.Item(1, "One").Submenu("More");
        Open open(*owner, menu);
        ::DestroyMenu(menu);
        open.popup.Destroy();
    }
    EXPECT_TRUE(tavix::ThreadMenus().records.IsEmpty());
    EXPECT_TRUE(tavix::ThreadMenus().skins.IsEmpty());
}

// ---------------------------------------------------------------- ends

TEST_F(MenuConversion, EndingTheSkinningWhileTheMenuIsOpenGivesItBack) {
    OwnedMenu menu;
    AppendEveryKind(menu, Bitmap());
    const std::vector<ItemFacts> before = FactsOf(menu);
    {
        Open open(*owner, menu);
        ::UnInstallTavixSkin();
        EXPECT_EQ(FactsOf(menu), before);
        open.popup.Destroy();
    }
    EXPECT_EQ(FactsOf(menu), before);
    EXPECT_TRUE(tavix::ThreadMenus().records.IsEmpty());
    owner.reset();
    EXPECT_EQ(::InstallTavixSkin(skin.Path()), 1);  // for the fixture's end
}

TEST_F(MenuConversion, HidingThePopupGivesItsMenuBackAtTheNextMessages) {
    OwnedMenu menu;
    AppendEveryKind(menu, Bitmap());
    const std::vector<ItemFacts> before = FactsOf(menu);
    Open open(*owner, menu);
    ::ShowWindow(open.popup, SW_SHOWNA);
    ::ShowWindow(open.popup, SW_HIDE);
    EXPECT_NE(open.popup.Skin(), nullptr) << "not yet";
    PumpMessages();
    EXPECT_TRUE(::IsWindow(open.popup)) << "the system keeps the window";
    EXPECT_EQ(open.popup.Skin(), nullptr);
    EXPECT_EQ(FactsOf(menu), before);
}

}  // namespace
}  // namespace tavix_test
