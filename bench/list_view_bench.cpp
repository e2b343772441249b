/* Filling a report list: its bars are kept in step with each row. */
#include <windows.h>

#include <commctrl.h>

#include "bench_window.h"
#include "benches.h"

namespace bench {

namespace {

constexpr int kRows = 10'000;

void Fill(HWND list) {
    ::SendMessageA(list, LVM_DELETEALLITEMS, 0, 0);
    char text[] = "one row";
    LVITEMA row{};
    row.mask = LVIF_TEXT;
    row.pszText = text;
    for (row.iItem = 0; row.iItem < kRows; ++row.iItem)
        ::SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&row));
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
                  MeasureInTurns([&] { Fill(list); }, 1, [&] { Fill(native.reportList); }, 1, 3), 1.2);
}

}  // namespace bench
