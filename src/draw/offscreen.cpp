#include "draw/offscreen.h"

#include "draw/surface.h"

namespace tavix {

OffscreenSurface::OffscreenSurface(HDC target, const RECT& area) : m_target(target), m_area(area) {
    // Sides in 64 bits: an area may span more than the co-ordinates' own range.
    const long long width = static_cast<long long>(area.right) - area.left;
    const long long height = static_cast<long long>(area.bottom) - area.top;
    if (width <= 0 || height <= 0 || width > 32767 || height > 32767) return;
    m_surface = TakeCanvas(static_cast<int>(width), static_cast<int>(height));
    if (!m_surface) return;
    m_dc.Attach(m_surface->dc);
    m_saved = ::SaveDC(m_dc);
    ::SetViewportOrgEx(m_dc, -area.left, -area.top, nullptr);
    ::IntersectClipRect(m_dc, area.left, area.top, area.right, area.bottom);
}

OffscreenSurface::~OffscreenSurface() {
    if (!m_surface) return;
    // Whatever the painting selected, clipped or set is undone for the next one.
    if (m_saved) ::RestoreDC(m_dc, m_saved);
    ReturnCanvas(m_surface);
}

OffscreenSurface::operator bool() const { return m_surface != nullptr; }

void OffscreenSurface::Present() { Present(m_area); }

void OffscreenSurface::Present(const RECT& part) {
    RECT shown;
    if (!m_surface || !::IntersectRect(&shown, &part, &m_area)) return;
    ::BitBlt(m_target, shown.left, shown.top, shown.right - shown.left, shown.bottom - shown.top, m_dc,
             shown.left, shown.top, SRCCOPY);
}

}  // namespace tavix
