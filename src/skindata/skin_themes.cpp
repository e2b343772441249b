#include <cstring>
#include <new>

#include "tavixskin/skin_storage.h"

namespace {

constexpr DWORD kHeaderWord = 0x10000000;
constexpr char kHeaderName[] = "sdfas";

}  // namespace

// The record pointers are the caller's to fill: they keep what the memory held.
TSkinThemes::TSkinThemes() : header{} {
    header.word = kHeaderWord;
    std::memcpy(header.name, kHeaderName, sizeof kHeaderName);
}

TSkinThemes::~TSkinThemes() = default;

TSkinThemes::TSkinThemes(const TSkinThemes& other) = default;
TSkinThemes& TSkinThemes::operator=(const TSkinThemes& other) = default;

void TSkinThemes::Clear() {
    ::operator delete(pButton);
    pButton = nullptr;
}
