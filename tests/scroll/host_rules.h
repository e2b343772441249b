/* What the bars of a scroll host must be, told by the rules alone: a second account beside the library's. */
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "client/client_calls.h"
#include "tavixskin/framework/geometry.h"

namespace tavix_test {

/* One bar. */
class BarRules {
public:
    /* As the bar is now. */
    void Read(HWND host, int code);

    void SetRange(int newMin, int newMax);
    void SetPage(int newPage);
    /* What SBM_SETPOS and SIF_POS do: the thumb goes to the position. */
    void SetPos(int newPos);
    int PixelOf(int position) const;
    int PositionAt(int pixel) const;

    struct Note {
        int code;
        int pos;
    };
    /* Sends the mouse's message, whose notification must be this one; the host may answer it meanwhile. */
    using Send = std::function<void(const std::optional<Note>&)>;
    void Press(POINT at, const Send& send);
    void Move(POINT to, const Send& send);
    void Release(const Send& send);

    /* Compares the bar with this account of it. */
    void Check(HWND host) const;

    HWND window = nullptr;
    int code = SB_HORZ;
    int min = 0, max = 0, page = 0, pos = 0;
    int thumbLength = 0;
    int thumbStart = 0;  // of a thumb that is dragged, or where the last position put it
    CRect place;
    bool wanted = false;
    bool shown = false;
    bool enabled = true;

private:
    int Along(POINT point) const { return code == SB_VERT ? point.y : point.x; }
    int Across(POINT point) const { return code == SB_VERT ? point.x : point.y; }
    int Length() const { return code == SB_VERT ? place.Height() : place.Width(); }
    int Breadth() const { return code == SB_VERT ? place.Width() : place.Height(); }
    int Track() const { return Length() - 2 * arrow; }
    int ThumbFrom() const;
    bool IsOnThumb(POINT at) const;
    std::optional<Note> NoteOfPress(POINT at);
    void KeepPage();
    void KeepPos();

    int arrow = 0;
    bool dragging = false;
    bool pressed = false;    // on the thumb
    bool repeating = false;  // an arrow or the track is held
    int grab = 0;
    int lastTrack = -1;
    POINT lastMouse{};
};

/*
 * A host, and the calls that others make for it. Each member calls the function through a foreign module's
 * import table and does by the rules what the replacement must do.
 */
class HostRules {
public:
    explicit HostRules(HWND host);

    int SetScrollInfo(int bar, const SCROLLINFO* given, BOOL redraw);
    BOOL SetScrollRange(int bar, int min, int max, BOOL redraw);
    int SetScrollPos(int bar, int pos, BOOL redraw);
    BOOL ShowScrollBar(int bar, BOOL show);
    BOOL MoveWindow(int x, int y, int width, int height, BOOL repaint);
    BOOL ShowWindow(int command);
    BOOL EnableScrollBar(UINT bars, UINT arrows);

    /* The left button at the bar's window, in its co-ordinates. Checks the notification. */
    void PressMouse(int bar, POINT at);
    void MoveMouse(int bar, POINT to);
    void ReleaseMouse(int bar, POINT at);
    /* The host tells each scroll message that it gets. */
    void OnScrollMessage(UINT message, WPARAM wParam, LPARAM lParam);

    /* Compares all that can be seen of the bars with the rules. */
    void Check();

    BarRules& Bar(int code) { return m_bars[code]; }
    int Notifications() const { return m_notifications; }
    bool visible = true;

private:
    void Layout(bool horizontal, bool vertical, CRect client);
    void Want(int code, bool wanted);
    void SendMouse(BarRules& bar, UINT message, WPARAM wParam, POINT at,
                   const std::optional<BarRules::Note>& expected);

    HWND m_host;
    HWND m_corner;
    BarRules m_bars[2];  // by their codes
    CRect m_cornerPlace;
    bool m_cornerShown = false;
    const BarRules* m_held = nullptr;  // whose mouse message is under way
    std::optional<BarRules::Note> m_expected;
    int m_notifications = 0;
};

}  // namespace tavix_test
