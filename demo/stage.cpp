#include "stage.h"

#include <algorithm>

#include "failure.h"

namespace gallery {

namespace {

constexpr LONG gap = 20;

}  // namespace

HWND Stage::add(HWND window) {
    if (!window) fail_with_last_error("A window of the page can't be made");
    windows_.push_back(window);
    return window;
}

void Stage::arrange_in_rows() {
    RECT work;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    POINT place = {work.left + gap, work.top + gap};
    LONG row_height = 0;
    for (const HWND window : windows_) {
        RECT frame;
        GetWindowRect(window, &frame);
        const SIZE size = {frame.right - frame.left, frame.bottom - frame.top};
        if (row_height > 0 && place.x + size.cx + gap > work.right) {
            place = {work.left + gap, place.y + row_height + gap};
            row_height = 0;
        }
        SetWindowPos(window, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        place.x += size.cx + gap;
        row_height = std::max(row_height, size.cy);
    }
}

void Stage::show(int command) {
    for (const HWND window : windows_) ShowWindow(window, command);
    if (!windows_.empty()) SetForegroundWindow(windows_.front());
}

void Stage::close() {
    while (!windows_.empty()) {
        const HWND window = windows_.back();
        windows_.pop_back();
        if (IsWindow(window)) DestroyWindow(window);
    }
}

bool Stage::is_empty() const {
    return std::none_of(windows_.begin(), windows_.end(), [](HWND window) { return IsWindow(window); });
}

RECT Stage::bounds() const {
    RECT all = {};
    for (const HWND window : windows_) {
        RECT frame;
        if (GetWindowRect(window, &frame)) UnionRect(&all, &all, &frame);
    }
    return all;
}

}  // namespace gallery
