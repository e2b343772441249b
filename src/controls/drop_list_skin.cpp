#include "controls/drop_list_skin.h"

#include <algorithm>

#include "controls/combo_box_skin.h"
#include "controls/list_rows.h"
#include "controls/parent_background.h"
#include "draw/offscreen.h"
#include "engine/skin_values.h"
#include "engine/window_call.h"
#include "scroll/skin_scroll_bar.h"
#include "tavixskin/value_ids.h"

namespace {

constexpr int kDefaultItemHeight = 14;
constexpr UINT kScrollBarId = 10001;
// Of an owner-drawn row, as the platform's ODS_ bits: what is drawn while the list stands still, and
// while it scrolls.
constexpr UINT kCurrentState = ODS_SELECTED, kScrollingState = ODS_HOTLIGHT, kOtherState = ODS_DEFAULT;

int BarWidth() { return ::GetSystemMetrics(SM_CXVSCROLL); }

CString AnsiText(const std::wstring& wide) {
    CString text;
    const int size = ::WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) return text;
    ::WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, text.GetBuffer(size), size, nullptr, nullptr);
    text.ReleaseBuffer();
    return text;
}

}  // namespace

CSkinDropList::~CSkinDropList() {
    if (combo) combo->ForgetList(this);
}

void CSkinDropList::PairWith(CSkinComboBox* owner) {
    combo = owner;
    owner->TakeList(this, m_hWnd);
}

// Without a combo box there is nobody to ask for heights and texts, or to tell of a choice.
LRESULT CSkinDropList::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!ComboWindow()) return Default(message, wParam, lParam);
    switch (message) {
        case WM_CREATE:
            return OnCreate(wParam, lParam);
        case WM_SIZE:
            return OnSize(wParam, lParam);
        case WM_PAINT:
            return OnPaint();
        case WM_NCCALCSIZE:
            if (lParam) ::InflateRect(reinterpret_cast<RECT*>(lParam), -1, -1);
            return 0;
        case WM_NCPAINT:
            return OnNcPaint();
        case WM_KEYDOWN:
            return OnKey(wParam);
        case WM_VSCROLL:
            OnScroll(LOWORD(wParam));
            return 0;
        case WM_MOUSEMOVE:
            return OnMouseMove(wParam, lParam);
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            return OnPress(wParam, lParam);
        case WM_LBUTTONUP:
            return OnRelease(lParam);
        case WM_MOUSEWHEEL:
            return OnWheel(static_cast<short>(HIWORD(wParam)));
        case WM_CAPTURECHANGED:
            return 0;
        case LB_ADDSTRING:
        case LB_INSERTSTRING:
        case LB_DELETESTRING:
            return OnChangedItems(message, wParam, lParam);
        case CB_DELETESTRING:
            OnChangedItems(message, wParam, lParam);
            return 0;
        case LB_RESETCONTENT:
            return OnReset(message, wParam, lParam);
        case WM_PRINT:
            return OnPrint(wParam, lParam);
        case WM_PRINTCLIENT:
            return OnPrintClient(reinterpret_cast<HDC>(wParam));
        default:
            return Default(message, wParam, lParam);
    }
}

LRESULT CSkinDropList::OnCreate(WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(WM_CREATE, wParam, lParam);
    if (!IsAlive() || result == -1) return result;
    if (const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam)) {
        controlId = static_cast<UINT>(reinterpret_cast<UINT_PTR>(create->hMenu));
        // As it was asked for: the native list takes the style away while it has nothing to scroll.
        hasVScroll = (create->style & WS_VSCROLL) != 0;
    }
    style = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE));
    exStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE));
    CreateScrollBar(m_hWnd);
    return result;
}

void CSkinDropList::CreateScrollBar(HWND self) {
    auto bar = std::make_unique<CSkinScrollBar>();
    constexpr DWORD kStyle = WS_CHILD | SBS_VERT | SBS_RIGHTALIGN;
    if (!bar->Create(kStyle, ScrollBarPlace(), CWnd::FromHandle(self), kScrollBarId)) return;
    ::ShowWindow(bar->m_hWnd, SW_HIDE);
    bar->SetOwner(self);
    bar->m_bDropListBar = 1;
    scrollBar = std::move(bar);
}

LRESULT CSkinDropList::OnSize(WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(WM_SIZE, wParam, lParam);
    if (!IsAlive()) return result;
    CountVisible();
    PositionScrollBar();
    return result;
}

LRESULT CSkinDropList::OnNcPaint() {
    CWindowDC dc(m_hWnd);
    if (dc.m_hDC) PaintBorder(dc);
    return 0;
}

// In window co-ordinates, and never over the client area.
void CSkinDropList::PaintBorder(CDC& dc) const {
    CRect window, client;
    GetWindowRect(&window);
    GetClientRect(&client);
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<POINT*>(static_cast<RECT*>(&client)), 2);
    client.OffsetRect(-window.left, -window.top);
    const int saved = ::SaveDC(dc);
    ::ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
    tavix::PaintDropBorder(dc, window.Size());
    ::RestoreDC(dc, saved);
}

// The moves through a list are the mouse's; what keys the list does not know it tells the combo box
// of as a change of selection, and changes nothing.
LRESULT CSkinDropList::OnKey(WPARAM key) {
    switch (key) {
        case VK_SHIFT:
        case VK_CONTROL:
        case VK_RETURN:
        case VK_PRIOR:
        case VK_NEXT:
        case VK_LEFT:
        case VK_RIGHT:
        case VK_UP:
        case VK_DOWN:
            return 0;
        default:
            ::SendMessageA(ComboWindow(), WM_COMMAND, MAKEWPARAM(controlId, LBN_SELCHANGE),
                           reinterpret_cast<LPARAM>(m_hWnd));
            return 0;
    }
}

LRESULT CSkinDropList::OnMouseMove(WPARAM keys, LPARAM lParam) {
    const CPoint point(lParam);
    int item = -1;
    const tavix::DropHit hit = Rows().HitTest(point, item);
    if (item != -1 && item != currentItem)
        SetCurrentItem(item);
    else if (hit == tavix::DropHit::Bar)
        ForwardToBar(WM_MOUSEMOVE, keys, point);
    return 0;
}

// A choice is made on release only.
LRESULT CSkinDropList::OnPress(WPARAM keys, LPARAM lParam) {
    const CPoint point(lParam);
    int item = -1;
    const tavix::DropHit hit = Rows().HitTest(point, item);
    if (hit == tavix::DropHit::Outside)
        CloseList();
    else if (hit == tavix::DropHit::Bar)
        ForwardToBar(WM_LBUTTONDOWN, keys, point);
    return 0;
}

LRESULT CSkinDropList::OnRelease(LPARAM lParam) {
    int item = -1;
    const tavix::DropHit hit = Rows().HitTest(CPoint(lParam), item);
    if (hit == tavix::DropHit::Outside || hit == tavix::DropHit::Bar) return 0;
    CloseList();
    if (item != -1)
        if (HWND owner = ComboWindow())
            ::SendMessageA(owner, tavix::kListChoice, static_cast<WPARAM>(currentItem), 0);
    return 0;
}

// The capture goes on to the combo box, which ends it. Hosts hear of the closing, and may end more.
void CSkinDropList::CloseList() {
    ::ReleaseCapture();
    ::SendMessageA(ComboWindow(), CB_SHOWDROPDOWN, FALSE, 0);
    if (HWND owner = ComboWindow()) ::SetCapture(owner);
}

LRESULT CSkinDropList::OnWheel(int delta) {
    if (!IsBarVisible()) return 0;
    OnScroll(delta >= 0 ? SB_LINEUP : SB_LINEDOWN);
    if (HasBar()) ::InvalidateRect(Bar(), nullptr, TRUE);
    return 0;
}

LRESULT CSkinDropList::OnChangedItems(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(message, wParam, lParam);
    if (IsAlive()) UpdateScrollBar();
    return result;
}

LRESULT CSkinDropList::OnReset(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(message, wParam, lParam);
    defaultItemHeight = kDefaultItemHeight;
    topItem = 0;
    currentItem = -1;
    return result;
}

// ---------------------------------------------------------------- selection and scrolling

int CSkinDropList::SetCurrentItem(int item) {
    if (item < 0 || item >= Count()) return -1;
    if (item == currentItem) return item;
    const tavix::DropRows rows = Rows();
    const auto invalidateRow = [&](int row) {
        if (row < 0 || row < topItem) return;
        const CRect rect = rows.RowRect(row);
        ::InvalidateRect(m_hWnd, &rect, FALSE);
    };
    invalidateRow(currentItem);
    currentItem = item;
    invalidateRow(currentItem);
    return currentItem;
}

void CSkinDropList::OnScroll(int code) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    if (HasBar()) scrollBar->GetScrollInfo(&info, SIF_ALL);
    const int thumb = HasBar() ? info.nTrackPos : topItem;
    ScrollTo(tavix::ScrolledTop(code, topItem, Count(), visibleItems, thumb), code);
}

// A release of the bar gives the mouse back to the list.
void CSkinDropList::ScrollTo(int top, int code) {
    const auto takeMouse = [this, code] {
        if (code != SB_ENDSCROLL || !IsAlive()) return;
        SetFocus();
        if (IsAlive()) SetCapture();
    };
    if (top == topItem) return takeMouse();
    if (IsOwnerDrawn()) {
        // Drawn at once: the owner's rows follow the thumb without waiting for the queue to run dry.
        tavix::DropRows rows = Rows();
        rows.top = top;
        const CClientDC dc(m_hWnd);
        const CRect area = rows.RowArea();
        tavix::PaintOffscreen(dc, area,
                              [&](CDC& memory) { PaintContent(memory, area, rows, kScrollingState); });
        if (!IsAlive()) return;
    }
    topItem = top;
    if (HasBar()) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_POS;
        info.nPos = info.nTrackPos = top;
        scrollBar->SetScrollInfo(&info, TRUE);
    }
    if (!IsAlive()) return;
    Invalidate(FALSE);
    if (HasBar()) ::InvalidateRect(Bar(), nullptr, TRUE);
    takeMouse();
}

void CSkinDropList::ForwardToBar(UINT message, WPARAM keys, const POINT& point) {
    if (!HasBar()) return;
    POINT there = point;
    ::MapWindowPoints(m_hWnd, Bar(), &there, 1);
    ::SendMessageA(Bar(), message, keys, MAKELPARAM(there.x, there.y));
}

// ---------------------------------------------------------------- the scroll bar

HWND CSkinDropList::Bar() const { return scrollBar ? scrollBar->m_hWnd : nullptr; }

bool CSkinDropList::HasBar() const { return Bar() && ::IsWindow(Bar()); }

bool CSkinDropList::IsBarVisible() const { return HasBar() && ::IsWindowVisible(Bar()); }

// With a native bar asked for, the place is measured in the window's rectangle across and in the
// client's along: one pixel of the bar lies beyond the client area.
CRect CSkinDropList::ScrollBarPlace() const {
    CRect place, window;
    GetClientRect(&place);
    GetWindowRect(&window);
    if (hasVScroll) place.right = window.Width();
    place.left = place.right - BarWidth() - 1;
    place.right -= 1;
    return place;
}

void CSkinDropList::PositionScrollBar() {
    if (!HasBar()) return;
    const CRect place = ScrollBarPlace();
    if (tavix::WindowRectIn(Bar(), m_hWnd) == place) return;
    ::SetWindowPos(Bar(), HWND_TOP, place.left, place.top, place.Width(), place.Height(), SWP_NOSENDCHANGING);
}

void CSkinDropList::HideScrollBar() {
    if (!HasBar()) return;
    ::ShowWindow(Bar(), SW_HIDE);
    // Also a window that is disabled already would be told.
    if (HasBar() && ::IsWindowEnabled(Bar())) ::EnableWindow(Bar(), FALSE);
}

void CSkinDropList::UpdateScrollBar() {
    CountVisible();
    if (!HasBar()) return;
    const int count = Count();
    if (count <= visibleItems) return HideScrollBar();
    PositionScrollBar();  // the window may have grown around a client area that did not
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    scrollBar->GetScrollInfo(&info, SIF_ALL);
    const auto page = static_cast<UINT>(visibleItems);
    if (info.nMin != 0 || info.nMax != count - 1 || info.nPage != page) {
        info.nMin = 0;
        info.nMax = count - 1;
        info.nPage = page;
        scrollBar->SetScrollInfo(&info, TRUE);  // which paints the bar
    }
    if (HasBar()) ::ShowWindow(Bar(), SW_SHOW);
    if (HasBar()) ::EnableWindow(Bar(), TRUE);
}

// ---------------------------------------------------------------- what others know

HWND CSkinDropList::ComboWindow() const {
    HWND owner = combo ? combo->GetSafeHwnd() : nullptr;
    return owner && ::IsWindow(owner) ? owner : nullptr;
}

bool CSkinDropList::IsOwnerDrawn() const { return combo && combo->IsOwnerDrawn(); }

int CSkinDropList::Count() const {
    return static_cast<int>(std::max<LRESULT>(tavix::CallWindow(m_hWnd, LB_GETCOUNT), 0));
}

int CSkinDropList::ItemHeight() const {
    if (Count() < 1) return defaultItemHeight;
    const LRESULT height = tavix::CallWindow(ComboWindow(), CB_GETITEMHEIGHT);
    return static_cast<int>(std::clamp<LRESULT>(height, 0, 0x7FFF));
}

void CSkinDropList::CountVisible() {
    CRect client;
    GetClientRect(&client);
    visibleItems = tavix::CountVisibleRows(client.Height(), ItemHeight());
}

tavix::DropRows CSkinDropList::Rows() const {
    tavix::DropRows rows;
    GetClientRect(&rows.client);
    rows.count = Count();
    rows.top = topItem;
    rows.visible = visibleItems;
    rows.itemHeight = ItemHeight();
    rows.barWidth = IsBarVisible() ? BarWidth() : 0;
    return rows;
}

bool CSkinDropList::HasText(int item) const {
    const bool hasStrings =
        !(style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE)) || (style & LBS_HASSTRINGS);
    return IsAlive() && hasStrings && item >= 0 && item < Count();
}

// From the native list below this skin: on its way through the combo box a text would be cut.
std::wstring CSkinDropList::WideText(int item) const {
    return tavix::ReadItemText({m_pfnPrevWndProc, m_hWnd}, LB_GETTEXTLEN, LB_GETTEXT, item);
}

bool CSkinDropList::ReadText(int item, CString& text) const {
    if (!HasText(item)) return false;
    text = AnsiText(WideText(item));
    return true;
}

// ---------------------------------------------------------------- painting

LRESULT CSkinDropList::OnPaint() {
    UpdateScrollBar();
    CPaintDC dc(m_hWnd);
    if (!dc.m_hDC) return 0;
    const bool ownerDrawn = IsOwnerDrawn();
    CountVisible();
    if (!ownerDrawn && Count() <= visibleItems) HideScrollBar();
    const tavix::DropRows rows = Rows();
    if (rows.barWidth) {
        // The bar has painted itself already; nothing here may cover it.
        const CRect bar = tavix::WindowRectIn(Bar(), m_hWnd);
        ::ExcludeClipRect(dc, bar.left, bar.top, bar.right, bar.bottom);
    }
    const CRect area = ownerDrawn ? rows.RowArea() : rows.client;
    tavix::PaintOffscreen(dc, area, [&](CDC& memory) { PaintContent(memory, area, rows, kCurrentState); });
    return 0;
}

// An owner draws on white, whatever the skin's colours are.
void CSkinDropList::PaintContent(CDC& dc, const CRect& area, const tavix::DropRows& rows,
                                 UINT currentState) const {
    const bool ownerDrawn = IsOwnerDrawn();
    dc.FillSolidRect(area, ownerDrawn ? RGB(255, 255, 255) : tavix::SkinColour(CLR_LIST_BACK));
    if (ownerDrawn)
        DrawOwnerRows(dc, rows, currentState);
    else
        PaintRows(dc, rows);
}

void CSkinDropList::PaintRows(CDC& dc, const tavix::DropRows& rows) const {
    const tavix::DropRowParts parts = tavix::DropRowPartsOf();
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    // Never through a long list: what doesn't show has nothing to draw.
    const std::int64_t end = std::min<std::int64_t>(rows.count, std::int64_t{rows.top} + rows.visible);
    for (int i = std::max(rows.top, 0); i < end; ++i) {
        const std::wstring text = HasText(i) ? WideText(i) : std::wstring();
        tavix::DropRowImage image{&itemImages};
        void* found = nullptr;
        if (itemImageMap.Lookup(reinterpret_cast<void*>(static_cast<INT_PTR>(i)), found))
            image.index = static_cast<int>(reinterpret_cast<INT_PTR>(found));
        tavix::PaintDropRow(dc, rows.RowRect(i), i == currentItem, text, image, parts);
    }
}

// Also those below the last one that fits: an owner may count on being asked for each. It may take
// items away, or the window, while it is asked.
void CSkinDropList::DrawOwnerRows(HDC dc, const tavix::DropRows& rows, UINT currentState) const {
    for (int i = std::max(rows.top, 0); i < rows.count && i < Count(); ++i) {
        HWND owner = ComboWindow();
        if (!IsAlive() || !owner) return;
        const UINT state = i == currentItem ? currentState : kOtherState;
        const auto data =
            static_cast<ULONG_PTR>(tavix::CallWindow(owner, CB_GETITEMDATA, static_cast<WPARAM>(i)));
        DRAWITEMSTRUCT item = tavix::DrawItemOf({m_hWnd, controlId, i, state, rows.RowRect(i), data}, dc);
        ::SendMessageA(owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
    }
}

LRESULT CSkinDropList::OnPrint(WPARAM wParam, LPARAM lParam) {
    UpdateScrollBar();
    const LRESULT result = Default(WM_PRINT, wParam, lParam);
    if (!(lParam & PRF_NONCLIENT) || !IsAlive()) return result;
    CDC dc(reinterpret_cast<HDC>(wParam));
    PaintBorder(dc);
    return result;
}

LRESULT CSkinDropList::OnPrintClient(HDC dc) {
    PrintList(dc);
    if (!IsAlive()) return 1;
    Invalidate(FALSE);
    UpdateWindow();
    return 1;
}

void CSkinDropList::PrintList(HDC dc) {
    CountVisible();
    if (!IsOwnerDrawn() && Count() <= visibleItems) HideScrollBar();
    const tavix::DropRows rows = Rows();
    tavix::PaintOffscreen(dc, rows.client, [&](CDC& memory) {
        PaintContent(memory, rows.client, rows, kCurrentState);
        if (!IsAlive() || !IsBarVisible()) return;
        CRect bar = rows.client;
        bar.OffsetRect(1, 0);
        bar.left = bar.right - BarWidth();
        scrollBar->PaintTo(memory, bar.left, bar.top, bar.right, bar.bottom);
    });
    if (!IsAlive() || !IsBarVisible()) return;
    UpdateScrollBar();
    if (!HasBar()) return;
    ::InvalidateRect(Bar(), nullptr, TRUE);
    ::UpdateWindow(Bar());
}
