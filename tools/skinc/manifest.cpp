#include "manifest.h"

#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>

#include "images.h"
#include "tool_error.h"
#include "value_names.h"

namespace skinc {

using nlohmann::json;

std::string StreamName(const std::string& valueName, TSkinFieldSet set) {
    std::string name = valueName.substr(std::strlen("BMP_"));
    if (set == skinSetSmall) name += "_S";
    if (set == skinSetLarge) name += "_L";
    return name;
}

/* Walks the JSON of one manifest; every complaint names the file and the key. */
class ManifestReader {
public:
    ManifestReader(const std::filesystem::path& file, Manifest& manifest)
        : m_path(file), m_file(file.string()), m_manifest(manifest) {}

    void Read() {
        const json root = Parse();
        if (!root.is_object()) Fail("the top", "expected an object with bitmaps, colours and sizes");
        for (const auto& [key, value] : root.items()) {
            if (key == "name") {
                if (!value.is_string()) Fail(key, "expected a text");
            } else if (key == "bitmaps") {
                ReadGroup(key, value, BitmapNames(), &ManifestReader::ReadBitmap);
            } else if (key == "colours") {
                ReadGroup(key, value, ColourNames(), &ManifestReader::ReadColour);
            } else if (key == "sizes") {
                ReadGroup(key, value, SizeNames(), &ManifestReader::ReadSize);
            } else {
                Fail(key, "unknown; expected name, bitmaps, colours or sizes");
            }
        }
    }

private:
    using ReadValue = void (ManifestReader::*)(const std::string& key, const ValueName& value,
                                               const json& source);

    [[noreturn]] void Fail(const std::string& key, const std::string& message) const {
        throw ToolError(m_file, key, message);
    }

    json Parse() const {
        std::ifstream stream(m_path, std::ios::binary);
        if (!stream) throw ToolError(m_file, "can't be opened; expected a manifest in JSON");
        // A key that stands twice would silently lose its first value; the depth tells objects apart.
        std::vector<std::vector<std::string>> keys;
        const auto refuseTwins = [&](int, json::parse_event_t event, json& parsed) {
            if (event == json::parse_event_t::object_start) keys.emplace_back();
            if (event == json::parse_event_t::object_end) keys.pop_back();
            if (event == json::parse_event_t::key) {
                const std::string key = parsed.get<std::string>();
                for (const std::string& former : keys.back())
                    if (former == key) Fail(key, "stands twice; remove one of the two");
                keys.back().push_back(key);
            }
            return true;
        };
        try {
            return json::parse(stream, refuseTwins);
        } catch (const json::exception& error) {
            throw ToolError(m_file, std::string("is not valid JSON: ") + error.what());
        }
    }

    void ReadGroup(const std::string& group, const json& values, const std::vector<ValueName>& names,
                   ReadValue read) {
        if (!values.is_object()) Fail(group, "expected an object from value names to values");
        for (const auto& [key, source] : values.items()) {
            const ValueName* known = nullptr;
            for (const ValueName& row : names)
                if (key == row.name) known = &row;
            const std::string place = group + "." + key;
            if (!known) Fail(place, "no such value; 'skinc info' lists the names");
            if (std::strcmp(known->record, "none") == 0)
                Fail(place, "is set by the library, not by a skin; remove it");
            (this->*read)(place, *known, source);
        }
    }

    void ReadBitmap(const std::string& key, const ValueName& value, const json& source) {
        const std::vector<FieldPlace> places = BitmapFields(value.id);
        if (places.size() == 1) {
            PutBitmap(key, value, places[0], source);
            return;
        }
        if (!source.is_object()) Fail(key, R"(expected { "small": FILE, "large": FILE })");
        for (const auto& [set, file] : source.items()) {
            const FieldPlace* place = nullptr;
            for (const FieldPlace& p : places)
                if (SetName(p.field->set) == set) place = &p;
            if (!place) Fail(key + "." + set, "expected small or large");
            PutBitmap(key + "." + set, value, *place, file);
        }
    }

    void PutBitmap(const std::string& key, const ValueName& value, const FieldPlace& place,
                   const json& file) {
        if (!file.is_string() || file.get<std::string>().empty())
            Fail(key, "expected the path of a PNG or BMP file");
        const auto text = file.get<std::string>();
        const std::filesystem::path image =
            m_path.parent_path() / std::filesystem::path(std::u8string(text.begin(), text.end()));
        std::unique_ptr<CBitmap> bitmap = ReadImage(image, m_file, key);
        void* record = m_manifest.m_records.Image(place.layout->kind);
        const std::string stream = StreamName(value.name, place.field->set);
        std::memcpy(SkinNameAt(record, *place.field), stream.c_str(), stream.size() + 1);
        SkinSlotAt(record, *place.field)->Set(bitmap.get());
        m_manifest.m_bitmaps.push_back(std::move(bitmap));
    }

    void ReadColour(const std::string& key, const ValueName& value, const json& source) {
        const FieldPlace place = NumberField(true, value.id);
        *SkinNumberAt(m_manifest.m_records.Image(place.layout->kind), *place.field) = Colour(key, source);
    }

    DWORD Colour(const std::string& key, const json& source) const {
        const std::string text = source.is_string() ? source.get<std::string>() : "";
        const bool hash = text.size() == 7 && text[0] == '#';
        const bool raw = text.size() == 10 && text[0] == '0' && text[1] == 'x';
        const std::string digits = hash ? text.substr(1) : raw ? text.substr(2) : "";
        if (digits.empty() || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
            Fail(key, R"(expected "#RRGGBB", or a whole COLORREF as "0x00BBGGRR")");
        const DWORD number = std::stoul(digits, nullptr, 16);
        return raw ? number : RGB(number >> 16 & 0xFF, number >> 8 & 0xFF, number & 0xFF);
    }

    void ReadSize(const std::string& key, const ValueName& value, const json& source) {
        const FieldPlace place = NumberField(false, value.id);
        void* record = m_manifest.m_records.Image(place.layout->kind);
        if (place.field->kind == skinFieldRect)
            *SkinRectAt(record, *place.field) = Rectangle(key, source);
        else
            *SkinNumberAt(record, *place.field) =
                static_cast<DWORD>(Integer(key, source, INT32_MIN, INT32_MAX));
    }

    RECT Rectangle(const std::string& key, const json& source) const {
        static const char* const kMembers[] = {"left", "top", "width", "height"};
        if (!source.is_object()) Fail(key, "expected an object with left, top, width and height");
        for (const auto& [member, number] : source.items()) {
            bool known = false;
            for (const char* name : kMembers) known = known || member == name;
            if (!known) Fail(key + "." + member, "unknown; expected left, top, width and height");
        }
        LONG values[4] = {};
        for (int i = 0; i < 4; ++i) {
            if (!source.contains(kMembers[i])) Fail(key, std::string("lacks ") + kMembers[i]);
            // The file keeps the four as signed bytes.
            values[i] = Integer(key + "." + kMembers[i], source[kMembers[i]], -128, 127);
        }
        return {values[0], values[1], values[2], values[3]};
    }

    LONG Integer(const std::string& key, const json& source, long long least, long long most) const {
        const bool inRange = source.is_number_integer() &&
                             !(source.is_number_unsigned() &&
                               source.get<std::uint64_t>() > static_cast<std::uint64_t>(most)) &&
                             source.get<long long>() >= least && source.get<long long>() <= most;
        if (!inRange)
            Fail(key,
                 "expected a whole number from " + std::to_string(least) + " to " + std::to_string(most));
        return static_cast<LONG>(source.get<long long>());
    }

    std::filesystem::path m_path;
    std::string m_file;
    Manifest& m_manifest;
};

Manifest::Manifest(const std::filesystem::path& file) { ManifestReader(file, *this).Read(); }

}  // namespace skinc
