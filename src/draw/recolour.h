/* Colours of a painted picture exchanged for others. */
#pragma once

#include <windows.h>

#include <span>

namespace tavix {

struct ColourChange {
    COLORREF from;
    COLORREF to;
};

/* Gives every pixel of the area that has a colour of the list the new one; the first entry that fits counts.
 */
void ReplaceColours(HDC dc, const RECT& area, std::span<const ColourChange> changes);

}  // namespace tavix
