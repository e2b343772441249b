// Thousands of random calls on a host, each checked against what the rules make of it.
#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "host_fixture.h"
#include "host_rules.h"
#include "tavixskin.h"

using namespace tavix_test;

namespace {

constexpr int kSteps = 5000;

class HostModel : public testing::Test {
protected:
    HostModel() {
        host.handler = [this](const Received& received) -> std::optional<LRESULT> {
            if (received.message == WM_VSCROLL || received.message == WM_HSCROLL) {
                rules.OnScrollMessage(received.message, received.wParam, received.lParam);
                if (follows)
                    Follow(received.message == WM_VSCROLL ? SB_VERT : SB_HORZ, LOWORD(received.wParam));
            }
            if (received.message == WM_KEYDOWN) FollowKey(static_cast<int>(received.wParam));
            if (received.message == WM_MOUSEWHEEL)
                Follow(SB_VERT, GET_WHEEL_DELTA_WPARAM(received.wParam) > 0 ? SB_LINEUP : SB_LINEDOWN);
            return std::nullopt;
        };
    }

    // What a program does with a scroll message: the position goes on, by one road or the other.
    void Follow(int code, int request) {
        SCROLLINFO now = MakeInfo(SIF_ALL);
        EXPECT_TRUE(Client().GetScrollInfo(host, code, &now));
        const auto page = static_cast<std::int64_t>(now.nPage);
        std::int64_t pos = now.nPos;
        switch (request) {
            case SB_LINEUP:
                pos -= 1;
                break;
            case SB_LINEDOWN:
                pos += 1;
                break;
            case SB_PAGEUP:
                pos -= page;
                break;
            case SB_PAGEDOWN:
                pos += page;
                break;
            case SB_TOP:
                pos = now.nMin;
                break;
            case SB_BOTTOM:
                pos = now.nMax;
                break;
            case SB_THUMBTRACK:
            case SB_THUMBPOSITION:
                pos = now.nTrackPos;
                break;
        }
        const int to = static_cast<int>(std::clamp<std::int64_t>(pos, INT_MIN, INT_MAX));
        const SCROLLINFO info = MakeInfo(SIF_POS, 0, 0, 0, to);
        if (followsByInfo)
            rules.SetScrollInfo(code, &info, TRUE);
        else
            rules.SetScrollPos(code, to, TRUE);
        ++followed;
    }
    void FollowKey(int key) {
        const struct {
            int key, code, request;
        } keys[] = {{VK_UP, SB_VERT, SB_LINEUP},    {VK_DOWN, SB_VERT, SB_LINEDOWN},
                    {VK_PRIOR, SB_VERT, SB_PAGEUP}, {VK_NEXT, SB_VERT, SB_PAGEDOWN},
                    {VK_HOME, SB_VERT, SB_TOP},     {VK_END, SB_VERT, SB_BOTTOM},
                    {VK_LEFT, SB_HORZ, SB_LINEUP},  {VK_RIGHT, SB_HORZ, SB_LINEDOWN}};
        for (const auto& known : keys)
            if (known.key == key) Follow(known.code, known.request);
    }

    int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    // A number of moderate size, or now and then one from the ends of all numbers.
    int Any() {
        const int ends[] = {INT_MIN, INT_MAX, INT_MIN / 2, INT_MAX / 2};
        return Below(20) == 0 ? ends[Below(4)] : Below(400) - 150;
    }

    void StepInfo() {
        SCROLLINFO info =
            MakeInfo(static_cast<UINT>(Below(8)), Any(), Any(), static_cast<UINT>(Any()), Any());
        if (Below(3)) info = MakeInfo(SIF_ALL, 0, Below(200), static_cast<UINT>(Below(60)), Below(250));
        rules.SetScrollInfo(Below(2), &info, Below(2));
    }
    void StepShowBar() {
        const int codes[] = {SB_HORZ, SB_VERT, SB_BOTH};
        rules.ShowScrollBar(codes[Below(3)], Below(2));
    }
    void StepMove() {
        rules.MoveWindow(Below(100), Below(80), 60 + Below(200), 60 + Below(150), Below(2));
        // Whatever came before: the bars that are wanted lie beside the client area now.
        const CRect client = ClientPlaceOf(host);
        const CSize thickness(::GetSystemMetrics(SM_CXVSCROLL), ::GetSystemMetrics(SM_CYHSCROLL));
        const BarRules &upright = rules.Bar(SB_VERT), &across = rules.Bar(SB_HORZ);
        if (upright.wanted) {
            EXPECT_EQ(PlaceOf(upright.window),
                      CRect(client.right, client.top, client.right + thickness.cx, client.bottom));
        }
        if (across.wanted) {
            EXPECT_EQ(PlaceOf(across.window),
                      CRect(client.left, client.bottom, client.right, client.bottom + thickness.cy));
        }
    }
    void StepShow() {
        const int commands[] = {SW_HIDE, SW_SHOW, SW_SHOWNA};
        rules.ShowWindow(commands[Below(3)]);
    }
    void StepEnable() {
        const UINT codes[] = {SB_HORZ, SB_VERT, SB_BOTH};
        EXPECT_EQ(rules.EnableScrollBar(codes[Below(3)], static_cast<UINT>(Below(4))), 1);
    }
    void StepKeysAndWheel() {
        const WPARAM keys[] = {VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_END, VK_LEFT, VK_RIGHT};
        if (Below(2))
            ::SendMessageA(host, WM_KEYDOWN, keys[Below(8)], 1);
        else
            ::SendMessageA(host, WM_MOUSEWHEEL, MAKEWPARAM(0, Below(2) ? 120 : 0xFF88), MAKELPARAM(50, 50));
    }
    // A press anywhere on a bar, more often than not on its thumb; then the mouse goes about and is let go.
    void StepMouse() {
        const int code = Below(2);
        const BarRules& bar = rules.Bar(code);
        const CSize size = bar.place.Size();
        const auto anywhere = [&] { return POINT{Below(size.cx + 1), Below(size.cy + 1)}; };
        POINT at = anywhere();
        const int inThumb = bar.PixelOf(bar.pos) + Below(bar.thumbLength > 0 ? bar.thumbLength : 1);
        if (Below(3)) (code == SB_VERT ? at.y : at.x) = inThumb;
        follows = Below(4) != 0;
        followsByInfo = Below(2) != 0;
        rules.PressMouse(code, at);
        for (int moves = Below(4); moves > 0; --moves) rules.MoveMouse(code, anywhere());
        rules.ReleaseMouse(code, anywhere());
    }

    HostSkin m_skin;
    ProbeWindow m_parent;
    Pane host{m_parent};
    HostRules rules{host};
    bool follows = true;
    bool followsByInfo = true;
    int followed = 0;
    std::mt19937 random{20260417};
};

TEST_F(HostModel, StaysTrueUnderRandomCalls) {
    for (int step = 0; step < kSteps && !HasFailure(); ++step) {
        const int kind = Below(20);
        SCOPED_TRACE("step " + std::to_string(step) + ", kind " + std::to_string(kind));
        if (kind < 7)
            StepInfo();
        else if (kind < 9)
            rules.SetScrollRange(Below(2), Any(), Any(), Below(2));
        else if (kind < 10)
            rules.SetScrollPos(Below(2), Any(), Below(2));
        else if (kind < 12)
            StepShowBar();
        else if (kind < 14)
            StepMove();
        else if (kind < 15)
            StepShow();
        else if (kind < 16)
            StepEnable();
        else if (kind < 17)
            StepKeysAndWheel();
        else
            StepMouse();
        rules.Check();
    }
    EXPECT_GT(rules.Notifications(), kSteps / 20);
    EXPECT_GT(followed, kSteps / 20);
}

}  // namespace
