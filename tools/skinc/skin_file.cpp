#include "skin_file.h"

#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <cstring>

#include "tavixskin/compound_check.h"
#include "tool_error.h"

namespace skinc {

namespace {

constexpr DWORD kReadMode = STGM_READ | STGM_SHARE_EXCLUSIVE;

template <class Interface>
class Open {
public:
    Open() = default;
    ~Open() {
        if (m_pointer) m_pointer->Release();
    }
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;
    Interface** Out() { return &m_pointer; }
    Interface* Get() const { return m_pointer; }
    Interface* operator->() const { return m_pointer; }
    explicit operator bool() const { return m_pointer != nullptr; }

private:
    Interface* m_pointer = nullptr;
};

std::wstring Widen(const std::string& text) {
    std::wstring wide(text.size() + 1, L'\0');
    const int length =
        ::MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
    wide.resize(length > 0 ? static_cast<std::size_t>(length) - 1 : 0);
    return wide;
}

// Empty if the stream is missing, empty, or larger than any skin's.
std::vector<std::byte> ReadStream(IStorage* parent, const std::wstring& name) {
    constexpr ULONGLONG kMaxStream = 1u << 28;
    Open<IStream> stream;
    if (name.empty() || FAILED(parent->OpenStream(name.c_str(), nullptr, kReadMode, 0, stream.Out())))
        return {};
    STATSTG facts{};
    if (FAILED(stream->Stat(&facts, STATFLAG_NONAME)) || facts.cbSize.QuadPart > kMaxStream) return {};
    std::vector<std::byte> bytes(static_cast<std::size_t>(facts.cbSize.QuadPart));
    ULONG read = 0;
    if (FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read))) return {};
    bytes.resize(read);
    return bytes;
}

void ReadImageFacts(StoredBitmap& bitmap) {
    BITMAPFILEHEADER file;
    BITMAPINFOHEADER info;
    if (bitmap.image.size() < sizeof file + sizeof info) return;
    std::memcpy(&file, bitmap.image.data(), sizeof file);
    std::memcpy(&info, bitmap.image.data() + sizeof file, sizeof info);
    if (file.bfType != 0x4D42 || info.biSize < sizeof info || info.biWidth <= 0 || info.biHeight == 0) return;
    bitmap.readable = true;
    bitmap.width = info.biWidth;
    bitmap.height = info.biHeight < 0 ? -info.biHeight : info.biHeight;
    bitmap.depth = info.biBitCount;
}

}  // namespace

RECT PackedAndUnpacked(const RECT& rect) {
    const auto byte = [](LONG value) { return static_cast<LONG>(static_cast<signed char>(value)); };
    return {byte(rect.left), byte(rect.top), byte(rect.right), byte(rect.bottom)};
}

SkinFile::SkinFile(const std::filesystem::path& file) : m_file(file.string()) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        throw ToolError(m_file, "does not exist; expected a skin file");
    Open<IStorage> root;
    if (!tavix::IsSoundCompoundFile(file.c_str()) ||
        FAILED(::StgOpenStorage(file.c_str(), nullptr, kReadMode, nullptr, 0, root.Out())))
        throw ToolError(
            m_file, "is no skin file, damaged, or in use; expected a compound file made by 'skinc build'");
    Open<IStream> header;
    if (FAILED(root->OpenStream(L"SkinInfo", nullptr, kReadMode, 0, header.Out())))
        throw ToolError(m_file, "has no stream SkinInfo; expected a skin file made by 'skinc build'");
    for (const TSkinRecordLayout* layout : AllLayouts()) ReadRecord(root.Get(), *layout);
    Carry();
}

void SkinFile::ReadRecord(IStorage* root, const TSkinRecordLayout& layout) {
    Open<IStorage> storage;
    const std::wstring name = Widen(layout.storage);
    root->OpenStorage(name.c_str(), nullptr, kReadMode, nullptr, 0, storage.Out());
    const std::vector<std::byte> data =
        storage ? ReadStream(storage.Get(), L"Data") : std::vector<std::byte>();
    if (data.size() != layout.size) m_broken.emplace_back(layout.storage);
    std::vector<std::byte>& record = m_records.Bytes(layout.kind);
    std::copy_n(data.begin(), std::min(data.size(), record.size()), record.begin());

    for (const TSkinField& field : layout) {
        if (field.kind != skinFieldBitmap) continue;
        StoredBitmap bitmap;
        bitmap.layout = &layout;
        bitmap.field = &field;
        const char* text = SkinNameAt(record.data(), field);
        bitmap.stream.assign(text, strnlen(text, sizeof(TSkinName)));
        if (storage) bitmap.image = ReadStream(storage.Get(), Widen(bitmap.stream));
        ReadImageFacts(bitmap);
        m_bitmaps.push_back(std::move(bitmap));
    }
}

// Follows the order of loading: a field without an image takes what the field before it has.
void SkinFile::Carry() {
    for (const TSkinFieldSet set : {skinSetSmall, skinSetLarge}) {
        const StoredBitmap* last = nullptr;
        for (StoredBitmap& bitmap : m_bitmaps) {
            if (bitmap.field == &bitmap.layout->fields[0] || (last && last->layout != bitmap.layout))
                last = nullptr;
            if (bitmap.field->set != skinSetBoth && bitmap.field->set != set) continue;
            if (!bitmap.image.empty()) last = &bitmap;
            bitmap.effective = last;
        }
    }
}

const StoredBitmap* SkinFile::Bitmap(DWORD id, TSkinFieldSet set) const {
    for (const StoredBitmap& bitmap : m_bitmaps)
        if (bitmap.field->id == id && (bitmap.field->set == skinSetBoth || bitmap.field->set == set))
            return &bitmap;
    return nullptr;
}

DWORD SkinFile::Number(const FieldPlace& place) {
    return *SkinNumberAt(m_records.Image(place.layout->kind), *place.field);
}

RECT SkinFile::Rectangle(const FieldPlace& place) {
    return *SkinRectAt(m_records.Image(place.layout->kind), *place.field);
}

}  // namespace skinc
