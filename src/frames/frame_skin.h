/* CSkinFrame: the non-client area of a top-level frame window. */
#pragma once

#include "engine/skin_wnd_base.h"
#include "frames/frame_geometry.h"
#include "tavixskin/framework/gdi.h"

class CWnd;

/*
 * Takes the system caption from the window and draws borders, caption, title, buttons and grip
 * in its place. A button's state is 0 normal, 1 hot, 2 pressed; one button at a time is not
 * normal. What the window was at WM_CREATE decides: later changes of its style are not seen.
 */
class CSkinFrame : public CSkinWndBaseClass {
public:
    CSkinFrame();
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    // frame_skin.cpp: life, text, geometry
    void OnCreate();
    void OnSize();
    void OnActivate(WPARAM wParam);
    void OnSetText(LPARAM lParam);
    LRESULT OnGetText(UINT message, WPARAM wParam, LPARAM lParam);
    void OnGetMinMaxInfo(UINT message, WPARAM wParam, LPARAM lParam);
    void OnNcCalcSize(LPARAM lParam) const;
    void OnNcPaint();
    void StripStyle();
    void RepaintNonClient() const { ::SendMessageA(m_hWnd, WM_NCPAINT, 0, 0); }

    // frame_input.cpp: mouse, system menu, menu bar
    LRESULT HitTest(LRESULT answer, CPoint screen);
    void OnNcMouseMove(WPARAM hitCode);
    void OnNcLButtonDown(UINT message, WPARAM wParam, LPARAM lParam);
    void OnNcLButtonDblClk(WPARAM hitCode, LPARAM lParam);
    void OnMouseMove(WPARAM keys, LPARAM lParam);
    LRESULT OnLButtonUp(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnTimer(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnSysCommand(UINT message, WPARAM wParam, LPARAM lParam);
    void OnInitMenuPopup(UINT message, WPARAM wParam, LPARAM lParam);
    void OnSyncMenuObject(WPARAM wParam) const;
    void OnSyncMenu() const;
    bool Press(LRESULT hitCode, CPoint screen);
    void Release(CPoint client);
    void UpdateSystemMenu(HMENU menu) const;
    void SetStates(int close, int max, int min);
    bool AnyState() const { return m_nCloseState || m_nMaxState || m_nMinState; }
    int* StateOf(LRESULT hitCode);

    int m_nCloseState = 0;
    int m_nMaxState = 0;
    int m_nMinState = 0;
    int m_bActive = 0;    // kept for those who ask; the painting does not
    DWORD m_dwStyle = 0;  // at WM_CREATE, before stripping
    CRect m_rcClose;      // window co-ordinates
    CRect m_rcMax;
    CRect m_rcMin;
    HMENU m_hMenu = nullptr;  // at WM_CREATE, or what message 1029 gave
    CRect m_rcButtons;        // the packed geometry: left, top, width in right, height in bottom
    int m_bHasMenu = 0;
    CFont m_Font;
    CString m_strTitle;
    int m_bCacheTitle = 0;  // text messages go through m_strTitle
    UINT m_nTimer = 0;      // the hover timer, 0 if none runs

    friend struct FrameSkinTestAccess;
};

namespace tavix {

/* The hover timer of frames and dialogs, and of the combo box's arrow. */
constexpr UINT kHoverTimerId = 4991;
constexpr UINT kHoverTimerPeriod = 10;  // milliseconds

/* Sent by a menu bar (wParam: menu handle) and by the host. */
constexpr UINT kFrameSetMenu = 1029;
constexpr UINT kFrameSyncMenuObject = 1796;
constexpr UINT kFrameSyncMenu = 1797;

/* The property that announces a menu bar; its value is the bar's object. */
constexpr char kMenuBarProperty[] = "menubar";

/* The window of the frame's menu bar control, null if it has none. */
HWND FrameMenuBar(HWND frame);
/* Has the frame's menu bar show a menu; nothing if it has none. */
void SynchronizeMenuBar(HWND frame, HMENU menu);
/* True if the property that announces a menu bar is set on the frame. */
bool AnnouncesMenuBar(HWND frame);

}  // namespace tavix
