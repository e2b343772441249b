/* CControlBar and CToolBar: bars along the sides of a frame window. */
#pragma once

#include "tavixskin/framework/wnd.h"

/* The side of the frame that a bar stands at. */
constexpr DWORD CBRS_ALIGN_LEFT = 0x1000;
constexpr DWORD CBRS_ALIGN_TOP = 0x2000;
constexpr DWORD CBRS_ALIGN_RIGHT = 0x4000;
constexpr DWORD CBRS_ALIGN_BOTTOM = 0x8000;
constexpr DWORD CBRS_ALIGN_ANY = CBRS_ALIGN_LEFT | CBRS_ALIGN_TOP | CBRS_ALIGN_RIGHT | CBRS_ALIGN_BOTTOM;
constexpr DWORD CBRS_ORIENT_HORZ = CBRS_ALIGN_TOP | CBRS_ALIGN_BOTTOM;
constexpr DWORD CBRS_ORIENT_VERT = CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT;
/* The bits of a style given to Create that are the bar's and not its window's. */
constexpr DWORD CBRS_ALL = 0x0000FFFF;

/* The id of a frame's first tool bar. */
constexpr UINT AFX_IDW_TOOLBAR = 0xE800;

/* Sent to bars when the program has nothing else to do (wParam: not 0 to disable what has no handler). */
constexpr UINT WM_IDLEUPDATECMDUI = 0x0363;

/* A child window that a frame keeps at one of its sides; see CFrameWnd::RecalcLayout. */
class TAVIX_API CControlBar : public CWnd {
    DECLARE_DYNAMIC(CControlBar)
    DECLARE_MESSAGE_MAP()
public:
    CControlBar();
    ~CControlBar() override;

    DWORD GetBarStyle() const;
    void SetBarStyle(DWORD style);

    /*
     * The size that the bar needs; `stretch` asks for one that goes from end to end. The base has
     * no size of its own.
     */
    virtual CSize CalcFixedLayout(bool stretch, bool horizontal);
    /* Brings what the bar shows of commands up to date. */
    virtual void OnUpdateCmdUI(bool disableIfNoHandler);
    /* The bar's style has changed; the base does nothing. */
    virtual void OnBarStyleChange(DWORD oldStyle, DWORD newStyle);

protected:
    LRESULT OnCreate(WPARAM wParam, LPARAM lParam);
    LRESULT OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam);
    /*
     * Passes the press on to the control, if the button is still down: a handler that ran first may
     * have let the user release it elsewhere, and a control would then wait for the release forever.
     */
    LRESULT OnLButtonDown(WPARAM wParam, LPARAM lParam);

    DWORD m_dwStyle = CBRS_ALIGN_TOP;
};

/* A bar that is a tool bar of the common controls. */
class TAVIX_API CToolBar : public CControlBar {
    DECLARE_DYNAMIC(CToolBar)
    DECLARE_MESSAGE_MAP()
public:
    CToolBar();
    ~CToolBar() override;

    /* `style` holds the window's bits and, in its low word, those of the bar (CBRS_ALIGN_...). */
    bool Create(HWND parent, DWORD style = WS_CHILD | WS_VISIBLE | CBRS_ALIGN_TOP, UINT id = AFX_IDW_TOOLBAR);
    /* The size of buttons and of the pictures on them. */
    void SetSizes(SIZE button, SIZE image);
    /* The place of a button in the client area, by its index; empty if there is none. */
    void GetItemRect(int index, RECT& rect) const;

    CSize CalcFixedLayout(bool stretch, bool horizontal) override;
    void OnUpdateCmdUI(bool disableIfNoHandler) override;

protected:
    bool PreCreateWindow(CREATESTRUCTA& create) override;
    LRESULT OnNcCreate(WPARAM wParam, LPARAM lParam);
    /* What stands beside the buttons has the mouse of the client area too. */
    LRESULT OnNcHitTest(WPARAM wParam, LPARAM lParam);
};
