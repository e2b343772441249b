// Attaching, detaching, chains of skin objects, and what Default forwards.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "engine/skin_wnd_proc.h"
#include "engine_objects.h"
#include "tavixskin.h"
#include "tavixskin/framework/geometry.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

using namespace tavix_test;

namespace {

constexpr UINT kMessage = WM_APP + 5;
using Log = std::vector<Received>;

LRESULT CALLBACK ForeignProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return SkinWndProc(window, message, wParam, lParam);
}

class Subclassing : public testing::Test {
protected:
    void SetUp() override {
        m_native = ProcedureOf(m_window);
        m_window.log.Clear();
    }
    Skinned m_skinned;
    ProbeWindow m_window;  // in no skin's table
    HWND m_hwnd = m_window;
    WNDPROC m_native = nullptr;
    CSubclassWndMap* m_map = CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList();
};

// ---------------------------------------------------------------- the class

TEST_F(Subclassing, BaseClassTellsWhatItIs) {
    const CRuntimeClass* base = RUNTIME_CLASS(CSkinWndBaseClass);
    EXPECT_STREQ(base->m_lpszClassName, "CSkinWndBaseClass");
    EXPECT_EQ(base->m_wSchema, 0xFFFFu);
    EXPECT_EQ(base->m_pBaseClass, RUNTIME_CLASS(CObject));
    EXPECT_EQ(base->m_nObjectSize, static_cast<int>(sizeof(CSkinWndBaseClass)));
    ProbeSkin skin;
    EXPECT_EQ(skin.GetRuntimeClass(), base);
    EXPECT_EQ(skin.GetSafeHwnd(), nullptr);
    EXPECT_EQ(skin.PreviousProc(), nullptr);
    EXPECT_EQ(skin.Next(), nullptr);
}

TEST_F(Subclassing, ConvenienceMembersAskForTheWindow) {
    HWND child = CreateControl(Charset::Ansi, m_window, "STATIC", "", WS_DISABLED, {5, 6, 45, 36}, 321);
    ProbeSkin skin;
    skin.Attach(child);
    EXPECT_EQ(skin.GetParent(), m_window);
    EXPECT_EQ(skin.GetDlgCtrlID(), 321);
    EXPECT_FALSE(skin.IsWindowEnabled());
    ::EnableWindow(child, TRUE);
    EXPECT_TRUE(skin.IsWindowEnabled());
    RECT mine{}, real{};
    skin.GetClientRect(&mine);
    ::GetClientRect(child, &real);
    EXPECT_TRUE(::EqualRect(&mine, &real));
    skin.GetWindowRect(&mine);
    ::GetWindowRect(child, &real);
    EXPECT_TRUE(::EqualRect(&mine, &real));
    HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(skin.GetWindowRgn(region), ERROR);
    ::SetWindowRgn(child, ::CreateRectRgn(1, 2, 9, 8), FALSE);
    EXPECT_EQ(skin.GetWindowRgn(region), SIMPLEREGION);
    ::GetRgnBox(region, &mine);
    EXPECT_TRUE(CRect(mine) == CRect(1, 2, 9, 8));
    ::SetWindowRgn(child, nullptr, FALSE);
    ::DeleteObject(region);
    ::ValidateRect(child, nullptr);
    skin.Invalidate(FALSE);
    EXPECT_TRUE(::GetUpdateRect(child, nullptr, FALSE));
    skin.UpdateWindow();
    EXPECT_FALSE(::GetUpdateRect(child, nullptr, FALSE));
    skin.SetCapture();
    EXPECT_EQ(::GetCapture(), child);
    ::ReleaseCapture();
    skin.Detach(child);
    ::DestroyWindow(child);
}

// ---------------------------------------------------------------- one object

TEST_F(Subclassing, AttachPutsTheSharedProcedureInPlaceAndDetachTheFormerOneBack) {
    ProbeSkin skin;
    EXPECT_EQ(skin.Attach(m_hwnd), TRUE);
    EXPECT_EQ(ProcedureOf(m_hwnd), &SkinWndProc);
    EXPECT_EQ(HeadOf(m_hwnd), &skin);
    EXPECT_EQ(skin.GetSafeHwnd(), m_hwnd);
    EXPECT_EQ(skin.PreviousProc(), m_native);
    EXPECT_EQ(skin.Next(), nullptr);

    EXPECT_EQ(skin.Detach(m_hwnd), TRUE);
    EXPECT_EQ(ProcedureOf(m_hwnd), m_native);
    EXPECT_EQ(HeadOf(m_hwnd), nullptr);
    EXPECT_TRUE(m_map->IsEmpty());
    m_window.log.Clear();
    ::SendMessageA(m_hwnd, kMessage, 1, 2);
    EXPECT_TRUE(m_window.log.Has(kMessage));
    EXPECT_FALSE(skin.log.Has(kMessage));
}

TEST_F(Subclassing, DetachOfAStrangerChangesNothing) {
    ProbeSkin skin, stranger;
    EXPECT_EQ(stranger.Detach(m_hwnd), TRUE);
    skin.Attach(m_hwnd);
    EXPECT_EQ(stranger.Detach(m_hwnd), TRUE);
    EXPECT_EQ(HeadOf(m_hwnd), &skin);
    EXPECT_EQ(ProcedureOf(m_hwnd), &SkinWndProc);
    skin.Detach(m_hwnd);
    EXPECT_EQ(skin.Detach(m_hwnd), TRUE);
    EXPECT_EQ(ProcedureOf(m_hwnd), m_native);
}

TEST_F(Subclassing, AttachOfTheHeadItselfChangesNothing) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    skin.Attach(m_hwnd);
    EXPECT_EQ(skin.Next(), nullptr);
    EXPECT_EQ(skin.PreviousProc(), m_native);
    skin.handler = [&skin](UINT m, WPARAM w, LPARAM l) { return skin.Base(m, w, l); };
    ::SendMessageA(m_hwnd, kMessage, 0, 0);
    EXPECT_EQ(m_window.log.Count(kMessage), 1);
    skin.Detach(m_hwnd);
    EXPECT_EQ(ProcedureOf(m_hwnd), m_native);
}

TEST_F(Subclassing, DetachDropsWhoeverSubclassedTheWindowSince) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    ::SetWindowLongPtrA(m_hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ForeignProcedure));
    skin.Detach(m_hwnd);
    EXPECT_EQ(ProcedureOf(m_hwnd), m_native);
}

TEST_F(Subclassing, LateCallOfTheSharedProcedureIsHarmless) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    skin.Detach(m_hwnd);
    // What a foreign subclass that remembers the procedure would do.
    EXPECT_EQ(SkinWndProc(m_hwnd, kMessage, 1, 2), 0);
    char text[20] = {};
    EXPECT_EQ(SkinWndProc(m_hwnd, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text)), 5);
    EXPECT_STREQ(text, "probe");
}

// ---------------------------------------------------------------- chains

class Chain : public Subclassing {
protected:
    void SetUp() override {
        Subclassing::SetUp();
        m_lower.Attach(m_hwnd);
        m_upper.Attach(m_hwnd);
        m_upper.handler = [this](UINT m, WPARAM w, LPARAM l) { return m_upper.Base(m, w, l); };
        m_lower.handler = [this](UINT m, WPARAM w, LPARAM l) { return m_lower.Base(m, w, l); };
    }
    void TearDown() override {
        m_map->RemoveAllSkins(m_hwnd);
        EXPECT_EQ(ProcedureOf(m_hwnd), m_native);
    }
    // Who sees a message: 1 the upper object, 2 the lower, 4 the window.
    int Reach() {
        m_upper.log.Clear(), m_lower.log.Clear(), m_window.log.Clear();
        ::SendMessageA(m_hwnd, kMessage, 3, 4);
        return m_upper.log.Count(kMessage) + 2 * m_lower.log.Count(kMessage) +
               4 * m_window.log.Count(kMessage);
    }
    ProbeSkin m_lower, m_upper;
};

TEST_F(Chain, RunsFromTheLastAttachedToTheFirst) {
    EXPECT_EQ(HeadOf(m_hwnd), &m_upper);
    EXPECT_EQ(m_upper.Next(), &m_lower);
    EXPECT_EQ(m_lower.Next(), nullptr);
    EXPECT_EQ(m_upper.PreviousProc(), m_native);
    EXPECT_EQ(m_lower.PreviousProc(), m_native);
    EXPECT_EQ(ProcedureOf(m_hwnd), &SkinWndProc);
    EXPECT_EQ(m_map->GetCount(), 1);
    EXPECT_EQ(Reach(), 7);
    EXPECT_EQ(m_window.log.Entries(), (Log{{m_hwnd, kMessage, 3, 4}}));
}

TEST_F(Chain, HeadDecidesWhoSeesAMessage) {
    m_upper.handler = nullptr;  // ends in Default, which skips the rest of the chain
    EXPECT_EQ(Reach(), 5);
    m_upper.handler = [](UINT, WPARAM, LPARAM) { return LRESULT{9}; };
    EXPECT_EQ(Reach(), 1);
    m_upper.handler = [this](UINT m, WPARAM w, LPARAM l) { return m_upper.Base(m, w, l); };
    m_lower.handler = nullptr;
    EXPECT_EQ(Reach(), 7);
}

TEST_F(Chain, BasePassesItsArgumentsOn) {
    m_upper.handler = [this](UINT, WPARAM, LPARAM) { return m_upper.Base(WM_APP + 9, 70, 80); };
    ::SendMessageA(m_hwnd, kMessage, 3, 4);
    EXPECT_EQ(m_lower.log.Entries(), (Log{{m_hwnd, WM_APP + 9, 70, 80}}));
    EXPECT_EQ(m_window.log.Entries(), (Log{{m_hwnd, WM_APP + 9, 70, 80}}));
    m_upper.handler = [this](UINT m, WPARAM w, LPARAM l) { return m_upper.Base(m, w, l); };
}

TEST_F(Chain, WithoutItsHeadGoesOnWithTheOther) {
    m_upper.Detach(m_hwnd);
    EXPECT_EQ(HeadOf(m_hwnd), &m_lower);
    EXPECT_EQ(ProcedureOf(m_hwnd), &SkinWndProc);
    EXPECT_EQ(Reach(), 6);
    EXPECT_EQ(m_upper.Next(), &m_lower) << "a detached object keeps its link";
    m_lower.Detach(m_hwnd);
    EXPECT_EQ(ProcedureOf(m_hwnd), m_native);
    EXPECT_EQ(Reach(), 4);
}

TEST_F(Chain, WithoutItsLowerObjectIsBridged) {
    m_lower.Detach(m_hwnd);
    EXPECT_EQ(HeadOf(m_hwnd), &m_upper);
    EXPECT_EQ(m_upper.Next(), nullptr);
    EXPECT_EQ(ProcedureOf(m_hwnd), &SkinWndProc);
    EXPECT_EQ(Reach(), 5);
    m_upper.Detach(m_hwnd);
    EXPECT_EQ(ProcedureOf(m_hwnd), m_native);
}

TEST_F(Chain, OfThreeIsBridgedInTheMiddle) {
    ProbeSkin top;
    top.Attach(m_hwnd);
    m_upper.Detach(m_hwnd);
    EXPECT_EQ(HeadOf(m_hwnd), &top);
    EXPECT_EQ(top.Next(), &m_lower);
    m_map->RemoveAllSkins(m_hwnd);
    EXPECT_EQ(HeadOf(m_hwnd), nullptr);
    EXPECT_EQ(ProcedureOf(m_hwnd), m_native);
}

TEST_F(Chain, MapRemovesTheWindowOfAnObject) {
    m_map->Remove(&m_lower);
    EXPECT_EQ(HeadOf(m_hwnd), nullptr);
    m_map->Add(m_hwnd, &m_upper);
    EXPECT_EQ(HeadOf(m_hwnd), &m_upper);
}

TEST(ChainAtTheEnd, DeletesTheHeadAndDetachesAll) {
    Skinned skinned;
    bool headDeleted = false;
    ProbeSkin lower;
    {
        ProbeWindow window;
        lower.Attach(window);
        (new ProbeSkin(&headDeleted))->Attach(window);
    }
    EXPECT_TRUE(headDeleted);
    EXPECT_TRUE(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->IsEmpty());
    EXPECT_FALSE(lower.log.Has(WM_NCDESTROY));
}

/* An object that belongs to the test. */
class KeptSkin : public CSkinWndBaseClass {
public:
    KeptSkin() : CSkinWndBaseClass(KeptByOwner{}) {}
    std::function<void()> before;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_APP && before) before();
        return CSkinWndBaseClass::WindowProc(message, wParam, lParam);
    }
};

TEST(ChainAtTheEnd, LetsAnObjectOfAnotherGoAndDeletesTheOneBelow) {
    Skinned skinned;
    bool lowerDeleted = false;
    KeptSkin kept;
    {
        ProbeWindow window;
        (new ProbeSkin(&lowerDeleted))->Attach(window);
        kept.Attach(window);
        EXPECT_EQ(HeadOf(window), &kept);
    }
    EXPECT_TRUE(lowerDeleted);
    EXPECT_EQ(kept.GetSafeHwnd(), nullptr);
}

TEST(ChainAtTheEnd, TheObjectBelowLivesAsLongAsItsCodeRuns) {
    Skinned skinned;
    bool lowerDeleted = false, deletedWhileRunning = true;
    auto kept = std::make_unique<KeptSkin>();
    auto window = std::make_unique<ProbeWindow>();
    HWND handle = *window;
    auto* lower = new ProbeSkin(&lowerDeleted);
    lower->Attach(handle);
    kept->Attach(handle);
    lower->handler = [&](UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        if (message != WM_APP) return lower->Base(message, wParam, lParam);
        window.reset();  // the window ends, and with it the object on top
        kept.reset();
        deletedWhileRunning = lowerDeleted;
        return 5;
    };
    EXPECT_EQ(::SendMessageA(handle, WM_APP, 0, 0), 5);
    EXPECT_FALSE(deletedWhileRunning);
    EXPECT_TRUE(lowerDeleted);
}

TEST(ChainAtTheEnd, OfTheEngineLetsAnObjectOfAnotherGo) {
    KeptSkin kept;
    bool lowerDeleted = false;
    ProbeWindow window;
    {
        Skinned skinned;
        (new ProbeSkin(&lowerDeleted))->Attach(window);
        kept.Attach(window);
        EXPECT_TRUE(CSkinWndBaseClass::IsInChain(window, &kept));
        EXPECT_FALSE(CSkinWndBaseClass::IsInChain(nullptr, &kept));
    }
    EXPECT_TRUE(lowerDeleted);
    EXPECT_EQ(kept.GetSafeHwnd(), nullptr);
    EXPECT_FALSE(CSkinWndBaseClass::IsInChain(window, &kept));
}

// ---------------------------------------------------------------- Default

TEST_F(Subclassing, DefaultForwardsTheMessageInFlightNotItsArguments) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    m_window.handler = [](const Received&) { return LRESULT{123}; };
    skin.handler = [&skin](UINT, WPARAM, LPARAM) { return skin.Default(WM_APP + 77, 700, 800); };
    m_window.log.Clear();
    EXPECT_EQ(::SendMessageA(m_hwnd, kMessage, 3, 4), 123);
    EXPECT_EQ(m_window.log.Entries(), (Log{{m_hwnd, kMessage, 3, 4}}));
    m_window.handler = nullptr;
    skin.Detach(m_hwnd);
}

TEST_F(Subclassing, DefaultForwardsWhatTheThreadStateHolds) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    skin.handler = [&skin](UINT m, WPARAM w, LPARAM l) {
        AfxGetThreadState()->m_lastSentMsg.wParam = 55;
        return skin.Default(m, w, l);
    };
    m_window.log.Clear();
    ::SendMessageA(m_hwnd, kMessage, 3, 4);
    EXPECT_EQ(m_window.log.Entries(), (Log{{m_hwnd, kMessage, 55, 4}}));
    skin.Detach(m_hwnd);
}

TEST_F(Subclassing, DefaultStopsWmSyscolorchange) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    m_window.handler = [](const Received&) { return LRESULT{123}; };
    m_window.log.Clear();
    EXPECT_EQ(::SendMessageA(m_hwnd, WM_SYSCOLORCHANGE, 0, 0), 0);
    EXPECT_TRUE(m_window.log.Entries().empty());
    EXPECT_TRUE(skin.log.Has(WM_SYSCOLORCHANGE));

    // The argument tells, not the message in flight.
    skin.handler = [&skin](UINT, WPARAM w, LPARAM l) { return skin.Default(WM_SYSCOLORCHANGE, w, l); };
    EXPECT_EQ(::SendMessageA(m_hwnd, kMessage, 0, 0), 0);
    EXPECT_TRUE(m_window.log.Entries().empty());
    skin.handler = [&skin](UINT, WPARAM w, LPARAM l) { return skin.Default(kMessage, w, l); };
    EXPECT_EQ(::SendMessageA(m_hwnd, WM_SYSCOLORCHANGE, 0, 0), 123);
    EXPECT_EQ(m_window.log.Messages(), (std::vector<UINT>{WM_SYSCOLORCHANGE}));

    // By the base's way down the chain it does arrive.
    skin.handler = [&skin](UINT m, WPARAM w, LPARAM l) { return skin.Base(m, w, l); };
    EXPECT_EQ(::SendMessageA(m_hwnd, WM_SYSCOLORCHANGE, 0, 0), 123);
    m_window.handler = nullptr;
    skin.Detach(m_hwnd);
}

TEST_F(Subclassing, DefaultOutsideAnyMessageIsHarmless) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    m_window.log.Clear();
    EXPECT_EQ(skin.Default(kMessage, 1, 2), 0);
    EXPECT_FALSE(m_window.log.Has(kMessage));
    skin.Detach(m_hwnd);
}

TEST_F(Subclassing, NestedMessagesKeepTheMessageInFlight) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    ProbeWindow other;
    ProbeSkin otherSkin;
    otherSkin.Attach(other);
    skin.handler = [&](UINT m, WPARAM w, LPARAM l) -> LRESULT {
        if (m == kMessage) {
            ::SendMessageA(m_hwnd, WM_APP + 20, 21, 22);
            ::SendMessageA(other, WM_APP + 30, 31, 32);
            if (w) ::SendMessageA(m_hwnd, kMessage, w - 1, l);
            const MSG& inFlight = AfxGetThreadState()->m_lastSentMsg;
            EXPECT_EQ(inFlight.hwnd, m_hwnd);
            EXPECT_EQ(inFlight.message, kMessage);
            EXPECT_EQ(inFlight.wParam, w);
            EXPECT_EQ(inFlight.lParam, l);
        }
        return skin.Default(m, w, l);
    };
    m_window.log.Clear();
    m_window.log.Listen({kMessage, WM_APP + 20});
    other.log.Listen({WM_APP + 30});
    other.log.Clear();
    ::SendMessageA(m_hwnd, kMessage, 2, 9);
    const Received in{m_hwnd, WM_APP + 20, 21, 22};
    EXPECT_EQ(
        m_window.log.Entries(),
        (Log{in, in, in, {m_hwnd, kMessage, 0, 9}, {m_hwnd, kMessage, 1, 9}, {m_hwnd, kMessage, 2, 9}}));
    EXPECT_EQ(other.log.Count(WM_APP + 30), 3);
    skin.Detach(m_hwnd);
    otherSkin.Detach(other);
}

TEST_F(Subclassing, MessageInFlightIsPutBackWithItsTimeAndPoint) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    MSG& inFlight = AfxGetThreadState()->m_lastSentMsg;
    const MSG former = {reinterpret_cast<HWND>(0x11), 0x22, 0x33, 0x44, 0x55, {0x66, 0x77}};
    inFlight = former;
    skin.handler = [&](UINT, WPARAM, LPARAM) -> LRESULT {
        EXPECT_EQ(inFlight.hwnd, m_hwnd);
        EXPECT_EQ(inFlight.time, 0x55u);
        EXPECT_EQ(inFlight.pt.x, 0x66);
        EXPECT_EQ(inFlight.pt.y, 0x77);
        return 0;
    };
    ::SendMessageA(m_hwnd, kMessage, 1, 2);
    EXPECT_EQ(inFlight.hwnd, former.hwnd);
    EXPECT_EQ(inFlight.message, former.message);
    EXPECT_EQ(inFlight.wParam, former.wParam);
    EXPECT_EQ(inFlight.lParam, former.lParam);
    EXPECT_EQ(inFlight.time, former.time);
    EXPECT_EQ(inFlight.pt.x, former.pt.x);
    inFlight = {};
    skin.handler = nullptr;
    skin.Detach(m_hwnd);
}

TEST_F(Subclassing, MessagesOfOtherThreadsArriveInTheWindowsThread) {
    ProbeSkin skin;
    skin.Attach(m_hwnd);
    DWORD seenIn = 0;
    skin.handler = [&](UINT m, WPARAM w, LPARAM l) -> LRESULT {
        if (m == kMessage) seenIn = ::GetCurrentThreadId();
        return skin.Default(m, w, l);
    };
    std::atomic<bool> done{false};
    std::thread sender([&] {
        ::SendMessageA(m_hwnd, kMessage, 5, 6);
        done = true;
    });
    EXPECT_TRUE(PumpUntil([&done] { return done.load(); }));
    sender.join();
    EXPECT_EQ(seenIn, ::GetCurrentThreadId());
    EXPECT_TRUE(m_window.log.Has(kMessage));
    skin.handler = nullptr;
    skin.Detach(m_hwnd);
}

}  // namespace
