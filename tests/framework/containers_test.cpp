#include "tavixskin/framework/containers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

HWND Handle(std::uintptr_t value) { return reinterpret_cast<HWND>(value); }
void* Pointer(std::uintptr_t value) { return reinterpret_cast<void*>(value); }

// ---------------------------------------------------------------- arrays

TEST(StringArray, GrowsToWhereAnElementIsSet) {
    CStringArray texts;
    texts.SetAtGrow(2, "third");
    ASSERT_EQ(texts.GetSize(), 3);
    EXPECT_TRUE(texts[0].IsEmpty());
    EXPECT_STREQ(texts[2], "third");
    texts.SetAtGrow(0, "first");
    EXPECT_EQ(texts.GetSize(), 3);
    EXPECT_STREQ(texts[0], "first");
    texts.RemoveAll();
    texts.SetAtGrow(0, "again");
    EXPECT_EQ(texts.GetSize(), 1);
    // What RemoveAt left behind the end is not seen again.
    texts.RemoveAt(0);
    texts.SetAtGrow(1, "second");
    EXPECT_TRUE(texts[0].IsEmpty());
}

TEST(Array, OfHandlesIsHandedPointersAndReadsThroughThem) {
    CArray<HWND, HWND*> list;
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetUpperBound(), -1);
    HWND window = Handle(0x10);
    EXPECT_EQ(list.Add(&window), 0);
    window = Handle(0x20);
    EXPECT_EQ(list.Add(&window), 1);
    EXPECT_EQ(list.GetSize(), 2);
    EXPECT_EQ(list[0], Handle(0x10));
    EXPECT_EQ(list[1], Handle(0x20));
    window = Handle(0x30);
    list.SetAt(0, &window);
    EXPECT_EQ(list.GetAt(0), Handle(0x30));
    EXPECT_FALSE(list.IsEmpty());
}

TEST(Array, TakesAnElementOfItsOwn) {
    CArray<HWND, HWND*> list;
    HWND first = Handle(0x77);
    list.Add(&first);
    for (int i = 0; i < 200; ++i) list.Add(&list[0]);
    for (int i = 0; i <= 200; ++i) ASSERT_EQ(list[i], Handle(0x77)) << i;
}

TEST(Array, OfValuesTakesThem) {
    CArray<int, int> list;
    list.Add(3);
    list.InsertAt(0, 1);
    list.InsertAt(1, 2);
    list.InsertAt(3, 4);
    ASSERT_EQ(list.GetSize(), 4);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(list[i], i + 1);
}

TEST(Array, OfPointersTakesThePointersThemselves) {
    int target = 0;
    CArray<int*, int*> list;
    list.Add(&target);
    EXPECT_EQ(list[0], &target);
}

TEST(Array, RemovesFromTheMiddleInOrder) {
    CArray<int> list;
    for (int i = 0; i < 10; ++i) list.Add(i);
    list.RemoveAt(3);
    list.RemoveAt(5, 2);
    list.RemoveAt(0);
    list.RemoveAt(list.GetUpperBound());
    const std::vector<int> expected{1, 2, 4, 5, 8};
    ASSERT_EQ(list.GetSize(), 5);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(list[i], expected[static_cast<std::size_t>(i)]);
}

TEST(Array, RemoveAllLeavesItUsable) {
    CArray<int> list;
    list.Add(1);
    list.RemoveAll();
    EXPECT_EQ(list.GetSize(), 0);
    list.RemoveAll();
    list.Add(2);
    EXPECT_EQ(list[0], 2);
}

TEST(Array, OfStringsOwnsThem) {
    CStringArray list;
    {
        std::string text = "first";
        list.Add(text.c_str());
        text = "gone!";
    }
    list.Add("second");
    list.InsertAt(0, "zero");
    list.ElementAt(1) = "changed";
    EXPECT_STREQ(list[0], "zero");
    EXPECT_STREQ(list.GetAt(1), "changed");
    EXPECT_STREQ(list[2], "second");
    EXPECT_TRUE(list.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_STREQ(list.GetRuntimeClass()->m_lpszClassName, "CStringArray");
}

TEST(Array, BehavesAsItsModel) {
    std::mt19937 random(4711);
    CArray<HWND, HWND*> list;
    std::vector<HWND> model;
    for (int step = 0; step < 30000; ++step) {
        const unsigned what = random() % 100;
        HWND value = Handle(random() % 0xFFFF);
        const int size = static_cast<int>(model.size());
        if (what < 45) {
            ASSERT_EQ(list.Add(&value), size);
            model.push_back(value);
        } else if (what < 60) {
            const int at = static_cast<int>(random() % static_cast<unsigned>(size + 1));
            list.InsertAt(at, &value);
            model.insert(model.begin() + at, value);
        } else if (what < 98) {
            if (!size) continue;
            const int at = static_cast<int>(random() % static_cast<unsigned>(size));
            const int count = 1 + static_cast<int>(random() % 2);
            if (at + count > size) continue;
            list.RemoveAt(at, count);
            model.erase(model.begin() + at, model.begin() + at + count);
        } else if (what == 99 && size > 50) {
            list.RemoveAll();
            model.clear();
        }
        ASSERT_EQ(list.GetSize(), static_cast<int>(model.size()));
        if (step % 64 == 0) {
            for (std::size_t i = 0; i < model.size(); ++i) ASSERT_EQ(list[static_cast<int>(i)], model[i]);
        }
    }
}

// ---------------------------------------------------------------- maps

// Each element once, and none besides.
std::unordered_map<std::uintptr_t, void*> Contents(const CMapPtrToPtr& map) {
    std::unordered_map<std::uintptr_t, void*> all;
    int visited = 0;
    for (POSITION at = map.GetStartPosition(); at;) {
        void* key = nullptr;
        void* value = nullptr;
        map.GetNextAssoc(at, key, value);
        all[reinterpret_cast<std::uintptr_t>(key)] = value;
        ++visited;
    }
    EXPECT_EQ(visited, map.GetCount());
    EXPECT_EQ(all.size(), static_cast<std::size_t>(visited));
    return all;
}

TEST(PointerMap, IsEmptyAtFirst) {
    CMapPtrToPtr map;
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    void* value = Pointer(5);
    EXPECT_FALSE(map.Lookup(Pointer(1), value));
    EXPECT_EQ(value, Pointer(5)) << "a failed look-up leaves the value alone";
    EXPECT_FALSE(map.RemoveKey(Pointer(1)));
}

TEST(PointerMap, HoldsNullKeysAndNullValues) {
    CMapPtrToPtr map;
    map.SetAt(nullptr, Pointer(9));
    map.SetAt(Pointer(9), nullptr);
    void* value = nullptr;
    EXPECT_TRUE(map.Lookup(nullptr, value));
    EXPECT_EQ(value, Pointer(9));
    EXPECT_TRUE(map.Lookup(Pointer(9), value));
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(map.GetCount(), 2);
}

TEST(PointerMap, ReplacesTheValueOfAKey) {
    CMapPtrToPtr map;
    map.SetAt(Pointer(1), Pointer(10));
    map.SetAt(Pointer(1), Pointer(20));
    EXPECT_EQ(map.GetCount(), 1);
    void* value = nullptr;
    EXPECT_TRUE(map.Lookup(Pointer(1), value));
    EXPECT_EQ(value, Pointer(20));
}

TEST(PointerMap, TellsWholePointersApart) {
    CMapPtrToPtr map;
    // Handles that agree in their low bits, as recycled ones do.
    map.SetAt(Pointer(0x00010042), Pointer(1));
    map.SetAt(Pointer(0x00020042), Pointer(2));
    void* value = nullptr;
    EXPECT_TRUE(map.Lookup(Pointer(0x00010042), value));
    EXPECT_EQ(value, Pointer(1));
    EXPECT_TRUE(map.Lookup(Pointer(0x00020042), value));
    EXPECT_EQ(value, Pointer(2));
    EXPECT_FALSE(map.Lookup(Pointer(0x42), value));
}

TEST(PointerMap, IsWalkedWhileTheVisitedElementsAreRemoved) {
    CMapPtrToPtr map(10);
    for (std::uintptr_t i = 1; i <= 500; ++i) map.SetAt(Pointer(i * 4), Pointer(i));
    std::set<void*> seen;
    for (POSITION at = map.GetStartPosition(); at;) {
        void* key = nullptr;
        void* value = nullptr;
        map.GetNextAssoc(at, key, value);
        EXPECT_TRUE(seen.insert(key).second);
        EXPECT_TRUE(map.RemoveKey(key));
    }
    EXPECT_EQ(seen.size(), 500u);
    EXPECT_TRUE(map.IsEmpty());
}

class PointerMapModel : public testing::TestWithParam<int> {};

TEST_P(PointerMapModel, BehavesAsItsModel) {
    std::mt19937 random(static_cast<unsigned>(GetParam()) * 7919u + 1);
    CMapPtrToPtr map(GetParam());
    std::unordered_map<std::uintptr_t, void*> model;
    // Keys look like handles, like pointers, or are crowded into few buckets.
    const auto someKey = [&random]() -> std::uintptr_t {
        switch (random() % 3) {
            case 0:
                return 0x20 + 2 * (random() % 600);
            case 1:
                return 0x00400000 + 16 * (random() % 600);
            default:
                return static_cast<std::uintptr_t>(random() % 600) << 16;
        }
    };
    for (int step = 0; step < 40000; ++step) {
        const std::uintptr_t key = someKey();
        // It grows for a while, then shrinks, so that freed elements are used again.
        const bool growing = (step / 5000) % 2 == 0;
        const unsigned what = random() % 100;
        if (what < (growing ? 60u : 25u)) {
            void* value = Pointer(random());
            map.SetAt(Pointer(key), value);
            model[key] = value;
        } else if (what < 90) {
            ASSERT_EQ(map.RemoveKey(Pointer(key)), model.erase(key) == 1) << "step " << step;
        } else {
            void* value = nullptr;
            const auto found = model.find(key);
            ASSERT_EQ(map.Lookup(Pointer(key), value), found != model.end());
            if (found != model.end()) {
                ASSERT_EQ(value, found->second);
            }
        }
        ASSERT_EQ(map.GetCount(), static_cast<int>(model.size()));
        if (step % 2000 == 0) {
            ASSERT_EQ(Contents(map), model) << "step " << step;
        }
        if (step == 20000) map.RemoveAll(), model.clear();
    }
    EXPECT_EQ(Contents(map), model);
}

INSTANTIATE_TEST_SUITE_P(BlockSizes, PointerMapModel, testing::Values(1, 10, 64, 0, -3));

TEST(PointerMap, GrowsToManyElements) {
    CMapPtrToPtr map;
    constexpr std::uintptr_t kCount = 50000;
    for (std::uintptr_t i = 0; i < kCount; ++i) map.SetAt(Pointer(i * 16), Pointer(i));
    EXPECT_EQ(map.GetCount(), static_cast<int>(kCount));
    for (std::uintptr_t i = 0; i < kCount; ++i) {
        void* value = nullptr;
        ASSERT_TRUE(map.Lookup(Pointer(i * 16), value));
        ASSERT_EQ(value, Pointer(i));
    }
    EXPECT_EQ(Contents(map).size(), kCount);
}

TEST(WordMap, CutsItsKeysToSixteenBits) {
    CMapWordToPtr map(10);
    map.SetAt(static_cast<WORD>(0x12345), Pointer(1));
    void* value = nullptr;
    EXPECT_TRUE(map.Lookup(0x2345, value));
    EXPECT_EQ(value, Pointer(1));
    map.SetAt(static_cast<WORD>(0xFFFF2345u), Pointer(2));
    EXPECT_EQ(map.GetCount(), 1);
    EXPECT_TRUE(map.RemoveKey(static_cast<WORD>(0xABC2345u)));
    EXPECT_TRUE(map.IsEmpty());
}

TEST(WordMap, HoldsEveryKey) {
    CMapWordToPtr map(10);
    for (std::uintptr_t key = 0; key <= 0xFFFF; ++key) map.SetAt(static_cast<WORD>(key), Pointer(key + 1));
    EXPECT_EQ(map.GetCount(), 0x10000);
    std::vector<bool> seen(0x10000);
    for (POSITION at = map.GetStartPosition(); at;) {
        WORD key = 0;
        void* value = nullptr;
        map.GetNextAssoc(at, key, value);
        ASSERT_FALSE(seen[key]);
        seen[key] = true;
        ASSERT_EQ(value, Pointer(key + std::uintptr_t{1}));
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), true), 0x10000);
}

TEST(WordMap, BehavesAsItsModel) {
    std::mt19937 random(99);
    CMapWordToPtr map(10);
    std::unordered_map<WORD, void*> model;
    for (int step = 0; step < 40000; ++step) {
        const WORD key = static_cast<WORD>(random() % 700);
        void* value = nullptr;
        switch (random() % 3) {
            case 0:
                value = Pointer(random());
                map.SetAt(key, value);
                model[key] = value;
                break;
            case 1:
                ASSERT_EQ(map.RemoveKey(key), model.erase(key) == 1);
                break;
            default:
                ASSERT_EQ(map.Lookup(key, value), model.count(key) == 1);
                if (model.count(key)) {
                    ASSERT_EQ(value, model[key]);
                }
                break;
        }
        ASSERT_EQ(map.GetCount(), static_cast<int>(model.size()));
    }
}

}  // namespace
