/* CSkinAnimate: the skin of "SysAnimate32" windows. */
#pragma once

#include "engine/skin_wnd_base.h"
#include "tavixskin/framework/gdi.h"

/* Paints nothing: the native control plays over the colour that its parent shows at its sides. */
class CSkinAnimate : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    COLORREF ColourAtSides() const;
    LRESULT SampleBrushCentred(HDC dc);

    CBrush backBrush;  // of the last colour message; empty before the first one
};
