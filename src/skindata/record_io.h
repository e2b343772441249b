/* One loader and one saver for all records; the tables say what each record holds. */
#pragma once

#include <windows.h>

#include <objidl.h>

#include "tavixskin/skin_face.h"
#include "tavixskin/skin_layout.h"

namespace tavix {

/*
 * Reads a record below the root into the face: 1, or 0 if its storage or its stream "Data" can
 * be neither opened nor created. A bitmap name without a usable stream gives its id the bitmap
 * of the name before it, null for the first.
 *
 * scrollBarWidth  the width of vertical scroll bars; chooses between the two sets of bitmaps
 */
int LoadRecord(IStorage* root, TSkinType kind, CTavixSkinFace* face, int scrollBarWidth);

/* Writes a record image and the bitmaps of its slots below the root: 1 or 0. */
int SaveRecord(IStorage* root, TSkinType kind, const void* record);

}  // namespace tavix
