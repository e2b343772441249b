/* CSkinDropList: the list that a combo box opens. */
#pragma once

#include <memory>
#include <string>

#include "controls/drop_list_paint.h"
#include "engine/skin_wnd_base.h"
#include "tavixskin/framework/containers.h"
#include "tavixskin/framework/string.h"

class CSkinComboBox;
class CSkinScrollBar;

/*
 * The skin of "ComboLBox" windows. It paints the list, keeps selection and scroll position, and has
 * a scroll bar of the skin as a child. The native list box is the store of the strings and their
 * data. A list that no skinned combo box owns is left to the native control altogether.
 */
class CSkinDropList : public CSkinWndBaseClass {
public:
    ~CSkinDropList() override;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /* What the factory does for a list of a skinned combo box. */
    void PairWith(CSkinComboBox* owner);
    /* The combo box is gone. */
    void Unpair() { combo = nullptr; }

    /* Makes the item current; -1 for an index that the list doesn't have, else the current item. */
    int SetCurrentItem(int item);
    int Count() const;
    /* False, with the text as it was, for an item that doesn't exist or is no string. */
    bool ReadText(int item, CString& text) const;

    // The combo box reads and sets these.
    int topItem = 0;       // index of the first visible row
    int currentItem = -1;  // selected and hot in one; -1 for none

    // A reserve: the library puts nothing in them.
    CImageList itemImages;
    CMapPtrToPtr itemImageMap;  // from an item's index to its image's index

private:
    LRESULT OnCreate(WPARAM wParam, LPARAM lParam);
    LRESULT OnSize(WPARAM wParam, LPARAM lParam);
    LRESULT OnPaint();
    LRESULT OnNcPaint();
    LRESULT OnKey(WPARAM key);
    LRESULT OnMouseMove(WPARAM keys, LPARAM lParam);
    LRESULT OnPress(WPARAM keys, LPARAM lParam);
    LRESULT OnRelease(LPARAM lParam);
    LRESULT OnWheel(int delta);
    LRESULT OnChangedItems(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnReset(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnPrint(WPARAM wParam, LPARAM lParam);
    LRESULT OnPrintClient(HDC dc);

    void CreateScrollBar(HWND self);
    void PositionScrollBar();
    CRect ScrollBarPlace() const;
    void UpdateScrollBar();
    void HideScrollBar();
    void OnScroll(int code);
    void ScrollTo(int top, int code);
    void ForwardToBar(UINT message, WPARAM keys, const POINT& point);
    void CloseList();

    int ItemHeight() const;
    void CountVisible();
    tavix::DropRows Rows() const;
    void PaintContent(CDC& dc, const CRect& area, const tavix::DropRows& rows, UINT currentState) const;
    void PaintRows(CDC& dc, const tavix::DropRows& rows) const;
    void DrawOwnerRows(HDC dc, const tavix::DropRows& rows, UINT currentState) const;
    void PrintList(HDC dc);
    void PaintBorder(CDC& dc) const;
    bool HasText(int item) const;
    std::wstring WideText(int item) const;
    bool IsOwnerDrawn() const;
    bool HasBar() const;
    bool IsBarVisible() const;
    HWND Bar() const;
    HWND ComboWindow() const;
    bool IsAlive() const { return m_hWnd && ::IsWindow(m_hWnd); }

    DWORD style = 0;    // as the window had it at WM_CREATE
    DWORD exStyle = 0;  // the same; only kept
    std::unique_ptr<CSkinScrollBar> scrollBar;
    CSkinComboBox* combo = nullptr;
    UINT controlId = 0;
    BOOL hasVScroll = FALSE;
    int visibleItems = 0;        // rows that fit
    int defaultItemHeight = 14;  // of an empty list's rows
};
