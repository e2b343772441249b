/* CSkinStatic: the skin of "Static" windows. */
#pragma once

#include "engine/skin_wnd_base.h"
#include "tavixskin/framework/gdi.h"

/*
 * Leaves the painting to the native control, and gives it a ground that shows what lies behind: none
 * at all for texts, the parent's colour for icons, the page's colour on a tab control.
 */
class CSkinStatic : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnCreate();
    LRESULT OnSetText(WPARAM wParam, LPARAM lParam);
    HBRUSH ChooseBrush(HDC dc);
    HBRUSH RenewBrush(COLORREF colour);
    void LookForTab(HWND parent);
    COLORREF ColourBehindIcon() const;

    /*
     * Icons, and the frames and rectangles that share their two bits of type. All other types show what lies
     * behind them.
     */
    bool IsIconStyle() const { return (style & 3) == 3; }

    DWORD style = 0;           // as the window had it at WM_CREATE
    DWORD exStyle = 0;         // the same; only kept
    CBrush backBrush;          // of the last colour message that needed one
    BOOL overTabPage = FALSE;  // a tab control was found under it once
};
