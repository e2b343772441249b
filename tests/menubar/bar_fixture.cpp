#include "menubar/bar_fixture.h"

namespace tavix_test {

void RegisterHostClass(const char* name, COLORREF background) {
    WNDCLASSA host{};
    host.lpfnWndProc = ::DefWindowProcA;
    host.hInstance = ::GetModuleHandleA(nullptr);
    host.hCursor = ::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    host.hbrBackground = ::CreateSolidBrush(background);
    host.lpszClassName = name;
    if (!::RegisterClassA(&host)) ::DeleteObject(host.hbrBackground);
}

void EndBarClass() { ::UnregisterClassA("SkinMenuBar", ::GetModuleHandleA(nullptr)); }

HMENU MakeMenu(const std::vector<Item>& items, bool popup) {
    HMENU menu = popup ? ::CreatePopupMenu() : ::CreateMenu();
    for (const Item& item : items) {
        if (!item.items.empty())
            ::AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(MakeMenu(item.items, true)), item.text);
        else if (item.text)
            ::AppendMenuA(menu, MF_STRING, item.id, item.text);
        else
            ::AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    }
    return menu;
}

HMENU MakeUsualMenu() {
    return MakeMenu(
        {{"&File", 0, {{"&New", 101}, {"&Recent", 0, {{"&A", 111}, {"&B", 112}}}, {nullptr}, {"E&xit", 103}}},
         {"&Edit", 0, {{"Cu&t", 201}, {"&Copy", 202}}},
         {"&View", 0, {{"&Zoom", 301}}},
         {"&Help", 0, {{"&About", 404}}}});
}

BarTest::BarTest() {
    EndBarClass();
    RegisterHostClass("Tavix_PaneA");
    EXPECT_TRUE(
        frame.Create("Tavix_PaneA", "host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, kPlace, MakeUsualMenu()));
    ::ShowWindow(frame.m_hWnd, SW_SHOW);
}

BarTest::~BarTest() {
    frame.handler = nullptr;
    frame.DestroyWindow();
    ::UnregisterClassA("Tavix_PaneA", ::GetModuleHandleA(nullptr));
    EndBarClass();
}

void BarTest::MakeBar(HMENU menu, HMENU windowMenu, DWORD style) {
    ASSERT_TRUE(bar.Create(frame.m_hWnd, WS_CHILD | WS_VISIBLE | style));
    HMENU former = ::GetMenu(frame.m_hWnd);
    bar.LoadMenuA(menu, windowMenu);
    if (former && former != menu) ::DestroyMenu(former);
    frame.RecalcLayout();
    PumpMessages();
}

CRect BarTest::ItemRect(int button) {
    CRect rect;
    bar.GetItemRect(button, rect);
    return rect;
}

CRect BarTest::WindowRect() {
    CRect rect;
    ::GetWindowRect(bar.m_hWnd, &rect);
    return rect;
}

POINT BarTest::MiddleOf(int button) {
    const CRect rect = ItemRect(button);
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

Picture BarTest::Paint() {
    ::RedrawWindow(bar.m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
    return PictureOfWindow(bar.m_hWnd);
}

CSkinMenuBar::TRACKINGSTATE BarTest::State() {
    int popup = 0;
    return bar.GetTrackingState(popup);
}

}  // namespace tavix_test
