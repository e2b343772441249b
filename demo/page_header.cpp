/* Headers above lists, one of them wider than its columns; and trackbars in a dialog, level and upright. */
#include <windows.h>

#include <commctrl.h>

#include "dialog_template.h"
#include "page.h"
#include "report_list.h"

namespace gallery {

namespace {

enum ControlId { id_list = 100, id_first_fader = 110 };

constexpr DWORD dialog_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
constexpr DWORD report = LVS_REPORT | LVS_SINGLESEL | WS_BORDER | WS_TABSTOP;

HWND create_timetable() {
    const HWND dialog = DialogTemplate("Departures", dialog_style, 250, 118)
                            .add(WC_LISTVIEWA, "", id_list, report, {8, 8, 234, 80})
                            .add("BUTTON", "OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {194, 96, 48, 14})
                            .create(nullptr, plain_dialog_procedure);
    constexpr ReportColumn columns[] = {{"Time", 50, LVCFMT_LEFT},
                                        {"Destination", 120, LVCFMT_LEFT},
                                        {"Platform", 60, LVCFMT_RIGHT},
                                        {"Calling at, and remarks", 84, LVCFMT_LEFT}};
    fill_report(GetDlgItem(dialog, id_list), columns,
                {{"9:02", "Harbour", "3", ""},
                 {"9:11", "Upper town", "1", "Museum"},
                 {"9:20", "Airport", "4", "non-stop"},
                 {"9:27", "Hochtal", "2", "all stations"}});
    return dialog;
}

HWND create_mixer() {
    constexpr DWORD upright = TBS_VERT | TBS_AUTOTICKS | WS_TABSTOP;
    const HWND dialog =
        DialogTemplate("Mixer", dialog_style, 150, 118)
            .add("STATIC", "Balance", -1, SS_LEFT, {8, 8, 40, 10})
            .add(TRACKBAR_CLASSA, "", id_first_fader, TBS_AUTOTICKS | WS_TABSTOP, {48, 6, 94, 18})
            .add(TRACKBAR_CLASSA, "", id_first_fader + 1, upright, {12, 34, 24, 76})
            .add(TRACKBAR_CLASSA, "", id_first_fader + 2, upright, {46, 34, 24, 76})
            .add(TRACKBAR_CLASSA, "", id_first_fader + 3, upright | WS_DISABLED, {80, 34, 24, 76})
            .add(TRACKBAR_CLASSA, "", id_first_fader + 4, upright | TBS_BOTH, {114, 34, 30, 76})
            .create(nullptr, plain_dialog_procedure);
    for (int fader = 0; fader < 5; ++fader) {
        const HWND trackbar = GetDlgItem(dialog, id_first_fader + fader);
        SendMessageA(trackbar, TBM_SETRANGE, TRUE, MAKELPARAM(0, 10));
        SendMessageA(trackbar, TBM_SETPOS, TRUE, 5 + fader % 3 * 2);
    }
    return dialog;
}

}  // namespace

void open_header(Stage& stage) {
    stage.add(create_timetable());
    stage.add(create_mixer());
    stage.arrange_in_rows();
    stage.show();
}

void pose_header_pressed(const Stage& stage, Mouse& mouse) {
    const HWND list = GetDlgItem(stage.windows().front(), id_list);
    const auto header = reinterpret_cast<HWND>(SendMessageA(list, LVM_GETHEADER, 0, 0));
    RECT column = {};
    SendMessageA(header, HDM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&column));
    POINT middle = {(column.left + column.right) / 2, (column.top + column.bottom) / 2};
    ClientToScreen(header, &middle);
    mouse.move_to(middle);
    mouse.press();
}

}  // namespace gallery
