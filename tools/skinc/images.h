/* Image files: read into bitmaps by the platform's imaging component. */
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "tavixskin/framework/gdi.h"

namespace skinc {

/*
 * Reads a PNG or BMP file. A PNG becomes 24 bits a pixel, a BMP keeps its depth. Throws
 * ToolError, naming `manifest` and `key`, for a file that is missing, no image, or partly
 * transparent.
 */
std::unique_ptr<CBitmap> ReadImage(const std::filesystem::path& file, const std::string& manifest,
                                   const std::string& key);

}  // namespace skinc
