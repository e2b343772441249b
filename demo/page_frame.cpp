/* Frames: with all caption buttons and a menu, with only the close button, and with a title that is too
   long for its caption. */
#include "frame_window.h"
#include "handles.h"
#include "page.h"

namespace gallery {

namespace {

constexpr Card inventory_card = {
    "Warehouse North",
    "1,284 articles in 36 aisles, last counted on Monday.\n\n"
    "17 articles are below their minimum. An order for 12 of them is on its way; the others wait for a "
    "supplier's answer."};
constexpr Card clipboard_card = {"Clipboard", "3 pictures, 1 text"};
constexpr Card comparison_card = {"Two lists", "4 lines differ. The newer list is on the right."};

void append_popup(HMENU bar, const char* title, std::initializer_list<const char*> items) {
    const HMENU popup = CreatePopupMenu();
    UINT_PTR id = 1;
    for (const char* item : items) {
        if (item)
            AppendMenuA(popup, MF_STRING, id++, item);
        else
            AppendMenuA(popup, MF_SEPARATOR, 0, nullptr);
    }
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), title);
}

HMENU create_inventory_menu() {
    const HMENU bar = CreateMenu();
    append_popup(bar, "&File", {"&Open warehouse...\tCtrl+O", "&Save\tCtrl+S", nullptr, "E&xport list..."});
    append_popup(bar, "&Articles", {"&Receive...", "&Dispatch...", nullptr, "&Count aisle..."});
    append_popup(bar, "&View", {"&By aisle", "By &supplier", nullptr, "&Refresh\tF5"});
    return bar;
}

HWND create_inventory(const RECT& place) {
    return create_frame("Inventory - Warehouse North", inventory_card, WS_OVERLAPPEDWINDOW, place,
                        create_inventory_menu());
}

}  // namespace

void open_frame(Stage& stage) {
    constexpr DWORD fixed_frame = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;
    stage.add(create_inventory({0, 0, 560, 360}));
    stage.add(create_frame("Clipboard", clipboard_card, fixed_frame, {0, 0, 300, 200}));
    stage.add(
        create_frame("Comparison of the list of articles as of 12 March with the list as of 9 April, "
                     "all aisles, all suppliers, in the order of the articles' numbers",
                     comparison_card, WS_OVERLAPPEDWINDOW, {0, 0, 420, 220}));
    stage.arrange_in_rows();
    stage.show();
}

void open_frame_hot(Stage& stage) {
    stage.add(create_inventory({0, 0, 480, 300}));
    stage.arrange_in_rows();
    stage.show();
}

void pose_frame_hot(const Stage& stage, Mouse& mouse) { mouse.move_to_close_button(stage.windows().front()); }

void open_frame_maximised(Stage& stage) {
    stage.add(create_inventory({0, 0, 480, 300}));
    stage.arrange_in_rows();
    stage.show(SW_MAXIMIZE);
}

}  // namespace gallery
