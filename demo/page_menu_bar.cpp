/* A menu bar in place of the native one: an MDI frame with three sheets, whose windows the bar's first menu
   lists. The page makes objects of the library's exported classes, as a host in C++ does. */
#include <windows.h>

#include <memory>

#include "failure.h"
#include "frame_window.h"
#include "handles.h"
#include "later.h"
#include "message_loop.h"
#include "page.h"
#include "tavixskin/framework/frame_wnd.h"
#include "tavixskin/skin_menu_bar.h"

namespace gallery {

namespace {

constexpr char frame_class[] = "Tavix_PaneC";
constexpr char sheet_class[] = "GallerySheet";

constexpr Card sheet_cards[] = {
    {"Spring catalogue", "48 pages, of which 12 are set.\n\nThe cover waits for its photograph."},
    {"Price list", "1,284 articles.\n\nThe prices of paper rise by 4 per cent in March."},
    {"Invitation", "Open day on 17 May, ten to five.\n\nPrint run: 500, on the heavier paper."}};

enum Command : UINT { id_new = 1, id_open, id_close, id_exit, id_undo, id_cut, id_copy, id_paste, id_about };

/* A document's window, which ends with itself. */
class Sheet : public CMDIChildWnd {
public:
    explicit Sheet(const Card& card) : card_(card) {}

    LRESULT WindowProc(UINT message, WPARAM wparam, LPARAM lparam) override {
        if (message == WM_ERASEBKGND) return 1;
        if (message != WM_PAINT) return CMDIChildWnd::WindowProc(message, wparam, lparam);
        const PaintDc dc(m_hWnd);
        RECT client;
        GetClientRect(m_hWnd, &client);
        paint_card(dc, client, card_);
        return 0;
    }
    void PostNcDestroy() override { delete this; }

private:
    const Card& card_;
};

/* The frame with its bar, which ends with itself too. */
class Desk : public CMDIFrameWnd {
public:
    static Desk* create(const SIZE& size) {
        auto desk = std::make_unique<Desk>();
        desk->make_menu();
        if (!desk->Create(frame_class, "Print shop", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                          {0, 0, size.cx, size.cy}, desk->menu_))
            return nullptr;
        // The window's end deletes the object from here on.
        Desk* const made = desk.release();
        if (!made->fill()) {
            made->DestroyWindow();
            return nullptr;
        }
        return made;
    }

    ~Desk() override { set_translator(nullptr); }

    LRESULT WindowProc(UINT message, WPARAM wparam, LPARAM lparam) override {
        if (message == WM_COMMAND && LOWORD(wparam) == id_close)
            SendMessageA(GetActiveFrame(), WM_CLOSE, 0, 0);
        if (message == WM_COMMAND && LOWORD(wparam) == id_exit) PostMessageA(m_hWnd, WM_CLOSE, 0, 0);
        return CMDIFrameWnd::WindowProc(message, wparam, lparam);
    }
    void PostNcDestroy() override {
        // For the next bar.
        UnregisterClassA("SkinMenuBar", GetModuleHandleA(nullptr));
        delete this;
    }

    /* The middle of a button on the screen. */
    POINT button_middle(UINT button) const {
        RECT place = {};
        bar_.GetRect(button, place);
        POINT middle = {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
        ClientToScreen(bar_.GetSafeHwnd(), &middle);
        return middle;
    }

private:
    void make_menu() {
        menu_ = CreateMenu();
        append("&File", {{"&New\tCtrl+N", id_new},
                         {"&Open...\tCtrl+O", id_open},
                         {"&Close", id_close},
                         {},
                         {"E&xit", id_exit}});
        append("&Edit",
               {{"&Undo\tCtrl+Z", id_undo}, {}, {"Cu&t", id_cut}, {"&Copy", id_copy}, {"&Paste", id_paste}});
        windows_ = append("&Window", {{"&New window", id_new}});
        append("&Help", {{"&About the print shop", id_about}});
    }

    struct Entry {
        const char* text = nullptr;  // null: a separator
        UINT id = 0;
    };
    HMENU append(const char* title, std::initializer_list<Entry> entries) {
        const HMENU popup = CreatePopupMenu();
        for (const Entry& entry : entries)
            AppendMenuA(popup, entry.text ? MF_STRING : MF_SEPARATOR, entry.id, entry.text);
        AppendMenuA(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), title);
        return popup;
    }

    bool fill() {
        if (!CreateClient() || !bar_.Create(m_hWnd)) return false;
        bar_.LoadMenuA(menu_, windows_);
        RecalcLayout();
        set_translator([this](MSG& message) {
            MSG next;
            if (!PeekMessageA(&next, nullptr, 0, 0, PM_NOREMOVE)) UpdateBars();
            return bar_.TranslateFrameMessage(&message) != FALSE;
        });
        for (const Card& card : sheet_cards) {
            auto sheet = std::make_unique<Sheet>(card);
            if (!sheet->Create(*this, sheet_class, card.heading, WS_VISIBLE | WS_OVERLAPPEDWINDOW,
                               {CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT + 260, CW_USEDEFAULT + 180}))
                return false;
            sheet.release();
        }
        SendMessageA(m_hWndMDIClient, WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(MDIGetActive()), 0);
        return true;
    }

    CSkinMenuBar bar_;
    HMENU menu_ = nullptr;  // the window's
    HMENU windows_ = nullptr;
};

Desk* desk_of(HWND frame) { return static_cast<Desk*>(CWnd::FromHandlePermanent(frame)); }

}  // namespace

void open_menu_bar(Stage& stage) {
    register_window_class(frame_class, DefWindowProcA);
    register_window_class(sheet_class, DefWindowProcA);
    Desk* const desk = Desk::create({560, 360});
    stage.add(desk ? desk->GetSafeHwnd() : nullptr);
    stage.arrange_in_rows();
    stage.show();
}

void show_menu_bar_popup(const Stage& stage, const std::function<void()>& take_picture) {
    // Long enough for the mouse to get there; the open menu then waits for the picture.
    constexpr DWORD until_open_milliseconds = 1500;
    Later picture(until_open_milliseconds, [&] {
        take_picture();
        EndMenu();
    });
    Mouse mouse;
    mouse.move_to(desk_of(stage.windows().front())->button_middle(2));
    mouse.press();
    settle(until_open_milliseconds);
    picture.finish();
}

}  // namespace gallery
