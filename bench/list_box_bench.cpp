/* Filling, scrolling and painting a skinned list box beside a native one. */
#include "bench_window.h"
#include "benches.h"

namespace bench {

namespace {

void Fill(HWND list, int count) {
    for (int i = 0; i < count; ++i)
        ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("An item of ordinary length"));
}

/* As a dialogue fills its lists: before they are shown. */
double TimeToFill(HWND list, int count) {
    ::ShowWindow(list, SW_HIDE);
    ::SendMessageA(list, LB_RESETCONTENT, 0, 0);
    const double time = TimeOf([&] { Fill(list, count); }, 1);
    ::ShowWindow(list, SW_SHOW);
    return time;
}

/* A line down and a line up again, each shown before the next. */
void ScrollByLine(HWND list) {
    for (const WORD code : {SB_LINEDOWN, SB_LINEUP}) {
        ::SendMessageA(list, WM_VSCROLL, code, 0);
        ::UpdateWindow(list);
        ::GdiFlush();
    }
}

}  // namespace

void MeasureListBoxes(Report& report, const NativeWindows& native) {
    constexpr int kItems = 10'000;
    Window parent(PlainClass(), WS_POPUP | WS_VISIBLE, kListBoxParent);
    ::SetWindowPos(parent, nullptr, 400, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ::SetWindowPos(native.listBoxParent, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    HWND list = MakeListBox(parent);
    Pump();
    report.AtMost("10,000 strings added to a list box; the native control's",
                  MeasureRounds([&] { return TimeToFill(list, kItems); },
                                [&] { return TimeToFill(native.listBox, kItems); }, 3),
                  1.2);
    Pump();
    report.AtMost("a list box's scrolling by a line and back; the native control's",
                  MeasureInTurns([&] { ScrollByLine(list); }, 10, [&] { ScrollByLine(native.listBox); }, 10),
                  1.2);
    report.AtMost(
        "one list box's painting; the native control's",
        MeasureInTurns([&] { RepaintClient(list); }, 20, [&] { RepaintClient(native.listBox); }, 20), 1);
}

}  // namespace bench
