// A module of some program: its calls of the scroll functions pass through its import table.
#include "client_calls.h"

namespace {

// Not the functions' addresses, which would be taken from the import table once and for all.
HMODULE WINAPI CallLoadLibraryA(LPCSTR name) { return ::LoadLibraryA(name); }
HMODULE WINAPI CallLoadLibraryW(LPCWSTR name) { return ::LoadLibraryW(name); }
HMODULE WINAPI CallLoadLibraryExA(LPCSTR name, HANDLE file, DWORD flags) {
    return ::LoadLibraryExA(name, file, flags);
}
HMODULE WINAPI CallLoadLibraryExW(LPCWSTR name, HANDLE file, DWORD flags) {
    return ::LoadLibraryExW(name, file, flags);
}
FARPROC WINAPI CallGetProcAddress(HMODULE module, LPCSTR name) { return ::GetProcAddress(module, name); }
int WINAPI CallSetScrollInfo(HWND window, int bar, LPCSCROLLINFO info, BOOL redraw) {
    return ::SetScrollInfo(window, bar, info, redraw);
}
BOOL WINAPI CallSetScrollRange(HWND window, int bar, int min, int max, BOOL redraw) {
    return ::SetScrollRange(window, bar, min, max, redraw);
}
int WINAPI CallSetScrollPos(HWND window, int bar, int position, BOOL redraw) {
    return ::SetScrollPos(window, bar, position, redraw);
}
BOOL WINAPI CallMoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
    return ::MoveWindow(window, x, y, width, height, repaint);
}
BOOL WINAPI CallGetScrollInfo(HWND window, int bar, LPSCROLLINFO info) {
    return ::GetScrollInfo(window, bar, info);
}
BOOL WINAPI CallBringWindowToTop(HWND window) { return ::BringWindowToTop(window); }
BOOL WINAPI CallShowWindow(HWND window, int command) { return ::ShowWindow(window, command); }
BOOL WINAPI CallShowScrollBar(HWND window, int bar, BOOL show) { return ::ShowScrollBar(window, bar, show); }
BOOL WINAPI CallEnableScrollBar(HWND window, UINT bars, UINT arrows) {
    return ::EnableScrollBar(window, bars, arrows);
}
BOOL WINAPI CallTrackPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND window,
                               const RECT* rect) {
    return ::TrackPopupMenu(menu, flags, x, y, reserved, window, rect);
}

const ClientCalls kCalls = {
    CallLoadLibraryA,     CallLoadLibraryW,   CallLoadLibraryExA, CallLoadLibraryExW,  CallGetProcAddress,
    CallSetScrollInfo,    CallSetScrollRange, CallSetScrollPos,   CallMoveWindow,      CallGetScrollInfo,
    CallBringWindowToTop, CallShowWindow,     CallShowScrollBar,  CallEnableScrollBar, CallTrackPopupMenu,
};

}  // namespace

extern "C" __declspec(dllexport) const ClientCalls* __cdecl TavixTestClientCalls() { return &kCalls; }
