#include "support/test_skin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <utility>
#include <vector>

namespace tavix_test {

TempFile::TempFile(const char* extension) {
    static std::atomic<int> count{0};
    char folder[MAX_PATH + 1] = {};
    ::GetTempPathA(sizeof folder, folder);
    m_path = std::string(folder) + "tavix_" + std::to_string(::GetCurrentProcessId()) + "_" +
             std::to_string(++count) + extension;
    ::DeleteFileA(Path());
}

TempFile::~TempFile() {
    ::SetFileAttributesA(Path(), FILE_ATTRIBUTE_NORMAL);
    ::DeleteFileA(Path());
}

void* RecordSet::Record(TSkinType kind) {
    switch (kind) {
        case skinButton:
            return &button;
        case skinFrame:
            return &frame;
        case skinDialog:
            return &dialog;
        case skinToolBar:
            return &toolBar;
        case skinCombobox:
            return &combobox;
        case skinTabCtrl:
            return &tabCtrl;
        case skinHeadCtrl:
            return &headCtrl;
        case skinEdit:
            return &edit;
        case skinListBox:
            return &listBox;
        case skinScrollbar:
            return &scrollbar;
        case skinGlobal:
            return &global;
        case skinMenu:
            return &menu;
        case skinDockBar:
            return &dockBar;
    }
    return nullptr;
}

TSkinThemes RecordSet::Themes() {
    const auto unless_absent = [this](TSkinType kind) { return absent[kind] ? nullptr : Record(kind); };
    TSkinThemes themes;
    themes.pGlobal = unless_absent(skinGlobal);
    themes.pButton = unless_absent(skinButton);
    themes.pFrame = unless_absent(skinFrame);
    themes.pDialog = unless_absent(skinDialog);
    themes.pToolBar = unless_absent(skinToolBar);
    themes.pCombobox = unless_absent(skinCombobox);
    themes.pTabCtrl = unless_absent(skinTabCtrl);
    themes.pHeadCtrl = unless_absent(skinHeadCtrl);
    themes.pEdit = unless_absent(skinEdit);
    themes.pListBox = unless_absent(skinListBox);
    themes.pScrollbar = unless_absent(skinScrollbar);
    themes.pMenu = unless_absent(skinMenu);
    themes.pDockBar = unless_absent(skinDockBar);
    return themes;
}

void RecordSet::SetBitmap(TSkinType kind, const TSkinField& field, const std::string& name,
                          const CBitmap* bitmap) {
    char* text = SkinNameAt(Record(kind), field);
    std::memset(text, 0, sizeof(TSkinName));
    std::memcpy(text, name.data(), std::min(name.size(), sizeof(TSkinName)));
    SkinSlotAt(Record(kind), field)->Set(bitmap);
}

bool RecordSet::Save(const char* path) {
    TSkinThemes themes = Themes();
    return CSkinStorage().SaveToSkin(path, &themes) == 1;
}

std::unique_ptr<CBitmap> MakeBitmap(int width, int height, const Pixels& pixels) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    auto bitmap = std::make_unique<CBitmap>();
    bitmap->Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    EXPECT_NE(bits, nullptr) << "a bitmap of " << width << " by " << height;
    if (!bits) return bitmap;
    const int stride = (width * 3 + 3) / 4 * 4;
    for (int y = 0; y < height; ++y) {
        auto* row = static_cast<BYTE*>(bits) + y * stride;
        for (int x = 0; x < width; ++x) {
            const COLORREF colour = pixels(x, y);
            row[3 * x] = GetBValue(colour);
            row[3 * x + 1] = GetGValue(colour);
            row[3 * x + 2] = GetRValue(colour);
        }
    }
    ::GdiFlush();
    return bitmap;
}

std::unique_ptr<CBitmap> MakeBitmap(int width, int height, COLORREF colour) {
    return MakeBitmap(width, height, [colour](int, int) { return colour; });
}

namespace {

// Sizes that fit together: a run of ids, width, height.
struct DefaultBitmapSize {
    DWORD first, last;
    int width, height;
};
constexpr DefaultBitmapSize kDefaultBitmapSizes[] = {
    {BMP_FRAME_CLOSE_NORMAL, BMP_FRAME_MIN_DOWN, 16, 16},
    {BMP_FRAME_CAPTION_LEFT, BMP_FRAME_CAPTION_LEFT, 8, 24},
    {BMP_FRAME_CAPTION_TILE, BMP_FRAME_CAPTION_TILE, 4, 24},
    {BMP_FRAME_CAPTION_RIGHT, BMP_FRAME_CAPTION_RIGHT, 10, 24},
    {BMP_FRAME_CAPTION_TITLE, BMP_FRAME_CAPTION_TITLE, 60, 24},
    {BMP_FRAME_GRIPPER, BMP_FRAME_GRIPPER, 12, 12},
    {BMP_DLG_CLOSE_NORMAL, BMP_DLG_MIN_DOWN, 16, 16},
    {BMP_DLG_MAX_NORMAL, BMP_DLG_HELP_DOWN, 16, 16},
    {BMP_DLG_CAPTION_LEFT, BMP_DLG_CAPTION_LEFT, 6, 24},
    {BMP_DLG_CAPTION_RIGHT, BMP_DLG_CAPTION_RIGHT, 7, 24},
    {BMP_DLG_CAPTION_TILE, BMP_DLG_CAPTION_TILE, 4, 24},
    {BMP_COMBO_LEFT, BMP_COMBO_LEFT, 4, 22},
    {BMP_COMBO_RIGHT, BMP_COMBO_RIGHT, 18, 22},
    {BMP_COMBO_TILE, BMP_COMBO_TILE, 2, 22},
    {BMP_COMBO_DROP_NORMAL, BMP_COMBO_DROP_DISABLED, 14, 16},
    {BMP_TAB_LEFT, BMP_TAB_LEFT, 4, 20},
    {BMP_TAB_TILE, BMP_TAB_TILE, 2, 20},
    {BMP_TAB_RIGHT, BMP_TAB_RIGHT, 4, 20},
    {BMP_TAB_SEL_LEFT, BMP_TAB_SEL_LEFT, 4, 22},
    {BMP_TAB_SEL_TILE, BMP_TAB_SEL_TILE, 2, 22},
    {BMP_TAB_SEL_RIGHT, BMP_TAB_SEL_RIGHT, 4, 22},
    {BMP_TAB_PANE_TOPLEFT, BMP_TAB_PANE_BOTTOMRIGHT, 4, 4},
    {BMP_HEAD_LEFT, BMP_HEAD_LEFT, 3, 18},
    {BMP_HEAD_TILE, BMP_HEAD_TILE, 2, 18},
    {BMP_HEAD_RIGHT, BMP_HEAD_RIGHT, 3, 18},
    {BMP_HEAD_DOWN_LEFT, BMP_HEAD_DOWN_LEFT, 3, 18},
    {BMP_HEAD_DOWN_TILE, BMP_HEAD_DOWN_TILE, 2, 18},
    {BMP_HEAD_DOWN_RIGHT, BMP_HEAD_DOWN_RIGHT, 3, 18},
    {BMP_HEAD_SPARE, BMP_HEAD_SPARE, 2, 2},
    {BMP_LIST_TOPLEFT, BMP_LIST_BOTTOMRIGHT, 4, 4},
    {BMP_LIST_TOP, BMP_LIST_TOP, 5, 2},
    {BMP_LIST_LEFT, BMP_LIST_LEFT, 2, 5},
    {BMP_LIST_RIGHT, BMP_LIST_RIGHT, 3, 5},
    {BMP_LIST_BOTTOM, BMP_LIST_BOTTOM, 5, 3},
    {BMP_BTN_CHECK_ON, BMP_BTN_RADIO_OFF, 13, 13},
    {BMP_TOOL_SPARE, BMP_TOOL_SPARE, 2, 2},
    {BMP_TOOL_BTN_HOT, BMP_TOOL_BTN_DOWN, 22, 22},
    {BMP_TOOL_FRAME_LEFT, BMP_TOOL_FRAME_RIGHT, 4, 20},
    {BMP_TOOL_BACKGROUND, BMP_TOOL_BACKGROUND, 8, 40},
    {BMP_TOOL_DROP_ARROW, BMP_TOOL_DROP_ARROW, 5, 3},
    {BMP_TOOL_DROP_HOT, BMP_TOOL_DROP_DOWN, 12, 22},
    {BMP_SB_ARROW_NORMAL, BMP_SB_ARROW2_DISABLED, 16, 16},
    {BMP_SB_TRACK, BMP_SB_TRACK_DISABLED, 16, 5},
    {BMP_SB_THUMB_TOP, BMP_SB_THUMB_BOTTOM, 16, 4},
    {BMP_SB_THUMB_TILE, BMP_SB_THUMB_TILE, 16, 3},
    {BMP_SB_THUMB_HOT_TOP, BMP_SB_THUMB_HOT_BOTTOM, 16, 4},
    {BMP_SB_THUMB_HOT_TILE, BMP_SB_THUMB_HOT_TILE, 16, 3},
    {BMP_SB_STUB, BMP_SB_STUB, 16, 16},
    {BMP_MENU_CHECK, BMP_MENU_RADIO, 12, 12},
    {BMP_DOCK_00, BMP_DOCK_31, 4, 4},
};

constexpr std::pair<DWORD, DWORD> kDefaultSizes[] = {
    {SZ_FRAME_LEFT, 4},    {SZ_FRAME_RIGHT, 5},     {SZ_FRAME_BOTTOM, 6},      {SZ_FRAME_CAPTION, 24},
    {SZ_MIN_TRACK_X, 260}, {SZ_MIN_TRACK_Y, 180},   {SZ_FRAME_MENU_STRIP, 20}, {SZ_COMBO_SPARE_8, 8},
    {SZ_COMBO_SPARE_9, 9}, {SZ_COMBO_SPARE_10, 10}, {SZ_COMBO_SPARE_11, 11},   {SZ_DLG_LEFT, 4},
    {SZ_DLG_RIGHT, 5},     {SZ_DLG_BOTTOM, 6},      {SZ_DLG_CAPTION, 24},      {SZ_HEAD_SPARE, 17},
};

RECT ButtonsRect(int left, int top, int width, int height) { return {left, top, width, height}; }

}  // namespace

COLORREF TestSkin::ColourOfBitmap(DWORD id) { return RGB(id + 1, 200 - id, 0x55); }

COLORREF TestSkin::DefaultColour(DWORD id) { return RGB(0xC8, id * 3 + 1, 250 - 2 * id); }

TestSkin::TestSkin() {
    for (const DefaultBitmapSize& run : kDefaultBitmapSizes)
        for (DWORD id = run.first; id <= run.last; ++id)
            SetBitmap(id, run.width, run.height, ColourOfBitmap(id));
    for (int kind = 0; kind < TAVIX_RECORD_COUNT; ++kind)
        for (const TSkinField& field : *GetSkinRecordLayout(static_cast<TSkinType>(kind)))
            if (field.kind == skinFieldColour) SetColour(field.id, DefaultColour(field.id));
    SetColour(CLR_TRANSPARENT, kTransparent);
    for (const auto& [id, size] : kDefaultSizes) SetSize(id, size);
    SetButtons(SZ_FRAME_BUTTONS, -60, 4, 16, 16);
    SetButtons(SZ_DLG_BUTTONS, -8, 4, 16, 16);
}

TestSkin::Picture& TestSkin::At(DWORD id) {
    const auto found = m_bitmaps.find(id);
    if (found != m_bitmaps.end()) return found->second;
    ADD_FAILURE() << "no record has a bitmap " << id;
    static Picture none;
    return none;
}

TestSkin& TestSkin::SetBitmapSize(DWORD id, int width, int height) {
    Picture& picture = At(id);
    picture.width = width;
    picture.height = height;
    return *this;
}

TestSkin& TestSkin::SetBitmap(DWORD id, int width, int height, Pixels pixels) {
    m_bitmaps[id] = {width, height, std::move(pixels)};
    return *this;
}

TestSkin& TestSkin::SetBitmap(DWORD id, int width, int height, COLORREF colour) {
    return SetBitmap(id, width, height, [colour](int, int) { return colour; });
}

TestSkin& TestSkin::SetLargeBitmap(DWORD id, int width, int height, COLORREF colour) {
    m_largeBitmaps[id] = {width, height, [colour](int, int) { return colour; }};
    return *this;
}

TestSkin& TestSkin::RemoveBitmap(DWORD id) {
    At(id).pixels = nullptr;
    m_largeBitmaps.erase(id);
    return *this;
}

TestSkin& TestSkin::RemoveBitmaps(TSkinType kind) {
    for (const TSkinField& field : *GetSkinRecordLayout(kind))
        if (field.kind == skinFieldBitmap) RemoveBitmap(field.id);
    return *this;
}

TestSkin& TestSkin::SetColour(DWORD id, COLORREF colour) {
    m_colours[id] = colour;
    return *this;
}

TestSkin& TestSkin::SetSize(DWORD id, DWORD size) {
    m_sizes[id] = size;
    return *this;
}

TestSkin& TestSkin::SetButtons(DWORD id, int left, int top, int width, int height) {
    m_buttons[id] = ButtonsRect(left, top, width, height);
    return *this;
}

SIZE TestSkin::BitmapSize(DWORD id) const {
    const Picture& picture = m_bitmaps.at(id);
    return {picture.width, picture.height};
}

const char* TestSkin::Write() {
    RecordSet records;
    std::vector<std::unique_ptr<CBitmap>> bitmaps;
    for (int number = 0; number < TAVIX_RECORD_COUNT; ++number) {
        const auto kind = static_cast<TSkinType>(number);
        void* record = records.Record(kind);
        for (const TSkinField& field : *GetSkinRecordLayout(kind)) {
            switch (field.kind) {
                case skinFieldColour:
                    *SkinNumberAt(record, field) = m_colours.at(field.id);
                    break;
                case skinFieldSize:
                    *SkinNumberAt(record, field) = m_sizes.at(field.id);
                    break;
                case skinFieldRect:
                    *SkinRectAt(record, field) = m_buttons.at(field.id);
                    break;
                case skinFieldBitmap: {
                    const bool large = field.set == skinSetLarge;
                    const auto different = m_largeBitmaps.find(field.id);
                    const Picture& picture = large && different != m_largeBitmaps.end()
                                                 ? different->second
                                                 : m_bitmaps.at(field.id);
                    if (!picture.pixels) break;
                    bitmaps.push_back(MakeBitmap(picture.width, picture.height, picture.pixels));
                    records.SetBitmap(kind, field, (large ? "large" : "bitmap") + std::to_string(field.id),
                                      bitmaps.back().get());
                    break;
                }
            }
        }
    }
    ::DeleteFileA(Path());
    EXPECT_TRUE(records.Save(Path())) << Path();
    return Path();
}

}  // namespace tavix_test
