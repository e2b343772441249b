/* List boxes: one selection and many, columns, an owner's drawing; enabled above disabled. */
#include <iterator>

#include "dialog_template.h"
#include "page.h"
#include "swatches.h"

namespace gallery {

namespace {

enum ControlId { id_single = 100, id_short, id_multiple, id_columns, id_swatches, id_disabled_row = 200 };

constexpr DWORD dialog_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;

constexpr const char* stations[] = {"Harbour",  "Upper town",  "Airport",   "Hochtal",
                                    "Lakeside", "Mill bridge", "Museum",    "Old market",
                                    "Quarry",   "Vineyard",    "West gate", "Zoo"};

/* The same list in both rows. */
struct Column {
    const char* label;
    int id;
    DWORD style;
    short x, width;
};

constexpr Column list_columns[] = {
    {"One of many", id_single, WS_VSCROLL, 8, 62},
    {"One of three", id_short, WS_VSCROLL, 76, 52},
    {"Any of many", id_multiple, WS_VSCROLL | LBS_EXTENDEDSEL, 134, 62},
    {"In columns", id_columns, LBS_MULTICOLUMN | WS_HSCROLL, 202, 110},
    {"Drawn by its owner", id_swatches, WS_VSCROLL | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, 318, 70},
};

constexpr short first_row = 8, row_pitch = 84, list_height = 66;

void fill_list(HWND list, const Column& column) {
    const int count = column.id == id_short      ? 3
                      : column.id == id_swatches ? 0
                                                 : static_cast<int>(std::size(stations));
    for (int i = 0; i < count; ++i)
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(stations[i]));
    if (column.id == id_swatches) add_swatches(list, LB_ADDSTRING);
    if (column.id == id_multiple) {
        for (const int item : {1, 2, 4}) SendMessageA(list, LB_SETSEL, TRUE, item);
    } else {
        SendMessageA(list, LB_SETCURSEL, 2, 0);
    }
}

}  // namespace

void open_list_boxes(Stage& stage) {
    DialogTemplate lists("List boxes", dialog_style, 396, first_row + 2 * row_pitch + 4);
    for (const short row : {0, 1}) {
        const auto y = static_cast<short>(first_row + row * row_pitch);
        for (const Column& column : list_columns) {
            lists.add("STATIC", column.label, -1, SS_LEFT, {column.x, y, column.width, 10});
            lists.add("LISTBOX", "", column.id + (row ? id_disabled_row : 0),
                      column.style | LBS_NOTIFY | WS_BORDER | WS_TABSTOP | (row ? WS_DISABLED : 0),
                      {column.x, static_cast<short>(y + 12), column.width, list_height});
        }
    }
    const HWND dialog = lists.create(nullptr, swatches_dialog_procedure);
    for (const Column& column : list_columns)
        for (const int row : {0, static_cast<int>(id_disabled_row)})
            fill_list(GetDlgItem(dialog, column.id + row), column);
    stage.add(dialog);
    stage.arrange_in_rows();
    stage.show();
}

}  // namespace gallery
