/* A record set in which each field can be told from every other. */
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "storage_access.h"

namespace tavix_test {

// A number for each field that no other field has.
inline DWORD Distinct(TSkinType kind, const TSkinField& field) {
    return 0x01000000u * (kind + 1) + field.offset * 0x101u + 7;
}

/* All records with every field set and a bitmap in every slot, no two fields alike. */
struct FilledRecords {
    RecordSet records;
    std::vector<std::unique_ptr<CBitmap>> bitmaps;

    static std::string Name(TSkinType kind, const TSkinField& field) {
        return "n" + std::to_string(kind) + "_" + std::to_string(field.offset);
    }
    // Large and small bitmaps differ in the blue part.
    static COLORREF ColourOf(const TSkinField& field) {
        return TestSkin::ColourOfBitmap(field.id) + (field.set == skinSetLarge ? RGB(0, 0, 0x40) : 0);
    }

    FilledRecords() {
        for (const TSkinType kind : AllKinds()) {
            for (const TSkinField& field : *GetSkinRecordLayout(kind)) {
                void* record = records.Record(kind);
                switch (field.kind) {
                    case skinFieldColour:
                    case skinFieldSize:
                        *SkinNumberAt(record, field) = Distinct(kind, field);
                        break;
                    case skinFieldRect:
                        *SkinRectAt(record, field) = {-3 - kind, 5 + kind, 300 + kind, 0x7F};
                        break;
                    case skinFieldBitmap:
                        bitmaps.push_back(MakeBitmap(3, 2, ColourOf(field)));
                        records.SetBitmap(kind, field, Name(kind, field), bitmaps.back().get());
                        break;
                }
            }
        }
    }
};

}  // namespace tavix_test
