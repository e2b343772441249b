// Thousands of random changes of a list view and of a tree view: their skin bars stay true.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <list>
#include <random>

#include "host_fixture.h"
#include "host_rules.h"
#include "import_slots.h"

using namespace tavix_test;

namespace {

constexpr int kSteps = 5000;

/*
 * Stands between the common controls and the replaced functions, so that the rules hear of each call that
 * the view's own control makes for it.
 */
class CallsOfControls {
public:
    CallsOfControls(HWND view, HostRules& rules) : m_view(view), m_rules(rules) {
        s_current = this;
        for (HMODULE module : LoadedModules())
            if (IsCommonControls(module)) TakeOver(module);
        EXPECT_GE(m_slots, 2) << "SetScrollInfo and ShowScrollBar at least";
    }
    ~CallsOfControls() {
        m_taken.clear();
        s_current = nullptr;
    }
    CallsOfControls(const CallsOfControls&) = delete;
    CallsOfControls& operator=(const CallsOfControls&) = delete;
    int Count() const { return m_count; }

private:
    static bool IsCommonControls(HMODULE module) {
        const std::string path = NameOfModule(module);
        return ::lstrcmpiA(path.substr(path.find_last_of('\\') + 1).c_str(), "comctl32.dll") == 0;
    }
    template <class Function>
    void TakeOver(HMODULE module, const char* name, Function replacement) {
        m_taken.emplace_back(module, "user32.dll", name, replacement);
        m_slots += m_taken.back().Former() != nullptr;
    }
    void TakeOver(HMODULE module) {
        TakeOver(module, "SetScrollInfo", &SetScrollInfo);
        TakeOver(module, "SetScrollRange", &SetScrollRange);
        TakeOver(module, "SetScrollPos", &SetScrollPos);
        TakeOver(module, "ShowScrollBar", &ShowScrollBar);
        TakeOver(module, "MoveWindow", &MoveWindow);
        TakeOver(module, "ShowWindow", &ShowWindow);
    }
    // The rules, if the call is one for the view.
    static HostRules* RulesOf(HWND window) {
        if (window != s_current->m_view) return nullptr;
        ++s_current->m_count;
        return &s_current->m_rules;
    }
    static int WINAPI SetScrollInfo(HWND window, int bar, LPCSCROLLINFO info, BOOL redraw) {
        HostRules* rules = RulesOf(window);
        return rules ? rules->SetScrollInfo(bar, info, redraw)
                     : Client().SetScrollInfo(window, bar, info, redraw);
    }
    static BOOL WINAPI SetScrollRange(HWND window, int bar, int min, int max, BOOL redraw) {
        HostRules* rules = RulesOf(window);
        return rules ? rules->SetScrollRange(bar, min, max, redraw)
                     : Client().SetScrollRange(window, bar, min, max, redraw);
    }
    static int WINAPI SetScrollPos(HWND window, int bar, int pos, BOOL redraw) {
        HostRules* rules = RulesOf(window);
        return rules ? rules->SetScrollPos(bar, pos, redraw)
                     : Client().SetScrollPos(window, bar, pos, redraw);
    }
    static BOOL WINAPI ShowScrollBar(HWND window, int bar, BOOL show) {
        HostRules* rules = RulesOf(window);
        return rules ? rules->ShowScrollBar(bar, show) : Client().ShowScrollBar(window, bar, show);
    }
    static BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
        HostRules* rules = RulesOf(window);
        return rules ? rules->MoveWindow(x, y, width, height, repaint)
                     : Client().MoveWindow(window, x, y, width, height, repaint);
    }
    static BOOL WINAPI ShowWindow(HWND window, int command) {
        HostRules* rules = RulesOf(window);
        return rules ? rules->ShowWindow(command) : Client().ShowWindow(window, command);
    }

    static inline CallsOfControls* s_current = nullptr;
    HWND m_view;
    HostRules& m_rules;
    std::list<SlotTakeover> m_taken;
    int m_slots = 0;
    int m_count = 0;
};

class ScrollingView : public testing::Test {
protected:
    ScrollingView() {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
        ::InitCommonControlsEx(&classes);
        Client();
    }

    void Make(const char* className, DWORD style) {
        view = CreateControl(Charset::Ansi, m_parent, className, "", WS_VISIBLE | style, {20, 30, 220, 180},
                             100, WS_EX_CLIENTEDGE);
        ASSERT_TRUE(IsHost(view));
        rules.emplace(view);
        m_calls.emplace(view, *rules);
        m_spy.emplace(view);
        m_spy->log.Listen({WM_NULL});
        m_spy->handler = [this](const Received& received) -> std::optional<LRESULT> {
            if (received.message == WM_VSCROLL || received.message == WM_HSCROLL)
                rules->OnScrollMessage(received.message, received.wParam, received.lParam);
            return std::nullopt;
        };
    }
    int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageA(view, message, wParam, lParam);
    }

    // What any view takes. True if the kind was one of these.
    bool ChangeFromOutside(int kind) {
        switch (kind) {
            case 0:
                rules->MoveWindow(Below(60), Below(60), 60 + Below(200), 50 + Below(180), Below(2));
                return true;
            case 1:
                rules->ShowWindow(rules->visible ? SW_HIDE : SW_SHOW);
                return true;
            case 2:
                Send(Below(2) ? WM_VSCROLL : WM_HSCROLL,
                     static_cast<WPARAM>(std::initializer_list<int>{SB_LINEUP, SB_LINEDOWN, SB_PAGEUP,
                                                                    SB_PAGEDOWN, SB_TOP, SB_BOTTOM}
                                             .begin()[Below(6)]));
                return true;
            case 3:
                Send(WM_MOUSEWHEEL, MAKEWPARAM(0, Below(2) ? 120 : 0xFF88), MAKELPARAM(100, 100));
                return true;
            case 4: {
                const WPARAM keys[] = {VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_END, VK_LEFT, VK_RIGHT};
                Send(WM_KEYDOWN, keys[Below(8)], 1);
                return true;
            }
            case 5:
                PressBar();
                return true;
            case 6:
                if (isScrolledByCalls)
                    ScrollByCall();
                else
                    ::EnableWindow(view, Below(4) != 0);
                return true;
            default:
                return false;
        }
    }
    // An arrow, the track or the thumb, at any place of the bar; the thumb is drawn a little.
    void PressBar() {
        const int code = Below(2);
        const CSize size = rules->Bar(code).place.Size();
        const auto anywhere = [&] { return POINT{Below(size.cx + 1), Below(size.cy + 1)}; };
        rules->PressMouse(code, anywhere());
        rules->MoveMouse(code, anywhere());
        rules->ReleaseMouse(code, anywhere());
    }
    // As a program may scroll a view behind its control's back.
    void ScrollByCall() {
        const int code = Below(2);
        const SCROLLINFO native = NativeInfoOf(view, code);
        const SCROLLINFO info = MakeInfo(Below(2) ? SIF_ALL : SIF_POS, 0, 20 + Below(200),
                                         static_cast<UINT>(1 + Below(40)), Below(220));
        switch (Below(3)) {
            case 0:
                rules->SetScrollInfo(code, &info, Below(2));
                break;
            case 1:
                rules->SetScrollPos(code, Below(220), Below(2));
                break;
            case 2:
                rules->SetScrollRange(code, 0, native.nMax + Below(3), Below(2));
                break;
        }
    }

    /*
     * A control may tell a position while it has no bar, which makes the bar wanted before the native
     * one is there; so what is wanted may be more than what is there, never less.
     */
    void CheckNative() {
        const DWORD style = static_cast<DWORD>(::GetWindowLongA(view, GWL_STYLE));
        for (int code : {SB_VERT, SB_HORZ}) {
            SCOPED_TRACE(code == SB_VERT ? "vertical" : "horizontal");
            if (!(style & (code == SB_VERT ? WS_VSCROLL : WS_HSCROLL))) continue;
            ++natives[code];
            const BarRules& bar = rules->Bar(code);
            EXPECT_TRUE(bar.wanted);
            const SCROLLINFO native = NativeInfoOf(view, code);
            EXPECT_EQ(bar.min, native.nMin);
            EXPECT_EQ(bar.max, native.nMax);
            // A range alone gives the bar a page, if it has none.
            EXPECT_EQ(bar.page, std::max(static_cast<int>(native.nPage), std::min(bar.page, 1)));
            // A range that comes with a page is held against the page before it, so a program can part the
            // two positions. The control alone does not.
            if (isScrolledByCalls) continue;
            // A page that grows leaves the bar its position, and pulls the native one back.
            const int last = native.nMax - std::max(bar.page - 1, 0);
            EXPECT_EQ(std::min(bar.pos, std::max(last, native.nMin)), native.nPos);
        }
    }

    template <class Change>
    void Run(Change change) {
        for (int step = 0; step < kSteps && !HasFailure(); ++step) {
            const int kind = Below(16);
            isScrolledByCalls = step >= kSteps / 2;
            SCOPED_TRACE("step " + std::to_string(step) + ", kind " + std::to_string(kind));
            if (!ChangeFromOutside(kind)) change(kind);
            rules->Check();
            CheckNative();
        }
        // Bars came and went, by the control's own calls, by others', and by the mouse.
        for (int count : natives) {
            EXPECT_GT(count, kSteps / 10);
            EXPECT_LT(count, kSteps);
        }
        EXPECT_GT(m_calls->Count(), kSteps / 2);
        EXPECT_GT(rules->Notifications(), kSteps / 40);
    }

    int natives[2] = {};             // steps that ended with a native bar, by its code
    bool isScrolledByCalls = false;  // in the second half
    HostSkin m_skin;
    ProbeWindow m_parent{WS_POPUP};  // not shown: what is painted does not matter here
    HWND view = nullptr;
    std::optional<HostRules> rules;
    std::mt19937 random{20261121};

private:
    std::optional<CallsOfControls> m_calls;
    std::optional<MessageSpy> m_spy;
};

TEST_F(ScrollingView, ReportListsBarsStayTrueUnderRandomChanges) {
    Make(WC_LISTVIEWA, LVS_REPORT);
    char text[] = "some row";
    LVCOLUMNA column{};
    column.mask = LVCF_WIDTH | LVCF_TEXT;
    column.cx = 120;
    column.pszText = text;
    Send(LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    Run([&](int kind) {
        const int rows = static_cast<int>(Send(LVM_GETITEMCOUNT));
        if (kind < 10 && rows < 60) {
            LVITEMA row{};
            row.mask = LVIF_TEXT;
            row.iItem = Below(rows + 1);
            row.pszText = text;
            Send(LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&row));
        } else if (kind < 12) {
            Send(LVM_DELETEITEM, static_cast<WPARAM>(Below(rows + 1)));
        } else if (kind < 13) {
            Send(LVM_SETCOLUMNWIDTH, 0, 20 + Below(300));
        } else if (kind < 14) {
            Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(Below(rows + 1)));
        } else if (kind < 15) {
            Send(LVM_SCROLL, static_cast<WPARAM>(Below(80) - 40), Below(200) - 100);
        } else if (Below(8) == 0) {
            Send(LVM_DELETEALLITEMS);
        }
    });
}

TEST_F(ScrollingView, TreesBarsStayTrueUnderRandomChanges) {
    Make(WC_TREEVIEWA, TVS_HASBUTTONS | TVS_LINESATROOT);
    char text[] = "some longer branch";
    const auto any = [&] {
        LRESULT node = Send(TVM_GETNEXTITEM, TVGN_ROOT);
        for (int steps = Below(12); node && steps > 0; --steps) {
            const WPARAM way = Below(2) ? TVGN_CHILD : TVGN_NEXT;
            if (const LRESULT next = Send(TVM_GETNEXTITEM, way, node)) node = next;
        }
        return node;
    };
    Run([&](int kind) {
        const LRESULT node = any();
        if (kind < 11 && Send(TVM_GETCOUNT) < 60) {
            TVINSERTSTRUCTA branch{};
            branch.hParent = reinterpret_cast<HTREEITEM>(Below(3) ? node : 0);
            branch.hInsertAfter = TVI_LAST;
            branch.item.mask = TVIF_TEXT;
            branch.item.pszText = text;
            Send(TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&branch));
        } else if (kind < 13 && node) {
            Send(TVM_EXPAND, TVE_TOGGLE, node);
        } else if (kind < 14 && node) {
            Send(TVM_ENSUREVISIBLE, 0, node);
        } else if (kind < 15 && node && Below(3) == 0) {
            Send(TVM_DELETEITEM, 0, node);
        }
    });
}

}  // namespace
