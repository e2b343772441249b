/* CMenuBarMdiButtons: a maximised MDI child's icon and buttons at the ends of a menu bar. Not for hosts. */
#pragma once

#include "tavixskin/framework/gdi.h"
#include "tavixskin/framework/geometry.h"

class CSkinMenuBar;

/*
 * The geometry of the icon and the three system buttons, of popups, and the list of MDI windows.
 * It belongs to its menu bar.
 */
class CMenuBarMdiButtons {
public:
    explicit CMenuBarMdiButtons(CSkinMenuBar* owner);
    virtual ~CMenuBarMdiButtons();
    CMenuBarMdiButtons(const CMenuBarMdiButtons&) = delete;
    CMenuBarMdiButtons& operator=(const CMenuBarMdiButtons&) = delete;

    /* Computes the four rectangles and the buttons' extent from the bar's present client area. */
    virtual void Layout();
    /* Draws the icon (index 0), or a button (1 to 3) in the system's look. */
    virtual void DrawButton(CDC* dc, int index, BOOL pressed);
    /* The first rectangle that holds a point in window co-ordinates, -1 if none does. */
    virtual int HitTest(int x, int y);
    /* Presses and releases the buttons, for a bar that lets it. True if the message was for them. */
    virtual BOOL OnMouseMessage(UINT message, UINT flags, int x, int y);
    /* Lists the children of the MDI client at the end of the window menu. */
    virtual void FillWindowMenu();
    /* Takes the icon's and the buttons' strips off a rectangle, while a child is maximised. */
    virtual void AdjustNcRect(RECT* rect);
    /* Adds the strips to a size, while a child is maximised. */
    virtual CSize AdjustSize(CSize size, BOOL horizontal);
    /* Where the popup of a button (in screen co-ordinates) opens, and what TrackPopupMenuEx is told. */
    virtual CPoint PopupPosition(const RECT& button, TPMPARAMS& params);

private:
    friend class CSkinMenuBar;
    friend class CMenuBarHook;
    friend struct MenuBarTestAccess;

    bool IsHorizontal() const;
    HWND MdiClient() const;
    void LayoutHorizontally(const CRect& client);
    void LayoutVertically(const CRect& client);
    void Show(int index, BOOL pressed);
    BOOL Press(int x, int y);
    BOOL TrackPress(int x, int y);
    BOOL Release();

    CSkinMenuBar* m_pOwner;
    HMENU m_hWindowMenu = nullptr;  // the popup that lists the MDI windows; not owned
    CRect m_rcButtons[4];           // icon, minimise, restore, close; window co-ordinates of the bar
    int m_nPressed = 0;             // index of the button being pressed, 0 for none
    BOOL m_bPressedInside = FALSE;  // the mouse is inside the pressed button
    BOOL m_bChildMaximized = FALSE;
    int m_nMenuExtent = 0;  // right or bottom end of the last menu button, plus 2
};
