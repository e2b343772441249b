#include "dib_fixture.h"

namespace tavix_test {
namespace {

int SampleIndex(int bits, int x, int y) { return (x * 3 + y * 5) % (1 << (bits < 8 ? bits : 8)); }

/* The channels of a sample in five bits each. */
struct Fifths {
    int red, green, blue;
};
Fifths SampleFifths(int x, int y) { return {(x * 5 + 1) % 32, (y * 7 + 2) % 32, (x + y * 3) % 32}; }

int Widened(int fifth) { return fifth << 3 | fifth >> 2; }

}  // namespace

COLORREF SampleTableColour(int bits, int index) {
    if (bits == 1) return index ? RGB(255, 255, 255) : RGB(0, 0, 0);
    return RGB(index * 11 % 256, index * 5 % 256, (255 - index) % 256);
}

COLORREF SampleColour(int bits, int x, int y) {
    if (bits <= 8) return SampleTableColour(bits, SampleIndex(bits, x, y));
    const Fifths c = SampleFifths(x, y);
    if (bits == 16) return RGB(Widened(c.red), Widened(c.green), Widened(c.blue));
    return RGB(c.red * 8 + 1, c.green * 8 + 2, c.blue * 8 + 3);
}

DibParts SampleDib(int bits, int width, int height) {
    DibParts parts;
    parts.head.biSize = sizeof parts.head;
    parts.head.biWidth = width;
    parts.head.biHeight = height;
    parts.head.biPlanes = 1;
    parts.head.biBitCount = static_cast<WORD>(bits);
    if (bits <= 8) {
        for (int i = 0; i < 1 << bits; ++i) {
            const COLORREF c = SampleTableColour(bits, i);
            parts.table.push_back({GetBValue(c), GetGValue(c), GetRValue(c), 0});
        }
    }
    const int rows = height < 0 ? -height : height;
    const std::size_t row_bytes = (static_cast<std::size_t>(width * bits) + 31) / 32 * 4;
    parts.bits.resize(row_bytes * static_cast<std::size_t>(rows));
    for (int y = 0; y < rows; ++y) {
        const int place = height < 0 ? y : rows - 1 - y;
        std::byte* row = parts.bits.data() + row_bytes * static_cast<std::size_t>(place);
        for (int x = 0; x < width; ++x) {
            const COLORREF c = SampleColour(bits, x, y);
            const Fifths f = SampleFifths(x, y);
            const int index = SampleIndex(bits, x, y);
            switch (bits) {
                case 1:
                    row[x / 8] |= static_cast<std::byte>(index << (7 - x % 8));
                    break;
                case 4:
                    row[x / 2] |= static_cast<std::byte>(index << (x % 2 ? 0 : 4));
                    break;
                case 8:
                    row[x] = static_cast<std::byte>(index);
                    break;
                case 16: {
                    const int word = f.red << 10 | f.green << 5 | f.blue;
                    row[x * 2] = static_cast<std::byte>(word & 0xFF);
                    row[x * 2 + 1] = static_cast<std::byte>(word >> 8);
                    break;
                }
                default: {
                    const int step = bits / 8;
                    row[x * step] = static_cast<std::byte>(GetBValue(c));
                    row[x * step + 1] = static_cast<std::byte>(GetGValue(c));
                    row[x * step + 2] = static_cast<std::byte>(GetRValue(c));
                    break;
                }
            }
        }
    }
    return parts;
}

}  // namespace tavix_test
