/* CSkinTabCtrl: the skin of "SysTabControl32" windows. */
#pragma once

#include "engine/skin_wnd_base.h"

namespace tavix {
struct TabCtrlParts;
}

/*
 * Paints the whole tab control: the parent's gradient behind the tabs, the frame of the page and
 * the tabs. The native control keeps the tabs, their places and the selection. There is one look,
 * tabs at the top without images, and no state but the selection.
 */
class CSkinTabCtrl : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT OnPaint();
    LRESULT OnAdjustRect(WPARAM wParam, LPARAM lParam);

    tavix::TabCtrlParts ReadParts() const;
    CRect ParentArea() const;
};
