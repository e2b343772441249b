/* Where the parts of a skinned tab control lie. Tabs stand at the top, whatever the control's style. */
#pragma once

#include <algorithm>

#include "tavixskin/framework/geometry.h"

namespace tavix {

/* The page with its frame: all of the client area below the first tab. */
inline CRect TabBody(const RECT& client, const RECT& firstTab) {
    return {client.left, firstTab.bottom + 1, client.right, client.bottom};
}

/*
 * Moves the sides of a rectangle so that pages lie inside the skin's frame; the same for a display
 * rectangle and for a window's.
 */
inline void AdjustToTabFrame(RECT& rect) {
    rect.left += 1;
    rect.top += 2;
    rect.right -= 1;
    rect.bottom += 1;
}

/*
 * A piece of a side edge, by offsets from the body's top. The last piece ends at `limit`, and which
 * one is the last is told by the height of the bottom corner instead of the piece's own: pieces
 * higher than the corner may reach over the limit.
 */
inline int TabEdgePieceHeight(int offset, int limit, int pieceHeight, int cornerHeight) {
    return offset + cornerHeight >= limit ? std::min(limit - offset, pieceHeight) : pieceHeight;
}

}  // namespace tavix
