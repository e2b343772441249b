/* CMenu: a menu that is owned. */
#pragma once

#include <windows.h>

#include "tavixskin/framework/object.h"

/* Destroys its menu when it ends, unless that is detached before. */
class TAVIX_API CMenu : public CObject {
    DECLARE_DYNAMIC(CMenu)
public:
    CMenu();
    explicit CMenu(HMENU menu);
    ~CMenu() override;

    HMENU GetSafeHmenu() const;
    /* Takes ownership; false for a null handle. What was held before is destroyed. */
    bool Attach(HMENU menu);
    /* Gives the handle and its ownership away. */
    HMENU Detach();
    bool DestroyMenu();

    HMENU m_hMenu = nullptr;
};
