// Items that the host draws, data of the host's, and the keys of an open menu.
#include "menu_item_fixture.h"

namespace tavix_test {
namespace {

using HostItem = MenuItem;

// ---------------------------------------------------------------- items that are not the library's

TEST_F(HostItem, AHostDrawnItemIsMeasuredByTheHostWithItsOwnData) {
    menu->HostDrawn(20, 0x5555);
    Open();
    owner->handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_MEASUREITEM) return {};
        auto* item = reinterpret_cast<MEASUREITEMSTRUCT*>(received.lParam);
        EXPECT_EQ(item->itemData, 0x5555u);
        EXPECT_EQ(item->itemID, 20u);
        item->itemWidth = 123;
        item->itemHeight = 45;
        return 99;
    };
    const MEASUREITEMSTRUCT item = Measured(0);
    EXPECT_EQ(item.itemWidth, 123u);
    EXPECT_EQ(item.itemHeight, 45u);
    EXPECT_EQ(item.itemData, reinterpret_cast<ULONG_PTR>(&Record(0))) << "the record is back in its place";
    EXPECT_EQ(Result(), 99);
}

TEST_F(HostItem, AHostDrawnItemIsDrawnByTheHostInTheSkinsColours) {
    menu->HostDrawn(20, 0x5555);
    Open();
    owner->handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_DRAWITEM) return {};
        const auto& item = *reinterpret_cast<DRAWITEMSTRUCT*>(received.lParam);
        EXPECT_EQ(item.itemData, 0x5555u);
        EXPECT_EQ(item.itemID, 20u);
        EXPECT_EQ(CRect(item.rcItem), CRect(0, 0, 200, 23)) << "a surface of its own";
        EXPECT_EQ(::GetPixel(item.hDC, 5, 5), 0xFEFEFEu);
        const auto fill = [&](const RECT& rect, COLORREF colour) {
            HBRUSH brush = ::CreateSolidBrush(colour);
            ::FillRect(item.hDC, &rect, brush);
            ::DeleteObject(brush);
        };
        fill({0, 0, 10, 10}, ::GetSysColor(COLOR_BTNFACE));
        fill({10, 0, 20, 10}, ::GetSysColor(COLOR_HIGHLIGHT));
        fill({20, 0, 30, 10}, RGB(11, 22, 33));
        fill({-50, -50, -10, -10}, RGB(1, 1, 1));
        ::SetViewportOrgEx(item.hDC, 5, 5, nullptr);  // hosts leave all sorts of things behind
        ::IntersectClipRect(item.hDC, 0, 0, 3, 3);
        return 7;
    };
    Canvas canvas(210, 40, kUntouched);
    DRAWITEMSTRUCT item = Drawing(0, 0, canvas.Dc());
    EXPECT_EQ(::SendMessageA(*owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 0);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(3, 2), Colour(CLR_MENU_BACK)) << "the button's face";
    EXPECT_EQ(picture.At(13, 2), Colour(CLR_HIGHLIGHT)) << "the system's selection";
    EXPECT_EQ(picture.At(23, 2), RGB(11, 22, 33)) << "a colour of the host's own";
    EXPECT_EQ(picture.At(100, 20), Colour(CLR_MENU_BACK)) << "what was left blank";
    EXPECT_EQ(picture.CountOf(kUntouched), 210 * 40 - 200 * 23);
    EXPECT_EQ(item.itemData, reinterpret_cast<ULONG_PTR>(&Record(0)));
    EXPECT_EQ(CRect(item.rcItem), CRect(0, 0, 200, 23)) << "the place stays as the host saw it";
    EXPECT_NE(item.hDC, canvas.Dc());
}

TEST_F(HostItem, AHostMayEndThePopupWhileItDraws) {
    menu->HostDrawn(20, 0x5555).Item(1, "One");
    Open();
    owner->handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_DRAWITEM || received.message == WM_MEASUREITEM) Popup().Destroy();
        return {};
    };
    Canvas canvas(210, 40, kUntouched);
    DRAWITEMSTRUCT item = Drawing(0, 0, canvas.Dc());
    EXPECT_EQ(::SendMessageA(*owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 0);
    EXPECT_EQ(ItemInfo(*menu, 0, MIIM_DATA).dwItemData, 0x5555u);
    Open();
    MEASUREITEMSTRUCT measured{};
    measured.CtlType = ODT_MENU;
    measured.itemData = reinterpret_cast<ULONG_PTR>(&Record(0));
    ::SendMessageA(*owner, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measured));
    EXPECT_EQ(ItemInfo(*menu, 0, MIIM_DATA).dwItemData, 0x5555u);
}

TEST_F(HostItem, DataThatIsNoRecordGoesToTheHostUntouched) {
    menu->Item(1, "One");
    Open();
    std::vector<ULONG_PTR> seen;
    owner->handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_MEASUREITEM)
            seen.push_back(reinterpret_cast<MEASUREITEMSTRUCT*>(received.lParam)->itemData);
        else if (received.message == WM_DRAWITEM)
            seen.push_back(reinterpret_cast<DRAWITEMSTRUCT*>(received.lParam)->itemData);
        else
            return {};
        return 55;
    };
    Canvas canvas(210, 40, kUntouched);
    const ULONG_PTR foreign[] = {0, 1, 0x5555, static_cast<ULONG_PTR>(-1)};
    for (const ULONG_PTR data : foreign) {
        DRAWITEMSTRUCT drawn = Drawing(0, 0, canvas.Dc());
        drawn.itemData = data;
        EXPECT_EQ(::SendMessageA(*owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&drawn)), 55);
        MEASUREITEMSTRUCT measured{};
        measured.CtlType = ODT_MENU;
        measured.itemData = data;
        EXPECT_EQ(::SendMessageA(*owner, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measured)), 55);
    }
    EXPECT_EQ(seen, (std::vector<ULONG_PTR>{0, 0, 1, 1, 0x5555, 0x5555, foreign[3], foreign[3]}));
    EXPECT_EQ(canvas.Take().CountOf(kUntouched), 210 * 40);
}

TEST_F(HostItem, ItemsOfOtherControlsGoToTheHost) {
    menu->Item(1, "One");
    Open();
    owner->handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_DRAWITEM || received.message == WM_MEASUREITEM) return 55;
        return {};
    };
    Canvas canvas(210, 40, kUntouched);
    for (const UINT type : {ODT_BUTTON, ODT_LISTBOX, ODT_COMBOBOX, ODT_STATIC}) {
        DRAWITEMSTRUCT drawn = Drawing(0, 0, canvas.Dc());
        drawn.CtlType = type;
        EXPECT_EQ(::SendMessageA(*owner, WM_DRAWITEM, 1, reinterpret_cast<LPARAM>(&drawn)), 55);
        MEASUREITEMSTRUCT measured{};
        measured.CtlType = type;
        EXPECT_EQ(::SendMessageA(*owner, WM_MEASUREITEM, 1, reinterpret_cast<LPARAM>(&measured)), 55);
    }
}

TEST_F(HostItem, AnItemOfWhatIsNoMenuIsNotDrawn) {
    menu->Item(1, "One").HostDrawn(2, 0x22);
    Open();
    Canvas canvas(210, 40, kUntouched);
    for (int position = 0; position < 2; ++position) {
        DRAWITEMSTRUCT item = Drawing(position, 0, canvas.Dc());
        item.hwndItem = *owner;
        EXPECT_EQ(::SendMessageA(*owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 0);
    }
    EXPECT_FALSE(owner->log.Has(WM_DRAWITEM));
    EXPECT_EQ(canvas.Take().CountOf(kUntouched), 210 * 40);
}

TEST_F(HostItem, AMenuWithoutASkinDrawsNothing) {
    menu->Item(1, "One");
    Open();
    OwnedMenu other;
    other.Item(1, "One");
    Canvas canvas(210, 40, kUntouched);
    DRAWITEMSTRUCT item = Drawing(0, 0, canvas.Dc());
    item.hwndItem = reinterpret_cast<HWND>(static_cast<HMENU>(other));
    EXPECT_EQ(::SendMessageA(*owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 0);
    EXPECT_EQ(canvas.Take().CountOf(kUntouched), 210 * 40);
    EXPECT_FALSE(owner->log.Has(WM_DRAWITEM));
}

// ---------------------------------------------------------------- keys

class MenuKeys : public MenuItem {
protected:
    LRESULT Answer(char key) {
        return ::SendMessageA(*owner, WM_MENUCHAR, MAKEWPARAM(key, MF_POPUP),
                              reinterpret_cast<LPARAM>(static_cast<HMENU>(*menu)));
    }
    void Select(UINT position, bool on) {
        MENUITEMINFOA info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_STATE;
        info.fState = on ? MFS_HILITE : MFS_UNHILITE;
        ASSERT_TRUE(::SetMenuItemInfoA(*menu, position, TRUE, &info));
    }
};

TEST_F(MenuKeys, TheKeyOfACaptionCarriesItsItemOut) {
    menu->Item(1, "&Open").Separator().Item(2, "Save &as\tF12").Item(3, "R&&D").Item(4, "Plain");
    Open();
    EXPECT_EQ(Answer('o'), MAKELRESULT(0, MNC_EXECUTE));
    EXPECT_EQ(Answer('O'), MAKELRESULT(0, MNC_EXECUTE));
    EXPECT_EQ(Answer('a'), MAKELRESULT(2, MNC_EXECUTE));
    EXPECT_EQ(Answer('d'), MAKELRESULT(0, MNC_IGNORE)) << "a doubled ampersand marks no key";
    EXPECT_EQ(Answer('p'), MAKELRESULT(0, MNC_IGNORE));
}

TEST_F(MenuKeys, AmongSeveralItemsTheNextOneIsSelected) {
    menu->Item(1, "&Red").Item(2, "&Rose").Item(3, "&Ruby");
    Open();
    EXPECT_EQ(Answer('r'), MAKELRESULT(0, MNC_SELECT));
    Select(0, true);
    EXPECT_EQ(Answer('r'), MAKELRESULT(1, MNC_SELECT));
    Select(0, false);
    Select(2, true);
    EXPECT_EQ(Answer('r'), MAKELRESULT(0, MNC_SELECT)) << "after the last one comes the first";
}

TEST_F(MenuKeys, AHostThatAnswersForItsMenuIsBelieved) {
    menu->Item(1, "&Open");
    Open();
    owner->handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_MENUCHAR) return MAKELRESULT(3, MNC_CLOSE);
        return {};
    };
    EXPECT_EQ(Answer('o'), MAKELRESULT(3, MNC_CLOSE));
}

TEST_F(MenuKeys, HostDrawnItemsAndOtherMenusAreLeftToTheHost) {
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_ID | MIIM_FTYPE | MIIM_STRING;
    info.fType = MFT_OWNERDRAW;
    info.wID = 9;
    char text[] = "&Open";
    info.dwTypeData = text;
    ::InsertMenuItemA(*menu, 0, TRUE, &info);
    Open();
    EXPECT_EQ(Answer('o'), MAKELRESULT(0, MNC_IGNORE));
    OwnedMenu other;
    other.Item(1, "&Open");
    EXPECT_EQ(::SendMessageA(*owner, WM_MENUCHAR, MAKEWPARAM('o', MF_POPUP),
                             reinterpret_cast<LPARAM>(static_cast<HMENU>(other))),
              MAKELRESULT(0, MNC_IGNORE));
}

}  // namespace
}  // namespace tavix_test
