#include "page.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr Page pages[] = {
    {"frame", "Frames", open_frame, nullptr},
    {"frame-hot", "Frame (point at its close button)", open_frame_hot, pose_frame_hot},
    {"frame-max", "Frame, maximised", open_frame_maximised, nullptr},
    {"dialogs", "Dialogs", open_dialogs, nullptr},
    {"buttons", "Buttons", open_buttons, nullptr},
    {"buttons-hot", "Buttons (point at one)", open_buttons, pose_buttons_hot},
    {"buttons-pressed", "Buttons (press one)", open_buttons, pose_buttons_pressed},
    {"settings", "A settings dialog", open_settings, nullptr},
    {"texts", "Labels, edits and group boxes", open_texts, nullptr},
    {"scroll-bars", "Scroll bars", open_scroll_bars, nullptr},
    {"scroll-bars-pressed", "Scroll bars (press a thumb)", open_scroll_bars, pose_scroll_bars_pressed},
    {"combo-boxes", "Combo boxes (open one)", open_combo_boxes, pose_combo_boxes},
    {"header", "Headers and trackbars (press a column)", open_header, pose_header_pressed},
    {"list-views", "List and tree views", open_list_views, nullptr},
    {"list-boxes", "List boxes", open_list_boxes, nullptr},
    {"tabs", "Tabs with pages", open_tabs, nullptr},
    {"tool-bars", "Tool bars", open_tool_bars, nullptr},
    {"tool-bars-hot", "Tool bars (point at a button)", open_tool_bars, pose_tool_bars_hot},
    {"splitters", "Splitters", open_splitters, nullptr},
    {"splitters-dragged", "Splitters (drag a bar)", open_splitters, pose_splitters_dragged},
    {"scroll-hosts", "Scrolling panes", open_scroll_hosts, nullptr},
    {"menus", "Menus (click with the right button)", open_menus, nullptr, show_context_menu},
    {"menus-host-drawn", "Menus (look at the labels)", open_menus, nullptr, show_host_drawn_menu},
    {"menus-system", "Menus (open the window's own)", open_menus, nullptr, show_system_menu},
    {"menu-bar", "Menu bar", open_menu_bar, nullptr},
    {"menu-bar-open", "Menu bar (open a menu)", open_menu_bar, nullptr, show_menu_bar_popup},
};

}  // namespace

std::span<const Page> all_pages() { return pages; }

const Page* find_page(std::string_view name) {
    const auto found = std::ranges::find_if(pages, [&](const Page& page) { return page.name == name; });
    return found == std::end(pages) ? nullptr : found;
}

}  // namespace gallery
