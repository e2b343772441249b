/* What skins that paint a control's text share. */
#pragma once

#include <windows.h>

namespace tavix {

/* A window's text in the ANSI code page, at most 255 characters of it. */
class ControlText {
public:
    explicit ControlText(HWND window) { ::GetWindowTextA(window, m_text, sizeof m_text); }
    const char* c_str() const { return m_text; }

private:
    char m_text[256] = {};
};

}  // namespace tavix
