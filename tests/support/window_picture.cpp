// Pictures of window_probe.h.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/window_probe.h"

namespace tavix_test {

namespace {

/* A DIB section with the rows from the top. */
HBITMAP CreateDib(int width, int height, void** bits) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, bits, nullptr, 0);
}

Picture PictureBetween(HDC dc, HWND window, const RECT& area) {
    EXPECT_NE(dc, nullptr);
    Picture picture = PictureOfDc(dc, area);
    ::ReleaseDC(window, dc);
    return picture;
}

}  // namespace

COLORREF Picture::At(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) return CLR_INVALID;
    return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
}

int Picture::CountOf(COLORREF colour) const {
    return static_cast<int>(std::count(pixels.begin(), pixels.end(), colour));
}

Picture PictureOfDc(HDC dc, const RECT& area) {
    Picture picture;
    picture.width = area.right - area.left;
    picture.height = area.bottom - area.top;
    if (picture.width <= 0 || picture.height <= 0) return {};
    void* bits = nullptr;
    HBITMAP bitmap = CreateDib(picture.width, picture.height, &bits);
    HDC memory = ::CreateCompatibleDC(dc);
    EXPECT_TRUE(bitmap && memory);
    HGDIOBJ former = ::SelectObject(memory, bitmap);
    EXPECT_TRUE(::BitBlt(memory, 0, 0, picture.width, picture.height, dc, area.left, area.top, SRCCOPY));
    ::GdiFlush();
    const auto* source = static_cast<const DWORD*>(bits);
    const size_t count = static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height);
    picture.pixels.resize(count);
    std::transform(source, source + count, picture.pixels.begin(),
                   [](DWORD pixel) { return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF); });
    ::SelectObject(memory, former);
    ::DeleteDC(memory);
    ::DeleteObject(bitmap);
    return picture;
}

Picture PictureOfClient(HWND window) {
    RECT client;
    ::GetClientRect(window, &client);
    return PictureBetween(::GetDC(window), window, client);
}

Picture PictureOfWindow(HWND window) {
    RECT frame;
    ::GetWindowRect(window, &frame);
    ::OffsetRect(&frame, -frame.left, -frame.top);
    return PictureBetween(::GetWindowDC(window), window, frame);
}

Picture RepaintedClient(HWND window) {
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    return PictureOfClient(window);
}

void SpoilClient(HWND window, COLORREF colour) {
    RepaintedClient(window);
    PumpMessages();
    RECT client;
    ::GetClientRect(window, &client);
    HDC dc = ::GetDC(window);
    HBRUSH brush = ::CreateSolidBrush(colour);
    ::FillRect(dc, &client, brush);
    ::DeleteObject(brush);
    ::ReleaseDC(window, dc);
    ::ValidateRect(window, nullptr);
}

Canvas::Canvas(int width, int height, COLORREF colour) : m_width(width), m_height(height) {
    void* bits = nullptr;
    m_dc = ::CreateCompatibleDC(nullptr);
    m_bitmap = CreateDib(width, height, &bits);
    EXPECT_TRUE(m_dc && m_bitmap);
    m_former = ::SelectObject(m_dc, m_bitmap);
    HBRUSH brush = ::CreateSolidBrush(colour);
    const RECT area = Area();
    ::FillRect(m_dc, &area, brush);
    ::DeleteObject(brush);
}

Canvas::~Canvas() {
    ::SelectObject(m_dc, m_former);
    ::DeleteObject(m_bitmap);
    ::DeleteDC(m_dc);
}

}  // namespace tavix_test
