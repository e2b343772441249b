/* Loading a skin beside reading its streams and making its bitmaps with bare platform calls. */
#include <objbase.h>
#include <objidl.h>

#include <memory>
#include <vector>

#include "benches.h"
#include "skindata/compound_check.h"
#include "tavixskin/skin_face.h"

namespace bench {

namespace {

constexpr DWORD kMode = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

void ReadStream(IStorage* parent, const wchar_t* name, HDC screen, std::vector<HBITMAP>& bitmaps) {
    IStream* stream = nullptr;
    if (FAILED(parent->OpenStream(name, nullptr, kMode, 0, &stream))) return;
    STATSTG facts{};
    stream->Stat(&facts, STATFLAG_DEFAULT);
    ::CoTaskMemFree(facts.pwcsName);
    void* bytes = ::HeapAlloc(::GetProcessHeap(), 0, facts.cbSize.LowPart);
    ULONG read = 0;
    stream->Read(bytes, facts.cbSize.LowPart, &read);
    stream->Release();
    const BYTE* image = static_cast<const BYTE*>(bytes);
    if (read > sizeof(BITMAPFILEHEADER) && image[0] == 'B' && image[1] == 'M') {
        const auto* file = reinterpret_cast<const BITMAPFILEHEADER*>(image);
        const auto* info = reinterpret_cast<const BITMAPINFO*>(image + sizeof(BITMAPFILEHEADER));
        bitmaps.push_back(::CreateDIBitmap(screen, &info->bmiHeader, CBM_INIT, image + file->bfOffBits, info,
                                           DIB_RGB_COLORS));
    }
    ::HeapFree(::GetProcessHeap(), 0, bytes);
}

// Every stream of the file, each storage opened once: no reader can do with less.
void ReadBare(const wchar_t* path) {
    IStorage* root = nullptr;
    if (FAILED(::StgOpenStorage(path, nullptr, kMode, nullptr, 0, &root))) return;
    HDC screen = ::GetDC(nullptr);
    std::vector<HBITMAP> bitmaps;
    IEnumSTATSTG* storages = nullptr;
    root->EnumElements(0, nullptr, 0, &storages);
    STATSTG element{};
    while (storages->Next(1, &element, nullptr) == S_OK) {
        IStorage* storage = nullptr;
        if (element.type == STGTY_STORAGE &&
            SUCCEEDED(root->OpenStorage(element.pwcsName, nullptr, kMode, nullptr, 0, &storage))) {
            IEnumSTATSTG* streams = nullptr;
            storage->EnumElements(0, nullptr, 0, &streams);
            STATSTG stream{};
            while (streams->Next(1, &stream, nullptr) == S_OK) {
                ReadStream(storage, stream.pwcsName, screen, bitmaps);
                ::CoTaskMemFree(stream.pwcsName);
            }
            streams->Release();
            storage->Release();
        }
        ::CoTaskMemFree(element.pwcsName);
    }
    storages->Release();
    ::ReleaseDC(nullptr, screen);
    root->Release();
    for (HBITMAP bitmap : bitmaps) ::DeleteObject(bitmap);
}

}  // namespace

void MeasureLoading(Report& report, const std::string& skin) {
    const std::wstring wide(skin.begin(), skin.end());
    const auto load = [&] {
        auto face = std::make_unique<CTavixSkinFace>();
        face->LoadSkin(skin.c_str());
    };
    const Pair pair = MeasureInTurns(
        load, 1, [&] { ReadBare(wide.c_str()); }, 1, 25);
    report.AtMost("loading the skin, its streams and bitmaps by bare calls", pair, 1.3);
    const Pair check = MeasureInTurns([&] { tavix::IsSoundCompoundFile(wide.c_str()); }, 1, load, 1, 25);
    report.AtMost("checking the container, loading the skin", check, 0.1);
}

}  // namespace bench
