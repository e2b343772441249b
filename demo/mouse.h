/* The real mouse, moved and pressed for a picture, so that windows show the states that a user would see. */
#pragma once

#include <windows.h>

namespace gallery {

class Mouse {
public:
    Mouse() { park(); }
    /* Lets go of the button where it does nothing, and parks. */
    ~Mouse();
    Mouse(const Mouse&) = delete;
    Mouse& operator=(const Mouse&) = delete;

    /* Into the screen's bottom right corner, where it touches no window of a page. */
    void park();
    /* Onto a point of the screen, running messages until it is there. Throws Failure if it won't stay. */
    void move_to(POINT point);
    /* Onto the middle of a control. Throws Failure as above, and for a null window. */
    void move_to(HWND control);
    /* Onto the close button of a top-level window. Throws Failure as above, and if it has none. */
    void move_to_close_button(HWND window);
    /* Presses the left button, until the end. */
    void press();

private:
    bool is_pressed_ = false;
};

}  // namespace gallery
