/* Filling list views of the report kind. */
#pragma once

#include <windows.h>

#include <initializer_list>
#include <span>

namespace gallery {

struct ReportColumn {
    const char* name;
    int width;
    int format;  // LVCFMT_LEFT, LVCFMT_RIGHT or LVCFMT_CENTER
};

/* Adds the columns, and below them rows of as many texts. */
void fill_report(HWND list, std::span<const ReportColumn> columns,
                 std::initializer_list<std::initializer_list<const char*>> rows);

}  // namespace gallery
