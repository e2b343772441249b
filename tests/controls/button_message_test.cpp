// Each message that the button skin handles: what the native control sees of it, and the result.
#include "controls/button_fixture.h"

namespace tavix_test {
namespace {

using Messages = std::vector<UINT>;

// The types by what the skin makes of them. Type 7 is another skin's.
constexpr DWORD kPushTypes[] = {0, 1};
constexpr DWORD kMarkTypes[] = {2, 3, 4, 9};
constexpr DWORD kOwnerDrawnTypes[] = {11, 15};
constexpr DWORD kBlankTypes[] = {5, 6, 8, 10, 12, 13, 14};

std::vector<DWORD> AllTypes() {
    std::vector<DWORD> types;
    for (DWORD type = 0; type < 16; ++type)
        if (type != BS_GROUPBOX) types.push_back(type);
    return types;
}

class ButtonMessage : public ButtonTest {
protected:
    void SetUp() override {
        ButtonTest::SetUp();
        native.emplace("Button");
    }
    void TearDown() override {
        LoseParent();
        native.reset();
        ButtonTest::TearDown();
    }

    /* What the native control saw of one kind of message, which is sent. */
    int SeenOf(HWND button, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        native->log.Clear();
        result = ::SendMessageA(button, message, wParam, lParam);
        return native->log.Count(message);
    }
    /* The native control answers a message with 77. */
    void AnswerNatively(UINT message) {
        native->handler = [message](const Received& received) -> std::optional<LRESULT> {
            if (received.message == message) return 77;
            return std::nullopt;
        };
    }

    std::optional<ClassSpy> native;
    LRESULT result = 0;
};
INSTANTIATE_TEST_SUITE_P(Worlds, ButtonMessage, kControlWorlds, NameOfWorld);

TEST_P(ButtonMessage, CreationNeverReachesTheNativeControl) {
    for (DWORD type : AllTypes()) {
        SCOPED_TRACE(type);
        native->log.Clear();
        HWND button = MakeButton(type);
        EXPECT_TRUE(native->log.Has(WM_NCCREATE));
        EXPECT_FALSE(native->log.Has(WM_CREATE));
        // A native control turns the old type 8 into a push button when it is created.
        EXPECT_EQ(static_cast<DWORD>(::GetWindowLongA(button, GWL_STYLE)) & 0xF, type);
    }
}

TEST_P(ButtonMessage, StyleIsReadOnceAtCreation) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    ::SetWindowLongA(button, GWL_STYLE, WS_CHILD | WS_VISIBLE | BS_AUTOCHECKBOX);
    EXPECT_EQ(FaceOf(RepaintedClient(button)), NormalFace());
}

TEST_P(ButtonMessage, SizeIsPassedOnAndAnswersZero) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    AnswerNatively(WM_SIZE);
    EXPECT_EQ(SeenOf(button, WM_SIZE, SIZE_RESTORED, MAKELPARAM(100, 30)), 1);
    EXPECT_EQ(result, 0);
}

TEST_P(ButtonMessage, EnableIsPassedOnAndRepaintsTheParentBelow) {
    for (DWORD type : AllTypes()) {
        SCOPED_TRACE(type);
        UseParent(0);
        HWND button = MakeButton(type);
        AnswerNatively(WM_ENABLE);
        RECT repainted{};
        Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message == WM_PAINT) ::GetUpdateRect(Parent(), &repainted, FALSE);
            return std::nullopt;
        };
        for (WPARAM enable : {0, 1}) {
            EXPECT_EQ(SeenOf(button, WM_ENABLE, enable), 1);
            EXPECT_EQ(result, 0);
            EXPECT_TRUE(::EqualRect(&repainted, &kButtonPlace));
            RECT pending{};
            ::GetUpdateRect(button, &pending, FALSE);
            const RECT client{0, 0, 100, 30};
            EXPECT_TRUE(::EqualRect(&pending, &client));
            ::UpdateWindow(button);
            repainted = {};
        }
    }
}

TEST_P(ButtonMessage, NewTextOfAnEnabledButtonIsFollowedByAPressWithItsAddress) {
    for (DWORD type : AllTypes()) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        MessageSpy spy(button);
        spy.log.Listen({WM_SETTEXT, WM_LBUTTONDOWN, WM_LBUTTONDBLCLK});
        const char text[] = "New";
        const LPARAM address = reinterpret_cast<LPARAM>(text);
        EXPECT_EQ(::SendMessageA(button, WM_SETTEXT, 5, address), 0);
        const std::vector<Received> expected{{button, WM_SETTEXT, 5, address},
                                             {button, WM_LBUTTONDOWN, 5, address}};
        EXPECT_EQ(spy.log.Entries(), expected);
        char kept[16] = {};
        ::GetWindowTextA(button, kept, sizeof kept);
        EXPECT_STREQ(kept, "New");
        ::ReleaseCapture();
    }
}

TEST_P(ButtonMessage, NewTextOfADisabledButtonOnlyRepaints) {
    HWND button = MakeButton(BS_PUSHBUTTON | WS_DISABLED);
    const Picture before = Shown(button);
    MessageSpy spy(button);
    spy.log.Listen({WM_PAINT, WM_LBUTTONDOWN});
    EXPECT_EQ(::SendMessageA(button, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("Another")), 0);
    EXPECT_TRUE(spy.log.Has(WM_PAINT));
    EXPECT_FALSE(spy.log.Has(WM_LBUTTONDOWN));
    EXPECT_NE(PictureOfClient(button), before);
    EXPECT_EQ(FaceOf(PictureOfClient(button)), DisabledFace());
}

TEST_P(ButtonMessage, SetWindowTextReportsFailureThoughTheTextIsSet) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    EXPECT_FALSE(::SetWindowTextA(button, "New"));
    EXPECT_FALSE(::SetWindowTextW(button, L"Newer"));
    wchar_t kept[16] = {};
    ::GetWindowTextW(button, kept, 16);
    EXPECT_STREQ(kept, L"Newer");
}

/* Memory whose address, cut to 32 bits, is a point at the left edge of a client area of that height. */
void* AllocateAtPointInside(int height) {
    // Of a long address only the low half counts; the low memory of a 64-bit program may all be taken.
    constexpr UINT_PTR kUpperHalf = sizeof(void*) == 8 ? static_cast<UINT_PTR>(0x200000000ull) : 0;
    void* memory = nullptr;
    for (UINT_PTR row = 1; row < static_cast<UINT_PTR>(height) && !memory; ++row)
        memory = ::VirtualAlloc(reinterpret_cast<void*>(kUpperHalf + (row << 16)), 4096,
                                MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    return memory;
}

// The address of a text may happen to be a point of the button: then the new text presses it.
TEST_P(ButtonMessage, NewTextPressesTheButtonIfItsAddressIsAPointInside) {
    HWND button = MakeButton(BS_PUSHBUTTON, {0, 0, 400, 280});
    void* memory = AllocateAtPointInside(280);
    ASSERT_NE(memory, nullptr);
    char* text = static_cast<char*>(memory) + 7;
    ::lstrcpyA(text, "New");
    ::SendMessageA(button, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    EXPECT_EQ(ShownFace(button), PressedFace());
    EXPECT_EQ(::GetFocus(), button);
    ::VirtualFree(memory, 0, MEM_RELEASE);
}

TEST_P(ButtonMessage, PaintReachesTheNativeControlOfOwnerDrawnTypesOnly) {
    for (DWORD type : AllTypes()) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        native->log.Clear();
        ::InvalidateRect(button, nullptr, FALSE);
        ::UpdateWindow(button);
        EXPECT_EQ(native->log.Has(WM_PAINT), type == 11 || type == 15);
        EXPECT_EQ(native->log.Count(WM_GETFONT), 1);
        EXPECT_FALSE(::GetUpdateRect(button, nullptr, FALSE)) << "the update region stays";
        ::InvalidateRect(button, nullptr, FALSE);
        EXPECT_EQ(::SendMessageA(button, WM_PAINT, 0, 0), 0);
    }
}

TEST_P(ButtonMessage, EraseNeverReachesTheNativeControlAndAnswersOne) {
    for (DWORD type : AllTypes()) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        const HDC dc = ::GetDC(button);
        EXPECT_EQ(SeenOf(button, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc)), 0);
        EXPECT_EQ(result, 1);
        ::ReleaseDC(button, dc);
    }
}

TEST_P(ButtonMessage, EveryOtherEraseOfAnOwnerDrawnButtonAsksTheParentForItsBrush) {
    for (DWORD type : kOwnerDrawnTypes) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        // The first painting has come and gone; what the toggle holds shows in the first erase.
        Parent().log.Listen({WM_CTLCOLORBTN});
        const HBRUSH brush = ::CreateSolidBrush(RGB(1, 2, 3));
        std::vector<COLORREF> filled;
        Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message != WM_CTLCOLORBTN) return std::nullopt;
            EXPECT_EQ(reinterpret_cast<HWND>(received.lParam), button);
            EXPECT_EQ(::WindowFromDC(reinterpret_cast<HDC>(received.wParam)), button);
            return reinterpret_cast<LRESULT>(brush);
        };
        std::vector<int> asked;
        for (int i = 0; i < 4; ++i) {
            ::ValidateRect(button, nullptr);
            Parent().log.Clear();
            ::SendMessageA(button, WM_ERASEBKGND, 0, 0);
            asked.push_back(Parent().log.Count(WM_CTLCOLORBTN));
            EXPECT_EQ(::GetUpdateRect(button, nullptr, FALSE) != 0, asked.back() == 1) << "erase " << i;
            if (asked.back()) {
                EXPECT_EQ(PictureOfClient(button).CountOf(RGB(1, 2, 3)), 100 * 30);
            }
        }
        EXPECT_EQ(asked[0] + asked[1], 1);
        EXPECT_EQ(asked[0], asked[2]);
        EXPECT_EQ(asked[1], asked[3]);
        Parent().handler = nullptr;
        ::DeleteObject(brush);
    }
}

TEST_P(ButtonMessage, EraseOfAnOwnerDrawnButtonWithoutABrushOfTheParentLeavesItAlone) {
    HWND button = MakeButton(BS_OWNERDRAW);
    Parent().handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_CTLCOLORBTN) return 0;
        return std::nullopt;
    };
    for (int i = 0; i < 2; ++i) {
        ::ValidateRect(button, nullptr);
        EXPECT_EQ(::SendMessageA(button, WM_ERASEBKGND, 0, 0), 1);
        EXPECT_FALSE(::GetUpdateRect(button, nullptr, FALSE));
    }
}

TEST_P(ButtonMessage, SettingTheCheckStateThatABoxHoldsDoesNothing) {
    for (DWORD type : kMarkTypes) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        MessageSpy spy(button);
        for (WPARAM state : {0, 1}) {
            ::SendMessageA(button, BM_SETCHECK, state, 0);
            AnswerNatively(BM_SETCHECK);
            spy.log.Clear();
            EXPECT_EQ(SeenOf(button, BM_SETCHECK, state), 0);
            EXPECT_EQ(result, 0);
            EXPECT_FALSE(spy.log.Has(WM_PAINT));
            EXPECT_FALSE(::GetUpdateRect(button, nullptr, FALSE));
            native->handler = nullptr;
        }
    }
}

TEST_P(ButtonMessage, SettingAnotherCheckStateIsPassedOnAndRepaints) {
    for (DWORD type : kMarkTypes) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        MessageSpy spy(button);
        Parent().log.Clear();
        EXPECT_EQ(SeenOf(button, BM_SETCHECK, 1), 1);
        EXPECT_EQ(::SendMessageA(button, BM_GETCHECK, 0, 0), 1);
        EXPECT_TRUE(spy.log.Has(WM_PAINT));
        EXPECT_TRUE(Parent().log.Has(WM_PAINT));
        AnswerNatively(BM_SETCHECK);
        SeenOf(button, BM_SETCHECK, 0);
        EXPECT_EQ(result, 77);
        native->handler = nullptr;
    }
}

TEST_P(ButtonMessage, SettingTheCheckStateOfAPushButtonAlwaysRepaints) {
    for (DWORD type : kPushTypes) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        MessageSpy spy(button);
        AnswerNatively(BM_SETCHECK);
        EXPECT_EQ(SeenOf(button, BM_SETCHECK, 0), 1);
        EXPECT_EQ(result, 77);
        EXPECT_TRUE(spy.log.Has(WM_PAINT));
    }
}

TEST_P(ButtonMessage, PushedStateIsPassedOnAndRepaints) {
    for (DWORD type : AllTypes()) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        MessageSpy spy(button);
        EXPECT_EQ(SeenOf(button, BM_SETSTATE, TRUE), 1);
        EXPECT_TRUE(::SendMessageA(button, BM_GETSTATE, 0, 0) & BST_PUSHED);
        EXPECT_TRUE(spy.log.Has(WM_PAINT));
        AnswerNatively(BM_SETSTATE);
        SeenOf(button, BM_SETSTATE, FALSE);
        EXPECT_EQ(result, 77);
        native->handler = nullptr;
    }
}

TEST_P(ButtonMessage, PushedStateDoesNotShow) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    ::SendMessageA(button, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(ShownFace(button), NormalFace());
}

TEST_P(ButtonMessage, ColourMessageMakesTheContextTransparentAndGivesNoBrush) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    const Canvas canvas(4, 4, RGB(9, 9, 9));
    ::SetBkMode(canvas.Dc(), OPAQUE);
    EXPECT_EQ(SeenOf(button, WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(canvas.Dc()),
                     reinterpret_cast<LPARAM>(button)),
              0);
    EXPECT_EQ(reinterpret_cast<HGDIOBJ>(result), ::GetStockObject(NULL_BRUSH));
    EXPECT_EQ(::GetBkMode(canvas.Dc()), TRANSPARENT);
}

TEST_P(ButtonMessage, SpaceKeyIsKeptAndOtherKeysArePassedOn) {
    for (DWORD type : AllTypes()) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        for (UINT message : {WM_KEYDOWN, WM_KEYUP}) {
            AnswerNatively(message);
            EXPECT_EQ(SeenOf(button, message, VK_SPACE), 0);
            EXPECT_EQ(result, 0);
            EXPECT_EQ(SeenOf(button, message, VK_TAB), 1);
            EXPECT_EQ(result, 77);
        }
        native->handler = nullptr;
    }
}

TEST_P(ButtonMessage, MouseReachesTheNativeControlAsItsTypeSays) {
    struct Row {
        UINT message;
        bool push, mark, ownerDrawn, blank;
    };
    constexpr Row kRows[] = {{WM_MOUSEMOVE, false, false, true, false},
                             {WM_LBUTTONDOWN, true, true, true, true},
                             {WM_LBUTTONUP, false, true, true, false},
                             {WM_LBUTTONDBLCLK, false, false, false, false}};
    const auto expectSeen = [&](DWORD type, UINT message, bool seen) {
        SCOPED_TRACE("type " + std::to_string(type) + ", message " + std::to_string(message));
        HWND button = MakeButton(type);
        AnswerNatively(message);
        EXPECT_EQ(SeenOf(button, message, 0, Packed(kInside)), seen ? 1 : 0);
        EXPECT_EQ(result, 0);
        native->handler = nullptr;
        ::ReleaseCapture();
        ::DestroyWindow(button);
    };
    for (const Row& row : kRows) {
        for (DWORD type : kPushTypes) expectSeen(type, row.message, row.push);
        for (DWORD type : kMarkTypes) expectSeen(type, row.message, row.mark);
        for (DWORD type : kOwnerDrawnTypes) expectSeen(type, row.message, row.ownerDrawn);
        for (DWORD type : kBlankTypes) expectSeen(type, row.message, row.blank);
    }
}

TEST_P(ButtonMessage, DoubleClickIsSentAgainAsAPress) {
    for (DWORD type : AllTypes()) {
        SCOPED_TRACE(type);
        HWND button = MakeButton(type);
        MessageSpy spy(button);
        spy.log.Listen({WM_LBUTTONDBLCLK, WM_LBUTTONDOWN});
        ::SendMessageA(button, WM_LBUTTONDBLCLK, MK_LBUTTON, Packed(kInside));
        const std::vector<Received> expected{{button, WM_LBUTTONDBLCLK, MK_LBUTTON, Packed(kInside)},
                                             {button, WM_LBUTTONDOWN, MK_LBUTTON, Packed(kInside)}};
        EXPECT_EQ(spy.log.Entries(), expected);
        ::ReleaseCapture();
        ::EnableWindow(button, FALSE);
        spy.log.Clear();
        ::SendMessageA(button, WM_LBUTTONDBLCLK, MK_LBUTTON, Packed(kInside));
        EXPECT_EQ(spy.log.Messages(), Messages{WM_LBUTTONDBLCLK});
    }
}

TEST_P(ButtonMessage, FocusAndFontAreTheNativeControls) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    EXPECT_EQ(SeenOf(button, WM_SETFOCUS), 1);
    EXPECT_EQ(SeenOf(button, WM_KILLFOCUS), 1);
    const HGDIOBJ font = ::GetStockObject(ANSI_FIXED_FONT);
    EXPECT_EQ(SeenOf(button, WM_SETFONT, reinterpret_cast<WPARAM>(font)), 1);
    EXPECT_EQ(reinterpret_cast<HGDIOBJ>(::SendMessageA(button, WM_GETFONT, 0, 0)), font);
}

}  // namespace
}  // namespace tavix_test
