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

/* Transparent text of one colour; mode and colour go back on every way out. */
class TextScope {
public:
    TextScope(HDC dc, COLORREF colour)
        : m_dc(dc), m_formerMode(::SetBkMode(dc, TRANSPARENT)), m_formerColour(::SetTextColor(dc, colour)) {}
    ~TextScope() {
        ::SetTextColor(m_dc, m_formerColour);
        ::SetBkMode(m_dc, m_formerMode);
    }
    TextScope(const TextScope&) = delete;
    TextScope& operator=(const TextScope&) = delete;

private:
    HDC m_dc;
    int m_formerMode;
    COLORREF m_formerColour;
};

}  // namespace tavix
