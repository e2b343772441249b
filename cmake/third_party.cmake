# Libraries that Debian ships as sources or headers and that cross-compile as they stand.
set(TAVIX_GTEST_DIR /usr/src/googletest CACHE PATH "GoogleTest's sources")
set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
add_subdirectory(${TAVIX_GTEST_DIR} ${CMAKE_BINARY_DIR}/obj/googletest EXCLUDE_FROM_ALL)

# CLI11 and nlohmann-json are headers only. A folder with links to just these two keeps the
# rest of the Linux headers out of a Windows build.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/third_party)
foreach(name CLI nlohmann)
  if(NOT EXISTS /usr/include/${name})
    message(FATAL_ERROR "/usr/include/${name} is missing: run './run setup'")
  endif()
  file(CREATE_LINK /usr/include/${name} ${CMAKE_BINARY_DIR}/third_party/${name} SYMBOLIC)
endforeach()
add_library(tavix_third_party INTERFACE)
target_include_directories(tavix_third_party SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/third_party)
