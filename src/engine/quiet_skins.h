/* Skins that paint nothing: each gives a window a skin object for the one message it catches. */
#pragma once

#include "engine/skin_wnd_base.h"

/* A host's client window. On the class "Tavix_PaneK" right clicks outside the client are dropped. */
class CSkinClientWnd : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

/* "MDIClient": hands a new menu on to the frame. */
class CSkinMDIClient : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

/* "AfxMDIFrame42d". */
class CSkinMDIFrame : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};
