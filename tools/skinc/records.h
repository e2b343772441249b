/* The thirteen record images of one skin in memory. */
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "tavixskin/skin_layout.h"

namespace skinc {

/* Record images by kind, all thirteen, zeroed at first. */
class Records {
public:
    Records();

    void* Image(TSkinType kind) { return m_images.at(kind).data(); }
    std::vector<std::byte>& Bytes(TSkinType kind) { return m_images.at(kind); }
    /* What the library's writer takes. The images stay the object's. */
    TSkinThemes Themes();

private:
    std::map<TSkinType, std::vector<std::byte>> m_images;
};

/* All thirteen layouts, by kind. */
std::vector<const TSkinRecordLayout*> AllLayouts();

/* The fields of all records that set one value: two for a bitmap that has two sets. */
struct FieldPlace {
    const TSkinRecordLayout* layout;
    const TSkinField* field;
};
std::vector<FieldPlace> BitmapFields(DWORD id);
/* The one field that sets a colour or a size (a rectangle too); null layout if none does. */
FieldPlace NumberField(bool colour, DWORD id);

/* "small", "large", or "" for a field outside the two sets. */
std::string SetName(TSkinFieldSet set);

}  // namespace skinc
