/* A host's frame window under test: skinned by its class, and recording what its own procedure gets. */
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "frames/frame_skin.h"
#include "support/skinned_thread.h"
#include "support/window_probe.h"

/* Looks into a frame's skin object. */
struct FrameSkinTestAccess {
    CSkinFrame& skin;

    int CloseState() const { return skin.m_nCloseState; }
    int MaxState() const { return skin.m_nMaxState; }
    int MinState() const { return skin.m_nMinState; }
    void SetStates(int close, int max, int min) { skin.SetStates(close, max, min); }
    CRect Close() const { return skin.m_rcClose; }
    CRect Max() const { return skin.m_rcMax; }
    CRect Min() const { return skin.m_rcMin; }
    DWORD Style() const { return skin.m_dwStyle; }
    int Active() const { return skin.m_bActive; }
    int HasMenu() const { return skin.m_bHasMenu; }
    HMENU Menu() const { return skin.m_hMenu; }
    UINT Timer() const { return skin.m_nTimer; }
};

namespace tavix_test {

constexpr DWORD kFullStyle = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
constexpr RECT kFramePlace{120, 90, 520, 330};

/* The test skin with what frames show and no more: written and loaded in a fraction of the time. */
class FramesOnlySkin : public TestSkin {
public:
    FramesOnlySkin() {
        for (const TSkinType kind : {skinButton, skinDialog, skinCombobox, skinTabCtrl, skinHeadCtrl,
                                     skinListBox, skinScrollbar, skinMenu, skinDockBar})
            RemoveBitmaps(kind);
    }
};

/* A window of a class of the frame rows; ends with the object. */
class HostFrame {
public:
    explicit HostFrame(DWORD style = kFullStyle, const RECT& place = kFramePlace, const char* title = "",
                       HMENU menu = nullptr, Charset charset = Charset::Ansi,
                       const char* className = "Tavix_PaneA");
    ~HostFrame();
    HostFrame(const HostFrame&) = delete;
    HostFrame& operator=(const HostFrame&) = delete;

    operator HWND() const { return window; }
    FrameSkinTestAccess Skin() const;
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageA(window, message, wParam, lParam);
    }
    CRect Rect() const;
    /* A point of the window in screen co-ordinates, packed and plain. */
    POINT Screen(POINT inWindow) const;
    LPARAM Packed(POINT inWindow) const;

    HWND window = nullptr;
    MessageLog log;  // what reached the window's own procedure
    std::function<std::optional<LRESULT>(const Received&)> handler;

private:
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    Charset m_charset;
};

/* The middle of a rectangle. */
inline POINT Middle(const CRect& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

}  // namespace tavix_test
