/* Dialogs: every combination of caption buttons, without a caption, with an icon, and with a dialog
   inside. */
#include "dialog_template.h"
#include "failure.h"
#include "page.h"

namespace gallery {

namespace {

constexpr short dialog_width = 170;
constexpr short dialog_height = 76;

constexpr DWORD captioned = WS_POPUP | WS_CAPTION | DS_MODALFRAME;

/* One dialog that differs from the others only in its caption. */
struct CaptionKind {
    const char* title;
    const char* text;
    DWORD style;
};

constexpr CaptionKind caption_kinds[] = {
    {"Go to line", "Close.", captioned | WS_SYSMENU},
    {"Search results", "Close and minimise.", captioned | WS_SYSMENU | WS_MINIMIZEBOX},
    {"Print preview", "Close and maximise.", captioned | WS_SYSMENU | WS_MAXIMIZEBOX},
    {"Download", "Close, minimise and maximise.", captioned | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX},
    {"Page layout", "Close and help.", captioned | WS_SYSMENU | DS_CONTEXTHELP},
    {"Mail account", "Close, minimise, maximise and help.",
     captioned | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | DS_CONTEXTHELP},
    {"Saving", "A caption without a button.", captioned},
    {"", "No caption.", WS_POPUP | WS_THICKFRAME},
};

/* A text and the two usual buttons in the bottom right corner. */
DialogTemplate make_template(const CaptionKind& kind) {
    constexpr short button_width = 44, button_height = 14;
    constexpr short button_y = dialog_height - button_height - 14;
    return DialogTemplate(kind.title, kind.style, dialog_width, dialog_height)
        .add("STATIC", kind.text, -1, SS_LEFT, {10, 10, dialog_width - 20, 20})
        .add("BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP,
             {dialog_width - 2 * button_width - 20, button_y, button_width, button_height})
        .add("BUTTON", "Cancel", IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP,
             {dialog_width - button_width - 14, button_y, button_width, button_height});
}

void add_with_icon(Stage& stage) {
    constexpr CaptionKind kind = {"Update available", "An icon in the caption.", captioned | WS_SYSMENU};
    const HWND dialog = stage.add(make_template(kind).create(nullptr, plain_dialog_procedure));
    const HICON icon = LoadIconA(nullptr, IDI_INFORMATION);  // the system's: nobody destroys it
    SendMessageA(dialog, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
    SendMessageA(dialog, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon));
}

void add_with_nested_dialog(Stage& stage) {
    const DialogTemplate preferences =
        DialogTemplate("Preferences", captioned | WS_SYSMENU, dialog_width, dialog_height)
            .add("STATIC", "Options in a dialog of their own:", -1, SS_LEFT, {10, 6, dialog_width - 20, 10});
    const HWND dialog = stage.add(preferences.create(nullptr, plain_dialog_procedure));
    const HWND nested =
        DialogTemplate("", WS_CHILD | WS_VISIBLE | DS_CONTROL, dialog_width - 20, 46, WS_EX_CONTROLPARENT)
            .move_to(10, 18)
            .add("BUTTON", "Open the last file at start", -1, BS_AUTOCHECKBOX | WS_TABSTOP, {4, 4, 130, 11})
            .add("BUTTON", "Ask before closing", -1, BS_AUTOCHECKBOX | WS_TABSTOP, {4, 17, 130, 11})
            .add("BUTTON", "Reset", -1, BS_PUSHBUTTON | WS_TABSTOP, {4, 30, 44, 14})
            .create(dialog, plain_dialog_procedure);
    if (!nested) fail_with_last_error("The nested dialog can't be made");
}

}  // namespace

void open_dialogs(Stage& stage) {
    for (const CaptionKind& kind : caption_kinds)
        stage.add(make_template(kind).create(nullptr, plain_dialog_procedure));
    add_with_icon(stage);
    add_with_nested_dialog(stage);
    stage.arrange_in_rows();
    stage.show();
}

}  // namespace gallery
