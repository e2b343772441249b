#include "control_set.h"

#include <commctrl.h>

namespace bench {

const std::vector<ControlKind> kDialogControls = {
    {"static", "Static", SS_LEFT, {80, 16}},
    {"edit", "Edit", WS_BORDER | ES_AUTOHSCROLL | WS_TABSTOP, {90, 20}},
    {"combo box", "ComboBox", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, {90, 120}},
    {"check box", "Button", BS_AUTOCHECKBOX | WS_TABSTOP, {90, 18}},
    {"push button", "Button", BS_PUSHBUTTON | WS_TABSTOP, {80, 24}},
    {"list box", "ListBox", WS_VSCROLL | WS_BORDER | WS_TABSTOP, {90, 44}},
};

const std::vector<ControlKind> kPaintedControls = {
    {"static", "Static", SS_LEFT, {120, 16}},
    {"edit", "Edit", WS_BORDER | ES_AUTOHSCROLL, {120, 20}},
    {"group box", "Button", BS_GROUPBOX, {200, 80}},
    {"check box", "Button", BS_AUTOCHECKBOX, {120, 18}},
    {"header", WC_HEADERA, HDS_BUTTONS | HDS_HORZ, {300, 22}},
    {"trackbar", TRACKBAR_CLASSA, TBS_AUTOTICKS, {160, 30}},
};

HWND MakeControl(HWND parent, const ControlKind& kind, const POINT& at) {
    HWND control = ::CreateWindowExA(0, kind.className, "Measured", WS_CHILD | WS_VISIBLE | kind.style, at.x,
                                     at.y, kind.size.cx, kind.size.cy, parent, nullptr, nullptr, nullptr);
    const bool isList = !::lstrcmpiA(kind.className, "ListBox");
    const bool isCombo = !::lstrcmpiA(kind.className, "ComboBox");
    for (int i = 0; (isList || isCombo) && i < 5; ++i)
        ::SendMessageA(control, isList ? LB_ADDSTRING : CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("An item"));
    if (isCombo) ::SendMessageA(control, CB_SETCURSEL, 1, 0);
    for (int i = 0; !::lstrcmpiA(kind.className, WC_HEADERA) && i < 3; ++i) {
        char text[] = "A column";
        HDITEMA item{};
        item.mask = HDI_TEXT | HDI_WIDTH | HDI_FORMAT;
        item.fmt = HDF_STRING;
        item.cxy = 90;
        item.pszText = text;
        ::SendMessageA(control, HDM_INSERTITEMA, 99, reinterpret_cast<LPARAM>(&item));
    }
    return control;
}

ControlSet::ControlSet() : m_parent(PlainClass(), WS_POPUP | WS_VISIBLE, CRect(0, 0, 330, 330)) {
    int y = 4;
    for (const ControlKind& kind : kPaintedControls) {
        m_controls.push_back(MakeControl(m_parent, kind, {4, y}));
        y += kind.size.cy + 4;
    }
}

}  // namespace bench
