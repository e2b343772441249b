/* The library loaded at run time, as a foreign host has it: by its file and its C header. */
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <string>

#include "tavixskin.h"

namespace tavix_test {

inline constexpr char kFileName[] = "TavixSkinCtrls.dll";

// Beside the test program, by its full path, so that no other copy can come first.
inline std::string LibraryPath() {
    char path[MAX_PATH + 1] = {};
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string folder(path);
    folder.erase(folder.find_last_of("\\/") + 1);
    return folder + kFileName;
}

/* The project's own skin, as the build has compiled it. */
inline std::string BundledSkin() {
    const std::string library = LibraryPath();
    return library.substr(0, library.find_last_of("\\/")) + "\\..\\skins\\porcelain.skn";
}

inline bool IsLoaded() { return ::GetModuleHandleA(kFileName) != nullptr; }

/* The library for the length of a scope. */
class Library {
public:
    Library() : m_module(::LoadLibraryA(LibraryPath().c_str())) {
        if (!m_module) {
            ADD_FAILURE() << "the library does not load, error " << ::GetLastError();
            return;
        }
        Find(install, "InstallTavixSkin");
        Find(uninstall, "UnInstallTavixSkin");
        Find(isSkinned, "IsSkinnedThread");
        Find(setSkin, "SetSkinFromFile");
        Find(registerWindow, "RegisterSkinWnd");
        Find(unregisterWindow, "UnRegisterSkinWnd");
        Find(bitmap, "GetTavixSkinHBITMAP");
    }
    ~Library() {
        if (m_module) ::FreeLibrary(m_module);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    HMODULE Module() const { return m_module; }
    bool SkinnedNow() const { return isSkinned(::GetCurrentThreadId()) == 1; }

    decltype(&InstallTavixSkin) install = nullptr;
    decltype(&UnInstallTavixSkin) uninstall = nullptr;
    decltype(&IsSkinnedThread) isSkinned = nullptr;
    decltype(&SetSkinFromFile) setSkin = nullptr;
    decltype(&RegisterSkinWnd) registerWindow = nullptr;
    decltype(&UnRegisterSkinWnd) unregisterWindow = nullptr;
    decltype(&GetTavixSkinHBITMAP) bitmap = nullptr;

private:
    template <class Function>
    void Find(Function& function, const char* name) {
        FARPROC found = ::GetProcAddress(m_module, name);
        EXPECT_NE(found, nullptr) << name;
        static_assert(sizeof found == sizeof function);
        std::memcpy(&function, &found, sizeof function);
    }
    HMODULE m_module;
};

}  // namespace tavix_test
