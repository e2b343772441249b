/* What passes the check must not hang the platform, however it came to be. */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "skindata/compound_check.h"
#include "support/compound_image.h"
#include "support/compound_platform.h"

namespace tavix::test {
namespace {

constexpr DWORD kTimeLimit = 2000;

/* Small files, so that a random change often meets the structure. */
std::vector<CompoundImage> BaseImages() {
    const std::vector<CompoundElement> content = {
        Stream(u"SkinInfo", 72),
        Stream(u"Empty", 0),
        Storage(u"Button", {Stream(u"Data", 700, 2), Stream(u"normal", 5000, 3), Stream(u"hot", 130, 4)}),
        Storage(u"Frame",
                {Stream(u"Data", 64, 5), Storage(u"Inner", {Stream(u"Data", 0), Stream(u"x", 4096)})}),
        Storage(u"Menu", {}),
    };
    CompoundLayout plain;
    CompoundLayout holes;
    holes.shuffle_seed = 11;
    holes.unused_entries = 4;
    holes.free_sectors = 6;
    holes.free_mini_sectors = 5;
    holes.spare_sectors = 1;
    holes.spare_fat_sectors = 1;
    holes.tree = SiblingTree::kZigzag;
    CompoundLayout wide;
    wide.sector_size = 4096;
    wide.shuffle_seed = 12;
    CompoundLayout cut;
    cut.cut_last_sector = true;
    cut.last = Part::kFat;
    std::vector<CompoundImage> images;
    for (const CompoundLayout& layout : {plain, holes, wide, cut}) images.emplace_back(content, layout);
    return images;
}

/* A number that a field of this file might hold. */
uint32_t PlausibleNumber(const CompoundImage& image, Xorshift& random) {
    switch (random.Below(5)) {
        case 0:
            return 0xFFFFFFFF - random.Below(7);
        case 1:
            return random.Next();
        case 2:
            return random.Below(8);
        case 3:
            return random.Below(image.SectorCount() * 4);
        default:
            return random.Below(image.SectorCount() + 2);
    }
}

size_t SomeField(const CompoundImage& image, Xorshift& random) {
    static constexpr size_t kEntryFields[] = {kNameSizeField, kTypeField,  kLeftField, kRightField,
                                              kChildField,    kStartField, kSizeField, kSizeHighField};
    static constexpr size_t kHeaderFields[] = {kFatCountField,     kDirectoryStartField, kMiniFatStartField,
                                               kMiniFatCountField, kDifatStartField,     kDifatCountField,
                                               kFatSlotsField,     kFatSlotsField + 4};
    const uint32_t per_sector = image.SectorSize() / 4;
    switch (random.Below(6)) {
        case 0:
            return kHeaderFields[random.Below(std::size(kHeaderFields))];
        case 1:
            return image.LinkOffset(
                random.Below(static_cast<uint32_t>(image.fat_sectors.size()) * per_sector));
        case 2:
            return image.MiniLinkOffset(random.Below(20));
        case 3:
            return image.LinkOffset(random.Below(image.SectorCount() + 1));
        default:
            return image.EntryOffset(random.Below(14)) + kEntryFields[random.Below(std::size(kEntryFields))];
    }
}

void Mutate(CompoundImage& image, Xorshift& random) {
    for (uint32_t edits = 1 + random.Below(3); edits != 0; --edits) {
        const uint32_t size = static_cast<uint32_t>(image.bytes.size());
        switch (random.Below(12)) {
            case 0:
                image.bytes[random.Below(size)] ^= static_cast<std::byte>(1u << random.Below(8));
                break;
            case 1:
                image.bytes[random.Below(128)] ^= static_cast<std::byte>(1u << random.Below(8));
                break;
            case 2:
            case 3: {
                const size_t entry = image.EntryOffset(random.Below(14));
                const size_t at = entry + random.Below(128);
                if (at < size) image.bytes[at] = static_cast<std::byte>(random.Next());
                break;
            }
            case 4:
                image.bytes.resize(1 + random.Below(size));
                return;
            case 5: {
                const size_t more = random.Below(3 * image.SectorSize());
                for (size_t i = 0; i < more; ++i)
                    image.bytes.push_back(static_cast<std::byte>(random.Next()));
                break;
            }
            default: {
                const size_t at = SomeField(image, random);
                if (at + 4 <= size) image.Put32(at, PlausibleNumber(image, random));
            }
        }
    }
}

/* How many of the mutations from `first` on pass the check; each of these must be well behaved. */
unsigned TryMutations(uint32_t first, uint32_t count) {
    const std::vector<CompoundImage> bases = BaseImages();
    const std::wstring path = TemporaryPath(L"mutation.tmp");
    unsigned passed = 0;
    for (uint32_t seed = first; seed < first + count; ++seed) {
        Xorshift random(seed);
        CompoundImage image = bases[random.Below(static_cast<uint32_t>(bases.size()))];
        Mutate(image, random);
        const bool sound = IsSoundCompoundImage(image.bytes);
        if (!sound) continue;
        ++passed;
        const std::string name = "mutation with seed " + std::to_string(seed);
        const auto exercise = [&](const PlatformCompound& platform) {
            RunWatched(name, kTimeLimit, [&] {
                const char* failed = platform.Extends();
                EXPECT_EQ(failed, nullptr) << name << ": can't " << failed;
                // Rewriting may turn oddities into damage, so the file is checked before each time,
                // as the library does it.
                for (uint32_t round = 0; round < 2 && IsSoundCompoundImage(platform.Bytes()); ++round) {
                    platform.Rewrites(seed + 3 * round);
                }
            });
        };
        exercise(PlatformCompound(image.bytes));
        // A file on disk behaves alike, only slower.
        if (passed % 16 != 0) continue;
        EXPECT_TRUE(WriteWholeFile(path, image.bytes)) << name;
        EXPECT_TRUE(IsSoundCompoundFile(path.c_str())) << name;
        exercise(PlatformCompound(path));
    }
    DeleteFileW(path.c_str());
    return passed;
}

TEST(CompoundMutation, WhatPassesTheCheckIsOpenedReadAndExtendedInTime) {
    constexpr uint32_t kCount = 5000;
    const unsigned passed = TryMutations(1, kCount);
    // Both outcomes are common, or the mutations would say little.
    EXPECT_GT(passed, kCount / 10);
    EXPECT_LT(passed, kCount * 9 / 10);
}

}  // namespace
}  // namespace tavix::test
