/* Damaged skin files, the same in each run, made from a good one. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "support/compound_image.h"

namespace tavix_test {

/*
 * Each seed gives one file: bytes flipped, the file cut off, elements removed, shortened or
 * lengthened, bitmap headers with absurd sizes, depths and offsets, names without a
 * terminator, random numbers for colours and sizes. About half of the seeds leave the
 * container whole, so that the damage reaches the records and the bitmaps.
 */
class SkinMutations {
public:
    /* The bytes of a skin file that loads. */
    explicit SkinMutations(std::span<const std::byte> good);

    /* False if the good file can't be read. */
    explicit operator bool() const { return !m_content.empty(); }
    std::vector<std::byte> Make(std::uint32_t seed) const;
    /* What the seed does, for messages. */
    static std::string Describe(std::uint32_t seed);

private:
    std::vector<std::byte> m_good;
    std::vector<tavix::test::CompoundElement> m_content;
};

}  // namespace tavix_test
