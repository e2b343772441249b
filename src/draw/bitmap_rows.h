/* A bitmap's pixels as rows in memory, whatever its depth. */
#pragma once

#include "draw/skin_bitmap.h"
#include "draw/surface.h"

namespace tavix {

/*
 * The pixels of a bitmap as a blit would bring them to a surface. Those of a skin bitmap are at
 * hand; those of any other are read in blocks, into the thread's row buffer.
 */
class BitmapRows {
public:
    explicit BitmapRows(CBitmap* bitmap);

    int Width() const { return m_size.cx; }
    int Height() const { return m_size.cy; }
    const CSize& Size() const { return m_size; }
    /*
     * True if the rows are what a blit would copy: they can be read, and have more than one bit
     * a pixel, which a blit gives the target's own two colours.
     */
    bool AreColours();
    /*
     * The row `y`, 0 from the top, or null. A row that was got before may be gone. Rows are best
     * asked for downwards.
     */
    const DibPixel* Row(int y);

private:
    HBITMAP m_bitmap = nullptr;
    CSize m_size;
    bool m_mono = false;
    const DibPixel* m_rows = nullptr;
    int m_first = 0;  // what m_rows holds
    int m_count = 0;
    bool m_upwards = false;  // a block's last row comes first
};

}  // namespace tavix
