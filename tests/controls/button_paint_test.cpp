// What buttons look like: the faces on a memory context, and each type in a window.
#include <algorithm>

#include "controls/button_fixture.h"
#include "controls/button_paint.h"

namespace tavix_test {
namespace {

constexpr COLORREF kPaper = RGB(240, 230, 220);
constexpr tavix::PushParts kParts{RGB(10, 20, 30), RGB(210, 220, 230), RGB(255, 0, 0), RGB(0, 0, 255), false};

Picture PushFace(const tavix::PushParts& parts, const char* text, int width = 100, int height = 30) {
    const Canvas canvas(width, height, kPaper);
    CDC dc(canvas.Dc());
    tavix::PaintPushFace(dc, canvas.Area(), parts, text);
    return canvas.Take();
}

/* The columns in which a colour stands, as left and right edge; {-1, -1} if nowhere. */
std::pair<int, int> ColumnsOf(const Picture& picture, COLORREF colour) {
    std::pair<int, int> columns{-1, -1};
    for (int x = 0; x < picture.width; ++x)
        for (int y = 0; y < picture.height; ++y)
            if (picture.At(x, y) == colour) {
                if (columns.first < 0) columns.first = x;
                columns.second = x;
            }
    return columns;
}

TEST(ButtonPushFace, GradientRunsFromTopToBottomInBandsOfTwo) {
    const Picture face = PushFace(kParts, "");
    EXPECT_EQ(face.At(50, 1), kParts.top);
    EXPECT_EQ(face.At(50, 28), kParts.bottom);
    for (int y = 2; y < 28; y += 2) {
        EXPECT_EQ(face.At(50, y), face.At(50, y + 1)) << y;
        EXPECT_EQ(GetRValue(face.At(50, y)), 10 + ::MulDiv(200, y, 28)) << y;
    }
}

TEST(ButtonPushFace, BorderIsARoundRectangleOfCornersThreeByThree) {
    const Picture face = PushFace(kParts, "");
    const Canvas expected(100, 30, kPaper);
    HPEN pen = ::CreatePen(PS_SOLID, 1, kParts.border);
    HGDIOBJ formerPen = ::SelectObject(expected.Dc(), pen);
    HGDIOBJ formerBrush = ::SelectObject(expected.Dc(), ::GetStockObject(NULL_BRUSH));
    ::RoundRect(expected.Dc(), 0, 0, 100, 30, 3, 3);
    ::SelectObject(expected.Dc(), formerBrush);
    ::DeleteObject(::SelectObject(expected.Dc(), formerPen));
    const Picture outline = expected.Take();
    ASSERT_GT(outline.CountOf(kParts.border), 200);
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 100; ++x)
            ASSERT_EQ(face.At(x, y) == kParts.border, outline.At(x, y) == kParts.border) << x << ", " << y;
}

TEST(ButtonPushFace, TextIsCentredInTheSystemsFontWhateverTheContextHolds) {
    const Picture plain = PushFace(kParts, "Label");
    const Canvas expected(100, 30, kPaper);
    HGDIOBJ formerFont = ::SelectObject(expected.Dc(), ::GetStockObject(DEFAULT_GUI_FONT));
    RECT area = expected.Area();
    ::SetBkMode(expected.Dc(), TRANSPARENT);
    ::SetTextColor(expected.Dc(), kParts.text);
    ::DrawTextA(expected.Dc(), "Label", -1, &area, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    ::SelectObject(expected.Dc(), formerFont);
    ASSERT_GE(ColumnsOf(plain, kParts.text).first, 0);
    EXPECT_EQ(ColumnsOf(plain, kParts.text), ColumnsOf(expected.Take(), kParts.text));

    const Canvas canvas(100, 30, kPaper);
    HGDIOBJ former = ::SelectObject(canvas.Dc(), ::GetStockObject(ANSI_FIXED_FONT));
    CDC dc(canvas.Dc());
    tavix::PaintPushFace(dc, canvas.Area(), kParts, "Label");
    EXPECT_EQ(::SelectObject(canvas.Dc(), former), ::GetStockObject(ANSI_FIXED_FONT));
    EXPECT_EQ(canvas.Take(), plain);
}

TEST(ButtonPushFace, FocusShowsAsARectangleThreePixelsIn) {
    tavix::PushParts parts = kParts;
    const Picture without = PushFace(parts, "");
    parts.focusRect = true;
    const Picture with = PushFace(parts, "");
    RECT differing{1000, 1000, -1, -1};
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 100; ++x)
            if (with.At(x, y) != without.At(x, y))
                differing = {std::min<LONG>(differing.left, x), std::min<LONG>(differing.top, y),
                             std::max<LONG>(differing.right, x + 1), std::max<LONG>(differing.bottom, y + 1)};
    const RECT inner{3, 3, 97, 27};
    EXPECT_TRUE(::EqualRect(&differing, &inner))
        << differing.left << " " << differing.top << " " << differing.right << " " << differing.bottom;
}

TEST(ButtonPushFace, LeavesTheContextAsItWas) {
    const Canvas canvas(100, 30, kPaper);
    ::SetBkMode(canvas.Dc(), OPAQUE);
    ::SetTextColor(canvas.Dc(), RGB(1, 2, 3));
    const HGDIOBJ objects[] = {::GetCurrentObject(canvas.Dc(), OBJ_PEN),
                               ::GetCurrentObject(canvas.Dc(), OBJ_BRUSH),
                               ::GetCurrentObject(canvas.Dc(), OBJ_FONT)};
    CDC dc(canvas.Dc());
    tavix::PaintPushFace(dc, canvas.Area(), kParts, "Label");
    EXPECT_EQ(::GetBkMode(canvas.Dc()), OPAQUE);
    EXPECT_EQ(::GetTextColor(canvas.Dc()), RGB(1, 2, 3));
    EXPECT_EQ(::GetCurrentObject(canvas.Dc(), OBJ_PEN), objects[0]);
    EXPECT_EQ(::GetCurrentObject(canvas.Dc(), OBJ_BRUSH), objects[1]);
    EXPECT_EQ(::GetCurrentObject(canvas.Dc(), OBJ_FONT), objects[2]);
}

TEST(ButtonPushFace, AnySizeIsPainted) {
    for (int width : {1, 2, 3, 5, 6, 7, 40})
        for (int height : {1, 2, 3, 5, 6, 7, 40}) {
            tavix::PushParts parts = kParts;
            parts.focusRect = true;
            const Picture face = PushFace(parts, "Label", width, height);
            EXPECT_EQ(face.CountOf(kPaper), 0) << width << " by " << height;
        }
}

TEST(ButtonMark, StandsAtTheLeftEdgeCentredWithADivisionTowardsZero) {
    for (int clientHeight = 0; clientHeight < 40; ++clientHeight)
        for (int markHeight = 0; markHeight < 60; ++markHeight) {
            const RECT client{7, 11, 200, 11 + clientHeight};
            const CRect mark = tavix::MarkRect(client, CSize(9, markHeight));
            const int difference = clientHeight - markHeight;
            const int offset = difference >= 0 ? difference / 2 : -(-difference / 2);
            ASSERT_EQ(mark, CRect(7, 11 + offset, 16, 11 + offset + markHeight));
        }
}

// --- In windows --------------------------------------------------------------------------

class ButtonPaint : public ButtonTest {
protected:
    COLORREF ColourOf(DWORD bitmap) const { return TestSkin::ColourOfBitmap(bitmap); }
    static COLORREF Text() { return ::GetSysColor(COLOR_WINDOWTEXT); }
    static COLORREF HighlightText() { return ::GetSysColor(COLOR_HIGHLIGHTTEXT); }
    static COLORREF DisabledText() { return ::GetSysColor(COLOR_GRAYTEXT); }

    /* Which of the three text colours a picture holds. */
    static std::vector<COLORREF> TextColoursOf(const Picture& picture) {
        std::vector<COLORREF> found;
        for (COLORREF colour : {Text(), HighlightText(), DisabledText()})
            if (picture.CountOf(colour)) found.push_back(colour);
        return found;
    }
    using Colours = std::vector<COLORREF>;
};
INSTANTIATE_TEST_SUITE_P(Worlds, ButtonPaint, kControlWorlds, NameOfWorld);

TEST_P(ButtonPaint, EachTypeHasItsOwnPicture) {
    // The mark is 13 pixels high in a client area of 30: it covers the rows 8 to 20.
    constexpr POINT kMark{6, 14};
    for (DWORD type = 0; type < 16; ++type) {
        if (type == BS_GROUPBOX) continue;
        SCOPED_TRACE(type);
        UseParent(0);
        HWND button = MakeButton(type);
        const Picture picture = RepaintedClient(button);
        const COLORREF mark = picture.At(kMark.x, kMark.y);
        const bool blank = picture.CountOf(kParentColour) == 100 * 30;
        switch (type) {
            case 0:
            case 1:
                EXPECT_EQ(FaceOf(picture), NormalFace());
                EXPECT_EQ(TextColoursOf(picture), Colours{Text()});
                break;
            case 2:
            case 3:
                EXPECT_EQ(mark, ColourOf(BMP_BTN_CHECK_OFF));
                break;
            case 4:
            case 9:
                EXPECT_EQ(mark, ColourOf(BMP_BTN_RADIO_OFF));
                break;
            case 11:
                EXPECT_TRUE(Parent().log.Has(WM_DRAWITEM));
                break;
            case 15:
                break;  // the native control's picture, which differs with its version
            default:
                EXPECT_TRUE(blank);
                break;
        }
    }
}

TEST_P(ButtonPaint, FaceFollowsEnabledHotAndPressedInThisOrder) {
    struct Row {
        bool enabled, hot, pressed;
        Face face;
        COLORREF text;
    };
    const Row rows[] = {{true, false, false, NormalFace(), Text()},
                        {true, true, false, HotFace(), HighlightText()},
                        {true, true, true, PressedFace(), HighlightText()},
                        {true, false, true, NormalFace(), HighlightText()},
                        {false, false, false, DisabledFace(), DisabledText()},
                        {false, true, false, DisabledFace(), HighlightText()},
                        {false, true, true, DisabledFace(), HighlightText()},
                        {false, false, true, DisabledFace(), HighlightText()}};
    for (const Row& row : rows) {
        const std::string what = std::string(row.enabled ? "enabled " : "disabled ") +
                                 (row.hot ? "hot " : "") + (row.pressed ? "pressed" : "");
        SCOPED_TRACE(what);
        const tavix::PushParts parts = tavix::PushPartsOf({row.enabled, row.hot, row.pressed, false});
        EXPECT_EQ((Face{parts.top, parts.bottom, parts.border}), row.face);
        EXPECT_EQ(parts.text, row.text);
        EXPECT_FALSE(parts.focusRect);

        // The same in a window.
        HWND button = MakeButton(BS_PUSHBUTTON);
        if (row.pressed) ::SendMessageA(button, WM_LBUTTONDOWN, 0, Packed(kInside));
        if (row.hot || row.pressed)
            ::SendMessageA(button, WM_MOUSEMOVE, 0, Packed(row.hot ? kInside : kOutside));
        if (!row.enabled) ::EnableWindow(button, FALSE);
        ::SetFocus(Parent());
        EXPECT_EQ(ShownFace(button), row.face);
        EXPECT_EQ(TextColoursOf(PictureOfClient(button)), Colours{row.text});
        ::DestroyWindow(button);
    }
}

TEST_P(ButtonPaint, FocusedPushButtonShowsItsFocus) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    ::SetFocus(Parent());
    const Picture without = RepaintedClient(button);
    ::SetFocus(button);
    const Picture with = RepaintedClient(button);
    EXPECT_NE(with, without);
    int changed = 0;
    for (int x = 3; x < 97; ++x) changed += with.At(x, 3) != without.At(x, 3);
    EXPECT_GE(changed, 40);
    EXPECT_EQ(FaceOf(with), FaceOf(without));
}

TEST_P(ButtonPaint, CheckAndRadioHaveTwoMarksEach) {
    struct Row {
        DWORD type, on, off;
    };
    for (const Row& row : {Row{BS_CHECKBOX, BMP_BTN_CHECK_ON, BMP_BTN_CHECK_OFF},
                           Row{BS_AUTOCHECKBOX, BMP_BTN_CHECK_ON, BMP_BTN_CHECK_OFF},
                           Row{BS_RADIOBUTTON, BMP_BTN_RADIO_ON, BMP_BTN_RADIO_OFF},
                           Row{BS_AUTORADIOBUTTON, BMP_BTN_RADIO_ON, BMP_BTN_RADIO_OFF}}) {
        SCOPED_TRACE(row.type);
        HWND button = MakeButton(row.type);
        const auto expectMark = [&](DWORD bitmap, const char* when) {
            SCOPED_TRACE(when);
            const Picture picture = Shown(button);
            for (int y = 0; y < 30; ++y)
                for (int x = 0; x < 15; ++x) {
                    const bool inside = x < 13 && y >= 8 && y < 21;
                    ASSERT_EQ(picture.At(x, y), inside ? ColourOf(bitmap) : kParentColour) << x << ", " << y;
                }
            EXPECT_EQ(TextColoursOf(picture), Colours{::IsWindowEnabled(button) ? Text() : DisabledText()});
        };
        expectMark(row.off, "unchecked");
        ::SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
        expectMark(row.on, "checked");
        ::SendMessageA(button, WM_MOUSEMOVE, 0, Packed(kInside));
        expectMark(row.on, "hot");
        ::EnableWindow(button, FALSE);
        expectMark(row.on, "disabled");
        ::DestroyWindow(button);
    }
}

TEST_P(ButtonPaint, IndeterminateCountsAsChecked) {
    ClassSpy native("Button");
    native.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == BM_GETCHECK) return BST_INDETERMINATE;
        return std::nullopt;
    };
    HWND button = MakeButton(BS_AUTOCHECKBOX);
    EXPECT_EQ(Shown(button).At(6, 14), ColourOf(BMP_BTN_CHECK_ON));
    LoseParent();
}

TEST_P(ButtonPaint, MarkLeavesOutTheKeyColour) {
    skin.SetBitmap(BMP_BTN_CHECK_OFF, 13, 13,
                   [](int x, int y) { return (x + y) % 2 ? RGB(0, 255, 0) : TestSkin::kTransparent; });
    UseChangedSkin();
    const Picture picture = Shown(MakeButton(BS_AUTOCHECKBOX));
    for (int y = 0; y < 13; ++y)
        for (int x = 0; x < 13; ++x)
            ASSERT_EQ(picture.At(x, y + 8), (x + y) % 2 ? RGB(0, 255, 0) : kParentColour) << x << ", " << y;
}

TEST_P(ButtonPaint, TextStartsTwoPixelsFromACheckMarkAndThreeFromARadioMark) {
    for (DWORD type : {BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        SCOPED_TRACE(type);
        // Where the native drawing puts the same text at a known place, in the context's own font.
        const int start = 13 + (type == BS_AUTOCHECKBOX ? 2 : 3);
        const Canvas canvas(100, 30, kParentColour);
        RECT label{start, 0, 100, 30};
        ::SetBkMode(canvas.Dc(), TRANSPARENT);
        ::DrawTextA(canvas.Dc(), "HHH", -1, &label, DT_VCENTER | DT_SINGLELINE);
        UseParent(0);
        HWND button = MakeButton(static_cast<DWORD>(type), kButtonPlace, "HHH");
        EXPECT_EQ(ColumnsOf(Shown(button), Text()), ColumnsOf(canvas.Take(), 0));
    }
}

TEST_P(ButtonPaint, RoomOfTheMarkIsThatOfTheMarkThatIsOn) {
    for (DWORD type : {BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        const bool check = type == BS_AUTOCHECKBOX;
        const DWORD on = check ? BMP_BTN_CHECK_ON : BMP_BTN_RADIO_ON;
        const DWORD off = check ? BMP_BTN_CHECK_OFF : BMP_BTN_RADIO_OFF;
        skin.SetBitmapSize(on, 20, 10).SetBitmapSize(off, 6, 14);
        UseChangedSkin();
        UseParent(0);
        const Picture picture = Shown(MakeButton(static_cast<DWORD>(type), kButtonPlace, "HHH"));
        // Drawn in its own size from (0, (30 - 10) / 2).
        EXPECT_EQ(picture.CountOf(ColourOf(off)), 6 * 14);
        EXPECT_EQ(picture.At(5, 10), ColourOf(off));
        EXPECT_EQ(picture.At(5, 9), kParentColour);
        EXPECT_GE(ColumnsOf(picture, Text()).first, 20 + (check ? 2 : 3));
    }
}

TEST_P(ButtonPaint, CheckAndRadioTextTakesTheWindowsFontAndPushTextDoesNot) {
    for (DWORD type : {BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON, BS_PUSHBUTTON}) {
        SCOPED_TRACE(type);
        UseParent(0);
        HWND button = MakeButton(static_cast<DWORD>(type));
        const Picture before = RepaintedClient(button);
        ::SendMessageA(button, WM_SETFONT, reinterpret_cast<WPARAM>(::GetStockObject(ANSI_FIXED_FONT)),
                       FALSE);
        EXPECT_EQ(RepaintedClient(button) == before, type == BS_PUSHBUTTON);
    }
}

TEST_P(ButtonPaint, AlignmentStylesDoNotMatter) {
    for (DWORD type : {BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON, BS_PUSHBUTTON}) {
        SCOPED_TRACE(type);
        UseParent(0);
        const Picture plain = RepaintedClient(MakeButton(static_cast<DWORD>(type)));
        for (DWORD style : {BS_LEFTTEXT, BS_RIGHT, BS_TOP, BS_MULTILINE, BS_PUSHLIKE, BS_FLAT}) {
            UseParent(0);
            EXPECT_EQ(RepaintedClient(MakeButton(static_cast<DWORD>(type) | style)), plain) << style;
        }
    }
}

TEST_P(ButtonPaint, DefaultButtonLooksLikeAnyOther) {
    const Picture plain = RepaintedClient(MakeButton(BS_PUSHBUTTON));
    UseParent(0);
    EXPECT_EQ(RepaintedClient(MakeButton(BS_DEFPUSHBUTTON)), plain);
}

// The 255th character stands beyond 254 blanks; the button is wide, and placed so that it shows.
TEST_P(ButtonPaint, OnlyTheFirst255CharactersShow) {
    for (DWORD type : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        SCOPED_TRACE(type);
        const int left = type == BS_PUSHBUTTON ? -2300 : -700;
        const auto shownOf = [&](const std::string& text) {
            UseParent(0);
            HWND button = MakeButton(static_cast<DWORD>(type), {left, 0, left + 4000, 30},
                                     (std::string(254, ' ') + text).c_str());
            RepaintedClient(button);
            return PictureOfClient(Parent());
        };
        const Picture one = shownOf("H");
        EXPECT_GT(one.CountOf(Text()), 0);
        EXPECT_EQ(shownOf("H" + std::string(10000, 'X')), one);
        EXPECT_NE(shownOf("M"), one);
    }
}

TEST_P(ButtonPaint, NewSkinShowsAtOnce) {
    HWND button = MakeButton(BS_PUSHBUTTON);
    skin.SetColour(CLR_BTN_NORMAL_FROM, RGB(1, 2, 3));
    UseChangedSkin();
    EXPECT_EQ(ShownFace(button).top, RGB(1, 2, 3));
}

TEST_P(ButtonPaint, SkinWithoutMarksKeepsTheTextAtTheEdge) {
    skin.RemoveBitmaps(skinButton);
    UseChangedSkin();
    for (DWORD type : {BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        SCOPED_TRACE(type);
        UseParent(0);
        HWND button = MakeButton(static_cast<DWORD>(type), kButtonPlace, "HHH");
        const Picture picture = Shown(button);
        const int first = ColumnsOf(picture, Text()).first;
        EXPECT_GE(first, 2);
        EXPECT_LE(first, 6);
        // The native control leaves its own mark there until the parent repaints the place.
        ::SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
        RepaintedClient(Parent());
        EXPECT_EQ(Shown(button), picture);
    }
}

TEST_P(ButtonPaint, HugeMarksAreCutByTheWindow) {
    for (DWORD id : {BMP_BTN_CHECK_ON, BMP_BTN_CHECK_OFF, BMP_BTN_RADIO_ON, BMP_BTN_RADIO_OFF})
        skin.SetBitmapSize(id, 3000, 2000);
    UseChangedSkin();
    for (DWORD type : {BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        HWND button = MakeButton(static_cast<DWORD>(type));
        ::SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
        EXPECT_EQ(
            Shown(button).CountOf(ColourOf(type == BS_AUTOCHECKBOX ? BMP_BTN_CHECK_ON : BMP_BTN_RADIO_ON)),
            100 * 30);
    }
}

}  // namespace
}  // namespace tavix_test
