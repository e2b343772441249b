// Modules that are all linked to the same address: one can take another's place when that has gone. They
// differ in their size and in the one function that they import, TAVIX_CALLS.
#include <windows.h>

extern "C" {

// Fills the image before the import table, with what is no address of any function.
__declspec(dllexport) volatile int TavixTestPadding[TAVIX_PADDING] = {1};

BOOL WINAPI DllMainCRTStartup(HINSTANCE, DWORD, void*) { return TRUE; }

#ifdef TAVIX_CALLS
__declspec(dllexport) void TavixTestCall() { TAVIX_CALLS; }
#endif
}
