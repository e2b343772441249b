/* The painting of a tool bar: from a button's state to what shows of it, and from that to a picture. */
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* What a tool bar says of a button. */
struct ToolButton {
    CRect rect;  // in the client area
    BYTE style;
    BYTE state;
    int image;
};

enum class ToolButtonState { Disabled, Normal, Hot };

struct ToolButtonLook {
    ToolButtonState state;
    bool pressed;
};

/* Any of them may be null. */
struct ToolBarImages {
    HIMAGELIST normal;
    HIMAGELIST hot;
    HIMAGELIST disabled;
};

/* How an image is drawn. */
enum class ToolImageEffect {
    Plain,
    Lifted,      // twice, two pixels apart
    Pushed,      // once, a pixel to the right and down
    Engraved,    // as the system shows what can't be used
    Silhouette,  // all that isn't white in one grey
};

struct ToolImage {
    HIMAGELIST list;  // null: none
    ToolImageEffect effect;
};

/* Higher bars have a border and the skin's background. */
constexpr int kLowToolBar = 30;
inline bool IsHighToolBar(const RECT& window) { return window.bottom - window.top > kLowToolBar; }

/* From a high bar's window rectangle to its client area; a low one is all client area. */
void DeflateToolBar(RECT& window);

/* What a painting of the whole bar shows of a button; nothing for a separator and some states. */
std::optional<ToolButtonLook> LookOfToolButton(const ToolButton& button, bool underMouse);

ToolImage ImageOfToolButton(const ToolButton& button, const ToolButtonLook& look,
                            const ToolBarImages& images);

/*
 * The bitmap along the top of the rectangle; where it isn't high enough, or is null, the gradient of the
 * skin's tool bar colours.
 */
void PaintToolBarBackground(CDC& dc, const RECT& bar, CBitmap* bitmap);

/* Face, arrow and image over what is there. A bar's client height limits that of some faces. */
void PaintToolButton(CDC& dc, const ToolButton& button, const ToolButtonLook& look,
                     const ToolBarImages& images, int clientHeight);

}  // namespace tavix
