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

/* Opens the file for reading and writing and reads all there is; false if anything fails. */
bool PlatformReads(const std::wstring& path, CompoundContents* contents);

/* Has the platform make a file with that content; `sector_size` is 512 or 4096. */
bool PlatformWrites(const std::wstring& path, uint32_t sector_size, const std::vector<CompoundElement>& content);

/*
 * Does what loading and saving a skin do: reads all, creates a missing stream and a missing
 * storage, writes a short and a long stream. Returns what failed, or null.
 */
const char* PlatformExtends(const std::wstring& path);

/*
 * Rewrites each stream with a size that it takes from the round, now longer, now shorter. How
 * far that gets depends on the file.
 */
void PlatformRewrites(const std::wstring& path, unsigned round);

/*
 * Runs `work` under a time limit. If it takes longer the process ends with a message that
 * holds `what`: a thread that loops in the platform can't be ended in another way.
 */
void RunWatched(const std::string& what, DWORD milliseconds, const std::function<void()>& work);

}  // namespace tavix::test
