#include "controls/group_box_skin.h"

#include <cstring>

#include "controls/control_text.h"
#include "controls/parent_background.h"
#include "draw/text_scope.h"
#include "engine/skin_values.h"
#include "tavixskin/value_ids.h"

namespace {

// Without a text it is what the platform makes of one: no width, and the line's height or none.
CSize TextExtent(HDC dc, const char* text) {
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    CSize extent;
    ::GetTextExtentPoint32A(dc, text, static_cast<int>(std::strlen(text)), &extent);
    return extent;
}

// One of the two lines, from the caption's right clockwise around the box to below the caption: the
// frame is open at its top left, where the caption stands.
void DrawOpenFrame(HDC dc, COLORREF colour, CSize caption, CPoint corner, int offset) {
    const CPen pen(PS_SOLID, 1, colour);
    const SelectionGuard penGuard(dc, pen);
    const int top = caption.cy / 2 + offset;
    ::MoveToEx(dc, caption.cx + 4 - offset, top, nullptr);
    ::LineTo(dc, corner.x, top);
    ::LineTo(dc, corner.x, corner.y);
    ::LineTo(dc, offset, corner.y);
    ::LineTo(dc, offset, caption.cy + 3 + offset);
}

void PaintGroupBox(CDC& dc, CRect area, const char* text) {
    area.DeflateRect(1, 1);
    const CSize caption = TextExtent(dc, text);
    // Etched: the second line lies one pixel up and left of the first.
    DrawOpenFrame(dc, tavix::SkinColour(CLR_GROUP_INNER), caption, CPoint(area.right, area.bottom), 1);
    DrawOpenFrame(dc, tavix::SkinColour(CLR_GROUP_OUTER), caption, CPoint(area.right - 1, area.bottom - 1),
                  0);

    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const tavix::TextScope textScope(dc, tavix::SkinColour(CLR_TEXT));
    CRect at(CPoint(area.left, area.top), caption);
    dc.DrawText(text, -1, at, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

}  // namespace

LRESULT CSkinGroupBox::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return OnCreate(wParam, lParam);
        case WM_SIZE:
            Default(message, wParam, lParam);
            return 0;
        case WM_ENABLE:
        case WM_SETTEXT:
            return OnChange(message, wParam, lParam);
        case WM_PAINT:
            return OnPaint();
        case WM_ERASEBKGND:
            return 1;
        default:
            return Default(message, wParam, lParam);
    }
}

LRESULT CSkinGroupBox::OnCreate(WPARAM wParam, LPARAM lParam) {
    exStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE));
    constexpr DWORD kEdges = WS_EX_CLIENTEDGE | WS_EX_STATICEDGE;
    ::SetWindowLongA(m_hWnd, GWL_EXSTYLE, static_cast<LONG>(exStyle & ~kEdges));
    return Default(WM_CREATE, wParam, lParam);
}

// What the box shows beneath itself is the parent's, and repainted in its own time.
LRESULT CSkinGroupBox::OnChange(UINT message, WPARAM wParam, LPARAM lParam) {
    Default(message, wParam, lParam);
    tavix::InvalidateUnderParent(m_hWnd);
    return 0;
}

LRESULT CSkinGroupBox::OnPaint() {
    CPaintDC dc(m_hWnd);
    if (!dc.m_hDC) return 0;
    const tavix::ControlText text(m_hWnd);
    tavix::SampleParentBackground(m_hWnd, dc, tavix::SecondTry::ParentOrigin);
    CRect client;
    GetClientRect(&client);
    PaintGroupBox(dc, client, text.c_str());
    return 0;
}
