/* Buttons: every kind, enabled beside disabled; in a dialog that doesn't paint beneath its children; and
   push buttons of many sizes. */
#include "dialog_template.h"
#include "handles.h"
#include "page.h"

namespace gallery {

namespace {

enum ControlId { id_preview = 100, id_tint, id_disabled_column = 200 };

constexpr DWORD dialog_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;

/* A row of the dialog "Print": the same control in both columns. */
struct Row {
    const char* text;
    int id;
    DWORD style;
    short y, height;
    bool is_checked;
};

constexpr Row print_rows[] = {
    {"Pre&view...", id_preview, BS_PUSHBUTTON | WS_GROUP, 22, 15, false},
    {"&Print", IDOK, BS_DEFPUSHBUTTON, 42, 15, false},
    {"Print in &colour", 110, BS_AUTOCHECKBOX, 64, 11, true},
    {"&Reverse order", 111, BS_AUTOCHECKBOX, 77, 11, false},
    {"&Upright", 112, BS_AUTORADIOBUTTON | WS_GROUP, 94, 11, true},
    {"&Sideways", 113, BS_AUTORADIOBUTTON, 107, 11, false},
    {"&Both sides", 114, BS_AUTO3STATE | WS_GROUP, 124, 11, true},
    {"Paper tint", id_tint, BS_OWNERDRAW, 152, 18, false},
};

constexpr short column_width = 100;
constexpr short first_column = 10, second_column = first_column + column_width + 12;

/* The owner-drawn button: a swatch of colour, sunk while pressed and grey while disabled. */
void draw_tint_button(const DRAWITEMSTRUCT& item) {
    constexpr COLORREF tint = RGB(255, 233, 178), border = RGB(150, 112, 40), text = RGB(84, 58, 12);
    constexpr COLORREF grey = RGB(222, 222, 222), grey_text = RGB(140, 140, 140);
    const bool is_disabled = item.itemState & ODS_DISABLED;
    const bool is_pressed = item.itemState & ODS_SELECTED;

    RECT area = item.rcItem;
    {
        const OwnedBrush brush(CreateSolidBrush(is_disabled ? grey : tint));
        const OwnedPen pen(CreatePen(PS_SOLID, is_pressed ? 2 : 1, is_disabled ? grey_text : border));
        const Selection brush_selection(item.hDC, brush.get());
        const Selection pen_selection(item.hDC, pen.get());
        Rectangle(item.hDC, area.left + is_pressed, area.top + is_pressed, area.right, area.bottom);
    }
    char label[64];
    GetWindowTextA(item.hwndItem, label, sizeof(label));
    const COLORREF former_colour = SetTextColor(item.hDC, is_disabled ? grey_text : text);
    const int former_mode = SetBkMode(item.hDC, TRANSPARENT);
    if (is_pressed) OffsetRect(&area, 1, 1);
    DrawTextA(item.hDC, label, -1, &area, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    SetBkMode(item.hDC, former_mode);
    SetTextColor(item.hDC, former_colour);
    if (item.itemState & ODS_FOCUS) {
        InflateRect(&area, -3, -3);
        DrawFocusRect(item.hDC, &area);
    }
}

INT_PTR CALLBACK print_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_DRAWITEM) {
        draw_tint_button(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
        return TRUE;
    }
    return plain_dialog_procedure(dialog, message, wparam, lparam);
}

/* Sets what a check mark can show; a three-state box takes its third state. */
void set_check(HWND dialog, int id, const Row& row) {
    const bool is_three_state = (row.style & BS_TYPEMASK) == BS_AUTO3STATE;
    if (row.is_checked)
        SendDlgItemMessageA(dialog, id, BM_SETCHECK, is_three_state ? BST_INDETERMINATE : BST_CHECKED, 0);
}

HWND create_print_dialog() {
    DialogTemplate print("Print", dialog_style, second_column + column_width + 10, 182);
    const auto add_column = [&print](const char* heading, short x, int id_offset, DWORD style) {
        print.add("STATIC", heading, -1, SS_LEFT, {x, 8, column_width, 10});
        for (const Row& row : print_rows) {
            print.add("BUTTON", row.text, row.id + id_offset, row.style | WS_TABSTOP | style,
                      {x, row.y, column_width, row.height});
        }
        print.add("STATIC", "(three states: no skin draws it)", -1, SS_LEFT, {x, 137, column_width + 10, 10});
    };
    add_column("Office printer", first_column, 0, 0);
    add_column("Plotter (switched off)", second_column, id_disabled_column, WS_DISABLED);

    const HWND dialog = print.create(nullptr, print_procedure);
    for (const Row& row : print_rows) {
        set_check(dialog, row.id, row);
        set_check(dialog, row.id + id_disabled_column, row);
    }
    return dialog;
}

/* WS_CLIPCHILDREN keeps the dialog from painting what lies under its transparent controls. */
HWND create_notifications_dialog() {
    const HWND dialog =
        DialogTemplate("Notifications", dialog_style | WS_CLIPCHILDREN, 150, 128)
            .add("STATIC", "When a message comes in:", -1, SS_LEFT, {10, 8, 130, 10})
            .add("BUTTON", "Show a &bubble", 120, BS_AUTOCHECKBOX | WS_TABSTOP, {10, 22, 130, 11})
            .add("BUTTON", "Flash the &taskbar", 121, BS_AUTOCHECKBOX | WS_TABSTOP, {10, 35, 130, 11})
            .add("BUTTON", "&Loud", 122, BS_AUTORADIOBUTTON | WS_TABSTOP | WS_GROUP, {10, 54, 60, 11})
            .add("BUTTON", "&Soft", 123, BS_AUTORADIOBUTTON, {80, 54, 60, 11})
            .add("BUTTON", "&Play sound", 124, BS_PUSHBUTTON | WS_TABSTOP | WS_GROUP, {10, 72, 60, 14})
            .add("BUTTON", "Choose...", 125, BS_PUSHBUTTON | WS_DISABLED, {80, 72, 60, 14})
            .add("BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {40, 102, 48, 14})
            .add("BUTTON", "Cancel", IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, {92, 102, 48, 14})
            .create(nullptr, plain_dialog_procedure);
    CheckDlgButton(dialog, 120, BST_CHECKED);
    CheckRadioButton(dialog, 122, 123, 122);
    return dialog;
}

HWND create_zoom_dialog() {
    constexpr DWORD push = BS_PUSHBUTTON | WS_TABSTOP;
    return DialogTemplate("Zoom", dialog_style, 150, 116)
        .add("BUTTON", "-", 130, push, {10, 10, 12, 11})
        .add("BUTTON", "+", 131, push, {24, 10, 12, 11})
        .add("BUTTON", "100 %", 132, push, {44, 8, 40, 15})
        .add("BUTTON", "Fit", 133, push, {90, 8, 50, 28})
        .add("BUTTON", "Turn", 134, push, {10, 28, 26, 60})
        .add("BUTTON", "Whole page", 135, push, {44, 42, 96, 20})
        .add("BUTTON", "Width of the page", 136, push, {44, 66, 96, 40})
        .add("BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {10, 94, 26, 12})
        .create(nullptr, plain_dialog_procedure);
}

HWND preview_button(const Stage& stage) { return GetDlgItem(stage.windows().front(), id_preview); }

}  // namespace

void open_buttons(Stage& stage) {
    stage.add(create_print_dialog());
    stage.add(create_notifications_dialog());
    stage.add(create_zoom_dialog());
    stage.arrange_in_rows();
    stage.show();
}

void pose_buttons_hot(const Stage& stage, Mouse& mouse) { mouse.move_to(preview_button(stage)); }

void pose_buttons_pressed(const Stage& stage, Mouse& mouse) {
    mouse.move_to(preview_button(stage));
    mouse.press();
}

}  // namespace gallery
