// The popup's own window: each message of its skin, the frame, the shadow.

#include "menu_fixture.h"

namespace tavix_test {
namespace {

constexpr UINT kSetMenuRectangle = 0x1E2;  // a message of popups that the skin doesn't know
constexpr COLORREF kOuterLine = 0xAEAEAE;
constexpr COLORREF kInnerLine = 0xFFFFF6;

class MenuFrame : public MenuTest {
protected:
    void SetUp() override {
        m_spy.emplace("#32768");
        MenuTest::SetUp();
        m_menu.emplace();
        m_menu->Item(1, "One");
    }
    void TearDown() override {
        m_menu.reset();
        MenuTest::TearDown();
        m_spy.reset();
    }
    ClassSpy& Native() { return *m_spy; }
    HMENU Menu() { return *m_menu; }
    void Bind(const BarePopup& popup) { popup.Bind(*owner, Menu()); }

private:
    std::optional<ClassSpy> m_spy;
    std::optional<OwnedMenu> m_menu;
};

LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return ::SendMessageA(window, message, wParam, lParam);
}

// ---------------------------------------------------------------- the message table

TEST_F(MenuFrame, AnUnboundPopupLeavesAllButPaintingToTheSystem) {
    BarePopup popup;
    Native().log.Clear();
    Native().handler = [](const Received& received) -> std::optional<LRESULT> {
        return static_cast<LRESULT>(received.message);
    };
    WINDOWPOS position{popup, nullptr, 5, 6, 7, 8, 0};
    RECT rect{0, 0, 100, 100};
    const std::vector<UINT> messages{WM_ERASEBKGND, WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_NCCALCSIZE,
                                     WM_NCPAINT,    WM_SHOWWINDOW,        kSetMenuRectangle};
    for (const UINT message : messages) {
        LPARAM lParam = 0;
        if (message == WM_WINDOWPOSCHANGING || message == WM_WINDOWPOSCHANGED)
            lParam = reinterpret_cast<LPARAM>(&position);
        if (message == WM_NCCALCSIZE) lParam = reinterpret_cast<LPARAM>(&rect);
        EXPECT_EQ(Send(popup, message, 1, lParam), static_cast<LRESULT>(message));
        EXPECT_TRUE(Native().log.Has(message)) << std::hex << message;
    }
    EXPECT_EQ(popup.Skin()->WindowPosition(), (POINT{0, 0}));
    EXPECT_FALSE(popup.Skin()->HasBackdrop());
    EXPECT_EQ(rect.right, 100);
    Native().handler = nullptr;
}

TEST_F(MenuFrame, PaintingAnswersOneAndReachesTheSystemFirst) {
    BarePopup popup;
    Native().log.Clear();
    EXPECT_EQ(Send(popup, WM_PAINT), 1);
    EXPECT_TRUE(Native().log.Has(WM_PAINT));
    Bind(popup);
    Native().log.Clear();
    EXPECT_EQ(Send(popup, WM_PAINT), 1);
    EXPECT_TRUE(Native().log.Has(WM_PAINT));
}

TEST_F(MenuFrame, ErasingFillsTheGroundAndTheStripe) {
    BarePopup popup;
    Bind(popup);
    CRect client;
    ::GetClientRect(popup, &client);
    ASSERT_GT(client.Width(), 40);
    Canvas canvas(client.Width(), client.Height(), RGB(1, 2, 3));
    Native().log.Clear();
    EXPECT_EQ(Send(popup, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc())), 0);
    EXPECT_FALSE(Native().log.Has(WM_ERASEBKGND));
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.CountOf(Colour(CLR_MENU_STRIPE)), 25 * client.Height());
    EXPECT_EQ(picture.CountOf(Colour(CLR_MENU_BACK)), (client.Width() - 25) * client.Height());
    EXPECT_EQ(picture.At(24, 0), Colour(CLR_MENU_STRIPE));
    EXPECT_EQ(picture.At(25, 0), Colour(CLR_MENU_BACK));
}

TEST_F(MenuFrame, TheWindowsPlaceIsNotedAndTheSystemNotAsked) {
    BarePopup popup;
    Bind(popup);
    Native().log.Clear();
    WINDOWPOS position{popup, nullptr, 55, 66, 100, 90, 0};
    EXPECT_EQ(Send(popup, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&position)), 0);
    EXPECT_EQ(popup.Skin()->WindowPosition(), (POINT{55, 66}));
    EXPECT_EQ(position.cx, 100) << "a window with the system's border keeps its size";
    EXPECT_EQ(position.cy, 90);
    position.x = 77;
    position.flags = SWP_NOMOVE;  // the place is taken even then
    EXPECT_EQ(Send(popup, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position)), 0);
    EXPECT_EQ(popup.Skin()->WindowPosition(), (POINT{77, 66}));
    EXPECT_TRUE(Native().log.Entries().empty());
}

TEST_F(MenuFrame, TheClientAreaLosesTheFrameAndTheShadow) {
    const SystemShadow off(false);
    BarePopup popup;
    Bind(popup);
    for (const WPARAM wParam : {WPARAM{FALSE}, WPARAM{TRUE}}) {
        NCCALCSIZE_PARAMS sizes{};
        sizes.rgrc[0] = {10, 20, 110, 220};
        sizes.rgrc[1] = {1, 2, 3, 4};
        EXPECT_EQ(Send(popup, WM_NCCALCSIZE, wParam, reinterpret_cast<LPARAM>(&sizes)), 0);
        EXPECT_EQ(CRect(sizes.rgrc[0]), CRect(11, 21, 105, 215));
        EXPECT_EQ(CRect(sizes.rgrc[1]), CRect(1, 2, 3, 4));
    }
}

TEST_F(MenuFrame, UnderASystemShadowTheClientAreaLosesOnePixelOnEachSide) {
    const SystemShadow on(true);
    BarePopup popup;
    Bind(popup);
    RECT rect{10, 20, 110, 220};
    EXPECT_EQ(Send(popup, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect)), 0);
    EXPECT_EQ(CRect(rect), CRect(11, 21, 109, 219));
}

TEST_F(MenuFrame, HidingPostsTheEndAndGoesToTheSystem) {
    BarePopup popup;
    Bind(popup);
    Native().log.Clear();
    Send(popup, WM_SHOWWINDOW, TRUE);
    MSG message;
    EXPECT_FALSE(::PeekMessageA(&message, popup, WM_DESTROY, WM_DESTROY, PM_REMOVE));
    Send(popup, WM_SHOWWINDOW, FALSE);
    EXPECT_TRUE(::PeekMessageA(&message, popup, WM_DESTROY, WM_DESTROY, PM_REMOVE));
    EXPECT_EQ(Native().log.Count(WM_SHOWWINDOW), 2);
}

TEST_F(MenuFrame, TheSkinEndsWithTheWindowsFirstMessageOfItsEnd) {
    BarePopup popup;
    Bind(popup);
    bool wasSkinned = true;
    UINT type = MFT_OWNERDRAW;
    Native().log.Clear();
    Native().log.Listen({WM_DESTROY, WM_NCDESTROY});
    Native().handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_DESTROY) {
            wasSkinned = IsSkinned(received.window);
            type = ItemInfo(Menu(), 0, MIIM_FTYPE).fType;
        }
        return {};
    };
    popup.Destroy();
    Native().handler = nullptr;
    EXPECT_FALSE(wasSkinned) << "the system's own procedure finds the window as it was";
    EXPECT_EQ(type, static_cast<UINT>(MFT_STRING));
    EXPECT_EQ(Native().log.Messages(), (std::vector<UINT>{WM_DESTROY, WM_NCDESTROY}));
}

TEST_F(MenuFrame, ASkinThatIsHandedItsWindowsEndGivesTheMenuBack) {
    for (const UINT message : std::vector<UINT>{WM_DESTROY, WM_NCDESTROY}) {
        BarePopup popup;
        Bind(popup);
        ASSERT_EQ(ItemInfo(Menu(), 0, MIIM_FTYPE).fType, static_cast<UINT>(MFT_OWNERDRAW));
        Native().handler = [](const Received&) -> std::optional<LRESULT> { return 0; };
        popup.Skin()->WindowProc(message, 0, 0);
        Native().handler = nullptr;
        EXPECT_EQ(ItemInfo(Menu(), 0, MIIM_FTYPE).fType, static_cast<UINT>(MFT_STRING));
    }
}

TEST_F(MenuFrame, OtherMessagesGoToTheSystem) {
    BarePopup popup;
    Bind(popup);
    Native().log.Clear();
    Native().handler = [](const Received&) -> std::optional<LRESULT> { return 44; };
    EXPECT_EQ(Send(popup, kSetMenuRectangle, 3, 4), 44);
    Native().handler = nullptr;
    EXPECT_EQ(Native().log.Entries().back(), (Received{popup, kSetMenuRectangle, 3, 4}));
}

// ---------------------------------------------------------------- the size where the border is the client's

TEST_F(MenuFrame, AWindowWithoutTheSystemsBorderGrowsByTheFrame) {
    struct {
        bool shadow;
        int more;
    } const cases[] = {{false, 6}, {true, 2}};
    for (const auto& one : cases) {
        const SystemShadow shadow(one.shadow);
        BarePopup popup({300, 200, 460, 320}, 0);
        Bind(popup);
        WINDOWPOS position{popup, nullptr, 10, 10, 100, 90, 0};
        Send(popup, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&position));
        EXPECT_EQ(position.cx, 100 + one.more);
        EXPECT_EQ(position.cy, 90 + one.more);
        RECT rect{0, 0, position.cx, position.cy};
        Send(popup, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect));
        EXPECT_EQ(CRect(rect).Size().cx, 100) << "what the system laid out fits";
        EXPECT_EQ(CRect(rect).Size().cy, 90);
        position.flags = SWP_NOSIZE;
        const int width = position.cx;
        Send(popup, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&position));
        EXPECT_EQ(position.cx, width);
        position.flags = 0;
        Send(popup, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
        EXPECT_EQ(position.cx, width) << "only what is still to come can be changed";
    }
}

// ---------------------------------------------------------------- frame and shadow

/* A window under the popup whose every pixel has a colour of its own. */
class Pattern {
public:
    explicit Pattern(const CRect& at) : m_window(WS_POPUP | WS_VISIBLE, at.Size(), at.TopLeft()) {
        ::SetWindowPos(m_window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        CClientDC dc(m_window);
        for (int y = 0; y < at.Height(); ++y)
            for (int x = 0; x < at.Width(); ++x) ::SetPixel(dc, x, y, At(x, y));
        ::GdiFlush();
        PumpMessages(50);
    }
    static COLORREF At(int x, int y) { return RGB(x * 3 % 256, 255 - y * 2 % 256, (x * 7 + y * 5) % 256); }

private:
    ProbeWindow m_window;
};

COLORREF Darkened(int amount, COLORREF colour) {
    const auto channel = [amount](BYTE value) {
        return static_cast<BYTE>(::MulDiv(value, 255 - amount, 255));
    };
    return RGB(channel(GetRValue(colour)), channel(GetGValue(colour)), channel(GetBValue(colour)));
}

/* The shadow pixel by pixel, as the rules tell it: first the right edge, then the bottom one. */
void PaintReferenceShadow(Picture& p, const std::function<COLORREF(int, int)>& backdrop) {
    const int w = p.width;
    const int h = p.height;
    const auto set = [&](int x, int y, COLORREF colour) {
        if (x >= 0 && y >= 0 && x < w && y < h) p.pixels[static_cast<std::size_t>(y * w + x)] = colour;
    };
    for (int i = 0; i <= 4; ++i) {
        const int x = w - i;
        for (int y = 0; y <= 3; ++y) set(x, y, backdrop(x - 1, y));
        for (int y = 4; y <= 7; ++y) set(x, y, Darkened(i * 6 * (y - 3), backdrop(x, y)));
        for (int y = 8; y <= h - 5; ++y) set(x, y, Darkened(i * 30, backdrop(x, y)));
        for (int y = h - 4; y <= h - 1; ++y) set(x, y, Darkened((h - y) * i * 6, backdrop(x, y)));
    }
    for (int i = 1; i <= 4; ++i) {
        const int y = h - i;
        for (int x = 0; x <= 3; ++x) set(x, y, backdrop(x, y));
        for (int x = 4; x <= 7; ++x) set(x, y, Darkened((x - 3) * 6 * i, backdrop(x, y)));
        for (int x = 8; x <= w - 5; ++x) set(x, y, Darkened(i * 30, backdrop(x, y)));
    }
}

TEST_F(MenuFrame, ThePopupsOwnShadowIsTheDarkenedBackdrop) {
    const SystemShadow off(false);
    const CRect at(300, 200, 460, 320);
    CRect around(at);
    around.InflateRect(20, 20);
    const Pattern pattern(around);
    BarePopup popup(at);
    Bind(popup);
    popup.Show();
    ASSERT_TRUE(popup.Skin()->HasBackdrop());
    const Picture shown = PictureOfWindow(popup);
    Picture expected = shown;
    PaintReferenceShadow(expected, [](int x, int y) { return Pattern::At(x + 20, y + 20); });
    EXPECT_EQ(shown, expected);
    EXPECT_EQ(shown.At(shown.width - 1, 0), Pattern::At(shown.width - 2 + 20, 20)) << "one column beside";
    EXPECT_NE(shown.At(shown.width - 4, 50), shown.At(shown.width - 1, 50)) << "it deepens";
}

TEST_F(MenuFrame, ThePopupsOwnFrameHasTwoFixedLines) {
    const SystemShadow off(false);
    BarePopup popup;
    Bind(popup);
    popup.Show();
    const Picture shown = PictureOfWindow(popup);
    const int right = shown.width - 5;
    const int bottom = shown.height - 5;
    for (int x = 0; x <= right; ++x) {
        ASSERT_EQ(shown.At(x, 0), kOuterLine) << x;
        ASSERT_EQ(shown.At(x, bottom), kOuterLine) << x;
    }
    for (int y = 0; y <= bottom; ++y) {
        ASSERT_EQ(shown.At(0, y), kOuterLine) << y;
        ASSERT_EQ(shown.At(right, y), kOuterLine) << y;
    }
}

/* A client area that leaves more room shows the inner line and the ground too. */
TEST_F(MenuFrame, InsideTheOuterLineIsAnInnerOneAndTheGround) {
    const SystemShadow off(false);
    BarePopup popup;
    Bind(popup);
    popup.Show();
    // Above the skin somebody has taken more of the client area away.
    MessageSpy taker(popup);
    taker.handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_NCCALCSIZE) return {};
        ::InflateRect(reinterpret_cast<RECT*>(received.lParam), -10, -10);
        return 0;
    };
    ::SetWindowPos(popup, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_FRAMECHANGED | SWP_NOZORDER);
    Send(popup, WM_NCPAINT, 1);
    const Picture shown = PictureOfWindow(popup);
    EXPECT_EQ(shown.At(0, 40), kOuterLine);
    EXPECT_EQ(shown.At(1, 40), kInnerLine);
    EXPECT_EQ(shown.At(40, 1), kInnerLine);
    EXPECT_EQ(shown.At(2, 40), Colour(CLR_MENU_BACK));
    EXPECT_EQ(shown.At(40, 9), Colour(CLR_MENU_BACK));
    EXPECT_EQ(shown.At(shown.width - 6, 40), Colour(CLR_MENU_BACK)) << "the lines share the far sides";
    EXPECT_EQ(shown.At(shown.width - 5, 40), kOuterLine);
}

TEST_F(MenuFrame, UnderASystemShadowTheFrameIsOneLineOfTheSkin) {
    const SystemShadow on(true);
    BarePopup popup;
    Bind(popup);
    popup.Show();
    const Picture shown = PictureOfWindow(popup);
    EXPECT_EQ(shown.At(0, 0), Colour(CLR_MENU_BORDER));
    EXPECT_EQ(shown.At(shown.width - 1, 0), Colour(CLR_MENU_BORDER));
    EXPECT_EQ(shown.At(shown.width - 1, shown.height - 1), Colour(CLR_MENU_BORDER));
    EXPECT_EQ(shown.At(0, shown.height - 1), Colour(CLR_MENU_BORDER));
    EXPECT_EQ(shown.At(shown.width - 1, 50), Colour(CLR_MENU_BORDER));
    EXPECT_EQ(shown.At(50, shown.height - 1), Colour(CLR_MENU_BORDER)) << "and no backdrop";
    EXPECT_TRUE(popup.Skin()->HasBackdrop()) << "the picture is taken all the same";
}

TEST_F(MenuFrame, TheBackdropIsTakenOnce) {
    const SystemShadow off(false);
    const CRect at(300, 200, 460, 320);
    BarePopup popup(at);
    Bind(popup);
    popup.Show();
    const Picture first = PictureOfWindow(popup);
    Send(popup, WM_NCPAINT, 1);
    Send(popup, WM_NCPAINT, 1);
    EXPECT_EQ(PictureOfWindow(popup), first) << "a shadow of a shadow would be darker";
}

TEST_F(MenuFrame, ARegionLimitsThePainting) {
    const SystemShadow on(true);
    BarePopup popup;
    Bind(popup);
    popup.Show();
    ASSERT_EQ(::SetSkinFromFile(skin.SetColour(CLR_MENU_BORDER, RGB(9, 8, 7)).Write()), 1);
    // The skin's new colour is all around by now; the next one comes in the region alone.
    ASSERT_EQ(PictureOfWindow(popup).At(0, 0), RGB(9, 8, 7));
    skin.SetColour(CLR_MENU_BORDER, RGB(70, 80, 90));
    CTavixSkin::GetCurrentThreadSkin()->UnLoadSkin();
    CTavixSkin::GetCurrentThreadSkin()->LoadSkin(skin.Write());
    HRGN region = ::CreateRectRgn(0, 0, 10, 10);
    EXPECT_EQ(Send(popup, WM_NCPAINT, reinterpret_cast<WPARAM>(region)), 0);
    ::DeleteObject(region);
    const Picture shown = PictureOfWindow(popup);
    EXPECT_EQ(shown.At(9, 0), RGB(70, 80, 90));
    EXPECT_EQ(shown.At(10, 0), RGB(9, 8, 7));
    EXPECT_EQ(shown.At(0, 9), RGB(70, 80, 90));
    EXPECT_EQ(shown.At(0, 10), RGB(9, 8, 7));
}

TEST_F(MenuFrame, AnUnboundPopupHasAFrameWithoutAShadow) {
    const SystemShadow off(false);
    BarePopup popup;
    popup.Show();
    EXPECT_EQ(popup.Skin()->Menu(), nullptr);
    EXPECT_FALSE(popup.Skin()->HasBackdrop());
    const Picture shown = PictureOfWindow(popup);
    EXPECT_EQ(shown.At(0, 40), kOuterLine) << "over the system's border";
    EXPECT_EQ(shown.At(shown.width - 1, 40), Colour(CLR_MENU_BACK)) << "nothing was taken for a shadow";
}

TEST_F(MenuFrame, TinyPopupsArePaintedToo) {
    const SystemShadow off(false);
    for (const int side : {5, 7, 9, 12}) {
        const CRect at(300, 200, 300 + side, 200 + side);
        CRect around(at);
        around.InflateRect(20, 20);
        const Pattern pattern(around);
        BarePopup popup(at);
        Bind(popup);
        popup.Show();
        const Picture shown = PictureOfWindow(popup);
        Picture expected = shown;
        PaintReferenceShadow(expected, [](int x, int y) { return Pattern::At(x + 20, y + 20); });
        EXPECT_EQ(shown, expected) << side;
    }
    for (const int side :
         {1, 2, 3, 4}) {  // no client area is left, and what the system makes of that is its own
        BarePopup popup({300, 200, 300 + side, 200 + side});
        Bind(popup);
        popup.Show();
        EXPECT_EQ(Send(popup, WM_PAINT), 1);
    }
}

}  // namespace
}  // namespace tavix_test
