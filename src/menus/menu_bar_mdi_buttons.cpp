#include "tavixskin/menu_bar_mdi_buttons.h"

#include <algorithm>
#include <vector>

#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "frames/non_client.h"
#include "menus/menu_bar_parts.h"
#include "tavixskin/framework/frame_wnd.h"
#include "tavixskin/value_ids.h"

namespace {

constexpr int kIcon = 0;
constexpr int kButtons = 4;

constexpr WPARAM kCommands[kButtons] = {SC_MOUSEMENU, SC_MINIMIZE, SC_RESTORE, SC_CLOSE};
constexpr UINT kLooks[kButtons] = {0, DFCS_CAPTIONMIN, DFCS_CAPTIONRESTORE, DFCS_CAPTIONCLOSE};

CSize CaptionButtonSize() { return {::GetSystemMetrics(SM_CXSIZE), ::GetSystemMetrics(SM_CYSIZE)}; }

}  // namespace

CMenuBarMdiButtons::CMenuBarMdiButtons(CSkinMenuBar* owner) : m_pOwner(owner) {}
CMenuBarMdiButtons::~CMenuBarMdiButtons() = default;

bool CMenuBarMdiButtons::IsHorizontal() const { return (m_pOwner->GetBarStyle() & CBRS_ORIENT_HORZ) != 0; }
HWND CMenuBarMdiButtons::MdiClient() const { return m_pOwner->m_hMdiClient; }

// ---------------------------------------------------------------- geometry

void CMenuBarMdiButtons::Layout() {
    m_nMenuExtent = 0;
    if (const int count = m_pOwner->GetButtonCount(); count > 0) {
        CRect last;
        m_pOwner->GetItemRect(count - 1, last);
        m_nMenuExtent = (IsHorizontal() ? last.right : last.bottom) + 2;
    }
    const CRect client = m_pOwner->ClientInWindow();
    if (IsHorizontal())
        LayoutHorizontally(client);
    else
        LayoutVertically(client);
}

void CMenuBarMdiButtons::LayoutHorizontally(const CRect& client) {
    const CSize icon = tavix::SmallIconSize();
    const CSize button = CaptionButtonSize();
    CRect r(client.left - icon.cx, client.top, client.left, client.top + icon.cy);
    r.OffsetRect(0, (client.Height() - r.Height()) / 2);
    m_rcButtons[0] = r;
    const int end = std::max<int>(client.right, client.left + m_nMenuExtent) + 3 * button.cx;
    r.SetRect(end - button.cx, r.top + 2, end - 2, r.top + button.cy - 2);
    m_rcButtons[3] = r;
    r.OffsetRect(-button.cx, 0);
    m_rcButtons[2] = r;
    r.OffsetRect(-(button.cx - 2), 0);
    m_rcButtons[1] = r;
}

void CMenuBarMdiButtons::LayoutVertically(const CRect& client) {
    const CSize icon = tavix::SmallIconSize();
    const CSize button = CaptionButtonSize();
    CRect r(client.left, client.top - icon.cy, client.right, client.top);
    if (m_pOwner->GetBarStyle() & CBRS_ALIGN_RIGHT)
        r.left = r.right - icon.cx;
    else
        r.right = r.left + icon.cx;
    m_rcButtons[0] = r;
    const int end = std::max<int>(client.bottom, client.top + m_nMenuExtent) + 3 * button.cy;
    r.SetRect(r.left, end - button.cy + 2, r.left + button.cx - 2, end - 2);
    m_rcButtons[3] = r;
    r.OffsetRect(0, -(r.Height() + 2));
    m_rcButtons[2] = r;
    r.OffsetRect(0, -r.Height());
    m_rcButtons[1] = r;
}

int CMenuBarMdiButtons::HitTest(int x, int y) {
    for (int i = 0; i < kButtons; ++i)
        if (m_rcButtons[i].PtInRect(CPoint(x, y))) return i;
    return -1;
}

void CMenuBarMdiButtons::AdjustNcRect(RECT* rect) {
    if (!m_bChildMaximized) return;
    const CSize icon = tavix::SmallIconSize();
    const auto keep = [this](LONG start, LONG& end) {
        if (end - start < m_nMenuExtent) end = start + m_nMenuExtent;
    };
    if (IsHorizontal()) {
        const int width = tavix::BitmapSize(tavix::SkinBitmap(BMP_FRAME_MIN_NORMAL)).cx;
        rect->left += icon.cx + 10;
        rect->right -= (width + 2) * 3;
        keep(rect->left, rect->right);
    } else {
        rect->top += icon.cy;
        rect->bottom -= CaptionButtonSize().cy * 3;
        keep(rect->top, rect->bottom);
    }
}

CSize CMenuBarMdiButtons::AdjustSize(CSize size, BOOL horizontal) {
    if (!m_bChildMaximized) return size;
    const CSize icon = tavix::SmallIconSize();
    const CSize button = CaptionButtonSize();
    return horizontal ? CSize(size.cx + icon.cx + 3 * button.cx, size.cy)
                      : CSize(size.cx, size.cy + icon.cy + 3 * button.cy);
}

CPoint CMenuBarMdiButtons::PopupPosition(const RECT& button, TPMPARAMS& params) {
    params.cbSize = sizeof params;
    ::GetWindowRect(::GetDesktopWindow(), &params.rcExclude);
    switch (m_pOwner->GetBarStyle() & CBRS_ALIGN_ANY) {
        case CBRS_ALIGN_LEFT:
            params.rcExclude.right = button.right;
            return {button.right, button.top};
        case CBRS_ALIGN_RIGHT:
            params.rcExclude.left = button.left;
            return {button.left, button.top};
        case CBRS_ALIGN_BOTTOM:
            params.rcExclude.top = button.top;
            return {button.left, button.top};
        default:
            return {button.left, button.bottom};
    }
}

// ---------------------------------------------------------------- the list of windows

namespace {

/* The first item with the command of an MDI window, or the end. */
int StartOfWindowList(HMENU menu, bool& isListed) {
    const int count = ::GetMenuItemCount(menu);
    for (int i = 0; i < count; ++i) {
        const UINT id = ::GetMenuItemID(menu, i);
        // A popup has no command.
        isListed = id != static_cast<UINT>(-1) && id >= AFX_IDM_FIRST_MDICHILD;
        if (isListed) return i;
    }
    return count;
}

/* "&3  Title" */
CString NumberedTitle(int number, HWND window) {
    CString title;
    const int length = ::GetWindowTextLengthA(window);
    ::GetWindowTextA(window, title.GetBuffer(length), length + 1);
    title.ReleaseBuffer();
    char start[16];
    ::wsprintfA(start, "&%d  ", number);
    return CString(start) + title;
}

}  // namespace

void CMenuBarMdiButtons::FillWindowMenu() {
    HMENU menu = m_hWindowMenu;
    bool isListed = false;
    int at = StartOfWindowList(menu, isListed);
    if (at < 0) return;
    while (::RemoveMenu(menu, static_cast<UINT>(at), MF_BYPOSITION)) {
    }
    HWND client = MdiClient();
    const auto active = reinterpret_cast<HWND>(::SendMessageA(client, WM_MDIGETACTIVE, 0, 0));
    // Titles are asked for from the windows, whose answers may change what there is.
    std::vector<HWND> children;
    for (HWND child = ::GetWindow(client, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    int number = 1;
    for (HWND child : children) {
        if (!isListed) ::InsertMenuA(menu, static_cast<UINT>(at++), MF_BYPOSITION | MF_SEPARATOR, 0, nullptr);
        isListed = true;
        // Ampersands of the title are not doubled.
        const CString text = NumberedTitle(number++, child);
        const auto position = static_cast<UINT>(at++);
        ::InsertMenuA(menu, position, MF_BYPOSITION | MF_STRING, static_cast<UINT_PTR>(::GetDlgCtrlID(child)),
                      text);
        if (child == active) ::CheckMenuItem(menu, position, MF_BYPOSITION | MF_CHECKED);
    }
}

// ---------------------------------------------------------------- drawing and pressing

void CMenuBarMdiButtons::DrawButton(CDC* dc, int index, BOOL pressed) {
    if (!dc || index < 0 || index >= kButtons) return;
    CRect rect = m_rcButtons[index];
    if (index != kIcon) {
        ::DrawFrameControl(*dc, &rect, DFC_CAPTION, kLooks[index] | (pressed ? DFCS_PUSHED : 0));
        return;
    }
    const auto child = reinterpret_cast<HWND>(::SendMessageA(MdiClient(), WM_MDIGETACTIVE, 0, 0));
    if (const auto icon = child ? reinterpret_cast<HICON>(::GetClassLongPtrA(child, GCLP_HICONSM)) : nullptr)
        ::DrawIconEx(*dc, rect.left, rect.top, icon, rect.Width(), rect.Height(), 0, nullptr, DI_NORMAL);
}

BOOL CMenuBarMdiButtons::OnMouseMessage(UINT message, UINT, int x, int y) {
    if (!m_bChildMaximized) return FALSE;
    const CRect client = m_pOwner->ClientInWindow();
    x += client.left;
    y += client.top;
    if (message == WM_LBUTTONDOWN) return Press(x, y);
    if (m_nPressed <= 0) return FALSE;
    if (message == WM_MOUSEMOVE) return TrackPress(x, y);
    return message == WM_LBUTTONUP ? Release() : FALSE;
}

void CMenuBarMdiButtons::Show(int index, BOOL pressed) {
    CWindowDC dc(m_pOwner->GetSafeHwnd());
    DrawButton(&dc, index, pressed);
}

BOOL CMenuBarMdiButtons::Press(int x, int y) {
    m_nPressed = HitTest(x, y);
    if (m_nPressed < 0) return FALSE;
    if (m_nPressed > 0) {
        Show(m_nPressed, TRUE);
        m_bPressedInside = TRUE;
        ::SetCapture(m_pOwner->GetSafeHwnd());
        return TRUE;
    }
    CRect window;
    ::GetWindowRect(m_pOwner->GetSafeHwnd(), &window);
    CRect icon = m_rcButtons[kIcon];
    icon.OffsetRect(window.left, window.top);
    TPMPARAMS params{};
    const CPoint at = PopupPosition(icon, params);
    if (HMENU menu = ::GetSystemMenu(m_pOwner->ActiveFrame(), FALSE))
        ::TrackPopupMenuEx(menu, TPM_VERTICAL, at.x, at.y, m_pOwner->GetOwner(), &params);
    return TRUE;
}

BOOL CMenuBarMdiButtons::TrackPress(int x, int y) {
    const BOOL isInside = m_rcButtons[m_nPressed].PtInRect(CPoint(x, y));
    if (isInside != m_bPressedInside) {
        m_bPressedInside = isInside;
        Show(m_nPressed, isInside);
    }
    return TRUE;
}

BOOL CMenuBarMdiButtons::Release() {
    const int index = m_nPressed;
    m_nPressed = 0;
    ::ReleaseCapture();
    if (!m_bPressedInside) return TRUE;
    Show(index, FALSE);
    // The command may end the frame, and this object with it.
    if (HWND active = m_pOwner->ActiveFrame()) ::SendMessageA(active, WM_SYSCOMMAND, kCommands[index], 0);
    return TRUE;
}
