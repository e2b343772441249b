#include "engine/window_hook.h"

#include "tavixskin/tavix_skin.h"

namespace {

void MeetWindow(HWND window, char* hint) {
    if (CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin()) engine->AddControl(window, hint);
}

}  // namespace

// Stands on every sent message of the thread: the common path is one comparison and a look-up.
LRESULT CALLBACK SkinHookProc(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION) {
        const CWPSTRUCT& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        static char dialogHint[] = "DIALOG";
        if (sent.message == WM_CREATE)
            MeetWindow(sent.hwnd, nullptr);
        else if (sent.message == WM_INITDIALOG)
            MeetWindow(sent.hwnd, dialogHint);
    }
    void* hook = nullptr;
    CTavixSkin::GetHookedThreadList()->Lookup(static_cast<WORD>(::GetCurrentThreadId()), hook);
    return ::CallNextHookEx(static_cast<HHOOK>(hook), code, wParam, lParam);
}
