#include "draw/keyed_pixels.h"

/*
 * The 32-bit build is made for any processor, so its compiler leaves the vector registers alone.
 * These loops are worth a second version that uses them, chosen where the processor has them.
 */
#if defined(__i386__) && defined(__GNUC__)
#define TAVIX_VECTOR_VERSION __attribute__((target("sse2"), optimize("O3")))
#endif

namespace tavix {
namespace {

__attribute__((always_inline)) inline void CopyKeyedLoop(DibPixel* out, const DibPixel* keyed, int count) {
    for (int i = 0; i < count; ++i) {
        const DibPixel pixel = keyed[i];
        // The top bit tells an opaque pixel. No branch: keys may alternate at random.
        const DibPixel opaque = 0u - (pixel >> 31);
        out[i] = (out[i] & ~opaque) | (pixel & opaque & 0xFFFFFFu);
    }
}

__attribute__((always_inline)) inline void CopyButLoop(DibPixel* out, const DibPixel* from, int count,
                                                       DibPixel hidden) {
    for (int i = 0; i < count; ++i) {
        const DibPixel pixel = from[i] & 0xFFFFFFu;
        const DibPixel opaque = 0u - static_cast<DibPixel>(pixel != hidden);
        out[i] = (out[i] & ~opaque) | (pixel & opaque);
    }
}

#ifdef TAVIX_VECTOR_VERSION
TAVIX_VECTOR_VERSION void CopyKeyedVector(DibPixel* out, const DibPixel* keyed, int count) {
    CopyKeyedLoop(out, keyed, count);
}
TAVIX_VECTOR_VERSION void CopyButVector(DibPixel* out, const DibPixel* from, int count, DibPixel hidden) {
    CopyButLoop(out, from, count, hidden);
}
bool HasVectors() {
    static const bool has = ::IsProcessorFeaturePresent(PF_XMMI64_INSTRUCTIONS_AVAILABLE) != 0;
    return has;
}
#endif

}  // namespace

void CopyKeyed(DibPixel* out, const DibPixel* keyed, int count) {
#ifdef TAVIX_VECTOR_VERSION
    if (HasVectors()) return CopyKeyedVector(out, keyed, count);
#endif
    CopyKeyedLoop(out, keyed, count);
}

void CopyButKey(DibPixel* out, const DibPixel* from, int count, COLORREF key) {
#ifdef TAVIX_VECTOR_VERSION
    if (HasVectors()) return CopyButVector(out, from, count, KeyPixel(key));
#endif
    CopyButLoop(out, from, count, KeyPixel(key));
}

}  // namespace tavix
