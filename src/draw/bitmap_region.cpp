#include "draw/bitmap_region.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "draw/bitmap_rows.h"
#include "draw/keyed_pixels.h"

namespace tavix {
namespace {

/*
 * Collects rectangles that do not overlap into a region. They go to the platform as polygons,
 * which it scans once: rectangles it would add to each other one by one, at a cost that grows
 * with their square. Blocks are of a bounded size, and those of a size are combined in pairs.
 */
class RegionBuilder {
public:
    RegionBuilder() = default;
    RegionBuilder(const RegionBuilder&) = delete;
    RegionBuilder& operator=(const RegionBuilder&) = delete;

    void Add(const RECT& r) {
        if (m_count == kBlock) Flush();
        POINT* corner = m_corners + m_count * kCorners;
        corner[0] = {r.left, r.top};
        corner[1] = {r.right, r.top};
        corner[2] = {r.right, r.bottom};
        corner[3] = {r.left, r.bottom};
        m_corner_counts[m_count++] = kCorners;
    }
    HRGN Finish() {
        Flush();
        CRgn whole;
        for (CRgn& level : m_levels) Join(whole, level);
        return static_cast<HRGN>(whole.Detach());
    }

private:
    static constexpr int kBlock = 256;
    static constexpr int kCorners = 4;
    static constexpr int kLevels = 32;

    /* `from` goes into `to`. */
    static void Join(CRgn& to, CRgn& from) {
        if (!to.m_hObject)
            to.Attach(from.Detach());
        else if (from.m_hObject)
            ::CombineRgn(to, to, from, RGN_OR);
        from.DeleteObject();
    }

    void Flush() {
        if (m_count == 0) return;
        CRgn part;
        part.Attach(::CreatePolyPolygonRgn(m_corners, m_corner_counts, m_count, WINDING));
        m_count = 0;
        // As in counting: two of a size make one of the next.
        int level = 0;
        for (; level < kLevels - 1 && m_levels[level].m_hObject; ++level) Join(part, m_levels[level]);
        Join(m_levels[level], part);
    }

    POINT m_corners[kBlock * kCorners];
    INT m_corner_counts[kBlock];
    int m_count = 0;
    CRgn m_levels[kLevels];
};

/* A stretch of columns in one row. */
struct Run {
    int left;
    int right;
    bool operator==(const Run&) const = default;
};

void CollectRuns(const DibPixel* row, int width, DibPixel key, bool equal, std::vector<Run>& runs) {
    constexpr DibPixel kColour = 0xFFFFFFu;
    runs.clear();
    for (int x = 0; x < width;) {
        while (x < width && ((row[x] & kColour) == key) != equal) ++x;
        const int left = x;
        while (x < width && ((row[x] & kColour) == key) == equal) ++x;
        if (x > left) runs.push_back({left, x});
    }
}

CSize Bounded(CSize size, const SIZE* extent) {
    if (extent) size = {std::min(size.cx, extent->cx), std::min(size.cy, extent->cy)};
    return size;
}

void AddPart(CRgn& region, HRGN part) {
    if (part) ::CombineRgn(region, region, part, RGN_OR);
}

}  // namespace

HRGN RegionOfPixels(BitmapRows& rows, const SIZE& size, COLORREF key, bool equal) {
    const DibPixel pixel = KeyPixel(key);
    try {
        RegionBuilder builder;
        // Rows alike make one set of rectangles.
        std::vector<Run> open;
        std::vector<Run> runs;
        int top = 0;
        for (int y = 0; y <= size.cy; ++y) {
            runs.clear();
            if (y < size.cy) {
                const DibPixel* row = rows.Row(y);
                if (!row) return nullptr;
                CollectRuns(row, size.cx, pixel, equal, runs);
                if (runs == open) continue;
            }
            for (const Run& run : open) builder.Add({run.left, top, run.right, y});
            open.swap(runs);
            top = y;
        }
        return builder.Finish();
    } catch (const std::exception&) {
        return nullptr;
    }
}

int RegionFromBitmapOpaque(CRgn* region, CBitmap* bitmap, COLORREF key, const SIZE* extent) {
    if (!region) return 1;
    if (!region->m_hObject) region->CreateRectRgn(0, 0, 0, 0);
    BitmapRows rows(bitmap);
    CRgn part;
    part.Attach(RegionOfPixels(rows, Bounded(rows.Size(), extent), key, false));
    AddPart(*region, part);
    return 1;
}

int RegionFromBitmapKey(CRgn* region, CBitmap* bitmap, COLORREF key, const SIZE* extent) {
    if (!region) return 1;
    region->DeleteObject();
    CSkinBitmap* skin = AsSkinBitmap(bitmap);
    const CSize whole = skin ? skin->Size() : CSize();
    if (skin && (!extent || (extent->cx >= whole.cx && extent->cy >= whole.cy))) {
        region->CreateRectRgn(0, 0, 0, 0);
        AddPart(*region, skin->KeyRegion(key));
        return 1;
    }
    BitmapRows rows(bitmap);
    HRGN part = RegionOfPixels(rows, Bounded(rows.Size(), extent), key, true);
    region->Attach(part ? part : ::CreateRectRgn(0, 0, 0, 0));
    return 1;
}

bool HasMoreKeyRuns(CBitmap* bitmap, COLORREF key, const SIZE& extent, int most) {
    constexpr DibPixel kColour = 0xFFFFFFu;
    const DibPixel pixel = KeyPixel(key);
    BitmapRows rows(bitmap);
    const CSize size = Bounded(rows.Size(), &extent);
    int runs = 0;
    for (int y = 0; y < size.cy && runs <= most; ++y) {
        const DibPixel* row = rows.Row(y);
        if (!row) break;
        bool inside = false;
        for (int x = 0; x < size.cx; ++x) {
            const bool equal = (row[x] & kColour) == pixel;
            if (equal && !inside) ++runs;
            inside = equal;
        }
    }
    return runs > most;
}

void CutKeyPixels(CRgn& region, CBitmap* bitmap, COLORREF key, const POINT& at, const SIZE& extent) {
    // What a hostile bitmap makes of a corner costs the whole desktop dear, and some window systems end a
    // program that asks for so much.
    constexpr int kMostRuns = 8'192;
    if (!bitmap || HasMoreKeyRuns(bitmap, key, extent, kMostRuns)) return;
    CRgn shape;
    RegionFromBitmapKey(&shape, bitmap, key, &extent);
    shape.OffsetRgn(at.x, at.y);
    region.CombineRgn(region, shape, RGN_DIFF);
}

}  // namespace tavix
