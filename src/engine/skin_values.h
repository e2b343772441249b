/* The values of the calling thread's skin, as painters ask for them at each painting. */
#pragma once

#include <algorithm>

#include "tavixskin/tavix_skin.h"

namespace tavix {

inline COLORREF SkinColour(DWORD id) { return CTavixSkin::GetGloalTavixSkinColor(id); }
inline CBitmap* SkinBitmap(DWORD id) { return CTavixSkin::GetGloalTavixSkinBmp(id); }

/*
 * A size as painters use it. A skin file may hold any 32 bits: the value is read as signed and
 * kept within what window co-ordinates can express, so that no sum of a few of them overflows.
 */
inline int SkinExtent(DWORD id) {
    const int value = static_cast<int>(CTavixSkin::GetGloalTavixSkinSize(id));
    return std::clamp(value, -0x7FFF, 0x7FFF);
}

/* The packed geometry of the caption buttons (SZ_FRAME_BUTTONS, SZ_DLG_BUTTONS), signed bytes. */
struct CaptionButtonGeometry {
    int left, top, width, height;
};
inline CaptionButtonGeometry UnpackCaptionButtons(DWORD packed) {
    const auto byte = [packed](int index) {
        return static_cast<int>(static_cast<signed char>(packed >> (8 * index)));
    };
    return {byte(1), byte(0), byte(2), byte(3)};
}

}  // namespace tavix
