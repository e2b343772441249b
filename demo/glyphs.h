/* Small pictures for the buttons of tool bars, drawn at run time. */
#pragma once

#include <windows.h>

#include <commctrl.h>

namespace gallery {

/* In the order of the images in a list. */
enum Glyph { glyph_new, glyph_open, glyph_save, glyph_undo, glyph_bold, glyph_left, glyph_find, glyph_count };

/* The two colours of an image list's glyphs. */
struct GlyphColours {
    COLORREF line;
    COLORREF fill;
};

constexpr GlyphColours plain_glyphs = {RGB(60, 72, 88), RGB(214, 222, 230)};
constexpr GlyphColours hot_glyphs = {RGB(22, 84, 150), RGB(255, 214, 120)};
constexpr GlyphColours disabled_glyphs = {RGB(178, 184, 192), RGB(232, 235, 238)};

/* An image list with all glyphs in their size. It stays for as long as the program runs, so that any number
   of tool bars can show it. Throws Failure without memory. */
HIMAGELIST create_glyphs(int size, const GlyphColours& colours);

}  // namespace gallery
