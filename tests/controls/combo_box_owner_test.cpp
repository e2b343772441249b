/* Owner-drawn combo boxes: what their owners are sent, and what becomes of what they draw. */
#include "combo_fixture.h"

namespace tavix_test {
namespace {

/* One WM_DRAWITEM. */
struct Drawn {
    WPARAM wParam;
    DRAWITEMSTRUCT item;
};

class OwnerDrawnComboBox : public ComboTest {
protected:
    /* Five items with data, whose owner draws as `draw` says. */
    void MakeOwnerDrawn(DWORD style = CBS_OWNERDRAWFIXED, int items = 5) {
        Parent().handler = [this](const Received& received) -> std::optional<LRESULT> {
            if (received.message != WM_DRAWITEM) return std::nullopt;
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(received.lParam);
            atOwner.push_back({received.wParam, item});
            draw(item);
            return TRUE;
        };
        MakeListOnly(items, style | CBS_HASSTRINGS);
        for (int i = 0; i < items; ++i) Send(CB_SETITEMDATA, static_cast<WPARAM>(i), 500 + i);
        m_spy.emplace(combo);
        m_spy->handler = [this](const Received& received) -> std::optional<LRESULT> {
            if (received.message == WM_DRAWITEM)
                atCombo.push_back(
                    {received.wParam, *reinterpret_cast<const DRAWITEMSTRUCT*>(received.lParam)});
            return std::nullopt;
        };
    }
    void TearDown() override {
        if (::IsWindow(combo)) ::DestroyWindow(combo);
        m_spy.reset();
        Parent().handler = nullptr;
        ComboTest::TearDown();
    }
    void Forget() { atOwner.clear(), atCombo.clear(); }
    /* The owner looks at how its context stands, and draws nothing. */
    void LookInsteadOfDrawing() {
        draw = [this](const DRAWITEMSTRUCT& item) {
            contexts.push_back({::GetCurrentObject(item.hDC, OBJ_FONT), FontOf(item.hDC),
                                ::GetBkMode(item.hDC), PictureOfDc(item.hDC, item.rcItem)});
        };
    }
    static LOGFONTA FontOf(HDC dc) {
        LOGFONTA facts{};
        ::GetObjectA(::GetCurrentObject(dc, OBJ_FONT), sizeof facts, &facts);
        return facts;
    }
    static bool IsAll(const Picture& picture, COLORREF colour) {
        return picture.CountOf(colour) == picture.width * picture.height;
    }
    /* The rows as the list hands them to the combo box, and those as the owner gets them. */
    void ExpectRows(int first, int last, UINT currentState, int right) {
        const int count = last - first, height = RowHeight();
        ASSERT_EQ(static_cast<int>(atCombo.size()), count);
        ASSERT_EQ(static_cast<int>(atOwner.size()), count);
        for (int i = 0; i < count; ++i) {
            SCOPED_TRACE(i);
            const int index = first + i;
            const UINT state = index == Current() ? currentState : 32u;
            const Drawn& sent = atCombo[static_cast<std::size_t>(i)];
            EXPECT_EQ(sent.wParam, 0u);
            EXPECT_EQ(sent.item.CtlType, 2u);
            EXPECT_EQ(sent.item.CtlID, static_cast<UINT>(::GetDlgCtrlID(list)));
            EXPECT_EQ(sent.item.itemID, static_cast<UINT>(index));
            EXPECT_EQ(sent.item.itemAction, UINT{ODA_DRAWENTIRE});
            EXPECT_EQ(sent.item.itemState, state);
            EXPECT_EQ(sent.item.hwndItem, list);
            EXPECT_TRUE(CRect(sent.item.rcItem) == CRect(0, i * height, right, (i + 1) * height));
            EXPECT_EQ(sent.item.itemData, static_cast<ULONG_PTR>(500 + index));
            // The native control makes it its own; the place is the one off-screen.
            const Drawn& got = atOwner[static_cast<std::size_t>(i)];
            EXPECT_EQ(got.wParam, WPARAM{kComboId});
            EXPECT_EQ(got.item.CtlType, UINT{ODT_COMBOBOX});
            EXPECT_EQ(got.item.CtlID, UINT{kComboId});
            EXPECT_EQ(got.item.itemID, static_cast<UINT>(index));
            EXPECT_EQ(got.item.itemAction, UINT{ODA_DRAWENTIRE});
            EXPECT_EQ(got.item.itemState, state);
            EXPECT_EQ(got.item.hwndItem, combo);
            EXPECT_TRUE(CRect(got.item.rcItem) == CRect(0, 0, right, height));
            EXPECT_EQ(got.item.itemData, static_cast<ULONG_PTR>(500 + index));
            EXPECT_NE(got.item.hDC, sent.item.hDC);
        }
    }

    std::vector<Drawn> atOwner, atCombo;
    /* What the owner was given. */
    struct Context {
        HGDIOBJ font;
        LOGFONTA facts;  // of the font
        int mode;
        Picture ground;
    };
    std::vector<Context> contexts;
    // At first it fills its rows with the system's colour of selections.
    std::function<void(const DRAWITEMSTRUCT&)> draw = [](const DRAWITEMSTRUCT& item) {
        ::FillRect(item.hDC, &item.rcItem, ::GetSysColorBrush(COLOR_HIGHLIGHT));
    };

private:
    std::optional<MessageSpy> m_spy;
};

TEST_P(OwnerDrawnComboBox, OwnerIsAskedOffScreenForEachRowAndTheSelectionTakesTheSkinsColour) {
    for (const DWORD style : {CBS_OWNERDRAWFIXED, CBS_OWNERDRAWVARIABLE}) {
        MakeOwnerDrawn(style);
        Open();
        SendList(WM_MOUSEMOVE, 0, At(RowPoint(1)));
        ::UpdateWindow(list);
        Forget();
        const Picture rows = RepaintedClient(list);
        ExpectRows(0, 5, ODS_SELECTED, ClientOf(list).right);
        const int height = RowHeight();
        EXPECT_EQ(rows.At(5, height / 2), ::GetSysColor(COLOR_HIGHLIGHT)) << "not selected, not changed";
        EXPECT_EQ(rows.At(5, height + height / 2), skin.Colour(CLR_HIGHLIGHT));
        EXPECT_EQ(rows.CountOf(skin.Colour(CLR_HIGHLIGHT)), height * rows.width);
        ::DestroyWindow(combo);
    }
}

TEST_P(OwnerDrawnComboBox, FieldShowsTheCurrentItem) {
    MakeOwnerDrawn();
    Forget();
    RepaintedClient(combo);
    EXPECT_TRUE(atOwner.empty()) << "none is current";
    Send(CB_SETCURSEL, 3);
    ::UpdateWindow(combo);
    Forget();
    const Picture face = RepaintedClient(combo);
    ASSERT_EQ(atCombo.size(), 1u);
    ASSERT_EQ(atOwner.size(), 1u);
    const CRect room(0, 0, ClientOf(combo).right - skin.BitmapSize(33).cx, ClientOf(combo).bottom);
    const Drawn& sent = atCombo[0];
    EXPECT_EQ(sent.wParam, 0u);
    EXPECT_EQ(sent.item.CtlType, 3u);
    EXPECT_EQ(sent.item.CtlID, 0u);
    EXPECT_EQ(sent.item.itemState, 32u);
    EXPECT_EQ(atOwner[0].wParam, WPARAM{kComboId});
    EXPECT_EQ(atOwner[0].item.CtlID, UINT{kComboId});
    for (const Drawn& drawn : {sent, atOwner[0]}) {
        EXPECT_EQ(drawn.item.itemID, 3u);
        EXPECT_EQ(drawn.item.itemAction, UINT{ODA_DRAWENTIRE});
        EXPECT_EQ(drawn.item.hwndItem, combo);
        EXPECT_TRUE(CRect(drawn.item.rcItem) == room);
        EXPECT_EQ(drawn.item.itemData, 503u);
    }
    EXPECT_EQ(face.CountOf(::GetSysColor(COLOR_HIGHLIGHT)), room.Width() * room.Height());
    EXPECT_EQ(face.At(room.right, 0), TestSkin::ColourOfBitmap(33)) << "the owner can't reach the arrow";
}

TEST_P(OwnerDrawnComboBox, OwnerDrawsRowsInTheMenuFontOnWhite) {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = offsetof(NONCLIENTMETRICSA, iPaddedBorderWidth);
    ASSERT_TRUE(::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0));
    LookInsteadOfDrawing();
    MakeOwnerDrawn();
    Open();
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(1)));
    ::UpdateWindow(list);
    contexts.clear();
    RepaintedClient(list);
    ASSERT_EQ(contexts.size(), 5u);
    for (const Context& context : contexts) {
        EXPECT_STREQ(context.facts.lfFaceName, metrics.lfMenuFont.lfFaceName);
        EXPECT_EQ(context.facts.lfHeight, metrics.lfMenuFont.lfHeight);
        EXPECT_EQ(context.facts.lfWeight, metrics.lfMenuFont.lfWeight);
        EXPECT_EQ(context.ground.height, RowHeight());
        EXPECT_TRUE(IsAll(context.ground, RGB(255, 255, 255)));
    }
}

TEST_P(OwnerDrawnComboBox, OwnerDrawsTheFieldInTheDialogueFontWithoutABackground) {
    LookInsteadOfDrawing();
    MakeOwnerDrawn();
    Send(CB_SETCURSEL, 3);
    contexts.clear();
    RepaintedClient(combo);
    ASSERT_EQ(contexts.size(), 1u);
    EXPECT_EQ(contexts[0].font, ::GetStockObject(DEFAULT_GUI_FONT));
    EXPECT_EQ(contexts[0].mode, TRANSPARENT);
    EXPECT_TRUE(IsAll(contexts[0].ground, RGB(255, 255, 255)));
}

TEST_P(OwnerDrawnComboBox, ListIsWhiteBelowItsLastRow) {
    MakeOwnerDrawn();
    Open();
    Send(CB_DELETESTRING, 4);
    Send(CB_DELETESTRING, 3);
    const Picture rows = RepaintedClient(list);
    const int end = 3 * RowHeight();
    ASSERT_GT(rows.height, end + 5);
    EXPECT_EQ(rows.CountOf(::GetSysColor(COLOR_HIGHLIGHT)), rows.width * end);
    EXPECT_EQ(rows.CountOf(RGB(255, 255, 255)), rows.width * (rows.height - end));
}

// The bar takes room from the rows and not from the white beneath it, where it stands a pixel off.
TEST_P(OwnerDrawnComboBox, PrintedListIsWhiteBesideItsRowsAndHasItsBar) {
    MakeOwnerDrawn(CBS_OWNERDRAWFIXED, 120);
    Open();
    ASSERT_TRUE(::IsWindowVisible(Bar()));
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(1)));
    ::UpdateWindow(list);
    Forget();
    const CRect client = ClientOf(list);
    Canvas canvas(client.Width(), client.Height(), RGB(1, 2, 3));
    EXPECT_EQ(SendList(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()), PRF_CLIENT), 1);
    // Printed, and then painted.
    ASSERT_EQ(atCombo.size(), 240u);
    ASSERT_EQ(atOwner.size(), 240u);
    atCombo.resize(120);
    atOwner.resize(120);
    const int right = client.right - ::GetSystemMetrics(SM_CXVSCROLL);
    ExpectRows(0, 120, ODS_SELECTED, right);
    const Picture printed = canvas.Take();
    const int height = RowHeight();
    for (int y = 0; y < printed.height; ++y) {
        const bool isCurrent = y >= height && y < 2 * height;
        const COLORREF row = isCurrent ? skin.Colour(CLR_HIGHLIGHT) : ::GetSysColor(COLOR_HIGHLIGHT);
        ASSERT_EQ(printed.At(0, y), row) << y;
        ASSERT_EQ(printed.At(right - 1, y), row) << y;
        ASSERT_EQ(printed.At(right, y), RGB(255, 255, 255)) << y;
    }
    EXPECT_EQ(printed.At(right + 1, 0), TestSkin::ColourOfBitmap(85));
}

TEST_P(OwnerDrawnComboBox, RowsFollowTheScrollingAtOnce) {
    MakeOwnerDrawn(CBS_OWNERDRAWFIXED, 120);
    Open();
    ASSERT_TRUE(::IsWindowVisible(Bar()));
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(2)));
    ::UpdateWindow(list);
    Forget();
    SendList(WM_VSCROLL, SB_LINEDOWN);
    // Also the rows that nobody will see.
    const int right = ClientOf(list).right - ::GetSystemMetrics(SM_CXVSCROLL);
    ExpectRows(1, 120, ODS_HOTLIGHT, right);
    EXPECT_EQ(PictureOfClient(list).CountOf(skin.Colour(CLR_HIGHLIGHT)), 0) << "that state keeps its colour";
    Forget();
    ::UpdateWindow(list);
    ExpectRows(1, 120, ODS_SELECTED, right);
    EXPECT_GT(PictureOfClient(list).CountOf(skin.Colour(CLR_HIGHLIGHT)), 0);
    Forget();
    SendList(WM_VSCROLL, SB_ENDSCROLL);
    EXPECT_TRUE(atOwner.empty()) << "nothing moved";
}

TEST_P(OwnerDrawnComboBox, FocusOfARowIsNotDrawn) {
    MakeOwnerDrawn();
    Forget();
    DRAWITEMSTRUCT focus{};
    focus.CtlType = ODT_LISTBOX;
    focus.itemAction = ODA_FOCUS;
    EXPECT_EQ(Send(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&focus)), 0);
    EXPECT_TRUE(atOwner.empty());
}

TEST_P(OwnerDrawnComboBox, SelectionAloneIsRecolouredAndNoOtherState) {
    MakeOwnerDrawn();
    Canvas canvas(40, 30, RGB(1, 2, 3));
    for (const UINT state : {0u, 1u, 0x11u, 0x40u}) {
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_LISTBOX;
        item.itemAction = ODA_SELECT;
        item.itemState = state;
        item.hDC = canvas.Dc();
        item.rcItem = {5, 6, 25, 16};
        EXPECT_EQ(Send(WM_DRAWITEM, 9, reinterpret_cast<LPARAM>(&item)), 0);
        const Picture picture = canvas.Take();
        const COLORREF expected = state == 1 ? skin.Colour(CLR_HIGHLIGHT) : ::GetSysColor(COLOR_HIGHLIGHT);
        EXPECT_EQ(picture.CountOf(expected), 200) << state;
        EXPECT_EQ(picture.At(5, 6), expected);
        EXPECT_EQ(picture.CountOf(RGB(1, 2, 3)), 40 * 30 - 200);
    }
}

INSTANTIATE_TEST_SUITE_P(Worlds, OwnerDrawnComboBox, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
