// Real mouse and keyboard input of window_probe.h.
#include <gtest/gtest.h>

#include "support/window_probe.h"

namespace tavix_test {

namespace {

constexpr DWORD kSettle = 30;

void SendMouse(DWORD flags) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    EXPECT_EQ(::SendInput(1, &input, sizeof input), 1u);
}

void SendKey(WORD virtualKey, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.wScan = static_cast<WORD>(::MapVirtualKeyA(virtualKey, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    EXPECT_EQ(::SendInput(1, &input, sizeof input), 1u);
}

bool IsDown(int virtualKey) { return ::GetAsyncKeyState(virtualKey) < 0; }

void MoveTo(POINT screen) {
    // The pointer is set anew while it is elsewhere: on some systems it bounces once.
    const bool arrived = PumpUntil([screen] {
        POINT now;
        ::GetCursorPos(&now);
        if (now.x == screen.x && now.y == screen.y) return true;
        ::SetCursorPos(screen.x, screen.y);
        return false;
    });
    EXPECT_TRUE(arrived);
    PumpMessages(kSettle);
}

void Button(bool down) {
    SendMouse(down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(PumpUntil([down] { return IsDown(VK_LBUTTON) == down; }));
    PumpMessages(kSettle);
}

void Key(WORD virtualKey, bool down) {
    SendKey(virtualKey, down ? 0 : KEYEVENTF_KEYUP);
    EXPECT_TRUE(PumpUntil([virtualKey, down] { return IsDown(virtualKey) == down; }));
    PumpMessages(kSettle);
}

}  // namespace

bool BringToFront(HWND window) {
    return PumpUntil([window] {
        if (::GetForegroundWindow() == window && ::GetFocus()) return true;
        ::SetForegroundWindow(window);
        ::SetActiveWindow(window);
        if (!::GetFocus()) ::SetFocus(window);
        return false;
    });
}

void MoveMouse(HWND window, POINT to) {
    ::ClientToScreen(window, &to);
    MoveTo(to);
}

void PressMouse() { Button(true); }
void ReleaseMouse() { Button(false); }

void ClickMouse(HWND window, POINT at) {
    MoveMouse(window, at);
    PressMouse();
    ReleaseMouse();
}

void DoubleClickMouse(HWND window, POINT at) {
    ClickMouse(window, at);
    PressMouse();
    ReleaseMouse();
}

void ParkMouse() { MoveTo({::GetSystemMetrics(SM_CXSCREEN) - 20, ::GetSystemMetrics(SM_CYSCREEN) - 20}); }

void PressKey(WORD virtualKey) { Key(virtualKey, true); }
void ReleaseKey(WORD virtualKey) { Key(virtualKey, false); }

}  // namespace tavix_test
