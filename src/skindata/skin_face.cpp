#include "tavixskin/skin_face.h"

#include <utility>

CTavixSkinFace::CTavixSkinFace() : m_pBitmaps{}, m_Colors{}, m_Sizes{} {
    m_Storage.SetSkinFace(this);
    m_Colors[CLR_TEXT] = ::GetSysColor(COLOR_WINDOWTEXT);
    m_Colors[CLR_TEXT_HIGHLIGHT] = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
    m_Colors[CLR_TEXT_DISABLED] = ::GetSysColor(COLOR_GRAYTEXT);
}

// Wrappers without a handle go too.
CTavixSkinFace::~CTavixSkinFace() { UnLoadSkin(); }

void CTavixSkinFace::SetColor(DWORD id, COLORREF colour) {
    if (id < TAVIX_VALUE_COUNT) m_Colors[id] = colour;
}

void CTavixSkinFace::SetSize(DWORD id, DWORD size) {
    if (id < TAVIX_VALUE_COUNT) m_Sizes[id] = size;
}

void CTavixSkinFace::SetBmp(DWORD id, CBitmap* bitmap) {
    if (id >= TAVIX_VALUE_COUNT || m_pBitmaps[id] == bitmap) return;
    DestroyUnlessShared(id);
    m_pBitmaps[id] = bitmap;
}

void CTavixSkinFace::LoadSkin(CString path) { m_Storage.LoadSkin(std::move(path)); }

void CTavixSkinFace::UnLoadSkin() {
    for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) DestroyUnlessShared(id);
}

// Empties the entry. Two ids hold one object where a file lacks a bitmap; the last one of them
// destroys it.
void CTavixSkinFace::DestroyUnlessShared(DWORD id) {
    CBitmap* bitmap = std::exchange(m_pBitmaps[id], nullptr);
    if (!bitmap) return;
    for (const CBitmap* other : m_pBitmaps)
        if (other == bitmap) return;
    delete bitmap;
}
