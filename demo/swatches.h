/* Colours with their names, as the owner of a list or combo box draws them. */
#pragma once

#include <windows.h>

#include <span>

namespace gallery {

/* The names, the same number of them always. */
std::span<const char* const> swatch_names();

/* Adds a swatch an item by that message (LB_ADDSTRING or CB_ADDSTRING). */
void add_swatches(HWND control, UINT add_message);

/* Draws an item of such a control: a patch of its colour, then the name. */
void draw_swatch(const DRAWITEMSTRUCT& item);

/* A dialog's procedure that draws the swatches of all its controls; otherwise as of any plain dialog. */
INT_PTR CALLBACK swatches_dialog_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

}  // namespace gallery
