/* BMP file images for tests, sound ones and others. */
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <vector>

namespace tavix_test {

using Bytes = std::vector<std::byte>;

inline Bytes BytesOf(const std::vector<int>& values) {
    Bytes bytes;
    for (const int v : values) bytes.push_back(static_cast<std::byte>(v));
    return bytes;
}

/* The parts of a BMP file, to be changed before they are put together. */
struct DibParts {
    BITMAPINFOHEADER head{};
    std::vector<DWORD> masks;
    std::vector<RGBQUAD> table;
    Bytes bits;
    DWORD stated_header = 40;  // what is written for the header's size, if it isn't 40
    DWORD stated_offset = 0;   // what is written for the place of the bits, if it isn't 0

    Bytes Image() const {
        Bytes info(sizeof head);
        BITMAPINFOHEADER written = head;
        if (stated_header != 40) written.biSize = stated_header;
        std::memcpy(info.data(), &written, sizeof written);
        const auto append = [](Bytes& to, const void* from, std::size_t size) {
            const std::byte* first = static_cast<const std::byte*>(from);
            to.insert(to.end(), first, first + size);
        };
        if (head.biCompression == BI_BITFIELDS) append(info, masks.data(), masks.size() * sizeof(DWORD));
        if (info.size() < head.biSize) info.resize(head.biSize);
        append(info, table.data(), table.size() * sizeof(RGBQUAD));
        BITMAPFILEHEADER file{};
        file.bfType = 0x4D42;
        file.bfOffBits = static_cast<DWORD>(sizeof file + info.size());
        file.bfSize = file.bfOffBits + static_cast<DWORD>(bits.size());
        if (stated_offset) file.bfOffBits = stated_offset;
        Bytes image;
        append(image, &file, sizeof file);
        append(image, info.data(), info.size());
        append(image, bits.data(), bits.size());
        return image;
    }
};

/* The colour of a table's entry. One bit is black and white: a monochrome bitmap has no others. */
COLORREF SampleTableColour(int bits, int index);
/* The colour of a sample's pixel. */
COLORREF SampleColour(int bits, int x, int y);
/* A sound image in which every pixel's colour follows from its place; a height below 0 is top down. */
DibParts SampleDib(int bits, int width, int height);

}  // namespace tavix_test
