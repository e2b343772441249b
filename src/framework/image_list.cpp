#include "tavixskin/framework/image_list.h"

#include <utility>

IMPLEMENT_DYNAMIC(CImageList, CObject)

bool CImageList::Create(int cx, int cy, UINT flags, int initial, int grow) {
    return Attach(::ImageList_Create(cx, cy, flags, initial, grow));
}

bool CImageList::Attach(HIMAGELIST list) {
    if (list != m_hImageList) DeleteImageList();
    m_hImageList = list;
    return list != nullptr;
}

HIMAGELIST CImageList::Detach() { return std::exchange(m_hImageList, nullptr); }

bool CImageList::DeleteImageList() {
    HIMAGELIST list = Detach();
    return list && ::ImageList_Destroy(list);
}
