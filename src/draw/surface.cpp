#include "draw/surface.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>
#include <vector>

#include "framework/thread_slot.h"

namespace tavix {
namespace {

// A canvas beyond this many pixels is made for one painting only.
constexpr int kCanvasPixels = 1024 * 1024;
// And no painting takes more than these.
constexpr int kLargestCanvas = 64 * 1024 * 1024;
// No side of a surface is longer: beyond it the platform's own arithmetic gets tight.
constexpr int kLongestSide = 32767;

/* What a thread keeps for its next drawing. */
struct DrawPool {
    ~DrawPool() {
        if (source) ::DeleteDC(source);
    }

    Surface canvas;
    bool canvas_taken = false;
    Surface scratch;
    std::vector<DibPixel> rows;
    int display_depth = 0;
    ULONGLONG depth_read = 0;  // when, in milliseconds
    HDC source = nullptr;
    bool source_taken = false;
    Surface* painted = nullptr;  // all surfaces of the thread that are painted on
};

DrawPool& Pool() {
    static ThreadSlot<DrawPool> slot;
    return slot.Get();
}

BITMAPINFO TrueColourHeader(int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

/* A context for reading bitmaps and selecting them. */
HDC SourceDc() {
    DrawPool& pool = Pool();
    if (!pool.source) pool.source = ::CreateCompatibleDC(nullptr);
    return pool.source;
}

/* Asking the display for its depth is slow, and the answer hardly ever changes. */
int DisplayDepth(HDC dc) {
    constexpr ULONGLONG kValid = 1000;
    DrawPool& pool = Pool();
    const ULONGLONG now = ::GetTickCount64();
    if (pool.display_depth == 0 || now - pool.depth_read > kValid) {
        pool.display_depth = ::GetDeviceCaps(dc, PLANES) * ::GetDeviceCaps(dc, BITSPIXEL);
        pool.depth_read = now;
    }
    return pool.display_depth;
}

int RoundUp(int value) { return (value + 63) & ~63; }

}  // namespace

HBITMAP CreateDibSection(int width, int height, DibPixel** bits) {
    const BITMAPINFO info = TrueColourHeader(width, -height);
    void* memory = nullptr;
    HBITMAP bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    *bits = static_cast<DibPixel*>(memory);
    return bitmap;
}

Surface::~Surface() {
    if (dc) {
        if (former) ::SelectObject(dc, former);
        ::DeleteDC(dc);
    }
    if (bitmap) ::DeleteObject(bitmap);
}

bool Surface::Reserve(int wanted_width, int wanted_height) {
    if (wanted_width <= width && wanted_height <= height) return true;
    if (wanted_width > kLongestSide || wanted_height > kLongestSide) return false;
    if (!dc && !(dc = ::CreateCompatibleDC(nullptr))) return false;
    DibPixel* fresh_bits = nullptr;
    HBITMAP fresh = CreateDibSection(wanted_width, wanted_height, &fresh_bits);
    if (!fresh) return false;
    HGDIOBJ replaced = ::SelectObject(dc, fresh);
    if (!replaced) {
        ::DeleteObject(fresh);
        return false;
    }
    if (!former) former = replaced;
    if (bitmap) ::DeleteObject(bitmap);
    bitmap = fresh;
    bits = fresh_bits;
    width = wanted_width;
    height = wanted_height;
    return true;
}

Surface* TakeCanvas(int width, int height) {
    if (width <= 0 || height <= 0 || width > kLargestCanvas / height) return nullptr;
    DrawPool& pool = Pool();
    Surface* surface = nullptr;
    const bool ordinary = width <= kCanvasPixels / height;
    if (!pool.canvas_taken && ordinary) {
        surface = &pool.canvas;
        if (width > surface->width || height > surface->height) {
            // Sides only grow, lest windows of different shapes take turns in making it anew.
            int wide = RoundUp(std::max(width, surface->width));
            int high = RoundUp(std::max(height, surface->height));
            if (wide > kCanvasPixels / high) wide = width, high = height;
            if (!surface->Reserve(wide, high)) return nullptr;
        }
        pool.canvas_taken = true;
    } else {
        surface = new (std::nothrow) Surface;
        if (!surface) return nullptr;
        if (!surface->Reserve(width, height)) {
            delete surface;
            return nullptr;
        }
    }
    surface->next_painted = std::exchange(pool.painted, surface);
    return surface;
}

void ReturnCanvas(Surface* surface) {
    if (!surface) return;
    DrawPool& pool = Pool();
    for (Surface** link = &pool.painted; *link; link = &(*link)->next_painted) {
        if (*link != surface) continue;
        *link = surface->next_painted;
        break;
    }
    if (surface == &pool.canvas)
        pool.canvas_taken = false;
    else
        delete surface;
}

Surface* ScratchSurface(int width, int height) {
    Surface& scratch = Pool().scratch;
    if (width > scratch.width || height > scratch.height) {
        int wide = RoundUp(std::max(width, scratch.width));
        int high = RoundUp(std::max(height, scratch.height));
        if (wide > kScratchPixels / high) wide = width, high = height;
        if (!scratch.Reserve(wide, high)) return nullptr;
    }
    return &scratch;
}

DibPixel* RowBuffer(std::size_t pixels) {
    std::vector<DibPixel>& rows = Pool().rows;
    try {
        if (rows.size() < pixels) rows.resize(pixels);
        return rows.data();
    } catch (const std::exception&) {
        return nullptr;
    }
}

bool ReadAll(HBITMAP bitmap, const SIZE& size, DibPixel* pixels) {
    BITMAPINFO info = TrueColourHeader(size.cx, -size.cy);
    const UINT lines = static_cast<UINT>(size.cy);
    return ::GetDIBits(SourceDc(), bitmap, 0, lines, pixels, &info, DIB_RGB_COLORS) == size.cy;
}

bool ReadBlock(HBITMAP bitmap, const SIZE& size, int top, int count, DibPixel* pixels) {
    BITMAPINFO info = TrueColourHeader(size.cx, size.cy);
    const UINT start = static_cast<UINT>(size.cy - top - count);
    const UINT lines = static_cast<UINT>(count);
    return ::GetDIBits(SourceDc(), bitmap, start, lines, pixels, &info, DIB_RGB_COLORS) == count;
}

SourceBitmap::SourceBitmap(HBITMAP bitmap) {
    if (!bitmap) return;
    DrawPool& pool = Pool();
    if (!pool.source_taken) {
        HDC dc = SourceDc();
        m_former = dc ? ::SelectObject(dc, bitmap) : nullptr;
        if (m_former) {
            m_dc = dc;
            m_pooled = pool.source_taken = true;
            return;
        }
    }
    // Selected elsewhere, or the pooled context is in use: draw from a copy.
    BITMAP facts{};
    if (!::GetObjectA(bitmap, sizeof facts, &facts)) return;
    std::unique_ptr<Surface> copy(new (std::nothrow) Surface);
    if (!copy || !copy->Reserve(facts.bmWidth, facts.bmHeight)) return;
    if (!ReadAll(bitmap, {facts.bmWidth, facts.bmHeight}, copy->bits)) return;
    m_copy = std::move(copy);
    m_dc = m_copy->dc;
}

SourceBitmap::~SourceBitmap() {
    if (!m_pooled) return;
    // The bitmap's owner can delete it at any time after.
    ::SelectObject(m_dc, m_former);
    Pool().source_taken = false;
}

bool HasPlainMapping(HDC dc) {
    return ::GetMapMode(dc) == MM_TEXT && ::GetGraphicsMode(dc) == GM_COMPATIBLE &&
           !(::GetLayout(dc) & LAYOUT_RTL);
}

bool IsTrueColour(HDC dc) {
    switch (::GetObjectType(dc)) {
        case OBJ_MEMDC: {
            BITMAP facts{};
            const bool known = ::GetObjectA(::GetCurrentObject(dc, OBJ_BITMAP), sizeof facts, &facts) != 0;
            return known && facts.bmPlanes * facts.bmBitsPixel >= 24;
        }
        case OBJ_DC:
            return ::GetDeviceCaps(dc, TECHNOLOGY) == DT_RASDISPLAY && DisplayDepth(dc) >= 24;
        default:
            return false;
    }
}

static Surface* FindPainted(HDC dc) {
    Surface* surface = Pool().painted;
    while (surface && surface->dc != dc) surface = surface->next_painted;
    return surface;
}

bool IsOwnSurface(HDC dc) { return FindPainted(dc) != nullptr; }

bool OpenPixels(HDC dc, PixelAccess& access) {
    Surface* surface = FindPainted(dc);
    // A painter may have selected a bitmap of its own, or turned the co-ordinates.
    if (!surface || ::GetCurrentObject(dc, OBJ_BITMAP) != surface->bitmap) return false;
    if (!HasPlainMapping(dc)) return false;
    const int shape = ::GetClipBox(dc, &access.box);
    if (shape != SIMPLEREGION && shape != NULLREGION) return false;
    access.origin = {0, 0};
    if (!::LPtoDP(dc, &access.origin, 1)) return false;
    access.surface = surface;
    ::GdiFlush();
    return true;
}

}  // namespace tavix
