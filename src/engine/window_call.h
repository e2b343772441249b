/* Calling a window without the road of a sent message. */
#pragma once

#include <windows.h>

namespace tavix {

/*
 * Does what SendMessageA does: calls the window's procedure, and with it every subclass of the host and the
 * skin. Only the thread's message hooks do not hear of it, of which the library's own is one, and which make
 * each sent message dear. So painting and layout ask their questions, and the library speaks to windows of
 * its own; what tells a host something is sent. A window of another thread is sent the message after all;
 * 0 for no window.
 */
inline LRESULT CallWindow(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    if (::GetWindowThreadProcessId(window, nullptr) != ::GetCurrentThreadId())
        return window ? ::SendMessageA(window, message, wParam, lParam) : 0;
    const auto procedure = reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(window, GWLP_WNDPROC));
    return procedure ? ::CallWindowProcA(procedure, window, message, wParam, lParam) : 0;
}

}  // namespace tavix
