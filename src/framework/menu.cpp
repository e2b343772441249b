#include "tavixskin/framework/menu.h"

#include <utility>

IMPLEMENT_DYNAMIC(CMenu, CObject)

CMenu::CMenu() = default;
CMenu::CMenu(HMENU menu) : m_hMenu(menu) {}
CMenu::~CMenu() { DestroyMenu(); }

HMENU CMenu::GetSafeHmenu() const { return m_hMenu; }

bool CMenu::Attach(HMENU menu) {
    if (menu != m_hMenu) DestroyMenu();
    m_hMenu = menu;
    return menu != nullptr;
}

HMENU CMenu::Detach() { return std::exchange(m_hMenu, nullptr); }

bool CMenu::DestroyMenu() { return m_hMenu && ::DestroyMenu(Detach()); }
