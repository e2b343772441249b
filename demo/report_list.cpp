#include "report_list.h"

#include <windows.h>

#include <commctrl.h>

namespace gallery {

void fill_report(HWND list, std::span<const ReportColumn> columns,
                 std::initializer_list<std::initializer_list<const char*>> rows) {
    LVCOLUMNA heading = {};
    heading.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    for (const ReportColumn& column : columns) {
        heading.cx = column.width;
        heading.fmt = column.format;
        heading.pszText = const_cast<char*>(column.name);
        SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(&column - columns.data()),
                     reinterpret_cast<LPARAM>(&heading));
    }
    LVITEMA item = {};
    item.mask = LVIF_TEXT;
    for (const auto& row : rows) {
        item.iSubItem = 0;
        for (const char* text : row) {
            item.pszText = const_cast<char*>(text);
            SendMessageA(list, item.iSubItem ? LVM_SETITEMA : LVM_INSERTITEMA, 0,
                         reinterpret_cast<LPARAM>(&item));
            ++item.iSubItem;
        }
        ++item.iItem;
    }
}

}  // namespace gallery
