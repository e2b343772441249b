#include "tavixskin/framework/wnd.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr char kPlainClass[] = "TavixTestPlainWindow";
constexpr UINT kProbeMessage = WM_APP + 1;
constexpr UINT kNestedMessage = WM_APP + 2;
constexpr UINT kUnknownMessage = WM_APP + 3;

LRESULT CALLBACK PlainProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kUnknownMessage) return 4321;
    if (message == WM_CREATE && reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams) return -1;
    return ::DefWindowProcA(window, message, wParam, lParam);
}

class WndTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        WNDCLASSA cls{};
        cls.lpfnWndProc = &PlainProcedure;
        cls.hInstance = ::GetModuleHandleA(nullptr);
        cls.lpszClassName = kPlainClass;
        ASSERT_NE(::RegisterClassA(&cls), 0);
    }
    static void TearDownTestSuite() { ::UnregisterClassA(kPlainClass, ::GetModuleHandleA(nullptr)); }

    static HWND MakeWindow() {
        return ::CreateWindowExA(0, kPlainClass, "", WS_POPUP, 0, 0, 20, 20, nullptr, nullptr, nullptr,
                                 nullptr);
    }
    static WNDPROC ProcedureOf(HWND window) {
        return reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(window, GWLP_WNDPROC));
    }
};

// Notes every message, and what its handlers did.
class BaseWindow : public CWnd {
public:
    std::vector<std::string> notes;
    std::vector<UINT> messages;
    int* nc_destroyed = nullptr;
    bool delete_at_end = false;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        messages.push_back(message);
        return CWnd::WindowProc(message, wParam, lParam);
    }
    void PostNcDestroy() override {
        if (nc_destroyed) ++*nc_destroyed;
        if (delete_at_end) delete this;
    }

protected:
    LRESULT OnBaseProbe(WPARAM, LPARAM) { return notes.push_back("base probe"), 10; }
    LRESULT OnBaseOnly(WPARAM, LPARAM) { return notes.push_back("base only"), 11; }
    LRESULT OnCommandSeven(WPARAM, LPARAM) { return notes.push_back("seven"), 7; }
    LRESULT OnCommandRange(WPARAM wParam, LPARAM) {
        return notes.push_back("range " + std::to_string(LOWORD(wParam))), 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(BaseWindow, CWnd)
    ON_MESSAGE(kProbeMessage, &BaseWindow::OnBaseProbe)
    ON_MESSAGE(WM_APP + 50, &BaseWindow::OnBaseOnly)
    ON_COMMAND(7, &BaseWindow::OnCommandSeven)
    ON_COMMAND_RANGE(100, 109, &BaseWindow::OnCommandRange)
END_MESSAGE_MAP()

class DerivedWindow : public BaseWindow {
public:
    std::function<LRESULT(WPARAM, LPARAM)> nested;

protected:
    LRESULT OnProbe(WPARAM wParam, LPARAM lParam) {
        notes.push_back("derived probe");
        return static_cast<LRESULT>(wParam) + lParam;
    }
    LRESULT OnNested(WPARAM wParam, LPARAM lParam) { return nested(wParam, lParam); }
    LRESULT OnCommandFive(WPARAM, LPARAM) { return notes.push_back("five in range"), 0; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DerivedWindow, BaseWindow)
    ON_MESSAGE(kProbeMessage, &DerivedWindow::OnProbe)
    ON_MESSAGE(kNestedMessage, &DerivedWindow::OnNested)
    ON_COMMAND(105, &DerivedWindow::OnCommandFive)
END_MESSAGE_MAP()

using Notes = std::vector<std::string>;

// ---------------------------------------------------------------- creation and end

TEST_F(WndTest, ObjectSeesItsWindowFromItsFirstMessagesOn) {
    BaseWindow window;
    ASSERT_TRUE(window.CreateEx(WS_EX_TOOLWINDOW, kPlainClass, "a title", WS_POPUP | WS_BORDER,
                                CRect(10, 20, 110, 70), nullptr, 0));
    ASSERT_NE(window.GetSafeHwnd(), nullptr);
    const auto& seen = window.messages;
    const auto at = [&seen](UINT message) {
        return std::find(seen.begin(), seen.end(), message) - seen.begin();
    };
    const auto end = static_cast<std::ptrdiff_t>(seen.size());
    EXPECT_LT(at(WM_NCCREATE), end);
    EXPECT_LT(at(WM_NCCREATE), at(WM_CREATE));
    EXPECT_LT(at(WM_NCCREATE), at(WM_NCCALCSIZE));
    EXPECT_LT(at(WM_CREATE), end);

    char text[20] = {};
    ::GetWindowTextA(window.GetSafeHwnd(), text, sizeof text);
    EXPECT_STREQ(text, "a title");
    CRect place;
    ::GetWindowRect(window.GetSafeHwnd(), &place);
    EXPECT_TRUE(place == CRect(10, 20, 110, 70));
    EXPECT_TRUE(::GetWindowLongA(window.GetSafeHwnd(), GWL_STYLE) & WS_BORDER);
    EXPECT_TRUE(::GetWindowLongA(window.GetSafeHwnd(), GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
    EXPECT_EQ(CWnd::FromHandlePermanent(window.GetSafeHwnd()), &window);
    EXPECT_EQ(CWnd::FromHandle(window.GetSafeHwnd()), &window);
}

TEST_F(WndTest, ChildGetsItsParentAndId) {
    HWND parent = MakeWindow();
    BaseWindow child;
    ASSERT_TRUE(child.CreateEx(0, kPlainClass, "", WS_CHILD, CRect(0, 0, 5, 5), parent, 0x1234));
    EXPECT_EQ(::GetParent(child.GetSafeHwnd()), parent);
    EXPECT_EQ(::GetDlgCtrlID(child.GetSafeHwnd()), 0x1234);
    EXPECT_EQ(::GetDlgItem(parent, 0x1234), child.GetSafeHwnd());
    ::DestroyWindow(parent);
    EXPECT_EQ(child.GetSafeHwnd(), nullptr);
}

TEST_F(WndTest, CreationThatFailsLeavesNothing) {
    BaseWindow window;
    int ended = 0;
    window.nc_destroyed = &ended;
    EXPECT_FALSE(window.CreateEx(0, "TavixTestNoSuchClass", "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0));
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    EXPECT_EQ(ended, 0);
    int refuse = 0;
    EXPECT_FALSE(window.CreateEx(0, kPlainClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0, &refuse));
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    EXPECT_EQ(ended, 1) << "the window had begun, so its end is told";

    // The next window of the thread is nobody's.
    HWND other = MakeWindow();
    EXPECT_EQ(CWnd::FromHandlePermanent(other), nullptr);
    EXPECT_EQ(ProcedureOf(other), &PlainProcedure);
    ::DestroyWindow(other);
}

TEST_F(WndTest, ObjectWithAWindowCreatesNoSecondOne) {
    BaseWindow window;
    ASSERT_TRUE(window.CreateEx(0, kPlainClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0));
    HWND first = window.GetSafeHwnd();
    EXPECT_FALSE(window.CreateEx(0, kPlainClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0));
    EXPECT_EQ(window.GetSafeHwnd(), first);
}

// A window that creates others while it is being created gets none of theirs mixed up.
class NestingWindow : public BaseWindow {
public:
    BaseWindow inner;
    HWND plain = nullptr;

protected:
    LRESULT OnCreateMessage(WPARAM, LPARAM) {
        plain =
            ::CreateWindowExA(0, kPlainClass, "", WS_POPUP, 0, 0, 5, 5, m_hWnd, nullptr, nullptr, nullptr);
        inner.CreateEx(0, kPlainClass, "", WS_CHILD, CRect(0, 0, 5, 5), m_hWnd, 5);
        return Default();
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(NestingWindow, BaseWindow)
    ON_MESSAGE(WM_CREATE, &NestingWindow::OnCreateMessage)
END_MESSAGE_MAP()

TEST_F(WndTest, CreationNests) {
    NestingWindow outer;
    ASSERT_TRUE(outer.CreateEx(0, kPlainClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0));
    ASSERT_NE(outer.inner.GetSafeHwnd(), nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(outer.GetSafeHwnd()), &outer);
    EXPECT_EQ(CWnd::FromHandlePermanent(outer.inner.GetSafeHwnd()), &outer.inner);
    EXPECT_EQ(CWnd::FromHandlePermanent(outer.plain), nullptr);
    EXPECT_EQ(ProcedureOf(outer.plain), &PlainProcedure);
}

// ---------------------------------------------------------------- windows of the framework's own procedure

constexpr char kFrameworkClass[] = "TavixTestFrameworkWindow";

class FrameworkClassTest : public WndTest {
protected:
    void SetUp() override {
        WNDCLASSA cls{};
        cls.lpfnWndProc = &AfxWndProc;
        cls.hInstance = ::GetModuleHandleA(nullptr);
        cls.lpszClassName = kFrameworkClass;
        ASSERT_NE(::RegisterClassA(&cls), 0);
    }
    void TearDown() override { ::UnregisterClassA(kFrameworkClass, ::GetModuleHandleA(nullptr)); }
    static bool Make(CWnd& window) {
        return window.CreateEx(0, kFrameworkClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0);
    }
};

TEST_F(FrameworkClassTest, ObjectSeesItsWindowFromItsFirstMessageOn) {
    BaseWindow window;
    ASSERT_TRUE(Make(window));
    ASSERT_FALSE(window.messages.empty());
    EXPECT_TRUE(window.messages[0] == WM_GETMINMAXINFO || window.messages[0] == WM_NCCREATE);
    EXPECT_EQ(CWnd::FromHandlePermanent(window.GetSafeHwnd()), &window);
    EXPECT_EQ(ProcedureOf(window.GetSafeHwnd()), &AfxWndProc);
    int ended = 0;
    window.nc_destroyed = &ended;
    EXPECT_TRUE(window.DestroyWindow());
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
}

TEST_F(FrameworkClassTest, WindowWithoutAnObjectIsNobodys) {
    const auto make = [] {
        return ::CreateWindowExA(0, kFrameworkClass, "", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr,
                                 ::GetModuleHandleA(nullptr), nullptr);
    };
    HWND before = make();
    ASSERT_NE(before, nullptr);
    BaseWindow window;
    ASSERT_TRUE(Make(window));
    HWND after = make();
    EXPECT_EQ(CWnd::FromHandlePermanent(before), nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(after), nullptr);
    ::DestroyWindow(before);
    ::DestroyWindow(after);
}

TEST_F(FrameworkClassTest, WindowThatRefusesItsCreationLeavesNothing) {
    class Refusing : public BaseWindow {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            return message == WM_CREATE ? -1 : BaseWindow::WindowProc(message, wParam, lParam);
        }
    } refusing;
    EXPECT_FALSE(Make(refusing));
    EXPECT_EQ(refusing.GetSafeHwnd(), nullptr);
    BaseWindow next;
    ASSERT_TRUE(Make(next));
    EXPECT_EQ(CWnd::FromHandlePermanent(next.GetSafeHwnd()), &next);
}

// A hook of the host's may make windows of the framework before the first message of the one that it hears
// of.
CWnd* g_madeInHook = nullptr;
bool g_madeByHook = false;
LRESULT CALLBACK MakingHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND)
        if (CWnd* inner = std::exchange(g_madeInHook, nullptr))
            g_madeByHook = inner->CreateEx(0, kFrameworkClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0);
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(FrameworkClassTest, WindowMadeInTheMakingOfAnotherIsNotMixedUpWithIt) {
    HHOOK hook = ::SetWindowsHookExA(WH_CBT, &MakingHook, nullptr, ::GetCurrentThreadId());
    ASSERT_NE(hook, nullptr);
    for (const char* outerClass : {kFrameworkClass, kPlainClass}) {
        SCOPED_TRACE(outerClass);
        BaseWindow outer, inner;
        g_madeInHook = &inner;
        g_madeByHook = false;
        ASSERT_TRUE(outer.CreateEx(0, outerClass, "", WS_POPUP, CRect(0, 0, 9, 9), nullptr, 0));
        ASSERT_TRUE(g_madeByHook);
        EXPECT_EQ(CWnd::FromHandlePermanent(outer.GetSafeHwnd()), &outer);
        EXPECT_EQ(CWnd::FromHandlePermanent(inner.GetSafeHwnd()), &inner);
        CRect place;
        ::GetWindowRect(outer.GetSafeHwnd(), &place);
        EXPECT_EQ(place.Width(), 9);
        ::GetWindowRect(inner.GetSafeHwnd(), &place);
        EXPECT_EQ(place.Width(), 5);
        EXPECT_NE(std::count(outer.messages.begin(), outer.messages.end(), UINT{WM_CREATE}), 0);
        EXPECT_NE(std::count(inner.messages.begin(), inner.messages.end(), UINT{WM_CREATE}), 0);
    }
    ::UnhookWindowsHookEx(hook);
}

TEST_F(WndTest, PostNcDestroyIsCalledOnceAndMayDeleteTheObject) {
    int ended = 0;
    BaseWindow* window = new BaseWindow;
    window->nc_destroyed = &ended;
    window->delete_at_end = true;
    ASSERT_TRUE(window->CreateEx(0, kPlainClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0));
    HWND handle = window->GetSafeHwnd();
    ::DestroyWindow(handle);
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST_F(WndTest, ObjectThatEndsDestroysItsWindow) {
    HWND handle = nullptr;
    {
        BaseWindow window;
        window.CreateEx(0, kPlainClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0);
        handle = window.GetSafeHwnd();
        EXPECT_TRUE(::IsWindow(handle));
    }
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST_F(WndTest, DestroyWindowTellsWhetherThereWasOne) {
    BaseWindow window;
    EXPECT_FALSE(window.DestroyWindow());
    window.CreateEx(0, kPlainClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0);
    EXPECT_TRUE(window.DestroyWindow());
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    EXPECT_FALSE(window.DestroyWindow());
}

// ---------------------------------------------------------------- attaching and subclassing

TEST_F(WndTest, AttachedWindowIsPermanentButNotSubclassed) {
    HWND handle = MakeWindow();
    {
        BaseWindow window, second;
        EXPECT_FALSE(window.Attach(nullptr));
        EXPECT_TRUE(window.Attach(handle));
        EXPECT_EQ(CWnd::FromHandlePermanent(handle), &window);
        EXPECT_EQ(ProcedureOf(handle), &PlainProcedure);
        EXPECT_FALSE(second.Attach(handle)) << "a window has one object";
        EXPECT_FALSE(window.Attach(handle));
        EXPECT_EQ(window.Detach(), handle);
        EXPECT_EQ(window.Detach(), nullptr);
        EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    }
    EXPECT_TRUE(::IsWindow(handle)) << "a detached window is not destroyed with the object";
    {
        BaseWindow window;
        window.Attach(handle);
    }
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr) << "the map must not lead to a dead object";
}

TEST_F(WndTest, SubclassedWindowComesHereAndGoesBack) {
    HWND handle = MakeWindow();
    DerivedWindow window;
    ASSERT_TRUE(window.SubclassWindow(handle));
    EXPECT_NE(ProcedureOf(handle), &PlainProcedure);
    EXPECT_EQ(::SendMessageA(handle, kProbeMessage, 30, 4), 34);
    EXPECT_EQ(::SendMessageA(handle, kUnknownMessage, 0, 0), 4321)
        << "what no handler takes reaches the former procedure";

    DerivedWindow second;
    EXPECT_FALSE(second.SubclassWindow(handle));
    EXPECT_FALSE(window.SubclassWindow(handle));
    EXPECT_EQ(::SendMessageA(handle, kUnknownMessage, 0, 0), 4321) << "a refused subclassing changes nothing";

    EXPECT_EQ(window.UnsubclassWindow(), handle);
    EXPECT_EQ(window.UnsubclassWindow(), nullptr);
    EXPECT_EQ(ProcedureOf(handle), &PlainProcedure);
    EXPECT_EQ(::SendMessageA(handle, kProbeMessage, 30, 4), 0);
    EXPECT_EQ(window.messages.back(), kUnknownMessage);
    EXPECT_TRUE(second.SubclassWindow(handle));
    ::DestroyWindow(handle);
    EXPECT_EQ(second.GetSafeHwnd(), nullptr);
}

TEST_F(WndTest, SubclassedWindowThatDiesIsLetGo) {
    HWND handle = MakeWindow();
    int ended = 0;
    DerivedWindow window;
    window.nc_destroyed = &ended;
    window.SubclassWindow(handle);
    ::DestroyWindow(handle);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    HWND next = MakeWindow();
    EXPECT_TRUE(window.SubclassWindow(next)) << "the object can be used again";
    ::DestroyWindow(next);
}

TEST_F(WndTest, WorksInEitherModuleState) {
    HWND handle = MakeWindow();
    DerivedWindow window;
    {
        AFX_MAINTAIN_STATE2 state(AfxGetLibraryModuleState());
        ASSERT_TRUE(window.SubclassWindow(handle));
    }
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), &window);
    EXPECT_EQ(::SendMessageA(handle, kProbeMessage, 1, 2), 3);
    EXPECT_EQ(window.UnsubclassWindow(), handle);
    ASSERT_TRUE(window.SubclassWindow(handle));
    {
        AFX_MAINTAIN_STATE2 state(AfxGetLibraryModuleState());
        EXPECT_EQ(CWnd::FromHandlePermanent(handle), &window);
        EXPECT_EQ(::SendMessageA(handle, kProbeMessage, 1, 2), 3);
    }
    ::DestroyWindow(handle);
}

// ---------------------------------------------------------------- message maps

class MessageMapTest : public WndTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(window.CreateEx(0, kPlainClass, "", WS_POPUP, CRect(0, 0, 5, 5), nullptr, 0));
        handle = window.GetSafeHwnd();
    }
    void Command(int id, int code, HWND control = nullptr) {
        ::SendMessageA(handle, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(control));
    }
    DerivedWindow window;
    HWND handle = nullptr;
};

TEST_F(MessageMapTest, DerivedHandlerComesBeforeTheBases) {
    EXPECT_EQ(::SendMessageA(handle, kProbeMessage, 5, 6), 11);
    EXPECT_EQ(::SendMessageA(handle, WM_APP + 50, 5, 6), 11);
    EXPECT_EQ(window.notes, (Notes{"derived probe", "base only"}));
}

TEST_F(MessageMapTest, CommandsAreTakenByTheirNumber) {
    Command(7, 0);
    Command(8, 0);
    EXPECT_EQ(window.notes, (Notes{"seven"}));
}

TEST_F(MessageMapTest, CommandRangesIncludeBothEnds) {
    for (int id : {99, 100, 104, 105, 109, 110}) Command(id, 0);
    EXPECT_EQ(window.notes, (Notes{"range 100", "range 104", "five in range", "range 109"}));
}

TEST_F(MessageMapTest, CommandsComeFromMenusAcceleratorsAndClicks) {
    Command(7, 0);  // a menu
    Command(7, 1);  // an accelerator
    Command(7, BN_CLICKED, handle);
    Command(7, BN_DOUBLECLICKED, handle);  // another notification of a control: no command
    Command(7, 1, handle);
    EXPECT_EQ(window.notes, (Notes{"seven", "seven", "seven"}));
}

TEST_F(MessageMapTest, WindowProcedureIsOnTheWay) {
    window.messages.clear();
    EXPECT_EQ(::SendMessageA(handle, kUnknownMessage, 1, 2), 4321);
    EXPECT_EQ(window.messages, (std::vector<UINT>{kUnknownMessage}));
}

// ---------------------------------------------------------------- the message in flight

TEST_F(MessageMapTest, DefaultForwardsTheMessageInFlight) {
    window.nested = [this](WPARAM, LPARAM) {
        const MSG& message = AfxGetThreadState()->m_lastSentMsg;
        EXPECT_EQ(message.hwnd, handle);
        EXPECT_EQ(message.message, kNestedMessage);
        EXPECT_EQ(message.wParam, 0x10u);
        EXPECT_EQ(message.lParam, 0x20);
        EXPECT_EQ(AfxGetModuleState(), AfxGetLibraryModuleState());
        return window.Default();
    };
    EXPECT_EQ(::SendMessageA(handle, kNestedMessage, 0x10, 0x20), 0);
}

TEST_F(MessageMapTest, NestedMessagesPutTheOuterOneBack) {
    int depth = 0;
    window.nested = [&](WPARAM wParam, LPARAM) -> LRESULT {
        if (++depth < 5) ::SendMessageA(handle, kNestedMessage, wParam + 1, 0);
        ::SendMessageA(handle, kUnknownMessage, 77, 0);
        const MSG& message = AfxGetThreadState()->m_lastSentMsg;
        EXPECT_EQ(message.message, kNestedMessage);
        EXPECT_EQ(message.wParam, wParam);
        return 0;
    };
    AfxGetThreadState()->m_lastSentMsg.message = 0xABC;
    ::SendMessageA(handle, kNestedMessage, 1, 0);
    EXPECT_EQ(depth, 5);
    EXPECT_EQ(AfxGetThreadState()->m_lastSentMsg.message, 0xABCu);
    AfxGetThreadState()->m_lastSentMsg = {};
}

TEST_F(MessageMapTest, ExceptionOfAHandlerDoesNotLeaveTheProcedure) {
    window.nested = [](WPARAM, LPARAM) -> LRESULT { throw std::runtime_error("from a handler"); };
    AFX_MODULE_STATE* former = AfxGetModuleState();
    EXPECT_EQ(::SendMessageA(handle, kNestedMessage, 0, 0), 0);
    EXPECT_EQ(AfxGetModuleState(), former);
    EXPECT_EQ(AfxGetThreadState()->m_nMaintainDepth, 0);
    EXPECT_EQ(AfxGetThreadState()->m_lastSentMsg.message, 0u);
    EXPECT_EQ(::SendMessageA(handle, kProbeMessage, 1, 1), 2) << "the window goes on";
}

TEST_F(MessageMapTest, WindowMayBeDestroyedByItsOwnHandler) {
    window.nested = [this](WPARAM, LPARAM) -> LRESULT { return window.DestroyWindow(); };
    EXPECT_EQ(::SendMessageA(handle, kNestedMessage, 0, 0), 1);
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    EXPECT_FALSE(::IsWindow(handle));
}

}  // namespace
