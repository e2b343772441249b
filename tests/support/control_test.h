/* The worlds that a control is tested in: both versions of the common controls, windows of both character
 * sets. */
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "support/common_controls.h"
#include "support/skinned_thread.h"
#include "support/window_probe.h"
#include "tavixskin.h"

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

/* For long runs: the one world that goes all the way, and numbers that tell the worlds apart. */
inline bool IsFullWorld(const ControlWorld& world) {
    return world.controls == ControlsVersion::V6 && world.charset == Charset::Unicode;
}
inline unsigned WorldOf(const ControlWorld& world) {
    return (world.controls == ControlsVersion::V6 ? 2u : 0u) + (world.charset == Charset::Unicode ? 1u : 0u);
}

/* A skinned thread with a parent that records, in one of the four worlds. */
class ControlTest : public testing::TestWithParam<ControlWorld> {
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
    /* Puts the changes of `skin` in force. */
    void UseChangedSkin() { ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1); }

    /* A new parent, made as a ProbeWindow is; the former one is destroyed with its children. */
    template <class... Arguments>
    ProbeWindow& UseParent(Arguments... arguments) {
        m_parent.reset();
        return m_parent.emplace(arguments...);
    }
    ProbeWindow& Parent() { return *m_parent; }
    void LoseParent() { m_parent.reset(); }

    TestSkin skin;

private:
    std::optional<ControlsWorld> m_world;
    std::optional<SkinnedThread> m_thread;
    std::optional<ProbeWindow> m_parent;
};

}  // namespace tavix_test
