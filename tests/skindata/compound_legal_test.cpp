/* What the check of a compound file lets through: everything that valid writers make. */
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "skindata/compound_check.h"
#include "support/compound_image.h"
#include "support/compound_platform.h"

namespace tavix::test {
namespace {

constexpr DWORD kTimeLimit = 10000;

std::vector<CompoundElement> Content() {
    std::vector<CompoundElement> content = {
        Stream(u"SkinInfo", 72),
        Stream(u"Empty", 0),
        Stream(u"Exactly the mini limit", 4096, 9),
        Stream(u"Below it", 4095, 10),
        Storage(u"Nothing inside", {}),
    };
    for (char16_t kind = u'a'; kind < u'f'; ++kind) {
        std::vector<CompoundElement> children;
        for (char16_t letter = u'p'; letter < u'w'; ++letter) {
            const uint32_t number = kind * 31u + letter;
            children.push_back(Stream(std::u16string(1, letter), number * 397 % 9001, number));
        }
        content.push_back(Storage(std::u16string(5, kind), children));
    }
    return content;
}

void Collect(const std::vector<CompoundElement>& content, const std::u16string& path, CompoundContents& to) {
    for (const CompoundElement& element : content) {
        const std::u16string full = path + element.name;
        if (!element.is_storage) {
            to[full] = element.data;
            continue;
        }
        to[full + u'/'];
        Collect(element.children, full + u'/', to);
    }
}

/* Expects of a file that the check and the platform agree on it, before and after it was worked on. */
void ExpectTaken(const std::wstring& path, const std::vector<CompoundElement>& content) {
    CompoundContents expected;
    Collect(content, u"", expected);
    EXPECT_TRUE(IsSoundCompoundFile(path.c_str()));
    const PlatformCompound platform(path);
    RunWatched("a legal file", kTimeLimit, [&] {
        CompoundContents read;
        EXPECT_TRUE(platform.Reads(&read));
        EXPECT_TRUE(read == expected);
        const char* failed = platform.Extends();
        EXPECT_EQ(failed, nullptr) << "can't " << failed;
        EXPECT_TRUE(IsSoundCompoundFile(path.c_str())) << "with elements that the platform created";
        for (int round = 0; round < 3; ++round) {
            platform.Rewrites(round);
            EXPECT_TRUE(IsSoundCompoundFile(path.c_str())) << "with streams that the platform rewrote";
        }
    });
    EXPECT_TRUE(DeleteFileW(path.c_str()));
}

void ExpectTaken(const CompoundImage& image, const std::vector<CompoundElement>& content) {
    EXPECT_TRUE(IsSoundCompoundImage(image.bytes));
    const std::wstring path = TemporaryPath(L"legal.tmp");
    ASSERT_TRUE(WriteWholeFile(path, image.bytes));
    ExpectTaken(path, content);
}

void ExpectTaken(const CompoundLayout& layout) { ExpectTaken(CompoundImage(Content(), layout), Content()); }

class CompoundLegal : public testing::TestWithParam<uint32_t> {
protected:
    // Both sector sizes of the format.
    static CompoundLayout Layout() {
        CompoundLayout layout;
        layout.sector_size = GetParam();
        return layout;
    }
    static CompoundImage Image() { return CompoundImage(Content(), Layout()); }
};

INSTANTIATE_TEST_SUITE_P(SectorSizes, CompoundLegal, testing::Values(512u, 4096u));

TEST_P(CompoundLegal, TakesAPlainFile) { ExpectTaken(Layout()); }

TEST_P(CompoundLegal, TakesFragmentedFiles) {
    for (uint32_t seed = 1; seed <= 4; ++seed) {
        CompoundLayout layout = Layout();
        layout.shuffle_seed = seed;
        ExpectTaken(layout);
    }
}

TEST_P(CompoundLegal, TakesSiblingTreesOutOfBalance) {
    for (const SiblingTree tree : {SiblingTree::kRightList, SiblingTree::kLeftList, SiblingTree::kZigzag}) {
        CompoundLayout layout = Layout();
        layout.tree = tree;
        ExpectTaken(layout);
    }
}

TEST_P(CompoundLegal, TakesFreeSectorsAndUnusedEntries) {
    CompoundLayout layout = Layout();
    layout.shuffle_seed = 21;
    layout.free_sectors = 20;
    layout.free_mini_sectors = 30;
    layout.unused_entries = 17;
    layout.spare_fat_sectors = 2;
    ExpectTaken(layout);
}

TEST_P(CompoundLegal, TakesChainsWithSectorsToSpare) {
    CompoundLayout layout = Layout();
    layout.spare_sectors = 2;
    ExpectTaken(layout);
}

TEST_P(CompoundLegal, TakesALastSectorThatIsCutShort) {
    for (const Part part :
         {Part::kFat, Part::kDirectory, Part::kMiniFat, Part::kMiniStream, Part::kStreams}) {
        CompoundLayout layout = Layout();
        layout.cut_last_sector = true;
        layout.last = part;
        ExpectTaken(layout);
    }
}

TEST_P(CompoundLegal, TakesBytesBehindTheLastSector) {
    for (const size_t more : {size_t{1}, size_t{512}, size_t{100'000}}) {
        CompoundImage image = Image();
        image.bytes.resize(image.bytes.size() + more, std::byte{0xEE});
        ExpectTaken(image, Content());
    }
}

TEST_P(CompoundLegal, TakesARootWithNothingInIt) { ExpectTaken(CompoundImage({}, Layout()), {}); }

TEST_P(CompoundLegal, TakesAFileWithoutMiniStream) {
    const std::vector<CompoundElement> content = {Stream(u"Large", 5000)};
    CompoundImage image(content, Layout());
    ASSERT_EQ(image.Get32(kMiniFatStartField), kEndMark);
    ExpectTaken(image, content);
    // The root's start says in other words that there is none.
    image.Put32(image.EntryOffset(u"") + kStartField, kFreeMark);
    ExpectTaken(image, content);
}

TEST_P(CompoundLegal, TakesAMiniStreamThatEndsWithItsLastStream) {
    const std::vector<CompoundElement> content = {Stream(u"Last", 150)};
    CompoundImage image(content, Layout());
    image.Put32(image.EntryOffset(u"") + kSizeField, 150);
    ExpectTaken(image, content);
}

TEST_P(CompoundLegal, TakesAnyStartOfAnEmptyStream) {
    const uint32_t end = Image().SectorCount();
    const uint32_t own = Image().Get32(Image().EntryOffset(u"Exactly the mini limit") + kStartField);
    ASSERT_EQ(Image().fat_sectors[0], 0u);
    // The FAT's sector, another stream's, and sectors that don't exist.
    for (const uint32_t start : {0u, own, end, 1'000'000u, 0xFFFFFFFAu, 0xFFFFFFFCu, kFreeMark}) {
        CompoundImage image = Image();
        image.Put32(image.EntryOffset(u"Empty") + kStartField, start);
        EXPECT_TRUE(IsSoundCompoundImage(image.bytes)) << start;
        const PlatformCompound platform(image.bytes);
        RunWatched("an empty stream with a start", kTimeLimit, [&] {
            const char* failed = platform.Extends();
            EXPECT_EQ(failed, nullptr) << "can't " << failed;
            // Growing the stream may spoil a neighbour, which the next check sees, but comes to an end.
            for (unsigned round = 0; round < 5 && IsSoundCompoundImage(platform.Bytes()); ++round) {
                platform.Rewrites(round);
            }
        });
    }
}

TEST_P(CompoundLegal, PassesOverWhatReadersPassOver) {
    CompoundImage image = Image();
    // The header: class id, versions, reserved bytes, counts of other sectors than the FAT's, the
    // transaction number, and the start of a DIFAT that a small file doesn't have.
    for (size_t at = 8; at < 28; ++at) image.bytes[at] = std::byte{0xEE};
    for (size_t at = 34; at < 40; ++at) image.bytes[at] = std::byte{0xEE};
    image.Put32(kDirectoryCountField, 77);
    image.Put32(52, 0xEEEEEEEE);
    image.Put32(kMiniFatCountField, 77);
    image.Put32(kDifatStartField, kFreeMark);
    // The directory: colours, class ids, state bits, times, links that have no meaning.
    const uint32_t links[] = {image.Entry(u"Nothing inside"), 0xEEEEEEEE};
    image.Put32(image.EntryOffset(u"") + kLeftField, links[0]);
    image.Put32(image.EntryOffset(u"") + kRightField, links[1]);
    image.Put32(image.EntryOffset(u"SkinInfo") + kChildField, 0);
    for (const char16_t* path : {u"", u"SkinInfo", u"Nothing inside", u"aaaaa"}) {
        const size_t entry = image.EntryOffset(path);
        image.bytes[entry + kColourField] ^= std::byte{1};
        for (size_t at = 80; at < 116; ++at) image.bytes[entry + at] = std::byte{0xEE};
    }
    image.Put32(image.EntryOffset(u"Nothing inside") + kStartField, 0xEEEEEEEE);
    image.Put32(image.EntryOffset(u"Nothing inside") + kSizeField, 0xEEEEEEEE);
    // The FAT: what it calls its own sectors, as long as it doesn't call them free.
    image.Put32(image.LinkOffset(image.fat_sectors[0]), kEndMark);
    ExpectTaken(image, Content());
}

TEST_P(CompoundLegal, PassesOverAnEntryThatNothingLeadsTo) {
    CompoundLayout layout = Layout();
    layout.unused_entries = 1;
    CompoundImage image(Content(), layout);
    uint32_t unused = 1;
    while (image.Get16(image.EntryOffset(unused) + kNameSizeField) != 0) ++unused;
    for (size_t at = 0; at < 128; ++at) image.bytes[image.EntryOffset(unused) + at] = std::byte{0xEE};
    ExpectTaken(image, Content());
}

TEST(CompoundCheck, PassesOverTheUpperHalfOfASizeInFilesOfSmallSectors) {
    CompoundImage image(Content(), CompoundLayout{});
    for (const char16_t* path : {u"", u"SkinInfo", u"Empty", u"Below it", u"Exactly the mini limit"}) {
        image.Put32(image.EntryOffset(path) + kSizeHighField, 0xEEEEEEEE);
    }
    ExpectTaken(image, Content());
}

TEST(CompoundCheck, DoesNotMindSiblingsOutOfOrder) {
    CompoundImage image(Content(), CompoundLayout{});
    const size_t entry = image.EntryOffset(u"");
    const size_t top = image.EntryOffset(image.Get32(entry + kChildField));
    const uint32_t left = image.Get32(top + kLeftField);
    image.Put32(top + kLeftField, image.Get32(top + kRightField));
    image.Put32(top + kRightField, left);
    EXPECT_TRUE(IsSoundCompoundImage(image.bytes));
    const PlatformCompound platform(image.bytes);
    RunWatched("siblings out of order", kTimeLimit, [&] {
        const char* failed = platform.Extends();
        EXPECT_EQ(failed, nullptr) << "can't " << failed;
    });
}

TEST_P(CompoundLegal, TakesFilesThatThePlatformMakes) {
    const std::wstring path = TemporaryPath(L"made.tmp");
    for (const std::vector<CompoundElement>& content : {std::vector<CompoundElement>{}, Content()}) {
        ASSERT_TRUE(PlatformWrites(path, GetParam(), content));
        const std::vector<std::byte> bytes = ReadWholeFile(path);
        ASSERT_GE(bytes.size(), 512u);
        EXPECT_EQ(1u << std::to_integer<unsigned>(bytes[kSectorShiftField]), GetParam());
        EXPECT_TRUE(IsSoundCompoundImage(bytes));
        ExpectTaken(path, content);
    }
}

TEST(CompoundCheck, TakesLargeFilesWithDifatSectors) {
    const std::vector<CompoundElement> content = {Stream(u"Large", 16'000'000), Stream(u"Small", 90)};
    for (const uint32_t seed : {0u, 31u}) {
        CompoundLayout layout;
        layout.shuffle_seed = seed;
        const CompoundImage image(content, layout);
        EXPECT_EQ(image.difat_sectors.size(), 2u);
        ExpectTaken(image, content);
    }
    const std::wstring path = TemporaryPath(L"made.tmp");
    ASSERT_TRUE(PlatformWrites(path, 512, content));
    ExpectTaken(path, content);
}

}  // namespace
}  // namespace tavix::test
