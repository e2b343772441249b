// The messages that the shared procedure handles for all skins, and the end of a skin object.
#include "engine/skin_wnd_proc.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "controls/button_skin.h"
#include "engine_objects.h"
#include "frames/dialog_skin.h"
#include "tavixskin.h"
#include "tavixskin/framework/module_state.h"
#include "tavixskin/tavix_skin.h"

using namespace tavix_test;

namespace {

constexpr UINT kMessage = WM_APP + 5;
constexpr UINT kDestroy = WM_APP + 6;

class SharedProcedure : public testing::Test {
protected:
    void SetUp() override {
        m_skin->Attach(m_window);
        m_window.log.Clear();
    }
    bool m_deleted = false;
    Skinned m_skinned;
    ProbeWindow m_window;
    ProbeSkin* m_skin = new ProbeSkin(&m_deleted);
};

// ---------------------------------------------------------------- module state

TEST_F(SharedProcedure, RunsInTheLibrarysModuleState) {
    AFX_MODULE_STATE* former = AfxGetModuleState();
    AFX_MODULE_STATE* inside = nullptr;
    m_skin->handler = [&](UINT, WPARAM, LPARAM) -> LRESULT {
        inside = AfxGetModuleState();
        return 1;
    };
    EXPECT_EQ(::SendMessageA(m_window, kMessage, 0, 0), 1);
    EXPECT_EQ(inside, AfxGetLibraryModuleState());
    EXPECT_EQ(AfxGetModuleState(), former);
    m_skin->handler = nullptr;
}

TEST_F(SharedProcedure, LetsNoExceptionOut) {
    AFX_MODULE_STATE* former = AfxGetModuleState();
    const MSG inFlight = AfxGetThreadState()->m_lastSentMsg;
    m_skin->handler = [](UINT m, WPARAM, LPARAM) -> LRESULT {
        if (m == kMessage || m == WM_GETTEXTLENGTH) throw std::runtime_error("from a skin");
        return 5;
    };
    EXPECT_EQ(::SendMessageA(m_window, kMessage, 0, 0), 0);
    EXPECT_EQ(::SendMessageA(m_window, WM_GETTEXTLENGTH, 0, 0), 5) << "the length of \"probe\"";
    EXPECT_EQ(AfxGetModuleState(), former);
    EXPECT_EQ(AfxGetThreadState()->m_nMaintainDepth, 0);
    EXPECT_EQ(AfxGetThreadState()->m_lastSentMsg.message, inFlight.message);
    m_skin->handler = nullptr;
}

// ---------------------------------------------------------------- the end of a window

TEST_F(SharedProcedure, EndsTheObjectAtWmNcdestroy) {
    bool deletedAtDestroy = true, deletedAtNcDestroy = true;
    bool mappedAtNcDestroy = true;
    WNDPROC procedureAtNcDestroy = nullptr;
    m_window.handler = [&](const Received& m) -> std::optional<LRESULT> {
        if (m.message == WM_DESTROY) deletedAtDestroy = m_deleted;
        if (m.message == WM_NCDESTROY) {
            deletedAtNcDestroy = m_deleted;
            mappedAtNcDestroy = HeadOf(m.window) != nullptr;
            procedureAtNcDestroy = ProcedureOf(m.window);
        }
        return std::nullopt;
    };
    MessageLog seen;
    m_skin->handler = [&](UINT m, WPARAM w, LPARAM l) {
        seen.Add({m_window, m, w, l});
        return m_skin->Default(m, w, l);
    };
    const WNDPROC native = m_skin->PreviousProc();
    ::DestroyWindow(m_window);
    EXPECT_TRUE(seen.Has(WM_DESTROY));
    EXPECT_FALSE(seen.Has(WM_NCDESTROY)) << "no skin sees the last message";
    EXPECT_EQ(m_window.log.Count(WM_DESTROY), 1);
    EXPECT_EQ(m_window.log.Count(WM_NCDESTROY), 1);
    EXPECT_FALSE(deletedAtDestroy);
    EXPECT_FALSE(deletedAtNcDestroy) << "deleted after the window's own procedure";
    EXPECT_FALSE(mappedAtNcDestroy);
    EXPECT_EQ(procedureAtNcDestroy, native);
    EXPECT_TRUE(m_deleted);
}

TEST_F(SharedProcedure, GivesTheResultOfTheWindowsOwnWmNcdestroy) {
    m_window.handler = [](const Received& m) -> std::optional<LRESULT> {
        if (m.message == WM_NCDESTROY) return 4711;
        return std::nullopt;
    };
    EXPECT_EQ(SkinWndProc(m_window, WM_NCDESTROY, 0, 0), 4711);
    EXPECT_TRUE(m_deleted);
    EXPECT_EQ(HeadOf(m_window), nullptr);
    EXPECT_EQ(ProcedureOf(m_window) == &SkinWndProc, false);
    m_window.handler = nullptr;
}

TEST_F(SharedProcedure, KeepsTheObjectWhoseHandlerDestroysTheWindow) {
    bool deletedInside = true, memberReadable = false;
    m_skin->handler = [&, skin = m_skin](UINT m, WPARAM w, LPARAM l) -> LRESULT {
        if (m != kDestroy) return skin->Default(m, w, l);
        ::DestroyWindow(skin->GetSafeHwnd());
        deletedInside = m_deleted;
        memberReadable = skin->GetSafeHwnd() != nullptr && skin->repaints == 0;
        skin->Default(m, w, l);  // still knows where it went
        return 8;
    };
    EXPECT_EQ(::SendMessageA(m_window, kDestroy, 0, 0), 8);
    EXPECT_FALSE(deletedInside);
    EXPECT_TRUE(memberReadable);
    EXPECT_TRUE(m_deleted);
    EXPECT_TRUE(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->IsEmpty());
}

TEST_F(SharedProcedure, KeepsTheObjectUntilTheOutermostHandlerIsThrough) {
    int depth = 0;
    std::vector<bool> deletedOnTheWayOut;
    m_skin->handler = [&, skin = m_skin](UINT m, WPARAM w, LPARAM l) -> LRESULT {
        if (m != kMessage) return skin->Default(m, w, l);
        if (++depth < 4)
            ::SendMessageA(skin->GetSafeHwnd(), kMessage, 0, 0);
        else
            ::DestroyWindow(skin->GetSafeHwnd());
        deletedOnTheWayOut.push_back(m_deleted);
        return 0;
    };
    ::SendMessageA(m_window, kMessage, 0, 0);
    EXPECT_EQ(deletedOnTheWayOut, (std::vector<bool>{false, false, false, false}));
    EXPECT_TRUE(m_deleted);
}

TEST_F(SharedProcedure, KeepsTheObjectOfAParentWhoseChildDestroysIt) {
    // A child's skin destroys the parent (a button that closes its dialog).
    bool childDeleted = false;
    bool deletedInside = true, childDeletedInside = true;
    HWND child = CreateControl(Charset::Ansi, m_window, "STATIC", "", 0, {0, 0, 9, 9});
    auto* childSkin = new ProbeSkin(&childDeleted);
    childSkin->Attach(child);
    childSkin->handler = [&, childSkin](UINT m, WPARAM w, LPARAM l) -> LRESULT {
        if (m == kMessage) {
            ::SendMessageA(m_window, kDestroy, 0, 0);
            childDeletedInside = childDeleted;
            return 3;
        }
        return childSkin->Default(m, w, l);
    };
    m_skin->handler = [&, skin = m_skin](UINT m, WPARAM w, LPARAM l) -> LRESULT {
        if (m != kDestroy) return skin->Default(m, w, l);
        ::DestroyWindow(skin->GetSafeHwnd());
        deletedInside = m_deleted;
        return 0;
    };
    EXPECT_EQ(::SendMessageA(child, kMessage, 0, 0), 3);
    EXPECT_FALSE(deletedInside);
    EXPECT_FALSE(childDeletedInside);
    EXPECT_TRUE(m_deleted);
    EXPECT_TRUE(childDeleted);
}

// Ends at the click on its button, while the handlers of the button are still running.
INT_PTR CALLBACK ClosingDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_COMMAND || LOWORD(wParam) != IDOK) return FALSE;
    ::DestroyWindow(dialog);
    return TRUE;
}

TEST(DialogOnScreen, MayBeClosedByItsOwnButton) {
    Skinned skinned;
    struct alignas(4) Template {
        DLGTEMPLATE head{WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 0, 0, 10, 10, 100, 50};
        WORD menu = 0, windowClass = 0, title = 0;
    } dialogTemplate;
    HWND dialog = ::CreateDialogIndirectParamA(::GetModuleHandleA(nullptr), &dialogTemplate.head, nullptr,
                                               &ClosingDialog, 0);
    HWND button = CreateControl(Charset::Ansi, dialog, "BUTTON", "OK", 0, {0, 0, 60, 20}, IDOK);
    ASSERT_TRUE(HasSkin<CSkinDialog>(dialog) && HasSkin<CSkinButton>(button));
    PumpMessages();
    ::SendMessageA(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    ::SendMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(PumpUntil([dialog] { return !::IsWindow(dialog); }));
    EXPECT_FALSE(::IsWindow(button));
    EXPECT_TRUE(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->IsEmpty());
}

TEST_F(SharedProcedure, PassesWmDestroyToTheSkin) {
    m_skin->handler = [&, skin = m_skin](UINT m, WPARAM w, LPARAM l) -> LRESULT {
        return m == WM_DESTROY ? 0 : skin->Default(m, w, l);
    };
    ::DestroyWindow(m_window);
    EXPECT_FALSE(m_window.log.Has(WM_DESTROY)) << "this skin keeps it to itself";
    EXPECT_TRUE(m_window.log.Has(WM_NCDESTROY));
    EXPECT_TRUE(m_deleted);
}

// ---------------------------------------------------------------- menus

TEST_F(SharedProcedure, SwallowsWmUninitmenupopup) {
    m_window.handler = [](const Received&) { return LRESULT{99}; };
    ::SendMessageA(m_window, WM_UNINITMENUPOPUP, 1, 2);
    EXPECT_FALSE(m_window.log.Has(WM_UNINITMENUPOPUP));
    EXPECT_FALSE(m_skin->log.Has(WM_UNINITMENUPOPUP));
    EXPECT_EQ(::SendMessageA(m_window, kMessage, 0, 0), 99);
    m_window.handler = nullptr;
}

TEST_F(SharedProcedure, PassesWmInitmenupopupAndItsResult) {
    HMENU menu = ::CreatePopupMenu();
    m_skin->handler = [](UINT, WPARAM, LPARAM) { return LRESULT{66}; };
    EXPECT_EQ(::SendMessageA(m_window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0), 66);
    EXPECT_TRUE(m_skin->log.Has(WM_INITMENUPOPUP));
    m_skin->handler = nullptr;
    ::DestroyMenu(menu);
}

// ---------------------------------------------------------------- WM_CTLCOLORSTATIC

class ColourOfStatic : public SharedProcedure {
protected:
    void SetUp() override {
        SharedProcedure::SetUp();
        m_child = CreateControl(Charset::Ansi, m_window, "TavixTestProbe", "", 0, {0, 0, 20, 20});
        m_skin->handler = [this](UINT m, WPARAM w, LPARAM l) -> LRESULT {
            return m == WM_CTLCOLORSTATIC || m == WM_CTLCOLOREDIT ? 100 + m_skin->log.Count(m)
                                                                  : m_skin->Default(m, w, l);
        };
        m_skin->log.Clear();
        m_childSkin.log.Listen({WM_CTLCOLORSTATIC, WM_CTLCOLOREDIT, WM_CTLCOLORBTN});
    }
    void TearDown() override {
        m_childSkin.Detach(m_child);
        ::RemovePropA(m_window, "UxSubclassInfo");
        m_skin->handler = nullptr;
    }
    void SkinTheChild(LRESULT answer) {
        m_childSkin.handler = [this, answer](UINT m, WPARAM w, LPARAM l) -> LRESULT {
            return m == WM_CTLCOLORSTATIC ? answer : m_childSkin.Default(m, w, l);
        };
        m_childSkin.Attach(m_child);
    }
    LRESULT Send(UINT message = WM_CTLCOLORSTATIC) {
        return ::SendMessageA(m_window, message, kDc, reinterpret_cast<LPARAM>(m_child));
    }
    static constexpr WPARAM kDc = 0x1234;
    HWND m_child = nullptr;
    ProbeSkin m_childSkin;
};

TEST_F(ColourOfStatic, IsTheParentsForAnUnskinnedControl) {
    EXPECT_EQ(Send(), 101);
    EXPECT_EQ(m_skin->log.Count(WM_CTLCOLORSTATIC), 1);
}

TEST_F(ColourOfStatic, IsTheControlsOwnForASkinnedControl) {
    SkinTheChild(55);
    EXPECT_EQ(Send(), 55);
    EXPECT_EQ(m_skin->log.Count(WM_CTLCOLORSTATIC), 1) << "the parent is asked first all the same";
    EXPECT_EQ(m_childSkin.log.Entries(),
              (std::vector<Received>{{m_child, WM_CTLCOLORSTATIC, kDc, reinterpret_cast<LPARAM>(m_child)}}));
}

TEST_F(ColourOfStatic, IsZeroIfTheControlSaysSo) {
    SkinTheChild(0);
    EXPECT_EQ(Send(), 0);
}

TEST_F(ColourOfStatic, IsTheParentsSecondAnswerUnderTheVisualStyleMark) {
    SkinTheChild(55);
    ::SetPropA(m_window, "UxSubclassInfo", reinterpret_cast<HANDLE>(1));
    EXPECT_EQ(Send(), 102);
    const Received asked{m_window, WM_CTLCOLORSTATIC, kDc, reinterpret_cast<LPARAM>(m_child)};
    EXPECT_EQ(m_skin->log.Entries(), (std::vector<Received>{asked, asked}));
    EXPECT_TRUE(m_childSkin.log.Entries().empty());
}

TEST_F(ColourOfStatic, MarkCountsOnTheControlsParentOnly) {
    SkinTheChild(55);
    ::SetPropA(m_child, "UxSubclassInfo", reinterpret_cast<HANDLE>(1));
    EXPECT_EQ(Send(), 55);
    ::RemovePropA(m_child, "UxSubclassInfo");
}

TEST_F(ColourOfStatic, OfNoControlIsTheParents) {
    EXPECT_EQ(::SendMessageA(m_window, WM_CTLCOLORSTATIC, kDc, 0), 101);
    EXPECT_EQ(::SendMessageA(m_window, WM_CTLCOLORSTATIC, kDc, 0x7FFFFFF0), 102);
}

TEST_F(ColourOfStatic, RuleIsForThisMessageAlone) {
    SkinTheChild(55);
    EXPECT_EQ(Send(WM_CTLCOLOREDIT), 101);
    EXPECT_TRUE(m_childSkin.log.Entries().empty());
    ::SetPropA(m_window, "UxSubclassInfo", reinterpret_cast<HANDLE>(1));
    EXPECT_EQ(Send(WM_CTLCOLOREDIT), 102);
    EXPECT_EQ(m_skin->log.Count(WM_CTLCOLOREDIT), 2);
}

TEST_F(ColourOfStatic, SurvivesAControlThatIsDestroyedByItsAnswer) {
    bool deleted = false, deletedInside = true;
    auto* skin = new ProbeSkin(&deleted);
    skin->Attach(m_child);
    skin->handler = [&, skin](UINT m, WPARAM w, LPARAM l) -> LRESULT {
        if (m != WM_CTLCOLORSTATIC) return skin->Default(m, w, l);
        ::DestroyWindow(m_child);
        deletedInside = deleted;
        return 44;
    };
    EXPECT_EQ(Send(), 44);
    EXPECT_FALSE(deletedInside);
    EXPECT_TRUE(deleted);
}

TEST_F(ColourOfStatic, SurvivesAParentThatEndsTheSkinningMeanwhile) {
    SkinTheChild(55);
    m_childSkin.Detach(m_child);
    m_skin->handler = [](UINT m, WPARAM, LPARAM) -> LRESULT {
        if (m == WM_CTLCOLORSTATIC) ::UnInstallTavixSkin();
        return 7;
    };
    EXPECT_EQ(Send(), 7);
    EXPECT_TRUE(m_deleted);
    m_skin = new ProbeSkin;
    ASSERT_EQ(::InstallTavixSkin(SharedSkin().Path()), 1);
    m_skin->Attach(m_window);
}

}  // namespace
