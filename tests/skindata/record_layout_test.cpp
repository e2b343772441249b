/* The layout of the records, row by row, against a list written down apart from the tables. */
#include "skindata/record_tables.h"
#include "storage_access.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace tavix_test {
namespace {

struct Row {
    TSkinType record;
    TSkinFieldKind kind;
    TSkinFieldSet set;
    DWORD offset;
    DWORD id;
    DWORD slot;
};

// clang-format off
constexpr Row kRows[] = {
    // Button, 0xD8 bytes
    {skinButton, skinFieldColour, skinSetBoth, 0x000, 44, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x004, 45, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x008, 46, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x00C, 47, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x010, 48, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x014, 49, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x018, 50, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x01C, 51, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x020, 52, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x024, 53, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x028, 54, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x02C, 55, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x030, 56, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x034, 57, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x038, 58, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x03C, 59, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x040, 60, 0},
    {skinButton, skinFieldColour, skinSetBoth, 0x044, 61, 0},
    {skinButton, skinFieldBitmap, skinSetBoth, 0x058, 65, 0x048},
    {skinButton, skinFieldBitmap, skinSetBoth, 0x078, 66, 0x04C},
    {skinButton, skinFieldBitmap, skinSetBoth, 0x098, 67, 0x050},
    {skinButton, skinFieldBitmap, skinSetBoth, 0x0B8, 68, 0x054},
    // Frame, 0x250 bytes
    {skinFrame, skinFieldRect, skinSetBoth, 0x1F8, 6, 0},
    {skinFrame, skinFieldSize, skinSetBoth, 0x208, 0, 0},
    {skinFrame, skinFieldSize, skinSetBoth, 0x20C, 2, 0},
    {skinFrame, skinFieldSize, skinSetBoth, 0x210, 1, 0},
    {skinFrame, skinFieldSize, skinSetBoth, 0x214, 3, 0},
    {skinFrame, skinFieldSize, skinSetBoth, 0x21C, 7, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x220, 5, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x224, 6, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x228, 7, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x22C, 8, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x230, 9, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x234, 10, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x238, 11, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x23C, 12, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x240, 13, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x244, 14, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x248, 15, 0},
    {skinFrame, skinFieldColour, skinSetBoth, 0x24C, 16, 0},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x000, 0, 0x1C0},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x020, 1, 0x1C4},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x040, 2, 0x1C8},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x060, 3, 0x1CC},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x080, 4, 0x1D0},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x0A0, 5, 0x1D4},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x0C0, 6, 0x1D8},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x0E0, 7, 0x1DC},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x100, 8, 0x1E0},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x120, 9, 0x1E4},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x140, 11, 0x1E8},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x160, 10, 0x1EC},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x180, 12, 0x1F0},
    {skinFrame, skinFieldBitmap, skinSetBoth, 0x1A0, 13, 0x1F4},
    // Dialog, 0x26C bytes
    {skinDialog, skinFieldColour, skinSetBoth, 0x21C, 26, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x220, 27, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x224, 28, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x228, 29, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x22C, 30, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x230, 31, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x234, 32, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x238, 33, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x23C, 34, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x240, 35, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x244, 36, 0},
    {skinDialog, skinFieldColour, skinSetBoth, 0x248, 37, 0},
    {skinDialog, skinFieldRect, skinSetBoth, 0x24C, 16, 0},
    {skinDialog, skinFieldSize, skinSetBoth, 0x25C, 12, 0},
    {skinDialog, skinFieldSize, skinSetBoth, 0x260, 14, 0},
    {skinDialog, skinFieldSize, skinSetBoth, 0x264, 13, 0},
    {skinDialog, skinFieldSize, skinSetBoth, 0x268, 15, 0},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x000, 14, 0x1E0},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x020, 15, 0x1E4},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x040, 16, 0x1E8},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x060, 21, 0x1EC},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x080, 22, 0x1F0},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x0A0, 23, 0x1F4},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x0C0, 17, 0x1F8},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x0E0, 18, 0x1FC},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x100, 19, 0x200},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x120, 24, 0x204},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x140, 25, 0x208},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x160, 26, 0x20C},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x180, 27, 0x210},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x1A0, 28, 0x214},
    {skinDialog, skinFieldBitmap, skinSetBoth, 0x1C0, 29, 0x218},
    // ToolBar, 0x14C bytes
    {skinToolBar, skinFieldColour, skinSetBoth, 0x000, 63, 0},
    {skinToolBar, skinFieldColour, skinSetBoth, 0x004, 64, 0},
    {skinToolBar, skinFieldBitmap, skinSetBoth, 0x008, 69, 0x068},
    {skinToolBar, skinFieldBitmap, skinSetBoth, 0x028, 70, 0x06C},
    {skinToolBar, skinFieldBitmap, skinSetBoth, 0x048, 71, 0x070},
    {skinToolBar, skinFieldBitmap, skinSetBoth, 0x074, 72, 0x140},
    {skinToolBar, skinFieldBitmap, skinSetBoth, 0x094, 73, 0x144},
    {skinToolBar, skinFieldBitmap, skinSetBoth, 0x0B4, 74, 0x148},
    {skinToolBar, skinFieldBitmap, skinSetBoth, 0x0D4, 75, 0x134},
    {skinToolBar, skinFieldBitmap, skinSetBoth, 0x0F4, 76, 0x138},
    {skinToolBar, skinFieldBitmap, skinSetBoth, 0x114, 77, 0x13C},
    // Combobox, 0xE8 bytes
    {skinCombobox, skinFieldSize, skinSetBoth, 0x000, 8, 0},
    {skinCombobox, skinFieldSize, skinSetBoth, 0x004, 9, 0},
    {skinCombobox, skinFieldSize, skinSetBoth, 0x008, 10, 0},
    {skinCombobox, skinFieldSize, skinSetBoth, 0x00C, 11, 0},
    {skinCombobox, skinFieldBitmap, skinSetBoth, 0x010, 30, 0x0D0},
    {skinCombobox, skinFieldBitmap, skinSetBoth, 0x030, 31, 0x0D4},
    {skinCombobox, skinFieldBitmap, skinSetBoth, 0x050, 32, 0x0D8},
    {skinCombobox, skinFieldBitmap, skinSetBoth, 0x070, 33, 0x0DC},
    {skinCombobox, skinFieldBitmap, skinSetBoth, 0x090, 34, 0x0E0},
    {skinCombobox, skinFieldBitmap, skinSetBoth, 0x0B0, 35, 0x0E4},
    // TabCtrl, 0x200 bytes
    {skinTabCtrl, skinFieldColour, skinSetBoth, 0x000, 38, 0},
    {skinTabCtrl, skinFieldColour, skinSetBoth, 0x004, 39, 0},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x040, 39, 0x008},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x060, 41, 0x00C},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x080, 40, 0x010},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x0A0, 36, 0x014},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x0C0, 38, 0x018},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x0E0, 37, 0x01C},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x100, 42, 0x020},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x120, 44, 0x024},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x140, 48, 0x028},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x160, 49, 0x02C},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x180, 43, 0x030},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x1A0, 45, 0x034},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x1C0, 46, 0x038},
    {skinTabCtrl, skinFieldBitmap, skinSetBoth, 0x1E0, 47, 0x03C},
    // HeadCtrl, 0x100 bytes
    {skinHeadCtrl, skinFieldSize, skinSetBoth, 0x000, 17, 0},
    {skinHeadCtrl, skinFieldBitmap, skinSetBoth, 0x020, 50, 0x004},
    {skinHeadCtrl, skinFieldBitmap, skinSetBoth, 0x040, 53, 0x008},
    {skinHeadCtrl, skinFieldBitmap, skinSetBoth, 0x060, 51, 0x00C},
    {skinHeadCtrl, skinFieldBitmap, skinSetBoth, 0x080, 54, 0x010},
    {skinHeadCtrl, skinFieldBitmap, skinSetBoth, 0x0A0, 52, 0x014},
    {skinHeadCtrl, skinFieldBitmap, skinSetBoth, 0x0C0, 55, 0x018},
    {skinHeadCtrl, skinFieldBitmap, skinSetBoth, 0x0E0, 56, 0x01C},
    // Edit, 0x10 bytes
    {skinEdit, skinFieldColour, skinSetBoth, 0x000, 40, 0},
    {skinEdit, skinFieldColour, skinSetBoth, 0x004, 41, 0},
    {skinEdit, skinFieldColour, skinSetBoth, 0x008, 42, 0},
    {skinEdit, skinFieldColour, skinSetBoth, 0x00C, 43, 0},
    // ListBox, 0x124 bytes
    {skinListBox, skinFieldColour, skinSetBoth, 0x000, 62, 0},
    {skinListBox, skinFieldBitmap, skinSetBoth, 0x024, 57, 0x004},
    {skinListBox, skinFieldBitmap, skinSetBoth, 0x044, 58, 0x008},
    {skinListBox, skinFieldBitmap, skinSetBoth, 0x064, 59, 0x00C},
    {skinListBox, skinFieldBitmap, skinSetBoth, 0x084, 60, 0x010},
    {skinListBox, skinFieldBitmap, skinSetBoth, 0x0A4, 61, 0x014},
    {skinListBox, skinFieldBitmap, skinSetBoth, 0x0C4, 62, 0x018},
    {skinListBox, skinFieldBitmap, skinSetBoth, 0x0E4, 63, 0x01C},
    {skinListBox, skinFieldBitmap, skinSetBoth, 0x104, 64, 0x020},
    // Scrollbar, 0x424 bytes
    {skinScrollbar, skinFieldColour, skinSetBoth, 0x414, 65, 0},
    {skinScrollbar, skinFieldColour, skinSetBoth, 0x418, 66, 0},
    {skinScrollbar, skinFieldColour, skinSetBoth, 0x41C, 67, 0},
    {skinScrollbar, skinFieldColour, skinSetBoth, 0x420, 68, 0},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x000, 79, 0x3A0},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x020, 80, 0x3A4},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x040, 81, 0x3A8},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x060, 79, 0x3AC},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x080, 80, 0x3B0},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x0A0, 81, 0x3B4},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x0C0, 82, 0x3B8},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x0E0, 83, 0x3BC},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x100, 84, 0x3C0},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x120, 82, 0x3C4},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x140, 83, 0x3C8},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x160, 84, 0x3CC},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x180, 85, 0x3D0},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x1A0, 86, 0x3D4},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x1C0, 85, 0x3D8},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x1E0, 86, 0x3DC},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x200, 87, 0x3E0},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x220, 88, 0x3E4},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x240, 89, 0x3E8},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x260, 90, 0x3EC},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x280, 91, 0x3F0},
    {skinScrollbar, skinFieldBitmap, skinSetSmall, 0x2A0, 92, 0x3F4},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x2C0, 87, 0x3F8},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x2E0, 88, 0x3FC},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x300, 89, 0x400},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x320, 90, 0x404},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x340, 91, 0x408},
    {skinScrollbar, skinFieldBitmap, skinSetLarge, 0x360, 92, 0x40C},
    {skinScrollbar, skinFieldBitmap, skinSetBoth, 0x380, 93, 0x410},
    // Global, 0x10 bytes
    {skinGlobal, skinFieldColour, skinSetBoth, 0x000, 3, 0},
    {skinGlobal, skinFieldColour, skinSetBoth, 0x004, 4, 0},
    {skinGlobal, skinFieldSize, skinSetBoth, 0x008, 4, 0},
    {skinGlobal, skinFieldSize, skinSetBoth, 0x00C, 5, 0},
    // Menu, 0x64 bytes
    {skinMenu, skinFieldColour, skinSetBoth, 0x000, 19, 0},
    {skinMenu, skinFieldColour, skinSetBoth, 0x004, 20, 0},
    {skinMenu, skinFieldColour, skinSetBoth, 0x008, 21, 0},
    {skinMenu, skinFieldColour, skinSetBoth, 0x00C, 22, 0},
    {skinMenu, skinFieldColour, skinSetBoth, 0x010, 23, 0},
    {skinMenu, skinFieldColour, skinSetBoth, 0x014, 24, 0},
    {skinMenu, skinFieldColour, skinSetBoth, 0x018, 25, 0},
    {skinMenu, skinFieldBitmap, skinSetBoth, 0x01C, 94, 0x05C},
    {skinMenu, skinFieldBitmap, skinSetBoth, 0x03C, 95, 0x060},
    // DockBar, 0x480 bytes
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x000, 96, 0x400},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x020, 97, 0x404},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x040, 98, 0x408},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x060, 99, 0x40C},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x080, 100, 0x410},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x0A0, 101, 0x414},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x0C0, 102, 0x418},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x0E0, 103, 0x41C},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x100, 104, 0x420},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x120, 105, 0x424},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x140, 106, 0x428},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x160, 107, 0x42C},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x180, 108, 0x430},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x1A0, 109, 0x434},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x1C0, 110, 0x438},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x1E0, 111, 0x43C},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x200, 112, 0x440},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x220, 113, 0x444},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x240, 114, 0x448},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x260, 115, 0x44C},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x280, 116, 0x450},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x2A0, 117, 0x454},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x2C0, 118, 0x458},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x2E0, 119, 0x45C},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x300, 120, 0x460},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x320, 121, 0x464},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x340, 122, 0x468},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x360, 123, 0x46C},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x380, 124, 0x470},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x3A0, 125, 0x474},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x3C0, 126, 0x478},
    {skinDockBar, skinFieldBitmap, skinSetBoth, 0x3E0, 127, 0x47C},
};
// clang-format on

struct RecordFacts {
    TSkinType kind;
    const char* storage;
    DWORD size;
    std::vector<DWORD> bitmapOrder;  // as the loader goes, one set
};

std::vector<DWORD> Run(DWORD first, DWORD last) {
    std::vector<DWORD> ids;
    for (DWORD id = first; id <= last; ++id) ids.push_back(id);
    return ids;
}

const std::vector<RecordFacts>& Facts() {
    static const std::vector<RecordFacts> facts = {
        {skinButton, "Button", 216, {65, 66, 67, 68}},
        {skinFrame, "Frame", 592, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 10, 12, 13}},
        {skinDialog, "Dialog", 620, {14, 15, 16, 21, 22, 23, 17, 18, 19, 24, 25, 26, 27, 28, 29}},
        {skinToolBar, "ToolBar", 332, {69, 70, 71, 72, 73, 74, 75, 76, 77}},
        {skinCombobox, "Combobox", 232, {30, 31, 32, 33, 34, 35}},
        {skinTabCtrl, "TabCtrl", 512, {40, 39, 41, 36, 38, 37, 42, 44, 48, 49, 45, 43, 46, 47}},
        {skinHeadCtrl, "HeadCtrl", 256, {50, 53, 51, 54, 52, 55, 56}},
        {skinEdit, "Edit", 16, {}},
        {skinListBox, "ListBox", 292, {61, 62, 63, 64, 57, 58, 59, 60}},
        {skinScrollbar, "Scrollbar", 1060, {79, 82, 80, 83, 81, 84, 85, 86, 87, 88, 89, 90, 91, 92, 93}},
        {skinGlobal, "Global", 16, {}},
        {skinMenu, "Menu", 100, {94, 95}},
        {skinDockBar, "DockBar", 1152, Run(96, 127)},
    };
    return facts;
}

TEST(RecordLayout, HasTheSizesAndStorageNames) {
    ASSERT_EQ(Facts().size(), static_cast<std::size_t>(TAVIX_RECORD_COUNT));
    for (const RecordFacts& facts : Facts()) {
        const TSkinRecordLayout* layout = GetSkinRecordLayout(facts.kind);
        ASSERT_NE(layout, nullptr);
        EXPECT_EQ(layout->kind, facts.kind);
        EXPECT_STREQ(layout->storage, facts.storage);
        EXPECT_EQ(layout->size, facts.size) << facts.storage;
    }
}

TEST(RecordLayout, HasEachRowOnceAndNoOther) {
    using Key = std::tuple<int, int, int, DWORD, DWORD, DWORD>;
    std::map<Key, int> expected, found;
    for (const Row& row : kRows) ++expected[{row.record, row.kind, row.set, row.offset, row.id, row.slot}];
    for (const TSkinType kind : AllKinds())
        for (const TSkinField& f : *GetSkinRecordLayout(kind))
            ++found[{kind, f.kind, f.set, f.offset, f.id, f.slotOffset}];
    EXPECT_EQ(found.size(), std::size(kRows));
    const auto place = [](const Key& key) {
        return "record " + std::to_string(std::get<0>(key)) + " offset " + std::to_string(std::get<3>(key)) +
               " id " + std::to_string(std::get<4>(key));
    };
    for (const auto& [key, count] : expected) EXPECT_EQ(found[key], count) << place(key);
    for (const auto& [key, count] : found) EXPECT_EQ(expected[key], count) << place(key);
}

TEST(RecordLayout, LoadsBitmapsInTheirOrder) {
    for (const RecordFacts& facts : Facts()) {
        for (const TSkinFieldSet absent : {skinSetSmall, skinSetLarge}) {
            std::vector<DWORD> order;
            for (const TSkinField& f : *GetSkinRecordLayout(facts.kind))
                if (f.kind == skinFieldBitmap && f.set != absent) order.push_back(f.id);
            EXPECT_EQ(order, facts.bitmapOrder) << facts.storage;
        }
    }
}

// Whatever the list of a value's numbers says of the record that sets it, the tables do.
TEST(RecordLayout, AgreesWithTheListOfValues) {
    std::map<std::pair<int, DWORD>, std::string> setBy;
    for (const TSkinType kind : AllKinds())
        for (const TSkinField& f : *GetSkinRecordLayout(kind)) {
            const int table = f.kind == skinFieldRect ? skinFieldSize : f.kind;
            auto& storage = setBy[{table, f.id}];
            EXPECT_TRUE(storage.empty() || f.set != skinSetBoth) << "id " << f.id << " is set twice";
            storage = GetSkinRecordLayout(kind)->storage;
        }
    std::size_t named = 0;
    const auto check = [&](int table, DWORD id, const std::string& record) {
        if (record == "none") return;
        ++named;
        EXPECT_EQ((setBy[{table, id}]), record) << "id " << id;
    };
#define CHECK_BITMAP(number, name, record, use) check(skinFieldBitmap, number, record);
#define CHECK_COLOUR(number, name, record, use) check(skinFieldColour, number, record);
#define CHECK_SIZE(number, name, record, use) check(skinFieldSize, number, record);
    TAVIX_BITMAP_IDS(CHECK_BITMAP)
    TAVIX_COLOUR_IDS(CHECK_COLOUR)
    TAVIX_SIZE_IDS(CHECK_SIZE)
    EXPECT_EQ(setBy.size(), named);
    EXPECT_EQ(setBy.count({skinFieldBitmap, 20}), 0u);
    EXPECT_EQ(setBy.count({skinFieldBitmap, 78}), 0u);
    EXPECT_EQ(setBy.count({skinFieldColour, 17}), 0u);
    EXPECT_EQ(setBy.count({skinFieldColour, 18}), 0u);
}

TEST(RecordLayout, IsNullForANumberThatIsNoKind) {
    EXPECT_EQ(GetSkinRecordLayout(static_cast<TSkinType>(13)), nullptr);
}

// The images that the fields are written to, filled through the tables' literal offsets and
// read through the structures' members.
TEST(RecordLayout, NamesStandWhereTheStructuresHaveThem) {
    TSkinScrollBarInfo scroll{};
    auto* bytes = reinterpret_cast<char*>(&scroll);
    for (int k = 0; k < 29; ++k) bytes[32 * k] = static_cast<char>('A' + k);
    EXPECT_EQ(scroll.arrowSmall[0][0], 'A');
    EXPECT_EQ(scroll.arrowLarge[2][0], 'A' + 5);
    EXPECT_EQ(scroll.arrow2Small[1][0], 'A' + 7);
    EXPECT_EQ(scroll.arrow2Large[0][0], 'A' + 9);
    EXPECT_EQ(scroll.trackSmall[1][0], 'A' + 13);
    EXPECT_EQ(scroll.trackLarge[1][0], 'A' + 15);
    EXPECT_EQ(scroll.thumbSmall[5][0], 'A' + 21);
    EXPECT_EQ(scroll.thumbLarge[0][0], 'A' + 22);
    EXPECT_EQ(scroll.stub[0], 'A' + 28);

    TSkinTabCtrlInfo tab{};
    bytes = reinterpret_cast<char*>(&tab);
    for (int k = 0; k < 14; ++k) bytes[0x40 + 32 * k] = static_cast<char>('A' + k);
    EXPECT_EQ(tab.selTile[0], 'C');
    EXPECT_EQ(tab.tile[0], 'F');
    EXPECT_EQ(tab.paneBottomRight[0], 'J');
    EXPECT_EQ(tab.paneLeft[0], 'L');

    TSkinDialogInfo dialog{};
    bytes = reinterpret_cast<char*>(&dialog);
    for (int k = 0; k < 15; ++k) bytes[32 * k] = static_cast<char>('A' + k);
    EXPECT_EQ(dialog.maxNormal[0], 'D');
    EXPECT_EQ(dialog.minNormal[0], 'G');
    EXPECT_EQ(dialog.helpDown[0], 'L');
    EXPECT_EQ(dialog.captionTile[0], 'O');
}

}  // namespace
}  // namespace tavix_test
