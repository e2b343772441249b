#include "host_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>

#include "host_fixture.h"

// Each operation in double precision, on the 32-bit machine too.
#if defined(__i386__) && defined(__GNUC__)
#pragma GCC target("sse2,fpmath=sse")
#endif

namespace tavix_test {

namespace {

using Wide = std::int64_t;

// What an int can't hold becomes the nearest that it can.
int Narrow(Wide value) { return static_cast<int>(std::clamp<Wide>(value, INT_MIN, INT_MAX)); }

// What is no number counts as 0.
Wide Whole(double value) {
    constexpr double kEnd = 4e18;
    return std::isnan(value) ? 0 : static_cast<Wide>(std::clamp(value, -kEnd, kEnd));
}

double Quotient(Wide dividend, Wide divisor) {
    return static_cast<double>(dividend) / static_cast<double>(divisor);
}

SCROLLINFO NativeOrNothing(HWND window, int bar) {
    SCROLLINFO info = MakeInfo(SIF_ALL);
    return ::GetScrollInfo(window, bar, &info) ? info : SCROLLINFO{};
}

}  // namespace

// ---------------------------------------------------------------- one bar

void BarRules::Read(HWND host, int barCode) {
    const SCROLLHOST record = RecordOf(host);
    code = barCode;
    const CSkinScrollBar& bar = code == SB_VERT ? *record.m_pVertBar : *record.m_pHorzBar;
    window = bar.m_hWnd;
    min = bar.m_nMin, max = bar.m_nMax, page = bar.m_nPage, pos = bar.m_nPos;
    thumbLength = bar.m_nThumbLen;
    thumbStart = bar.m_nThumbPixel;
    arrow = bar.m_nArrowLen;
    lastTrack = bar.m_nLastTrackPos;
    lastMouse = bar.m_ptLast;
    place = PlaceOf(window);
    wanted = (code == SB_VERT ? record.m_bVertShown : record.m_bHorzShown) != 0;
    shown = IsShown(window);
    enabled = ::IsWindowEnabled(window) != FALSE;
}

// From nothing to the whole range.
void BarRules::KeepPage() { page = Narrow(std::clamp<Wide>(page, 0, Wide{max} - min + 1)); }

// A page still fits behind the position.
void BarRules::KeepPos() {
    const Wide last = max - std::max<Wide>(Wide{page} - 1, 0);
    if (pos > last) pos = last > min ? Narrow(last) : min;
}

void BarRules::SetRange(int newMin, int newMax) {
    min = newMin;
    max = std::max(newMin, newMax);
    KeepPage();
    if (pos < min) pos = min;
    KeepPos();
}

void BarRules::SetPage(int newPage) {
    const Wide range = Wide{max} - min + 1;
    if (newPage < 0) {
        thumbLength = Track();
    } else if (newPage >= range) {
        page = Narrow(range);
        thumbLength = Track();
    } else if (newPage == 0) {
        page = 0;
        thumbLength = 15;
    } else {
        page = newPage;
        const double share = static_cast<double>(static_cast<float>(newPage)) * Track();
        thumbLength = std::max(12, static_cast<int>(share / static_cast<double>(range + 1)));
    }
}

void BarRules::SetPos(int newPos) {
    pos = newPos;
    if (pos < min) {
        pos = min;
    } else {
        KeepPage();
        KeepPos();
    }
    thumbStart = PixelOf(pos);
}

int BarRules::PixelOf(int position) const {
    const Wide room = Wide{Track()} - thumbLength, span = Wide{max} - min;
    double scale = page > 0 ? Quotient(room, span - page + 2) : Quotient(room, span + 1);
    if (Track() <= thumbLength) scale = 0;
    double distance = static_cast<double>(Wide{position} - min) * scale;
    if (page >= 0 && position == Wide{max} - page + 1) distance = static_cast<double>(room);
    if (page == 0 && position == max) distance = static_cast<double>(room);
    return distance >= 0 ? Narrow(Whole(std::ceil(arrow + distance))) : 0;
}

int BarRules::PositionAt(int pixel) const {
    const Wide room = Wide{Track()} - thumbLength, span = Wide{max} - min;
    const double ratio = page > 0 ? Quotient(span - page + 1, room) : Quotient(span + 1, room);
    Wide position = Whole(static_cast<double>(Wide{pixel} - arrow) * ratio + 0.5) + min;
    if (page > 0) position = std::min(position, Wide{max} - page + 1);
    if (page == 0) position = std::min<Wide>(position, max);
    return Narrow(position);
}

int BarRules::ThumbFrom() const {
    if (dragging) return thumbStart;
    const int from = PixelOf(pos);
    return Wide{from} + thumbLength > Track() + arrow ? Track() - thumbLength : from;
}

bool BarRules::IsOnThumb(POINT at) const {
    const int side = code == SB_VERT ? 1 : 0;
    return Along(at) >= ThumbFrom() && Along(at) < ThumbFrom() + thumbLength && Across(at) >= side &&
           Across(at) < Breadth() - side;
}

// ---------------------------------------------------------------- one bar and the mouse

std::optional<BarRules::Note> BarRules::NoteOfPress(POINT at) {
    repeating = true;
    const bool isWithinArrows = Across(at) >= 1 && Across(at) < Breadth() - 1;
    if (isWithinArrows && Along(at) >= 1 && Along(at) < arrow - 1) return Note{SB_LINEUP, 0};
    if (isWithinArrows && Along(at) >= Length() - arrow + 1 && Along(at) < Length() - 1)
        return Note{SB_LINEDOWN, 0};
    if (!IsOnThumb(at) && Along(at) < ThumbFrom()) return Note{SB_PAGEUP, 0};
    if (!IsOnThumb(at) && Along(at) > ThumbFrom() + thumbLength) return Note{SB_PAGEDOWN, 0};
    repeating = false;
    grab = IsOnThumb(at) ? Along(at) - ThumbFrom() : 0;
    if (!IsOnThumb(at)) return Note{SB_THUMBPOSITION, PositionAt(thumbStart)};
    pressed = true;
    lastMouse = at;
    return std::nullopt;
}

void BarRules::Press(POINT at, const Send& send) {
    if (!enabled) return send(std::nullopt);
    dragging = false;
    send(NoteOfPress(at));
}

void BarRules::Move(POINT to, const Send& send) {
    const bool isSame = to.x == lastMouse.x && to.y == lastMouse.y;
    if (!enabled || repeating || ::GetCapture() != window || isSame) return send(std::nullopt);
    if (thumbStart == PixelOf(pos)) dragging = true;
    const int low = arrow, high = Length() - arrow - thumbLength, wish = Along(to) - grab;
    if (Along(to) > Along(lastMouse)) thumbStart = std::max(std::min(wish, high), low);
    if (Along(to) < Along(lastMouse)) thumbStart = std::min(std::max(wish, low), high);
    const int position = PositionAt(thumbStart);
    const bool isTold = position != pos && position != lastTrack;
    if (position == pos) thumbStart = PixelOf(pos);
    if (isTold) lastTrack = position;
    send(isTold ? std::optional(Note{SB_THUMBTRACK, position}) : std::nullopt);
    lastMouse = to;
}

void BarRules::Release(const Send& send) {
    if (!enabled) return send(std::nullopt);
    const bool isTold = dragging || pressed;
    dragging = false;
    send(isTold ? std::optional(Note{SB_THUMBPOSITION, PositionAt(thumbStart)}) : std::nullopt);
    repeating = false;
    if (!isTold) return;
    thumbStart = PixelOf(pos);
    lastTrack = -1;
    pressed = dragging = false;
}

void BarRules::Check(HWND host) const {
    SCOPED_TRACE(code == SB_VERT ? "vertical" : "horizontal");
    SCROLLINFO info = MakeInfo(SIF_ALL);
    EXPECT_TRUE(Client().GetScrollInfo(host, code, &info));
    EXPECT_EQ(info.nMin, min);
    EXPECT_EQ(info.nMax, max);
    EXPECT_EQ(static_cast<int>(info.nPage), page);
    EXPECT_EQ(info.nPos, pos);
    EXPECT_EQ(info.nTrackPos, PositionAt(thumbStart));
    EXPECT_EQ(static_cast<CSkinScrollBar*>(CWnd::FromHandlePermanent(window))->m_nThumbLen, thumbLength);
    EXPECT_EQ(PlaceOf(window), place);
    EXPECT_EQ(IsShown(window), shown);
    EXPECT_EQ(::IsWindowEnabled(window) != FALSE, enabled);
}

// ---------------------------------------------------------------- a host

HostRules::HostRules(HWND host)
    : m_host(host), m_corner(RecordOf(host).m_pStub->m_hWnd), m_cornerPlace(PlaceOf(m_corner)) {
    for (int code : {SB_HORZ, SB_VERT}) m_bars[code].Read(host, code);
}

// `client` is the host's client area in its parent, as it is when the bars are laid out.
void HostRules::Layout(bool horizontal, bool vertical, CRect client) {
    BarRules &across = m_bars[SB_HORZ], &upright = m_bars[SB_VERT];
    const CSize thickness(::GetSystemMetrics(SM_CXVSCROLL), ::GetSystemMetrics(SM_CYHSCROLL));
    // A bar that newly comes takes its room.
    if (vertical && !upright.wanted) client.right -= thickness.cx;
    if (horizontal && !across.wanted) client.bottom -= thickness.cy;
    across.wanted = horizontal;
    upright.wanted = vertical;
    // Windows have no negative sizes.
    const CSize room(std::max(client.Width(), 0), std::max(client.Height(), 0));
    const CPoint corner(client.right, client.bottom);
    if (vertical) upright.place = CRect(CPoint(client.right, client.top), CSize(thickness.cx, room.cy));
    if (horizontal) across.place = CRect(CPoint(client.left, client.bottom), CSize(room.cx, thickness.cy));
    if (horizontal && vertical) m_cornerPlace = CRect(corner, thickness);
    upright.shown = vertical && (visible || upright.shown);
    across.shown = horizontal && (visible || across.shown);
    m_cornerShown = horizontal && vertical && (visible || m_cornerShown);
}

// A bar that is not wanted anyway needs no layout.
void HostRules::Want(int code, bool wanted) {
    if (!wanted && !m_bars[code].wanted) return;
    Layout(code == SB_HORZ ? wanted : m_bars[SB_HORZ].wanted,
           code == SB_VERT ? wanted : m_bars[SB_VERT].wanted, ClientPlaceOf(m_host));
}

int HostRules::SetScrollInfo(int code, const SCROLLINFO* given, BOOL redraw) {
    BarRules& bar = m_bars[code];
    SCROLLINFO now = NativeOrNothing(m_host, code);
    bool hides = false;
    int pos = given->nPos;
    if (given->fMask & SIF_RANGE) {
        now.nMin = given->nMin, now.nMax = given->nMax;
        hides = given->nMin >= given->nMax;
    }
    if (given->fMask & SIF_PAGE) {
        now.nPage = given->nPage;
        // Unsigned, and by the caller's minimum.
        if (given->nPage > static_cast<UINT>(Wide{now.nMax} - given->nMin + 1)) hides = true;
    }
    if (given->fMask & SIF_POS && !hides) {
        const Wide last = now.nMax - std::max<Wide>(Wide{static_cast<int>(now.nPage)} - 1, 0);
        if (given->nPos < now.nMin) pos = now.nMin;
        if (given->nPos > last) pos = Narrow(last);
    }
    Want(code, !hides);
    if (given->fMask & SIF_RANGE) bar.SetRange(given->nMin, given->nMax);
    if (given->fMask & SIF_PAGE) bar.SetPage(static_cast<int>(given->nPage));
    if (given->fMask & SIF_POS) bar.SetPos(pos);
    return Client().SetScrollInfo(m_host, code, given, redraw);
}

BOOL HostRules::SetScrollRange(int code, int min, int max, BOOL redraw) {
    BarRules& bar = m_bars[code];
    Want(code, min < max);
    bar.SetRange(min, max);
    if (bar.page == 0) bar.SetPage(1);
    if (redraw) bar.SetPos(bar.pos);
    return Client().SetScrollRange(m_host, code, min, max, redraw);
}

int HostRules::SetScrollPos(int code, int pos, BOOL redraw) {
    if (pos != m_bars[code].pos) m_bars[code].SetPos(pos);
    return Client().SetScrollPos(m_host, code, pos, redraw);
}

BOOL HostRules::ShowScrollBar(int code, BOOL show) {
    // The real function comes first here, so the client area after it is the one that counts.
    const BOOL result = Client().ShowScrollBar(m_host, code, show);
    EXPECT_EQ(result, TRUE);
    Layout(code == SB_VERT ? m_bars[SB_HORZ].wanted : show, code == SB_HORZ ? m_bars[SB_VERT].wanted : show,
           ClientPlaceOf(m_host));
    for (BarRules& bar : m_bars) {
        if (!bar.wanted) continue;
        bar.shown = true;
        SCROLLINFO native = MakeInfo(SIF_ALL);
        if (!::GetScrollInfo(m_host, bar.code, &native)) continue;
        bar.min = native.nMin, bar.max = native.nMax, bar.pos = native.nPos;
        bar.SetPage(static_cast<int>(native.nPage));
    }
    if (m_bars[SB_HORZ].wanted && m_bars[SB_VERT].wanted) m_cornerShown = true;
    return result;
}

BOOL HostRules::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
    const BOOL result = Client().MoveWindow(m_host, x, y, width, height, repaint);
    Layout(m_bars[SB_HORZ].wanted, m_bars[SB_VERT].wanted, ClientPlaceOf(m_host));
    return result;
}

BOOL HostRules::ShowWindow(int command) {
    const BOOL result = Client().ShowWindow(m_host, command);
    if (command != SW_HIDE && command != SW_SHOW) return result;
    visible = command == SW_SHOW;
    if (!m_bars[SB_HORZ].wanted && !m_bars[SB_VERT].wanted) return result;
    for (BarRules& bar : m_bars) bar.shown = bar.wanted && visible;
    m_cornerShown = m_bars[SB_HORZ].wanted && m_bars[SB_VERT].wanted && visible;
    return result;
}

BOOL HostRules::EnableScrollBar(UINT bars, UINT arrows) {
    if (bars == SB_VERT) m_bars[SB_VERT].enabled = arrows == ESB_ENABLE_BOTH;
    return Client().EnableScrollBar(m_host, bars, arrows);
}

// ---------------------------------------------------------------- a host and the mouse

void HostRules::SendMouse(BarRules& bar, UINT message, WPARAM flags, POINT at,
                          const std::optional<BarRules::Note>& expected) {
    m_held = &bar;
    m_expected = expected;
    ::SendMessageA(bar.window, message, flags, MAKELPARAM(at.x, at.y));
    EXPECT_FALSE(m_expected) << "not told: " << m_expected->code << " at " << m_expected->pos;
    m_held = nullptr;
}

void HostRules::PressMouse(int code, POINT at) {
    BarRules& bar = m_bars[code];
    bar.Press(at, [&](const auto& note) { SendMouse(bar, WM_LBUTTONDOWN, MK_LBUTTON, at, note); });
}

void HostRules::MoveMouse(int code, POINT to) {
    BarRules& bar = m_bars[code];
    bar.Move(to, [&](const auto& note) { SendMouse(bar, WM_MOUSEMOVE, MK_LBUTTON, to, note); });
}

void HostRules::ReleaseMouse(int code, POINT at) {
    BarRules& bar = m_bars[code];
    bar.Release([&](const auto& note) { SendMouse(bar, WM_LBUTTONUP, 0, at, note); });
}

void HostRules::OnScrollMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_held) return;
    EXPECT_EQ(message, m_held->code == SB_VERT ? UINT{WM_VSCROLL} : UINT{WM_HSCROLL});
    EXPECT_EQ(lParam, 0) << "as a native bar of the window tells it";
    ASSERT_TRUE(m_expected) << "told " << LOWORD(wParam);
    EXPECT_EQ(LOWORD(wParam), m_expected->code);
    EXPECT_EQ(HIWORD(wParam), LOWORD(m_expected->pos));
    m_expected.reset();
    ++m_notifications;
}

void HostRules::Check() {
    const SCROLLHOST record = RecordOf(m_host);
    EXPECT_EQ(record.m_bVisible != 0, visible);
    EXPECT_EQ(record.m_bHorzShown != 0, m_bars[SB_HORZ].wanted);
    EXPECT_EQ(record.m_bVertShown != 0, m_bars[SB_VERT].wanted);
    for (const BarRules& bar : m_bars) bar.Check(m_host);
    EXPECT_EQ(PlaceOf(m_corner), m_cornerPlace);
    EXPECT_EQ(IsShown(m_corner), m_cornerShown);
}

}  // namespace tavix_test
