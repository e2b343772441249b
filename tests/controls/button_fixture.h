/* What the tests of the button skin share. */
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/control_test.h"

namespace tavix_test {

constexpr COLORREF kParentColour = RGB(10, 120, 200);
constexpr int kButtonId = 100;
constexpr RECT kButtonPlace{20, 20, 120, 50};
constexpr POINT kInside{30, 10};
constexpr POINT kOutside{30, 200};

constexpr LPARAM Packed(POINT point) { return MAKELPARAM(point.x, point.y); }

/* What tells the faces of a push button apart. */
struct Face {
    COLORREF top;
    COLORREF bottom;
    COLORREF border;
    bool operator==(const Face&) const = default;
};
inline void PrintTo(const Face& face, std::ostream* out) {
    *out << std::hex << "{top 0x" << face.top << ", bottom 0x" << face.bottom << ", border 0x" << face.border
         << "}" << std::dec;
}

/* In rows without text, away from the round corners. The height has to be even. */
inline Face FaceOf(const Picture& picture) {
    constexpr int kColumn = 6;
    return {picture.At(kColumn, 1), picture.At(kColumn, picture.height - 2), picture.At(kColumn, 0)};
}

/* Controls on a parent whose surface the tests may dot. */
class ButtonTest : public ControlTest {
protected:
    /* A new parent with these styles too; the former one is destroyed with its children. */
    ProbeWindow& UseParent(DWORD styles) {
        m_dots.clear();
        return ControlTest::UseParent(WS_POPUP | WS_VISIBLE | styles);
    }

    HWND MakeButton(DWORD style, const RECT& place = kButtonPlace, const char* text = "Label") {
        HWND button = CreateControl(GetParam().charset, Parent(), "Button", text, style, place, kButtonId);
        EXPECT_EQ(VersionOf(button), GetParam().controls);
        EXPECT_TRUE(IsSkinned(button));
        ::UpdateWindow(Parent());
        ::UpdateWindow(button);
        Parent().log.Clear();
        return button;
    }

    /* Gives a pixel of the parent's surface a colour, whenever the parent is erased. */
    void Dot(int x, int y, COLORREF colour) {
        m_dots.push_back({x, y, colour});
        Parent().handler = [this](const Received& received) -> std::optional<LRESULT> {
            if (received.message != WM_PAINT) return std::nullopt;
            PAINTSTRUCT paint;
            const HDC dc = ::BeginPaint(Parent(), &paint);
            for (const auto& dot : m_dots) ::SetPixel(dc, dot.x, dot.y, dot.colour);
            ::EndPaint(Parent(), &paint);
            return 0;
        };
        ::InvalidateRect(Parent(), nullptr, TRUE);
        ::UpdateWindow(Parent());
    }

    /* What shows once the pending painting is done. */
    static Picture Shown(HWND button) {
        ::UpdateWindow(button);
        return PictureOfClient(button);
    }
    static Face ShownFace(HWND button) { return FaceOf(Shown(button)); }

    Face NormalFace() const { return FaceFrom(CLR_BTN_NORMAL_FROM, CLR_BTN_NORMAL_TO, CLR_BTN_BORDER); }
    Face HotFace() const { return FaceFrom(CLR_BTN_HOT_FROM, CLR_BTN_HOT_TO, CLR_BTN_BORDER); }
    Face PressedFace() const { return FaceFrom(CLR_BTN_DOWN_FROM, CLR_BTN_DOWN_TO, CLR_BTN_BORDER); }
    Face DisabledFace() const {
        return FaceFrom(CLR_BTN_DISABLED_FROM, CLR_BTN_DISABLED_TO, CLR_BTN_DISABLED_BORDER);
    }

    /* The click that a parent is told of. */
    static Received ClickOf(HWND parent, HWND button) {
        return {parent, WM_COMMAND, MAKEWPARAM(kButtonId, BN_CLICKED), reinterpret_cast<LPARAM>(button)};
    }

private:
    struct Point {
        int x, y;
        COLORREF colour;
    };
    Face FaceFrom(DWORD top, DWORD bottom, DWORD border) const {
        return {skin.Colour(top), skin.Colour(bottom), skin.Colour(border)};
    }

    std::vector<Point> m_dots;
};

}  // namespace tavix_test
