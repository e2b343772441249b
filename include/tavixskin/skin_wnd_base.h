/* CSkinWndBaseClass: the root of all skin objects. */
#pragma once

#include "tavixskin/framework/geometry.h"
#include "tavixskin/framework/object.h"

class CSkinWndBaseClass;

namespace tavix {
class SkinInUse;
void DeleteWhenUnused(CSkinWndBaseClass* skin);
CSkinWndBaseClass* ReleaseKept(CSkinWndBaseClass* head);
}  // namespace tavix

/*
 * A skin object paints one window that the library did not create. Attach puts the shared
 * procedure SkinWndProc in the place of the window's own; that calls WindowProc of the head
 * object of the window's chain. What a skin does not handle ends in Default, which forwards the
 * message in flight to the procedure that was in place before the first skin came.
 */
class CSkinWndBaseClass : public CObject {
    DECLARE_DYNAMIC(CSkinWndBaseClass)
public:
    CSkinWndBaseClass() = default;

    /* Repaints the window after a change of skin. Always 1. */
    virtual int RepaintSkin();
    /*
     * Handles a message; the base passes it down the chain, at its end to the window. After that
     * call the object itself may be gone, if its owner ended it.
     */
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /*
     * Forwards the message in flight, as the thread state holds it, over the rest of the chain
     * to the previous procedure. WM_SYSCOLORCHANGE is not forwarded.
     */
    virtual LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

    /* Becomes the head of the window's chain; the first object subclasses the window. Always 1. */
    BOOL Attach(HWND window);
    /*
     * Leaves the chain; the last object puts the previous procedure back, whoever has
     * subclassed the window since. Deletes nothing. Always 1.
     */
    BOOL Detach(HWND window);

    /* Whether an object, of which only the address is looked at, is in the window's chain. */
    static bool IsInChain(HWND window, const CSkinWndBaseClass* skin);

    HWND GetSafeHwnd() const { return m_hWnd; }
    WNDPROC PreviousProc() const { return m_pfnPrevWndProc; }

    HWND GetParent() const { return ::GetParent(m_hWnd); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    void UpdateWindow() const { ::UpdateWindow(m_hWnd); }
    HWND SetCapture() const { return ::SetCapture(m_hWnd); }
    HWND SetFocus() const { return ::SetFocus(m_hWnd); }
    void GetClientRect(RECT* rect) const { ::GetClientRect(m_hWnd, rect); }
    void GetWindowRect(RECT* rect) const { ::GetWindowRect(m_hWnd, rect); }
    int GetWindowRgn(HRGN region) const { return ::GetWindowRgn(m_hWnd, region); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    void Invalidate(BOOL erase) const { ::InvalidateRect(m_hWnd, nullptr, erase); }

protected:
    /* For an object that belongs to another: the end of its window detaches it but does not delete it. */
    struct KeptByOwner {};
    explicit CSkinWndBaseClass(KeptByOwner) : m_bKeptByOwner(true) {}

    HWND m_hWnd = nullptr;
    WNDPROC m_pfnPrevWndProc = nullptr;        // the same in all objects of a chain
    CSkinWndBaseClass* m_pNextSkin = nullptr;  // towards the object that was attached first

private:
    friend class tavix::SkinInUse;
    friend void tavix::DeleteWhenUnused(CSkinWndBaseClass* skin);
    friend CSkinWndBaseClass* tavix::ReleaseKept(CSkinWndBaseClass* head);
    int m_nUses = 0;         // scopes that run this object's code
    bool m_bDoomed = false;  // its window is gone
    bool m_bKeptByOwner = false;
};
