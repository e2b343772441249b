/* Combo boxes and their lists: what is painted where. */
#include "controls/combo_box_paint.h"
#include "combo_fixture.h"
#include "draw/bitmap_draw.h"
#include "engine/skin_values.h"

namespace tavix_test {
namespace {

TEST(ComboBoxHitTest, ArrowIsTheRightEndOfTheClientArea) {
    const CRect client(0, 0, 100, 20);
    EXPECT_EQ(tavix::HitTestCombo(client, 17, {83, 0}), tavix::ComboHit::Arrow);
    EXPECT_EQ(tavix::HitTestCombo(client, 17, {99, 19}), tavix::ComboHit::Arrow);
    EXPECT_EQ(tavix::HitTestCombo(client, 17, {82, 10}), tavix::ComboHit::Body);
    for (const POINT outside : {POINT{100, 5}, POINT{-1, 5}, POINT{5, -1}, POINT{5, 20}})
        EXPECT_EQ(tavix::HitTestCombo(client, 17, outside), tavix::ComboHit::Outside);
}

class ComboBoxPainting : public ComboTest {
protected:
    /* A bitmap whose every pixel is its own; with key-coloured ones where asked for. */
    static COLORREF Pattern(DWORD id, int x, int y) {
        return RGB(id, static_cast<unsigned>(10 + 8 * x), static_cast<unsigned>(20 + 8 * y));
    }
    void SetPattern(DWORD id, int width, int height, std::function<bool(int, int)> isKey = nullptr) {
        skin.SetBitmap(id, width, height, [id, isKey](int x, int y) {
            return isKey && isKey(x, y) ? TestSkin::kTransparent : Pattern(id, x, y);
        });
    }
    /* The row of a piece that shows in row y of a window that is higher: its middle row repeats. */
    static int RowOfPiece(int y, int height, int pieceHeight) {
        const int middle = pieceHeight / 2;
        if (y < middle) return y;
        return y < height - middle ? middle : middle + y - (height - middle);
    }
    void RepaintAll() {
        ::RedrawWindow(combo, nullptr, nullptr,
                       RDW_INVALIDATE | RDW_FRAME | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }
    /* The client area without an edit, with that text and that arrow's bitmap. */
    Picture Face(const std::string& text, DWORD arrowId) {
        const CRect client = ClientOf(combo);
        Canvas canvas(client.right, client.bottom, RGB(255, 255, 255));
        const SIZE arrow = skin.BitmapSize(arrowId);
        CDC dc(canvas.Dc());
        dc.FillSolidRect(CRect(CPoint(client.right - arrow.cx, 0), arrow), TestSkin::ColourOfBitmap(arrowId));
        CRect room(0, 0, client.right - arrow.cx, client.bottom);
        DrawIn(dc, room, text, RGB(0, 0, 0));
        return canvas.Take();
    }
    static void DrawIn(HDC dc, CRect room, const std::string& text, COLORREF colour) {
        const HGDIOBJ former = ::SelectObject(dc, ::GetStockObject(DEFAULT_GUI_FONT));
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, colour);
        ::DrawTextA(dc, text.c_str(), -1, &room, DT_VCENTER | DT_SINGLELINE);
        ::SelectObject(dc, former);
    }
    /* The list's rows from its top one on, in the part that a bar leaves. */
    Picture RowsAsTheyOught(int top) {
        const CRect client = ClientOf(list);
        const int right = client.right - (::IsWindowVisible(Bar()) ? ::GetSystemMetrics(SM_CXVSCROLL) : 0);
        Canvas canvas(right, client.bottom, skin.Colour(CLR_LIST_BACK));
        CDC dc(canvas.Dc());
        const int height = RowHeight();
        for (int i = top; i < Send(CB_GETCOUNT) && (i - top) * height < client.bottom; ++i) {
            const bool current = i == Current();
            CRect row(0, (i - top) * height, right, (i - top + 1) * height);
            if (current) dc.FillSolidRect(row, skin.Colour(CLR_HIGHLIGHT));
            row.left += 2;
            DrawIn(dc, row, ItemText(i), tavix::SkinColour(current ? CLR_TEXT_HIGHLIGHT : CLR_TEXT));
        }
        return canvas.Take();
    }
    std::string ItemText(int item) {
        char buffer[64] = {};
        Send(CB_GETLBTEXT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(buffer));
        return buffer;
    }
    static Picture LeftOf(const Picture& picture, int width) {
        Picture part{width, picture.height, {}};
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < width; ++x) part.pixels.push_back(picture.At(x, y));
        return part;
    }
};

TEST_P(ComboBoxPainting, FaceIsWhiteWithTheTextAndTheArrowAtTheRight) {
    MakeListOnly(3);
    EXPECT_EQ(RepaintedClient(combo), Face("", BMP_COMBO_DROP_NORMAL));
    Send(CB_SETCURSEL, 1);
    const Picture face = Face("Item 1", BMP_COMBO_DROP_NORMAL);
    EXPECT_GT(face.CountOf(RGB(0, 0, 0)), 10);
    EXPECT_EQ(RepaintedClient(combo), face);
    ::EnableWindow(combo, FALSE);
    EXPECT_EQ(RepaintedClient(combo), face) << "disabled it looks the same";
    ::EnableWindow(combo, TRUE);
    Send(WM_MOUSEMOVE, 0, At(ArrowPoint()));
    EXPECT_EQ(RepaintedClient(combo), Face("Item 1", BMP_COMBO_DROP_HOT));
}

TEST_P(ComboBoxPainting, TextEndsAtTheArrowsBitmapHoweverWideThatIs) {
    skin.SetBitmap(BMP_COMBO_DROP_NORMAL, 60, 5, TestSkin::ColourOfBitmap(BMP_COMBO_DROP_NORMAL));
    UseChangedSkin();
    MakeListOnly();
    const std::string text(60, 'W');
    Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    const Picture face = RepaintedClient(combo);
    EXPECT_EQ(face, Face(text, BMP_COMBO_DROP_NORMAL));
    EXPECT_EQ(face.At(face.width - 1, 5), RGB(255, 255, 255)) << "below the arrow, which isn't stretched";
}

TEST_P(ComboBoxPainting, TextMarksItsAmpersandsAsMnemonics) {
    MakeListOnly();
    Add("Bed && Br&eakfast");
    Send(CB_SETCURSEL, 0);
    EXPECT_EQ(RepaintedClient(combo), Face("Bed && Br&eakfast", BMP_COMBO_DROP_NORMAL));
    Open();
    EXPECT_EQ(RepaintedClient(list), RowsAsTheyOught(0));
}

TEST_P(ComboBoxPainting, FrameIsMadeOfItsThreePiecesStretchedInHeight) {
    SetPattern(BMP_COMBO_LEFT, 5, 10);
    SetPattern(BMP_COMBO_TILE, 3, 12);
    SetPattern(BMP_COMBO_RIGHT, 7, 14);
    UseChangedSkin();
    MakeListOnly();
    for (const bool disabled : {false, true}) {
        ::EnableWindow(combo, !disabled);
        RepaintAll();
        const Picture window = PictureOfWindow(combo);
        const CRect client(4, 2, window.width - 4, window.height - 2);
        const int right = window.width - 7;
        for (int y = 0; y < window.height; ++y) {
            for (int x = 0; x < window.width; ++x) {
                if (client.PtInRect({x, y})) continue;
                COLORREF expected = Pattern(BMP_COMBO_TILE, (x - 5) % 3, RowOfPiece(y, window.height, 12));
                if (x < 5) expected = Pattern(BMP_COMBO_LEFT, x, RowOfPiece(y, window.height, 10));
                if (x >= right)
                    expected = Pattern(BMP_COMBO_RIGHT, x - right, RowOfPiece(y, window.height, 14));
                ASSERT_EQ(window.At(x, y), expected) << x << ", " << y;
            }
        }
    }
}

TEST_P(ComboBoxPainting, KeyColouredPixelsOfTheEndsAreCutFromTheWindow) {
    const auto leftKey = [](int x, int y) { return x + y < 3 || (x == 0 && y >= 8); };
    const auto rightKey = [](int x, int y) { return x - y > 3 || (x == 6 && y == 5); };
    SetPattern(BMP_COMBO_LEFT, 5, 10, leftKey);
    SetPattern(BMP_COMBO_RIGHT, 7, 10, rightKey);
    SetPattern(BMP_COMBO_TILE, 3, 10, [](int, int) { return true; });
    UseChangedSkin();
    MakeListOnly();
    const auto expectShape = [&](const std::function<bool(int, int)>& left) {
        CRgn shape;
        shape.CreateRectRgn(0, 0, 0, 0);
        ASSERT_NE(::GetWindowRgn(combo, shape), ERROR);
        CRect window;
        ::GetWindowRect(combo, &window);
        for (int y = 0; y < window.Height(); ++y) {
            for (int x = 0; x < window.Width(); ++x) {
                const int row = RowOfPiece(y, window.Height(), 10), end = x - (window.Width() - 7);
                const bool cut = (x < 5 && left(x, row)) || (end >= 0 && rightKey(end, row));
                ASSERT_EQ(::PtInRegion(shape, x, y) != 0, !cut) << x << ", " << y;
            }
        }
        EXPECT_FALSE(::PtInRegion(shape, window.Width(), 5));
        EXPECT_FALSE(::PtInRegion(shape, 5, window.Height()));
    };
    expectShape(leftKey);
    ::SetWindowPos(combo, nullptr, 0, 0, 120, 60, SWP_NOMOVE | SWP_NOZORDER);
    expectShape(leftKey);
    // A new skin's shape comes with the painting of the frame.
    const auto other = [](int x, int y) { return x == 4 && y == 0; };
    SetPattern(BMP_COMBO_LEFT, 5, 10, other);
    UseChangedSkin();
    expectShape(other);
}

TEST_P(ComboBoxPainting, ShapeIsThatOfTheStretchedEndsAtAnyHeight) {
    constexpr int kWidth = 5, kAcross = 30;
    for (const int piece : {1, 2, 7, 10}) {
        SetPattern(BMP_COMBO_LEFT, kWidth, piece, [](int x, int y) { return (x * 7 + y * 5) % 3 == 0; });
        SetPattern(BMP_COMBO_RIGHT, 4, piece);
        UseChangedSkin();
        for (const int height : {1, 3, 4, 5, 6, 9, 10, 11, 22, 60}) {
            Canvas canvas(kWidth, height, RGB(1, 2, 3));
            CDC dc(canvas.Dc());
            tavix::DrawVerticalStretch(&dc, tavix::SkinBitmap(BMP_COMBO_LEFT), {0, 0, kWidth, height}, 0);
            const Picture picture = canvas.Take();
            CRgn shape;
            tavix::MakeComboRegion(shape, {kAcross, height});
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < kAcross; ++x)
                    ASSERT_EQ(::PtInRegion(shape, x, y) != 0, picture.At(x, y) != TestSkin::kTransparent)
                        << "a piece of " << piece << " at " << height << ": " << x << ", " << y;
        }
    }
}

TEST_P(ComboBoxPainting, HostileEndsCutNothing) {
    // A chequered piece would make a region of thousands of rectangles.
    skin.SetBitmap(BMP_COMBO_LEFT, 300, 100,
                   [](int x, int y) { return (x + y) % 2 ? TestSkin::kTransparent : RGB(9, 9, 9); });
    UseChangedSkin();
    CRgn shape, whole;
    tavix::MakeComboRegion(shape, {400, 100});
    whole.CreateRectRgn(0, 0, 400, 100);
    EXPECT_TRUE(::EqualRgn(shape, whole));
    MakeListOnly(2);
    RepaintAll();
    EXPECT_EQ(Send(CB_GETCOUNT), 2);
}

TEST_P(ComboBoxPainting, PaintingTheFrameAgainMovesNothingAndComesToRest) {
    for (const DWORD style : {CBS_DROPDOWNLIST, CBS_DROPDOWN, CBS_SIMPLE}) {
        Make(style | WS_VSCROLL, 3);
        RepaintAll();
        PumpMessages(50);
        MessageSpy spy(combo);
        for (int i = 0; i < 5; ++i) Send(WM_NCPAINT, 1);
        EXPECT_FALSE(spy.log.Has(WM_WINDOWPOSCHANGING)) << "the shape that it has is not set again";
        PumpMessages(50);
        spy.log.Clear();
        PumpMessages(100);
        EXPECT_TRUE(spy.log.Entries().empty());
        ::InvalidateRect(Parent(), nullptr, TRUE);
        RepaintAll();
        PumpMessages(50);
        EXPECT_LT(spy.log.Count(WM_PAINT), 6);
        EXPECT_LT(spy.log.Count(WM_NCPAINT), 6);
        ::DestroyWindow(combo);
    }
}

TEST_P(ComboBoxPainting, EditShowsAfterEveryKindOfPainting) {
    Make(CBS_DROPDOWN | WS_VSCROLL, 3);
    Send(CB_SETCURSEL, 1);
    const auto shows = [this] {
        PumpMessages(30);
        return PictureOfClient(edit).CountOf(RGB(0, 0, 0)) > 10;
    };
    EXPECT_TRUE(shows());
    RepaintAll();
    EXPECT_TRUE(shows()) << "the frame's painting paints the client area inside the other's beginning";
    ::InvalidateRect(combo, nullptr, TRUE);
    EXPECT_TRUE(shows());
    ::RedrawWindow(combo, nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
    EXPECT_TRUE(shows()) << "not painted over";
    Send(WM_NCPAINT, 1);
    EXPECT_TRUE(shows());
    UseChangedSkin();
    EXPECT_TRUE(shows());
    // Beside it there is the face.
    EXPECT_EQ(PictureOfClient(combo).At(ClientOf(combo).right - 15, 8), RGB(255, 255, 255));
}

TEST_P(ComboBoxPainting, RowsHaveTheSkinsColours) {
    MakeListOnly(3);
    Open();
    EXPECT_EQ(RepaintedClient(list), RowsAsTheyOught(0));
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(1)));
    ::UpdateWindow(list);
    EXPECT_EQ(PictureOfClient(list), RowsAsTheyOught(0)) << "only the two rows were painted anew";
    const int height = RowHeight();
    EXPECT_EQ(PictureOfClient(list).At(100, height + 1), skin.Colour(CLR_HIGHLIGHT));
    ::RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
    const Picture window = PictureOfWindow(list);
    for (const POINT at : {POINT{0, 0}, POINT{window.width - 1, 5}, POINT{7, window.height - 1}})
        EXPECT_EQ(window.At(at.x, at.y), RGB(0xCB, 0xCB, 0xCB));
    EXPECT_EQ(window.At(1, 1), skin.Colour(CLR_LIST_BACK));
}

TEST_P(ComboBoxPainting, ScrolledRowsLeaveTheBarsColumnAlone) {
    MakeListOnly(120);
    Open();
    ASSERT_TRUE(::IsWindowVisible(Bar()));
    for (int i = 0; i < 3; ++i) SendList(WM_VSCROLL, SB_LINEDOWN);
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(2)));
    const Picture expected = RowsAsTheyOught(3);
    EXPECT_EQ(LeftOf(RepaintedClient(list), expected.width), expected);
    EXPECT_EQ(Current(), 5);
}

TEST_P(ComboBoxPainting, ImagesStandBeforeTheTextsOfTheirRows) {
    MakeListOnly(3);
    Open();
    const auto textStart = [this](int row) {
        const Picture rows = RepaintedClient(list);
        for (int x = 0; x < rows.width; ++x)
            for (int y = row * RowHeight(); y < (row + 1) * RowHeight(); ++y)
                if (rows.At(x, y) == tavix::SkinColour(CLR_TEXT)) return x;
        return -1;
    };
    const int before = textStart(0);
    ASSERT_GT(before, 1);
    constexpr int kImage = 9;
    ASSERT_TRUE(List().itemImages.Create(kImage, kImage, ILC_COLOR24, 1, 1));
    EXPECT_EQ(textStart(0), before) << "none of them yet";
    const auto bitmap = MakeBitmap(kImage, kImage, RGB(1, 250, 3));
    ASSERT_EQ(::ImageList_Add(List().itemImages, *bitmap, nullptr), 0);
    EXPECT_EQ(textStart(0), before + kImage) << "the room is kept in every row";
    EXPECT_EQ(RepaintedClient(list).CountOf(RGB(1, 250, 3)), 0);
    List().itemImageMap.SetAt(reinterpret_cast<void*>(1), nullptr);
    const Picture rows = RepaintedClient(list);
    EXPECT_EQ(rows.At(2 + kImage / 2, RowHeight() + RowHeight() / 2), RGB(1, 250, 3));
    EXPECT_EQ(rows.At(2 + kImage / 2, RowHeight() / 2), skin.Colour(CLR_LIST_BACK));
}

TEST_P(ComboBoxPainting, PrintedListHasItsBar) {
    MakeListOnly(120);
    Open();
    const CRect client = ClientOf(list);
    Canvas canvas(client.Width(), client.Height(), RGB(1, 2, 3));
    EXPECT_EQ(SendList(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT), 1);
    const Picture printed = canvas.Take();
    EXPECT_EQ(printed.CountOf(RGB(1, 2, 3)), 0);
    const Picture rows = RowsAsTheyOught(0);
    // The bar stands a pixel further right in it, and hides the column of the one that shows.
    EXPECT_EQ(LeftOf(printed, rows.width), rows);
    EXPECT_GT(printed.CountOf(TestSkin::ColourOfBitmap(85)), 0);
    EXPECT_GT(PictureOfClient(Bar()).CountOf(TestSkin::ColourOfBitmap(85)), 0);
    EXPECT_GT(PictureOfClient(list).CountOf(TestSkin::ColourOfBitmap(85)), 0) << "not painted over";
}

TEST_P(ComboBoxPainting, PrintingWithTheFrameDrawsTheBorder) {
    MakeListOnly(3);
    Open();
    CRect window;
    ::GetWindowRect(list, &window);
    for (const LPARAM flags : {LPARAM{PRF_CLIENT}, LPARAM{PRF_CLIENT | PRF_NONCLIENT}}) {
        Canvas canvas(window.Width(), window.Height(), RGB(1, 2, 3));
        SendList(WM_PRINT, reinterpret_cast<WPARAM>(canvas.Dc()), flags);
        const bool framed = (flags & PRF_NONCLIENT) != 0;
        EXPECT_EQ(canvas.Take().At(window.Width() - 1, window.Height() - 1) == RGB(0xCB, 0xCB, 0xCB), framed);
    }
}

TEST_P(ComboBoxPainting, PrintingTheFrameLeavesTheClientAreaOutAndAnswersForTheNativeControl) {
    ClassSpy native("ComboLBox");
    native.handler = [](const Received& received) -> std::optional<LRESULT> {
        return received.message == WM_PRINT ? std::optional<LRESULT>(77) : std::nullopt;
    };
    MakeListOnly(3);
    Open();
    const CRect client = PlaceIn(list, list);
    const int width = client.Width(), height = client.Height();
    for (const LPARAM flags : {LPARAM{PRF_CLIENT}, LPARAM{PRF_NONCLIENT}}) {
        Canvas canvas(width, height, RGB(1, 2, 3));
        EXPECT_EQ(SendList(WM_PRINT, reinterpret_cast<WPARAM>(canvas.Dc()), flags), 77);
        const int around = 2 * width + 2 * height - 4, framed = flags == PRF_NONCLIENT ? around : 0;
        EXPECT_EQ(canvas.Take().CountOf(RGB(0xCB, 0xCB, 0xCB)), framed);
        EXPECT_EQ(canvas.Take().CountOf(RGB(1, 2, 3)), width * height - framed);
    }
    ::DestroyWindow(combo);
}

TEST_P(ComboBoxPainting, MissingBitmapsAreSkipped) {
    skin.RemoveBitmaps(skinCombobox);
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    MakeListOnly(2);
    ::RedrawWindow(combo, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
    Send(WM_MOUSEMOVE, 0, At(ArrowPoint()));
    EXPECT_EQ(RepaintedClient(combo).At(3, 1), RGB(255, 255, 255));
}

INSTANTIATE_TEST_SUITE_P(Worlds, ComboBoxPainting, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
