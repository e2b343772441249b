/* Pixels made in memory, brought to a target by the shortest road that it allows. */
#pragma once

#include <intrin.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

#include "draw/surface.h"

namespace tavix {

/* What the rows of a composed part start from. */
enum class Beneath {
    Nothing,  // every pixel is written
    Target,   // some stay as they are in the target
};

inline void FillPixels(DibPixel* out, int count, DibPixel pixel) {
    // One instruction even where the compiler may not count on vector registers.
    __stosd(out, pixel, static_cast<std::size_t>(count));
}

inline void CopyPixels(DibPixel* out, const DibPixel* from, int count) {
    std::memcpy(out, from, static_cast<std::size_t>(count) * sizeof *from);
}

/* The rectangle of that size at (x, y), cut off where co-ordinates end. */
inline RECT AreaAt(int x, int y, const SIZE& size) {
    const auto end = [](int start, int length) {
        return static_cast<LONG>(std::min<std::int64_t>(std::int64_t{start} + length, INT_MAX));
    };
    return {x, y, end(x, size.cx), end(y, size.cy)};
}

/*
 * Composes the part of `area` that shows, calling write(out, x, y, width) for each of its rows
 * in turn: `width` pixels from (x, y) of the target's co-ordinates go to `out`. False, with
 * nothing drawn, if the target has to be drawn by the platform's own operations.
 */
template <class Write>
bool ComposeRows(HDC dc, const RECT& area, Beneath beneath, Write write) {
    PixelAccess access;
    RECT shown;
    if (OpenPixels(dc, access)) {
        if (!::IntersectRect(&shown, &area, &access.box)) return true;
        const int width = shown.right - shown.left;
        for (int y = shown.top; y < shown.bottom; ++y) write(access.At(shown.left, y), shown.left, y, width);
        return true;
    }

    if (!HasPlainMapping(dc) || !IsTrueColour(dc)) return false;
    // A small area is clipped by the blit itself; a large one may be mostly off the clip box.
    constexpr std::int64_t kSmall = 64 * 64;
    shown = area;
    const std::int64_t across = std::int64_t{area.right} - area.left;
    const std::int64_t down = std::int64_t{area.bottom} - area.top;
    if (across <= 0 || down <= 0) return true;
    if (across > kSmall || down > kSmall || across * down > kSmall) {
        RECT box;
        const int shape = ::GetClipBox(dc, &box);
        if (shape == ERROR || !::IntersectRect(&shown, &area, &box)) return true;
    }

    const int width = shown.right - shown.left;
    const int height = shown.bottom - shown.top;
    const int step = std::clamp(kScratchPixels / width, 1, height);
    Surface* strip = ScratchSurface(width, step);
    if (!strip) return false;
    for (int done = 0; done < height; done += step) {
        const int rows = std::min(step, height - done);
        const int top = shown.top + done;
        if (beneath == Beneath::Target) ::BitBlt(strip->dc, 0, 0, width, rows, dc, shown.left, top, SRCCOPY);
        ::GdiFlush();  // whatever the platform does to the strip comes first
        for (int y = 0; y < rows; ++y) write(strip->Row(y), shown.left, top + y, width);
        ::BitBlt(dc, shown.left, top, width, rows, strip->dc, 0, 0, SRCCOPY);
    }
    return true;
}

}  // namespace tavix
