/* Scroll hosts: windows whose native scroll bars are covered by skin scroll bars. */
#pragma once

#include <windows.h>

#include <optional>

#include "tavixskin/framework/containers.h"
#include "tavixskin/framework/geometry.h"

class CSkinScrollBar;
class CStubRegionWnd;

/*
 * One host. The three windows are siblings of the host, laid over its native bars; they belong to
 * the thread that made the window a host.
 */
struct SCROLLHOST {
    HWND m_hWnd = nullptr;
    CSkinScrollBar* m_pVertBar = nullptr;
    CSkinScrollBar* m_pHorzBar = nullptr;
    CStubRegionWnd* m_pStub = nullptr;  // fills the corner where the bars meet
    int m_bVisible = 1;                 // the host's visibility as the library last saw it
    int m_bVertShown = 0;               // the vertical bar is wanted
    int m_bHorzShown = 0;
};

/* All hosts of the process, in the order in which they became hosts. A record's place is its index. */
extern CArray<SCROLLHOST*, SCROLLHOST*> m_arrScrollHosts;

/*
 * Makes the window a host, its bars hidden until a replaced scroll function lays them out. 1: it is one,
 * now or already; the bars that it has already come to lie above it again. 0: it can't be one; without a
 * parent it keeps its hidden bars, clipping and place in the Z-order all the same.
 */
int InstallScrollHost(HWND window);
/* 1 if a record was removed, 0 if there was none. */
int RemoveScrollHost(HWND window);
/*
 * The host's index; -1 for a scroll bar control (SB_CTL) or a host that is gone, whose record is
 * removed; -3 for a window that is not a host.
 */
int FindScrollHost(HWND window, int bar);
/* The host's index, and its record copied out; -1, and nothing copied, if it is gone or not a host. */
int GetScrollHostRecord(HWND window, SCROLLHOST* record);
/*
 * Stores which bars are wanted, and lays them out and shows or hides them. An empty rectangle
 * means the host's client area; otherwise it is that area in the parent's co-ordinates.
 */
void LayoutScrollHost(int index, int horizontal, int vertical, CRect client);

namespace tavix {

/* Where a host's windows go. */
struct HostLayout {
    CRect vertical;
    CRect horizontal;
    CRect corner;
};
/* `client` is what the host has left once its native bars are there; `thickness` that of a bar. */
HostLayout LayoutOfHost(const CRect& client, const CSize& thickness);
/*
 * A native bar that newly comes is not there yet: the client area will be smaller by it. `former` and
 * `wanted`: cx other than 0 for the vertical bar, cy for the horizontal one.
 */
CRect ClientWithNewBars(CRect client, const CSize& former, const CSize& wanted, const CSize& thickness);

/* A host as it stood at one moment, as any thread may use it: by handles alone. */
struct HostBars {
    HWND host;
    HWND vertical;
    HWND horizontal;
    HWND corner;
    int isVisible;
    int isVerticalShown;
    int isHorizontalShown;

    /* The bar that a bar code means. */
    HWND Bar(int code) const { return code == SB_VERT ? vertical : horizontal; }
};
/* False only for windows that are no hosts; costs next to nothing, which most calls need. */
bool MayBeHost(HWND window);
/* As FindScrollHost, any negative result being nothing. Keeps the thread's last error. */
std::optional<HostBars> FindHostBars(HWND window, int bar);

/* Lays a host out, each flag as given or, without one, as it is. Nothing for a window that is no host. */
void LayoutHost(HWND host, std::optional<int> horizontal, std::optional<int> vertical);
/* Records whether the host is visible. */
void SetHostVisible(HWND host, int isVisible);
/* Has the host's bar (SB_VERT or SB_HORZ) read the native state, in the thread that owns the bar. */
void RefreshHostBar(HWND host, int bar);
/* Ends the hosts that other threads removed and whose windows belong to the calling thread. */
void DropRemovedHosts();
/* Removes every host of the process. */
void RemoveAllScrollHosts();

}  // namespace tavix
