/* Painting off-screen: everything appears at once, by one blit. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/*
 * A memory surface for one area of a target context. Paint on Dc() in the target's own
 * co-ordinates, then Present() copies the area to the target. The surface's first contents are
 * not defined. The thread keeps one small surface for the next painting; nested and large
 * paintings make their own.
 */
class OffscreenSurface {
public:
    OffscreenSurface(HDC target, const RECT& area);
    ~OffscreenSurface();
    OffscreenSurface(const OffscreenSurface&) = delete;
    OffscreenSurface& operator=(const OffscreenSurface&) = delete;

    /* False if the area is empty or no memory was to be had: paint nothing then. */
    explicit operator bool() const;
    CDC& Dc() { return m_dc; }
    /* Copies `part` of the area to the target, or all of it. */
    void Present();
    void Present(const RECT& part);

private:
    HDC m_target;
    CRect m_area;
    CDC m_dc;
    struct Surface* m_surface = nullptr;
    int m_saved = 0;  // the state to go back to
};

/* Runs paint(dc) off-screen and shows the result; without a surface nothing is painted. */
template <class Paint>
void PaintOffscreen(HDC target, const RECT& area, Paint paint) {
    OffscreenSurface surface(target, area);
    if (!surface) return;
    paint(surface.Dc());
    surface.Present();
}

/*
 * Runs paint(dc) off-screen for each strip of `whole` around the hole, and shows each with one blit;
 * without a hole, for all of it. The hole lies within.
 */
template <class Paint>
void PaintOffscreenAround(HDC target, const CRect& whole, const CRect& hole, Paint paint) {
    if (hole.IsRectEmpty()) {
        PaintOffscreen(target, whole, paint);
        return;
    }
    const CRect strips[] = {
        {whole.left, whole.top, whole.right, hole.top},
        {whole.left, hole.bottom, whole.right, whole.bottom},
        {whole.left, hole.top, hole.left, hole.bottom},
        {hole.right, hole.top, whole.right, hole.bottom},
    };
    for (const CRect& strip : strips)
        if (!strip.IsRectEmpty()) PaintOffscreen(target, strip, paint);
}

}  // namespace tavix
