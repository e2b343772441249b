/* Painting a skinned combo box, and its open list, beside a native one. */
#include "bench_window.h"
#include "benches.h"

namespace bench {

namespace {

HWND ListOf(HWND combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ::GetComboBoxInfo(combo, &info);
    return info.hwndList;
}

void ShowList(HWND combo, bool shown) {
    ::SendMessageA(combo, CB_SHOWDROPDOWN, shown, 0);
    Pump();
}

}  // namespace

void MeasureComboBoxes(Report& report, const NativeWindows& native) {
    Window parent(PlainClass(), WS_POPUP | WS_VISIBLE, kComboBoxParent);
    ::SetWindowPos(parent, nullptr, 400, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ::SetWindowPos(native.comboBoxParent, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    HWND combo = MakeComboBox(parent);
    Pump();
    // The skin's frame brings the painting of the client area with it, which some platforms then repeat.
    report.Told("one combo box's painting, the frame's too; the native control's",
                MeasureInTurns([&] { RepaintWhole(combo); }, 20, [&] { RepaintWhole(native.comboBox); }, 20));
    report.AtMost(
        "one combo box's painting; the native control's",
        MeasureInTurns([&] { RepaintClient(combo); }, 20, [&] { RepaintClient(native.comboBox); }, 20), 1);
    ShowList(combo, true);
    HWND list = ListOf(combo);
    ShowList(native.comboBox, true);
    HWND nativeList = ListOf(native.comboBox);
    report.AtMost("one open list's painting, with its scroll bar; the native control's",
                  MeasureInTurns([&] { RepaintWhole(list); }, 20, [&] { RepaintWhole(nativeList); }, 20), 1);
    ShowList(native.comboBox, false);
    ShowList(combo, false);
    ::ReleaseCapture();
}

}  // namespace bench
