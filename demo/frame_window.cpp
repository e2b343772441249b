#include "frame_window.h"

#include "handles.h"

namespace gallery {

namespace {

constexpr char frame_class[] = "Tavix_PaneA";

constexpr COLORREF client_colour = RGB(232, 236, 241);
constexpr COLORREF card_colour = RGB(255, 255, 255);
constexpr COLORREF border_colour = RGB(196, 203, 212);
constexpr COLORREF heading_colour = RGB(32, 60, 100);
constexpr COLORREF text_colour = RGB(56, 60, 66);

constexpr int card_margin = 12;
constexpr int text_margin = 14;
constexpr int heading_height = 20;
constexpr int heading_gap = 8;

void fill(HDC dc, const RECT& area, COLORREF colour) {
    const OwnedBrush brush(CreateSolidBrush(colour));
    FillRect(dc, &area, brush.get());
}

LRESULT CALLBACK frame_procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_NCCREATE:
            SetWindowLongPtrA(
                window, GWLP_USERDATA,
                reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA*>(lparam)->lpCreateParams));
            break;
        case WM_ERASEBKGND:
            return 1;  // WM_PAINT covers the whole client area
        case WM_PAINT: {
            const PaintDc dc(window);
            RECT client;
            GetClientRect(window, &client);
            paint_card(dc, client, *reinterpret_cast<const Card*>(GetWindowLongPtrA(window, GWLP_USERDATA)));
            return 0;
        }
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

}  // namespace

bool register_window_class(const char* name, WNDPROC procedure) {
    WNDCLASSEXA description = {};
    description.cbSize = sizeof(description);
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleA(nullptr);
    description.hIcon = LoadIconA(nullptr, IDI_APPLICATION);
    description.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    description.lpszClassName = name;
    return RegisterClassExA(&description) || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

void paint_card(HDC dc, const RECT& client, const Card& card) {
    fill(dc, client, client_colour);
    RECT space = client;
    InflateRect(&space, -card_margin, -card_margin);
    fill(dc, space, border_colour);
    InflateRect(&space, -1, -1);
    paint_sheet(dc, space, card);
}

void paint_sheet(HDC dc, const RECT& area, const Card& card) {
    fill(dc, area, card_colour);
    RECT space = area;
    InflateRect(&space, -text_margin, -text_margin);

    const OwnedFont heading_font(create_message_font(-heading_height, FW_SEMIBOLD));
    const OwnedFont text_font(create_message_font());
    SetBkMode(dc, TRANSPARENT);
    {
        const Selection selection(dc, heading_font.get());
        SetTextColor(dc, heading_colour);
        space.top += DrawTextA(dc, card.heading, -1, &space, DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    }
    space.top += heading_gap;
    const Selection selection(dc, text_font.get());
    SetTextColor(dc, text_colour);
    DrawTextA(dc, card.text, -1, &space, DT_WORDBREAK | DT_NOPREFIX);
}

HFONT create_message_font(int height, int weight) {
    NONCLIENTMETRICSA metrics = {};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    LOGFONTA font = metrics.lfMessageFont;
    if (height) font.lfHeight = height;
    if (weight) font.lfWeight = weight;
    return CreateFontIndirectA(&font);
}

HWND create_frame(const char* title, const Card& card, DWORD style, const RECT& place, HMENU menu) {
    register_window_class(frame_class, frame_procedure);
    OwnedMenu owned_menu(menu);
    const HWND window = CreateWindowExA(0, frame_class, title, style, place.left, place.top,
                                        place.right - place.left, place.bottom - place.top, nullptr, menu,
                                        GetModuleHandleA(nullptr), const_cast<Card*>(&card));
    if (window) owned_menu.release();  // a window destroys its menu with itself
    return window;
}

}  // namespace gallery
