/* Calls CSkinStorage's private operations, and an open storage for the tests to work in. */
#pragma once

#include <gtest/gtest.h>

#include "skindata/com_ptr.h"
#include "support/test_skin.h"
#include "tavixskin/skin_face.h"

struct CSkinStorageTestAccess {
    using Loader = int (CSkinStorage::*)(IStorage*);
    using Saver = int (CSkinStorage::*)(IStorage*, void*);

    CSkinStorage storage;

    int OpenRootStg(const char* path, IStorage** out) { return storage.OpenRootStg(path, out); }
    int OpenSubStg(IStorage* parent, const char* name, IStorage** out) {
        return storage.OpenSubStg(parent, name, out);
    }
    int OpenStm(IStorage* parent, const char* name, IStream** out) {
        return storage.OpenStm(parent, name, out);
    }
    int ReadFromStm(IStream* stream, void** buffer, DWORD* read) {
        return storage.ReadFromStm(stream, buffer, read);
    }
    int WriteToStm(IStream* stream, void* data, DWORD size) { return storage.WriteToStm(stream, data, size); }
    int LoadBmpFromStm(IStorage* parent, const char* name, CBitmap*& out) {
        return storage.LoadBmpFromStm(parent, name, out);
    }
    int WriteBmpToStm(IStorage* parent, const char* name, CBitmap* bitmap) {
        return storage.WriteBmpToStm(parent, name, bitmap);
    }
    DWORD RectToDword(const CRect& rect) { return storage.RectToDword(rect); }

    // By the number of the kind.
    static constexpr Loader kLoaders[TAVIX_RECORD_COUNT] = {
        &CSkinStorage::LoadSkinBtnInfo,         &CSkinStorage::LoadSkinFrameInfo,
        &CSkinStorage::LoadSkinDialogInfo,      &CSkinStorage::LoadSkinToolBarInfo,
        &CSkinStorage::LoadSkinComboboxInfo,    &CSkinStorage::LoadSkinTabCtrlInfo,
        &CSkinStorage::LoadSkinHeadCtrlInfo,    &CSkinStorage::LoadSkinEditCtrlInfo,
        &CSkinStorage::LoadSkinListBoxCtrlInfo, &CSkinStorage::LoadSkinScrollBarInfo,
        &CSkinStorage::LoadSkinGlobalInfo,      &CSkinStorage::LoadSkinMenuInfo,
        &CSkinStorage::LoadSkinDockBarInfo,
    };
    static constexpr Saver kSavers[TAVIX_RECORD_COUNT] = {
        &CSkinStorage::SaveSkinBtnInfo,      &CSkinStorage::SaveSkinFrameInfo,
        &CSkinStorage::SaveSkinDialogInfo,   &CSkinStorage::SaveSkinToolBarInfo,
        &CSkinStorage::SaveSkinComboboxInfo, &CSkinStorage::SaveSkinTabCtrlInfo,
        &CSkinStorage::SaveSkinHeadCtrlInfo, &CSkinStorage::SaveSkinEditlInfo,
        &CSkinStorage::SaveSkinListBoxInfo,  &CSkinStorage::SaveSkinScrollBarInfo,
        &CSkinStorage::SaveSkinGlobalInfo,   &CSkinStorage::SaveSkinMenuInfo,
        &CSkinStorage::SaveSkinDockBarInfo,
    };
    int Load(TSkinType kind, IStorage* root) { return (storage.*kLoaders[kind])(root); }
    int Save(TSkinType kind, IStorage* root, void* record) { return (storage.*kSavers[kind])(root, record); }
};

namespace tavix_test {

/* A new, empty compound file, open as the library opens it. */
struct OpenFile {
    TempFile file;
    CSkinStorageTestAccess access;
    tavix::ComPtr<IStorage> root;

    OpenFile() { EXPECT_EQ(access.OpenRootStg(file.Path(), root.Put()), 1); }

    /* Replaces a stream, in a storage below the root or, with a null name, in the root. */
    void Put(const char* storage, const char* stream, const void* data, DWORD size) {
        tavix::ComPtr<IStorage> child;
        if (storage) {
            ASSERT_EQ(access.OpenSubStg(root.Get(), storage, child.Put()), 1);
        }
        tavix::ComPtr<IStream> target;
        ASSERT_EQ(access.OpenStm(storage ? child.Get() : root.Get(), stream, target.Put()), 1);
        ASSERT_EQ(access.WriteToStm(target.Get(), const_cast<void*>(data), size), 1);
    }
};

inline constexpr DWORD kElementMode = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

/* True if the element is there; creates nothing. */
inline bool HasStream(IStorage* parent, const wchar_t* name) {
    tavix::ComPtr<IStream> stream;
    return SUCCEEDED(parent->OpenStream(name, nullptr, kElementMode, 0, stream.Put()));
}

/* All kinds of record, for loops. */
inline std::array<TSkinType, TAVIX_RECORD_COUNT> AllKinds() {
    std::array<TSkinType, TAVIX_RECORD_COUNT> kinds{};
    for (int i = 0; i < TAVIX_RECORD_COUNT; ++i) kinds[i] = static_cast<TSkinType>(i);
    return kinds;
}

/* The colour of a bitmap's pixel; CLR_INVALID without one. */
inline COLORREF PixelOf(CBitmap* bitmap, int x = 0, int y = 0) {
    if (!bitmap || !bitmap->GetSafeHandle()) return CLR_INVALID;
    const CMemoryDC dc;
    const SelectionGuard selected(dc, bitmap->GetSafeHandle());
    return ::GetPixel(dc, x, y);
}

}  // namespace tavix_test
