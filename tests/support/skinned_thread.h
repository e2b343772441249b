/* A skinned thread for the length of a scope. */
#pragma once

#include "support/test_skin.h"

namespace tavix_test {

/*
 * Writes the skin's file and skins the calling thread with it; fails the test if that fails. Make
 * it before the windows of the test, and let it end after them.
 */
class SkinnedThread {
public:
    explicit SkinnedThread(TestSkin& skin);
    ~SkinnedThread();
    SkinnedThread(const SkinnedThread&) = delete;
    SkinnedThread& operator=(const SkinnedThread&) = delete;
};

/* True if the window has a skin object. */
bool IsSkinned(HWND window);

}  // namespace tavix_test
