#include "text.h"

#include <windows.h>

namespace gallery {

std::wstring widen(std::string_view text) {
    if (text.empty()) return {};
    const int size = static_cast<int>(text.size());
    std::wstring wide(MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

}  // namespace gallery
