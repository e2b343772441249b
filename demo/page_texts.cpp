/* Labels, edits and group boxes: every kind, enabled beside disabled; and in a dialog that doesn't paint
   beneath its children. */
#include <windows.h>

#include "dialog_template.h"
#include "page.h"

namespace gallery {

namespace {

enum ControlId { id_name = 100, id_icon = 150, id_disabled_column = 200 };

constexpr DWORD dialog_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
constexpr short column_width = 134, box_height = 176;

constexpr char long_note[] =
    "Deliver to the back door.\r\nRing twice, the bell is weak.\r\nThe dog is friendly.\r\nLeave the papers "
    "with Mrs Carver if nobody opens.\r\nCall on Monday.\r\nThank you.";

/* An edit of the dialog "Customer", its label on the left. */
struct Field {
    const char* label;
    const char* text;
    DWORD style;
    short y, height;
};

constexpr Field fields[] = {
    {"&Name:", "Abel & Sons", ES_AUTOHSCROLL | WS_BORDER, 14, 12},
    {"&Number:", "10482", ES_NUMBER | ES_RIGHT | WS_BORDER, 30, 12},
    {"Pass&word:", "secret", ES_PASSWORD | WS_BORDER, 46, 12},
    {"&Account:", "read-only", ES_READONLY | WS_BORDER, 62, 12},
    {"T&own:", "no border", ES_AUTOHSCROLL, 78, 12},
    {"No&tes:", long_note, ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL | WS_BORDER, 94, 34},
    {"&Remark:", "Several lines,\r\nno scroll bar", ES_MULTILINE | ES_WANTRETURN | WS_BORDER, 132, 22},
};

void add_customer_column(DialogTemplate& dialog, const char* heading, short x, int id_offset, DWORD style) {
    dialog.add("BUTTON", heading, -1, BS_GROUPBOX | style, {x, 8, column_width, box_height});
    int id = id_name + id_offset;
    for (const Field& field : fields) {
        const auto label_x = static_cast<short>(x + 8), edit_x = static_cast<short>(x + 46);
        const auto y = static_cast<short>(field.y + 8);
        dialog.add("STATIC", field.label, -1, SS_LEFT | style, {label_x, static_cast<short>(y + 2), 36, 9});
        dialog.add("EDIT", field.text, id++, field.style | WS_TABSTOP | style, {edit_x, y, 80, field.height});
    }
}

HWND create_customer_dialog() {
    DialogTemplate customer("Customer", dialog_style, 2 * column_width + 30, 208);
    add_customer_column(customer, "Address", 10, 0, 0);
    add_customer_column(customer, "Former address (locked)", 10 + column_width + 10, id_disabled_column,
                        WS_DISABLED);
    customer.add("BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {2 * column_width - 28, 188, 48, 14});
    return customer.create(nullptr, plain_dialog_procedure);
}

/* WS_CLIPCHILDREN keeps the dialog from painting what lies under its labels and boxes. */
HWND create_labels_dialog(const char* title, DWORD style) {
    const HWND dialog = DialogTemplate(title, dialog_style | style, 150, 130)
                            .add("BUTTON", "Labels", -1, BS_GROUPBOX, {8, 6, 134, 68})
                            .add("STATIC", "", id_icon, SS_ICON, {16, 20, 20, 20})
                            .add("STATIC", "To the left", -1, SS_LEFT, {44, 20, 90, 9})
                            .add("STATIC", "In the middle", -1, SS_CENTER, {44, 32, 90, 9})
                            .add("STATIC", "To the right", -1, SS_RIGHT, {44, 44, 90, 9})
                            .add("STATIC", "Switched off", -1, SS_LEFT | WS_DISABLED, {44, 56, 90, 9})
                            .add("BUTTON", "", -1, BS_GROUPBOX, {8, 78, 64, 22})
                            .add("STATIC", "no caption", -1, SS_LEFT, {16, 87, 50, 9})
                            .add("STATIC", "", -1, SS_BLACKFRAME, {80, 82, 20, 16})
                            .add("STATIC", "", -1, SS_GRAYRECT, {104, 82, 14, 16})
                            .add("STATIC", "", -1, SS_ETCHEDFRAME, {122, 82, 20, 16})
                            .add("EDIT", "An edit", id_name, WS_BORDER | WS_TABSTOP, {8, 110, 64, 12})
                            .add("BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {94, 109, 48, 14})
                            .create(nullptr, plain_dialog_procedure);
    SendDlgItemMessageA(
        dialog, id_icon, STM_SETICON,
        reinterpret_cast<WPARAM>(LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_INFORMATION))), 0);
    return dialog;
}

}  // namespace

void open_texts(Stage& stage) {
    stage.add(create_customer_dialog());
    stage.add(create_labels_dialog("Labels", 0));
    stage.add(create_labels_dialog("Labels, clipped", WS_CLIPCHILDREN));
    stage.arrange_in_rows();
    stage.show();
}

}  // namespace gallery
