/* The worlds that a control is tested in: both versions of the common controls, windows of both character
 * sets. */
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/common_controls.h"
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

}  // namespace tavix_test
