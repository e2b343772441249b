/* Looks over the structure of a compound file before the platform is trusted with it. */
#pragma once

#include <cstddef>
#include <span>

#include "tavixskin/compound_check.h"

namespace tavix {

/*
 * True if the file is a compound file whose structure holds, so that the platform can open it,
 * read every stream and add elements to it in bounded time and space. A skin file is untrusted,
 * and a platform's storage layer may follow a damaged chain or directory for ever.
 *
 * The header, the sector tables and the directory are read once, the contents of streams are
 * not. Time and memory are bounded by the file's size. False also for a file that is missing,
 * can't be read, or is too large for memory. The file may be open elsewhere: whether it can be
 * had exclusively is for the open that follows to find out.
 */
bool IsSoundCompoundFile(const wchar_t* path);

/* The same for the bytes of a file in memory. */
bool IsSoundCompoundImage(std::span<const std::byte> image);

}  // namespace tavix
