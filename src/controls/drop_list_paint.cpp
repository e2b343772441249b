#include "controls/drop_list_paint.h"

#include "draw/text_scope.h"
#include "engine/skin_values.h"
#include "tavixskin/value_ids.h"

namespace tavix {

namespace {

/* The room of the images; the row's own, if it has one, drawn in the middle of the height. */
int PaintRowImage(CDC& dc, const CRect& row, const DropRowImage& image) {
    if (!image.images || image.images->GetImageCount() <= 0) return 0;
    int width = 0, height = 0;
    if (!::ImageList_GetIconSize(*image.images, &width, &height)) return 0;
    if (image.index < 0) return width;
    HICON icon = ::ImageList_GetIcon(*image.images, image.index, ILD_TRANSPARENT);
    if (!icon) return width;
    ::DrawStateA(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(icon), 0, row.left,
                 row.top + (row.Height() - height) / 2, width, height, DST_ICON | DSS_NORMAL);
    ::DestroyIcon(icon);
    return width;
}

}  // namespace

DropRowParts DropRowPartsOf() {
    return {SkinColour(CLR_LIST_BACK), SkinColour(CLR_HIGHLIGHT), SkinColour(CLR_TEXT),
            SkinColour(CLR_TEXT_HIGHLIGHT)};
}

void PaintDropBorder(CDC& dc, const CSize& window) {
    constexpr COLORREF kGrey = RGB(0xCB, 0xCB, 0xCB);
    dc.Draw3dRect(CRect(CPoint(0, 0), window), kGrey, kGrey);
}

void PaintDropRow(CDC& dc, const RECT& row, bool current, const std::wstring& text, const DropRowImage& image,
                  const DropRowParts& parts) {
    dc.FillSolidRect(row, current ? parts.currentBack : parts.back);
    CRect room = row;
    constexpr int kIndent = 2;
    room.left += kIndent;
    room.left += PaintRowImage(dc, room, image);
    const TextScope scope(dc, current ? parts.currentText : parts.text);
    ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &room, DT_VCENTER | DT_SINGLELINE);
}

}  // namespace tavix
