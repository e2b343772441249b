/* What skins that paint a control's text share. */
#pragma once

#include "engine/window_call.h"

namespace tavix {

/* A window's text in the ANSI code page, at most 255 characters of it. */
class ControlText {
public:
    explicit ControlText(HWND window) {
        CallWindow(window, WM_GETTEXT, sizeof m_text - 1, reinterpret_cast<LPARAM>(m_text));
    }
    const char* c_str() const { return m_text; }

private:
    char m_text[257] = {};  // one more than is told: a host's own answer may have no end
};

}  // namespace tavix
