/* Splitters for tests, with panes of flat colours. */
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "support/window_probe.h"
#include "tavixskin/framework/splitter_wnd.h"

namespace tavix_test {

constexpr COLORREF kPaneColour = RGB(30, 140, 60);

/* Opens what a splitter keeps for classes below it, makes panes, and notes what it is asked. */
class TestSplitter : public CSplitterWnd {
public:
    using CSplitterWnd::GetHitRect;
    using CSplitterWnd::GetInsideRect;
    using CSplitterWnd::GetPaneRect;
    using CSplitterWnd::m_cxSplitter;
    using CSplitterWnd::m_cxSplitterGap;
    using CSplitterWnd::m_cyBorderShare;
    using CSplitterWnd::m_cySplitterGap;
    using CSplitterWnd::m_pColInfo;
    using CSplitterWnd::m_pRowInfo;
    using CSplitterWnd::TrackColumnSize;
    using CSplitterWnd::TrackRowSize;

    struct Drawn {
        ESplitType type;
        CRect rect;
    };
    std::vector<Drawn> drawn;
    std::vector<CRect> inverted;
    std::vector<POINT> made;  // panes asked for: column and row
    std::optional<POINT> refused;

    /* A window for a pane, of one colour. */
    HWND MakePane(int row, int column) {
        static const bool registered = [] {
            WNDCLASSA cls{};
            cls.lpfnWndProc = ::DefWindowProcA;
            cls.hInstance = ::GetModuleHandleA(nullptr);
            cls.hbrBackground = ::CreateSolidBrush(kPaneColour);
            cls.lpszClassName = "TavixTestSplitterPane";
            return ::RegisterClassA(&cls) != 0;
        }();
        EXPECT_TRUE(registered);
        return CreateControl(Charset::Ansi, m_hWnd, "TavixTestSplitterPane", "", 0, {0, 0, 5, 5},
                             static_cast<int>(IdFromRowCol(row, column)));
    }
    void MakeAllPanes() {
        for (int row = 0; row < GetRowCount(); ++row)
            for (int column = 0; column < GetColumnCount(); ++column) MakePane(row, column);
        RecalcLayout();
    }
    HWND Pane(int row, int column) const { return GetPane(row, column)->GetSafeHwnd(); }
    /* Where a pane's window is, in the splitter's client area. */
    CRect PlaceOf(int row, int column) const {
        CRect place;
        ::GetWindowRect(Pane(row, column), &place);
        ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(static_cast<RECT*>(&place)), 2);
        return place;
    }
    std::vector<int> Widths() const {
        std::vector<int> all;
        for (int i = 0; i < GetColumnCount(); ++i) {
            int current = 0, minimum = 0;
            GetColumnInfo(i, current, minimum);
            all.push_back(current);
        }
        return all;
    }
    std::vector<int> Heights() const {
        std::vector<int> all;
        for (int i = 0; i < GetRowCount(); ++i) {
            int current = 0, minimum = 0;
            GetRowInfo(i, current, minimum);
            all.push_back(current);
        }
        return all;
    }
    CPoint MiddleOf(const CHit& hit) const {
        const CRect rect = GetHitRect(hit);
        return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    }

    void OnDrawSplitter(CDC* dc, ESplitType type, const CRect& rect) override {
        drawn.push_back({type, rect});
        CSplitterWnd::OnDrawSplitter(dc, type, rect);
    }

protected:
    CWnd* CreatePane(int row, int column) override {
        made.push_back({column, row});
        if (refused && refused->x == column && refused->y == row) return nullptr;
        return FromHandle(MakePane(row, column));
    }
    void OnInvertTracker(const CRect& rect) override {
        inverted.push_back(rect);
        CSplitterWnd::OnInvertTracker(rect);
    }
};

/* A window with a splitter that fills it. */
class SplitterTest : public testing::Test {
protected:
    static constexpr SIZE kClient{400, 300};

    static void SetUpTestSuite() { ParkMouse(); }
    void TearDown() override {
        if (::GetAsyncKeyState(VK_LBUTTON) < 0) ReleaseMouse();
        ParkMouse();
    }

    void MakeStatic(int rows, int columns) {
        ASSERT_TRUE(splitter.CreateStatic(parent, rows, columns));
        Fill();
        splitter.MakeAllPanes();
        Settle();
    }
    void MakeDynamic(int maxRows, int maxColumns, const SIZE& minSize = {20, 20}) {
        ASSERT_TRUE(splitter.Create(parent, maxRows, maxColumns, minSize));
        Fill();
        Settle();
    }
    void Fill() { ::MoveWindow(splitter.m_hWnd, 0, 0, kClient.cx, kClient.cy, TRUE); }
    void Settle() {
        ::RedrawWindow(parent, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        PumpMessages();
    }
    void Drag(POINT from, POINT to) {
        MoveMouse(splitter.m_hWnd, from);
        PressMouse();
        MoveMouse(splitter.m_hWnd, to);
        ReleaseMouse();
        Settle();
    }

    ProbeWindow parent;
    TestSplitter splitter;
};

}  // namespace tavix_test
