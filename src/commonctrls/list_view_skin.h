/* CSkinListView: list views, tree views and the shell's view of a folder. */
#pragma once

#include "engine/skin_wnd_base.h"

/*
 * Takes the sunken edge off the window, gives it the skin's scroll bars, hides and shows these along
 * with it, and frames a few windows. Items, colours and header stay the control's own.
 */
class CSkinListView : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnCreate();
    void OnNcCalcSize(LPARAM lParam) const;
    void OnShowWindow(WPARAM wParam);
    void PaintFrame() const;

    DWORD creationExStyle = 0;   // as it was before the skin changed it
    WORD horzBarWasVisible = 0;  // when the window was last hidden
    WORD vertBarWasVisible = 0;
};
