/* CTavixSkin: the engine of a skinned thread. */
#pragma once

#include "tavixskin/framework/containers.h"
#include "tavixskin/skin_face.h"
#include "tavixskin/subclass_map.h"

/*
 * Made by InstallTavixSkin and gone after UnInstallTavixSkin; there is one in each skinned
 * thread, found by the thread's id. All members run on that thread. RegisterSkinWnd,
 * UnRegisterSkinWnd and AddControl act on the calling thread's engine, whichever object they
 * are called on.
 */
class TAVIX_API CTavixSkin : public CObject {
    DECLARE_DYNAMIC(CTavixSkin)
public:
    CTavixSkin();
    ~CTavixSkin() override;

    /* Starts skinning for the calling thread: 1, or 0 if the hook can't be set. */
    int InstallSkin();
    /* Ends it. The object is deleted. */
    void UnInstallSkin();

    /* 0 if nothing exists at the path, else 1, whatever could be read. */
    int LoadSkin(CString path);
    /* Always 1. */
    int UnLoadSkin();
    /*
     * Replaces the values, repaints all skinned windows, and sends message 0x703 to the
     * registered ones. 0 if nothing exists at the path: the old skin is gone then too.
     */
    int SetNewSkin(CString path);

    /*
     * Attaches a skin object if the window's class has one. With a hint of "Dialog" only a
     * window of class "#32770" gets one. 0 if the window has a skin object already, else 1.
     */
    int AddControl(HWND window, char* hint);
    /* Creates nothing. 0 if the window has a skin object, else 1. */
    int AddControl_1(HWND window, char* hint);

    // None of the exported members is inline: an inline one would not be in the export table.
    DWORD GetTavixSkinColor(DWORD id);
    CBitmap* GetTavixSkinBmp(DWORD id);
    DWORD GetTavixSkinSize(DWORD id);

    CSubclassWndMap* GetSkinWndList();
    CArray<HWND, HWND*>* GetRegistedSkinWnd();

    /* Lists the window, once, for message 0x703 (no parameters) after a change of skin. Always 1. */
    int RegisterSkinWnd(HWND window);
    /* Takes it from the list; a window that is not listed changes nothing. Always 1. */
    int UnRegisterSkinWnd(HWND window);

    static CMapWordToPtr* GetHookedThreadList();
    static CMapWordToPtr* GetThreadSkinData();
    /* 1 if the thread has an engine. Thread ids are compared by their low 16 bits. */
    static int IsSkinnedThread(DWORD threadId);

    /* Values of the calling thread's skin; 0 or null on a thread without one. */
    static DWORD GetGloalTavixSkinColor(DWORD id);
    static CBitmap* GetGloalTavixSkinBmp(DWORD id);
    static DWORD GetGloalTavixSkinSize(DWORD id);

    /* The calling thread's engine, or null. The one road to the engine. */
    static CTavixSkin* GetCurrentThreadSkin() {
        void* engine = nullptr;
        m_lstThreadSkinData.Lookup(static_cast<WORD>(::GetCurrentThreadId()), engine);
        return static_cast<CTavixSkin*>(engine);
    }

private:
    CArray<HWND, HWND*> m_lstRegistedSkinWnd;
    CSubclassWndMap m_lstSkinWnd;
    CTavixSkinFace m_SkinFace;
    HHOOK m_hHook;
    HANDLE m_hMutex;

    static CMapWordToPtr m_lstHookedThread;
    static CMapWordToPtr m_lstThreadSkinData;
};
