#include "failure.h"

#include <windows.h>

namespace gallery {

void fail_with_last_error(const std::string& attempted) {
    const DWORD code = GetLastError();
    char reason[256] = "";
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                                  0, reason, sizeof(reason), nullptr);
    // The system ends its messages with a full stop and a line break.
    while (length > 0 &&
           (reason[length - 1] == '\n' || reason[length - 1] == '\r' || reason[length - 1] == '.'))
        --length;
    throw Failure(attempted + ": " + std::string(reason, length) + " (error " + std::to_string(code) + ")");
}

}  // namespace gallery
