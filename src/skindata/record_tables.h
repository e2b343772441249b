/* What the loader and the saver of the records share beside the tables of skin_layout.h. */
#pragma once

#include "tavixskin/skin_layout.h"

namespace tavix {

/* The stream of the root that holds the file's header, and the stream of a record's image. */
inline constexpr char kHeaderStream[] = "SkinInfo";
inline constexpr char kDataStream[] = "Data";

/* The order in which a file's records are loaded and saved: Global, then by number. */
inline constexpr TSkinType kRecordOrder[TAVIX_RECORD_COUNT] = {
    skinGlobal,   skinButton, skinFrame,   skinDialog,    skinToolBar, skinCombobox, skinTabCtrl,
    skinHeadCtrl, skinEdit,   skinListBox, skinScrollbar, skinMenu,    skinDockBar,
};

/* The largest record: a buffer of this size holds any. */
inline constexpr DWORD kLargestRecord = sizeof(TSkinDockBarInfo);

/* A vertical scroll bar up to this width takes the small set of scroll bar bitmaps. */
inline constexpr int kWidestSmallScrollBar = 16;

/*
 * Packs a caption button rectangle: the low bytes of top, left, right, bottom from the lowest
 * byte on. Top comes before left; the painters read it back the same way.
 */
DWORD PackRect(const RECT& rect);

}  // namespace tavix
