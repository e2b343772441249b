/* CTavixSkinFace: the values of a loaded skin, three tables addressed by small numbers. */
#pragma once

#include "tavixskin/framework/gdi.h"
#include "tavixskin/skin_storage.h"
#include "tavixskin/value_ids.h"

/*
 * Belongs to one engine and its thread. Owns the bitmaps; hands out pointers that stay its
 * own and die with the next load or unload. An id of TAVIX_VALUE_COUNT or more reads as null
 * or 0 and is not written.
 */
class TAVIX_API CTavixSkinFace : public CObject {
public:
    /* Sets colours 0, 1 and 2 to the system's window text, highlight text and grey text. */
    CTavixSkinFace();
    ~CTavixSkinFace() override;

    COLORREF GetColor(DWORD id) const { return id < TAVIX_VALUE_COUNT ? m_Colors[id] : 0; }
    CBitmap* GetBmp(DWORD id) const { return id < TAVIX_VALUE_COUNT ? m_pBitmaps[id] : nullptr; }
    DWORD GetSize(DWORD id) const { return id < TAVIX_VALUE_COUNT ? m_Sizes[id] : 0; }

    void SetColor(DWORD id, COLORREF colour);
    void SetSize(DWORD id, DWORD size);
    /*
     * Takes ownership, but for an id out of range; the object that the id held is destroyed
     * unless another id holds it too.
     */
    void SetBmp(DWORD id, CBitmap* bitmap);

    void LoadSkin(CString path);
    /* Destroys the bitmaps; colours and sizes keep their values. */
    void UnLoadSkin();

private:
    void DestroyUnlessShared(DWORD id);

    CBitmap* m_pBitmaps[TAVIX_VALUE_COUNT];
    COLORREF m_Colors[TAVIX_VALUE_COUNT];
    DWORD m_Sizes[TAVIX_VALUE_COUNT];
    CSkinStorage m_Storage;
};
