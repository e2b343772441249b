/*
 * Keyed pixels: 0 where the key colour stood, else the pixel with a top byte of 255. AlphaBlend
 * takes them as premultiplied, and memory routines copy what is not 0.
 */
#pragma once

#include <cstddef>

#include "draw/surface.h"

namespace tavix {

/* Turns pixels as a DIB holds them into keyed ones. */
inline void MakeKeyed(DibPixel* pixels, std::size_t count, COLORREF key) {
    // Colours have no top byte: a key with one equals none of them.
    const DibPixel hidden = key & 0xFF000000u ? key : SwapRedBlue(key);
    for (std::size_t i = 0; i < count; ++i) {
        const DibPixel pixel = pixels[i] & 0xFFFFFFu;
        pixels[i] = pixel == hidden ? 0 : pixel | 0xFF000000u;
    }
}

/* Copies a row of keyed pixels over others. */
inline void CopyKeyed(DibPixel* out, const DibPixel* keyed, int count) {
    for (int i = 0; i < count; ++i) {
        const DibPixel pixel = keyed[i];
        out[i] = pixel ? pixel & 0xFFFFFFu : out[i];
    }
}

}  // namespace tavix
