/*
 * The replacements. The library's own import table is not patched, so a plain call in here is a call
 * of the real function.
 */
#include <atomic>
#include <cstring>

#include "engine/window_call.h"
#include "engine/window_class.h"
#include "framework/last_error.h"
#include "scroll/api_hooks.h"
#include "scroll/import_hook.h"
#include "scroll/scroll_host.h"
#include "scroll/scroll_rules.h"
#include "tavixskin/framework/module_state.h"

namespace tavix {

namespace {

std::atomic<int> g_running = 0;

// Code of the library is on some thread's stack as long as one of these lives. Where a replacement
// has nothing to do but to call, it leaves no frame behind and needs none.
struct Running {
    Running() { g_running.fetch_add(1, std::memory_order_relaxed); }
    ~Running() { g_running.fetch_sub(1, std::memory_order_relaxed); }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
};

HMODULE PatchLoaded(HMODULE module, DWORD flags) {
    const LastErrorKeeper keeper;
    HookNewlyLoadedModule(module, flags);
    return module;
}

// Takes one bar to be wanted or not. A bar that is not there needs no hiding.
void WantBar(const HostBars& host, int bar, bool isWanted) {
    if (bar == SB_VERT && (isWanted || host.isVerticalShown))
        LayoutHost(host.host, std::nullopt, isWanted);
    else if (bar == SB_HORZ && (isWanted || host.isHorizontalShown))
        LayoutHost(host.host, isWanted, std::nullopt);
}

// The caller's structure: its size says whether the last member is there.
SCROLLINFO CopyOf(const SCROLLINFO& given) {
    SCROLLINFO copy{};
    std::memcpy(&copy, &given, given.cbSize);
    return copy;
}

// The native state. False for a failure other than that the window has no such bar at the moment.
bool ReadNative(HWND window, int bar, SCROLLINFO* present) {
    *present = {};
    present->cbSize = sizeof *present;
    present->fMask = SIF_ALL;
    // A system that gives no reason has no bar.
    ::SetLastError(ERROR_NO_SCROLLBARS);
    if (::GetScrollInfo(window, bar, present)) return true;
    const DWORD reason = ::GetLastError();
    *present = {};
    return reason == ERROR_NO_SCROLLBARS;
}

void FollowScrollInfo(const HostBars& host, int bar, const SCROLLINFO& given, BOOL redraw) {
    SCROLLINFO forBar = CopyOf(given);
    SCROLLINFO present;
    if (!ReadNative(host.host, bar, &present)) return;
    const ScrollInfoVerdict verdict = JudgeScrollInfo(present, forBar);
    forBar.nPos = verdict.position;
    WantBar(host, bar, !verdict.hides);
    CallWindow(host.Bar(bar), SBM_SETSCROLLINFO, static_cast<WPARAM>(redraw),
               reinterpret_cast<LPARAM>(&forBar));
}

void FollowScrollRange(const HostBars& host, int bar, int min, int max, BOOL redraw) {
    WantBar(host, bar, min < max);
    const HWND window = host.Bar(bar);
    CallWindow(window, SBM_SETRANGE, static_cast<WPARAM>(min), max);
    if (redraw)
        CallWindow(window, SBM_SETPOS, static_cast<WPARAM>(CallWindow(window, SBM_GETPOS, 0, 0)), TRUE);
}

void RaiseBar(HWND bar) {
    if (bar) ::BringWindowToTop(bar);
}

void ShowPart(HWND part, int command) {
    if (part) ::ShowWindow(part, command);
}

// What ShowScrollBar means for a host. `bar` is SB_VERT, SB_HORZ or SB_BOTH.
void FollowShowScrollBar(const HostBars& host, int bar, BOOL show) {
    switch (bar) {
        case SB_VERT:
            LayoutHost(host.host, std::nullopt, show);
            RaiseBar(host.vertical);
            break;
        case SB_HORZ:
            LayoutHost(host.host, show, std::nullopt);
            RaiseBar(host.horizontal);
            break;
        case SB_BOTH:
            LayoutHost(host.host, show, show);
            RaiseBar(host.horizontal);
            RaiseBar(host.vertical);
            break;
    }
    const std::optional<HostBars> now = FindHostBars(host.host, SB_BOTH);
    if (!now) return;
    if (now->isVerticalShown && now->vertical) {
        RefreshHostBar(now->host, SB_VERT);
        ::ShowWindow(now->vertical, SW_SHOW);
    }
    if (now->isHorizontalShown && now->horizontal) {
        RefreshHostBar(now->host, SB_HORZ);
        ::ShowWindow(now->horizontal, SW_SHOW);
    }
    if (now->isVerticalShown && now->isHorizontalShown) ShowPart(now->corner, SW_SHOW);
}

void FollowShowWindow(const HostBars& host, int command) {
    SetHostVisible(host.host, command == SW_SHOW);
    if (!host.isHorizontalShown && !host.isVerticalShown) return;
    if (host.isHorizontalShown && host.isVerticalShown) {
        for (HWND part : {host.horizontal, host.vertical, host.corner}) ShowPart(part, command);
        return;
    }
    ShowPart(host.isHorizontalShown ? host.horizontal : host.vertical, command);
    ShowPart(host.isHorizontalShown ? host.vertical : host.horizontal, SW_HIDE);
    ShowPart(host.corner, SW_HIDE);
}

void FollowBringToTop(const HostBars& host) {
    if (!host.isVisible) return;
    if (host.isHorizontalShown) RaiseBar(host.horizontal);
    if (host.isVerticalShown) RaiseBar(host.vertical);
    if (host.isHorizontalShown && host.isVerticalShown) RaiseBar(host.corner);
}

// The part of a bar's state that the caller asks for, in the caller's structure.
BOOL AnswerOfBar(HWND bar, SCROLLINFO* info) {
    const UINT mask = info->fMask;
    SCROLLINFO answer = CopyOf(*info);
    if (info->cbSize < sizeof answer) answer.fMask &= ~static_cast<UINT>(SIF_TRACKPOS);
    const LRESULT result = CallWindow(bar, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(&answer));
    answer.cbSize = info->cbSize;
    answer.fMask = mask;
    std::memcpy(info, &answer, info->cbSize);
    return result != 0;
}

}  // namespace

bool IsAnyReplacementRunning() { return g_running.load() != 0; }

HMODULE WINAPI HookedLoadLibraryA(LPCSTR name) {
    const Running running;
    return PatchLoaded(::LoadLibraryA(name), 0);
}

HMODULE WINAPI HookedLoadLibraryW(LPCWSTR name) {
    const Running running;
    return PatchLoaded(::LoadLibraryW(name), 0);
}

HMODULE WINAPI HookedLoadLibraryExA(LPCSTR name, HANDLE file, DWORD flags) {
    const Running running;
    return PatchLoaded(::LoadLibraryExA(name, file, flags), flags);
}

HMODULE WINAPI HookedLoadLibraryExW(LPCWSTR name, HANDLE file, DWORD flags) {
    const Running running;
    return PatchLoaded(::LoadLibraryExW(name, file, flags), flags);
}

FARPROC WINAPI HookedGetProcAddress(HMODULE module, LPCSTR name) {
    const Running running;
    const FARPROC found = ::GetProcAddress(module, name);
    if (!found) return nullptr;
    const FARPROC replacement = ReplacementOf(found);
    if (replacement != found) {
        // The caller keeps the pointer for as long as it likes.
        static std::atomic<bool> isKept = false;
        const LastErrorKeeper keeper;
        if (!isKept.exchange(true)) AfxKeepLibraryLoaded();
    }
    return replacement;
}

int WINAPI HookedSetScrollInfo(HWND window, int bar, LPCSCROLLINFO info, BOOL redraw) {
    if (!MayBeHost(window)) return ::SetScrollInfo(window, bar, info, redraw);
    const Running running;
    const std::optional<HostBars> host = FindHostBars(window, bar);
    // Other bars than these two have no native state that could be read.
    if (host && (bar == SB_VERT || bar == SB_HORZ) && IsScrollInfo(info)) {
        const LastErrorKeeper keeper;
        FollowScrollInfo(*host, bar, *info, redraw);
    }
    return ::SetScrollInfo(window, bar, info, redraw);
}

BOOL WINAPI HookedSetScrollRange(HWND window, int bar, int min, int max, BOOL redraw) {
    if (!MayBeHost(window)) return ::SetScrollRange(window, bar, min, max, redraw);
    const Running running;
    if (const std::optional<HostBars> host = FindHostBars(window, bar)) {
        const LastErrorKeeper keeper;
        FollowScrollRange(*host, bar, min, max, redraw);
    }
    return ::SetScrollRange(window, bar, min, max, redraw);
}

int WINAPI HookedSetScrollPos(HWND window, int bar, int position, BOOL redraw) {
    if (!MayBeHost(window)) return ::SetScrollPos(window, bar, position, redraw);
    const Running running;
    if (const std::optional<HostBars> host = FindHostBars(window, bar)) {
        const LastErrorKeeper keeper;
        const HWND skinBar = host->Bar(bar);
        if (static_cast<int>(CallWindow(skinBar, SBM_GETPOS, 0, 0)) != position)
            CallWindow(skinBar, SBM_SETPOS, static_cast<WPARAM>(position), redraw);
    }
    return ::SetScrollPos(window, bar, position, redraw);
}

BOOL WINAPI HookedGetScrollInfo(HWND window, int bar, LPSCROLLINFO info) {
    if (!MayBeHost(window)) return ::GetScrollInfo(window, bar, info);
    const Running running;
    const std::optional<HostBars> host = FindHostBars(window, bar);
    const BOOL result = ::GetScrollInfo(window, bar, info);
    if (!host || !host->Bar(bar) || !IsScrollInfo(info)) return result;
    // The skin bar has the last word.
    const LastErrorKeeper keeper;
    return AnswerOfBar(host->Bar(bar), info);
}

BOOL WINAPI HookedShowScrollBar(HWND window, int bar, BOOL show) {
    const Running running;
    // A scroll bar control gets the call twice; programs have always got the second answer.
    if (bar == SB_CTL) ::ShowScrollBar(window, bar, show);
    const std::optional<HostBars> host = FindHostBars(window, bar);
    const BOOL result = ::ShowScrollBar(window, bar, show);
    if (!host) return result;
    const LastErrorKeeper keeper;
    FollowShowScrollBar(*host, bar, show);
    return TRUE;
}

BOOL WINAPI HookedEnableScrollBar(HWND window, UINT bars, UINT arrows) {
    const Running running;
    if (bars != SB_VERT) {
        // Horizontal bars are never enabled or disabled.
        if (bars == SB_HORZ || bars == SB_BOTH) return TRUE;
        return ::EnableScrollBar(window, bars, arrows);
    }
    const LastErrorKeeper keeper;
    const std::optional<HostBars> host = FindHostBars(window, SB_VERT);
    if (host && host->vertical) ::EnableWindow(host->vertical, arrows == ESB_ENABLE_BOTH);
    return TRUE;
}

BOOL WINAPI HookedMoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
    if (!MayBeHost(window)) return ::MoveWindow(window, x, y, width, height, repaint);
    const Running running;
    const bool isHost = FindHostBars(window, -1).has_value();
    const BOOL result = ::MoveWindow(window, x, y, width, height, repaint);
    if (!isHost) return result;
    const LastErrorKeeper keeper;
    // This class always has its vertical bar.
    const bool keepsVertical = WindowClassName(window).Is("Tavix_PaneH");
    LayoutHost(window, std::nullopt, keepsVertical ? std::optional<int>(TRUE) : std::nullopt);
    return result;
}

BOOL WINAPI HookedShowWindow(HWND window, int command) {
    const Running running;
    const BOOL result = ::ShowWindow(window, command);
    if (command != SW_HIDE && command != SW_SHOW) return result;
    if (const std::optional<HostBars> host = FindHostBars(window, -1)) {
        const LastErrorKeeper keeper;
        FollowShowWindow(*host, command);
    }
    return result;
}

BOOL WINAPI HookedBringWindowToTop(HWND window) {
    const Running running;
    const BOOL result = ::BringWindowToTop(window);
    if (const std::optional<HostBars> host = FindHostBars(window, -1)) {
        const LastErrorKeeper keeper;
        FollowBringToTop(*host);
    }
    return result;
}

BOOL WINAPI HookedTrackPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND window,
                                 const RECT* rect) {
    const Running running;
    return ::TrackPopupMenu(menu, flags, x, y, reserved, window, rect);
}

}  // namespace tavix
