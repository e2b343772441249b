/* The system's menu font, from which titles and menus take theirs. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* In its own weight, or in another one. Without a handle if the system doesn't tell. */
void CreateMenuFont(CFont& font, LONG weight = FW_DONTCARE);

}  // namespace tavix
