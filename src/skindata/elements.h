/*
 * The elements of a skin file: root, storages, streams, and the bitmaps in them. All results
 * are 1 for success and 0 for failure. Opening creates what is missing, also while loading.
 */
#pragma once

#include <windows.h>

#include <objidl.h>

#include <string_view>

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* No stream of a skin comes near this; a larger one is not read. */
inline constexpr DWORD kLargestStream = 256u << 20;

/*
 * Opens the compound file at the path, exclusively and for reading and writing; creates it if
 * there is none; clears a read-only attribute that stands in the way, for good.
 */
int OpenRoot(const char* path, IStorage** out);

/*
 * Open or create a child. A name that the container can't hold (empty, over 31 characters, or
 * with one of \ / : !) fails.
 */
int OpenStorageElement(IStorage* parent, std::string_view name, IStorage** out);
int OpenStreamElement(IStorage* parent, std::string_view name, IStream** out);

/*
 * Reads a whole stream from where it stands. With *buffer null it becomes a block of the
 * process heap; else *bytesRead holds the buffer's capacity on entry. *bytesRead becomes the
 * number of bytes that are there. An empty stream fails.
 */
int ReadStream(IStream* stream, void** buffer, DWORD* bytesRead);

/* Makes the data the stream's whole content. */
int WriteStream(IStream* stream, const void* data, DWORD size);

/*
 * Reads a stream that holds a BMP file. `out` changes on success only; it becomes a new
 * CSkinBitmap that the caller owns, without a handle if the stream is no valid BMP.
 */
int LoadBitmapElement(IStorage* parent, std::string_view name, CBitmap*& out);

/* Writes the bitmap as a BMP file of its own depth. */
int WriteBitmapElement(IStorage* parent, std::string_view name, HBITMAP bitmap);

}  // namespace tavix
