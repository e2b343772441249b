/* Scroll hosts under test, and a foreign module that scrolls them. */
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "client/client_calls.h"
#include "scroll/scroll_host.h"
#include "scroll/skin_scroll_bar.h"
#include "scroll/stub_region_wnd.h"
#include "support/test_skin.h"
#include "support/window_probe.h"
#include "tavixskin/framework/geometry.h"

namespace tavix_test {

/* The path of a file in the test program's folder. */
std::string BesideTheProgram(const char* name);
/* The test DLL's file; each copy of it is a module of its own. */
std::string ClientPath();
class ClientCopy {
public:
    ClientCopy() : m_file(".dll") { ::CopyFileA(ClientPath().c_str(), m_file.Path(), FALSE); }
    const char* Path() const { return m_file.Path(); }
    std::wstring WidePath() const { return m_file.WidePath(); }

private:
    TempFile m_file;
};
/* The calls of a loaded test DLL. */
const ClientCalls& CallsOf(HMODULE client);
/* A test DLL that this program loaded, before any install, and keeps for its whole life. */
const ClientCalls& Client();

/* Skins the thread for the length of a scope, with a skin that has everything. */
class HostSkin {
public:
    HostSkin();
    ~HostSkin();
    HostSkin(const HostSkin&) = delete;
    HostSkin& operator=(const HostSkin&) = delete;
};
TestSkin& SkinOfHosts();

/* A window of a host's class, as a child of another. */
class Pane {
public:
    using Handler = std::function<std::optional<LRESULT>(const Received&)>;
    explicit Pane(HWND parent, const char* className = "Tavix_PaneK", CRect at = {20, 30, 220, 180},
                  DWORD style = WS_CHILD | WS_VISIBLE, Handler ofItsCreation = {});
    ~Pane();
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;
    operator HWND() const { return m_window; }
    void Destroy() {
        if (m_window) ::DestroyWindow(m_window);
    }

    MessageLog log;
    Handler handler;

private:
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    HWND m_window = nullptr;
};

/* The host's record; fails the test if the window is no host. */
SCROLLHOST RecordOf(HWND host);
bool IsHost(HWND window);
/* The rectangle of a window in its parent's co-ordinates. */
CRect PlaceOf(HWND window);
/* The client area of a window in its parent's co-ordinates. */
CRect ClientPlaceOf(HWND window);
/* Whether a window itself is set to show, whatever its parents are. */
bool IsShown(HWND window);
SCROLLINFO MakeInfo(UINT mask, int min = 0, int max = 0, UINT page = 0, int pos = 0);
/* What the system has for a window's own bar, by the real function. */
SCROLLINFO NativeInfoOf(HWND window, int bar);

}  // namespace tavix_test
