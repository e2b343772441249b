/* Points, sizes and rectangles: the platform's structures with a few operations. */
#pragma once

#include <windows.h>

class CSize : public SIZE {
public:
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(const SIZE& size) : SIZE(size) {}
};

class CPoint : public POINT {
public:
    CPoint() : POINT{0, 0} {}
    CPoint(int x_, int y_) : POINT{x_, y_} {}
    CPoint(const POINT& point) : POINT(point) {}
    /* The signed low and high words, as mouse messages pack a point. */
    explicit CPoint(LPARAM packed)
        : POINT{static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))} {}
    void Offset(int dx, int dy) { x += dx, y += dy; }
    bool operator==(const POINT& other) const { return x == other.x && y == other.y; }
};

/* Left and top belong to the rectangle, right and bottom do not. */
class CRect : public RECT {
public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int left_, int top_, int right_, int bottom_) : RECT{left_, top_, right_, bottom_} {}
    CRect(const RECT& rect) : RECT(rect) {}
    CRect(const POINT& at, const SIZE& size) : RECT{at.x, at.y, at.x + size.cx, at.y + size.cy} {}

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CSize Size() const { return {Width(), Height()}; }
    CPoint TopLeft() const { return {left, top}; }
    bool IsRectEmpty() const { return left >= right || top >= bottom; }
    bool PtInRect(const POINT& p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
    void SetRect(int l, int t, int r, int b) { left = l, top = t, right = r, bottom = b; }
    void SetRectEmpty() { SetRect(0, 0, 0, 0); }
    void OffsetRect(int dx, int dy) { left += dx, right += dx, top += dy, bottom += dy; }
    void InflateRect(int dx, int dy) { left -= dx, right += dx, top -= dy, bottom += dy; }
    void DeflateRect(int dx, int dy) { InflateRect(-dx, -dy); }
    bool operator==(const RECT& o) const {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
};
