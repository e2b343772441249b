/*
 * What frames and dialogs should look like, worked out pixel by pixel from the rules alone, to be
 * held against what the library painted.
 */
#pragma once

#include <optional>

#include "support/test_skin.h"
#include "support/window_probe.h"

namespace tavix_test {

class PaintModel {
public:
    PaintModel(const TestSkin& skin, int width, int height);

    void Fill(RECT area, COLORREF colour);
    /* Bands of two pixels; an odd last row or column keeps the second colour. */
    void Gradient(RECT area, COLORREF first, COLORREF second, bool horizontal = false);
    /* A flat bitmap of the test skin in its own size, or cut to a size. */
    void Draw(DWORD bitmap, int x, int y);
    void DrawIn(DWORD bitmap, RECT area);
    void Tile(DWORD bitmap, int from, int end);
    /* The columns and rows around frames and dialogs. */
    void BorderLines(int top);

    COLORREF At(int x, int y) const { return m_picture.At(x, y); }
    const Picture& Result() const { return m_picture; }

private:
    const TestSkin& m_skin;
    Picture m_picture;
};

struct FrameLook {
    DWORD style;
    RECT close, max, min;
    int closeState = 0, maxState = 0, minState = 0;
    bool menuBar = false;
};
Picture ExpectedFrame(const TestSkin& skin, int width, int height, const FrameLook& look);

/* A dialog, as its style was before the buttons' bits were taken from it. */
struct DialogLook {
    DWORD style;
    RECT buttons{-8, 4, 16, 16};  // the packed geometry
    int closeState = 0, maxState = 0, minState = 0, helpState = 0;
    std::optional<COLORREF> icon;  // of a small icon in one colour
};
/* Without its title. */
Picture ExpectedDialog(const TestSkin& skin, int width, int height, const DialogLook& look);

/* How many pixels outside `ignored` differ; the first of them is told. */
std::string DifferenceOutside(const Picture& expected, const Picture& actual, const RECT& ignored);

}  // namespace tavix_test
