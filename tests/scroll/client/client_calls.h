/* What the test DLL offers: each intercepted function, called through its own import table. */
#pragma once

#include <windows.h>

/* The same for code and data, as the structure crosses a DLL's border. */
struct ClientCalls {
    decltype(&::LoadLibraryA) LoadLibraryA;
    decltype(&::LoadLibraryW) LoadLibraryW;
    decltype(&::LoadLibraryExA) LoadLibraryExA;
    decltype(&::LoadLibraryExW) LoadLibraryExW;
    decltype(&::GetProcAddress) GetProcAddress;
    decltype(&::SetScrollInfo) SetScrollInfo;
    decltype(&::SetScrollRange) SetScrollRange;
    decltype(&::SetScrollPos) SetScrollPos;
    decltype(&::MoveWindow) MoveWindow;
    decltype(&::GetScrollInfo) GetScrollInfo;
    decltype(&::BringWindowToTop) BringWindowToTop;
    decltype(&::ShowWindow) ShowWindow;
    decltype(&::ShowScrollBar) ShowScrollBar;
    decltype(&::EnableScrollBar) EnableScrollBar;
    decltype(&::TrackPopupMenu) TrackPopupMenu;
};

/* The DLL's one export. */
using ClientCallsFunction = const ClientCalls*(__cdecl*)();
constexpr char kClientCallsExport[] = "TavixTestClientCalls";
