#include "draw/rle_check.h"

namespace tavix {

bool IsSoundRle(std::span<const std::byte> stream, int width, int height, int bits) {
    enum Escape { kEndOfLine = 0, kEndOfBitmap = 1, kDelta = 2 };
    int x = 0;
    int y = 0;
    std::size_t at = 0;
    const auto left = [&] { return stream.size() - at; };
    const auto next = [&] { return std::to_integer<int>(stream[at++]); };
    // A run of no pixels lies anywhere, a real one inside.
    const auto fits = [&](int count) { return count <= width - x && y < height; };

    while (left() >= 2) {
        const int count = next();
        const int value = next();
        if (count > 0) {
            if (!fits(count)) return false;
            x += count;
        } else if (value == kEndOfLine) {
            x = 0;
            if (++y > height) return false;
        } else if (value == kEndOfBitmap) {
            return true;
        } else if (value == kDelta) {
            if (left() < 2) return false;
            x += next();
            y += next();
            if (x > width || y > height) return false;
        } else {
            // Pixels as they are, padded to a whole number of 16-bit words.
            const int bytes = bits == 8 ? value : (value + 1) / 2;
            const std::size_t padded = static_cast<std::size_t>(bytes + bytes % 2);
            if (!fits(value) || padded > left()) return false;
            at += padded;
            x += value;
        }
    }
    return left() == 0 && !stream.empty();
}

}  // namespace tavix
