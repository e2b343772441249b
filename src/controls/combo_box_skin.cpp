#include "controls/combo_box_skin.h"

#include <algorithm>
#include <cstring>

#include "controls/combo_box_paint.h"
#include "controls/drop_list_skin.h"
#include "controls/parent_background.h"
#include "engine/window_call.h"
#include "frames/non_client.h"

IMPLEMENT_DYNAMIC(CSkinComboBox, CSkinWndBaseClass)

namespace {

constexpr UINT_PTR kHoverTimer = 4991;
constexpr UINT kHoverPeriod = 10;  // milliseconds
// More than one change of a window's shape inside another comes from a host that answers each.
constexpr int kMostShaping = 3;

}  // namespace

CSkinComboBox::CSkinComboBox() : arrowWidth(::GetSystemMetrics(SM_CXHTHUMB)) {}

CSkinComboBox::~CSkinComboBox() {
    if (dropList) dropList->Unpair();
}

void CSkinComboBox::TakeList(CSkinDropList* list, HWND window) {
    if (dropList && dropList != list) dropList->Unpair();
    dropList = list;
    dropListWnd = window;
}

void CSkinComboBox::ForgetList(const CSkinDropList* list) {
    if (dropList != list) return;
    dropList = nullptr;
    dropListWnd = nullptr;
}

LRESULT CSkinComboBox::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    // The combo box inside it is a window, and has a skin, of its own.
    if (isComboBoxEx && message != WM_SIZE) return Default(message, wParam, lParam);
    switch (message) {
        case WM_CREATE:
            return OnCreate(wParam, lParam);
        case WM_SIZE:
            return OnSize(wParam, lParam);
        case WM_SETFOCUS:
            return OnSetFocus();
        case WM_KILLFOCUS:
            Invalidate(TRUE);
            return 0;
        case WM_ENABLE:
            return OnEnable(wParam, lParam);
        case WM_SETTEXT:
            return OnSetText(reinterpret_cast<const char*>(lParam));
        case WM_GETTEXT:
            return OnGetText(wParam, reinterpret_cast<char*>(lParam));
        case WM_GETTEXTLENGTH:
            return Edit() ? EditText().GetLength() : text.GetLength();
        case WM_PAINT:
            return OnPaint();
        case WM_ERASEBKGND:
            return 1;
        case WM_DRAWITEM:
            return OnDrawItem(wParam, lParam);
        case WM_NCCALCSIZE:
            if (lParam)
                ::InflateRect(reinterpret_cast<RECT*>(lParam), -tavix::kComboFrameAcross,
                              -tavix::kComboFrameDown);
            return 0;
        case WM_NCPAINT:
            return OnNcPaint();
        case WM_NCMOUSEMOVE:
        case WM_CHAR:
        case tavix::kListSpare:
            return 0;
        case WM_NCLBUTTONDOWN:
            OnFrameClick(CPoint(lParam));
            return 0;
        case WM_KEYDOWN:
            return OnKeyDown(wParam);
        case WM_TIMER:
            return OnTimer(wParam, lParam);
        case WM_MOUSEMOVE:
            TrackArrow(CPoint(lParam));
            return 0;
        case WM_LBUTTONDOWN:
            OnClick(CPoint(lParam));
            return 0;
        case WM_LBUTTONDBLCLK:
            return OnDoubleClick(wParam, lParam);
        case CB_DELETESTRING:
            return OnDeleteString(wParam, lParam);
        case CB_GETCOUNT:
            return Count();
        case CB_GETCURSEL:
            return CurrentItem();
        case CB_RESETCONTENT:
            return OnResetContent(wParam, lParam);
        case CB_SELECTSTRING:
            return SelectPrefix(static_cast<int>(wParam), reinterpret_cast<const char*>(lParam));
        case CB_SETCURSEL:
            SelectItem(static_cast<int>(wParam));  // the answer tells nothing of it
            return 0;
        case CB_SHOWDROPDOWN:
            return OnShowDropDown(wParam, lParam);
        case CB_SETTOPINDEX:
            return OnSetTopIndex(wParam);
        case tavix::kListChoice:
            OnListChoice(static_cast<int>(wParam));
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

// The list and the edit are made, and paired with this object, while the native control creates itself.
// Whatever that answers, the window is made.
LRESULT CSkinComboBox::OnCreate(WPARAM wParam, LPARAM lParam) {
    Default(WM_CREATE, wParam, lParam);
    if (!IsAlive()) return 0;
    const LONG present = ::GetWindowLongA(m_hWnd, GWL_STYLE);
    style = static_cast<DWORD>(present);
    exStyle = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE));
    ownerDrawn = (style & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)) != 0;
    ::SetWindowLongA(m_hWnd, GWL_STYLE, present);
    return 0;
}

LRESULT CSkinComboBox::OnSize(WPARAM wParam, LPARAM lParam) {
    Default(WM_SIZE, wParam, lParam);
    if (IsAlive()) ShapeWindow();
    return 0;
}

LRESULT CSkinComboBox::OnSetFocus() {
    if (HWND edit = Edit())
        ::SetFocus(edit);
    else if (IsOpen())
        ::SetFocus(ListWindow());
    else
        SetFocus();
    return 0;
}

// A combo box that is disabled looks as before, and so its edit stays enabled: native controls disable
// that with themselves. Below a disabled window it has no input anyway.
LRESULT CSkinComboBox::OnEnable(WPARAM wParam, LPARAM lParam) {
    HWND content = Edit();
    const bool wasEnabled = content && ::IsWindowEnabled(content);
    Default(WM_ENABLE, wParam, lParam);
    if (wasEnabled && IsAlive() && Edit() == content) ::EnableWindow(content, TRUE);
    return 0;
}

LRESULT CSkinComboBox::OnSetText(const char* newText) {
    if (HWND edit = Edit()) {
        ::SetWindowTextA(edit, newText);
        return 0;
    }
    text = newText;
    Invalidate(TRUE);
    return 0;
}

// A text that does not fit is cut, and the answer is its full length all the same: callers learn how
// much room it wants.
LRESULT CSkinComboBox::OnGetText(WPARAM size, char* buffer) const {
    const CString source = Edit() ? EditText() : text;
    const std::size_t length = static_cast<std::size_t>(source.GetLength());
    if (buffer && size > 0) {
        const std::size_t delivered = std::min<std::size_t>(length, size - 1);
        std::memcpy(buffer, source.c_str(), delivered);
        buffer[delivered] = 0;
    }
    return static_cast<LRESULT>(length);
}

LRESULT CSkinComboBox::OnDrawItem(WPARAM wParam, LPARAM lParam) {
    auto* item = reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
    if (!item || item->CtlType != ODT_LISTBOX) return Default(WM_DRAWITEM, wParam, lParam);
    if (item->itemAction == ODA_FOCUS) return 0;
    tavix::PaintOwnerDrawnRow(*item, [&] { Default(WM_DRAWITEM, wParam, lParam); });
    return 0;
}

LRESULT CSkinComboBox::OnKeyDown(WPARAM key) {
    if (key != VK_RETURN || !IsOpen()) return 0;
    SelectItem(CurrentItem());
    if (IsAlive()) ShowList(false);
    return 0;
}

LRESULT CSkinComboBox::OnTimer(WPARAM wParam, LPARAM lParam) {
    if (!timerId || wParam != timerId) return Default(WM_TIMER, wParam, lParam);
    OnHoverTimer();
    return 0;
}

LRESULT CSkinComboBox::OnDoubleClick(WPARAM wParam, LPARAM lParam) {
    if (tavix::HitTestCombo(Client(), arrowWidth, CPoint(lParam)) == tavix::ComboHit::Arrow)
        ::SendMessageA(m_hWnd, WM_LBUTTONDOWN, wParam, lParam);
    return 0;
}

LRESULT CSkinComboBox::OnDeleteString(WPARAM wParam, LPARAM lParam) {
    Default(CB_DELETESTRING, wParam, lParam);
    if (IsAlive()) AfterDelete();
    return 0;
}

LRESULT CSkinComboBox::OnResetContent(WPARAM wParam, LPARAM lParam) {
    Default(CB_RESETCONTENT, wParam, lParam);
    text.Empty();
    if (IsAlive() && ::IsWindowVisible(m_hWnd)) Invalidate(TRUE);
    return 0;
}

// An open list has the mouse, so that it hears of a press anywhere. Most platforms have given it that.
LRESULT CSkinComboBox::OnShowDropDown(WPARAM wParam, LPARAM lParam) {
    Default(CB_SHOWDROPDOWN, wParam, lParam);
    if (!wParam || !IsAlive()) return 1;
    HWND list = ListWindow();
    const bool dropsDown = (style & 0x3) != CBS_SIMPLE;
    if (list && dropsDown && ::IsWindowVisible(list) && ::GetCapture() != list) ::SetCapture(list);
    return 1;
}

LRESULT CSkinComboBox::OnSetTopIndex(WPARAM top) {
    if (dropList) dropList->topItem = static_cast<int>(top);
    return 0;
}

// ---------------------------------------------------------------- the mouse

// Leaving is not noticed here but by the timer: no capture is taken.
void CSkinComboBox::TrackArrow(const POINT& point) {
    if (hot || tavix::HitTestCombo(Client(), arrowWidth, point) != tavix::ComboHit::Arrow) return;
    hot = TRUE;
    timerId = ::SetTimer(m_hWnd, kHoverTimer, kHoverPeriod, nullptr);
    const CRect arrow = tavix::ComboArrowRect(Client());
    ::InvalidateRect(m_hWnd, &arrow, FALSE);
}

void CSkinComboBox::OnHoverTimer() {
    CPoint pointer(static_cast<LPARAM>(::GetMessagePos()));
    ::ScreenToClient(m_hWnd, &pointer);
    if (tavix::HitTestCombo(Client(), arrowWidth, pointer) == tavix::ComboHit::Arrow) return;
    hot = FALSE;
    const CRect arrow = tavix::ComboArrowRect(Client());
    ::InvalidateRect(m_hWnd, &arrow, FALSE);
    ::KillTimer(m_hWnd, timerId);
    timerId = 0;
}

void CSkinComboBox::FocusContent() const {
    if (!IsAlive()) return;
    HWND edit = Edit();
    ::SetFocus(edit ? edit : m_hWnd);
}

void CSkinComboBox::OpenList() const {
    ::ReleaseCapture();
    if (IsAlive()) ShowList(true);
    FocusContent();
}

void CSkinComboBox::CloseUnderPress() const {
    ShowList(false);
    if (IsAlive()) SetCapture();
}

// Only the arrow opens the list, also of a combo box without an edit.
void CSkinComboBox::OnClick(const POINT& point) {
    if (IsOpen()) {
        CloseUnderPress();
        FocusContent();
        return;
    }
    switch (tavix::HitTestCombo(Client(), arrowWidth, point)) {
        case tavix::ComboHit::Arrow:
            return OpenList();
        case tavix::ComboHit::Outside:
            ::ReleaseCapture();
            return;
        case tavix::ComboHit::Body:
            return FocusContent();
    }
}

void CSkinComboBox::OnFrameClick(const POINT& point) {
    if (IsOpen()) return CloseUnderPress();
    CRect window;
    GetWindowRect(&window);
    if (tavix::ComboFrameArrowRect(window).PtInRect(point))
        OpenList();
    else
        ::ReleaseCapture();
}

// ---------------------------------------------------------------- shape and painting

void CSkinComboBox::ShapeWindow() {
    if (shaping >= kMostShaping) return;
    ++shaping;
    FitEdit();
    if (IsAlive()) CutShape();
    if (IsAlive()) {
        Invalidate(TRUE);
        UpdateWindow();
    }
    --shaping;
}

// Above the other children and visible, whatever the native control thought of it.
void CSkinComboBox::FitEdit() {
    HWND content = Edit();
    if (!content) return;
    const CRect client = Client();
    const CRect place(0, 0, std::max(client.Width() - tavix::kComboEditGap, 0), client.Height());
    // Each move is told to the edit and its spies: one that changes nothing is left out.
    const bool isShown = (::GetWindowLongA(content, GWL_STYLE) & WS_VISIBLE) != 0;
    const bool isOnTop = ::GetWindow(m_hWnd, GW_CHILD) == content;
    if (!isShown || !isOnTop || tavix::WindowRectIn(content, m_hWnd) != place)
        ::SetWindowPos(content, nullptr, 0, 0, place.Width(), place.Height(), SWP_SHOWWINDOW);
}

// At each painting of the frame.
void CSkinComboBox::CutShape() {
    CRect window;
    GetWindowRect(&window);
    CRgn shape;
    tavix::MakeComboRegion(shape, window.Size());
    tavix::SetShape(m_hWnd, shape, FALSE);
}

LRESULT CSkinComboBox::OnNcPaint() {
    ShapeWindow();
    if (!IsAlive()) return 0;
    tavix::NonClientArea(m_hWnd, nullptr, nullptr).Run(true, tavix::PaintComboFrame);
    return 0;
}

// The face doesn't lie over what shows in front of it: where the frame's painting has painted the parts
// already, nobody would paint them again.
void CSkinComboBox::ExcludeParts(HDC dc) const {
    for (HWND part = ::GetWindow(m_hWnd, GW_CHILD); part; part = ::GetWindow(part, GW_HWNDNEXT)) {
        if (!::IsWindowVisible(part)) continue;
        const CRect place = tavix::WindowRectIn(part, m_hWnd);
        ::ExcludeClipRect(dc, place.left, place.top, place.right, place.bottom);
    }
}

LRESULT CSkinComboBox::OnPaint() {
    CPaintDC dc(m_hWnd);
    if (!dc.m_hDC) return 0;
    ExcludeParts(dc);
    const CRect room = tavix::PaintComboFace(dc, Client(), hot != FALSE);
    ::IntersectClipRect(dc, room.left, room.top, room.right, room.bottom);
    if (Edit()) return 0;
    if (!ownerDrawn) {
        tavix::PaintComboText(dc, room, text);
        return 0;
    }
    const int current = CurrentItem();
    if (current == -1) return 0;
    const int formerMode = ::SetBkMode(dc, TRANSPARENT);
    const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_COMBOBOX;
    item.itemID = static_cast<UINT>(current);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = ODS_DEFAULT;
    item.hwndItem = m_hWnd;
    item.hDC = dc;
    item.rcItem = room;
    item.itemData =
        static_cast<ULONG_PTR>(tavix::CallWindow(m_hWnd, CB_GETITEMDATA, static_cast<WPARAM>(current)));
    ::SendMessageA(m_hWnd, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
    ::SetBkMode(dc, formerMode);
    return 0;
}

// ---------------------------------------------------------------- selection

int CSkinComboBox::SelectItem(int item) {
    if (!dropList || item < 0 || item >= Count()) return -1;
    dropList->ReadText(item, text);
    if (::IsWindowVisible(m_hWnd)) Invalidate(TRUE);
    if (HWND edit = Edit()) ::SetWindowTextA(edit, text);
    // The edit's change was told to the host.
    return dropList ? dropList->SetCurrentItem(item) : -1;
}

// By prefix, from the start to the end of the list only. Bytes are compared, not letters.
int CSkinComboBox::SelectPrefix(int start, const char* prefix) {
    if (!dropList || !prefix) return -1;
    const std::size_t length = std::strlen(prefix);
    const int count = Count();
    CString candidate;
    for (int i = std::max(start, 0); i < count; ++i) {
        if (!dropList->ReadText(i, candidate) || ::_strnicmp(candidate, prefix, length) != 0) continue;
        SelectItem(i);
        return i;
    }
    return -1;
}

// Unless the selection fell off the list's end the text is gone though an item is still selected.
void CSkinComboBox::AfterDelete() {
    const int count = Count(), current = CurrentItem();
    text.Empty();
    if (!dropList || current < count || count <= 0) return;
    dropList->SetCurrentItem(0);
    dropList->ReadText(0, text);
}

// All three are told, also when the choice changes nothing.
void CSkinComboBox::OnListChoice(int item) {
    char former[256] = {};
    ::GetWindowTextA(m_hWnd, former, sizeof former);  // asked for and not used
    NotifyParent(CBN_SELENDOK);
    if (!IsAlive()) return;
    NotifyParent(CBN_CLOSEUP);
    if (!IsAlive()) return;
    if (dropList && dropList->ReadText(item, text))
        if (HWND edit = Edit()) ::SetWindowTextA(edit, text);
    if (!IsAlive()) return;
    NotifyParent(CBN_SELCHANGE);
    if (!IsAlive()) return;
    if (::GetCapture() == m_hWnd) ::ReleaseCapture();
    if (!IsAlive()) return;
    HWND edit = Edit();
    ::SetFocus(edit && ::IsWindowVisible(edit) ? edit : m_hWnd);
    if (IsAlive()) Invalidate(FALSE);
}

void CSkinComboBox::NotifyParent(WORD code) const {
    if (HWND parent = GetParent())
        ::SendMessageA(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), code),
                       reinterpret_cast<LPARAM>(m_hWnd));
}

// ---------------------------------------------------------------- what is asked of others

HWND CSkinComboBox::Edit() const {
    return editWnd && ::IsWindow(editWnd) && ::IsChild(m_hWnd, editWnd) ? editWnd : nullptr;
}

HWND CSkinComboBox::ListWindow() const {
    return dropListWnd && ::IsWindow(dropListWnd) ? dropListWnd : nullptr;
}

CString CSkinComboBox::EditText() const {
    char buffer[256] = {};
    ::GetWindowTextA(Edit(), buffer, sizeof buffer);
    return buffer;
}

int CSkinComboBox::Count() const { return dropList ? dropList->Count() : 0; }

int CSkinComboBox::CurrentItem() const { return dropList ? dropList->currentItem : -1; }

CRect CSkinComboBox::Client() const {
    CRect client;
    GetClientRect(&client);
    return client;
}
