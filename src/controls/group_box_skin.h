/* CSkinGroupBox: the skin of group boxes. */
#pragma once

#include "engine/skin_wnd_base.h"
#include "tavixskin/framework/gdi.h"

/*
 * Paints the frame and the caption of a "Button" window of type BS_GROUPBOX, over what its parent
 * shows there. Disabled boxes look like enabled ones.
 */
class CSkinGroupBox : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /* The extended style that the box was created with, with the edges that the skin takes off. */
    DWORD CreationExStyle() const { return exStyle; }

private:
    LRESULT OnCreate(WPARAM wParam, LPARAM lParam);
    LRESULT OnChange(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnPaint();

    DWORD exStyle = 0;  // only kept
};
