/* The functions that the library intercepts in every module of the process. */
#pragma once

#include <windows.h>

#include <span>

#include "engine/interception.h"

namespace tavix {

/* One replaced function. */
struct HookRow {
    const char* moduleName;  // as it is compared with import tables
    const char* functionName;
    FARPROC replacement;
};

/* All fifteen, in the order in which they are replaced; the first five load modules. */
std::span<const HookRow> HookTable();
constexpr int kLoaderHooks = 5;

/*
 * The replacements, each with the signature of its original. Each first looks the window up and,
 * if it is a scroll host, keeps its skin bars in step; the last error is the original's.
 */
HMODULE WINAPI HookedLoadLibraryA(LPCSTR name);
HMODULE WINAPI HookedLoadLibraryW(LPCWSTR name);
HMODULE WINAPI HookedLoadLibraryExA(LPCSTR name, HANDLE file, DWORD flags);
HMODULE WINAPI HookedLoadLibraryExW(LPCWSTR name, HANDLE file, DWORD flags);
FARPROC WINAPI HookedGetProcAddress(HMODULE module, LPCSTR name);
int WINAPI HookedSetScrollInfo(HWND window, int bar, LPCSCROLLINFO info, BOOL redraw);
BOOL WINAPI HookedSetScrollRange(HWND window, int bar, int min, int max, BOOL redraw);
int WINAPI HookedSetScrollPos(HWND window, int bar, int position, BOOL redraw);
BOOL WINAPI HookedMoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BOOL WINAPI HookedGetScrollInfo(HWND window, int bar, LPSCROLLINFO info);
BOOL WINAPI HookedBringWindowToTop(HWND window);
BOOL WINAPI HookedShowWindow(HWND window, int command);
BOOL WINAPI HookedShowScrollBar(HWND window, int bar, BOOL show);
BOOL WINAPI HookedEnableScrollBar(HWND window, UINT bars, UINT arrows);
BOOL WINAPI HookedTrackPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND window,
                                 const RECT* rect);

/* True while a replacement runs in any thread. */
bool IsAnyReplacementRunning();

}  // namespace tavix
