// Thousands of random calls on a host, each checked against what the rules make of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "host_fixture.h"
#include "scroll/scroll_bar_geometry.h"
#include "scroll/scroll_rules.h"
#include "tavixskin.h"

using namespace tavix_test;

namespace {

constexpr int kSteps = 5000;

// One bar as the rules have it.
struct ModelBar {
    tavix::ScrollBarValues values;
    bool wanted = false;
    bool enabled = true;
    bool shown = false;
    CRect place;
};

class HostModel : public testing::Test {
protected:
    HostModel() {
        for (int code : {SB_HORZ, SB_VERT}) {
            CSkinScrollBar& bar = Real(code);
            model[code].values = {bar.m_nMin, bar.m_nMax,      bar.m_nPage,
                                  bar.m_nPos, bar.m_nThumbLen, bar.m_nArrowLen};
            model[code].place = PlaceOf(bar.m_hWnd);
        }
        cornerPlace = PlaceOf(Corner());
    }
    CSkinScrollBar& Real(int code) {
        const SCROLLHOST record = RecordOf(host);
        return code == SB_VERT ? *record.m_pVertBar : *record.m_pHorzBar;
    }
    HWND Corner() { return RecordOf(host).m_pStub->m_hWnd; }
    int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    // A number of moderate size, or now and then one from the ends of all numbers.
    int Any() {
        const int ends[] = {INT_MIN, INT_MAX, INT_MIN / 2, INT_MAX / 2};
        return Below(20) == 0 ? ends[Below(4)] : Below(400) - 150;
    }

    // The layout rules; `client` is the host's client area in the parent at the moment of the layout.
    void Layout(bool horizontal, bool vertical, CRect client) {
        const int cx = ::GetSystemMetrics(SM_CXVSCROLL), cy = ::GetSystemMetrics(SM_CYHSCROLL);
        if (vertical && !model[SB_VERT].wanted) client.right -= cx;
        if (horizontal && !model[SB_HORZ].wanted) client.bottom -= cy;
        model[SB_HORZ].wanted = horizontal;
        model[SB_VERT].wanted = vertical;
        // Windows have no negative sizes.
        const int width = std::max(client.Width(), 0), height = std::max(client.Height(), 0);
        if (vertical) model[SB_VERT].place = CRect(CPoint(client.right, client.top), CSize(cx, height));
        if (horizontal) model[SB_HORZ].place = CRect(CPoint(client.left, client.bottom), CSize(width, cy));
        if (horizontal && vertical) cornerPlace = CRect(CPoint(client.right, client.bottom), CSize(cx, cy));
        model[SB_VERT].shown = vertical && (visible || model[SB_VERT].shown);
        model[SB_HORZ].shown = horizontal && (visible || model[SB_HORZ].shown);
        cornerShown = horizontal && vertical && (visible || cornerShown);
    }
    void Want(int code, bool wanted, const CRect& client) {
        if (!wanted && !model[code].wanted) return;
        Layout(code == SB_HORZ ? wanted : model[SB_HORZ].wanted,
               code == SB_VERT ? wanted : model[SB_VERT].wanted, client);
    }

    void StepInfo() {
        const int code = Below(2);
        SCROLLINFO info =
            MakeInfo(static_cast<UINT>(Below(8)), Any(), Any(), static_cast<UINT>(Any()), Any());
        if (Below(3)) info = MakeInfo(SIF_ALL, 0, Below(200), static_cast<UINT>(Below(60)), Below(250));
        SCROLLINFO present = MakeInfo(SIF_ALL);
        if (!::GetScrollInfo(host, code, &present)) present = {};
        const tavix::ScrollInfoVerdict verdict = tavix::JudgeScrollInfo(present, info);
        Want(code, !verdict.hides, ClientPlaceOf(host));
        tavix::ScrollBarValues& v = model[code].values;
        if (info.fMask & SIF_RANGE) tavix::SetRange(v, info.nMin, info.nMax);
        if (info.fMask & SIF_PAGE) tavix::SetPage(v, 100, static_cast<int>(info.nPage));
        if (info.fMask & SIF_POS) tavix::SetPos(v, verdict.position);
        Client().SetScrollInfo(host, code, &info, Below(2));
    }
    void StepRange() {
        const int code = Below(2), min = Any(), max = Any(), redraw = Below(2);
        Want(code, min < max, ClientPlaceOf(host));
        tavix::ScrollBarValues& v = model[code].values;
        tavix::SetRange(v, min, max);
        if (v.page == 0) tavix::SetPage(v, 100, 1);
        if (redraw) tavix::SetPos(v, v.pos);
        Client().SetScrollRange(host, code, min, max, redraw);
    }
    void StepPos() {
        const int code = Below(2), pos = Any();
        if (pos != model[code].values.pos) tavix::SetPos(model[code].values, pos);
        Client().SetScrollPos(host, code, pos, Below(2));
    }
    void StepShowBar() {
        const int codes[] = {SB_HORZ, SB_VERT, SB_BOTH};
        const int code = codes[Below(3)], show = Below(2);
        Client().ShowScrollBar(host, code, show);
        // The real function runs first here, so its client area is the one that counts.
        Layout(code == SB_VERT ? model[SB_HORZ].wanted : show, code == SB_HORZ ? model[SB_VERT].wanted : show,
               ClientPlaceOf(host));
        for (int bar : {SB_HORZ, SB_VERT}) {
            if (!model[bar].wanted) continue;
            model[bar].shown = true;
            SCROLLINFO native = MakeInfo(SIF_ALL);
            if (!::GetScrollInfo(host, bar, &native)) continue;
            tavix::ScrollBarValues& v = model[bar].values;
            v.min = native.nMin, v.max = native.nMax, v.pos = native.nPos;
            tavix::SetPage(v, 100, static_cast<int>(std::min<UINT>(native.nPage, INT_MAX)));
        }
        if (model[SB_HORZ].wanted && model[SB_VERT].wanted) cornerShown = true;
    }
    void StepMove() {
        Client().MoveWindow(host, Below(100), Below(80), 60 + Below(200), 60 + Below(150), Below(2));
        Layout(model[SB_HORZ].wanted, model[SB_VERT].wanted, ClientPlaceOf(host));
    }
    void StepShow() {
        const int commands[] = {SW_HIDE, SW_SHOW, SW_SHOWNA};
        const int command = commands[Below(3)];
        Client().ShowWindow(host, command);
        if (command == SW_SHOWNA) return;
        visible = command == SW_SHOW;
        if (!model[SB_HORZ].wanted && !model[SB_VERT].wanted) return;
        for (int bar : {SB_HORZ, SB_VERT}) model[bar].shown = model[bar].wanted && visible;
        cornerShown = model[SB_HORZ].wanted && model[SB_VERT].wanted && visible;
    }
    void StepEnable() {
        const UINT codes[] = {SB_HORZ, SB_VERT, SB_BOTH};
        const UINT code = codes[Below(3)], arrows = static_cast<UINT>(Below(4));
        EXPECT_EQ(Client().EnableScrollBar(host, code, arrows), 1);
        if (code == SB_VERT) model[SB_VERT].enabled = arrows == 0;
    }
    // The wheel at the host and the mouse at a bar move nothing by themselves: the host would answer.
    void StepInput() {
        const int code = Below(2);
        const HWND bar = Real(code).m_hWnd;
        const LPARAM at = MAKELPARAM(Below(120), Below(120));
        ::SendMessageA(host, WM_MOUSEWHEEL, MAKEWPARAM(0, Below(2) ? 120 : 0xFF88), at);
        ::SendMessageA(bar, WM_MOUSEMOVE, 0, at);
        ::SendMessageA(bar, WM_LBUTTONDOWN, MK_LBUTTON, at);
        ::SendMessageA(bar, WM_LBUTTONUP, 0, at);
    }

    void Check(int step) {
        const SCROLLHOST record = RecordOf(host);
        EXPECT_EQ(record.m_bVisible != 0, visible) << step;
        EXPECT_EQ(record.m_bHorzShown != 0, model[SB_HORZ].wanted) << step;
        EXPECT_EQ(record.m_bVertShown != 0, model[SB_VERT].wanted) << step;
        for (int code : {SB_HORZ, SB_VERT}) {
            const ModelBar& m = model[code];
            CSkinScrollBar& bar = Real(code);
            EXPECT_EQ(bar.m_nMin, m.values.min) << step;
            EXPECT_EQ(bar.m_nMax, m.values.max) << step;
            EXPECT_EQ(bar.m_nPage, m.values.page) << step;
            EXPECT_EQ(bar.m_nPos, m.values.pos) << step;
            EXPECT_EQ(PlaceOf(bar.m_hWnd), m.place) << step << " bar " << code;
            EXPECT_EQ(IsShown(bar.m_hWnd), m.shown) << step << " bar " << code;
            EXPECT_EQ(::IsWindowEnabled(bar.m_hWnd) != 0, m.enabled) << step;
            SCROLLINFO read = MakeInfo(SIF_RANGE | SIF_PAGE | SIF_POS);
            EXPECT_TRUE(Client().GetScrollInfo(host, code, &read));
            EXPECT_EQ(read.nMax, m.values.max) << step;
            EXPECT_EQ(read.nPos, m.values.pos) << step;
        }
        EXPECT_EQ(PlaceOf(Corner()), cornerPlace) << step;
        EXPECT_EQ(IsShown(Corner()), cornerShown) << step;
    }

    HostSkin m_skin;
    ProbeWindow m_parent;
    Pane host{m_parent};
    ModelBar model[2];
    CRect cornerPlace;
    bool cornerShown = false;
    bool visible = true;
    std::mt19937 random{20260417};
};

TEST_F(HostModel, StaysTrueUnderRandomCalls) {
    int moves = 0;
    for (int step = 0; step < kSteps && !HasFailure(); ++step) {
        const int kind = Below(20);
        if (kind < 8)
            StepInfo();
        else if (kind < 10)
            StepRange();
        else if (kind < 12)
            StepPos();
        else if (kind < 14)
            StepShowBar();
        else if (kind < 16)
            StepMove();
        else if (kind < 17)
            StepShow();
        else if (kind < 18)
            StepEnable();
        else
            StepInput();
        Check(step);
        if (HasFailure()) ADD_FAILURE() << "kind " << kind;
        // After a move, the bars that are wanted lie exactly beside the client area.
        if (kind != 14 && kind != 15) continue;
        ++moves;
        const CRect client = ClientPlaceOf(host);
        if (model[SB_VERT].wanted) {
            EXPECT_EQ(PlaceOf(Real(SB_VERT).m_hWnd).left, client.right);
            EXPECT_EQ(PlaceOf(Real(SB_VERT).m_hWnd).top, client.top);
            EXPECT_EQ(PlaceOf(Real(SB_VERT).m_hWnd).bottom, client.bottom);
        }
        if (model[SB_HORZ].wanted) {
            EXPECT_EQ(PlaceOf(Real(SB_HORZ).m_hWnd).top, client.bottom);
            EXPECT_EQ(PlaceOf(Real(SB_HORZ).m_hWnd).right, client.right);
        }
    }
    EXPECT_GT(moves, 100);
}

}  // namespace
