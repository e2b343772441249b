#include "menu_fixture.h"

#include <algorithm>
#include <iomanip>

namespace tavix_test {

namespace {

constexpr UINT_PTR kTickTimer = 77;
constexpr UINT kTick = 30;

BOOL CALLBACK CollectPopup(HWND window, LPARAM list) {
    char name[16] = {};
    ::GetClassNameA(window, name, sizeof name);
    if (!::lstrcmpA(name, "#32768") && ::IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

INT_PTR CALLBACK IdleDialog(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

}  // namespace

HMENU OwnedMenu::Submenu(const char* text) {
    HMENU submenu = ::CreatePopupMenu();
    ::AppendMenuA(m_menu, MF_POPUP, reinterpret_cast<UINT_PTR>(submenu), text);
    return submenu;
}

OwnedMenu& OwnedMenu::Radio(UINT id, const char* text) {
    Item(id, text);
    ::CheckMenuRadioItem(m_menu, id, id, id, MF_BYCOMMAND);
    return *this;
}

void PrintTo(const ItemFacts& facts, std::ostream* out) {
    *out << std::hex << "{type 0x" << facts.type << ", state 0x" << facts.state << ", id 0x" << facts.id
         << ", submenu " << facts.submenu << ", marks " << facts.checkedMark << " " << facts.uncheckedMark
         << ", bitmap " << facts.bitmap << ", data 0x" << facts.data << ", \"" << facts.text.substr(0, 30)
         << "\"}" << std::dec;
}

MENUITEMINFOA ItemInfo(HMENU menu, int position, UINT mask) {
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = mask;
    ::GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info);
    return info;
}

std::vector<ItemFacts> FactsOf(HMENU menu) {
    std::vector<ItemFacts> facts;
    for (int position = 0, count = ::GetMenuItemCount(menu); position < count; ++position) {
        const MENUITEMINFOA info = ItemInfo(
            menu, position,
            MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_CHECKMARKS | MIIM_BITMAP | MIIM_DATA);
        char text[1024] = {};
        ::GetMenuStringA(menu, static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
        // The system leaves its selection marked in a menu that is closed.
        facts.push_back({info.fType, info.fState & ~static_cast<UINT>(MFS_HILITE), info.wID, info.hSubMenu,
                         info.hbmpChecked, info.hbmpUnchecked, info.hbmpItem, info.dwItemData, text});
    }
    return facts;
}

void AppendEveryKind(HMENU menu, HBITMAP bitmap) {
    const auto text = [](const char* caption) { return const_cast<char*>(caption); };
    const auto insert = [menu](MENUITEMINFOA info) {
        info.cbSize = sizeof info;
        EXPECT_TRUE(::InsertMenuItemA(menu, static_cast<UINT>(::GetMenuItemCount(menu)), TRUE, &info));
    };
    const auto submenu = [](int items) {
        HMENU made = ::CreatePopupMenu();
        for (int i = 0; i < items; ++i) ::AppendMenuA(made, MF_STRING, static_cast<UINT>(900 + i), "in it");
        return made;
    };
    ::AppendMenuA(menu, MF_STRING, 10, "&Plain\tCtrl+P");
    ::AppendMenuA(menu, MF_STRING | MF_GRAYED, 11, "Grey");
    ::AppendMenuA(menu, MF_STRING | MF_CHECKED, 12, "Checked");
    ::AppendMenuA(menu, MF_STRING | MF_CHECKED | MF_GRAYED, 13, "Both");
    ::AppendMenuA(menu, MF_STRING, 14, "Default");
    ::SetMenuDefaultItem(menu, 14, FALSE);
    ::AppendMenuA(menu, MF_STRING, 15, "Radio");
    ::CheckMenuRadioItem(menu, 15, 15, 15, MF_BYCOMMAND);
    ::AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    ::AppendMenuA(menu, MF_SEPARATOR, 77, nullptr);  // with an id of its own
    ::AppendMenuA(menu, MF_BITMAP, 16, reinterpret_cast<const char*>(bitmap));
    ::AppendMenuA(menu, MF_STRING, 17, "With marks");
    ::SetMenuItemBitmaps(menu, 17, MF_BYCOMMAND, bitmap, bitmap);
    MENUITEMINFOA info{};
    info.fMask = MIIM_ID | MIIM_STRING | MIIM_BITMAP | MIIM_DATA;
    info.wID = 18;
    info.dwTypeData = text("Text and picture");
    info.hbmpItem = bitmap;
    info.dwItemData = 1818;
    insert(info);
    info.fMask = MIIM_ID | MIIM_STRING | MIIM_DATA | MIIM_FTYPE;
    info.wID = 19;
    info.fType = MFT_MENUBREAK | MFT_RIGHTJUSTIFY;
    info.dwTypeData = text("In a new column");
    insert(info);
    ::AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(submenu(2)), "Submenu of two");
    // Their counts have the bits of other flags.
    ::AppendMenuA(menu, MF_POPUP | MF_CHECKED, reinterpret_cast<UINT_PTR>(submenu(8)), "Submenu of eight");
    ::AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(submenu(80)), "Submenu of eighty");
    info.fMask = MIIM_ID | MIIM_STRING | MIIM_DATA | MIIM_SUBMENU;
    info.wID = 4711;
    info.hSubMenu = submenu(1);
    info.dwTypeData = text("Submenu with an id");
    insert(info);
    ::AppendMenuA(menu, MF_POPUP | MF_GRAYED, reinterpret_cast<UINT_PTR>(submenu(0)), "Empty submenu");
    ::AppendMenuA(menu, MF_OWNERDRAW, 20, reinterpret_cast<const char*>(0x5555));
    ::AppendMenuA(menu, MF_OWNERDRAW | MF_GRAYED | MF_CHECKED, 21, reinterpret_cast<const char*>(0x6666));
    info.fMask = MIIM_ID | MIIM_FTYPE | MIIM_STRING | MIIM_DATA | MIIM_SUBMENU;
    info.wID = 22;
    info.fType = MFT_OWNERDRAW | MFT_RADIOCHECK;
    info.hSubMenu = submenu(3);
    info.dwTypeData = text("The host draws a submenu");
    info.dwItemData = 2222;
    insert(info);
    info.fMask = MIIM_ID | MIIM_FTYPE | MIIM_DATA;
    info.wID = 23;
    info.fType = MFT_OWNERDRAW | MFT_SEPARATOR;
    insert(info);
    ::AppendMenuA(menu, MF_STRING, 24, "");
    ::AppendMenuA(menu, MF_STRING, 25, std::string(700, 'w').c_str());
}

MenuOwner::MenuOwner(const char* className) {
    WNDCLASSA description{};
    description.lpfnWndProc = &Procedure;
    description.hInstance = ::GetModuleHandleA(nullptr);
    description.hCursor = ::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    description.hbrBackground = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    description.lpszClassName = className;
    ::RegisterClassA(&description);  // fails from the second window on, which changes nothing
    ::CreateWindowExA(0, className, "owner", WS_POPUP | WS_VISIBLE, 200, 100, 500, 400, nullptr, nullptr,
                      description.hInstance, this);
    EXPECT_NE(m_window, nullptr) << className;
}

LRESULT CALLBACK MenuOwner::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        void* self = reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams;
        ::SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        if (self) static_cast<MenuOwner*>(self)->m_window = window;
    }
    auto* self = reinterpret_cast<MenuOwner*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (!self) return ::DefWindowProcA(window, message, wParam, lParam);
    if (message == WM_TIMER && wParam == kTickTimer) {
        self->OnTick();
        return 0;
    }
    const Received received{window, message, wParam, lParam};
    self->log.Add(received);
    std::optional<LRESULT> answer;
    if (self->handler) answer = self->handler(received);
    if (message == WM_NCDESTROY) {
        self->m_window = nullptr;
        ::SetWindowLongPtrA(window, GWLP_USERDATA, 0);
    }
    return answer ? *answer : ::DefWindowProcA(window, message, wParam, lParam);
}

void MenuOwner::OnTick() {
    if (ShownPopups().empty()) return;
    for (HWND popup : ShownPopups()) ::UpdateWindow(popup);
    if (m_next < m_steps.size()) {
        const Step step = m_steps[m_next++];
        step();
    } else {
        ::EndMenu();
    }
}

UINT MenuOwner::Track(HMENU menu, std::vector<Step> steps, UINT flags, POINT at) {
    m_steps = std::move(steps);
    m_next = 0;
    HWND window = m_window;
    ::SetTimer(window, kTickTimer, kTick, nullptr);
    const BOOL chosen = ::TrackPopupMenu(menu, TPM_RETURNCMD | flags, at.x, at.y, 0, window, nullptr);
    if (::IsWindow(window)) ::KillTimer(window, kTickTimer);
    EXPECT_EQ(m_next, m_steps.size()) << "the menu has ended before its steps";
    PumpMessages(1);
    return static_cast<UINT>(chosen);
}

std::vector<HWND> ShownPopups() {
    std::vector<HWND> popups;
    ::EnumThreadWindows(::GetCurrentThreadId(), &CollectPopup, reinterpret_cast<LPARAM>(&popups));
    std::ranges::reverse(popups);  // the last one opened is the topmost
    return popups;
}

CSkinMenu* SkinOfPopup(HWND popup) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    CSkinWndBaseClass* head = engine ? engine->GetSkinWndList()->Lookup(popup) : nullptr;
    return head && head->IsKindOf(RUNTIME_CLASS(CSkinMenu)) ? static_cast<CSkinMenu*>(head) : nullptr;
}

HWND PopupOf(HMENU menu) {
    for (HWND popup : ShownPopups())
        if (CSkinMenu* skin = SkinOfPopup(popup); skin && skin->Menu() == menu) return popup;
    return nullptr;
}

void TypeKey(WORD virtualKey) {
    INPUT input[2]{};
    for (INPUT& one : input) {
        one.type = INPUT_KEYBOARD;
        one.ki.wVk = virtualKey;
        one.ki.wScan = static_cast<WORD>(::MapVirtualKeyA(virtualKey, MAPVK_VK_TO_VSC));
    }
    input[1].ki.dwFlags = KEYEVENTF_KEYUP;
    EXPECT_EQ(::SendInput(2, input, sizeof *input), 2u);
}

MenuOwner::Step Typing(WORD virtualKey) {
    return [virtualKey] { TypeKey(virtualKey); };
}

SystemShadow::SystemShadow(bool on) {
    ::SystemParametersInfoA(SPI_GETDROPSHADOW, 0, &m_former, 0);
    Set(on);
    BOOL now = FALSE;
    ::SystemParametersInfoA(SPI_GETDROPSHADOW, 0, &now, 0);
    EXPECT_EQ(now != FALSE, on);
}

void SystemShadow::Set(BOOL on) {
    ::SystemParametersInfoA(SPI_SETDROPSHADOW, 0, reinterpret_cast<void*>(static_cast<INT_PTR>(on)), 0);
}

BarePopup::BarePopup(const CRect& at, DWORD styles)
    : m_window(::CreateWindowExA(WS_EX_TOOLWINDOW, "#32768", "", WS_POPUP | styles, at.left, at.top,
                                 at.Width(), at.Height(), nullptr, nullptr, ::GetModuleHandleA(nullptr),
                                 nullptr)) {
    EXPECT_NE(m_window, nullptr);
}

void BarePopup::Show() const {
    CRect at;
    ::GetWindowRect(m_window, &at);
    ::SetWindowPos(m_window, HWND_TOPMOST, at.left, at.top, at.Width(), at.Height(),
                   SWP_SHOWWINDOW | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    ::UpdateWindow(m_window);
}

HWND MakeEmptyDialog() {
    struct Template {
        DLGTEMPLATE head;
        WORD menu, windowClass, title;
    } description{};
    description.head.style = WS_POPUP | WS_VISIBLE | WS_CAPTION;
    description.head.cx = 100;
    description.head.cy = 60;
    HWND dialog =
        ::CreateDialogIndirectParamA(::GetModuleHandleA(nullptr), &description.head, nullptr, &IdleDialog, 0);
    EXPECT_NE(dialog, nullptr);
    return dialog;
}

}  // namespace tavix_test
