#include "support/common_controls.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/test_skin.h"

namespace tavix_test {

namespace {

constexpr char kManifest[] = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">
  <assemblyIdentity type="win32" name="TavixSkinCtrls.Tests" version="1.0.0.0" processorArchitecture="*"/>
  <dependency>
    <dependentAssembly>
      <assemblyIdentity type="win32" name="Microsoft.Windows.Common-Controls" version="6.0.0.0"
                        processorArchitecture="*" publicKeyToken="6595b64144ccf1df" language="*"/>
    </dependentAssembly>
  </dependency>
</assembly>
)";

HANDLE CreateVersion6Context() {
    const TempFile file(".manifest");
    std::ofstream(file.Path(), std::ios::binary) << kManifest;
    ACTCTXA request{};
    request.cbSize = sizeof request;
    request.lpSource = file.Path();
    return ::CreateActCtxA(&request);
}

}  // namespace

ControlsWorld::ControlsWorld(ControlsVersion version) {
    if (version == ControlsVersion::V6) {
        m_context = CreateVersion6Context();
        EXPECT_NE(m_context, INVALID_HANDLE_VALUE) << "error " << ::GetLastError();
    }
    // A null context stands for the program's own, which names no common controls.
    HANDLE context = m_context == INVALID_HANDLE_VALUE ? nullptr : m_context;
    EXPECT_TRUE(::ActivateActCtx(context, &m_cookie)) << "error " << ::GetLastError();
}

ControlsWorld::~ControlsWorld() {
    if (m_cookie) ::DeactivateActCtx(0, m_cookie);
    if (m_context != INVALID_HANDLE_VALUE) ::ReleaseActCtx(m_context);
}

ControlsVersion VersionOf(HWND control) {
    // Windows names COMCTL32 as the module of its classes, Wine the program.
    const auto module = reinterpret_cast<HMODULE>(::GetClassLongPtrA(control, GCLP_HMODULE));
    return module == ::GetModuleHandleA("user32.dll") ? ControlsVersion::V5 : ControlsVersion::V6;
}

const char* NameOf(ControlsVersion version) { return version == ControlsVersion::V5 ? "V5" : "V6"; }

}  // namespace tavix_test
