// Thousands of random changes of a list view and of a tree view: their skin bars stay true.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <random>

#include "host_fixture.h"

using namespace tavix_test;

namespace {

constexpr int kSteps = 5000;
constexpr int kMove = 0;  // the kind of a step

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
    }
    CSkinScrollBar& Bar(int code) {
        const SCROLLHOST record = RecordOf(view);
        return code == SB_VERT ? *record.m_pVertBar : *record.m_pHorzBar;
    }
    bool IsWanted(int code) {
        const SCROLLHOST record = RecordOf(view);
        return (code == SB_VERT ? record.m_bVertShown : record.m_bHorzShown) != 0;
    }
    int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageA(view, message, wParam, lParam);
    }

    // What any view takes. True if the kind was one of these.
    bool ChangeFromOutside(int kind) {
        switch (kind) {
            case kMove:
                Client().MoveWindow(view, Below(60), Below(60), 60 + Below(200), 50 + Below(180), Below(2));
                return true;
            case 1:
                Client().ShowWindow(view, visible ? SW_HIDE : SW_SHOW);
                visible = !visible;
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
                ::EnableWindow(view, Below(4) != 0);
                return true;
            default:
                return false;
        }
    }
    // An arrow, the track or the thumb, at any place of the bar; the thumb is drawn a little.
    void PressBar() {
        const int code = Below(2);
        HWND bar = Bar(code).GetSafeHwnd();
        CRect area;
        ::GetClientRect(bar, &area);
        if (area.IsRectEmpty()) return;
        const int x = Below(area.right);
        const int y = Below(area.bottom);
        ::SendMessageA(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        ::SendMessageA(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(Below(area.right), Below(area.bottom)));
        ::SendMessageA(bar, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }

    /*
     * A control may tell a position while it has no bar, which makes the bar wanted before the native
     * one is there; so what is wanted may be more than what is there, never less. A bar that goes leaves
     * the other one as long as it was, until the next layout; a move is one.
     */
    void CheckBars(int step, int kind) {
        SCOPED_TRACE("step " + std::to_string(step) + ", kind " + std::to_string(kind));
        const DWORD style = static_cast<DWORD>(::GetWindowLongA(view, GWL_STYLE));
        const CRect client = ClientPlaceOf(view);
        for (int code : {SB_VERT, SB_HORZ}) {
            SCOPED_TRACE(code == SB_VERT ? "vertical" : "horizontal");
            const bool isVertical = code == SB_VERT;
            const CSkinScrollBar& bar = Bar(code);
            if (style & (isVertical ? WS_VSCROLL : WS_HSCROLL)) {
                ++natives[code];
                EXPECT_TRUE(IsWanted(code));
                const SCROLLINFO native = NativeInfoOf(view, code);
                EXPECT_EQ(bar.m_nMin, native.nMin);
                EXPECT_EQ(bar.m_nMax, native.nMax);
                EXPECT_EQ(bar.m_nPage, static_cast<int>(native.nPage));
                // A page that grows leaves the bar its position, and pulls the native one back.
                const int last = native.nMax - std::max(bar.m_nPage - 1, 0);
                EXPECT_EQ(std::min(bar.m_nPos, std::max(last, native.nMin)), native.nPos);
            }
            if (!IsWanted(code)) continue;
            if (visible) {
                EXPECT_TRUE(IsShown(bar.GetSafeHwnd()));
            }
            if (kind != kMove) continue;
            ++moves;
            const CRect place =
                isVertical ? CRect(client.right, client.top, client.right + thickness.cx, client.bottom)
                           : CRect(client.left, client.bottom, client.right, client.bottom + thickness.cy);
            EXPECT_EQ(PlaceOf(bar.GetSafeHwnd()), place);
        }
    }

    template <class Change>
    void Run(Change change) {
        for (int step = 0; step < kSteps && !HasFailure(); ++step) {
            const int kind = Below(16);
            if (!ChangeFromOutside(kind)) change(kind);
            CheckBars(step, kind);
        }
        // Bars came and went, and were seen to be in their places.
        for (int count : natives) {
            EXPECT_GT(count, kSteps / 10);
            EXPECT_LT(count, kSteps);
        }
        EXPECT_GT(moves, kSteps / 30);
    }

    int natives[2] = {};  // steps that ended with a native bar, by its code
    int moves = 0;
    HostSkin m_skin;
    ProbeWindow m_parent{WS_POPUP};  // not shown: what is painted does not matter here
    HWND view = nullptr;
    bool visible = true;
    const CSize thickness{::GetSystemMetrics(SM_CXVSCROLL), ::GetSystemMetrics(SM_CYHSCROLL)};
    std::mt19937 random{20261121};
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
