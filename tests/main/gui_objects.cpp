#include "main/gui_objects.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tavix_test {
namespace {

/* One entry of the table that the platform's processes share with their kernel. */
struct GdiEntry {
    std::uint64_t object;  // of a free entry: the next free one
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint8_t type;  // 0 while the entry is free
    std::uint8_t flags;
    std::uint64_t user;
};
static_assert(sizeof(GdiEntry) == 24);
constexpr int kGdiEntries = 16384;

constexpr std::size_t kTable32 = 0x94;         // in a 32-bit process block
constexpr std::size_t kTable64 = 0xF8;         // in a 64-bit one
constexpr std::size_t kThreadBlock64 = 0xF70;  // in a 32-bit thread block: where the 64-bit one lies
constexpr std::size_t kProcessBlock64 = 0x60;  // in a 64-bit thread block

template <class T>
T Field(std::uint64_t block, std::size_t offset) {
    T value;
    const char* at = reinterpret_cast<const char*>(static_cast<std::uintptr_t>(block)) + offset;
    std::memcpy(&value, at, sizeof value);
    return value;
}

const GdiEntry* GdiTable() {
    const std::uint64_t thread = reinterpret_cast<std::uintptr_t>(::NtCurrentTeb());
#ifdef _WIN64
    const std::uint64_t table = Field<std::uint64_t>(Field<std::uint64_t>(thread, kProcessBlock64), kTable64);
#else
    std::uint64_t table = 0;
    if (const std::uint64_t wide = Field<std::uint64_t>(thread, kThreadBlock64))
        table = Field<std::uint64_t>(Field<std::uint64_t>(wide, kProcessBlock64), kTable64);
    if (!table) table = Field<std::uint32_t>(Field<std::uint32_t>(thread, 0x30), kTable32);
#endif
    return reinterpret_cast<const GdiEntry*>(static_cast<std::uintptr_t>(table));
}

// Windows of other processes come and go.
BOOL CALLBACK AddIfOwn(HWND window, LPARAM count) {
    DWORD process = 0;
    if (::GetWindowThreadProcessId(window, &process) && process == ::GetCurrentProcessId())
        ++*reinterpret_cast<int*>(count);
    return TRUE;
}

BOOL CALLBACK AddWithChildren(HWND window, LPARAM count) {
    AddIfOwn(window, count);
    ::EnumChildWindows(window, &AddIfOwn, count);
    return TRUE;
}

int CountWindows() {
    int count = 0;
    const LPARAM out = reinterpret_cast<LPARAM>(&count);
    ::EnumWindows(&AddWithChildren, out);
    // Windows for messages only are under a parent of their own, which no enumeration visits.
    for (HWND window = nullptr; (window = ::FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr));)
        AddWithChildren(window, out);
    return count;
}

// Every handle value is tried; menus of other processes are not seen.
int CountMenus() {
    int count = 0;
    for (std::uintptr_t value = 0x20; value <= 0xFFFE; value += 2)
        if (::IsMenu(reinterpret_cast<HMENU>(value))) ++count;
    return count;
}

}  // namespace

int CountGdiObjects() {
    // Windows keeps count itself; Wine answers 0.
    const DWORD counted = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    if (counted) return static_cast<int>(counted);
    const GdiEntry* table = GdiTable();
    if (!table) return -1;
    int count = 0;
    for (int i = 0; i < kGdiEntries; ++i)
        if (table[i].type) ++count;
    return count;
}

int CountUserObjects() {
    const DWORD counted = ::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS);
    if (counted) return static_cast<int>(counted);
    return CountWindows() + CountMenus();
}

}  // namespace tavix_test
