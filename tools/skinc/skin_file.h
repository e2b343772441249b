/* A skin file as it is stored: records and streams, before anything is loaded from them. */
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "records.h"

namespace skinc {

/* One bitmap field of a record and its stream. */
struct StoredBitmap {
    const TSkinRecordLayout* layout;
    const TSkinField* field;
    std::string stream;            // empty if the record names none
    std::vector<std::byte> image;  // empty if the stream is missing or empty
    bool readable = false;         // the image has the headers of a BMP file
    long width = 0;
    long height = 0;
    int depth = 0;
    // What loading gives the field: itself if it has an image, else the last field before it that
    // has one (of its set), else null.
    const StoredBitmap* effective = nullptr;
};

/*
 * Reads a skin file without changing it (the library's own loading may add streams and clears a
 * read-only attribute). Throws ToolError for what is no skin file.
 */
class SkinFile {
public:
    explicit SkinFile(const std::filesystem::path& file);
    SkinFile(const SkinFile&) = delete;
    SkinFile& operator=(const SkinFile&) = delete;

    const std::vector<StoredBitmap>& Bitmaps() const { return m_bitmaps; }
    const StoredBitmap* Bitmap(DWORD id, TSkinFieldSet set) const;
    /* A colour or a size as stored; a rectangle by Rectangle. */
    DWORD Number(const FieldPlace& place);
    RECT Rectangle(const FieldPlace& place);
    /* Records whose storage or "Data" stream is missing or of a wrong size, by storage name. */
    const std::vector<std::string>& BrokenRecords() const { return m_broken; }

private:
    void ReadRecord(struct IStorage* root, const TSkinRecordLayout& layout);
    void Carry();

    std::string m_file;
    Records m_records;
    std::vector<StoredBitmap> m_bitmaps;
    std::vector<std::string> m_broken;
};

/* The rectangle's members as they come back from four signed bytes. */
RECT PackedAndUnpacked(const RECT& rect);

}  // namespace skinc
