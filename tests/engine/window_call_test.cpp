// Calling a window does what sending it a message does, but for the hooks.
#include "engine/window_call.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "support/window_probe.h"

using namespace tavix_test;

namespace {

constexpr UINT kQuestion = WM_APP + 7;
int g_hooked;

LRESULT CALLBACK CountingHook(int code, WPARAM wParam, LPARAM lParam) {
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && (sent.message == kQuestion || sent.message == WM_GETTEXT)) ++g_hooked;
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

class WindowCall : public testing::TestWithParam<Charset> {
protected:
    ProbeWindow parent;
};

TEST_P(WindowCall, GivesTheAnswerOfTheWindow) {
    HWND edit = CreateControl(GetParam(), parent, "Edit", "Some text", 0, {0, 0, 90, 20});
    char text[40] = {};
    EXPECT_EQ(tavix::CallWindow(edit, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text)), 9);
    EXPECT_STREQ(text, "Some text");
    EXPECT_EQ(tavix::CallWindow(edit, WM_GETTEXTLENGTH), 9);
}

TEST_P(WindowCall, PassesTheSubclassesOfTheHost) {
    HWND edit = CreateControl(GetParam(), parent, "Edit", "x", 0, {0, 0, 90, 20});
    MessageSpy spy(edit);
    spy.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message == kQuestion) return static_cast<LRESULT>(received.wParam) - received.lParam;
        return std::nullopt;
    };
    EXPECT_EQ(tavix::CallWindow(edit, kQuestion, 50, 8), 42);
}

TEST_P(WindowCall, IsNotHeardByMessageHooks) {
    HWND edit = CreateControl(GetParam(), parent, "Edit", "x", 0, {0, 0, 90, 20});
    HHOOK hook = ::SetWindowsHookExA(WH_CALLWNDPROC, &CountingHook, nullptr, ::GetCurrentThreadId());
    ASSERT_NE(hook, nullptr);
    g_hooked = 0;
    char text[40] = {};
    tavix::CallWindow(edit, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    EXPECT_EQ(g_hooked, 0);
    ::SendMessageA(edit, kQuestion, 0, 0);
    EXPECT_EQ(g_hooked, 1);
    ::UnhookWindowsHookEx(hook);
}

INSTANTIATE_TEST_SUITE_P(Charsets, WindowCall, testing::Values(Charset::Ansi, Charset::Unicode),
                         [](const auto& info) { return NameOf(info.param); });

TEST(WindowCallOfOthers, RunsInTheThreadOfTheWindow) {
    std::promise<HWND> made;
    std::promise<void> asked;
    DWORD answerer = 0;
    std::thread owner([&] {
        ProbeWindow window;
        window.handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message != kQuestion) return std::nullopt;
            answerer = ::GetCurrentThreadId();
            return 7;
        };
        made.set_value(window);
        std::future<void> end = asked.get_future();
        while (end.wait_for(std::chrono::seconds(0)) != std::future_status::ready) PumpMessages(5);
    });
    HWND window = made.get_future().get();
    const DWORD ownerId = ::GetWindowThreadProcessId(window, nullptr);
    EXPECT_EQ(tavix::CallWindow(window, kQuestion), 7);
    EXPECT_EQ(answerer, ownerId);
    EXPECT_NE(answerer, ::GetCurrentThreadId());
    asked.set_value();
    owner.join();
}

TEST(WindowCallOfOthers, GetsNothingWithoutAWindow) {
    HWND dead = CreateControl(Charset::Ansi, ::GetDesktopWindow(), "Static", "", 0, {0, 0, 9, 9});
    ::DestroyWindow(dead);
    EXPECT_EQ(tavix::CallWindow(dead, WM_GETTEXTLENGTH), 0);
    EXPECT_EQ(tavix::CallWindow(nullptr, WM_GETTEXTLENGTH), 0);
}

}  // namespace
