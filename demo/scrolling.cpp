#include "scrolling.h"

namespace gallery {

long long position_after(const SCROLLINFO& now, WORD code, int tracked) {
    const long long page = now.nPage ? now.nPage : 10;
    const long long pos = now.nPos;
    switch (code) {
        case SB_LINEUP:
            return pos - 1;
        case SB_LINEDOWN:
            return pos + 1;
        case SB_PAGEUP:
            return pos - page;
        case SB_PAGEDOWN:
            return pos + page;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            return tracked;
        default:
            return pos;
    }
}

}  // namespace gallery
