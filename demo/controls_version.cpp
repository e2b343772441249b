#include "controls_version.h"

#include <commctrl.h>

#include "failure.h"
#include "resources.h"

namespace gallery {

Version6Context::Version6Context() {
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof(program));
    ACTCTXA wanted = {};
    wanted.cbSize = sizeof(wanted);
    wanted.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    wanted.lpSource = program;
    wanted.hModule = GetModuleHandleA(nullptr);
    wanted.lpResourceName = MAKEINTRESOURCEA(RESOURCE_CONTROLS_6_MANIFEST);
    context_ = CreateActCtxA(&wanted);
    if (context_ == INVALID_HANDLE_VALUE)
        fail_with_last_error("Version 6 of the common controls can't be chosen");
    if (!ActivateActCtx(context_, &cookie_)) {
        ReleaseActCtx(context_);
        fail_with_last_error("Version 6 of the common controls can't be used");
    }
}

Version6Context::~Version6Context() {
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(context_);
}

CommonControls::CommonControls(int version) {
    if (version == 6) context_.emplace();
    // Loaded by name, not imported: which version this gives is decided by the context active just now.
    library_.reset(LoadLibraryA("comctl32.dll"));
    if (!library_) fail_with_last_error("comctl32.dll can't be loaded");
    using Register = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
    const auto register_classes = reinterpret_cast<Register>(
        reinterpret_cast<void*>(GetProcAddress(library_.get(), "InitCommonControlsEx")));
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_WIN95_CLASSES | ICC_USEREX_CLASSES};
    if (!register_classes || !register_classes(&classes))
        throw Failure("The common controls refuse to start");
}

}  // namespace gallery
