#include "frames/non_client.h"

#include <algorithm>

#include "draw/bitmap_region.h"
#include "draw/gradient.h"
#include "draw/menu_font.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"

namespace tavix {

namespace {

CSize WindowSize(HWND window) {
    CRect rect;
    ::GetWindowRect(window, &rect);
    return rect.Size();
}

}  // namespace

void CutCorners(CRgn& region, CSize window, CBitmap* left, CBitmap* right, int rightOffset) {
    CutKeyPixels(region, left, kCornerKey, CPoint(0, 0), window);
    CutKeyPixels(region, right, kCornerKey, CPoint(rightOffset, 0), window);
}

void SetShape(HWND window, CRgn& shape, BOOL redraw) {
    CRgn present;
    if (!shape.m_hObject || !present.CreateRectRgn(0, 0, 0, 0)) return;
    if (::GetWindowRgn(window, present) != ERROR && ::EqualRgn(shape, present)) return;
    if (::SetWindowRgn(window, shape, redraw)) shape.Detach();
}

void SetCornerRegion(HWND window, CBitmap* left, CBitmap* right, int rightOffset) {
    const CSize size = WindowSize(window);
    CRgn region;
    region.CreateRectRgn(0, 0, size.cx, size.cy);
    CutCorners(region, size, left, right, rightOffset);
    if (::SetWindowRgn(window, region, TRUE)) region.Detach();
}

void PaintGradient(CDC& dc, const RECT& rect, COLORREF first, COLORREF second, bool horizontal) {
    if (!::RectVisible(dc, &rect)) return;
    DrawGradient(&dc, rect, first, second, horizontal ? 1 : 0, 0);
}

void PaintBorderLines(CDC& dc, CSize window, int top) {
    const int w = window.cx;
    const int h = window.cy;
    const auto column = [&](int x, DWORD from, DWORD to) {
        PaintGradient(dc, CRect(x, top, x + 1, h), SkinColour(from), SkinColour(to));
    };
    column(0, CLR_FRAME_OUTER_FROM, CLR_FRAME_OUTER_TO);
    column(1, CLR_FRAME_INNER_FROM, CLR_FRAME_INNER_TO);
    column(w - 1, CLR_FRAME_OUTER_FROM, CLR_FRAME_OUTER_TO);
    column(w - 2, CLR_FRAME_INNER_FROM, CLR_FRAME_INNER_TO);

    const auto row = [&](int inset, int y, DWORD from, DWORD to) {
        PaintGradient(dc, CRect(inset, y, w - inset, y + 1), SkinColour(from), SkinColour(to), true);
    };
    row(2, h - 3, CLR_FRAME_BOTTOM1_FROM, CLR_FRAME_BOTTOM1_TO);
    row(1, h - 2, CLR_FRAME_BOTTOM2_FROM, CLR_FRAME_BOTTOM2_TO);
    row(0, h - 1, CLR_FRAME_BOTTOM3_FROM, CLR_FRAME_BOTTOM3_TO);
}

void PaintMenuBand(CDC& dc, const RECT& rect) {
    constexpr COLORREF kWhite = 0xFFFFFF;
    constexpr COLORREF kShade = 0xEAEAEA;
    const LONG middle = rect.top + (rect.bottom - rect.top) / 2;
    PaintGradient(dc, CRect(rect.left, rect.top, rect.right, middle), kWhite, kWhite);
    PaintGradient(dc, CRect(rect.left, middle, rect.right, rect.bottom), kWhite, kShade);
}

void CreateTitleFont(CFont& font) { CreateMenuFont(font, FW_SEMIBOLD); }

CSize SmallIconSize() { return {::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON)}; }

NonClientArea::NonClientArea(HWND window, CBitmap* left, CBitmap* right)
    : m_dc(window), m_size(WindowSize(window)) {
    CRect windowRect;
    ::GetWindowRect(window, &windowRect);
    ::GetClientRect(window, &m_client);
    POINT origin{0, 0};
    ::ClientToScreen(window, &origin);
    m_client.OffsetRect(origin.x - windowRect.left, origin.y - windowRect.top);

    CRgn clip;
    CRgn client;
    clip.CreateRectRgn(0, 0, m_size.cx, m_size.cy);
    client.CreateRectRgn(m_client);
    clip.CombineRgn(clip, client, RGN_DIFF);
    CutCorners(clip, m_size, left, right, m_size.cx - BitmapSize(right).cx);
    ::SelectClipRgn(m_dc, clip);

    m_client.left = std::clamp<LONG>(m_client.left, 0, m_size.cx);
    m_client.right = std::clamp<LONG>(m_client.right, m_client.left, m_size.cx);
    m_client.top = std::clamp<LONG>(m_client.top, 0, m_size.cy);
    m_client.bottom = std::clamp<LONG>(m_client.bottom, m_client.top, m_size.cy);
}

}  // namespace tavix
