#include "scroll/scroll_host.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "engine/window_call.h"
#include "engine/window_class.h"
#include "framework/last_error.h"
#include "framework/srw_lock.h"
#include "framework/thread_slot.h"
#include "scroll/skin_scroll_bar.h"
#include "scroll/stub_region_wnd.h"
#include "tavixskin/framework/module_state.h"

CArray<SCROLLHOST*, SCROLLHOST*> m_arrScrollHosts;

namespace {

// A record as it is kept. Its windows can be destroyed only by the thread that made them.
struct HostRecord : SCROLLHOST {
    DWORD ownerThread = ::GetCurrentThreadId();
    HostRecord* next = nullptr;  // in the list of removed records
};

// Guards the array and the records in it. Objects of bars are deleted only after their record has
// left the array, so whoever holds the lock may read their handles.
tavix::SrwLock g_lock;
// How many hosts have a handle of one hash, and which it is where that is known: where it is the only one
// that came. Most calls come for windows that are no hosts, and see here, without a lock, that they aren't.
struct HostsOfHash {
    std::atomic<unsigned> count;
    std::atomic<HWND> only;
};
constexpr std::size_t kHashes = 1024;
HostsOfHash g_hashes[kHashes];

HostsOfHash& HashOf(HWND window) {
    const auto value = reinterpret_cast<std::uintptr_t>(window);
    // Handles are even numbers, and differ in their low words first.
    return g_hashes[(value >> 1 ^ value >> 11) % kHashes];
}

// Under the lock.
void CountHost(HWND window) {
    HostsOfHash& hash = HashOf(window);
    hash.only = hash.count == 0 ? window : nullptr;
    ++hash.count;
}

void UncountHost(HWND window) {
    HostsOfHash& hash = HashOf(window);
    if (--hash.count == 0) hash.only = nullptr;
}

// Replaced functions may be called while the process ends, when the array is gone.
struct EndOfHosts {
    ~EndOfHosts() {
        for (HostsOfHash& hash : g_hashes) hash.count = 0;
    }
} g_endOfHosts;

// Guards the two lists below.
tavix::SrwLock g_removedLock;
HostRecord* g_removed = nullptr;    // waiting for the threads that own their windows
std::vector<DWORD> g_ownerThreads;  // threads that made hosts and still run

HWND HandleOf(const CWnd* window) { return window ? window->GetSafeHwnd() : nullptr; }

// ---------------------------------------------------------------- the end of a record

void EndWindow(CWnd* window) {
    if (!window) return;
    window->DestroyWindow();
    // A bar's own handler may be what led here.
    AfxDeleteLater(window);
}

// In the thread that owns the windows.
void EndRecord(HostRecord* record) {
    EndWindow(record->m_pStub);
    EndWindow(record->m_pHorzBar);
    EndWindow(record->m_pVertBar);
    delete record;
}

void DeleteWithoutWindow(CWnd* window) {
    if (window) window->m_hWnd = nullptr;
    delete window;
}

// The owner thread is gone, and its windows with it.
void DeleteRecord(HostRecord* record) {
    DeleteWithoutWindow(record->m_pStub);
    DeleteWithoutWindow(record->m_pHorzBar);
    DeleteWithoutWindow(record->m_pVertBar);
    delete record;
}

// Takes a thread's removed record from the list, null when there is none left.
HostRecord* TakeRemoved(DWORD thread) {
    const tavix::SrwLock::Exclusive guard(g_removedLock);
    for (HostRecord** link = &g_removed; *link; link = &(*link)->next)
        if ((*link)->ownerThread == thread) return std::exchange(*link, (*link)->next);
    return nullptr;
}

// Tells the end of a thread that owns hosts.
class OwnerThread {
public:
    OwnerThread() {
        const tavix::SrwLock::Exclusive guard(g_removedLock);
        g_ownerThreads.push_back(m_thread);
    }
    ~OwnerThread() {
        {
            const tavix::SrwLock::Exclusive guard(g_removedLock);
            std::erase(g_ownerThreads, m_thread);
        }
        while (HostRecord* record = TakeRemoved(m_thread)) DeleteRecord(record);
    }
    void Mark() const {}

private:
    DWORD m_thread = ::GetCurrentThreadId();
};
tavix::ThreadSlot<OwnerThread> g_ownerThread;

// Windows can't be destroyed across threads: the owner gets the record, and is told.
void HandOver(HostRecord* record) {
    const HWND windows[] = {HandleOf(record->m_pStub), HandleOf(record->m_pHorzBar),
                            HandleOf(record->m_pVertBar)};
    bool isOwnerRunning;
    {
        const tavix::SrwLock::Exclusive guard(g_removedLock);
        isOwnerRunning = std::find(g_ownerThreads.begin(), g_ownerThreads.end(), record->ownerThread) !=
                         g_ownerThreads.end();
        if (isOwnerRunning) record->next = std::exchange(g_removed, record);
    }
    if (!isOwnerRunning) {
        DeleteRecord(record);
        return;
    }
    // From here on the record is the owner's.
    for (HWND window : windows)
        if (window) ::ShowWindowAsync(window, SW_HIDE);
    if (windows[0]) ::PostMessageA(windows[0], CStubRegionWnd::kDropRemovedHosts, 0, 0);
}

void EndOrHandOver(HostRecord* record) {
    if (record->ownerThread == ::GetCurrentThreadId())
        EndRecord(record);
    else
        HandOver(record);
}

// ---------------------------------------------------------------- the array

// Under the lock.
int IndexOf(HWND window) {
    for (int i = 0; i < m_arrScrollHosts.GetSize(); ++i)
        if (m_arrScrollHosts[i] && m_arrScrollHosts[i]->m_hWnd == window) return i;
    return -1;
}

// Under the lock.
HostRecord* TakeOut(int index) {
    auto* record = static_cast<HostRecord*>(m_arrScrollHosts[index]);
    m_arrScrollHosts.RemoveAt(index);
    if (record) UncountHost(record->m_hWnd);
    return record;
}

tavix::HostBars BarsOf(const SCROLLHOST& record) {
    return {
        record.m_hWnd,     HandleOf(record.m_pVertBar), HandleOf(record.m_pHorzBar), HandleOf(record.m_pStub),
        record.m_bVisible, record.m_bVertShown,         record.m_bHorzShown};
}

// ---------------------------------------------------------------- the layout

void Place(HWND window, const CRect& at) {
    if (window) ::MoveWindow(window, at.left, at.top, at.Width(), at.Height(), TRUE);
}

void Show(HWND window, int command) {
    if (window) ::ShowWindow(window, command);
}

// In the co-ordinates of the host's parent.
CRect ClientOf(HWND host) {
    CRect client;
    ::GetClientRect(host, &client);
    const HWND parent = ::GetParent(host);
    ::MapWindowPoints(host, ::IsWindow(parent) ? parent : nullptr, reinterpret_cast<POINT*>(&client), 2);
    return client;
}

// What no window comes near, so that widths and sums of a caller's rectangle can't overflow.
CRect WithinWindows(const CRect& r) {
    const auto clamp = [](LONG value) { return std::clamp<LONG>(value, -0x3FFFFFF, 0x3FFFFFF); };
    return {clamp(r.left), clamp(r.top), clamp(r.right), clamp(r.bottom)};
}

void ApplyLayout(const tavix::HostBars& bars, const tavix::HostLayout& layout) {
    if (bars.isHorizontalShown && bars.isVerticalShown) {
        Place(bars.corner, layout.corner);
        Place(bars.horizontal, layout.horizontal);
        Place(bars.vertical, layout.vertical);
        if (!bars.isVisible) return;
        for (HWND window : {bars.corner, bars.horizontal, bars.vertical}) Show(window, SW_SHOW);
    } else if (bars.isHorizontalShown) {
        for (HWND window : {bars.corner, bars.vertical}) Show(window, SW_HIDE);
        Place(bars.horizontal, layout.horizontal);
        if (bars.isVisible) Show(bars.horizontal, SW_SHOW);
    } else if (bars.isVerticalShown) {
        Show(bars.horizontal, SW_HIDE);
        Place(bars.vertical, layout.vertical);
        if (bars.isVisible) Show(bars.vertical, SW_SHOW);
        Show(bars.corner, SW_HIDE);
    } else {
        for (HWND window : {bars.horizontal, bars.vertical, bars.corner}) Show(window, SW_HIDE);
    }
}

// Lays out the host that `find` names under the lock.
template <class Find>
void LayoutFound(Find find, std::optional<int> horizontal, std::optional<int> vertical, CRect client) {
    tavix::HostBars bars;
    CSize former;
    {
        const tavix::SrwLock::Exclusive guard(g_lock);
        const int index = find();
        if (index < 0 || index >= m_arrScrollHosts.GetSize()) return;
        SCROLLHOST& record = *m_arrScrollHosts[index];
        former = CSize(record.m_bVertShown, record.m_bHorzShown);
        record.m_bHorzShown = horizontal.value_or(record.m_bHorzShown);
        record.m_bVertShown = vertical.value_or(record.m_bVertShown);
        bars = BarsOf(record);
    }
    const CSize thickness(::GetSystemMetrics(SM_CXVSCROLL), ::GetSystemMetrics(SM_CYHSCROLL));
    if (client.IsRectEmpty())
        client = tavix::ClientWithNewBars(ClientOf(bars.host), former,
                                          CSize(bars.isVerticalShown, bars.isHorizontalShown), thickness);
    ApplyLayout(bars, tavix::LayoutOfHost(WithinWindows(client), thickness));
}

// ---------------------------------------------------------------- the making of a host

bool IsOfThisProcess(HWND window) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    return process == ::GetCurrentProcessId();
}

void RaiseWindow(HWND window) { ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE); }

// In the order in which they were made, so that the corner comes to lie topmost.
void RaiseParts(const tavix::HostBars& bars) {
    for (HWND window : {bars.vertical, bars.horizontal, bars.corner})
        if (window) RaiseWindow(window);
}

SCROLLINFO NativeInfo(HWND host, int bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    ::GetScrollInfo(host, bar, &info);
    info.fMask = SIF_ALL;
    return info;
}

CSkinScrollBar* MakeBar(HWND host, int bar, CWnd* parent, UINT id) {
    SCROLLINFO info = NativeInfo(host, bar);
    auto made = std::make_unique<CSkinScrollBar>();
    const DWORD style = WS_CHILD | WS_CLIPSIBLINGS | (bar == SB_VERT ? SBS_VERT : SBS_HORZ);
    if (!made->Create(style, CRect(), parent, id)) return nullptr;
    made->SetOwner(host);
    RaiseWindow(made->GetSafeHwnd());
    tavix::CallWindow(made->GetSafeHwnd(), SBM_SETSCROLLINFO, TRUE, reinterpret_cast<LPARAM>(&info));
    return made.release();
}

CStubRegionWnd* MakeCorner(CWnd* parent, UINT id) {
    auto made = std::make_unique<CStubRegionWnd>();
    if (!made->Create(nullptr, "Stub Region", WS_CHILD, CRect(), parent, id)) return nullptr;
    RaiseWindow(made->GetSafeHwnd());
    return made.release();
}

// The windows of the host with the given number; none of them shows yet. Null if one can't be made.
HostRecord* MakeRecord(HWND window, CWnd* parent, UINT number) {
    auto* record = new HostRecord;
    record->m_hWnd = window;
    // Three control ids a host; numbers, and so ids, repeat when hosts have gone.
    const UINT id = 4 * number - 0xFFFF;
    record->m_pVertBar = MakeBar(window, SB_VERT, parent, id);
    record->m_pHorzBar = record->m_pVertBar ? MakeBar(window, SB_HORZ, parent, id + 1) : nullptr;
    record->m_pStub = record->m_pHorzBar ? MakeCorner(parent, id + 2) : nullptr;
    if (record->m_pStub) return record;
    EndRecord(record);
    return nullptr;
}

}  // namespace

int InstallScrollHost(HWND window) try {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
    // Bars of another program's window would change that program's window.
    if (!::IsWindow(window) || !IsOfThisProcess(window)) return 0;
    g_ownerThread.Get().Mark();
    tavix::DropRemovedHosts();
    ::ShowScrollBar(window, SB_BOTH, FALSE);
    const LONG style = ::GetWindowLongA(window, GWL_STYLE);
    if (!(style & WS_CLIPSIBLINGS)) ::SetWindowLongA(window, GWL_STYLE, style | WS_CLIPSIBLINGS);
    const bool sinks = tavix::WindowClassName(window).Is("Tavix_PaneH");
    ::SetWindowPos(window, sinks ? HWND_BOTTOM : HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    CWnd* parent = CWnd::FromHandle(::GetParent(window));
    if (!parent) return 0;
    if (const auto bars = tavix::FindHostBars(window, SB_BOTH)) {
        // The host has risen above the bars that it had.
        if (!sinks) RaiseParts(*bars);
        return 1;
    }
    UINT number;
    {
        const tavix::SrwLock::Shared guard(g_lock);
        number = static_cast<UINT>(m_arrScrollHosts.GetSize());
    }
    HostRecord* record = MakeRecord(window, parent, number);
    if (!record) return 0;
    {
        const tavix::SrwLock::Exclusive guard(g_lock);
        m_arrScrollHosts.Add(record);
        CountHost(window);
    }
    return 1;
} catch (const std::bad_alloc&) {
    return 0;
}

int RemoveScrollHost(HWND window) {
    HostRecord* record;
    {
        const tavix::SrwLock::Exclusive guard(g_lock);
        const int index = IndexOf(window);
        if (index < 0) return 0;
        record = TakeOut(index);
    }
    EndOrHandOver(record);
    return 1;
}

int FindScrollHost(HWND window, int bar) {
    if (bar == SB_CTL) return -1;
    int index;
    {
        const tavix::SrwLock::Shared guard(g_lock);
        index = IndexOf(window);
    }
    if (index < 0) return -3;
    if (::IsWindow(window)) return index;
    RemoveScrollHost(window);
    return -1;
}

int GetScrollHostRecord(HWND window, SCROLLHOST* record) {
    if (!::IsWindow(window)) return -1;
    const tavix::SrwLock::Shared guard(g_lock);
    const int index = IndexOf(window);
    if (index < 0) return -1;
    if (record) *record = *m_arrScrollHosts[index];
    return index;
}

void LayoutScrollHost(int index, int horizontal, int vertical, CRect client) {
    LayoutFound([index] { return index; }, horizontal, vertical, client);
}

namespace tavix {

CRect ClientWithNewBars(CRect client, const CSize& former, const CSize& wanted, const CSize& thickness) {
    if (!former.cx && wanted.cx) client.right -= thickness.cx;
    if (!former.cy && wanted.cy) client.bottom -= thickness.cy;
    return client;
}

HostLayout LayoutOfHost(const CRect& client, const CSize& thickness) {
    const int right = client.right + thickness.cx, bottom = client.bottom + thickness.cy;
    return {CRect(client.right, client.top, right, client.bottom),
            CRect(client.left, client.bottom, client.right, bottom),
            CRect(client.right, client.bottom, right, bottom)};
}

void LayoutHost(HWND host, std::optional<int> horizontal, std::optional<int> vertical) {
    LayoutFound([host] { return IndexOf(host); }, horizontal, vertical, CRect());
}

bool MayBeHost(HWND window) {
    const HostsOfHash& hash = HashOf(window);
    if (hash.count.load(std::memory_order_relaxed) == 0) return false;
    const HWND only = hash.only.load(std::memory_order_relaxed);
    return !only || only == window;
}

std::optional<HostBars> FindHostBars(HWND window, int bar) {
    if (bar == SB_CTL || !MayBeHost(window)) return std::nullopt;
    HostBars bars;
    {
        const SrwLock::Shared guard(g_lock);
        const int index = IndexOf(window);
        if (index < 0) return std::nullopt;
        bars = BarsOf(*m_arrScrollHosts[index]);
    }
    const LastErrorKeeper keeper;
    if (::IsWindow(window)) return bars;
    RemoveScrollHost(window);
    return std::nullopt;
}

void SetHostVisible(HWND host, int isVisible) {
    const SrwLock::Exclusive guard(g_lock);
    const int index = IndexOf(host);
    if (index >= 0) m_arrScrollHosts[index]->m_bVisible = isVisible;
}

void RefreshHostBar(HWND host, int bar) {
    CSkinScrollBar* object;
    HWND corner;
    DWORD owner;
    {
        const SrwLock::Shared guard(g_lock);
        const int index = IndexOf(host);
        if (index < 0) return;
        const auto& record = *static_cast<HostRecord*>(m_arrScrollHosts[index]);
        object = bar == SB_VERT ? record.m_pVertBar : record.m_pHorzBar;
        corner = HandleOf(record.m_pStub);
        owner = record.ownerThread;
    }
    // Only the owner thread deletes the bar: in that thread it is there until this call returns.
    if (owner == ::GetCurrentThreadId()) {
        if (HandleOf(object)) object->RefreshFromOwner();
    } else if (corner) {
        ::SendMessageA(corner, CStubRegionWnd::kRefreshBar, static_cast<WPARAM>(bar),
                       reinterpret_cast<LPARAM>(host));
    }
}

void DropRemovedHosts() {
    while (HostRecord* record = TakeRemoved(::GetCurrentThreadId())) EndRecord(record);
}

void RemoveAllScrollHosts() {
    for (;;) {
        HostRecord* record;
        {
            const SrwLock::Exclusive guard(g_lock);
            if (m_arrScrollHosts.IsEmpty()) break;
            record = TakeOut(0);
        }
        if (record) EndOrHandOver(record);
    }
    const SrwLock::Exclusive guard(g_lock);
    m_arrScrollHosts.RemoveAll();
}

}  // namespace tavix
