#include "value_names.h"

#include <algorithm>

#include "tavixskin/value_ids.h"

namespace skinc {

#define SKINC_ROW(number, name, record, use) {number, #name, record, use},

const std::vector<ValueName>& BitmapNames() {
    static const std::vector<ValueName> rows = {TAVIX_BITMAP_IDS(SKINC_ROW)};
    return rows;
}

const std::vector<ValueName>& ColourNames() {
    static const std::vector<ValueName> rows = {TAVIX_COLOUR_IDS(SKINC_ROW)};
    return rows;
}

const std::vector<ValueName>& SizeNames() {
    static const std::vector<ValueName> rows = {TAVIX_SIZE_IDS(SKINC_ROW)};
    return rows;
}

const ValueName* FindValue(const std::vector<ValueName>& names, DWORD id) {
    const auto found =
        std::find_if(names.begin(), names.end(), [id](const ValueName& row) { return row.id == id; });
    return found == names.end() ? nullptr : &*found;
}

}  // namespace skinc
