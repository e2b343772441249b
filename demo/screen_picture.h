/* A picture of a part of the screen, as a user sees it. */
#pragma once

#include <windows.h>

#include <filesystem>
#include <vector>

namespace gallery {

class ScreenPicture {
public:
    /* Takes the screen's pixels now. Throws Failure if they can't be read. */
    explicit ScreenPicture(const RECT& area);

    /* Writes a PNG file, whole or not at all. Throws Failure. */
    void write(const std::filesystem::path& file) const;

private:
    bool is_one_colour() const;

    UINT width_, height_, stride_;
    std::vector<BYTE> pixels_;  // rows from the top, blue green red, each row padded to four bytes
};

/* A plain window in the desktop's colour over the whole screen, beneath the windows that are made after
   it, so that a picture doesn't show what else is open. */
class Backdrop {
public:
    Backdrop();  // throws Failure
    ~Backdrop();
    Backdrop(const Backdrop&) = delete;
    Backdrop& operator=(const Backdrop&) = delete;

private:
    HWND window_;
};

}  // namespace gallery
