/* Tool bars: a high one with images of its own for every state and a low one, in a frame; and one in a
   dialog, whose background goes on through it. */
#include <windows.h>

#include <commctrl.h>

#include <initializer_list>

#include "dialog_template.h"
#include "failure.h"
#include "frame_window.h"
#include "glyphs.h"
#include "handles.h"
#include "page.h"

namespace gallery {

namespace {

enum ControlId { id_high = 100, id_low, id_dialog_bar };

constexpr DWORD bar_style = WS_CHILD | WS_VISIBLE | CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN;
constexpr Card letter_card = {"Minutes of 14 March",
                              "Present: the board, the treasurer, two members.\n\n"
                              "1. The roof of the boathouse is mended before Easter.\n"
                              "2. The fees stay as they are."};

constexpr char frame_class[] = "Tavix_PaneC";
constexpr LONG high_bar = 44, low_bar = 28, strip = 40;  // the low bar lies in a strip of the frame's

constexpr BYTE enabled = TBSTATE_ENABLED;

struct Button {
    int image;
    BYTE style = BTNS_BUTTON;
    BYTE state = enabled;
};

/* The images of the buttons, each state's in colours of its own. */
struct GlyphLists {
    explicit GlyphLists(int size)
        : plain(create_glyphs(size, plain_glyphs)),
          hot(create_glyphs(size, hot_glyphs)),
          disabled(create_glyphs(size, disabled_glyphs)) {}
    HIMAGELIST plain, hot, disabled;
};

const GlyphLists& large_glyphs() {
    static const GlyphLists lists(24);
    return lists;
}
const GlyphLists& small_glyphs() {
    static const GlyphLists lists(16);
    return lists;
}

HWND create_bar(HWND parent, int id, const RECT& place, int image_size, const SIZE& button_size,
                std::initializer_list<Button> buttons) {
    const HWND bar =
        CreateWindowExA(0, TOOLBARCLASSNAMEA, "", bar_style, place.left, place.top, place.right - place.left,
                        place.bottom - place.top, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                        GetModuleHandleA(nullptr), nullptr);
    if (!bar) fail_with_last_error("A tool bar can't be made");
    SendMessageA(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageA(bar, TB_SETBITMAPSIZE, 0, MAKELPARAM(image_size, image_size));
    SendMessageA(bar, TB_SETBUTTONSIZE, 0, MAKELPARAM(button_size.cx, button_size.cy));
    SendMessageA(bar, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS);  // room for the arrows
    int command = 1000;
    for (const Button& button : buttons) {
        TBBUTTON facts = {};
        facts.iBitmap = button.image;
        facts.idCommand = command++;
        facts.fsState = button.state;
        facts.fsStyle = button.style;
        facts.iString = -1;
        SendMessageA(bar, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&facts));
    }
    // Its area around the buttons depends on its height.
    SetWindowPos(bar, nullptr, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    return bar;
}

void set_images(HWND bar, UINT message, HIMAGELIST list) {
    SendMessageA(bar, message, 0, reinterpret_cast<LPARAM>(list));
}

void use_all_images(HWND bar, const GlyphLists& lists) {
    set_images(bar, TB_SETIMAGELIST, lists.plain);
    set_images(bar, TB_SETHOTIMAGELIST, lists.hot);
    set_images(bar, TB_SETDISABLEDIMAGELIST, lists.disabled);
}

LRESULT CALLBACK frame_procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;  // WM_PAINT and the bars cover the whole client area
        case WM_PAINT: {
            constexpr COLORREF strip_colour = RGB(220, 227, 235);
            const PaintDc dc(window);
            RECT area;
            GetClientRect(window, &area);
            const RECT strip_area = {0, high_bar, area.right, high_bar + strip};
            const OwnedBrush brush(CreateSolidBrush(strip_colour));
            FillRect(dc, &strip_area, brush.get());
            area.top = strip_area.bottom;
            paint_card(dc, area, letter_card);
            return 0;
        }
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

constexpr Button separator = {6, BTNS_SEP};

HWND create_editor() {
    register_window_class(frame_class, frame_procedure);
    const HWND frame = CreateWindowExA(0, frame_class, "Minutes", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0,
                                       480, 320, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    if (!frame) fail_with_last_error("The frame of the tool bars can't be made");
    RECT client;
    GetClientRect(frame, &client);
    const HWND high = create_bar(frame, id_high, {0, 0, client.right, high_bar}, 24, {34, 34},
                                 {{glyph_new},
                                  {glyph_open, BTNS_DROPDOWN},
                                  {glyph_save, BTNS_BUTTON, 0},
                                  separator,
                                  {glyph_undo},
                                  {glyph_find, BTNS_BUTTON, TBSTATE_ENABLED | TBSTATE_HIDDEN},
                                  separator,
                                  {glyph_bold, BTNS_CHECK, TBSTATE_ENABLED | TBSTATE_CHECKED},
                                  {glyph_left, BTNS_CHECK},
                                  separator,
                                  {glyph_find, BTNS_DROPDOWN, 0}});
    use_all_images(high, large_glyphs());
    // The same buttons with one list of images: the skin makes the other states' looks from it.
    const HWND low =
        create_bar(frame, id_low, {8, high_bar + 6, client.right - 8, high_bar + 6 + low_bar}, 16, {26, 24},
                   {{glyph_new},
                    {glyph_open, BTNS_DROPDOWN},
                    {glyph_find, BTNS_BUTTON, 0},
                    separator,
                    {glyph_undo, BTNS_BUTTON, TBSTATE_ENABLED | TBSTATE_INDETERMINATE},
                    {glyph_bold, BTNS_CHECK, TBSTATE_ENABLED | TBSTATE_CHECKED},
                    {glyph_left, BTNS_BUTTON, TBSTATE_ENABLED | TBSTATE_PRESSED},
                    separator,
                    {glyph_save}});
    set_images(low, TB_SETIMAGELIST, small_glyphs().plain);
    return frame;
}

HWND create_search() {
    const HWND dialog = DialogTemplate("Search", WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME, 170, 90)
                            .add("BUTTON", "Match &case", 111, BS_AUTOCHECKBOX | WS_TABSTOP, {8, 34, 80, 11})
                            .add("BUTTON", "Whole &words", 110, BS_AUTOCHECKBOX | WS_TABSTOP, {8, 48, 80, 11})
                            .add("BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {114, 68, 48, 14})
                            .create(nullptr, plain_dialog_procedure);
    if (!dialog) fail_with_last_error("The dialog of the tool bars can't be made");
    const HWND bar = create_bar(
        dialog, id_dialog_bar, {10, 8, 230, 36}, 16, {26, 24},
        {{glyph_find}, {glyph_undo}, separator, {glyph_save, BTNS_BUTTON, 0}, {glyph_open, BTNS_DROPDOWN}});
    use_all_images(bar, small_glyphs());
    return dialog;
}

}  // namespace

void open_tool_bars(Stage& stage) {
    stage.add(create_editor());
    stage.add(create_search());
    stage.arrange_in_rows();
    stage.show();
}

void pose_tool_bars_hot(const Stage& stage, Mouse& mouse) {
    const HWND bar = GetDlgItem(stage.windows().front(), id_high);
    RECT button = {};
    SendMessageA(bar, TB_GETITEMRECT, 4, reinterpret_cast<LPARAM>(&button));
    POINT middle = {(button.left + button.right) / 2, (button.top + button.bottom) / 2};
    ClientToScreen(bar, &middle);
    mouse.move_to(middle);
}

}  // namespace gallery
