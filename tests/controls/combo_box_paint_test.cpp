/* Combo boxes and their lists: what is painted where. */
#include "controls/combo_box_paint.h"
#include "combo_fixture.h"

namespace tavix_test {
namespace {

using ComboBoxPainting = ComboTest;

TEST(ComboBoxHitTest, ArrowIsTheRightEndOfTheClientArea) {
    const CRect client(0, 0, 100, 20);
    EXPECT_EQ(tavix::HitTestCombo(client, 17, {83, 0}), tavix::ComboHit::Arrow);
    EXPECT_EQ(tavix::HitTestCombo(client, 17, {99, 19}), tavix::ComboHit::Arrow);
    EXPECT_EQ(tavix::HitTestCombo(client, 17, {82, 10}), tavix::ComboHit::Body);
    for (const POINT outside : {POINT{100, 5}, POINT{-1, 5}, POINT{5, -1}, POINT{5, 20}})
        EXPECT_EQ(tavix::HitTestCombo(client, 17, outside), tavix::ComboHit::Outside);
}

TEST_P(ComboBoxPainting, FaceIsWhiteWithTheArrowAtTheRight) {
    MakeListOnly();
    const Picture face = RepaintedClient(combo);
    const SIZE arrow = skin.BitmapSize(33);
    EXPECT_EQ(face.At(2, 2), RGB(255, 255, 255));
    EXPECT_EQ(face.At(face.width - arrow.cx, 0), TestSkin::ColourOfBitmap(33));
    EXPECT_EQ(face.At(face.width - arrow.cx - 1, 0), RGB(255, 255, 255));
    EXPECT_EQ(face.CountOf(TestSkin::ColourOfBitmap(33)), arrow.cx * std::min<int>(arrow.cy, face.height));
    ::EnableWindow(combo, FALSE);
    EXPECT_EQ(RepaintedClient(combo), face) << "disabled it looks the same";
}

TEST_P(ComboBoxPainting, TextShowsWithoutAnEdit) {
    MakeListOnly(2);
    EXPECT_EQ(RepaintedClient(combo).CountOf(RGB(0, 0, 0)), 0);
    Send(CB_SETCURSEL, 1);
    EXPECT_GT(RepaintedClient(combo).CountOf(RGB(0, 0, 0)), 10);
}

TEST_P(ComboBoxPainting, FrameIsMadeOfItsThreePieces) {
    MakeListOnly();
    ::RedrawWindow(combo, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
    const Picture window = PictureOfWindow(combo);
    EXPECT_EQ(window.At(0, window.height / 2), TestSkin::ColourOfBitmap(30));
    EXPECT_EQ(window.At(window.width / 2, 0), TestSkin::ColourOfBitmap(32));
    EXPECT_EQ(window.At(window.width - 1, window.height / 2), TestSkin::ColourOfBitmap(31));
}

TEST_P(ComboBoxPainting, KeyColouredCornersAreCutFromTheWindow) {
    skin.SetBitmap(30, 4, 10,
                   [](int x, int y) { return x == 0 && y == 0 ? TestSkin::kTransparent : RGB(20, 40, 60); });
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    MakeListOnly();
    CRgn shape;
    shape.CreateRectRgn(0, 0, 0, 0);
    ASSERT_NE(::GetWindowRgn(combo, shape), ERROR);
    EXPECT_EQ(::PtInRegion(shape, 0, 0), skin.Colour(3) == TestSkin::kTransparent ? FALSE : TRUE);
    EXPECT_TRUE(::PtInRegion(shape, 1, 0));
    EXPECT_TRUE(::PtInRegion(shape, 0, 1));
}

TEST_P(ComboBoxPainting, RowsHaveTheSkinsColours) {
    MakeListOnly(3);
    Open();
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(1)));
    const Picture rows = RepaintedClient(list);
    const int height = RowHeight(), right = rows.width - 3;
    EXPECT_EQ(rows.At(right, height / 2), skin.Colour(62));
    EXPECT_EQ(rows.At(right, height + height / 2), skin.Colour(4));
    EXPECT_EQ(rows.At(right, 2 * height + height / 2), skin.Colour(62));
    ::RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
    EXPECT_EQ(PictureOfWindow(list).At(0, 0), RGB(0xCB, 0xCB, 0xCB));
}

TEST_P(ComboBoxPainting, OwnerIsAskedOffScreenAndTheSelectionTakesTheSkinsColour) {
    MakeListOnly(3, CBS_OWNERDRAWFIXED | CBS_HASSTRINGS);
    struct Asked {
        UINT type, item, state;
    };
    std::vector<Asked> asked;
    Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_DRAWITEM) return std::nullopt;
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(received.lParam);
        asked.push_back({item.CtlType, item.itemID, item.itemState});
        ::FillRect(item.hDC, &item.rcItem, ::GetSysColorBrush(COLOR_HIGHLIGHT));
        return TRUE;
    };
    Open();
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(1)));
    asked.clear();
    const Picture rows = RepaintedClient(list);
    ASSERT_EQ(asked.size(), 3u);
    for (UINT i = 0; i < 3; ++i) {
        EXPECT_EQ(asked[i].type, UINT{ODT_COMBOBOX});
        EXPECT_EQ(asked[i].item, i);
        EXPECT_EQ(asked[i].state, i == 1 ? 1u : 32u);
    }
    const int height = RowHeight();
    EXPECT_EQ(rows.At(5, height / 2), ::GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_EQ(rows.At(5, height + height / 2), skin.Colour(4));
    asked.clear();
    RepaintedClient(combo);
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].item, 1u);
    DRAWITEMSTRUCT focus{};
    focus.CtlType = ODT_LISTBOX;
    focus.itemAction = ODA_FOCUS;
    asked.clear();
    EXPECT_EQ(Send(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&focus)), 0);
    EXPECT_TRUE(asked.empty());
    Parent().handler = nullptr;
}

TEST_P(ComboBoxPainting, PrintedListHasItsBar) {
    MakeListOnly(120);
    Open();
    const CRect client = ClientOf(list);
    Canvas canvas(client.Width(), client.Height(), RGB(1, 2, 3));
    EXPECT_EQ(SendList(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT), 1);
    const Picture printed = canvas.Take();
    EXPECT_EQ(printed.CountOf(RGB(1, 2, 3)), 0);
    EXPECT_GT(printed.CountOf(TestSkin::ColourOfBitmap(85)), 0);
    EXPECT_GT(PictureOfClient(Bar()).CountOf(TestSkin::ColourOfBitmap(85)), 0);
    EXPECT_GT(PictureOfClient(list).CountOf(TestSkin::ColourOfBitmap(85)), 0) << "not painted over";
}

TEST_P(ComboBoxPainting, MissingBitmapsAreSkipped) {
    skin.RemoveBitmaps(skinCombobox);
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    MakeListOnly(2);
    ::RedrawWindow(combo, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
    Send(WM_MOUSEMOVE, 0, At(ArrowPoint()));
    EXPECT_EQ(RepaintedClient(combo).At(3, 1), RGB(255, 255, 255));
}

INSTANTIATE_TEST_SUITE_P(Worlds, ComboBoxPainting, kComboWorlds, NameOfComboWorld);

}  // namespace
}  // namespace tavix_test
