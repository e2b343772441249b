/* The window that a user starts from: a button and a menu item for each page. */
#pragma once

#include <windows.h>

#include "handles.h"
#include "page.h"

namespace gallery {

class StartFrame {
public:
    /* Makes the window and shows it. Its end posts WM_QUIT. `skin` is what to tell the user of the skin.
       Throws Failure. */
    explicit StartFrame(const char* skin);
    StartFrame(const StartFrame&) = delete;
    StartFrame& operator=(const StartFrame&) = delete;

    /* The page that the user has asked for since the last call, or null. */
    const Page* take_request();

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    void add_buttons();
    void on_command(UINT id);
    void on_context_menu(POINT screen);
    void on_paint();

    const char* skin_;
    OwnedFont font_;
    const Page* request_ = nullptr;
    OwnedWindow window_;  // last, so that it goes first: its messages need the rest
};

}  // namespace gallery
