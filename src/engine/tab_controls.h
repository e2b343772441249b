/* The tab controls of a thread, for what must know whether it lies on one. */
#pragma once

#include <windows.h>

#include <vector>

namespace tavix {

/*
 * A page, and each label on it, asks at each painting whether a tab control is below it. To look at all
 * windows of the dialog each time costs with the square of their number, so the library remembers the tab
 * controls of each skinned thread: those that there are at the first question, and those that it meets
 * from then on.
 */

/* A tab control was made on the calling thread. */
void NoteTabControl(HWND tab);
/* The calling thread's skin begins: what was known of an earlier one is forgotten. */
void ForgetTabControls();
/* The calling thread's tab controls that are descendants of the window. */
std::vector<HWND> TabControlsBelow(HWND ancestor);

}  // namespace tavix
