/* A page of the gallery: a family of windows under the skin. */
#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "mouse.h"
#include "stage.h"

namespace gallery {

struct Page {
    const char* name;   // for the command line and the picture's file name
    const char* title;  // for the menu
    /* Makes the page's windows and shows them. */
    void (*open)(Stage& stage);
    /* Puts the mouse where a picture of the page wants it; null if it wants none. Not called for a user,
       who has a mouse of their own. */
    void (*pose)(const Stage& stage, Mouse& mouse);
    /* Opens a menu for a picture. Menus are modal: it calls `take_picture` while the menu shows, and
       closes it. Null if the picture shows none; not called for a user either. */
    void (*show_menu)(const Stage& stage, const std::function<void()>& take_picture) = nullptr;
};

/* All pages, in the order of the menu. */
std::span<const Page> all_pages();
/* The page of that name, or null. */
const Page* find_page(std::string_view name);

void open_frame(Stage& stage);
void open_frame_hot(Stage& stage);
void pose_frame_hot(const Stage& stage, Mouse& mouse);
void open_frame_maximised(Stage& stage);
void open_dialogs(Stage& stage);
void open_buttons(Stage& stage);
void pose_buttons_hot(const Stage& stage, Mouse& mouse);
void pose_buttons_pressed(const Stage& stage, Mouse& mouse);
void open_settings(Stage& stage);
void open_texts(Stage& stage);
void open_scroll_bars(Stage& stage);
void pose_scroll_bars_pressed(const Stage& stage, Mouse& mouse);
void open_combo_boxes(Stage& stage);
void pose_combo_boxes(const Stage& stage, Mouse& mouse);
void open_header(Stage& stage);
void pose_header_pressed(const Stage& stage, Mouse& mouse);
void open_list_views(Stage& stage);
void open_list_boxes(Stage& stage);
void open_tabs(Stage& stage);
void open_tool_bars(Stage& stage);
void pose_tool_bars_hot(const Stage& stage, Mouse& mouse);
void open_splitters(Stage& stage);
void pose_splitters_dragged(const Stage& stage, Mouse& mouse);
void open_scroll_hosts(Stage& stage);
void open_menus(Stage& stage);
void show_context_menu(const Stage& stage, const std::function<void()>& take_picture);
void show_host_drawn_menu(const Stage& stage, const std::function<void()>& take_picture);
void show_system_menu(const Stage& stage, const std::function<void()>& take_picture);
void open_menu_bar(Stage& stage);
void show_menu_bar_popup(const Stage& stage, const std::function<void()>& take_picture);

}  // namespace gallery
