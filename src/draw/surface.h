/*
 * Memory surfaces and the thread's pool of them: what the routines of this folder draw through.
 * Only this folder includes it; painters use offscreen.h.
 */
#pragma once

#include <cstddef>
#include <memory>

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* A pixel as a 32-bit DIB holds it: 0x00RRGGBB, the top byte free. */
using DibPixel = DWORD;

/* A colour as a DIB's pixel and back: red and blue change places, the top byte becomes 0. */
constexpr DWORD SwapRedBlue(DWORD value) {
    return (value & 0xFFu) << 16 | (value & 0xFF00u) | (value >> 16 & 0xFFu);
}

/* A memory context with a 32-bit DIB section, rows from the top, selected into it. */
struct Surface {
    Surface() = default;
    ~Surface();
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    /* Makes the surface at least that large; what it held is lost. False leaves it as it was. */
    bool Reserve(int wanted_width, int wanted_height);
    DibPixel* Row(int y) const { return bits + static_cast<std::ptrdiff_t>(y) * width; }

    HDC dc = nullptr;
    HBITMAP bitmap = nullptr;
    HGDIOBJ former = nullptr;  // what was selected before
    DibPixel* bits = nullptr;
    int width = 0;
    int height = 0;
    Surface* next_painted = nullptr;  // in the thread's list of surfaces that are painted on
};

/* A 32-bit DIB section of its own, rows from the top; null without memory. */
HBITMAP CreateDibSection(int width, int height, DibPixel** bits);

/*
 * A surface for painting on: the thread's canvas if it is free and the size is ordinary, else a
 * new one. It counts as painted on until it is given back. Null without memory.
 */
Surface* TakeCanvas(int width, int height);
void ReturnCanvas(Surface* surface);

/*
 * The thread's scratch surface: what one routine composes before it blits. Null without memory.
 * Small enough that composing and blitting it stays in the processor's cache.
 */
constexpr int kScratchPixels = 32 * 1024;
Surface* ScratchSurface(int width, int height);

/* A buffer of the thread for one routine's rows; valid until the next call. Null without memory. */
DibPixel* RowBuffer(std::size_t pixels);

/*
 * A bitmap to blit from, through the thread's pooled context. A bitmap that is selected
 * elsewhere is copied first. Selecting costs far more than reading a small bitmap's pixels, so
 * this is the road for targets and bitmaps that leave no other.
 */
class SourceBitmap {
public:
    explicit SourceBitmap(HBITMAP bitmap);
    ~SourceBitmap();
    SourceBitmap(const SourceBitmap&) = delete;
    SourceBitmap& operator=(const SourceBitmap&) = delete;

    explicit operator bool() const { return m_dc != nullptr; }
    HDC Dc() const { return m_dc; }

private:
    HDC m_dc = nullptr;
    HGDIOBJ m_former = nullptr;
    bool m_pooled = false;
    std::unique_ptr<Surface> m_copy;
};

/*
 * Reads a bitmap's pixels as 0x00RRGGBB; the top bytes are whatever the bitmap holds. ReadAll
 * takes all rows from the top, ReadBlock `count` rows from `top` on in the reverse order, in
 * which the platform counts them. `pixels` has room for them.
 */
bool ReadAll(HBITMAP bitmap, const SIZE& size, DibPixel* pixels);
bool ReadBlock(HBITMAP bitmap, const SIZE& size, int top, int count, DibPixel* pixels);

/* True for the context of a surface that is being painted on. */
bool IsOwnSurface(HDC dc);

/* True if a logical unit is a pixel, x to the right and y down. */
bool HasPlainMapping(HDC dc);

/*
 * True for bitmaps, windows and the screen of 24 bits or more, where a pixel is the colour that
 * it was given and may be read back; false for few colours, printers and metafiles.
 */
bool IsTrueColour(HDC dc);

/* The pixels of a surface that is being painted on, with what limits painting there. */
struct PixelAccess {
    Surface* surface = nullptr;
    POINT origin{};  // where the logical (0, 0) lies
    RECT box{};      // the clip box in logical co-ordinates

    DibPixel* At(int x, int y) const { return surface->Row(y + origin.y) + (x + origin.x); }
    int Pitch() const { return surface->width; }
};

/* False unless the context's pixels may be written in memory: use the platform then. */
bool OpenPixels(HDC dc, PixelAccess& access);

}  // namespace tavix
