/* List and tree views: a report of ten thousand rows, icons, and a deep tree. */
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <cstdio>

#include "dialog_template.h"
#include "page.h"
#include "report_list.h"

namespace gallery {

namespace {

enum ControlId { id_report = 100, id_icons, id_tree };

constexpr DWORD dialog_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
constexpr int report_rows = 10'000;

void set_text(HWND list, int row, int column, const char* text) {
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = const_cast<char*>(text);
    SendMessageA(list, LVM_SETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void fill_invoices(HWND list) {
    static constexpr ReportColumn columns[] = {{"Invoice", 84, LVCFMT_LEFT},
                                               {"Customer", 150, LVCFMT_LEFT},
                                               {"Town", 110, LVCFMT_LEFT},
                                               {"Amount", 80, LVCFMT_RIGHT}};
    static constexpr const char* customers[] = {"Abel & Sons", "Brook Printing", "Carver Tools", "Dene Dairy",
                                                "Ellis Optics"};
    static constexpr const char* towns[] = {"Ashford", "Bath", "Carlisle"};
    fill_report(list, columns, {});
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    SendMessageA(list, LVM_SETITEMCOUNT, report_rows, 0);
    char text[40];
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.pszText = text;
    for (int row = 0; row < report_rows; ++row) {
        std::snprintf(text, sizeof text, "R-%05d", row + 1);
        item.iItem = row;
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
        set_text(list, row, 1, customers[row % 5]);
        set_text(list, row, 2, towns[row % 3]);
        std::snprintf(text, sizeof text, "%d.%02d", 40 + row * 37 % 900, row * 13 % 100);
        set_text(list, row, 3, text);
    }
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
}

void fill_icons(HWND list) {
    // The system's own images, which stay the system's.
    constexpr UINT how = SHGFI_SYSICONINDEX | SHGFI_LARGEICON | SHGFI_USEFILEATTRIBUTES;
    SHFILEINFOA folder{};
    const DWORD_PTR images = SHGetFileInfoA("folder", FILE_ATTRIBUTE_DIRECTORY, &folder, sizeof folder, how);
    SendMessageA(list, LVM_SETIMAGELIST, LVSIL_NORMAL, static_cast<LPARAM>(images));
    char text[20];
    for (int i = 0; i < 40; ++i) {
        std::snprintf(text, sizeof text, "Folder %d", i + 1);
        LVITEMA item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = i;
        item.iImage = folder.iIcon;
        item.pszText = text;
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    }
}

HTREEITEM add_node(HWND tree, HTREEITEM parent, char* text) {
    TVINSERTSTRUCTA node{};
    node.hParent = parent;
    node.hInsertAfter = TVI_LAST;
    node.item.mask = TVIF_TEXT | TVIF_STATE;
    node.item.state = node.item.stateMask = TVIS_EXPANDED;
    node.item.pszText = text;
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(tree, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&node)));
}

void fill_tree(HWND tree) {
    char text[40];
    HTREEITEM parent = TVI_ROOT;
    for (int level = 1; level <= 14; ++level) {
        for (int i = 1; i <= 3; ++i) {
            std::snprintf(text, sizeof text, "Level %d, branch %d", level, i);
            const HTREEITEM node = add_node(tree, parent, text);
            if (i == 3) parent = node;
        }
    }
}

}  // namespace

void open_list_views(Stage& stage) {
    constexpr DWORD report = LVS_REPORT | LVS_SHOWSELALWAYS | WS_TABSTOP | WS_BORDER;
    constexpr DWORD tree = TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT | WS_TABSTOP | WS_BORDER;
    const HWND dialog =
        stage.add(DialogTemplate("Invoices", dialog_style, 440, 250)
                      .add(WC_LISTVIEWA, "", id_report, report, {8, 8, 270, 150})
                      .add(WC_LISTVIEWA, "", id_icons,
                           LVS_ICON | LVS_SHAREIMAGELISTS | WS_TABSTOP | WS_BORDER, {8, 164, 270, 60})
                      .add(WC_TREEVIEWA, "", id_tree, tree, {284, 8, 140, 216})
                      .create(nullptr, plain_dialog_procedure));
    fill_invoices(GetDlgItem(dialog, id_report));
    fill_icons(GetDlgItem(dialog, id_icons));
    fill_tree(GetDlgItem(dialog, id_tree));
    stage.arrange_in_rows();
    stage.show();
}

}  // namespace gallery
