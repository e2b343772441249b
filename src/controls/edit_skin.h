/* CSkinEdit: the skin of "Edit" windows, those in combo boxes among them. */
#pragma once

#include "engine/skin_wnd_base.h"
#include "tavixskin/framework/gdi.h"

/*
 * Takes the native frame off and supplies colours and brush. The text area stays the native
 * control's own; the frame around an edit is the business of the surface behind it.
 */
class CSkinEdit : public CSkinWndBaseClass {
public:
    CSkinEdit();
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /* The extended style that the edit was created with, with the edges that the skin takes off. */
    DWORD CreationExStyle() const { return exStyle; }
    /* Whether it was created in a combo box. */
    bool IsInComboBox() const { return inComboBox; }

private:
    void TakeFrameOff();
    HBRUSH PrepareColours(HDC dc);

    DWORD exStyle = 0;            // only kept
    BOOL inComboBox = FALSE;      // only kept
    CBrush enabledBrush;          // the colour around the edit as of the last colour message; first white
    CBrush disabledBrush;         // of the skin that was in force when the edit was created
    BOOL horzBarVisible = FALSE;  // when the edit was last hidden
    BOOL vertBarVisible = TRUE;
};
