// Edits: frames that go, texts, and scroll bars that follow.
#include <algorithm>

#include "controls/edit_fixture.h"
#include "scroll/scroll_host.h"
#include "scroll/skin_scroll_bar.h"

namespace tavix_test {
namespace {

class Edit : public EditTest {
protected:
    /* Answers a message in the native control's place. */
    static std::function<std::optional<LRESULT>(const Received&)> Answer(UINT message, LRESULT answer) {
        return [=](const Received& received) -> std::optional<LRESULT> {
            if (received.message == message) return answer;
            return std::nullopt;
        };
    }
};
INSTANTIATE_TEST_SUITE_P(Worlds, Edit, kControlWorlds, NameOfWorld);

// ---------------------------------------------------------------- frames

TEST_P(Edit, LosesItsFrame) {
    constexpr DWORD kEdges = WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE;
    for (const DWORD type : {DWORD{0}, DWORD{ES_MULTILINE | WS_VSCROLL}}) {
        HWND edit = MakeEdit(type | WS_BORDER, kTextPlace, kEdges | WS_EX_RIGHT);
        EXPECT_EQ(StyleOf(edit) & WS_BORDER, 0u);
        EXPECT_EQ(ExStyleOf(edit) & (kEdges | WS_EX_RIGHT), static_cast<DWORD>(WS_EX_RIGHT));
        EXPECT_EQ(SkinOf<CSkinEdit>(edit)->CreationExStyle() & WS_EX_CLIENTEDGE,
                  static_cast<DWORD>(WS_EX_CLIENTEDGE));
    }
}

TEST_P(Edit, LosesItsFrameAfterTheNativeCreation) {
    ClassSpy below("Edit");
    DWORD atCreation = 0;
    below.handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_CREATE) atCreation = ExStyleOf(received.window);
        return std::nullopt;
    };
    HWND edit = MakeEdit(0, kTextPlace, WS_EX_CLIENTEDGE);
    EXPECT_NE(atCreation & WS_EX_CLIENTEDGE, 0u);
    ::DestroyWindow(edit);
}

TEST_P(Edit, TakesItsFormerFramesRoomAtTheNextMeasuring) {
    HWND edit = MakeEdit(0, kTextPlace, WS_EX_CLIENTEDGE);
    RECT client;
    ::GetClientRect(edit, &client);
    EXPECT_LT(client.right, 120);
    ::SetWindowPos(edit, nullptr, 0, 0, 0, 0,
                   SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    ::GetClientRect(edit, &client);
    EXPECT_EQ(client.right, 120);
    EXPECT_EQ(client.bottom, 60);
}

TEST_P(Edit, IsMadeEvenIfTheNativeControlRefuses) {
    ClassSpy below("Edit");
    below.handler = Answer(WM_CREATE, -1);
    HWND edit = MakeEdit(WS_BORDER);
    EXPECT_TRUE(::IsWindow(edit));
    EXPECT_EQ(StyleOf(edit) & WS_BORDER, 0u);
    below.handler = nullptr;
    ::DestroyWindow(edit);
}

TEST_P(Edit, GetsItsNativeFramePaintingOnlyWithAVerticalBar) {
    const struct {
        DWORD style;
        bool painted;
    } cases[] = {{0, false},
                 {ES_MULTILINE, false},
                 {ES_MULTILINE | WS_HSCROLL, false},
                 {ES_MULTILINE | WS_VSCROLL, true},
                 {ES_MULTILINE | WS_VSCROLL | WS_HSCROLL, true}};
    ClassSpy below("Edit");
    for (const auto& [style, painted] : cases) {
        SCOPED_TRACE(style);
        HWND edit = MakeEdit(style);
        below.handler = Answer(WM_NCPAINT, 77);
        below.log.Clear();
        EXPECT_EQ(::SendMessageA(edit, WM_NCPAINT, 1, 0), painted ? 77 : 0);
        EXPECT_EQ(below.log.Has(WM_NCPAINT), painted);
        below.handler = nullptr;
        ::DestroyWindow(edit);
    }
}

TEST_P(Edit, IsNoScrollHost) {
    HWND edit = MakeEdit(ES_MULTILINE | WS_VSCROLL | WS_HSCROLL);
    EXPECT_EQ(::FindScrollHost(edit, SB_VERT), -3);
    EXPECT_NE(StyleOf(edit) & WS_VSCROLL, 0u) << "its bars stay native";
}

TEST_P(Edit, KnowsWhetherItIsInAComboBox) {
    EXPECT_FALSE(SkinOf<CSkinEdit>(MakeEdit())->IsInComboBox());
    HWND combo =
        CreateControl(GetParam().charset, Parent(), "ComboBox", "", CBS_DROPDOWN, {200, 20, 300, 120}, 101);
    HWND edit = ::FindWindowExA(combo, nullptr, "Edit", nullptr);
    ASSERT_NE(SkinOf<CSkinEdit>(edit), nullptr);
    EXPECT_TRUE(SkinOf<CSkinEdit>(edit)->IsInComboBox());
    ::SetWindowTextA(combo, "typed");
    EXPECT_EQ(TextOf(edit), "typed");
}

// ---------------------------------------------------------------- texts

TEST_P(Edit, AnswersOneToANewTextWhateverTheNativeControlSays) {
    ClassSpy below("Edit");
    HWND edit = MakeEdit();
    EXPECT_EQ(SetText(edit, "one"), 1);
    EXPECT_TRUE(below.log.Has(WM_SETTEXT));
    for (const LRESULT answer : {0, 77, -1}) {
        below.handler = Answer(WM_SETTEXT, answer);
        EXPECT_EQ(SetText(edit, "two"), 1);
    }
    below.handler = nullptr;
    EXPECT_EQ(TextOf(edit), "one");
    ::DestroyWindow(edit);
}

TEST_P(Edit, RepaintsWholeWithANewText) {
    ClassSpy below("Edit");
    HWND edit = MakeEdit();
    below.handler = Answer(WM_SETTEXT, TRUE);  // nothing but the skin invalidates
    ::ValidateRect(edit, nullptr);
    SetText(edit, "other");
    RECT client;
    ::GetClientRect(edit, &client);
    const RECT invalid = InvalidPart(edit);
    EXPECT_TRUE(::EqualRect(&invalid, &client));
    below.log.Clear();
    ::UpdateWindow(edit);
    EXPECT_TRUE(below.log.Has(WM_ERASEBKGND)) << "with its ground";
    EXPECT_TRUE(below.log.Has(WM_PAINT)) << "by the native control";
    below.handler = nullptr;
    ::DestroyWindow(edit);
}

TEST_P(Edit, HoldsTenThousandCharacters) {
    std::string text;
    for (int i = 0; i < 10'000; ++i) text += static_cast<char>('a' + i % 26);
    for (const DWORD style : {DWORD{ES_AUTOHSCROLL}, DWORD{ES_MULTILINE | WS_VSCROLL}}) {
        HWND edit = MakeEdit(style);
        EXPECT_EQ(SetText(edit, text), 1);
        EXPECT_EQ(::SendMessageA(edit, WM_GETTEXTLENGTH, 0, 0), 10'000);
        EXPECT_EQ(TextOf(edit), text);
        ::DestroyWindow(edit);
    }
}

TEST_P(Edit, EmptyAndMissingTextsAreTaken) {
    HWND edit = MakeEdit();
    EXPECT_EQ(SetText(edit, ""), 1);
    EXPECT_EQ(TextOf(edit), "");
    SetText(edit, "again");
    EXPECT_EQ(::SendMessageA(edit, WM_SETTEXT, 0, 0), 1);
    EXPECT_EQ(TextOf(edit), "");
}

TEST_P(Edit, MayBeDestroyedWhileItsTextChanges) {
    HWND edit = MakeEdit();
    Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_COMMAND && HIWORD(received.wParam) == EN_CHANGE) {
            ::DestroyWindow(edit);
            return 0;
        }
        return std::nullopt;
    };
    ::ValidateRect(Parent(), nullptr);
    EXPECT_EQ(::SendMessageA(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("last")), 1);
    EXPECT_FALSE(::IsWindow(edit));
    Parent().handler = nullptr;
}

TEST_P(Edit, ParentMayBeDestroyedWhileItsTextChanges) {
    HWND parent = Parent();
    HWND edit = MakeEdit();
    Parent().handler = [parent](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_COMMAND || HIWORD(received.wParam) != EN_CHANGE) return std::nullopt;
        ::DestroyWindow(parent);
        return 0;
    };
    EXPECT_EQ(SetText(edit, "last"), 1);
    EXPECT_FALSE(::IsWindow(parent));
    EXPECT_FALSE(::IsWindow(edit));
    EXPECT_FALSE(IsSkinned(edit));
}

TEST_P(Edit, TypingAndFocusStayNative) {
    HWND edit = MakeEdit();
    SetText(edit, "");
    Parent().log.Clear();
    ::SetFocus(edit);
    EXPECT_EQ(::GetFocus(), edit);
    for (const char c : {'a', 'b', 'c'}) ::SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(c), 1);
    ::SendMessageA(edit, WM_CHAR, VK_BACK, 1);
    EXPECT_EQ(TextOf(edit), "ab");
    ::SetFocus(Parent());
    std::vector<WORD> told;
    for (const Received& entry : Parent().log.Entries())
        if (entry.message == WM_COMMAND) told.push_back(HIWORD(entry.wParam));
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told.front(), EN_SETFOCUS);
    EXPECT_EQ(told.back(), EN_KILLFOCUS);
    EXPECT_EQ(std::count(told.begin(), told.end(), WORD{EN_CHANGE}), 4);

    HWND readOnly = MakeEdit(ES_READONLY, {40, 100, 160, 130});
    ::SendMessageA(readOnly, WM_CHAR, 'x', 1);
    EXPECT_EQ(TextOf(readOnly), "Text");
}

TEST_P(Edit, ChangeOfSkinRepaintsIt) {
    HWND edit = MakeEdit();
    ::ValidateRect(edit, nullptr);
    UseChangedSkin();
    EXPECT_TRUE(::GetUpdateRect(edit, nullptr, FALSE));
}

// ---------------------------------------------------------------- scroll bars

// Edits are no hosts by themselves; the program may make one.
class EditOnBars : public Edit {
protected:
    void SetUp() override {
        Edit::SetUp();
        edit = MakeEdit(ES_MULTILINE);
        ASSERT_EQ(::InstallScrollHost(edit), 1);
        SCROLLHOST host;
        ASSERT_GE(::GetScrollHostRecord(edit, &host), 0);
        horizontal = host.m_pHorzBar->GetSafeHwnd();
        vertical = host.m_pVertBar->GetSafeHwnd();
    }
    void TearDown() override {
        ::RemoveScrollHost(edit);
        Edit::TearDown();
    }
    void Lay(int horizontalWanted, int verticalWanted) {
        ::LayoutScrollHost(::FindScrollHost(edit, SB_VERT), horizontalWanted, verticalWanted, CRect());
    }
    LRESULT Tell(WPARAM shown) { return ::SendMessageA(edit, WM_SHOWWINDOW, shown, 0); }
    bool Shows(HWND bar) const { return ::IsWindowVisible(bar); }

    HWND edit = nullptr, horizontal = nullptr, vertical = nullptr;
};
INSTANTIATE_TEST_SUITE_P(Worlds, EditOnBars, kControlWorlds, NameOfWorld);

TEST_P(EditOnBars, BarsComeBackAsTheyWere) {
    for (const int wanted : {0, 1, 2, 3}) {
        SCOPED_TRACE(wanted);
        const bool hasHorizontal = wanted & 1, hasVertical = wanted & 2;
        Lay(hasHorizontal, hasVertical);
        ::ShowWindow(edit, SW_HIDE);
        EXPECT_FALSE(Shows(horizontal));
        EXPECT_FALSE(Shows(vertical));
        ::ShowWindow(edit, SW_SHOWNOACTIVATE);
        EXPECT_EQ(Shows(horizontal), hasHorizontal);
        EXPECT_EQ(Shows(vertical), hasVertical);
    }
}

TEST_P(EditOnBars, BeforeItWasEverHiddenOnlyTheVerticalOneCounts) {
    EXPECT_FALSE(Shows(vertical));
    Tell(1);
    EXPECT_TRUE(Shows(vertical));
    EXPECT_FALSE(Shows(horizontal));
}

TEST_P(EditOnBars, AnyWordButOneHides) {
    for (const WPARAM word : {WPARAM{0}, WPARAM{2}, static_cast<WPARAM>(-1)}) {
        Lay(1, 1);
        Tell(word);
        EXPECT_FALSE(Shows(horizontal));
        EXPECT_FALSE(Shows(vertical));
    }
    // The second of two finds nothing visible, and remembers that.
    Tell(0);
    Tell(1);
    EXPECT_FALSE(Shows(horizontal));
    EXPECT_FALSE(Shows(vertical));
}

TEST_P(Edit, ShowingGoesOnToTheNativeControl) {
    ClassSpy below("Edit");
    HWND edit = MakeEdit();
    below.handler = Answer(WM_SHOWWINDOW, 77);
    EXPECT_EQ(::SendMessageA(edit, WM_SHOWWINDOW, 1, 0), 77);
    EXPECT_EQ(::SendMessageA(edit, WM_SHOWWINDOW, 0, 0), 77);
    below.handler = nullptr;
    ::DestroyWindow(edit);
}

}  // namespace
}  // namespace tavix_test
