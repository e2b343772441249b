/* Combo boxes: every message that the skin answers, and the selection's rules. */
#include "combo_fixture.h"
#include "controls/combo_box_paint.h"

namespace tavix_test {
namespace {

using ComboBoxMessages = ComboTest;

TEST_P(ComboBoxMessages, IsAClassOfItsOwnAtRunTime) {
    MakeListOnly();
    EXPECT_STREQ(Combo().GetRuntimeClass()->m_lpszClassName, "CSkinComboBox");
    EXPECT_TRUE(Combo().IsKindOf(RUNTIME_CLASS(CSkinWndBaseClass)));
    EXPECT_FALSE(List().IsKindOf(RUNTIME_CLASS(CSkinComboBox)));
}

TEST_P(ComboBoxMessages, ShortBufferGetsACutTextAndTheFullLength) {
    MakeListOnly();
    ::SendMessageA(combo, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("Hochtal"));
    for (const WPARAM size : {0u, 1u, 4u, 7u, 8u, 20u}) {
        char buffer[24];
        std::memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(Send(WM_GETTEXT, size, reinterpret_cast<LPARAM>(buffer)), 7) << size;
        const std::size_t delivered = size ? std::min<std::size_t>(size - 1, 7) : 0;
        EXPECT_EQ(std::string(buffer, delivered), std::string("Hochtal").substr(0, delivered)) << size;
        if (size) {
            EXPECT_EQ(buffer[delivered], 0) << size;
        }
        EXPECT_EQ(buffer[size > 7 ? 8 : size], '#') << size << " nothing past the buffer";
    }
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 7);
}

TEST_P(ComboBoxMessages, TextOfAnEditIsReadUpTo255Characters) {
    Make(CBS_DROPDOWN | WS_VSCROLL | CBS_AUTOHSCROLL, 0, {20, 20, 380, 150});
    ASSERT_TRUE(edit);
    const std::string text(300, 'x');
    EXPECT_EQ(Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str())), 0);
    EXPECT_EQ(::GetWindowTextLengthA(edit), 300);
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 255);
    char buffer[300] = {};
    EXPECT_EQ(Send(WM_GETTEXT, sizeof buffer, reinterpret_cast<LPARAM>(buffer)), 255);
    EXPECT_EQ(std::string(buffer), std::string(255, 'x'));
}

TEST_P(ComboBoxMessages, SelectionPastTheEndAnswersNothingAndStands) {
    MakeListOnly(3);
    EXPECT_EQ(Send(CB_SETCURSEL, 1), 0);
    EXPECT_EQ(Current(), 1);
    EXPECT_EQ(Text(), "Item 1");
    for (const WPARAM bad : {WPARAM{3}, WPARAM{1000}, static_cast<WPARAM>(-1)}) {
        EXPECT_EQ(Send(CB_SETCURSEL, bad), 0);
        EXPECT_EQ(Current(), 1);
        EXPECT_EQ(Text(), "Item 1");
    }
    EXPECT_TRUE(Notices().empty()) << "a program's own selection is told to nobody";
}

TEST_P(ComboBoxMessages, SelectionGoesToTheEditToo) {
    Make(CBS_DROPDOWN | WS_VSCROLL, 3);
    ASSERT_TRUE(edit);
    Send(CB_SETCURSEL, 2);
    EXPECT_EQ(Text(), "Item 2");
    char buffer[40] = {};
    ::GetWindowTextA(edit, buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "Item 2");
}

TEST_P(ComboBoxMessages, StringIsSelectedByPrefixFromTheStartOn) {
    MakeListOnly();
    for (const char* text : {"Harbour", "Hochtal", "Airport", "harvest"}) Add(text);
    const auto select = [this](int start, const char* text) {
        return Send(CB_SELECTSTRING, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(text));
    };
    EXPECT_EQ(select(-1, "HAR"), 0);
    EXPECT_EQ(select(-50, "ho"), 1);
    EXPECT_EQ(Text(), "Hochtal");
    EXPECT_EQ(select(0, "har"), 0) << "the start itself counts";
    EXPECT_EQ(select(1, "har"), 3);
    EXPECT_EQ(select(2, "ho"), -1) << "no second round from the top";
    EXPECT_EQ(Current(), 3) << "and the selection stands";
    EXPECT_EQ(select(-1, "airports"), -1) << "a longer string is no match";
    EXPECT_EQ(select(99, "har"), -1);
    EXPECT_EQ(select(-1, ""), 0) << "nothing begins every string";
}

TEST_P(ComboBoxMessages, DeletingTheSelectedLastItemFallsBackToTheFirst) {
    MakeListOnly(3);
    Send(CB_SETCURSEL, 2);
    EXPECT_EQ(Send(CB_DELETESTRING, 2), 0);
    EXPECT_EQ(Current(), 0);
    EXPECT_EQ(Text(), "Item 0");
    EXPECT_EQ(Send(CB_GETCOUNT), 2);
    Send(CB_SETCURSEL, 1);
    EXPECT_EQ(Send(CB_DELETESTRING, 0), 0);
    EXPECT_EQ(Current(), 0);
    EXPECT_EQ(Text(), "Item 1");
    Send(CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("First"));
    Send(CB_SETCURSEL, 0);
    Send(CB_DELETESTRING, 1);
    EXPECT_EQ(Current(), 0);
    EXPECT_EQ(Text(), "") << "the text is gone though an item is selected";
    Send(CB_DELETESTRING, 0);
    EXPECT_EQ(Send(CB_GETCOUNT), 0);
    EXPECT_EQ(Text(), "");
}

TEST_P(ComboBoxMessages, ResettingForgetsTextAndSelection) {
    MakeListOnly(5);
    Send(CB_SETCURSEL, 4);
    Send(CB_SETTOPINDEX, 2);
    EXPECT_EQ(Send(CB_RESETCONTENT), 0);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(List().topItem, 0);
    EXPECT_EQ(Send(CB_GETCOUNT), 0);
}

TEST_P(ComboBoxMessages, TopIndexIsTakenUnchecked) {
    MakeListOnly(5);
    for (const int top : {3, 1000000, -7}) {
        Open();
        ::ValidateRect(list, nullptr);
        EXPECT_EQ(Send(CB_SETTOPINDEX, static_cast<WPARAM>(top)), 0);
        EXPECT_EQ(List().topItem, top);
        EXPECT_FALSE(::GetUpdateRect(list, nullptr, FALSE)) << "and nothing is painted for it";
        RepaintedClient(list);
        SendList(WM_MOUSEMOVE, 0, At({12, 8}));
        for (const int code : {SB_LINEUP, SB_LINEDOWN, SB_PAGEUP, SB_PAGEDOWN, SB_ENDSCROLL})
            SendList(WM_VSCROLL, static_cast<WPARAM>(code));
        Send(CB_SHOWDROPDOWN, FALSE);
    }
}

TEST_P(ComboBoxMessages, MessagesThatAreAnsweredWithNothingDone) {
    ClassSpy below("ComboBox");
    MakeListOnly(2);
    for (const UINT message : {UINT{WM_ERASEBKGND}, UINT{WM_NCMOUSEMOVE}, UINT{WM_CHAR}, UINT{0x702}}) {
        below.log.Clear();
        EXPECT_EQ(Send(message, 0, 0), message == WM_ERASEBKGND ? 1 : 0) << message;
        EXPECT_FALSE(below.log.Has(message)) << message;
    }
    for (const int key : {VK_ESCAPE, VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_SHIFT, VK_CONTROL, VK_F4, VK_PRIOR,
                          VK_NEXT, VK_RETURN, int{'I'}}) {
        below.log.Clear();
        EXPECT_EQ(Send(WM_KEYDOWN, static_cast<WPARAM>(key)), 0);
        EXPECT_FALSE(below.log.Has(WM_KEYDOWN)) << key;
        EXPECT_EQ(Current(), -1) << key;
        EXPECT_FALSE(IsOpen()) << key;
    }
    Open();
    Send(WM_KEYDOWN, VK_ESCAPE);
    EXPECT_TRUE(IsOpen()) << "escape doesn't close it";
    EXPECT_EQ(Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>("a")), 0);
    for (const UINT message : {WM_SETTEXT, WM_GETTEXT, WM_SETFOCUS, WM_KILLFOCUS, WM_NCCALCSIZE, WM_PAINT})
        EXPECT_FALSE(below.log.Has(message)) << message;
    below.log.Clear();
    for (const UINT message : {UINT{WM_ENABLE}, UINT{WM_GETFONT}, UINT{CB_GETITEMHEIGHT}, UINT{WM_TIMER}}) {
        Send(message, 1);
        EXPECT_TRUE(below.log.Has(message)) << message << " goes on";
    }
    EXPECT_EQ(Send(WM_ENABLE, TRUE), 0);
    ::DestroyWindow(combo);  // before the spy
}

TEST_P(ComboBoxMessages, ComboBoxIsMadeEvenIfTheNativeControlRefuses) {
    ClassSpy below("ComboBox");
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        return received.message == WM_CREATE ? std::optional<LRESULT>(-1) : std::nullopt;
    };
    combo =
        CreateControl(GetParam().charset, Parent(), "ComboBox", "", CBS_DROPDOWNLIST, kComboPlace, kComboId);
    ASSERT_TRUE(::IsWindow(combo));
    EXPECT_TRUE(IsSkinned(combo));
    // It has neither a list nor an edit, and says so.
    EXPECT_EQ(Send(CB_GETCOUNT), 0);
    EXPECT_EQ(Current(), -1);
    Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>("Its own"));
    EXPECT_EQ(Text(), "Its own");
    EXPECT_GT(RepaintedClient(combo).CountOf(RGB(0, 0, 0)), 10);
    below.handler = nullptr;
    ::DestroyWindow(combo);
}

// Hosts see the window before the native control is done with it.
TEST_P(ComboBoxMessages, ComboBoxThatEndsWhileItIsMadeIsNotTouchedAnyMore) {
    ClassSpy below("ComboBox");
    below.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_CREATE) return std::nullopt;
        ::DestroyWindow(received.window);
        return 0;
    };
    combo = ::CreateWindowExA(0, "ComboBox", "", WS_CHILD | CBS_DROPDOWNLIST, 10, 10, 100, 90, Parent(),
                              nullptr, nullptr, nullptr);
    EXPECT_FALSE(::IsWindow(combo));
    EXPECT_FALSE(IsSkinned(combo));
}

TEST_P(ComboBoxMessages, StyleIsNotChanged) {
    const DWORD asked = CBS_DROPDOWNLIST | CBS_SORT | WS_TABSTOP;
    Make(asked);
    EXPECT_EQ(static_cast<DWORD>(::GetWindowLongA(combo, GWL_STYLE)) & asked, asked);
}

TEST_P(ComboBoxMessages, FrameIsFourAcrossAndTwoDown) {
    MakeListOnly();
    for (const WPARAM calculate : {0u, 1u}) {
        NCCALCSIZE_PARAMS sizes{};
        sizes.rgrc[0] = {100, 50, 300, 90};
        EXPECT_EQ(Send(WM_NCCALCSIZE, calculate, reinterpret_cast<LPARAM>(&sizes)), 0);
        EXPECT_TRUE(CRect(sizes.rgrc[0]) == CRect(104, 52, 296, 88));
    }
}

TEST_P(ComboBoxMessages, ReturnTakesTheHotItemAndCloses) {
    MakeListOnly(5);
    EXPECT_EQ(Send(CB_SHOWDROPDOWN, TRUE), 1);
    ASSERT_TRUE(IsOpen());
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(3)));
    Send(WM_KEYDOWN, VK_RETURN);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Current(), 3);
    EXPECT_EQ(Text(), "Item 3");
    EXPECT_EQ(Send(CB_SHOWDROPDOWN, FALSE), 1);
}

TEST_P(ComboBoxMessages, ChoosingTheSelectedItemAgainIsToldAllTheSame) {
    MakeListOnly(3);
    Send(CB_SETCURSEL, 1);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Send(0x701, 1), 0);
        EXPECT_EQ(Notices(), (std::vector<int>{CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
        EXPECT_EQ(Text(), "Item 1");
    }
}

TEST_P(ComboBoxMessages, TextIsThereBeforeTheChangeOfSelectionIsTold) {
    MakeListOnly(3);
    std::vector<std::string> texts;
    Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_COMMAND) texts.push_back(Text());
        return std::nullopt;
    };
    Send(0x701, 2);
    EXPECT_EQ(texts, (std::vector<std::string>{"", "", "Item 2"}));
    Parent().handler = nullptr;
}

TEST_P(ComboBoxMessages, FocusGoesToTheEdit) {
    Make(CBS_DROPDOWN | WS_VSCROLL, 2);
    ASSERT_TRUE(BringToFront(Parent()));
    ::SetFocus(combo);
    EXPECT_EQ(::GetFocus(), edit);
    Make(CBS_DROPDOWNLIST, 2, {200, 20, 300, 120});
    ::SetFocus(combo);
    EXPECT_EQ(::GetFocus(), combo);
    ::UpdateWindow(combo);
    EXPECT_FALSE(::GetUpdateRect(combo, nullptr, FALSE));
    ::SetFocus(Parent());
    EXPECT_TRUE(::GetUpdateRect(combo, nullptr, FALSE)) << "without focus it is painted anew";
}

TEST_P(ComboBoxMessages, EditLeavesSeventeenPixelsToTheArrow) {
    Make(CBS_DROPDOWN | WS_VSCROLL, 0);
    const auto fits = [this](HWND part) {
        const CRect client = ClientOf(combo);
        return PlaceIn(combo, part) == CRect(0, 0, client.right - 17, client.bottom);
    };
    EXPECT_TRUE(fits(edit));
    ::SetWindowPos(combo, nullptr, 0, 0, 230, 30, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(fits(edit));
    // The frame's painting puts it back too, and shows it.
    ::SetWindowPos(edit, HWND_BOTTOM, 3, 3, 20, 9, SWP_HIDEWINDOW);
    Send(WM_NCPAINT, 1);
    EXPECT_TRUE(fits(edit));
    EXPECT_TRUE(::IsWindowVisible(edit));
    // No arrow's bitmap has a say in it.
    skin.SetBitmapSize(33, 30, 10).SetBitmapSize(34, 30, 10);
    UseChangedSkin();
    EXPECT_TRUE(fits(edit));
}

TEST_P(ComboBoxMessages, SmallestComboBoxHasNoRoomForAnything) {
    for (const SIZE size : {SIZE{0, 0}, SIZE{1, 1}, SIZE{7, 3}, SIZE{20, 5}}) {
        Make(CBS_DROPDOWN | WS_VSCROLL, 2);
        ::SetWindowPos(combo, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        Send(WM_NCPAINT, 1);
        RepaintedClient(combo);
        Send(WM_MOUSEMOVE, 0, At({0, 0}));
        Send(WM_LBUTTONDOWN, MK_LBUTTON, At({0, 0}));
        Send(CB_SHOWDROPDOWN, FALSE);
        EXPECT_EQ(Send(CB_GETCOUNT), 2);
        ::DestroyWindow(combo);
    }
}

TEST_P(ComboBoxMessages, DisablingLeavesTheEditEnabled) {
    Make(CBS_DROPDOWN | WS_VSCROLL, 2);
    Send(CB_SETCURSEL, 1);
    const Picture before = RepaintedClient(edit);
    ::EnableWindow(combo, FALSE);
    EXPECT_FALSE(::IsWindowEnabled(combo));
    EXPECT_TRUE(::IsWindowEnabled(edit));
    EXPECT_EQ(RepaintedClient(edit), before);
    ::EnableWindow(combo, TRUE);
    EXPECT_TRUE(::IsWindowEnabled(edit));
    // A host's own doing stands.
    ::EnableWindow(edit, FALSE);
    ::EnableWindow(combo, FALSE);
    EXPECT_FALSE(::IsWindowEnabled(edit));
    ::EnableWindow(combo, TRUE);
    EXPECT_TRUE(::IsWindowEnabled(edit)) << "the native control enables it with itself";
}

TEST_P(ComboBoxMessages, EditOfOneCreatedDisabledIsEnabledWithIt) {
    Make(CBS_DROPDOWN | WS_VSCROLL | WS_DISABLED, 2);
    ::EnableWindow(combo, TRUE);
    EXPECT_TRUE(::IsWindowEnabled(edit));
}

TEST_P(ComboBoxMessages, TimerOfTheHoverIsNotPassedOn) {
    ClassSpy below("ComboBox");
    MakeListOnly(2);
    below.log.Listen({WM_TIMER});
    Send(WM_TIMER, 4991);
    EXPECT_TRUE(below.log.Has(WM_TIMER)) << "while it doesn't run it is anybody's";
    below.log.Clear();
    Send(WM_MOUSEMOVE, 0, At(ArrowPoint()));
    Send(WM_TIMER, 4991);  // the pointer is elsewhere: this ends it
    EXPECT_FALSE(below.log.Has(WM_TIMER));
    Send(WM_TIMER, 4991);
    EXPECT_EQ(below.log.Count(WM_TIMER), 1);
    ::DestroyWindow(combo);  // before the spy
}

TEST_P(ComboBoxMessages, ItemsOfOtherKindsGoToTheNativeControl) {
    MakeListOnly(2, CBS_OWNERDRAWFIXED | CBS_HASSTRINGS);
    Parent().handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_DRAWITEM) return std::nullopt;
        return 77;
    };
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_COMBOBOX;
    item.itemAction = ODA_DRAWENTIRE;
    EXPECT_EQ(Send(WM_DRAWITEM, 5, reinterpret_cast<LPARAM>(&item)), 77);
    EXPECT_EQ(Parent().log.Count(WM_DRAWITEM), 1);
    item.CtlType = ODT_COMBOBOX;
    item.itemAction = ODA_FOCUS;
    EXPECT_EQ(Send(WM_DRAWITEM, 5, reinterpret_cast<LPARAM>(&item)), 77) << "of these the focus too";
    Parent().handler = nullptr;
}

TEST_P(ComboBoxMessages, NullsAreSurvived) {
    MakeListOnly(2, CBS_OWNERDRAWFIXED | CBS_HASSTRINGS);
    EXPECT_EQ(Send(WM_GETTEXT, 10, 0), 0);
    Send(CB_SETCURSEL, 0);
    EXPECT_EQ(Send(WM_GETTEXT, 10, 0), 6);
    EXPECT_EQ(Send(CB_SELECTSTRING, 0, 0), -1);
    EXPECT_EQ(Send(WM_NCCALCSIZE, TRUE, 0), 0);
    EXPECT_EQ(SendList(WM_NCCALCSIZE, TRUE, 0), 0);
    Send(WM_SETTEXT);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Current(), 0);
}

TEST_P(ComboBoxMessages, EditOfASimpleComboBoxCoversItsList) {
    Make(CBS_SIMPLE | WS_VSCROLL, 3);
    ASSERT_TRUE(edit);
    ASSERT_TRUE(::IsChild(combo, list));
    EXPECT_EQ(::GetWindow(combo, GW_CHILD), edit) << "in front";
    EXPECT_EQ(PlaceIn(combo, edit).Height(), ClientOf(combo).Height());
    Send(CB_SETCURSEL, 2);
    EXPECT_EQ(WindowText(edit), "Item 2");
    EXPECT_EQ(Current(), 2);
}

TEST_P(ComboBoxMessages, FocusStaysWithAnOpenListOrTheComboBox) {
    MakeListOnly(3);
    ASSERT_TRUE(BringToFront(Parent()));
    Open();
    Send(WM_SETFOCUS);
    // Some platforms refuse the list the keyboard.
    EXPECT_TRUE(::GetFocus() == list || ::GetFocus() == Parent());
    EXPECT_TRUE(IsOpen());
    Send(CB_SHOWDROPDOWN, FALSE);
    Send(WM_SETFOCUS);
    EXPECT_EQ(::GetFocus(), combo);
}

TEST_P(ComboBoxMessages, ExtendedComboBoxGetsItsShapeOnly) {
    INITCOMMONCONTROLSEX init{sizeof init, ICC_USEREX_CLASSES};
    ::InitCommonControlsEx(&init);
    HWND outer = CreateControl(GetParam().charset, Parent(), "ComboBoxEx32", "", CBS_DROPDOWNLIST,
                               {20, 160, 180, 280}, 7);
    ASSERT_TRUE(outer);
    ASSERT_TRUE(IsSkinned(outer));
    HWND inner = ::FindWindowExA(outer, nullptr, "ComboBox", nullptr);
    ASSERT_TRUE(inner);
    EXPECT_TRUE(IsSkinned(inner));
    const auto shapeFits = [outer] {
        CRgn shape;
        shape.CreateRectRgn(0, 0, 0, 0);
        if (::GetWindowRgn(outer, shape) == ERROR) return false;
        CRect box, window;
        ::GetRgnBox(shape, &box);
        ::GetWindowRect(outer, &window);
        return box.Width() == window.Width() && box.Height() == window.Height();
    };
    EXPECT_TRUE(shapeFits());
    ::SetWindowPos(outer, nullptr, 0, 0, 130, 120, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(shapeFits());
    // Of the two only the inner one takes its frame from the client area.
    CRect innerWindow, outerWindow;
    ::GetWindowRect(inner, &innerWindow);
    ::GetWindowRect(outer, &outerWindow);
    EXPECT_EQ(ClientOf(inner).Width(), innerWindow.Width() - 8);
    EXPECT_EQ(ClientOf(outer).Width(), outerWindow.Width());
    // The items, the selection and what is told are the two native controls' and the inner skin's.
    char text[] = "Harbour";
    COMBOBOXEXITEMA item{};
    item.mask = CBEIF_TEXT;
    item.pszText = text;
    for (item.iItem = 0; item.iItem < 2; ++item.iItem)
        EXPECT_EQ(::SendMessageA(outer, CBEM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)), item.iItem);
    ::SendMessageA(outer, CB_SETCURSEL, 1, 0);
    EXPECT_EQ(::SendMessageA(outer, CB_GETCOUNT, 0, 0), 2);
    EXPECT_EQ(::SendMessageA(inner, CB_GETCURSEL, 0, 0), 1);
    RepaintedClient(inner);
    ::DestroyWindow(outer);
}

INSTANTIATE_TEST_SUITE_P(Worlds, ComboBoxMessages, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
