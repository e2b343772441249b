// Menus as a user meets them: opened by the system, driven by keys and mouse.
#include "menu_fixture.h"

namespace tavix_test {
namespace {

class MenuPopup : public MenuTest {
protected:
    void SetUp() override {
        MenuTest::SetUp();
        m_bitmap = ::CreateBitmap(12, 12, 1, 1, nullptr);
        ASSERT_TRUE(BringToFront(*owner));
        owner->handler = [](const Received& received) -> std::optional<LRESULT> {
            if (received.message != WM_MEASUREITEM) return {};
            auto* item = reinterpret_cast<MEASUREITEMSTRUCT*>(received.lParam);
            item->itemWidth = 90;
            item->itemHeight = 21;
            return TRUE;
        };
    }
    void TearDown() override {
        MenuTest::TearDown();
        ::DeleteObject(m_bitmap);
        EXPECT_TRUE(tavix::ThreadMenus().records.IsEmpty());
        EXPECT_TRUE(tavix::ThreadMenus().skins.IsEmpty());
        EXPECT_EQ(tavix::ThreadMenus().pendingSkin, nullptr);
        EXPECT_EQ(tavix::ThreadMenus().pendingMenu, nullptr);
    }
    HBITMAP Bitmap() const { return m_bitmap; }

private:
    HBITMAP m_bitmap = nullptr;
};

/* The middle of an item, on the screen, from what the system says of it. */
POINT MiddleOf(HMENU menu, UINT position) {
    RECT rect{};
    EXPECT_TRUE(::GetMenuItemRect(nullptr, menu, position, &rect));
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

/* An item's place in its popup's client area. */
CRect PlaceInPopup(HWND popup, HMENU menu, UINT position) {
    CRect rect;
    EXPECT_TRUE(::GetMenuItemRect(nullptr, menu, position, &rect));
    CRect window;
    ::GetWindowRect(popup, &window);
    rect.OffsetRect(-window.left, -window.top);
    return rect;
}

TEST_F(MenuPopup, APopupIsBoundToItsMenuAndPainted) {
    OwnedMenu menu;
    menu.Item(1, "First").Item(2, "Second");
    owner->Track(menu, {[&] {
                     HWND popup = PopupOf(menu);
                     ASSERT_NE(popup, nullptr);
                     EXPECT_EQ(SkinOfPopup(popup)->OwnerWindow(), *owner);
                     EXPECT_EQ(SkinOfPopup(popup)->WindowPosition(), (POINT{300, 200}));
                     EXPECT_TRUE(SkinOfPopup(popup)->HasBackdrop());
                     const Picture client = PictureOfClient(popup);
                     EXPECT_GT(client.CountOf(Colour(CLR_MENU_TEXT_BACK)), client.width * client.height / 3);
                     EXPECT_GT(client.CountOf(::GetSysColor(COLOR_WINDOWTEXT)), 10);
                     EXPECT_EQ(client.At(0, 0), Colour(CLR_MENU_STRIPE))
                         << "no border of the system's is left";
                     EXPECT_EQ(client.At(client.width - 1, client.height - 1), Colour(CLR_MENU_BACK));
                 }});
}

TEST_F(MenuPopup, AllItemsFitTheirPopup) {
    OwnedMenu menu;
    AppendEveryKind(menu, Bitmap());
    owner->Track(menu, {[&] {
                     HWND popup = PopupOf(menu);
                     ASSERT_NE(popup, nullptr);
                     CRect client;
                     ::GetClientRect(popup, &client);
                     for (int position = 0; position < ::GetMenuItemCount(menu); ++position) {
                         const CRect place = PlaceInPopup(popup, menu, static_cast<UINT>(position));
                         EXPECT_LE(place.right, client.right) << position;
                         EXPECT_LE(place.bottom, client.bottom) << position;
                     }
                 }});
}

TEST_F(MenuPopup, KeysChooseAnItem) {
    OwnedMenu menu;
    menu.Item(1, "First").Separator().Item(2, "Second");
    EXPECT_EQ(owner->Track(menu, {Typing(VK_DOWN), Typing(VK_DOWN), Typing(VK_RETURN)}), 2u);
}

TEST_F(MenuPopup, TheSelectionFollowsTheKeysInTheSkinsColours) {
    OwnedMenu menu;
    menu.Item(1, "First").Item(2, "Second");
    const auto selected = [&] { return PictureOfClient(PopupOf(menu)).CountOf(Colour(CLR_MENU_SEL_BACK)); };
    owner->Track(menu, {[&] { EXPECT_EQ(selected(), 0); }, Typing(VK_DOWN),
                        [&] { EXPECT_GT(selected(), 500); }, Typing(VK_DOWN),
                        [&] {
                            EXPECT_GT(selected(), 500);
                            const Picture client = PictureOfClient(PopupOf(menu));
                            EXPECT_EQ(client.At(client.width / 2, client.height - 6),
                                      Colour(CLR_MENU_SEL_BACK));
                        }});
}

TEST_F(MenuPopup, TheMouseChoosesAnItem) {
    OwnedMenu menu;
    menu.Item(1, "First").Item(2, "Second").Item(3, "Third");
    const auto point = [&] {
        const POINT at = MiddleOf(menu, 1);
        ::SetCursorPos(at.x + 1, at.y);
        ::SetCursorPos(at.x, at.y);
    };
    const auto button = [](DWORD flags) {
        return [flags] {
            INPUT input{};
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = flags;
            ::SendInput(1, &input, sizeof input);
        };
    };
    EXPECT_EQ(owner->Track(menu, {point, [] {},
                                  [&] {
                                      const Picture client = PictureOfClient(PopupOf(menu));
                                      EXPECT_GT(client.CountOf(Colour(CLR_MENU_SEL_BACK)), 500);
                                  },
                                  button(MOUSEEVENTF_LEFTDOWN), button(MOUSEEVENTF_LEFTUP)}),
              2u);
    ParkMouse();
}

TEST_F(MenuPopup, MnemonicsWorkInAnOpenMenu) {
    OwnedMenu menu;
    menu.Item(1, "&First").Item(2, "&Second");
    EXPECT_EQ(owner->Track(menu, {Typing('S')}), 2u);
}

TEST_F(MenuPopup, SubmenusHavePopupsOfTheirOwn) {
    OwnedMenu menu;
    menu.Item(1, "First");
    HMENU submenu = menu.Submenu("More");
    ::AppendMenuA(submenu, MF_STRING, 11, "Inside");
    ::AppendMenuA(submenu, MF_STRING | MF_CHECKED, 12, "Checked");
    const std::vector<ItemFacts> before = FactsOf(submenu);
    Picture parentBefore;
    EXPECT_EQ(
        owner->Track(menu, {Typing(VK_DOWN), Typing(VK_DOWN),
                            [&] { parentBefore = PictureOfWindow(PopupOf(menu)); }, Typing(VK_RIGHT),
                            [&] {
                                HWND popup = PopupOf(submenu);
                                ASSERT_NE(popup, nullptr);
                                EXPECT_EQ(ShownPopups().size(), 2u);
                                EXPECT_NE(popup, PopupOf(menu));
                                EXPECT_FALSE(SkinOfPopup(popup)->IsSubMenu());
                                EXPECT_GT(
                                    PictureOfClient(popup).CountOf(TestSkin::ColourOfBitmap(BMP_MENU_CHECK)),
                                    20);
                            },
                            Typing(VK_LEFT),
                            [&] {
                                EXPECT_EQ(PopupOf(submenu), nullptr);
                                EXPECT_EQ(FactsOf(submenu), before) << "given back while the parent shows";
                                EXPECT_EQ(PictureOfWindow(PopupOf(menu)), parentBefore)
                                    << "and the parent is as it was";
                            },
                            Typing(VK_RIGHT), Typing(VK_DOWN), Typing(VK_RETURN)}),
        12u);
    EXPECT_EQ(FactsOf(submenu), before);
}

TEST_F(MenuPopup, MenusComeBackHoweverTheyEnd) {
    OwnedMenu menu;
    menu.Item(1, "First");
    HMENU submenu = menu.Submenu("More");
    AppendEveryKind(menu, Bitmap());
    AppendEveryKind(submenu, Bitmap());
    const std::vector<ItemFacts> before = FactsOf(menu);
    const std::vector<ItemFacts> beforeInside = FactsOf(submenu);
    const std::vector<std::vector<MenuOwner::Step>> ways = {
        {},                   // the program ends it
        {Typing(VK_ESCAPE)},  // cancelled
        {Typing(VK_DOWN), Typing(VK_DOWN), Typing(VK_RIGHT), Typing(VK_ESCAPE), Typing(VK_ESCAPE)},
        {Typing(VK_DOWN), Typing(VK_DOWN), Typing(VK_RIGHT)},                     // both at once
        {Typing(VK_DOWN), Typing(VK_RETURN)},                                     // chosen
        {Typing(VK_DOWN), Typing(VK_DOWN), Typing(VK_RIGHT), Typing(VK_RETURN)},  // chosen inside
        {[&] { ::SendMessageA(*owner, WM_CANCELMODE, 0, 0); }},
    };
    for (std::size_t way = 0; way < ways.size(); ++way) {
        owner->Track(menu, ways[way]);
        const std::vector<ItemFacts> after = FactsOf(menu);
        for (std::size_t i = 0; i < before.size(); ++i) ASSERT_EQ(after[i], before[i]) << "way " << way;
        ASSERT_EQ(FactsOf(submenu), beforeInside) << "way " << way;
    }
}

TEST_F(MenuPopup, AHundredOpeningsLeaveTheMenuAsItWas) {
    OwnedMenu menu;
    AppendEveryKind(menu, Bitmap());
    const std::vector<ItemFacts> before = FactsOf(menu);
    owner->log.Clear();
    owner->log.Listen({WM_ENTERIDLE});
    const auto formerHandler = owner->handler;
    owner->handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_ENTERIDLE) ::EndMenu();
        return formerHandler(received);
    };
    for (int round = 0; round < 100; ++round)
        ::TrackPopupMenu(menu, TPM_RETURNCMD, 300, 200, 0, *owner, nullptr);
    EXPECT_GE(owner->log.Count(WM_ENTERIDLE), 100);
    const std::vector<ItemFacts> after = FactsOf(menu);
    for (std::size_t i = 0; i < before.size(); ++i) ASSERT_EQ(after[i], before[i]) << i;
}

TEST_F(MenuPopup, AThousandOpeningsLeaveNoObjectsBehind) {
    OwnedMenu menu;
    menu.Item(1, "First\tF1").Separator().Item(2, "Checked", MF_CHECKED).Radio(3, "Radio").HostDrawn(4, 44);
    const auto formerHandler = owner->handler;
    owner->handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_ENTERIDLE) ::EndMenu();
        return formerHandler(received);
    };
    for (int round = 0; round < 1000; ++round)
        ASSERT_EQ(::TrackPopupMenu(menu, TPM_RETURNCMD, 300, 200, 0, *owner, nullptr), FALSE);
    // The counts of GDI and USER objects are watched around each test.
    EXPECT_EQ(ShownPopups().size(), 0u);
}

TEST_F(MenuPopup, HostDrawnItemsReachTheHostWithItsOwnData) {
    OwnedMenu menu;
    menu.Item(1, "First").HostDrawn(20, 0x5555).Item(2, "Last");
    std::vector<ULONG_PTR> measured;
    std::vector<ULONG_PTR> drawn;
    owner->handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_MEASUREITEM) {
            auto* item = reinterpret_cast<MEASUREITEMSTRUCT*>(received.lParam);
            measured.push_back(item->itemData);
            item->itemWidth = 120;
            item->itemHeight = 33;
            return TRUE;
        }
        if (received.message == WM_DRAWITEM) {
            const auto* item = reinterpret_cast<DRAWITEMSTRUCT*>(received.lParam);
            drawn.push_back(item->itemData);
            ::FillRect(item->hDC, &item->rcItem,
                       ::GetSysColorBrush(item->itemState & ODS_SELECTED ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
            return TRUE;
        }
        return {};
    };
    EXPECT_EQ(
        owner->Track(menu,
                     {[&] {
                          HWND popup = PopupOf(menu);
                          const CRect place = PlaceInPopup(popup, menu, 1);
                          EXPECT_EQ(place.Height(), 33);
                          EXPECT_EQ(PictureOfClient(popup).CountOf(::GetSysColor(COLOR_BTNFACE)), 0);
                      },
                      Typing(VK_DOWN), Typing(VK_DOWN),
                      [&] { EXPECT_GT(PictureOfClient(PopupOf(menu)).CountOf(Colour(CLR_HIGHLIGHT)), 1000); },
                      Typing(VK_RETURN)}),
        20u);
    ASSERT_FALSE(measured.empty());
    ASSERT_GE(drawn.size(), 2u);
    for (const ULONG_PTR data : measured) EXPECT_EQ(data, 0x5555u);
    for (const ULONG_PTR data : drawn) EXPECT_EQ(data, 0x5555u);
}

TEST_F(MenuPopup, ASystemMenuShowsTheCloseGlyph) {
    { const MenuOwner registersTheClass("Tavix_PaneA"); }
    HWND frame = ::CreateWindowExA(0, "Tavix_PaneA", "frame", WS_OVERLAPPEDWINDOW, 100, 100, 300, 200,
                                   nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(frame, nullptr);
    HMENU menu = ::GetSystemMenu(frame, FALSE);
    int close = 0;
    while (::GetMenuItemID(menu, close) != SC_CLOSE) ++close;
    owner->Track(menu);  // the system greys what the window can't do
    const std::vector<ItemFacts> before = FactsOf(menu);
    owner->Track(menu, {[&] {
                     HWND popup = PopupOf(menu);
                     ASSERT_NE(popup, nullptr);
                     const Picture client = PictureOfClient(popup);
                     const auto darkIn = [&](int position) {
                         CRect place = PlaceInPopup(popup, menu, static_cast<UINT>(position));
                         place.OffsetRect(-1, -1);  // of the frame
                         int dark = 0;
                         for (int y = place.top + 3; y < place.bottom - 3; ++y)
                             for (int x = place.left; x < 20; ++x) dark += GetRValue(client.At(x, y)) < 128;
                         return dark;
                     };
                     EXPECT_GT(darkIn(close), 5);
                     EXPECT_EQ(darkIn(1), 0) << "moving has no picture";
                 }});
    EXPECT_EQ(FactsOf(menu), before);
    ::DestroyWindow(frame);
}

TEST_F(MenuPopup, APopupOfAnUnskinnedWindowKeepsItsItems) {
    MenuOwner plain("TavixTestPlainOwner");
    ASSERT_FALSE(IsSkinned(plain));
    OwnedMenu menu;
    menu.Item(1, "First");
    plain.Track(menu, {[&] {
                    ASSERT_EQ(ShownPopups().size(), 1u);
                    EXPECT_EQ(SkinOfPopup(ShownPopups()[0])->Menu(), nullptr);
                    EXPECT_EQ(ItemInfo(menu, 0, MIIM_FTYPE).fType, static_cast<UINT>(MFT_STRING));
                }});
    // The next popup of a skinned window is not disturbed.
    owner->Track(menu, {[&] { EXPECT_NE(PopupOf(menu), nullptr); }});
}

TEST_F(MenuPopup, APopupWithoutNoticesKeepsItsItems) {
    OwnedMenu menu;
    menu.Item(1, "First");
    owner->Track(menu, {[&] { EXPECT_EQ(PopupOf(menu), nullptr); }}, TPM_NONOTIFY);
    EXPECT_EQ(ItemInfo(menu, 0, MIIM_FTYPE).fType, static_cast<UINT>(MFT_STRING));
}

TEST_F(MenuPopup, MenusOfDialogsAreSkinned) {
    HWND dialog = MakeEmptyDialog();
    OwnedMenu menu;
    menu.Item(1, "First");
    const std::vector<ItemFacts> before = FactsOf(menu);
    bool wasBound = false;
    MessageSpy spy(dialog);
    spy.handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_ENTERIDLE) return {};
        if (PopupOf(menu)) wasBound = true;
        ::EndMenu();
        return 0;
    };
    ::TrackPopupMenu(menu, TPM_RETURNCMD, 300, 200, 0, dialog, nullptr);
    EXPECT_TRUE(wasBound);
    EXPECT_EQ(FactsOf(menu), before);
    ::DestroyWindow(dialog);
}

// ---------------------------------------------------------------- unusual ends

TEST_F(MenuPopup, TheMenuMayBeDestroyedWhileItIsOpen) {
    OwnedMenu menu;
    menu.Item(1, "First").Item(2, "Second");
    owner->Track(menu, {[&] { ::DestroyMenu(menu); }});
    EXPECT_FALSE(::IsMenu(menu));
}

TEST_F(MenuPopup, TheMenuMayChangeWhileItIsOpen) {
    OwnedMenu menu;
    menu.Item(1, "First").Item(2, "Second").Item(3, "Third");
    owner->Track(menu, {[&] {
                            ::DeleteMenu(menu, 0, MF_BYPOSITION);
                            ::AppendMenuA(menu, MF_STRING, 9, "Ninth");
                            ::ModifyMenuA(menu, 0, MF_BYPOSITION | MF_STRING, 8, "Eighth");
                        },
                        Typing(VK_DOWN), Typing(VK_DOWN), Typing(VK_DOWN)});
    const std::vector<ItemFacts> after = FactsOf(menu);
    ASSERT_EQ(after.size(), 3u);
    EXPECT_EQ(after[0].text, "Eighth");
    EXPECT_EQ(after[1].text, "Third");
    EXPECT_EQ(after[2].text, "Ninth");
    for (const ItemFacts& facts : after) {
        EXPECT_EQ(facts.type, static_cast<UINT>(MFT_STRING)) << facts.text;
        EXPECT_EQ(facts.data, 0u) << facts.text;
    }
}

TEST_F(MenuPopup, TheOwnerMayEndWhileItsPopupIsOpen) {
    OwnedMenu menu;
    menu.Item(1, "First").Item(2, "Second");
    const std::vector<ItemFacts> before = FactsOf(menu);
    MenuOwner victim;
    ASSERT_TRUE(BringToFront(victim));
    victim.Track(menu, {[&] {
                     ::EndMenu();  // no menu loop lives without its owner
                     victim.Destroy();
                 }});
    PumpMessages(50);
    EXPECT_EQ(FactsOf(menu), before);
    EXPECT_TRUE(ShownPopups().empty());
}

TEST_F(MenuPopup, SkinningMayEndWhileAPopupIsOpen) {
    OwnedMenu menu;
    menu.Item(1, "First").Item(2, "Second");
    const std::vector<ItemFacts> before = FactsOf(menu);
    EXPECT_EQ(owner->Track(menu, {[&] {
                                      ::UnInstallTavixSkin();
                                      EXPECT_EQ(FactsOf(menu), before);
                                  },
                                  Typing(VK_DOWN), Typing(VK_RETURN)}),
              1u);
    owner.reset();
    EXPECT_EQ(::InstallTavixSkin(skin.Path()), 1);  // for the fixture's end
}

TEST_F(MenuPopup, TheSkinMayChangeWhileAPopupIsOpen) {
    OwnedMenu menu;
    menu.Item(1, "First").Item(2, "Second");
    skin.SetColour(CLR_MENU_TEXT_BACK, RGB(40, 90, 41));
    owner->Track(menu, {[&] { EXPECT_EQ(::SetSkinFromFile(skin.Write()), 1); },
                        [&] { EXPECT_GT(PictureOfClient(PopupOf(menu)).CountOf(RGB(40, 90, 41)), 500); }});
}

TEST_F(MenuPopup, LongMenusAndEmptyOnesAreHarmless) {
    {
        OwnedMenu menu;
        for (UINT i = 0; i < 500; ++i) menu.Item(i + 1, ("Item " + std::to_string(i)).c_str());
        const std::vector<ItemFacts> before = FactsOf(menu);
        EXPECT_EQ(owner->Track(menu, {Typing(VK_END), Typing(VK_RETURN)}), 500u);
        EXPECT_EQ(FactsOf(menu), before);
    }
    OwnedMenu empty;
    ::TrackPopupMenu(empty, TPM_RETURNCMD, 300, 200, 0, *owner, nullptr);
    OwnedMenu long_texts;
    long_texts.Item(1, std::string(255, 'w').c_str()).Item(2, std::string(2000, 'w').c_str());
    const std::vector<ItemFacts> before = FactsOf(long_texts);
    EXPECT_EQ(owner->Track(long_texts, {Typing(VK_DOWN), Typing(VK_DOWN), Typing(VK_RETURN)}), 2u);
    EXPECT_EQ(FactsOf(long_texts), before);
}

}  // namespace
}  // namespace tavix_test
