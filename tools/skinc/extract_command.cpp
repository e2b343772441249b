#include <cctype>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "manifest.h"
#include "skin_file.h"
#include "tool_error.h"
#include "value_names.h"

namespace skinc {

using nlohmann::ordered_json;

namespace {

std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

void WriteFile(const std::filesystem::path& file, const char* bytes, std::size_t size) {
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes, static_cast<std::streamsize>(size));
    stream.flush();
    if (stream) return;
    stream.close();
    std::filesystem::remove(file, ignored);
    throw ToolError(file.string(), "can't be written; expected a folder that is writable");
}

// The stream as it is, so that depth and colours stay. The result is the path in the manifest.
std::string WriteImage(const StoredBitmap& bitmap, const ValueName& value,
                       const std::filesystem::path& folder) {
    const std::string path =
        Lower(bitmap.layout->storage) + "/" + Lower(StreamName(value.name, bitmap.field->set)) + ".bmp";
    WriteFile(folder / path, reinterpret_cast<const char*>(bitmap.image.data()), bitmap.image.size());
    return path;
}

ordered_json Bitmaps(const SkinFile& skin, const std::filesystem::path& folder) {
    ordered_json bitmaps = ordered_json::object();
    for (const ValueName& value : BitmapNames()) {
        for (const StoredBitmap& bitmap : skin.Bitmaps()) {
            if (bitmap.field->id != value.id || bitmap.image.empty()) continue;
            if (!bitmap.readable) {
                std::fprintf(stderr, "skinc: %s: its stream '%s' is no BMP image and is left out\n",
                             value.name, bitmap.stream.c_str());
                continue;
            }
            const std::string path = WriteImage(bitmap, value, folder);
            const std::string set = SetName(bitmap.field->set);
            if (set.empty())
                bitmaps[value.name] = path;
            else
                bitmaps[value.name][set] = path;
        }
    }
    return bitmaps;
}

ordered_json Colours(SkinFile& skin) {
    ordered_json colours = ordered_json::object();
    for (const ValueName& value : ColourNames()) {
        const FieldPlace place = NumberField(true, value.id);
        if (!place.layout) continue;
        const DWORD colour = skin.Number(place);
        char text[16];
        if (colour > 0xFFFFFF)
            std::snprintf(text, sizeof text, "0x%08lX", colour);
        else
            std::snprintf(text, sizeof text, "#%02X%02X%02X", GetRValue(colour), GetGValue(colour),
                          GetBValue(colour));
        colours[value.name] = text;
    }
    return colours;
}

ordered_json Sizes(SkinFile& skin) {
    ordered_json sizes = ordered_json::object();
    for (const ValueName& value : SizeNames()) {
        const FieldPlace place = NumberField(false, value.id);
        if (place.field->kind == skinFieldRect) {
            const RECT r = PackedAndUnpacked(skin.Rectangle(place));
            sizes[value.name] = {{"left", r.left}, {"top", r.top}, {"width", r.right}, {"height", r.bottom}};
        } else {
            sizes[value.name] = static_cast<LONG>(skin.Number(place));
        }
    }
    return sizes;
}

}  // namespace

int Extract(const std::filesystem::path& skinPath, const std::filesystem::path& folder) {
    SkinFile skin(skinPath);
    const std::filesystem::path manifest = folder / "manifest.json";
    if (std::filesystem::exists(manifest))
        throw ToolError(manifest.string(), "exists already; expected a folder without a manifest");
    ordered_json root;
    root["name"] = skinPath.stem().string();
    root["bitmaps"] = Bitmaps(skin, folder);
    root["colours"] = Colours(skin);
    root["sizes"] = Sizes(skin);
    // The manifest comes last: a folder that has one is complete.
    const std::string text = root.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
    WriteFile(manifest, text.data(), text.size());
    std::printf("%s\n", manifest.string().c_str());
    return 0;
}

}  // namespace skinc
