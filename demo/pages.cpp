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
    {"scroll-bars", "Scroll bars", open_scroll_bars, nullptr},
    {"scroll-bars-pressed", "Scroll bars (press a thumb)", open_scroll_bars, pose_scroll_bars_pressed},
    {"header", "Headers and trackbars (press a column)", open_header, pose_header_pressed},
    {"list-views", "List and tree views", open_list_views, nullptr},
    {"splitters", "Splitters", open_splitters, nullptr},
    {"splitters-dragged", "Splitters (drag a bar)", open_splitters, pose_splitters_dragged},
    {"scroll-hosts", "Scrolling panes", open_scroll_hosts, nullptr},
    {"menu-bar", "Menu bar", open_menu_bar, nullptr},
    {"menu-bar-open", "Menu bar (open a menu)", open_menu_bar, pose_menu_bar_open, true},
};

}  // namespace

std::span<const Page> all_pages() { return pages; }

const Page* find_page(std::string_view name) {
    const auto found = std::ranges::find_if(pages, [&](const Page& page) { return page.name == name; });
    return found == std::end(pages) ? nullptr : found;
}

}  // namespace gallery
