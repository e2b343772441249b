/* CWnd: a window of the framework, with message maps and handle maps. */
#pragma once

#include <windows.h>

#include "tavixskin/framework/containers.h"
#include "tavixskin/framework/geometry.h"
#include "tavixskin/framework/module_state.h"

class CWnd;

/* A handler of a message map: the message's parameters in, its result out. */
using AFX_PMSG = LRESULT (CWnd::*)(WPARAM wParam, LPARAM lParam);

struct AFX_MSGMAP_ENTRY {
    UINT nMessage;  // 0 ends the map
    UINT nCode;     // WM_COMMAND: the notification code
    UINT nID;       // WM_COMMAND: the first and last command that the entry takes
    UINT nLastID;
    AFX_PMSG pfn;
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* pBaseMap;  // null in CWnd
    const AFX_MSGMAP_ENTRY* lpEntries;
};

#define DECLARE_MESSAGE_MAP()                       \
protected:                                          \
    static const AFX_MSGMAP_ENTRY messageEntries[]; \
    static const AFX_MSGMAP messageMap;             \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(the_class, base_class)                                                   \
    const AFX_MSGMAP* the_class::GetMessageMap() const { return &the_class::messageMap; }          \
    const AFX_MSGMAP the_class::messageMap = {&base_class::messageMap, the_class::messageEntries}; \
    const AFX_MSGMAP_ENTRY the_class::messageEntries[] = {
#define ON_MESSAGE(message, handler) {message, 0, 0, 0, static_cast<AFX_PMSG>(handler)},
#define ON_COMMAND_RANGE(first, last, handler) {WM_COMMAND, 0, first, last, static_cast<AFX_PMSG>(handler)},
#define ON_COMMAND(id, handler) ON_COMMAND_RANGE(id, id, handler)

#define END_MESSAGE_MAP()   \
    { 0, 0, 0, 0, nullptr } \
    }                       \
    ;

/*
 * A window object belongs to the thread that made it. A window that the object created or
 * subclassed is in the permanent handle map until WM_NCDESTROY; FromHandle wraps any other
 * window in a temporary object that lives until the library is left.
 */
class TAVIX_API CWnd : public CObject {
    DECLARE_DYNAMIC(CWnd)
public:
    CWnd() = default;
    /* Destroys the window if it is still there. */
    ~CWnd() override;

    HWND GetSafeHwnd() const { return m_hWnd; }

    /* The object of the window: its permanent one, else a temporary one. Null for a null handle. */
    static CWnd* FromHandle(HWND window);
    /* The permanent object only, or null. */
    static CWnd* FromHandlePermanent(HWND window);

    /* Enters the window in the permanent map, without subclassing it. False if it has an object. */
    bool Attach(HWND window);
    HWND Detach();
    /* Attaches and routes the window's messages to this object. False if it has an object. */
    bool SubclassWindow(HWND window);
    /* Undoes SubclassWindow; the result is the window. */
    HWND UnsubclassWindow();

    /*
     * Creates a window of a registered class whose messages come here from the first on. The class
     * is the one of `instance`; null means the program.
     */
    bool CreateEx(DWORD exStyle, const char* className, const char* title, DWORD style, const RECT& rect,
                  HWND parent, UINT id, void* parameter = nullptr, HINSTANCE instance = nullptr);
    bool DestroyWindow();

    /* Handles a message: by the message map, else DefWindowProc. */
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /* Searches the message maps, own first; true if a handler took the message. */
    virtual bool OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    /* Calls the procedure that the window had before it was subclassed. */
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /* Called after the window is gone; an object made with new may delete itself here. */
    virtual void PostNcDestroy() {}
    /* Passes the message in flight to DefWindowProc. */
    LRESULT Default();

    HWND m_hWnd = nullptr;

protected:
    static const AFX_MSGMAP_ENTRY messageEntries[];
    static const AFX_MSGMAP messageMap;
    virtual const AFX_MSGMAP* GetMessageMap() const;

private:
    friend LRESULT CALLBACK AfxWndProc(HWND, UINT, WPARAM, LPARAM);
    friend LRESULT CALLBACK AfxCbtHookProc(int, WPARAM, LPARAM);
    void OnNcDestroy();

    WNDPROC m_pfnSuper = nullptr;
    bool m_bTemporary = false;
    friend class CHandleMap;
};

/* From window handles to window objects, for one thread. */
class TAVIX_API CHandleMap {
public:
    ~CHandleMap() { DeleteTemp(); }
    CWnd* FromHandle(HWND window);
    CWnd* LookupPermanent(HWND window) const;
    /* True if the object is the permanent one of some window; `object` may be any address. */
    bool HasPermanent(const void* object) const;
    /* True if any window has a permanent object. */
    bool HasPermanents() const { return !m_permanentMap.IsEmpty(); }
    void SetPermanent(HWND window, CWnd* object);
    void RemovePermanent(HWND window);
    /* Frees the temporary objects. */
    void DeleteTemp();

private:
    CMapPtrToPtr m_permanentMap;
    CMapPtrToPtr m_temporaryMap;
};

/* The window procedure of all windows of the framework. */
LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
