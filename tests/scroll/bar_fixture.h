/* What the tests of the scroll bar share. */
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "scroll/skin_scroll_bar.h"
#include "support/skinned_thread.h"
#include "support/window_probe.h"
#include "tavixskin.h"

namespace tavix_test {

enum class Axis { Across, Upright };

inline const char* NameOf(Axis axis) { return axis == Axis::Across ? "Horizontal" : "Vertical"; }
inline std::string NameOfAxis(const testing::TestParamInfo<Axis>& info) { return NameOf(info.param); }
inline const auto kBothAxes = testing::Values(Axis::Across, Axis::Upright);

/* Along the bar and across it, as a point or a size of the client area. */
inline POINT At(Axis axis, int along, int across) {
    return axis == Axis::Across ? POINT{along, across} : POINT{across, along};
}
inline RECT Turned(Axis axis, const RECT& upright) {
    return axis == Axis::Upright ? upright : RECT{upright.top, upright.left, upright.bottom, upright.right};
}
inline LPARAM Packed(POINT point) { return MAKELPARAM(point.x, point.y); }

/* The framework's view of a window that is not its own. */
class BorrowedWindow : public CWnd {
public:
    explicit BorrowedWindow(HWND window) { m_hWnd = window; }
    ~BorrowedWindow() override { m_hWnd = nullptr; }
};

/* The scroll notifications of either axis, as they are told apart in the tests. */
struct Told {
    int code;
    int pos;
    bool operator==(const Told&) const = default;
};
inline void PrintTo(const Told& told, std::ostream* out) {
    *out << "{" << told.code << " at " << told.pos << "}";
}

constexpr int kLength = 200;
constexpr int kBreadth = 17;

/* A skinned thread, a parent that records scroll messages, and a bar of one axis. */
class BarTest : public testing::TestWithParam<Axis> {
protected:
    static void SetUpTestSuite() { ParkMouse(); }
    void SetUp() override {
        m_thread.emplace(skin);
        UseParent(0);
    }
    void TearDown() override {
        ::ReleaseCapture();
        bar.reset();
        m_parent.reset();
        m_thread.reset();
    }

    ProbeWindow& UseParent(DWORD styles) {
        bar.reset();
        m_parent.reset();
        m_parent.emplace(WS_POPUP | WS_VISIBLE | styles);
        m_parent->log.Listen({WM_HSCROLL, WM_VSCROLL});
        return *m_parent;
    }
    ProbeWindow& Parent() { return *m_parent; }
    void EndSkinning() { m_thread.reset(); }
    void UseChangedSkin() { ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1); }

    DWORD AxisStyle() const { return GetParam() == Axis::Upright ? SBS_VERT : SBS_HORZ; }
    RECT Place(int length = kLength, int breadth = kBreadth) const {
        const POINT end = At(GetParam(), length, breadth);
        return {20, 20, 20 + end.x, 20 + end.y};
    }
    /* A bar with arrows of 20 pixels: the figures of the tests don't hang on the system's metrics. */
    CSkinScrollBar& MakeBar(int length = kLength, DWORD styles = WS_VISIBLE, int breadth = kBreadth) {
        bar = std::make_unique<CSkinScrollBar>();
        BorrowedWindow parent(Parent());
        EXPECT_EQ(bar->Create(AxisStyle() | styles, Place(length, breadth), &parent, 7), 1);
        bar->m_nArrowLen = 20;
        return *bar;
    }
    /* The same, with a range, a page and a position, all painted. */
    CSkinScrollBar& MakeBarWith(int min, int max, int page, int pos) {
        MakeBar();
        SetInfo(*bar, min, max, page, pos);
        PumpMessages(0);
        Parent().log.Clear();
        return *bar;
    }
    static void SetInfo(HWND window, int min, int max, int page, int pos) {
        SCROLLINFO info{sizeof info, SIF_ALL, min, max, static_cast<UINT>(page), pos, 0};
        ::SendMessageA(window, SBM_SETSCROLLINFO, TRUE, reinterpret_cast<LPARAM>(&info));
    }
    static void SetInfo(const CSkinScrollBar& bar, int min, int max, int page, int pos) {
        SetInfo(bar.m_hWnd, min, max, page, pos);
    }
    /* A "ScrollBar" control that the library takes over. */
    HWND MakeControl(Charset charset, DWORD styles = 0) {
        return CreateControl(charset, Parent(), "ScrollBar", "", AxisStyle() | styles, Place(), 7);
    }

    UINT Message() const { return GetParam() == Axis::Upright ? WM_VSCROLL : WM_HSCROLL; }
    LRESULT Send(UINT message, WPARAM wParam, POINT point) {
        return ::SendMessageA(bar->m_hWnd, message, wParam, Packed(point));
    }
    /* `along` in pixels along the bar, in its middle across. */
    LRESULT SendAt(UINT message, int along, WPARAM wParam = MK_LBUTTON) {
        return Send(message, wParam, At(GetParam(), along, kBreadth / 2));
    }
    int ThumbFrom() const {
        const CRect thumb = bar->Rects().thumb;
        return GetParam() == Axis::Upright ? thumb.top : thumb.left;
    }

    /* The notifications so far; all must be of the bar's message, with the same sender. */
    std::vector<Told> Notifications(LPARAM sender = 0) {
        std::vector<Told> all;
        for (const Received& received : Parent().log.Entries()) {
            EXPECT_EQ(received.message, Message());
            EXPECT_EQ(received.lParam, sender);
            all.push_back({LOWORD(received.wParam), static_cast<short>(HIWORD(received.wParam))});
        }
        return all;
    }

    TestSkin skin;
    std::unique_ptr<CSkinScrollBar> bar;

private:
    std::optional<SkinnedThread> m_thread;
    std::optional<ProbeWindow> m_parent;
};

}  // namespace tavix_test
