/* The gallery's ordinary top-level window: a skinned class around a client area that is the host's own. */
#pragma once

#include <windows.h>

namespace gallery {

/* What the client area shows: a white card with a heading and some text. */
struct Card {
    const char* heading;
    const char* text;
};

/* Paints a card that fills a client area. */
void paint_card(HDC dc, const RECT& client, const Card& card);
/* The card's white sheet with its text alone, for an area that has a border already. */
void paint_sheet(HDC dc, const RECT& area, const Card& card);

/* The system's font for texts in windows, at a height and weight of its own if those aren't 0. The caller
   owns it. */
HFONT create_message_font(int height = 0, int weight = 0);

/* Registers a class of windows that redraw whole when their size changes. False if that fails and there is
   no such class yet. */
bool register_window_class(const char* name, WNDPROC procedure);

/* Makes a hidden window of class "Tavix_PaneA" that shows `card`, which has to outlive it. It takes
   over `menu` (null for none). Null on failure. */
HWND create_frame(const char* title, const Card& card, DWORD style, const RECT& place, HMENU menu = nullptr);

}  // namespace gallery
