/* Tabs with child dialogs as pages, which take on the pages' colour; and more tabs than there is room for. */
#include <windows.h>

#include <commctrl.h>

#include <initializer_list>

#include "dialog_template.h"
#include "failure.h"
#include "page.h"

namespace gallery {

namespace {

enum ControlId { id_tabs = 100, id_first_page = 200 };

constexpr DWORD dialog_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
constexpr DWORD page_style = WS_CHILD | DS_CONTROL | WS_CLIPSIBLINGS;
constexpr short page_width = 200, page_height = 90;  // they are moved to their tab control anyway

void add_tabs(HWND tabs, std::initializer_list<const char*> names) {
    int index = 0;
    for (const char* name : names) {
        TCITEMA item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<char*>(name);
        SendMessageA(tabs, TCM_INSERTITEMA, static_cast<WPARAM>(index++), reinterpret_cast<LPARAM>(&item));
    }
}

/* Where the pages of a tab control go, in the client co-ordinates of its dialog. */
RECT page_place(HWND dialog) {
    const HWND tabs = GetDlgItem(dialog, id_tabs);
    RECT place{};
    GetWindowRect(tabs, &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    SendMessageA(tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&place));
    return place;
}

void show_selected_page(HWND dialog) {
    const auto selected = static_cast<int>(SendDlgItemMessageA(dialog, id_tabs, TCM_GETCURSEL, 0, 0));
    for (int i = 0; const HWND page = GetDlgItem(dialog, id_first_page + i); ++i)
        ShowWindow(page, i == selected ? SW_SHOW : SW_HIDE);
}

INT_PTR CALLBACK tabs_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lparam)->code == TCN_SELCHANGE) {
        show_selected_page(dialog);
        return TRUE;
    }
    return plain_dialog_procedure(dialog, message, wparam, lparam);
}

/* The buttons of a page do nothing: it ends with its dialog. */
INT_PTR CALLBACK page_procedure(HWND, UINT message, WPARAM, LPARAM) { return message == WM_INITDIALOG; }

void add_page(HWND dialog, int index, const DialogTemplate& page_template) {
    const HWND page = page_template.create(dialog, page_procedure);
    if (!page) fail_with_last_error("The page of a tab can't be made");
    SetWindowLongPtrA(page, GWLP_ID, id_first_page + index);
    const RECT place = page_place(dialog);
    SetWindowPos(page, HWND_TOP, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOACTIVATE);
}

DialogTemplate page_of(short width = page_width, short height = page_height) {
    return DialogTemplate("", page_style, width, height, WS_EX_CONTROLPARENT);
}

HWND create_options() {
    const HWND dialog = DialogTemplate("Options", dialog_style, 220, 140)
                            .add(WC_TABCONTROLA, "", id_tabs, WS_TABSTOP | WS_CLIPSIBLINGS, {8, 8, 204, 104})
                            .add("BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {112, 118, 48, 14})
                            .add("BUTTON", "Cancel", IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, {164, 118, 48, 14})
                            .create(nullptr, tabs_procedure);
    add_tabs(GetDlgItem(dialog, id_tabs), {"General", "Appearance", "Network"});
    constexpr DWORD check = BS_AUTOCHECKBOX | WS_TABSTOP;
    add_page(dialog, 0,
             page_of()
                 .add("BUTTON", "Open the last file at start", 10, check, {8, 8, 150, 11})
                 .add("BUTTON", "Ask before closing", 11, check, {8, 24, 150, 11})
                 .add("BUTTON", "Reset", 12, BS_PUSHBUTTON | WS_TABSTOP, {8, 46, 50, 14}));
    add_page(dialog, 1,
             page_of()
                 .add("BUTTON", "Large icons", 10, BS_AUTORADIOBUTTON | WS_TABSTOP | WS_GROUP, {8, 8, 90, 11})
                 .add("BUTTON", "Small icons", 11, BS_AUTORADIOBUTTON, {8, 24, 90, 11}));
    add_page(dialog, 2, page_of().add("BUTTON", "Use a proxy", 10, check, {8, 8, 150, 11}));
    show_selected_page(dialog);
    return dialog;
}

HWND create_overflowing() {
    const HWND dialog = DialogTemplate("Sheets", dialog_style, 150, 100)
                            .add(WC_TABCONTROLA, "", id_tabs, WS_TABSTOP | WS_CLIPSIBLINGS, {8, 8, 134, 84})
                            .create(nullptr, tabs_procedure);
    const HWND tabs = GetDlgItem(dialog, id_tabs);
    add_tabs(tabs, {"January", "February", "March", "April", "May"});
    SendMessageA(tabs, TCM_SETCURSEL, 1, 0);
    return dialog;
}

}  // namespace

void open_tabs(Stage& stage) {
    stage.add(create_options());
    stage.add(create_overflowing());
    stage.arrange_in_rows();
    stage.show();
}

}  // namespace gallery
