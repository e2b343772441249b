// The menu bar's life and its buttons. Layout, painting, mouse and tracking have files of their own.
#include "tavixskin/skin_menu_bar.h"

#include <commctrl.h>

#include "draw/menu_font.h"
#include "frames/frame_skin.h"
#include "menus/menu_bar_parts.h"
#include "tavixskin/framework/frame_wnd.h"

IMPLEMENT_DYNAMIC(CSkinMenuBar, CToolBar)

CSkinMenuBar* CSkinMenuBar::activeMenuBarTarget = nullptr;
HHOOK CSkinMenuBar::menuInputHook = nullptr;

BEGIN_MESSAGE_MAP(CSkinMenuBar, CToolBar)
    ON_MESSAGE(WM_CREATE, &CSkinMenuBar::OnCreate)
    ON_MESSAGE(WM_LBUTTONDOWN, &CSkinMenuBar::OnLButtonDown)
    ON_MESSAGE(WM_LBUTTONUP, &CSkinMenuBar::OnLButtonUp)
    ON_MESSAGE(WM_MOUSEMOVE, &CSkinMenuBar::OnMouseMove)
    ON_MESSAGE(WM_NCCALCSIZE, &CSkinMenuBar::OnNcCalcSize)
    ON_MESSAGE(WM_NCPAINT, &CSkinMenuBar::OnNcPaint)
    ON_MESSAGE(WM_SIZE, &CSkinMenuBar::OnSize)
    ON_MESSAGE(WM_PAINT, &CSkinMenuBar::OnPaint)
    ON_MESSAGE(WM_DESTROY, &CSkinMenuBar::OnDestroy)
    ON_UPDATE_COMMAND_UI_RANGE(0, 256, &CSkinMenuBar::OnUpdateMenuButton)
    ON_MESSAGE(tavix::kMenuBarSetMenuNull, &CSkinMenuBar::OnSetMenuNull)
    ON_MESSAGE(WM_MOUSELEAVE, &CSkinMenuBar::OnMouseLeave)
END_MESSAGE_MAP()

namespace {

constexpr char kClassName[] = "SkinMenuBar";
constexpr char kCopiedClass[] = "ToolBarWindow32";

// Flat and transparent while buttons are added, as the control measures them so; not afterwards.
constexpr DWORD kStylesWhileAdding = TBSTYLE_FLAT | TBSTYLE_TRANSPARENT;

}  // namespace

// ---------------------------------------------------------------- life

CSkinMenuBar::CSkinMenuBar() : m_mdiButtons(this) {}

CSkinMenuBar::~CSkinMenuBar() {
    // The window's last messages need the whole object.
    DestroyWindow();
}

bool CSkinMenuBar::PreCreateWindow(CREATESTRUCTA& create) {
    if (!CToolBar::PreCreateWindow(create)) return false;
    HINSTANCE module = ::GetModuleHandleA(nullptr);
    WNDCLASSA copied{};
    if (!::GetClassInfoA(module, kCopiedClass, &copied)) return false;
    copied.lpszClassName = kClassName;
    // A class of the program's, as a bar is: whoever makes a second bar ends the class first.
    copied.hInstance = module;
    if (!::RegisterClassA(&copied)) return false;
    create.lpszClass = kClassName;
    return true;
}

LRESULT CSkinMenuBar::OnCreate(WPARAM wParam, LPARAM lParam) {
    if (CControlBar::OnCreate(wParam, lParam) == -1) return -1;
    SetSizes(CSize(30, 20), CSize(15, 12));
    m_hControlFont = reinterpret_cast<HFONT>(::SendMessageA(m_hWnd, WM_GETFONT, 0, 0));
    UpdateFont();
    HWND owner = GetOwner();
    m_frameHook.Attach(owner, this);
    const CWnd* frame = FromHandlePermanent(owner);
    if (frame && frame->IsKindOf(RUNTIME_CLASS(CMDIFrameWnd))) {
        m_hMdiClient = static_cast<const CMDIFrameWnd*>(frame)->m_hWndMDIClient;
        if (m_hMdiClient) m_mdiClientHook.Attach(m_hMdiClient, this);
    }
    return 0;
}

LRESULT CSkinMenuBar::OnDestroy(WPARAM, LPARAM) {
    m_frameHook.Detach();
    m_mdiClientHook.Detach();
    // Without a menu the frame keeps the property; it is looked into with care for that reason.
    HWND frame = ParentFrame();
    if (frame && ::GetMenu(frame)) ::RemovePropA(frame, tavix::kMenuBarProperty);
    EndTracking();
    const LRESULT result = Default();
    m_hMdiClient = nullptr;
    return result;
}

/*
 * The control measures its buttons with this font. What it had before is deleted, a font that a
 * host gave it too, but not the font that it made for itself.
 */
void CSkinMenuBar::UpdateFont() {
    CFont made;
    tavix::CreateMenuFont(made);
    if (!made.GetSafeHandle()) return;
    const auto former = reinterpret_cast<HFONT>(::SendMessageA(m_hWnd, WM_GETFONT, 0, 0));
    ::SendMessageA(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(static_cast<HFONT>(made)), TRUE);
    if (former != m_hControlFont && former != m_font) ::DeleteObject(former);
    m_font.Attach(made.Detach());
}

HMENU CSkinMenuBar::GetMenu() const { return m_hMenu; }

CSkinMenuBar::TRACKINGSTATE CSkinMenuBar::GetTrackingState(int& popupButton) const {
    popupButton = m_nPopupButton;
    return m_trackingState;
}

BOOL CSkinMenuBar::GetRect(UINT id, RECT& rect) const {
    return ::SendMessageA(m_hWnd, TB_GETRECT, id, reinterpret_cast<LPARAM>(&rect)) != 0;
}

int CSkinMenuBar::GetHotItem() const { return m_nHotItem; }

HWND CSkinMenuBar::ParentFrame() const { return CFrameWnd::FrameOf(m_hWnd); }

HWND CSkinMenuBar::ActiveFrame() const {
    HWND frame = ParentFrame();
    const CWnd* object = FromHandlePermanent(frame);
    return object && object->IsKindOf(RUNTIME_CLASS(CFrameWnd))
               ? static_cast<const CFrameWnd*>(object)->GetActiveFrame()
               : frame;
}

LRESULT CSkinMenuBar::OnSetMenuNull(WPARAM wParam, LPARAM) {
    ::SetMenu(reinterpret_cast<HWND>(wParam), nullptr);
    return 0;
}

LRESULT CSkinMenuBar::OnUpdateMenuButton(WPARAM, LPARAM lParam) {
    CCmdUI& ui = *reinterpret_cast<CCmdUI*>(lParam);
    CheckMinMaxState();
    if (IsValidButton(static_cast<int>(ui.m_nID))) ui.Enable(true);
    return 0;
}

// ---------------------------------------------------------------- one message each

int CSkinMenuBar::GetButtonCount() const {
    return static_cast<int>(::SendMessageA(m_hWnd, TB_BUTTONCOUNT, 0, 0));
}

int CSkinMenuBar::ToolBarHitTest(POINT* point) const {
    return static_cast<int>(::SendMessageA(m_hWnd, TB_HITTEST, 0, reinterpret_cast<LPARAM>(point)));
}

BOOL CSkinMenuBar::DeleteButton(int button) {
    return ::SendMessageA(m_hWnd, TB_DELETEBUTTON, static_cast<WPARAM>(button), 0) != 0;
}

int CSkinMenuBar::AddStrings(const char* strings) {
    return static_cast<int>(::SendMessageA(m_hWnd, TB_ADDSTRINGA, 0, reinterpret_cast<LPARAM>(strings)));
}

BOOL CSkinMenuBar::AddButtons(int count, const void* buttons) {
    return ::SendMessageA(m_hWnd, TB_ADDBUTTONSA, static_cast<WPARAM>(count),
                          reinterpret_cast<LPARAM>(buttons)) != 0;
}

void CSkinMenuBar::AutoSize() { ::SendMessageA(m_hWnd, TB_AUTOSIZE, 0, 0); }

BOOL CSkinMenuBar::PressButton(int id, BOOL press) {
    return ::SendMessageA(m_hWnd, TB_PRESSBUTTON, static_cast<WPARAM>(id), MAKELONG(press, 0)) != 0;
}

HANDLE CSkinMenuBar::SetImageList(HANDLE list) {
    return reinterpret_cast<HANDLE>(
        ::SendMessageA(m_hWnd, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(list)));
}

BOOL CSkinMenuBar::IsValidButton(int button) const { return button >= 0 && button < GetButtonCount(); }

BOOL CSkinMenuBar::MapAccelerator(char key, UINT& id) const {
    UINT found = 0;
    if (::SendMessageA(m_hWnd, TB_MAPACCELERATORA, static_cast<BYTE>(key),
                       reinterpret_cast<LPARAM>(&found))) {
        id = found;
        return TRUE;
    }
    // Some systems' tool bars don't know their buttons' letters.
    const int count = GetButtonCount();
    for (int i = 0; i < count; ++i) {
        TBBUTTON button{};
        ::SendMessageA(m_hWnd, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        char text[tavix::kMenuTextRoom] = {};
        const auto command = static_cast<WPARAM>(button.idCommand);
        const LRESULT length = ::SendMessageA(m_hWnd, TB_GETBUTTONTEXTA, command, 0);
        if (length < 0 || length >= tavix::kMenuTextRoom) continue;
        ::SendMessageA(m_hWnd, TB_GETBUTTONTEXTA, command, reinterpret_cast<LPARAM>(text));
        if (!tavix::IsAccelerator(text, key)) continue;
        id = static_cast<UINT>(button.idCommand);
        return TRUE;
    }
    return FALSE;
}

// ---------------------------------------------------------------- buttons

int CSkinMenuBar::FindText(const char* text) const {
    for (int i = 0; i < m_buttonTexts.GetSize(); ++i)
        if (m_buttonTexts[i] == text) return i;
    return -1;
}

bool CSkinMenuBar::AddMenuButton(int position, int stringIndex) {
    TBBUTTON button{};
    button.iBitmap = -1;
    button.idCommand = position;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_AUTOSIZE;
    button.iString = stringIndex;
    return AddButtons(1, &button) != 0;
}

/*
 * Texts are kept from menu to menu at the index that the control's pool of strings gave them, and
 * equal ones once; buttons are painted with the text at their own index all the same.
 */
HMENU CSkinMenuBar::LoadMenuA(HMENU menu, HMENU windowMenu) {
    if (m_bReplacesFrameMenu) {
        HWND frame = ParentFrame();
        if (frame && ::GetMenu(frame)) {
            ::SetMenu(frame, menu);
            ::SendMessageA(frame, tavix::kFrameSetMenu, reinterpret_cast<WPARAM>(menu), 0);
            ::SetPropA(frame, tavix::kMenuBarProperty, this);
        }
    }
    HMENU former = m_hMenu;
    m_hMenu = menu;
    if (!m_hWnd) return former;

    for (int count = GetButtonCount(); count > 0; --count) DeleteButton(0);
    SetImageList(nullptr);
    const auto style = static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE));
    if ((style & kStylesWhileAdding) != kStylesWhileAdding)
        ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG>(style | kStylesWhileAdding));

    const int items = menu ? ::GetMenuItemCount(menu) : 0;
    for (int i = 0; i < items; ++i) {
        const tavix::MenuText text(menu, i);
        if (text.IsEmpty()) continue;
        int index = FindText(text);
        if (index < 0) {
            index = AddStrings(text);
            if (index < 0) continue;
            m_buttonTexts.SetAtGrow(index, text);
        }
        AddMenuButton(i, index);
    }

    if ((style & kStylesWhileAdding) != kStylesWhileAdding)
        ::SetWindowLongA(m_hWnd, GWL_STYLE, static_cast<LONG>(style));
    if (!menu) return former;
    m_mdiButtons.m_hWindowMenu = windowMenu;
    AutoSize();
    return former;
}

HMENU CSkinMenuBar::LoadMenuA(LPCSTR name) {
    return LoadMenuA(::LoadMenuA(::GetModuleHandleA(nullptr), name), nullptr);
}

HMENU CSkinMenuBar::LoadMenuA(UINT id) { return LoadMenuA(MAKEINTRESOURCEA(id)); }

/*
 * Unlike in LoadMenuA each button has its own text here. The control's strings are not reset, so
 * a text that occurs twice may be measured by another one of its strings.
 */
void CSkinMenuBar::SynchronizeMenubar(HMENU menu) {
    m_buttonTexts.RemoveAll();
    if (m_hWnd)
        while (GetButtonCount() >= 1 && DeleteButton(0)) {
        }
    m_hMenu = menu;
    const int items = m_hWnd ? ::GetMenuItemCount(menu) : 0;
    for (int i = 0; i < items; ++i) {
        const tavix::MenuText text(menu, i);
        if (text.IsEmpty()) continue;
        int index = FindText(text);
        if (index < 0) index = AddStrings(text);
        m_buttonTexts.SetAtGrow(m_buttonTexts.GetSize(), text);
        AddMenuButton(i, index);
    }
    if (!m_hWnd) return;
    AutoSize();
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
    ::UpdateWindow(m_hWnd);
}
