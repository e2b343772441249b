/* The hook that meets every new window of a skinned thread. */
#pragma once

#include <windows.h>

/* WH_CALLWNDPROC, local to the thread; lParam points to a CWPSTRUCT. */
LRESULT CALLBACK SkinHookProc(int code, WPARAM wParam, LPARAM lParam);
