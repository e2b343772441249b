/* A scope of transparent text. */
#pragma once

#include <windows.h>

namespace tavix {

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
