#include "support/window_probe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <map>

namespace tavix_test {

namespace {

constexpr char kProbeClass[] = "TavixTestProbe";

// Spies by their window and by their class's name; tests run on one thread.
std::map<HWND, MessageSpy*> g_spies;
ClassSpy* g_classSpy = nullptr;

ProbeWindow* ProbeOf(HWND window) {
    return reinterpret_cast<ProbeWindow*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
}

std::wstring Widen(const char* text) {
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    std::wstring wide(static_cast<size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), length);
    return wide;
}

}  // namespace

const char* NameOf(Charset charset) { return charset == Charset::Ansi ? "Ansi" : "Unicode"; }

void PrintTo(const Received& received, std::ostream* out) {
    *out << std::hex << "{window " << received.window << ", message 0x" << received.message << ", 0x"
         << received.wParam << ", 0x" << received.lParam << "}" << std::dec;
}

void MessageLog::Add(const Received& received) {
    if (m_wanted.empty() || std::find(m_wanted.begin(), m_wanted.end(), received.message) != m_wanted.end())
        m_entries.push_back(received);
}

std::vector<UINT> MessageLog::Messages() const {
    std::vector<UINT> messages;
    for (const Received& entry : m_entries) messages.push_back(entry.message);
    return messages;
}

int MessageLog::Count(UINT message) const {
    return static_cast<int>(
        std::count_if(m_entries.begin(), m_entries.end(),
                      [message](const Received& entry) { return entry.message == message; }));
}

ProbeWindow::ProbeWindow(DWORD style, SIZE client, POINT at, COLORREF background) : background(background) {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = ::GetModuleHandleA(nullptr);
    windowClass.hCursor = ::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    windowClass.lpszClassName = kProbeClass;
    ::RegisterClassA(&windowClass);  // fails from the second window on, which changes nothing

    RECT frame{0, 0, client.cx, client.cy};
    ::AdjustWindowRect(&frame, style, FALSE);
    m_window =
        ::CreateWindowExA(0, kProbeClass, "probe", style & ~WS_VISIBLE, at.x, at.y, frame.right - frame.left,
                          frame.bottom - frame.top, nullptr, nullptr, windowClass.hInstance, this);
    EXPECT_NE(m_window, nullptr);
    if (style & WS_VISIBLE) ::ShowWindow(m_window, SW_SHOW);
    ::UpdateWindow(m_window);
    log.Clear();
}

ProbeWindow::~ProbeWindow() {
    if (m_window) ::DestroyWindow(m_window);
}

LRESULT CALLBACK ProbeWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* probe = static_cast<ProbeWindow*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        ::SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(probe));
    }
    ProbeWindow* probe = ProbeOf(window);
    if (!probe) return ::DefWindowProcA(window, message, wParam, lParam);
    const Received received{window, message, wParam, lParam};
    probe->log.Add(received);
    if (probe->handler)
        if (const std::optional<LRESULT> answer = probe->handler(received)) return *answer;
    if (message == WM_ERASEBKGND) {
        RECT client;
        ::GetClientRect(window, &client);
        HBRUSH brush = ::CreateSolidBrush(probe->background);
        ::FillRect(reinterpret_cast<HDC>(wParam), &client, brush);
        ::DeleteObject(brush);
        return 1;
    }
    if (message == WM_NCDESTROY) probe->m_window = nullptr;
    return ::DefWindowProcA(window, message, wParam, lParam);
}

HWND CreateControl(Charset charset, HWND parent, const char* className, const char* text, DWORD style,
                   const RECT& place, int id, DWORD exStyle) {
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    HMENU menu = reinterpret_cast<HMENU>(static_cast<INT_PTR>(id));
    HINSTANCE instance = ::GetModuleHandleA(nullptr);
    style |= WS_CHILD | WS_VISIBLE;
    HWND window =
        charset == Charset::Ansi
            ? ::CreateWindowExA(exStyle, className, text, style, place.left, place.top, width, height, parent,
                                menu, instance, nullptr)
            : ::CreateWindowExW(exStyle, Widen(className).c_str(), Widen(text).c_str(), style, place.left,
                                place.top, width, height, parent, menu, instance, nullptr);
    EXPECT_NE(window, nullptr) << className << ", error " << ::GetLastError();
    return window;
}

MessageSpy::MessageSpy(HWND window) : m_window(window) {
    g_spies[window] = this;
    m_former = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
}

MessageSpy::~MessageSpy() {
    const auto own = g_spies.find(m_window);
    if (own == g_spies.end() || own->second != this) return;
    g_spies.erase(own);
    ::SetWindowLongPtrA(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_former));
}

LRESULT CALLBACK MessageSpy::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = g_spies.find(window);
    if (found == g_spies.end()) return ::DefWindowProcA(window, message, wParam, lParam);
    MessageSpy* spy = found->second;
    WNDPROC former = spy->m_former;
    const Received received{window, message, wParam, lParam};
    spy->log.Add(received);
    if (message == WM_NCDESTROY) g_spies.erase(found);
    if (spy->handler)
        if (const std::optional<LRESULT> answer = spy->handler(received)) return *answer;
    return ::CallWindowProcA(former, window, message, wParam, lParam);
}

ClassSpy::ClassSpy(const char* className) {
    m_holder = ::CreateWindowExW(0, Widen(className).c_str(), L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                 ::GetModuleHandleW(nullptr), nullptr);
    EXPECT_NE(m_holder, nullptr);
    EXPECT_EQ(g_classSpy, nullptr) << "one class at a time";
    g_classSpy = this;
    m_former = reinterpret_cast<WNDPROC>(
        ::SetClassLongPtrW(m_holder, GCLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
    EXPECT_NE(m_former, nullptr);
}

ClassSpy::~ClassSpy() {
    ::SetClassLongPtrW(m_holder, GCLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_former));
    ::DestroyWindow(m_holder);
    g_classSpy = nullptr;
}

LRESULT CALLBACK ClassSpy::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    ClassSpy* spy = g_classSpy;
    if (!spy) return ::DefWindowProcW(window, message, wParam, lParam);
    WNDPROC former = spy->m_former;
    if (window != spy->m_holder) {
        const Received received{window, message, wParam, lParam};
        spy->log.Add(received);
        if (spy->handler)
            if (const std::optional<LRESULT> answer = spy->handler(received)) return *answer;
    }
    return ::CallWindowProcW(former, window, message, wParam, lParam);
}

SCROLLINFO ScrollInfoOf(HWND bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    ::SendMessageA(bar, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(&info));
    return info;
}

void PumpMessages(DWORD milliseconds) {
    PumpUntil([] { return false; }, milliseconds);
}

bool PumpUntil(const std::function<bool()>& condition, DWORD milliseconds) {
    const ULONGLONG end = ::GetTickCount64() + milliseconds;
    for (;;) {
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&message);
            ::DispatchMessageA(&message);
        }
        if (condition()) return true;
        const ULONGLONG now = ::GetTickCount64();
        if (now >= end) return false;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(std::min<ULONGLONG>(end - now, 5)),
                                    QS_ALLINPUT);
    }
}

}  // namespace tavix_test
