/* Combo boxes: the three styles and owner-drawn ones, enabled beside disabled, and one dropped open. */
#include <windows.h>

#include <iterator>

#include "dialog_template.h"
#include "page.h"

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
    {"Swatches", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED, 80},
    {"Always open", CBS_SIMPLE, 54},
    {"List only", CBS_DROPDOWNLIST, 80},  // the last: its list hangs down over nothing
};

/* A patch of colour for each item, in the system's own colours of text and selection. */
void draw_swatch(const DRAWITEMSTRUCT& item) {
    const bool is_selected = (item.itemState & ODS_SELECTED) != 0;
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(is_selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    if (item.itemID >= std::size(stations)) return;
    RECT patch = item.rcItem;
    InflateRect(&patch, -3, -3);
    const auto shade = static_cast<BYTE>(20 * item.itemID);
    const HBRUSH brush = CreateSolidBrush(RGB(shade, 90, 240 - shade));
    FillRect(item.hDC, &patch, brush);
    DeleteObject(brush);
}

INT_PTR CALLBACK combo_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != WM_DRAWITEM) return plain_dialog_procedure(dialog, message, wparam, lparam);
    draw_swatch(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
    return TRUE;
}

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
    const HWND dialog = dialog_template.create(nullptr, combo_procedure);
    for (int i = id_first; i < id; ++i) {
        const HWND box = GetDlgItem(dialog, i);
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
