/* CSkinTrackBar: the skin of "msctls_trackbar32" windows. */
#pragma once

#include "engine/skin_wnd_base.h"
#include "tavixskin/framework/gdi.h"

/* Paints nothing: it gives the native control the colour that its parent shows beside it. */
class CSkinTrackBar : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT SampleBrush();

    CBrush backBrush;  // of the last colour message; empty before the first one
};
