/* The tool's commands. Each throws ToolError; the result is the exit code. */
#pragma once

#include <filesystem>

namespace skinc {

/* Compiles a manifest and its images into a skin file, which appears whole or not at all. */
int Build(const std::filesystem::path& manifest, const std::filesystem::path& output);

/* Writes the manifest and the images of a skin file into a folder; they build to the same values. */
int Extract(const std::filesystem::path& skin, const std::filesystem::path& folder);

/* Lists every value of a skin file with its name, as a table or as JSON. */
int Info(const std::filesystem::path& skin, bool asJson);

/* Looks for mistakes that a skin file may have; 1 if there are any, each named on a line. */
int Check(const std::filesystem::path& skin);

}  // namespace skinc
