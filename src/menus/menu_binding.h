/* Popup menus as the windows that open them hear of them. */
#pragma once

#include <windows.h>

namespace tavix {

/*
 * A popup is about to open, and `window` was told: pairs the menu with the skin of its window, in
 * whichever order the two come.
 */
void BindPopupMenu(HWND window, HMENU menu);
/* The popup is closed, or was never opened: nothing waits for its other half any more. */
void ForgetPendingPopup();

/*
 * What a skinned window does with WM_MEASUREITEM, WM_DRAWITEM and WM_MENUCHAR. Items of a popup
 * that the library converted are its own to measure and to draw; a host's own owner-draw items
 * reach the host (`previous`) with the host's data. All else is forwarded as it is. `lParam` is the
 * structure's address.
 */
LRESULT ForwardMenuMessage(WNDPROC previous, const MSG& inFlight, LPARAM lParam);

}  // namespace tavix
