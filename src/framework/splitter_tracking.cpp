// What the user does with a splitter's bars: hit test, tracking, and the messages that lead there.
#include <algorithm>
#include <utility>

#include "framework/splitter_layout.h"
#include "tavixskin/framework/splitter_wnd.h"

BEGIN_MESSAGE_MAP(CSplitterWnd, CWnd)
    ON_MESSAGE(WM_PAINT, &CSplitterWnd::OnPaint)
    ON_MESSAGE(WM_ERASEBKGND, &CSplitterWnd::OnEraseBackground)
    ON_MESSAGE(WM_SIZE, &CSplitterWnd::OnSize)
    ON_MESSAGE(WM_SETCURSOR, &CSplitterWnd::OnSetCursor)
    ON_MESSAGE(WM_MOUSEMOVE, &CSplitterWnd::OnMouseMove)
    ON_MESSAGE(WM_LBUTTONDOWN, &CSplitterWnd::OnButtonDown)
    ON_MESSAGE(WM_LBUTTONUP, &CSplitterWnd::OnButtonUp)
    ON_MESSAGE(WM_LBUTTONDBLCLK, &CSplitterWnd::OnDoubleClick)
    ON_MESSAGE(WM_KEYDOWN, &CSplitterWnd::OnKeyDown)
    ON_MESSAGE(WM_GETDLGCODE, &CSplitterWnd::OnDialogCode)
    ON_MESSAGE(WM_SETFOCUS, &CSplitterWnd::OnSetFocus)
    ON_MESSAGE(WM_KILLFOCUS, &CSplitterWnd::OnCancelTracking)
    ON_MESSAGE(WM_CANCELMODE, &CSplitterWnd::OnCancelTracking)
    ON_MESSAGE(WM_DESTROY, &CSplitterWnd::OnCancelTracking)
    ON_MESSAGE(WM_CAPTURECHANGED, &CSplitterWnd::OnCaptureChanged)
END_MESSAGE_MAP()

// ---------------------------------------------------------------- what is where

CRect CSplitterWnd::GetHitRect(const CHit& hit) const {
    if (!m_hWnd || !hit) return {};
    CRect client;
    ::GetClientRect(m_hWnd, &client);
    const CRect inside = GetInsideRect();
    CRect rect = client;
    if (hit.box) {
        // In the corner both boxes meet in one that splits both ways.
        if (hit.column < 0 && CanSplit(Axis::Columns)) rect.left += m_cxSplitter;
        if (hit.row < 0 && CanSplit(Axis::Rows)) rect.top += m_cySplitter;
        if (hit.column >= 0) rect.right = rect.left + m_cxSplitter;
        if (hit.row >= 0) rect.bottom = rect.top + m_cySplitter;
        return rect;
    }
    // Bars run from edge to edge, but not through a split box.
    if (CanSplit(Axis::Columns)) rect.left += m_cxSplitter;
    if (CanSplit(Axis::Rows)) rect.top += m_cySplitter;
    if (hit.column >= 0) {
        rect.left =
            inside.left + BarInset(Axis::Columns) - m_cxSplitterGap +
            tavix::PaneStart(Panes(Axis::Columns), m_cxSplitterGap, static_cast<std::size_t>(hit.column) + 1);
        rect.right = rect.left + m_cxSplitter;
    }
    if (hit.row >= 0) {
        rect.top =
            inside.top + BarInset(Axis::Rows) - m_cySplitterGap +
            tavix::PaneStart(Panes(Axis::Rows), m_cySplitterGap, static_cast<std::size_t>(hit.row) + 1);
        rect.bottom = rect.top + m_cySplitter;
    }
    return rect;
}

CSplitterWnd::CHit CSplitterWnd::HitTest(const POINT& point) const {
    CRect client;
    if (!m_hWnd || !::GetClientRect(m_hWnd, &client) || !client.PtInRect(point)) return {};
    const CHit box{CanSplit(Axis::Rows) && point.y < m_cySplitter ? 0 : -1,
                   CanSplit(Axis::Columns) && point.x < m_cxSplitter ? 0 : -1, true};
    if (box) return box;
    const CRect inside = GetInsideRect();
    return {tavix::GapAt(Panes(Axis::Rows), m_cySplitterGap, point.y - inside.top),
            tavix::GapAt(Panes(Axis::Columns), m_cxSplitterGap, point.x - inside.left)};
}

bool CSplitterWnd::HasBarAfter(Axis axis, int index) const {
    return index >= 0 && index + 1 < static_cast<int>(Panes(axis).size());
}

// ---------------------------------------------------------------- the end of a drag

int CSplitterWnd::SizeAt(Axis axis, int position, int index) const {
    const bool isRows = axis == Axis::Rows;
    position = std::clamp(position, -0x7FFF, 0x7FFF);  // as far as windows reach
    POINT point{isRows ? 0 : position, isRows ? position : 0};
    if (HWND pane = PaneWindow(axis, index, 0)) {
        ::ClientToScreen(m_hWnd, &point);
        ::ScreenToClient(pane, &point);
    } else {
        const CRect place = isRows ? GetPaneRect(index, 0) : GetPaneRect(0, index);
        point = {point.x - place.left, point.y - place.top};
    }
    return isRows ? point.y : point.x;
}

bool CSplitterWnd::ColumnSizeAt(int x, int col, int& size) const {
    if (!HasBarAfter(Axis::Columns, col)) return false;
    size = SizeAt(Axis::Columns, x, col);
    return true;
}

void CSplitterWnd::DropNarrow(Axis axis, int index, int size) {
    const auto panes = Panes(axis);
    const auto at = static_cast<std::size_t>(index);
    const tavix::DragEnd end = tavix::EndOfDrag(panes[at], panes[at + 1], size);
    if (end == tavix::DragEnd::Fits) return;
    if (end == tavix::DragEnd::DropsThis) panes[at].nIdealSize = 0;
    if (!IsDynamic()) return;
    const int dropped = end == tavix::DragEnd::DropsThis ? index : index + 1;
    axis == Axis::Rows ? DeleteRow(dropped) : DeleteColumn(dropped);
}

void CSplitterWnd::DropNarrowColumn(int col, int size) {
    if (HasBarAfter(Axis::Columns, col)) DropNarrow(Axis::Columns, col, size);
}

void CSplitterWnd::TrackSize(Axis axis, int position, int index) {
    if (!HasBarAfter(axis, index)) return;
    const int size = SizeAt(axis, position, index);
    Panes(axis)[static_cast<std::size_t>(index)].nIdealSize = tavix::PaneSize(size);
    DropNarrow(axis, index, size);
}

void CSplitterWnd::TrackRowSize(int y, int row) { TrackSize(Axis::Rows, y, row); }
void CSplitterWnd::TrackColumnSize(int x, int col) { TrackSize(Axis::Columns, x, col); }

// ---------------------------------------------------------------- tracking

bool CSplitterWnd::IsTracking() const { return m_bTracking; }

void CSplitterWnd::StartTracking(const CHit& hit) {
    if (m_bTracking || !m_hWnd || !hit) return;
    // What is still to be painted would be painted over the tracker.
    ::RedrawWindow(m_hWnd, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);

    const CRect start = GetHitRect(hit), inside = GetInsideRect();
    const CRect first = GetPaneRect(std::max(hit.row, 0), std::max(hit.column, 0));
    m_hitTracked = hit;
    m_ptTracker = m_ptTrackStart = start.TopLeft();
    // A bar stops at the one before it and at the far edge.
    m_rectTrackLimit.SetRect(hit.box ? start.left : first.left + BarInset(Axis::Columns),
                             hit.box ? start.top : first.top + BarInset(Axis::Rows),
                             inside.right - m_cxSplitterGap + BarInset(Axis::Columns),
                             inside.bottom - m_cySplitterGap + BarInset(Axis::Rows));
    m_rectTracked.SetRectEmpty();
    CPoint pointer;
    ::GetCursorPos(&pointer);
    ::ScreenToClient(m_hWnd, &pointer);
    m_ptTrackOffset =
        start.PtInRect(pointer) ? CPoint(pointer.x - start.left, pointer.y - start.top) : CPoint();

    m_bTracking = true;
    ::SetCapture(m_hWnd);
    m_hWndFormerFocus = ::SetFocus(m_hWnd);
    // Whoever lost the focus may have asked something, and so have ended the tracking.
    if (!m_bTracking) return;
    SetSplitCursor(hit);
    // Panes that change meanwhile are painted when the tracker has gone.
    m_bUpdateLocked = ::LockWindowUpdate(m_hWnd) != 0;
    ShowTracker(true);
}

void CSplitterWnd::StopTracking(bool accept) {
    if (!m_bTracking) return;
    ShowTracker(false);
    m_bTracking = false;
    if (std::exchange(m_bUpdateLocked, false)) ::LockWindowUpdate(nullptr);
    // Not every system holds the panes' painting back; what was painted below the tracker would stay.
    ::RedrawWindow(m_hWnd, &m_rectTracked, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    if (::GetCapture() == m_hWnd) ::ReleaseCapture();
    const HWND former = std::exchange(m_hWndFormerFocus, nullptr);
    if (::GetFocus() == m_hWnd && former && former != m_hWnd) ::SetFocus(former);
    if (!accept) return;

    const CHit hit = m_hitTracked;
    const CPoint to = m_ptTracker, from = m_ptTrackStart;
    if (hit.row >= 0 && to.y != from.y) EndDrag(Axis::Rows, hit, to.y - BarInset(Axis::Rows));
    if (hit.column >= 0 && to.x != from.x) EndDrag(Axis::Columns, hit, to.x - BarInset(Axis::Columns));
    RecalcLayout();
}

void CSplitterWnd::EndDrag(Axis axis, const CHit& hit, int position) {
    const bool isRows = axis == Axis::Rows;
    if (!hit.box) {
        isRows ? TrackRowSize(position, hit.row) : TrackColumnSize(position, hit.column);
        return;
    }
    // With the box gone the panes begin where it stood.
    if (isRows)
        SplitRow(position - m_cyBorderShare);
    else
        SplitColumn(position - m_cxBorderShare);
}

void CSplitterWnd::MoveTracker(const POINT& to) {
    const auto within = [](int value, int low, int high) {
        return std::clamp(value, low, std::max(low, high));
    };
    CPoint place = m_ptTracker;
    if (m_hitTracked.column >= 0) place.x = within(to.x, m_rectTrackLimit.left, m_rectTrackLimit.right);
    if (m_hitTracked.row >= 0) place.y = within(to.y, m_rectTrackLimit.top, m_rectTrackLimit.bottom);
    if (place == m_ptTracker) return;
    ShowTracker(false);
    m_ptTracker = place;
    ShowTracker(true);
}

// The whole bar, also for the box that one is dragged from.
CRect CSplitterWnd::TrackerBar(Axis axis) const {
    CRect bar = GetInsideRect();
    if (axis == Axis::Rows) {
        bar.top = m_ptTracker.y;
        bar.bottom = bar.top + m_cySplitter;
    } else {
        bar.left = m_ptTracker.x;
        bar.right = bar.left + m_cxSplitter;
    }
    return bar;
}

void CSplitterWnd::ShowTracker(bool show) {
    if (show == m_bTrackerShown) return;
    m_bTrackerShown = show;
    for (const Axis axis : {Axis::Rows, Axis::Columns}) {
        if ((axis == Axis::Rows ? m_hitTracked.row : m_hitTracked.column) < 0) continue;
        const CRect bar = TrackerBar(axis);
        ::UnionRect(&m_rectTracked, &m_rectTracked, &bar);
        OnInvertTracker(bar);
    }
}

// Every other pixel is inverted, as on a chessboard, so that what lies below still shows.
void CSplitterWnd::OnInvertTracker(const CRect& rect) {
    static constexpr WORD kChessboard[] = {0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA};
    CBitmap pattern;
    CBrush brush;
    if (!pattern.Attach(::CreateBitmap(8, 8, 1, 1, kChessboard)) ||
        !brush.Attach(::CreatePatternBrush(pattern)))
        return;
    // Over the panes too, and although the window's updates are locked.
    HDC dc = ::GetDCEx(m_hWnd, nullptr, DCX_CACHE | DCX_LOCKWINDOWUPDATE);
    if (!dc) return;
    {
        const SelectionGuard selection(dc, brush);
        ::SetTextColor(dc, RGB(0, 0, 0));
        ::SetBkColor(dc, RGB(255, 255, 255));
        ::SetBrushOrgEx(dc, 0, 0, nullptr);
        ::PatBlt(dc, rect.left, rect.top, rect.Width(), rect.Height(), PATINVERT);
    }
    ::ReleaseDC(m_hWnd, dc);
}

void CSplitterWnd::SetSplitCursor(const CHit& hit) {
    LPTSTR shape = IDC_ARROW;
    if (hit.row >= 0 && hit.column >= 0)
        shape = IDC_SIZEALL;
    else if (hit)
        shape = hit.row >= 0 ? IDC_SIZENS : IDC_SIZEWE;
    ::SetCursor(::LoadCursor(nullptr, shape));
}

bool CSplitterWnd::DoKeyboardSplit() {
    if (m_bTracking) return false;
    CHit hit{HasBarAfter(Axis::Rows, 0) ? 0 : -1, HasBarAfter(Axis::Columns, 0) ? 0 : -1};
    if (!hit) hit = {CanSplit(Axis::Rows) ? 0 : -1, CanSplit(Axis::Columns) ? 0 : -1, true};
    StartTracking(hit);
    return m_bTracking;
}

// ---------------------------------------------------------------- messages

LRESULT CSplitterWnd::OnPaint(WPARAM, LPARAM) {
    CPaintDC dc(m_hWnd);
    if (dc.GetSafeHdc()) DrawAll(dc);
    return 0;
}

LRESULT CSplitterWnd::OnEraseBackground(WPARAM, LPARAM) { return 1; }

LRESULT CSplitterWnd::OnSize(WPARAM wParam, LPARAM) {
    StopTracking(false);
    if (wParam != SIZE_MINIMIZED) RecalcLayout();
    return Default();
}

LRESULT CSplitterWnd::OnSetCursor(WPARAM wParam, LPARAM lParam) {
    if (reinterpret_cast<HWND>(wParam) != m_hWnd || LOWORD(lParam) != HTCLIENT) return Default();
    POINT pointer;
    ::GetCursorPos(&pointer);
    ::ScreenToClient(m_hWnd, &pointer);
    SetSplitCursor(m_bTracking ? m_hitTracked : HitTest(pointer));
    return 1;
}

LRESULT CSplitterWnd::OnMouseMove(WPARAM, LPARAM lParam) {
    if (!m_bTracking) return Default();
    const CPoint pointer(lParam);
    if (::GetCapture() == m_hWnd)
        MoveTracker({pointer.x - m_ptTrackOffset.x, pointer.y - m_ptTrackOffset.y});
    else
        StopTracking(false);
    return 0;
}

LRESULT CSplitterWnd::OnButtonDown(WPARAM, LPARAM lParam) {
    StartTracking(HitTest(CPoint(lParam)));
    return 0;
}

LRESULT CSplitterWnd::OnButtonUp(WPARAM, LPARAM) {
    StopTracking(true);
    return 0;
}

LRESULT CSplitterWnd::OnDoubleClick(WPARAM, LPARAM lParam) {
    const CHit hit = HitTest(CPoint(lParam));
    StopTracking(false);
    if (!hit || !IsDynamic()) return 0;
    if (!hit.box) {
        if (hit.row >= 0) DeleteRow(hit.row + 1);
        if (hit.column >= 0) DeleteColumn(hit.column + 1);
        return 0;
    }
    const CRect inside = GetInsideRect();
    if (hit.row >= 0) SplitRow((inside.Height() + m_cySplitter - m_cySplitterGap) / 2);
    if (hit.column >= 0) SplitColumn((inside.Width() + m_cxSplitter - m_cxSplitterGap) / 2);
    return 0;
}

LRESULT CSplitterWnd::OnKeyDown(WPARAM wParam, LPARAM) {
    if (!m_bTracking) return Default();
    const int step = ::GetKeyState(VK_CONTROL) < 0 ? 1 : 8;
    CPoint to = m_ptTracker;
    switch (wParam) {
        case VK_ESCAPE:
            StopTracking(false);
            return 0;
        case VK_RETURN:
            StopTracking(true);
            return 0;
        case VK_LEFT:
            to.x -= step;
            break;
        case VK_RIGHT:
            to.x += step;
            break;
        case VK_UP:
            to.y -= step;
            break;
        case VK_DOWN:
            to.y += step;
            break;
        default:
            return Default();
    }
    MoveTracker(to);
    return 0;
}

// In a dialog the keys that end tracking come here, and not to the dialog's buttons.
LRESULT CSplitterWnd::OnDialogCode(WPARAM, LPARAM) { return m_bTracking ? DLGC_WANTALLKEYS : Default(); }

// The keyboard belongs to the panes; the splitter has it while it tracks.
LRESULT CSplitterWnd::OnSetFocus(WPARAM, LPARAM) {
    const LRESULT result = Default();
    if (!m_bTracking) SetActivePane(0, 0);
    return result;
}

LRESULT CSplitterWnd::OnCancelTracking(WPARAM, LPARAM) {
    StopTracking(false);
    return Default();
}

LRESULT CSplitterWnd::OnCaptureChanged(WPARAM, LPARAM lParam) {
    if (reinterpret_cast<HWND>(lParam) != m_hWnd) StopTracking(false);
    return 0;
}

// What panes that are controls have to tell is for the window that made them.
bool CSplitterWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (CWnd::OnWndMsg(message, wParam, lParam, result)) return true;
    if (message != WM_COMMAND && message != WM_NOTIFY) return false;
    *result = ::SendMessageA(::GetParent(m_hWnd), message, wParam, lParam);
    return true;
}
