/* The record set that a tool hands to the writer. */
#include <gtest/gtest.h>

#include <cstring>
#include <new>

#include "tavixskin/skin_storage.h"

namespace {

void** Pointers(TSkinThemes& themes) { return &themes.pGlobal; }

// A set in memory that held other things before.
struct UsedMemory {
    alignas(TSkinThemes) unsigned char bytes[sizeof(TSkinThemes)];
    TSkinThemes* themes;

    UsedMemory() {
        for (volatile unsigned char& byte : bytes) byte = 0xA5;
        themes = new (bytes) TSkinThemes;
    }
    ~UsedMemory() { themes->~TSkinThemes(); }
};

TEST(SkinThemes, ConstructionSetsEveryByteOfTheHeader) {
    UsedMemory memory;
    unsigned char expected[72] = {};
    expected[3] = 0x10;
    std::memcpy(expected + 40, "sdfas", 5);
    EXPECT_EQ(std::memcmp(&memory.themes->header, expected, sizeof expected), 0);
    EXPECT_EQ(static_cast<void*>(&memory.themes->header), static_cast<void*>(memory.themes));
}

TEST(SkinThemes, HasItsPointersInTheOrderOfTheRecords) {
    TSkinThemes themes;
    void* const* const first = Pointers(themes);
    EXPECT_EQ(reinterpret_cast<char*>(&themes.pGlobal), reinterpret_cast<char*>(&themes) + 72);
    EXPECT_EQ(&themes.pButton, first + 1);
    EXPECT_EQ(&themes.pFrame, first + 2);
    EXPECT_EQ(&themes.pDialog, first + 3);
    EXPECT_EQ(&themes.pToolBar, first + 4);
    EXPECT_EQ(&themes.pCombobox, first + 5);
    EXPECT_EQ(&themes.pTabCtrl, first + 6);
    EXPECT_EQ(&themes.pHeadCtrl, first + 7);
    EXPECT_EQ(&themes.pEdit, first + 8);
    EXPECT_EQ(&themes.pListBox, first + 9);
    EXPECT_EQ(&themes.pScrollbar, first + 10);
    EXPECT_EQ(&themes.pMenu, first + 11);
    EXPECT_EQ(&themes.pDockBar, first + 12);
    EXPECT_EQ(sizeof(TSkinThemes), 72 + 13 * sizeof(void*));
}

TEST(SkinThemes, AssignmentAndCopyTakeAllBytes) {
    TSkinThemes from;
    for (int i = 0; i < 13; ++i) Pointers(from)[i] = &Pointers(from)[i];
    std::memset(from.header.reserved, 0x11, sizeof from.header.reserved);
    from.header.spare = 0x22;
    TSkinThemes to;
    EXPECT_EQ(&(to = from), &to);
    EXPECT_EQ(std::memcmp(&to, &from, sizeof to), 0);
    const TSkinThemes copy(from);
    EXPECT_EQ(std::memcmp(&copy, &from, sizeof copy), 0);
    const TSkinThemes& self = from;
    from = self;
    EXPECT_EQ(std::memcmp(&copy, &from, sizeof copy), 0);
}

TEST(SkinThemes, ClearReleasesTheButtonRecordAndNoOther) {
    TSkinThemes themes;
    char others[13] = {};  // a release of one of these would not go unnoticed
    for (int i = 0; i < 13; ++i) Pointers(themes)[i] = &others[i];
    themes.pButton = ::operator new(sizeof(TSkinButtonInfo));
    themes.Clear();
    for (int i = 0; i < 13; ++i) EXPECT_EQ(Pointers(themes)[i], i == 1 ? nullptr : &others[i]) << i;
    themes.Clear();
    EXPECT_EQ(themes.pButton, nullptr);
}

}  // namespace
