#include "skindata/record_io.h"

#include <cstddef>
#include <cstring>
#include <string_view>

#include "skindata/com_ptr.h"
#include "skindata/elements.h"
#include "skindata/record_tables.h"

namespace tavix {
namespace {

// A record image of any kind. Zero from the start, so that a short stream gives zeros.
struct RecordBuffer {
    alignas(DWORD) char bytes[kLargestRecord] = {};
};

// A field that fills all its bytes has no terminator and ends with them.
std::string_view NameIn(const void* record, const TSkinField& field) {
    const char* text = static_cast<const char*>(record) + field.offset;
    return {text, ::strnlen(text, sizeof(TSkinName))};
}

template <class Value>
Value ReadAt(const void* record, DWORD offset) {
    Value value;
    std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof value);
    return value;
}

struct RecordStreams {
    ComPtr<IStorage> storage;
    ComPtr<IStream> data;

    bool Open(IStorage* root, const TSkinRecordLayout& layout) {
        return OpenStorageElement(root, layout.storage, storage.Put()) &&
               OpenStreamElement(storage.Get(), kDataStream, data.Put());
    }
};

void LoadNumbers(const void* record, const TSkinRecordLayout& layout, CTavixSkinFace& face) {
    for (const TSkinField& field : layout) {
        switch (field.kind) {
            case skinFieldColour:
                face.SetColor(field.id, ReadAt<COLORREF>(record, field.offset));
                break;
            case skinFieldSize:
                face.SetSize(field.id, ReadAt<DWORD>(record, field.offset));
                break;
            case skinFieldRect:
                face.SetSize(field.id, PackRect(ReadAt<RECT>(record, field.offset)));
                break;
            case skinFieldBitmap:
                break;
        }
    }
}

void LoadBitmaps(IStorage* storage, const void* record, const TSkinRecordLayout& layout, CTavixSkinFace& face,
                 TSkinFieldSet absentSet) {
    // Changed by a successful load only: that is what carries a bitmap over to the next id.
    CBitmap* running = nullptr;
    for (const TSkinField& field : layout) {
        if (field.kind != skinFieldBitmap || field.set == absentSet) continue;
        LoadBitmapElement(storage, NameIn(record, field), running);
        face.SetBmp(field.id, running);
    }
}

}  // namespace

int LoadRecord(IStorage* root, TSkinType kind, CTavixSkinFace* face, int scrollBarWidth) {
    const TSkinRecordLayout* layout = GetSkinRecordLayout(kind);
    if (!root || !layout || !face) return 0;
    RecordStreams streams;
    if (!streams.Open(root, *layout)) return 0;

    RecordBuffer record;
    void* buffer = record.bytes;
    DWORD size = layout->size;
    ReadStream(streams.data.Get(), &buffer, &size);
    streams.data.Reset();

    LoadNumbers(record.bytes, *layout, *face);
    LoadBitmaps(streams.storage.Get(), record.bytes, *layout, *face,
                scrollBarWidth <= kWidestSmallScrollBar ? skinSetLarge : skinSetSmall);
    return 1;
}

int SaveRecord(IStorage* root, TSkinType kind, const void* record) {
    const TSkinRecordLayout* layout = GetSkinRecordLayout(kind);
    if (!root || !layout || !record) return 0;
    RecordStreams streams;
    if (!streams.Open(root, *layout)) return 0;

    // What a slot holds means nothing outside this process: zeros keep equal skins equal files.
    RecordBuffer image;
    std::memcpy(image.bytes, record, layout->size);
    for (const TSkinField& field : *layout)
        if (field.kind == skinFieldBitmap) SkinSlotAt(image.bytes, field)->value = 0;
    WriteStream(streams.data.Get(), image.bytes, layout->size);
    streams.data.Reset();

    for (const TSkinField& field : *layout) {
        if (field.kind != skinFieldBitmap) continue;
        const auto slot = ReadAt<TSkinBitmapSlot>(record, field.slotOffset);
        if (slot.value) WriteBitmapElement(streams.storage.Get(), NameIn(record, field), slot.Handle());
    }
    return 1;
}

}  // namespace tavix
