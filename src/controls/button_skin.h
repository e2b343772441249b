/* CSkinButton: push buttons, check boxes and radio buttons. */
#pragma once

#include "engine/skin_wnd_base.h"
#include "tavixskin/framework/gdi.h"

/*
 * The skin of every "Button" window but the group box. It paints the whole client area and runs
 * hover, press and release of push buttons itself. Check boxes and radio buttons are toggled by
 * the native control, which also keeps the check state of all types.
 */
class CSkinButton : public CSkinWndBaseClass {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT OnCreate(WPARAM wParam, LPARAM lParam);
    LRESULT OnEnable(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetText(WPARAM wParam, LPARAM lParam);
    LRESULT OnPaint(WPARAM wParam, LPARAM lParam);
    LRESULT OnEraseBackground();
    LRESULT OnSetCheck(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetState(WPARAM wParam, LPARAM lParam);
    LRESULT OnColourButton(WPARAM wParam);
    LRESULT OnKeyDown(WPARAM wParam, LPARAM lParam);
    LRESULT OnKeyUp(WPARAM wParam, LPARAM lParam);
    LRESULT OnMouseMove(WPARAM wParam, LPARAM lParam);
    LRESULT OnButtonDown(WPARAM wParam, LPARAM lParam);
    LRESULT OnButtonUp(WPARAM wParam, LPARAM lParam);
    LRESULT OnDoubleClick(WPARAM wParam, LPARAM lParam);

    void PressAt(const POINT& point);
    void ReleasePush();
    void TrackHot(const POINT& point);
    void RepaintFace();
    void EraseOwnerDrawn();
    void PaintButton();

    DWORD Type() const { return style & 0xF; }
    bool IsPushStyle() const { return Type() == BS_PUSHBUTTON || Type() == BS_DEFPUSHBUTTON; }
    bool IsTickBoxStyle() const { return Type() == BS_CHECKBOX || Type() == BS_AUTOCHECKBOX; }
    bool IsRadioStyle() const { return Type() == BS_RADIOBUTTON || Type() == BS_AUTORADIOBUTTON; }
    // Types 11 and 15.
    bool IsOwnerDrawnStyle() const { return (style & BS_OWNERDRAW) == BS_OWNERDRAW; }
    bool HasMark() const { return IsTickBoxStyle() || IsRadioStyle(); }
    // False once a handler of the host has destroyed the window under a call.
    bool IsAlive() const { return m_hWnd && ::IsWindow(m_hWnd); }

    DWORD style = 0;           // as the window had it at WM_CREATE
    DWORD exStyle = 0;         // the same; only kept
    BOOL hot = FALSE;          // the pointer is inside; set by the space key too
    BOOL pressed = FALSE;      // a press began inside and has not been released
    BOOL eraseToggle = FALSE;  // alternates with the erases of an owner-drawn button
    HFONT font = nullptr;      // the window's, as of the last WM_PAINT; not owned
};
