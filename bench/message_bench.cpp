/* A sent message that the skin does not handle, beside the least that any hook and subclass cost. */
#include <thread>

#include "bench_window.h"
#include "benches.h"

namespace bench {

namespace {

constexpr UINT kUnhandled = WM_USER + 77;
constexpr int kMessages = 2'000;

HHOOK g_bareHook = nullptr;
WNDPROC g_former = nullptr;

LRESULT CALLBACK BareHook(int code, WPARAM wParam, LPARAM lParam) {
    return ::CallNextHookEx(g_bareHook, code, wParam, lParam);
}

LRESULT CALLBACK BareSubclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::CallWindowProcA(g_former, window, message, wParam, lParam);
}

/* A thread with a bare hook and a window with a bare subclass, which measures when it is told to. */
class BareThread {
public:
    BareThread()
        : m_go(::CreateEventA(nullptr, FALSE, FALSE, nullptr)),
          m_done(::CreateEventA(nullptr, FALSE, FALSE, nullptr)),
          m_thread([this] { Run(); }) {}
    ~BareThread() {
        m_end = true;
        ::SetEvent(m_go);
        m_thread.join();
        ::CloseHandle(m_go);
        ::CloseHandle(m_done);
    }
    BareThread(const BareThread&) = delete;
    BareThread& operator=(const BareThread&) = delete;

    double Round() {
        ::SetEvent(m_go);
        ::WaitForSingleObject(m_done, INFINITE);
        return m_time;
    }

private:
    void Run() {
        g_bareHook = ::SetWindowsHookExA(WH_CALLWNDPROC, &BareHook, nullptr, ::GetCurrentThreadId());
        Window window(PlainClass(), WS_POPUP, CRect(0, 0, 100, 100));
        g_former = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&BareSubclass)));
        for (;;) {
            ::WaitForSingleObject(m_go, INFINITE);
            if (m_end) break;
            m_time = TimeOf([&] { ::SendMessageA(window, kUnhandled, 0, 0); }, kMessages);
            ::SetEvent(m_done);
        }
        ::UnhookWindowsHookEx(g_bareHook);
    }

    HANDLE m_go;
    HANDLE m_done;
    bool m_end = false;
    double m_time = 0;
    std::thread m_thread;
};

}  // namespace

void MeasureMessages(Report& report) {
    BareThread bare;
    Window frame(SkinnedFrameClass(), WS_OVERLAPPEDWINDOW, CRect(0, 0, 300, 200));
    const auto ours = [&] { return TimeOf([&] { ::SendMessageA(frame, kUnhandled, 0, 0); }, kMessages); };
    report.AtMost("one sent message; a bare hook and a bare subclass",
                  MeasureRounds(ours, [&] { return bare.Round(); }), 1.3);
}

}  // namespace bench
