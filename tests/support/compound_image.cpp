#include "support/compound_image.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <numeric>
#include <utility>

namespace tavix::test {
namespace {

constexpr uint32_t kMiniSize = 64;
constexpr uint32_t kCutoff = 4096;
constexpr uint32_t kHeaderSlots = 109;

uint32_t Up(size_t bytes, size_t unit) { return static_cast<uint32_t>((bytes + unit - 1) / unit); }

/* A directory entry to be. */
struct Record {
    std::u16string name;
    uint8_t type = 0;
    uint32_t left = kNoEntryMark, right = kNoEntryMark, child = kNoEntryMark;
    uint32_t start = 0;
    uint64_t size = 0;
    const CompoundElement* element = nullptr;
};

/* Numbers from 0 on, shuffled if there is a seed. */
std::vector<uint32_t> Order(uint32_t count, uint32_t seed) {
    std::vector<uint32_t> order(count);
    std::iota(order.begin(), order.end(), 0u);
    if (seed != 0) {
        Xorshift random(seed);
        for (uint32_t i = count; i > 1; --i) std::swap(order[i - 1], order[random.Below(i)]);
    }
    return order;
}

/* The format's order of siblings: shorter names first, then by upper-case letters. */
bool NameBefore(const std::u16string& a, const std::u16string& b) {
    const auto upper = [](char16_t c) { return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c; };
    if (a.size() != b.size()) return a.size() < b.size();
    return std::ranges::lexicographical_compare(a, b, {}, upper, upper);
}

/* Links sorted siblings to a search tree; the result is its top. */
uint32_t LinkSiblings(std::vector<Record>& records, const std::vector<uint32_t>& sorted, size_t first,
                      size_t last, SiblingTree shape, unsigned depth = 0) {
    if (first == last) return kNoEntryMark;
    size_t top = first + (last - first) / 2;
    if (shape == SiblingTree::kRightList) top = first;
    if (shape == SiblingTree::kLeftList) top = last - 1;
    if (shape == SiblingTree::kZigzag) top = depth % 2 == 0 ? first : last - 1;
    records[sorted[top]].left = LinkSiblings(records, sorted, first, top, shape, depth + 1);
    records[sorted[top]].right = LinkSiblings(records, sorted, top + 1, last, shape, depth + 1);
    return sorted[top];
}

void Put(std::vector<std::byte>& bytes, size_t offset, uint64_t value, size_t size) {
    for (size_t i = 0; i < size; ++i) bytes.at(offset + i) = static_cast<std::byte>(value >> (8 * i));
}

}  // namespace

CompoundElement Storage(std::u16string name, std::vector<CompoundElement> children) {
    CompoundElement element;
    element.name = std::move(name);
    element.is_storage = true;
    element.children = std::move(children);
    return element;
}

CompoundElement Stream(std::u16string name, size_t size, uint32_t seed) {
    CompoundElement element;
    element.name = std::move(name);
    element.data.resize(size);
    Xorshift random(seed);
    for (std::byte& byte : element.data) byte = static_cast<std::byte>(random.Next() >> 8);
    return element;
}

uint32_t Xorshift::Next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return state_;
}

size_t CompoundImage::EntryOffset(uint32_t index) const {
    const uint32_t per_sector = sector_size_ / 128;
    return SectorOffset(directory_sectors.at(index / per_sector)) + index % per_sector * 128;
}

size_t CompoundImage::LinkOffset(uint32_t sector) const {
    const uint32_t per_sector = sector_size_ / 4;
    return SectorOffset(fat_sectors.at(sector / per_sector)) + sector % per_sector * 4;
}

size_t CompoundImage::MiniLinkOffset(uint32_t mini_sector) const {
    const uint32_t per_sector = sector_size_ / 4;
    return SectorOffset(mini_fat_sectors.at(mini_sector / per_sector)) + mini_sector % per_sector * 4;
}

uint32_t CompoundImage::Get32(size_t offset) const {
    return Get16(offset) | static_cast<uint32_t>(Get16(offset + 2)) << 16;
}

uint16_t CompoundImage::Get16(size_t offset) const {
    return static_cast<uint16_t>(std::to_integer<unsigned>(bytes.at(offset)) |
                                 std::to_integer<unsigned>(bytes.at(offset + 1)) << 8);
}

void CompoundImage::Put32(size_t offset, uint32_t value) { Put(bytes, offset, value, 4); }
void CompoundImage::Put16(size_t offset, uint16_t value) { Put(bytes, offset, value, 2); }

CompoundImage::CompoundImage(const std::vector<CompoundElement>& root, const CompoundLayout& layout)
    : sector_size_(layout.sector_size) {
    // The directory: the root, then all elements and the unused entries, in any order.
    uint32_t element_count = 0;
    const std::function<void(const std::vector<CompoundElement>&)> count = [&](const auto& siblings) {
        for (const CompoundElement& element : siblings) {
            ++element_count;
            count(element.children);
        }
    };
    count(root);
    const std::vector<uint32_t> entry_order =
        Order(element_count + layout.unused_entries, layout.shuffle_seed);
    std::vector<Record> records(1 + entry_order.size());
    records[0].name = u"Root Entry";
    records[0].type = 5;
    entries_[u""] = 0;
    uint32_t taken = 0;
    const std::function<uint32_t(const std::vector<CompoundElement>&, const std::u16string&)> place =
        [&](const std::vector<CompoundElement>& siblings, const std::u16string& path) {
            std::vector<uint32_t> sorted;
            for (const CompoundElement& element : siblings) {
                const uint32_t index = 1 + entry_order[taken++];
                sorted.push_back(index);
                entries_[path + element.name] = index;
                records[index].name = element.name;
                records[index].type = element.is_storage ? 1 : 2;
                records[index].element = &element;
                records[index].child = place(element.children, path + element.name + u'/');
            }
            std::ranges::sort(sorted, NameBefore, [&](uint32_t index) { return records[index].name; });
            return LinkSiblings(records, sorted, 0, sorted.size(), layout.tree);
        };
    records[0].child = place(root, u"");

    // The mini stream. Its sectors are counted before their order is known.
    uint32_t mini_count = layout.free_mini_sectors;
    for (const Record& record : records) {
        if (record.type != 2 || record.element->data.size() >= kCutoff) continue;
        mini_count += Up(record.element->data.size(), kMiniSize);
    }
    const std::vector<uint32_t> mini_order = Order(mini_count, layout.shuffle_seed);
    std::vector<std::byte> mini_stream(static_cast<size_t>(mini_count) * kMiniSize);
    std::vector<uint32_t> mini_links(Up(mini_count, sector_size_ / 4) * (sector_size_ / 4), kFreeMark);
    uint32_t mini_taken = 0;
    for (Record& record : records) {
        if (record.type != 2) continue;
        const std::vector<std::byte>& data = record.element->data;
        record.size = data.size();
        if (data.empty()) record.start = record.element->empty_start;
        if (data.empty() || data.size() >= kCutoff) continue;
        const uint32_t length = Up(data.size(), kMiniSize);
        record.start = mini_order[mini_taken];
        for (uint32_t i = 0; i < length; ++i, ++mini_taken) {
            const uint32_t sector = mini_order[mini_taken];
            mini_links[sector] = i + 1 == length ? kEndMark : mini_order[mini_taken + 1];
            const size_t from = static_cast<size_t>(i) * kMiniSize;
            std::copy(data.begin() + from, data.begin() + std::min<size_t>(from + kMiniSize, data.size()),
                      mini_stream.begin() + static_cast<size_t>(sector) * kMiniSize);
        }
    }
    records[0].size = mini_stream.size();

    // How many sectors there are, and which part each belongs to.
    const uint32_t per_sector = sector_size_ / 4;
    const uint32_t directory_count = Up(records.size() * 128, sector_size_);
    const uint32_t mini_fat_count = Up(mini_links.size() * 4, sector_size_);
    const uint32_t mini_stream_count = Up(mini_stream.size(), sector_size_);
    uint32_t others = layout.free_sectors + directory_count + mini_fat_count + mini_stream_count;
    for (const Record& record : records) {
        if (record.type != 2 || record.size < kCutoff) continue;
        others += Up(record.size, sector_size_) + layout.spare_sectors;
    }
    uint32_t fat_count = 1;
    uint32_t difat_count = 0;
    while (fat_count * per_sector < others + fat_count + difat_count) {
        ++fat_count;
        difat_count = fat_count <= kHeaderSlots ? 0 : Up(fat_count - kHeaderSlots, per_sector - 1);
    }
    fat_count += layout.spare_fat_sectors;
    difat_count = fat_count <= kHeaderSlots ? 0 : Up(fat_count - kHeaderSlots, per_sector - 1);
    const uint32_t total = others + fat_count + difat_count;
    const std::vector<uint32_t> order = Order(total, layout.shuffle_seed);
    bytes.resize((static_cast<size_t>(total) + 1) * sector_size_);
    std::vector<uint32_t> links(static_cast<size_t>(fat_count) * per_sector, kFreeMark);
    uint32_t next = layout.free_sectors;
    size_t used_end = 0;
    const auto take = [&](uint32_t wanted) {
        std::vector<uint32_t> sectors;
        while (wanted-- != 0) sectors.push_back(order[next++]);
        return sectors;
    };
    // Gives data a chain; the result is its first sector.
    const auto lay = [&](const std::vector<std::byte>& data, uint32_t length,
                         std::vector<uint32_t>& sectors) {
        sectors = take(length);
        for (size_t i = 0; i < sectors.size(); ++i) {
            links[sectors[i]] = i + 1 == sectors.size() ? kEndMark : sectors[i + 1];
            const size_t from = std::min(i * sector_size_, data.size());
            const size_t to = std::min(from + sector_size_, data.size());
            std::copy(data.begin() + from, data.begin() + to, bytes.begin() + SectorOffset(sectors[i]));
            used_end = std::max(used_end, SectorOffset(sectors[i]) + (to - from));
        }
        return sectors.empty() ? kEndMark : sectors.front();
    };

    std::vector<Part> parts = {Part::kFat, Part::kDirectory, Part::kMiniFat, Part::kMiniStream,
                               Part::kStreams};
    std::ranges::stable_partition(parts, [&](Part part) { return part != layout.last; });
    std::vector<std::byte> mini_fat(mini_links.size() * 4);
    for (size_t i = 0; i < mini_links.size(); ++i) Put(mini_fat, i * 4, mini_links[i], 4);
    uint32_t mini_fat_start = kEndMark;
    std::vector<uint32_t> sectors;
    for (const Part part : parts) {
        if (part == Part::kFat) {
            fat_sectors = take(fat_count);
            difat_sectors = take(difat_count);
            for (const uint32_t sector : fat_sectors) {
                links[sector] = kFatMark;
                used_end = std::max(used_end, SectorOffset(sector + 1));
            }
            for (const uint32_t sector : difat_sectors) {
                links[sector] = kDifatMark;
                used_end = std::max(used_end, SectorOffset(sector + 1));
            }
        } else if (part == Part::kDirectory) {
            // Filled in below, when all starts are known.
            lay(std::vector<std::byte>(records.size() * 128), directory_count, directory_sectors);
        } else if (part == Part::kMiniFat) {
            mini_fat_start = lay(mini_fat, mini_fat_count, mini_fat_sectors);
        } else if (part == Part::kMiniStream) {
            records[0].start = lay(mini_stream, mini_stream_count, mini_stream_sectors);
        } else {
            for (Record& record : records) {
                if (record.type != 2 || record.size < kCutoff) continue;
                const uint32_t length = Up(record.size, sector_size_) + layout.spare_sectors;
                record.start = lay(record.element->data, length, sectors);
            }
        }
    }

    for (uint32_t i = 0; i < directory_count * (sector_size_ / 128); ++i) {
        const Record record = i < records.size() ? records[i] : Record();
        const size_t at = EntryOffset(i);
        for (size_t c = 0; c < record.name.size(); ++c) Put16(at + c * 2, record.name[c]);
        Put16(at + kNameSizeField, static_cast<uint16_t>(record.type == 0 ? 0 : record.name.size() * 2 + 2));
        bytes[at + kTypeField] = static_cast<std::byte>(record.type);
        bytes[at + kColourField] = std::byte{1};
        Put32(at + kLeftField, record.left);
        Put32(at + kRightField, record.right);
        Put32(at + kChildField, record.child);
        Put32(at + kStartField, record.start);
        Put(bytes, at + kSizeField, record.size, 8);
    }
    for (uint32_t i = 0; i < links.size(); ++i) Put32(LinkOffset(i), links[i]);

    static constexpr unsigned char kSignature[] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
    std::memcpy(bytes.data(), kSignature, sizeof kSignature);
    Put16(24, 0x3E);
    Put16(26, sector_size_ == 512 ? 3 : 4);
    Put16(28, 0xFFFE);
    Put16(kSectorShiftField, sector_size_ == 512 ? 9 : 12);
    Put16(kMiniSectorShiftField, 6);
    Put32(kDirectoryCountField, sector_size_ == 512 ? 0 : directory_count);
    Put32(kFatCountField, fat_count);
    Put32(kDirectoryStartField, directory_sectors.front());
    Put32(kMiniCutoffField, kCutoff);
    Put32(kMiniFatStartField, mini_fat_start);
    Put32(kMiniFatCountField, mini_fat_count);
    Put32(kDifatStartField, difat_count == 0 ? kEndMark : difat_sectors.front());
    Put32(kDifatCountField, difat_count);
    for (uint32_t i = 0; i < kHeaderSlots; ++i) {
        Put32(kFatSlotsField + i * 4, i < fat_count ? fat_sectors[i] : kFreeMark);
    }
    for (uint32_t i = 0; i < difat_count; ++i) {
        const size_t at = SectorOffset(difat_sectors[i]);
        for (uint32_t slot = 0; slot + 1 < per_sector; ++slot) {
            const uint32_t number = kHeaderSlots + i * (per_sector - 1) + slot;
            Put32(at + slot * 4, number < fat_count ? fat_sectors[number] : kFreeMark);
        }
        Put32(at + (per_sector - 1) * 4, i + 1 < difat_count ? difat_sectors[i + 1] : kEndMark);
    }
    if (layout.cut_last_sector) bytes.resize(used_end);
}

}  // namespace tavix::test
