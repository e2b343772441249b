/* The manifest: a skin's sources in JSON. */
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "records.h"

namespace skinc {

/*
 * Reads a manifest and the images it names into records. The bitmaps that the slots of the
 * records point to live as long as this object. Throws ToolError.
 *
 * {
 *   "name": "Porcelain",
 *   "bitmaps": { "BMP_FRAME_CLOSE_NORMAL": "frame/close.png",
 *                "BMP_SB_TRACK": { "small": "sb/track16.png", "large": "sb/track20.png" } },
 *   "colours": { "CLR_TRANSPARENT": "#FF00FF" },
 *   "sizes":   { "SZ_FRAME_LEFT": 4,
 *                "SZ_FRAME_BUTTONS": { "left": -80, "top": 5, "width": 22, "height": 18 } }
 * }
 *
 * Paths are relative to the manifest. A value that is left out is empty or 0.
 */
class Manifest {
public:
    explicit Manifest(const std::filesystem::path& file);
    Records& Values() { return m_records; }

private:
    friend class ManifestReader;
    Records m_records;
    std::vector<std::unique_ptr<CBitmap>> m_bitmaps;
};

/* The name of the stream that holds a bitmap: its value's name without "BMP_", and the set. */
std::string StreamName(const std::string& valueName, TSkinFieldSet set);

}  // namespace skinc
