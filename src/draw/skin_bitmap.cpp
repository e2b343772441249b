#include "draw/skin_bitmap.h"

#include <exception>

#include "draw/bitmap_region.h"
#include "draw/bitmap_rows.h"
#include "draw/keyed_pixels.h"
#include "draw/surface.h"

namespace tavix {

namespace {

std::size_t PixelCount(const SIZE& size) {
    return static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy);
}

}  // namespace

IMPLEMENT_DYNAMIC(CSkinBitmap, CBitmap)

PixelImage ReadPixels(HBITMAP bitmap) {
    CBitmap borrowed;
    borrowed.m_hObject = bitmap;
    PixelImage image = ImageOf(&borrowed);
    borrowed.Detach();
    return image;
}

PixelImage ImageOf(CBitmap* bitmap) {
    BitmapRows rows(bitmap);
    if (rows.Width() <= 0 || rows.Height() <= 0) return {};
    try {
        PixelImage image;
        image.pixels.reserve(PixelCount(rows.Size()));
        for (int y = 0; y < rows.Height(); ++y) {
            const DibPixel* row = rows.Row(y);
            if (!row) return {};
            for (int x = 0; x < rows.Width(); ++x) image.pixels.push_back(SwapRedBlue(row[x]));
        }
        image.width = rows.Width();
        image.height = rows.Height();
        return image;
    } catch (const std::exception&) {
        return {};  // no memory for an image of that size
    }
}

/* Everything that was made of the pixels of one handle. */
struct CSkinBitmap::Derived {
    /* What belongs to one key. A bitmap seldom meets more than one. */
    struct ForKey {
        COLORREF key;
        bool has_region = false;
        CRgn region;
        bool has_copy = false;
        CBitmap copy;
        const DibPixel* copy_rows = nullptr;
    };

    explicit Derived(HGDIOBJ of) : handle(of) {
        BITMAP facts{};
        if (!of || !::GetObjectA(of, sizeof facts, &facts)) return;
        size = {facts.bmWidth, facts.bmHeight};
        mono = facts.bmPlanes * facts.bmBitsPixel == 1;
    }
    ForKey& For(COLORREF key) {
        for (auto& entry : keys)
            if (entry->key == key) return *entry;
        keys.push_back(std::make_unique<ForKey>());
        keys.back()->key = key;
        return *keys.back();
    }

    HGDIOBJ handle;
    CSize size;
    bool mono = false;
    bool has_rows = false;
    std::vector<DWORD> rows;
    bool has_image = false;
    PixelImage image;
    std::vector<std::unique_ptr<ForKey>> keys;
    bool has_transposed = false;
    CSkinBitmap transposed;
};

CSkinBitmap::CSkinBitmap() = default;
CSkinBitmap::~CSkinBitmap() = default;

bool CSkinBitmap::DeleteObject() {
    m_derived.reset();
    return CBitmap::DeleteObject();
}

CSkinBitmap::Derived& CSkinBitmap::Derive() {
    // The handle is a public member, so it may have been changed without a word.
    if (!m_derived || m_derived->handle != m_hObject) m_derived = std::make_unique<Derived>(m_hObject);
    return *m_derived;
}

CSize CSkinBitmap::Size() { return Derive().size; }

bool CSkinBitmap::IsMono() { return Derive().mono; }

const DWORD* CSkinBitmap::Rows() {
    Derived& derived = Derive();
    if (!derived.has_rows) {
        derived.has_rows = true;
        const CSize size = derived.size;
        if (size.cx <= 0 || size.cy <= 0) return nullptr;
        try {
            derived.rows.resize(PixelCount(size));
            if (!ReadAll(*this, size, derived.rows.data())) derived.rows.clear();
        } catch (const std::exception&) {
            derived.rows.clear();  // drawn row by row then
        }
    }
    return derived.rows.empty() ? nullptr : derived.rows.data();
}

const PixelImage& CSkinBitmap::Pixels() {
    Derived& derived = Derive();
    if (!derived.has_image) {
        derived.has_image = true;
        derived.image = ImageOf(this);
    }
    return derived.image;
}

HRGN CSkinBitmap::KeyRegion(COLORREF key) {
    Derived::ForKey& entry = Derive().For(key);
    if (!entry.has_region) {
        entry.has_region = true;
        BitmapRows rows(this);
        entry.region.Attach(RegionOfPixels(rows, rows.Size(), key, true));
    }
    return entry.region;
}

HBITMAP CSkinBitmap::KeyedCopy(COLORREF key) {
    KeyedRows(key);
    return Derive().For(key).copy;
}

const DWORD* CSkinBitmap::KeyedRows(COLORREF key) {
    Derived::ForKey& entry = Derive().For(key);
    if (!entry.has_copy) {
        entry.has_copy = true;
        const CSize size = Size();
        if (size.cx <= 0 || size.cy <= 0) return nullptr;
        DibPixel* bits = nullptr;
        CBitmap copy;
        copy.Attach(CreateDibSection(size.cx, size.cy, &bits));
        if (!bits || !ReadAll(*this, size, bits)) return nullptr;
        MakeKeyed(bits, PixelCount(size), key);
        entry.copy.Attach(copy.Detach());
        entry.copy_rows = bits;
    }
    return entry.copy_rows;
}

CSkinBitmap* CSkinBitmap::Transposed() {
    Derived& derived = Derive();
    if (!derived.has_transposed) {
        derived.has_transposed = true;
        TransposeBitmap(this, derived.transposed);
    }
    return derived.transposed.m_hObject ? &derived.transposed : nullptr;
}

bool TransposeBitmap(CBitmap* source, CBitmap& target) {
    target.DeleteObject();
    BitmapRows rows(source);
    if (rows.Width() <= 0 || rows.Height() <= 0) return false;
    DibPixel* bits = nullptr;
    CBitmap made;
    made.Attach(CreateDibSection(rows.Height(), rows.Width(), &bits));
    if (!bits) return false;
    for (int y = 0; y < rows.Height(); ++y) {
        const DibPixel* row = rows.Row(y);
        if (!row) return false;
        for (int x = 0; x < rows.Width(); ++x) bits[std::ptrdiff_t{x} * rows.Height() + y] = row[x];
    }
    return target.Attach(made.Detach());
}

CSize BitmapSize(CBitmap* bitmap) {
    if (!bitmap || !bitmap->m_hObject) return {};
    if (CSkinBitmap* skin = AsSkinBitmap(bitmap)) return skin->Size();
    return bitmap->GetBitmapSize();
}

CSkinBitmap* AsSkinBitmap(CBitmap* bitmap) {
    const bool is = bitmap && bitmap->IsKindOf(RUNTIME_CLASS(CSkinBitmap));
    return is ? static_cast<CSkinBitmap*>(bitmap) : nullptr;
}

}  // namespace tavix
