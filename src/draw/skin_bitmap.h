/* CSkinBitmap: a bitmap of the skin, with what drawing derives from its pixels kept beside it. */
#pragma once

#include <memory>
#include <vector>

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* Pixels as COLORREF values, rows from the top. */
struct PixelImage {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> pixels;
};

/* Reads a bitmap's pixels at once; empty without a handle or memory. */
PixelImage ReadPixels(HBITMAP bitmap);
PixelImage ImageOf(CBitmap* bitmap);

/*
 * The loader makes its bitmaps of this class. What is derived from the pixels is made at the
 * first use, and dies with the handle: whoever paints on such a bitmap does so before it is
 * first drawn.
 */
class CSkinBitmap : public CBitmap {
    DECLARE_DYNAMIC(CSkinBitmap)
public:
    CSkinBitmap();
    ~CSkinBitmap() override;
    bool DeleteObject() override;

    /* Width and height without asking the platform each time. */
    CSize Size();
    /* True with one bit a pixel. */
    bool IsMono();
    const PixelImage& Pixels();
    /* The pixels as a 32-bit DIB holds them, rows from the top; null if there are none. */
    const DWORD* Rows();
    /* The region of the pixels that equal the key, owned by the bitmap; null if there are none. */
    HRGN KeyRegion(COLORREF key);
    /*
     * A copy for AlphaBlend, premultiplied: the key transparent, all other pixels opaque.
     * Owned by the bitmap; null if it can't be made.
     */
    HBITMAP KeyedCopy(COLORREF key);
    /* The pixels of that copy, rows from the top; null if it can't be made. */
    const DWORD* KeyedRows(COLORREF key);
    /* A copy with the axes exchanged. Owned by the bitmap; null if it can't be made. */
    CSkinBitmap* Transposed();

private:
    struct Derived;
    Derived& Derive();
    std::unique_ptr<Derived> m_derived;
};

/* Width and height of any bitmap; 0 by 0 for null or without a handle. */
CSize BitmapSize(CBitmap* bitmap);
/* The same object if it is a skin bitmap, else null. */
CSkinBitmap* AsSkinBitmap(CBitmap* bitmap);
/* Makes `target` the source with pixel (x, y) at (y, x); false, without a handle, if that fails. */
bool TransposeBitmap(CBitmap* source, CBitmap& target);

}  // namespace tavix
