/* A skinned scroll bar's painting beside that of a native one, along both axes. */
#include "bench_window.h"
#include "benches.h"

namespace bench {

void MeasureScrollBars(Report& report, const NativeWindows& native) {
    const CRect at = kScrollBarParent;
    Window parent(PlainClass(), WS_POPUP | WS_VISIBLE, CRect(400, 0, 400 + at.right, at.bottom));
    // Beside each other, and both in front of everything else.
    ::SetWindowPos(native.scrollBarParent, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    HWND level = MakeScrollBar(parent, false);
    HWND upright = MakeScrollBar(parent, true);
    Pump();
    report.AtMost(
        "one horizontal scroll bar's painting; the native control's",
        MeasureInTurns([&] { RepaintClient(level); }, 20, [&] { RepaintClient(native.levelScrollBar); }, 20),
        1.0);
    report.AtMost("one vertical scroll bar's painting; the native control's",
                  MeasureInTurns([&] { RepaintClient(upright); }, 20,
                                 [&] { RepaintClient(native.uprightScrollBar); }, 20),
                  1.0);
}

}  // namespace bench
