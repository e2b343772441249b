#include "controls/list_box_skin.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <new>

#include "controls/list_box_paint.h"
#include "controls/parent_background.h"
#include "draw/bitmap_region.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "frames/non_client.h"
#include "tavixskin/value_ids.h"

namespace {

constexpr UINT kVertBarId = 10001;
constexpr DWORD kVertBarStyle = WS_CHILD | WS_VISIBLE | SBS_VERT | SBS_RIGHTALIGN;
constexpr DWORD kTakenStyles = WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_MULTIPLESEL | LBS_EXTENDEDSEL |
                               LBS_MULTICOLUMN | LBS_USETABSTOPS;

// A margin of more than a window's co-ordinates can express is none that a skin means.
int Bounded(LONG extent) { return std::clamp(static_cast<int>(extent), 0, 0x7FFF); }
int WidthOf(DWORD bitmap) { return Bounded(tavix::BitmapSize(tavix::SkinBitmap(bitmap)).cx); }
int HeightOfBitmap(DWORD bitmap) { return Bounded(tavix::BitmapSize(tavix::SkinBitmap(bitmap)).cy); }

}  // namespace

CSkinListBox::CSkinListBox()
    : frameLeft(WidthOf(BMP_LIST_LEFT)),
      frameTop(HeightOfBitmap(BMP_LIST_TOP)),
      frameRight(WidthOf(BMP_LIST_RIGHT)),
      frameBottom(HeightOfBitmap(BMP_LIST_BOTTOM)) {}

LRESULT CSkinListBox::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return OnCreate(wParam, lParam);
        case WM_SIZE:
            return OnSize(wParam, lParam);
        case WM_PAINT:
            return OnPaint();
        case WM_ERASEBKGND:
            return 1;
        case WM_NCCALCSIZE:
            return OnNcCalcSize(lParam);
        case WM_NCPAINT:
            return OnNcPaint();
        case WM_NCMOUSEMOVE:
        case WM_NCLBUTTONDOWN:
        case WM_NCLBUTTONDBLCLK:
        case WM_PRINT:
            return 0;
        case WM_SETFOCUS:
            NotifyOnly(LBN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            NotifyOnly(LBN_KILLFOCUS);
            return 0;
        case WM_KEYDOWN:
            return OnKeyDown(wParam, lParam);
        case WM_VSCROLL:
            return OnScroll(LOWORD(wParam), HIWORD(wParam));
        case WM_MOUSEMOVE:
            return OnMouseMove(wParam, CPoint(lParam));
        case WM_LBUTTONDOWN:
            return OnPress(wParam, CPoint(lParam));
        case WM_LBUTTONUP:
            // On every release, wherever and whatever happened: hosts look at the selection then.
            NotifyOnly(LBN_SELCHANGE);
            return 0;
        case WM_LBUTTONDBLCLK:
            return OnDoubleClick(wParam, lParam);
        case WM_MOUSEWHEEL:
            return OnMouseWheel(wParam);
        case LB_ADDSTRING:
            return OnAddString(wParam, lParam);
        case LB_INSERTSTRING:
            return OnInsertString(wParam, lParam);
        case LB_DELETESTRING:
            return OnDeleteString(wParam, lParam);
        case LB_RESETCONTENT:
            return OnResetContent(wParam, lParam);
        case LB_SETSEL:
            return SetMark(static_cast<int>(lParam), wParam != 0);
        case LB_SETCURSEL:
            return SetCurrent(static_cast<int>(wParam));
        case LB_GETCURSEL:
            return OnGetCurSel(wParam, lParam);
        case LB_GETTOPINDEX:
            return topItem;
        case LB_SETTOPINDEX:
            return SetTopIndex(static_cast<int>(wParam));
        case LB_GETSELCOUNT:
            return multiSelect ? selectionMap.Count() : LB_ERR;
        case LB_GETSELITEMS:
            return GetMarkedItems(static_cast<int>(wParam), reinterpret_cast<int*>(lParam));
        case LB_SELITEMRANGEEX:
            return SetRange(static_cast<int>(wParam), static_cast<int>(lParam));
        case LB_ITEMFROMPOINT:
            return ItemFromPoint(CPoint(lParam));
        default:
            return Default(message, wParam, lParam);
    }
}

// ---------------------------------------------------------------- life

LRESULT CSkinListBox::OnCreate(WPARAM wParam, LPARAM lParam) {
    if (lParam) StripStyles(*reinterpret_cast<CREATESTRUCTA*>(lParam));
    Default(WM_CREATE, wParam, lParam);
    if (IsAlive()) AfterCreate();
    return 0;
}

// The skin hears of the creation before the native control does, and changes what that will be told. The
// structure has the same shape in both character sets.
void CSkinListBox::StripStyles(CREATESTRUCTA& create) {
    style = static_cast<DWORD>(create.style);
    exStyle = create.dwExStyle;
    controlId = static_cast<DWORD>(reinterpret_cast<UINT_PTR>(create.hMenu));
    multiSelect = (style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
    multiColumn = (style & LBS_MULTICOLUMN) != 0;
    hasVScroll = (style & WS_VSCROLL) != 0;
    hasHScroll = (style & WS_HSCROLL) != 0;
    useTabStops = (style & LBS_USETABSTOPS) != 0;
    create.style = static_cast<LONG>((style & ~kTakenStyles) | WS_CLIPCHILDREN);
    // Native controls read the window's styles too. Those of the structure are not taken over: a window
    // that will be visible isn't yet.
    const auto own = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE));
    ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG>((own & ~kTakenStyles) | WS_CLIPCHILDREN));
}

void CSkinListBox::AfterCreate() {
    if (!multiSelect) current = static_cast<int>(AskNative(LB_GETCURSEL));
    if (ItemCount() > 0) itemHeight = HeightOf(0);
    created = TRUE;
}

LRESULT CSkinListBox::OnNcCalcSize(LPARAM lParam) const {
    auto* rect = reinterpret_cast<RECT*>(lParam);
    if (!rect) return 0;
    // A frame that is thicker than the window leaves nothing, not less.
    const LONG left = rect->left + frameLeft, top = rect->top + frameTop;
    *rect = {left, top, std::max(left, rect->right - frameRight), std::max(top, rect->bottom - frameBottom)};
    return 0;
}

// ---------------------------------------------------------------- the item store

// Asked directly: a host that has subclassed the list is not to be led through the skin's own questions.
LRESULT CSkinListBox::AskNative(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::CallWindowProcA(m_pfnPrevWndProc, m_hWnd, message, wParam, lParam);
}

int CSkinListBox::ItemCount() const { return std::max(static_cast<int>(AskNative(LB_GETCOUNT)), 0); }

int CSkinListBox::HeightOf(int item) const {
    return std::max(static_cast<int>(AskNative(LB_GETITEMHEIGHT, static_cast<WPARAM>(item))), 0);
}

// Only items of a variable height have to be asked one by one.
int CSkinListBox::HeightOfItems(int from, int end) const {
    if (end <= from) return 0;
    constexpr std::int64_t kMost = INT_MAX / 4;
    std::int64_t height = 0;
    if (!(style & LBS_OWNERDRAWVARIABLE))
        height = (std::int64_t{end} - from) * HeightOf(0);
    else
        for (int i = std::max(from, 0); i < end && height < kMost; ++i) height += HeightOf(i);
    return static_cast<int>(std::min(height, kMost));
}

// Counted from the top item, all in one column: the further columns of a list are there for hits alone.
// Items above the top one lie where that does. Empty for an item that isn't there.
CRect CSkinListBox::RowRect(int item) const {
    CRect rect;
    if (!HasItem(item) || AskNative(LB_GETITEMRECT, static_cast<WPARAM>(item),
                                    reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect))) == LB_ERR)
        return {};
    const int height = rect.Height();
    rect.top = HeightOfItems(topItem, item);
    rect.bottom = rect.top + height;
    if (IsBarVisible()) rect.right = clientRect.right - BarWidth();
    return rect;
}

// As much of the row as the client area has room for.
CRect CSkinListBox::ItemRect(int item) const {
    CRect rect = RowRect(item);
    rect.bottom = std::min(rect.bottom, clientRect.bottom);
    return rect;
}

void CSkinListBox::InvalidateItem(int item) const {
    const CRect rect = ItemRect(item);
    if (!rect.IsRectEmpty()) ::InvalidateRect(m_hWnd, &rect, FALSE);
}

tavix::ListLayout CSkinListBox::CurrentLayout() const {
    return {clientRect, topItem, rows, columns, columnWidth, itemHeight, ItemCount(), multiColumn != FALSE};
}

// ---------------------------------------------------------------- layout

LRESULT CSkinListBox::OnSize(WPARAM wParam, LPARAM lParam) {
    Default(WM_SIZE, wParam, lParam);
    if (!IsAlive()) return 0;
    GetClientRect(&clientRect);
    if (clientRect.IsRectEmpty()) return 0;
    Layout();
    PlaceVertBar();
    ShapeWindow();
    return 0;
}

void CSkinListBox::MeasureRows() {
    // No control has items without height; a division must not rest on that.
    if (ItemCount() > 0) itemHeight = std::max(HeightOf(0), 1);
    rows = tavix::RowsThatFit(clientRect.Height(), itemHeight, multiColumn);
}

void CSkinListBox::Layout() {
    MeasureRows();
    UpdateVertBar();
    const int count = ItemCount();
    if (HasBarWindow()) ::ShowWindow(vertBar->m_hWnd, rows >= count ? SW_HIDE : SW_SHOW);
    topItem = tavix::BoundedTopItem(topItem, rows, count);
    WriteBarRange();
    columnWidth = tavix::ColumnWidthOf(clientRect.Width(), multiColumn);
    columns = hasHScroll ? 1 : tavix::ColumnsThatFit(clientRect.Width(), columnWidth);
}

// A list without WS_VSCROLL never gets a bar, one that asked for it gets it when the items no longer fit.
void CSkinListBox::UpdateVertBar() {
    MeasureRows();
    if (!hasVScroll) return;
    if (rows < ItemCount()) {
        if (HasBarWindow() && !IsBarShown()) ::ShowWindow(vertBar->m_hWnd, SW_SHOW);
        if (!vertBar && !CreateVertBar()) return;
        WriteBarRange();
    } else if (IsBarShown()) {
        ::ShowWindow(vertBar->m_hWnd, SW_HIDE);
    }
}

bool CSkinListBox::CreateVertBar() {
    CRect place = clientRect;
    if (place.right - columnWidth - BarWidth() < 0) columnWidth = place.right - BarWidth();
    place.left = place.right - BarWidth();
    auto bar = std::unique_ptr<CSkinScrollBar>(new (std::nothrow) CSkinScrollBar);
    if (!bar || !bar->Create(kVertBarStyle, place, CWnd::FromHandle(m_hWnd), kVertBarId)) return false;
    bar->SetOwner(m_hWnd);
    vertBar = std::move(bar);
    return true;
}

void CSkinListBox::WriteBarRange() {
    if (!HasBarWindow()) return;
    // Called for each item that comes or goes: without the road of a message, and painted once.
    vertBar->SetRange(0, ItemCount() - 1, FALSE);
    vertBar->SetPage(rows);
}

// Also in a list that is hidden itself, which hosts fill and empty before they show it.
bool CSkinListBox::IsBarShown() const {
    return HasBarWindow() && (::GetWindowLongA(vertBar->m_hWnd, GWL_STYLE) & WS_VISIBLE) != 0;
}

bool CSkinListBox::IsBarVisible() const { return HasBarWindow() && ::IsWindowVisible(vertBar->m_hWnd); }

void CSkinListBox::PlaceVertBar() {
    if (!IsBarVisible()) return;
    CRect place = clientRect;
    place.left = place.right - BarWidth();
    // It mostly stands there already, which costs the system's messages all the same.
    if (tavix::WindowRectIn(vertBar->m_hWnd, m_hWnd) != place)
        ::SetWindowPos(vertBar->m_hWnd, nullptr, place.left, place.top, place.Width(), place.Height(),
                       SWP_NOZORDER | SWP_NOACTIVATE);
    if (HasBarWindow()) ::InvalidateRect(vertBar->m_hWnd, nullptr, TRUE);
}

void CSkinListBox::ShapeWindow() {
    CRect window;
    GetWindowRect(&window);
    CRgn shape;
    shape.CreateRectRgn(0, 0, window.Width(), window.Height());
    tavix::CutListCorners(shape, window.Size());
    tavix::SetShape(m_hWnd, shape, TRUE);
}

bool CSkinListBox::Notify(WORD code) const {
    HWND parent = IsAlive() ? GetParent() : nullptr;
    if (parent)
        ::SendMessageA(parent, WM_COMMAND, MAKEWPARAM(LOWORD(controlId), code),
                       reinterpret_cast<LPARAM>(m_hWnd));
    return IsAlive();
}
