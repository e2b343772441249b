/*
 * Reading and writing skin files: CSkinStorage, and the record set TSkinThemes that an
 * authoring tool hands to the writer. A skin file is a compound file with a stream
 * "SkinInfo" and one storage for each of the thirteen records.
 */
#pragma once

#include <windows.h>

#include <objidl.h>

#include "tavixskin/framework/gdi.h"
#include "tavixskin/skin_records.h"

class CTavixSkinFace;

/* The kinds of record. The numbers go to LoadSkinItem and SaveSkinItem; no file holds them. */
enum TSkinType {
    skinButton = 0,
    skinFrame = 1,
    skinDialog = 2,
    skinToolBar = 3,
    skinCombobox = 4,
    skinTabCtrl = 5,
    skinHeadCtrl = 6,
    skinEdit = 7,
    skinListBox = 8,
    skinScrollbar = 9,
    skinGlobal = 10,
    skinMenu = 11,
    skinDockBar = 12,
};

/* The stream "SkinInfo", byte for byte. Written with each file; no reader looks at it. */
struct TSkinFileHeader {
    DWORD word;         // 0x10000000
    BYTE reserved[32];  // zeros
    DWORD spare;
    char name[32];  // "sdfas"
};
static_assert(sizeof(TSkinFileHeader) == 72);

/*
 * What SaveToSkin writes. The constructor sets the header only: fill all thirteen pointers,
 * each to a record of its type in skin_records.h, or null for a record not to be saved.
 */
class TAVIX_API TSkinThemes {
public:
    TSkinThemes();
    ~TSkinThemes();
    TSkinThemes(const TSkinThemes& other);
    /* Copies the pointers, not what they point to. */
    TSkinThemes& operator=(const TSkinThemes& other);

    /* Releases the Button record by operator delete and nulls its pointer; no other record. */
    void Clear();

    TSkinFileHeader header;
    void* pGlobal;
    void* pButton;
    void* pFrame;
    void* pDialog;
    void* pToolBar;
    void* pCombobox;
    void* pTabCtrl;
    void* pHeadCtrl;
    void* pEdit;
    void* pListBox;
    void* pScrollbar;
    void* pMenu;
    void* pDockBar;
};

/*
 * Fills a skin face from a file and writes a file from a record set. No file stays open
 * between calls. Results are 1 for success and 0 for failure. One thread at a time: a skin
 * file is opened exclusively, for writing also when it is only read.
 */
class TAVIX_API CSkinStorage : public CObject {
public:
    CSkinStorage();
    ~CSkinStorage() override;

    /* The face that loading fills; not owned. */
    void SetSkinFace(CTavixSkinFace* face);

    /*
     * Fills the face from the file. 0 if the file can't be opened as a compound file. A record
     * that is missing or broken leaves 1 all the same, and what is missing in the file is
     * created in it, empty. A read-only attribute is cleared.
     */
    int LoadSkin(CString path);
    /* Writes the records of the set, creating the file if there is none. */
    int SaveToSkin(CString path, TSkinThemes* themes);
    /* Load or save one record below an open root storage. Always 1. */
    int LoadSkinItem(IStorage* root, TSkinType kind);
    int SaveSkinItem(IStorage* root, TSkinType kind, void* record);
    /* Does nothing: the face frees what was loaded. Always 1. */
    int UnLoadSkin();

private:
    // Open, or create what is missing. What `out` holds on entry is released first.
    int OpenRootStg(CString path, IStorage** out);
    int OpenSubStg(IStorage* parent, CString name, IStorage** out);
    int OpenStm(IStorage* parent, CString name, IStream** out);
    // Reads a whole stream. With *buffer null the block comes from the process heap and the
    // caller frees it. With a buffer, *bytesRead holds its capacity on entry and bounds the read.
    int ReadFromStm(IStream* stream, void** buffer, DWORD* bytesRead);
    // Replaces the stream's contents.
    int WriteToStm(IStream* stream, void* data, DWORD size);
    int LoadBmpFromStm(IStorage* parent, CString name, CBitmap*& out);
    int WriteBmpToStm(IStorage* parent, CString name, CBitmap* bitmap);
    // Packs the low bytes: top, left, right, bottom from the lowest on.
    DWORD RectToDword(CRect rect);

    int LoadSkinBtnInfo(IStorage* root);
    int LoadSkinFrameInfo(IStorage* root);
    int LoadSkinDialogInfo(IStorage* root);
    int LoadSkinToolBarInfo(IStorage* root);
    int LoadSkinComboboxInfo(IStorage* root);
    int LoadSkinTabCtrlInfo(IStorage* root);
    int LoadSkinHeadCtrlInfo(IStorage* root);
    int LoadSkinEditCtrlInfo(IStorage* root);
    int LoadSkinListBoxCtrlInfo(IStorage* root);
    int LoadSkinScrollBarInfo(IStorage* root);
    int LoadSkinGlobalInfo(IStorage* root);
    int LoadSkinMenuInfo(IStorage* root);
    int LoadSkinDockBarInfo(IStorage* root);

    int SaveSkinBtnInfo(IStorage* root, void* record);
    int SaveSkinFrameInfo(IStorage* root, void* record);
    int SaveSkinDialogInfo(IStorage* root, void* record);
    int SaveSkinToolBarInfo(IStorage* root, void* record);
    int SaveSkinComboboxInfo(IStorage* root, void* record);
    int SaveSkinTabCtrlInfo(IStorage* root, void* record);
    int SaveSkinHeadCtrlInfo(IStorage* root, void* record);
    int SaveSkinEditlInfo(IStorage* root, void* record);
    int SaveSkinListBoxInfo(IStorage* root, void* record);
    int SaveSkinScrollBarInfo(IStorage* root, void* record);
    int SaveSkinGlobalInfo(IStorage* root, void* record);
    int SaveSkinMenuInfo(IStorage* root, void* record);
    int SaveSkinDockBarInfo(IStorage* root, void* record);

    friend struct CSkinStorageTestAccess;

    IStorage* m_pRootStorage;  // released by the destructor; set by nothing
    CTavixSkinFace* m_pSkinFace;
};
