/* The calling thread's last error, kept for a caller who must not see what the library does. */
#pragma once

#include <windows.h>

namespace tavix {

class LastErrorKeeper {
public:
    LastErrorKeeper() : m_error(::GetLastError()) {}
    ~LastErrorKeeper() { ::SetLastError(m_error); }
    LastErrorKeeper(const LastErrorKeeper&) = delete;
    LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;

private:
    DWORD m_error;
};

}  // namespace tavix
