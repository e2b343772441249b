// The parent's surface behind check boxes and radio buttons.
#include <algorithm>

#include "controls/button_fixture.h"
#include "controls/parent_background.h"

namespace tavix_test {
namespace {

constexpr COLORREF kLeft = RGB(200, 10, 10);
constexpr COLORREF kRight = RGB(10, 200, 10);
constexpr COLORREF kOrigin = RGB(200, 200, 10);

class ButtonBackground : public ButtonTest {
protected:
    /* What fills the button, read away from the mark and the text. */
    COLORREF FillOf(HWND button) { return RepaintedClient(button).At(99, 29); }
};
INSTANTIATE_TEST_SUITE_P(Worlds, ButtonBackground, kControlWorlds, NameOfWorld);

TEST_P(ButtonBackground, IsTheParentsPixelLeftOfTheTopRowIfTheParentClipsItsChildren) {
    for (DWORD type : {BS_CHECKBOX, BS_AUTOCHECKBOX, BS_RADIOBUTTON, BS_AUTORADIOBUTTON}) {
        SCOPED_TRACE(type);
        UseParent(WS_CLIPCHILDREN);
        Dot(kButtonPlace.left - 1, kButtonPlace.top, kLeft);
        Dot(kButtonPlace.right + 1, kButtonPlace.top, kRight);
        Dot(0, 0, kOrigin);
        EXPECT_EQ(FillOf(MakeButton(static_cast<DWORD>(type))), kLeft);
    }
}

TEST_P(ButtonBackground, AtTheParentsLeftEdgeIsThePixelOneRightOfTheRightEdge) {
    for (DWORD type : {BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        SCOPED_TRACE(type);
        UseParent(WS_CLIPCHILDREN);
        Dot(100 + 1, 20, kRight);
        Dot(0, 0, kOrigin);
        EXPECT_EQ(FillOf(MakeButton(static_cast<DWORD>(type), {0, 20, 100, 50})), kRight);
    }
}

// A button from edge to edge of its parent has no pixel of the parent beside it.
TEST_P(ButtonBackground, WithoutAPixelBesideIsTheParentsOriginForACheckBoxOnly) {
    constexpr RECT kEdgeToEdge{0, 20, 400, 50};
    UseParent(WS_CLIPCHILDREN);
    Dot(0, 0, kOrigin);
    HWND check = MakeButton(BS_AUTOCHECKBOX, kEdgeToEdge);
    EXPECT_EQ(tavix::ColourBesideControl(check, Parent(), tavix::SecondTry::None), CLR_INVALID);
    EXPECT_EQ(tavix::ColourBesideControl(check, Parent(), tavix::SecondTry::ParentOrigin), kOrigin);
    EXPECT_EQ(FillOf(check), kOrigin);
    ::DestroyWindow(check);
    EXPECT_NE(FillOf(MakeButton(BS_AUTORADIOBUTTON, kEdgeToEdge)), kOrigin);
}

TEST_P(ButtonBackground, StaysTheParentsPictureIfTheParentPaintsBelowItsChildren) {
    for (DWORD type : {BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        SCOPED_TRACE(type);
        UseParent(0);
        Dot(kButtonPlace.left - 1, kButtonPlace.top, kLeft);
        HWND button = MakeButton(static_cast<DWORD>(type));
        ::InvalidateRect(Parent(), nullptr, TRUE);
        ::UpdateWindow(Parent());
        EXPECT_EQ(Shown(button).At(99, 29), kParentColour);
    }
}

TEST_P(ButtonBackground, ChangeOfTheMarkRepaintsTheMarksColumnOnly) {
    skin.SetBitmapSize(BMP_BTN_RADIO_ON, 30, 13).SetBitmapSize(BMP_BTN_RADIO_OFF, 30, 13);
    UseChangedSkin();
    // Radio buttons are measured by the check mark too, which is 13 pixels wide here.
    for (DWORD type : {BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        SCOPED_TRACE(type);
        UseParent(0);
        HWND button = MakeButton(static_cast<DWORD>(type));
        std::vector<std::string> order;
        RECT below{}, own{};
        Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message == WM_PAINT) {
                order.push_back("parent");
                ::GetUpdateRect(Parent(), &below, FALSE);
            }
            return std::nullopt;
        };
        MessageSpy spy(button);
        spy.handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message == WM_PAINT) {
                order.push_back("button");
                ::GetUpdateRect(button, &own, FALSE);
            }
            return std::nullopt;
        };
        ::SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
        // The update of a parent that doesn't clip its children may bring one more of the button.
        ASSERT_GE(order.size(), 2u);
        EXPECT_EQ(order.front(), "parent");
        EXPECT_EQ(order.back(), "button");
        EXPECT_EQ(std::count(order.begin(), order.end(), "parent"), 1);
        const RECT expectedOwn{0, 0, 15, 30};
        RECT expectedBelow = expectedOwn;
        ::OffsetRect(&expectedBelow, kButtonPlace.left, kButtonPlace.top);
        EXPECT_TRUE(::EqualRect(&own, &expectedOwn)) << own.left << " " << own.right;
        EXPECT_TRUE(::EqualRect(&below, &expectedBelow)) << below.left << " " << below.right;
        Parent().handler = nullptr;
    }
}

TEST_P(ButtonBackground, ChangeOfAPushButtonRepaintsItWhole) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    RECT own{};
    MessageSpy spy(button);
    spy.handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_PAINT) ::GetUpdateRect(button, &own, FALSE);
        return std::nullopt;
    };
    ::SendMessageA(button, BM_SETSTATE, TRUE, 0);
    const RECT expected{0, 0, 100, 30};
    EXPECT_TRUE(::EqualRect(&own, &expected));
}

}  // namespace
}  // namespace tavix_test
