#include "controls/trackbar_skin.h"

#include "controls/parent_background.h"

LRESULT CSkinTrackBar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CTLCOLORSTATIC) return SampleBrush();
    return Default(message, wParam, lParam);
}

LRESULT CSkinTrackBar::SampleBrush() {
    backBrush.DeleteObject();
    backBrush.CreateSolidBrush(
        tavix::ColourBesideControl(m_hWnd, GetParent(), tavix::SecondTry::ParentOrigin));
    return reinterpret_cast<LRESULT>(backBrush.GetSafeHandle());
}
