/* The check of a compound file's structure: each rule broken by itself, each legal oddity let through. */
#include "skindata/compound_check.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/compound_image.h"
#include "support/compound_platform.h"

namespace tavix::test {
namespace {

std::vector<CompoundElement> Content() {
    return {
        Stream(u"SkinInfo", 72),
        Stream(u"Empty", 0),
        Storage(u"Button", {Stream(u"Data", 700, 2), Stream(u"normal", 5000, 3), Stream(u"hot", 130, 4)}),
        Storage(u"Frame", {Stream(u"Data", 64, 5), Storage(u"Inner", {Stream(u"wide", 40001, 6)})}),
        Storage(u"Menu", {}),
    };
}

CompoundImage Image(const CompoundLayout& layout = {}) { return CompoundImage(Content(), layout); }

bool IsSound(const CompoundImage& image) { return IsSoundCompoundImage(image.bytes); }

using Edit = std::function<void(CompoundImage&)>;

/* Expects that a sound image is refused after the edit. */
void ExpectRefused(const CompoundImage& image, const Edit& edit) {
    EXPECT_TRUE(IsSound(image));
    CompoundImage broken = image;
    edit(broken);
    EXPECT_FALSE(IsSound(broken));
}

void ExpectRefused(const Edit& edit) { ExpectRefused(Image(), edit); }

/* The same for a 32-bit number put in a field. */
void ExpectRefused(const CompoundImage& image, size_t field, uint32_t value) {
    ExpectRefused(image, [&](CompoundImage& broken) { broken.Put32(field, value); });
}

uint32_t Field(const CompoundImage& image, const std::u16string& path, size_t field) {
    return image.Get32(image.EntryOffset(path) + field);
}

/* The last sector of the chain that starts there. */
uint32_t LastSector(const CompoundImage& image, uint32_t sector) {
    while (image.Get32(image.LinkOffset(sector)) != kEndMark) sector = image.Get32(image.LinkOffset(sector));
    return sector;
}

TEST(CompoundCheck, RefusesWhatIsTooShortForAHeaderAndASector) {
    EXPECT_FALSE(IsSoundCompoundImage({}));
    for (const uint32_t sector_size : {512u, 4096u}) {
        CompoundLayout layout;
        layout.sector_size = sector_size;
        const CompoundImage image = Image(layout);
        EXPECT_TRUE(IsSound(image));
        for (const size_t size : {size_t{1}, size_t{8}, size_t{511}, size_t{512}, size_t{sector_size}}) {
            EXPECT_FALSE(IsSoundCompoundImage(std::span(image.bytes).first(size))) << size;
        }
    }
}

TEST(CompoundCheck, RefusesAFileThatIsMissing) {
    EXPECT_FALSE(IsSoundCompoundFile(TemporaryPath(L"not there").c_str()));
}

TEST(CompoundCheck, RefusesAnotherSignature) {
    for (size_t i = 0; i < 8; ++i) {
        ExpectRefused([i](CompoundImage& image) { image.bytes[i] ^= std::byte{1}; });
    }
}

TEST(CompoundCheck, RefusesSizesThatTheFormatDoesNotKnow) {
    for (const uint16_t shift : {0, 8, 10, 13, 31, 32, 65535}) {
        ExpectRefused([shift](CompoundImage& image) { image.Put16(kSectorShiftField, shift); });
        ExpectRefused([shift](CompoundImage& image) { image.Put16(kMiniSectorShiftField, shift); });
    }
    ExpectRefused(Image(), kMiniCutoffField, 4095);
    ExpectRefused(Image(), kMiniCutoffField, 0);
}

TEST(CompoundCheck, RefusesAFatOfAnotherLengthThanAnnounced) {
    const CompoundImage image = Image();
    const uint32_t count = image.Get32(kFatCountField);
    ASSERT_EQ(count, 1u);
    for (const uint32_t wrong : {0u, count + 1, 109u, image.SectorCount() + 1, 0xFFFFFFFFu}) {
        ExpectRefused(image, kFatCountField, wrong);
    }
    // One slot more than announced.
    ExpectRefused(image, kFatSlotsField + 4 * count, LastSector(image, image.directory_sectors[0]));
}

TEST(CompoundCheck, RefusesAFatSectorThatIsNotInTheFile) {
    const CompoundImage image = Image();
    ExpectRefused(image, kFatSlotsField, image.SectorCount());
    ExpectRefused(image, kFatSlotsField, kEndMark);
}

TEST(CompoundCheck, RefusesAFatSectorThatIsListedTwice) {
    CompoundLayout layout;
    layout.spare_fat_sectors = 2;
    const CompoundImage image = Image(layout);
    ExpectRefused(image, kFatSlotsField + 8, image.fat_sectors[1]);
}

TEST(CompoundCheck, RefusesAFatThatCallsItsOwnSectorsFree) {
    const CompoundImage image = Image();
    ExpectRefused(image, image.LinkOffset(image.fat_sectors[0]), kFreeMark);
}

TEST(CompoundCheck, RefusesAFatThatIsInUseFarPastTheEnd) {
    CompoundLayout layout;
    layout.spare_fat_sectors = 1;
    const CompoundImage image = Image(layout);
    ASSERT_LT(image.SectorCount(), 128u);
    ExpectRefused(image, image.LinkOffset(200), kEndMark);
}

TEST(CompoundCheck, RefusesSectorsThatTheFatDoesNotReach) {
    // The directory stands in a sector that was added past the FAT's reach.
    ExpectRefused([](CompoundImage& image) {
        const size_t from = image.SectorOffset(image.directory_sectors[0]);
        const std::vector<std::byte> sector(image.bytes.begin() + from, image.bytes.begin() + from + 512);
        image.bytes.resize(image.SectorOffset(300));
        image.bytes.insert(image.bytes.end(), sector.begin(), sector.end());
        image.Put32(kDirectoryStartField, 300);
    });
}

class LargeCompoundCheck : public testing::Test {
protected:
    // Large enough for two DIFAT sectors.
    static CompoundImage Large() { return CompoundImage({Stream(u"Large", 16'000'000)}, CompoundLayout{}); }
    static size_t NextField(const CompoundImage& image, size_t i) {
        return image.SectorOffset(image.difat_sectors[i]) + 508;
    }
};

TEST_F(LargeCompoundCheck, RefusesDifatSectorsThatLoop) {
    const CompoundImage image = Large();
    ASSERT_EQ(image.difat_sectors.size(), 2u);
    ExpectRefused(image, NextField(image, 0), image.difat_sectors[0]);
}

TEST_F(LargeCompoundCheck, RefusesADifatThatIsShorterThanAnnounced) {
    const CompoundImage image = Large();
    ExpectRefused(image, NextField(image, 0), kEndMark);
    ExpectRefused(image, kDifatStartField, kEndMark);
    ExpectRefused(image, kDifatCountField, 3);
    ExpectRefused(image, kDifatCountField, 0xFFFFFFFF);
}

TEST_F(LargeCompoundCheck, RefusesAListOfFatSectorsThatEndsEarly) {
    // What the file needs is in the header's part of the list.
    CompoundLayout layout;
    layout.spare_fat_sectors = 150;
    ExpectRefused(CompoundImage(Content(), layout), [](CompoundImage& image) {
        image.Put32(kDifatCountField, 0);
        image.Put32(kDifatStartField, kEndMark);
    });
}

TEST_F(LargeCompoundCheck, RefusesADifatWhoseSlotsDoNotFitTheCount) {
    const CompoundImage image = Large();
    // A slot freed in the middle, and one filled after the last.
    ExpectRefused(image, image.SectorOffset(image.difat_sectors[0]), kFreeMark);
    ExpectRefused(image, NextField(image, 1) - 4, image.fat_sectors[0]);
    ExpectRefused(image, kDifatCountField, 1);
}

TEST_F(LargeCompoundCheck, RefusesADifatSectorThatTheFatCallsFree) {
    const CompoundImage image = Large();
    ExpectRefused(image, image.LinkOffset(image.difat_sectors[1]), kFreeMark);
}

TEST_F(LargeCompoundCheck, RefusesAStrayStartOfTheDifatWhereOneMayBeNeededSoon) {
    const CompoundImage image({Stream(u"Large", 5'000'000)}, CompoundLayout{});
    ASSERT_TRUE(image.difat_sectors.empty());
    ExpectRefused(image, kDifatStartField, 0);
    ExpectRefused(image, kDifatStartField, kFreeMark);
}

TEST(CompoundCheck, RefusesADirectoryChainThatLoops) {
    const CompoundImage image = Image();
    ASSERT_GT(image.directory_sectors.size(), 1u);
    ExpectRefused(image, image.LinkOffset(image.directory_sectors.back()), image.directory_sectors.front());
    ExpectRefused(image, image.LinkOffset(image.directory_sectors.back()), image.directory_sectors.back());
}

TEST(CompoundCheck, RefusesADirectoryChainWithoutAnEnd) {
    const CompoundImage image = Image();
    const size_t last = image.LinkOffset(image.directory_sectors.back());
    for (const uint32_t link : {image.SectorCount(), 1000u, kFreeMark, kFatMark, 0xFFFFFFFAu}) {
        ExpectRefused(image, last, link);
    }
}

TEST(CompoundCheck, RefusesAFileWithoutADirectory) {
    ExpectRefused(Image(), kDirectoryStartField, kEndMark);
    ExpectRefused(Image(), kDirectoryStartField, kFreeMark);
    ExpectRefused(Image(), kDirectoryStartField, Image().SectorCount());
    ExpectRefused(Image(), kDirectoryStartField, Image().fat_sectors[0]);
}

TEST(CompoundCheck, RefusesADirectoryThatLoops) {
    const CompoundImage image = Image();
    const uint32_t button = image.Entry(u"Button");
    for (const size_t field : {kLeftField, kRightField}) {
        // To itself, to a storage around it, and to the root.
        ExpectRefused(image, image.EntryOffset(u"Button/hot") + field, image.Entry(u"Button/hot"));
        ExpectRefused(image, image.EntryOffset(u"Button/hot") + field, button);
        ExpectRefused(image, image.EntryOffset(u"Button/hot") + field, 0);
    }
    ExpectRefused(image, image.EntryOffset(u"Menu") + kChildField, image.Entry(u"Menu"));
    ExpectRefused(image, image.EntryOffset(u"Menu") + kChildField, 0);
    ExpectRefused(image, image.EntryOffset(u"") + kChildField, 0);
}

TEST(CompoundCheck, RefusesAnEntryInTwoStorages) {
    const CompoundImage image = Image();
    ExpectRefused(image, image.EntryOffset(u"Menu") + kChildField, image.Entry(u"Frame/Inner/wide"));
}

TEST(CompoundCheck, RefusesALinkToAnEntryThatIsNotThere) {
    const CompoundImage image = Image();
    const uint32_t count = static_cast<uint32_t>(image.directory_sectors.size()) * 4;
    for (const uint32_t index : {count, 0x7FFFFFFFu, 0xFFFFFFFEu}) {
        ExpectRefused(image, image.EntryOffset(u"Menu") + kChildField, index);
        ExpectRefused(image, image.EntryOffset(u"Frame/Data") + kLeftField, index);
        ExpectRefused(image, image.EntryOffset(u"Frame/Data") + kRightField, index);
    }
}

TEST(CompoundCheck, RefusesAnElementThatIsNoStorageAndNoStream) {
    for (const unsigned type : {0u, 3u, 4u, 5u, 6u, 255u}) {
        ExpectRefused([type](CompoundImage& image) {
            image.bytes[image.EntryOffset(u"Menu") + kTypeField] = static_cast<std::byte>(type);
        });
    }
}

TEST(CompoundCheck, RefusesADirectoryThatDoesNotStartWithTheRoot) {
    for (const unsigned type : {0u, 1u, 2u}) {
        ExpectRefused([type](CompoundImage& image) {
            image.bytes[image.EntryOffset(u"") + kTypeField] = static_cast<std::byte>(type);
        });
    }
}

TEST(CompoundCheck, RefusesNamesOfNoSaneLength) {
    for (const char16_t* path : {u"", u"Menu", u"Frame/Inner/wide"}) {
        for (const uint16_t size : {0, 1, 9, 66, 65535}) {
            ExpectRefused(
                [=](CompoundImage& image) { image.Put16(image.EntryOffset(path) + kNameSizeField, size); });
        }
        ExpectRefused([=](CompoundImage& image) {
            const size_t field = image.EntryOffset(path) + kNameSizeField;
            image.Put16(field, image.Get16(field) + 1);
        });
        ExpectRefused([=](CompoundImage& image) {
            const size_t entry = image.EntryOffset(path);
            image.Put16(entry + image.Get16(entry + kNameSizeField) - 2, u'x');
        });
    }
}

TEST(CompoundCheck, RefusesAStreamWhoseChainLoops) {
    const CompoundImage image = Image();
    const uint32_t start = Field(image, u"Frame/Inner/wide", kStartField);
    ExpectRefused(image, image.LinkOffset(LastSector(image, start)), start);
    ExpectRefused(image, image.LinkOffset(start), start);
}

TEST(CompoundCheck, RefusesAStreamWhoseChainLeavesTheFile) {
    const CompoundImage image = Image();
    const uint32_t start = Field(image, u"Frame/Inner/wide", kStartField);
    const uint32_t last = LastSector(image, start);
    for (const uint32_t link : {image.SectorCount(), 100'000u, kFreeMark, kFatMark}) {
        ExpectRefused(image, image.LinkOffset(last), link);
        ExpectRefused(image, image.EntryOffset(u"Frame/Inner/wide") + kStartField, link);
    }
}

TEST(CompoundCheck, RefusesASectorWithTwoOwners) {
    const CompoundImage image = Image();
    const size_t wide_start = image.EntryOffset(u"Frame/Inner/wide") + kStartField;
    const uint32_t wide_last = LastSector(image, image.Get32(wide_start));
    // Another stream's chain from its start or halfway, the directory, the mini stream, both tables.
    ExpectRefused(image, image.EntryOffset(u"Button/normal") + kStartField, image.Get32(wide_start));
    ExpectRefused(image, image.LinkOffset(LastSector(image, Field(image, u"Button/normal", kStartField))),
                  wide_last);
    for (const uint32_t sector : {image.directory_sectors[0], image.mini_stream_sectors[0],
                                  image.mini_fat_sectors[0], image.fat_sectors[0]}) {
        ExpectRefused(image, image.LinkOffset(wide_last), sector);
    }
    ExpectRefused(image, kMiniFatStartField, image.directory_sectors[0]);
    ExpectRefused(image, image.EntryOffset(u"") + kStartField, image.directory_sectors[0]);
}

TEST(CompoundCheck, RefusesAStreamThatIsLongerThanItsChain) {
    const CompoundImage image = Image();
    ExpectRefused(image, image.EntryOffset(u"Frame/Inner/wide") + kSizeField, 79 * 512 + 1);
    ExpectRefused(image, image.EntryOffset(u"Frame/Inner/wide") + kSizeField, 0xFFFFFFFF);
    ExpectRefused(image, image.EntryOffset(u"Frame/Data") + kSizeField, 65);
    ExpectRefused(image, image.EntryOffset(u"Frame/Data") + kSizeField, 4095);
    ExpectRefused(image, image.EntryOffset(u"Empty") + kSizeField, 1);
    CompoundLayout layout;
    layout.sector_size = 4096;
    const CompoundImage wide = Image(layout);
    ExpectRefused(wide, wide.EntryOffset(u"Frame/Inner/wide") + kSizeHighField, 1);
}

TEST(CompoundCheck, RefusesAMiniChainThatLoops) {
    const CompoundImage image = Image();
    const uint32_t start = Field(image, u"Button/Data", kStartField);
    ExpectRefused(image, image.MiniLinkOffset(start), start);
    ExpectRefused(image, image.MiniLinkOffset(start + 10), start);
}

TEST(CompoundCheck, RefusesAMiniSectorWithTwoOwners) {
    const CompoundImage image = Image();
    ExpectRefused(image, image.EntryOffset(u"Frame/Data") + kStartField,
                  Field(image, u"Button/Data", kStartField));
    ExpectRefused(image, image.MiniLinkOffset(Field(image, u"Frame/Data", kStartField)),
                  Field(image, u"Button/Data", kStartField) + 3);
}

TEST(CompoundCheck, RefusesAMiniChainThatLeavesTheMiniStream) {
    const CompoundImage image = Image();
    const uint32_t count = Field(image, u"", kSizeField) / 64;
    const size_t link = image.MiniLinkOffset(Field(image, u"Frame/Data", kStartField));
    for (const uint32_t next : {count, 127u, 128u, 100'000u, kFreeMark, kFatMark})
        ExpectRefused(image, link, next);
    // The mini FAT goes on, but the mini stream ends.
    ExpectRefused(image, [&](CompoundImage& broken) {
        broken.Put32(link, count);
        broken.Put32(broken.MiniLinkOffset(count), kEndMark);
    });
    ExpectRefused(image, image.EntryOffset(u"") + kSizeField, 64);
}

TEST(CompoundCheck, RefusesAMiniStreamThatEndsBeforeItsLastStreamDoes) {
    const std::vector<CompoundElement> content = {Stream(u"Last", 150)};
    CompoundImage image(content, CompoundLayout{});
    const size_t size = image.EntryOffset(u"") + kSizeField;
    ASSERT_EQ(image.Get32(size), 192u);
    // A size that isn't a multiple of a mini sector's will do as long as the stream is within.
    for (const uint32_t enough : {150u, 151u, 512u}) {
        image.Put32(size, enough);
        EXPECT_TRUE(IsSound(image)) << enough;
    }
    for (const uint32_t too_little : {149u, 129u, 128u, 1u, 0u}) ExpectRefused(image, size, too_little);
}

TEST(CompoundCheck, RefusesAMiniStreamThatIsLongerThanItsChain) {
    const CompoundImage image = Image();
    const uint32_t held = static_cast<uint32_t>(image.mini_stream_sectors.size()) * 512;
    ExpectRefused(image, image.EntryOffset(u"") + kSizeField, held + 1);
    ExpectRefused(image, image.EntryOffset(u"") + kStartField, kEndMark);
    ExpectRefused(image, image.LinkOffset(image.mini_stream_sectors.front()), kEndMark);
}

TEST(CompoundCheck, RefusesAMiniFatWithoutAnEndOrMissing) {
    const CompoundImage image = Image();
    const size_t link = image.LinkOffset(image.mini_fat_sectors.back());
    for (const uint32_t next : {image.mini_fat_sectors.back(), image.SectorCount(), kFreeMark}) {
        ExpectRefused(image, link, next);
    }
    ExpectRefused(image, kMiniFatStartField, kEndMark);
    ExpectRefused(image, kMiniFatStartField, kFreeMark);
}

TEST(CompoundCheck, RefusesAnEmptyStreamThatWouldGrowIntoTheStructure) {
    const CompoundImage image = Image();
    const size_t start = image.EntryOffset(u"Empty") + kStartField;
    ExpectRefused(image, start, image.directory_sectors.back());
    ExpectRefused(image, start, image.mini_fat_sectors[0]);
    ExpectRefused(image, start, image.mini_stream_sectors.back());
}

TEST(CompoundCheck, RefusesAnEmptyStreamThatWouldGrowFromALoop) {
    CompoundLayout layout;
    layout.free_sectors = 2;
    layout.free_mini_sectors = 5;
    const CompoundImage image = Image(layout);
    const uint32_t last_mini = Field(image, u"", kSizeField) / 64 - 1;
    // Sectors that nobody owns lead to each other: in the file, past its end, and among the mini sectors.
    ExpectRefused(image, [](CompoundImage& broken) {
        broken.Put32(broken.LinkOffset(0), 1);
        broken.Put32(broken.LinkOffset(1), 0);
        broken.Put32(broken.EntryOffset(u"Empty") + kStartField, 1);
    });
    const uint32_t past = image.fat_sectors.size() * 128 - 1;
    ASSERT_GE(past, image.SectorCount());
    ExpectRefused(image, [past](CompoundImage& broken) {
        broken.Put32(broken.LinkOffset(past), past);
        broken.Put32(broken.EntryOffset(u"Empty") + kStartField, past);
    });
    ExpectRefused(image, [last_mini](CompoundImage& broken) {
        broken.Put32(broken.MiniLinkOffset(last_mini), last_mini);
        broken.Put32(broken.EntryOffset(u"Empty") + kStartField, last_mini);
    });
}

TEST(CompoundCheck, RefusesAFileThatLacksOneByteOfAStream) {
    CompoundLayout layout;
    layout.cut_last_sector = true;
    CompoundImage image = Image(layout);
    EXPECT_TRUE(IsSound(image));
    image.bytes.pop_back();
    EXPECT_FALSE(IsSound(image));
}

TEST(CompoundCheck, RefusesAFileThatIsCutOffAnywhere) {
    for (const uint32_t seed : {0u, 7u}) {
        CompoundLayout layout;
        layout.shuffle_seed = seed;
        layout.cut_last_sector = true;
        const CompoundImage image = Image(layout);
        EXPECT_TRUE(IsSound(image));
        for (size_t size = 0; size < image.bytes.size(); size += 97) {
            EXPECT_FALSE(IsSoundCompoundImage(std::span(image.bytes).first(size))) << size;
        }
    }
}

struct CheckJob {
    const CompoundImage& image;
    bool sound;
};

DWORD WINAPI RunCheckJob(void* parameter) {
    CheckJob& job = *static_cast<CheckJob*>(parameter);
    job.sound = IsSound(job.image);
    return 0;
}

/* Runs the check on a stack that no recursion over the entries would fit on. */
bool IsSoundOnASmallStack(const CompoundImage& image) {
    CheckJob job = {image, false};
    const HANDLE thread =
        CreateThread(nullptr, 0x20000, RunCheckJob, &job, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    return job.sound;
}

TEST(CompoundCheck, WalksDeepDirectoriesWithoutDeepStacks) {
    CompoundImage image({}, CompoundLayout{.unused_entries = 50'000});
    for (const size_t link : {kRightField, kLeftField, kChildField}) {
        image.Put32(image.EntryOffset(u"") + kChildField, 1);
        for (uint32_t i = 1; i <= 50'000; ++i) {
            const size_t entry = image.EntryOffset(i);
            image.Put16(entry, u'a');
            image.Put16(entry + kNameSizeField, 4);
            image.bytes[entry + kTypeField] = std::byte{1};
            for (const size_t field : {kLeftField, kRightField, kChildField})
                image.Put32(entry + field, kNoEntryMark);
            image.Put32(entry + link, i < 50'000 ? i + 1 : kNoEntryMark);
        }
        EXPECT_TRUE(IsSoundOnASmallStack(image));
        image.Put32(image.EntryOffset(50'000) + link, 1);
        EXPECT_FALSE(IsSoundOnASmallStack(image));
    }
}

}  // namespace
}  // namespace tavix::test
