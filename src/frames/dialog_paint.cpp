#include "frames/dialog_paint.h"

#include "draw/bitmap_draw.h"
#include "draw/gradient.h"
#include "draw/offscreen.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "frames/non_client.h"

namespace tavix {

namespace {

// The surface under a dialog's borders. Fixed: no skin changes it.
constexpr COLORREF kSurfaceTop = 0xEFF0EC;
constexpr COLORREF kSurfaceBottom = 0xD9D9D9;
// A dialog's title is white under every skin.
constexpr COLORREF kTitleColour = 0xFFFFFF;

void PaintIcon(CDC& dc, HICON icon, CSize size) {
    const CRect at(CPoint(SkinExtent(SZ_DLG_LEFT) + 5, 5), size);
    if (!::RectVisible(dc, &at)) return;
    // The copy has the small size even where the window hands out a large icon.
    HICON copy = static_cast<HICON>(::CopyImage(icon, IMAGE_ICON, size.cx, size.cx, 0));
    if (!copy) return;
    ::DrawIconEx(dc, at.left, at.top, copy, size.cx, size.cy, 0, nullptr, DI_NORMAL);
    ::DestroyIcon(copy);
}

void PaintTitle(CDC& dc, const DialogParts& parts, int left, int right) {
    CRect rect(left, 5, right, SkinExtent(SZ_DLG_CAPTION) - 1);
    if (!::RectVisible(dc, &rect)) return;
    const SelectionGuard font(dc, parts.titleFont);
    const int mode = ::SetBkMode(dc, TRANSPARENT);
    const COLORREF former = ::SetTextColor(dc, kTitleColour);
    dc.DrawText(parts.title, -1, rect, DT_VCENTER | DT_SINGLELINE);
    ::SetTextColor(dc, former);
    ::SetBkMode(dc, mode);
}

void PaintCaption(CDC& dc, CSize window, const DialogParts& parts) {
    CBitmap* leftEnd = SkinBitmap(BMP_DLG_CAPTION_LEFT);
    CBitmap* rightEnd = SkinBitmap(BMP_DLG_CAPTION_RIGHT);
    const int leftWidth = BitmapSize(leftEnd).cx;
    const int rightEdge = window.cx - BitmapSize(rightEnd).cx;
    DrawBitmap(dc, leftEnd, 0, 0);
    TileHorizontally(dc, SkinBitmap(BMP_DLG_CAPTION_TILE), leftWidth, window.cx, 0);
    DrawBitmap(dc, rightEnd, rightEdge, 0);

    int titleLeft = leftWidth + 5;
    if (parts.icon) {
        const CSize icon = SmallIconSize();
        PaintIcon(dc, parts.icon, icon);
        titleLeft += icon.cx + 1;
    }
    PaintTitle(dc, parts, titleLeft, rightEdge);
}

void PaintCaptionButtons(CDC& dc, const DialogParts& parts) {
    const auto button = [&](bool exists, DWORD base, int state, const CRect& rect) {
        if (exists) DrawBitmapIn(dc, SkinBitmap(base + static_cast<DWORD>(state)), rect);
    };
    button(parts.present.close, BMP_DLG_CLOSE_NORMAL, parts.closeState, parts.buttons.close);
    button(parts.present.max, BMP_DLG_MAX_NORMAL, parts.maxState, parts.buttons.max);
    button(parts.present.min, BMP_DLG_MIN_NORMAL, parts.minState, parts.buttons.min);
    button(parts.present.help, BMP_DLG_HELP_NORMAL, parts.helpState, parts.buttons.help);
}

}  // namespace

void PaintDialog(CDC& dc, CSize window, const DialogParts& parts) {
    const bool caption = HasCaption(parts.style);
    PaintGradient(dc, CRect(0, 0, window.cx, window.cy), kSurfaceTop, kSurfaceBottom);
    PaintBorderLines(dc, window, caption ? SkinExtent(SZ_DLG_CAPTION) : 0);
    if (caption) PaintCaption(dc, window, parts);
    PaintCaptionButtons(dc, parts);
}

void PaintDialogBackground(HDC dc, const RECT& area, const RECT& gradient) {
    CRect clip;
    if (::GetClipBox(dc, &clip) == NULLREGION) return;
    CRect shown;
    // Beyond the ancestor's client area there is no gradient to show.
    if (!::IntersectRect(&shown, &clip, &area) || !::IntersectRect(&shown, &shown, &gradient)) return;
    PaintOffscreen(dc, shown, [&](CDC& surface) {
        DrawGradient(&surface, gradient, SkinColour(CLR_DLG_BACK_FROM), SkinColour(CLR_DLG_BACK_TO), 0, 0);
    });
}

}  // namespace tavix
