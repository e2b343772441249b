/* CStubRegionWnd: fills the corner where a host's two skin scroll bars meet. */
#pragma once

#include "tavixskin/framework/wnd.h"

class CStubRegionWnd : public CWnd {
    DECLARE_DYNAMIC(CStubRegionWnd)
    DECLARE_MESSAGE_MAP()
public:
    /*
     * Makes the window, 20 by 20 pixels at the rectangle's corner. A null class name means the
     * framework's plain child class; `context` is not read. 0 if the window can't be made.
     */
    virtual int Create(const char* className, const char* title, DWORD style, const RECT& rect, CWnd* parent,
                       UINT id, void* context = nullptr);

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /* Private messages, by which another thread asks the one that owns the window. */
    static constexpr UINT kRefreshBar = WM_USER + 1;  // wParam: SB_VERT or SB_HORZ; lParam: the host
    static constexpr UINT kDropRemovedHosts = WM_USER + 2;

private:
    LRESULT OnPaint(WPARAM wParam, LPARAM lParam);
};
