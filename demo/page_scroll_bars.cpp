/* Scroll bars: both directions, enabled beside disabled, tiny ones, a size grip, and ranges from nothing to
   more than anyone can scroll through. */
#include <algorithm>
#include <climits>
#include <iterator>

#include "dialog_template.h"
#include "page.h"
#include "scrolling.h"

namespace gallery {

namespace {

enum ControlId { id_dragged = 105 };

constexpr DWORD dialog_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;

struct Range {
    int min, max;
    UINT page;
    int pos;
};

/* A bar and what it scrolls. */
struct Bar {
    const char* label;
    int id;
    Range range;
    bool is_disabled;
};

constexpr Bar bars[] = {
    {"a page of thirty", 100, {0, 99, 30, 20}, false},
    {"a short page", 101, {0, 1999, 12, 700}, false},
    {"no page", 102, {0, 100, 0, 50}, false},
    {"all of it", 103, {0, 9, 10, 0}, false},
    {"every number", 104, {INT_MIN, INT_MAX, 0, 0}, false},
    {"half of it", id_dragged, {0, 199, 100, 55}, false},
    {"switched off", 106, {0, 99, 30, 20}, true},
};

constexpr short row_height = 18, label_width = 62, bar_width = 140, bar_height = 11;

void follow(HWND bar, WORD code) {
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(bar, SB_CTL, &info);
    const long long pos = position_after(info, code, info.nTrackPos);
    info.fMask = SIF_POS;
    info.nPos = static_cast<int>(std::clamp<long long>(pos, INT_MIN, INT_MAX));
    SetScrollInfo(bar, SB_CTL, &info, TRUE);
}

INT_PTR CALLBACK scroll_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if ((message == WM_HSCROLL || message == WM_VSCROLL) && lparam) {
        follow(reinterpret_cast<HWND>(lparam), LOWORD(wparam));
        return TRUE;
    }
    return plain_dialog_procedure(dialog, message, wparam, lparam);
}

void set_ranges(HWND dialog) {
    for (const Bar& bar : bars) {
        SCROLLINFO info{sizeof info, SIF_ALL, bar.range.min, bar.range.max, bar.range.page, bar.range.pos, 0};
        SetScrollInfo(GetDlgItem(dialog, bar.id), SB_CTL, &info, TRUE);
    }
}

HWND create_level_dialog() {
    constexpr short height = 10 + row_height * static_cast<short>(std::size(bars)) + 26;
    DialogTemplate level("Scroll bars", dialog_style, label_width + bar_width + 20, height);
    short y = 10;
    for (const Bar& bar : bars) {
        level.add("STATIC", bar.label, -1, SS_LEFT, {10, y, label_width, 10});
        level.add("SCROLLBAR", "", bar.id, SBS_HORZ | (bar.is_disabled ? WS_DISABLED : 0),
                  {10 + label_width, y, bar_width, bar_height});
        y += row_height;
    }
    level.add("SCROLLBAR", "", 120, SBS_HORZ, {10, y, 30, bar_height});
    level.add("SCROLLBAR", "", 121, SBS_HORZ, {46, y, 18, bar_height});
    level.add("SCROLLBAR", "", 122, SBS_HORZ, {70, y, 60, 6});
    level.add("SCROLLBAR", "", 123, SBS_HORZ, {136, y, 76, 22});
    const HWND dialog = level.create(nullptr, scroll_procedure);
    set_ranges(dialog);
    for (const int id : {120, 121, 122, 123}) SetScrollRange(GetDlgItem(dialog, id), SB_CTL, 0, 20, TRUE);
    return dialog;
}

HWND create_upright_dialog() {
    constexpr short pitch = 22, height = 140;
    DialogTemplate upright("Upright", dialog_style, 20 + pitch * static_cast<short>(std::size(bars)) + 40,
                           height + 20);
    short x = 10;
    for (const Bar& bar : bars) {
        upright.add("SCROLLBAR", "", bar.id, SBS_VERT | (bar.is_disabled ? WS_DISABLED : 0),
                    {x, 10, 11, height});
        x += pitch;
    }
    upright.add("SCROLLBAR", "", 120, SBS_VERT, {x, 10, 11, 30});
    upright.add("SCROLLBAR", "", 121, SBS_VERT, {x, 46, 11, 18});
    upright.add("SCROLLBAR", "", 122, SBS_SIZEGRIP, {x, 130, 20, 20});
    const HWND dialog = upright.create(nullptr, scroll_procedure);
    set_ranges(dialog);
    for (const int id : {120, 121}) SetScrollRange(GetDlgItem(dialog, id), SB_CTL, 0, 20, TRUE);
    return dialog;
}

}  // namespace

void open_scroll_bars(Stage& stage) {
    stage.add(create_level_dialog());
    stage.add(create_upright_dialog());
    stage.arrange_in_rows();
    stage.show();
}

void pose_scroll_bars_pressed(const Stage& stage, Mouse& mouse) {
    mouse.move_to(GetDlgItem(stage.windows().front(), id_dragged));
    mouse.press();
}

}  // namespace gallery
