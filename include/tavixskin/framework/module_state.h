/* What the framework keeps for a module and for a thread. */
#pragma once

#include <windows.h>

#include "tavixskin/export.h"

class CHandleMap;
class CObject;
class CWnd;
struct AFX_DOOMED_OBJECT;

/* A module that uses the framework: the library is one, the program around it another. */
struct AFX_MODULE_STATE {
    const char* m_lpszName;
};

/* One object a thread, made at its first use and freed with the thread. */
struct AFX_THREAD_STATE {
    AFX_THREAD_STATE();
    ~AFX_THREAD_STATE();

    /* The message in flight: what Default forwards. */
    MSG m_lastSentMsg{};
    /* The module whose code runs; null means the program's. */
    AFX_MODULE_STATE* m_pModuleState = nullptr;
    /* The window object that the next window to be created belongs to, and its hook if it needs one. */
    CWnd* m_pWndInit = nullptr;
    HHOOK m_hHookCreate = nullptr;
    /* Nesting of AFX_MAINTAIN_STATE2; temporary window objects go when the outermost ends. */
    int m_nMaintainDepth = 0;
    CHandleMap* m_pmapHWND = nullptr;
    /* Objects that go when the outermost AFX_MAINTAIN_STATE2 ends. */
    AFX_DOOMED_OBJECT* m_pDoomed = nullptr;
};

TAVIX_API AFX_THREAD_STATE* AfxGetThreadState();
/* The module state of the calling thread, the program's if none was set. */
TAVIX_API AFX_MODULE_STATE* AfxGetModuleState();
/* The library's own module state. */
TAVIX_API AFX_MODULE_STATE* AfxGetLibraryModuleState();
/* The window handle map of the calling thread, made if `create` is set. */
TAVIX_API CHandleMap* AfxMapHWND(bool create);

/*
 * Deletes an object whose code may still be running further up the calling thread's stack: once
 * the outermost AFX_MAINTAIN_STATE2 of the thread ends, at once if there is none.
 */
TAVIX_API void AfxDeleteLater(CObject* object);
/* Loads the library for good: code that nobody can call back may still lead into it. */
TAVIX_API void AfxKeepLibraryLoaded();

/*
 * Switches the thread to a module state for the length of a scope and puts the former one back
 * on every way out. Stands at the head of every export and of the shared window procedure.
 */
class TAVIX_API AFX_MAINTAIN_STATE2 {
public:
    explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state);
    ~AFX_MAINTAIN_STATE2();
    AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
    AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

    AFX_THREAD_STATE* ThreadState() const { return m_pThreadState; }

private:
    AFX_THREAD_STATE* m_pThreadState;
    AFX_MODULE_STATE* m_pFormer;
};
