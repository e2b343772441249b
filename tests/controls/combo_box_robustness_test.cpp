// Combo boxes in bad company: hosts that destroy or empty them, odd values, long texts; and what is left
// behind.
#include <climits>

#include "combo_fixture.h"
#include "engine/skin_values.h"
#include "main/gui_objects.h"

namespace tavix_test {
namespace {

class ComboBoxRobustness : public ComboTest {
protected:
    /* Runs at the parent's first notification of that code. */
    void OnNotice(int code, std::function<void()> action) {
        Parent().handler = [code, action,
                            done = false](const Received& received) mutable -> std::optional<LRESULT> {
            if (received.message != WM_COMMAND || HIWORD(received.wParam) != code || done)
                return std::nullopt;
            done = true;
            action();
            return 0;
        };
    }
    /* What makes an open combo box tell its parent something, and one of the codes that it tells then. */
    struct Cause {
        const char* name;
        int code;
        std::function<void()> run;
    };
    std::vector<Cause> Causes() {
        const auto choose = [this] { SendList(WM_LBUTTONUP, 0, At(RowPoint(2))); };
        const auto pressOutside = [this] { SendList(WM_LBUTTONDOWN, MK_LBUTTON, At({-30, -30})); };
        const auto pressCombo = [this] { Send(WM_LBUTTONDOWN, MK_LBUTTON, At({10, 5})); };
        const auto pressFrame = [this] { Send(WM_NCLBUTTONDOWN, HTBORDER, 0); };
        const auto enter = [this] { Send(WM_KEYDOWN, VK_RETURN); };
        const auto tell = [this] { Send(0x701, 2); };
        std::vector<Cause> causes;
        for (const int code : {CBN_SELENDCANCEL, CBN_CLOSEUP}) {
            causes.insert(causes.end(), {{"a choice", code, choose},
                                         {"a press outside", code, pressOutside},
                                         {"a press on the combo box", code, pressCombo},
                                         {"a press on the frame", code, pressFrame},
                                         {"return", code, enter}});
        }
        for (const int code : {CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE})
            causes.push_back({"the list's word", code, tell});
        for (const int code : {CBN_SELENDOK, CBN_SELCHANGE}) causes.push_back({"a choice", code, choose});
        return causes;
    }
    void MakeOpen(DWORD style) {
        Make(style | WS_VSCROLL, 5);
        Open();
        SendList(WM_MOUSEMOVE, 0, At(RowPoint(2)));
        ASSERT_EQ(Current(), 2);
    }
};
INSTANTIATE_TEST_SUITE_P(Worlds, ComboBoxRobustness, kControlWorlds, NameOfWorld);

TEST_P(ComboBoxRobustness, MayBeDestroyedByAnyNotification) {
    for (const DWORD style : {CBS_DROPDOWNLIST, CBS_DROPDOWN}) {
        for (const Cause& cause : Causes()) {
            SCOPED_TRACE(std::string(cause.name) + ", code " + std::to_string(cause.code));
            MakeOpen(style);
            HWND closing = combo;
            OnNotice(cause.code, [closing] { ::DestroyWindow(closing); });
            cause.run();
            EXPECT_FALSE(::IsWindow(combo));
            EXPECT_FALSE(::IsWindow(list));
            EXPECT_FALSE(IsSkinned(combo));
            EXPECT_FALSE(IsSkinned(list));
            Parent().handler = nullptr;
        }
    }
}

TEST_P(ComboBoxRobustness, MayBeEmptiedByAnyNotification) {
    for (const Cause& cause : Causes()) {
        SCOPED_TRACE(std::string(cause.name) + ", code " + std::to_string(cause.code));
        MakeOpen(CBS_DROPDOWNLIST);
        OnNotice(cause.code, [this] { Send(CB_RESETCONTENT); });
        cause.run();
        EXPECT_EQ(Send(CB_GETCOUNT), 0);
        EXPECT_EQ(Current(), -1);
        RepaintedClient(combo);
        RepaintedClient(list);
        Parent().handler = nullptr;
        ::ReleaseCapture();
        ::DestroyWindow(combo);
    }
}

TEST_P(ComboBoxRobustness, ParentMayBeDestroyedByANotification) {
    MakeOpen(CBS_DROPDOWNLIST);
    HWND parent = Parent();
    OnNotice(CBN_SELENDOK, [parent] { ::DestroyWindow(parent); });
    SendList(WM_LBUTTONUP, 0, At(RowPoint(2)));
    EXPECT_FALSE(::IsWindow(parent));
    EXPECT_FALSE(::IsWindow(combo));
    EXPECT_FALSE(::IsWindow(list));
}

TEST_P(ComboBoxRobustness, EditsChangeMayEndAll) {
    for (const bool destroyed : {false, true}) {
        Make(CBS_DROPDOWN | WS_VSCROLL, 5);
        // The edit tells of its text before the skin is done with it.
        MessageSpy spy(edit);
        spy.handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message != WM_SETTEXT) return std::nullopt;
            if (destroyed)
                ::DestroyWindow(combo);
            else
                Send(CB_RESETCONTENT);
            return 0;
        };
        Send(destroyed ? UINT{0x701} : UINT{CB_SETCURSEL}, 3);
        EXPECT_EQ(::IsWindow(combo) != 0, !destroyed);
        spy.handler = nullptr;
        if (destroyed) continue;
        EXPECT_EQ(Current(), -1);
    }
}

TEST_P(ComboBoxRobustness, OwnerMayEndTheWindowsItDraws) {
    enum class Deed { Empty, Destroy };
    for (const Deed deed : {Deed::Empty, Deed::Destroy}) {
        Make(CBS_DROPDOWNLIST | WS_VSCROLL | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, 5);
        Open();
        Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message != WM_DRAWITEM) return std::nullopt;
            if (deed == Deed::Empty) {
                Send(CB_RESETCONTENT);
            } else {
                ::DestroyWindow(combo);
            }
            return TRUE;
        };
        ::InvalidateRect(list, nullptr, TRUE);
        ::UpdateWindow(list);
        Parent().handler = nullptr;
        if (deed == Deed::Destroy) {
            EXPECT_FALSE(::IsWindow(combo));
            continue;
        }
        EXPECT_EQ(Send(CB_GETCOUNT), 0);
        ::DestroyWindow(combo);
    }
}

TEST_P(ComboBoxRobustness, EndOfTheListLeavesAnEmptyComboBox) {
    MakeListOnly(3);
    // What happens to a list that is no more.
    Combo().ForgetList(&List());
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(Send(CB_GETCOUNT), 0);
    EXPECT_EQ(Send(CB_SETCURSEL, 1), 0);
    EXPECT_EQ(Send(CB_SETTOPINDEX, 1), 0);
    EXPECT_EQ(Send(CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>("It")), -1);
    EXPECT_EQ(Send(CB_DELETESTRING, 0), 0);
    EXPECT_EQ(Send(0x701, 0), 0);
    RepaintedClient(combo);
    Send(WM_LBUTTONDOWN, MK_LBUTTON, At(ArrowPoint()));
    EXPECT_EQ(Send(WM_KEYDOWN, VK_RETURN), 0);
    EXPECT_EQ(Current(), -1);
}

TEST_P(ComboBoxRobustness, ListWithoutItsSkinLeavesAnEmptyComboBox) {
    MakeListOnly(3);
    CSkinDropList* skinOfList = &List();
    skinOfList->Detach(list);
    delete skinOfList;
    ASSERT_FALSE(IsSkinned(list));
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(Send(CB_GETCOUNT), 0);
    EXPECT_EQ(Send(CB_SETCURSEL, 1), 0);
    Send(WM_LBUTTONDOWN, MK_LBUTTON, At(ArrowPoint()));
    RepaintedClient(combo);
    RepaintedClient(list);
    EXPECT_EQ(Text(), "");
}

TEST_P(ComboBoxRobustness, EditMayBeDestroyed) {
    Make(CBS_DROPDOWN | WS_VSCROLL, 3);
    ::DestroyWindow(edit);
    Send(WM_NCPAINT, 1);
    RepaintedClient(combo);
    Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>("kept"));
    EXPECT_EQ(Text(), "kept") << "as without an edit";
    Send(CB_SETCURSEL, 1);
    EXPECT_EQ(Text(), "Item 1");
    Send(WM_SETFOCUS);
    Send(0x701, 2);
    EXPECT_EQ(Text(), "Item 2");
}

TEST_P(ComboBoxRobustness, TenThousandCharactersAreCutNowhereButInTheCallersBuffer) {
    MakeListOnly();
    const std::string text(10'000, 'w');
    Add(text);
    Send(CB_SETCURSEL, 0);
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 10'000);
    std::vector<char> buffer(10'001, '#');
    EXPECT_EQ(Send(WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data())), 10'000);
    EXPECT_EQ(std::string(buffer.data()), text);
    EXPECT_EQ(Send(CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())), 0);
    Open();
    EXPECT_GT(RepaintedClient(list).CountOf(tavix::SkinColour(CLR_TEXT_HIGHLIGHT)), 100);
    EXPECT_GT(RepaintedClient(combo).CountOf(RGB(0, 0, 0)), 100);
    Send(0x701, 0);
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 10'000);
}

TEST_P(ComboBoxRobustness, ItemsWithoutStringsHaveNoText) {
    // The data stand where strings would: what a choice would read as a text is none.
    Make(CBS_DROPDOWNLIST | WS_VSCROLL | CBS_OWNERDRAWFIXED);
    for (int i = 0; i < 3; ++i) Send(CB_ADDSTRING, 0, 0x41424344);
    EXPECT_EQ(Send(CB_GETCOUNT), 3);
    EXPECT_EQ(Send(CB_SETCURSEL, 1), 0);
    EXPECT_EQ(Current(), 1);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Send(CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>("DCBA")), -1);
    Send(0x701, 2);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Send(CB_GETITEMDATA, 1), 0x41424344);
}

// What comes of no string is the native control's business; count and items follow its answer.
TEST_P(ComboBoxRobustness, MissingStringsAreSurvived) {
    for (const DWORD style : {CBS_DROPDOWNLIST, CBS_DROPDOWN}) {
        Make(style | WS_VSCROLL, 3);
        const LRESULT added = Send(CB_ADDSTRING);
        EXPECT_EQ(Send(CB_GETCOUNT), added >= 0 ? 4 : 3);
        const LRESULT before = Send(CB_GETCOUNT), inserted = Send(CB_INSERTSTRING, 1);
        EXPECT_EQ(Send(CB_GETCOUNT), inserted >= 0 ? before + 1 : before);
        EXPECT_EQ(Send(CB_GETLBTEXTLEN, inserted >= 0 ? 2 : 1), 6) << "of what stood there";
        EXPECT_EQ(Send(CB_SELECTSTRING), -1);
        Send(CB_FINDSTRING, static_cast<WPARAM>(-1));
        Send(CB_SETCURSEL, 1);
        Open();
        RepaintedClient(list);
        EXPECT_EQ(Current(), 1);
        ::DestroyWindow(combo);
    }
}

TEST_P(ComboBoxRobustness, IndicesOutOfRangeAreRefusedOrHarmless) {
    for (const DWORD style : {CBS_DROPDOWNLIST, CBS_DROPDOWN}) {
        Make(style | WS_VSCROLL, 3);
        Send(CB_SETCURSEL, 2);
        for (const int index : {INT_MIN, -2, 4, 0x7FFF, 0x10000, INT_MAX}) {
            SCOPED_TRACE(index);
            const auto w = static_cast<WPARAM>(index);
            char buffer[16] = "kept";
            EXPECT_EQ(Send(CB_INSERTSTRING, w, reinterpret_cast<LPARAM>("New")), CB_ERR);
            EXPECT_EQ(Send(CB_GETLBTEXT, w, reinterpret_cast<LPARAM>(buffer)), CB_ERR);
            EXPECT_STREQ(buffer, "kept");
            EXPECT_EQ(Send(CB_GETLBTEXTLEN, w), CB_ERR);
            EXPECT_EQ(Send(CB_SETITEMDATA, w, 7), CB_ERR);
            EXPECT_EQ(Send(CB_GETITEMDATA, w), CB_ERR);
            EXPECT_EQ(Send(CB_DELETESTRING, w), 0);
            Send(CB_SETCURSEL, 2);
            EXPECT_EQ(Send(0x701, w), 0);
            EXPECT_EQ(Text(), "Item 2");
        }
        EXPECT_EQ(Send(CB_GETCOUNT), 3);
        EXPECT_EQ(Current(), 2);
        ::DestroyWindow(combo);
    }
}

TEST_P(ComboBoxRobustness, TopIndexOutOfRangeShowsNothingAndScrollsByTheRules) {
    MakeListOnly(120);
    Open();
    const int visible = static_cast<int>(1.0 * ClientOf(list).bottom / RowHeight() + 0.5);
    struct Case {
        int from, to;
    };
    for (const Case& top : {Case{INT_MIN, INT_MIN + 1 + visible}, Case{INT_MAX, INT_MAX - visible}}) {
        Send(CB_SETTOPINDEX, static_cast<WPARAM>(top.from));
        EXPECT_EQ(RepaintedClient(list).At(5, 5), skin.Colour(CLR_LIST_BACK));
        for (const int code : {SB_LINEUP, SB_LINEDOWN, SB_PAGEUP, SB_PAGEDOWN})
            SendList(WM_VSCROLL, static_cast<WPARAM>(code));
        EXPECT_EQ(List().topItem, top.to);
        SendList(WM_MOUSEMOVE, 0, At(RowPoint(1)));
        EXPECT_EQ(Current(), -1);
        RepaintedClient(list);
        // The bar knows a place that there is.
        SendList(WM_VSCROLL, SB_THUMBPOSITION);
        EXPECT_GE(List().topItem, 0);
        EXPECT_LE(List().topItem, 120 - visible);
    }
}

TEST_P(ComboBoxRobustness, HostThatPaintsTheFrameInsideTheFramesPaintingComesToAnEnd) {
    Make(CBS_DROPDOWN | WS_VSCROLL, 3);
    int paintings = 0;
    MessageSpy spy(edit);
    spy.handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_PAINT && received.message != WM_WINDOWPOSCHANGED) return std::nullopt;
        if (++paintings < 100) Send(WM_NCPAINT, 1);
        return std::nullopt;
    };
    Send(WM_NCPAINT, 1);
    PumpMessages(50);
    EXPECT_LT(paintings, 100);
    spy.handler = nullptr;
}

TEST_P(ComboBoxRobustness, ManyComboBoxesLeaveNothingBehind) {
    const auto round = [this] {
        for (const DWORD style : {CBS_DROPDOWNLIST, CBS_DROPDOWN, CBS_SIMPLE,
                                  CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS}) {
            Make(style | WS_VSCROLL, 60);
            ::SetWindowPos(combo, nullptr, 0, 0, 120, 90, SWP_NOMOVE | SWP_NOZORDER);
            Send(CB_SETCURSEL, 3);
            Send(WM_NCPAINT, 1);
            RepaintedClient(combo);
            Send(WM_MOUSEMOVE, 0, At(ArrowPoint()));
            Open();
            RepaintedClient(list);
            SendList(WM_VSCROLL, SB_PAGEDOWN);
            SendList(WM_MOUSEMOVE, 0, At({10, 20}));
            ::UpdateWindow(list);
            SendList(WM_LBUTTONUP, 0, At({10, 20}));
            ::DestroyWindow(combo);
        }
    };
    for (int i = 0; i < 3; ++i) round();
    const int gdi = CountGdiObjects(), user = CountUserObjects();
    for (int i = 0; i < 15; ++i) round();
    EXPECT_LE(CountGdiObjects(), gdi + 5);
    EXPECT_EQ(CountUserObjects(), user);
}

}  // namespace
}  // namespace tavix_test
