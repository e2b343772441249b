/* The values of a skin by name: which record holds each, and what it is for. */
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace skinc {

struct ValueName {
    DWORD id;
    const char* name;
    const char* record;  // "none" for what no record sets
    const char* use;

    bool IsSpare() const { return std::string(use) == "spare"; }
};

const std::vector<ValueName>& BitmapNames();
const std::vector<ValueName>& ColourNames();
const std::vector<ValueName>& SizeNames();

/* The row of a number, null if it is reserved. */
const ValueName* FindValue(const std::vector<ValueName>& names, DWORD id);

}  // namespace skinc
