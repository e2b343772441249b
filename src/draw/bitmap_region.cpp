#include "draw/bitmap_region.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "draw/skin_bitmap.h"

namespace tavix {
namespace {

// Some systems refuse a region of many thousands of rectangles at once.
constexpr std::size_t kRectanglesAtOnce = 2000;

/* Collects rectangles into a region, a block at a time. */
class RegionBuilder {
public:
    RegionBuilder() : m_block(sizeof(RGNDATAHEADER) + kRectanglesAtOnce * sizeof(RECT)) {}
    ~RegionBuilder() {
        if (m_region) ::DeleteObject(m_region);
    }
    RegionBuilder(const RegionBuilder&) = delete;
    RegionBuilder& operator=(const RegionBuilder&) = delete;

    void Add(const RECT& rect) {
        if (m_count == kRectanglesAtOnce) Flush();
        Rectangles()[m_count++] = rect;
    }
    HRGN Finish() {
        Flush();
        HRGN region = m_region;
        m_region = nullptr;
        return region;
    }

private:
    RGNDATA* Data() { return reinterpret_cast<RGNDATA*>(m_block.data()); }
    RECT* Rectangles() { return reinterpret_cast<RECT*>(Data()->Buffer); }

    void Flush() {
        if (m_count == 0) return;
        RECT bounds = Rectangles()[0];
        for (std::size_t i = 1; i < m_count; ++i) {
            const RECT& r = Rectangles()[i];
            bounds.left = std::min(bounds.left, r.left);
            bounds.right = std::max(bounds.right, r.right);
            bounds.bottom = std::max(bounds.bottom, r.bottom);
        }
        const DWORD bytes = static_cast<DWORD>(m_count * sizeof(RECT));
        Data()->rdh = {sizeof(RGNDATAHEADER), RDH_RECTANGLES, static_cast<DWORD>(m_count), bytes, bounds};
        m_count = 0;
        HRGN part = ::ExtCreateRegion(nullptr, static_cast<DWORD>(sizeof(RGNDATAHEADER)) + bytes, Data());
        if (!part) return;
        if (!m_region) {
            m_region = part;
            return;
        }
        ::CombineRgn(m_region, m_region, part, RGN_OR);
        ::DeleteObject(part);
    }

    std::vector<char> m_block;
    std::size_t m_count = 0;
    HRGN m_region = nullptr;
};

/* A stretch of columns in one row. */
struct Run {
    int left;
    int right;
    bool operator==(const Run&) const = default;
};

void CollectRuns(const COLORREF* row, int width, COLORREF key, bool equal, std::vector<Run>& runs) {
    runs.clear();
    for (int x = 0; x < width;) {
        while (x < width && (row[x] == key) != equal) ++x;
        const int left = x;
        while (x < width && (row[x] == key) == equal) ++x;
        if (x > left) runs.push_back({left, x});
    }
}

CSize Bounded(const PixelImage& image, const SIZE* extent) {
    CSize size(image.width, image.height);
    if (extent) {
        size.cx = std::min(size.cx, extent->cx);
        size.cy = std::min(size.cy, extent->cy);
    }
    return size;
}

/* The pixels of any bitmap; those of a skin bitmap are at hand. */
class ImageOf {
public:
    explicit ImageOf(CBitmap* bitmap) : m_skin(AsSkinBitmap(bitmap)) {
        if (!m_skin && bitmap) m_own = ReadPixels(*bitmap);
    }
    const PixelImage& operator*() const { return m_skin ? m_skin->Pixels() : m_own; }

private:
    CSkinBitmap* m_skin;
    PixelImage m_own;
};

void AddPart(CRgn& region, HRGN part) {
    if (part) ::CombineRgn(region, region, part, RGN_OR);
}

}  // namespace

HRGN RegionOfPixels(const PixelImage& image, const SIZE& size, COLORREF key, bool equal) {
    try {
        RegionBuilder builder;
        std::vector<Run> runs;
        std::vector<Run> next;
        const COLORREF* row = image.pixels.data();
        for (int top = 0, y = 0; y < size.cy; ++y, row += image.width) {
            if (y == 0) CollectRuns(row, size.cx, key, equal, runs);
            // Rows alike make one set of rectangles.
            const bool last = y + 1 == size.cy;
            if (!last) {
                const COLORREF* following = row + image.width;
                if (std::equal(row, row + size.cx, following)) continue;
                CollectRuns(following, size.cx, key, equal, next);
                if (next == runs) continue;
            }
            for (const Run& run : runs) builder.Add({run.left, top, run.right, y + 1});
            runs.swap(next);
            top = y + 1;
        }
        return builder.Finish();
    } catch (const std::exception&) {
        return nullptr;
    }
}

int RegionFromBitmapOpaque(CRgn* region, CBitmap* bitmap, COLORREF key, const SIZE* extent) {
    if (!region) return 1;
    if (!region->m_hObject) region->CreateRectRgn(0, 0, 0, 0);
    const ImageOf image(bitmap);
    CRgn part;
    part.Attach(RegionOfPixels(*image, Bounded(*image, extent), key, false));
    AddPart(*region, part);
    return 1;
}

int RegionFromBitmapKey(CRgn* region, CBitmap* bitmap, COLORREF key, const SIZE* extent) {
    if (!region) return 1;
    region->Attach(::CreateRectRgn(0, 0, 0, 0));
    CSkinBitmap* skin = AsSkinBitmap(bitmap);
    const CSize whole = skin ? skin->Size() : CSize();
    if (skin && (!extent || (extent->cx >= whole.cx && extent->cy >= whole.cy))) {
        AddPart(*region, skin->KeyRegion(key));
        return 1;
    }
    const ImageOf image(bitmap);
    HRGN part = RegionOfPixels(*image, Bounded(*image, extent), key, true);
    if (part) region->Attach(part);
    return 1;
}

}  // namespace tavix
