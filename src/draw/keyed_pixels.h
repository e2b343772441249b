/*
 * Keyed pixels: 0 where the key colour stood, else the pixel with a top byte of 255. AlphaBlend
 * takes them as premultiplied, and memory routines copy what is not 0.
 */
#pragma once

#include <cstddef>

#include "draw/surface.h"

namespace tavix {

/* A colour key as a DIB's pixel. Colours have no top byte: a key with one equals none of them. */
inline DibPixel KeyPixel(COLORREF key) { return key & 0xFF000000u ? key : SwapRedBlue(key); }

/* Turns pixels as a DIB holds them into keyed ones. */
inline void MakeKeyed(DibPixel* pixels, std::size_t count, COLORREF key) {
    const DibPixel hidden = KeyPixel(key);
    for (std::size_t i = 0; i < count; ++i) {
        const DibPixel pixel = pixels[i] & 0xFFFFFFu;
        pixels[i] = pixel == hidden ? 0 : pixel | 0xFF000000u;
    }
}

/* Copies a row of keyed pixels over others. */
void CopyKeyed(DibPixel* out, const DibPixel* keyed, int count);
/* Copies a row of pixels as a DIB holds them, but those of the key, over others. */
void CopyButKey(DibPixel* out, const DibPixel* from, int count, COLORREF key);

}  // namespace tavix
