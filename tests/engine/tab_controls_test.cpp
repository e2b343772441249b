// The remembered tab controls agree at each moment with a search through all windows.
#include "engine/tab_controls.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <random>
#include <vector>

#include "engine_objects.h"
#include "support/window_probe.h"

using namespace tavix_test;

namespace {

using Windows = std::vector<HWND>;

HWND MakeChild(HWND parent, const char* className) {
    return CreateControl(Charset::Ansi, parent, className, "", 0, {0, 0, 20, 20});
}
HWND MakeTab(HWND parent) { return MakeChild(parent, WC_TABCONTROLA); }
HWND MakeBox(HWND parent) { return MakeChild(parent, "Static"); }

BOOL CALLBACK AddIfTab(HWND window, LPARAM found) {
    char name[80] = {};
    ::GetClassNameA(window, name, sizeof name);
    if (!::lstrcmpiA(name, WC_TABCONTROLA)) reinterpret_cast<Windows*>(found)->push_back(window);
    return TRUE;
}

Windows Sorted(Windows windows) {
    std::sort(windows.begin(), windows.end());
    return windows;
}

Windows SearchedBelow(HWND ancestor) {
    Windows found;
    ::EnumChildWindows(ancestor, &AddIfTab, reinterpret_cast<LPARAM>(&found));
    return Sorted(found);
}

Windows KnownBelow(HWND ancestor) { return Sorted(tavix::TabControlsBelow(ancestor)); }

class TabControls : public testing::Test {
protected:
    static void SetUpTestSuite() {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TAB_CLASSES};
        ASSERT_TRUE(::InitCommonControlsEx(&classes));
    }
    ProbeWindow parent;
};

TEST_F(TabControls, ThatWereThereBeforeTheSkinAreFound) {
    HWND box = MakeBox(parent);
    HWND nested = MakeTab(box), direct = MakeTab(parent);
    const Skinned skinned;
    EXPECT_EQ(KnownBelow(parent), Sorted({nested, direct}));
    EXPECT_EQ(KnownBelow(box), Windows{nested});
}

TEST_F(TabControls, ThatComeAfterTheFirstQuestionAreFound) {
    const Skinned skinned;
    HWND box = MakeBox(parent);
    EXPECT_EQ(KnownBelow(parent), Windows{});
    HWND tab = MakeTab(box);
    EXPECT_EQ(KnownBelow(parent), Windows{tab});
}

TEST_F(TabControls, AreNotBelowThemselvesOrOtherWindows) {
    const Skinned skinned;
    const ProbeWindow other;
    HWND box = MakeBox(parent);
    HWND tab = MakeTab(parent);
    EXPECT_EQ(KnownBelow(tab), Windows{});
    EXPECT_EQ(KnownBelow(box), Windows{});
    EXPECT_EQ(KnownBelow(other), Windows{});
    EXPECT_EQ(KnownBelow(nullptr), Windows{});
}

TEST_F(TabControls, ThatCameBetweenTwoSkinsAreFound) {
    {
        const Skinned skinned;
        EXPECT_EQ(KnownBelow(parent), Windows{});
    }
    HWND tab = MakeTab(parent);
    const Skinned again;
    EXPECT_EQ(KnownBelow(parent), Windows{tab});
}

TEST_F(TabControls, AgreeWithASearchWhateverComesGoesAndMoves) {
    constexpr unsigned kSeed = 20'261'121;
    std::mt19937 random(kSeed);
    const auto below = [&random](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    const Skinned skinned;
    ProbeWindow other;
    Windows boxes{parent, other}, tabs;
    int found = 0;
    for (int step = 0; step < 600; ++step) {
        SCOPED_TRACE(testing::Message() << "seed " << kSeed << ", step " << step);
        HWND home = boxes[below(boxes.size())];
        switch (random() % 6) {
            case 0:
                if (boxes.size() < 12) boxes.push_back(MakeBox(home));
                break;
            case 1:
            case 2:
                if (tabs.size() < 12) tabs.push_back(MakeTab(home));
                break;
            case 3:
                if (!tabs.empty()) ::SetParent(tabs[below(tabs.size())], home);
                break;
            case 4:
                if (!tabs.empty()) ::DestroyWindow(tabs[below(tabs.size())]);
                break;
            case 5:
                // With all that is in it; the two top windows stay.
                if (boxes.size() > 2) ::DestroyWindow(boxes[2 + below(boxes.size() - 2)]);
                break;
        }
        std::erase_if(boxes, [](HWND box) { return !::IsWindow(box); });
        std::erase_if(tabs, [](HWND tab) { return !::IsWindow(tab); });
        for (HWND box : boxes) {
            const Windows searched = SearchedBelow(box);
            ASSERT_EQ(KnownBelow(box), searched);
            found += static_cast<int>(searched.size());
        }
    }
    EXPECT_GT(found, 1000) << "the windows were not empty throughout";
}

}  // namespace
