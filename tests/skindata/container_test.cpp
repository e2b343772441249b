/* The file around the records: opening, creating, reading and writing its elements. */
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "fake_stream.h"
#include "filled_records.h"
#include "skindata/heap_block.h"
#include "skindata/record_tables.h"
#include "support/compound_platform.h"

namespace tavix_test {
namespace {

using tavix::ComPtr;
using tavix::HeapBlock;
using tavix::test::CompoundContents;
using tavix::test::PlatformCompound;
using tavix::test::ReadWholeFile;
using tavix::test::WriteWholeFile;

const char* const kStorages[] = {"Button",  "Frame",    "Dialog", "ToolBar", "Combobox",
                                 "TabCtrl", "HeadCtrl", "Edit",   "ListBox", "Scrollbar",
                                 "Global",  "Menu",     "DockBar"};

CompoundContents ContentsOf(const TempFile& file) {
    CompoundContents contents;
    EXPECT_TRUE(PlatformCompound(file.WidePath()).Reads(&contents));
    return contents;
}

std::u16string Wide(const std::string& text) { return {text.begin(), text.end()}; }

std::vector<std::byte> Bytes(const std::string& text) {
    const auto* first = reinterpret_cast<const std::byte*>(text.data());
    return {first, first + text.size()};
}

void MakeRootOnlyFile(const TempFile& file) {
    ComPtr<IStorage> root;
    ASSERT_EQ(::StgCreateDocfile(file.WidePath().c_str(), 0x1012, 0, root.Put()), S_OK);
}

// The names of the elements of a small file in the order in which they were made: the order of
// its directory, read from the bytes.
std::vector<std::string> DirectoryOrder(const TempFile& file) {
    const std::vector<std::byte> bytes = ReadWholeFile(file.WidePath());
    const auto word = [&](std::size_t at) {
        DWORD value = 0;
        if (at + 4 <= bytes.size()) std::memcpy(&value, bytes.data() + at, 4);
        return value;
    };
    std::vector<std::string> names;
    for (DWORD sector = word(48); sector < 0xFFFFFFFA && names.size() < 1000;
         sector = word(512 * (word(76) + 1) + 4 * sector)) {
        for (std::size_t entry = 512 * (sector + 1); entry < 512 * (sector + 2); entry += 128) {
            std::string name;
            for (std::size_t at = entry; word(at) & 0xFFFF; at += 2) name += static_cast<char>(word(at));
            if (!name.empty()) names.push_back(name);
        }
    }
    return names;
}

const std::vector<std::string> kOrderOfWork = {"Global",    "Button",  "Frame",    "Dialog", "ToolBar",
                                               "Combobox",  "TabCtrl", "HeadCtrl", "Edit",   "ListBox",
                                               "Scrollbar", "Menu",    "DockBar"};

std::vector<std::string> OnlyStorages(const std::vector<std::string>& names) {
    std::vector<std::string> storages;
    for (const std::string& name : names)
        if (name != "Root Entry" && name != "SkinInfo" && name != "Data") storages.push_back(name);
    return storages;
}

TEST(SkinFile, OneWithNothingButItsRootLoadsAndGainsEverythingEmpty) {
    TempFile file;
    MakeRootOnlyFile(file);
    CTavixSkinFace face;
    CSkinStorage storage;
    storage.SetSkinFace(&face);
    EXPECT_EQ(storage.LoadSkin(file.Path()), 1);
    CompoundContents expected;
    expected[u"SkinInfo"];
    for (const char* name : kStorages) {
        expected[Wide(name) + u"/"];
        expected[Wide(name) + u"/Data"];
    }
    EXPECT_TRUE(ContentsOf(file) == expected);
    EXPECT_EQ(storage.LoadSkin(file.Path()), 1);
    for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) EXPECT_EQ(face.GetBmp(id), nullptr) << id;
}

TEST(SkinFile, LoadingTakesTheRecordsGlobalFirstAndThenByNumber) {
    TempFile file;
    MakeRootOnlyFile(file);
    CTavixSkinFace face;
    face.LoadSkin(file.Path());
    const std::vector<std::string> made = DirectoryOrder(file);
    ASSERT_GE(made.size(), 2u);
    EXPECT_EQ(made[1], "SkinInfo");
    EXPECT_EQ(OnlyStorages(made), kOrderOfWork);
}

TEST(SkinFile, SavingTakesTheRecordsInTheSameOrder) {
    TempFile file;
    RecordSet records;
    ASSERT_TRUE(records.Save(file.Path()));
    const std::vector<std::string> made = DirectoryOrder(file);
    ASSERT_GE(made.size(), 2u);
    EXPECT_EQ(made[1], "SkinInfo");
    EXPECT_EQ(OnlyStorages(made), kOrderOfWork);
}

TEST(SkinFile, LoadingCreatesWhatASkinLacks) {
    TempFile file;
    FilledRecords filled;
    filled.records.absent[skinDockBar] = true;
    filled.records.SetBitmap(skinMenu, GetSkinRecordLayout(skinMenu)->fields[8], "absent", nullptr);
    ASSERT_TRUE(filled.records.Save(file.Path()));
    EXPECT_EQ(ContentsOf(file).count(u"DockBar/"), 0u);
    EXPECT_EQ(ContentsOf(file).count(u"Menu/absent"), 0u);
    CTavixSkinFace face;
    face.LoadSkin(file.Path());
    const CompoundContents after = ContentsOf(file);
    ASSERT_EQ(after.count(u"DockBar/Data"), 1u);
    EXPECT_TRUE(after.at(u"DockBar/Data").empty());
    ASSERT_EQ(after.count(u"Menu/absent"), 1u);
    EXPECT_TRUE(after.at(u"Menu/absent").empty());
    for (DWORD id = BMP_DOCK_00; id <= BMP_DOCK_31; ++id) EXPECT_EQ(face.GetBmp(id), nullptr) << id;
    EXPECT_EQ(face.GetBmp(BMP_MENU_RADIO), face.GetBmp(BMP_MENU_CHECK));
}

TEST(SkinFile, RecordsThatAreNullAreNotSaved) {
    TempFile file;
    RecordSet records;
    records.absent.fill(true);
    records.absent[skinEdit] = false;
    ASSERT_TRUE(records.Save(file.Path()));
    CompoundContents contents = ContentsOf(file);
    EXPECT_EQ(contents.size(), 3u);
    EXPECT_EQ(contents.count(u"SkinInfo"), 1u);
    EXPECT_EQ(contents[u"Edit/Data"].size(), 16u);
}

TEST(SkinFile, TheHeaderIsSeventyTwoBytesAndAlwaysTheSame) {
    TempFile file;
    ASSERT_TRUE(RecordSet().Save(file.Path()));
    std::string expected(72, '\0');
    expected[3] = 0x10;
    expected.replace(40, 5, "sdfas");
    EXPECT_TRUE(ContentsOf(file)[u"SkinInfo"] == Bytes(expected));
}

TEST(SkinFile, AnyHeaderLoadsAlike) {
    TestSkin skin;
    for (const std::string& header :
         {std::string(72, '\xFF'), std::string("short"), std::string(), std::string(50000, 'x')}) {
        SCOPED_TRACE(header.size());
        skin.Write();
        {
            CSkinStorageTestAccess access;
            ComPtr<IStorage> root;
            ComPtr<IStream> stream;
            ASSERT_EQ(access.OpenRootStg(skin.Path(), root.Put()), 1);
            ASSERT_EQ(access.OpenStm(root.Get(), "SkinInfo", stream.Put()), 1);
            std::string copy = header;
            ASSERT_EQ(access.WriteToStm(stream.Get(), copy.data(), static_cast<DWORD>(copy.size())), 1);
        }
        CTavixSkinFace face;
        CSkinStorage storage;
        storage.SetSkinFace(&face);
        EXPECT_EQ(storage.LoadSkin(skin.Path()), 1);
        EXPECT_EQ(face.GetSize(SZ_FRAME_CAPTION), skin.Size(SZ_FRAME_CAPTION));
        EXPECT_EQ(PixelOf(face.GetBmp(BMP_DOCK_31)), TestSkin::ColourOfBitmap(BMP_DOCK_31));
    }
}

TEST(SkinFile, OneThatIsReadOnlyCeasesToBe) {
    TestSkin skin;
    for (const bool save : {false, true}) {
        skin.Write();
        ASSERT_TRUE(::SetFileAttributesA(skin.Path(), FILE_ATTRIBUTE_READONLY));
        ASSERT_TRUE(::GetFileAttributesA(skin.Path()) & FILE_ATTRIBUTE_READONLY);
        if (save) {
            EXPECT_TRUE(RecordSet().Save(skin.Path()));
        } else {
            CTavixSkinFace face;
            face.LoadSkin(skin.Path());
            EXPECT_EQ(face.GetSize(SZ_FRAME_CAPTION), skin.Size(SZ_FRAME_CAPTION));
        }
        EXPECT_FALSE(::GetFileAttributesA(skin.Path()) & FILE_ATTRIBUTE_READONLY);
    }
}

TEST(SkinFile, IsOpenedExclusively) {
    TestSkin skin;
    skin.Write();
    CSkinStorageTestAccess holder;
    ComPtr<IStorage> root;
    ASSERT_EQ(holder.OpenRootStg(skin.Path(), root.Put()), 1);
    CTavixSkinFace face;
    CSkinStorage storage;
    storage.SetSkinFace(&face);
    EXPECT_EQ(storage.LoadSkin(skin.Path()), 0);
    EXPECT_EQ(face.GetSize(SZ_FRAME_CAPTION), 0u);
    EXPECT_FALSE(RecordSet().Save(skin.Path()));
    const HANDLE other =
        ::CreateFileA(skin.Path(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(other, INVALID_HANDLE_VALUE);
    if (other != INVALID_HANDLE_VALUE) ::CloseHandle(other);
    root.Reset();
    EXPECT_EQ(storage.LoadSkin(skin.Path()), 1);
    EXPECT_EQ(face.GetSize(SZ_FRAME_CAPTION), skin.Size(SZ_FRAME_CAPTION));
    // Nothing stays open.
    EXPECT_TRUE(::DeleteFileA(skin.Path()));
}

TEST(SkinFile, OneThatIsNoCompoundFileIsRefusedAndLeftAsItIs) {
    TempFile file;
    CSkinStorage storage;
    for (const std::string& text : {std::string(), std::string("GIF89a"), std::string(5000, 'q')}) {
        SCOPED_TRACE(text.size());
        ASSERT_TRUE(WriteWholeFile(file.WidePath(), Bytes(text)));
        EXPECT_EQ(storage.LoadSkin(file.Path()), 0);
        EXPECT_FALSE(RecordSet().Save(file.Path()));
        EXPECT_TRUE(ReadWholeFile(file.WidePath()) == Bytes(text));
    }
}

TEST(SkinFile, OneThatIsMissingIsCreated) {
    TempFile loaded, saved;
    CTavixSkinFace face;
    CSkinStorage storage;
    storage.SetSkinFace(&face);
    EXPECT_EQ(storage.LoadSkin(loaded.Path()), 1);
    EXPECT_TRUE(loaded.Exists());
    EXPECT_TRUE(RecordSet().Save(saved.Path()));
    EXPECT_TRUE(saved.Exists());
}

TEST(SkinFile, APlaceThatCanNotBeOpenedFails) {
    CSkinStorage storage;
    TSkinThemes themes = RecordSet().Themes();
    for (const char* path : {"", "C:\\no such folder\\x.skn", "C:\\windows", "?*"}) {
        EXPECT_EQ(storage.LoadSkin(path), 0) << path;
        EXPECT_EQ(storage.SaveToSkin(path, &themes), 0) << path;
    }
    TempFile file;
    EXPECT_EQ(storage.SaveToSkin(file.Path(), nullptr), 0);
    EXPECT_FALSE(file.Exists());
}

TEST(SkinFile, UnloadingTheReaderDoesNothing) {
    TestSkin skin;
    CTavixSkinFace face;
    CSkinStorage storage;
    storage.SetSkinFace(&face);
    ASSERT_EQ(storage.LoadSkin(skin.Write()), 1);
    EXPECT_EQ(storage.UnLoadSkin(), 1);
    EXPECT_EQ(PixelOf(face.GetBmp(BMP_MENU_CHECK)), TestSkin::ColourOfBitmap(BMP_MENU_CHECK));
}

TEST(SkinFile, WithoutAFaceNothingIsLoaded) {
    TestSkin skin;
    EXPECT_EQ(CSkinStorage().LoadSkin(skin.Write()), 1);
}

TEST(Elements, AreOpenedOrCreated) {
    OpenFile open;
    ComPtr<IStorage> child;
    ComPtr<IStream> stream;
    EXPECT_EQ(open.access.OpenSubStg(open.root.Get(), "Child", child.Put()), 1);
    EXPECT_EQ(open.access.OpenStm(child.Get(), "Stream", stream.Put()), 1);
    char text[] = "kept";
    EXPECT_EQ(open.access.WriteToStm(stream.Get(), text, 4), 1);
    stream.Reset();
    child.Reset();
    EXPECT_EQ(open.access.OpenSubStg(open.root.Get(), "Child", child.Put()), 1);
    EXPECT_EQ(open.access.OpenStm(child.Get(), "Stream", stream.Put()), 1);
    char found[8] = {};
    void* buffer = found;
    DWORD size = sizeof found;
    EXPECT_EQ(open.access.ReadFromStm(stream.Get(), &buffer, &size), 1);
    EXPECT_EQ(size, 4u);
    EXPECT_STREQ(found, "kept");
}

TEST(Elements, RefuseNamesThatTheContainerCanNotHold) {
    OpenFile open;
    for (const std::string& name : {std::string(), std::string(32, 'n'), std::string("a/b"),
                                    std::string("a\\b"), std::string("a:b"), std::string("a!b")}) {
        ComPtr<IStorage> child;
        ComPtr<IStream> stream;
        EXPECT_EQ(open.access.OpenSubStg(open.root.Get(), name.c_str(), child.Put()), 0) << name;
        EXPECT_EQ(open.access.OpenStm(open.root.Get(), name.c_str(), stream.Put()), 0) << name;
    }
    ComPtr<IStream> stream;
    EXPECT_EQ(open.access.OpenStm(open.root.Get(), std::string(31, 'n').c_str(), stream.Put()), 1);
    EXPECT_TRUE(stream);
}

TEST(Elements, ReleaseWhatTheVariableHeld) {
    OpenFile open;
    IStream* held = nullptr;
    ASSERT_EQ(open.access.OpenStm(open.root.Get(), "one", &held), 1);
    IStream* const first = held;
    first->AddRef();
    EXPECT_EQ(open.access.OpenStm(open.root.Get(), "two", &held), 1);
    EXPECT_NE(held, first);
    EXPECT_EQ(first->Release(), 0u);
    EXPECT_EQ(open.access.OpenStm(open.root.Get(), "", &held), 0);
    EXPECT_EQ(held, nullptr);
}

TEST(Elements, WritingReplacesTheWholeStream) {
    OpenFile open;
    ComPtr<IStream> stream;
    ASSERT_EQ(open.access.OpenStm(open.root.Get(), "s", stream.Put()), 1);
    std::string longer(9000, 'L'), shorter = "short";
    ASSERT_EQ(open.access.WriteToStm(stream.Get(), longer.data(), 9000), 1);
    ASSERT_EQ(open.access.WriteToStm(stream.Get(), shorter.data(), 5), 1);
    STATSTG facts{};
    ASSERT_EQ(stream->Stat(&facts, STATFLAG_NONAME), S_OK);
    EXPECT_EQ(facts.cbSize.QuadPart, 5u);
    stream.Reset();
    ASSERT_EQ(open.access.OpenStm(open.root.Get(), "s", stream.Put()), 1);
    HeapBlock block;
    DWORD size = 0;
    ASSERT_EQ(open.access.ReadFromStm(stream.Get(), block.Put(), &size), 1);
    EXPECT_EQ(std::string(static_cast<char*>(block.Get()), size), shorter);
}

TEST(Elements, WritingFailsOnlyIfTheWriteFails) {
    CSkinStorageTestAccess access;
    char data[4] = {};
    FakeStream stream;
    stream.seekResult = stream.sizeResult = E_FAIL;
    EXPECT_EQ(access.WriteToStm(&stream, data, 4), 1);
    EXPECT_EQ(stream.calls, "kzw");
    stream.writeResult = STG_E_MEDIUMFULL;
    EXPECT_EQ(access.WriteToStm(&stream, data, 4), 0);
    EXPECT_EQ(access.WriteToStm(nullptr, data, 4), 0);
}

TEST(Elements, ReadingNeedsASizeAndASuccessfulRead) {
    CSkinStorageTestAccess access;
    FakeStream stream;
    HeapBlock block;
    DWORD size = 99;
    EXPECT_EQ(access.ReadFromStm(&stream, block.Put(), &size), 0) << "an empty stream";
    EXPECT_EQ(size, 0u);
    stream.size = 10;
    stream.statResult = E_FAIL;
    EXPECT_EQ(access.ReadFromStm(&stream, block.Put(), &size), 0) << "no facts";
    EXPECT_EQ(stream.reads, 0);
    stream.statResult = S_OK;
    stream.readResult = E_FAIL;
    EXPECT_EQ(access.ReadFromStm(&stream, block.Put(), &size), 0) << "no read";
    EXPECT_EQ(block.Get(), nullptr);
    EXPECT_EQ(access.ReadFromStm(nullptr, block.Put(), &size), 0);
}

TEST(Elements, ReadingIsBoundedByTheBufferAndBySense) {
    CSkinStorageTestAccess access;
    FakeStream stream;
    stream.size = 1000;
    BYTE bytes[2000];  // a read past the named capacity shows and does no harm
    std::memset(bytes, 0x11, sizeof bytes);
    void* buffer = bytes;
    DWORD size = 10;
    EXPECT_EQ(access.ReadFromStm(&stream, &buffer, &size), 1);
    EXPECT_EQ(size, 10u);
    EXPECT_EQ(stream.asked, 10u);
    EXPECT_EQ(bytes[9], 0xEE);
    EXPECT_EQ(bytes[10], 0x11);

    stream.readable = 7;  // less is there than the stream says
    HeapBlock block;
    EXPECT_EQ(access.ReadFromStm(&stream, block.Put(), &size), 1);
    EXPECT_EQ(size, 7u);

    stream.reads = 0;
    for (const ULONGLONG absurd : {0xFFFFFFFFull, (256ull << 20) + 1}) {
        stream.size = absurd;
        EXPECT_EQ(access.ReadFromStm(&stream, block.Put(), &size), 0);
        EXPECT_EQ(block.Get(), nullptr);
    }
    EXPECT_EQ(stream.reads, 0);
    stream.size = 0x500000000ull + 12;  // the low half counts
    stream.readable = ~0u;
    EXPECT_EQ(access.ReadFromStm(&stream, block.Put(), &size), 1);
    EXPECT_EQ(size, 12u);
}

TEST(RectToDword, PacksTopBeforeLeft) {
    CSkinStorageTestAccess access;
    EXPECT_EQ(access.RectToDword(CRect(-40, 3, 20, 21)), 0x1514D803u);
    EXPECT_EQ(access.RectToDword(CRect(0, 0, 0, 0)), 0u);
    EXPECT_EQ(access.RectToDword(CRect(-1, -1, -1, -1)), 0xFFFFFFFFu);
    EXPECT_EQ(access.RectToDword(CRect(0x1234, 0x5678, -0x80, 0x101)), 0x01803478u);
    // Eight bits survive: -129 comes back as 127.
    EXPECT_EQ(access.RectToDword(CRect(-129, 0, 0, 0)), access.RectToDword(CRect(127, 0, 0, 0)));
}

}  // namespace
}  // namespace tavix_test
