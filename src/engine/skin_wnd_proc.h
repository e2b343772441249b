/* The shared window procedure of all skinned windows, and what it keeps for a thread. */
#pragma once

#include <windows.h>

#include "engine/skin_wnd_base.h"

/* Takes the place of a window's procedure from the first Attach on. */
LRESULT CALLBACK SkinWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

namespace tavix {

/*
 * Keeps a skin object alive for the length of a scope in which its code runs. A handler may
 * destroy its own window (a click that closes a dialog), and so end the object: it is then
 * deleted when the outermost scope that uses it ends. The count stands in the object, not on the
 * stack: where the system swallows an exception in a callback, frames vanish without their
 * destructors, and an object that is kept for ever is all the harm that does.
 */
class SkinInUse {
public:
    explicit SkinInUse(CSkinWndBaseClass* skin);
    ~SkinInUse();
    SkinInUse(const SkinInUse&) = delete;
    SkinInUse& operator=(const SkinInUse&) = delete;

private:
    CSkinWndBaseClass* m_skin;
};

/*
 * Gives the windows that outlive their thread's engine back to their previous procedures: the
 * shared procedure stays in place, finds no engine, and forwards. The skin objects are deleted.
 */
void ReleaseOrphan(CSkinWndBaseClass* head, HWND window);
/*
 * The previous procedure of a window that outlived a former engine, null for any other window.
 * The shared procedure is still in place there; the caller's skin object takes the window over.
 */
WNDPROC AdoptOrphan(HWND window);

}  // namespace tavix
