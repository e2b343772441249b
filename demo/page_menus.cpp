/* Menus: a context menu with submenus, marks and items that the host draws, and a window's system menu. */
#include <array>
#include <exception>
#include <vector>

#include "failure.h"
#include "frame_window.h"
#include "handles.h"
#include "page.h"

namespace gallery {

namespace {

constexpr char letters_class[] = "Tavix_PaneE";

constexpr Card letters_card = {
    "Re: The summer fair",
    "Good morning,\n\nthe tents are booked, and the baker brings the bread at nine. "
    "Could somebody with a van collect the benches on Friday?\n\n"
    "(A click with the right button opens the menu.)"};

enum CommandId {
    id_reply = 1,
    id_reply_all,
    id_forward,
    id_print,
    id_unread,
    id_pinned,
    id_delete,
    id_label = 20,
    id_sort = 30,
    id_folder = 40
};

struct Label {
    const char* name;
    COLORREF colour;
};
constexpr std::array<Label, 4> labels = {{{"Urgent", RGB(205, 62, 58)},
                                          {"Family", RGB(66, 140, 80)},
                                          {"Work", RGB(58, 102, 176)},
                                          {"Later", RGB(224, 164, 44)}}};

/* The host draws its labels by itself: a swatch of colour beside the name. */
OwnedMenu create_label_menu() {
    OwnedMenu menu(CreatePopupMenu());
    for (std::size_t i = 0; i < labels.size(); ++i)
        AppendMenuA(menu.get(), MF_OWNERDRAW, id_label + i, reinterpret_cast<const char*>(&labels[i]));
    AppendMenuA(menu.get(), MF_SEPARATOR, 0, nullptr);
    AppendMenuA(menu.get(), MF_STRING, id_label + labels.size(), "&No label");
    return menu;
}

OwnedMenu create_sort_menu() {
    OwnedMenu menu(CreatePopupMenu());
    for (UINT_PTR i = 0; const char* name : {"&Date", "&Sender", "S&ubject", "Si&ze"})
        AppendMenuA(menu.get(), MF_STRING, id_sort + i++, name);
    CheckMenuRadioItem(menu.get(), id_sort, id_sort + 3, id_sort, MF_BYCOMMAND);
    AppendMenuA(menu.get(), MF_SEPARATOR, 0, nullptr);
    AppendMenuA(menu.get(), MF_STRING | MF_CHECKED, id_sort + 4, "Newest &first");
    return menu;
}

OwnedMenu create_folder_menu() {
    OwnedMenu menu(CreatePopupMenu());
    for (UINT_PTR i = 0; const char* name : {"&Archive", "&Bills", "&Village council"})
        AppendMenuA(menu.get(), MF_STRING, id_folder + i++, name);
    return menu;
}

OwnedMenu create_letter_menu() {
    OwnedMenu menu(CreatePopupMenu());
    const auto item = [&menu](UINT_PTR id, const char* text, UINT flags = 0) {
        AppendMenuA(menu.get(), MF_STRING | flags, id, text);
    };
    const auto separator = [&menu] { AppendMenuA(menu.get(), MF_SEPARATOR, 0, nullptr); };
    const auto popup = [&menu](OwnedMenu submenu, const char* text) {
        AppendMenuA(menu.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(submenu.release()), text);
    };
    item(id_reply, "&Reply\tCtrl+R");
    item(id_reply_all, "Reply to &all\tCtrl+Shift+R");
    item(id_forward, "&Forward\tCtrl+L");
    separator();
    item(id_unread, "Mark as &unread\tCtrl+U", MF_CHECKED);
    item(id_pinned, "P&in to the top");
    popup(create_label_menu(), "&Label");
    popup(create_sort_menu(), "&Sort by");
    popup(create_folder_menu(), "&Move to");
    separator();
    item(id_print, "&Print...\tCtrl+P", MF_GRAYED);
    item(id_delete, "&Delete\tDel");
    return menu;
}

void measure_label(MEASUREITEMSTRUCT& item) {
    item.itemWidth = 110;
    item.itemHeight = 26;
}

void draw_label(const DRAWITEMSTRUCT& item) {
    const auto& label = *reinterpret_cast<const Label*>(item.itemData);
    const bool is_selected = item.itemState & ODS_SELECTED;
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(is_selected ? COLOR_HIGHLIGHT : COLOR_MENU));
    RECT swatch = {item.rcItem.left + 8, item.rcItem.top + 6, item.rcItem.left + 34, item.rcItem.bottom - 6};
    const OwnedBrush brush(CreateSolidBrush(label.colour));
    FillRect(item.hDC, &swatch, brush.get());
    RECT text = item.rcItem;
    text.left = swatch.right + 8;
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(is_selected ? COLOR_HIGHLIGHTTEXT : COLOR_MENUTEXT));
    DrawTextA(item.hDC, label.name, -1, &text, DT_VCENTER | DT_SINGLELINE);
}

/* Checks what can be checked, so that the next opening shows it. */
void carry_out(HMENU menu, UINT command) {
    if (command == id_unread || command == id_pinned || command == id_sort + 4) {
        const UINT state = GetMenuState(menu, command, MF_BYCOMMAND);
        CheckMenuItem(menu, command, MF_BYCOMMAND | (state & MF_CHECKED ? MF_UNCHECKED : MF_CHECKED));
    } else if (command >= id_sort && command < id_sort + 4) {
        CheckMenuRadioItem(menu, id_sort, id_sort + 3, command, MF_BYCOMMAND);
    }
}

HMENU menu_of(HWND window) { return reinterpret_cast<HMENU>(GetWindowLongPtrA(window, GWLP_USERDATA)); }

void open_context_menu(HWND window, POINT at) {
    const HMENU menu = menu_of(window);
    const BOOL command =
        TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, window, nullptr);
    carry_out(menu, static_cast<UINT>(command));
}

LRESULT CALLBACK letters_procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CREATE:
            SetWindowLongPtrA(window, GWLP_USERDATA,
                              reinterpret_cast<LONG_PTR>(create_letter_menu().release()));
            return 0;
        case WM_DESTROY:
            DestroyMenu(menu_of(window));
            return 0;
        case WM_CONTEXTMENU:
            open_context_menu(window,
                              {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))});
            return 0;
        case WM_MEASUREITEM:
            measure_label(*reinterpret_cast<MEASUREITEMSTRUCT*>(lparam));
            return TRUE;
        case WM_DRAWITEM:
            draw_label(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
            return TRUE;
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            const PaintDc dc(window);
            RECT client;
            GetClientRect(window, &client);
            paint_card(dc, client, letters_card);
            return 0;
        }
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

void type_key(WORD key) {
    INPUT input[2] = {};
    for (INPUT& one : input) {
        one.type = INPUT_KEYBOARD;
        one.ki.wVk = key;
    }
    input[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, input, sizeof(*input));
}

/* Types the keys into the open menu, one a tick, then has the picture taken, and closes the menu. */
struct MenuScript {
    std::vector<WORD> keys;
    const std::function<void()>* take_picture;
    std::size_t next = 0;
    std::exception_ptr failure;
};
MenuScript* running_script = nullptr;

void CALLBACK run_script(HWND window, UINT, UINT_PTR timer, DWORD) {
    MenuScript& script = *running_script;
    if (script.next < script.keys.size()) return type_key(script.keys[script.next++]);
    if (script.next++ == script.keys.size()) return;  // one tick for the last key's painting
    KillTimer(window, timer);
    try {
        (*script.take_picture)();
    } catch (...) {
        script.failure = std::current_exception();  // not through the system's frames
    }
    EndMenu();
}

void show_menu(HWND window, HMENU menu, POINT at, std::vector<WORD> keys,
               const std::function<void()>& take_picture) {
    constexpr UINT tick_milliseconds = 200;
    constexpr UINT_PTR timer = 1;
    MenuScript script{std::move(keys), &take_picture, 0, nullptr};
    running_script = &script;
    SetTimer(window, timer, tick_milliseconds, run_script);
    ClientToScreen(window, &at);
    TrackPopupMenu(menu, TPM_RETURNCMD, at.x, at.y, 0, window, nullptr);
    KillTimer(window, timer);
    running_script = nullptr;
    if (script.failure) std::rethrow_exception(script.failure);
    if (script.next <= script.keys.size()) throw Failure("The menu closed before its picture was taken");
}

}  // namespace

void open_menus(Stage& stage) {
    register_window_class(letters_class, letters_procedure);
    stage.add(CreateWindowExA(0, letters_class, "Letters", WS_OVERLAPPEDWINDOW, 0, 0, 560, 420, nullptr,
                              nullptr, GetModuleHandleA(nullptr), nullptr));
    stage.arrange_in_rows();
    stage.show();
}

void show_context_menu(const Stage& stage, const std::function<void()>& take_picture) {
    const HWND window = stage.windows().front();
    show_menu(window, menu_of(window), {60, 90}, {VK_DOWN, 'S', VK_DOWN}, take_picture);
}

void show_host_drawn_menu(const Stage& stage, const std::function<void()>& take_picture) {
    const HWND window = stage.windows().front();
    show_menu(window, menu_of(window), {60, 90}, {VK_DOWN, 'L', VK_DOWN, VK_DOWN}, take_picture);
}

void show_system_menu(const Stage& stage, const std::function<void()>& take_picture) {
    const HWND window = stage.windows().front();
    show_menu(window, GetSystemMenu(window, FALSE), {0, 0}, {VK_UP, VK_UP}, take_picture);
}

}  // namespace gallery
