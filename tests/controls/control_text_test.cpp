// Texts of controls that leave them to the native control: long ones, missing ones, and too little room.
#include "controls/text_fixture.h"

namespace tavix_test {
namespace {

struct Kind {
    const char* className;
    DWORD style;
};

class ControlTexts : public TextTest {
protected:
    static constexpr Kind kStatic{"Static", SS_LEFT}, kGroupBox{"Button", BS_GROUPBOX};
    static constexpr Kind kKinds[] = {
        kStatic,     {"Static", SS_ICON}, kGroupBox, {"Button", BS_PUSHBUTTON}, {"Button", BS_AUTOCHECKBOX},
        {"Edit", 0}, {"ListBox", 0}};
};
INSTANTIATE_TEST_SUITE_P(Worlds, ControlTexts, kControlWorlds, NameOfWorld);

TEST_P(ControlTexts, AreReadIntoRoomOfNoneAndOfOne) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(std::string(kind.className) + ", style " + std::to_string(kind.style));
        HWND window = Make(kind.className, kind.style);
        char narrow[2] = {'?', '?'};
        EXPECT_EQ(::SendMessageA(window, WM_GETTEXT, 0, reinterpret_cast<LPARAM>(narrow)), 0);
        EXPECT_EQ(narrow[0], '?');
        EXPECT_EQ(::SendMessageA(window, WM_GETTEXT, 1, reinterpret_cast<LPARAM>(narrow)), 0);
        EXPECT_EQ(narrow[0], '\0');
        EXPECT_EQ(narrow[1], '?');
        wchar_t wide[2] = {L'?', L'?'};
        EXPECT_EQ(::SendMessageW(window, WM_GETTEXT, 0, reinterpret_cast<LPARAM>(wide)), 0);
        EXPECT_EQ(wide[0], L'?');
        EXPECT_EQ(::SendMessageW(window, WM_GETTEXT, 1, reinterpret_cast<LPARAM>(wide)), 0);
        EXPECT_EQ(wide[0], L'\0');
        EXPECT_EQ(wide[1], L'?');
        ::DestroyWindow(window);
    }
}

TEST_P(ControlTexts, OfTenThousandCharactersAreKeptAndShown) {
    const std::string text(10'000, 'W');
    for (const DWORD clipping : {DWORD{0}, DWORD{WS_CLIPCHILDREN}})
        for (const Kind& kind : {kStatic, kGroupBox}) {
            SCOPED_TRACE(kind.className);
            UseParent(clipping);
            HWND window = Make(kind.className, kind.style, kTextPlace, text.c_str());
            EXPECT_EQ(TextOf(window), text);
            SetText(window, text + "y");
            EXPECT_EQ(TextOf(window), text + "y");
            ::InvalidateRect(Parent(), nullptr, TRUE);
            ::UpdateWindow(Parent());
            EXPECT_GT(RepaintedClient(window).CountOf(TextColour()), 50);
        }
}

TEST_P(ControlTexts, MissingOnesAreEmpty) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(std::string(kind.className) + ", style " + std::to_string(kind.style));
        // The text of an icon names a resource.
        if (kind.style == SS_ICON) continue;
        HWND window = Make(kind.className, kind.style);
        ::SendMessageA(window, WM_SETTEXT, 0, 0);
        EXPECT_EQ(TextOf(window), "");
        RepaintedClient(window);
        SetText(window, "Again");
        EXPECT_EQ(TextOf(window), "Again");
        ::DestroyWindow(window);
    }
}

}  // namespace
}  // namespace tavix_test
