#include "draw/dib_image.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>

#include "draw/rle_check.h"
#include "tavixskin/framework/gdi.h"

namespace tavix {
namespace {

constexpr std::size_t kFileHeaderSize = sizeof(BITMAPFILEHEADER);
constexpr std::size_t kInfoHeaderSize = sizeof(BITMAPINFOHEADER);
constexpr std::size_t kHeadersSize = kFileHeaderSize + kInfoHeaderSize;
static_assert(kFileHeaderSize == 14 && kInfoHeaderSize == 40);

constexpr int kLongestSide = 32767;
// A compressed image may claim any area with few bytes: this much is believed.
constexpr std::int64_t kLargestCompressedArea = 16 * 1024 * 1024;

/* An info header with room for its masks or the largest colour table. */
struct DibHeader {
    BITMAPINFOHEADER head;
    RGBQUAD colours[256];
    BITMAPINFO* Info() { return reinterpret_cast<BITMAPINFO*>(this); }
};

/* The one way to the bytes: nothing outside of the image is read. */
class Bytes {
public:
    explicit Bytes(std::span<const std::byte> image) : m_image(image) {}

    bool Holds(std::uint64_t offset, std::uint64_t count) const {
        return offset <= m_image.size() && count <= m_image.size() - offset;
    }
    bool Read(std::uint64_t offset, void* to, std::size_t count) const {
        if (!Holds(offset, count)) return false;
        std::memcpy(to, m_image.data() + static_cast<std::size_t>(offset), count);
        return true;
    }
    std::span<const std::byte> From(std::uint64_t offset) const {
        return m_image.subspan(static_cast<std::size_t>(std::min<std::uint64_t>(offset, m_image.size())));
    }

private:
    std::span<const std::byte> m_image;
};

std::uint64_t RowBytes(std::int64_t width, unsigned bits) {
    return (static_cast<std::uint64_t>(width) * bits + 31) / 32 * 4;
}

int TableEntries(unsigned bits) { return bits == 1 ? 2 : bits == 4 ? 16 : bits == 8 ? 256 : 0; }

bool IsContiguous(DWORD mask) {
    if (!mask) return false;
    const DWORD low = mask & (~mask + 1);
    return ((mask + low) & mask) == 0;
}

/* Three masks of neighbouring bits that do not overlap and fit into the pixel. */
bool AreMasks(const DWORD (&masks)[3], unsigned bits) {
    const DWORD allowed = bits == 16 ? 0xFFFFu : 0xFFFFFFFFu;
    DWORD seen = 0;
    for (const DWORD mask : masks) {
        if (!IsContiguous(mask) || (mask & ~allowed) || (mask & seen)) return false;
        seen |= mask;
    }
    return true;
}

/* The header with its masks or colours as the platform may see them; empty if it isn't sound. */
std::optional<DibHeader> ReadHeader(const Bytes& bytes) {
    DibHeader header{};
    BITMAPINFOHEADER& head = header.head;
    if (!bytes.Read(kFileHeaderSize, &head, kInfoHeaderSize)) return {};
    const std::uint64_t table = kFileHeaderSize + std::uint64_t{head.biSize};
    if (head.biSize < kInfoHeaderSize || !bytes.Holds(0, table)) return {};
    if (head.biPlanes != 1) return {};
    if (head.biWidth <= 0 || head.biWidth > kLongestSide) return {};
    if (head.biHeight == 0 || head.biHeight > kLongestSide || head.biHeight < -kLongestSide) return {};

    const unsigned bits = head.biBitCount;
    switch (bits) {
        case 1:
        case 4:
        case 8:
        case 16:
        case 24:
        case 32:
            break;
        default:
            return {};
    }
    switch (head.biCompression) {
        case BI_RGB:
            break;
        case BI_RLE8:
            if (bits != 8 || head.biHeight < 0) return {};
            break;
        case BI_RLE4:
            if (bits != 4 || head.biHeight < 0) return {};
            break;
        case BI_BITFIELDS: {
            // The masks follow the first 40 bytes, inside of a longer header or after a short one.
            DWORD masks[3];
            if ((bits != 16 && bits != 32) || !bytes.Read(kHeadersSize, masks, sizeof masks)) return {};
            if (!AreMasks(masks, bits)) return {};
            std::memcpy(header.colours, masks, sizeof masks);
            break;
        }
        default:
            return {};
    }
    if (const DWORD most = static_cast<DWORD>(TableEntries(bits))) {
        const DWORD entries = head.biClrUsed ? std::min(head.biClrUsed, most) : most;
        if (!bytes.Read(table, header.colours, entries * sizeof(RGBQUAD))) return {};
        head.biClrUsed = entries;
    } else {
        head.biClrUsed = 0;  // a table would be a mere hint there
    }
    head.biSize = kInfoHeaderSize;
    head.biClrImportant = 0;
    return header;
}

/* The image's bits, all that the header promises; empty if they are not all there. */
std::span<const std::byte> FindBits(const Bytes& bytes, BITMAPINFOHEADER& head) {
    DWORD offset = 0;
    if (!bytes.Read(offsetof(BITMAPFILEHEADER, bfOffBits), &offset, sizeof offset)) return {};
    const std::span<const std::byte> rest = bytes.From(offset);
    const std::int64_t rows = head.biHeight < 0 ? -std::int64_t{head.biHeight} : head.biHeight;
    if (head.biCompression == BI_RLE4 || head.biCompression == BI_RLE8) {
        if (head.biWidth * rows > kLargestCompressedArea) return {};
        const std::size_t stated = head.biSizeImage ? head.biSizeImage : rest.size();
        const auto stream = rest.first(std::min(stated, rest.size()));
        if (!IsSoundRle(stream, head.biWidth, static_cast<int>(rows), head.biBitCount)) return {};
        head.biSizeImage = static_cast<DWORD>(stream.size());
        return stream;
    }
    const std::uint64_t size = RowBytes(head.biWidth, head.biBitCount) * static_cast<std::uint64_t>(rows);
    if (size > rest.size()) return {};
    head.biSizeImage = static_cast<DWORD>(size);
    return rest.first(static_cast<std::size_t>(size));
}

}  // namespace

HBITMAP DibImageToBitmap(HDC dc, std::span<const std::byte> image) {
    const Bytes bytes(image);
    std::optional<DibHeader> header = ReadHeader(bytes);
    if (!header) return nullptr;
    const auto bits = FindBits(bytes, header->head);
    if (bits.empty()) return nullptr;

    const bool mono = header->head.biBitCount == 1;
    // A context of the display has the device's format by itself, and asking it for its depth is dear.
    if (!mono && ::GetObjectType(dc) == OBJ_DC)
        return ::CreateDIBitmap(dc, &header->head, CBM_INIT, bits.data(), header->Info(), DIB_RGB_COLORS);

    // Elsewhere the bitmap that is selected decides the format of the new one.
    const UINT planes = mono ? 1 : static_cast<UINT>(::GetDeviceCaps(dc, PLANES));
    const UINT depth = mono ? 1 : static_cast<UINT>(::GetDeviceCaps(dc, BITSPIXEL));
    CBitmap pattern;
    if (!pattern.Attach(::CreateBitmap(1, 1, planes, depth, nullptr))) return nullptr;
    const CMemoryDC memory(dc);
    if (!memory.m_hDC) return nullptr;
    const SelectionGuard selected(memory, pattern.m_hObject);
    if (!selected) return nullptr;
    return ::CreateDIBitmap(memory, &header->head, CBM_INIT, bits.data(), header->Info(), DIB_RGB_COLORS);
}

int BitmapToDibImage(HDC dc, HBITMAP bitmap, void** image, DWORD* size) {
    BITMAP facts{};
    if (!::GetObjectA(bitmap, sizeof facts, &facts)) return 0;
    const unsigned bits = facts.bmPlanes * facts.bmBitsPixel;
    if (bits > 32 || facts.bmWidth <= 0 || facts.bmHeight <= 0) return 0;
    const std::size_t table = static_cast<std::size_t>(TableEntries(bits)) * sizeof(RGBQUAD);
    const std::size_t start = kHeadersSize + table;
    const std::uint64_t needed = RowBytes(facts.bmWidth, bits) * static_cast<std::uint64_t>(facts.bmHeight);
    if (needed > 0x7FFFFFFFu - start) return 0;

    // Apart from the block, in which no field would lie on its natural boundary.
    DibHeader header{};
    BITMAPINFOHEADER& head = header.head;
    head.biSize = kInfoHeaderSize;
    head.biWidth = facts.bmWidth;
    head.biHeight = facts.bmHeight;
    head.biPlanes = 1;
    head.biBitCount = static_cast<WORD>(bits);
    const UINT rows = static_cast<UINT>(facts.bmHeight);
    // Without room for bits the platform fills in the colour table and the size.
    if (!::GetDIBits(dc, bitmap, 0, rows, nullptr, header.Info(), DIB_RGB_COLORS)) return 0;
    std::size_t total = start;
    if (head.biSizeImage < needed) {
        // Some drivers leave the size open.
        total += static_cast<std::size_t>(needed);
        head.biCompression = BI_RGB;
    } else {
        total += head.biSizeImage;
    }

    HANDLE heap = ::GetProcessHeap();
    std::byte* block = static_cast<std::byte*>(::HeapAlloc(heap, 0, total));
    if (!block) return 0;
    if (!::GetDIBits(dc, bitmap, 0, rows, block + start, header.Info(), DIB_RGB_COLORS)) {
        ::HeapFree(heap, 0, block);
        return 0;
    }
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;  // "BM"
    file.bfSize = static_cast<DWORD>(total);
    file.bfOffBits = static_cast<DWORD>(start);
    std::memcpy(block, &file, sizeof file);
    std::memcpy(block + kFileHeaderSize, &header, kInfoHeaderSize + table);
    *image = block;
    *size = static_cast<DWORD>(total);
    return 1;
}

}  // namespace tavix
