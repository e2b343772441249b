/*
 * One pass over the published compound file format. What is refused is what a reader could loop
 * in, run out of range by, or grow the file without bound for; what readers pass over (class
 * ids, times, colours, minor version, reserved fields, the order of names) is not looked at.
 *
 * Assumed throughout: sector n lies at (n + 1) * sector size, the header takes the place before
 * sector 0, and bytes missing from a cut last sector read as zero. No number from the file is
 * used as an index before it was compared with the size of what it indexes.
 */
#include "skindata/compound_check.h"

#include <windows.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <exception>
#include <memory>
#include <optional>
#include <vector>

namespace tavix {
namespace {

static_assert(std::endian::native == std::endian::little, "the format's integers are read as they stand");

constexpr unsigned char kSignature[8] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};

// Links between sectors: up to kLastSector a sector's number, above it a meaning.
constexpr uint32_t kLastSector = 0xFFFFFFFA;
constexpr uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr uint32_t kFree = 0xFFFFFFFF;
// A directory entry that isn't there.
constexpr uint32_t kNoEntry = 0xFFFFFFFF;

constexpr uint32_t kMiniSectorSize = 64;
// Shorter streams live in mini sectors.
constexpr uint32_t kMiniCutoff = 4096;

enum EntryType : uint8_t { kStorageEntry = 1, kStreamEntry = 2, kRootEntry = 5 };

struct FileHeader {
    uint8_t signature[8];
    uint8_t class_id[16];
    uint16_t minor_version;
    uint16_t major_version;
    uint16_t byte_order;
    uint16_t sector_shift;
    uint16_t mini_sector_shift;
    uint8_t reserved[6];
    uint32_t directory_sector_count;
    uint32_t fat_sector_count;
    uint32_t directory_start;
    uint32_t transaction;
    uint32_t mini_cutoff;
    uint32_t mini_fat_start;
    uint32_t mini_fat_sector_count;
    uint32_t difat_start;
    uint32_t difat_sector_count;
    uint32_t fat_sectors[109];
};
static_assert(sizeof(FileHeader) == 512 && offsetof(FileHeader, mini_cutoff) == 56);

struct DirectoryEntry {
    char16_t name[32];
    // In bytes, with the terminating zero.
    uint16_t name_size;
    EntryType type;
    uint8_t colour;
    uint32_t left;
    uint32_t right;
    uint32_t child;
    uint8_t class_id[16];
    uint32_t state;
    uint8_t times[16];
    uint32_t start;
    uint32_t size_low;
    uint32_t size_high;
};
static_assert(sizeof(DirectoryEntry) == 128 && offsetof(DirectoryEntry, start) == 116);

/* Where the bytes come from. */
class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual uint64_t Size() const = 0;
    /* Fills `to` from `offset` on; the range lies within Size(). */
    virtual bool Read(uint64_t offset, std::span<std::byte> to) = 0;
};

class ImageSource : public ByteSource {
public:
    explicit ImageSource(std::span<const std::byte> image) : image_(image) {}
    uint64_t Size() const override { return image_.size(); }
    bool Read(uint64_t offset, std::span<std::byte> to) override {
        std::ranges::copy(image_.subspan(static_cast<size_t>(offset), to.size()), to.begin());
        return true;
    }

private:
    std::span<const std::byte> image_;
};

class FileSource : public ByteSource {
public:
    // The file may be open elsewhere: whether it can be had exclusively is for the open that
    // follows to find out.
    explicit FileSource(const wchar_t* path)
        : file_(CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                            nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {
        LARGE_INTEGER size;
        if (file_.get() == INVALID_HANDLE_VALUE || !GetFileSizeEx(file_.get(), &size)) return;
        size_ = static_cast<uint64_t>(size.QuadPart);
        if (size_ <= kSmallFile) window_ = std::make_unique_for_overwrite<std::byte[]>(kWindow);
    }
    /* 0 for a file that couldn't be opened. */
    uint64_t Size() const override { return size_; }
    bool Read(uint64_t offset, std::span<std::byte> to) override {
        if (!window_) return ReadFromFile(offset, to);
        while (!to.empty()) {
            if (offset < window_start_ || offset >= window_start_ + window_bytes_) {
                window_start_ = offset / kWindow * kWindow;
                window_bytes_ = static_cast<size_t>(std::min<uint64_t>(kWindow, size_ - window_start_));
                if (!ReadFromFile(window_start_, {window_.get(), window_bytes_})) return false;
            }
            const size_t at = static_cast<size_t>(offset - window_start_);
            const size_t bytes = std::min(to.size(), window_bytes_ - at);
            std::copy_n(window_.get() + at, bytes, to.begin());
            offset += bytes;
            to = to.subspan(bytes);
        }
        return true;
    }

private:
    // A small file is read through a window: the tables and the directory lie scattered among the
    // streams, and a few large reads cost less than many small ones. In a large file they would
    // lie so far apart that a window holds little else than streams.
    static constexpr uint64_t kSmallFile = 1 << 20;
    static constexpr size_t kWindow = 1 << 16;

    bool ReadFromFile(uint64_t offset, std::span<std::byte> to) {
        while (!to.empty()) {
            OVERLAPPED place = {};
            place.Offset = static_cast<DWORD>(offset);
            place.OffsetHigh = static_cast<DWORD>(offset >> 32);
            const DWORD wanted = static_cast<DWORD>(std::min<size_t>(to.size(), 1u << 30));
            DWORD got = 0;
            if (!ReadFile(file_.get(), to.data(), wanted, &got, &place) || got == 0) return false;
            offset += got;
            to = to.subspan(got);
        }
        return true;
    }

    struct Closer {
        using pointer = HANDLE;
        void operator()(HANDLE file) const {
            if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
        }
    };
    std::unique_ptr<HANDLE, Closer> file_;
    uint64_t size_ = 0;
    std::unique_ptr<std::byte[]> window_;
    uint64_t window_start_ = 0;
    size_t window_bytes_ = 0;
};

/* A chain that was followed to its end. */
struct Chain {
    uint32_t length = 0;
    // Where in the chain the last of all sectors stands, if it does.
    std::optional<uint32_t> place_of_last;
};

/* The FAT or the mini FAT: a link for each sector, and who owns the sector. */
class SectorTable {
public:
    // Owners; higher values number the walks of StartIsHarmless.
    enum : uint32_t { kNobody, kStructure, kStream, kFirstWalk };

    /* The sectors hold `bytes` bytes; what has a link past those isn't there. */
    void Assign(std::vector<uint32_t> links, uint32_t sector_size, uint64_t bytes) {
        links_ = std::move(links);
        owners_.assign(links_.size(), kNobody);
        sector_size_ = sector_size;
        bytes_ = std::min<uint64_t>(bytes, static_cast<uint64_t>(links_.size()) * sector_size);
        existing_ = static_cast<uint32_t>((bytes_ + sector_size - 1) / sector_size);
    }
    /* The link of a sector that was claimed. */
    uint32_t Link(uint32_t sector) const { return links_[sector]; }

    /* Makes a single sector `owner`'s; false if it isn't there or isn't to be had. */
    bool Claim(uint32_t sector, uint32_t owner) {
        // A sector that is in use but marked free would be handed out a second time.
        if (sector >= existing_ || owners_[sector] != kNobody || links_[sector] == kFree) return false;
        owners_[sector] = owner;
        return true;
    }

    /*
     * Makes the sectors of a chain `owner`'s. Every sector must exist and be nobody's before,
     * so a chain that returns to itself or runs into another one has no result, nor has one
     * that ends without the mark of an end.
     */
    std::optional<Chain> ClaimChain(uint32_t start, uint32_t owner) {
        Chain chain;
        for (uint32_t sector = start; sector != kEndOfChain; sector = links_[sector]) {
            if (!Claim(sector, owner)) return std::nullopt;
            if (sector == existing_ - 1) chain.place_of_last = chain.length;
            ++chain.length;
        }
        return chain;
    }

    /* Whether a chain holds `size` bytes. All of them must be there if the last sector is cut. */
    bool Holds(const Chain& chain, uint64_t size) const {
        if (size > static_cast<uint64_t>(chain.length) * sector_size_) return false;
        const uint64_t missing = static_cast<uint64_t>(existing_) * sector_size_ - bytes_;
        return missing == 0 || !chain.place_of_last ||
               size <= (static_cast<uint64_t>(*chain.place_of_last) + 1) * sector_size_ - missing;
    }

    /*
     * Whether an empty stream may name `start` as its first sector. Writers leave all sorts of
     * values there. When such a stream grows, a platform may take the value seriously and
     * append to what it finds there, so the walk must end, and not in the file's structure. What
     * is found may be another stream's: growing the one then spoils the other, and the file has
     * to be checked again before it is opened again. To be asked when everything else is claimed.
     * No sector is walked twice in all calls.
     */
    bool StartIsHarmless(uint32_t start) {
        const uint32_t walk = ++last_walk_;
        // Links are followed as far as the table goes, which may be past the end of the file.
        for (uint32_t sector = start; sector < links_.size(); sector = links_[sector]) {
            if (owners_[sector] == walk) return false;
            // A table's own sector bears a mark that ends no chain: nothing can be appended there.
            if (owners_[sector] == kStructure) {
                return links_[sector] > kLastSector && links_[sector] != kEndOfChain;
            }
            if (owners_[sector] != kNobody) return true;
            owners_[sector] = walk;
        }
        return true;
    }

private:
    std::vector<uint32_t> links_;
    std::vector<uint32_t> owners_;
    uint32_t sector_size_ = 0;
    uint64_t bytes_ = 0;
    // Sectors that are there, the last of them maybe cut.
    uint32_t existing_ = 0;
    uint32_t last_walk_ = kFirstWalk;
};

class CompoundCheck {
public:
    explicit CompoundCheck(ByteSource& source) : source_(source) {}

    bool Run() {
        return ReadHeader() && ListFatSectors() && ReadFat() && ReadDirectory() && CheckRoot() &&
               ReadMiniFat() && WalkDirectory() && CheckEmptyStreams();
    }

private:
    uint32_t LinksPerSector() const { return sector_size_ / sizeof(uint32_t); }

    bool ReadHeader() {
        if (source_.Size() < sizeof header_) return false;
        if (!source_.Read(0, std::as_writable_bytes(std::span(&header_, 1)))) return false;
        if (std::memcmp(header_.signature, kSignature, sizeof kSignature) != 0) return false;
        if (header_.sector_shift != 9 && header_.sector_shift != 12) return false;
        if (header_.mini_sector_shift != 6 || header_.mini_cutoff != kMiniCutoff) return false;
        sector_size_ = 1u << header_.sector_shift;
        if (source_.Size() <= sector_size_) return false;
        const uint64_t count = (source_.Size() - 1) / sector_size_;
        if (count > kLastSector) return false;
        sector_count_ = static_cast<uint32_t>(count);
        return true;
    }

    /* Reads `to.size()` bytes, whole sectors from `first` on; they all exist. */
    bool ReadSectors(uint32_t first, std::span<std::byte> to) {
        const uint64_t offset = (static_cast<uint64_t>(first) + 1) * sector_size_;
        const size_t present = static_cast<size_t>(std::min<uint64_t>(to.size(), source_.Size() - offset));
        std::ranges::fill(to.subspan(present), std::byte{0});
        return source_.Read(offset, to.first(present));
    }

    /* Reads the sectors that `sector_at(0)`... `sector_at(count - 1)` name into an array of T. */
    template <class T, class SectorAt>
    bool ReadScattered(uint32_t count, SectorAt sector_at, std::vector<T>& to) {
        const uint64_t elements = static_cast<uint64_t>(count) * (sector_size_ / sizeof(T));
        if (elements > to.max_size()) return false;
        to.resize(static_cast<size_t>(elements));
        std::span<std::byte> rest = std::as_writable_bytes(std::span(to));
        // Neighbours are read at one go.
        uint32_t run = 0;
        uint32_t run_start = 0;
        for (uint32_t i = 0; i < count; ++i) {
            const uint32_t sector = sector_at(i);
            if (run != 0 && sector != run_start + run) {
                const size_t bytes = static_cast<size_t>(run) * sector_size_;
                if (!ReadSectors(run_start, rest.first(bytes))) return false;
                rest = rest.subspan(bytes);
                run = 0;
            }
            if (run == 0) run_start = sector;
            ++run;
        }
        return run == 0 || ReadSectors(run_start, rest);
    }

    /* Reads a chain that was claimed, from `start` on. */
    template <class T>
    bool ReadChain(uint32_t start, const Chain& chain, std::vector<T>& to) {
        uint32_t sector = start;
        return ReadScattered(
            chain.length,
            [&](uint32_t i) {
                if (i != 0) sector = fat_.Link(sector);
                return sector;
            },
            to);
    }

    /*
     * Takes FAT sectors from a row of slots. All that are announced stand before the first free
     * slot, and only free ones follow: a platform may count either way.
     */
    bool TakeFatSlots(std::span<const uint32_t> slots) {
        for (const uint32_t sector : slots) {
            if (fat_sectors_.size() == header_.fat_sector_count) {
                if (sector != kFree) return false;
            } else {
                if (sector >= sector_count_) return false;
                fat_sectors_.push_back(sector);
            }
        }
        return true;
    }

    /* The FAT's sectors are listed in the header and, if that is full, in a chain of DIFAT sectors. */
    bool ListFatSectors() {
        const uint32_t announced = header_.fat_sector_count;
        if (announced == 0 || announced > sector_count_) return false;
        if (header_.difat_sector_count > sector_count_) return false;
        if (!TakeFatSlots(header_.fat_sectors)) return false;
        // Where no DIFAT is, any start will do in a small file. A large one may come to need its
        // first DIFAT sector, which a platform creates only if the start says that none is there.
        if (header_.difat_sector_count == 0 && header_.difat_start != kEndOfChain &&
            announced > std::size(header_.fat_sectors) / 2) {
            return false;
        }
        uint32_t next = header_.difat_start;
        std::vector<uint32_t> slots(LinksPerSector());
        for (uint32_t i = 0; i < header_.difat_sector_count; ++i) {
            if (next >= sector_count_) return false;
            difat_sectors_.push_back(next);
            if (!ReadSectors(next, std::as_writable_bytes(std::span(slots)))) return false;
            if (!TakeFatSlots(std::span(slots).first(slots.size() - 1))) return false;
            next = slots.back();
        }
        return fat_sectors_.size() == announced;
    }

    bool ReadFat() {
        std::vector<uint32_t> links;
        const uint32_t count = static_cast<uint32_t>(fat_sectors_.size());
        if (!ReadScattered(
                count, [&](uint32_t i) { return fat_sectors_[i]; }, links))
            return false;
        // A FAT that goes on past the file has to be free there, or the file would have to grow
        // to its whole reach before it can take another sector. The FAT sector that describes the
        // file's end may say anything of what isn't there.
        const uint64_t reach =
            (static_cast<uint64_t>(sector_count_) + LinksPerSector() - 1) / LinksPerSector();
        for (uint64_t i = reach * LinksPerSector(); i < links.size(); ++i) {
            if (links[static_cast<size_t>(i)] != kFree) return false;
        }
        fat_.Assign(std::move(links), sector_size_, source_.Size() - sector_size_);
        const auto claim = [this](uint32_t sector) { return fat_.Claim(sector, SectorTable::kStructure); };
        return std::ranges::all_of(fat_sectors_, claim) && std::ranges::all_of(difat_sectors_, claim);
    }

    bool ReadDirectory() {
        const auto chain = fat_.ClaimChain(header_.directory_start, SectorTable::kStructure);
        return chain && chain->length != 0 && ReadChain(header_.directory_start, *chain, entries_);
    }

    /* Small files keep to 32 bits: the upper half of a size is not always initialised there. */
    uint64_t SizeOf(const DirectoryEntry& entry) const {
        const uint64_t high = header_.sector_shift == 9 ? 0 : entry.size_high;
        return high << 32 | entry.size_low;
    }

    static bool NameHolds(const DirectoryEntry& entry) {
        const size_t size = entry.name_size;
        return size >= 2 && size <= sizeof entry.name && size % 2 == 0 && entry.name[size / 2 - 1] == 0;
    }

    /* The root comes first, and its stream holds the mini sectors. */
    bool CheckRoot() {
        const DirectoryEntry& root = entries_.front();
        if (root.type != kRootEntry || !NameHolds(root)) return false;
        // A start is followed even if nothing is said to be there, for platforms do.
        const uint32_t start = root.start > kLastSector ? kEndOfChain : root.start;
        const auto chain = fat_.ClaimChain(start, SectorTable::kStructure);
        return chain && fat_.Holds(*chain, SizeOf(root));
    }

    bool ReadMiniFat() {
        const auto chain = fat_.ClaimChain(header_.mini_fat_start, SectorTable::kStructure);
        std::vector<uint32_t> links;
        if (!chain || !ReadChain(header_.mini_fat_start, *chain, links)) return false;
        mini_fat_.Assign(std::move(links), kMiniSectorSize, SizeOf(entries_.front()));
        return true;
    }

    /*
     * Visits what can be reached from the root, each entry once. The entries of a storage are a
     * tree of siblings; its order and balance matter to look-ups only and are not checked.
     */
    bool WalkDirectory() {
        std::vector<bool> reached(entries_.size());
        reached[0] = true;
        // What is still to be visited: never more than three links of each entry.
        std::vector<uint32_t> open = {entries_.front().child};
        while (!open.empty()) {
            const uint32_t index = open.back();
            open.pop_back();
            if (index == kNoEntry) continue;
            if (index >= entries_.size() || reached[index]) return false;
            reached[index] = true;
            const DirectoryEntry& entry = entries_[index];
            if (!NameHolds(entry)) return false;
            open.push_back(entry.left);
            open.push_back(entry.right);
            if (entry.type == kStorageEntry) {
                open.push_back(entry.child);
            } else if (entry.type != kStreamEntry || !CheckStream(entry)) {
                return false;
            }
        }
        return true;
    }

    bool CheckStream(const DirectoryEntry& entry) {
        const uint64_t size = SizeOf(entry);
        if (size == 0) {
            if (entry.start <= kLastSector) empty_starts_.push_back(entry.start);
            return true;
        }
        SectorTable& table = size < kMiniCutoff ? mini_fat_ : fat_;
        const auto chain = table.ClaimChain(entry.start, SectorTable::kStream);
        return chain && table.Holds(*chain, size);
    }

    bool CheckEmptyStreams() {
        return std::ranges::all_of(empty_starts_, [this](uint32_t start) {
            return fat_.StartIsHarmless(start) && mini_fat_.StartIsHarmless(start);
        });
    }

    ByteSource& source_;
    FileHeader header_ = {};
    uint32_t sector_size_ = 0;
    // Sectors in the file, the last of which may be cut.
    uint32_t sector_count_ = 0;
    std::vector<uint32_t> fat_sectors_;
    std::vector<uint32_t> difat_sectors_;
    SectorTable fat_;
    SectorTable mini_fat_;
    std::vector<DirectoryEntry> entries_;
    // Where empty streams that name a sector start.
    std::vector<uint32_t> empty_starts_;
};

/* Checks what a source made of `from` holds. */
template <class Source, class From>
bool IsSound(From from) {
    // What is held in memory is sized by the file, so memory may run out.
    try {
        Source source(from);
        return CompoundCheck(source).Run();
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

bool IsSoundCompoundFile(const wchar_t* path) { return IsSound<FileSource>(path); }

bool IsSoundCompoundImage(std::span<const std::byte> image) { return IsSound<ImageSource>(image); }

}  // namespace tavix
