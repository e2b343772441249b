#include "skindata/elements.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <iterator>
#include <memory>
#include <new>
#include <span>

#include "draw/dib_image.h"
#include "draw/skin_bitmap.h"
#include "skindata/com_ptr.h"
#include "skindata/compound_check.h"
#include "skindata/heap_block.h"

namespace tavix {
namespace {

constexpr DWORD kOpenMode = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
static_assert(kOpenMode == 0x12);

// An element's name in wide characters; empty if the container can't hold it. The platform's
// own layers differ in what they let through, so the published rules are applied here.
class ElementName {
public:
    explicit ElementName(std::string_view name) {
        if (name.empty()) return;
        const int length = ::MultiByteToWideChar(CP_ACP, 0, name.data(), static_cast<int>(name.size()),
                                                 m_text, static_cast<int>(kLongest));
        m_text[length] = 0;
        if (std::wcspbrk(m_text, L"\\/:!")) m_text[0] = 0;
    }
    explicit operator bool() const { return m_text[0] != 0; }
    const wchar_t* Text() const { return m_text; }

private:
    static constexpr std::size_t kLongest = 31;
    wchar_t m_text[kLongest + 1] = {};
};

// A path in wide characters, null if there is no memory for it.
std::unique_ptr<wchar_t[]> WidePath(const char* path) {
    const int length = ::MultiByteToWideChar(CP_ACP, 0, path, -1, nullptr, 0);
    if (length <= 0) return nullptr;
    std::unique_ptr<wchar_t[]> wide(new (std::nothrow) wchar_t[static_cast<std::size_t>(length)]);
    if (wide) ::MultiByteToWideChar(CP_ACP, 0, path, -1, wide.get(), length);
    return wide;
}

template <class Interface>
void ReleaseFormer(Interface** out) {
    if (*out) (*out)->Release();
    *out = nullptr;
}

template <class Interface>
int Opened(HRESULT result, Interface* const* out) {
    return SUCCEEDED(result) && *out ? 1 : 0;
}

bool IsReadOnly(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

// As the platform opens a compound file, with two things more certain. A read-only file is
// refused also to a process whose rights would let it through, so that its attribute is always
// cleared. A damaged file is refused before the platform's layer, which may never come back
// from one, walks into it.
HRESULT OpenExistingRoot(const char* path, const wchar_t* wide, IStorage** out) {
    const DWORD attributes = ::GetFileAttributesA(path);
    if (IsReadOnly(attributes)) return STG_E_ACCESSDENIED;
    if (attributes != INVALID_FILE_ATTRIBUTES && !IsSoundCompoundFile(wide)) return STG_E_INVALIDHEADER;
    return ::StgOpenStorage(wide, nullptr, kOpenMode, nullptr, 0, out);
}

}  // namespace

int OpenRoot(const char* path, IStorage** out) {
    ReleaseFormer(out);
    const std::unique_ptr<wchar_t[]> wide = WidePath(path);
    if (!wide) return 0;

    HRESULT result = OpenExistingRoot(path, wide.get(), out);
    if (result == STG_E_FILENOTFOUND)
        result = ::StgCreateDocfile(wide.get(), kOpenMode | STGM_CREATE, 0, out);
    if (result == STG_E_ACCESSDENIED) {
        const DWORD attributes = ::GetFileAttributesA(path);
        if (attributes != INVALID_FILE_ATTRIBUTES)
            ::SetFileAttributesA(path, attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
        result = OpenExistingRoot(path, wide.get(), out);
    }
    return Opened(result, out);
}

int OpenStorageElement(IStorage* parent, std::string_view name, IStorage** out) {
    ReleaseFormer(out);
    const ElementName wide(name);
    if (!parent || !wide) return 0;
    if (Opened(parent->OpenStorage(wide.Text(), nullptr, kOpenMode, nullptr, 0, out), out)) return 1;
    return Opened(parent->CreateStorage(wide.Text(), kOpenMode, 0, 0, out), out);
}

int OpenStreamElement(IStorage* parent, std::string_view name, IStream** out) {
    ReleaseFormer(out);
    const ElementName wide(name);
    if (!parent || !wide) return 0;
    if (Opened(parent->OpenStream(wide.Text(), nullptr, kOpenMode, 0, out), out)) return 1;
    return Opened(parent->CreateStream(wide.Text(), kOpenMode, 0, 0, out), out);
}

int ReadStream(IStream* stream, void** buffer, DWORD* bytesRead) {
    const DWORD capacity = *buffer ? *bytesRead : kLargestStream;
    *bytesRead = 0;
    STATSTG facts{};
    if (!stream || FAILED(stream->Stat(&facts, STATFLAG_NONAME))) return 0;
    DWORD size = facts.cbSize.LowPart;
    if (size == 0) return 0;

    HeapBlock block;
    void* target = *buffer;
    if (target) {
        size = std::min(size, capacity);
    } else {
        if (size > capacity) return 0;
        *block.Put() = ::HeapAlloc(::GetProcessHeap(), 0, size);
        target = block.Get();
        if (!target) return 0;
    }
    if (FAILED(stream->Read(target, size, bytesRead))) {
        *bytesRead = 0;
        return 0;
    }
    *bytesRead = std::min(*bytesRead, size);
    if (block.Get()) *buffer = block.Release();
    return 1;
}

int WriteStream(IStream* stream, const void* data, DWORD size) {
    if (!stream) return 0;
    ULARGE_INTEGER length{};
    length.LowPart = size;
    stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr);
    stream->SetSize(length);
    return SUCCEEDED(stream->Write(data, size, nullptr)) ? 1 : 0;
}

int LoadBitmapElement(IStorage* parent, std::string_view name, CBitmap*& out) {
    ComPtr<IStream> stream;
    if (!OpenStreamElement(parent, name, stream.Put())) return 0;
    HeapBlock image;
    DWORD size = 0;
    if (!ReadStream(stream.Get(), image.Put(), &size)) return 0;

    const CClientDC screen(nullptr);
    auto bitmap = std::make_unique<CSkinBitmap>();
    bitmap->Attach(DibImageToBitmap(screen, {static_cast<const std::byte*>(image.Get()), size}));
    out = bitmap.release();
    return 1;
}

int WriteBitmapElement(IStorage* parent, std::string_view name, HBITMAP bitmap) {
    ComPtr<IStream> stream;
    if (!OpenStreamElement(parent, name, stream.Put())) return 0;
    HeapBlock image;
    DWORD size = 0;
    {
        const CClientDC screen(nullptr);
        if (!BitmapToDibImage(screen, bitmap, image.Put(), &size)) return 0;
    }
    return WriteStream(stream.Get(), image.Get(), size);
}

}  // namespace tavix
