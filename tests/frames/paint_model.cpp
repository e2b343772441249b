#include "frames/paint_model.h"

#include <sstream>

namespace tavix_test {

PaintModel::PaintModel(const TestSkin& skin, int width, int height) : m_skin(skin) {
    m_picture.width = width;
    m_picture.height = height;
    m_picture.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
}

void PaintModel::Fill(RECT area, COLORREF colour) {
    for (LONG y = std::max(0L, area.top); y < std::min<LONG>(area.bottom, m_picture.height); ++y)
        for (LONG x = std::max(0L, area.left); x < std::min<LONG>(area.right, m_picture.width); ++x)
            m_picture.pixels[static_cast<std::size_t>(y * m_picture.width + x)] = colour;
}

void PaintModel::Gradient(RECT area, COLORREF first, COLORREF second, bool horizontal) {
    Fill(area, second);
    const int span = (horizontal ? area.right - area.left : area.bottom - area.top) - 2;
    const auto channel = [span](int from, int to, int i) {
        return static_cast<BYTE>(from + ::MulDiv(to - from, i, span));
    };
    for (int i = 0; i <= span; i += 2) {
        const COLORREF colour = RGB(channel(GetRValue(first), GetRValue(second), i),
                                    channel(GetGValue(first), GetGValue(second), i),
                                    channel(GetBValue(first), GetBValue(second), i));
        if (horizontal)
            Fill({area.left + i, area.top, area.left + i + 2, area.bottom}, colour);
        else
            Fill({area.left, area.top + i, area.right, area.top + i + 2}, colour);
    }
}

void PaintModel::Draw(DWORD bitmap, int x, int y) {
    const SIZE size = m_skin.BitmapSize(bitmap);
    Fill({x, y, x + size.cx, y + size.cy}, TestSkin::ColourOfBitmap(bitmap));
}

void PaintModel::DrawIn(DWORD bitmap, RECT area) {
    const SIZE size = m_skin.BitmapSize(bitmap);
    Fill({area.left, area.top, std::min(area.right, area.left + size.cx),
          std::min(area.bottom, area.top + size.cy)},
         TestSkin::ColourOfBitmap(bitmap));
}

void PaintModel::Tile(DWORD bitmap, int from, int end) {
    for (int x = from; x < end; x += m_skin.BitmapSize(bitmap).cx) Draw(bitmap, x, 0);
}

void PaintModel::BorderLines(int top) {
    const int w = m_picture.width;
    const int h = m_picture.height;
    const auto colour = [this](DWORD id) { return m_skin.Colour(id); };
    Gradient({0, top, 1, h}, colour(7), colour(8));
    Gradient({1, top, 2, h}, colour(9), colour(10));
    Gradient({w - 1, top, w, h}, colour(7), colour(8));
    Gradient({w - 2, top, w - 1, h}, colour(9), colour(10));
    Gradient({2, h - 3, w - 2, h - 2}, colour(11), colour(12), true);
    Gradient({1, h - 2, w - 1, h - 1}, colour(13), colour(14), true);
    Gradient({0, h - 1, w, h}, colour(15), colour(16), true);
}

Picture ExpectedFrame(const TestSkin& skin, int w, int h, const FrameLook& look) {
    PaintModel model(skin, w, h);
    model.Fill({0, 0, w, h}, skin.Colour(5));
    const int s0 = static_cast<int>(skin.Size(0));
    const int s1 = static_cast<int>(skin.Size(1));
    const int s2 = static_cast<int>(skin.Size(2));
    const int s3 = static_cast<int>(skin.Size(3));
    const int s7 = static_cast<int>(skin.Size(7));
    RECT left{0, s3, s0, h};
    RECT right{w - s1 - 1, s3, w, h};
    COLORREF fromLeft = skin.Colour(5);
    COLORREF fromRight = fromLeft;
    if (look.menuBar) {
        for (RECT* border : {&left, &right}) {
            model.Gradient({border->left, s3, border->right, s3 + s7 / 2}, 0xFFFFFF, 0xFFFFFF);
            model.Gradient({border->left, s3 + s7 / 2, border->right, s3 + s7}, 0xFFFFFF, 0xEAEAEA);
            border->top = s3 + s7;
            const DWORD patch = border == &left ? 72 : 73;
            model.Draw(patch, border->left + 1, border->top);
            border->top += skin.BitmapSize(patch).cy;
        }
        fromLeft = model.At(left.left + (left.right - left.left) / 2, left.top - 2);
        fromRight = model.At(right.left + (right.right - right.left) / 2, right.top - 1);
    }
    model.Gradient(right, fromLeft, skin.Colour(6));
    model.Gradient(left, fromRight, skin.Colour(6));
    model.Fill({0, h - s2 - 1, w, h}, skin.Colour(6));
    const bool caption = (look.style & WS_CAPTION) != 0;
    model.BorderLines(caption ? s3 : 0);
    if (caption) {
        const int plate = skin.BitmapSize(12).cx;
        const int tx = (w - plate) / 2;
        model.Draw(9, 0, 0);
        model.Tile(10, s0, tx);
        model.Tile(10, tx + plate, w - s0);
        model.Draw(11, w - skin.BitmapSize(11).cx, 0);
        model.Draw(12, tx, 0);
        const SIZE grip = skin.BitmapSize(13);
        model.Draw(13, w - 4 - grip.cx, h - 5 - grip.cy);
    }
    if (look.style & WS_SYSMENU) {
        if (look.style & WS_MINIMIZEBOX) model.DrawIn(static_cast<DWORD>(6 + look.minState), look.min);
        if (look.style & WS_MAXIMIZEBOX) model.DrawIn(static_cast<DWORD>(3 + look.maxState), look.max);
        model.DrawIn(static_cast<DWORD>(look.closeState), look.close);
    }
    return model.Result();
}

Picture ExpectedDialog(const TestSkin& skin, int w, int h, const DialogLook& look) {
    PaintModel model(skin, w, h);
    // Around a child there is nothing of the skin: the empty surface shows.
    if (look.style & (DS_CONTROL | WS_CHILD)) return model.Result();
    const bool caption = (look.style & WS_CAPTION) != 0;
    model.Gradient({0, 0, w, h}, 0xEFF0EC, 0xD9D9D9);
    model.BorderLines(caption ? static_cast<int>(skin.Size(15)) : 0);
    if (caption) {
        model.Draw(27, 0, 0);
        model.Tile(29, skin.BitmapSize(27).cx, w);
        model.Draw(28, w - skin.BitmapSize(28).cx, 0);
        if (look.icon) {
            const int x = static_cast<int>(skin.Size(12)) + 5;
            model.Fill({x, 5, x + ::GetSystemMetrics(SM_CXSMICON), 5 + ::GetSystemMetrics(SM_CYSMICON)},
                       *look.icon);
        }
    }
    const struct {
        bool exists;
        int bitmap;
    } fromTheRight[] = {{(look.style & WS_SYSMENU) != 0, 14 + look.closeState},
                        {(look.style & WS_MAXIMIZEBOX) != 0, 21 + look.maxState},
                        {(look.style & WS_MINIMIZEBOX) != 0, 17 + look.minState},
                        {(look.style & DS_CONTEXTHELP) != 0, 24 + look.helpState}};
    int x = w + look.buttons.left;
    for (const auto& button : fromTheRight) {
        if (!button.exists) continue;
        model.DrawIn(static_cast<DWORD>(button.bitmap),
                     {x - look.buttons.right, look.buttons.top, x, look.buttons.top + look.buttons.bottom});
        x -= look.buttons.right + 2;
    }
    return model.Result();
}

std::string DifferenceOutside(const Picture& expected, const Picture& actual, const RECT& ignored) {
    if (expected.width != actual.width || expected.height != actual.height) return "the sizes differ";
    int count = 0;
    std::ostringstream first;
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            const bool skip =
                x >= ignored.left && x < ignored.right && y >= ignored.top && y < ignored.bottom;
            if (skip || expected.At(x, y) == actual.At(x, y)) continue;
            if (count++ == 0)
                first << std::hex << "expected 0x" << expected.At(x, y) << ", is 0x" << actual.At(x, y)
                      << std::dec << " at " << x << "," << y;
        }
    }
    return count == 0 ? "" : first.str() + ", and " + std::to_string(count - 1) + " more differ";
}

}  // namespace tavix_test
