/* Run-length encoded bitmaps, looked through before the platform decodes them. */
#pragma once

#include <cstddef>
#include <span>

namespace tavix {

/*
 * True if the stream, of 4 or 8 bits a pixel, ends before its bytes do or with them, and writes
 * no pixel outside of the image.
 */
bool IsSoundRle(std::span<const std::byte> stream, int width, int height, int bits);

}  // namespace tavix
