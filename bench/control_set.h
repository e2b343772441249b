/* One control of each kind that dialogs are made of, to repaint or to open many of. */
#pragma once

#include <windows.h>

#include <vector>

#include "bench_window.h"

namespace bench {

struct ControlKind {
    const char* name;
    const char* className;
    DWORD style;
    SIZE size;
};

/* What a dialog has many of. */
extern const std::vector<ControlKind> kDialogControls;
/* Those and the rest: the rest whose painting is measured; those that have a bench of their own apart. */
extern const std::vector<ControlKind> kPaintedControls;

/* Makes a visible control; lists and combo boxes get a few items, headers columns. */
HWND MakeControl(HWND parent, const ControlKind& kind, const POINT& at);

/* A window with one control of each painted kind. */
class ControlSet {
public:
    ControlSet();
    HWND Control(std::size_t kind) const { return m_controls[kind]; }
    HWND Parent() const { return m_parent; }

private:
    Window m_parent;
    std::vector<HWND> m_controls;
};

}  // namespace bench
