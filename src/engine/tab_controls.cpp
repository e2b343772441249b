#include "engine/tab_controls.h"

#include <algorithm>

#include "engine/window_class.h"
#include "framework/thread_slot.h"

namespace tavix {

namespace {

struct Known {
    std::vector<HWND> tabs;
    bool searched = false;  // for those that were there before the first question
};
ThreadSlot<Known> g_known;

// Also tells whether a handle still is what it was.
bool IsTabControl(HWND window) { return WindowClassName(window).Is("SysTabControl32"); }

BOOL CALLBACK NoteIfTab(HWND window, LPARAM) {
    if (IsTabControl(window)) NoteTabControl(window);
    return TRUE;
}

BOOL CALLBACK SearchTopWindow(HWND window, LPARAM) {
    ::EnumChildWindows(window, &NoteIfTab, 0);
    return NoteIfTab(window, 0);
}

}  // namespace

void NoteTabControl(HWND tab) {
    std::vector<HWND>& tabs = g_known.Get().tabs;
    if (std::find(tabs.begin(), tabs.end(), tab) == tabs.end()) tabs.push_back(tab);
}

void ForgetTabControls() { g_known.Get() = Known(); }

std::vector<HWND> TabControlsBelow(HWND ancestor) {
    Known& known = g_known.Get();
    if (!known.searched) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &SearchTopWindow, 0);
        known.searched = true;
    }
    std::erase_if(known.tabs, [](HWND tab) { return !IsTabControl(tab); });
    std::vector<HWND> below;
    for (HWND tab : known.tabs)
        if (::IsChild(ancestor, tab)) below.push_back(tab);
    return below;
}

}  // namespace tavix
