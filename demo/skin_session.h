/* The skin on the program's thread: the whole of what a host has to do with the library. */
#pragma once

#include <string>

#include "handles.h"
#include "tavixskin.h"

namespace gallery {

/* Loads the library and installs a skin; takes it away again at its end. Windows are made after this
   object and destroyed before it. */
class SkinSession {
public:
    /* Throws Failure if the library can't be loaded or the skin can't be installed. */
    explicit SkinSession(const std::string& skin_file);
    ~SkinSession();
    SkinSession(const SkinSession&) = delete;
    SkinSession& operator=(const SkinSession&) = delete;

    /* Loads the file again under the open windows; false if it is not there at this moment. */
    bool reload();
    /* The file's full path. */
    const std::string& file() const { return file_; }

private:
    template <class Function>
    Function find(const char* name) const;
    void warn_if_empty() const;

    std::string file_;
    OwnedModule library_;
    decltype(&InstallTavixSkin) install_ = nullptr;
    decltype(&UnInstallTavixSkin) uninstall_ = nullptr;
    decltype(&SetSkinFromFile) set_skin_ = nullptr;
    decltype(&GetTavixSkinHBITMAP) bitmap_ = nullptr;
};

}  // namespace gallery
