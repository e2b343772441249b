/* CSkinHeader: the skin of "SysHeader32" windows. */
#pragma once

#include "engine/skin_wnd_base.h"
#include "tavixskin/framework/gdi.h"

/*
 * Paints the whole header and shows a pressed column. The native control keeps the items, and does
 * all sizing, tracking and notifying.
 */
class CSkinHeader : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    /* Erases too, where other skins only repaint. Always 1. */
    int RepaintSkin() override;

private:
    LRESULT OnPaint();
    LRESULT OnButtonDown(WPARAM wParam, LPARAM lParam);
    LRESULT OnButtonUp(WPARAM wParam, LPARAM lParam);
    LRESULT OnNotify(WPARAM wParam, LPARAM lParam);

    void PressAt(const POINT& point);
    void Release();
    bool PaintHeader(CDC& dc, const CRect& client) const;
    int ItemCount() const;
    CRect ItemRect(int item) const;

    int pressedItem = -1;   // the item under a press
    BOOL tracking = FALSE;  // a divider is being dragged: no press is noted meanwhile
};
