/* A damaged skin file may load nothing, but it harms nothing. */
#include <gtest/gtest.h>

#include <memory>
#include <span>
#include <vector>

#include "main/gui_objects.h"
#include "skindata/compound_check.h"
#include "skindata/record_tables.h"
#include "storage_access.h"
#include "support/compound_platform.h"
#include "support/skin_mutations.h"

namespace tavix_test {
namespace {

using tavix::test::ReadWholeFile;
using tavix::test::RunWatched;
using tavix::test::WriteWholeFile;

constexpr std::uint32_t kMutations = 5000;
constexpr DWORD kTimeLimit = 2000;

// Small, with every record and several depths of bitmap, so that many files are tried in a short time.
RecordSet& SmallSkin() {
    static RecordSet records;
    static std::vector<std::unique_ptr<CBitmap>> bitmaps;
    if (!bitmaps.empty()) return records;
    for (const TSkinType kind : AllKinds()) {
        int count = 0;
        for (const TSkinField& field : *GetSkinRecordLayout(kind)) {
            if (field.kind != skinFieldBitmap) {
                *SkinNumberAt(records.Record(kind), field) = field.offset;
            } else if (++count <= 2) {
                bitmaps.push_back(std::make_unique<CBitmap>());
                if (count == 1) {
                    bitmaps.back() = MakeBitmap(3, 3, TestSkin::ColourOfBitmap(field.id));
                } else {
                    bitmaps.back()->Attach(::CreateBitmap(5, 5, 1, 1, nullptr));
                }
                records.SetBitmap(kind, field, "b" + std::to_string(field.id), bitmaps.back().get());
            }
        }
    }
    return records;
}

// As CSkinStorage::LoadSkin goes about a file, but on bytes in memory, which is much faster.
int LoadFromMemory(std::span<const std::byte> bytes, CSkinStorage& storage) {
    if (!tavix::IsSoundCompoundImage(bytes)) return 0;
    tavix::ComPtr<ILockBytes> memory;
    tavix::ComPtr<IStorage> root;
    if (FAILED(::CreateILockBytesOnHGlobal(nullptr, TRUE, memory.Put()))) return 0;
    ULONG written = 0;
    memory->WriteAt({}, bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    ::StgOpenStorageOnILockBytes(memory.Get(), nullptr, kElementMode, nullptr, 0, root.Put());
    if (!root) return 0;
    for (const TSkinType kind : tavix::kRecordOrder) storage.LoadSkinItem(root.Get(), kind);
    return 1;
}

TEST(SkinMutation, LoadingDamagedFilesNeverCrashesHangsOrLeaks) {
    TempFile file;
    ASSERT_TRUE(SmallSkin().Save(file.Path()));
    const SkinMutations mutations(ReadWholeFile(file.WidePath()));
    ASSERT_TRUE(mutations);
    const std::wstring path = file.WidePath();

    int objects = 0, loaded = 0, withBitmaps = 0, withoutHandle = 0;
    for (std::uint32_t seed = 1; seed <= kMutations; ++seed) {
        const std::vector<std::byte> bytes = mutations.Make(seed);
        const bool onDisk = seed % 4 == 0;
        if (onDisk) {
            ASSERT_TRUE(WriteWholeFile(path, bytes)) << SkinMutations::Describe(seed);
        }
        RunWatched(SkinMutations::Describe(seed), kTimeLimit, [&] {
            CTavixSkinFace face;
            CSkinStorage storage;
            storage.SetSkinFace(&face);
            loaded += onDisk ? storage.LoadSkin(file.Path()) : LoadFromMemory(bytes, storage);
            bool any = false, broken = false;
            for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) {
                CBitmap* bitmap = face.GetBmp(id);
                any = any || (bitmap && bitmap->GetSafeHandle());
                broken = broken || (bitmap && !bitmap->GetSafeHandle());
            }
            withBitmaps += any;
            withoutHandle += broken;
        });
        if (seed == 200) objects = CountGdiObjects();  // first uses have filled the platform's caches
    }
    ASSERT_GE(objects, 0);
    EXPECT_LE(CountGdiObjects(), objects + 8);
    // The damage reaches all floors: the container, the records, the bitmaps.
    EXPECT_LT(loaded, static_cast<int>(kMutations) * 19 / 20);
    EXPECT_GT(loaded, static_cast<int>(kMutations) / 2);
    EXPECT_GT(withBitmaps, static_cast<int>(kMutations) / 2);
    EXPECT_GT(withoutHandle, static_cast<int>(kMutations) / 20);
}

// Loading creates what is missing: a file that was damaged and loaded once loads again.
TEST(SkinMutation, AFileThatLoadedOnceLoadsAgain) {
    TempFile file;
    ASSERT_TRUE(SmallSkin().Save(file.Path()));
    const SkinMutations mutations(ReadWholeFile(file.WidePath()));
    ASSERT_TRUE(mutations);
    int checked = 0;
    for (std::uint32_t seed = 7001; seed <= 7300; ++seed) {
        ASSERT_TRUE(WriteWholeFile(file.WidePath(), mutations.Make(seed)));
        RunWatched(SkinMutations::Describe(seed), kTimeLimit, [&] {
            if (!CSkinStorage().LoadSkin(file.Path())) return;
            CTavixSkinFace first, second;
            CSkinStorage storage;
            for (CTavixSkinFace* face : {&first, &second}) {
                storage.SetSkinFace(face);
                EXPECT_EQ(storage.LoadSkin(file.Path()), 1) << SkinMutations::Describe(seed);
            }
            for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) {
                EXPECT_EQ(first.GetColor(id), second.GetColor(id)) << SkinMutations::Describe(seed);
                EXPECT_EQ(first.GetSize(id), second.GetSize(id)) << SkinMutations::Describe(seed);
                EXPECT_EQ(!first.GetBmp(id), !second.GetBmp(id)) << SkinMutations::Describe(seed);
            }
            ++checked;
        });
    }
    EXPECT_GT(checked, 150);
}

TEST(SkinMutation, EachSeedGivesTheSameFile) {
    TempFile file;
    ASSERT_TRUE(SmallSkin().Save(file.Path()));
    const std::vector<std::byte> good = ReadWholeFile(file.WidePath());
    const SkinMutations first(good), second(good);
    for (std::uint32_t seed = 1; seed < 40; ++seed)
        EXPECT_TRUE(first.Make(seed) == second.Make(seed)) << seed;
}

}  // namespace
}  // namespace tavix_test
