/*
 * What each field of a record sets: one constant table a record, which the loader and the
 * saver of skin files follow too. An authoring tool finds here where a value's number, name or
 * slot stands in a record.
 */
#pragma once

#include "tavixskin/skin_records.h"
#include "tavixskin/skin_storage.h"

enum TSkinFieldKind {
    skinFieldColour,  // 4 bytes: the colour `id`
    skinFieldSize,    // 4 bytes: the size `id`
    skinFieldRect,    // 16 bytes, left, top, right, bottom: packed into the size `id`
    skinFieldBitmap,  // 32 bytes: the name of the stream of the bitmap `id`
};

/* Of which set of bitmaps a field is. Only the scroll bar record has two sets. */
enum TSkinFieldSet {
    skinSetBoth,
    skinSetSmall,  // loaded if vertical scroll bars are at most 16 pixels wide
    skinSetLarge,  // loaded if they are wider
};

struct TSkinField {
    TSkinFieldKind kind;
    TSkinFieldSet set;
    DWORD id;          // of the bitmap, colour or size, see value_ids.h
    DWORD offset;      // in the record, of the value or the name
    DWORD slotOffset;  // in the record, of a bitmap's TSkinBitmapSlot; 0 for other kinds
};

struct TSkinRecordLayout {
    TSkinType kind;
    const char* storage;  // the record's storage in the file
    DWORD size;           // of the record, in bytes
    const TSkinField* fields;
    DWORD fieldCount;

    constexpr const TSkinField* begin() const { return fields; }
    constexpr const TSkinField* end() const { return fields + fieldCount; }
};

enum { TAVIX_RECORD_COUNT = 13 };

/*
 * The table of a record; null for a number that is no kind of record. The fields stand in the
 * order in which they are loaded: a bitmap name without a usable stream gives its id the
 * bitmap of the name before it, within a set.
 */
TAVIX_API const TSkinRecordLayout* GetSkinRecordLayout(TSkinType kind);

/* The name, the slot and the number of a field in a record image. */
inline char* SkinNameAt(void* record, const TSkinField& field) {
    return static_cast<char*>(record) + field.offset;
}
inline TSkinBitmapSlot* SkinSlotAt(void* record, const TSkinField& field) {
    return reinterpret_cast<TSkinBitmapSlot*>(static_cast<char*>(record) + field.slotOffset);
}
inline DWORD* SkinNumberAt(void* record, const TSkinField& field) {
    return reinterpret_cast<DWORD*>(static_cast<char*>(record) + field.offset);
}
inline RECT* SkinRectAt(void* record, const TSkinField& field) {
    return reinterpret_cast<RECT*>(static_cast<char*>(record) + field.offset);
}
