/* The worlds that a control is tested in: both versions of the common controls, windows of both character
 * sets. */
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "main/gui_objects.h"
#include "support/common_controls.h"
#include "support/skinned_thread.h"
#include "support/window_probe.h"

namespace tavix_test {

struct ControlWorld {
    ControlsVersion controls;
    Charset charset;
};

inline std::string NameOfWorld(const testing::TestParamInfo<ControlWorld>& info) {
    return std::string(NameOf(info.param.controls)) + NameOf(info.param.charset);
}

inline const auto kControlWorlds = testing::Values(
    ControlWorld{ControlsVersion::V5, Charset::Ansi}, ControlWorld{ControlsVersion::V5, Charset::Unicode},
    ControlWorld{ControlsVersion::V6, Charset::Ansi}, ControlWorld{ControlsVersion::V6, Charset::Unicode});

class CommonControlTest : public testing::TestWithParam<ControlWorld> {
protected:
    static void SetUpTestSuite() { ParkMouse(); }
    void SetUp() override {
        m_world.emplace(GetParam().controls);
        PrepareSkin();
        m_thread.emplace(skin);
        m_parent.emplace();
    }
    void TearDown() override {
        if (::GetAsyncKeyState(VK_LBUTTON) < 0) ReleaseMouse();
        ::ReleaseCapture();
        m_parent.reset();
        m_thread.reset();
        m_world.reset();
    }
    /* Before the thread is skinned. */
    virtual void PrepareSkin() {}
    ProbeWindow& Parent() { return *m_parent; }

    TestSkin skin;

private:
    std::optional<ControlsWorld> m_world;
    std::optional<SkinnedThread> m_thread;
    std::optional<ProbeWindow> m_parent;
};

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
