/* The bars of a scroll host, as they are hidden and shown along with it. */
#pragma once

#include "scroll/scroll_host.h"
#include "scroll/skin_scroll_bar.h"

namespace tavix {

/*
 * The bars are siblings of their host, so they don't follow it on their own: its skin calls this at
 * WM_SHOWWINDOW. Hiding notes in the flags which of the bars showed; showing brings those back. The
 * flag of a bar that isn't there stays, as both do for a window that is no host.
 */
template <class Flag>
void BarsFollowHost(HWND window, bool isShown, Flag& horizontalShowed, Flag& verticalShowed) {
    SCROLLHOST host;
    GetScrollHostRecord(window, &host);
    const auto follow = [isShown](const CSkinScrollBar* bar, Flag& showed) {
        if (!bar) return;
        HWND handle = bar->GetSafeHwnd();
        if (!isShown) {
            showed = ::IsWindowVisible(handle) != FALSE;
            ::ShowWindow(handle, SW_HIDE);
        } else if (showed) {
            ::ShowWindow(handle, SW_SHOWNORMAL);
        }
    };
    follow(host.m_pHorzBar, horizontalShowed);
    follow(host.m_pVertBar, verticalShowed);
}

}  // namespace tavix
