// List boxes in bad company: hosts that destroy or empty them, odd values, long texts.
#include "controls/list_box_fixture.h"
#include "main/gui_objects.h"

namespace tavix_test {
namespace {

class ListBoxRobustness : public ListBoxTest {
protected:
    /* Runs at the first message of a kind that reaches the parent. */
    void OnParent(UINT message, std::function<void()> action) {
        Parent().handler = [message, action,
                            done = false](const Received& received) mutable -> std::optional<LRESULT> {
            if (received.message != message || done) return std::nullopt;
            done = true;
            action();
            return 0;
        };
    }
    /* What makes the list tell its parent something. */
    struct Cause {
        const char* name;
        std::function<void()> run;
    };
    std::vector<Cause> Causes() {
        return {{"set", [this] { Send(LB_SETCURSEL, 1); }},
                {"delete", [this] { Send(LB_DELETESTRING, static_cast<WPARAM>(Count() - 1)); }},
                {"up", [this] { Key(VK_UP); }},
                {"down", [this] { Key(VK_DOWN); }},
                {"left", [this] { Key(VK_LEFT); }},
                {"right", [this] { Key(VK_RIGHT); }},
                {"press", [this] { Press(RowPoint(1)); }},
                {"release", [this] { LetGo(RowPoint(1)); }},
                {"double", [this] { Send(WM_LBUTTONDBLCLK, 0, Packed(RowPoint(1))); }},
                {"focus", [this] { ::SetFocus(list); }},
                {"focus away", [this] { Send(WM_KILLFOCUS); }}};
    }
    void MakeForCause() {
        MakeList(WS_VSCROLL | LBS_NOTIFY, 20);
        ::SetFocus(Parent());
        Select(19);
        Parent().log.Clear();
    }
};
INSTANTIATE_TEST_SUITE_P(Worlds, ListBoxRobustness, kControlWorlds, NameOfWorld);

TEST_P(ListBoxRobustness, ListMayBeDestroyedByAnyNotification) {
    for (const Cause& cause : Causes()) {
        SCOPED_TRACE(cause.name);
        MakeForCause();
        OnParent(WM_COMMAND, [this] { ::DestroyWindow(list); });
        cause.run();
        EXPECT_FALSE(::IsWindow(list));
        EXPECT_FALSE(IsSkinned(list));
        Parent().handler = nullptr;
    }
}

TEST_P(ListBoxRobustness, ParentMayBeDestroyedByANotification) {
    MakeForCause();
    HWND parent = Parent();
    OnParent(WM_COMMAND, [parent] { ::DestroyWindow(parent); });
    Send(LB_DELETESTRING, 19);
    EXPECT_FALSE(::IsWindow(parent));
    EXPECT_FALSE(::IsWindow(list));
}

TEST_P(ListBoxRobustness, ListMayBeEmptiedByAnyNotification) {
    for (const Cause& cause : Causes()) {
        SCOPED_TRACE(cause.name);
        MakeForCause();
        OnParent(WM_COMMAND, [this] { Send(LB_RESETCONTENT); });
        cause.run();
        EXPECT_EQ(Count(), 0);
        EXPECT_EQ(RepaintedClient(list).At(20, 20), skin.Colour(CLR_LIST_BACK));
        Parent().handler = nullptr;
        ::DestroyWindow(list);
    }
}

TEST_P(ListBoxRobustness, OwnerMayDestroyTheListWhileItDraws) {
    for (bool byClick : {false, true}) {
        MakeList(WS_VSCROLL | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, 20, {200, 96}, 0);
        Select(1);
        RepaintedClient(list);
        OnParent(WM_DRAWITEM, [this] { ::DestroyWindow(list); });
        if (byClick)
            Press(RowPoint(3));
        else
            ::RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_FALSE(::IsWindow(list));
        Parent().handler = nullptr;
    }
}

TEST_P(ListBoxRobustness, OwnerMayEmptyTheListWhileItDraws) {
    MakeList(WS_VSCROLL | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, 20, {200, 96}, 0);
    OnParent(WM_DRAWITEM, [this] { Send(LB_RESETCONTENT); });
    ::RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(Count(), 0);
}

TEST_P(ListBoxRobustness, KeysOnAnEmptyListDrawNothing) {
    for (DWORD style :
         {DWORD{0}, DWORD{LBS_MULTICOLUMN}, DWORD{LBS_MULTIPLESEL}, DWORD{LBS_OWNERDRAWFIXED}}) {
        MakeList(style, 0);
        for (WORD key : {VK_DOWN, VK_DOWN, VK_UP, VK_LEFT, VK_RIGHT, VK_UP, VK_UP}) Key(key);
        EXPECT_EQ(RepaintedClient(list).CountOf(skin.Colour(CLR_LIST_BACK)), 200 * 96);
        ::DestroyWindow(list);
    }
}

TEST_P(ListBoxRobustness, CurrentItemBelowTheFirstIsSurvived) {
    MakeList(WS_VSCROLL, 20);
    SetTop(5);
    for (int i = 0; i < 4; ++i) Key(VK_UP);
    // Without a selection the keys count on downwards all the same.
    EXPECT_EQ(Current(), -5);
    EXPECT_EQ(Top(), 1);
    RepaintedClient(list);
    Press(RowPoint(2));
    EXPECT_EQ(Current(), 3);
}

TEST_P(ListBoxRobustness, TopItemAboveTheFirstIsSurvived) {
    MakeList(LBS_MULTICOLUMN | WS_VSCROLL, 40, {400, 96});
    Select(9);
    Key(VK_LEFT);
    EXPECT_EQ(Top(), -8);
    RepaintedClient(list);
    for (int y = 0; y < 96; y += 4) {
        Press({10, y});
        Send(LB_ITEMFROMPOINT, 0, MAKELPARAM(10, y));
    }
    LayOut();
    EXPECT_EQ(Top(), 0);
}

TEST_P(ListBoxRobustness, ScrollPositionBeyondTheItemsIsSurvived) {
    MakeList(WS_VSCROLL, 20);
    Scroll(SB_THUMBPOSITION, 60'000);
    EXPECT_EQ(Top(), 60'000);
    EXPECT_EQ(RepaintedClient(list).At(20, 20), skin.Colour(CLR_LIST_BACK));
    Press(RowPoint(1));
    EXPECT_EQ(Current(), -1);
    LayOut();
    EXPECT_EQ(Top(), 12);
}

TEST_P(ListBoxRobustness, IndicesOutOfRangeAreRefusedOrHarmless) {
    MakeList(WS_VSCROLL, 3);
    for (int index : {-2, -1, 3, 4, 0x7FFF, 0x7FFF'FFFF, static_cast<int>(0x8000'0000)}) {
        const auto w = static_cast<WPARAM>(index);
        EXPECT_EQ(Send(LB_SETTOPINDEX, w), LB_ERR);
        EXPECT_EQ(Send(LB_SETSEL, TRUE, index), LB_ERR);
        EXPECT_EQ(Send(LB_DELETESTRING, w), LB_ERR);
        EXPECT_EQ(Send(LB_SETCURSEL, w), index < 0 ? 1 : LB_ERR);
        RepaintedClient(list);
    }
    EXPECT_EQ(Count(), 3);
}

TEST_P(ListBoxRobustness, TextOfTenThousandCharactersIsKeptAndDrawn) {
    MakeList(WS_VSCROLL | LBS_MULTIPLESEL, 0);
    const std::string text(10'000, 'x');
    for (int i = 0; i < 12; ++i) EXPECT_EQ(Add(text), i);
    Mark({3});
    RepaintedClient(list);
    Press(RowPoint(2), MK_CONTROL);
    EXPECT_EQ(Send(LB_GETTEXTLEN, 11), 10'000);
}

// What comes of no string is the native control's business; the marks follow its answer.
TEST_P(ListBoxRobustness, ItemsWithoutAStringAreSurvived) {
    MakeList(WS_VSCROLL | LBS_MULTIPLESEL, 3);
    Mark({1});
    const LRESULT added = Send(LB_ADDSTRING, 0, 0);
    EXPECT_EQ(Count(), added >= 0 ? 4 : 3);
    const int before = Count();
    const LRESULT inserted = Send(LB_INSERTSTRING, 0, 0);
    EXPECT_EQ(Count(), inserted >= 0 ? before + 1 : before);
    int marked = -1;
    EXPECT_EQ(Send(LB_GETSELITEMS, 1, reinterpret_cast<LPARAM>(&marked)), 1);
    EXPECT_EQ(marked, inserted >= 0 ? 2 : 1);
    RepaintedClient(list);
}

TEST_P(ListBoxRobustness, MessagesWithoutTheirStructureAreSurvived) {
    MakeList(LBS_MULTIPLESEL, 3);
    Mark({1});
    EXPECT_EQ(Send(LB_GETSELITEMS, 3, 0), 1);
    EXPECT_EQ(Send(WM_NCCALCSIZE, TRUE, 0), 0);
    EXPECT_EQ(Send(WM_NCPAINT, 12345, 0), 0);
}

TEST_P(ListBoxRobustness, ManyListsLeaveNothingBehind) {
    const auto round = [this] {
        for (DWORD style : {DWORD{WS_VSCROLL}, DWORD{WS_VSCROLL | LBS_MULTIPLESEL}, DWORD{LBS_MULTICOLUMN}}) {
            MakeList(style, 20);
            Resize({150, 60});
            RepaintedClient(list);
            Key(VK_DOWN);
            Scroll(SB_PAGEDOWN);
            ::DestroyWindow(list);
        }
    };
    for (int i = 0; i < 3; ++i) round();
    const int before = CountGdiObjects();
    for (int i = 0; i < 20; ++i) round();
    EXPECT_LE(CountGdiObjects(), before + 5);
}

}  // namespace
}  // namespace tavix_test
