/* Filling a report list: its bars are kept in step with each row. */
#include <windows.h>

#include <commctrl.h>

#include "bench_window.h"
#include "benches.h"

namespace bench {

namespace {

constexpr int kRows = 10'000;
constexpr int kSlices = 20;

/* The microseconds of inserting the next slice of the rows. */
double TimeToFillSlice(HWND list, int slice) {
    char text[] = "one row";
    LVITEMA row{};
    row.mask = LVIF_TEXT;
    row.pszText = text;
    row.iItem = slice * (kRows / kSlices);
    return TimeOf(
        [&] {
            ::SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&row));
            ++row.iItem;
        },
        kRows / kSlices);
}

/*
 * Each row costs the platform milliseconds of asking its server, so the lists are filled once, and slice by
 * slice in turns: what disturbs the machine meanwhile disturbs both.
 */
Pair TimeToFill(HWND ours, HWND reference) {
    Pair whole{};
    for (HWND list : {ours, reference}) ::SendMessageA(list, LVM_DELETEALLITEMS, 0, 0);
    for (int slice = 0; slice < kSlices; ++slice) {
        // Who goes first changes, as in all measurements.
        if (slice % 2) whole.reference += TimeToFillSlice(reference, slice) * (kRows / kSlices);
        whole.ours += TimeToFillSlice(ours, slice) * (kRows / kSlices);
        if (slice % 2 == 0) whole.reference += TimeToFillSlice(reference, slice) * (kRows / kSlices);
    }
    return whole;
}

}  // namespace

HWND MakeReportList(HWND parent) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&classes);
    HWND list = ::CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 300, 200,
                                  parent, nullptr, nullptr, nullptr);
    char title[] = "Column";
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = title;
    column.cx = 100;
    ::SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    return list;
}

void MeasureListViews(Report& report, const NativeWindows& native) {
    Window parent(PlainClass(), WS_POPUP | WS_VISIBLE, CRect(400, 0, 720, 220));
    HWND list = MakeReportList(parent);
    report.AtMost("filling a report list with 10,000 rows; the native list",
                  TimeToFill(list, native.reportList), 1.2);
}

}  // namespace bench
