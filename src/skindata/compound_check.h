/* Looks over the structure of a compound file before the platform is trusted with it. */
#pragma once

#include <cstddef>
#include <span>

#include "tavixskin/compound_check.h"

namespace tavix {

/*
 * What IsSoundCompoundFile finds for a file with these bytes. The header, the sector tables and
 * the directory are looked at once, the contents of streams are not. Time and memory are bounded by
 * the number of bytes; false if memory runs out.
 */
bool IsSoundCompoundImage(std::span<const std::byte> image);

}  // namespace tavix
