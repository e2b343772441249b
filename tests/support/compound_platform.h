/* What the platform's own storage layer makes of a compound file. */
#pragma once

#include <windows.h>

#include <objidl.h>

#include <cstddef>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "support/compound_image.h"

namespace tavix::test {

/* The bytes of each stream by its path with '/' between the names; a storage ends in '/'. */
using CompoundContents = std::map<std::u16string, std::vector<std::byte>>;

/* A path for a file of this process in the folder for temporary files. */
std::wstring TemporaryPath(const wchar_t* name);
bool WriteWholeFile(const std::wstring& path, std::span<const std::byte> bytes);
std::vector<std::byte> ReadWholeFile(const std::wstring& path);

/* Has the platform make a file with that content; `sector_size` is 512 or 4096. */
bool PlatformWrites(const std::wstring& path, uint32_t sector_size,
                    const std::vector<CompoundElement>& content);

/* A compound file in the hands of the platform: a file on disk, or bytes in memory, which is faster. */
class PlatformCompound {
public:
    explicit PlatformCompound(const std::wstring& path) : path_(path) {}
    explicit PlatformCompound(std::span<const std::byte> bytes);
    ~PlatformCompound();
    PlatformCompound(const PlatformCompound&) = delete;
    PlatformCompound& operator=(const PlatformCompound&) = delete;

    /* Opens it for reading and writing and reads all there is; false if anything fails. */
    bool Reads(CompoundContents* contents) const;
    /*
     * Does what loading and saving a skin do: reads all, creates a missing stream and a missing
     * storage, writes a short and a long stream. Returns what failed, or null.
     */
    const char* Extends() const;
    /*
     * Rewrites each stream with a size that it takes from the round, now longer, now shorter.
     * How far that gets depends on the file.
     */
    void Rewrites(unsigned round) const;
    /* What the file holds now. */
    std::vector<std::byte> Bytes() const;

private:
    bool Open(IStorage** root) const;

    std::wstring path_;
    ILockBytes* memory_ = nullptr;
};

/*
 * Runs `work` under a limit of computing time, and of ten times as much time by the clock. If it
 * takes longer the process ends with a message that holds `what`: a thread that loops in the
 * platform can't be ended in another way.
 */
void RunWatched(const std::string& what, DWORD milliseconds, const std::function<void()>& work);

}  // namespace tavix::test
