/*
 * The compiler's thread support keeps two handles for each thread that used the language's
 * runtime, and closes them when that thread ends. The thread that unloads the library goes on,
 * so without this file each loading and unloading would cost the program two handles.
 */
#include <windows.h>

// What the thread support does at the end of a thread: a part of the toolchain's posix flavour.
extern "C" PIMAGE_TLS_CALLBACK __xl_f;

namespace {

struct RuntimeEnd {
    ~RuntimeEnd() { __xl_f(nullptr, DLL_THREAD_DETACH, nullptr); }
};

// Made first and gone last: other objects use the runtime while they end.
__attribute__((init_priority(101))) RuntimeEnd g_runtimeEnd;

}  // namespace
