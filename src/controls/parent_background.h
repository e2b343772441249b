/* Controls without a background of their own, and the parent that shows behind them. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* What is sampled when the pixels beside a control can't be read. */
enum class SecondTry { None, ParentOrigin };

/* The window's rectangle in the client co-ordinates of another window. */
CRect WindowRectIn(HWND window, HWND other);

/*
 * The colour that the parent shows beside a control: one pixel left of its top row, or, for a
 * control at the parent's left edge, one pixel right of its right edge. If that pixel can't be
 * read, the parent's pixel (0, 0) if so asked. CLR_INVALID if nothing could be read.
 */
COLORREF ColourBesideControl(HWND control, HWND parent, SecondTry secondTry);

/*
 * Fills the control's client rectangle with the colour beside it, if the parent has
 * WS_CLIPCHILDREN: such a parent doesn't paint below its children. Below any other parent the
 * picture is there already and stays.
 */
void SampleParentBackground(HWND control, CDC& dc, SecondTry secondTry);

/*
 * The parent's colour beside a place in it, in that row: one pixel left of the place, or else one
 * pixel right of its right edge. If neither can be read, the surface of the skin's dialogs.
 */
COLORREF ColourAtSides(HWND parent, const CRect& place, int row);

/* Has the parent repaint, when it comes to it, what lies below the window. */
void InvalidateUnderParent(HWND window);

/* Has the parent repaint, at once, what lies below the window. Without a parent nothing happens. */
void RepaintUnderParent(HWND window);

/* The same for a part of the window, in its client co-ordinates. */
void RepaintUnderParent(HWND window, const RECT& part);

}  // namespace tavix
