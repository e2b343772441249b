/* Selection of CSkinListBox: the messages that the native control, without its styles, can't answer. */
#include <algorithm>

#include "controls/list_box_skin.h"

// ---------------------------------------------------------------- items that come and go

LRESULT CSkinListBox::OnAddString(WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(LB_ADDSTRING, wParam, lParam);
    if (!IsAlive()) return result;
    TakeInItem(static_cast<int>(result));
    if (result >= 0) itemHeight = std::max(HeightOf(0), 1);
    PaintFrameAnew();
    return result;
}

LRESULT CSkinListBox::OnInsertString(WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(LB_INSERTSTRING, wParam, lParam);
    if (!IsAlive()) return result;
    TakeInItem(static_cast<int>(result));
    PaintFrameAnew();
    return result;
}

LRESULT CSkinListBox::OnDeleteString(WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(LB_DELETESTRING, wParam, lParam);
    if (IsAlive()) AfterDelete(static_cast<int>(result));
    PaintFrameAnew();
    return result;
}

// The marks are kept: those of the old content mark the new one.
LRESULT CSkinListBox::OnResetContent(WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Default(LB_RESETCONTENT, wParam, lParam);
    if (!IsAlive()) return result;
    current = -1;
    topItem = 0;
    UpdateVertBar();
    return result;
}

// A new item; negative if the control would not take it.
void CSkinListBox::TakeInItem(int item) {
    if (item < 0) return;
    if (multiSelect) selectionMap.Insert(item);
    if (current >= item) ++current;
    UpdateVertBar();
    RepaintIfShown();
}

// `left` is what the control answers: how many items are left, not which one has gone. That takes the last
// mark away and leaves those after the item where they stood.
void CSkinListBox::AfterDelete(int left) {
    if (left < 0) return;
    const int count = ItemCount();
    if (current >= count - 1) {
        topItem = std::max(topItem - 1, 0);
        current = count - 1;
        if (!Notify(LBN_SELCHANGE)) return;
    }
    if (count == 0) {
        current = -1;
        if (!Notify(LBN_SELCHANGE)) return;
        topItem = 0;
    }
    if (count <= rows) topItem = 0;
    if (multiSelect) selectionMap.Remove(left);
    UpdateVertBar();
    RepaintIfShown();
}

// A hidden list keeps no area to repaint: asking for it all the same is what filling one would cost most.
void CSkinListBox::RepaintIfShown() {
    if (::IsWindowVisible(m_hWnd)) Invalidate(TRUE);
}

void CSkinListBox::PaintFrameAnew() {
    if (IsAlive() && ::IsWindowVisible(m_hWnd)) ::SendMessageA(m_hWnd, WM_NCPAINT, 0, 0);
}

// ---------------------------------------------------------------- what is selected

LRESULT CSkinListBox::OnGetCurSel(WPARAM wParam, LPARAM lParam) {
    return !multiColumn && created ? current : Default(LB_GETCURSEL, wParam, lParam);
}

LRESULT CSkinListBox::SetTopIndex(int item) {
    if (!HasItem(item)) return LB_ERR;
    if (item == topItem) return 0;
    topItem = item;
    Invalidate(FALSE);
    return 0;
}

// A negative index clears. The parent is told, as if the user had done it; native lists tell nothing.
LRESULT CSkinListBox::SetCurrent(int item) {
    if (multiSelect || item >= ItemCount()) return LB_ERR;
    if (current != -1) InvalidateItem(current);
    current = item;
    InvalidateItem(current);
    UpdateWindow();
    NotifyOnly(LBN_SELCHANGE);
    return 1;
}

LRESULT CSkinListBox::SetMark(int item, bool marked) {
    if (!multiSelect || !HasItem(item)) return LB_ERR;
    selectionMap.Set(item, marked);
    InvalidateItem(item);
    UpdateWindow();
    return 1;
}

// The last item stays out. A range that runs backwards, which clears in native lists, changes nothing.
LRESULT CSkinListBox::SetRange(int first, int last) {
    if (!multiSelect || !HasItem(first) || !HasItem(last)) return LB_ERR;
    for (int i = first; i < last; ++i) selectionMap.Set(i, true);
    Invalidate(TRUE);
    UpdateWindow();
    return 1;
}

// Answers how many marks there are, even if the caller said that it has room for fewer.
LRESULT CSkinListBox::GetMarkedItems(int capacity, int* items) const {
    if (!multiSelect) return LB_ERR;
    int count = 0;
    for (int i = 0; i < selectionMap.Length(); ++i) {
        if (!selectionMap.Has(i)) continue;
        if (items && count < capacity) items[count] = i;
        ++count;
    }
    return count;
}

// The high word says that the point is inside, where native lists say that it is outside.
LRESULT CSkinListBox::ItemFromPoint(const POINT& point) const {
    CRect client;
    GetClientRect(&client);
    const bool inside = client.PtInRect(point);
    int index = -1;
    const int last = std::min(CurrentLayout().End(), ItemCount() - 1);
    for (int i = std::max(topItem, 0); inside && i <= last; ++i) {
        if (!ItemRect(i).PtInRect(point)) continue;
        index = i;
        break;
    }
    return static_cast<LRESULT>(static_cast<DWORD>(MAKELONG(index & 0xFFFF, inside ? 1 : 0)));
}
