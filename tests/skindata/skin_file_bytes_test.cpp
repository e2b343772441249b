/* What a saved skin is made of, byte for byte: the same from every build. */
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "filled_records.h"
#include "support/compound_platform.h"

namespace tavix_test {
namespace {

using tavix::test::CompoundContents;
using tavix::test::PlatformCompound;

DWORD Crc32(const std::vector<std::byte>& bytes, DWORD start = 0) {
    DWORD crc = ~start;
    for (const std::byte byte : bytes) {
        crc ^= static_cast<DWORD>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320u : 0);
    }
    return ~crc;
}

std::string Narrow(const std::u16string& text) { return {text.begin(), text.end()}; }

CompoundContents SavedSkin(const char* path) {
    FilledRecords filled;
    EXPECT_TRUE(filled.records.Save(path));
    CompoundContents contents;
    const std::string name = path;
    EXPECT_TRUE(PlatformCompound(std::wstring(name.begin(), name.end())).Reads(&contents));
    return contents;
}

TEST(SkinFileBytes, TheChecksumIsThePublishedOne) {
    const char digits[] = "123456789";
    const auto* first = reinterpret_cast<const std::byte*>(digits);
    EXPECT_EQ(Crc32({first, first + 9}), 0xCBF43926u);
}

// Fixed numbers, worked out apart from the library from the records' layout and the BMP format:
// the builds of both widths have to come to these.
TEST(SkinFileBytes, AreTheSameFromEveryBuild) {
    static const std::map<std::string, DWORD> expected = {
        {"Button/Data", 0x54362C4B},      {"Button/bitmaps", 0x53CE8F67},    {"Combobox/Data", 0xEE668934},
        {"Combobox/bitmaps", 0xADEB898A}, {"Dialog/Data", 0xFCE08755},       {"Dialog/bitmaps", 0x54880C92},
        {"DockBar/Data", 0xD73BD56E},     {"DockBar/bitmaps", 0xE0AFBBE8},   {"Edit/Data", 0xAE008BF4},
        {"Frame/Data", 0xB98CF26E},       {"Frame/bitmaps", 0x2D3CCE19},     {"Global/Data", 0xF4EEF095},
        {"HeadCtrl/Data", 0x7188FBCA},    {"HeadCtrl/bitmaps", 0x693ADCE1},  {"ListBox/Data", 0x06D18CF2},
        {"ListBox/bitmaps", 0x71056139},  {"Menu/Data", 0x10E9715F},         {"Menu/bitmaps", 0x000E2A27},
        {"Scrollbar/Data", 0x84F76ECA},   {"Scrollbar/bitmaps", 0x710BCDE7}, {"SkinInfo", 0x6B29C80D},
        {"TabCtrl/Data", 0x87D18DB1},     {"TabCtrl/bitmaps", 0xA8F47F5B},   {"ToolBar/Data", 0xE9E3D02A},
        {"ToolBar/bitmaps", 0x768590DA},
    };
    TempFile file;
    std::map<std::string, DWORD> found;
    for (const auto& [path, bytes] : SavedSkin(file.Path())) {
        const std::string name = Narrow(path);
        if (name.back() == '/') continue;
        const bool image = name == "SkinInfo" || name.ends_with("/Data");
        // The bitmaps of a record count together, in the order of their names.
        DWORD& crc = found[image ? name : name.substr(0, name.find('/')) + "/bitmaps"];
        crc = Crc32(bytes, crc);
    }
    EXPECT_EQ(found.size(), expected.size());
    for (const auto& [name, crc] : found) {
        const auto wanted = expected.find(name);
        EXPECT_TRUE(wanted != expected.end() && wanted->second == crc)
            << "        {\"" << name << "\", 0x" << std::hex << std::uppercase << crc << "},";
    }
}

TEST(SkinFileBytes, SavingTwiceGivesTheSameStreams) {
    TempFile first, second;
    const CompoundContents once = SavedSkin(first.Path());
    EXPECT_TRUE(once == SavedSkin(second.Path()));
    EXPECT_TRUE(once == SavedSkin(first.Path())) << "over the former file";
}

// Left in the working folder for check_with_olefile.py: a file of our writer, and what we say
// is in it.
TEST(SkinFileBytes, AFileAndItsListingAreLeftForAnotherReader) {
    ::DeleteFileA("skin_sample.skn");
    const CompoundContents contents = SavedSkin("skin_sample.skn");
    FILE* listing = std::fopen("skin_sample.txt", "wb");
    ASSERT_NE(listing, nullptr);
    int lines = 0;
    for (const auto& [path, bytes] : contents) {
        const std::string name = Narrow(path);
        if (name.back() == '/') continue;
        const auto size = static_cast<unsigned>(bytes.size());
        EXPECT_GT(std::fprintf(listing, "%s %u %08lX\n", name.c_str(), size, Crc32(bytes)), 0);
        ++lines;
    }
    EXPECT_EQ(std::fclose(listing), 0);
    int names = 0;
    for (const TSkinType kind : AllKinds())
        for (const TSkinField& field : *GetSkinRecordLayout(kind)) names += field.kind == skinFieldBitmap;
    EXPECT_EQ(lines, names + 13 + 1);
}

}  // namespace
}  // namespace tavix_test
