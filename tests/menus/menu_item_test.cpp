// Items of an open popup, as the owner's messages have them measured and drawn.
#include <algorithm>
#include <climits>

#include "menu_fixture.h"

namespace tavix_test {
namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kUntouched = RGB(1, 2, 3);
constexpr COLORREF kMarkKey = 0xCFCBC2;
constexpr RECT kPlace{3, 2, 203, 25};  // 200 by 23

class MenuItem : public MenuTest {
protected:
    MenuItem() {
        // Grounds that differ from all else, and from the system's text colours.
        skin.SetBitmap(BMP_MENU_CHECK, 16, 16, RGB(200, 10, 20));
        skin.SetBitmap(BMP_MENU_RADIO, 16, 16, RGB(10, 200, 20));
    }
    void SetUp() override {
        MenuTest::SetUp();
        menu.emplace();
    }
    void TearDown() override {
        m_popup.reset();
        menu.reset();
        MenuTest::TearDown();
    }

    void Open() {
        m_popup.emplace();
        m_popup->Bind(*owner, *menu);
    }
    CSkinMenuItem& Record(int position) {
        return *m_popup->Skin()->Items().at(static_cast<std::size_t>(position));
    }
    MEASUREITEMSTRUCT Measured(int position) {
        MEASUREITEMSTRUCT item{};
        item.CtlType = ODT_MENU;
        item.itemID = static_cast<UINT>(Record(position).m_nID);
        item.itemWidth = 7;
        item.itemHeight = 7;
        item.itemData = reinterpret_cast<ULONG_PTR>(&Record(position));
        m_result = ::SendMessageA(*owner, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item));
        return item;
    }
    DRAWITEMSTRUCT Drawing(int position, UINT state, HDC dc, const RECT& place = kPlace) {
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_MENU;
        item.itemID = static_cast<UINT>(Record(position).m_nID);
        item.itemAction = ODA_DRAWENTIRE;
        item.itemState = state;
        item.hwndItem = reinterpret_cast<HWND>(static_cast<HMENU>(*menu));
        item.hDC = dc;
        item.rcItem = place;
        item.itemData = reinterpret_cast<ULONG_PTR>(&Record(position));
        return item;
    }
    Picture Drawn(int position, UINT state = 0, const RECT& place = kPlace) {
        Canvas canvas(210, 40, kUntouched);
        DRAWITEMSTRUCT item = Drawing(position, state, canvas.Dc(), place);
        m_result = ::SendMessageA(*owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
        return canvas.Take();
    }
    /* What an item's picture is made of, drawn with the platform's own operations. */
    struct Reference {
        COLORREF stripe, ground, border, text;
    };
    Picture Expected(const Reference& look, const char* left, const char* right) const {
        Canvas canvas(210, 40, kUntouched);
        HDC dc = canvas.Dc();
        const auto fill = [dc](const RECT& rect, COLORREF colour) {
            HBRUSH brush = ::CreateSolidBrush(colour);
            ::FillRect(dc, &rect, brush);
            ::DeleteObject(brush);
        };
        fill(kPlace, look.border);
        fill({kPlace.left + 1, kPlace.top + 1, kPlace.right - 1, kPlace.bottom - 1}, look.ground);
        if (look.stripe != look.ground) {
            fill({kPlace.left, kPlace.top, 20, kPlace.bottom}, look.stripe);
            fill({20, kPlace.top, kPlace.right, kPlace.bottom}, look.ground);
        }
        HFONT font = MenuFont();
        HGDIOBJ former = ::SelectObject(dc, font);
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, look.text);
        RECT text{26, kPlace.top, kPlace.right - 12, kPlace.bottom};
        ::DrawTextA(dc, left, -1, &text, DT_VCENTER | DT_SINGLELINE);
        ::DrawTextA(dc, right, -1, &text, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
        ::SelectObject(dc, former);
        ::DeleteObject(font);
        return canvas.Take();
    }
    static HFONT MenuFont() {
        NONCLIENTMETRICSA metrics{};
        metrics.cbSize = 340;
        ::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
        return ::CreateFontIndirectA(&metrics.lfMenuFont);
    }
    static SIZE ExtentOf(const char* text) {
        HDC dc = ::GetDC(nullptr);
        HFONT font = MenuFont();
        HGDIOBJ former = ::SelectObject(dc, font);
        SIZE size{};
        ::GetTextExtentPoint32A(dc, text, ::lstrlenA(text), &size);
        ::SelectObject(dc, former);
        ::DeleteObject(font);
        ::ReleaseDC(nullptr, dc);
        return size;
    }
    Reference Plain() const {
        return {kWhite, Colour(CLR_MENU_TEXT_BACK), Colour(CLR_MENU_TEXT_BACK),
                ::GetSysColor(COLOR_WINDOWTEXT)};
    }
    Reference Selected() const {
        const COLORREF ground = Colour(CLR_MENU_SEL_BACK);
        return {ground, ground, Colour(CLR_MENU_SEL_BORDER), ::GetSysColor(COLOR_HIGHLIGHTTEXT)};
    }
    LRESULT Result() const { return m_result; }
    BarePopup& Popup() { return *m_popup; }

    std::optional<OwnedMenu> menu;

private:
    std::optional<BarePopup> m_popup;
    LRESULT m_result = -1;
};

// ---------------------------------------------------------------- measuring

TEST_F(MenuItem, ASeparatorIsTwelveHighWhateverTheFont) {
    menu->Separator();
    Open();
    EXPECT_EQ(Measured(0).itemHeight, 12u);
    EXPECT_EQ(Measured(0).itemWidth, 7u) << "its width stays as it was asked with";
    EXPECT_EQ(Result(), 0);
    EXPECT_FALSE(owner->log.Has(WM_MEASUREITEM));
}

TEST_F(MenuItem, AnItemIsAsLargeAsItsCaptionAndAMargin) {
    menu->Item(1, "An item");
    Open();
    const SIZE text = ExtentOf("An item");
    EXPECT_EQ(Measured(0).itemWidth, static_cast<UINT>(text.cx + 40));
    EXPECT_EQ(Measured(0).itemHeight, static_cast<UINT>(std::max<LONG>(text.cy, 20) + 3));
    EXPECT_EQ(Measured(0).itemHeight, 23u) << "the least there is, with a font of ordinary size";
}

TEST_F(MenuItem, AmpersandsCountAsTheyShow) {
    menu->Item(1, "&Salt && &pepper").Item(2, "&&&&").Item(3, "&").Item(4, "a&");
    Open();
    EXPECT_EQ(Measured(0).itemWidth, static_cast<UINT>(ExtentOf("Salt & pepper").cx + 40));
    EXPECT_EQ(Measured(1).itemWidth, static_cast<UINT>(ExtentOf("&&").cx + 40));
    EXPECT_EQ(Measured(2).itemWidth, 40u);
    EXPECT_EQ(Measured(3).itemWidth, static_cast<UINT>(ExtentOf("a").cx + 40));
}

TEST_F(MenuItem, ATabIsMeasuredAsACharacter) {
    menu->Item(1, "Open\tCtrl+O");
    Open();
    EXPECT_EQ(Measured(0).itemWidth, static_cast<UINT>(ExtentOf("Open\tCtrl+O").cx + 40));
}

TEST_F(MenuItem, AnItemWithoutTextHasTheMarginsAlone) {
    menu->Item(1, "");
    Open();
    EXPECT_EQ(Measured(0).itemWidth, 40u);
    EXPECT_EQ(Measured(0).itemHeight, 23u);
}

TEST_F(MenuItem, ASystemCommandIsAsWideAsTheItemAfterIt) {
    menu->Item(SC_RESTORE, "Short").Separator().Item(SC_CLOSE, "x").Item(5, "The longest of all");
    menu->Item(SC_MOVE, "Last");
    Open();
    const UINT longest = static_cast<UINT>(ExtentOf("The longest of all").cx + 40);
    EXPECT_EQ(Measured(2).itemWidth, longest);
    EXPECT_EQ(Measured(0).itemWidth, longest) << "over the separator, and by way of the command between";
    EXPECT_EQ(Measured(0).itemHeight, 23u);
    EXPECT_EQ(Measured(3).itemWidth, longest);
    EXPECT_EQ(Measured(4).itemWidth, static_cast<UINT>(ExtentOf("Last").cx + 40)) << "nothing follows";
}

TEST_F(MenuItem, OnlyCommandsOfTheSystemsRangeLookAhead) {
    const UINT limits[] = {0xEFFF, 0xF000, 0xF15F, 0xF160};
    for (const UINT id : limits) menu->Item(id, "s").Item(1, "A long one");
    Open();
    const UINT own = static_cast<UINT>(ExtentOf("s").cx + 40);
    const UINT next = static_cast<UINT>(ExtentOf("A long one").cx + 40);
    EXPECT_EQ(Measured(0).itemWidth, own);
    EXPECT_EQ(Measured(2).itemWidth, next);
    EXPECT_EQ(Measured(4).itemWidth, next);
    EXPECT_EQ(Measured(6).itemWidth, own);
}

// ---------------------------------------------------------------- drawing

TEST_F(MenuItem, APlainItemIsWhiteBesideItsGround) {
    menu->Item(1, "&Plain");
    Open();
    EXPECT_EQ(Drawn(0), Expected(Plain(), "&Plain", ""));
    EXPECT_EQ(Result(), 0);
    EXPECT_FALSE(owner->log.Has(WM_DRAWITEM));
}

TEST_F(MenuItem, ATabMovesTheRestToTheRight) {
    menu->Item(1, "Open\tCtrl+O").Item(2, "\tAlone").Item(3, "Nothing\t").Item(4, "One\tTwo\tThree");
    Open();
    EXPECT_EQ(Drawn(0), Expected(Plain(), "Open", "Ctrl+O"));
    EXPECT_EQ(Drawn(1), Expected(Plain(), "", "Alone"));
    EXPECT_EQ(Drawn(2), Expected(Plain(), "Nothing", ""));
    EXPECT_EQ(Drawn(3), Expected(Plain(), "One", "Two\tThree")) << "the first tab splits";
}

TEST_F(MenuItem, ASelectedItemIsFilledAndFramed) {
    menu->Item(1, "Chosen\tF2");
    Open();
    const Picture expected = Expected(Selected(), "Chosen", "F2");
    EXPECT_EQ(Drawn(0, ODS_SELECTED), expected);
    EXPECT_EQ(Drawn(0, ODS_HOTLIGHT), expected) << "hot is selected";
}

TEST_F(MenuItem, ADisabledItemHasGreyTextSelectedOrNot) {
    menu->Item(1, "No");
    Open();
    Reference plain = Plain();
    Reference selected = Selected();
    plain.text = selected.text = ::GetSysColor(COLOR_GRAYTEXT);
    for (const UINT state : {ODS_GRAYED, ODS_DISABLED}) {
        EXPECT_EQ(Drawn(0, state), Expected(plain, "No", ""));
        EXPECT_EQ(Drawn(0, state | ODS_SELECTED), Expected(selected, "No", ""));
    }
}

TEST_F(MenuItem, AnInactiveItemIsNotShownAsSelected) {
    menu->Item(1, "Idle");
    Open();
    const Picture expected = Expected(Plain(), "Idle", "");
    EXPECT_EQ(Drawn(0, ODS_INACTIVE), expected);
    EXPECT_EQ(Drawn(0, ODS_INACTIVE | ODS_SELECTED), expected);
}

TEST_F(MenuItem, ASeparatorIsALineThroughItsMiddle) {
    menu->Separator();
    Open();
    for (const UINT state : {0u, static_cast<UINT>(ODS_SELECTED)}) {
        const RECT place{3, 2, 203, 14};
        const Picture picture = Drawn(0, state, place);
        EXPECT_EQ(picture.CountOf(Colour(CLR_MENU_SEPARATOR)), 203 - 26);
        EXPECT_EQ(picture.At(26, 8), Colour(CLR_MENU_SEPARATOR));
        EXPECT_EQ(picture.At(202, 8), Colour(CLR_MENU_SEPARATOR));
        EXPECT_EQ(picture.At(25, 8), Colour(CLR_MENU_TEXT_BACK));
        EXPECT_EQ(picture.At(19, 8), kWhite);
        EXPECT_EQ(picture.CountOf(Colour(CLR_MENU_SEL_BACK)), 0);
    }
}

TEST_F(MenuItem, TheStripeEndsAtTwentyWhereverTheItemBegins) {
    menu->Item(1, "");
    Open();
    for (const int left : {0, 3, 12, 19}) {
        const Picture picture = Drawn(0, 0, {left, 2, 203, 25});
        EXPECT_EQ(picture.CountOf(kWhite), (20 - left) * 23);
        EXPECT_EQ(picture.At(20, 2), Colour(CLR_MENU_TEXT_BACK));
    }
    // In a second column it lies before the item, and the item has its ground alone.
    const Picture picture = Drawn(0, 0, {100, 2, 203, 25});
    EXPECT_EQ(picture.At(99, 2), kUntouched) << "nothing is painted outside of the item";
    EXPECT_EQ(picture.CountOf(Colour(CLR_MENU_TEXT_BACK)), 103 * 23);
}

TEST_F(MenuItem, NothingIsPaintedOutsideOfTheItem) {
    menu->Item(1, "Text").Item(2, std::string(200, 'W').c_str());
    Open();
    for (int position = 0; position < 2; ++position) {
        const Picture picture = Drawn(position, ODS_SELECTED);
        EXPECT_EQ(picture.CountOf(kUntouched), 210 * 40 - 200 * 23);
    }
}

TEST_F(MenuItem, EmptyPlacesAreHarmless) {
    menu->Item(1, "Text", MF_CHECKED);
    Open();
    EXPECT_EQ(Drawn(0, 0, {50, 10, 50, 20}).CountOf(kUntouched), 210 * 40);
    EXPECT_EQ(Drawn(0, 0, {50, 10, 20, 5}).CountOf(kUntouched), 210 * 40);
    Drawn(0, ODS_SELECTED, {LONG_MIN, LONG_MIN, LONG_MAX, LONG_MAX});
    EXPECT_EQ(Result(), 0);
}

// ---------------------------------------------------------------- marks

TEST_F(MenuItem, ACheckedItemShowsTheCheckMark) {
    menu->Item(1, "", MF_CHECKED);
    Open();
    const Picture picture = Drawn(0, ODS_CHECKED);
    EXPECT_EQ(picture.CountOf(RGB(200, 10, 20)), 16 * 16);
    EXPECT_EQ(picture.At(6, 5), RGB(200, 10, 20));
    EXPECT_EQ(picture.At(21, 20), RGB(200, 10, 20));
    EXPECT_EQ(Drawn(0).CountOf(RGB(200, 10, 20)), 0) << "the state asked for counts";
}

TEST_F(MenuItem, ACheckedRadioItemShowsTheOtherMarkAtALargerPlace) {
    menu->Radio(1, "");
    Open();
    const Picture picture = Drawn(0, ODS_CHECKED);
    EXPECT_EQ(picture.CountOf(RGB(10, 200, 20)), 16 * 16);
    EXPECT_EQ(picture.At(2, 4), RGB(10, 200, 20)) << "four to the left, one up";
    EXPECT_EQ(picture.At(17, 19), RGB(10, 200, 20));
}

TEST_F(MenuItem, AHostsOwnCheckBitmapOnlyChoosesTheOtherMark) {
    HBITMAP own = ::CreateBitmap(9, 9, 1, 1, nullptr);
    menu->Item(1, "", MF_CHECKED);
    ::SetMenuItemBitmaps(*menu, 1, MF_BYCOMMAND, nullptr, own);
    Open();
    EXPECT_EQ(Drawn(0, ODS_CHECKED), [&] {
        ::SetMenuItemBitmaps(*menu, 1, MF_BYCOMMAND, own, nullptr);
        return Drawn(0, ODS_CHECKED);
    }());
    ::DeleteObject(own);
}

TEST_F(MenuItem, MarksAreTransparentWhereTheKeyStandsAndCutAtSixteen) {
    skin.SetBitmap(BMP_MENU_CHECK, 30, 30,
                   [](int x, int y) { return (x + y) % 2 ? kMarkKey : RGB(x, y, 77); });
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    menu->Item(1, "");
    Open();
    for (const UINT state : {0u, static_cast<UINT>(ODS_SELECTED)}) {
        const Picture plain = Drawn(0, state);
        const Picture marked = Drawn(0, state | ODS_CHECKED);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 210; ++x) {
                const int markX = x - 6;
                const int markY = y - 5;
                const bool isMark =
                    markX >= 0 && markX < 16 && markY >= 0 && markY < 16 && (markX + markY) % 2 == 0;
                ASSERT_EQ(marked.At(x, y), isMark ? RGB(markX, markY, 77) : plain.At(x, y)) << x << ", " << y;
            }
        }
    }
}

TEST_F(MenuItem, SmallAndMissingMarksAreHarmless) {
    skin.SetBitmap(BMP_MENU_CHECK, 5, 5, RGB(200, 10, 20));
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    menu->Item(1, "");
    Open();
    EXPECT_EQ(Drawn(0, ODS_CHECKED).CountOf(RGB(200, 10, 20)), 25);
    CTavixSkin::GetCurrentThreadSkin()->UnLoadSkin();
    const Picture picture = Drawn(0, ODS_CHECKED);
    EXPECT_EQ(picture, Drawn(0));
}

// ---------------------------------------------------------------- system commands

/* The stripe of an item with a glyph, by the platform's own operations. */
Picture GlyphStripe(char glyph, LONG weight, std::vector<std::pair<POINT, COLORREF>> passes,
                    COLORREF ground) {
    Canvas canvas(210, 40, ground);
    LOGFONTA description{};
    description.lfHeight = -11;  // the item's 23 brought near 16, less two on each side
    description.lfWeight = weight;
    description.lfCharSet = 1;
    ::lstrcpyA(description.lfFaceName, "Marlett");
    HFONT font = ::CreateFontIndirectA(&description);
    HGDIOBJ former = ::SelectObject(canvas.Dc(), font);
    ::SetBkMode(canvas.Dc(), TRANSPARENT);
    for (const auto& [offset, colour] : passes) {
        RECT rect{kPlace.left + 2, kPlace.top + 4 + 2, 20 - 2, kPlace.bottom - 4 - 2};
        ::OffsetRect(&rect, offset.x, offset.y);
        ::SetTextColor(canvas.Dc(), colour);
        ::DrawTextA(canvas.Dc(), &glyph, 1, &rect, DT_CENTER | DT_SINGLELINE);
    }
    ::SelectObject(canvas.Dc(), former);
    ::DeleteObject(font);
    return canvas.Take();
}

void ExpectSameStripe(const Picture& item, const Picture& glyph) {
    for (int y = kPlace.top + 1; y < kPlace.bottom - 1; ++y)
        for (int x = kPlace.left + 1; x < 20; ++x) ASSERT_EQ(item.At(x, y), glyph.At(x, y)) << x << ", " << y;
}

TEST_F(MenuItem, FourSystemCommandsShowTheirGlyph) {
    struct {
        UINT command;
        char glyph;
    } const commands[] = {{SC_CLOSE, 'r'}, {SC_MINIMIZE, '0'}, {SC_MAXIMIZE, '1'}, {SC_RESTORE, '2'}};
    for (const auto& one : commands) menu->Item(one.command, "");
    Open();
    const COLORREF text = ::GetSysColor(COLOR_WINDOWTEXT);
    const COLORREF grey = ::GetSysColor(COLOR_GRAYTEXT);
    const COLORREF light = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
    const COLORREF selected = Colour(CLR_MENU_SEL_BACK);
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        const char glyph = commands[i].glyph;
        const Picture plain = Drawn(i);
        ExpectSameStripe(plain, GlyphStripe(glyph, 400, {{{0, 0}, text}}, kWhite));
        ASSERT_LT(plain.CountOf(kWhite), 17 * 23 - 5) << "there is something to be seen";
        ExpectSameStripe(Drawn(i, ODS_DEFAULT), GlyphStripe(glyph, 700, {{{0, 0}, text}}, kWhite));
        ExpectSameStripe(Drawn(i, ODS_GRAYED), GlyphStripe(glyph, 400, {{{0, 0}, grey}}, kWhite));
        ExpectSameStripe(Drawn(i, ODS_GRAYED | ODS_SELECTED),
                         GlyphStripe(glyph, 400, {{{0, 0}, grey}}, selected));
        ExpectSameStripe(Drawn(i, ODS_INACTIVE), GlyphStripe(glyph, 400, {{{0, 0}, grey}}, kWhite));
        // Embossed; the upper pass is in the context's own colour, black.
        ExpectSameStripe(Drawn(i, ODS_SELECTED),
                         GlyphStripe(glyph, 400, {{{1, 1}, light}, {{-1, -1}, 0}}, selected));
    }
}

TEST_F(MenuItem, OtherCommandsShowNoGlyph) {
    menu->Item(SC_MOVE, "").Item(SC_SIZE, "").Item(0xE060, "").Item(100, "");
    Open();
    const Picture plain = Drawn(3);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Drawn(i), plain);
}

TEST_F(MenuItem, LowBitsOfACommandDoNotMatter) {
    menu->Item(SC_CLOSE, "").Item(SC_CLOSE | 7, "");
    Open();
    EXPECT_EQ(Drawn(1), Drawn(0));
}

// ---------------------------------------------------------------- icons

TEST_F(MenuItem, ARecordsIconsShowItsState) {
    menu->Item(1, "");
    Open();
    const Picture plain = Drawn(0);
    auto icons = std::make_unique<CImageList>();
    ASSERT_TRUE(icons->Create(8, 8, ILC_COLOR32, 3, 1));
    const COLORREF colours[] = {RGB(250, 0, 0), RGB(0, 250, 0), RGB(0, 0, 250)};
    Record(0).m_pImageList = std::move(icons);
    const auto add = [&](COLORREF colour) {
        const auto bitmap = MakeBitmap(8, 8, colour);
        Record(0).m_pImageList->AddMasked(*bitmap, RGB(255, 0, 255));
    };
    add(colours[0]);
    EXPECT_EQ(Drawn(0).CountOf(colours[0]), 64);
    EXPECT_EQ(Drawn(0).At(3 + 4, 2 + 5), colours[0]);
    EXPECT_EQ(Drawn(0, ODS_SELECTED).At(3 + 3, 2 + 4), colours[0]) << "raised, over its shadow";
    EXPECT_EQ(Drawn(0, ODS_GRAYED).CountOf(colours[0]), 0);
    EXPECT_NE(Drawn(0, ODS_GRAYED), plain) << "drawn in the disabled colour";
    add(colours[1]);
    add(colours[2]);
    EXPECT_EQ(Drawn(0, ODS_SELECTED).At(3 + 5, 2 + 6), colours[1]);
    EXPECT_EQ(Drawn(0, ODS_SELECTED).CountOf(colours[1]), 64);
    EXPECT_EQ(Drawn(0, ODS_GRAYED).CountOf(colours[2]), 64);
    EXPECT_EQ(Drawn(0, ODS_CHECKED).CountOf(colours[0]), 0) << "a check mark stands in the icon's place";
}

// ---------------------------------------------------------------- items that are not the library's

TEST_F(MenuItem, AHostDrawnItemIsMeasuredByTheHostWithItsOwnData) {
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

TEST_F(MenuItem, AHostDrawnItemIsDrawnByTheHostInTheSkinsColours) {
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

TEST_F(MenuItem, AHostMayEndThePopupWhileItDraws) {
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

TEST_F(MenuItem, DataThatIsNoRecordGoesToTheHostUntouched) {
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

TEST_F(MenuItem, ItemsOfOtherControlsGoToTheHost) {
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

TEST_F(MenuItem, AnItemOfWhatIsNoMenuIsNotDrawn) {
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

TEST_F(MenuItem, AMenuWithoutASkinDrawsNothing) {
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

TEST_F(MenuItem, DrawingAndMeasuringLeaveNoObjectsBehind) {
    menu->Item(SC_CLOSE, "Close\tAlt+F4", MF_CHECKED).Separator().HostDrawn(5, 5).Radio(6, "Radio");
    Open();
    for (int round = 0; round < 200; ++round) {
        for (int position = 0; position < 4; ++position) {
            Measured(position);
            Drawn(position, round % 2 ? ODS_SELECTED | ODS_CHECKED : 0);
        }
    }
    // The counts of objects are watched around each test.
    EXPECT_EQ(Result(), 0);
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
