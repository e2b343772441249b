#include "controls/button_paint.h"

#include <algorithm>

#include "controls/control_text.h"
#include "draw/bitmap_draw.h"
#include "draw/gradient.h"
#include "draw/skin_bitmap.h"
#include "draw/text_scope.h"
#include "engine/skin_values.h"
#include "tavixskin/value_ids.h"

namespace tavix {

namespace {

// Co-ordinates of windows end at 16 bits; no bitmap counts as larger.
CSize BoundedSize(CBitmap* bitmap) {
    constexpr LONG kLargest = 0x7FFF;
    const CSize size = BitmapSize(bitmap);
    return CSize(std::clamp(size.cx, 0L, kLargest), std::clamp(size.cy, 0L, kLargest));
}

COLORREF LabelColour(bool enabled) { return SkinColour(enabled ? CLR_TEXT : CLR_TEXT_DISABLED); }

// The room is always that of the mark that is on, whichever of the two is drawn.
MarkParts MarkPartsOf(DWORD onId, DWORD offId, bool on, bool enabled, int textGap, HFONT font) {
    return {SkinBitmap(on ? onId : offId), BoundedSize(SkinBitmap(onId)), textGap,
            SkinColour(CLR_TRANSPARENT),   LabelColour(enabled),          font};
}

}  // namespace

PushParts PushPartsOf(const PushState& state) {
    PushParts parts{};
    const auto gradient = [&parts](DWORD from, DWORD to) {
        parts.top = SkinColour(from);
        parts.bottom = SkinColour(to);
    };
    if (!state.enabled)
        gradient(CLR_BTN_DISABLED_FROM, CLR_BTN_DISABLED_TO);
    else if (state.hot && state.pressed)
        gradient(CLR_BTN_DOWN_FROM, CLR_BTN_DOWN_TO);
    else if (state.hot)
        gradient(CLR_BTN_HOT_FROM, CLR_BTN_HOT_TO);
    else
        gradient(CLR_BTN_NORMAL_FROM, CLR_BTN_NORMAL_TO);
    parts.border = SkinColour(state.enabled ? CLR_BTN_BORDER : CLR_BTN_DISABLED_BORDER);
    // A flag that a disabled button still holds gives it the highlight colour, as on an enabled one.
    parts.text = state.hot || state.pressed ? SkinColour(CLR_TEXT_HIGHLIGHT) : LabelColour(state.enabled);
    parts.focusRect = state.focused;
    return parts;
}

void PaintPushFace(CDC& dc, const RECT& client, const PushParts& parts, const char* text) {
    DrawGradient(&dc, client, parts.top, parts.bottom, 0, 1);
    {
        const CPen pen(PS_SOLID, 1, parts.border);
        const SelectionGuard penGuard(dc, pen);
        const SelectionGuard brushGuard(dc, ::GetStockObject(NULL_BRUSH));
        constexpr int kCorner = 3;
        ::RoundRect(dc, client.left, client.top, client.right, client.bottom, kCorner, kCorner);
    }
    CRect inner = client;
    if (parts.focusRect) {
        inner.DeflateRect(3, 3);
        ::DrawFocusRect(dc, &inner);
    }
    // The window's own font is not looked at: all push buttons of a program look alike.
    const SelectionGuard fontGuard(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const TextScope textScope(dc, parts.text);
    dc.DrawText(text, -1, inner, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

MarkParts CheckPartsOf(bool checked, bool enabled, HFONT font) {
    return MarkPartsOf(BMP_BTN_CHECK_ON, BMP_BTN_CHECK_OFF, checked, enabled, 2, font);
}

MarkParts RadioPartsOf(bool checked, bool enabled, HFONT font) {
    // One pixel further from the mark than on a check box.
    return MarkPartsOf(BMP_BTN_RADIO_ON, BMP_BTN_RADIO_OFF, checked, enabled, 3, font);
}

CRect MarkRect(const RECT& client, const CSize& extent) {
    const int top = client.top + (client.bottom - client.top - extent.cy) / 2;
    return CRect(CPoint(client.left, top), extent);
}

void PaintMarkFace(CDC& dc, const RECT& client, const MarkParts& parts, const char* text) {
    const CRect mark = MarkRect(client, parts.extent);
    if (parts.mark) DrawTransparent(&dc, parts.mark, mark.left, mark.top, mark.right, mark.bottom, parts.key);
    CRect label = client;
    label.left = mark.right + parts.textGap;
    const SelectionGuard fontGuard(dc, parts.font);
    const TextScope textScope(dc, parts.text);
    dc.DrawText(text, -1, label, DT_VCENTER | DT_SINGLELINE | DT_NOCLIP | DT_END_ELLIPSIS);
}

CRect MarkColumn(const RECT& client) {
    // Measured by the check mark for radio buttons too: a wider radio mark keeps its right edge unpainted.
    CRect column = client;
    column.right = column.left + BoundedSize(SkinBitmap(BMP_BTN_CHECK_ON)).cx + 2;
    return column;
}

}  // namespace tavix
