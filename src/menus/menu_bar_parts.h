/* What the files of the menu bar share: its message, item texts, and the way from buttons to items. */
#pragma once

#include <windows.h>

#include "tavixskin/skin_menu_bar.h"

namespace tavix {

/* Sent by the host to a menu bar: takes the native menu from the window in wParam. */
constexpr UINT kMenuBarSetMenuNull = 2124;

/* A text of 63 characters, and the two terminators that tool bars want after their strings. */
constexpr int kMenuTextRoom = 65;

/* The text of the item at a position of a menu, at most 63 characters of it. */
class MenuText {
public:
    MenuText(HMENU menu, int position) {
        ::GetMenuStringA(menu, static_cast<UINT>(position), m_text, kMenuTextRoom - 1, MF_BYPOSITION);
        // Some systems leave out the terminator of a text that is cut off.
        m_text[kMenuTextRoom - 2] = 0;
    }
    bool IsEmpty() const { return !m_text[0]; }
    operator const char*() const { return m_text; }

private:
    char m_text[kMenuTextRoom] = {};
};

/* Whether the text marks the letter with an ampersand, in either case. */
bool IsAccelerator(const char* text, char letter);

/*
 * The position of the menu item that a button stands for: the items without a text have none. With
 * `shift`, the number of items that the system has put before the first. -1 if there is no such item.
 */
int PositionOfButton(HMENU menu, int button, int shift);

/* Tells whether a menu bar still has the window that it had, and is there at all. */
class MenuBarPresence {
public:
    explicit MenuBarPresence(const CSkinMenuBar& bar) : m_window(bar.GetSafeHwnd()), m_bar(&bar) {}
    explicit operator bool() const { return CWnd::FromHandlePermanent(m_window) == m_bar; }

private:
    HWND m_window;
    const CWnd* m_bar;  // may point to nothing
};

}  // namespace tavix
