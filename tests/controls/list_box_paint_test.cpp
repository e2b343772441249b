// What list boxes show, and what the owner of an owner-drawn one is sent.
#include <algorithm>
#include <map>
#include <tuple>

#include "controls/list_box_fixture.h"
#include "tavixskin/framework/gdi.h"

namespace tavix_test {
namespace {

/* One WM_DRAWITEM, and how its context stood. */
struct Drawn {
    WPARAM wParam;
    DRAWITEMSTRUCT item;
    HGDIOBJ font;
};

class ListBoxPaint : public ListBoxTest {
protected:
    /* The list's client area as it ought to look: plain and selected rows of a single column. */
    Picture Model(CSize size, const std::vector<int>& selected, bool enabled = true, int textRows = 8,
                  const std::vector<int>& bare = {}) {
        Canvas canvas(size.cx, size.cy, skin.Colour(CLR_LIST_BACK));
        CDC dc(canvas.Dc());
        const HGDIOBJ former = ::SelectObject(dc, ::GetStockObject(DEFAULT_GUI_FONT));
        const auto has = [](const std::vector<int>& items, int item) {
            return std::find(items.begin(), items.end(), item) != items.end();
        };
        const int top = Top(), end = std::min(top + textRows, Count());
        for (int i = top; i < end; ++i) {
            const CRect row(0, (i - top) * kItemHeight, size.cx,
                            std::min<int>((i - top + 1) * kItemHeight, size.cy));
            ::IntersectClipRect(dc, row.left, row.top, row.right, row.bottom);
            if (has(bare, i)) dc.FillSolidRect(row, RGB(255, 255, 255));
            if (has(selected, i)) dc.FillSolidRect(row, skin.Colour(CLR_HIGHLIGHT));
            ::SetBkMode(dc, TRANSPARENT);
            ::SetTextColor(
                dc, has(selected, i) ? skinText : ::GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
            char text[64] = {};
            Send(LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            ::TextOutA(dc, row.left, row.top, text, ::lstrlenA(text));
            ::SelectClipRgn(dc, nullptr);
        }
        ::SelectObject(dc, former);
        dc.Detach();
        return canvas.Take();
    }
    Picture Shown() { return RepaintedClient(list); }
    /* The left part of a picture, without the bar. */
    static Picture Cut(const Picture& picture, int width) {
        Picture part{width, picture.height, {}};
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < width; ++x) part.pixels.push_back(picture.At(x, y));
        return part;
    }

    void RecordDrawing() {
        Parent().handler = [this](const Received& received) -> std::optional<LRESULT> {
            if (received.message == WM_MEASUREITEM) {
                auto* measure = reinterpret_cast<MEASUREITEMSTRUCT*>(received.lParam);
                measure->itemHeight = heights.count(measure->itemID) ? heights[measure->itemID] : kItemHeight;
                return TRUE;
            }
            if (received.message != WM_DRAWITEM) return std::nullopt;
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(received.lParam);
            drawn.push_back({received.wParam, item, ::GetCurrentObject(item.hDC, OBJ_FONT)});
            return TRUE;
        };
    }
    HWND MakeOwnerDrawn(DWORD listStyle, int count) {
        RecordDrawing();
        MakeList(listStyle, 0, {200, 96}, 0);
        for (int i = 0; i < count; ++i) {
            const int at = Add("Item");
            Send(LB_SETITEMDATA, static_cast<WPARAM>(at), 1000 + i);
        }
        LayOut();
        ::UpdateWindow(list);
        drawn.clear();
        return list;
    }

    const COLORREF skinText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
    std::map<UINT, UINT> heights;
    std::vector<Drawn> drawn;
};
INSTANTIATE_TEST_SUITE_P(Worlds, ListBoxPaint, kControlWorlds, NameOfWorld);

// ---------------------------------------------------------------- the frame

TEST_P(ListBoxPaint, FrameIsMadeOfEightPiecesInTheirOrder) {
    const CSize size(60, 40);
    MakeList(0, 0, {size.cx - kLeftEdge - kRightEdge, size.cy - kTopEdge - kBottomEdge});
    for (bool enabled : {true, false}) {
        ::EnableWindow(list, enabled);
        Send(WM_NCPAINT, 1);
        const Picture shown = PictureOfWindow(list);
        // The order of laying, later over earlier.
        std::vector<COLORREF> model(static_cast<std::size_t>(size.cx * size.cy), skin.Colour(CLR_LIST_BACK));
        const auto fill = [&](DWORD id, int left, int top, int right, int bottom) {
            for (int y = std::max(top, 0); y < std::min<int>(bottom, size.cy); ++y)
                for (int x = std::max(left, 0); x < std::min<int>(right, size.cx); ++x)
                    model[static_cast<std::size_t>(y * size.cx + x)] = TestSkin::ColourOfBitmap(id);
        };
        fill(57, 0, 0, 6, 6);
        fill(61, 6, 0, size.cx, kTopEdge);
        fill(58, size.cx - 6, 0, size.cx, 6);
        fill(62, 0, 6, kLeftEdge, size.cy);
        fill(63, size.cx - kRightEdge, 6, size.cx, size.cy);
        fill(59, 0, size.cy - 6, 6, size.cy);
        fill(64, 6, size.cy - kBottomEdge, size.cx, size.cy);
        fill(60, size.cx - 6, size.cy - 6, size.cx, size.cy);
        const CRect client(kLeftEdge, kTopEdge, size.cx - kRightEdge, size.cy - kBottomEdge);
        for (int y = 0; y < size.cy; ++y)
            for (int x = 0; x < size.cx; ++x)
                if (!client.PtInRect({x, y})) {
                    ASSERT_EQ(shown.At(x, y), model[static_cast<std::size_t>(y * size.cx + x)])
                        << x << "," << y << " enabled " << enabled;
                }
    }
}

TEST_P(ListBoxPaint, EdgesRepeatTheirPieces) {
    skin.SetBitmap(61, 7, kTopEdge, [](int x, int) { return RGB(10 + x, 0, 0); });
    skin.SetBitmap(62, kLeftEdge, 7, [](int, int y) { return RGB(0, 10 + y, 0); });
    UseChangedSkin();
    MakeList(0, 0, {100, 60});
    Send(WM_NCPAINT, 1);
    const Picture shown = PictureOfWindow(list);
    for (int x = 6; x < 100; ++x) ASSERT_EQ(shown.At(x, 0), RGB(10 + (x - 6) % 7, 0, 0)) << x;
    for (int y = 6; y < 60; ++y) ASSERT_EQ(shown.At(0, y), RGB(0, 10 + (y - 6) % 7, 0)) << y;
}

// ---------------------------------------------------------------- texts

TEST_P(ListBoxPaint, EmptyListIsItsBackground) {
    MakeList(0, 0);
    EXPECT_EQ(Shown().CountOf(skin.Colour(CLR_LIST_BACK)), 200 * 96);
    ::EnableWindow(list, FALSE);
    EXPECT_EQ(Shown().CountOf(skin.Colour(CLR_LIST_BACK)), 200 * 96);
}

TEST_P(ListBoxPaint, RowsStandBelowEachOtherInTheSystemsColour) {
    MakeList(0, 5);
    EXPECT_EQ(Shown(), Model({200, 96}, {}));
    ::EnableWindow(list, FALSE);
    EXPECT_EQ(Shown(), Model({200, 96}, {}, false));
}

TEST_P(ListBoxPaint, SelectedRowHasTheSkinsHighlight) {
    MakeList(0, 5);
    Select(2);
    EXPECT_EQ(Shown(), Model({200, 96}, {2}));
    EXPECT_GT(Shown().CountOf(skin.Colour(CLR_HIGHLIGHT)), 100);
}

TEST_P(ListBoxPaint, SelectionOfADisabledListShowsOverItsPlainRow) {
    MakeList(0, 5);
    Select(2);
    ::EnableWindow(list, FALSE);
    EXPECT_EQ(Shown(), Model({200, 96}, {2}, false));
}

TEST_P(ListBoxPaint, ScrolledListShowsFromItsTopItem) {
    MakeList(0, 20);
    SetTop(5);
    Select(7);
    EXPECT_EQ(Shown(), Model({200, 96}, {7}));
    // A selection above or far below is not drawn at all.
    Select(2);
    EXPECT_EQ(Shown(), Model({200, 96}, {}));
    Select(19);
    EXPECT_EQ(Shown(), Model({200, 96}, {}));
}

TEST_P(ListBoxPaint, RowThatHalfShowsIsLeftBlankUnlessFourFifthsShow) {
    MakeList(0, 20, {200, 100});
    EXPECT_EQ(Shown(), Model({200, 100}, {}, true, 8));
    // Only a selected row is drawn there too.
    Select(8);
    EXPECT_EQ(Shown(), Model({200, 100}, {8}, true, 9));
    Resize({200, 106});
    EXPECT_EQ(Shown(), Model({200, 106}, {8}, true, 9));
}

TEST_P(ListBoxPaint, MultipleSelectionShowsEveryMark) {
    MakeList(LBS_MULTIPLESEL, 8);
    Mark({1, 2, 6});
    EXPECT_EQ(Shown(), Model({200, 96}, {1, 2, 6}));
    ::EnableWindow(list, FALSE);
    EXPECT_EQ(Shown(), Model({200, 96}, {1, 2, 6}, false));
}

TEST_P(ListBoxPaint, RowsEndWhereTheBarBegins) {
    MakeList(WS_VSCROLL, 20);
    Select(1);
    const int width = 200 - ::GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_EQ(Cut(Shown(), width), Model({width, 96}, {1}));
}

TEST_P(ListBoxPaint, ColumnsShowOneColumnOfRowsOnly) {
    MakeList(LBS_MULTICOLUMN, 40, {340, 96});
    EXPECT_EQ(Shown(), Model({340, 96}, {}));
}

TEST_P(ListBoxPaint, RowThatAClickDeselectsIsWhiteUntilTheNextPainting) {
    MakeList(0, 5);
    Select(1);
    Shown();
    Press(RowPoint(3));
    EXPECT_EQ(PictureOfClient(list), Model({200, 96}, {3}, true, 8, {1}));
    EXPECT_EQ(Shown(), Model({200, 96}, {3}));
}

TEST_P(ListBoxPaint, OnlyTheInvalidPartIsPainted) {
    MakeList(0, 5);
    Shown();
    CClientDC dc(list);
    dc.FillSolidRect(CRect(0, 0, 200, 96), RGB(1, 2, 3));
    const CRect part(10, 12, 60, 24);
    ::InvalidateRect(list, &part, FALSE);
    ::UpdateWindow(list);
    const Picture shown = PictureOfClient(list);
    const Picture model = Model({200, 96}, {});
    for (int y = 0; y < 96; ++y)
        for (int x = 0; x < 200; ++x)
            ASSERT_EQ(shown.At(x, y), part.PtInRect({x, y}) ? model.At(x, y) : RGB(1, 2, 3)) << x << "," << y;
}

TEST_P(ListBoxPaint, TextOfTenThousandCharactersIsCutAtTheEdge) {
    MakeList(0, 0);
    Add(std::string(10'000, 'W'));
    Add("Below");
    Select(0);
    const Picture shown = Shown();
    EXPECT_GT(shown.CountOf(skin.Colour(CLR_HIGHLIGHT)), 100);
    EXPECT_EQ(shown.At(100, 40), skin.Colour(CLR_LIST_BACK));
    EXPECT_EQ(Send(LB_GETTEXTLEN, 0), 10'000);
}

// ---------------------------------------------------------------- owner-drawn

TEST_P(ListBoxPaint, OwnerIsSentEveryRowThatShows) {
    MakeOwnerDrawn(LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, 20);
    SetTop(3);
    Select(5);
    drawn.clear();
    Shown();
    // Down to the client area's end, the row that shows in part among them.
    const int height = static_cast<int>(Send(LB_GETITEMHEIGHT, 0));
    const int shown = (96 + height - 1) / height;
    ASSERT_EQ(static_cast<int>(drawn.size()), shown);
    for (int n = 0; n < shown; ++n) {
        const DRAWITEMSTRUCT& item = drawn[static_cast<std::size_t>(n)].item;
        EXPECT_EQ(drawn[static_cast<std::size_t>(n)].wParam, WPARAM{kListId});
        EXPECT_EQ(item.CtlType, static_cast<UINT>(ODT_LISTBOX));
        EXPECT_EQ(item.CtlID, static_cast<UINT>(kListId));
        EXPECT_EQ(item.itemID, static_cast<UINT>(3 + n));
        EXPECT_EQ(item.itemAction, static_cast<UINT>(ODA_DRAWENTIRE));
        EXPECT_EQ(item.itemState, n == 2 ? 1u : 32u);
        EXPECT_EQ(item.hwndItem, list);
        EXPECT_EQ(CRect(item.rcItem), CRect(0, n * height, 200, (n + 1) * height));
        EXPECT_EQ(item.itemData, static_cast<ULONG_PTR>(1000 + 3 + n));
        EXPECT_EQ(drawn[static_cast<std::size_t>(n)].font, ::GetStockObject(DEFAULT_GUI_FONT));
    }
}

TEST_P(ListBoxPaint, RowsOutsideTheInvalidPartAreNotSent) {
    MakeOwnerDrawn(LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, 20);
    const int height = static_cast<int>(Send(LB_GETITEMHEIGHT, 0));
    const CRect part(0, 2 * height + 1, 200, 3 * height + 1);
    ::InvalidateRect(list, &part, FALSE);
    ::UpdateWindow(list);
    ASSERT_EQ(drawn.size(), 2u);
    EXPECT_EQ(drawn[0].item.itemID, 2u);
    EXPECT_EQ(drawn[1].item.itemID, 3u);
}

TEST_P(ListBoxPaint, RowsOfAVariableHeightAddUp) {
    heights = {{0, 10}, {1, 25}, {2, 14}, {3, 40}};
    MakeOwnerDrawn(LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS, 6);
    Shown();
    ASSERT_GE(drawn.size(), 4u);
    EXPECT_EQ(CRect(drawn[0].item.rcItem), CRect(0, 0, 200, 10));
    EXPECT_EQ(CRect(drawn[1].item.rcItem), CRect(0, 10, 200, 35));
    EXPECT_EQ(CRect(drawn[2].item.rcItem), CRect(0, 35, 200, 49));
    EXPECT_EQ(CRect(drawn[3].item.rcItem), CRect(0, 49, 200, 89));
}

TEST_P(ListBoxPaint, MarksOfAMultipleSelectionAreSentAsSelected) {
    MakeOwnerDrawn(LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_EXTENDEDSEL, 4);
    Mark({0, 2});
    drawn.clear();
    Shown();
    ASSERT_EQ(drawn.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(drawn[i].item.itemState, i % 2 ? 32u : 1u);
}

TEST_P(ListBoxPaint, ClickSendsThePlainRowWithoutAnIdAndTheSelectedOneWithIts) {
    MakeOwnerDrawn(LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, 6);
    Select(1);
    Shown();
    drawn.clear();
    const int height = static_cast<int>(Send(LB_GETITEMHEIGHT, 0));
    Press({20, 3 * height + 2});
    ASSERT_EQ(drawn.size(), 2u);
    EXPECT_EQ(drawn[0].item.itemID, 1u);
    EXPECT_EQ(drawn[0].item.itemState, 32u);
    EXPECT_EQ(drawn[0].item.CtlID, 0u);
    EXPECT_EQ(CRect(drawn[0].item.rcItem), CRect(0, height, 200, 2 * height));
    EXPECT_EQ(drawn[0].item.itemData, 1001u);
    EXPECT_EQ(drawn[1].item.itemID, 3u);
    EXPECT_EQ(drawn[1].item.itemState, 1u);
    EXPECT_EQ(drawn[1].item.CtlID, static_cast<UINT>(kListId));
    EXPECT_EQ(drawn[1].item.hwndItem, list);
}

TEST_P(ListBoxPaint, OwnersDrawingShows) {
    MakeList(LBS_OWNERDRAWFIXED, 0, {200, 96}, 0);
    Parent().handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_DRAWITEM) return std::nullopt;
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(received.lParam);
        CDC dc(item.hDC);
        dc.FillSolidRect(item.rcItem, RGB(5, 6, static_cast<BYTE>(10 + item.itemID)));
        dc.Detach();
        return TRUE;
    };
    for (int i = 0; i < 3; ++i) Send(LB_ADDSTRING, 0, 77);
    LayOut();
    const Picture shown = Shown();
    const int height = static_cast<int>(Send(LB_GETITEMHEIGHT, 0));
    for (int i = 0; i < 3; ++i) EXPECT_EQ(shown.At(50, i * height + 2), RGB(5, 6, 10 + i));
    EXPECT_EQ(shown.At(50, 3 * height + 2), skin.Colour(CLR_LIST_BACK));
}

}  // namespace
}  // namespace tavix_test
