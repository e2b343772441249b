#include "glyphs.h"

#include <initializer_list>
#include <string>

#include "failure.h"
#include "handles.h"

namespace gallery {

namespace {

/* A function of the common controls. They are loaded by name, for that gives the version asked for, and stay
   for as long as there are images of theirs. */
template <class Function>
Function* find_function(const char* name) {
    static const HMODULE controls = LoadLibraryA("comctl32.dll");
    const auto found = controls ? GetProcAddress(controls, name) : nullptr;
    if (!found) throw Failure(std::string("The common controls have no ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
}

constexpr COLORREF mask_colour = RGB(255, 0, 255);
constexpr int grid = 16;  // the pictures' own units, whatever the size of an image

/* Draws on one image of a strip, in the units of the grid. */
class GlyphPen {
public:
    GlyphPen(HDC dc, int left, int size) : dc_(dc), left_(left), size_(size) {}

    void box(int left, int top, int right, int bottom) const {
        const POINT from = at(left, top), to = at(right, bottom);
        Rectangle(dc_, from.x, from.y, to.x + 1, to.y + 1);
    }
    void shape(std::initializer_list<POINT> corners) const {
        POINT points[12];
        int count = 0;
        for (const POINT& corner : corners) points[count++] = at(corner.x, corner.y);
        Polygon(dc_, points, count);
    }
    void circle(int left, int top, int right, int bottom) const {
        const POINT from = at(left, top), to = at(right, bottom);
        Ellipse(dc_, from.x, from.y, to.x + 1, to.y + 1);
    }
    void line(int x1, int y1, int x2, int y2) const {
        const POINT from = at(x1, y1), to = at(x2, y2);
        MoveToEx(dc_, from.x, from.y, nullptr);
        LineTo(dc_, to.x, to.y);
    }

private:
    POINT at(int x, int y) const { return {left_ + x * size_ / grid, y * size_ / grid}; }

    HDC dc_;
    int left_, size_;
};

void draw(Glyph glyph, const GlyphPen& pen) {
    switch (glyph) {
        case glyph_new:
            return pen.shape({{3, 1}, {9, 1}, {12, 4}, {12, 14}, {3, 14}});
        case glyph_open:
            pen.shape({{1, 13}, {1, 3}, {6, 3}, {7, 5}, {12, 5}, {12, 13}});
            return pen.shape({{1, 13}, {4, 8}, {15, 8}, {12, 13}});
        case glyph_save:
            pen.box(2, 2, 13, 13);
            pen.box(4, 2, 11, 6);
            return pen.box(5, 9, 10, 13);
        case glyph_undo:
            return pen.shape({{1, 6}, {6, 1}, {6, 4}, {13, 4}, {13, 13}, {10, 13}, {10, 8}, {6, 8}, {6, 11}});
        case glyph_bold:
            pen.box(4, 2, 10, 7);
            pen.box(4, 7, 12, 13);
            return pen.line(4, 2, 4, 14);
        case glyph_left:
            for (int row = 0; row < 5; ++row) pen.line(2, 3 + 2 * row, row % 2 ? 9 : 13, 3 + 2 * row);
            return;
        case glyph_find:
            pen.circle(2, 2, 10, 10);
            pen.line(9, 9, 14, 14);
            return pen.line(10, 9, 15, 14);
        case glyph_count:
            return;
    }
}

}  // namespace

HIMAGELIST create_glyphs(int size, const GlyphColours& colours) {
    const ScreenDc screen;
    const OwnedMemoryDc dc(CreateCompatibleDC(screen));
    const OwnedBitmap strip(CreateCompatibleBitmap(screen, size * glyph_count, size));
    const auto create = find_function<decltype(ImageList_Create)>("ImageList_Create");
    const auto add = find_function<decltype(ImageList_AddMasked)>("ImageList_AddMasked");
    const HIMAGELIST list = create(size, size, ILC_COLOR24 | ILC_MASK, glyph_count, 1);
    if (!dc || !strip || !list) throw Failure("The images of a tool bar can't be made");
    {
        const Selection strip_selection(dc.get(), strip.get());
        const OwnedBrush mask(CreateSolidBrush(mask_colour)), fill(CreateSolidBrush(colours.fill));
        const OwnedPen line(CreatePen(PS_SOLID, 1, colours.line));
        const RECT all = {0, 0, size * glyph_count, size};
        FillRect(dc.get(), &all, mask.get());
        const Selection brush_selection(dc.get(), fill.get());
        const Selection pen_selection(dc.get(), line.get());
        for (int i = 0; i < glyph_count; ++i) draw(static_cast<Glyph>(i), {dc.get(), i * size, size});
    }
    add(list, strip.get(), mask_colour);
    return list;
}

}  // namespace gallery
