/* A menu bar in a skinned frame, with the message loop of a host that gives the bar every message first. */
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/skinned_thread.h"
#include "support/window_probe.h"
#include "tavixskin/framework/frame_wnd.h"
#include "tavixskin/framework/menu.h"
#include "tavixskin/skin_menu_bar.h"

/* Looks into a menu bar. */
struct MenuBarTestAccess {
    CSkinMenuBar& bar;

    int PopupButton() const { return bar.m_nPopupButton; }
    int NextPopupButton() const { return bar.m_nNextPopupButton; }
    bool RightArrowMoves() const { return bar.m_bRightArrowMoves; }
    bool LeftArrowMoves() const { return bar.m_bLeftArrowMoves; }
    bool EscapeSeen() const { return bar.m_bEscapeSeen; }
    HMENU OpenPopup() const { return bar.m_hOpenPopup; }
    CStringArray& Texts() const { return bar.m_buttonTexts; }
    CMenuBarMdiButtons& Mdi() const { return bar.m_mdiButtons; }
    CMenuBarHook& FrameHook() const { return bar.m_frameHook; }
    CMenuBarHook& ClientHook() const { return bar.m_mdiClientHook; }
    HWND MdiClient() const { return bar.m_hMdiClient; }
    CRect Close() const { return bar.m_rcClose; }
    CRect Restore() const { return bar.m_rcRestore; }
    CRect Minimize() const { return bar.m_rcMinimize; }
    bool CloseHot() const { return bar.m_bCloseHot; }
    bool RestoreHot() const { return bar.m_bRestoreHot; }
    bool MinimizeHot() const { return bar.m_bMinimizeHot; }
    void SetCaptionHot(bool minimize, bool restore, bool close) const {
        bar.m_bMinimizeHot = minimize;
        bar.m_bRestoreHot = restore;
        bar.m_bCloseHot = close;
    }
    int ButtonCount() const { return bar.GetButtonCount(); }
    bool MapAccelerator(char key, UINT& id) const { return bar.MapAccelerator(key, id); }
    void SetHotItem(int button) const { bar.SetHotItem(button); }
    int HitTest(POINT point) const { return bar.HitTest(point); }
    void SetTrackingState(CSkinMenuBar::TRACKINGSTATE state, int button = -1) const {
        bar.SetTrackingState(state, button);
    }
    void ToggleTrackButtonMode() const { bar.ToggleTrackButtonMode(); }
    int GetNextOrPrevButton(int button, BOOL previous) const {
        return bar.GetNextOrPrevButton(button, previous);
    }
    void OnMenuSelect(HMENU menu, UINT item) const { bar.OnMenuSelect(menu, item); }
    void SetOpenPopup(HMENU menu) const { bar.m_hOpenPopup = menu; }
    HMENU SubMenuOf(int button) const { return bar.SubMenuOf(button); }
    void CheckMinMaxState() const { bar.CheckMinMaxState(); }
    void TrackPopup(int button) const { bar.TrackPopup(button); }
    void CancelMenuAndTrackNewOne(int button) const { bar.CancelMenuAndTrackNewOne(button); }

    // Of the geometry.
    CRect Rect(int index) const { return bar.m_mdiButtons.m_rcButtons[index]; }
    int MenuExtent() const { return bar.m_mdiButtons.m_nMenuExtent; }
    HMENU WindowMenu() const { return bar.m_mdiButtons.m_hWindowMenu; }
    void SetWindowMenu(HMENU menu) const { bar.m_mdiButtons.m_hWindowMenu = menu; }
    bool ChildMaximized() const { return bar.m_mdiButtons.m_bChildMaximized; }
    void SetChildMaximized(bool maximized) const { bar.m_mdiButtons.m_bChildMaximized = maximized; }
    int Pressed() const { return bar.m_mdiButtons.m_nPressed; }
    static CSkinMenuBar* ActiveTarget() { return CSkinMenuBar::activeMenuBarTarget; }
    static HHOOK InputHook() { return CSkinMenuBar::menuInputHook; }
};

namespace tavix_test {

/* A class of a host's, with that name. */
void RegisterHostClass(const char* name, COLORREF background = RGB(10, 120, 200));
/* The class that the bar registers: gone, so that another bar may come. */
void EndBarClass();

struct Item {
    const char* text;  // null: a separator
    UINT id = 0;       // of a command
    std::vector<Item> items{};
};
/* A popup, or a bar's menu, of items in that order. */
HMENU MakeMenu(const std::vector<Item>& items, bool popup = false);
/* File (New 101, Recent > (A 111, B 112), Exit 103), Edit (Cut 201, Copy 202), View (Zoom 301) and Help
 * (404). */
HMENU MakeUsualMenu();

/* A frame object whose messages the test sees. */
template <class Frame>
class Recording : public Frame {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        log.Add({this->m_hWnd, message, wParam, lParam});
        if (handler)
            if (const std::optional<LRESULT> answer = handler({this->m_hWnd, message, wParam, lParam}))
                return *answer;
        return Frame::WindowProc(message, wParam, lParam);
    }
    MessageLog log;
    std::function<std::optional<LRESULT>(const Received&)> handler;
};

/* The test skin with what a frame and its menu bar show. */
class BarSkin : public TestSkin {
public:
    BarSkin() {
        for (const TSkinType kind : {skinButton, skinDialog, skinCombobox, skinTabCtrl, skinHeadCtrl,
                                     skinListBox, skinScrollbar, skinDockBar})
            RemoveBitmaps(kind);
    }
};

constexpr RECT kPlace{120, 90, 620, 430};

/* A skinned frame with a bar; no MDI. */
class BarTest : public testing::Test {
protected:
    BarTest();
    ~BarTest() override;
    static void SetUpTestSuite() { ParkMouse(); }

    /* Makes the bar in the frame and loads the menu. */
    void MakeBar(HMENU menu, HMENU windowMenu = nullptr, DWORD style = CBRS_ALIGN_TOP);
    MenuBarTestAccess Access() { return {bar}; }
    CRect ItemRect(int button);
    CRect WindowRect();
    POINT MiddleOf(int button);
    Picture Paint();
    CSkinMenuBar::TRACKINGSTATE State();

    BarSkin skin;
    SkinnedThread skinned{skin};
    Recording<CMDIFrameWnd> frame;  // without an MDI client unless a test makes it
    CSkinMenuBar bar;
};

}  // namespace tavix_test
