/* Something that happens while a menu is open, whose loop runs the thread's messages. */
#pragma once

#include <windows.h>

#include <exception>
#include <functional>

namespace gallery {

/* Runs something once, later, from whatever runs the thread's messages then. One at a time. */
class Later {
public:
    Later(DWORD milliseconds, std::function<void()> work);
    ~Later();
    Later(const Later&) = delete;
    Later& operator=(const Later&) = delete;

    /* Throws what the work threw; Failure if it did not run. */
    void finish();

private:
    static void CALLBACK run(HWND, UINT, UINT_PTR, DWORD);
    void stop();

    static inline Later* current_ = nullptr;
    std::function<void()> work_;
    UINT_PTR timer_ = 0;
    std::exception_ptr failure_;
};

}  // namespace gallery
