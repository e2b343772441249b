/* Mouse, keyboard and scrolling of CSkinListBox. */
#include <algorithm>

#include "controls/list_box_skin.h"

using tavix::ListPart;

// A bar that is hidden still has its strip.
tavix::ListHit CSkinListBox::HitTest(const POINT& point) const {
    const tavix::BarExtents bars{vertBar ? BarWidth() : 0, horzBar ? ::GetSystemMetrics(SM_CYHSCROLL) : 0};
    return tavix::HitTestList(CurrentLayout(), bars, point);
}

CRect CSkinListBox::ClientLessBar() const {
    CRect area = clientRect;
    if (IsBarVisible()) area.right -= BarWidth();
    return area;
}

// ---------------------------------------------------------------- mouse

// The parent hears of the selection at the release.
LRESULT CSkinListBox::OnPress(WPARAM keys, const POINT& point) {
    const tavix::ListHit hit = HitTest(point);
    if (hit.part != ListPart::Outside && ::GetFocus() != m_hWnd) SetFocus();
    if (!IsAlive()) return 0;
    if (hit.part == ListPart::VertBar && HasBarWindow()) {
        // With the point as it is, in the list's own co-ordinates.
        ::SendMessageA(vertBar->m_hWnd, WM_LBUTTONDOWN, keys, MAKELPARAM(point.x, point.y));
        return 0;
    }
    // Whoever lost or got the focus may have changed the items.
    if (hit.part != ListPart::Item || !HasItem(hit.item)) return 0;
    if (keys & (MK_CONTROL | MK_SHIFT)) {
        if (multiSelect) Toggle(hit.item);
    } else if (multiSelect) {
        SelectOnly(hit.item);
    } else {
        MoveCurrent(hit.item);
    }
    return 0;
}

// Every marked row is repainted on its own.
void CSkinListBox::SelectOnly(int item) {
    for (int i = 0; i < selectionMap.Length(); ++i) {
        if (!selectionMap.Has(i)) continue;
        selectionMap.Set(i, false);
        InvalidateItem(i);
    }
    selectionMap.Set(item, true);
    InvalidateItem(item);
    UpdateWindow();
}

// Shift is no range: both keys toggle.
void CSkinListBox::Toggle(int item) {
    const bool marked = !selectionMap.Has(item);
    selectionMap.Set(item, marked);
    DrawRow(item, marked ? RowLook::Selected : RowLook::Plain);
}

// Two rows straight on the screen, without a full painting.
void CSkinListBox::MoveCurrent(int item) {
    if (current != -1) DrawRow(current, RowLook::Plain);
    if (!IsAlive()) return;
    DrawRow(item, RowLook::Selected);
    current = item;
}

// Dragging adds to a multiple selection and never takes away.
LRESULT CSkinListBox::OnMouseMove(WPARAM keys, const POINT& point) {
    const tavix::ListHit hit = HitTest(point);
    if (hit.part == ListPart::Nothing) return 0;
    if (hit.item == -1) {
        if (hoverItem == -1) ::ReleaseCapture();
        return 0;
    }
    if (!(keys & MK_LBUTTON) || !multiSelect || selectionMap.Has(hit.item)) return 0;
    selectionMap.Set(hit.item, true);
    DrawRow(hit.item, RowLook::Selected);
    return 0;
}

LRESULT CSkinListBox::OnDoubleClick(WPARAM wParam, LPARAM lParam) {
    Default(WM_LBUTTONDBLCLK, wParam, lParam);
    if (IsAlive() && HitTest(CPoint(lParam)).part == ListPart::Item) NotifyOnly(LBN_DBLCLK);
    return 0;
}

// A line a message, whatever the wheel's settings.
LRESULT CSkinListBox::OnMouseWheel(WPARAM wParam) {
    if (IsBarVisible()) OnScroll(static_cast<short>(HIWORD(wParam)) >= 0 ? SB_LINEUP : SB_LINEDOWN, 0);
    return 0;
}

// ---------------------------------------------------------------- scrolling

LRESULT CSkinListBox::OnScroll(int code, int position) {
    if (!HasBarWindow()) return 0;
    const auto step = tavix::ScrollStepOf(code, position, vertBar->GetScrollPos(), CurrentLayout());
    if (!step) return 0;
    topItem = step->top;
    CRect area = clientRect;
    area.right -= BarWidth();
    ::InvalidateRect(m_hWnd, &area, FALSE);
    vertBar->SetScrollPos(step->pos, TRUE);
    return 0;
}

void CSkinListBox::MoveBar(int by) {
    if (HasBarWindow()) vertBar->SetScrollPos(vertBar->GetScrollPos() + by, TRUE);
}

// ---------------------------------------------------------------- keyboard

LRESULT CSkinListBox::OnKeyDown(WPARAM wParam, LPARAM lParam) {
    return OnKey(wParam) ? 0 : Default(WM_KEYDOWN, wParam, lParam);
}

// True if the key was taken. The parent is told even if nothing has changed; with a multiple selection
// that is all that the keys do.
bool CSkinListBox::OnKey(WPARAM key) {
    switch (key) {
        case VK_PRIOR:
        case VK_NEXT:
        case VK_END:
        case VK_HOME:
            return true;  // taken, and nothing happens
        case VK_LEFT:
            if (!multiSelect) StepLeft();
            break;
        case VK_UP:
            if (!multiSelect) StepUp();
            break;
        case VK_RIGHT:
            if (!multiSelect) StepRight();
            break;
        case VK_DOWN:
            if (!multiSelect) StepDown();
            break;
        default:
            return false;
    }
    NotifyOnly(LBN_SELCHANGE);
    return true;
}

// A column back. The top item is not bounded, and what shows is left to the next painting.
void CSkinListBox::StepLeft() {
    if (!multiColumn || current - rows < 0) return;
    topItem -= rows;
    current -= rows;
}

void CSkinListBox::StepUp() {
    if (current > 0 && current - 1 >= topItem) {
        DrawRow(current, RowLook::Plain);
        if (!IsAlive()) return;
        --current;
        DrawRow(current, RowLook::Selected);
    } else if (multiColumn || topItem < 1) {
        topItem = std::max(topItem - rows, 0);
    } else {
        --topItem;
        --current;
        MoveBar(-1);
        Invalidate(TRUE);
    }
}

void CSkinListBox::StepRight() {
    const int count = ItemCount();
    if (!multiColumn || topItem + rows >= count) return;
    topItem += rows;
    current = std::min(current + rows, count - 1);
    const CRect area = ClientLessBar();
    ::InvalidateRect(m_hWnd, &area, FALSE);
}

void CSkinListBox::StepDown() {
    if (current == -1) {
        current = 0;
    } else {
        DrawRow(current, RowLook::Plain);
        if (!IsAlive()) return;
        if (current < ItemCount() - 1) ++current;
    }
    const int last = multiColumn ? rows : rows - 1;
    if (current <= topItem + last) {
        DrawRow(current, RowLook::Selected);
        if (!IsAlive()) return;
    } else if (multiColumn) {
        topItem += rows;
    } else {
        ++topItem;
        MoveBar(1);
    }
    Invalidate(TRUE);
}
