#include "draw/skin_bitmap.h"

#include <exception>

#include "draw/bitmap_region.h"
#include "draw/keyed_pixels.h"
#include "draw/surface.h"

namespace tavix {

IMPLEMENT_DYNAMIC(CSkinBitmap, CBitmap)

PixelImage ReadPixels(HBITMAP bitmap) {
    BITMAP facts{};
    if (!bitmap || !::GetObjectA(bitmap, sizeof facts, &facts) || facts.bmWidth <= 0 || facts.bmHeight <= 0)
        return {};
    try {
        PixelImage image;
        image.pixels.resize(static_cast<std::size_t>(facts.bmWidth) * static_cast<std::size_t>(facts.bmHeight));
        if (!ReadRows(bitmap, facts.bmWidth, facts.bmHeight, 0, facts.bmHeight, image.pixels.data())) return {};
        for (COLORREF& pixel : image.pixels) pixel = SwapRedBlue(pixel);
        image.width = facts.bmWidth;
        image.height = facts.bmHeight;
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
    };

    explicit Derived(HGDIOBJ of) : handle(of) {
        BITMAP facts{};
        if (of && ::GetObjectA(of, sizeof facts, &facts)) size = {facts.bmWidth, facts.bmHeight};
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
    bool has_image = false;
    PixelImage image;
    std::vector<std::unique_ptr<ForKey>> keys;
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

CSize CSkinBitmap::Size() { return m_hObject ? Derive().size : CSize(); }

const PixelImage& CSkinBitmap::Pixels() {
    Derived& derived = Derive();
    if (!derived.has_image) {
        derived.image = ReadPixels(*this);
        derived.has_image = true;
    }
    return derived.image;
}

HRGN CSkinBitmap::KeyRegion(COLORREF key) {
    Derived::ForKey& entry = Derive().For(key);
    if (!entry.has_region) {
        const PixelImage& image = Pixels();
        entry.region.Attach(RegionOfPixels(image, {image.width, image.height}, key, true));
        entry.has_region = true;
    }
    return entry.region;
}

HBITMAP CSkinBitmap::KeyedCopy(COLORREF key) {
    Derived::ForKey& entry = Derive().For(key);
    if (!entry.has_copy) {
        entry.has_copy = true;
        const CSize size = Size();
        if (size.cx > 0 && size.cy > 0) {
            DibPixel* bits = nullptr;
            CBitmap copy;
            copy.Attach(CreateDibSection(size.cx, size.cy, &bits));
            if (bits && ReadRows(*this, size.cx, size.cy, 0, size.cy, bits)) {
                MakeKeyed(bits, static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy), key);
                entry.copy.Attach(copy.Detach());
            }
        }
    }
    return entry.copy;
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
