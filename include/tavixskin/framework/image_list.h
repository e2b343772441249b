/* CImageList: an owned image list of the common controls. */
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "tavixskin/framework/object.h"

class TAVIX_API CImageList : public CObject {
    DECLARE_DYNAMIC(CImageList)
public:
    CImageList() = default;
    ~CImageList() override { DeleteImageList(); }

    /* Makes a list of images of cx by cy pixels; flags as of ImageList_Create. False on failure. */
    bool Create(int cx, int cy, UINT flags, int initial, int grow);
    /* Takes ownership; what was held before is destroyed. */
    bool Attach(HIMAGELIST list);
    /* Gives the handle and its ownership away. */
    HIMAGELIST Detach();
    bool DeleteImageList();

    int GetImageCount() const { return m_hImageList ? ::ImageList_GetImageCount(m_hImageList) : 0; }
    /* The new image's index, -1 on failure. */
    int AddMasked(HBITMAP bitmap, COLORREF mask) { return ::ImageList_AddMasked(m_hImageList, bitmap, mask); }
    bool Draw(HDC dc, int index, int x, int y, UINT style) const {
        return ::ImageList_Draw(m_hImageList, index, dc, x, y, style) != 0;
    }
    operator HIMAGELIST() const { return m_hImageList; }

    HIMAGELIST m_hImageList = nullptr;
};
