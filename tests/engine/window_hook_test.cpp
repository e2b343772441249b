// The hook that meets every new window.
#include "engine/window_hook.h"

#include <gtest/gtest.h>

#include "controls/button_skin.h"
#include "engine/skin_wnd_proc.h"
#include "engine_objects.h"
#include "frames/dialog_skin.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

using namespace tavix_test;

namespace {

// Keeps what a hook of the host's own sees.
class HostHook {
public:
    HostHook() {
        seen.Clear();
        m_hook = ::SetWindowsHookExA(WH_CALLWNDPROC, &Procedure, nullptr, ::GetCurrentThreadId());
    }
    ~HostHook() { ::UnhookWindowsHookEx(m_hook); }
    static inline MessageLog seen;

private:
    static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam) {
        const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code == HC_ACTION) seen.Add({sent.hwnd, sent.message, sent.wParam, sent.lParam});
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
    HHOOK m_hook;
};

LRESULT CallHook(int code, HWND window, UINT message) {
    const CWPSTRUCT sent{0, 0, message, window};
    return SkinHookProc(code, 0, reinterpret_cast<LPARAM>(&sent));
}

bool g_skinAtNcCreate, g_skinAtCreate;

// A class's own procedure that notes when the skin is in place.
LRESULT CALLBACK NotingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool skinned = HeadOf(window) && ProcedureOf(window) == &SkinWndProc;
    if (message == WM_NCCREATE) g_skinAtNcCreate = skinned;
    if (message == WM_CREATE) g_skinAtCreate = skinned;
    return ::DefWindowProcA(window, message, wParam, lParam);
}

TEST(WindowHook, AttachesBeforeTheWindowsOwnWmCreate) {
    Skinned skinned;
    g_skinAtNcCreate = true;
    g_skinAtCreate = false;
    WNDCLASSA cls{};
    cls.lpfnWndProc = &NotingProcedure;
    cls.hInstance = ::GetModuleHandleA(nullptr);
    cls.lpszClassName = "Tavix_PaneD";
    ASSERT_NE(::RegisterClassA(&cls), 0);
    HWND window = ::CreateWindowExA(0, cls.lpszClassName, "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                    cls.hInstance, nullptr);
    EXPECT_FALSE(g_skinAtNcCreate);
    EXPECT_TRUE(g_skinAtCreate) << "the shared procedure has that very WM_CREATE passed on";
    ::DestroyWindow(window);
    ::UnregisterClassA(cls.lpszClassName, cls.hInstance);
}

CSkinWndBaseClass* g_headAtInit;

INT_PTR CALLBACK NotingDialog(HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message == WM_INITDIALOG) g_headAtInit = HeadOf(dialog);
    return FALSE;
}

// The platform sends a dialog WM_CREATE first and WM_INITDIALOG later.
TEST(WindowHook, GivesADialogOneSkinObject) {
    Skinned skinned;
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    struct alignas(4) Template {
        DLGTEMPLATE head{WS_POPUP | WS_CAPTION | WS_SYSMENU, 0, 0, 10, 10, 100, 50};
        WORD menu = 0, windowClass = 0, title = 0;
    } dialogTemplate;
    g_headAtInit = nullptr;
    HWND dialog = ::CreateDialogIndirectParamA(::GetModuleHandleA(nullptr), &dialogTemplate.head, nullptr,
                                               &NotingDialog, 0);
    ASSERT_NE(dialog, nullptr);
    CSkinWndBaseClass* head = HeadOf(dialog);
    EXPECT_TRUE(HasSkin<CSkinDialog>(dialog));
    EXPECT_EQ(head, g_headAtInit);
    EXPECT_EQ(engine->AddControl(dialog, const_cast<char*>("DIALOG")), 0);
    EXPECT_EQ(HeadOf(dialog), head);
    EXPECT_EQ(engine->GetSkinWndList()->GetCount(), 1);
    ::DestroyWindow(dialog);
    EXPECT_EQ(engine->GetSkinWndList()->GetCount(), 0);
}

TEST(WindowHook, MeetsADialogThatIsOlderThanTheSkinAtWmInitdialog) {
    HWND dialog =
        ::CreateWindowExA(0, "#32770", "", WS_POPUP, 0, 0, 90, 60, nullptr, nullptr, nullptr, nullptr);
    HostWindow frame("Tavix_PaneA");
    HWND button = CreateControl(Charset::Ansi, frame, "BUTTON", "", 0, {0, 0, 50, 20});
    {
        Skinned skinned;
        ::SendMessageA(dialog, WM_INITDIALOG, 0, 0);
        EXPECT_TRUE(HasSkin<CSkinDialog>(dialog));
        ::SendMessageA(frame, WM_INITDIALOG, 0, 0);
        ::SendMessageA(button, WM_INITDIALOG, 0, 0);
        EXPECT_TRUE(frame.IsNative());
        EXPECT_EQ(HeadOf(button), nullptr);
        ::DestroyWindow(dialog);
    }
}

TEST(WindowHook, LooksOnlyWhenItIsToldTo) {
    HWND dialog =
        ::CreateWindowExA(0, "#32770", "", WS_POPUP, 0, 0, 90, 60, nullptr, nullptr, nullptr, nullptr);
    {
        Skinned skinned;
        for (int code : {-1, 1, 2, 77}) {
            EXPECT_EQ(CallHook(code, dialog, WM_INITDIALOG), 0);
            EXPECT_EQ(CallHook(code, dialog, WM_CREATE), 0);
        }
        EXPECT_EQ(HeadOf(dialog), nullptr);
        for (UINT message : {WM_NULL, WM_NCCREATE, WM_INITMENUPOPUP, WM_INITMENU, WM_PAINT, WM_APP})
            CallHook(HC_ACTION, dialog, message);
        EXPECT_EQ(HeadOf(dialog), nullptr);
        CallHook(HC_ACTION, dialog, WM_INITDIALOG);
        EXPECT_TRUE(HasSkin<CSkinDialog>(dialog));
        ::DestroyWindow(dialog);
    }
}

TEST(WindowHook, WalksTheTableAtWmCreate) {
    ProbeWindow parent;
    HWND button = CreateControl(Charset::Ansi, parent, "BUTTON", "", 0, {0, 0, 50, 20});
    Skinned skinned;
    CallHook(HC_ACTION, button, WM_CREATE);
    EXPECT_TRUE(HasSkin<CSkinButton>(button));
    ::DestroyWindow(button);
}

TEST(WindowHook, PassesEverythingToTheOlderHooks) {
    HostHook host;
    Skinned skinned;
    HostWindow frame("Tavix_PaneD");
    EXPECT_TRUE(host.seen.Has(WM_NCCREATE));
    EXPECT_TRUE(host.seen.Has(WM_CREATE));
    host.seen.Clear();
    ::SendMessageA(frame, WM_APP + 3, 5, 6);
    ::SendMessageA(frame, WM_INITDIALOG, 0, 0);
    EXPECT_EQ(host.seen.Messages(), (std::vector<UINT>{WM_APP + 3, WM_INITDIALOG}));
    EXPECT_EQ(host.seen.Entries()[0], (Received{frame, WM_APP + 3, 5, 6}));
}

TEST(WindowHook, LeavesANewerHookAlone) {
    Skinned skinned;
    HostHook host;
    HostWindow frame("Tavix_PaneD");
    EXPECT_NE(HeadOf(frame), nullptr);
    EXPECT_TRUE(host.seen.Has(WM_CREATE));
}

TEST(WindowHook, IsGoneAfterUninstall) {
    { Skinned skinned; }
    HostWindow frame("Tavix_PaneA");
    EXPECT_TRUE(frame.IsNative());
    EXPECT_EQ(CallHook(HC_ACTION, frame, WM_CREATE), 0) << "a late call finds no engine and passes on";
    EXPECT_TRUE(frame.IsNative());
}

}  // namespace
