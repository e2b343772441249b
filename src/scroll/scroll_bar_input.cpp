/* The mouse on a scroll bar: presses, repeats, dragging, hover. */
#include <utility>

#include "scroll/skin_scroll_bar.h"

using tavix::ScrollBarPart;
using tavix::ScrollBarRects;

namespace {

// One id for both timers: a start of the one replaces the other.
constexpr UINT_PTR kTimer = 4991;
constexpr UINT kFirstDelay = 500;
constexpr UINT kRepeatDelay = 100;
constexpr UINT kHoverDelay = 10;

enum RepeatPart { kNothing = 0, kFirstArrow = 1, kSecondArrow = 2, kPageBefore = 3, kPageAfter = 4 };

UINT_PTR StartTimer(HWND window, UINT delay) {
    return ::SetTimer(window, kTimer, delay, nullptr) ? kTimer : 0;
}

}  // namespace

// ---------------------------------------------------------------- auto-repeat

void CSkinScrollBar::StartRepeat(int part) {
    StopRepeat();
    m_nRepeatTimer = StartTimer(m_hWnd, kFirstDelay);
    if (!m_nRepeatTimer) return;
    m_nRepeatPart = part;
    m_bRepeatFirst = 1;
}

void CSkinScrollBar::StopRepeat() {
    if (m_nRepeatTimer) {
        ::KillTimer(m_hWnd, m_nRepeatTimer);
        if (m_nRepeatPart == kFirstArrow && m_bArrow1Pressed)
            m_bArrow1Pressed = 0;
        else if (m_nRepeatPart == kSecondArrow && m_bArrow2Pressed)
            m_bArrow2Pressed = 0;
    }
    m_nRepeatPart = kNothing;
    m_nRepeatTimer = 0;
    m_bRepeatFirst = 0;
}

// One tick while the button is held.
bool CSkinScrollBar::StepRepeat(const POINT& cursor) {
    const ScrollBarRects rects = Rects();
    const bool onFirst = rects.first_arrow.PtInRect(cursor);
    const bool onSecond = rects.second_arrow.PtInRect(cursor);
    const bool onTrack = rects.client.PtInRect(cursor) && !onFirst && !onSecond;
    switch (m_nRepeatPart) {
        case kFirstArrow:
            return !onFirst || Notify(SB_LINEUP);
        case kSecondArrow:
            return !onSecond || Notify(SB_LINEDOWN);
        case kPageBefore:
            return !onTrack || Notify(SB_PAGEUP);
        case kPageAfter:
            return !onTrack || Notify(SB_PAGEDOWN);
        default:
            return true;
    }
}

LRESULT CSkinScrollBar::OnTimer(WPARAM wParam, LPARAM) {
    POINT point{};
    if (m_nRepeatTimer && wParam == m_nRepeatTimer) {
        if (m_bRepeatFirst) {
            ::KillTimer(m_hWnd, m_nRepeatTimer);
            m_nRepeatTimer = StartTimer(m_hWnd, kRepeatDelay);
            m_bRepeatFirst = 0;
        }
        if (::GetCapture() != m_hWnd) {
            StopRepeat();
            return 0;
        }
        ::GetCursorPos(&point);
        ::ScreenToClient(m_hWnd, &point);
        // The thumb has come to the mouse: no more steps while it stays there.
        if (const CRect thumb = Rects().thumb; thumb.PtInRect(point)) {
            Invalidate(thumb, TRUE);
            return 0;
        }
        return DefaultIf(StepRepeat(point));
    }
    if (m_nHoverTimer && wParam == m_nHoverTimer) {
        point = CPoint(static_cast<LPARAM>(::GetMessagePos()));
        ::ScreenToClient(m_hWnd, &point);
        if (!Client().PtInRect(point)) {
            ::KillTimer(m_hWnd, std::exchange(m_nHoverTimer, 0));
            return DefaultIf(RepaintNow());
        }
    }
    return Default();
}

// ---------------------------------------------------------------- press

LRESULT CSkinScrollBar::OnLButtonDown(WPARAM, LPARAM lParam) {
    if (!IsEnabled()) return 0;
    const CPoint point(lParam);
    const Presence present(*this);
    HWND parent = ::GetParent(m_hWnd);
    ::SetFocus(parent ? parent : m_hOwner);
    if (!present) return 0;
    m_bDragging = 0;
    ::SetCapture(m_hWnd);
    return DefaultIf(present && PressAt(point));
}

bool CSkinScrollBar::PressAt(const POINT& point) {
    const ScrollBarRects rects = Rects();
    if (m_nArrowLen != 0) {
        if (rects.first_arrow.PtInRect(point)) return PressArrow(kFirstArrow);
        if (rects.second_arrow.PtInRect(point)) return PressArrow(kSecondArrow);
        if (!rects.thumb.PtInRect(point)) {
            const CRect& thumb = rects.thumb;
            if (Along(point) < (m_bHorz ? thumb.left : thumb.top)) {
                StartRepeat(kPageBefore);
                return Notify(SB_PAGEUP);
            }
            if (Along(point) > (m_bHorz ? thumb.right : thumb.bottom)) {
                StartRepeat(kPageAfter);
                return Notify(SB_PAGEDOWN);
            }
        }
    }
    if (rects.thumb.PtInRect(point)) return PressThumb(point);
    // Beside the thumb, and neither before nor after it: its place is told as if it were let go.
    m_nGrabOffset = 0;
    if (!Notify(SB_THUMBPOSITION)) return false;
    Invalidate(rects.thumb, TRUE);
    Invalidate(Rects().thumb, TRUE);
    return true;
}

bool CSkinScrollBar::PressArrow(int part) {
    const bool first = part == kFirstArrow;
    (first ? m_bArrow1Pressed : m_bArrow2Pressed) = 1;
    StartRepeat(part);
    const ScrollBarRects rects = Rects();
    return RepaintNow(first ? &rects.first_arrow : &rects.second_arrow) &&
           Notify(first ? SB_LINEUP : SB_LINEDOWN);
}

bool CSkinScrollBar::PressThumb(const POINT& point) {
    const CRect thumb = Rects().thumb;
    m_nGrabOffset = Along(point) - (m_bHorz ? thumb.left : thumb.top);
    m_bThumbPressed = 1;
    if (!RepaintNow(&thumb)) return false;
    m_ptLast = point;
    return true;
}

// ---------------------------------------------------------------- move

LRESULT CSkinScrollBar::OnMouseMove(WPARAM wParam, LPARAM lParam) {
    if (!IsEnabled()) return 0;
    const CPoint point(lParam);
    // With any key held the flags differ, and the thumb stays.
    const bool drags =
        wParam == MK_LBUTTON && !m_nRepeatTimer && ::GetCapture() == m_hWnd && !(m_ptLast == point);
    return DefaultIf(drags ? DragTo(point) : TrackHot(point));
}

bool CSkinScrollBar::DragTo(const POINT& point) {
    m_nHotPart = 0;
    if (m_nThumbPixel == PosToPixel(m_nPos)) m_bDragging = 0;
    const CRect before = Rects().thumb;
    if (m_nThumbPixel == PosToPixel(m_nPos)) m_bDragging = 1;

    m_nThumbPixel = tavix::DraggedThumbStart(Values(), Length(), m_nThumbPixel, Along(point), Along(m_ptLast),
                                             m_nGrabOffset);
    const CRect after = tavix::Inflated(RectsFrom(m_nThumbPixel).thumb, 2);
    if (PixelToPos(m_nThumbPixel) == m_nPos) {
        m_nThumbPixel = PosToPixel(m_nPos);
    } else {
        if (!Notify(SB_THUMBTRACK)) return false;
        Invalidate(before, FALSE);
        Invalidate(after, FALSE);
        const Presence present(*this);
        ::UpdateWindow(m_hWnd);
        if (!present) return false;
    }
    m_ptLast = point;
    return true;
}

bool CSkinScrollBar::TrackHot(const POINT& point) {
    const int old = m_nHotPart;
    const int now = static_cast<int>(HitTest(point));
    m_nHotPart = now;
    if (old != now && !(RepaintPart(old) && RepaintPart(now))) return false;
    if (now > 0 && old == 0) m_nHoverTimer = StartTimer(m_hWnd, kHoverDelay);
    return true;
}

bool CSkinScrollBar::RepaintPart(int part) {
    const ScrollBarRects rects = Rects();
    switch (static_cast<ScrollBarPart>(part)) {
        case ScrollBarPart::FirstArrow:
            return RepaintNow(&rects.first_arrow);
        case ScrollBarPart::SecondArrow:
            return RepaintNow(&rects.second_arrow);
        case ScrollBarPart::Thumb:
            return RepaintNow(&rects.thumb);
        default:
            return RepaintNow(&rects.client);
    }
}

// ---------------------------------------------------------------- release

LRESULT CSkinScrollBar::OnLButtonUp(WPARAM, LPARAM) {
    if (!IsEnabled()) return 0;
    const ScrollBarRects rects = Rects();
    return DefaultIf(ReleaseArrow(m_bArrow2Pressed, rects.second_arrow) &&
                     ReleaseArrow(m_bArrow1Pressed, rects.first_arrow) && ReleaseThumb() && ReleaseMouse());
}

bool CSkinScrollBar::ReleaseArrow(int& pressed, const CRect& arrow) {
    if (!pressed) return true;
    pressed = 0;
    return RepaintNow(&arrow);
}

bool CSkinScrollBar::ReleaseThumb() {
    if (!m_bDragging && !m_bThumbPressed) return true;
    m_bDragging = 0;
    if (!Notify(SB_THUMBPOSITION)) return false;
    m_nThumbPixel = PosToPixel(m_nPos);
    m_nLastTrackPos = -1;
    m_bThumbPressed = m_bDragging = 0;
    return RepaintNow();
}

bool CSkinScrollBar::ReleaseMouse() {
    const Presence present(*this);
    if (::GetCapture() == m_hWnd) {
        ::ReleaseCapture();
        if (!present) return false;
        StopRepeat();
    }
    // The list around such a bar must keep the mouse.
    if (m_bDropListBar) ::SetCapture(::GetParent(m_hWnd));
    return static_cast<bool>(present);
}

LRESULT CSkinScrollBar::OnRButton(WPARAM, LPARAM) { return 0; }
