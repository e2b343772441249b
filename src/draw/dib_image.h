/* Bitmaps as the bytes of a BMP file, and back. */
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>

namespace tavix {

/*
 * A device-compatible bitmap from a BMP file image, monochrome if the image has one bit a
 * pixel. The image is untrusted: headers, colour table and bits must lie within it. Null if
 * it is no valid image or the platform refuses it. The caller owns the result.
 */
HBITMAP DibImageToBitmap(HDC dc, std::span<const std::byte> image);

/*
 * The BMP file image of a bitmap, uncompressed, in the bitmap's own depth. `*image` becomes a
 * block of the process heap that the caller frees with HeapFree, `*size` its bytes. 1 or 0;
 * with 0 nothing is handed out.
 */
int BitmapToDibImage(HDC dc, HBITMAP bitmap, void** image, DWORD* size);

}  // namespace tavix
