/* The faces of buttons: from a state to the parts that show, and from the parts to a picture. */
#pragma once

#include "tavixskin/framework/gdi.h"

namespace tavix {

/* What the face of a push button depends on. */
struct PushState {
    bool enabled = true;
    bool hot = false;
    bool pressed = false;
    bool focused = false;
};

/* What shows of a push button: a vertical gradient, its border, its text. */
struct PushParts {
    COLORREF top;
    COLORREF bottom;
    COLORREF border;
    COLORREF text;
    bool focusRect;
};

PushParts PushPartsOf(const PushState& state);

/* Paints the whole face. The text is centred, in the system's dialogue font. */
void PaintPushFace(CDC& dc, const RECT& client, const PushParts& parts, const char* text);

/* What shows of a check box or radio button: a mark at the left edge and a text beside it. */
struct MarkParts {
    CBitmap* mark;  // null: nothing is drawn
    CSize extent;   // the room that is kept for the mark
    int textGap;    // from the mark to the text
    COLORREF key;   // the colour of the mark that is left out
    COLORREF text;
    HFONT font;  // null: the context's own
};

MarkParts CheckPartsOf(bool checked, bool enabled, HFONT font);
MarkParts RadioPartsOf(bool checked, bool enabled, HFONT font);

/* Where the mark stands: at the left edge, centred in height. */
CRect MarkRect(const RECT& client, const CSize& extent);

/* Paints mark and text over what is there. */
void PaintMarkFace(CDC& dc, const RECT& client, const MarkParts& parts, const char* text);

/* The left columns of the client rectangle that are repainted when only the mark changes. */
CRect MarkColumn(const RECT& client);

}  // namespace tavix
