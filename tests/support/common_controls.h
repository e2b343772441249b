/* Both versions of the common controls in one test program. */
#pragma once

#include <windows.h>

namespace tavix_test {

enum class ControlsVersion { V5, V6 };

/*
 * While it lives, windows of the thread are created with that version of the controls: with V6
 * "Button", "Edit", "ListBox" and their kin are the classes of COMCTL32, with V5 those of USER32.
 * A window keeps its version for life. Made and ended in the same thread, in nested order.
 */
class ControlsWorld {
public:
    explicit ControlsWorld(ControlsVersion version);
    ~ControlsWorld();
    ControlsWorld(const ControlsWorld&) = delete;
    ControlsWorld& operator=(const ControlsWorld&) = delete;

private:
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_cookie = 0;
};

/*
 * Which version's class a control has. For the classes that were USER32's before COMCTL32 got its
 * own: "Button", "Edit", "ListBox", "ComboBox", "ComboLBox", "Static".
 */
ControlsVersion VersionOf(HWND control);

const char* NameOf(ControlsVersion version);

}  // namespace tavix_test
