#include "draw/drop_shadow.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "draw/compose.h"

namespace tavix {
namespace {

constexpr int kEdge = kShadowWidth;  // pixels at each end where nothing, and then the fade, is seen
constexpr int kStep = 30;            // the band darkens by this with each pixel towards the window
constexpr int kFadeStep = 6;

/* Each channel scaled by (255 - amount) / 255 and rounded, as DarkenColor does it. */
DWORD Darken(int amount, DWORD pixel) {
    const DWORD left = static_cast<DWORD>(255 - amount);
    const auto channel = [&](int shift) { return ((pixel >> shift & 0xFFu) * left + 127) / 255 << shift; };
    return channel(16) | channel(8) | channel(0);
}

/* The shadow's pixels, for a window of one size. */
class Shadow {
public:
    Shadow(const SIZE& window, const ScreenBackdrop& backdrop) : m_window(window), m_backdrop(backdrop) {}

    /* Nothing where the window's own picture stays. */
    std::optional<DWORD> At(int x, int y) const {
        // The bottom edge is laid over the right one, which matters where a tiny window has no room for both.
        if (const std::optional<DWORD> bottom = Bottom(x, m_window.cy - y, y)) return bottom;
        return Right(x, y, m_window.cx - x);
    }

private:
    std::optional<DWORD> Bottom(int x, int row, int y) const {
        if (row < 1 || row > kShadowWidth) return {};
        if (x < kEdge) return m_backdrop.At(x, y);
        if (x < 2 * kEdge) return Darken((x - kEdge + 1) * kFadeStep * row, m_backdrop.At(x, y));
        if (x < m_window.cx - kShadowWidth) return Darken(row * kStep, m_backdrop.At(x, y));
        return {};
    }
    std::optional<DWORD> Right(int x, int y, int column) const {
        if (column < 1 || column > kShadowWidth) return {};
        if (y >= m_window.cy - kEdge)
            return Darken((m_window.cy - y) * column * kFadeStep, m_backdrop.At(x, y));
        if (y >= 2 * kEdge) return Darken(column * kStep, m_backdrop.At(x, y));
        if (y >= kEdge) return Darken(column * kFadeStep * (y - kEdge + 1), m_backdrop.At(x, y));
        return m_backdrop.At(x - 1, y);  // beside the column, not beneath it: skins are drawn for it
    }

    SIZE m_window;
    const ScreenBackdrop& m_backdrop;
};

}  // namespace

void ScreenBackdrop::Capture(const POINT& at, const SIZE& window) {
    m_bits = nullptr;
    m_bitmap.DeleteObject();
    if (window.cx <= 0 || window.cy <= 0) return;
    DibPixel* bits = nullptr;
    if (!m_bitmap.Attach(CreateDibSection(window.cx, window.cy, &bits))) return;
    const CWindowDC screen(nullptr);
    CMemoryDC memory(screen);
    const SelectionGuard selected(memory, m_bitmap.GetSafeHandle());
    if (!selected) return;
    // Reading the screen is slow: no more of it than the shadow needs.
    const int right = std::max<LONG>(window.cx - kShadowWidth - 1, 0);
    const int bottom = std::max<LONG>(window.cy - kShadowWidth, 0);
    memory.BitBlt(right, 0, window.cx - right, window.cy, screen, at.x + right, at.y, SRCCOPY);
    memory.BitBlt(0, bottom, right, window.cy - bottom, screen, at.x, at.y + bottom, SRCCOPY);
    ::GdiFlush();
    m_size = window;
    m_bits = bits;
}

void PaintDropShadow(CDC& dc, const SIZE& window, const ScreenBackdrop& backdrop) {
    if (!backdrop) return;
    const Shadow shadow(window, backdrop);
    const auto write = [&](DibPixel* out, int left, int y, int width) {
        for (int x = left; x < left + width; ++x, ++out)
            if (const std::optional<DWORD> pixel = shadow.At(x, y)) *out = *pixel;
    };
    const std::array<RECT, 2> edges{{
        {window.cx - kShadowWidth, 0, window.cx, window.cy},
        {0, window.cy - kShadowWidth, window.cx - kShadowWidth, window.cy},
    }};
    for (const RECT& edge : edges) ComposeRows(dc, edge, Beneath::Target, write);
}

}  // namespace tavix
