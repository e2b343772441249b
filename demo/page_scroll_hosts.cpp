/* Scrolling panes: windows whose own bars the skin covers, in each of their classes. They are ordinary
   windows that call the system's scroll functions and know nothing of the skin. */
#include <algorithm>
#include <cstdio>

#include "failure.h"
#include "frame_window.h"
#include "handles.h"
#include "page.h"
#include "scrolling.h"

namespace gallery {

namespace {

constexpr Card frame_card = {"", ""};

constexpr int line_height = 18, column_width = 8;
constexpr COLORREF pane_colour = RGB(255, 255, 255), text_colour = RGB(56, 60, 66);

/* What a pane shows, and where it is scrolled to at first. */
struct PaneKind {
    const char* class_name;
    const char* line;  // with the line's number in it
    int lines, columns;
    int top, left;
};

constexpr PaneKind pane_kinds[] = {
    {"Tavix_PaneH", "Aisle %02d", 60, 12, 0, 0},
    {"Tavix_PaneK", "Aisle %02d    36 shelves    1,284 articles    counted on Monday    nothing is missing",
     60, 90, 12, 8},
    {"Tavix_PaneL", "Supplier %02d    delivers within three days    ordered from twice this year", 5, 80, 0,
     0},
    {"Tavix_PaneM", "%02d    00    FF    1A    2B    3C    4D    5E    6F    70    81    92    A3    B4", 400,
     100, 390, 30},
};

constexpr int gap = 16, pane_width = 290, pane_height = 190;

SCROLLINFO read_bar(HWND pane, int bar) {
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(pane, bar, &info);
    return info;
}

/* Follows one notification of a bar; the pane is painted anew where it then stands. */
void scroll(HWND pane, int bar, WORD code, int tracked) {
    const SCROLLINFO now = read_bar(pane, bar);
    const int last = std::max(now.nMin, now.nMax - static_cast<int>(now.nPage) + 1);
    const int pos =
        static_cast<int>(std::clamp<long long>(position_after(now, code, tracked), now.nMin, last));
    SetScrollPos(pane, bar, pos, TRUE);
    InvalidateRect(pane, nullptr, FALSE);
}

/* Both bars, by what fits into the pane. */
void set_bars(HWND pane, const PaneKind& kind) {
    RECT client;
    GetClientRect(pane, &client);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, kind.lines - 1, 0, kind.top, 0};
    info.nPage = static_cast<UINT>(client.bottom / line_height);
    SetScrollInfo(pane, SB_VERT, &info, TRUE);
    info.nMax = kind.columns - 1;
    info.nPos = kind.left;
    info.nPage = static_cast<UINT>(client.right / column_width);
    SetScrollInfo(pane, SB_HORZ, &info, TRUE);
}

void paint_lines(HWND pane, const PaneKind& kind) {
    const PaintDc dc(pane);
    RECT client;
    GetClientRect(pane, &client);
    const OwnedBrush background(CreateSolidBrush(pane_colour));
    FillRect(dc, &client, background.get());
    const OwnedFont font(create_message_font());
    const HGDIOBJ former = SelectObject(dc, font.get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, text_colour);
    const int left = 6 - read_bar(pane, SB_HORZ).nPos * column_width;
    int line = read_bar(pane, SB_VERT).nPos;
    for (int y = 3; y < client.bottom && line < kind.lines; y += line_height, ++line) {
        char text[160];
        const int length = std::snprintf(text, sizeof text, kind.line, line + 1);
        TextOutA(dc, left, y, text, length);
    }
    SelectObject(dc, former);
}

LRESULT CALLBACK pane_procedure(HWND pane, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE)
        SetWindowLongPtrA(
            pane, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA*>(lparam)->lpCreateParams));
    const auto* kind = reinterpret_cast<const PaneKind*>(GetWindowLongPtrA(pane, GWLP_USERDATA));
    switch (message) {
        case WM_ERASEBKGND:
            return 1;  // WM_PAINT covers the whole client area
        case WM_PAINT:
            paint_lines(pane, *kind);
            return 0;
        case WM_VSCROLL:
            scroll(pane, SB_VERT, LOWORD(wparam), HIWORD(wparam));
            return 0;
        case WM_HSCROLL:
            scroll(pane, SB_HORZ, LOWORD(wparam), HIWORD(wparam));
            return 0;
        case WM_MOUSEWHEEL:
            for (int i = 0; i < 3; ++i)
                scroll(pane, SB_VERT, GET_WHEEL_DELTA_WPARAM(wparam) > 0 ? SB_LINEUP : SB_LINEDOWN, 0);
            return 0;
    }
    return DefWindowProcA(pane, message, wparam, lparam);
}

void add_pane(HWND frame, const PaneKind& kind, int x, int y) {
    WNDCLASSA description = {};
    description.lpfnWndProc = pane_procedure;
    description.hInstance = GetModuleHandleA(nullptr);
    description.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    description.lpszClassName = kind.class_name;
    RegisterClassA(&description);  // known already when the page opens again
    const HWND pane =
        CreateWindowExA(0, kind.class_name, "", WS_CHILD | WS_VISIBLE | WS_BORDER, x, y, pane_width,
                        pane_height, frame, nullptr, description.hInstance, const_cast<PaneKind*>(&kind));
    if (!pane) fail_with_last_error("A pane can't be made");
    // The bars come one by one, and the second takes room from the first.
    set_bars(pane, kind);
    set_bars(pane, kind);
}

}  // namespace

void open_scroll_hosts(Stage& stage) {
    constexpr DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    RECT place = {0, 0, 2 * pane_width + 3 * gap, 2 * pane_height + 3 * gap};
    AdjustWindowRect(&place, style, FALSE);
    const HWND frame = stage.add(create_frame("Scrolling panes", frame_card, style,
                                              {0, 0, place.right - place.left, place.bottom - place.top}));
    int index = 0;
    for (const PaneKind& kind : pane_kinds) {
        add_pane(frame, kind, gap + index % 2 * (pane_width + gap), gap + index / 2 * (pane_height + gap));
        ++index;
    }
    stage.arrange_in_rows();
    stage.show();
}

}  // namespace gallery
