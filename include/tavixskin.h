/*
 * TavixSkinCtrls: gives the windows of a desktop program their look from a skin file.
 *
 * The whole C interface, for any language that can call a DLL. A program calls
 * InstallTavixSkin before it makes its windows and UnInstallTavixSkin after it has
 * destroyed them:
 *
 *     if (!InstallTavixSkin("porcelain.skn"))
 *         ;                          // the program runs on with its native look
 *     ...create windows, run the message loop, destroy the windows...
 *     UnInstallTavixSkin();
 *
 * All functions are cdecl, exported undecorated, and never throw, show a message or
 * write a log. All act on the calling thread, but IsSkinnedThread. Installs and uninstalls
 * on several threads must not overlap in time. A thread has one skin; one skinned thread in
 * a process is the supported case.
 */
#ifndef TAVIXSKIN_H
#define TAVIXSKIN_H

#include <windows.h>

#if defined(TAVIX_BUILDING_LIBRARY) || defined(TAVIX_NO_IMPORT)
#define TAVIX_C_API
#else
#define TAVIX_C_API __declspec(dllimport)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Skins the calling thread: every window that it creates from now on takes its look from
 * the skin file. Windows that exist already stay as they are for as long as they live.
 *
 * path    the skin file's path, zero-terminated, in the ANSI code page; read during the call
 *         only. The file is opened for writing and loses a read-only attribute.
 * result  1 if the thread is now skinned. 0 if path is null, if nothing exists there, if the
 *         thread is skinned already (its skin stays) or if the hook can't be set.
 *         A file that exists but is no skin gives 1 and a skin without values.
 */
TAVIX_C_API int __cdecl InstallTavixSkin(const char* path);

/*
 * Takes the skin from the calling thread; does nothing if it has none. Call it last, after
 * all skinned windows of the thread have been destroyed, and before you free the library.
 * Bitmaps obtained from GetTavixSkinHBITMAP are gone afterwards.
 */
TAVIX_C_API void __cdecl UnInstallTavixSkin(void);

/*
 * Tells whether a thread is skinned; may be asked for any thread.
 *
 * threadId  the thread's id; only its low 16 bits are compared, so an id that shares them
 *           with a skinned thread's id answers 1 too
 * result    1 or 0
 */
TAVIX_C_API int __cdecl IsSkinnedThread(DWORD threadId);

/*
 * Replaces the skin of the calling thread while its windows stay open. All skinned windows
 * are repainted; then each window registered through CTavixSkin::RegisterSkinWnd is sent
 * message 0x703 with both parameters 0. The old skin is gone before the new one is looked at.
 *
 * path    as for InstallTavixSkin
 * result  1 on success. 0 if the thread is not skinned (nothing changes), or if path is null
 *         or nothing exists there (the thread then has an empty skin).
 */
TAVIX_C_API int __cdecl SetSkinFromFile(const char* path);

/*
 * Kept for programs that call them: both read no argument, do nothing and return 1.
 * To be told of a new skin call CTavixSkin::RegisterSkinWnd (tavixskin/tavix_skin.h).
 */
TAVIX_C_API int __cdecl RegisterSkinWnd(HWND window);
TAVIX_C_API int __cdecl UnRegisterSkinWnd(HWND window);

/*
 * Gives a bitmap of the calling thread's skin.
 *
 * id      the bitmap's number, 0 to 254 (tavixskin/value_ids.h names them)
 * result  the handle, owned by the library and valid until the skin is changed or removed;
 *         do not delete or draw into it. 0 if there is no such bitmap, if the thread is not
 *         skinned, or if id is 255 or more.
 */
TAVIX_C_API HBITMAP __cdecl GetTavixSkinHBITMAP(DWORD id);

#ifdef __cplusplus
}
#endif

#endif
