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
    UINT nCode;     // WM_COMMAND: the notification code, or CN_UPDATE_COMMAND_UI
    UINT nID;       // WM_COMMAND: the first and last command that the entry takes
    UINT nLastID;
    AFX_PMSG pfn;
};

/* The code of an entry that brings the look of commands up to date; its handler gets a CCmdUI* in lParam. */
constexpr UINT CN_UPDATE_COMMAND_UI = 0xFFFFFFFF;

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
#define ON_UPDATE_COMMAND_UI_RANGE(first, last, handler) \
    {WM_COMMAND, CN_UPDATE_COMMAND_UI, first, last, static_cast<AFX_PMSG>(handler)},

#define END_MESSAGE_MAP()   \
    { 0, 0, 0, 0, nullptr } \
    }                       \
    ;

/* What shows a command, a button of a tool bar for one, and is to be brought up to date. */
class TAVIX_API CCmdUI {
public:
    CCmdUI(UINT id, UINT index) : m_nID(id), m_nIndex(index) {}
    virtual ~CCmdUI() = default;
    CCmdUI(const CCmdUI&) = delete;
    CCmdUI& operator=(const CCmdUI&) = delete;

    virtual void Enable(bool on = true) = 0;

    UINT m_nID;     // the command
    UINT m_nIndex;  // the place in its bar
};

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

    /* The window that the object's messages to others go to: the one set, else its parent. */
    HWND GetOwner() const { return m_hWndOwner ? m_hWndOwner : m_hWnd ? ::GetParent(m_hWnd) : nullptr; }
    void SetOwner(HWND owner) { m_hWndOwner = owner; }
    /* Has a handler of the object's message maps bring a command's look up to date; false if none does. */
    bool UpdateCommand(CCmdUI& ui);

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
    /* May change what the window is created with; false: no window. */
    virtual bool PreCreateWindow(CREATESTRUCTA& create);

private:
    friend LRESULT CALLBACK AfxWndProc(HWND, UINT, WPARAM, LPARAM);
    friend LRESULT CALLBACK AfxCbtHookProc(int, WPARAM, LPARAM);
    static CWnd* ObjectOf(HWND window, struct AFX_THREAD_STATE& thread);
    void OnNcDestroy();
    bool CreateFrom(const CREATESTRUCTA& create);

    WNDPROC m_pfnSuper = nullptr;
    HWND m_hWndOwner = nullptr;
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
