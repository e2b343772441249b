/* What the tests of popup menus share: owners, menus of every kind of item, popups with and without a user.
 */
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "menus/menu_skin.h"
#include "menus/menu_state.h"
#include "support/skinned_thread.h"
#include "support/window_probe.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {

/* A menu that is destroyed with the scope, with all submenus. */
class OwnedMenu {
public:
    OwnedMenu() : m_menu(::CreatePopupMenu()) {}
    ~OwnedMenu() {
        if (::IsMenu(m_menu)) ::DestroyMenu(m_menu);
    }
    OwnedMenu(const OwnedMenu&) = delete;
    OwnedMenu& operator=(const OwnedMenu&) = delete;
    operator HMENU() const { return m_menu; }

    OwnedMenu& Item(UINT id, const char* text, UINT flags = 0) {
        ::AppendMenuA(m_menu, MF_STRING | flags, id, text);
        return *this;
    }
    OwnedMenu& Separator() {
        ::AppendMenuA(m_menu, MF_SEPARATOR, 0, nullptr);
        return *this;
    }
    OwnedMenu& HostDrawn(UINT id, ULONG_PTR data, UINT flags = 0) {
        ::AppendMenuA(m_menu, MF_OWNERDRAW | flags, id, reinterpret_cast<const char*>(data));
        return *this;
    }
    /* The new submenu, which this menu owns. */
    HMENU Submenu(const char* text);
    OwnedMenu& Radio(UINT id, const char* text);

private:
    HMENU m_menu;
};

/* All that GetMenuItemInfoA tells of an item, and its text. */
struct ItemFacts {
    UINT type, state, id;
    HMENU submenu;
    HBITMAP checkedMark, uncheckedMark, bitmap;
    ULONG_PTR data;
    std::string text;
    bool operator==(const ItemFacts&) const = default;
};
void PrintTo(const ItemFacts& facts, std::ostream* out);
std::vector<ItemFacts> FactsOf(HMENU menu);
MENUITEMINFOA ItemInfo(HMENU menu, int position, UINT mask);
/* An item of every kind that a menu can hold; `bitmap` is the caller's. */
void AppendEveryKind(HMENU menu, HBITMAP bitmap);

/* A window that menus belong to; of a class that the skin knows, unless another one is asked for. */
class MenuOwner {
public:
    explicit MenuOwner(const char* className = "Tavix_PaneD");
    ~MenuOwner() { Destroy(); }
    MenuOwner(const MenuOwner&) = delete;
    MenuOwner& operator=(const MenuOwner&) = delete;
    operator HWND() const { return m_window; }
    void Destroy() {
        if (m_window) ::DestroyWindow(m_window);
    }

    MessageLog log;
    std::function<std::optional<LRESULT>(const Received&)> handler;

    /* Shows the menu as a context menu, and works through the steps while it is open: one each time
       the menu's loop has come to rest. Ends the menu after the last one. The command chosen, or 0. */
    using Step = std::function<void()>;
    UINT Track(HMENU menu, std::vector<Step> steps = {}, UINT flags = 0, POINT at = {300, 200});

private:
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    void OnTick();
    HWND m_window = nullptr;
    std::vector<Step> m_steps;
    std::size_t m_next = 0;
};

/* The popup windows of the thread that show, the first one opened first. */
std::vector<HWND> ShownPopups();
/* The skin of a popup; null if it has none. */
CSkinMenu* SkinOfPopup(HWND popup);
/* The shown popup of a menu; null if there is none. */
HWND PopupOf(HMENU menu);

/* Puts a key in the input queue, pressed and released, without waiting. */
void TypeKey(WORD virtualKey);
MenuOwner::Step Typing(WORD virtualKey);

/* Sets whether the system casts shadows for popups; the former setting comes back with the end. */
class SystemShadow {
public:
    explicit SystemShadow(bool on);
    ~SystemShadow() { Set(m_former); }
    SystemShadow(const SystemShadow&) = delete;
    SystemShadow& operator=(const SystemShadow&) = delete;

private:
    static void Set(BOOL on);
    BOOL m_former = FALSE;
};

/*
 * A popup's window without the menu loop: made as the system makes one, it waits for its menu until
 * the owner hears of it.
 */
class BarePopup {
public:
    explicit BarePopup(const CRect& at = {300, 200, 460, 320}, DWORD styles = WS_BORDER);
    ~BarePopup() { Destroy(); }
    BarePopup(const BarePopup&) = delete;
    BarePopup& operator=(const BarePopup&) = delete;
    operator HWND() const { return m_window; }
    void Destroy() {
        if (::IsWindow(m_window)) ::DestroyWindow(m_window);
    }
    /* Sends the owner what the system sends it. */
    void Bind(HWND owner, HMENU menu) const {
        ::SendMessageA(owner, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
    }
    void Show() const;
    CSkinMenu* Skin() const { return SkinOfPopup(m_window); }

private:
    HWND m_window;
};

/* A modeless dialog without controls; the caller destroys it. */
HWND MakeEmptyDialog();

/* A skinned thread with an owner. */
class MenuTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ParkMouse(); }
    void SetUp() override {
        thread.emplace(skin);
        owner.emplace();
        ::UpdateWindow(*owner);
    }
    void TearDown() override {
        owner.reset();
        thread.reset();
    }
    COLORREF Colour(DWORD id) const { return skin.Colour(id); }

    TestSkin skin;
    std::optional<SkinnedThread> thread;
    std::optional<MenuOwner> owner;
};

}  // namespace tavix_test
