// Real mouse and keyboard input of window_probe.h.
#include <gtest/gtest.h>

#include "support/window_probe.h"

namespace tavix_test {

namespace {

constexpr DWORD kSettle = 30;

void SendMouse(DWORD flags, int data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = static_cast<DWORD>(data);
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

/*
 * Arrived is when the pointer has stood there for a while: an event of the screen that comes late
 * takes it back to where it was, and it is set anew then.
 */
void MoveTo(POINT screen) {
    constexpr ULONGLONG kStill = 40;
    ULONGLONG since = 0;
    const bool arrived = PumpUntil([screen, &since] {
        POINT now;
        ::GetCursorPos(&now);
        if (since && now.x == screen.x && now.y == screen.y) return ::GetTickCount64() - since >= kStill;
        // Over a point beside it, so that a move is reported in any case.
        ::SetCursorPos(screen.x + 1, screen.y);
        ::SetCursorPos(screen.x, screen.y);
        since = ::GetTickCount64();
        return false;
    });
    EXPECT_TRUE(arrived);
}

/* A small window of the thread's own in the corner of the screen, where nothing else is. */
HWND ParkingPlace() {
    static HWND window = nullptr;
    if (!::IsWindow(window)) {
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = ::DefWindowProcA;
        windowClass.hInstance = ::GetModuleHandleA(nullptr);
        windowClass.lpszClassName = "TavixTestParking";
        ::RegisterClassA(&windowClass);
        constexpr int kSide = 40;
        window = ::CreateWindowExA(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, windowClass.lpszClassName, "",
                                   WS_POPUP, ::GetSystemMetrics(SM_CXSCREEN) - kSide,
                                   ::GetSystemMetrics(SM_CYSCREEN) - kSide, kSide, kSide, nullptr, nullptr,
                                   windowClass.hInstance, nullptr);
        ::ShowWindow(window, SW_SHOWNOACTIVATE);
    }
    return window;
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

void ParkMouse() {
    // Over a window of another process, the desktop's too, the pointer's place would be reported late.
    MoveMouse(ParkingPlace(), {20, 20});
}

void TurnWheel(int delta) {
    SendMouse(MOUSEEVENTF_WHEEL, delta);
    PumpMessages(2 * kSettle);
}

void PressKey(WORD virtualKey) { Key(virtualKey, true); }
void ReleaseKey(WORD virtualKey) { Key(virtualKey, false); }

}  // namespace tavix_test
