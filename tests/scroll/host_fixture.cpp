#include "host_fixture.h"

#include <gtest/gtest.h>

#include "tavixskin.h"

namespace tavix_test {

std::string BesideTheProgram(const char* name) {
    char path[MAX_PATH] = {};
    ::GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string program = path;
    return program.substr(0, program.find_last_of('\\') + 1) + name;
}

std::string ClientPath() { return BesideTheProgram("scroll_client.dll"); }

const ClientCalls& CallsOf(HMODULE client) {
    const auto function = reinterpret_cast<ClientCallsFunction>(
        reinterpret_cast<void*>(::GetProcAddress(client, kClientCallsExport)));
    EXPECT_NE(function, nullptr);
    return *function();
}

const ClientCalls& Client() {
    static const HMODULE client = ::LoadLibraryA(ClientPath().c_str());
    EXPECT_NE(client, nullptr) << ClientPath();
    return CallsOf(client);
}

TestSkin& SkinOfHosts() {
    static TestSkin skin;
    return skin;
}

HostSkin::HostSkin() {
    Client();
    static const char* path = SkinOfHosts().Write();
    EXPECT_EQ(::InstallTavixSkin(path), 1);
}

HostSkin::~HostSkin() {
    ::UnInstallTavixSkin();
    EXPECT_EQ(m_arrScrollHosts.GetSize(), 0);
}

LRESULT CALLBACK Pane::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        void* self = reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams;
        ::SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        static_cast<Pane*>(self)->m_window = window;
    }
    auto* self = reinterpret_cast<Pane*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (!self) return ::DefWindowProcA(window, message, wParam, lParam);
    const Received received{window, message, wParam, lParam};
    self->log.Add(received);
    std::optional<LRESULT> answer;
    if (self->handler) answer = self->handler(received);
    if (message == WM_NCDESTROY) {
        self->m_window = nullptr;
        ::SetWindowLongPtrA(window, GWLP_USERDATA, 0);
    }
    return answer ? *answer : ::DefWindowProcA(window, message, wParam, lParam);
}

Pane::Pane(HWND parent, const char* className, CRect at, DWORD style, Handler ofItsCreation)
    : handler(std::move(ofItsCreation)) {
    WNDCLASSA description{};
    description.lpfnWndProc = &Procedure;
    description.hInstance = ::GetModuleHandleA(nullptr);
    description.hCursor = ::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    description.lpszClassName = className;
    ::RegisterClassA(&description);  // fails from the second window on, which changes nothing
    log.Listen({WM_VSCROLL, WM_HSCROLL});
    ::CreateWindowExA(0, className, "pane", style, at.left, at.top, at.Width(), at.Height(), parent, nullptr,
                      description.hInstance, this);
    EXPECT_NE(m_window, nullptr) << className;
}

Pane::~Pane() { Destroy(); }

SCROLLHOST RecordOf(HWND host) {
    SCROLLHOST record;
    EXPECT_GE(::GetScrollHostRecord(host, &record), 0);
    return record;
}

bool IsHost(HWND window) {
    SCROLLHOST record;
    return ::GetScrollHostRecord(window, &record) >= 0;
}

CRect PlaceOf(HWND window) {
    CRect place;
    ::GetWindowRect(window, &place);
    ::MapWindowPoints(nullptr, ::GetParent(window), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

CRect ClientPlaceOf(HWND window) {
    CRect client;
    ::GetClientRect(window, &client);
    ::MapWindowPoints(window, ::GetParent(window), reinterpret_cast<POINT*>(&client), 2);
    return client;
}

bool IsShown(HWND window) { return (::GetWindowLongA(window, GWL_STYLE) & WS_VISIBLE) != 0; }

SCROLLINFO MakeInfo(UINT mask, int min, int max, UINT page, int pos) {
    return {sizeof(SCROLLINFO), mask, min, max, page, pos, 0};
}

SCROLLINFO NativeInfoOf(HWND window, int bar) {
    SCROLLINFO info = MakeInfo(SIF_ALL);
    ::GetScrollInfo(window, bar, &info);
    return info;
}

}  // namespace tavix_test
