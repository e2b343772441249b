/* Regions from the pixels of a bitmap. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/*
 * Adds the pixels that differ from the key to the region; a region without a handle starts
 * empty. `extent`, if given, bounds the columns and rows that are looked at. Always 1.
 */
int RegionFromBitmapOpaque(CRgn* region, CBitmap* bitmap, COLORREF key, const SIZE* extent = nullptr);

/*
 * Makes the region the pixels that equal the key; a former handle is deleted. A null bitmap
 * gives the empty region. Always 1.
 */
int RegionFromBitmapKey(CRgn* region, CBitmap* bitmap, COLORREF key, const SIZE* extent = nullptr);

class BitmapRows;

/*
 * The region of a bitmap's pixels, within `size` from its top left, that equal the key, or that
 * differ from it. Null if there are none or no memory; the caller owns the result.
 */
HRGN RegionOfPixels(BitmapRows& rows, const SIZE& size, COLORREF key, bool equal);

/*
 * True if the pixels that equal the key, within `extent`, lie in more than `most` runs of a row: no
 * shape that anybody drew, and dear to make a region of.
 */
bool HasMoreKeyRuns(CBitmap* bitmap, COLORREF key, const SIZE& extent, int most);

/*
 * Takes the bitmap's pixels that equal the key from the region, the bitmap standing at `at`; `extent` bounds
 * what is looked at. A corner is a few dozen runs: a bitmap that has thousands changes nothing.
 */
void CutKeyPixels(CRgn& region, CBitmap* bitmap, COLORREF key, const POINT& at, const SIZE& extent);

}  // namespace tavix
