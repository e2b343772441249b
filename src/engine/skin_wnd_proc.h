/* The shared window procedure of all skinned windows, and what it keeps for a thread. */
#pragma once

#include <windows.h>

class CSkinWndBaseClass;

/* Takes the place of a window's procedure from the first Attach on. */
LRESULT CALLBACK SkinWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

namespace tavix {

/*
 * Gives the windows that outlive their thread's engine back to their previous procedures: the
 * shared procedure stays in place, finds no engine, and forwards. The skin objects are deleted.
 */
void ReleaseOrphan(CSkinWndBaseClass* head, HWND window);

}  // namespace tavix
