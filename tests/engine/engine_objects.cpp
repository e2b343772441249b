#include "engine_objects.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <thread>

#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {

LRESULT CALLBACK HostWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        void* self = reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams;
        ::SetPropA(window, "TavixTestHost", self);
        static_cast<HostWindow*>(self)->m_window = window;
    }
    auto* self = static_cast<HostWindow*>(::GetPropA(window, "TavixTestHost"));
    if (!self) return ::DefWindowProcA(window, message, wParam, lParam);
    const Received received{window, message, wParam, lParam};
    self->log.Add(received);
    std::optional<LRESULT> answer;
    if (self->handler) answer = self->handler(received);
    if (message == WM_NCDESTROY) {
        ::RemovePropA(window, "TavixTestHost");
        self->m_window = nullptr;
    }
    return answer ? *answer : ::DefWindowProcA(window, message, wParam, lParam);
}

HostWindow::HostWindow(const char* className, DWORD style, HWND parent, UINT classStyle)
    : m_className(className) {
    WNDCLASSA cls{};
    cls.style = classStyle;
    cls.lpfnWndProc = &Procedure;
    cls.hInstance = ::GetModuleHandleA(nullptr);
    cls.hCursor = ::LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    cls.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    cls.lpszClassName = className;
    EXPECT_NE(::RegisterClassA(&cls), 0) << className;
    ::CreateWindowExA(0, className, "host", style, 100, 100, 200, 150, parent, nullptr, cls.hInstance, this);
    EXPECT_NE(m_window, nullptr) << className;
}

HostWindow::~HostWindow() {
    Destroy();
    EXPECT_TRUE(::UnregisterClassA(m_className.c_str(), ::GetModuleHandleA(nullptr))) << m_className;
}

void HostWindow::Destroy() {
    if (m_window) ::DestroyWindow(m_window);
}

bool HostWindow::IsNative() const { return ProcedureOf(m_window) == &Procedure; }

CSkinWndBaseClass* HeadOf(HWND window) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    return engine ? engine->GetSkinWndList()->Lookup(window) : nullptr;
}

WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(window, GWLP_WNDPROC));
}

const TestSkin& SharedSkin() {
    static TestSkin skin;
    static const char* written = skin.Write();
    EXPECT_STREQ(written, skin.Path());
    return skin;
}

Skinned::Skinned(const char* path) { EXPECT_EQ(::InstallTavixSkin(path), 1); }

Skinned::~Skinned() {
    ::UnInstallTavixSkin();
    EXPECT_EQ(::IsSkinnedThread(::GetCurrentThreadId()), 0);
}

int BitmapCount() {
    int count = 0;
    for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) count += ::GetTavixSkinHBITMAP(id) != nullptr;
    return count;
}

void InAnotherThread(const std::function<void()>& work) { std::thread(work).join(); }

FileWith::FileWith(const std::string& bytes) {
    std::ofstream file(m_file.Path(), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string FileWith::Contents() const {
    std::ifstream file(m_file.Path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tavix_test
