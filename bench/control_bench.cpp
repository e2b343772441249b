/* Standard controls beside their native selves: opening a dialog full of them, and painting each. */
#include <string>
#include <thread>

#include "benches.h"
#include "control_set.h"

namespace bench {

namespace {

/* Opens a dialog of 60 controls until all of it is painted, and closes it again; the microseconds of the
   opening. */
double TimeToOpenDialog() {
    Window dialog(nullptr);
    const double time = TimeOf(
        [&] {
            dialog = MakeDialog(CRect(0, 0, 620, 500));
            ::ShowWindow(dialog, SW_HIDE);
            for (int row = 0; row < 10; ++row)
                for (std::size_t column = 0; column < kDialogControls.size(); ++column)
                    MakeControl(dialog, kDialogControls[column],
                                {4 + static_cast<int>(column) * 100, 4 + row * 46});
            ::ShowWindow(dialog, SW_SHOW);
            ::RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
            Pump();
            ::GdiFlush();
        },
        1);
    return time;
}

LRESULT CALLBACK BareHook(int code, WPARAM wParam, LPARAM lParam) {
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

/* The same on a thread that has no skin; with a hook that does nothing if so asked. */
double TimeToOpenNativeDialog(bool hooked) {
    double time = 0;
    std::thread([&time, hooked] {
        HHOOK hook = hooked ? ::SetWindowsHookExA(WH_CALLWNDPROC, &BareHook, nullptr, ::GetCurrentThreadId())
                            : nullptr;
        time = TimeToOpenDialog();
        Pump();
        if (hook) ::UnhookWindowsHookEx(hook);
    }).join();
    return time;
}

}  // namespace

void MeasureControls(Report& report, const NativeWindows& native) {
    const auto openSkinned = [] {
        const double time = TimeToOpenDialog();
        Pump();
        return time;
    };
    report.AtMost("opening a dialog of 60 standard controls; the native dialog",
                  MeasureRounds(
                      openSkinned, [] { return TimeToOpenNativeDialog(false); }, 7),
                  1.25);
    // How much of it the platform asks for the hook alone.
    report.Told("the same; the native dialog of a thread with a bare hook",
                MeasureRounds(
                    openSkinned, [] { return TimeToOpenNativeDialog(true); }, 7));
    const ControlSet skinned;
    ::SetWindowPos(skinned.Parent(), HWND_TOP, 400, 0, 0, 0, SWP_NOSIZE);
    ::SetWindowPos(native.controls.Parent(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Pump();
    for (std::size_t i = 0; i < kPaintedControls.size(); ++i)
        report.AtMost(std::string("one painting of a ") + kPaintedControls[i].name + "; the native control's",
                      MeasureInTurns([&] { RepaintClient(skinned.Control(i)); }, 20,
                                     [&] { RepaintClient(native.controls.Control(i)); }, 20),
                      1);
}

}  // namespace bench
