#include "start_frame.h"

#include "failure.h"
#include "frame_window.h"

namespace gallery {

namespace {

constexpr char start_class[] = "Tavix_PaneB";

constexpr UINT id_exit = 1;
constexpr UINT id_first_page = 100;  // the page's number in the list is added

constexpr int margin = 26, button_width = 220, button_height = 26, button_step = 32;
constexpr int first_button_y = 92;

/* One item a page; shown under the menu bar and at a right click. */
HMENU create_page_menu() {
    const HMENU menu = CreatePopupMenu();
    UINT id = id_first_page;
    for (const Page& page : all_pages()) AppendMenuA(menu, MF_STRING, id++, page.title);
    AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(menu, MF_STRING, id_exit, "E&xit");
    return menu;
}

}  // namespace

StartFrame::StartFrame(const char* skin) : skin_(skin), font_(create_message_font()) {
    if (!register_window_class(start_class, procedure))
        fail_with_last_error("The start frame's class can't be registered");

    OwnedMenu bar(CreateMenu());
    AppendMenuA(bar.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(create_page_menu()), "&Pages");
    const int height = first_button_y + static_cast<int>(all_pages().size()) * button_step + 100;
    // In the corner where pages come last, as they are laid out from the top left.
    RECT work;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    constexpr int width = 330, gap = 20;
    const int x = work.right - width - gap, y = work.bottom - height - gap;
    if (!CreateWindowExA(WS_EX_CONTROLPARENT, start_class, "Gallery", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                         x, y, width, height, nullptr, bar.get(), GetModuleHandleA(nullptr), this))
        fail_with_last_error("The start frame can't be made");
    bar.release();  // a window destroys its menu with itself
    add_buttons();
    ShowWindow(window_.get(), SW_SHOW);
    SetForegroundWindow(window_.get());
}

const Page* StartFrame::take_request() {
    const Page* const page = request_;
    request_ = nullptr;
    return page;
}

LRESULT CALLBACK StartFrame::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE) {
        auto* const self = static_cast<StartFrame*>(reinterpret_cast<CREATESTRUCTA*>(lparam)->lpCreateParams);
        self->window_.reset(window);
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* const self = reinterpret_cast<StartFrame*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    return self ? self->handle(window, message, wparam, lparam)
                : DefWindowProcA(window, message, wparam, lparam);
}

LRESULT StartFrame::handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_COMMAND:
            on_command(LOWORD(wparam));
            return 0;
        case WM_CONTEXTMENU:
            on_context_menu({static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))});
            return 0;
        case WM_ERASEBKGND:
            return 1;  // WM_PAINT covers the whole client area
        case WM_PAINT:
            on_paint();
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

void StartFrame::add_buttons() {
    UINT id = id_first_page;
    int y = first_button_y;
    for (const Page& page : all_pages()) {
        const HWND button =
            CreateWindowExA(0, "Button", page.title, WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON,
                            margin, y, button_width, button_height, window_.get(),
                            reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
        if (!button) fail_with_last_error("A button of the start frame can't be made");
        SendMessageA(button, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
        ++id;
        y += button_step;
    }
}

/* Pages open from the message loop, not from in here: what goes wrong then may be thrown. */
void StartFrame::on_command(UINT id) {
    if (id == id_exit || id == IDCANCEL) {
        DestroyWindow(window_.get());
    } else if (id >= id_first_page && id < id_first_page + all_pages().size()) {
        request_ = &all_pages()[id - id_first_page];
    }
}

/* The pages' menu once more: a frame under a skin shows no menu bar of the system's. */
void StartFrame::on_context_menu(POINT screen) {
    if (screen.x == -1 && screen.y == -1) {  // asked for by the keyboard
        screen = {margin, margin};
        ClientToScreen(window_.get(), &screen);
    }
    const OwnedMenu menu(create_page_menu());
    TrackPopupMenu(menu.get(), TPM_RIGHTBUTTON, screen.x, screen.y, 0, window_.get(), nullptr);
}

void StartFrame::on_paint() {
    const PaintDc dc(window_.get());
    RECT client;
    GetClientRect(window_.get(), &client);
    paint_card(dc, client, {"Choose a page", skin_});
}

}  // namespace gallery
