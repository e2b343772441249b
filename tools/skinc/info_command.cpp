#include <cstdio>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "skin_file.h"
#include "value_names.h"

namespace skinc {

using nlohmann::ordered_json;

namespace {

ordered_json Row(const char* kind, const ValueName& value) {
    return {
        {"kind", kind}, {"id", value.id}, {"name", value.name}, {"record", value.record}, {"use", value.use}};
}

void AddBitmaps(ordered_json& rows, const SkinFile& skin) {
    for (const ValueName& value : BitmapNames()) {
        for (const StoredBitmap& bitmap : skin.Bitmaps()) {
            if (bitmap.field->id != value.id) continue;
            ordered_json row = Row("bitmap", value);
            if (const std::string set = SetName(bitmap.field->set); !set.empty()) row["set"] = set;
            row["stream"] = bitmap.stream;
            if (!bitmap.image.empty()) {
                row["readable"] = bitmap.readable;
                row["width"] = bitmap.width;
                row["height"] = bitmap.height;
                row["depth"] = bitmap.depth;
            } else {
                // A missing image shows the one that was loaded before it.
                row["shows"] = nullptr;
                if (bitmap.effective)
                    row["shows"] = FindValue(BitmapNames(), bitmap.effective->field->id)->name;
            }
            rows.push_back(row);
        }
    }
}

void AddColours(ordered_json& rows, SkinFile& skin) {
    for (const ValueName& value : ColourNames()) {
        ordered_json row = Row("colour", value);
        const FieldPlace place = NumberField(true, value.id);
        if (place.layout)
            row["value"] = skin.Number(place);
        else
            row["value"] = nullptr;  // the library takes it from the system
        rows.push_back(row);
    }
}

void AddSizes(ordered_json& rows, SkinFile& skin) {
    for (const ValueName& value : SizeNames()) {
        ordered_json row = Row("size", value);
        const FieldPlace place = NumberField(false, value.id);
        if (place.field->kind == skinFieldRect) {
            const RECT r = skin.Rectangle(place);
            row["value"] = {{"left", r.left}, {"top", r.top}, {"width", r.right}, {"height", r.bottom}};
        } else {
            row["value"] = static_cast<LONG>(skin.Number(place));
        }
        rows.push_back(row);
    }
}

std::string ValueText(const ordered_json& row) {
    char text[96];
    if (row["kind"] == "bitmap") {
        const std::string set = row.contains("set") ? " (" + row["set"].get<std::string>() + ")" : "";
        if (row.contains("shows"))
            return "-" + set +
                   (row["shows"].is_null() ? " nothing" : " shows " + row["shows"].get<std::string>());
        if (!row["readable"].get<bool>()) return "unreadable" + set;
        std::snprintf(text, sizeof text, "%ldx%ldx%d%s", row["width"].get<long>(), row["height"].get<long>(),
                      row["depth"].get<int>(), set.c_str());
        return text;
    }
    if (row["value"].is_null()) return "system colour";
    if (row["kind"] == "colour") {
        const DWORD c = row["value"].get<DWORD>();
        std::snprintf(text, sizeof text, "#%02X%02X%02X", GetRValue(c), GetGValue(c), GetBValue(c));
        return text;
    }
    return row["value"].dump();
}

}  // namespace

int Info(const std::filesystem::path& skinPath, bool asJson) {
    SkinFile skin(skinPath);
    ordered_json rows = ordered_json::array();
    AddBitmaps(rows, skin);
    AddColours(rows, skin);
    AddSizes(rows, skin);
    if (asJson) {
        std::printf("%s\n", rows.dump(2, ' ', false, ordered_json::error_handler_t::replace).c_str());
        return 0;
    }
    for (const ordered_json& row : rows)
        std::printf("%-6s %3d  %-27s %-34s %s\n", row["kind"].get<std::string>().c_str(),
                    row["id"].get<int>(), row["name"].get<std::string>().c_str(), ValueText(row).c_str(),
                    row["use"].get<std::string>().c_str());
    return 0;
}

}  // namespace skinc
