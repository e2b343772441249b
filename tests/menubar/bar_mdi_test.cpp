// A menu bar in an MDI frame: the maximised child's icon and buttons, and the list of windows.
#include <algorithm>
#include <array>

#include "menubar/bar_user.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {
namespace {

constexpr char kChildClass[] = "TavixTestSheet";
constexpr COLORREF kIconColour = RGB(200, 30, 60);

HICON MakeIcon() {
    const int size = ::GetSystemMetrics(SM_CXSMICON);
    auto colour = MakeBitmap(size, size, kIconColour);
    std::vector<BYTE> bits(static_cast<size_t>((size + 15) / 16 * 2 * size), 0);
    HBITMAP mask = ::CreateBitmap(size, size, 1, 1, bits.data());
    ICONINFO info{TRUE, 0, 0, mask, *colour};
    HICON icon = ::CreateIconIndirect(&info);
    ::DeleteObject(mask);
    return icon;
}

class MenuBarMdi : public BarUserTest {
protected:
    ~MenuBarMdi() override {
        frame.handler = nullptr;
        frame.DestroyWindow();
        ::UnregisterClassA(kChildClass, ::GetModuleHandleA(nullptr));
        ::DestroyIcon(m_icon);
    }

    void SetUp() override {
        WNDCLASSEXA sheet{};
        sheet.cbSize = sizeof sheet;
        sheet.lpfnWndProc = ::DefMDIChildProcA;
        sheet.hInstance = ::GetModuleHandleA(nullptr);
        sheet.hIconSm = m_icon = MakeIcon();
        sheet.lpszClassName = kChildClass;
        ::RegisterClassExA(&sheet);
        ASSERT_TRUE(frame.CreateClient());
    }
    void StartMdi() {
        Start(MakeMenu({{"&File", 0, {{"&New", 101}}},
                        {"&Edit", 0, {{"Cu&t", 201}}},
                        {"&Window", 0, {{"&Tile", 301}}}}));
        Access().SetWindowMenu(Popup(2));
        for (int i = 0; i < 3; ++i) {
            const std::string title = std::string("Sheet ") + static_cast<char>('A' + i);
            ASSERT_TRUE(children[static_cast<size_t>(i)].Create(
                frame, kChildClass, title.c_str(), WS_VISIBLE | WS_OVERLAPPEDWINDOW, {10, 10, 150, 110}));
        }
        PumpMessages();
        frame.log.Clear();
    }
    HWND Child(int i) { return children[static_cast<size_t>(i)].m_hWnd; }
    void Maximise(int i = 2) {
        ::SendMessageA(frame.m_hWndMDIClient, WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(Child(i)), 0);
        PumpMessages(60);
        frame.UpdateBars();  // as a host does that waits for its next message
    }
    void Restore() {
        ::SendMessageA(frame.m_hWndMDIClient, WM_MDIRESTORE, reinterpret_cast<WPARAM>(frame.GetActiveFrame()),
                       0);
        PumpMessages(60);
    }
    std::vector<std::string> Titles(HMENU menu) {
        std::vector<std::string> titles;
        for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
            char text[300] = {};
            ::GetMenuStringA(menu, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
            titles.push_back(text);
        }
        return titles;
    }
    CRect ClientInWindow() {
        CRect client;
        ::GetClientRect(bar.m_hWnd, &client);
        POINT origin{0, 0};
        ::ClientToScreen(bar.m_hWnd, &origin);
        client.OffsetRect(origin.x - WindowRect().left, origin.y - WindowRect().top);
        return client;
    }
    POINT InClient(const CRect& inWindow) {
        const CRect client = ClientInWindow();
        return {(inWindow.left + inWindow.right) / 2 - client.left,
                (inWindow.top + inWindow.bottom) / 2 - client.top};
    }

    std::array<CMDIChildWnd, 3> children;
    HICON m_icon = nullptr;
};

int SmallIcon() { return ::GetSystemMetrics(SM_CXSMICON); }

TEST_F(MenuBarMdi, HooksTheFrameAndTheClient) {
    StartMdi();
    EXPECT_EQ(Access().MdiClient(), frame.m_hWndMDIClient);
    EXPECT_EQ(Access().FrameHook().GetSafeHwnd(), frame.m_hWnd);
    EXPECT_EQ(Access().ClientHook().GetSafeHwnd(), frame.m_hWndMDIClient);
    bar.DestroyWindow();
    EXPECT_EQ(Access().MdiClient(), nullptr);
    EXPECT_EQ(Access().ClientHook().GetSafeHwnd(), nullptr);
    EXPECT_TRUE(IsSkinned(frame.m_hWnd)) << "the frame's own skin stays";
    EXPECT_TRUE(IsSkinned(frame.m_hWndMDIClient));
}

TEST_F(MenuBarMdi, AMaximisedChildGetsIconAndButtonsAtTheEnds) {
    StartMdi();
    EXPECT_FALSE(Access().ChildMaximized());
    EXPECT_EQ(ClientInWindow(), CRect(0, 0, WindowRect().Width(), WindowRect().Height()));
    Maximise();
    ASSERT_TRUE(Access().ChildMaximized());
    const Picture picture = Paint();
    const CSize size = {picture.width, picture.height};
    // The client area between the two strips.
    const CBitmap* bitmap = CTavixSkin::GetGloalTavixSkinBmp(BMP_FRAME_MIN_NORMAL);
    const CSize button = bitmap->GetBitmapSize();
    EXPECT_EQ(ClientInWindow(), CRect(SmallIcon() + 10, 0, size.cx - (button.cx + 2) * 3, size.cy));
    // Buttons from the right: close, restore, minimise.
    EXPECT_EQ(Access().Close(), CRect(size.cx - 1 - button.cx, 5, size.cx - 1, 5 + button.cy));
    EXPECT_EQ(Access().Restore(),
              CRect(size.cx - 3 - 2 * button.cx, 5, size.cx - 3 - button.cx, 5 + button.cy));
    EXPECT_EQ(Access().Minimize(),
              CRect(size.cx - 5 - 3 * button.cx, 5, size.cx - 5 - 2 * button.cx, 5 + button.cy));
    const auto at = [&](const CRect& rect) { return picture.At(rect.left, rect.top); };
    EXPECT_EQ(at(Access().Close()), TestSkin::ColourOfBitmap(BMP_FRAME_CLOSE_NORMAL));
    EXPECT_EQ(at(Access().Restore()), TestSkin::ColourOfBitmap(BMP_FRAME_MAX_NORMAL));
    EXPECT_EQ(at(Access().Minimize()), TestSkin::ColourOfBitmap(BMP_FRAME_MIN_NORMAL));
    const int x = static_cast<int>(CTavixSkin::GetGloalTavixSkinSize(SZ_DLG_LEFT)) + 5;
    EXPECT_EQ(picture.At(x, 5), kIconColour);
    EXPECT_EQ(picture.At(std::min(x + SmallIcon(), SmallIcon() + 10) - 1, 5 + SmallIcon() - 1), kIconColour)
        << "the client area may begin before the icon ends";
    EXPECT_NE(picture.At(x - 1, 5), kIconColour);
    EXPECT_EQ(picture.At(0, 1), RGB(255, 255, 255)) << "the band goes on below them";
    // And back.
    Restore();
    EXPECT_FALSE(Access().ChildMaximized());
    EXPECT_EQ(Paint().CountOf(kIconColour), 0);
    EXPECT_EQ(ClientInWindow(), CRect(0, 0, size.cx, size.cy));
}

TEST_F(MenuBarMdi, NoticesAtTheClientsPaintingItsRefreshAndTheIdlePass) {
    StartMdi();
    const auto set = [&](bool maximised) { Access().SetChildMaximized(maximised); };
    set(true);
    ::RedrawWindow(frame.m_hWndMDIClient, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_FALSE(Access().ChildMaximized());
    set(true);
    ::SendMessageA(frame.m_hWndMDIClient, WM_MDIREFRESHMENU, 0, 0);
    EXPECT_FALSE(Access().ChildMaximized());
    set(true);
    frame.UpdateBars();
    EXPECT_FALSE(Access().ChildMaximized());
    set(true);
    ::SendMessageA(frame.m_hWnd, WM_MDIREFRESHMENU, 0, 0);
    ::RedrawWindow(frame.m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_NOCHILDREN);
    EXPECT_TRUE(Access().ChildMaximized()) << "the frame's own messages don't count";
    set(false);
}

TEST_F(MenuBarMdi, HotButtonsFollowTheMouseAndStayUntilItLeaves) {
    StartMdi();
    Maximise();
    const auto move = [&](const CRect& rect) {
        const POINT at = InClient(rect);
        ::SendMessageA(bar.m_hWnd, WM_MOUSEMOVE, 0, MAKELPARAM(at.x, at.y));
    };
    const auto colour = [&](const CRect& rect) {
        return PictureOfWindow(bar.m_hWnd).At(rect.left, rect.top);
    };
    Paint();
    move(Access().Close());
    EXPECT_TRUE(Access().CloseHot());
    EXPECT_EQ(colour(Access().Close()), TestSkin::ColourOfBitmap(BMP_FRAME_CLOSE_HOT));
    move(Access().Restore());
    EXPECT_TRUE(Access().RestoreHot() && !Access().CloseHot());
    EXPECT_EQ(colour(Access().Close()), TestSkin::ColourOfBitmap(BMP_FRAME_CLOSE_NORMAL));
    EXPECT_EQ(colour(Access().Restore()), TestSkin::ColourOfBitmap(BMP_FRAME_MAX_HOT));
    move(Access().Minimize());
    EXPECT_TRUE(Access().MinimizeHot() && !Access().RestoreHot());
    EXPECT_EQ(colour(Access().Minimize()), TestSkin::ColourOfBitmap(BMP_FRAME_MIN_HOT));
    ::SendMessageA(bar.m_hWnd, WM_MOUSEMOVE, 0, MAKELPARAM(200, 3));
    EXPECT_TRUE(Access().MinimizeHot()) << "a point of none leaves them";
    ::SendMessageA(bar.m_hWnd, WM_MOUSELEAVE, 0, 0);
    EXPECT_FALSE(Access().MinimizeHot());
    EXPECT_EQ(colour(Access().Minimize()), TestSkin::ColourOfBitmap(BMP_FRAME_MIN_NORMAL));
}

TEST_F(MenuBarMdi, ItsButtonsCommandTheActiveChild) {
    StartMdi();
    Maximise();
    const auto press = [&](const CRect& rect) {
        const POINT at = InClient(rect);
        ::SendMessageA(bar.m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        PumpMessages(60);
    };
    HWND active = frame.GetActiveFrame();
    ASSERT_EQ(active, Child(2));
    Access().SetCaptionHot(true, false, false);
    press(Access().Restore());
    EXPECT_FALSE(::IsZoomed(active));
    EXPECT_TRUE(::IsWindow(active));
    EXPECT_FALSE(Access().MinimizeHot());
    Maximise();
    press(Access().Minimize());
    EXPECT_TRUE(::IsIconic(active));
    Maximise();
    active = frame.GetActiveFrame();
    press(Access().Close());
    EXPECT_FALSE(::IsWindow(active));
}

TEST_F(MenuBarMdi, TheRealMouseFindsItsButtons) {
    StartMdi();
    Maximise();
    HWND active = frame.GetActiveFrame();
    const POINT at = InClient(Access().Close());
    user->MovesTo(InClient(Access().Minimize()), [&] { return Access().MinimizeHot(); })
        .MovesTo(at, [&] { return Access().CloseHot() && !Access().MinimizeHot(); })
        .Clicks([&] { return !::IsWindow(active); });
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_F(MenuBarMdi, AClickOnTheIconOpensNothing) {
    StartMdi();
    Maximise();
    const POINT at = InClient(CRect(10, 5, 26, 21));
    ::SendMessageA(bar.m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    PumpMessages();
    EXPECT_EQ(CountPopups(), 0);
    EXPECT_TRUE(OpenedMenus().empty());
}

TEST_F(MenuBarMdi, WithoutTheBitmapThereAreNoButtons) {
    skin.RemoveBitmaps(skinFrame);
    ASSERT_EQ(SetSkinFromFile(skin.Write()), 1);
    StartMdi();
    Maximise();
    EXPECT_TRUE(Access().ChildMaximized());
    for (const CRect& rect : {Access().Close(), Access().Restore(), Access().Minimize()})
        EXPECT_TRUE(rect.IsRectEmpty());
    EXPECT_EQ(Paint().At(WindowRect().Width() - 3, 6), RGB(255, 255, 255));
}

TEST_F(MenuBarMdi, SystemMenuAtTheMenusHeadIsPassedOver) {
    StartMdi();
    const HMENU edit = Popup(1);
    Maximise();
    // The platform puts the child's menu before the frame's first item.
    ASSERT_GT(::GetMenuItemCount(bar.GetMenu()), 3);
    ASSERT_NE(::GetSubMenu(bar.GetMenu(), 1), edit);
    EXPECT_EQ(Access().SubMenuOf(1), edit);
    frame.log.Clear();
    user->Presses(VK_MENU, Hot(0))
        .Presses('E', OpenedWithItem(1))
        .Presses(VK_RETURN, Commanded(201))
        .WaitsFor("rest", Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(OpenedMenus(), std::vector<HMENU>{edit});
}

TEST_F(MenuBarMdi, ABarBroughtUpToDateWhileMaximisedStillFindsItsItems) {
    StartMdi();
    const HMENU edit = Popup(1);
    Maximise();
    bar.SynchronizeMenubar(bar.GetMenu());
    EXPECT_EQ(Access().ButtonCount(), 3) << "what the platform added has no text";
    EXPECT_EQ(Access().SubMenuOf(1), edit);
}

TEST_F(MenuBarMdi, ANewMenuOfTheClientsReachesTheBar) {
    StartMdi();
    const HMENU former = bar.GetMenu();
    const HMENU other = MakeMenu({{"Alone", 0, {{"A", 1}}}});
    ::SendMessageA(frame.m_hWndMDIClient, WM_MDISETMENU, reinterpret_cast<WPARAM>(other), 0);
    EXPECT_EQ(::GetMenu(frame.m_hWnd), other);
    EXPECT_EQ(bar.GetMenu(), other);
    EXPECT_EQ(Access().ButtonCount(), 1);
    ::DestroyMenu(former);
}

// ---------------------------------------------------------------- the list of windows

class MenuBarWindowList : public MenuBarMdi {
protected:
    void SetUp() override {
        MenuBarMdi::SetUp();
        StartMdi();
        m_menu = Popup(2);
    }
    void Init(LPARAM lParam = 0) {
        ::SendMessageA(frame.m_hWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(m_menu), lParam);
    }
    UINT StateOf(int position) { return ::GetMenuState(m_menu, static_cast<UINT>(position), MF_BYPOSITION); }
    HMENU m_menu = nullptr;
};

using Texts = std::vector<std::string>;

TEST_F(MenuBarWindowList, FollowsTheMenusOwnItemsBehindASeparator) {
    Init();
    EXPECT_EQ(Titles(m_menu), (Texts{"&Tile", "", "&1  Sheet C", "&2  Sheet B", "&3  Sheet A"}));
    EXPECT_TRUE(StateOf(1) & MF_SEPARATOR);
    EXPECT_TRUE(StateOf(2) & MF_CHECKED);
    EXPECT_FALSE(StateOf(3) & MF_CHECKED);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(::GetMenuItemID(m_menu, 4 - i), static_cast<UINT>(::GetDlgCtrlID(Child(i))));
}

TEST_F(MenuBarWindowList, IsMadeAnewBehindTheSameSeparator) {
    Init();
    ::SetWindowTextA(Child(0), "Renamed & more");
    children[1].DestroyWindow();
    Init();
    EXPECT_EQ(Titles(m_menu), (Texts{"&Tile", "", "&1  Sheet C", "&2  Renamed & more"}));
    Init();
    EXPECT_EQ(::GetMenuItemCount(m_menu), 4);
}

TEST_F(MenuBarWindowList, IsLeftAloneForOtherMenusPlacesAndSystemMenus) {
    Init(1);
    Init(0x10000);
    ::SendMessageA(frame.m_hWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(Popup(0)), 0);
    EXPECT_EQ(Titles(m_menu), Texts{"&Tile"});
}

TEST_F(MenuBarWindowList, HiddenChildrenAreListedAndTheActiveOneChecked) {
    ::ShowWindow(Child(2), SW_HIDE);
    ::ShowWindow(Child(0), SW_HIDE);
    HWND active = frame.MDIGetActive();
    Init();
    ASSERT_EQ(::GetMenuItemCount(m_menu), 5);
    int checked = 0;
    for (int i = 2; i < 5; ++i)
        if (StateOf(i) & MF_CHECKED) {
            ++checked;
            EXPECT_EQ(::GetMenuItemID(m_menu, i), static_cast<UINT>(::GetDlgCtrlID(active)));
        }
    EXPECT_EQ(checked, active ? 1 : 0);
}

TEST_F(MenuBarWindowList, WithoutChildrenThereIsNoSeparator) {
    for (CMDIChildWnd& child : children) child.DestroyWindow();
    Init();
    EXPECT_EQ(Titles(m_menu), Texts{"&Tile"});
}

TEST_F(MenuBarWindowList, PopupsOfTheMenuAreNoWindows) {
    ::AppendMenuA(m_menu, MF_POPUP, reinterpret_cast<UINT_PTR>(MakeMenu({{"A", 1}}, true)), "More");
    Init();
    EXPECT_EQ(Titles(m_menu), (Texts{"&Tile", "More", "", "&1  Sheet C", "&2  Sheet B", "&3  Sheet A"}));
}

TEST_F(MenuBarWindowList, HasRoomForLongTitles) {
    const std::string title(180, 'm');
    ::SetWindowTextA(Child(2), title.c_str());
    Init();
    EXPECT_EQ(Titles(m_menu)[2], "&1  " + title);
}

TEST_F(MenuBarWindowList, AnItemActivatesItsWindow) {
    user->Presses(VK_MENU, Hot(0))
        .Presses('W', OpenedWithItem(2))
        .Presses('3', [&] { return frame.MDIGetActive() == Child(0); })
        .WaitsFor("rest", Idle());
    EXPECT_TRUE(user->Run());
    EXPECT_EQ(frame.MDIGetActive(), Child(0));
}

TEST_F(MenuBarWindowList, ADeadOrNullWindowMenuDoesNoHarm) {
    Access().SetWindowMenu(nullptr);
    Access().Mdi().FillWindowMenu();
    const HMENU dead = ::CreatePopupMenu();
    ::DestroyMenu(dead);
    Access().SetWindowMenu(dead);
    Access().Mdi().FillWindowMenu();
    EXPECT_EQ(Titles(m_menu), Texts{"&Tile"});
}

}  // namespace
}  // namespace tavix_test
