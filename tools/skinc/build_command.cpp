#include <windows.h>

#include <cstdio>

#include "commands.h"
#include "manifest.h"
#include "tool_error.h"

namespace skinc {

namespace {

/* A file beside the output that replaces it when all is written, and goes with any failure. */
class PendingFile {
public:
    explicit PendingFile(const std::filesystem::path& output) : m_output(output), m_pending(output) {
        m_pending += ".pending";
        Remove();
    }
    ~PendingFile() { Remove(); }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    const std::filesystem::path& Path() const { return m_pending; }
    bool Finish() const {
        return ::MoveFileExW(m_pending.c_str(), m_output.c_str(),
                             MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    }

private:
    void Remove() const {
        std::error_code ignored;
        std::filesystem::remove(m_pending, ignored);
    }
    std::filesystem::path m_output;
    std::filesystem::path m_pending;
};

}  // namespace

int Build(const std::filesystem::path& manifestFile, const std::filesystem::path& output) {
    Manifest manifest(manifestFile);
    if (std::filesystem::is_directory(output))
        throw ToolError(output.string(), "is a folder; expected the path of the skin file to write");
    PendingFile pending(output);
    TSkinThemes themes = manifest.Values().Themes();
    CSkinStorage storage;
    if (!storage.SaveToSkin(pending.Path().string().c_str(), &themes))
        throw ToolError(output.string(),
                        "can't be written; expected a path in a folder that exists and is writable");
    if (!pending.Finish())
        throw ToolError(output.string(),
                        "can't be replaced; close the program that uses it, or make it writable");
    std::printf("%s\n", output.string().c_str());
    return 0;
}

}  // namespace skinc
