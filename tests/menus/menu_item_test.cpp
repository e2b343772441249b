// Items of an open popup, as the owner's messages have them measured and drawn.
#include <algorithm>
#include <climits>

#include "menu_item_fixture.h"

namespace tavix_test {
namespace {

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
    Drawn(0, ODS_SELECTED | ODS_CHECKED, {LONG_MIN, LONG_MIN, LONG_MAX, LONG_MAX});
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
        // Embossed; the upper pass is black, whatever colour the system has set for the selection.
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

}  // namespace
}  // namespace tavix_test
