#include "swatches.h"

#include "dialog_template.h"
#include "handles.h"

namespace gallery {

namespace {

struct Swatch {
    const char* name;
    COLORREF colour;
};

constexpr Swatch swatches[] = {
    {"Slate", RGB(84, 96, 112)},    {"Harbour", RGB(46, 98, 158)}, {"Lagoon", RGB(38, 142, 150)},
    {"Meadow", RGB(98, 150, 66)},   {"Wheat", RGB(222, 184, 96)},  {"Amber", RGB(214, 136, 40)},
    {"Brick", RGB(176, 74, 58)},    {"Plum", RGB(134, 72, 120)},   {"Heather", RGB(150, 128, 178)},
    {"Pebble", RGB(160, 160, 154)},
};

constexpr const char* names[] = {swatches[0].name, swatches[1].name, swatches[2].name, swatches[3].name,
                                 swatches[4].name, swatches[5].name, swatches[6].name, swatches[7].name,
                                 swatches[8].name, swatches[9].name};

COLORREF grey_of(COLORREF colour) {
    const int level = (GetRValue(colour) * 3 + GetGValue(colour) * 6 + GetBValue(colour)) / 10;
    return RGB(level, level, level);
}

}  // namespace

std::span<const char* const> swatch_names() { return names; }

void add_swatches(HWND control, UINT add_message) {
    for (const char* name : names) SendMessageA(control, add_message, 0, reinterpret_cast<LPARAM>(name));
}

void draw_swatch(const DRAWITEMSTRUCT& item) {
    const bool is_selected = item.itemState & ODS_SELECTED;
    const bool is_disabled = !IsWindowEnabled(item.hwndItem);
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(is_selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    if (item.itemID >= std::size(swatches)) return;  // a combo box without a selection has no item
    const Swatch& swatch = swatches[item.itemID];

    RECT patch = {item.rcItem.left + 3, item.rcItem.top + 2, item.rcItem.left + 19, item.rcItem.bottom - 2};
    const OwnedBrush brush(CreateSolidBrush(is_disabled ? grey_of(swatch.colour) : swatch.colour));
    FillRect(item.hDC, &patch, brush.get());

    const int text_colour = is_disabled   ? COLOR_GRAYTEXT
                            : is_selected ? COLOR_HIGHLIGHTTEXT
                                          : COLOR_WINDOWTEXT;
    const COLORREF former_colour = SetTextColor(item.hDC, GetSysColor(text_colour));
    const int former_mode = SetBkMode(item.hDC, TRANSPARENT);
    RECT text = item.rcItem;
    text.left = patch.right + 5;
    DrawTextA(item.hDC, swatch.name, -1, &text, DT_LEFT | DT_VCENTER | DT_SINGLELINE);
    SetBkMode(item.hDC, former_mode);
    SetTextColor(item.hDC, former_colour);
}

INT_PTR CALLBACK swatches_dialog_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != WM_DRAWITEM) return plain_dialog_procedure(dialog, message, wparam, lparam);
    draw_swatch(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
    return TRUE;
}

}  // namespace gallery
