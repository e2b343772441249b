/* Doing the same again and again leaves nothing behind. */
#pragma once

#include <gtest/gtest.h>

#include "main/gui_objects.h"

namespace tavix_test {

/* Rounds of the same leave as many objects as there were after the first few. */
template <class Round>
void ExpectNoMoreObjects(Round round) {
    for (int i = 0; i < 3; ++i) round();
    const long gdi = GdiObjectCount();
    const int user = CountUserObjects();
    for (int i = 0; i < 10; ++i) round();
    EXPECT_LE(GdiObjectCount(), gdi + 1);
    EXPECT_EQ(CountUserObjects(), user);
}

}  // namespace tavix_test
