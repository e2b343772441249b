/* CSkinToolBar: the skin of "ToolbarWindow32" windows. */
#pragma once

#include "commonctrls/tool_bar_paint.h"
#include "engine/skin_wnd_base.h"

/*
 * Paints the whole tool bar and shows the button under the mouse. The native control keeps the
 * buttons, their places, their image lists and hit tests. Button texts are not shown.
 */
class CSkinToolBar : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT OnPaint();
    LRESULT OnNcPaint() const;
    LRESULT OnTimer(WPARAM wParam, LPARAM lParam);
    LRESULT OnCaptureChanged(WPARAM wParam, LPARAM lParam);
    void OnPress(const POINT& point);
    void OnRelease();
    void TrackHot(const POINT& point);
    void CheckHotLeft();

    void PaintToolBar(CDC& dc, const RECT& shown) const;
    void PaintBackground(CDC& dc) const;
    void PaintHot(int index) const;
    void MoveHotTo(int index);
    void DropHot(BOOL erase);
    void StopHotTimer();
    void LiftPressed() const;

    int ButtonCount() const;
    int HitTest(POINT point) const;
    bool ReadFacts(int index, TBBUTTON& facts) const;
    bool ReadButton(int index, tavix::ToolButton& button) const;
    CRect ItemRect(int index) const;
    void InvalidateItem(int index, BOOL erase) const;
    tavix::ToolBarImages Images() const;

    int hotButton = -1;      // under the mouse
    int pressedButton = -1;  // under a press that isn't over; never one with a drop-down arrow
    UINT_PTR hotTimer = 0;   // looks for the mouse that has left; 0 while it isn't running
};
