#include "support/skinned_thread.h"

#include <gtest/gtest.h>

#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {

SkinnedThread::SkinnedThread(TestSkin& skin) {
    const char* path = skin.Write();
    EXPECT_EQ(::InstallTavixSkin(path), 1);
    EXPECT_EQ(::IsSkinnedThread(::GetCurrentThreadId()), 1);
}

SkinnedThread::~SkinnedThread() {
    ::UnInstallTavixSkin();
    EXPECT_EQ(::IsSkinnedThread(::GetCurrentThreadId()), 0);
}

bool IsSkinned(HWND window) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    return engine && engine->GetSkinWndList()->Lookup(window);
}

}  // namespace tavix_test
