/* CMenuBarHook: how a CSkinMenuBar hears of what its frame and MDI client receive. Not for hosts. */
#pragma once

#include "tavixskin/skin_wnd_base.h"

class CSkinMenuBar;

/*
 * A skin object on top of the others of a window. It belongs to its menu bar, which attaches and
 * detaches it, and passes every message on.
 */
class CMenuBarHook final : public CSkinWndBaseClass {
public:
    CMenuBarHook();
    ~CMenuBarHook() override;

    void Attach(HWND window, CSkinMenuBar* owner);
    /* Nothing if no window is attached. */
    void Detach();

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Inform(UINT message, WPARAM wParam, LPARAM lParam);
    bool IsOnMdiClient() const;

    CSkinMenuBar* m_pOwner = nullptr;
};
