#include "draw_fixture.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace tavix_test {

const TargetType kAllTargets[9] = {
    TargetType::Compatible, TargetType::Dib32TopDown, TargetType::Dib32BottomUp,
    TargetType::Dib24,      TargetType::Dib16,        TargetType::Dib8,
    TargetType::Mono,       TargetType::Surface,      TargetType::Window,
};
const int kAllDepths[8] = {0, -1, 1, 4, 8, 16, 24, 32};

namespace {

// Where the surface's area lies in its own target: painters use the target's co-ordinates.
constexpr POINT kSurfaceAt{100, 50};

std::vector<RGBQUAD> EvenTable() {
    std::vector<RGBQUAD> table(256);
    for (int i = 0; i < 256; ++i)
        table[static_cast<std::size_t>(i)] = {static_cast<BYTE>(i * 7), static_cast<BYTE>(i * 3),
                                              static_cast<BYTE>(i), 0};
    return table;
}

/* A noise picture, made once. */
HDC NoiseDc() {
    static HDC dc = [] {
        void* bits = nullptr;
        HBITMAP bitmap = MakeDib(32, Target::kSize, true, {}, &bits);
        Random random(77);
        DWORD* pixel = static_cast<DWORD*>(bits);
        for (int i = 0; i < Target::kSize.cx * Target::kSize.cy; ++i) pixel[i] = random.Colour();
        HDC memory = ::CreateCompatibleDC(nullptr);
        ::SelectObject(memory, bitmap);
        return memory;
    }();
    return dc;
}

}  // namespace

int Random::Between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }

COLORREF Random::Colour() { return RGB(Between(0, 255), Between(0, 255), Between(0, 255)); }

RECT Random::Rect(const SIZE& about) {
    RECT r{};
    r.left = Between(-20, about.cx + 10);
    r.top = Between(-20, about.cy + 10);
    switch (Between(0, 7)) {
        case 0:  // under two pixels, or none
            r.right = r.left + Between(0, 3);
            r.bottom = r.top + Between(0, 3);
            break;
        case 1:  // ends before its start
            r.right = r.left + Between(-30, 10);
            r.bottom = r.top + Between(-30, 10);
            break;
        case 2:  // far beyond the target
            r.left -= Between(0, 3000);
            r.top -= Between(0, 3000);
            r.right = r.left + Between(0, 6000);
            r.bottom = r.top + Between(0, 6000);
            break;
        default:
            r.right = r.left + Between(1, about.cx + 30);
            r.bottom = r.top + Between(1, about.cy + 30);
            break;
    }
    return r;
}

std::string NameOf(TargetType type) {
    switch (type) {
        case TargetType::Compatible:
            return "compatible bitmap";
        case TargetType::Dib32TopDown:
            return "32-bit DIB, top down";
        case TargetType::Dib32BottomUp:
            return "32-bit DIB, bottom up";
        case TargetType::Dib24:
            return "24-bit DIB";
        case TargetType::Dib16:
            return "16-bit DIB";
        case TargetType::Dib8:
            return "8-bit DIB";
        case TargetType::Mono:
            return "monochrome bitmap";
        case TargetType::Surface:
            return "off-screen surface";
        case TargetType::Window:
            return "window";
    }
    return "?";
}

Target::Target(TargetType type) {
    if (type == TargetType::Window) {
        m_window = ::CreateWindowExA(WS_EX_TOPMOST, "STATIC", "", WS_POPUP | WS_VISIBLE, 40, 40, kSize.cx,
                                     kSize.cy, nullptr, nullptr, nullptr, nullptr);
        ::UpdateWindow(m_window);
        m_dc = ::GetDC(m_window);
        return;
    }
    if (type == TargetType::Surface) {
        const RECT area{kSurfaceAt.x, kSurfaceAt.y, kSurfaceAt.x + kSize.cx, kSurfaceAt.y + kSize.cy};
        m_surface = std::make_unique<tavix::OffscreenSurface>(nullptr, area);
        m_dc = m_surface->Dc();
        // The tests draw about the origin on all targets alike.
        ::SetViewportOrgEx(m_dc, 0, 0, nullptr);
        return;
    }
    void* bits = nullptr;
    switch (type) {
        case TargetType::Compatible: {
            HDC screen = ::GetDC(nullptr);
            m_bitmap.Attach(::CreateCompatibleBitmap(screen, kSize.cx, kSize.cy));
            ::ReleaseDC(nullptr, screen);
            break;
        }
        case TargetType::Mono:
            m_bitmap.Attach(::CreateBitmap(kSize.cx, kSize.cy, 1, 1, nullptr));
            break;
        case TargetType::Dib24:
            m_bitmap.Attach(MakeDib(24, kSize, false, {}, &bits));
            break;
        case TargetType::Dib16:
            m_bitmap.Attach(MakeDib(16, kSize, false, {}, &bits));
            break;
        case TargetType::Dib8:
            m_bitmap.Attach(MakeDib(8, kSize, false, EvenTable(), &bits));
            break;
        case TargetType::Dib32BottomUp:
            m_bitmap.Attach(MakeDib(32, kSize, false, {}, &bits));
            break;
        default:
            m_bitmap.Attach(MakeDib(32, kSize, true, {}, &bits));
            break;
    }
    m_dc = ::CreateCompatibleDC(nullptr);
    m_former = ::SelectObject(m_dc, m_bitmap.m_hObject);
}

Target::~Target() {
    if (m_former) {
        ::SelectObject(m_dc, m_former);
        ::DeleteDC(m_dc);
    }
    if (m_window) {
        ::ReleaseDC(m_window, m_dc);
        ::DestroyWindow(m_window);
    }
}

Picture Target::Draw(const std::function<void(HDC)>& prepare, const std::function<void(HDC)>& draw) {
    ::BitBlt(m_dc, 0, 0, kSize.cx, kSize.cy, NoiseDc(), 0, 0, SRCCOPY);
    const int saved = ::SaveDC(m_dc);
    if (prepare) prepare(m_dc);
    draw(m_dc);
    ::RestoreDC(m_dc, saved);
    ::GdiFlush();
    return Read();
}

Picture Target::Read() const {
    Picture picture(static_cast<std::size_t>(kSize.cx) * kSize.cy);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, kSize.cx, -kSize.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    // The top byte is no part of a colour, and the platform's own operations disagree about it.
    constexpr DWORD kColour = 0xFFFFFFu;
    if (m_bitmap.m_hObject) {
        ::GetDIBits(m_dc, m_bitmap, 0, kSize.cy, picture.data(), &info, DIB_RGB_COLORS);
        for (DWORD& p : picture) p &= kColour;
        return picture;
    }
    void* bits = nullptr;
    CBitmap copy;
    copy.Attach(MakeDib(32, kSize, true, {}, &bits));
    CMemoryDC memory;
    const SelectionGuard selected(memory, copy.m_hObject);
    ::BitBlt(memory, 0, 0, kSize.cx, kSize.cy, m_dc, 0, 0, SRCCOPY);
    ::GdiFlush();
    const DWORD* pixel = static_cast<const DWORD*>(bits);
    for (DWORD& p : picture) p = *pixel++ & kColour;
    return picture;
}

std::function<void(HDC)> RandomState(Random& random, bool plain_mapping) {
    const int clip = random.Between(0, 3);
    // Normalised: the platform makes a damaged region of an inverted ellipse.
    const RECT box{random.Between(-5, 25), random.Between(-5, 20), random.Between(30, 70),
                   random.Between(25, 50)};
    const int mapping = plain_mapping ? random.Between(0, 1) : random.Between(2, 4);
    const POINT viewport{random.Between(-15, 15), random.Between(-15, 15)};
    const POINT window{random.Between(-15, 15), random.Between(-15, 15)};
    return [=](HDC dc) {
        if (clip == 1) ::IntersectClipRect(dc, box.left, box.top, box.right, box.bottom);
        if (clip == 2) {
            HRGN round = ::CreateEllipticRgnIndirect(&box);
            ::SelectClipRgn(dc, round);
            ::DeleteObject(round);
        }
        if (clip == 3) {
            ::ExcludeClipRect(dc, box.left, box.top, box.left + 7, box.top + 9);
            ::ExcludeClipRect(dc, box.left + 20, box.top + 3, box.right, box.top + 4);
        }
        if (mapping == 1) {
            ::SetViewportOrgEx(dc, viewport.x, viewport.y, nullptr);
            ::SetWindowOrgEx(dc, window.x, window.y, nullptr);
        }
        if (mapping == 2 || mapping == 3) {
            ::SetMapMode(dc, MM_ANISOTROPIC);
            ::SetWindowExtEx(dc, mapping == 2 ? 2 : 3, mapping == 2 ? 3 : 2, nullptr);
            ::SetViewportExtEx(dc, mapping == 2 ? 3 : 2, mapping == 2 ? 2 : 3, nullptr);
        }
        if (mapping == 4) {
            ::SetGraphicsMode(dc, GM_ADVANCED);
            const XFORM moved{1, 0, 0, 1, static_cast<FLOAT>(viewport.x), static_cast<FLOAT>(viewport.y)};
            ::SetWorldTransform(dc, &moved);
        }
    };
}

HBITMAP MakeDib(int depth, const SIZE& size, bool top_down, const std::vector<RGBQUAD>& table, void** bits) {
    struct {
        BITMAPINFOHEADER head;
        RGBQUAD colours[256];
    } info{};
    info.head = {sizeof info.head,
                 size.cx,
                 top_down ? -size.cy : size.cy,
                 1,
                 static_cast<WORD>(depth),
                 BI_RGB,
                 0,
                 0,
                 0,
                 0,
                 0};
    if (depth <= 8) {
        const std::size_t entries = std::size_t{1} << depth;
        std::copy_n(table.begin(), std::min(entries, table.size()), info.colours);
        info.head.biClrUsed = static_cast<DWORD>(entries);
    }
    const BITMAPINFO* header = reinterpret_cast<const BITMAPINFO*>(&info);
    return ::CreateDIBSection(nullptr, header, DIB_RGB_COLORS, bits, nullptr, 0);
}

HBITMAP RandomBitmap(Random& random, int depth, const SIZE& size, COLORREF key) {
    // Few colours, so that the key and runs of it occur.
    COLORREF colours[4] = {key, random.Colour(), random.Colour(), random.Colour()};
    if (random.OneIn(4)) colours[1] = key;
    HBITMAP bitmap = nullptr;
    void* bits = nullptr;
    if (depth == 0) {
        HDC screen = ::GetDC(nullptr);
        bitmap = ::CreateCompatibleBitmap(screen, size.cx, size.cy);
        ::ReleaseDC(nullptr, screen);
    } else if (depth < 0) {
        bitmap = ::CreateBitmap(size.cx, size.cy, 1, 1, nullptr);
    } else {
        std::vector<RGBQUAD> table(256);
        for (std::size_t i = 0; i < table.size(); ++i) {
            const COLORREF c = i < 4 ? colours[i] : random.Colour();
            table[i] = {GetBValue(c), GetGValue(c), GetRValue(c), 0};
        }
        bitmap = MakeDib(depth, size, random.OneIn(2), table, &bits);
    }
    CMemoryDC memory;
    const SelectionGuard selected(memory, bitmap);
    for (int y = 0; y < size.cy; ++y) {
        for (int x = 0; x < size.cx;) {
            const COLORREF colour = colours[random.Between(0, 3)];
            for (int run = random.Between(1, 6); run > 0 && x < size.cx; --run, ++x)
                ::SetPixel(memory, x, y, colour);
        }
    }
    ::GdiFlush();
    if (depth == 32) {
        // A top byte that is no part of the colour.
        DWORD* pixel = static_cast<DWORD*>(bits);
        for (int i = 0; i < size.cx * size.cy; ++i)
            pixel[i] |= static_cast<DWORD>(random.Between(0, 255)) << 24;
    }
    return bitmap;
}

std::string Difference(const Picture& expected, const Picture& actual) {
    int count = 0;
    char text[200] = "";
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (expected[i] == actual[i]) continue;
        const unsigned width = Target::kSize.cx;
        if (count++ == 0)
            std::snprintf(text, sizeof text, "first at (%u, %u): expected %08lX, got %08lX",
                          static_cast<unsigned>(i) % width, static_cast<unsigned>(i) / width, expected[i],
                          actual[i]);
    }
    return count ? std::to_string(count) + " pixels differ, " + text : std::string();
}

}  // namespace tavix_test
