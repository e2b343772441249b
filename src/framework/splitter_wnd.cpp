// The panes of a splitter: making, placing, splitting and drawing. Tracking has a file of its own.
#include "tavixskin/framework/splitter_wnd.h"

#include <algorithm>

#include "framework/splitter_layout.h"

IMPLEMENT_DYNAMIC(CSplitterWnd, CWnd)

namespace {

constexpr char kClassName[] = "TavixSplitter";

bool RegisterSplitterClass() {
    WNDCLASSA cls{};
    cls.style = CS_DBLCLKS;
    cls.lpfnWndProc = ::DefWindowProcA;
    cls.hInstance = ::GetModuleHandleA(nullptr);
    cls.hCursor = ::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    cls.lpszClassName = kClassName;
    return ::RegisterClassA(&cls) || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

bool IsSplitter(HWND window) {
    const CWnd* object = CWnd::FromHandlePermanent(window);
    return object && object->IsKindOf(RUNTIME_CLASS(CSplitterWnd));
}

}  // namespace

// ---------------------------------------------------------------- life

// A bar has an edge of two pixels on either side, as a pane's own sunken border has.
CSplitterWnd::CSplitterWnd()
    : m_cxSplitter(7),
      m_cySplitter(7),
      m_cxSplitterGap(7),
      m_cySplitterGap(7),
      m_cxBorder(2),
      m_cyBorder(2),
      m_cxBorderShare(0),
      m_cyBorderShare(0) {}

CSplitterWnd::~CSplitterWnd() {
    StopTracking(false);
    DestroyWindow();
}

bool CSplitterWnd::MakeWindow(HWND parent, DWORD style, UINT id) {
    // Panes have scroll bars of their own.
    style &= ~static_cast<DWORD>(WS_HSCROLL | WS_VSCROLL);
    style |= WS_CHILD | WS_CLIPCHILDREN;
    if (RegisterSplitterClass() && CreateEx(0, kClassName, "", style, CRect(), parent, id)) return true;
    m_nRows = m_nCols = m_nMaxRows = m_nMaxCols = 0;
    return false;
}

bool CSplitterWnd::CreateStatic(HWND parent, int rows, int columns, DWORD style, UINT id) {
    const auto allowed = [](int count) { return count >= 1 && count <= kMaxSplitterPanes; };
    if (m_hWnd || !allowed(rows) || !allowed(columns)) return false;
    m_nRows = m_nMaxRows = rows;
    m_nCols = m_nMaxCols = columns;
    m_pRowInfo.fill({});
    m_pColInfo.fill({});
    return MakeWindow(parent, style & ~SPLS_DYNAMIC_SPLIT, id);
}

bool CSplitterWnd::Create(HWND parent, int maxRows, int maxColumns, const SIZE& minSize, DWORD style,
                          UINT id) {
    const auto allowed = [](int count) { return count == 1 || count == 2; };
    if (m_hWnd || !allowed(maxRows) || !allowed(maxColumns)) return false;
    m_nRows = m_nCols = 1;
    m_nMaxRows = maxRows;
    m_nMaxCols = maxColumns;
    m_pRowInfo.fill({tavix::PaneSize(minSize.cy), 0, 0});
    m_pColInfo.fill({tavix::PaneSize(minSize.cx), 0, 0});
    if (!MakeWindow(parent, style | SPLS_DYNAMIC_SPLIT, id)) return false;
    if (CreatePane(0, 0) && PaneWindow(0, 0)) {
        RecalcLayout();
        return true;
    }
    DestroyWindow();
    m_nRows = m_nCols = m_nMaxRows = m_nMaxCols = 0;
    return false;
}

// ---------------------------------------------------------------- rows, columns and panes

int CSplitterWnd::GetRowCount() const { return m_nRows; }
int CSplitterWnd::GetColumnCount() const { return m_nCols; }

bool CSplitterWnd::IsDynamic() const {
    return m_hWnd && (::GetWindowLongA(m_hWnd, GWL_STYLE) & SPLS_DYNAMIC_SPLIT);
}

std::span<CSplitterWnd::CRowColInfo> CSplitterWnd::Panes(Axis axis) {
    const auto count = static_cast<std::size_t>(axis == Axis::Rows ? m_nRows : m_nCols);
    return std::span(axis == Axis::Rows ? m_pRowInfo : m_pColInfo).first(count);
}
std::span<const CSplitterWnd::CRowColInfo> CSplitterWnd::Panes(Axis axis) const {
    const auto count = static_cast<std::size_t>(axis == Axis::Rows ? m_nRows : m_nCols);
    return std::span(axis == Axis::Rows ? m_pRowInfo : m_pColInfo).first(count);
}
int CSplitterWnd::Gap(Axis axis) const { return axis == Axis::Rows ? m_cySplitterGap : m_cxSplitterGap; }

// From the start of a gap to the bar, which stands in its middle.
int CSplitterWnd::BarInset(Axis axis) const {
    return axis == Axis::Rows ? (m_cySplitterGap - m_cySplitter) / 2 : (m_cxSplitterGap - m_cxSplitter) / 2;
}

UINT CSplitterWnd::IdFromRowCol(int row, int column) const {
    return AFX_IDW_PANE_FIRST + static_cast<UINT>(row) * kMaxSplitterPanes + static_cast<UINT>(column);
}

HWND CSplitterWnd::PaneWindow(int row, int column) const {
    if (!m_hWnd || row < 0 || row >= m_nMaxRows || column < 0 || column >= m_nMaxCols) return nullptr;
    return ::GetDlgItem(m_hWnd, static_cast<int>(IdFromRowCol(row, column)));
}
HWND CSplitterWnd::PaneWindow(Axis axis, int index, int across) const {
    return axis == Axis::Rows ? PaneWindow(index, across) : PaneWindow(across, index);
}

CWnd* CSplitterWnd::GetPane(int row, int column) const { return FromHandle(PaneWindow(row, column)); }

bool CSplitterWnd::IsChildPane(HWND window, int* row, int* column) const {
    if (!m_hWnd || !window || ::GetAncestor(window, GA_PARENT) != m_hWnd) return false;
    const int place = ::GetDlgCtrlID(window) - static_cast<int>(AFX_IDW_PANE_FIRST);
    if (place < 0) return false;
    const int itsRow = place / kMaxSplitterPanes, itsColumn = place % kMaxSplitterPanes;
    if (PaneWindow(itsRow, itsColumn) != window) return false;
    if (row) *row = itsRow;
    if (column) *column = itsColumn;
    return true;
}

bool CSplitterWnd::SetPane(int row, int column, HWND window, const SIZE& idealSize) {
    if (!m_hWnd || row < 0 || row >= m_nRows || column < 0 || column >= m_nCols) return false;
    if (!::IsWindow(window) || PaneWindow(row, column)) return false;
    if (window == m_hWnd || ::IsChild(window, m_hWnd)) return false;
    const auto style = static_cast<DWORD>(::GetWindowLongA(window, GWL_STYLE));
    ::SetWindowLongA(window, GWL_STYLE, static_cast<LONG>((style & ~WS_POPUP) | WS_CHILD));
    if (::GetAncestor(window, GA_PARENT) != m_hWnd && !::SetParent(window, m_hWnd)) {
        ::SetWindowLongA(window, GWL_STYLE, static_cast<LONG>(style));
        return false;
    }
    ::SetWindowLongPtrA(window, GWLP_ID, static_cast<LONG_PTR>(IdFromRowCol(row, column)));
    Panes(Axis::Rows)[static_cast<std::size_t>(row)].nIdealSize = tavix::PaneSize(idealSize.cy);
    Panes(Axis::Columns)[static_cast<std::size_t>(column)].nIdealSize = tavix::PaneSize(idealSize.cx);
    return true;
}

void CSplitterWnd::GetInfo(Axis axis, int index, int& current, int& minimum) const {
    current = minimum = 0;
    const auto panes = Panes(axis);
    if (index < 0 || index >= static_cast<int>(panes.size())) return;
    current = panes[static_cast<std::size_t>(index)].nCurSize;
    minimum = panes[static_cast<std::size_t>(index)].nMinSize;
}
void CSplitterWnd::SetInfo(Axis axis, int index, int ideal, int minimum) {
    const auto panes = Panes(axis);
    if (index < 0 || index >= static_cast<int>(panes.size())) return;
    panes[static_cast<std::size_t>(index)].nIdealSize = tavix::PaneSize(ideal);
    panes[static_cast<std::size_t>(index)].nMinSize = tavix::PaneSize(minimum);
}

void CSplitterWnd::GetRowInfo(int row, int& current, int& minimum) const {
    GetInfo(Axis::Rows, row, current, minimum);
}
void CSplitterWnd::GetColumnInfo(int column, int& current, int& minimum) const {
    GetInfo(Axis::Columns, column, current, minimum);
}
void CSplitterWnd::SetRowInfo(int row, int ideal, int minimum) { SetInfo(Axis::Rows, row, ideal, minimum); }
void CSplitterWnd::SetColumnInfo(int column, int ideal, int minimum) {
    SetInfo(Axis::Columns, column, ideal, minimum);
}

// ---------------------------------------------------------------- layout

bool CSplitterWnd::CanSplit(Axis axis) const {
    if (!IsDynamic()) return false;
    return axis == Axis::Rows ? m_nRows < m_nMaxRows : m_nCols < m_nMaxCols;
}

CRect CSplitterWnd::GetInsideRect() const {
    CRect inside;
    if (m_hWnd) ::GetClientRect(m_hWnd, &inside);
    // The split boxes stand at the left and at the top.
    if (CanSplit(Axis::Columns)) inside.left += m_cxSplitter;
    if (CanSplit(Axis::Rows)) inside.top += m_cySplitter;
    inside.DeflateRect(m_cxBorderShare, m_cyBorderShare);
    return inside;
}

CRect CSplitterWnd::GetPaneRect(int row, int column) const {
    const auto rows = Panes(Axis::Rows), columns = Panes(Axis::Columns);
    if (row < 0 || row >= m_nRows || column < 0 || column >= m_nCols) return {};
    const auto atRow = static_cast<std::size_t>(row), atColumn = static_cast<std::size_t>(column);
    CRect pane(CPoint(tavix::PaneStart(columns, m_cxSplitterGap, atColumn),
                      tavix::PaneStart(rows, m_cySplitterGap, atRow)),
               CSize(columns[atColumn].nCurSize, rows[atRow].nCurSize));
    const CRect inside = GetInsideRect();
    pane.OffsetRect(inside.left, inside.top);
    return pane;
}

void CSplitterWnd::RecalcLayout() {
    if (!m_hWnd) return;
    const CRect inside = GetInsideRect();
    tavix::LayOutPanes(Panes(Axis::Rows), inside.Height(), m_cySplitterGap);
    tavix::LayOutPanes(Panes(Axis::Columns), inside.Width(), m_cxSplitterGap);
    for (int row = 0; row < m_nRows; ++row) {
        for (int column = 0; column < m_nCols; ++column) {
            const CRect place = GetPaneRect(row, column);
            if (HWND pane = PaneWindow(row, column))
                ::SetWindowPos(pane, nullptr, place.left, place.top, place.Width(), place.Height(),
                               SWP_NOZORDER | SWP_NOACTIVATE);
        }
    }
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
}

// ---------------------------------------------------------------- splitting and its end

CWnd* CSplitterWnd::CreatePane(int, int) { return nullptr; }

void CSplitterWnd::DeletePane(int row, int column) {
    if (HWND pane = PaneWindow(row, column)) ::DestroyWindow(pane);
}

bool CSplitterWnd::SplitRow(int before) { return Split(Axis::Rows, before); }
bool CSplitterWnd::SplitColumn(int before) { return Split(Axis::Columns, before); }
void CSplitterWnd::DeleteRow(int row) { Delete(Axis::Rows, row); }
void CSplitterWnd::DeleteColumn(int column) { Delete(Axis::Columns, column); }

bool CSplitterWnd::Split(Axis axis, int before) {
    if (!CanSplit(axis)) return false;
    const bool isRows = axis == Axis::Rows;
    auto& info = isRows ? m_pRowInfo : m_pColInfo;
    int& count = isRows ? m_nRows : m_nCols;
    const int across = isRows ? m_nCols : m_nRows;
    // The split box gives its place up.
    const int room = info[0].nCurSize + (isRows ? m_cySplitter : m_cxSplitter);
    if (!tavix::CanSplitPane(room, before, Gap(axis), info[0].nMinSize, info[1].nMinSize)) return false;

    for (int i = 0; i < across; ++i) {
        const CWnd* made = isRows ? CreatePane(1, i) : CreatePane(i, 1);
        if (made && PaneWindow(axis, 1, i)) continue;
        for (int undo = 0; undo < i; ++undo) isRows ? DeletePane(1, undo) : DeletePane(undo, 1);
        return false;
    }
    count = 2;
    info[0].nIdealSize = before;
    RecalcLayout();
    return true;
}

void CSplitterWnd::Delete(Axis axis, int index) {
    const bool isRows = axis == Axis::Rows;
    int& count = isRows ? m_nRows : m_nCols;
    if (!IsDynamic() || count != 2 || index < 0 || index > 1) return;
    const int across = isRows ? m_nCols : m_nRows;
    int activeRow = -1, activeColumn = -1;
    GetActivePane(&activeRow, &activeColumn);
    const bool losesFocus = (isRows ? activeRow : activeColumn) == index;
    for (int i = 0; i < across; ++i) {
        isRows ? DeletePane(index, i) : DeletePane(i, index);
        if (!m_hWnd) return;  // a host may end everything when it loses a pane
        HWND stays = index == 0 ? PaneWindow(axis, 1, i) : nullptr;
        if (stays)
            ::SetWindowLongPtrA(stays, GWLP_ID,
                                static_cast<LONG_PTR>(isRows ? IdFromRowCol(0, i) : IdFromRowCol(i, 0)));
    }
    count = 1;
    RecalcLayout();
    if (losesFocus) SetActivePane(isRows ? 0 : activeRow, isRows ? activeColumn : 0);
}

// ---------------------------------------------------------------- the pane with the focus

CWnd* CSplitterWnd::GetActivePane(int* row, int* column) const {
    HWND window = ::GetFocus();
    while (window && !IsChildPane(window, row, column)) window = ::GetAncestor(window, GA_PARENT);
    return FromHandle(window);
}

void CSplitterWnd::SetActivePane(int row, int column) {
    if (HWND pane = PaneWindow(row, column)) ::SetFocus(pane);
}

void CSplitterWnd::ActivateNext(bool previous) {
    const int count = m_nRows * m_nCols;
    int row = 0, column = 0;
    // Without an active pane the first comes next, and the last before.
    int at = previous ? count : -1;
    if (GetActivePane(&row, &column)) at = row * m_nCols + column;
    for (int i = 0; i < count; ++i) {
        at = (at + (previous ? -1 : 1) + count) % count;
        if (!PaneWindow(at / m_nCols, at % m_nCols)) continue;
        SetActivePane(at / m_nCols, at % m_nCols);
        return;
    }
}

// ---------------------------------------------------------------- drawing

void CSplitterWnd::OnDrawSplitter(CDC* pDC, ESplitType nType, const CRect& rect) {
    if (!pDC) {
        ::RedrawWindow(m_hWnd, &rect, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
        return;
    }
    CRect rc = rect;
    if (nType == splitBorder) {
        ::DrawEdge(*pDC, &rc, EDGE_SUNKEN, BF_RECT);
        return;
    }
    if (nType != splitIntersection) ::DrawEdge(*pDC, &rc, EDGE_RAISED, BF_RECT | BF_ADJUST);
    pDC->FillSolidRect(rc, ::GetSysColor(COLOR_3DFACE));
}

void CSplitterWnd::DrawAll(CDC& dc) {
    // A splitter in a splitter draws its own panes' borders: only the bars' ground goes around it.
    const auto forEachPane = [this](auto draw) {
        for (int row = 0; row < m_nRows; ++row)
            for (int column = 0; column < m_nCols; ++column) {
                const CRect pane = GetPaneRect(row, column);
                if (!pane.IsRectEmpty()) draw(PaneWindow(row, column), pane);
            }
    };
    const auto framed = [this](CRect pane) {
        pane.InflateRect(m_cxBorderShare, m_cyBorderShare);
        return pane;
    };
    forEachPane([&](HWND pane, const CRect& rect) {
        if (IsSplitter(pane)) OnDrawSplitter(&dc, splitIntersection, framed(rect));
    });
    for (int column = 0; column + 1 < m_nCols; ++column)
        OnDrawSplitter(&dc, splitBar, GetHitRect({-1, column}));
    for (int row = 0; row + 1 < m_nRows; ++row) OnDrawSplitter(&dc, splitBar, GetHitRect({row, -1}));
    for (int row = 0; row + 1 < m_nRows; ++row)
        for (int column = 0; column + 1 < m_nCols; ++column)
            OnDrawSplitter(&dc, splitIntersection, GetHitRect({row, column}));
    forEachPane([&](HWND pane, const CRect& rect) {
        if (!pane) dc.FillSolidRect(rect, ::GetSysColor(COLOR_3DFACE));
        if (!IsSplitter(pane)) OnDrawSplitter(&dc, splitBorder, framed(rect));
    });
    const bool splitsRows = CanSplit(Axis::Rows), splitsColumns = CanSplit(Axis::Columns);
    if (splitsColumns) OnDrawSplitter(&dc, splitBox, GetHitRect({-1, 0, true}));
    if (splitsRows) OnDrawSplitter(&dc, splitBox, GetHitRect({0, -1, true}));
    if (splitsRows && splitsColumns) OnDrawSplitter(&dc, splitBox, GetHitRect({0, 0, true}));
}
