/* Real windows under test: a parent that records, spies on messages, pictures of what shows. */
#pragma once

#include <windows.h>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace tavix_test {

enum class Charset { Ansi, Unicode };
const char* NameOf(Charset charset);

/* One message as a window procedure got it. */
struct Received {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    bool operator==(const Received&) const = default;
};
/* For the output of failed comparisons. */
void PrintTo(const Received& received, std::ostream* out);

/* Messages in the order in which they came, of the kinds that are listened to (at first: all). */
class MessageLog {
public:
    void Listen(std::initializer_list<UINT> messages) { m_wanted = messages; }
    void Add(const Received& received);
    void Clear() { m_entries.clear(); }

    const std::vector<Received>& Entries() const { return m_entries; }
    /* The message numbers alone. */
    std::vector<UINT> Messages() const;
    int Count(UINT message) const;
    bool Has(UINT message) const { return Count(message) != 0; }

private:
    std::vector<UINT> m_wanted;
    std::vector<Received> m_entries;
};

/*
 * A top-level window of a class of the tests' own, which is in no skin's table. It fills its
 * client area with `background`, records what it receives, and asks `handler` first: an answer
 * of the handler is the message's result. Shown at once; destroyed with the object.
 */
class ProbeWindow {
public:
    /* Other styles than the default: with WS_CLIPCHILDREN, say. The client area gets the size given. */
    explicit ProbeWindow(DWORD style = WS_POPUP | WS_VISIBLE, SIZE client = {400, 300}, POINT at = {100, 100},
                         COLORREF background = RGB(10, 120, 200));
    ~ProbeWindow();
    ProbeWindow(const ProbeWindow&) = delete;
    ProbeWindow& operator=(const ProbeWindow&) = delete;

    HWND Handle() const { return m_window; }
    operator HWND() const { return m_window; }

    MessageLog log;
    COLORREF background;
    std::function<std::optional<LRESULT>(const Received&)> handler;

private:
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    HWND m_window = nullptr;
};

/* A visible child, by CreateWindowExA or CreateWindowExW. */
HWND CreateControl(Charset charset, HWND parent, const char* className, const char* text, DWORD style,
                   const RECT& place, int id = 100, DWORD exStyle = 0);

/*
 * Records what one window receives, before its skin does. Its handler can answer in the window's
 * place. Ends before or with the window; nothing else may subclass the window meanwhile.
 */
class MessageSpy {
public:
    explicit MessageSpy(HWND window);
    ~MessageSpy();
    MessageSpy(const MessageSpy&) = delete;
    MessageSpy& operator=(const MessageSpy&) = delete;

    MessageLog log;
    std::function<std::optional<LRESULT>(const Received&)> handler;

private:
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    HWND m_window;
    WNDPROC m_former;
};

/*
 * Records what reaches the native procedure of a window class, below any skin: of the windows
 * that are created while it lives, which it must outlive. Messages of windows of both character
 * sets arrive as the class's own procedure gets them, in Unicode. In a ControlsWorld it takes
 * that world's class.
 */
class ClassSpy {
public:
    explicit ClassSpy(const char* className);
    ~ClassSpy();
    ClassSpy(const ClassSpy&) = delete;
    ClassSpy& operator=(const ClassSpy&) = delete;

    MessageLog log;
    /* May answer in the native procedure's place. */
    std::function<std::optional<LRESULT>(const Received&)> handler;

private:
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    HWND m_holder;  // a window of the class, through which the class is reached; not recorded
    WNDPROC m_former;
};

/* Range, page and both positions of a window that works as a scroll bar. */
SCROLLINFO ScrollInfoOf(HWND bar);

/* Dispatches what is in the thread's queue until the time is over. */
void PumpMessages(DWORD milliseconds = 20);
/* Dispatches until the condition holds; false if it doesn't within the time. */
bool PumpUntil(const std::function<bool()>& condition, DWORD milliseconds = 2000);

/* A rectangle of pixels. */
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> pixels;  // rows from the top

    /* CLR_INVALID outside. */
    COLORREF At(int x, int y) const;
    int CountOf(COLORREF colour) const;
    bool operator==(const Picture&) const = default;
};

Picture PictureOfDc(HDC dc, const RECT& area);
/* What shows of a window now, nothing being repainted first. */
Picture PictureOfClient(HWND window);
Picture PictureOfWindow(HWND window);
/* Repaints the window whole, and then the same. */
Picture RepaintedClient(HWND window);
/*
 * Has everything painted that may wait for it, and lays one colour over the client area, of which
 * the window learns nothing: what is painted from then on can be told.
 */
void SpoilClient(HWND window, COLORREF colour);

/* A memory context with a 32-bit bitmap, filled with one colour. */
class Canvas {
public:
    Canvas(int width, int height, COLORREF colour);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Dc() const { return m_dc; }
    RECT Area() const { return {0, 0, m_width, m_height}; }
    Picture Take() const { return PictureOfDc(m_dc, Area()); }

private:
    int m_width;
    int m_height;
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_former;
};

/* Makes the window the one with the keyboard's focus; false if the system doesn't let it. */
bool BringToFront(HWND window);

/*
 * Real input, through the system's queue. Each call waits until the system has taken the input
 * in and pumps the thread's messages. Points are in the client co-ordinates of `window`.
 */
void MoveMouse(HWND window, POINT to);
void PressMouse();
void ReleaseMouse();
void ClickMouse(HWND window, POINT at);
void DoubleClickMouse(HWND window, POINT at);
/*
 * Takes the pointer to a small window in the bottom right corner of the screen, which is made at
 * the first call and stays; no test should put a window there.
 */
void ParkMouse();
/* By the wheel's own units, of which a notch has WHEEL_DELTA. */
void TurnWheel(int delta);
void PressKey(WORD virtualKey);
void ReleaseKey(WORD virtualKey);

}  // namespace tavix_test
