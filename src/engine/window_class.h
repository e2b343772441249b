/* A window's class name, as the library compares it. */
#pragma once

#include <windows.h>

#include <mbstring.h>

namespace tavix {

/* Reads a window's class name, at most 254 characters of it. Empty for a dead window. */
class WindowClassName {
public:
    explicit WindowClassName(HWND window) { ::GetClassNameA(window, m_text, sizeof m_text); }
    /* The whole name, whatever its case, multi-byte aware. */
    bool Is(const char* name) const {
        return _mbsicmp(reinterpret_cast<const unsigned char*>(m_text),
                        reinterpret_cast<const unsigned char*>(name)) == 0;
    }
    const char* c_str() const { return m_text; }

private:
    char m_text[255] = {};
};

}  // namespace tavix
