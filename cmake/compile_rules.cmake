# How every target of the project is compiled.
add_library(tavix_rules INTERFACE)
target_compile_options(tavix_rules INTERFACE -Wall -Wextra -Werror)
# Windows 7 and later. The ANSI names are called as such, so UNICODE stays undefined.
target_compile_definitions(tavix_rules INTERFACE
  WIN32_LEAN_AND_MEAN NOMINMAX STRICT _WIN32_WINNT=0x0601 WINVER=0x0601 _WIN32_IE=0x0700)
# The language's runtime goes into every binary: nothing but the system's DLLs is imported.
target_link_options(tavix_rules INTERFACE -static -static-libgcc -static-libstdc++)

# The test builds trap on undefined behaviour, broken library preconditions and smashed stacks.
add_library(tavix_checks INTERFACE)
target_compile_options(tavix_checks INTERFACE
  -O1 -g1 -fno-omit-frame-pointer -fstack-protector-strong
  -fsanitize=undefined -fsanitize-undefined-trap-on-error)
target_compile_definitions(tavix_checks INTERFACE _GLIBCXX_ASSERTIONS TAVIX_CHECKED)
target_link_options(tavix_checks INTERFACE -fstack-protector-strong)

add_library(tavix_system_libraries INTERFACE)
target_link_libraries(tavix_system_libraries INTERFACE
  gdi32 user32 comctl32 ole32 uuid shlwapi msimg32 imagehlp)

# What is shipped carries no symbols; the test programs keep theirs.
add_library(tavix_shipped INTERFACE)
target_link_options(tavix_shipped INTERFACE -s)
