/* Combo boxes: the three styles and owner-drawn ones, enabled beside disabled, and one dropped open. */
#include <windows.h>

#include <iterator>

#include "dialog_template.h"
#include "page.h"
#include "swatches.h"

namespace gallery {

namespace {

enum ControlId { id_first = 100, id_opened = 103 };

constexpr DWORD dialog_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
constexpr const char* stations[] = {"Harbour",        "Upper town", "Airport",    "Hochtal",
                                    "Museum",         "Old bridge", "Mill",       "Observatory",
                                    "Botanic garden", "Quarry",     "Lighthouse", "Ferry"};

struct Box {
    const char* label;
    DWORD style;
    short height;  // with the list
};

constexpr Box boxes[] = {
    {"With an edit", CBS_DROPDOWN | CBS_AUTOHSCROLL, 80},
    {"Swatches", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, 80},
    {"Always open", CBS_SIMPLE, 54},
    {"List only", CBS_DROPDOWNLIST, 80},  // the last: its list hangs down over nothing
};

HWND create_boxes(const char* title, DWORD style) {
    constexpr short field = 14, gap = 8;
    DialogTemplate dialog_template(title, dialog_style, 170, 240);
    short y = 10;
    int id = id_first;
    for (const Box& box : boxes) {
        dialog_template.add("STATIC", box.label, -1, SS_LEFT, {8, static_cast<short>(y + 2), 50, 10});
        dialog_template.add("COMBOBOX", "", id++, box.style | style | WS_VSCROLL | WS_TABSTOP,
                            {62, y, 98, box.height});
        y += (box.style & 0xF) == CBS_SIMPLE ? box.height + gap : field + gap;
    }
    const HWND dialog = dialog_template.create(nullptr, swatches_dialog_procedure);
    for (int i = id_first; i < id; ++i) {
        const HWND box = GetDlgItem(dialog, i);
        if (GetWindowLongA(box, GWL_STYLE) & CBS_OWNERDRAWFIXED)
            add_swatches(box, CB_ADDSTRING);
        else
            for (const char* station : stations)
                SendMessageA(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(station));
        SendMessageA(box, CB_SETCURSEL, static_cast<WPARAM>(i - id_first + 2), 0);
    }
    return dialog;
}

}  // namespace

void open_combo_boxes(Stage& stage) {
    stage.add(create_boxes("Combo boxes", 0));
    stage.add(create_boxes("Switched off", WS_DISABLED));
    stage.arrange_in_rows();
    stage.show();
}

void pose_combo_boxes(const Stage& stage, Mouse& mouse) {
    const HWND box = GetDlgItem(stage.windows().front(), id_opened);
    RECT place = {};
    GetWindowRect(box, &place);
    mouse.move_to({place.right - 10, (place.top + place.bottom) / 2});
    SendMessageA(box, CB_SHOWDROPDOWN, TRUE, 0);
}

}  // namespace gallery
