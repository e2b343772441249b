#include "draw/recolour.h"

#include <algorithm>

#include "draw/surface.h"

namespace tavix {
namespace {

template <class Pixel, class Convert>
void Replace(Pixel& pixel, std::span<const ColourChange> changes, Convert convert) {
    const auto found = std::ranges::find_if(
        changes, [&](const ColourChange& change) { return convert(change.from) == (pixel & 0xFFFFFFu); });
    if (found != changes.end()) pixel = convert(found->to);
}

}  // namespace

void ReplaceColours(HDC dc, const RECT& area, std::span<const ColourChange> changes) {
    PixelAccess access;
    if (OpenPixels(dc, access)) {
        RECT shown;
        if (!::IntersectRect(&shown, &area, &access.box)) return;
        for (int y = shown.top; y < shown.bottom; ++y) {
            DibPixel* row = access.At(shown.left, y);
            for (int x = shown.left; x < shown.right; ++x, ++row) Replace(*row, changes, SwapRedBlue);
        }
        return;
    }
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            const COLORREF former = ::GetPixel(dc, x, y);
            if (former == CLR_INVALID) continue;
            COLORREF pixel = former;
            Replace(pixel, changes, [](COLORREF colour) { return colour & 0xFFFFFFu; });
            if (pixel != former) ::SetPixel(dc, x, y, pixel);
        }
    }
}

}  // namespace tavix
