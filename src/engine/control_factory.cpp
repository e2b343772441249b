/* Which window gets which skin: the one place that knows every skin class. */
#include <new>

#include "commonctrls/list_view_skin.h"
#include "commonctrls/tab_ctrl_skin.h"
#include "commonctrls/tool_bar_skin.h"
#include "controls/animate_skin.h"
#include "controls/button_skin.h"
#include "controls/combo_box_skin.h"
#include "controls/drop_list_skin.h"
#include "controls/edit_skin.h"
#include "controls/group_box_skin.h"
#include "controls/header_skin.h"
#include "controls/list_box_skin.h"
#include "controls/static_skin.h"
#include "controls/trackbar_skin.h"
#include "engine/quiet_skins.h"
#include "engine/tab_controls.h"
#include "engine/window_class.h"
#include "frames/dialog_skin.h"
#include "frames/frame_skin.h"
#include "menus/menu_skin.h"
#include "scroll/scroll_host.h"
#include "scroll/skin_scroll_bar.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

namespace {

template <class Skin>
void AttachSkin(HWND window) {
    if (Skin* skin = new (std::nothrow) Skin) skin->Attach(window);
}

// Makes the new non-client sizes take effect at once.
void RefreshFrame(HWND window) {
    ::SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_FRAMECHANGED);
}

void AttachRefreshedFrame(HWND window) {
    AttachSkin<CSkinFrame>(window);
    RefreshFrame(window);
}

void AttachScrollingClient(HWND window) {
    InstallScrollHost(window);
    AttachSkin<CSkinClientWnd>(window);
}

void AttachScrollingView(HWND window) {
    InstallScrollHost(window);
    AttachSkin<CSkinListView>(window);
}

DWORD StyleOf(HWND window) { return static_cast<DWORD>(::GetWindowLongA(window, GWL_STYLE)); }

// The framework's frames and views share one class; what has any part of a caption is a frame.
void AttachFrameOrView(HWND window) {
    constexpr DWORD kFrameStyles = WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    if (StyleOf(window) & kFrameStyles)
        AttachRefreshedFrame(window);
    else
        AttachScrollingView(window);
}

void AttachButton(HWND window) {
    if ((StyleOf(window) & 0xF) == BS_GROUPBOX)
        AttachSkin<CSkinGroupBox>(window);
    else
        AttachSkin<CSkinButton>(window);
}

// A bar whose owner takes part in its erasing paints itself in ways that the skin would cover.
void AttachToolBar(HWND window) {
    if (!(StyleOf(window) & TBSTYLE_CUSTOMERASE)) AttachSkin<CSkinToolBar>(window);
}

/* A bar that took a control over lives as long as the window. */
class ControlScrollBar final : public CSkinScrollBar {
    void PostNcDestroy() override { delete this; }
};

// The bar is no skin object of the window's chain: it is the window's one object from now on.
void AttachScrollBar(HWND window) {
    ControlScrollBar* bar = new (std::nothrow) ControlScrollBar;
    if (bar && !bar->AttachControl(window)) delete bar;
}

CSkinWndBaseClass* SkinOf(HWND window) {
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    return engine && window ? engine->GetSkinWndList()->Lookup(window) : nullptr;
}

// The skinned combo box that the window is a part of, or null. A window may have any parent.
CSkinComboBox* ComboAround(HWND part) {
    CSkinWndBaseClass* skin = SkinOf(::GetParent(part));
    return skin && skin->IsKindOf(RUNTIME_CLASS(CSkinComboBox)) ? static_cast<CSkinComboBox*>(skin) : nullptr;
}

void AttachComboBoxEx(HWND window) {
    auto* skin = new (std::nothrow) CSkinComboBox;
    if (!skin) return;
    skin->Attach(window);
    skin->isComboBoxEx = TRUE;
}

void AttachDropList(HWND window) {
    auto* skin = new (std::nothrow) CSkinDropList;
    if (!skin) return;
    skin->Attach(window);
    if (CSkinComboBox* combo = ComboAround(window)) skin->PairWith(combo);
}

void AttachEdit(HWND window) {
    AttachSkin<CSkinEdit>(window);
    if (CSkinComboBox* combo = ComboAround(window)) combo->editWnd = window;
}

void AttachTabControl(HWND window) {
    tavix::NoteTabControl(window);
    AttachSkin<CSkinTabCtrl>(window);
}

struct ClassRow {
    const char* className;
    void (*attach)(HWND window);
};

// In this order; the first match wins. Names are compared whatever their case.
constexpr ClassRow kClassTable[] = {
    {"#32770", AttachSkin<CSkinDialog>},
    {"#32768", AttachSkin<CSkinMenu>},
    {"ScrollBar", AttachScrollBar},
    {"Tavix_PaneA", AttachSkin<CSkinFrame>},
    {"Tavix_PaneB", AttachSkin<CSkinFrame>},
    {"Tavix_PaneC", AttachSkin<CSkinFrame>},
    {"Tavix_PaneD", AttachSkin<CSkinClientWnd>},
    {"Tavix_PaneE", AttachRefreshedFrame},
    {"Tavix_PaneF", AttachRefreshedFrame},
    {"Tavix_PaneG", AttachRefreshedFrame},
    {"Tavix_PaneH", AttachScrollingClient},
    {"Tavix_PaneI", AttachSkin<CSkinFrame>},
    {"Tavix_PaneJ", AttachSkin<CSkinFrame>},
    {"Tavix_PaneK", AttachScrollingClient},
    {"Tavix_PaneL", AttachScrollingClient},
    {"Tavix_PaneM", AttachScrollingClient},
    {"Tavix_PaneN", AttachSkin<CSkinClientWnd>},
    {"ToolbarWindow32", AttachToolBar},
    {"syslistview32", AttachSkin<CSkinListView>},
    {"systreeview32", AttachSkin<CSkinListView>},
    {"AfxFrameOrView42", AttachFrameOrView},
    {"ShellDLL_DefView", AttachScrollingView},
    {"Button", AttachButton},
    {"ListBox", AttachSkin<CSkinListBox>},
    {"Combobox", AttachSkin<CSkinComboBox>},
    {"ComboBoxEx32", AttachComboBoxEx},
    {"ComboLBox", AttachDropList},
    {"Edit", AttachEdit},
    {"Static", AttachSkin<CSkinStatic>},
    {"SysAnimate32", AttachSkin<CSkinAnimate>},
    {"msctls_trackbar32", AttachSkin<CSkinTrackBar>},
    {"SysHeader32", AttachSkin<CSkinHeader>},
    {"SysTabControl32", AttachTabControl},
    {"msctls_updown32", AttachSkin<CSkinClientWnd>},
    {"msctls_trackbar32", AttachSkin<CSkinClientWnd>},  // never reached: it has its skin above
    {"AfxMDIFrame42d", AttachSkin<CSkinMDIFrame>},
    {"MDIClient", AttachSkin<CSkinMDIClient>},
};

bool HasSkin(HWND window) { return SkinOf(window) != nullptr; }

}  // namespace

int CTavixSkin::AddControl(HWND window, char* hint) try {
    AFX_MAINTAIN_STATE2 moduleState(AfxGetLibraryModuleState());
    if (!GetCurrentThreadSkin()) return 1;
    if (HasSkin(window)) return 0;
    const tavix::WindowClassName className(window);
    if (hint) {
        // A dialog that was created before the thread was skinned may still be met here.
        const bool isDialogHint = _mbsicmp(reinterpret_cast<unsigned char*>(hint),
                                           reinterpret_cast<const unsigned char*>("Dialog")) == 0;
        if (isDialogHint && className.Is("#32770")) AttachSkin<CSkinDialog>(window);
        return 1;
    }
    for (const ClassRow& row : kClassTable) {
        if (!className.Is(row.className)) continue;
        row.attach(window);
        break;
    }
    return 1;
} catch (...) {
    return 1;
}

int CTavixSkin::AddControl_1(HWND window, char*) { return HasSkin(window) ? 0 : 1; }
