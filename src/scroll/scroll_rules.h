/* What a change of a host's scroll state means for its bar: arithmetic on plain values. */
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdint>

namespace tavix {

/* The platform takes a structure with or without its last member, and no other. */
inline bool IsScrollInfo(const SCROLLINFO* info) {
    return info && (info->cbSize == sizeof(SCROLLINFO) || info->cbSize == offsetof(SCROLLINFO, nTrackPos));
}

struct ScrollInfoVerdict {
    bool hides;    // nothing is left to scroll
    int position;  // for the bar, if SIF_POS is set: not beyond either end
};

/*
 * `present` is the native state, `given` the caller's change. The page is compared with the
 * present maximum less the caller's minimum, which counts even without SIF_RANGE.
 */
inline ScrollInfoVerdict JudgeScrollInfo(SCROLLINFO present, const SCROLLINFO& given) {
    ScrollInfoVerdict verdict{false, given.nPos};
    if (given.fMask & SIF_RANGE) {
        present.nMin = given.nMin;
        present.nMax = given.nMax;
        verdict.hides = given.nMin >= given.nMax;
    }
    if (given.fMask & SIF_PAGE) {
        present.nPage = given.nPage;
        const UINT all = static_cast<UINT>(present.nMax) - static_cast<UINT>(given.nMin) + 1;
        if (given.nPage > all) verdict.hides = true;
    }
    if (given.fMask & SIF_POS && !verdict.hides) {
        // The page as bars take it: signed.
        const std::int64_t page = static_cast<int>(present.nPage);
        const std::int64_t last = present.nMax - std::max<std::int64_t>(page - 1, 0);
        std::int64_t position = given.nPos;
        if (given.nPos < present.nMin) position = present.nMin;
        if (given.nPos > last) position = last;
        verdict.position = static_cast<int>(std::clamp<std::int64_t>(position, INT32_MIN, INT32_MAX));
    }
    return verdict;
}

}  // namespace tavix
