#include "tavixskin/framework/module_state.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

#include "framework/thread_slot.h"
#include "tavixskin/framework/wnd.h"

namespace {

AFX_MODULE_STATE* Library() { return AfxGetLibraryModuleState(); }

TEST(ModuleState, IsTheProgramsUnlessSwitched) {
    AFX_MODULE_STATE* program = AfxGetModuleState();
    ASSERT_NE(program, nullptr);
    EXPECT_NE(program, Library());
    {
        AFX_MAINTAIN_STATE2 state(Library());
        EXPECT_EQ(AfxGetModuleState(), Library());
        EXPECT_EQ(state.ThreadState(), AfxGetThreadState());
    }
    EXPECT_EQ(AfxGetModuleState(), program);
}

TEST(ModuleState, IsRestoredFromNestedSwitchesInTurn) {
    AFX_MODULE_STATE* program = AfxGetModuleState();
    {
        AFX_MAINTAIN_STATE2 outer(Library());
        {
            AFX_MAINTAIN_STATE2 inner(program);
            EXPECT_EQ(AfxGetModuleState(), program);
            AFX_MAINTAIN_STATE2 innermost(Library());
            EXPECT_EQ(AfxGetModuleState(), Library());
        }
        EXPECT_EQ(AfxGetModuleState(), Library());
    }
    EXPECT_EQ(AfxGetModuleState(), program);
    EXPECT_EQ(AfxGetThreadState()->m_nMaintainDepth, 0);
}

int ReturnsFromTheMiddle(bool early) {
    AFX_MAINTAIN_STATE2 state(Library());
    if (early) return 1;
    throw std::runtime_error("out");
}

TEST(ModuleState, IsRestoredOnEveryWayOut) {
    AFX_MODULE_STATE* program = AfxGetModuleState();
    EXPECT_EQ(ReturnsFromTheMiddle(true), 1);
    EXPECT_EQ(AfxGetModuleState(), program);
    EXPECT_THROW(ReturnsFromTheMiddle(false), std::runtime_error);
    EXPECT_EQ(AfxGetModuleState(), program);
    EXPECT_EQ(AfxGetThreadState()->m_nMaintainDepth, 0);
}

// Tells its end.
class Doomed : public CObject {
public:
    explicit Doomed(bool* deleted, CObject* next = nullptr) : m_deleted(deleted), m_next(next) {}
    ~Doomed() override {
        *m_deleted = true;
        AfxDeleteLater(m_next);
    }

private:
    bool* m_deleted;
    CObject* m_next;
};

TEST(DeleteLater, DeletesAtOnceOutsideTheLibrary) {
    bool deleted = false;
    AfxDeleteLater(new Doomed(&deleted));
    EXPECT_TRUE(deleted);
    AfxDeleteLater(nullptr);
}

TEST(DeleteLater, WaitsForTheOutermostScope) {
    bool first = false, second = false, third = false;
    {
        AFX_MAINTAIN_STATE2 outer(Library());
        {
            AFX_MAINTAIN_STATE2 inner(Library());
            AfxDeleteLater(new Doomed(&first));
            AfxDeleteLater(new Doomed(&second, new Doomed(&third)));
        }
        EXPECT_FALSE(first || second || third);
    }
    EXPECT_TRUE(first && second && third) << "what an end dooms goes too";
}

TEST(ThreadState, IsOneObjectPerThread) {
    AFX_THREAD_STATE* mine = AfxGetThreadState();
    EXPECT_EQ(AfxGetThreadState(), mine);
    mine->m_lastSentMsg.message = WM_USER + 17;
    AFX_THREAD_STATE* theirs = nullptr;
    UINT theirMessage = 1;
    AFX_MODULE_STATE* theirModule = nullptr;
    {
        AFX_MAINTAIN_STATE2 here(Library());
        std::thread([&] {
            theirs = AfxGetThreadState();
            theirMessage = theirs->m_lastSentMsg.message;
            theirModule = AfxGetModuleState();
        }).join();
    }
    EXPECT_NE(theirs, mine);
    EXPECT_EQ(theirMessage, 0u);
    EXPECT_EQ(theirModule, AfxGetModuleState()) << "a switch counts for its own thread only";
    mine->m_lastSentMsg = {};
}

struct Counted {
    Counted() { ::InterlockedIncrement(&made); }
    ~Counted() { ::InterlockedIncrement(&freed); }
    int value = 0;
    static inline LONG made = 0;
    static inline LONG freed = 0;
};

TEST(ThreadSlot, IsMadeAtItsFirstUseAndFreedWithItsThread) {
    Counted::made = Counted::freed = 0;
    tavix::ThreadSlot<Counted> slot;
    EXPECT_EQ(Counted::made, 0);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&slot, i] {
            slot.Get().value = i;
            ::Sleep(5);
            if (slot.Get().value != i) ::InterlockedExchange(&Counted::made, -100);
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(Counted::made, 8);
    EXPECT_EQ(Counted::freed, 8);
    std::thread([] {}).join();
    EXPECT_EQ(Counted::made, 8) << "a thread that asks for nothing makes nothing";
}

TEST(ThreadSlot, FreesItsValuesWhenItEnds) {
    Counted::made = Counted::freed = 0;
    {
        tavix::ThreadSlot<Counted> slot;
        slot.Get().value = 5;
        EXPECT_EQ(Counted::made, 1);
        EXPECT_EQ(Counted::freed, 0);
    }
    EXPECT_EQ(Counted::freed, 1);
}

// A library that is loaded again and again must not eat the process's slots.
TEST(ThreadSlot, GivesItsIndexBack) {
    for (int i = 0; i < 3000; ++i) {
        tavix::ThreadSlot<int> slot;
        slot.Get() = i;
        ASSERT_EQ(slot.Get(), i);
    }
}

// ---------------------------------------------------------------- temporary window objects

struct TemporaryProbe {
    HWND window =
        ::CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr, nullptr, nullptr);
    ~TemporaryProbe() { ::DestroyWindow(window); }
};

TEST(TemporaryObject, LivesUntilTheOutermostSwitchEnds) {
    TemporaryProbe probe;
    {
        AFX_MAINTAIN_STATE2 outer(Library());
        CWnd* first = CWnd::FromHandle(probe.window);
        ASSERT_NE(first, nullptr);
        EXPECT_EQ(first->GetSafeHwnd(), probe.window);
        {
            AFX_MAINTAIN_STATE2 inner(Library());
            EXPECT_EQ(CWnd::FromHandle(probe.window), first);
        }
        EXPECT_EQ(CWnd::FromHandle(probe.window), first) << "an inner switch frees nothing";
        EXPECT_EQ(first->GetSafeHwnd(), probe.window);
        EXPECT_EQ(CWnd::FromHandlePermanent(probe.window), nullptr);
    }
    EXPECT_TRUE(::IsWindow(probe.window)) << "the window is not the temporary object's";
}

// An object of a class that shows when it is freed can't be had from FromHandle, so the map's
// own count of what is freed is seen through the heap: the same block is given out again.
TEST(TemporaryObject, IsFreedWithTheOutermostSwitch) {
    TemporaryProbe probes[4];
    std::set<CWnd*> addresses;
    for (int round = 0; round < 200; ++round) {
        AFX_MAINTAIN_STATE2 state(Library());
        for (const TemporaryProbe& probe : probes) addresses.insert(CWnd::FromHandle(probe.window));
    }
    EXPECT_LT(addresses.size(), 100u) << "800 objects that were all kept would have 800 addresses";
}

TEST(TemporaryObject, OfNoWindowIsNull) {
    AFX_MAINTAIN_STATE2 state(Library());
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(nullptr), nullptr);
}

TEST(TemporaryObject, CanBeAskedForOutsideTheLibraryToo) {
    TemporaryProbe probe;
    std::thread([&probe] {
        CWnd* object = CWnd::FromHandle(probe.window);
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->GetSafeHwnd(), probe.window);
    }).join();  // freed with the thread
    EXPECT_TRUE(::IsWindow(probe.window));
}

}  // namespace
