#include "frames/host_frame.h"

#include <gtest/gtest.h>

#include "tavixskin/tavix_skin.h"

namespace tavix_test {

namespace {

HostFrame* g_creating = nullptr;

template <class Class>
void FillClass(Class& host, WNDPROC procedure) {
    host.lpfnWndProc = procedure;
    host.hInstance = ::GetModuleHandleA(nullptr);
    host.hbrBackground = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    host.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
}

std::wstring Widen(const char* text) { return {text, text + std::strlen(text)}; }

}  // namespace

HostFrame::HostFrame(DWORD style, const RECT& place, const char* title, HMENU menu, Charset charset,
                     const char* className)
    : m_charset(charset) {
    g_creating = this;
    const CRect at(place);
    HINSTANCE instance = ::GetModuleHandleA(nullptr);
    if (charset == Charset::Ansi) {
        WNDCLASSA host{};
        FillClass(host, &Procedure);
        host.lpszClassName = className;
        ::RegisterClassA(&host);
        window = ::CreateWindowExA(0, className, title, style, at.left, at.top, at.Width(), at.Height(),
                                   nullptr, menu, instance, nullptr);
    } else {
        const std::wstring wideClass = Widen(className);
        WNDCLASSW host{};
        FillClass(host, &Procedure);
        host.lpszClassName = wideClass.c_str();
        ::RegisterClassW(&host);
        window = ::CreateWindowExW(0, wideClass.c_str(), Widen(title).c_str(), style, at.left, at.top,
                                   at.Width(), at.Height(), nullptr, menu, instance, nullptr);
    }
    g_creating = nullptr;
    EXPECT_TRUE(window);
}

HostFrame::~HostFrame() {
    if (::IsWindow(window)) ::DestroyWindow(window);
    // The next test may register the class for the other character set.
    ::UnregisterClassA("Tavix_PaneA", ::GetModuleHandleA(nullptr));
}

LRESULT CALLBACK HostFrame::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (g_creating && message == WM_NCCREATE) {
        g_creating->window = window;
        ::SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(g_creating));
    }
    HostFrame* self = reinterpret_cast<HostFrame*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (self) {
        const Received received{window, message, wParam, lParam};
        self->log.Add(received);
        if (self->handler)
            if (const std::optional<LRESULT> answer = self->handler(received)) return *answer;
    }
    // The host's own charset: to the system a window counts as an ANSI one once it is skinned.
    HostFrame* host = self ? self : g_creating;
    return host && host->m_charset == Charset::Unicode ? ::DefWindowProcW(window, message, wParam, lParam)
                                                       : ::DefWindowProcA(window, message, wParam, lParam);
}

FrameSkinTestAccess HostFrame::Skin() const {
    CSkinWndBaseClass* head = CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->Lookup(window);
    return {*dynamic_cast<CSkinFrame*>(head)};
}

CRect HostFrame::Rect() const {
    CRect rect;
    ::GetWindowRect(window, &rect);
    return rect;
}

POINT HostFrame::Screen(POINT inWindow) const {
    const CRect rect = Rect();
    return {rect.left + inWindow.x, rect.top + inWindow.y};
}

LPARAM HostFrame::Packed(POINT inWindow) const {
    const POINT point = Screen(inWindow);
    return MAKELPARAM(point.x, point.y);
}

}  // namespace tavix_test
