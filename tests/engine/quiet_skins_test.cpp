// The skins that paint nothing.
#include "engine/quiet_skins.h"

#include <gtest/gtest.h>

#include "engine_objects.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

using namespace tavix_test;

namespace {

class QuietSkin : public testing::Test {
protected:
    Skinned m_skinned;
};

TEST_F(QuietSkin, OfPaneKDropsRightClicksOutsideTheClient) {
    for (const char* name : {"Tavix_PaneK", "TAVIX_PANEK"}) {
        HostWindow pane(name);
        ASSERT_TRUE(HasSkin<CSkinClientWnd>(pane));
        pane.log.Clear();
        pane.handler = [](const Received&) { return LRESULT{77}; };
        EXPECT_EQ(::SendMessageA(pane, WM_NCRBUTTONDOWN, HTCAPTION, 0), 0);
        EXPECT_EQ(::SendMessageA(pane, WM_NCRBUTTONUP, HTCAPTION, 0), 0);
        EXPECT_TRUE(pane.log.Entries().empty());
        // All else passes, the double click and the left button with it.
        for (UINT message :
             {WM_NCRBUTTONDBLCLK, WM_NCLBUTTONDOWN, WM_RBUTTONDOWN, WM_RBUTTONUP, WM_CONTEXTMENU})
            EXPECT_EQ(::SendMessageA(pane, message, 1, 2), 77);
        EXPECT_EQ(pane.log.Messages(), (std::vector<UINT>{WM_NCRBUTTONDBLCLK, WM_NCLBUTTONDOWN,
                                                          WM_RBUTTONDOWN, WM_RBUTTONUP, WM_CONTEXTMENU}));
        pane.handler = nullptr;
    }
}

TEST_F(QuietSkin, OfOtherPanesLetsRightClicksPass) {
    for (const char* name : {"Tavix_PaneL", "Tavix_PaneD", "Tavix_PaneH", "Tavix_PaneM", "Tavix_PaneN"}) {
        HostWindow pane(name);
        ASSERT_TRUE(HasSkin<CSkinClientWnd>(pane)) << name;
        pane.log.Clear();
        pane.handler = [](const Received&) { return LRESULT{77}; };
        EXPECT_EQ(::SendMessageA(pane, WM_NCRBUTTONDOWN, HTCAPTION, 5), 77) << name;
        EXPECT_EQ(::SendMessageA(pane, WM_NCRBUTTONUP, HTCAPTION, 6), 77) << name;
        EXPECT_EQ(pane.log.Entries(), (std::vector<Received>{{pane, WM_NCRBUTTONDOWN, HTCAPTION, 5},
                                                             {pane, WM_NCRBUTTONUP, HTCAPTION, 6}}));
        pane.handler = nullptr;
    }
}

TEST_F(QuietSkin, HasTheRunTimeClassOfTheBase) {
    HostWindow pane("Tavix_PaneD");
    HostWindow frame("AfxMDIFrame42d");
    for (HWND window : {pane.Handle(), frame.Handle()})
        EXPECT_STREQ(HeadOf(window)->GetRuntimeClass()->m_lpszClassName, "CSkinWndBaseClass");
}

// ---------------------------------------------------------------- MDI

HWND MakeClient(HWND parent, DWORD style = WS_CHILD) {
    CLIENTCREATESTRUCT facts{};
    return ::CreateWindowExA(0, "MDIClient", "", style, 0, 0, 50, 50, parent, nullptr,
                             ::GetModuleHandleA(nullptr), &facts);
}

TEST_F(QuietSkin, OfAnMdiClientHandsTheNewMenuToTheFrame) {
    HostWindow frame("TavixTestMdiFrame", WS_OVERLAPPEDWINDOW);
    HWND client = MakeClient(frame);
    ASSERT_TRUE(HasSkin<CSkinMDIClient>(client));
    HMENU menu = ::CreateMenu();
    HMENU popup = ::CreatePopupMenu();
    ::AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), "Window");
    frame.log.Clear();
    frame.log.Listen({WM_MDISETMENU});
    frame.handler = [](const Received& m) -> std::optional<LRESULT> {
        if (m.message == WM_MDISETMENU) return 99;
        return std::nullopt;
    };
    const WPARAM wParam = reinterpret_cast<WPARAM>(menu);
    const LPARAM lParam = reinterpret_cast<LPARAM>(popup);
    EXPECT_EQ(::SendMessageA(client, WM_MDISETMENU, wParam, lParam), 0) << "neither answer is the result";
    EXPECT_EQ(frame.log.Entries(), (std::vector<Received>{{frame, WM_MDISETMENU, wParam, lParam}}));
    EXPECT_EQ(::GetMenu(frame), menu) << "the client did its own part before";
    ::SetMenu(frame, nullptr);
    ::DestroyMenu(menu);
}

TEST_F(QuietSkin, OfAnMdiClientWithoutAParentAnswersZero) {
    HostWindow client("TavixTestClient");
    CSkinMDIClient* skin = new CSkinMDIClient;
    skin->Attach(client);
    client.log.Clear();
    client.handler = [](const Received&) { return LRESULT{55}; };
    EXPECT_EQ(::GetParent(client), nullptr);
    EXPECT_EQ(::SendMessageA(client, WM_MDISETMENU, 1, 2), 0);
    EXPECT_EQ(client.log.Entries(), (std::vector<Received>{{client, WM_MDISETMENU, 1, 2}}));
    EXPECT_EQ(::SendMessageA(client, WM_APP, 0, 0), 55);
    client.handler = nullptr;
}

TEST_F(QuietSkin, OfAnMdiFrameAnswersZeroToPaintingOnly) {
    HostWindow frame("AfxMDIFrame42d");
    ASSERT_TRUE(HasSkin<CSkinMDIFrame>(frame));
    frame.log.Clear();
    frame.handler = [](const Received&) { return LRESULT{33}; };
    EXPECT_EQ(::SendMessageA(frame, WM_PAINT, 0, 0), 0);
    EXPECT_EQ(frame.log.Messages(), (std::vector<UINT>{WM_PAINT}));
    EXPECT_EQ(::SendMessageA(frame, WM_APP + 1, 0, 0), 33);
    EXPECT_EQ(::SendMessageA(frame, WM_NCPAINT, 1, 0), 33);
    frame.handler = nullptr;
}

TEST_F(QuietSkin, RepaintsByTheBasesWay) {
    HostWindow pane("Tavix_PaneD", WS_POPUP | WS_VISIBLE);
    ::UpdateWindow(pane);
    PumpMessages();
    ::ValidateRect(pane, nullptr);
    pane.log.Clear();
    pane.log.Listen({WM_NCPAINT, WM_ERASEBKGND, WM_PAINT});
    EXPECT_EQ(HeadOf(pane)->RepaintSkin(), 1);
    EXPECT_EQ(pane.log.Entries(), (std::vector<Received>{{pane, WM_NCPAINT, 0, 0}}));
    RECT update{}, client{};
    EXPECT_TRUE(::GetUpdateRect(pane, &update, FALSE));
    ::GetClientRect(pane, &client);
    EXPECT_TRUE(::EqualRect(&update, &client));
    ::UpdateWindow(pane);
    EXPECT_TRUE(pane.log.Has(WM_PAINT));
    EXPECT_FALSE(pane.log.Has(WM_ERASEBKGND)) << "invalidated without erasing";
}

}  // namespace
