/* Compound files made in memory, byte by byte and without the platform, in every legal shape. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tavix::test {

/* A stream, or a storage with what is in it. */
struct CompoundElement {
    std::u16string name;
    bool is_storage = false;
    std::vector<std::byte> data;
    std::vector<CompoundElement> children;
    // What an empty stream gives as its first sector.
    uint32_t empty_start = 0xFFFFFFFE;
};

CompoundElement Storage(std::u16string name, std::vector<CompoundElement> children);
/* A stream of `size` bytes that differ from those of streams with another seed. */
CompoundElement Stream(std::u16string name, size_t size, uint32_t seed = 1);

/* Numbers that look random and are the same in each run. */
class Xorshift {
public:
    explicit Xorshift(uint32_t seed) : state_(seed * 2654435761u | 1) {}
    uint32_t Next();
    /* At least 0, less than `limit`. */
    uint32_t Below(uint32_t limit) { return Next() % limit; }

private:
    uint32_t state_;
};

enum class SiblingTree { kBalanced, kRightList, kLeftList, kZigzag };
enum class Part { kFat, kDirectory, kMiniFat, kMiniStream, kStreams };

struct CompoundLayout {
    uint32_t sector_size = 512;
    // Other than 0: sectors, mini sectors and directory entries stand in an order made from it.
    uint32_t shuffle_seed = 0;
    SiblingTree tree = SiblingTree::kBalanced;
    // What stands at the file's end, unless shuffled.
    Part last = Part::kStreams;
    // The file ends with the last byte in use.
    bool cut_last_sector = false;
    // Sectors that each stream's chain has to spare.
    uint32_t spare_sectors = 0;
    // Free sectors, free mini sectors and unused directory entries, spread if shuffled.
    uint32_t free_sectors = 0;
    uint32_t free_mini_sectors = 0;
    uint32_t unused_entries = 0;
    // FAT sectors more than are needed.
    uint32_t spare_fat_sectors = 0;
};

class CompoundImage {
public:
    CompoundImage(const std::vector<CompoundElement>& root, const CompoundLayout& layout);

    uint32_t SectorSize() const { return sector_size_; }
    uint32_t SectorCount() const { return static_cast<uint32_t>(bytes.size() / sector_size_) - 1; }
    /* The directory index of an element, by its path with '/' between the names; "" is the root. */
    uint32_t Entry(const std::u16string& path) const { return entries_.at(path); }

    // Offsets in `bytes`.
    size_t SectorOffset(uint32_t sector) const { return (static_cast<size_t>(sector) + 1) * sector_size_; }
    size_t EntryOffset(uint32_t index) const;
    size_t EntryOffset(const std::u16string& path) const { return EntryOffset(Entry(path)); }
    /* Where the FAT and the mini FAT hold the link of a sector. */
    size_t LinkOffset(uint32_t sector) const;
    size_t MiniLinkOffset(uint32_t mini_sector) const;

    uint32_t Get32(size_t offset) const;
    uint16_t Get16(size_t offset) const;
    void Put32(size_t offset, uint32_t value);
    void Put16(size_t offset, uint16_t value);

    std::vector<std::byte> bytes;
    // Where the parts are, in the order of their chains.
    std::vector<uint32_t> fat_sectors, difat_sectors, directory_sectors, mini_fat_sectors,
        mini_stream_sectors;

private:
    uint32_t sector_size_;
    std::map<std::u16string, uint32_t> entries_;
};

// Fields of the header.
constexpr size_t kSectorShiftField = 30, kMiniSectorShiftField = 32, kDirectoryCountField = 40,
                 kFatCountField = 44, kDirectoryStartField = 48, kMiniCutoffField = 56,
                 kMiniFatStartField = 60, kMiniFatCountField = 64, kDifatStartField = 68,
                 kDifatCountField = 72, kFatSlotsField = 76;
// Fields of a directory entry.
constexpr size_t kNameSizeField = 64, kTypeField = 66, kColourField = 67, kLeftField = 68, kRightField = 72,
                 kChildField = 76, kStartField = 116, kSizeField = 120, kSizeHighField = 124;
constexpr uint32_t kDifatMark = 0xFFFFFFFC, kFatMark = 0xFFFFFFFD, kEndMark = 0xFFFFFFFE,
                   kFreeMark = 0xFFFFFFFF, kNoEntryMark = 0xFFFFFFFF;

}  // namespace tavix::test
