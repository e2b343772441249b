#include "message_loop.h"

#include <utility>

#include "failure.h"

namespace gallery {

namespace {

/* How long windows may go on painting after they should have come to rest. */
constexpr DWORD patience_milliseconds = 5000;

/* Whether Tab, the arrows and Enter walk about in this top-level window: in dialogs, and wherever the
   host has asked for it by letting the window be a parent of controls. */
bool has_keyboard_navigation(HWND window) {
    return window && (GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_CONTROLPARENT ||
                      GetClassLongPtrA(window, GCW_ATOM) == reinterpret_cast<ULONG_PTR>(WC_DIALOG));
}

Translator the_translator;

bool is_painting_outstanding() { return HIWORD(GetQueueStatus(QS_PAINT)) & QS_PAINT; }

}  // namespace

void set_translator(Translator translator) { the_translator = std::move(translator); }

void dispatch(MSG& message) {
    if (the_translator && the_translator(message)) return;
    const HWND top = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    if (has_keyboard_navigation(top) && IsDialogMessageA(top, &message)) return;
    TranslateMessage(&message);
    DispatchMessageA(&message);
}

void settle(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    for (;;) {
        MSG message;
        // One at a time: a stream of timer messages must not keep the clock from being read.
        if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) dispatch(message);
        const DWORD passed = GetTickCount() - start;
        if (passed >= milliseconds && !is_painting_outstanding()) return;
        if (passed >= milliseconds + patience_milliseconds) throw Failure("The windows don't stop painting");
        constexpr DWORD nap_milliseconds = 10;
        MsgWaitForMultipleObjectsEx(0, nullptr, nap_milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

}  // namespace gallery
