/* CSkinDialog: windows of class "#32770". */
#pragma once

#include "engine/skin_wnd_base.h"
#include "frames/dialog_geometry.h"
#include "tavixskin/framework/gdi.h"

/*
 * A top-level dialog gets border, caption, icon, up to four caption buttons, and a gradient
 * client background. A child dialog has only its background painted: with the page colour on
 * a tab page, else with the piece of its captioned ancestor's gradient at its place. A
 * button's state is 0 normal, 1 hot, 2 pressed.
 */
class CSkinDialog : public CSkinWndBaseClass {
public:
    CSkinDialog();
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    // dialog_skin.cpp: life, geometry, background
    void OnCreate(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnInitDialog(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnNcCalcSize(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnChangedCaption(UINT message, WPARAM wParam, LPARAM lParam);
    void OnEraseBkgnd(HDC dc);
    void OnNcPaint();
    void StripStyle();
    void Layout();
    bool IsOnTabPage();
    HWND CaptionedAncestor() const;
    void PaintBackground(HDC dc);
    void RepaintNonClient() const { ::SendMessageA(m_hWnd, WM_NCPAINT, 0, 0); }
    void LookForCoveringTab(HWND ancestor);

    // dialog_input.cpp: mouse
    LRESULT HitTest(LRESULT answer, CPoint screen) const;
    void OnNcMouseMove(WPARAM hitCode, LPARAM lParam);
    void OnNcLButtonDown(UINT message, WPARAM wParam, LPARAM lParam);
    void OnNcLButtonUp(UINT message, WPARAM wParam, LPARAM lParam);
    void OnTimer(UINT message, WPARAM wParam, LPARAM lParam);
    void Release(WPARAM wParam, LPARAM lParam);
    void SendCommandOf(LRESULT hitCode);
    void ClearStates() { m_nMaxState = m_nMinState = m_nCloseState = m_nHelpState = 0; }
    int* StateOf(LRESULT hitCode);
    HICON SmallIcon() const;

    DWORD m_dwExStyle = 0;
    DWORD m_dwStyle = 0;  // at WM_CREATE, and at WM_INITDIALOG before stripping
    CRect m_rcMin;        // window co-ordinates
    CRect m_rcMax;
    CRect m_rcClose;
    CRect m_rcHelp;
    CFont m_Font;        // of the title
    int m_nPressed = 0;  // 0 none, 1 maximise, 2 minimise, 3 help, 4 close
    int m_bHasMax = 0;
    int m_bHasMin = 0;
    int m_bHasClose = 0;
    int m_bHasHelp = 0;
    int m_nMaxState = 0;
    int m_nMinState = 0;
    int m_nCloseState = 0;
    int m_nHelpState = 0;
    CRect m_rcButtons;     // the packed geometry: left, top, width in right, height in bottom
    CBrush m_Brush;        // of the tab page colour
    int m_bOnTabPage = 0;  // stays set once found
    UINT m_nTimer = 0;

    friend struct DialogSkinTestAccess;
};
