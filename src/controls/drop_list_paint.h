/* The faces of a drop-down list: its border and its rows. */
#pragma once

#include <string>

#include "controls/drop_rows.h"
#include "tavixskin/framework/gdi.h"
#include "tavixskin/framework/image_list.h"

namespace tavix {

/* The colours of the rows as the skin has them now. */
struct DropRowParts {
    COLORREF back;
    COLORREF currentBack;
    COLORREF text;
    COLORREF currentText;
};
DropRowParts DropRowPartsOf();

/* A grey line of one pixel around a window of that size; no skin has a say in its colour. */
void PaintDropBorder(CDC& dc, const CSize& window);

/* An image before a row's text; both kinds of nothing draw none. */
struct DropRowImage {
    const CImageList* images = nullptr;
    int index = -1;  // -1: the row has none, though it keeps the room
};

/* Writes the text in the context's font. */
void PaintDropRow(CDC& dc, const RECT& row, bool current, const std::wstring& text, const DropRowImage& image,
                  const DropRowParts& parts);

}  // namespace tavix
