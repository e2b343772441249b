/* Where a page puts its windows, and what closes them again. */
#pragma once

#include <windows.h>

#include <span>
#include <vector>

namespace gallery {

class Stage {
public:
    Stage() = default;
    ~Stage() { close(); }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /* Takes over a top-level window that is still hidden, and gives it back. */
    HWND add(HWND window);
    /* Places the windows in rows, in the order in which they were added, none over another. */
    void arrange_in_rows();
    /* Shows all windows and activates the first; `command` as for ShowWindow. */
    void show(int command = SW_SHOW);
    /* Destroys the windows, the last first. */
    void close();

    /* Whether the user has closed all windows (or there never was one). */
    bool is_empty() const;
    std::span<const HWND> windows() const { return windows_; }
    /* The rectangle around all windows on the screen. */
    RECT bounds() const;

private:
    std::vector<HWND> windows_;
};

}  // namespace gallery
