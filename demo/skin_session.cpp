#include "skin_session.h"

#include <iostream>

#include "failure.h"

namespace gallery {

namespace {

constexpr char library_name[] = "TavixSkinCtrls.dll";

/* The library is given a full path, so that a change of the current folder can't lose the file. */
std::string full_path(const std::string& path) {
    char full[MAX_PATH];
    const DWORD length = GetFullPathNameA(path.c_str(), sizeof(full), full, nullptr);
    if (length == 0 || length >= sizeof(full)) throw Failure("The path of skin '" + path + "' can't be used");
    return full;
}

/* The library repaints without erasing, which leaves a dialog's background as it was. */
BOOL CALLBACK redraw_whole(HWND window, LPARAM) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    return TRUE;
}

}  // namespace

SkinSession::SkinSession(const std::string& skin_file) : file_(full_path(skin_file)) {
    const DWORD attributes = GetFileAttributesA(file_.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) fail_with_last_error("Skin '" + file_ + "' can't be found");
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) throw Failure("Skin '" + file_ + "' is a folder, not a file");

    library_.reset(LoadLibraryA(library_name));
    if (!library_) fail_with_last_error(std::string(library_name) + " can't be loaded");
    install_ = find<decltype(install_)>("InstallTavixSkin");
    uninstall_ = find<decltype(uninstall_)>("UnInstallTavixSkin");
    set_skin_ = find<decltype(set_skin_)>("SetSkinFromFile");
    bitmap_ = find<decltype(bitmap_)>("GetTavixSkinHBITMAP");

    if (!install_(file_.c_str())) throw Failure("The library refused to install skin '" + file_ + "'");
    warn_if_empty();
}

SkinSession::~SkinSession() { uninstall_(); }

bool SkinSession::reload() {
    if (!set_skin_(file_.c_str())) return false;
    EnumThreadWindows(GetCurrentThreadId(), redraw_whole, 0);
    warn_if_empty();
    return true;
}

template <class Function>
Function SkinSession::find(const char* name) const {
    const FARPROC function = GetProcAddress(library_.get(), name);
    if (!function) fail_with_last_error(std::string(library_name) + " has no function " + name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(function));
}

/* A file that is no skin at all installs without complaint, and then nothing is drawn. */
void SkinSession::warn_if_empty() const {
    constexpr DWORD bitmap_ids = 255;
    for (DWORD id = 0; id < bitmap_ids; ++id) {
        if (bitmap_(id)) return;
    }
    std::cerr << "gallery: warning: skin '" << file_ << "' holds no bitmap\n";
}

}  // namespace gallery
