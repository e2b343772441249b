/* A settings dialog as real programs have it: labels, edits of every kind, combo boxes, list
   boxes, group boxes, a trackbar and an animation; with a group of settings that are locked. */
#include <windows.h>

#include <commctrl.h>

#include <initializer_list>

#include "dialog_template.h"
#include "page.h"
#include "resources.h"
#include "swatches.h"

namespace gallery {

namespace {

enum ControlId {
    id_categories = 100,
    id_languages,
    id_author,
    id_encoding,
    id_size,
    id_accent,
    id_zoom,
    id_spinner,
    id_units,
    id_warn,
    id_metric,
    id_themes,
    id_server,
    id_servers,
    id_locked_options
};

constexpr DWORD dialog_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
constexpr DWORD combo = WS_VSCROLL | WS_TABSTOP, field = ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;
constexpr DWORD list = LBS_NOTIFY | WS_BORDER | WS_VSCROLL | WS_TABSTOP;

constexpr char notes[] =
    "Set the margins before the first page.\r\nTables keep their own width.\r\nPictures are linked, "
    "not copied.\r\nAsk before a file is replaced.";

void add_document(DialogTemplate& dialog) {
    dialog.add("BUTTON", "Document", -1, BS_GROUPBOX, {104, 6, 148, 128})
        .add("STATIC", "&Title:", -1, SS_LEFT, {112, 22, 34, 9})
        .add("EDIT", "Annual report", -1, field, {148, 20, 96, 12})
        .add("STATIC", "A&uthor:", -1, SS_LEFT, {112, 38, 34, 9})
        .add("COMBOBOX", "", id_author, CBS_DROPDOWN | CBS_AUTOHSCROLL | combo, {148, 36, 96, 80})
        .add("STATIC", "&Encoding:", -1, SS_LEFT, {112, 55, 34, 9})
        .add("COMBOBOX", "", id_encoding, CBS_DROPDOWNLIST | combo, {148, 53, 96, 80})
        .add("STATIC", "&Copies:", -1, SS_LEFT, {112, 72, 34, 9})
        .add("EDIT", "3", -1, ES_NUMBER | ES_RIGHT | field, {148, 70, 28, 12})
        .add("STATIC", "&PIN:", -1, SS_LEFT, {184, 72, 18, 9})
        .add("EDIT", "1234", -1, ES_PASSWORD | field, {204, 70, 40, 12})
        .add("STATIC", "&Notes:", -1, SS_LEFT, {112, 88, 34, 9})
        .add("EDIT", notes, -1,
             ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL | WS_BORDER | WS_TABSTOP,
             {148, 86, 96, 40});
}

void add_appearance(DialogTemplate& dialog) {
    dialog.add("BUTTON", "Appearance", -1, BS_GROUPBOX, {260, 6, 128, 128})
        .add("STATIC", "Acce&nt:", -1, SS_LEFT, {268, 22, 46, 9})
        .add("COMBOBOX", "", id_accent, CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | combo,
             {316, 20, 64, 80})
        .add("STATIC", "&Zoom:", -1, SS_LEFT, {268, 42, 30, 9})
        .add(TRACKBAR_CLASSA, "", id_zoom, TBS_AUTOTICKS | WS_TABSTOP, {296, 37, 88, 18})
        .add("STATIC", "Text &size:", -1, SS_LEFT, {268, 60, 34, 9})
        .add("COMBOBOX", "", id_size, CBS_DROPDOWN | combo, {316, 58, 64, 80})
        .add("BUTTON", "Show &ruler", id_units, BS_AUTOCHECKBOX | WS_TABSTOP, {268, 80, 68, 10})
        .add("BUTTON", "&Warn on close", id_warn, BS_AUTOCHECKBOX | WS_TABSTOP, {268, 94, 68, 10})
        .add("BUTTON", "&Metric", id_metric, BS_AUTORADIOBUTTON | WS_GROUP | WS_TABSTOP, {338, 80, 46, 10})
        .add("BUTTON", "&Imperial", -1, BS_AUTORADIOBUTTON, {338, 94, 46, 10})
        .add(ANIMATE_CLASSA, "", id_spinner, ACS_TRANSPARENT | ACS_CENTER | ACS_AUTOPLAY, {268, 112, 16, 14})
        .add("STATIC", "Looking for dictionaries...", -1, SS_LEFT, {288, 115, 92, 9});
}

void add_lists(DialogTemplate& dialog) {
    dialog.add("STATIC", "C&ategory:", -1, SS_LEFT, {8, 8, 88, 9})
        .add("LISTBOX", "", id_categories, list, {8, 19, 88, 115})
        .add("STATIC", "Proofing &languages:", -1, SS_LEFT, {8, 140, 88, 9})
        .add("LISTBOX", "", id_languages, list | LBS_EXTENDEDSEL, {8, 151, 88, 58})
        .add("STATIC", "&Highlighters:", -1, SS_LEFT, {104, 140, 88, 9})
        .add("LISTBOX", "", id_themes, list | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, {104, 151, 72, 58});
}

void add_locked(DialogTemplate& dialog) {
    constexpr DWORD off = WS_DISABLED;
    dialog.add("BUTTON", "Server (set by your administrator)", -1, BS_GROUPBOX | off, {184, 138, 204, 72})
        .add("STATIC", "Address:", -1, SS_LEFT | off, {192, 154, 34, 9})
        .add("EDIT", "files.example.org", -1, field | off, {226, 152, 84, 12})
        .add("STATIC", "Share:", -1, SS_LEFT | off, {192, 171, 34, 9})
        .add("COMBOBOX", "", id_server, CBS_DROPDOWNLIST | combo | off, {226, 169, 84, 80})
        .add("BUTTON", "Encrypt", id_locked_options, BS_AUTOCHECKBOX | off, {192, 190, 48, 10})
        .add("BUTTON", "Test...", -1, BS_PUSHBUTTON | off, {262, 188, 48, 14})
        .add("LISTBOX", "", id_servers, list | off, {318, 152, 62, 50});
}

void fill(HWND dialog, int id, UINT message, std::initializer_list<const char*> texts) {
    for (const char* text : texts)
        SendDlgItemMessageA(dialog, id, message, 0, reinterpret_cast<LPARAM>(text));
}

void fill_controls(HWND dialog) {
    fill(dialog, id_categories, LB_ADDSTRING,
         {"General", "Appearance", "Documents", "Printing", "Proofing", "Shortcuts", "Backups", "Updates",
          "Accounts", "Server", "Privacy", "Add-ons", "Advanced"});
    fill(dialog, id_languages, LB_ADDSTRING,
         {"Danish", "Dutch", "English", "French", "German", "Italian", "Polish", "Spanish"});
    fill(dialog, id_servers, LB_ADDSTRING, {"Drafts", "Reports", "Archive", "Letters", "Scans", "Plans"});
    fill(dialog, id_author, CB_ADDSTRING, {"A. Lindqvist", "M. Okafor", "R. Castellano", "T. Yamada"});
    fill(dialog, id_encoding, CB_ADDSTRING, {"Unicode (UTF-8)", "Western European", "Central European"});
    fill(dialog, id_size, CB_ADDSTRING, {"8", "9", "10", "11", "12", "14", "18"});
    fill(dialog, id_server, CB_ADDSTRING, {"Reports", "Archive"});
    add_swatches(GetDlgItem(dialog, id_accent), CB_ADDSTRING);
    add_swatches(GetDlgItem(dialog, id_themes), LB_ADDSTRING);

    SendDlgItemMessageA(dialog, id_categories, LB_SETCURSEL, 2, 0);
    for (const int language : {2, 4}) SendDlgItemMessageA(dialog, id_languages, LB_SETSEL, TRUE, language);
    SendDlgItemMessageA(dialog, id_themes, LB_SETCURSEL, 1, 0);
    SendDlgItemMessageA(dialog, id_servers, LB_SETCURSEL, 1, 0);
    for (const int box : {id_author, id_encoding, id_server})
        SendDlgItemMessageA(dialog, box, CB_SETCURSEL, 0, 0);
    SendDlgItemMessageA(dialog, id_size, CB_SETCURSEL, 2, 0);
    SendDlgItemMessageA(dialog, id_accent, CB_SETCURSEL, 2, 0);
    for (const int box : {id_units, id_metric, id_locked_options}) CheckDlgButton(dialog, box, BST_CHECKED);
    SendDlgItemMessageA(dialog, id_zoom, TBM_SETRANGE, TRUE, MAKELPARAM(0, 10));
    SendDlgItemMessageA(dialog, id_zoom, TBM_SETPOS, TRUE, 6);
    SendDlgItemMessageA(dialog, id_spinner, ACM_OPENA, reinterpret_cast<WPARAM>(GetModuleHandleA(nullptr)),
                        RESOURCE_SPINNER);
}

}  // namespace

void open_settings(Stage& stage) {
    DialogTemplate settings("Settings", dialog_style, 396, 236);
    add_lists(settings);
    add_document(settings);
    add_appearance(settings);
    add_locked(settings);
    settings.add("BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {232, 216, 48, 14})
        .add("BUTTON", "Cancel", IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, {286, 216, 48, 14})
        .add("BUTTON", "Apply", -1, BS_PUSHBUTTON | WS_DISABLED, {340, 216, 48, 14});
    const HWND dialog = stage.add(settings.create(nullptr, swatches_dialog_procedure));
    fill_controls(dialog);
    stage.arrange_in_rows();
    stage.show();
}

}  // namespace gallery
