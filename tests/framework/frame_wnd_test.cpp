// Frames, their bars, and the way of commands' looks to those who know.
#include "tavixskin/framework/frame_wnd.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include "support/common_controls.h"
#include "support/window_probe.h"
#include "tavixskin/framework/menu.h"
#include "tavixskin/framework/splitter_wnd.h"

namespace tavix_test {
namespace {

constexpr char kFrameClass[] = "TavixTestFrame";
constexpr RECT kPlace{60, 60, 460, 360};

/* A bar of a size of its own. */
class SizedBar : public CControlBar {
public:
    explicit SizedBar(CSize size) : m_size(size) {}
    bool Create(HWND parent, DWORD side, DWORD style = WS_CHILD | WS_VISIBLE) {
        m_dwStyle = side;
        return CreateEx(0, "Static", "", style, CRect(), parent, 1);
    }
    CSize CalcFixedLayout(bool stretch, bool horizontal) override {
        const CSize stretched = CControlBar::CalcFixedLayout(stretch, horizontal);
        return {std::max(stretched.cx, m_size.cx), std::max(stretched.cy, m_size.cy)};
    }
    void OnUpdateCmdUI(bool disable) override { updates.push_back(disable); }
    void OnBarStyleChange(DWORD from, DWORD to) override { changes.push_back({from, to}); }
    CRect Place() const {
        CRect rect;
        ::GetWindowRect(m_hWnd, &rect);
        ::MapWindowPoints(nullptr, ::GetParent(m_hWnd), reinterpret_cast<POINT*>(static_cast<RECT*>(&rect)),
                          2);
        return rect;
    }
    std::vector<bool> updates;
    std::vector<std::pair<DWORD, DWORD>> changes;

private:
    CSize m_size;
};

/* Knows the command 7, and answers no other. */
class KnowingFrame : public CFrameWnd {
    DECLARE_MESSAGE_MAP()
public:
    LRESULT OnUpdateSeven(WPARAM id, LPARAM ui) {
        EXPECT_EQ(id, 7u);
        reinterpret_cast<CCmdUI*>(ui)->Enable(true);
        return 0;
    }
};
BEGIN_MESSAGE_MAP(KnowingFrame, CFrameWnd)
    ON_UPDATE_COMMAND_UI_RANGE(7, 7, &KnowingFrame::OnUpdateSeven)
END_MESSAGE_MAP()

class RefusedWindow : public CWnd {
    bool PreCreateWindow(CREATESTRUCTA&) override { return false; }
};

class FrameWindows : public testing::Test {
protected:
    static void SetUpTestSuite() {
        WNDCLASSA cls{};
        cls.lpfnWndProc = ::DefWindowProcA;
        cls.hInstance = ::GetModuleHandleA(nullptr);
        cls.lpszClassName = kFrameClass;
        ::RegisterClassA(&cls);
    }
    static CRect ClientOf(HWND window) {
        CRect client;
        ::GetClientRect(window, &client);
        return client;
    }
    static CRect PlaceOf(HWND window) {
        CRect rect;
        ::GetWindowRect(window, &rect);
        ::MapWindowPoints(nullptr, ::GetParent(window), reinterpret_cast<POINT*>(static_cast<RECT*>(&rect)),
                          2);
        return rect;
    }
};

TEST_F(FrameWindows, BarsStandAtTheirSidesInTheOrderOfTheirMaking) {
    CFrameWnd frame;
    ASSERT_TRUE(frame.Create(kFrameClass, "", WS_OVERLAPPEDWINDOW, kPlace));
    const CRect client = ClientOf(frame.m_hWnd);
    SizedBar top({10, 20}), left({30, 10}), bottom({10, 15}), right({25, 10}), hidden({10, 99});
    ASSERT_TRUE(top.Create(frame.m_hWnd, CBRS_ALIGN_TOP));
    ASSERT_TRUE(left.Create(frame.m_hWnd, CBRS_ALIGN_LEFT));
    ASSERT_TRUE(bottom.Create(frame.m_hWnd, CBRS_ALIGN_BOTTOM));
    ASSERT_TRUE(right.Create(frame.m_hWnd, CBRS_ALIGN_RIGHT));
    ASSERT_TRUE(hidden.Create(frame.m_hWnd, CBRS_ALIGN_TOP, WS_CHILD));
    HWND content =
        CreateControl(Charset::Ansi, frame.m_hWnd, "Static", "", 0, {0, 0, 1, 1}, AFX_IDW_PANE_FIRST);
    frame.RecalcLayout();
    const int w = client.right, h = client.bottom;
    EXPECT_EQ(top.Place(), CRect(0, 0, w, 20));
    EXPECT_EQ(left.Place(), CRect(0, 20, 30, h));
    EXPECT_EQ(bottom.Place(), CRect(30, h - 15, w, h));
    EXPECT_EQ(right.Place(), CRect(w - 25, 20, w, h - 15));
    EXPECT_EQ(PlaceOf(content), CRect(30, 20, w - 25, h - 15));
    // The next size leads to the next layout.
    ::SetWindowPos(frame.m_hWnd, nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(top.Place().right, ClientOf(frame.m_hWnd).right);
    // More bars than room.
    ::SetWindowPos(frame.m_hWnd, nullptr, 0, 0, 130, 10, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_GE(PlaceOf(content).bottom, PlaceOf(content).top);
}

TEST_F(FrameWindows, BarsTellOfANewStyleOnce) {
    SizedBar bar({1, 1});
    bar.SetBarStyle(CBRS_ALIGN_LEFT);
    bar.SetBarStyle(CBRS_ALIGN_LEFT);
    ASSERT_EQ(bar.changes.size(), 1u);
    EXPECT_EQ(bar.changes[0], (std::pair<DWORD, DWORD>{CBRS_ALIGN_TOP, CBRS_ALIGN_LEFT}));
    EXPECT_EQ(bar.GetBarStyle(), CBRS_ALIGN_LEFT);
}

TEST_F(FrameWindows, TheIdlePassReachesVisibleBars) {
    CFrameWnd frame;
    ASSERT_TRUE(frame.Create(kFrameClass, "", WS_OVERLAPPEDWINDOW, kPlace));
    SizedBar shown({1, 1}), hidden({1, 1});
    ASSERT_TRUE(shown.Create(frame.m_hWnd, CBRS_ALIGN_TOP));
    ASSERT_TRUE(hidden.Create(frame.m_hWnd, CBRS_ALIGN_TOP, WS_CHILD));
    frame.UpdateBars();
    EXPECT_EQ(shown.updates, std::vector<bool>{true});
    EXPECT_TRUE(hidden.updates.empty());
    ::SendMessageA(shown.m_hWnd, WM_IDLEUPDATECMDUI, FALSE, 0);
    EXPECT_EQ(shown.updates, (std::vector<bool>{true, false}));
}

class ToolBars : public testing::WithParamInterface<ControlsVersion>, public FrameWindows {
    ControlsWorld m_world{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Worlds, ToolBars, testing::Values(ControlsVersion::V5, ControlsVersion::V6),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(ToolBars, HaveTheSizeOfTheirButtonsAndDisableWhatNobodyKnows) {
    KnowingFrame frame;
    ASSERT_TRUE(frame.Create(kFrameClass, "", WS_OVERLAPPEDWINDOW, kPlace));
    CToolBar bar;
    ASSERT_TRUE(bar.Create(frame.m_hWnd));
    EXPECT_FALSE(bar.Create(frame.m_hWnd)) << "it has a window";
    bar.SetSizes(CSize(24, 22), CSize(16, 15));
    TBBUTTON buttons[3] = {};
    for (int i = 0; i < 3; ++i) {
        buttons[i].idCommand = 6 + i;
        buttons[i].fsState = TBSTATE_ENABLED;
        buttons[i].fsStyle = i == 2 ? BTNS_SEP : BTNS_BUTTON;
        buttons[i].iString = -1;
    }
    ASSERT_TRUE(::SendMessageA(bar.m_hWnd, TB_ADDBUTTONSA, 3, reinterpret_cast<LPARAM>(buttons)));
    CRect first;
    bar.GetItemRect(0, first);
    EXPECT_GE(first.Width(), 20);
    EXPECT_EQ(bar.CalcFixedLayout(true, true).cx, 32767);
    EXPECT_EQ(bar.CalcFixedLayout(true, true).cy, first.bottom + 4);
    EXPECT_EQ(::SendMessageA(bar.m_hWnd, WM_NCHITTEST, 0, MAKELPARAM(0, 0)), HTCLIENT);
    CRect none(1, 2, 3, 4);
    bar.GetItemRect(17, none);
    EXPECT_TRUE(none.IsRectEmpty());
    frame.UpdateBars();
    EXPECT_FALSE(::SendMessageA(bar.m_hWnd, TB_ISBUTTONENABLED, 6, 0)) << "no handler";
    EXPECT_TRUE(::SendMessageA(bar.m_hWnd, TB_ISBUTTONENABLED, 7, 0));
    ::SendMessageA(bar.m_hWnd, TB_ENABLEBUTTON, 7, FALSE);
    ::SendMessageA(bar.m_hWnd, TB_ENABLEBUTTON, 6, TRUE);
    ::SendMessageA(bar.m_hWnd, WM_IDLEUPDATECMDUI, FALSE, 0);
    EXPECT_TRUE(::SendMessageA(bar.m_hWnd, TB_ISBUTTONENABLED, 7, 0));
    EXPECT_TRUE(::SendMessageA(bar.m_hWnd, TB_ISBUTTONENABLED, 6, 0)) << "left alone";
}

TEST_F(FrameWindows, AToolBarWithoutButtonsIsAsHighAsOne) {
    CFrameWnd frame;
    ASSERT_TRUE(frame.Create(kFrameClass, "", WS_OVERLAPPEDWINDOW, kPlace));
    CToolBar bar;
    ASSERT_TRUE(bar.Create(frame.m_hWnd));
    bar.SetSizes(CSize(24, 22), CSize(16, 15));
    const auto button = static_cast<DWORD>(::SendMessageA(bar.m_hWnd, TB_GETBUTTONSIZE, 0, 0));
    EXPECT_EQ(bar.CalcFixedLayout(true, true).cy, static_cast<LONG>(HIWORD(button)) + 4);
    EXPECT_EQ(bar.CalcFixedLayout(true, false).cx, static_cast<LONG>(LOWORD(button)) + 4);
}

TEST_F(FrameWindows, AFrameIsTheNearestObjectOrTheTopLevelWindow) {
    CFrameWnd frame;
    ASSERT_TRUE(frame.Create(kFrameClass, "", WS_OVERLAPPEDWINDOW, kPlace));
    HWND child = CreateControl(Charset::Ansi, frame.m_hWnd, "Static", "", 0, {0, 0, 9, 9});
    HWND inner = CreateControl(Charset::Ansi, child, "Static", "", 0, {0, 0, 9, 9});
    EXPECT_EQ(CFrameWnd::FrameOf(inner), frame.m_hWnd);
    EXPECT_EQ(CFrameWnd::FrameOf(frame.m_hWnd), nullptr);
    EXPECT_EQ(CFrameWnd::FrameOf(nullptr), nullptr);
    EXPECT_EQ(frame.GetActiveFrame(), frame.m_hWnd);
    ProbeWindow probe;
    HWND ofProbe = CreateControl(Charset::Ansi, probe, "Static", "", 0, {0, 0, 9, 9});
    EXPECT_EQ(CFrameWnd::FrameOf(ofProbe), probe.Handle());
}

TEST_F(FrameWindows, AnMdiFrameLeavesTheRestToItsClient) {
    CMDIFrameWnd frame;
    EXPECT_FALSE(frame.CreateClient()) << "no window yet";
    EXPECT_EQ(frame.MDIGetActive(), nullptr);
    ASSERT_TRUE(frame.Create(kFrameClass, "", WS_OVERLAPPEDWINDOW, kPlace));
    ASSERT_TRUE(frame.CreateClient());
    EXPECT_FALSE(frame.CreateClient());
    EXPECT_EQ(frame.GetActiveFrame(), frame.m_hWnd);
    SizedBar top({10, 20});
    ASSERT_TRUE(top.Create(frame.m_hWnd, CBRS_ALIGN_TOP));
    frame.RecalcLayout();
    const CRect client = ClientOf(frame.m_hWnd);
    EXPECT_EQ(PlaceOf(frame.m_hWndMDIClient), CRect(0, 20, client.right, client.bottom));
    ::SetWindowPos(frame.m_hWnd, nullptr, 0, 0, 300, 240, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(PlaceOf(frame.m_hWndMDIClient).right, ClientOf(frame.m_hWnd).right);
    EXPECT_EQ(PlaceOf(frame.m_hWndMDIClient).top, 20);

    CMDIChildWnd first, second;
    ASSERT_TRUE(first.Create(frame, kFrameClass, "One", WS_VISIBLE | WS_OVERLAPPEDWINDOW, {0, 0, 90, 80}));
    ASSERT_TRUE(second.Create(frame, kFrameClass, "Two", WS_VISIBLE | WS_OVERLAPPEDWINDOW, {0, 0, 90, 80}));
    EXPECT_EQ(frame.GetActiveFrame(), second.m_hWnd);
    EXPECT_EQ(::GetDlgCtrlID(first.m_hWnd), static_cast<int>(AFX_IDM_FIRST_MDICHILD));
    // A command of the window list's is the frame's to carry out.
    ::SendMessageA(frame.m_hWnd, WM_COMMAND, AFX_IDM_FIRST_MDICHILD, 0);
    BOOL maximised = TRUE;
    EXPECT_EQ(frame.MDIGetActive(&maximised), first.m_hWnd);
    EXPECT_FALSE(maximised);
    ::SendMessageA(frame.m_hWndMDIClient, WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(first.m_hWnd), 0);
    frame.MDIGetActive(&maximised);
    EXPECT_TRUE(maximised);
    EXPECT_EQ(CFrameWnd::FrameOf(frame.m_hWndMDIClient), frame.m_hWnd);
}

TEST_F(FrameWindows, AMenuGoesWithTheWindow) {
    const HMENU menu = ::CreateMenu();
    ::AppendMenuA(menu, MF_STRING, 1, "Item");
    {
        CFrameWnd frame;
        ASSERT_TRUE(frame.Create(kFrameClass, "", WS_OVERLAPPEDWINDOW, kPlace, menu));
        EXPECT_EQ(::GetMenu(frame.m_hWnd), menu);
    }
    EXPECT_FALSE(::IsMenu(menu));
}

TEST_F(FrameWindows, AWindowMayBeRefusedBeforeItIsMade) {
    RefusedWindow refused;
    EXPECT_FALSE(refused.CreateEx(0, kFrameClass, "", WS_POPUP, kPlace, nullptr, 0));
    EXPECT_EQ(refused.m_hWnd, nullptr);
    CFrameWnd nameless;
    EXPECT_FALSE(nameless.Create("TavixTestNoSuchClass", "", WS_POPUP, kPlace));
}

TEST_F(FrameWindows, TheOwnerIsTheParentUnlessItIsSet) {
    CFrameWnd frame;
    ASSERT_TRUE(frame.Create(kFrameClass, "", WS_OVERLAPPEDWINDOW, kPlace));
    SizedBar bar({1, 1});
    EXPECT_EQ(bar.GetOwner(), nullptr);
    ASSERT_TRUE(bar.Create(frame.m_hWnd, CBRS_ALIGN_TOP));
    EXPECT_EQ(bar.GetOwner(), frame.m_hWnd);
    ProbeWindow other;
    bar.SetOwner(other);
    EXPECT_EQ(bar.GetOwner(), other.Handle());
}

TEST(MenuObject, DestroysWhatItHolds) {
    const HMENU first = ::CreateMenu(), second = ::CreateMenu();
    {
        CMenu menu;
        EXPECT_EQ(menu.GetSafeHmenu(), nullptr);
        EXPECT_FALSE(menu.DestroyMenu());
        EXPECT_FALSE(menu.Attach(nullptr));
        EXPECT_TRUE(menu.Attach(first));
        EXPECT_TRUE(menu.Attach(first));
        EXPECT_TRUE(::IsMenu(first));
        EXPECT_TRUE(menu.Attach(second));
        EXPECT_FALSE(::IsMenu(first));
    }
    EXPECT_FALSE(::IsMenu(second));
    const HMENU third = ::CreateMenu();
    CMenu menu(third);
    EXPECT_EQ(menu.Detach(), third);
    EXPECT_TRUE(::IsMenu(third));
    EXPECT_EQ(menu.Detach(), nullptr);
    ::DestroyMenu(third);
}

}  // namespace
}  // namespace tavix_test
