/* Following the notifications of a scroll bar, as any program with one does. */
#pragma once

#include <windows.h>

namespace gallery {

/* Where a bar is to stand after a notification with the place `tracked` of its thumb; it may lie beyond the
   bar's ends. A bar without a page pages by ten. */
long long position_after(const SCROLLINFO& now, WORD code, int tracked);

}  // namespace gallery
