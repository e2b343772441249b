/* Skins for tests: every bitmap, colour and size is known, and a pixel tells which bitmap it is of. */
#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "tavixskin/skin_layout.h"
#include "tavixskin/value_ids.h"

namespace tavix_test {

/* A path in the folder for temporary files that no other test uses; the file ends with it. */
class TempFile {
public:
    explicit TempFile(const char* extension = ".skn");
    ~TempFile();
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const char* Path() const { return m_path.c_str(); }
    std::wstring WidePath() const { return {m_path.begin(), m_path.end()}; }
    bool Exists() const { return ::GetFileAttributesA(Path()) != INVALID_FILE_ATTRIBUTES; }

private:
    std::string m_path;
};

/* All thirteen records, zero at first. A record can be left out of what is saved. */
struct RecordSet {
    TSkinButtonInfo button{};
    TSkinFrameInfo frame{};
    TSkinDialogInfo dialog{};
    TSkinToolBarInfo toolBar{};
    TSkinComboboxInfo combobox{};
    TSkinTabCtrlInfo tabCtrl{};
    TSkinHeadCtrlInfo headCtrl{};
    TSkinEditInfo edit{};
    TSkinListBoxInfo listBox{};
    TSkinScrollBarInfo scrollbar{};
    TSkinGlobalInfo global{};
    TSkinMenuInfo menu{};
    TSkinDockBarInfo dockBar{};
    std::array<bool, TAVIX_RECORD_COUNT> absent{};

    void* Record(TSkinType kind);
    TSkinThemes Themes();
    /* Puts a name, and the bitmap if it isn't null, where the field stands. */
    void SetBitmap(TSkinType kind, const TSkinField& field, const std::string& name, const CBitmap* bitmap);
    /* With the library's writer; true if that reports success. */
    bool Save(const char* path);
};

/* A colour at each place of a bitmap. */
using Pixels = std::function<COLORREF(int x, int y)>;

/* A bitmap of 24 bits a pixel, which keeps every colour. */
std::unique_ptr<CBitmap> MakeBitmap(int width, int height, const Pixels& pixels);
std::unique_ptr<CBitmap> MakeBitmap(int width, int height, COLORREF colour);

/*
 * A skin that has everything. Its bitmaps are flat, each in a colour of its own; its colours
 * differ from those and from each other. Both sets of scroll bar bitmaps are the same unless
 * a bitmap of the large set is changed. Changes count from the next Write() on.
 */
class TestSkin {
public:
    TestSkin();

    static constexpr COLORREF kTransparent = RGB(0xFF, 0x00, 0xFF);
    /* The flat colour of a bitmap, and the value of a colour, unless they are set. */
    static COLORREF ColourOfBitmap(DWORD id);
    static COLORREF DefaultColour(DWORD id);

    TestSkin& SetBitmapSize(DWORD id, int width, int height);
    TestSkin& SetBitmap(DWORD id, int width, int height, Pixels pixels);
    TestSkin& SetBitmap(DWORD id, int width, int height, COLORREF colour);
    /* Of the large set of scroll bar bitmaps. */
    TestSkin& SetLargeBitmap(DWORD id, int width, int height, COLORREF colour);
    /* The skin has no stream for it; its id then takes the bitmap loaded before it. */
    TestSkin& RemoveBitmap(DWORD id);
    /* The streams of all bitmaps of a record. */
    TestSkin& RemoveBitmaps(TSkinType kind);
    TestSkin& SetColour(DWORD id, COLORREF colour);
    TestSkin& SetSize(DWORD id, DWORD size);
    /* SZ_FRAME_BUTTONS or SZ_DLG_BUTTONS. */
    TestSkin& SetButtons(DWORD id, int left, int top, int width, int height);

    SIZE BitmapSize(DWORD id) const;
    COLORREF Colour(DWORD id) const { return m_colours.at(id); }
    DWORD Size(DWORD id) const { return m_sizes.at(id); }

    /* Writes the file anew; fails the test if that fails. The path is the same each time. */
    const char* Write();
    const char* Path() const { return m_file.Path(); }

private:
    struct Picture {
        int width = 0;
        int height = 0;
        Pixels pixels;  // null for no stream
    };
    Picture& At(DWORD id);

    TempFile m_file;
    std::map<DWORD, Picture> m_bitmaps;
    std::map<DWORD, Picture> m_largeBitmaps;  // where they differ
    std::map<DWORD, COLORREF> m_colours;
    std::map<DWORD, DWORD> m_sizes;
    std::map<DWORD, RECT> m_buttons;
};

}  // namespace tavix_test
