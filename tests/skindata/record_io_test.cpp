/* Loading and saving records: every field, the order of loading, the slots, the two sets. */
#include "skindata/record_io.h"
#include "draw/skin_bitmap.h"
#include "filled_records.h"
#include "storage_access.h"

#include <cstring>
#include <string>
#include <vector>

namespace tavix_test {
namespace {

void ExpectLoaded(TSkinType kind, const CTavixSkinFace& face, TSkinFieldSet absentSet) {
    for (const TSkinField& field : *GetSkinRecordLayout(kind)) {
        SCOPED_TRACE(std::string(GetSkinRecordLayout(kind)->storage) + ", offset " +
                     std::to_string(field.offset));
        switch (field.kind) {
            case skinFieldColour:
                EXPECT_EQ(face.GetColor(field.id), Distinct(kind, field));
                break;
            case skinFieldSize:
                EXPECT_EQ(face.GetSize(field.id), Distinct(kind, field));
                break;
            case skinFieldRect: {
                const DWORD left = (0x100 - 3 - kind) & 0xFF, width = (300 + kind) & 0xFF;
                EXPECT_EQ(face.GetSize(field.id), (5u + kind) | left << 8 | width << 16 | 0x7Fu << 24);
                break;
            }
            case skinFieldBitmap:
                if (field.set == absentSet) break;
                EXPECT_EQ(PixelOf(face.GetBmp(field.id), 2, 1), FilledRecords::ColourOf(field));
                break;
        }
    }
}

TEST(RecordIo, EveryFieldOfAFileComesOutAtItsNumber) {
    FilledRecords filled;
    TempFile file;
    ASSERT_TRUE(filled.records.Save(file.Path()));
    CTavixSkinFace face;
    face.LoadSkin(file.Path());
    const TSkinFieldSet absent = ::GetSystemMetrics(SM_CXVSCROLL) <= 16 ? skinSetLarge : skinSetSmall;
    for (const TSkinType kind : AllKinds()) ExpectLoaded(kind, face, absent);
    for (const DWORD id : {20u, 78u, 128u, 254u}) EXPECT_EQ(face.GetBmp(id), nullptr) << id;
    for (const DWORD id : {17u, 18u, 69u, 254u}) EXPECT_EQ(face.GetColor(id), 0u) << id;
    for (const DWORD id : {18u, 254u}) EXPECT_EQ(face.GetSize(id), 0u) << id;
}

TEST(RecordIo, EachExportedPairHandlesItsOwnRecord) {
    FilledRecords filled;
    const TSkinFieldSet absent = ::GetSystemMetrics(SM_CXVSCROLL) <= 16 ? skinSetLarge : skinSetSmall;
    for (const TSkinType kind : AllKinds()) {
        SCOPED_TRACE(GetSkinRecordLayout(kind)->storage);
        OpenFile open;
        ASSERT_EQ(open.access.Save(kind, open.root.Get(), filled.records.Record(kind)), 1);
        CTavixSkinFace face;
        open.access.storage.SetSkinFace(&face);
        ASSERT_EQ(open.access.Load(kind, open.root.Get()), 1);
        ExpectLoaded(kind, face, absent);
    }
}

TEST(RecordIo, ItemsAnswerOneWhateverHappened) {
    OpenFile open;
    CSkinStorage& storage = open.access.storage;
    EXPECT_EQ(storage.LoadSkinItem(nullptr, skinFrame), 1);
    EXPECT_EQ(storage.SaveSkinItem(nullptr, skinFrame, nullptr), 1);
    EXPECT_EQ(storage.SaveSkinItem(open.root.Get(), skinFrame, nullptr), 1);
    EXPECT_EQ(storage.LoadSkinItem(open.root.Get(), static_cast<TSkinType>(13)), 1);
    EXPECT_EQ(storage.LoadSkinItem(open.root.Get(), skinFrame), 1);  // no face to fill
    EXPECT_EQ(open.access.Load(skinFrame, nullptr), 0);
    EXPECT_EQ(open.access.Save(skinFrame, nullptr, nullptr), 0);
}

// Takes each bitmap in turn out of a record that has all, and puts it back.
void ExpectCarryingOver(FilledRecords& filled, TSkinType kind, TSkinFieldSet absent) {
    std::vector<const TSkinField*> order;
    for (const TSkinField& field : *GetSkinRecordLayout(kind))
        if (field.kind == skinFieldBitmap && field.set != absent) order.push_back(&field);
    const char* const record = GetSkinRecordLayout(kind)->storage;
    OpenFile open;
    ASSERT_EQ(open.access.Save(kind, open.root.Get(), filled.records.Record(kind)), 1);
    for (std::size_t missing = 0; missing < order.size(); ++missing) {
        const std::string name = FilledRecords::Name(kind, *order[missing]);
        tavix::ComPtr<IStorage> storage;
        ASSERT_EQ(open.access.OpenSubStg(open.root.Get(), record, storage.Put()), 1);
        ASSERT_EQ(storage->DestroyElement(std::wstring(name.begin(), name.end()).c_str()), S_OK);
        storage.Reset();

        CTavixSkinFace face;
        ASSERT_EQ(tavix::LoadRecord(open.root.Get(), kind, &face, absent == skinSetLarge ? 16 : 17), 1);
        for (std::size_t i = 0; i < order.size(); ++i) {
            CBitmap* bitmap = face.GetBmp(order[i]->id);
            if (i != missing) {
                EXPECT_EQ(PixelOf(bitmap), FilledRecords::ColourOf(*order[i])) << order[i]->id;
            } else {
                EXPECT_EQ(bitmap, i ? face.GetBmp(order[i - 1]->id) : nullptr) << order[i]->id;
            }
        }

        const auto restored = MakeBitmap(3, 2, FilledRecords::ColourOf(*order[missing]));
        ASSERT_EQ(open.access.OpenSubStg(open.root.Get(), record, storage.Put()), 1);
        ASSERT_EQ(open.access.WriteBmpToStm(storage.Get(), name.c_str(), restored.get()), 1);
    }
}

TEST(RecordIo, ANameWithoutAStreamTakesTheBitmapLoadedBeforeIt) {
    FilledRecords filled;
    for (const TSkinType kind : AllKinds()) ExpectCarryingOver(filled, kind, skinSetLarge);
    ExpectCarryingOver(filled, skinScrollbar, skinSetSmall);
}

TEST(RecordIo, AllNamesMissingGiveNull) {
    for (const TSkinType kind : {skinDialog, skinToolBar, skinFrame}) {
        RecordSet records;
        OpenFile open;
        ASSERT_EQ(open.access.Save(kind, open.root.Get(), records.Record(kind)), 1);
        CTavixSkinFace face;
        for (const TSkinField& field : *GetSkinRecordLayout(kind))
            if (field.kind == skinFieldBitmap)
                face.SetBmp(field.id, MakeBitmap(1, 1, RGB(1, 2, 3)).release());
        ASSERT_EQ(tavix::LoadRecord(open.root.Get(), kind, &face, 16), 1);
        for (const TSkinField& field : *GetSkinRecordLayout(kind))
            if (field.kind == skinFieldBitmap) {
                EXPECT_EQ(face.GetBmp(field.id), nullptr) << field.id;
            }
    }
}

// The tile stands right after the right end in the record, though its number comes before.
TEST(RecordIo, AFrameWithoutACaptionTileShowsTheRightEnd) {
    TestSkin skin;
    skin.RemoveBitmap(BMP_FRAME_CAPTION_TILE);
    CTavixSkinFace face;
    face.LoadSkin(skin.Write());
    EXPECT_EQ(face.GetBmp(BMP_FRAME_CAPTION_TILE), face.GetBmp(BMP_FRAME_CAPTION_RIGHT));
    EXPECT_EQ(PixelOf(face.GetBmp(BMP_FRAME_CAPTION_TILE)),
              TestSkin::ColourOfBitmap(BMP_FRAME_CAPTION_RIGHT));
}

TEST(RecordIo, TheScrollBarSetIsChosenByTheWidth) {
    FilledRecords filled;
    OpenFile open;
    ASSERT_EQ(open.access.Save(skinScrollbar, open.root.Get(), &filled.records.scrollbar), 1);
    for (const int width : {0, 15, 16, 17, 18, 40}) {
        SCOPED_TRACE(width);
        CTavixSkinFace face;
        ASSERT_EQ(tavix::LoadRecord(open.root.Get(), skinScrollbar, &face, width), 1);
        ExpectLoaded(skinScrollbar, face, width <= 16 ? skinSetLarge : skinSetSmall);
    }
}

// The metric as the system gives it, changed for the time of the test.
class ScrollBarMetric {
public:
    ScrollBarMetric() : m_former(::GetSystemMetrics(SM_CXVSCROLL)) {}
    ~ScrollBarMetric() { Set(m_former); }
    static bool Set(int width) {
        NONCLIENTMETRICSA metrics{};
        metrics.cbSize = sizeof metrics;
        if (!::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0)) return false;
        metrics.iScrollWidth = width;
        return ::SystemParametersInfoA(SPI_SETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0) &&
               ::GetSystemMetrics(SM_CXVSCROLL) == width;
    }

private:
    int m_former;
};

TEST(RecordIo, TheScrollBarSetFollowsTheSystemAtEachLoad) {
    const ScrollBarMetric metric;
    FilledRecords filled;
    TempFile file;
    ASSERT_TRUE(filled.records.Save(file.Path()));
    CTavixSkinFace face;
    for (const int width : {16, 17}) {
        SCOPED_TRACE(width);
        ASSERT_TRUE(ScrollBarMetric::Set(width));
        face.LoadSkin(file.Path());
        ExpectLoaded(skinScrollbar, face, width <= 16 ? skinSetLarge : skinSetSmall);
    }
}

TEST(RecordIo, ASmallOnlyScrollBarUnderALargeMetricHasItsCornerFillerAlone) {
    FilledRecords filled;
    for (const TSkinField& field : *GetSkinRecordLayout(skinScrollbar))
        if (field.set == skinSetLarge) filled.records.SetBitmap(skinScrollbar, field, "", nullptr);
    OpenFile open;
    ASSERT_EQ(open.access.Save(skinScrollbar, open.root.Get(), &filled.records.scrollbar), 1);
    CTavixSkinFace face;
    ASSERT_EQ(tavix::LoadRecord(open.root.Get(), skinScrollbar, &face, 17), 1);
    for (DWORD id = BMP_SB_ARROW_NORMAL; id <= BMP_SB_THUMB_HOT_TILE; ++id)
        EXPECT_EQ(face.GetBmp(id), nullptr) << id;
    EXPECT_EQ(PixelOf(face.GetBmp(BMP_SB_STUB)), TestSkin::ColourOfBitmap(BMP_SB_STUB));
}

TEST(RecordIo, TheSaverWritesTheStreamsOfBothSetsAndNoOther) {
    FilledRecords filled;
    OpenFile open;
    ASSERT_EQ(open.access.Save(skinScrollbar, open.root.Get(), &filled.records.scrollbar), 1);
    tavix::ComPtr<IStorage> storage;
    ASSERT_EQ(open.access.OpenSubStg(open.root.Get(), "Scrollbar", storage.Put()), 1);
    tavix::ComPtr<IEnumSTATSTG> elements;
    ASSERT_EQ(storage->EnumElements(0, nullptr, 0, elements.Put()), S_OK);
    int count = 0;
    for (STATSTG element{}; elements->Next(1, &element, nullptr) == S_OK; ++count)
        ::CoTaskMemFree(element.pwcsName);
    EXPECT_EQ(count, 30);
}

TEST(RecordIo, TheEditRecordIsOneStreamOfSixteenBytes) {
    RecordSet records;
    records.edit = {1, 2, 3, 4};
    OpenFile open;
    ASSERT_EQ(open.access.Save(skinEdit, open.root.Get(), &records.edit), 1);
    tavix::ComPtr<IStorage> storage;
    ASSERT_EQ(open.access.OpenSubStg(open.root.Get(), "Edit", storage.Put()), 1);
    tavix::ComPtr<IEnumSTATSTG> elements;
    ASSERT_EQ(storage->EnumElements(0, nullptr, 0, elements.Put()), S_OK);
    STATSTG element{};
    ASSERT_EQ(elements->Next(1, &element, nullptr), S_OK);
    EXPECT_STREQ(element.pwcsName, L"Data");
    EXPECT_EQ(element.cbSize.QuadPart, 16u);
    ::CoTaskMemFree(element.pwcsName);
    EXPECT_EQ(elements->Next(1, &element, nullptr), S_FALSE);
}

// Every field that is not a slot comes back as it was, the ones that nothing reads too.
TEST(RecordIo, TheImageIsSavedWholeWithItsSlotsZero) {
    FilledRecords filled;
    filled.records.frame.reserved = 0xCAFE1234;
    for (const TSkinType kind : AllKinds()) {
        const TSkinRecordLayout& layout = *GetSkinRecordLayout(kind);
        SCOPED_TRACE(layout.storage);
        auto* record = static_cast<BYTE*>(filled.records.Record(kind));
        std::vector<BYTE> expected(record, record + layout.size);
        for (const TSkinField& field : layout)
            if (field.kind == skinFieldBitmap) {
                EXPECT_NE(SkinSlotAt(record, field)->value, 0u);
                std::memset(expected.data() + field.slotOffset, 0, 4);
            }
        OpenFile open;
        ASSERT_EQ(open.access.Save(kind, open.root.Get(), record), 1);
        tavix::ComPtr<IStorage> storage;
        tavix::ComPtr<IStream> data;
        ASSERT_EQ(open.access.OpenSubStg(open.root.Get(), layout.storage, storage.Put()), 1);
        ASSERT_EQ(open.access.OpenStm(storage.Get(), "Data", data.Put()), 1);
        std::vector<BYTE> found(layout.size + 1);
        ULONG got = 0;
        ASSERT_EQ(SUCCEEDED(data->Read(found.data(), layout.size + 1, &got)), true);
        found.resize(got);
        EXPECT_EQ(found, expected);
    }
}

TEST(RecordIo, TheReservedWordHasNoEffectAtLoad) {
    RecordSet records;
    OpenFile open;
    records.frame.reserved = 0xFFFFFFFF;
    ASSERT_EQ(open.access.Save(skinFrame, open.root.Get(), &records.frame), 1);
    CTavixSkinFace face;
    ASSERT_EQ(tavix::LoadRecord(open.root.Get(), skinFrame, &face, 16), 1);
    for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) {
        EXPECT_EQ(face.GetSize(id), 0u) << id;
        if (id > CLR_TEXT_DISABLED) {
            EXPECT_EQ(face.GetColor(id), 0u) << id;
        }
    }
}

TEST(RecordIo, AStreamOfAnEarlierSaveStaysAndIsRead) {
    FilledRecords filled;
    OpenFile open;
    ASSERT_EQ(open.access.Save(skinMenu, open.root.Get(), &filled.records.menu), 1);
    filled.records.menu.bitmaps[1].Set(nullptr);
    ASSERT_EQ(open.access.Save(skinMenu, open.root.Get(), &filled.records.menu), 1);
    CTavixSkinFace face;
    ASSERT_EQ(tavix::LoadRecord(open.root.Get(), skinMenu, &face, 16), 1);
    EXPECT_EQ(PixelOf(face.GetBmp(BMP_MENU_RADIO)), TestSkin::ColourOfBitmap(BMP_MENU_RADIO));
}

TEST(RecordIo, AShortDataStreamGivesZeros) {
    OpenFile open;
    const DWORD three[] = {0x112233, 0x445566, 77};
    open.Put("Global", "Data", three, 10);
    CTavixSkinFace face;
    face.SetSize(SZ_MIN_TRACK_Y, 5);
    ASSERT_EQ(tavix::LoadRecord(open.root.Get(), skinGlobal, &face, 16), 1);
    EXPECT_EQ(face.GetColor(CLR_TRANSPARENT), 0x112233u);
    EXPECT_EQ(face.GetColor(CLR_HIGHLIGHT), 0x445566u);
    EXPECT_EQ(face.GetSize(SZ_MIN_TRACK_X), 77u);
    EXPECT_EQ(face.GetSize(SZ_MIN_TRACK_Y), 0u);
}

TEST(RecordIo, ALongDataStreamIsReadUpToTheRecordsSize) {
    OpenFile open;
    std::vector<BYTE> bytes(100000, 0x5A);
    open.Put("Global", "Data", bytes.data(), static_cast<DWORD>(bytes.size()));
    CTavixSkinFace face;
    ASSERT_EQ(tavix::LoadRecord(open.root.Get(), skinGlobal, &face, 16), 1);
    EXPECT_EQ(face.GetSize(SZ_MIN_TRACK_Y), 0x5A5A5A5Au);
    EXPECT_EQ(face.GetSize(SZ_FRAME_BUTTONS), 0u);
}

TEST(RecordIo, NamesOfThirtyOneCharactersAreLoadedAndLongerOnesAreNot) {
    const auto bitmap = MakeBitmap(2, 2, RGB(9, 8, 7));
    const TSkinField& check = GetSkinRecordLayout(skinMenu)->fields[7];
    const TSkinField& radio = GetSkinRecordLayout(skinMenu)->fields[8];
    ASSERT_EQ(check.id, static_cast<DWORD>(BMP_MENU_CHECK));
    RecordSet records;
    records.SetBitmap(skinMenu, check, std::string(31, 'x'), bitmap.get());
    records.SetBitmap(skinMenu, radio, std::string(32, 'y'), bitmap.get());
    OpenFile open;
    ASSERT_EQ(open.access.Save(skinMenu, open.root.Get(), &records.menu), 1);
    CTavixSkinFace face;
    ASSERT_EQ(tavix::LoadRecord(open.root.Get(), skinMenu, &face, 16), 1);
    EXPECT_EQ(PixelOf(face.GetBmp(BMP_MENU_CHECK)), RGB(9, 8, 7));
    EXPECT_EQ(face.GetBmp(BMP_MENU_RADIO), face.GetBmp(BMP_MENU_CHECK));  // carried over: no such stream

    // A full field before numbers: what follows is not taken for a part of the name.
    tavix::ComPtr<IStorage> storage;
    ASSERT_EQ(open.access.OpenSubStg(open.root.Get(), "Menu", storage.Put()), 1);
    EXPECT_FALSE(HasStream(storage.Get(), std::wstring(32, L'y').c_str()));
    EXPECT_FALSE(HasStream(storage.Get(), std::wstring(31, L'y').c_str()));
}

TEST(RecordIo, TwoFieldsOfOneNameLoadTwoObjects) {
    const auto bitmap = MakeBitmap(2, 2, RGB(9, 8, 7));
    RecordSet records;
    for (const TSkinField& field : *GetSkinRecordLayout(skinMenu))
        if (field.kind == skinFieldBitmap) records.SetBitmap(skinMenu, field, "same", bitmap.get());
    OpenFile open;
    ASSERT_EQ(open.access.Save(skinMenu, open.root.Get(), &records.menu), 1);
    CTavixSkinFace face;
    ASSERT_EQ(tavix::LoadRecord(open.root.Get(), skinMenu, &face, 16), 1);
    EXPECT_NE(face.GetBmp(BMP_MENU_CHECK), face.GetBmp(BMP_MENU_RADIO));
    EXPECT_EQ(PixelOf(face.GetBmp(BMP_MENU_CHECK)), RGB(9, 8, 7));
    EXPECT_EQ(PixelOf(face.GetBmp(BMP_MENU_RADIO)), RGB(9, 8, 7));
}

TEST(RecordIo, LoadedBitmapsAreSkinBitmaps) {
    TestSkin skin;
    CTavixSkinFace face;
    face.LoadSkin(skin.Write());
    for (DWORD id = 0; id <= BMP_DOCK_31; ++id) {
        if (id == 20 || id == 78) continue;
        ASSERT_NE(face.GetBmp(id), nullptr) << id;
        EXPECT_TRUE(face.GetBmp(id)->IsKindOf(&tavix::CSkinBitmap::classCSkinBitmap)) << id;
    }
}

TEST(BitmapSlot, HoldsABitmapInFourBytes) {
    const auto bitmap = MakeBitmap(2, 2, RGB(1, 2, 3));
    TSkinBitmapSlot slot{};
    EXPECT_EQ(slot.Handle(), nullptr);
    slot.Set(bitmap.get());
    EXPECT_NE(slot.value, 0u);
    EXPECT_EQ(slot.Handle(), static_cast<HBITMAP>(*bitmap));
    slot.Set(nullptr);
    EXPECT_EQ(slot.value, 0u);
    const CBitmap without;
    slot.Set(&without);
    EXPECT_EQ(slot.value, 0u);
#ifndef _WIN64
    slot.value = reinterpret_cast<DWORD>(bitmap.get());  // as a tool of 32 bits may fill it
    EXPECT_EQ(slot.Handle(), static_cast<HBITMAP>(*bitmap));
#endif
}

}  // namespace
}  // namespace tavix_test
