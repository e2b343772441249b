/* The shadow that a popup casts, painted by the popup itself over what lies beneath. */
#pragma once

#include <windows.h>

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* How many pixels of a window's right and bottom edges its shadow takes. */
constexpr int kShadowWidth = 4;

/* What the screen shows where the shadow of a window is about to fall. */
class ScreenBackdrop {
public:
    /* Takes the edges of a window of that size, before it shows; what was taken before is dropped. */
    void Capture(const POINT& at, const SIZE& window);
    explicit operator bool() const { return m_bits != nullptr; }
    /* The pixel as a DIB holds it; 0 outside of what was taken. */
    DWORD At(int x, int y) const {
        if (x < 0 || y < 0 || x >= m_size.cx || y >= m_size.cy) return 0;
        return m_bits[static_cast<std::ptrdiff_t>(y) * m_size.cx + x] & 0xFFFFFFu;
    }

private:
    CBitmap m_bitmap;
    const DWORD* m_bits = nullptr;  // the bitmap's own
    CSize m_size;
};

/*
 * Paints the shadow of a window of that size, whose top-left is the context's (0, 0), over its last
 * columns and rows: the backdrop, darkened towards the window and fading in at the ends.
 */
void PaintDropShadow(CDC& dc, const SIZE& window, const ScreenBackdrop& backdrop);

}  // namespace tavix
