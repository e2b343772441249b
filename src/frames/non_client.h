/* What frames and dialogs share outside the client area: clip, corners, border lines, font. */
#pragma once

#include "draw/offscreen.h"
#include "tavixskin/framework/gdi.h"

namespace tavix {

/* The pixels of the corner bitmaps in this colour are cut from the window. */
constexpr COLORREF kCornerKey = 0x0000FF;

/* Any part of a caption: WS_BORDER and WS_DLGFRAME both belong to it. */
inline bool HasCaption(DWORD style) { return (style & WS_CAPTION) != 0; }

/*
 * Takes the corner shapes from the region of a window of `window` size: the left one at its
 * top-left, the right one with its left edge at `rightOffset`.
 */
void CutCorners(CRgn& region, CSize window, CBitmap* left, CBitmap* right, int rightOffset);

/*
 * Gives the window a region, which is the platform's from then on. One that the window has already is not set
 * again: some platforms measure and paint the whole frame anew for it.
 */
void SetShape(HWND window, CRgn& shape, BOOL redraw);

/* Gives the window a region with cut corners; the platform owns the region from then on. */
void SetCornerRegion(HWND window, CBitmap* left, CBitmap* right, int rightOffset);

/*
 * The lines that frame a window: two columns at each side from `top` down, three rows at the
 * bottom. Frames and dialogs take them from the same colours.
 */
void PaintBorderLines(CDC& dc, CSize window, int top);

/* A vertical or horizontal gradient, left out where the context shows nothing of it. */
void PaintGradient(CDC& dc, const RECT& rect, COLORREF first, COLORREF second, bool horizontal = false);

/* The light band of a menu bar, and of the strips that go on from it in a frame's side borders. */
void PaintMenuBand(CDC& dc, const RECT& rect);

/* The system's menu font at a semi-bold weight: the font of all titles. */
void CreateTitleFont(CFont& font);

/* The size of the system's small icons. */
CSize SmallIconSize();

/*
 * The non-client area of a window, ready to be painted: clipped to what is neither client nor
 * a cut corner.
 */
class NonClientArea {
public:
    NonClientArea(HWND window, CBitmap* left, CBitmap* right);

    /*
     * Runs paint(dc, window size) off-screen for each strip around the client area, or once for
     * the whole window, and shows each with one blit. The painting sees window co-ordinates.
     */
    template <class Paint>
    void Run(bool wholeWindow, Paint paint) {
        if (!m_dc.GetSafeHdc()) return;
        const CRect whole(0, 0, m_size.cx, m_size.cy);
        PaintOffscreenAround(m_dc, whole, wholeWindow ? CRect() : m_client,
                             [&](CDC& dc) { paint(dc, m_size); });
    }

private:
    CWindowDC m_dc;
    CSize m_size;
    CRect m_client;  // in window co-ordinates, within the window
};

}  // namespace tavix
