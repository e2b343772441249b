# Cross-compiles to Windows with the posix-threads flavour of mingw-w64: the C++ library's
# <thread> and <mutex> exist only there. The including file sets TAVIX_TRIPLET.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${TAVIX_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TAVIX_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${TAVIX_TRIPLET}-windres)
# Only the cross compiler's own folders: a header of the Linux system must never be found.
set(CMAKE_FIND_ROOT_PATH /usr/${TAVIX_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
