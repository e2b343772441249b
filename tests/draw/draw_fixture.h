/* Targets, sources and random inputs that the tests of drawing share. */
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "draw/offscreen.h"
#include "tavixskin/framework/gdi.h"

namespace tavix_test {

/* Repeatable random numbers. */
class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    /* From `low` to `high`, both included. */
    int Between(int low, int high);
    bool OneIn(int chances) { return Between(1, chances) == 1; }
    COLORREF Colour();
    /* A rectangle about a target of that size: inside, across its edges, empty, not normalised. */
    RECT Rect(const SIZE& about);

private:
    std::mt19937 m_engine;
};

/* What is drawn on, and how its pixels are stored. */
enum class TargetType {
    Compatible,
    Dib32TopDown,
    Dib32BottomUp,
    Dib24,
    Dib16,
    Dib8,
    Mono,
    Surface,  // an OffscreenSurface
    Window,
};
extern const TargetType kAllTargets[9];
std::string NameOf(TargetType type);

/* All pixels of a target, row by row. */
using Picture = std::vector<DWORD>;

class Target {
public:
    explicit Target(TargetType type);
    ~Target();
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    static constexpr SIZE kSize{61, 47};
    HDC Dc() const { return m_dc; }
    /*
     * Starts from the same noise each time, runs prepare and draw, and takes the picture of
     * what is there then. The context's state is as before afterwards.
     */
    Picture Draw(const std::function<void(HDC)>& prepare, const std::function<void(HDC)>& draw);

private:
    Picture Read() const;

    HDC m_dc = nullptr;
    HWND m_window = nullptr;
    CBitmap m_bitmap;
    HGDIOBJ m_former = nullptr;
    std::unique_ptr<tavix::OffscreenSurface> m_surface;
};

/* Clip regions, origins and mappings for a target, some of the many that a host may set. */
std::function<void(HDC)> RandomState(Random& random, bool plain_mapping);

/* A bitmap of 1 (a DIB), 4, 8, 16, 24 or 32 bits, 0 for compatible, -1 for monochrome. */
extern const int kAllDepths[8];
HBITMAP RandomBitmap(Random& random, int depth, const SIZE& size, COLORREF key);

/* A DIB section, rows from the top with `top_down`; colours beyond 8 bits need no table. */
HBITMAP MakeDib(int depth, const SIZE& size, bool top_down, const std::vector<RGBQUAD>& table, void** bits);

/* Tells how two pictures differ; an empty text if they do not. */
std::string Difference(const Picture& expected, const Picture& actual);

}  // namespace tavix_test
