#include "frames/frame_paint.h"

#include "draw/bitmap_draw.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "frames/non_client.h"

namespace tavix {

namespace {

/*
 * The light strip and the patch that join a side border to the menu bar. The border goes on
 * below them: its top moves down.
 */
void PaintMenuStrip(CDC& dc, CRect& border, int height, CBitmap* patch) {
    const int bottom = border.top + height;
    PaintMenuBand(dc, CRect(border.left, border.top, border.right, bottom));
    border.top = bottom;
    DrawBitmap(dc, patch, border.left + 1, border.top);
    border.top += BitmapSize(patch).cy;
}

void PaintBorders(CDC& dc, CSize window, bool hasMenuBar) {
    const int caption = SkinExtent(SZ_FRAME_CAPTION);
    CRect left(0, caption, SkinExtent(SZ_FRAME_LEFT), window.cy);
    CRect right(window.cx - SkinExtent(SZ_FRAME_RIGHT) - 1, caption, window.cx, window.cy);
    const CRect bottom(0, window.cy - SkinExtent(SZ_FRAME_BOTTOM) - 1, window.cx, window.cy);

    COLORREF fromLeft = SkinColour(CLR_FRAME_BORDER_FROM);
    COLORREF fromRight = fromLeft;
    if (hasMenuBar) {
        const int strip = SkinExtent(SZ_FRAME_MENU_STRIP);
        PaintMenuStrip(dc, left, strip, SkinBitmap(BMP_TOOL_FRAME_LEFT));
        PaintMenuStrip(dc, right, strip, SkinBitmap(BMP_TOOL_FRAME_RIGHT));
        // The borders go on in the colours of the patches; two rows above on the left, one on the right.
        fromLeft = ::GetPixel(dc, left.left + left.Width() / 2, left.top - 2);
        fromRight = ::GetPixel(dc, right.left + right.Width() / 2, right.top - 1);
    }
    // Crossed: each border starts in the colour read at the other one. Skins are drawn for it.
    const COLORREF to = SkinColour(CLR_FRAME_BORDER_TO);
    PaintGradient(dc, right, fromLeft, to);
    PaintGradient(dc, left, fromRight, to);
    PaintGradient(dc, bottom, to, to, true);
}

void PaintTitle(CDC& dc, const FrameParts& parts, int plateLeft, CSize plate) {
    constexpr int kPlateMargin = 30;
    CRect rect(plateLeft + kPlateMargin, 1, plateLeft + plate.cx - kPlateMargin, plate.cy - 1);
    if (!::RectVisible(dc, &rect)) return;
    const SelectionGuard font(dc, parts.titleFont);
    const int mode = ::SetBkMode(dc, TRANSPARENT);
    const COLORREF former = ::SetTextColor(dc, SkinColour(CLR_TEXT_HIGHLIGHT));
    dc.DrawText(parts.title, -1, rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    ::SetTextColor(dc, former);
    ::SetBkMode(dc, mode);
}

void PaintCaption(CDC& dc, CSize window, const FrameParts& parts) {
    CBitmap* tile = SkinBitmap(BMP_FRAME_CAPTION_TILE);
    CBitmap* rightEnd = SkinBitmap(BMP_FRAME_CAPTION_RIGHT);
    CBitmap* titlePlate = SkinBitmap(BMP_FRAME_CAPTION_TITLE);
    const CSize plate = BitmapSize(titlePlate);
    const int border = SkinExtent(SZ_FRAME_LEFT);
    const int plateLeft = (window.cx - plate.cx) / 2;

    DrawBitmap(dc, SkinBitmap(BMP_FRAME_CAPTION_LEFT), 0, 0);
    TileHorizontally(dc, tile, border, plateLeft, 0);
    TileHorizontally(dc, tile, plateLeft + plate.cx, window.cx - border, 0);
    DrawBitmap(dc, rightEnd, window.cx - BitmapSize(rightEnd).cx, 0);
    DrawBitmap(dc, titlePlate, plateLeft, 0);
    PaintTitle(dc, parts, plateLeft, plate);
}

void PaintGrip(CDC& dc, CSize window) {
    CBitmap* grip = SkinBitmap(BMP_FRAME_GRIPPER);
    const CSize size = BitmapSize(grip);
    const CRect at(CPoint(window.cx - 4 - size.cx, window.cy - 5 - size.cy), size);
    if (grip && ::RectVisible(dc, &at))
        DrawTransparent(&dc, grip, at.left, at.top, at.right, at.bottom, SkinColour(CLR_TRANSPARENT));
}

void PaintCaptionButtons(CDC& dc, const FrameParts& parts) {
    const auto button = [&](DWORD base, int state, const CRect& rect) {
        DrawBitmapIn(dc, SkinBitmap(base + static_cast<DWORD>(state)), rect);
    };
    if (parts.style & WS_MINIMIZEBOX) button(BMP_FRAME_MIN_NORMAL, parts.minState, parts.buttons.min);
    if (parts.style & WS_MAXIMIZEBOX) button(BMP_FRAME_MAX_NORMAL, parts.maxState, parts.buttons.max);
    button(BMP_FRAME_CLOSE_NORMAL, parts.closeState, parts.buttons.close);
}

}  // namespace

void PaintFrame(CDC& dc, CSize window, const FrameParts& parts) {
    // What no part covers, for want of a caption or a bitmap, has the colour of the borders.
    dc.FillSolidRect(CRect(0, 0, window.cx, window.cy), SkinColour(CLR_FRAME_BORDER_FROM));
    PaintBorders(dc, window, parts.hasMenuBar);
    PaintBorderLines(dc, window, HasCaption(parts.style) ? SkinExtent(SZ_FRAME_CAPTION) : 0);
    if (HasCaption(parts.style)) {
        PaintCaption(dc, window, parts);
        PaintGrip(dc, window);
    }
    if (parts.style & WS_SYSMENU) PaintCaptionButtons(dc, parts);
}

}  // namespace tavix
