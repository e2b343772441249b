#include "support/compound_platform.h"

#include <cstdio>
#include <mutex>

namespace tavix::test {
namespace {

constexpr DWORD kMode = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

/* An interface that is released at the end. */
template <class T>
struct Held {
    T* pointer = nullptr;
    Held() = default;
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() {
        if (pointer) pointer->Release();
    }
    T* operator->() const { return pointer; }
};

struct Name {
    WCHAR* text = nullptr;
    ~Name() { CoTaskMemFree(text); }
};

/* Calls `visit(element)` for what is in the storage, in the platform's order. */
bool ForEachElement(IStorage* storage, const std::function<bool(const STATSTG&)>& visit) {
    Held<IEnumSTATSTG> elements;
    if (FAILED(storage->EnumElements(0, nullptr, 0, &elements.pointer))) return false;
    for (;;) {
        STATSTG element = {};
        ULONG got = 0;
        const HRESULT result = elements->Next(1, &element, &got);
        if (FAILED(result)) return false;
        if (got == 0) return true;
        const Name name{element.pwcsName};
        if (!visit(element)) return false;
    }
}

bool ReadStream(IStream* stream, std::vector<std::byte>& bytes) {
    STATSTG about = {};
    if (FAILED(stream->Stat(&about, STATFLAG_NONAME))) return false;
    // No test makes a stream that long.
    if (about.cbSize.QuadPart > 100'000'000) return false;
    bytes.resize(about.cbSize.LowPart);
    ULONG got = 0;
    if (FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &got))) return false;
    return got == bytes.size();
}

bool ReadAll(IStorage* storage, const std::u16string& path, CompoundContents& contents) {
    return ForEachElement(storage, [&](const STATSTG& element) {
        const std::u16string full = path + reinterpret_cast<const char16_t*>(element.pwcsName);
        HRESULT result;
        if (element.type == STGTY_STREAM) {
            Held<IStream> stream;
            result = storage->OpenStream(element.pwcsName, nullptr, kMode, 0, &stream.pointer);
            if (SUCCEEDED(result)) return ReadStream(stream.pointer, contents[full]);
        } else {
            Held<IStorage> child;
            result = storage->OpenStorage(element.pwcsName, nullptr, kMode, nullptr, 0, &child.pointer);
            if (SUCCEEDED(result)) {
                contents[full + u'/'];
                return ReadAll(child.pointer, full + u'/', contents);
            }
        }
        // In a tree out of order the enumeration meets what a look-up misses.
        return result == STG_E_FILENOTFOUND;
    });
}

bool WriteNew(IStorage* parent, const WCHAR* name, const std::vector<std::byte>& bytes) {
    Held<IStream> stream;
    ULONG written = 0;
    if (FAILED(parent->CreateStream(name, kMode, 0, 0, &stream.pointer))) return false;
    if (bytes.empty()) return true;
    const ULONG size = static_cast<ULONG>(bytes.size());
    return SUCCEEDED(stream->Write(bytes.data(), size, &written)) && written == size;
}

bool WriteAll(IStorage* storage, const std::vector<CompoundElement>& content) {
    for (const CompoundElement& element : content) {
        const WCHAR* name = reinterpret_cast<const WCHAR*>(element.name.c_str());
        if (!element.is_storage) {
            if (!WriteNew(storage, name, element.data)) return false;
            continue;
        }
        Held<IStorage> child;
        if (FAILED(storage->CreateStorage(name, kMode, 0, 0, &child.pointer))) return false;
        if (!WriteAll(child.pointer, element.children)) return false;
    }
    return true;
}

std::vector<std::byte> Filled(size_t size) { return std::vector<std::byte>(size, std::byte{0x5A}); }

void RewriteAll(IStorage* storage, unsigned round) {
    unsigned count = round;
    ForEachElement(storage, [&](const STATSTG& element) {
        if (element.type != STGTY_STREAM) {
            Held<IStorage> child;
            if (SUCCEEDED(
                    storage->OpenStorage(element.pwcsName, nullptr, kMode, nullptr, 0, &child.pointer))) {
                RewriteAll(child.pointer, round + count);
            }
            return true;
        }
        Held<IStream> stream;
        if (FAILED(storage->OpenStream(element.pwcsName, nullptr, kMode, 0, &stream.pointer))) return true;
        static constexpr ULONG kSizes[] = {100, 6000, 0, 72, 30000, 4096, 4095};
        const std::vector<std::byte> bytes = Filled(kSizes[count++ % 7]);
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        ULARGE_INTEGER size = {};
        size.QuadPart = bytes.size();
        stream->SetSize(size);
        ULONG written = 0;
        stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
        return true;
    });
}

/* What the watching thread has to know of the work under way. */
struct Watch {
    std::mutex mutex;
    bool active = false;
    std::string what;
    HANDLE worker = nullptr;
    ULONGLONG limit = 0;
    ULONGLONG started = 0;
    ULONGLONG computed = 0;
};

/* The computing time of a thread so far. */
ULONGLONG Milliseconds(HANDLE thread) {
    FILETIME created, ended, kernel, user;
    if (!GetThreadTimes(thread, &created, &ended, &kernel, &user)) return 0;
    const ULONGLONG ticks = (static_cast<ULONGLONG>(kernel.dwHighDateTime) << 32 | kernel.dwLowDateTime) +
                            (static_cast<ULONGLONG>(user.dwHighDateTime) << 32 | user.dwLowDateTime);
    return ticks / 10'000;
}

DWORD WINAPI Watcher(void* parameter) {
    Watch& watch = *static_cast<Watch*>(parameter);
    for (;;) {
        Sleep(50);
        const std::lock_guard lock(watch.mutex);
        if (!watch.active) continue;
        // A busy machine may let the worker wait, which is no fault of the worker's.
        if (Milliseconds(watch.worker) - watch.computed < watch.limit &&
            GetTickCount64() - watch.started < 10 * watch.limit) {
            continue;
        }
        std::fprintf(stderr, "hangs: %s\n", watch.what.c_str());
        std::fflush(stderr);
        TerminateProcess(GetCurrentProcess(), 3);
    }
}

/* Starts watching with the first call; the thread lives as long as the process. */
Watch& TheWatch() {
    static Watch& watch = []() -> Watch& {
        Watch* made = new Watch;
        CloseHandle(CreateThread(nullptr, 0, Watcher, made, 0, nullptr));
        return *made;
    }();
    return watch;
}

}  // namespace

std::wstring TemporaryPath(const wchar_t* name) {
    WCHAR folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    return folder + std::to_wstring(GetCurrentProcessId()) + L"-" + name;
}

bool WriteWholeFile(const std::wstring& path, std::span<const std::byte> bytes) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const BOOL done = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    return done && written == bytes.size();
}

std::vector<std::byte> ReadWholeFile(const std::wstring& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::vector<std::byte> bytes(GetFileSize(file, nullptr));
    DWORD got = 0;
    if (!ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr)) got = 0;
    CloseHandle(file);
    bytes.resize(got);
    return bytes;
}

bool PlatformWrites(const std::wstring& path, uint32_t sector_size,
                    const std::vector<CompoundElement>& content) {
    STGOPTIONS options = {};
    options.usVersion = 1;
    options.ulSectorSize = sector_size;
    Held<IStorage> root;
    void* made = nullptr;
    if (FAILED(StgCreateStorageEx(path.c_str(), kMode | STGM_CREATE, STGFMT_DOCFILE, 0, &options, nullptr,
                                  IID_IStorage, &made))) {
        return false;
    }
    root.pointer = static_cast<IStorage*>(made);
    return WriteAll(root.pointer, content);
}

PlatformCompound::PlatformCompound(std::span<const std::byte> bytes) {
    if (FAILED(CreateILockBytesOnHGlobal(nullptr, TRUE, &memory_))) return;
    ULONG written = 0;
    memory_->WriteAt({}, bytes.data(), static_cast<ULONG>(bytes.size()), &written);
}

PlatformCompound::~PlatformCompound() {
    if (memory_) memory_->Release();
}

bool PlatformCompound::Open(IStorage** root) const {
    const HRESULT result = memory_ ? StgOpenStorageOnILockBytes(memory_, nullptr, kMode, nullptr, 0, root)
                                   : StgOpenStorage(path_.c_str(), nullptr, kMode, nullptr, 0, root);
    return SUCCEEDED(result) && *root;
}

bool PlatformCompound::Reads(CompoundContents* contents) const {
    Held<IStorage> root;
    return Open(&root.pointer) && ReadAll(root.pointer, u"", *contents);
}

const char* PlatformCompound::Extends() const {
    CompoundContents before;
    {
        Held<IStorage> root;
        if (!Open(&root.pointer)) return "open";
        if (!ReadAll(root.pointer, u"", before)) return "read";
        if (!WriteNew(root.pointer, L"Missing stream", {})) return "create a stream";
        Held<IStorage> child;
        if (FAILED(root->CreateStorage(L"Missing storage", kMode, 0, 0, &child.pointer)))
            return "create a storage";
        if (!WriteNew(child.pointer, L"Data", {})) return "create a stream in the new storage";
        if (!WriteNew(root.pointer, L"Short", Filled(72))) return "write a short stream";
        if (!WriteNew(child.pointer, L"Long", Filled(9000))) return "write a long stream";
    }
    CompoundContents after;
    if (!Reads(&after)) return "read again";
    // In a tree out of order a new element may come to stand where the enumeration misses it.
    for (const auto& [name, bytes] : before) {
        const auto found = after.find(name);
        if (found != after.end() && found->second != bytes) return "keep the streams that were there";
    }
    return nullptr;
}

void PlatformCompound::Rewrites(unsigned round) const {
    Held<IStorage> root;
    if (Open(&root.pointer)) RewriteAll(root.pointer, round);
}

std::vector<std::byte> PlatformCompound::Bytes() const {
    if (!memory_) return ReadWholeFile(path_);
    STATSTG about = {};
    if (FAILED(memory_->Stat(&about, STATFLAG_NONAME))) return {};
    std::vector<std::byte> bytes(about.cbSize.LowPart);
    ULONG got = 0;
    if (FAILED(memory_->ReadAt({}, bytes.data(), static_cast<ULONG>(bytes.size()), &got))) got = 0;
    bytes.resize(got);
    return bytes;
}

void RunWatched(const std::string& what, DWORD milliseconds, const std::function<void()>& work) {
    Watch& watch = TheWatch();
    HANDLE self = nullptr;
    DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &self, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    {
        const std::lock_guard lock(watch.mutex);
        watch.what = what;
        watch.worker = self;
        watch.limit = milliseconds;
        watch.started = GetTickCount64();
        watch.computed = Milliseconds(self);
        watch.active = true;
    }
    work();
    {
        const std::lock_guard lock(watch.mutex);
        watch.active = false;
    }
    CloseHandle(self);
}

}  // namespace tavix::test
