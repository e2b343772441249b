/* Chooses the version of the common controls at run time: programs of both kinds meet a skin. */
#pragma once

#include <optional>

#include "handles.h"

namespace gallery {

/* The activation context that stands for version 6: windows made while it lives get that version. */
class Version6Context {
public:
    Version6Context();  // throws Failure
    ~Version6Context();
    Version6Context(const Version6Context&) = delete;
    Version6Context& operator=(const Version6Context&) = delete;

private:
    HANDLE context_;
    ULONG_PTR cookie_ = 0;
};

/* Makes the common controls' window classes available for as long as it lives. */
class CommonControls {
public:
    /* `version` is 5, as for a program without a manifest, or 6. Throws Failure. */
    explicit CommonControls(int version);

private:
    std::optional<Version6Context> context_;
    OwnedModule library_;
};

}  // namespace gallery
