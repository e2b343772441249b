/* CSkinListBox: the skin of "ListBox" windows. */
#pragma once

#include <memory>

#include "controls/list_box_layout.h"
#include "engine/skin_wnd_base.h"
#include "scroll/skin_scroll_bar.h"
#include "tavixskin/framework/gdi.h"

/*
 * Takes the styles that give a list box its behaviour away from the native control before that is
 * created, and then does frame, layout, painting, selection, scrolling and keyboard itself. The native
 * control stays as the store of strings, item data and item heights; it is told of no selection, and must
 * not be asked for one.
 */
class CSkinListBox : public CSkinWndBaseClass {
public:
    CSkinListBox();
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    enum class RowLook { Plain, Selected };

    // list_box_skin.cpp: life, layout, the item store
    LRESULT OnCreate(WPARAM wParam, LPARAM lParam);
    LRESULT OnSize(WPARAM wParam, LPARAM lParam);
    LRESULT OnNcCalcSize(LPARAM lParam) const;
    void StripStyles(CREATESTRUCTA& create);
    void AfterCreate();
    void MeasureRows();
    void Layout();
    void UpdateVertBar();
    bool CreateVertBar();
    void PlaceVertBar();
    void WriteBarRange();
    void ShapeWindow();

    LRESULT AskNative(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    int ItemCount() const;
    int HeightOf(int item) const;
    int HeightOfItems(int from, int end) const;
    bool HasItem(int item) const { return item >= 0 && item < ItemCount(); }
    CRect RowRect(int item) const;
    CRect ItemRect(int item) const;
    tavix::ListLayout CurrentLayout() const;
    bool IsBarShown() const;
    bool IsBarVisible() const;
    bool HasBarWindow() const { return vertBar && vertBar->m_hWnd; }
    // Width and height of the bars of the system, which the list's own have too.
    static int BarWidth() { return ::GetSystemMetrics(SM_CXVSCROLL); }

    // list_box_paint.cpp
    LRESULT OnPaint();
    LRESULT OnNcPaint();
    void PaintItems(CDC& target);
    void PaintOwnerDrawn(CDC& dc, const CRect& area, const CRect& clip);
    void PaintTexts(CDC& dc);
    void DrawRow(int item, RowLook look);
    void DrawOwnerRow(CDC& dc, int item, const CRect& client, bool selected);
    void DrawTextRow(CDC& dc, int item, const CRect& row, const CRect& client, RowLook look,
                     bool ownContext) const;
    void SendDrawItem(HDC dc, int item, UINT state, UINT id, const CRect& row);

    // list_box_selection.cpp
    LRESULT OnAddString(WPARAM wParam, LPARAM lParam);
    LRESULT OnInsertString(WPARAM wParam, LPARAM lParam);
    LRESULT OnDeleteString(WPARAM wParam, LPARAM lParam);
    LRESULT OnResetContent(WPARAM wParam, LPARAM lParam);
    LRESULT OnGetCurSel(WPARAM wParam, LPARAM lParam);
    LRESULT SetTopIndex(int item);
    LRESULT SetCurrent(int item);
    LRESULT SetMark(int item, bool marked);
    LRESULT SetRange(int first, int last);
    LRESULT GetMarkedItems(int capacity, int* items) const;
    LRESULT ItemFromPoint(const POINT& point) const;
    void TakeInItem(int item);
    void AfterDelete(int left);
    void RepaintIfShown();
    void PaintFrameAnew();
    bool IsSelected(int item) const { return multiSelect ? selectionMap.Has(item) : item == current; }

    // list_box_input.cpp
    LRESULT OnPress(WPARAM keys, const POINT& point);
    LRESULT OnMouseMove(WPARAM keys, const POINT& point);
    LRESULT OnDoubleClick(WPARAM wParam, LPARAM lParam);
    LRESULT OnMouseWheel(WPARAM wParam);
    LRESULT OnScroll(int code, int position);
    LRESULT OnKeyDown(WPARAM wParam, LPARAM lParam);
    tavix::ListHit HitTest(const POINT& point) const;
    void SelectOnly(int item);
    void Toggle(int item);
    void MoveCurrent(int item);
    bool OnKey(WPARAM key);
    void StepUp();
    void StepDown();
    void StepLeft();
    void StepRight();
    void MoveBar(int by);
    CRect ClientLessBar() const;

    // Tells the parent; false if that was the list's end.
    bool Notify(WORD code) const;
    void NotifyOnly(WORD code) const { static_cast<void>(Notify(code)); }
    void InvalidateItem(int item) const;
    bool IsOwnerDrawn() const { return (style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE)) != 0; }
    // False once a handler of the host has destroyed the window under a call.
    bool IsAlive() const { return m_hWnd && ::IsWindow(m_hWnd); }

    DWORD style = 0;    // as asked for, before anything was taken away
    DWORD exStyle = 0;  // the same; only kept
    BOOL multiSelect = FALSE;
    BOOL multiColumn = FALSE;
    BOOL useTabStops = FALSE;  // only kept
    BOOL hasHScroll = FALSE;
    BOOL hasVScroll = FALSE;
    int rows = 0;
    int itemHeight = 12;  // of the first item
    int topItem = 0;
    int columnWidth = 0;
    int columns = 0;
    int hoverItem = -1;             // reserved: there is no hover effect
    int current = -1;               // the selected item of a single selection, else the caret
    tavix::ItemMarks selectionMap;  // of a multiple selection
    int textOffset = 0;             // from the left edge; stays 0
    DWORD controlId = 0;
    CRect clientRect;                         // as of the last WM_SIZE
    std::unique_ptr<CSkinScrollBar> horzBar;  // never made: a level bar has no use yet
    std::unique_ptr<CSkinScrollBar> vertBar;  // made when the items first don't fit
    // Read once: a change of skin paints its pieces in the old thickness.
    int frameLeft;
    int frameTop;
    int frameRight;
    int frameBottom;
    BOOL created = FALSE;
};
