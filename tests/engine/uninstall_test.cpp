// Windows that outlive the skin of their thread.
#include <gtest/gtest.h>

#include <string>

#include "controls/button_skin.h"
#include "engine/quiet_skins.h"
#include "engine/skin_wnd_proc.h"
#include "engine_objects.h"
#include "frames/dialog_skin.h"
#include "frames/frame_skin.h"
#include "main/gui_objects.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

using namespace tavix_test;

namespace {

constexpr UINT kMessage = WM_APP + 5;

void Install() { ASSERT_EQ(::InstallTavixSkin(SharedSkin().Path()), 1); }

// A subclass of the host's own, put on top of a skinned window.
class ForeignSubclass {
public:
    explicit ForeignSubclass(HWND window) {
        seen.Clear();
        s_former = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
    }
    static bool IsOn(HWND window) { return ProcedureOf(window) == &Procedure; }
    static inline MessageLog seen;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        seen.Add({window, message, wParam, lParam});
        return ::CallWindowProcA(s_former, window, message, wParam, lParam);
    }
    static inline WNDPROC s_former;
};

TEST(UninstallWithLivingWindows, GivesThemBackToTheirProcedures) {
    Install();
    HostWindow pane("Tavix_PaneD", WS_POPUP | WS_VISIBLE);
    ::UnInstallTavixSkin();
    pane.log.Clear();
    pane.handler = [](const Received& m) -> std::optional<LRESULT> {
        if (m.message == kMessage) return 88;
        return std::nullopt;
    };
    EXPECT_EQ(::SendMessageA(pane, kMessage, 1, 2), 88);
    EXPECT_EQ(pane.log.Entries(), (std::vector<Received>{{pane, kMessage, 1, 2}}));
    char text[20] = {};
    ::GetWindowTextA(pane, text, sizeof text);
    EXPECT_STREQ(text, "host");
    ::SetWindowTextA(pane, "renamed");
    ::GetWindowTextA(pane, text, sizeof text);
    EXPECT_STREQ(text, "renamed");
    ::SendMessageA(pane, WM_UNINITMENUPOPUP, 0, 0);
    EXPECT_TRUE(pane.log.Has(WM_UNINITMENUPOPUP)) << "no rule of the skins holds any more";
    const HWND window = pane;
    pane.log.Clear();
    pane.Destroy();
    EXPECT_EQ(pane.log.Count(WM_NCDESTROY), 1);
    EXPECT_FALSE(::IsWindow(window));
}

TEST(UninstallWithLivingWindows, LetsFramesDialogsAndButtonsGoOn) {
    Install();
    HostWindow frame("Tavix_PaneA", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    HWND dialog = ::CreateWindowExA(0, "#32770", "dialog", WS_POPUP | WS_CAPTION | WS_VISIBLE, 10, 10, 200,
                                    150, frame, nullptr, nullptr, nullptr);
    HWND button = CreateControl(Charset::Ansi, dialog, "BUTTON", "press", BS_AUTOCHECKBOX, {5, 5, 80, 25});
    ASSERT_TRUE(HasSkin<CSkinFrame>(frame) && HasSkin<CSkinDialog>(dialog) && HasSkin<CSkinButton>(button));
    PumpMessages();
    ::UnInstallTavixSkin();
    for (HWND window : {frame.Handle(), dialog, button}) {
        ::RedrawWindow(window, nullptr, nullptr,
                       RDW_INVALIDATE | RDW_UPDATENOW | RDW_FRAME | RDW_ALLCHILDREN);
        ::SetWindowPos(window, nullptr, 20, 20, 150, 90, SWP_NOZORDER);
    }
    ::SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
    EXPECT_EQ(::SendMessageA(button, BM_GETCHECK, 0, 0), BST_CHECKED);
    PumpMessages(50);  // timers of the skins that are gone
    ::DestroyWindow(button);
    ::DestroyWindow(dialog);
    EXPECT_FALSE(::IsWindow(dialog));
}

TEST(UninstallWithLivingWindows, DeletesTheSkinObjects) {
    Install();
    bool deleted = false;
    ProbeWindow window;
    (new ProbeSkin(&deleted))->Attach(window);
    ::UnInstallTavixSkin();
    EXPECT_TRUE(deleted);
    window.log.Clear();
    ::SendMessageA(window, kMessage, 0, 0);
    EXPECT_TRUE(window.log.Has(kMessage));
}

BOOL CALLBACK CountOurProperties(HWND, char* name, HANDLE, ULONG_PTR count) {
    if (!IS_INTRESOURCE(name) && std::string(name).find("TavixSkin") == 0) ++*reinterpret_cast<int*>(count);
    return TRUE;
}

TEST(UninstallWithLivingWindows, LeavesNoPropertyBehind) {
    Install();
    ProbeWindow window;
    (new ProbeSkin)->Attach(window);
    ::UnInstallTavixSkin();
    int atTheEnd = -1;
    window.handler = [&atTheEnd](const Received& m) -> std::optional<LRESULT> {
        if (m.message != WM_NCDESTROY) return std::nullopt;
        atTheEnd = 0;
        ::EnumPropsExA(m.window, &CountOurProperties, reinterpret_cast<LPARAM>(&atTheEnd));
        return std::nullopt;
    };
    ::DestroyWindow(window);
    EXPECT_EQ(atTheEnd, 0);
}

TEST(UninstallWithLivingWindows, WorksUnderAForeignSubclass) {
    Install();
    HostWindow pane("Tavix_PaneD");
    ForeignSubclass foreign(pane);
    ::UnInstallTavixSkin();
    EXPECT_TRUE(foreign.IsOn(pane)) << "nobody's procedure is taken off";
    pane.log.Clear();
    ::SendMessageA(pane, kMessage, 1, 2);
    EXPECT_TRUE(foreign.seen.Has(kMessage));
    EXPECT_EQ(pane.log.Entries(), (std::vector<Received>{{pane, kMessage, 1, 2}}));
    pane.Destroy();
    EXPECT_EQ(pane.log.Count(WM_NCDESTROY), 1);
    EXPECT_EQ(foreign.seen.Count(WM_NCDESTROY), 1);
}

TEST(LivingSkin, EndsUnderAForeignSubclass) {
    Skinned skinned;
    HostWindow pane("Tavix_PaneD");
    ForeignSubclass foreign(pane);
    ::SendMessageA(pane, kMessage, 0, 0);
    EXPECT_TRUE(pane.log.Has(kMessage));
    pane.Destroy();
    EXPECT_EQ(pane.log.Count(WM_NCDESTROY), 1);
    EXPECT_TRUE(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->IsEmpty());
}

TEST(UninstallInsideAHandler, KeepsTheObjectUntilItIsThrough) {
    Install();
    bool deleted = false, deletedInside = true;
    ProbeWindow window;
    auto* skin = new ProbeSkin(&deleted);
    skin->Attach(window);
    skin->handler = [&, skin](UINT m, WPARAM w, LPARAM l) -> LRESULT {
        if (m == kMessage) {
            ::UnInstallTavixSkin();
            deletedInside = deleted;
        }
        return skin->Default(m, w, l);
    };
    window.log.Clear();
    ::SendMessageA(window, kMessage, 4, 5);
    EXPECT_FALSE(deletedInside);
    EXPECT_TRUE(deleted);
    EXPECT_EQ(window.log.Entries(), (std::vector<Received>{{window, kMessage, 4, 5}}));
    ::DestroyWindow(window);
    EXPECT_EQ(window.log.Count(WM_NCDESTROY), 1);
}

TEST(UninstallInsideAHandler, MayBeTheWindowsOwnEnd) {
    // The usual end of a host: the main window's WM_DESTROY, or its last message of all.
    for (UINT last : {UINT{WM_DESTROY}, UINT{WM_NCDESTROY}}) {
        Install();
        HostWindow frame("Tavix_PaneA", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
        HWND button = CreateControl(Charset::Ansi, frame, "BUTTON", "", 0, {0, 0, 40, 20});
        EXPECT_NE(HeadOf(button), nullptr);
        frame.handler = [last](const Received& m) -> std::optional<LRESULT> {
            if (m.message == last) ::UnInstallTavixSkin();
            return std::nullopt;
        };
        frame.Destroy();
        EXPECT_EQ(frame.log.Count(WM_NCDESTROY), 1) << last;
        EXPECT_FALSE(::IsWindow(button));
        EXPECT_EQ(::IsSkinnedThread(::GetCurrentThreadId()), 0);
    }
}

// ---------------------------------------------------------------- what is left

void OneHostsLife() {
    Skinned skinned;
    HostWindow frame("Tavix_PaneA", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    HWND dialog = ::CreateWindowExA(0, "#32770", "dialog", WS_POPUP | WS_CAPTION | WS_VISIBLE, 10, 10, 200,
                                    150, frame, nullptr, nullptr, nullptr);
    CreateControl(Charset::Ansi, dialog, "BUTTON", "press", BS_PUSHBUTTON, {5, 5, 80, 25});
    CreateControl(Charset::Ansi, dialog, "BUTTON", "tick", BS_AUTOCHECKBOX, {5, 35, 80, 55});
    ::RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_FRAME | RDW_ALLCHILDREN);
    ::RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_FRAME | RDW_ALLCHILDREN);
    ASSERT_EQ(::SetSkinFromFile(SharedSkin().Path()), 1);
    PumpMessages();
    ::DestroyWindow(dialog);
}

TEST(HostsLife, LeavesNoGdiOrUserObjects) {
    for (int i = 0; i < 3; ++i) OneHostsLife();
    const int gdi = CountGdiObjects();
    const int user = CountUserObjects();
    ASSERT_GT(gdi, 0);
    constexpr int kRounds = 10;
    for (int i = 0; i < kRounds; ++i) OneHostsLife();
    // What the platform keeps for itself now and then does not repeat in each round.
    EXPECT_LT(CountGdiObjects() - gdi, kRounds);
    EXPECT_LT(CountUserObjects() - user, kRounds);
}

TEST(HostsLife, LeavesNoObjectsWhenWindowsOutliveTheSkin) {
    const auto life = [] {
        Install();
        HostWindow frame("Tavix_PaneA", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
        CreateControl(Charset::Ansi, frame, "BUTTON", "press", 0, {5, 5, 80, 25});
        PumpMessages();
        ::UnInstallTavixSkin();
        PumpMessages();
    };
    for (int i = 0; i < 3; ++i) life();
    const int gdi = CountGdiObjects();
    const int user = CountUserObjects();
    constexpr int kRounds = 10;
    for (int i = 0; i < kRounds; ++i) life();
    EXPECT_LT(CountGdiObjects() - gdi, kRounds);
    EXPECT_LT(CountUserObjects() - user, kRounds);
}

// ---------------------------------------------------------------- a new skin, and windows of the former one

TEST(InstallAgain, LeavesTheWindowsOfTheFormerSkinNative) {
    Install();
    HostWindow pane("Tavix_PaneD");
    ::UnInstallTavixSkin();
    Skinned again;
    pane.log.Clear();
    ::SendMessageA(pane, kMessage, 0, 0);
    EXPECT_EQ(pane.log.Count(kMessage), 1);
    EXPECT_EQ(HeadOf(pane), nullptr);
    pane.Destroy();
    EXPECT_EQ(pane.log.Count(WM_NCDESTROY), 1);
}

TEST(InstallAgain, MayMeetAWindowOfTheFormerSkin) {
    Install();
    HostWindow pane("Tavix_PaneD");
    ::UnInstallTavixSkin();
    Skinned again;
    EXPECT_EQ(CTavixSkin::GetCurrentThreadSkin()->AddControl(pane, nullptr), 1);
    EXPECT_TRUE(HasSkin<CSkinClientWnd>(pane));
    EXPECT_NE(HeadOf(pane)->PreviousProc(), &SkinWndProc);
    pane.log.Clear();
    ::SendMessageA(pane, kMessage, 3, 4);
    EXPECT_EQ(pane.log.Entries(), (std::vector<Received>{{pane, kMessage, 3, 4}}));
    pane.log.Clear();
    pane.Destroy();
    EXPECT_EQ(pane.log.Count(WM_NCDESTROY), 1);
    EXPECT_TRUE(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->IsEmpty());
}

TEST(InstallAgain, MayMeetADialogOfTheFormerSkinAtWmInitdialog) {
    Install();
    HWND dialog = ::CreateWindowExA(0, "#32770", "", WS_POPUP | WS_CAPTION | WS_VISIBLE, 0, 0, 200, 100,
                                    nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(HasSkin<CSkinDialog>(dialog));
    ::UnInstallTavixSkin();
    Skinned again;
    ::SendMessageA(dialog, WM_INITDIALOG, 0, 0);
    EXPECT_TRUE(HasSkin<CSkinDialog>(dialog));
    PumpMessages();
    ::DestroyWindow(dialog);
    EXPECT_TRUE(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->IsEmpty());
}

TEST(InstallAgain, MayMeetAWindowOfTheFormerSkinUnderAForeignSubclass) {
    Install();
    HostWindow pane("Tavix_PaneD");
    ForeignSubclass foreign(pane);
    ::UnInstallTavixSkin();
    Skinned again;
    CTavixSkin::GetCurrentThreadSkin()->AddControl(pane, nullptr);
    pane.log.Clear();
    ::SendMessageA(pane, kMessage, 3, 4);
    EXPECT_EQ(pane.log.Entries(), (std::vector<Received>{{pane, kMessage, 3, 4}}));
    EXPECT_EQ(foreign.seen.Count(kMessage), 1);
    pane.Destroy();
    EXPECT_EQ(pane.log.Count(WM_NCDESTROY), 1);
    EXPECT_TRUE(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->IsEmpty());
}

}  // namespace
