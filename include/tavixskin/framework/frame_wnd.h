/* CFrameWnd and its kin for multiple documents: windows with bars along their sides. */
#pragma once

#include "tavixskin/framework/control_bar.h"

/* The command and window id of the first MDI child. */
constexpr UINT AFX_IDM_FIRST_MDICHILD = 0xFF00;

/*
 * A top-level window. Its control bars are children with a CControlBar object; RecalcLayout
 * keeps them at their sides, and what is left belongs to the child with the id AFX_IDW_PANE_FIRST.
 */
class TAVIX_API CFrameWnd : public CWnd {
    DECLARE_DYNAMIC(CFrameWnd)
    DECLARE_MESSAGE_MAP()
public:
    CFrameWnd();
    ~CFrameWnd() override;

    /* A window of a class that the host has registered; the menu goes with the window. */
    bool Create(const char* className, const char* title, DWORD style, const RECT& rect, HMENU menu = nullptr,
                HWND parent = nullptr, DWORD exStyle = 0);

    /* The window that the user works in: this one, or the active child of an MDI frame. */
    virtual HWND GetActiveFrame() const;
    /* Places the bars and gives the rest to the content. */
    virtual void RecalcLayout();
    /* Brings the look of commands in all bars up to date. For a host that waits for its next message. */
    void UpdateBars() const;

    /*
     * The frame that a window stands in: the nearest window above it with a CFrameWnd object, else
     * its top-level window. Null for a top-level window.
     */
    static HWND FrameOf(HWND window);

protected:
    /* Places the bars; the result is the rest of the client area. */
    CRect PlaceBars() const;
    LRESULT OnSize(WPARAM wParam, LPARAM lParam);
    bool PreCreateWindow(CREATESTRUCTA& create) override;

private:
    HMENU m_hMenuAtCreation = nullptr;
};

/* A frame around an MDI client, whose children are the documents' windows. */
class TAVIX_API CMDIFrameWnd : public CFrameWnd {
    DECLARE_DYNAMIC(CMDIFrameWnd)
public:
    CMDIFrameWnd();
    ~CMDIFrameWnd() override;

    /* Makes the MDI client. With a menu the system keeps a list of the children at its end. */
    bool CreateClient(HMENU windowMenu = nullptr, DWORD exStyle = WS_EX_CLIENTEDGE);
    /* The active child, null if there is none, and whether it is maximised. */
    HWND MDIGetActive(BOOL* maximised = nullptr) const;

    HWND GetActiveFrame() const override;
    void RecalcLayout() override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    HWND m_hWndMDIClient = nullptr;
};

/* A document's window in an MDI frame. */
class TAVIX_API CMDIChildWnd : public CFrameWnd {
    DECLARE_DYNAMIC(CMDIChildWnd)
public:
    CMDIChildWnd();
    ~CMDIChildWnd() override;

    /* A window of a class that the host has registered. */
    bool Create(const CMDIFrameWnd& frame, const char* className, const char* title, DWORD style,
                const RECT& rect);

    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};
