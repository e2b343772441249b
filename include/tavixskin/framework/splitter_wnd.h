/* CSplitterWnd: a window that its panes share, with bars between them that the user drags. */
#pragma once

#include <array>
#include <span>

#include "tavixskin/framework/gdi.h"
#include "tavixskin/framework/wnd.h"

/* The style of a splitter that Create made: the user adds and removes its second row and column. */
constexpr DWORD SPLS_DYNAMIC_SPLIT = 0x0001;

/* The id of the pane at row 0, column 0; see CSplitterWnd::IdFromRowCol. */
constexpr UINT AFX_IDW_PANE_FIRST = 0xE900;

/* The most panes in a row, and the most in a column. */
constexpr int kMaxSplitterPanes = 16;

/*
 * A static splitter has as many rows and columns as it was created with, up to 16 each. A
 * dynamic one starts with a single pane and has at most two rows and two columns; while one may
 * still come, its bar waits at the left or top edge as a split box, from where it is dragged in.
 *
 * A pane is any child window whose id is IdFromRowCol(row, column). Fill a static splitter by
 * creating such children, or with SetPane, and call RecalcLayout when all are there. A dynamic
 * splitter asks CreatePane for its panes. A splitter may itself be the pane of another one. Panes
 * that are controls talk to the splitter's parent: WM_COMMAND and WM_NOTIFY go on to it.
 *
 * Tracking: a bar is dragged with the left button, both bars where they cross. Escape, or the
 * loss of the capture or the focus, ends it with nothing changed. A double click on a split
 * box splits in the middle, one on the bar of a dynamic splitter takes the split back.
 *
 * Sizes are in pixels, from 0 to 32767; others are brought into that range.
 */
class TAVIX_API CSplitterWnd : public CWnd {
    DECLARE_DYNAMIC(CSplitterWnd)
public:
    /* What OnDrawSplitter draws. */
    enum ESplitType { splitBox, splitBar, splitIntersection, splitBorder };

    /* A row or a column. */
    struct CRowColInfo {
        int nMinSize = 0;    // one that is to be smaller is not shown
        int nIdealSize = 0;  // the size asked for; the last one takes what remains
        int nCurSize = 0;    // the size that it has; 0 if it isn't shown
    };

    /* A place on the splitter that can be dragged. */
    struct CHit {
        int row = -1;      // the row above the bar, or -1
        int column = -1;   // the column left of the bar, or -1; row and column: where bars cross
        bool box = false;  // a split box in the bar's place
        explicit operator bool() const { return row >= 0 || column >= 0; }
        bool operator==(const CHit&) const = default;
    };

    CSplitterWnd();
    /* Destroys the window if it is still there. */
    ~CSplitterWnd() override;

    /* A static splitter without panes yet. False if a number is not from 1 to 16, or no window comes. */
    bool CreateStatic(HWND parent, int rows, int columns, DWORD style = WS_CHILD | WS_VISIBLE,
                      UINT id = AFX_IDW_PANE_FIRST);
    /*
     * A dynamic splitter with its first pane, for up to two rows and two columns of at least that
     * size. False if it may have more, or if the window or its first pane can't be made.
     */
    bool Create(HWND parent, int maxRows, int maxColumns, const SIZE& minSize,
                DWORD style = WS_CHILD | WS_VISIBLE | SPLS_DYNAMIC_SPLIT, UINT id = AFX_IDW_PANE_FIRST);

    int GetRowCount() const;
    int GetColumnCount() const;
    bool IsDynamic() const;

    /* The id of a pane's window. */
    UINT IdFromRowCol(int row, int column) const;
    /* The pane's window; null if there is none. Not the caller's, and of use for the message in hand. */
    CWnd* GetPane(int row, int column) const;
    /* Whether the window is a pane, and then where; `row` and `column` may be null. */
    bool IsChildPane(HWND window, int* row, int* column) const;
    /*
     * Makes a window the pane, as a child of the splitter, and asks for that size for its row and
     * column. False, with nothing done, if there is no such place or it is taken.
     */
    bool SetPane(int row, int column, HWND window, const SIZE& idealSize);

    /* Current and minimum size; no such row or column: 0 and 0. */
    void GetRowInfo(int row, int& current, int& minimum) const;
    void GetColumnInfo(int column, int& current, int& minimum) const;
    /* In force with the next RecalcLayout. No such row or column: nothing. */
    void SetRowInfo(int row, int ideal, int minimum);
    void SetColumnInfo(int column, int ideal, int minimum);

    /* Sizes rows and columns anew and puts the panes in their places. */
    virtual void RecalcLayout();

    /*
     * Gives a dynamic splitter its second row or column, the first keeping `before` pixels. False
     * if it has two, if one of the two would be too small, or if CreatePane makes no pane.
     */
    virtual bool SplitRow(int before);
    virtual bool SplitColumn(int before);
    /* Takes one of the two away, with its panes; for a dynamic splitter with two only. */
    virtual void DeleteRow(int row);
    virtual void DeleteColumn(int column);

    /* The pane that has the focus, in itself or in a child; null if none has. */
    CWnd* GetActivePane(int* row = nullptr, int* column = nullptr) const;
    /* Gives the pane the focus. */
    void SetActivePane(int row, int column);
    /* Gives the focus to the next pane, row by row, or to the one before. */
    void ActivateNext(bool previous = false);
    /*
     * Starts tracking without the mouse: arrow keys move the bar, with Ctrl by single pixels,
     * Enter or a click puts it there. False if nothing can be dragged.
     */
    bool DoKeyboardSplit();

    /* What can be dragged at a point of the client area. */
    CHit HitTest(const POINT& point) const;
    bool IsTracking() const;

    bool OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

protected:
    /*
     * Makes a pane of a dynamic splitter: a child of this window with the id IdFromRowCol(row,
     * column), at any place and of any size. The object stays the host's. Null: no split. The base
     * makes none.
     */
    virtual CWnd* CreatePane(int row, int column);
    /* Ends a pane of a dynamic splitter; the base destroys its window. */
    virtual void DeletePane(int row, int column);

    /*
     * Draws a part in its rectangle of the client area; what lies below panes is clipped. With a
     * null context the rectangle is to be drawn at the next WM_PAINT.
     */
    virtual void OnDrawSplitter(CDC* pDC, ESplitType nType, const CRect& rect);
    /* Shows the tracker bar, and takes it away when called once more with the same rectangle. */
    virtual void OnInvertTracker(const CRect& rect);
    virtual void SetSplitCursor(const CHit& hit);

    virtual void StartTracking(const CHit& hit);
    virtual void StopTracking(bool accept);
    /*
     * The bar below `row` was dragged to y, or the bar right of `col` to x, of the client area. The
     * row or column gets that size; one that would be smaller than its minimum is no longer shown,
     * and is deleted from a dynamic splitter. The layout follows afterwards.
     */
    virtual void TrackRowSize(int y, int row);
    virtual void TrackColumnSize(int x, int col);

    /*
     * The size that a drag to x gives the column: x in the client co-ordinates of its uppermost pane.
     * False if there is no bar right of the column.
     */
    bool ColumnSizeAt(int x, int col, int& size) const;
    /* The end of a drag: what the size leaves too small is not shown, or deleted. */
    void DropNarrowColumn(int col, int size);

    /* The part of the client area that panes and the bars between them share. */
    CRect GetInsideRect() const;
    /* The rectangle of a pane. */
    CRect GetPaneRect(int row, int column) const;
    /* The rectangle of a bar, a crossing or a split box. */
    CRect GetHitRect(const CHit& hit) const;

    // Thickness of a bar; room between two panes; the pane's border, and how much of it lies outside
    // the pane. The constructors set them.
    int m_cxSplitter, m_cySplitter;
    int m_cxSplitterGap, m_cySplitterGap;
    int m_cxBorder, m_cyBorder;
    int m_cxBorderShare, m_cyBorderShare;

    int m_nRows = 0, m_nCols = 0;
    int m_nMaxRows = 0, m_nMaxCols = 0;
    std::array<CRowColInfo, kMaxSplitterPanes> m_pRowInfo, m_pColInfo;

private:
    enum class Axis { Rows, Columns };
    std::span<CRowColInfo> Panes(Axis axis);
    std::span<const CRowColInfo> Panes(Axis axis) const;
    int Gap(Axis axis) const;
    int BarInset(Axis axis) const;

    bool MakeWindow(HWND parent, DWORD style, UINT id);
    HWND PaneWindow(int row, int column) const;
    HWND PaneWindow(Axis axis, int index, int across) const;
    bool CanSplit(Axis axis) const;
    int SizeAt(Axis axis, int position, int index) const;
    bool HasBarAfter(Axis axis, int index) const;
    void DropNarrow(Axis axis, int index, int size);
    void TrackSize(Axis axis, int position, int index);
    bool Split(Axis axis, int before);
    void Delete(Axis axis, int index);
    void GetInfo(Axis axis, int index, int& current, int& minimum) const;
    void SetInfo(Axis axis, int index, int ideal, int minimum);
    void DrawAll(CDC& dc);

    void MoveTracker(const POINT& to);
    void ShowTracker(bool show);
    void EndDrag(Axis axis, const CHit& hit, int position);
    CRect TrackerBar(Axis axis) const;

    LRESULT OnPaint(WPARAM wParam, LPARAM lParam);
    LRESULT OnEraseBackground(WPARAM wParam, LPARAM lParam);
    LRESULT OnSize(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetCursor(WPARAM wParam, LPARAM lParam);
    LRESULT OnMouseMove(WPARAM wParam, LPARAM lParam);
    LRESULT OnButtonDown(WPARAM wParam, LPARAM lParam);
    LRESULT OnButtonUp(WPARAM wParam, LPARAM lParam);
    LRESULT OnDoubleClick(WPARAM wParam, LPARAM lParam);
    LRESULT OnKeyDown(WPARAM wParam, LPARAM lParam);
    LRESULT OnDialogCode(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetFocus(WPARAM wParam, LPARAM lParam);
    LRESULT OnCancelTracking(WPARAM wParam, LPARAM lParam);
    LRESULT OnCaptureChanged(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    // Tracking. Points are those of the tracker's left top corner.
    bool m_bTracking = false;
    bool m_bTrackerShown = false;
    bool m_bUpdateLocked = false;
    CHit m_hitTracked;
    CPoint m_ptTracker;
    CPoint m_ptTrackStart;
    CPoint m_ptTrackOffset;  // from the corner to the pointer
    CRect m_rectTrackLimit;  // where the corner may be, all four edges included
    CRect m_rectTracked;     // around all places where the tracker was shown
    HWND m_hWndFormerFocus = nullptr;
};
