/* What the tests of group boxes, statics and edits share. */
#pragma once

#include "controls/button_fixture.h"
#include "engine/skin_wnd_base.h"
#include "main/gui_objects.h"
#include "tavixskin/framework/geometry.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {

constexpr COLORREF kLeftColour = RGB(200, 10, 10);
constexpr COLORREF kRightColour = RGB(10, 200, 10);
constexpr COLORREF kOriginColour = RGB(200, 200, 10);
constexpr RECT kTextPlace{40, 30, 160, 90};

/* A window's skin object, if it is of that class. */
template <class Skin>
const Skin* SkinOf(HWND window) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    return engine ? dynamic_cast<const Skin*>(engine->GetSkinWndList()->Lookup(window)) : nullptr;
}

/* A skinned thread in one of the four worlds, for controls with a text. */
class TextTest : public ButtonTest {
protected:
    HWND Make(const char* className, DWORD style, const RECT& place = kTextPlace, const char* text = "Label",
              DWORD exStyle = 0) {
        return MakeIn(Parent(), className, style, place, text, exStyle);
    }
    HWND MakeIn(HWND parent, const char* className, DWORD style, const RECT& place = kTextPlace,
                const char* text = "Label", DWORD exStyle = 0) {
        HWND window =
            CreateControl(GetParam().charset, parent, className, text, style, place, kButtonId, exStyle);
        EXPECT_TRUE(IsSkinned(window));
        ::UpdateWindow(parent);
        ::UpdateWindow(window);
        return window;
    }
    /* A window of the class without a parent. */
    static HWND MakeAlone(const char* className, DWORD style) {
        return ::CreateWindowExA(0, className, "Label", WS_POPUP | WS_VISIBLE | style, 200, 200, 120, 60,
                                 nullptr, nullptr, nullptr, nullptr);
    }
    /* Three dots about the place: beside it in its top row, and in the parent's corner. */
    void DotAbout(const RECT& place) {
        Dot(place.left - 1, place.top, kLeftColour);
        Dot(place.right + 1, place.top, kRightColour);
        Dot(0, 0, kOriginColour);
    }
    /* Places that have the given pixel beside them: none of the others can be read. */
    static constexpr RECT kAtLeftEdge{0, 30, 120, 90};
    static constexpr RECT kEdgeToEdge{0, 30, 400, 90};

    /* By the functions of the world's character set, whose texts are of the ANSI code page. */
    static bool IsUnicode() { return GetParam().charset == Charset::Unicode; }
    static std::string TextOf(HWND window) {
        if (!IsUnicode()) {
            std::string text(static_cast<std::size_t>(::GetWindowTextLengthA(window)) + 1, '?');
            text.resize(static_cast<std::size_t>(
                ::GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
            return text;
        }
        std::wstring wide(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'?');
        wide.resize(
            static_cast<std::size_t>(::GetWindowTextW(window, wide.data(), static_cast<int>(wide.size()))));
        return {wide.begin(), wide.end()};
    }
    static LRESULT SetText(HWND window, const std::string& text) {
        if (!IsUnicode())
            return ::SendMessageA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
        const std::wstring wide(text.begin(), text.end());
        return ::SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
    }

    static RECT PlaceIn(HWND parent, HWND window) {
        RECT place;
        ::GetWindowRect(window, &place);
        ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    static RECT InvalidPart(HWND window) {
        RECT part;
        ::GetUpdateRect(window, &part, FALSE);
        return part;
    }
    LRESULT AskColour(HWND control, UINT message = WM_CTLCOLORSTATIC) {
        ::SetTextColor(canvas.Dc(), kCanvasColour);
        return ::SendMessageA(control, message, reinterpret_cast<WPARAM>(canvas.Dc()),
                              reinterpret_cast<LPARAM>(control));
    }
    /* The texts' colours are the system's, under every skin. */
    static COLORREF TextColour() { return ::GetSysColor(COLOR_WINDOWTEXT); }
    static COLORREF DisabledTextColour() { return ::GetSysColor(COLOR_GRAYTEXT); }
    /* The colour of a solid brush that was answered. */
    static COLORREF ColourOf(LRESULT brush) {
        LOGBRUSH facts{};
        EXPECT_NE(::GetObjectA(reinterpret_cast<HBRUSH>(brush), sizeof facts, &facts), 0);
        EXPECT_EQ(facts.lbStyle, static_cast<UINT>(BS_SOLID));
        return facts.lbColor;
    }
    /* Runs the round a few times, and then many times more without a growth. */
    template <class Round>
    static void ExpectNoGrowth(Round round) {
        for (int i = 0; i < 3; ++i) round();
        const long gdi = CountGdiObjects();
        const int user = CountUserObjects();
        for (int i = 0; i < 20; ++i) round();
        EXPECT_LE(CountGdiObjects(), gdi + 1);
        EXPECT_EQ(CountUserObjects(), user);
    }

    static constexpr COLORREF kCanvasColour = RGB(1, 2, 3);
    Canvas canvas{10, 10, kCanvasColour};
};

}  // namespace tavix_test
