/* CSkinScrollBar: a scroll bar that draws itself from the skin's bitmaps. */
#pragma once

#include "tavixskin/framework/scroll_bar.h"

/*
 * A real child window that looks and works like a scroll bar: it covers a host's native bar, takes
 * over a "ScrollBar" control, or serves a list. Positions are signed, the page too.
 */
class CSkinScrollBar : public CScrollBar {
    DECLARE_DYNAMIC(CSkinScrollBar)
    DECLARE_MESSAGE_MAP()
public:
    CSkinScrollBar();
    ~CSkinScrollBar() override;

    /* Makes the window class "TavixScrollBar10" known; 0 if that fails. */
    static int RegisterClass();
    /* SBS_VERT in the style makes it vertical. 0 if the window can't be made. */
    virtual int Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    /* Takes over a native scroll bar control; 0 if the window has a permanent object already. */
    int AttachControl(HWND window);

    /* Who gets the notifications: the window, if it exists; otherwise the framework's owner, or none. */
    int SetOwner(HWND owner);
    int SetOwner(CWnd* owner);
    /* Copies the native state of the owner's bar. */
    void RefreshFromOwner();
    /* Draws the bar, as it stands, into a rectangle of another context. */
    void PaintTo(HDC dc, int left, int top, int right, int bottom);

    /* Each sends the bar its SBM_ message. */
    int GetScrollPos();
    int SetScrollPos(int pos, BOOL redraw);
    void SetScrollRange(int min, int max, BOOL redraw);
    void GetScrollRange(int* min, int* max);
    int SetScrollInfo(SCROLLINFO* info, BOOL redraw);
    int GetScrollInfo(SCROLLINFO* info, UINT mask);

    int m_bHorz = 1;
    HWND m_hOwner = nullptr;   // receiver of notifications; null: the framework's owner or parent
    int m_nThumbLen;           // along the bar, in pixels
    int m_nArrowLen;           // of each arrow button
    int m_nPos = 0;
    int m_nMin = 0;
    int m_nMax = 0;
    int m_nPage = 0;
    int m_nThumbPixel = 0;     // start of the thumb along the bar, in client co-ordinates
    int m_nLastTrackPos = -1;  // last position sent with SB_THUMBTRACK
    CPoint m_ptLast;           // the mouse at the last step of the thumb
    int m_nGrabOffset = 0;     // from the thumb's start to where it was grabbed
    int m_bThumbPressed = 0;
    int m_bDragging = 0;       // the thumb follows the mouse and m_nThumbPixel rules
    int m_bArrow1Pressed = 0;
    int m_bArrow2Pressed = 0;
    UINT_PTR m_nRepeatTimer = 0;
    UINT_PTR m_nHoverTimer = 0;
    int m_nRepeatPart = 0;     // 1 first arrow, 2 second arrow, 3 page before the thumb, 4 after it
    int m_bRepeatFirst = 0;    // the timer still has its first long delay
    int m_nHotPart = 0;        // 0 none, 1 first arrow, 2 second arrow, 3 thumb, 4 track
    int m_bAttached = 0;       // took over a window; notifications carry its handle
    int m_bDropListBar = 0;    // a button release gives the capture to the parent
};
