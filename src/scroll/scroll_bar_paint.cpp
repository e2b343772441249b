#include "scroll/scroll_bar_paint.h"

#include "draw/bitmap_draw.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "tavixskin/value_ids.h"

namespace tavix {
namespace {

/* A bitmap of an upright bar with the axes exchanged, for the length of a scope. */
class TransposedArt {
public:
    explicit TransposedArt(CBitmap* bitmap) {
        if (CSkinBitmap* skin = AsSkinBitmap(bitmap))
            m_art = skin->Transposed();
        else if (TransposeBitmap(bitmap, m_own))
            m_art = &m_own;
    }
    operator CBitmap*() { return m_art; }

private:
    CBitmap m_own;
    CBitmap* m_art = nullptr;
};

/*
 * Draws in the co-ordinates of an upright bar: on a horizontal one x and y, and the axes of the
 * art, change places on the way to the context. So one routine paints both.
 */
class BarCanvas {
public:
    BarCanvas(CDC& dc, bool horizontal) : m_dc(dc), m_horizontal(horizontal) {}

    void Stretch(CBitmap* bitmap, const RECT& rect) {
        if (!m_horizontal)
            StretchBitmap(m_dc, bitmap, rect);
        else if (bitmap)
            StretchBitmap(m_dc, TransposedArt(bitmap), Transposed(rect));
    }
    void Tile(CBitmap* bitmap, const RECT& rect) {
        if (!m_horizontal)
            StretchTiles(m_dc, bitmap, rect, TileAxis::Down);
        else if (bitmap)
            StretchTiles(m_dc, TransposedArt(bitmap), Transposed(rect), TileAxis::Across);
    }
    /* A line across the bar, the last point left out. */
    void CrossLine(const CPen& pen, int from, int to, int along) {
        const SelectionGuard guard(m_dc, pen);
        ::MoveToEx(m_dc, m_horizontal ? along : from, m_horizontal ? from : along, nullptr);
        ::LineTo(m_dc, m_horizontal ? along : to, m_horizontal ? to : along);
    }

private:
    CDC& m_dc;
    bool m_horizontal;
};

void PaintThumb(BarCanvas& canvas, const CRect& thumb, const ScrollBarParts& parts) {
    const auto piece = [&thumb](int top, int bottom) { return CRect(thumb.left, top, thumb.right, bottom); };
    const int first = BitmapSize(parts.thumb_first).cy;
    const int last = BitmapSize(parts.thumb_last).cy;
    const int from = SaturatedSum(thumb.top, first);
    canvas.Stretch(parts.thumb_first, piece(thumb.top, from));
    // Copies start as long as a whole one fits before the end, the last end lies over what is left.
    const int middle = BitmapSize(parts.thumb_middle).cy;
    if (middle > 0) canvas.Tile(parts.thumb_middle, piece(from, SaturatedSum(thumb.bottom, -middle)));
    canvas.Stretch(parts.thumb_last, piece(SaturatedSum(thumb.bottom, -last), thumb.bottom));
}

/* Five pairs of lines about the thumb's middle, of which the first has only its second line. */
void PaintGrip(BarCanvas& canvas, const CRect& thumb, int margin, const ScrollBarParts& parts) {
    constexpr int kPairs = 5;
    constexpr int kPitch = 2;
    constexpr int kSide = 4;
    const CPen first_pen(PS_SOLID, 1, parts.grip_first);
    const CPen second_pen(PS_SOLID, 1, parts.grip_second);
    const int low = SaturatedSum(thumb.top, margin);
    const int high = SaturatedSum(SaturatedSum(thumb.bottom, -margin), -1);
    const int left = SaturatedSum(thumb.left, kSide);
    const int right = SaturatedSum(thumb.right, -kSide);
    const long long height = static_cast<long long>(thumb.bottom) - thumb.top;
    int line = SaturatedSum(thumb.top, static_cast<int>(height / 2) - 6);
    for (int i = 0; i < kPairs; ++i, line = SaturatedSum(line, kPitch)) {
        if (line < low || line > high) continue;
        if (i != 0) canvas.CrossLine(first_pen, left, right, line);
        canvas.CrossLine(second_pen, left, right, SaturatedSum(line, 1));
    }
}

}  // namespace

ScrollBarParts ScrollBarPartsOf(const ScrollBarState& state) {
    const auto arrow = [&state](bool pressed, DWORD normal_id, DWORD pressed_id, DWORD disabled_id) {
        return SkinBitmap(!state.enabled ? disabled_id : pressed ? pressed_id : normal_id);
    };
    const bool pressed = state.thumb_pressed;
    ScrollBarParts parts{};
    parts.track = SkinBitmap(state.enabled ? BMP_SB_TRACK : BMP_SB_TRACK_DISABLED);
    parts.first_arrow =
        arrow(state.first_arrow_pressed, BMP_SB_ARROW_NORMAL, BMP_SB_ARROW_DOWN, BMP_SB_ARROW_DISABLED);
    parts.second_arrow =
        arrow(state.second_arrow_pressed, BMP_SB_ARROW2_NORMAL, BMP_SB_ARROW2_DOWN, BMP_SB_ARROW2_DISABLED);
    parts.has_thumb = state.enabled && state.thumb_fits;
    if (!parts.has_thumb) return parts;
    parts.thumb_first = SkinBitmap(pressed ? BMP_SB_THUMB_HOT_TOP : BMP_SB_THUMB_TOP);
    parts.thumb_middle = SkinBitmap(pressed ? BMP_SB_THUMB_HOT_TILE : BMP_SB_THUMB_TILE);
    parts.thumb_last = SkinBitmap(pressed ? BMP_SB_THUMB_HOT_BOTTOM : BMP_SB_THUMB_BOTTOM);
    parts.grip_margin = BitmapSize(SkinBitmap(BMP_SB_THUMB_TOP));
    parts.grip_first = SkinColour(pressed ? CLR_SB_GRIP_PRESSED_LIGHT : CLR_SB_GRIP_LIGHT);
    parts.grip_second = SkinColour(pressed ? CLR_SB_GRIP_PRESSED_DARK : CLR_SB_GRIP_DARK);
    return parts;
}

void PaintScrollBar(CDC& dc, const ScrollBarRects& rects, bool horizontal, const ScrollBarParts& parts) {
    const auto upright = [horizontal](const CRect& r) { return horizontal ? Transposed(r) : r; };
    BarCanvas canvas(dc, horizontal);
    // A surface is not blank by itself.
    if (!parts.track) dc.FillSolidRect(rects.client, RGB(0, 0, 0));
    canvas.Tile(parts.track, upright(rects.client));
    canvas.Stretch(parts.first_arrow, upright(rects.first_arrow));
    canvas.Stretch(parts.second_arrow, upright(rects.second_arrow));
    if (!parts.has_thumb) return;
    const CRect thumb = upright(rects.thumb);
    PaintThumb(canvas, thumb, parts);
    // The end's size is taken as the art has it, so a horizontal bar keeps its width free.
    PaintGrip(canvas, thumb, horizontal ? parts.grip_margin.cx : parts.grip_margin.cy, parts);
}

void PaintSizeGrip(CDC& dc, const RECT& area, const RECT& corner, COLORREF background) {
    dc.FillSolidRect(area, background);
    CBitmap* grip = SkinBitmap(BMP_FRAME_GRIPPER);
    const CSize size = BitmapSize(grip);
    const int left = SaturatedSum(corner.right, -size.cx);
    const int top = SaturatedSum(corner.bottom, -size.cy);
    DrawTransparent(&dc, grip, left, top, corner.right, corner.bottom, SkinColour(CLR_TRANSPARENT));
}

}  // namespace tavix
