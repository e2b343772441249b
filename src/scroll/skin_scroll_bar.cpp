#include "scroll/skin_scroll_bar.h"

#include <algorithm>
#include <climits>

#include "controls/parent_background.h"
#include "draw/bitmap_region.h"
#include "draw/offscreen.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "engine/window_call.h"
#include "frames/non_client.h"
#include "scroll/scroll_bar_paint.h"
#include "tavixskin/value_ids.h"

using tavix::ScrollBarPart;
using tavix::ScrollBarRects;
using tavix::ScrollBarValues;
using tavix::SkinBitmap;
using tavix::SkinColour;

IMPLEMENT_DYNAMIC(CSkinScrollBar, CScrollBar)

BEGIN_MESSAGE_MAP(CSkinScrollBar, CScrollBar)
    ON_MESSAGE(WM_PAINT, &CSkinScrollBar::OnPaint)
    ON_MESSAGE(WM_SIZE, &CSkinScrollBar::OnSize)
    ON_MESSAGE(WM_ENABLE, &CSkinScrollBar::OnEnable)
    ON_MESSAGE(WM_TIMER, &CSkinScrollBar::OnTimer)
    ON_MESSAGE(WM_LBUTTONDOWN, &CSkinScrollBar::OnLButtonDown)
    ON_MESSAGE(WM_LBUTTONUP, &CSkinScrollBar::OnLButtonUp)
    ON_MESSAGE(WM_MOUSEMOVE, &CSkinScrollBar::OnMouseMove)
    ON_MESSAGE(WM_RBUTTONDOWN, &CSkinScrollBar::OnRButton)
    ON_MESSAGE(WM_RBUTTONUP, &CSkinScrollBar::OnRButton)
    ON_MESSAGE(SBM_GETPOS, &CSkinScrollBar::OnGetPos)
    ON_MESSAGE(SBM_SETPOS, &CSkinScrollBar::OnSetPos)
    ON_MESSAGE(SBM_GETRANGE, &CSkinScrollBar::OnGetRange)
    ON_MESSAGE(SBM_SETRANGE, &CSkinScrollBar::OnSetRange)
    ON_MESSAGE(SBM_GETSCROLLINFO, &CSkinScrollBar::OnGetScrollInfo)
    ON_MESSAGE(SBM_SETSCROLLINFO, &CSkinScrollBar::OnSetScrollInfo)
END_MESSAGE_MAP()

namespace {

constexpr char kClassName[] = "TavixScrollBar10";

/* The module that this code is in: the owner of the window class. */
HINSTANCE LibraryInstance() {
    HMODULE module = nullptr;
    ::GetModuleHandleExA(
        GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, kClassName,
        &module);
    return module;
}

/* A class must not outlive the code of its procedure. */
struct ClassEnd {
    bool registered = false;
    ~ClassEnd() {
        if (registered) ::UnregisterClassA(kClassName, LibraryInstance());
    }
};
ClassEnd g_classEnd;

SCROLLINFO ReadScrollInfo(HWND window, int bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    if (!::GetScrollInfo(window, bar, &info)) info.fMask = 0;
    return info;
}

}  // namespace

// ---------------------------------------------------------------- life

CSkinScrollBar::CSkinScrollBar()
    : m_nThumbLen(::GetSystemMetrics(SM_CXVSCROLL)),
      m_nArrowLen(::GetSystemMetrics(SM_CXHTHUMB)),
      m_life(std::make_shared<const char>('\0')) {}

CSkinScrollBar::~CSkinScrollBar() = default;

int CSkinScrollBar::RegisterClass() {
    HINSTANCE instance = LibraryInstance();
    WNDCLASSA windowClass{};
    if (::GetClassInfoA(instance, kClassName, &windowClass)) return 1;
    if (!::GetClassInfoA(instance, "Static", &windowClass)) return 0;
    // Without double clicks a bar gets two presses.
    windowClass.style &= ~static_cast<UINT>(CS_DBLCLKS);
    windowClass.lpfnWndProc = &AfxWndProc;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = kClassName;
    if (!::RegisterClassA(&windowClass)) return 0;
    g_classEnd.registered = true;
    return 1;
}

int CSkinScrollBar::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    if (m_hWnd || !RegisterClass()) return 0;
    m_bHorz = (style & SBS_VERT) == 0;
    if (!CreateEx(0, kClassName, nullptr, style | WS_CHILD, rect, parent ? parent->m_hWnd : nullptr, id,
                  nullptr, LibraryInstance()))
        return 0;
    m_nThumbPixel = PosToPixel(m_nPos);
    return 1;
}

int CSkinScrollBar::AttachControl(HWND window) {
    m_bAttached = 1;
    if (!Attach(window)) return 0;
    const Presence present(*this);
    const SCROLLINFO info = ReadScrollInfo(window, SB_CTL);
    if (!present) return 1;
    m_bHorz = !HasStyle(SBS_VERT);
    ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc));
    // All windows of the class lose their double clicks with it.
    const auto classStyle = static_cast<DWORD>(::GetClassLongA(window, GCL_STYLE));
    ::SetClassLongA(window, GCL_STYLE, static_cast<LONG>(classStyle & ~DWORD{CS_DBLCLKS}));
    SetRange(info.nMin, info.nMax, TRUE);
    if (present) SetPage(static_cast<int>(info.nPage));
    if (!present) return 1;
    SetPos(info.nPos);
    m_nThumbPixel = PosToPixel(m_nPos);
    return 1;
}

// ---------------------------------------------------------------- what others are told

HWND CSkinScrollBar::Receiver() const { return m_hOwner ? m_hOwner : GetOwner(); }

int CSkinScrollBar::SetOwner(HWND owner) {
    const bool exists = ::IsWindow(owner);
    m_hOwner = nullptr;
    m_hOwner = exists ? owner : Receiver();
    return exists;
}

int CSkinScrollBar::SetOwner(CWnd* owner) { return SetOwner(owner ? owner->m_hWnd : nullptr); }

void CSkinScrollBar::RefreshFromOwner() {
    const Presence present(*this);
    const SCROLLINFO info = ReadScrollInfo(Receiver(), m_bHorz ? SB_HORZ : SB_VERT);
    if (!present || !info.fMask) return;
    m_nPos = info.nPos;
    m_nMin = info.nMin;
    m_nMax = info.nMax;
    SetPage(static_cast<int>(info.nPage));
}

// The receiver may do anything, the bar's end included.
bool CSkinScrollBar::Notify(int code) {
    const bool moves = code == SB_THUMBPOSITION || code == SB_THUMBTRACK;
    const int pos = moves ? PixelToPos(m_nThumbPixel) : 0;
    if (code == SB_THUMBTRACK) {
        if (pos == m_nLastTrackPos) return true;
        m_nLastTrackPos = pos;
    }
    const Presence present(*this);
    // A bar that covers a native one speaks as that would, without a handle.
    const LPARAM sender = m_bAttached ? reinterpret_cast<LPARAM>(m_hWnd) : 0;
    const DWORD packed = static_cast<DWORD>(pos) << 16 | static_cast<DWORD>(code);
    ::SendMessageA(Receiver(), m_bHorz ? WM_HSCROLL : WM_VSCROLL, packed, sender);
    return static_cast<bool>(present);
}

// ---------------------------------------------------------------- state

CRect CSkinScrollBar::Client() const {
    CRect client;
    if (m_hWnd) ::GetClientRect(m_hWnd, &client);
    return client;
}

int CSkinScrollBar::Length() const {
    const CRect client = Client();
    return m_bHorz ? client.Width() : client.Height();
}

ScrollBarValues CSkinScrollBar::Values() const {
    return {m_nMin, m_nMax, m_nPage, m_nPos, m_nThumbLen, m_nArrowLen};
}

void CSkinScrollBar::Take(const ScrollBarValues& values) {
    m_nMin = values.min;
    m_nMax = values.max;
    m_nPage = values.page;
    m_nPos = values.pos;
    m_nThumbLen = values.thumb_len;
}

int CSkinScrollBar::TrackLength() const { return tavix::TrackLength(Length(), m_nArrowLen); }
int CSkinScrollBar::PosToPixel(int pos) const { return tavix::PosToPixel(Values(), Length(), pos); }
int CSkinScrollBar::PixelToPos(int pixel) const { return tavix::PixelToPos(Values(), Length(), pixel); }

ScrollBarRects CSkinScrollBar::RectsFrom(int thumbStart) const {
    return tavix::RectsOf(Values(), Client(), m_bHorz != 0, thumbStart);
}

ScrollBarRects CSkinScrollBar::Rects() const {
    return RectsFrom(m_bDragging ? m_nThumbPixel : tavix::ThumbStart(Values(), Length()));
}

ScrollBarPart CSkinScrollBar::HitTest(const POINT& point) const { return tavix::HitTest(Rects(), point); }

int CSkinScrollBar::TakePage(int page) {
    ScrollBarValues values = Values();
    const int result = tavix::SetPage(values, Length(), page);
    Take(values);
    return result;
}

int CSkinScrollBar::SetPage(int page) {
    const int result = TakePage(page);
    if (m_hWnd) static_cast<void>(RepaintNow());
    return result;
}

void CSkinScrollBar::SetPos(int pos) {
    const bool visible = m_hWnd && ::IsWindowVisible(m_hWnd);
    if (visible) Invalidate(Rects().thumb, FALSE);
    ScrollBarValues values = Values();
    tavix::SetPos(values, pos);
    Take(values);
    if (visible) Invalidate(Rects().thumb, TRUE);
}

void CSkinScrollBar::SetRange(int min, int max, BOOL redraw) {
    ScrollBarValues values = Values();
    tavix::SetRange(values, min, max);
    Take(values);
    if (redraw && m_hWnd && ::IsWindowVisible(m_hWnd)) static_cast<void>(RepaintNow());
}

// ---------------------------------------------------------------- the messages of a scroll bar control

LRESULT CSkinScrollBar::OnGetPos(WPARAM, LPARAM) { return m_nPos; }

LRESULT CSkinScrollBar::OnSetPos(WPARAM wParam, LPARAM lParam) {
    SetPos(static_cast<int>(wParam));
    m_nThumbPixel = PosToPixel(m_nPos);
    if (lParam && ::IsWindowVisible(m_hWnd)) static_cast<void>(RepaintNow());
    return 1;
}

LRESULT CSkinScrollBar::OnGetRange(WPARAM wParam, LPARAM lParam) {
    if (int* min = reinterpret_cast<int*>(wParam)) *min = std::min(m_nMin, m_nMax);
    if (int* max = reinterpret_cast<int*>(lParam)) *max = m_nMax;
    return 0;
}

LRESULT CSkinScrollBar::OnSetRange(WPARAM wParam, LPARAM lParam) {
    SetRange(static_cast<int>(wParam), static_cast<int>(lParam), FALSE);
    if (m_nPage == 0) SetPage(1);
    return 0;
}

LRESULT CSkinScrollBar::OnGetScrollInfo(WPARAM, LPARAM lParam) {
    auto* info = reinterpret_cast<SCROLLINFO*>(lParam);
    if (!info) return 0;
    if (info->fMask & SIF_RANGE) info->nMin = m_nMin, info->nMax = m_nMax;
    if (info->fMask & SIF_PAGE) info->nPage = static_cast<UINT>(m_nPage);
    if (info->fMask & SIF_POS) info->nPos = m_nPos;
    // The structure was once shorter by its last field; whoever says so has no room for it.
    const bool hasTrackPos = info->cbSize != offsetof(SCROLLINFO, nTrackPos);
    if (info->fMask & SIF_TRACKPOS && hasTrackPos) info->nTrackPos = PixelToPos(m_nThumbPixel);
    return 1;
}

LRESULT CSkinScrollBar::OnSetScrollInfo(WPARAM wParam, LPARAM lParam) {
    if (!lParam) return m_nPos;
    // A copy: what paints may be the host's code, and the structure is the host's.
    const SCROLLINFO info = *reinterpret_cast<const SCROLLINFO*>(lParam);
    const Presence present(*this);
    if (info.fMask & SIF_RANGE) SetRange(info.nMin, info.nMax, FALSE);
    // A new page is always painted. With a redraw that is what ends the call, once for all that is new.
    if (info.fMask & SIF_PAGE) {
        const int page = static_cast<int>(info.nPage);
        if (wParam)
            TakePage(page);
        else
            SetPage(page);
    }
    if (!present) return 0;
    if (info.fMask & SIF_POS) {
        SetPos(info.nPos);
        m_nThumbPixel = PosToPixel(m_nPos);
    }
    const int pos = m_nPos;
    if (wParam && ::IsWindowVisible(m_hWnd) && RepaintNow()) return m_nPos;
    return pos;
}

// ---------------------------------------------------------------- the same as calls

int CSkinScrollBar::GetScrollPos() {
    return m_hWnd ? static_cast<int>(tavix::CallWindow(m_hWnd, SBM_GETPOS, 0, 0)) : m_nPos;
}

int CSkinScrollBar::SetScrollPos(int pos, BOOL redraw) {
    if (m_hWnd)
        return static_cast<int>(tavix::CallWindow(m_hWnd, SBM_SETPOS, static_cast<WPARAM>(pos), redraw));
    SetPos(m_nPos);
    return m_nPos;
}

void CSkinScrollBar::SetScrollRange(int min, int max, BOOL redraw) {
    if (!m_hWnd) return SetRange(min, max, FALSE);
    const Presence present(*this);
    tavix::CallWindow(m_hWnd, SBM_SETRANGE, static_cast<WPARAM>(min), max);
    if (redraw && present) tavix::CallWindow(m_hWnd, SBM_SETPOS, static_cast<WPARAM>(m_nPos), TRUE);
}

void CSkinScrollBar::GetScrollRange(int* min, int* max) {
    const auto to = reinterpret_cast<WPARAM>(min);
    if (m_hWnd)
        tavix::CallWindow(m_hWnd, SBM_GETRANGE, to, reinterpret_cast<LPARAM>(max));
    else
        OnGetRange(to, reinterpret_cast<LPARAM>(max));
}

int CSkinScrollBar::SetScrollInfo(SCROLLINFO* info, BOOL redraw) {
    if (!m_hWnd) return 0;
    return static_cast<int>(tavix::CallWindow(m_hWnd, SBM_SETSCROLLINFO, static_cast<WPARAM>(redraw),
                                              reinterpret_cast<LPARAM>(info)));
}

int CSkinScrollBar::GetScrollInfo(SCROLLINFO* info, UINT mask) {
    if (!m_hWnd || !info) return 0;
    if (mask) info->fMask = mask;
    return static_cast<int>(tavix::CallWindow(m_hWnd, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(info)));
}

// ---------------------------------------------------------------- painting

bool CSkinScrollBar::HasStyle(DWORD bits) const {
    return (static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE)) & bits) != 0;
}

void CSkinScrollBar::Invalidate(const RECT& area, BOOL erase) const {
    // No window would mean all windows of the screen.
    if (m_hWnd) ::InvalidateRect(m_hWnd, &area, erase);
}

bool CSkinScrollBar::RepaintNow(const RECT* area) {
    const Presence present(*this);
    if (!present) return false;
    // A hidden bar has nothing to repaint, and is painted whole when it shows.
    if (!::IsWindowVisible(m_hWnd)) return true;
    ::InvalidateRect(m_hWnd, area, TRUE);
    ::UpdateWindow(m_hWnd);
    return static_cast<bool>(present);
}

// The colour of the parent above the grip, or below it where there is nothing above.
COLORREF CSkinScrollBar::SizeGripBackground() const {
    const COLORREF plain = SkinColour(CLR_DLG_BACK_TO);
    HWND parent = m_hWnd ? ::GetParent(m_hWnd) : nullptr;
    if (!parent) return plain;
    const CRect place = tavix::WindowRectIn(m_hWnd, parent);
    const CClientDC dc(parent);
    const COLORREF beside = ::GetPixel(dc, place.left, place.top - 1 >= 0 ? place.top - 1 : place.bottom + 1);
    return beside != CLR_INVALID ? beside : plain;
}

void CSkinScrollBar::PaintBar(CDC& dc, const RECT& area) const {
    ScrollBarRects rects = Rects();
    rects.client = area;
    const bool enabled = IsEnabled();
    const bool thumbFits = m_nThumbLen <= TrackLength();
    const tavix::ScrollBarState state{enabled, m_bArrow1Pressed != 0, m_bArrow2Pressed != 0,
                                      m_bThumbPressed != 0, thumbFits};
    tavix::PaintScrollBar(dc, rects, m_bHorz != 0, tavix::ScrollBarPartsOf(state));
}

LRESULT CSkinScrollBar::OnPaint(WPARAM, LPARAM) {
    const Presence present(*this);
    // Erases the ground and paints the frame first, which are messages that others may hear.
    CPaintDC dc(m_hWnd);
    if (!present || !dc.m_hDC) return 0;
    const CRect client = Client();
    if (HasStyle(SBS_SIZEGRIP)) {
        const COLORREF background = SizeGripBackground();
        tavix::PaintOffscreen(dc, client,
                              [&](CDC& memory) { tavix::PaintSizeGrip(memory, client, client, background); });
        return 0;
    }
    tavix::PaintOffscreen(dc, client, [&](CDC& memory) { PaintBar(memory, client); });
    return 0;
}

void CSkinScrollBar::PaintTo(HDC dc, int left, int top, int right, int bottom) {
    const CRect place(left, top, right, bottom);
    const long long width = static_cast<long long>(right) - left;
    const long long height = static_cast<long long>(bottom) - top;
    if (!dc || width <= 0 || height <= 0 || width > SHRT_MAX || height > SHRT_MAX) return;
    const CRect area(0, 0, static_cast<int>(width), static_cast<int>(height));
    if (HasStyle(SBS_SIZEGRIP)) {
        // The grip goes to the context's origin, its picture to where the rectangle ends.
        const COLORREF background = SizeGripBackground();
        tavix::PaintOffscreen(dc, area,
                              [&](CDC& memory) { tavix::PaintSizeGrip(memory, area, place, background); });
        return;
    }
    tavix::PaintOffscreen(dc, place, [&](CDC& memory) {
        // The bar paints from its own origin on.
        ::OffsetViewportOrgEx(memory, left, top, nullptr);
        PaintBar(memory, area);
        ::OffsetViewportOrgEx(memory, -left, -top, nullptr);
    });
}

// A size grip is only as large as its picture, in the bottom right corner.
void CSkinScrollBar::CutSizeGrip() const {
    constexpr int kMostRuns = 8192;
    CBitmap* grip = SkinBitmap(BMP_FRAME_GRIPPER);
    const CSize size = tavix::BitmapSize(grip);
    const COLORREF key = SkinColour(CLR_TRANSPARENT);
    if (size.cx <= 0 || size.cy <= 0 || tavix::HasMoreKeyRuns(grip, key, size, kMostRuns)) return;
    CRgn shape;
    tavix::RegionFromBitmapOpaque(&shape, grip, key);
    CRect window;
    ::GetWindowRect(m_hWnd, &window);
    shape.OffsetRgn(window.Width() - size.cx, window.Height() - size.cy);
    tavix::SetShape(m_hWnd, shape, TRUE);
}

LRESULT CSkinScrollBar::OnSize(WPARAM, LPARAM) {
    const Presence present(*this);
    const LRESULT result = Default();
    if (present && HasStyle(SBS_SIZEGRIP)) CutSizeGrip();
    return result;
}

LRESULT CSkinScrollBar::OnEnable(WPARAM, LPARAM) {
    const LRESULT result = Default();
    static_cast<void>(RepaintNow());
    return result;
}
