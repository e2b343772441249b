// What combo boxes and their lists repaint by themselves: nothing here asks for a painting before it looks.
#include "combo_fixture.h"

namespace tavix_test {
namespace {

constexpr COLORREF kSpoilt = RGB(1, 2, 3);

class ComboBoxRepaint : public ComboTest {
protected:
    static CRect Invalid(HWND window) {
        CRect rect;
        ::GetUpdateRect(window, &rect, FALSE);
        return rect;
    }
    static void Spoil(HWND window) { SpoilClient(window, kSpoilt); }
    /* The whole face waits for a painting, and gets it when nothing else is to do. */
    template <class Change>
    void ExpectFaceRepainted(bool erased, Change change) {
        Spoil(combo);
        {
            MessageSpy spy(combo);
            spy.log.Listen({WM_ERASEBKGND});
            change();
            EXPECT_EQ(Invalid(combo), ClientOf(combo));
            PumpMessages();
            EXPECT_EQ(spy.log.Has(WM_ERASEBKGND), erased);
        }
        const Picture shown = PictureOfClient(combo);
        EXPECT_EQ(shown.CountOf(kSpoilt), 0);
        EXPECT_EQ(shown, RepaintedClient(combo));
    }
};
INSTANTIATE_TEST_SUITE_P(Worlds, ComboBoxRepaint, kControlWorlds, NameOfWorld);

TEST_P(ComboBoxRepaint, NewTextIsShown) {
    MakeListOnly(5);
    ExpectFaceRepainted(true, [this] { Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>("Another")); });
    EXPECT_GT(PictureOfClient(combo).CountOf(RGB(0, 0, 0)), 10);
}

TEST_P(ComboBoxRepaint, NewSelectionIsShown) {
    MakeListOnly(5);
    ExpectFaceRepainted(true, [this] { Send(CB_SETCURSEL, 3); });
    ExpectFaceRepainted(true, [this] { Send(CB_SETCURSEL, 3); });
    ExpectFaceRepainted(true, [this] { Send(CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>("Item 2")); });
    EXPECT_EQ(Text(), "Item 2");
    Spoil(combo);
    Send(CB_SETCURSEL, 9);
    Send(CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>("None"));
    EXPECT_TRUE(Invalid(combo).IsRectEmpty()) << "what is refused changes nothing";
}

TEST_P(ComboBoxRepaint, LossOfTheContentIsShown) {
    ClassSpy native("ComboBox");
    MakeListOnly(5);
    Send(CB_SETCURSEL, 3);
    // Without the native control, which repaints too.
    native.handler = [](const Received& received) -> std::optional<LRESULT> {
        return received.message == CB_RESETCONTENT ? std::optional<LRESULT>(0) : std::nullopt;
    };
    ExpectFaceRepainted(true, [this] { Send(CB_RESETCONTENT); });
    EXPECT_EQ(PictureOfClient(combo).CountOf(RGB(0, 0, 0)), 0);
    ::DestroyWindow(combo);
}

TEST_P(ComboBoxRepaint, ChoiceIsShownWithoutErasing) {
    MakeListOnly(5);
    ::SetFocus(combo);
    ExpectFaceRepainted(false, [this] { Send(0x701, 2); });
    EXPECT_GT(PictureOfClient(combo).CountOf(RGB(0, 0, 0)), 10);
}

TEST_P(ComboBoxRepaint, LossOfTheFocusRepaintsTheFace) {
    MakeListOnly(5);
    ExpectFaceRepainted(true, [this] { Send(WM_KILLFOCUS); });
}

TEST_P(ComboBoxRepaint, HoverRepaintsAsMuchAsTheHotArrowTakes) {
    skin.SetBitmapSize(33, 12, 16).SetBitmapSize(34, 25, 16);
    UseChangedSkin();
    MakeListOnly(2);
    const CRect client = ClientOf(combo), arrow(client.right - 25, 0, client.right, client.bottom);
    Spoil(combo);
    MessageSpy spy(combo);
    spy.log.Listen({WM_ERASEBKGND});
    Send(WM_MOUSEMOVE, 0, At(ArrowPoint()));
    EXPECT_EQ(Invalid(combo), arrow);
    ::UpdateWindow(combo);
    EXPECT_EQ(PictureOfClient(combo).At(arrow.left, 2), TestSkin::ColourOfBitmap(34));
    EXPECT_EQ(PictureOfClient(combo).At(arrow.left - 1, 2), kSpoilt);
    // The pointer is elsewhere, which the timer finds out.
    Send(WM_TIMER, 4991);
    EXPECT_EQ(Invalid(combo), arrow);
    ::UpdateWindow(combo);
    EXPECT_EQ(PictureOfClient(combo).At(client.right - 1, 2), TestSkin::ColourOfBitmap(33));
    EXPECT_FALSE(spy.log.Has(WM_ERASEBKGND));
}

TEST_P(ComboBoxRepaint, WheelRepaintsTheBarEvenIfNothingMoves) {
    MakeListOnly(120);
    Open();
    Spoil(list);
    ASSERT_TRUE(::IsWindowVisible(Bar()));
    // One pixel of it lies beyond the list's client area.
    const CRect bar(0, 0, ClientOf(list).right - PlaceIn(list, Bar()).left, ClientOf(Bar()).bottom);
    ASSERT_EQ(bar.right, ClientOf(Bar()).right - 1);
    ASSERT_TRUE(Invalid(Bar()).IsRectEmpty());
    SendList(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA));
    EXPECT_EQ(List().topItem, 0);
    EXPECT_EQ(Invalid(Bar()), bar);
    EXPECT_TRUE(Invalid(list).IsRectEmpty());
    MessageSpy spy(Bar());
    ::UpdateWindow(Bar());
    EXPECT_TRUE(spy.log.Has(WM_ERASEBKGND));
}

}  // namespace
}  // namespace tavix_test
