/* CSkinScrollBar: a scroll bar that draws itself from the skin's bitmaps. */
#pragma once

#include <memory>

#include "scroll/scroll_bar_geometry.h"
#include "tavixskin/framework/gdi.h"
#include "tavixskin/framework/scroll_bar.h"

/*
 * A real child window that looks and works like a scroll bar: it covers a host's native bar, takes
 * over a "ScrollBar" control, or serves a list. Positions are signed, the page too.
 *
 * Whoever hears a notification, or paints below the bar, may destroy it: everything that runs
 * code of others is followed by a look whether the bar is still there.
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
    /*
     * Takes over a native scroll bar control, for good: the native procedure hears nothing more. 0 if
     * the window has a permanent object already. Also takes CS_DBLCLKS from the window's class.
     */
    int AttachControl(HWND window);

    /*
     * Who gets the notifications: the window, if it exists; otherwise the framework's owner, or none.
     * The result tells whether it existed.
     */
    int SetOwner(HWND owner);
    int SetOwner(CWnd* owner);
    /* Copies the native state of the owner's bar. */
    void RefreshFromOwner();
    /*
     * Draws the bar, as it stands, into a rectangle of another context. A size grip is drawn at the
     * context's origin.
     */
    void PaintTo(HDC dc, int left, int top, int right, int bottom);

    /* Each sends the bar its SBM_ message; without a window they answer from the members. */
    int GetScrollPos();
    /* 1, the answer to SBM_SETPOS, not the former position. */
    int SetScrollPos(int pos, BOOL redraw);
    void SetScrollRange(int min, int max, BOOL redraw);
    void GetScrollRange(int* min, int* max);
    int SetScrollInfo(SCROLLINFO* info, BOOL redraw);
    /* A mask of 0 leaves the one in the structure. */
    int GetScrollInfo(SCROLLINFO* info, UINT mask);

    /* The thumb's length follows the page. The result is the page, or -1 for a negative one. */
    int SetPage(int page);
    /* The same without the painting. */
    int TakePage(int page);
    void SetPos(int pos);
    void SetRange(int min, int max, BOOL redraw);
    int TrackLength() const;
    int PosToPixel(int pos) const;
    int PixelToPos(int pixel) const;
    /* Of the client area, with the thumb where it shows. */
    tavix::ScrollBarRects Rects() const;
    tavix::ScrollBarPart HitTest(const POINT& point) const;

    int m_bHorz = 1;
    HWND m_hOwner = nullptr;  // receiver of notifications; null: the framework's owner or parent
    int m_nThumbLen;          // along the bar, in pixels
    int m_nArrowLen;          // of each arrow button
    int m_nPos = 0;
    int m_nMin = 0;
    int m_nMax = 0;
    int m_nPage = 0;
    int m_nThumbPixel = 0;     // start of the thumb along the bar, in client co-ordinates
    int m_nLastTrackPos = -1;  // last position sent with SB_THUMBTRACK
    CPoint m_ptLast;           // the mouse at the last step of the thumb
    int m_nGrabOffset = 0;     // from the thumb's start to where it was grabbed
    int m_bThumbPressed = 0;
    int m_bDragging = 0;  // the thumb follows the mouse and m_nThumbPixel rules
    int m_bArrow1Pressed = 0;
    int m_bArrow2Pressed = 0;
    UINT_PTR m_nRepeatTimer = 0;
    UINT_PTR m_nHoverTimer = 0;
    int m_nRepeatPart = 0;   // 1 first arrow, 2 second arrow, 3 page before the thumb, 4 page after it
    int m_bRepeatFirst = 0;  // the timer still has its first long delay
    int m_nHotPart = 0;      // 0 none, 1 first arrow, 2 second arrow, 3 thumb, 4 track
    int m_bAttached = 0;     // took over a window; notifications carry its handle
    int m_bDropListBar = 0;  // a button release gives the capture to the parent

private:
    /* True until the bar has lost its window, or is gone itself. */
    class Presence {
    public:
        explicit Presence(const CSkinScrollBar& bar) : m_bar(bar), m_life(bar.m_life) {}
        explicit operator bool() const { return !m_life.expired() && m_bar.m_hWnd; }

    private:
        const CSkinScrollBar& m_bar;
        std::weak_ptr<const char> m_life;
    };

    LRESULT OnPaint(WPARAM wParam, LPARAM lParam);
    LRESULT OnSize(WPARAM wParam, LPARAM lParam);
    LRESULT OnEnable(WPARAM wParam, LPARAM lParam);
    LRESULT OnTimer(WPARAM wParam, LPARAM lParam);
    LRESULT OnLButtonDown(WPARAM wParam, LPARAM lParam);
    LRESULT OnLButtonUp(WPARAM wParam, LPARAM lParam);
    LRESULT OnMouseMove(WPARAM wParam, LPARAM lParam);
    LRESULT OnRButton(WPARAM wParam, LPARAM lParam);
    LRESULT OnGetPos(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetPos(WPARAM wParam, LPARAM lParam);
    LRESULT OnGetRange(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetRange(WPARAM wParam, LPARAM lParam);
    LRESULT OnGetScrollInfo(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetScrollInfo(WPARAM wParam, LPARAM lParam);

    // What returns bool tells whether the bar is still there.
    [[nodiscard]] bool PressAt(const POINT& point);
    [[nodiscard]] bool PressArrow(int part);
    [[nodiscard]] bool PressThumb(const POINT& point);
    [[nodiscard]] bool DragTo(const POINT& point);
    [[nodiscard]] bool TrackHot(const POINT& point);
    [[nodiscard]] bool RepaintPart(int part);
    [[nodiscard]] bool StepRepeat(const POINT& cursor);
    [[nodiscard]] bool ReleaseArrow(int& pressed, const CRect& arrow);
    [[nodiscard]] bool ReleaseThumb();
    [[nodiscard]] bool ReleaseMouse();
    [[nodiscard]] bool Notify(int code);
    [[nodiscard]] bool RepaintNow(const RECT* area = nullptr);
    void Invalidate(const RECT& area, BOOL erase) const;
    void StartRepeat(int part);
    void StopRepeat();
    LRESULT DefaultIf(bool present) { return present ? Default() : 0; }

    HWND Receiver() const;
    bool HasStyle(DWORD bits) const;
    bool IsEnabled() const { return ::IsWindowEnabled(m_hWnd) != FALSE; }
    CRect Client() const;
    int Length() const;
    int Along(const POINT& point) const { return m_bHorz ? point.x : point.y; }
    tavix::ScrollBarValues Values() const;
    void Take(const tavix::ScrollBarValues& values);
    tavix::ScrollBarRects RectsFrom(int thumbStart) const;
    COLORREF SizeGripBackground() const;
    void CutSizeGrip() const;
    void PaintBar(CDC& dc, const RECT& area) const;

    std::shared_ptr<const char> m_life;  // others watch it end
};
