// A host's frame, dialog and button under the bundled skin, driven by the mouse and the keyboard.
#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <vector>

#include "loaded_library.h"

namespace tavix_test {
namespace {

void Pump() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
}

bool PumpUntil(const std::function<bool()>& condition) {
    for (int i = 0; i < 300; ++i) {
        Pump();
        if (condition()) return true;
        ::Sleep(10);
    }
    return false;
}

void Mouse(DWORD flags) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    EXPECT_EQ(::SendInput(1, &input, sizeof input), 1u);
    PumpUntil([flags] { return (::GetAsyncKeyState(VK_LBUTTON) < 0) == (flags == MOUSEEVENTF_LEFTDOWN); });
    ::Sleep(30);
    Pump();
}

void MoveTo(POINT screen) {
    EXPECT_TRUE(PumpUntil([screen] {
        POINT now;
        ::GetCursorPos(&now);
        if (now.x == screen.x && now.y == screen.y) return true;
        ::SetCursorPos(screen.x, screen.y);
        return false;
    }));
    ::Sleep(30);
    Pump();
}

void Click(POINT screen) {
    MoveTo(screen);
    Mouse(MOUSEEVENTF_LEFTDOWN);
    Mouse(MOUSEEVENTF_LEFTUP);
}

void Key(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(::MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    EXPECT_EQ(::SendInput(1, &input, sizeof input), 1u);
    ::Sleep(30);
    Pump();
}

POINT MiddleOf(HWND window) {
    RECT rect;
    ::GetWindowRect(window, &rect);
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

/* Where the hit test of a window first answers with a code, seen from its top right. */
POINT FindHit(HWND window, LRESULT code) {
    RECT rect;
    ::GetWindowRect(window, &rect);
    for (LONG x = rect.right - 1; x > rect.left; --x) {
        const LONG y = rect.top + 14;
        if (::SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(x, y)) == code) return {x - 6, y};
    }
    ADD_FAILURE() << "no point answers " << code;
    return {};
}

std::vector<WPARAM> g_commands;

LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) g_commands.push_back(wParam);
    return ::DefWindowProcA(window, message, wParam, lParam);
}

INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) return TRUE;
    if (message == WM_COMMAND) {
        g_commands.push_back(wParam);
        return TRUE;
    }
    if (message == WM_CLOSE) {
        ::DestroyWindow(dialog);
        return TRUE;
    }
    return FALSE;
}

bool BringToFront(HWND window) {
    return PumpUntil([window] {
        if (::GetForegroundWindow() == window) return true;
        ::SetForegroundWindow(window);
        return false;
    });
}

class WholeLibrary : public testing::Test {
protected:
    WholeLibrary() {
        g_commands.clear();
        WNDCLASSA host{};
        host.lpfnWndProc = &HostProc;
        host.hInstance = ::GetModuleHandleA(nullptr);
        host.hbrBackground = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
        host.lpszClassName = "Tavix_PaneA";
        ::RegisterClassA(&host);
    }
    void SetUp() override {
        ASSERT_EQ(library.install(BundledSkin().c_str()), 1) << BundledSkin();
        ASSERT_NE(library.bitmap(0), nullptr) << "the bundled skin has to be compiled first";
    }
    ~WholeLibrary() override { library.uninstall(); }

    HWND MakeFrame() {
        HWND frame = ::CreateWindowExA(0, "Tavix_PaneA", "Whole", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 150, 150,
                                       400, 300, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
        EXPECT_TRUE(BringToFront(frame));
        return frame;
    }

    Library library;
};

TEST_F(WholeLibrary, AFramesButtonsMaximiseRestoreAndClose) {
    HWND frame = MakeFrame();
    Click(FindHit(frame, HTMAXBUTTON));
    EXPECT_TRUE(PumpUntil([&] { return ::IsZoomed(frame) != 0; }));
    // The mouse stays where the button was: the frame is told of it anew.
    ::ShowWindow(frame, SW_RESTORE);
    Pump();
    Click(FindHit(frame, HTCLOSE));
    EXPECT_TRUE(PumpUntil([&] { return !::IsWindow(frame); }));
}

TEST_F(WholeLibrary, AFrameIsDraggedByItsCaption) {
    HWND frame = MakeFrame();
    RECT before;
    ::GetWindowRect(frame, &before);
    const POINT grip{before.left + 60, before.top + 14};
    // The drag runs in a loop of the system's own: what moves the mouse has to be another thread.
    MoveTo(grip);
    struct Drag {
        POINT to;
        static DWORD WINAPI Run(void* data) {
            const Drag& drag = *static_cast<Drag*>(data);
            ::Sleep(200);
            for (int i = 0; i < 5; ++i) {
                ::SetCursorPos(drag.to.x - 5 + i, drag.to.y);
                ::Sleep(30);
            }
            ::SetCursorPos(drag.to.x, drag.to.y);
            ::Sleep(60);
            INPUT up{};
            up.type = INPUT_MOUSE;
            up.mi.dwFlags = MOUSEEVENTF_LEFTUP;
            ::SendInput(1, &up, sizeof up);
            return 0;
        }
    } drag{{grip.x + 50, grip.y + 30}};
    HANDLE thread = ::CreateThread(nullptr, 0, &Drag::Run, &drag, 0, nullptr);
    INPUT down{};
    down.type = INPUT_MOUSE;
    down.mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    ::SendInput(1, &down, sizeof down);
    EXPECT_TRUE(PumpUntil([&] { return ::WaitForSingleObject(thread, 0) == WAIT_OBJECT_0; }));
    ::CloseHandle(thread);
    Pump();
    RECT after;
    ::GetWindowRect(frame, &after);
    EXPECT_EQ(after.left - before.left, 50);
    EXPECT_EQ(after.top - before.top, 30);
    ::DestroyWindow(frame);
}

TEST_F(WholeLibrary, AButtonClicksByMouseAndBySpace) {
    HWND frame = MakeFrame();
    HWND button = ::CreateWindowExA(0, "Button", "Click", WS_CHILD | WS_VISIBLE, 40, 40, 120, 30, frame,
                                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(7)), nullptr, nullptr);
    Click(MiddleOf(button));
    EXPECT_TRUE(PumpUntil([] { return g_commands.size() == 1; }));
    EXPECT_EQ(::GetFocus(), button);
    MoveTo({5, 5});
    Key(VK_SPACE, 0);
    Key(VK_SPACE, KEYEVENTF_KEYUP);
    EXPECT_TRUE(PumpUntil([] { return g_commands.size() == 2; }));
    EXPECT_EQ(g_commands, (std::vector<WPARAM>{7, 7}));
    // Pressed inside, released outside: no click.
    MoveTo(MiddleOf(button));
    Mouse(MOUSEEVENTF_LEFTDOWN);
    POINT outside = MiddleOf(button);
    outside.y += 100;
    MoveTo(outside);
    Mouse(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(g_commands.size(), 2u);
    ::DestroyWindow(frame);
}

TEST_F(WholeLibrary, ADialogClicksAndCloses) {
    struct {
        DLGTEMPLATE head;
        WORD menu, windowClass, title;
    } resource{};
    resource.head.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE;
    resource.head.x = resource.head.y = 60;
    resource.head.cx = 160;
    resource.head.cy = 90;
    HWND dialog =
        ::CreateDialogIndirectParamA(::GetModuleHandleA(nullptr), &resource.head, nullptr, &DialogProc, 0);
    ASSERT_TRUE(dialog);
    HWND box =
        ::CreateWindowExA(0, "Button", "Check", WS_CHILD | WS_VISIBLE | BS_AUTOCHECKBOX, 20, 20, 120, 24,
                          dialog, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(9)), nullptr, nullptr);
    EXPECT_TRUE(BringToFront(dialog));
    Click(MiddleOf(box));
    EXPECT_TRUE(PumpUntil([&] { return ::SendMessageA(box, BM_GETCHECK, 0, 0) == BST_CHECKED; }));
    EXPECT_EQ(g_commands, std::vector<WPARAM>{9});
    Click(FindHit(dialog, HTCLOSE));
    EXPECT_TRUE(PumpUntil([&] { return !::IsWindow(dialog); }));
}

TEST_F(WholeLibrary, TheSkinChangesWhileAllOfThemAreOpen) {
    HWND frame = MakeFrame();
    HWND button = ::CreateWindowExA(0, "Button", "Stay", WS_CHILD | WS_VISIBLE, 40, 40, 120, 30, frame,
                                    nullptr, nullptr, nullptr);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(library.setSkin(BundledSkin().c_str()), 1);
        Pump();
    }
    EXPECT_EQ(library.setSkin("Z:\\nowhere\\none.skn"), 0);
    Pump();
    EXPECT_EQ(library.bitmap(0), nullptr);
    EXPECT_EQ(library.setSkin(BundledSkin().c_str()), 1);
    EXPECT_NE(library.bitmap(0), nullptr);
    Click(MiddleOf(button));
    EXPECT_TRUE(PumpUntil([] { return g_commands.size() == 1; }));
    ::DestroyWindow(frame);
}

}  // namespace
}  // namespace tavix_test
