// The change of skin while windows are open.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "engine_objects.h"
#include "tavixskin.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

using namespace tavix_test;

namespace {

constexpr UINT kChanged = 0x703;
constexpr char kMutexName[] = "Tavix";
constexpr char kMissing[] = "Z:\\no\\such\\file.skn";
using Notes = std::vector<std::string>;

int Switch(const char* path = SharedSkin().Path()) { return ::SetSkinFromFile(path); }

class LiveSwitch : public testing::Test {
protected:
    // A window whose skin object notes its repaints.
    ProbeSkin* AddSkin(HWND window, const std::string& name, bool* deleted = nullptr) {
        auto* skin = new ProbeSkin(deleted);
        skin->Attach(window);
        skin->repaint = [this, name] { return notes.push_back("repaint " + name), 1; };
        return skin;
    }
    void Register(ProbeWindow& window, const std::string& name) {
        CTavixSkin::GetCurrentThreadSkin()->RegisterSkinWnd(window);
        window.handler = [this, name](const Received& m) -> std::optional<LRESULT> {
            if (m.message != kChanged) return std::nullopt;
            notes.push_back("tell " + name);
            return 12345;
        };
    }
    Notes notes;
    Skinned m_skinned;
};

// ---------------------------------------------------------------- who is told, and when

TEST_F(LiveSwitch, RepaintsSkinsFirstAndTellsRegisteredWindowsLastInTheirOrder) {
    ProbeWindow a, b, c, first, second, third;
    AddSkin(a, "a"), AddSkin(b, "b"), AddSkin(c, "c");
    Register(second, "2"), Register(first, "1"), Register(third, "3");
    ASSERT_EQ(Switch(), 1);
    ASSERT_EQ(notes.size(), 6u);
    Notes repaints(notes.begin(), notes.begin() + 3);
    std::sort(repaints.begin(), repaints.end());  // the map's own order is free
    EXPECT_EQ(repaints, (Notes{"repaint a", "repaint b", "repaint c"}));
    EXPECT_EQ(Notes(notes.begin() + 3, notes.end()), (Notes{"tell 2", "tell 1", "tell 3"}));
}

TEST_F(LiveSwitch, TellsWithBothParametersZero) {
    ProbeWindow window;
    Register(window, "w");
    window.log.Clear();
    window.log.Listen({kChanged});
    ASSERT_EQ(Switch(), 1);
    EXPECT_EQ(window.log.Entries(), (std::vector<Received>{{window, kChanged, 0, 0}}));
}

TEST_F(LiveSwitch, TellsOnlyWhoIsRegistered) {
    ProbeWindow skinnedOnly, registeredOnly, both, neither;
    ProbeSkin* one = AddSkin(skinnedOnly, "skinned");
    ProbeSkin* two = AddSkin(both, "both");
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    engine->RegisterSkinWnd(registeredOnly);
    engine->RegisterSkinWnd(both);
    engine->RegisterSkinWnd(both);
    ASSERT_EQ(Switch(), 1);
    EXPECT_EQ(one->repaints, 1);
    EXPECT_EQ(two->repaints, 1);
    EXPECT_EQ(skinnedOnly.log.Count(kChanged), 0);
    EXPECT_EQ(registeredOnly.log.Count(kChanged), 1);
    EXPECT_EQ(both.log.Count(kChanged), 1);
    EXPECT_EQ(neither.log.Count(kChanged), 0);
    engine->UnRegisterSkinWnd(both);
    ASSERT_EQ(Switch(), 1);
    EXPECT_EQ(both.log.Count(kChanged), 1);
    EXPECT_EQ(registeredOnly.log.Count(kChanged), 2);
}

TEST_F(LiveSwitch, RepaintsTheHeadOfAChainOnly) {
    ProbeWindow window;
    ProbeSkin lower;
    lower.Attach(window);
    ProbeSkin* upper = AddSkin(window, "upper");
    ASSERT_EQ(Switch(), 1);
    EXPECT_EQ(upper->repaints, 1);
    EXPECT_EQ(lower.repaints, 0);
}

TEST_F(LiveSwitch, RepaintsByInvalidatingAndNcPainting) {
    HostWindow window("Tavix_PaneD", WS_POPUP | WS_VISIBLE);
    ::UpdateWindow(window);
    PumpMessages();
    window.log.Clear();
    window.log.Listen({WM_NCPAINT, WM_PAINT});
    ASSERT_EQ(Switch(), 1);
    EXPECT_EQ(window.log.Entries(), (std::vector<Received>{{window, WM_NCPAINT, 0, 0}}));
    EXPECT_TRUE(::GetUpdateRect(window, nullptr, FALSE));
}

TEST_F(LiveSwitch, ToldWindowsFindTheNewSkinInPlace) {
    TestSkin other;
    other.SetColour(CLR_MENU_BACK, RGB(7, 8, 9)).SetBitmapSize(BMP_MENU_CHECK, 31, 32).Write();
    ProbeWindow window;
    COLORREF seen = 0;
    LONG width = 0;
    CTavixSkin::GetCurrentThreadSkin()->RegisterSkinWnd(window);
    window.handler = [&](const Received& m) -> std::optional<LRESULT> {
        if (m.message != kChanged) return std::nullopt;
        seen = CTavixSkin::GetGloalTavixSkinColor(CLR_MENU_BACK);
        BITMAP facts{};
        ::GetObjectA(::GetTavixSkinHBITMAP(BMP_MENU_CHECK), sizeof facts, &facts);
        width = facts.bmWidth;
        return 0;
    };
    ASSERT_EQ(Switch(other.Path()), 1);
    EXPECT_EQ(seen, RGB(7, 8, 9));
    EXPECT_EQ(width, 31);
}

TEST_F(LiveSwitch, RunsInTheLibrarysModuleStateAndPutsItBack) {
    ProbeWindow window;
    AFX_MODULE_STATE* inside = nullptr;
    AddSkin(window, "w")->repaint = [&] { return inside = AfxGetModuleState(), 1; };
    AFX_MODULE_STATE* former = AfxGetModuleState();
    Switch();
    EXPECT_EQ(inside, AfxGetLibraryModuleState());
    EXPECT_EQ(AfxGetModuleState(), former);
}

// ---------------------------------------------------------------- windows that change under way

TEST_F(LiveSwitch, PassesDeadRegisteredWindowsBy) {
    ProbeWindow alive;
    Register(alive, "alive");
    {
        ProbeWindow dead;
        CTavixSkin::GetCurrentThreadSkin()->RegisterSkinWnd(dead);
    }
    CTavixSkin::GetCurrentThreadSkin()->RegisterSkinWnd(nullptr);
    EXPECT_EQ(Switch(), 1);
    EXPECT_EQ(notes, (Notes{"tell alive"}));
}

TEST_F(LiveSwitch, MayDestroyAndCreateWindowsInARepaint) {
    std::vector<std::unique_ptr<ProbeWindow>> windows;
    for (int i = 0; i < 20; ++i) {
        windows.push_back(std::make_unique<ProbeWindow>(WS_POPUP, SIZE{10, 10}));
        AddSkin(*windows.back(), std::to_string(i));
    }
    ProbeWindow busy(WS_POPUP, SIZE{10, 10});
    int rounds = 0;
    AddSkin(busy, "busy");
    for (auto& window : windows) {
        // Whoever comes first ends all the others and makes new ones.
        auto* skin = static_cast<ProbeSkin*>(HeadOf(*window));
        skin->repaint = [&, mine = window.get()] {
            ++rounds;
            std::vector<std::unique_ptr<ProbeWindow>> kept;
            for (auto& other : windows)
                if (other.get() == mine) kept.push_back(std::move(other));
            windows = std::move(kept);
            for (int i = 0; i < 30; ++i) {
                windows.push_back(std::make_unique<ProbeWindow>(WS_POPUP, SIZE{10, 10}));
                AddSkin(*windows.back(), "new");
            }
            return 1;
        };
    }
    EXPECT_EQ(Switch(), 1);
    EXPECT_EQ(rounds, 1);
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "repaint busy"), 1);
}

TEST_F(LiveSwitch, KeepsAnObjectWhoseRepaintDestroysItsWindow) {
    auto window = std::make_unique<ProbeWindow>();
    bool deleted = false, deletedInside = true;
    AddSkin(*window, "w", &deleted)->repaint = [&] {
        window.reset();
        deletedInside = deleted;
        return 1;
    };
    EXPECT_EQ(Switch(), 1);
    EXPECT_FALSE(deletedInside);
    EXPECT_TRUE(deleted);
}

TEST_F(LiveSwitch, StopsIfTheSkinningEndsUnderWay) {
    ProbeWindow a, b, told;
    int repaints = 0;
    const auto end = [&repaints] {
        ++repaints;
        ::UnInstallTavixSkin();
        return 1;
    };
    AddSkin(a, "a")->repaint = end;
    AddSkin(b, "b")->repaint = end;
    Register(told, "told");
    EXPECT_EQ(Switch(), 1);
    EXPECT_EQ(repaints, 1);
    EXPECT_EQ(notes, Notes{});
    EXPECT_EQ(::IsSkinnedThread(::GetCurrentThreadId()), 0);
}

TEST_F(LiveSwitch, MayBeRepeatedByAToldWindow) {
    ProbeWindow window;
    int told = 0;
    CTavixSkin::GetCurrentThreadSkin()->RegisterSkinWnd(window);
    window.handler = [&](const Received& m) -> std::optional<LRESULT> {
        if (m.message == kChanged && ++told < 3) {
            EXPECT_EQ(Switch(), 1);
        }
        return std::nullopt;
    };
    EXPECT_EQ(Switch(), 1);
    EXPECT_EQ(told, 3);
}

TEST_F(LiveSwitch, ToldWindowMayUnregisterItself) {
    ProbeWindow a, b;
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    Register(a, "a"), Register(b, "b");
    a.handler = [&](const Received& m) -> std::optional<LRESULT> {
        if (m.message == kChanged) engine->UnRegisterSkinWnd(a);
        return std::nullopt;
    };
    EXPECT_EQ(Switch(), 1);
    EXPECT_EQ(engine->GetRegistedSkinWnd()->GetSize(), 1);
    notes.clear();
    EXPECT_EQ(Switch(), 1);
    EXPECT_EQ(notes, (Notes{"tell b"}));
    EXPECT_EQ(a.log.Count(kChanged), 1);
}

// ---------------------------------------------------------------- what becomes of the values

TEST_F(LiveSwitch, ToTheSameFileIsASwitch) {
    const int count = BitmapCount();
    EXPECT_EQ(Switch(), 1);
    EXPECT_EQ(BitmapCount(), count);
}

TEST_F(LiveSwitch, ToABrokenFileSucceedsWithoutBitmaps) {
    ProbeWindow window;
    Register(window, "w");
    FileWith text("no skin");
    EXPECT_EQ(Switch(text.Path()), 1);
    EXPECT_EQ(BitmapCount(), 0);
    EXPECT_EQ(notes, (Notes{"tell w"}));
    EXPECT_EQ(CTavixSkin::GetGloalTavixSkinColor(CLR_MENU_BACK), SharedSkin().Colour(CLR_MENU_BACK));
    EXPECT_EQ(Switch(), 1);
    EXPECT_GT(BitmapCount(), 100);
}

TEST_F(LiveSwitch, LeavesOtherThreadsAlone) {
    TestSkin other;
    other.SetColour(CLR_MENU_BACK, RGB(7, 8, 9)).Write();
    const HBITMAP mine = ::GetTavixSkinHBITMAP(BMP_MENU_CHECK);
    ProbeWindow window;
    Register(window, "w");
    InAnotherThread([&other] {
        Skinned skinned;
        EXPECT_EQ(Switch(other.Path()), 1);
        EXPECT_EQ(CTavixSkin::GetGloalTavixSkinColor(CLR_MENU_BACK), RGB(7, 8, 9));
    });
    EXPECT_EQ(::GetTavixSkinHBITMAP(BMP_MENU_CHECK), mine);
    EXPECT_EQ(CTavixSkin::GetGloalTavixSkinColor(CLR_MENU_BACK), SharedSkin().Colour(CLR_MENU_BACK));
    EXPECT_EQ(notes, Notes{});
}

TEST_F(LiveSwitch, LeaksNoHandles) {
    // The platform gives out low handle values first, so leaked handles drive the next one up.
    const auto nextHandle = [] {
        HANDLE handle = ::CreateEventA(nullptr, FALSE, FALSE, nullptr);
        ::CloseHandle(handle);
        return static_cast<long>(reinterpret_cast<LONG_PTR>(handle));
    };
    for (int i = 0; i < 3; ++i) Switch();
    const long before = nextHandle();
    constexpr int kSwitches = 40;
    for (int i = 0; i < kSwitches; ++i) Switch();
    EXPECT_LT(nextHandle() - before, 4 * kSwitches / 2);
}

// ---------------------------------------------------------------- the mutex

// Whether another thread could have the mutex now. The mutex has to exist.
bool IsFreeForOthers() {
    DWORD result = WAIT_FAILED;
    InAnotherThread([&result] {
        HANDLE mutex = ::OpenMutexA(MUTEX_ALL_ACCESS, FALSE, kMutexName);
        ASSERT_NE(mutex, nullptr);
        result = ::WaitForSingleObject(mutex, 100);
        if (result == WAIT_OBJECT_0) ::ReleaseMutex(mutex);
        ::CloseHandle(mutex);
    });
    EXPECT_TRUE(result == WAIT_OBJECT_0 || result == WAIT_TIMEOUT) << result;
    return result == WAIT_OBJECT_0;
}

bool MutexExists() {
    HANDLE mutex = ::OpenMutexA(SYNCHRONIZE, FALSE, kMutexName);
    if (mutex) ::CloseHandle(mutex);
    return mutex != nullptr;
}

TEST(SwitchMutex, IsMadeByTheFirstSwitchAndEndsWithTheEngine) {
    EXPECT_FALSE(MutexExists());
    {
        Skinned skinned;
        EXPECT_FALSE(MutexExists());
        EXPECT_EQ(Switch(), 1);
        EXPECT_TRUE(MutexExists());
        EXPECT_TRUE(IsFreeForOthers());
        EXPECT_EQ(Switch(), 1);
        EXPECT_TRUE(IsFreeForOthers());
    }
    EXPECT_FALSE(MutexExists());
}

TEST(SwitchMutex, IsFreeWhileWindowsAreTold) {
    Skinned skinned;
    ProbeWindow window;
    CTavixSkin::GetCurrentThreadSkin()->RegisterSkinWnd(window);
    bool free = false;
    window.handler = [&free](const Received& m) -> std::optional<LRESULT> {
        if (m.message == kChanged) free = IsFreeForOthers();
        return std::nullopt;
    };
    EXPECT_EQ(Switch(), 1);
    EXPECT_TRUE(free);
}

TEST(SwitchMutex, MakesASwitchWaitForItsOwner) {
    HANDLE mutex = ::CreateMutexA(nullptr, TRUE, kMutexName);
    ASSERT_NE(mutex, nullptr);
    static volatile LONG done;
    done = 0;
    HANDLE started = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::thread other([started] {
        Skinned skinned;
        ::SetEvent(started);
        EXPECT_EQ(Switch(), 1);
        ::InterlockedExchange(&done, 1);
    });
    ::WaitForSingleObject(started, INFINITE);
    ::Sleep(150);
    EXPECT_EQ(done, 0);
    ::ReleaseMutex(mutex);
    other.join();
    EXPECT_EQ(done, 1);
    ::CloseHandle(started);
    ::CloseHandle(mutex);
}

// A failed switch leaves its thread the owner for good, so each of these has a thread of its own.
class FailedSwitch : public testing::TestWithParam<const char*> {
protected:
    void Run(const std::function<void()>& work) {
        InAnotherThread(work);
        EXPECT_FALSE(MutexExists());
    }
};

TEST_P(FailedSwitch, LeavesAnEmptySkinAndTellsNobody) {
    Run([] {
        Skinned skinned;
        {
            ProbeWindow window, told;
            auto* skin = new ProbeSkin;
            skin->Attach(window);
            CTavixSkin::GetCurrentThreadSkin()->RegisterSkinWnd(told);
            EXPECT_GT(BitmapCount(), 100);
            EXPECT_EQ(Switch(GetParam()), 0);
            EXPECT_EQ(BitmapCount(), 0);
            EXPECT_EQ(skin->repaints, 0);
            EXPECT_EQ(told.log.Count(kChanged), 0);
            EXPECT_EQ(CTavixSkin::GetGloalTavixSkinColor(CLR_MENU_BACK), SharedSkin().Colour(CLR_MENU_BACK));
            EXPECT_EQ(::IsSkinnedThread(::GetCurrentThreadId()), 1);
            // Windows go on, painted from an empty skin.
            HostWindow frame("Tavix_PaneA", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
            EXPECT_NE(HeadOf(frame), nullptr);
            ::RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_FRAME);
            PumpMessages();
        }
    });
}

TEST_P(FailedSwitch, KeepsTheMutexFromOthers) {
    Run([] {
        Skinned skinned;
        EXPECT_EQ(Switch(GetParam()), 0);
        EXPECT_FALSE(IsFreeForOthers());
    });
}

TEST_P(FailedSwitch, MayBeFollowedByAnotherOfTheOwner) {
    Run([] {
        Skinned skinned;
        EXPECT_EQ(Switch(GetParam()), 0);
        EXPECT_EQ(Switch(GetParam()), 0);
        EXPECT_EQ(Switch(), 1);
        EXPECT_GT(BitmapCount(), 100);
        EXPECT_FALSE(IsFreeForOthers()) << "one release does not undo three waits";
    });
}

INSTANTIATE_TEST_SUITE_P(Paths, FailedSwitch,
                         testing::Values(static_cast<const char*>(nullptr), "", kMissing));

TEST(SwitchOfAnUnskinnedThread, TouchesNothing) {
    EXPECT_EQ(Switch(kMissing), 0);
    EXPECT_EQ(Switch(), 0);
    EXPECT_FALSE(MutexExists());
}

}  // namespace
