#include "tavixskin/skin_storage.h"

#include <string_view>

#include "skindata/com_ptr.h"
#include "skindata/elements.h"
#include "skindata/record_io.h"
#include "skindata/record_tables.h"

/*
 * The exported class. What it does stands in elements.cpp (the container) and record_io.cpp
 * (the records); here are the order of work and the boundary that no exception crosses.
 */
namespace {

template <class Work>
int Guarded(Work work) noexcept {
    try {
        return work();
    } catch (...) {
        return 0;
    }
}

std::string_view View(const CString& text) {
    return {text.c_str(), static_cast<std::size_t>(text.GetLength())};
}

int LoadItem(IStorage* root, TSkinType kind, CTavixSkinFace* face) noexcept {
    return Guarded([&] { return tavix::LoadRecord(root, kind, face, ::GetSystemMetrics(SM_CXVSCROLL)); });
}

int SaveItem(IStorage* root, TSkinType kind, const void* record) noexcept {
    return Guarded([&] { return tavix::SaveRecord(root, kind, record); });
}

// The record of a kind in the set.
void* RecordOf(const TSkinThemes& themes, TSkinType kind) {
    switch (kind) {
        case skinButton:
            return themes.pButton;
        case skinFrame:
            return themes.pFrame;
        case skinDialog:
            return themes.pDialog;
        case skinToolBar:
            return themes.pToolBar;
        case skinCombobox:
            return themes.pCombobox;
        case skinTabCtrl:
            return themes.pTabCtrl;
        case skinHeadCtrl:
            return themes.pHeadCtrl;
        case skinEdit:
            return themes.pEdit;
        case skinListBox:
            return themes.pListBox;
        case skinScrollbar:
            return themes.pScrollbar;
        case skinGlobal:
            return themes.pGlobal;
        case skinMenu:
            return themes.pMenu;
        case skinDockBar:
            return themes.pDockBar;
    }
    return nullptr;
}

}  // namespace

CSkinStorage::CSkinStorage() : m_pRootStorage(nullptr), m_pSkinFace(nullptr) {}

CSkinStorage::~CSkinStorage() {
    if (m_pRootStorage) m_pRootStorage->Release();
}

void CSkinStorage::SetSkinFace(CTavixSkinFace* face) { m_pSkinFace = face; }

int CSkinStorage::UnLoadSkin() { return 1; }

int CSkinStorage::LoadSkin(CString path) {
    return Guarded([&] {
        tavix::ComPtr<IStorage> root;
        if (!tavix::OpenRoot(path, root.Put())) return 0;
        {
            tavix::ComPtr<IStream> stream;
            if (!tavix::OpenStreamElement(root.Get(), tavix::kHeaderStream, stream.Put())) return 0;
            TSkinFileHeader header{};
            void* buffer = &header;
            DWORD size = sizeof header;
            tavix::ReadStream(stream.Get(), &buffer, &size);  // nothing depends on what it says
        }
        for (const TSkinType kind : tavix::kRecordOrder) LoadSkinItem(root.Get(), kind);
        return 1;
    });
}

int CSkinStorage::SaveToSkin(CString path, TSkinThemes* themes) {
    if (!themes) return 0;
    return Guarded([&] {
        tavix::ComPtr<IStorage> root;
        if (!tavix::OpenRoot(path, root.Put())) return 0;
        {
            tavix::ComPtr<IStream> stream;
            if (!tavix::OpenStreamElement(root.Get(), tavix::kHeaderStream, stream.Put())) return 0;
            tavix::WriteStream(stream.Get(), &themes->header, sizeof themes->header);
        }
        for (const TSkinType kind : tavix::kRecordOrder)
            if (void* record = RecordOf(*themes, kind)) SaveSkinItem(root.Get(), kind, record);
        return 1;
    });
}

int CSkinStorage::LoadSkinItem(IStorage* root, TSkinType kind) {
    LoadItem(root, kind, m_pSkinFace);
    return 1;
}

int CSkinStorage::SaveSkinItem(IStorage* root, TSkinType kind, void* record) {
    SaveItem(root, kind, record);
    return 1;
}

int CSkinStorage::OpenRootStg(CString path, IStorage** out) {
    return Guarded([&] { return tavix::OpenRoot(path, out); });
}

int CSkinStorage::OpenSubStg(IStorage* parent, CString name, IStorage** out) {
    return Guarded([&] { return tavix::OpenStorageElement(parent, View(name), out); });
}

int CSkinStorage::OpenStm(IStorage* parent, CString name, IStream** out) {
    return Guarded([&] { return tavix::OpenStreamElement(parent, View(name), out); });
}

int CSkinStorage::ReadFromStm(IStream* stream, void** buffer, DWORD* bytesRead) {
    return Guarded([&] { return tavix::ReadStream(stream, buffer, bytesRead); });
}

int CSkinStorage::WriteToStm(IStream* stream, void* data, DWORD size) {
    return Guarded([&] { return tavix::WriteStream(stream, data, size); });
}

int CSkinStorage::LoadBmpFromStm(IStorage* parent, CString name, CBitmap*& out) {
    return Guarded([&] { return tavix::LoadBitmapElement(parent, View(name), out); });
}

int CSkinStorage::WriteBmpToStm(IStorage* parent, CString name, CBitmap* bitmap) {
    return Guarded([&] {
        const HBITMAP handle = bitmap ? static_cast<HBITMAP>(*bitmap) : nullptr;
        return tavix::WriteBitmapElement(parent, View(name), handle);
    });
}

DWORD CSkinStorage::RectToDword(CRect rect) { return tavix::PackRect(rect); }

#define LOAD_ONE(name, kind) \
    int CSkinStorage::name(IStorage* root) { return LoadItem(root, kind, m_pSkinFace); }
LOAD_ONE(LoadSkinBtnInfo, skinButton)
LOAD_ONE(LoadSkinFrameInfo, skinFrame)
LOAD_ONE(LoadSkinDialogInfo, skinDialog)
LOAD_ONE(LoadSkinToolBarInfo, skinToolBar)
LOAD_ONE(LoadSkinComboboxInfo, skinCombobox)
LOAD_ONE(LoadSkinTabCtrlInfo, skinTabCtrl)
LOAD_ONE(LoadSkinHeadCtrlInfo, skinHeadCtrl)
LOAD_ONE(LoadSkinEditCtrlInfo, skinEdit)
LOAD_ONE(LoadSkinListBoxCtrlInfo, skinListBox)
LOAD_ONE(LoadSkinScrollBarInfo, skinScrollbar)
LOAD_ONE(LoadSkinGlobalInfo, skinGlobal)
LOAD_ONE(LoadSkinMenuInfo, skinMenu)
LOAD_ONE(LoadSkinDockBarInfo, skinDockBar)
#undef LOAD_ONE

#define SAVE_ONE(name, kind) \
    int CSkinStorage::name(IStorage* root, void* record) { return SaveItem(root, kind, record); }
SAVE_ONE(SaveSkinBtnInfo, skinButton)
SAVE_ONE(SaveSkinFrameInfo, skinFrame)
SAVE_ONE(SaveSkinDialogInfo, skinDialog)
SAVE_ONE(SaveSkinToolBarInfo, skinToolBar)
SAVE_ONE(SaveSkinComboboxInfo, skinCombobox)
SAVE_ONE(SaveSkinTabCtrlInfo, skinTabCtrl)
SAVE_ONE(SaveSkinHeadCtrlInfo, skinHeadCtrl)
SAVE_ONE(SaveSkinEditlInfo, skinEdit)
SAVE_ONE(SaveSkinListBoxInfo, skinListBox)
SAVE_ONE(SaveSkinScrollBarInfo, skinScrollbar)
SAVE_ONE(SaveSkinGlobalInfo, skinGlobal)
SAVE_ONE(SaveSkinMenuInfo, skinMenu)
SAVE_ONE(SaveSkinDockBarInfo, skinDockBar)
#undef SAVE_ONE
