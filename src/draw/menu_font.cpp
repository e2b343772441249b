#include "draw/menu_font.h"

#include <cstddef>

namespace tavix {

void CreateMenuFont(CFont& font, LONG weight) {
    // The structure's size before padded borders were added to it; every system takes it.
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = 340;
    static_assert(offsetof(NONCLIENTMETRICSA, iPaddedBorderWidth) == 340);
    if (!::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0)) return;
    if (weight != FW_DONTCARE) metrics.lfMenuFont.lfWeight = weight;
    font.CreateFontIndirect(metrics.lfMenuFont);
}

}  // namespace tavix
