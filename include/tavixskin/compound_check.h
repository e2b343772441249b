/* Looks over the structure of a compound file before the platform is trusted with it. */
#pragma once

#include "tavixskin/export.h"

namespace tavix {

/*
 * True if the file is a compound file whose structure holds, so that the platform can open it,
 * read every stream and add elements to it in bounded time and space. A skin file is untrusted,
 * and a platform's storage layer may follow a damaged chain or directory for ever. False also
 * for a file that is missing or can't be read. Any thread; nothing is kept open.
 */
TAVIX_API bool IsSoundCompoundFile(const wchar_t* path);

}  // namespace tavix
