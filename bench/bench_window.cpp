#include "bench_window.h"

#include "benches.h"

namespace bench {

namespace {

LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::DefWindowProcA(window, message, wParam, lParam);
}

const char* Registered(const char* name) {
    WNDCLASSA host{};
    host.lpfnWndProc = &HostProc;
    host.hInstance = ::GetModuleHandleA(nullptr);
    host.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
    host.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    host.lpszClassName = name;
    ::RegisterClassA(&host);  // fails harmlessly the second time
    return name;
}

INT_PTR CALLBACK PlainDialog(HWND, UINT message, WPARAM, LPARAM) { return message == WM_INITDIALOG; }

}  // namespace

const char* SkinnedFrameClass() { return Registered("Tavix_PaneA"); }
const char* PlainClass() { return Registered("BenchHost"); }

Window::Window(const char* className, DWORD style, const CRect& at, HWND parent)
    : m_window(::CreateWindowExA(0, className, "Measured", style, at.left, at.top, at.Width(), at.Height(),
                                 parent, nullptr, ::GetModuleHandleA(nullptr), nullptr)) {}

Window::~Window() {
    if (m_window) ::DestroyWindow(m_window);
}

Window MakeDialog(const CRect& at) {
    struct {
        DLGTEMPLATE head;
        WORD menu, windowClass, title;
    } dialog{};
    dialog.head.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE;
    dialog.head.cx = 100;
    dialog.head.cy = 80;
    HWND window =
        ::CreateDialogIndirectParamA(::GetModuleHandleA(nullptr), &dialog.head, nullptr, &PlainDialog, 0);
    ::SetWindowPos(window, nullptr, at.left, at.top, at.Width(), at.Height(), SWP_NOZORDER);
    return Window(window);
}

HWND MakeScrollBar(HWND parent, bool upright) {
    const CRect& at = upright ? kUprightScrollBar : kLevelScrollBar;
    const DWORD style = WS_CHILD | WS_VISIBLE | static_cast<DWORD>(upright ? SBS_VERT : SBS_HORZ);
    HWND bar = ::CreateWindowExA(0, "ScrollBar", "", style, at.left, at.top, at.Width(), at.Height(), parent,
                                 nullptr, nullptr, nullptr);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 99, 30, 20, 0};
    ::SetScrollInfo(bar, SB_CTL, &info, TRUE);
    return bar;
}

HWND MakeListBox(HWND parent) {
    return ::CreateWindowExA(0, "ListBox", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_BORDER, 10, 10, 240,
                             300, parent, nullptr, nullptr, nullptr);
}

HWND MakeComboBox(HWND parent) {
    HWND combo = ::CreateWindowExA(0, "ComboBox", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_DROPDOWNLIST,
                                   10, 10, 180, 150, parent, nullptr, nullptr, nullptr);
    for (int i = 0; i < 40; ++i)
        ::SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("An item of ordinary length"));
    ::SendMessageA(combo, CB_SETCURSEL, 3, 0);
    return combo;
}

void RepaintFrame(HWND window) {
    ::SendMessageA(window, WM_NCPAINT, 1, 0);
    ::GdiFlush();
}

void RepaintClient(HWND window) {
    ::InvalidateRect(window, nullptr, TRUE);
    ::UpdateWindow(window);
    ::GdiFlush();
}

void RepaintWhole(HWND window) {
    ::RedrawWindow(window, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    ::GdiFlush();
}

NativeWindows::NativeWindows()
    : frame(::CreateWindowExA(0, PlainClass(), "Native", kFrameStyle, 0, 0, 1024, 768, nullptr, nullptr,
                              nullptr, nullptr)),
      buttonParent(::CreateWindowExA(0, PlainClass(), "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 80, nullptr,
                                     nullptr, nullptr, nullptr)),
      button(::CreateWindowExA(0, "Button", "Measured", kButtonStyle, 10, 10, 90, 26, buttonParent, nullptr,
                               nullptr, nullptr)),
      scrollBarParent(::CreateWindowExA(0, PlainClass(), "", WS_POPUP | WS_VISIBLE, kScrollBarParent.left,
                                        kScrollBarParent.top, kScrollBarParent.Width(),
                                        kScrollBarParent.Height(), nullptr, nullptr, nullptr, nullptr)),
      levelScrollBar(MakeScrollBar(scrollBarParent, false)),
      uprightScrollBar(MakeScrollBar(scrollBarParent, true)),
      listParent(::CreateWindowExA(0, PlainClass(), "", WS_POPUP | WS_VISIBLE, 0, 400, 320, 620, nullptr,
                                   nullptr, nullptr, nullptr)),
      reportList(MakeReportList(listParent)),
      listBoxParent(::CreateWindowExA(0, PlainClass(), "", WS_POPUP | WS_VISIBLE, kListBoxParent.left,
                                      kListBoxParent.top, kListBoxParent.Width(), kListBoxParent.Height(),
                                      nullptr, nullptr, nullptr, nullptr)),
      listBox(MakeListBox(listBoxParent)),
      commonParent(::CreateWindowExA(0, PlainClass(), "", WS_POPUP | WS_VISIBLE, 0, 320, 1000, 310, nullptr,
                                     nullptr, nullptr, nullptr)),
      toolBar(MakeToolBar(commonParent)),
      tabControl(MakeTabControl(commonParent)),
      comboBoxParent(::CreateWindowExA(0, PlainClass(), "", WS_POPUP | WS_VISIBLE, kComboBoxParent.left,
                                       kComboBoxParent.top, kComboBoxParent.Width(), kComboBoxParent.Height(),
                                       nullptr, nullptr, nullptr, nullptr)),
      comboBox(MakeComboBox(comboBoxParent)) {
    Pump();
}

NativeWindows::~NativeWindows() {
    ::DestroyWindow(commonParent);
    ::DestroyWindow(listParent);
    ::DestroyWindow(listBoxParent);
    ::DestroyWindow(comboBoxParent);
    ::DestroyWindow(scrollBarParent);
    ::DestroyWindow(buttonParent);
    ::DestroyWindow(frame);
}

}  // namespace bench
