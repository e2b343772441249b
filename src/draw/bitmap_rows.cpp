#include "draw/bitmap_rows.h"

#include <algorithm>

namespace tavix {
namespace {

// Rows read at a time: blocks that the platform's heap hands out again and again.
constexpr int kBlockPixels = 16 * 1024;

}  // namespace

BitmapRows::BitmapRows(CBitmap* bitmap) {
    if (!bitmap || !bitmap->m_hObject) return;
    m_bitmap = *bitmap;
    if (CSkinBitmap* skin = AsSkinBitmap(bitmap)) {
        m_size = skin->Size();
        m_mono = skin->IsMono();
        m_rows = skin->Rows();
        m_count = m_rows ? m_size.cy : 0;
        return;
    }
    BITMAP facts{};
    if (!::GetObjectA(m_bitmap, sizeof facts, &facts)) return;
    m_size = {facts.bmWidth, facts.bmHeight};
    m_mono = facts.bmPlanes * facts.bmBitsPixel == 1;
}

bool BitmapRows::AreColours() { return !m_mono && Row(0); }

const DibPixel* BitmapRows::Row(int y) {
    if (y < 0 || y >= m_size.cy || m_size.cx <= 0) return nullptr;
    if (y < m_first || y >= m_first + m_count) {
        const int count = std::clamp<int>(kBlockPixels / m_size.cx, 1, m_size.cy - y);
        DibPixel* buffer = RowBuffer(static_cast<std::size_t>(m_size.cx) * static_cast<std::size_t>(count));
        m_count = 0;
        if (!buffer || !ReadBlock(m_bitmap, m_size, y, count, buffer)) return nullptr;
        m_rows = buffer;
        m_first = y;
        m_upwards = true;
        m_count = count;
    }
    const int index = m_upwards ? m_first + m_count - 1 - y : y;
    return m_rows + static_cast<std::ptrdiff_t>(index) * m_size.cx;
}

}  // namespace tavix
