/* Windows for measuring. */
#pragma once

#include <windows.h>

#include <utility>

#include "tavixskin/framework/geometry.h"

namespace bench {

/* The library's own frame class, and one that it does not know. Registered at the first use. */
const char* SkinnedFrameClass();
const char* PlainClass();

/* A window that ends with the scope. */
class Window {
public:
    Window(const char* className, DWORD style, const CRect& at, HWND parent = nullptr);
    explicit Window(HWND window) : m_window(window) {}
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    Window(Window&& other) noexcept : m_window(std::exchange(other.m_window, nullptr)) {}
    Window& operator=(Window&& other) noexcept {
        std::swap(m_window, other.m_window);
        return *this;
    }
    operator HWND() const { return m_window; }

private:
    HWND m_window;
};

/* A modeless dialog without controls, made from a template in memory. */
Window MakeDialog(const CRect& at);

constexpr DWORD kFrameStyle = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
constexpr DWORD kButtonStyle = WS_CHILD | WS_VISIBLE;

/* Scroll bars in their ordinary thickness, and what a parent of one of each needs. */
const CRect kLevelScrollBar{30, 10, 330, 27};
const CRect kUprightScrollBar{5, 10, 22, 310};
const CRect kScrollBarParent{0, 0, 360, 330};

/* A scroll bar control of that axis; it has a thumb of medium length. */
HWND MakeScrollBar(HWND parent, bool upright);

/* A report list with one column and no rows. */
HWND MakeReportList(HWND parent);
/* A list box with a scroll bar and room for some twenty rows, and its parent. */
const CRect kListBoxParent{0, 0, 260, 330};
HWND MakeListBox(HWND parent);
/* A combo box without an edit that shows one of its items, and its parent. */
const CRect kComboBoxParent{0, 0, 220, 200};
HWND MakeComboBox(HWND parent);

/* A tool bar of 40 buttons with images, and a tab control of 12 tabs. A parent of 1000 by 310 has room for
 * both. */
HWND MakeToolBar(HWND parent);
HWND MakeTabControl(HWND parent);

/* Repaint at once, and wait until it is drawn. */
void RepaintFrame(HWND window);
void RepaintClient(HWND window);
/* Frame, client area and children. */
void RepaintWhole(HWND window);

}  // namespace bench
