// Scroll bar controls of a foreign host, over loadings and unloadings of the library.
#include <gtest/gtest.h>

#include <windows.h>

#include "loaded_library.h"

namespace tavix_test {
namespace {

int g_steps;

LRESULT CALLBACK CountSteps(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_VSCROLL && LOWORD(wParam) == SB_LINEUP && lParam) ++g_steps;
    return ::DefWindowProcA(window, message, wParam, lParam);
}

/* A parent and a bar of 17 by 200 pixels in it. */
struct HostWithBar {
    HostWithBar() {
        WNDCLASSA host{};
        host.lpfnWndProc = &CountSteps;
        host.hInstance = ::GetModuleHandleA(nullptr);
        host.lpszClassName = "WholeScrollHost";
        ::RegisterClassA(&host);
        parent = ::CreateWindowExA(0, "WholeScrollHost", "", WS_POPUP | WS_VISIBLE, 0, 0, 100, 240, nullptr,
                                   nullptr, host.hInstance, nullptr);
        bar = ::CreateWindowExW(0, L"ScrollBar", L"", WS_CHILD | WS_VISIBLE | SBS_VERT, 10, 10, 17, 200,
                                parent, nullptr, nullptr, nullptr);
        SCROLLINFO info{sizeof info, SIF_ALL, 0, 100, 10, 50, 0};
        ::SetScrollInfo(bar, SB_CTL, &info, TRUE);
        ::UpdateWindow(bar);
    }
    ~HostWithBar() { ::DestroyWindow(parent); }
    // The skinned control alone answers to SBM_SETPOS with 1.
    bool IsSkinned() const { return ::SendMessageA(bar, SBM_SETPOS, 20, TRUE) == 1; }

    HWND parent = nullptr;
    HWND bar = nullptr;
};

TEST(ScrollBars, AreSkinnedWhileTheLibraryIsLoaded) {
    for (int round = 0; round < 3; ++round) {
        ASSERT_FALSE(IsLoaded());
        {
            Library library;
            ASSERT_EQ(library.install(BundledSkin().c_str()), 1);
            const HostWithBar host;
            ASSERT_NE(host.bar, nullptr);
            EXPECT_TRUE(host.IsSkinned());
            g_steps = 0;
            ::SendMessageA(host.bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, 6));
            ::SendMessageA(host.bar, WM_LBUTTONUP, 0, MAKELPARAM(8, 6));
            EXPECT_EQ(g_steps, 1);
            // The track's own colour shows.
            HDC dc = ::GetDC(host.bar);
            const COLORREF track = ::GetPixel(dc, 8, 120);
            ::ReleaseDC(host.bar, dc);
            EXPECT_EQ(track, RGB(0xD8, 0xE0, 0xE8));
            ::DestroyWindow(host.bar);
            library.uninstall();
        }
        ASSERT_FALSE(IsLoaded());
        const HostWithBar host;
        EXPECT_FALSE(host.IsSkinned());
        EXPECT_EQ(::GetScrollPos(host.bar, SB_CTL), 20);
    }
}

}  // namespace
}  // namespace tavix_test
