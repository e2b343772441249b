#include "commonctrls/tool_bar_paint.h"

#include <algorithm>

#include "draw/bitmap_draw.h"
#include "draw/gradient.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"

namespace tavix {

namespace {

bool IsChecked(const ToolButton& button) {
    return (button.style & BTNS_CHECK) && (button.state & TBSTATE_CHECKED);
}

void PaintFace(CDC& dc, const ToolButton& button, const ToolButtonLook& look, int clientHeight) {
    const CRect& rect = button.rect;
    const auto stretch = [&](DWORD id, int height) {
        StretchBitmap(dc, SkinBitmap(id), CRect(rect.left, rect.top, rect.right, rect.top + height));
    };
    const int lessOne = rect.Height() - 1;
    if (look.state == ToolButtonState::Hot) {
        if (button.style & BTNS_DROPDOWN)
            stretch(look.pressed ? BMP_TOOL_DROP_DOWN : BMP_TOOL_DROP_HOT, lessOne);
        else
            stretch(look.pressed ? BMP_TOOL_BTN_DOWN : BMP_TOOL_BTN_HOT,
                    std::min(rect.Height(), clientHeight));
    } else if (IsChecked(button)) {
        stretch(BMP_TOOL_BTN_DOWN, lessOne);
    }
}

// The faces of a hot drop-down button have their arrow in them.
void PaintDropArrow(CDC& dc, const ToolButton& button, const ToolButtonLook& look) {
    if (look.state == ToolButtonState::Hot || !(button.style & BTNS_DROPDOWN)) return;
    CBitmap* arrow = SkinBitmap(BMP_TOOL_DROP_ARROW);
    const CSize size = BitmapSize(arrow);
    const CRect place(CPoint(button.rect.right - 3 - size.cx, button.rect.bottom - 5 - size.cy), size);
    DrawTransparent(&dc, arrow, place.left, place.top, place.right, place.bottom,
                    SkinColour(CLR_TRANSPARENT));
}

/* One image of a list, drawn in its own size. */
class ToolImagePainter {
public:
    ToolImagePainter(CDC& dc, HIMAGELIST list, int image, CSize size)
        : m_dc(dc), m_list(list), m_image(image), m_size(size) {}

    void Draw(int x, int y, ToolImageEffect effect) const {
        switch (effect) {
            case ToolImageEffect::Plain:
                return DrawAsIs(m_dc, x, y);
            case ToolImageEffect::Lifted:
                DrawAsIs(m_dc, x + 1, y + 1);
                return DrawAsIs(m_dc, x - 1, y - 1);
            case ToolImageEffect::Pushed:
                return DrawAsIs(m_dc, x + 1, y + 1);
            case ToolImageEffect::Engraved:
                return DrawChanged(x, y, nullptr, DSS_DISABLED);
            case ToolImageEffect::Silhouette: {
                const CBrush grey(::GetSysColor(COLOR_GRAYTEXT));
                return DrawChanged(x, y, grey, DSS_MONO);
            }
        }
    }

private:
    void DrawAsIs(HDC dc, int x, int y) const {
        ::ImageList_Draw(m_list, m_image, dc, x, y, ILD_TRANSPARENT);
    }
    // An icon of the image would look the same, but making one costs ten times as much as all the rest.
    void DrawChanged(int x, int y, HBRUSH brush, UINT how) const {
        ::DrawStateA(m_dc, brush, &DrawOnMask, reinterpret_cast<LPARAM>(this), 0, x, y, m_size.cx, m_size.cy,
                     DST_COMPLEX | how);
    }
    static BOOL CALLBACK DrawOnMask(HDC dc, LPARAM painter, WPARAM, int, int) {
        reinterpret_cast<const ToolImagePainter*>(painter)->DrawAsIs(dc, 0, 0);
        return TRUE;
    }

    CDC& m_dc;
    HIMAGELIST m_list;
    int m_image;
    CSize m_size;
};

// An index that the list doesn't have, such as those that stand for no image, draws nothing.
void PaintImage(CDC& dc, const ToolButton& button, const ToolImage& image) {
    IMAGEINFO info{};
    if (!image.list || button.image < 0 || button.image >= ::ImageList_GetImageCount(image.list)) return;
    if (!::ImageList_GetImageInfo(image.list, button.image, &info)) return;
    const CSize size = CRect(info.rcImage).Size();
    const CRect& rect = button.rect;
    const int x = rect.left + (rect.Width() - size.cx) / 2 - 1;
    const int y = rect.top + (rect.Height() - size.cy) / 2 - 1;
    ToolImagePainter(dc, image.list, button.image, size).Draw(x, y, image.effect);
}

}  // namespace

void DeflateToolBar(RECT& window) {
    if (IsHighToolBar(window)) ::InflateRect(&window, -1, -3);
}

// A check mark shows before the mouse does: a checked button under it isn't hot.
std::optional<ToolButtonLook> LookOfToolButton(const ToolButton& button, bool underMouse) {
    if ((button.state & TBSTATE_HIDDEN) || (button.style & BTNS_SEP)) return std::nullopt;
    const int state = button.state & ~TBSTATE_WRAP;
    if (state == 0) return ToolButtonLook{ToolButtonState::Disabled, false};
    if (!(state & TBSTATE_ENABLED)) return std::nullopt;
    if (state & TBSTATE_PRESSED) return ToolButtonLook{ToolButtonState::Hot, true};
    if (state & TBSTATE_CHECKED) return ToolButtonLook{ToolButtonState::Normal, true};
    return ToolButtonLook{underMouse ? ToolButtonState::Hot : ToolButtonState::Normal, false};
}

ToolImage ImageOfToolButton(const ToolButton& button, const ToolButtonLook& look,
                            const ToolBarImages& images) {
    HIMAGELIST own = nullptr;  // images made for the state say it by themselves
    if (look.state == ToolButtonState::Disabled) own = images.disabled;
    if (look.state == ToolButtonState::Hot) own = images.hot;
    HIMAGELIST list = own ? own : images.normal;
    if (look.state == ToolButtonState::Disabled)
        return {list, own ? ToolImageEffect::Plain : ToolImageEffect::Silhouette};
    if (button.state == 0 || (button.state & TBSTATE_INDETERMINATE))
        return {list, own ? ToolImageEffect::Plain : ToolImageEffect::Engraved};
    if (look.state == ToolButtonState::Hot)
        return {list, look.pressed ? ToolImageEffect::Pushed : ToolImageEffect::Lifted};
    return {list, ToolImageEffect::Plain};
}

void PaintToolBarBackground(CDC& dc, const RECT& bar, CBitmap* bitmap) {
    if (BitmapSize(bitmap).cy < bar.bottom - bar.top)
        DrawGradient(&dc, bar, SkinColour(CLR_TOOL_BACK_FROM), SkinColour(CLR_TOOL_BACK_TO), 0, 0);
    TileHorizontally(dc, bitmap, bar.left, bar.right, bar.top);
}

void PaintToolButton(CDC& dc, const ToolButton& button, const ToolButtonLook& look,
                     const ToolBarImages& images, int clientHeight) {
    PaintFace(dc, button, look, clientHeight);
    PaintDropArrow(dc, button, look);
    PaintImage(dc, button, ImageOfToolButton(button, look, images));
}

}  // namespace tavix
