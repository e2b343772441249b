/* CSkinMenuBar: a frame's menu bar as a control, painted with the skin. */
#pragma once

#include "tavixskin/framework/containers.h"
#include "tavixskin/framework/control_bar.h"
#include "tavixskin/framework/gdi.h"
#include "tavixskin/menu_bar_hook.h"
#include "tavixskin/menu_bar_mdi_buttons.h"

/*
 * Made by the host in place of a frame's native menu bar: construct it, Create it as a control bar
 * of the frame, call LoadMenuA, and give it each message of the frame's message loop first:
 *
 *     while (GetMessageA(&message, nullptr, 0, 0) > 0) {
 *         if (bar.TranslateFrameMessage(&message)) continue;
 *         TranslateMessage(&message);
 *         DispatchMessageA(&message);
 *     }
 *
 * Without that last step the bar works with the mouse alone. Commands arrive at the frame as from
 * a native menu. In an MDI frame (CMDIFrameWnd, its client made before the bar) a maximised child's
 * icon and buttons stand at the bar's ends.
 *
 * The bar's window class, "SkinMenuBar", is registered with the first bar and by nobody else: a
 * process has one bar at a time, and unregisters the class before it makes another.
 *
 * The bar never owns a menu.
 */
class TAVIX_API CSkinMenuBar : public CToolBar {
    DECLARE_DYNAMIC(CSkinMenuBar)
    DECLARE_MESSAGE_MAP()
public:
    enum TRACKINGSTATE {
        TRACKING_IDLE,    // the hot button follows the mouse only
        TRACKING_BUTTON,  // keyboard mode: a button is hot, no popup is open
        TRACKING_POPUP,   // a popup is open
    };

    // None of the members is inline: an inline one would not be in the export table.
    CSkinMenuBar();
    ~CSkinMenuBar() override;

    /*
     * Shows a menu's items with a text as buttons; a frame that has a menu gets this one, and knows
     * of the bar from now on. `windowMenu` is the popup, one of the menu's, that lists the MDI
     * windows; null for none. The result is the menu shown before.
     */
    HMENU LoadMenuA(HMENU menu, HMENU windowMenu);
    /* The same for a menu resource of the program. */
    HMENU LoadMenuA(LPCSTR name);
    HMENU LoadMenuA(UINT id);
    /* Shows another menu, or the same after changes, and leaves the frame's alone. */
    void SynchronizeMenubar(HMENU menu);
    /* The menu that the bar shows. */
    HMENU GetMenu() const;

    TRACKINGSTATE GetTrackingState(int& popupButton) const;
    /* The place of the button of that command id. */
    BOOL GetRect(UINT id, RECT& rect) const;
    /* The hot button, -1 for none. */
    int GetHotItem() const;
    /* Paints the three buttons of a maximised MDI child into a context of the bar's whole window. */
    void DrawCaptionBtn(CDC* dc);
    /* A key in keyboard mode, for a host that gives the bar the focus. */
    void OnKeyDown(UINT key);

protected:
    bool PreCreateWindow(CREATESTRUCTA& create) override;

public:
    void OnBarStyleChange(DWORD oldStyle, DWORD newStyle) override;
    /* Takes the keys and clicks that are the bar's: true if the message is used up. */
    virtual BOOL TranslateFrameMessage(MSG* message);
    /* Sees what a popup of the bar gets, before it does: true if the message is used up. */
    virtual BOOL OnMenuInput(MSG& message);
    /* The size that the bar needs with a maximised child's icon and buttons. */
    virtual CSize AdjustSize(CSize size, BOOL horizontal);

protected:
    LRESULT OnCreate(WPARAM wParam, LPARAM lParam);
    LRESULT OnDestroy(WPARAM wParam, LPARAM lParam);
    LRESULT OnLButtonDown(WPARAM wParam, LPARAM lParam);
    LRESULT OnLButtonUp(WPARAM wParam, LPARAM lParam);
    LRESULT OnMouseMove(WPARAM wParam, LPARAM lParam);
    LRESULT OnMouseLeave(WPARAM wParam, LPARAM lParam);
    LRESULT OnNcCalcSize(WPARAM wParam, LPARAM lParam);
    LRESULT OnNcPaint(WPARAM wParam, LPARAM lParam);
    LRESULT OnSize(WPARAM wParam, LPARAM lParam);
    LRESULT OnPaint(WPARAM wParam, LPARAM lParam);
    LRESULT OnUpdateMenuButton(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetMenuNull(WPARAM wParam, LPARAM lParam);

    void TrackPopup(int button);
    void CancelMenuAndTrackNewOne(int button);
    void SetTrackingState(TRACKINGSTATE state, int button = -1);
    void ToggleTrackButtonMode();
    int GetNextOrPrevButton(int button, BOOL previous) const;
    void OnMenuSelect(HMENU menu, UINT item);
    void OnInitMenuPopup();
    static LRESULT CALLBACK MenuInputFilter(int code, WPARAM wParam, LPARAM lParam);

    void UpdateFont();
    void CheckMinMaxState();
    void RecomputeToolbarSize();
    void RecomputeMenuLayout();
    void SetHotItem(int button);
    int HitTest(const POINT& point) const;

private:
    friend class CMenuBarHook;
    friend class CMenuBarMdiButtons;
    friend struct MenuBarTestAccess;

    // Each is one message to the tool bar.
    int GetButtonCount() const;
    int ToolBarHitTest(POINT* point) const;
    BOOL DeleteButton(int button);
    int AddStrings(const char* strings);
    BOOL AddButtons(int count, const void* buttons);
    void AutoSize();
    BOOL PressButton(int id, BOOL press);
    BOOL MapAccelerator(char key, UINT& id) const;
    HANDLE SetImageList(HANDLE list);
    BOOL IsValidButton(int button) const;

    bool AddMenuButton(int position, int stringIndex);
    int FindText(const char* text) const;
    bool ShowsMaximizedChild() const;
    HWND ParentFrame() const;
    HWND ActiveFrame() const;
    CRect ClientInWindow() const;
    void InvalidateButton(int button) const;
    void LayoutCaptionButtons();
    void PaintButtons(CDC& dc, const CRect& window) const;
    void PaintActiveIcon(CDC& dc) const;
    void RepaintCaptionButtons();
    int CaptionButtonAt(const POINT& inWindow) const;
    void SetCaptionHot(int index);
    bool AnyCaptionHot() const;
    bool PressCaptionButton(const POINT& client);
    BOOL OnTrackingKey(UINT key);
    BOOL OnAccelerator(UINT key, bool alt);
    int MenuPosition(int button) const;
    HMENU SubMenuOf(int button) const;
    void EndTracking();

    CMenuBarMdiButtons m_mdiButtons;
    CMenuBarHook m_frameHook;
    CMenuBarHook m_mdiClientHook;
    HWND m_hMdiClient = nullptr;  // null if the owner is no MDI frame
    CStringArray m_buttonTexts;
    HMENU m_hMenu = nullptr;
    int m_nPopupButton = -1;  // whose popup is open
    int m_nNextPopupButton = -1;
    BOOL m_bRightArrowMoves = FALSE;
    BOOL m_bLeftArrowMoves = FALSE;
    BOOL m_bEscapeSeen = FALSE;
    CPoint m_ptLastMouse;  // client co-ordinates
    HMENU m_hOpenPopup = nullptr;
    int m_nHotItem = -1;
    TRACKINGSTATE m_trackingState = TRACKING_IDLE;
    BOOL m_bReplacesFrameMenu = TRUE;
    BOOL m_bCloseHot = FALSE;
    BOOL m_bRestoreHot = FALSE;
    BOOL m_bMinimizeHot = FALSE;
    CRect m_rcClose;  // window co-ordinates
    CRect m_rcRestore;
    CRect m_rcMinimize;
    CFont m_font;                    // measures the buttons; the text is painted in another
    HFONT m_hControlFont = nullptr;  // the control's own, from before

    // One popup of one bar at a time in the process.
    static CSkinMenuBar* activeMenuBarTarget;
    static HHOOK menuInputHook;
};
