/* From the ANSI code page, which the program and the library speak, to the system's own encoding. */
#pragma once

#include <string>
#include <string_view>

namespace gallery {

std::wstring widen(std::string_view text);

}  // namespace gallery
