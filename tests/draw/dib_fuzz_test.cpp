/* Damaged BMP images: whatever the bytes, the conversion answers in time and reads no others. */
#include <gtest/gtest.h>

#include <algorithm>

#include "dib_fixture.h"
#include "draw/dib_image.h"
#include "draw_fixture.h"
#include "main/gui_objects.h"
#include "tavixskin/framework/gdi.h"

using namespace tavix_test;

namespace {

/* Memory whose end is followed by pages that may not be touched. */
class GuardedBlock {
public:
    explicit GuardedBlock(std::size_t capacity) {
        SYSTEM_INFO system;
        ::GetSystemInfo(&system);
        const std::size_t page = system.dwPageSize;
        m_size = (capacity + page - 1) / page * page;
        void* reserved = ::VirtualAlloc(nullptr, m_size + page, MEM_RESERVE, PAGE_NOACCESS);
        m_memory = static_cast<std::byte*>(reserved);
        ::VirtualAlloc(m_memory, m_size, MEM_COMMIT, PAGE_READWRITE);
    }
    ~GuardedBlock() { ::VirtualFree(m_memory, 0, MEM_RELEASE); }
    GuardedBlock(const GuardedBlock&) = delete;
    GuardedBlock& operator=(const GuardedBlock&) = delete;

    /* The bytes, moved so that they end where access ends. */
    std::span<const std::byte> Put(const Bytes& bytes) {
        std::byte* start = m_memory + m_size - bytes.size();
        std::copy(bytes.begin(), bytes.end(), start);
        return {start, bytes.size()};
    }

private:
    std::byte* m_memory;
    std::size_t m_size;
};

std::vector<Bytes> SoundImages() {
    std::vector<Bytes> images;
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        images.push_back(SampleDib(bits, 13, 9).Image());
        images.push_back(SampleDib(bits, 13, -9).Image());
    }
    for (const int bits : {4, 8}) {
        DibParts runs = SampleDib(bits, 13, 3);
        runs.head.biCompression = bits == 4 ? BI_RLE4 : BI_RLE8;
        runs.bits = BytesOf({13, 1, 0, 0, 4, 2, 0, 3, 1, 2, 3, 0, 0, 2, 1, 1, 2, 3, 0, 1});
        images.push_back(runs.Image());
    }
    for (const int bits : {16, 32}) {
        DibParts masked = SampleDib(bits, 13, 9);
        masked.head.biCompression = BI_BITFIELDS;
        masked.masks = {0x7C00, 0x03E0, 0x001F};
        images.push_back(masked.Image());
    }
    return images;
}

/* Changes a few bytes of the headers, and sometimes of what follows, or the length. */
void Damage(Random& random, Bytes& image) {
    constexpr DWORD kTelling[] = {0,      1,      2,          3,          4,          8,          16,
                                  24,     32,     39,         40,         54,         108,        255,
                                  0x7FFF, 0x8000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF, 0x10000};
    // Where the headers' fields lie, and how long they are.
    constexpr struct {
        int at, size;
    } kFields[] = {{10, 4}, {14, 4}, {18, 4}, {22, 4}, {26, 2}, {28, 2}, {30, 4}, {34, 4}, {46, 4}, {50, 4}};
    for (int changes = random.Between(1, 4); changes > 0; --changes) {
        if (random.OneIn(2)) {
            const auto& field = kFields[random.Between(0, 9)];
            const DWORD value = kTelling[random.Between(0, 20)];
            if (image.size() >= static_cast<std::size_t>(field.at + field.size))
                std::memcpy(image.data() + field.at, &value, static_cast<std::size_t>(field.size));
        } else if (!image.empty()) {
            const int last = static_cast<int>(image.size()) - 1;
            const int at = random.OneIn(3) ? random.Between(0, last) : random.Between(0, std::min(last, 69));
            image[static_cast<std::size_t>(at)] = static_cast<std::byte>(random.Between(0, 255));
        }
        const int length = static_cast<int>(image.size());
        if (random.OneIn(12)) image.resize(static_cast<std::size_t>(random.Between(0, length)));
    }
}

}  // namespace

TEST(DibFuzz, TwentyThousandDamagedImagesNeitherCrashNorHangNorLeak) {
    const std::vector<Bytes> sound = SoundImages();
    GuardedBlock block(64 * 1024);
    Random random(20260101);
    HDC display = ::GetDC(nullptr);
    const auto convert = [&](const Bytes& image) {
        CBitmap bitmap;
        const ULONGLONG start = ::GetTickCount64();
        bitmap.Attach(tavix::DibImageToBitmap(display, block.Put(image)));
        EXPECT_LT(::GetTickCount64() - start, 2000u);
        BITMAP facts{};
        if (!bitmap.m_hObject) return false;
        EXPECT_TRUE(::GetObjectA(bitmap, sizeof facts, &facts));
        EXPECT_GT(facts.bmWidth, 0);
        EXPECT_GT(facts.bmHeight, 0);
        return true;
    };
    for (const Bytes& image : sound) EXPECT_TRUE(convert(image));
    const int objects = CountGdiObjects();
    int taken = 0;
    constexpr int kRounds = 20000;
    for (int i = 0; i < kRounds; ++i) {
        Bytes image = sound[static_cast<std::size_t>(random.Between(0, static_cast<int>(sound.size()) - 1))];
        Damage(random, image);
        taken += convert(image);
    }
    // Both roads were walked.
    EXPECT_GT(taken, kRounds / 50);
    EXPECT_LT(taken, kRounds * 49 / 50);
    EXPECT_LE(CountGdiObjects() - objects, 1);
    ::ReleaseDC(nullptr, display);
}
