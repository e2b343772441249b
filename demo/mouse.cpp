#include "mouse.h"

#include "failure.h"
#include "message_loop.h"

namespace gallery {

namespace {

bool send_button(DWORD flags) {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    return SendInput(1, &input, sizeof(input)) == 1;
}

bool is_at(POINT point) {
    POINT now;
    return GetCursorPos(&now) && now.x == point.x && now.y == point.y;
}

LRESULT hit_test(HWND window, POINT point) {
    return SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
}

/* The middle of the run of points on the line from the right edge that answer as the close button. */
bool find_close_button(HWND window, const RECT& frame, LONG y, POINT& middle) {
    LONG right = frame.right - 1;
    while (right >= frame.left && hit_test(window, {right, y}) != HTCLOSE) --right;
    if (right < frame.left) return false;
    LONG left = right;
    while (left > frame.left && hit_test(window, {left - 1, y}) == HTCLOSE) --left;
    middle = {(left + right) / 2, y};
    return true;
}

}  // namespace

Mouse::~Mouse() {
    park();
    if (is_pressed_) send_button(MOUSEEVENTF_LEFTUP);
}

void Mouse::park() { SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1); }

void Mouse::move_to(POINT point) {
    // On some systems the pointer bounces back at first, and a window may then miss that it came to stay.
    // So it is set anew until it holds, and at last moved by one pixel, which the window can't miss.
    constexpr int attempts = 20;
    constexpr DWORD hold_milliseconds = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (!SetCursorPos(point.x, point.y)) fail_with_last_error("The mouse can't be moved");
        settle(hold_milliseconds);
        if (is_at(point)) {
            SetCursorPos(point.x + 1, point.y);
            settle(hold_milliseconds);
            if (is_at({point.x + 1, point.y})) return;
        }
    }
    throw Failure("The mouse doesn't stay where it is moved to");
}

void Mouse::move_to(HWND control) {
    RECT area;
    if (!GetWindowRect(control, &area)) fail_with_last_error("The control for the mouse isn't there");
    move_to(POINT{(area.left + area.right) / 2, (area.top + area.bottom) / 2});
}

void Mouse::move_to_close_button(HWND window) {
    RECT frame;
    if (!GetWindowRect(window, &frame)) fail_with_last_error("The window for the mouse isn't there");
    // A caption's buttons lie well within this many lines from the top, whoever draws them. The window
    // itself is asked where: a skin puts them elsewhere than the system does.
    constexpr LONG caption_lines = 24;
    for (LONG y = frame.top + caption_lines / 2; y < frame.top + caption_lines; ++y) {
        POINT middle;
        if (find_close_button(window, frame, y, middle)) return move_to(middle);
    }
    throw Failure("The window has no close button to point at");
}

void Mouse::press() {
    if (!send_button(MOUSEEVENTF_LEFTDOWN)) fail_with_last_error("The mouse button can't be pressed");
    is_pressed_ = true;
}

}  // namespace gallery
