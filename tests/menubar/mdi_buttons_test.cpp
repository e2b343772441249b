// The geometry of a maximised child's icon and buttons, of popups, and the buttons' own pressing.
#include <algorithm>

#include "menubar/bar_user.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {
namespace {

class MdiButtons : public BarTest {
protected:
    void Make(DWORD side = CBRS_ALIGN_TOP) {
        MakeBar(MakeUsualMenu(), nullptr, side);
        m_icon = {::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON)};
        m_button = {::GetSystemMetrics(SM_CXSIZE), ::GetSystemMetrics(SM_CYSIZE)};
    }
    CMenuBarMdiButtons& Mdi() { return Access().Mdi(); }
    CSize m_icon, m_button;
};

TEST_F(MdiButtons, StandInARowAtTheEndsOfALevelBar) {
    Make();
    Mdi().Layout();
    const CSize size = WindowRect().Size();
    EXPECT_EQ(Access().MenuExtent(), ItemRect(3).right + 2);
    const int top = (size.cy - m_icon.cy) / 2;
    EXPECT_EQ(Access().Rect(0), CRect(-m_icon.cx, top, 0, top + m_icon.cy));
    const int end = size.cx + 3 * m_button.cx;
    EXPECT_EQ(Access().Rect(3), CRect(end - m_button.cx, top + 2, end - 2, top + m_button.cy - 2));
    CRect next = Access().Rect(3);
    next.OffsetRect(-m_button.cx, 0);
    EXPECT_EQ(Access().Rect(2), next);
    next.OffsetRect(-(m_button.cx - 2), 0);
    EXPECT_EQ(Access().Rect(1), next);
}

TEST_F(MdiButtons, StandBehindTheMenuWhereThatIsLonger) {
    Make();
    ::SetWindowPos(bar.m_hWnd, nullptr, 0, 0, 20, 25, SWP_NOMOVE | SWP_NOZORDER);
    Mdi().Layout();
    EXPECT_EQ(Access().Rect(3).right, Access().MenuExtent() + 3 * m_button.cx - 2);
}

TEST_F(MdiButtons, StandInAColumnOnAnUprightBar) {
    for (const DWORD side : {CBRS_ALIGN_LEFT, CBRS_ALIGN_RIGHT}) {
        SCOPED_TRACE(side);
        if (!bar.m_hWnd) Make(side);
        bar.SetBarStyle(side);
        ::SetWindowPos(bar.m_hWnd, nullptr, 0, 0, 60, 250, SWP_NOMOVE | SWP_NOZORDER);
        Mdi().Layout();
        EXPECT_EQ(Access().MenuExtent(), ItemRect(3).bottom + 2);
        const int left = side == CBRS_ALIGN_LEFT ? 0 : 60 - m_icon.cx;
        EXPECT_EQ(Access().Rect(0), CRect(left, -m_icon.cy, left + m_icon.cx, 0));
        const int end = 250 + 3 * m_button.cy;
        const CRect close(left, end - m_button.cy + 2, left + m_button.cx - 2, end - 2);
        EXPECT_EQ(Access().Rect(3), close);
        CRect next = close;
        next.OffsetRect(0, -(close.Height() + 2));
        EXPECT_EQ(Access().Rect(2), next);
        next.OffsetRect(0, -close.Height());
        EXPECT_EQ(Access().Rect(1), next);
    }
}

TEST_F(MdiButtons, TakeTheirStripsOnlyWhileAChildIsMaximised) {
    Make();
    Mdi().Layout();
    CRect rect(0, 0, 500, 25);
    Mdi().AdjustNcRect(&rect);
    EXPECT_EQ(rect, CRect(0, 0, 500, 25));
    EXPECT_EQ(Mdi().AdjustSize(CSize(100, 20), TRUE).cx, 100);
    EXPECT_EQ(bar.AdjustSize(CSize(100, 20), TRUE).cx, 100);
    Access().SetChildMaximized(true);
    const int width = CTavixSkin::GetGloalTavixSkinBmp(BMP_FRAME_MIN_NORMAL)->GetBitmapSize().cx;
    Mdi().AdjustNcRect(&rect);
    EXPECT_EQ(rect, CRect(m_icon.cx + 10, 0, 500 - 3 * (width + 2), 25));
    rect.SetRect(0, 0, 50, 25);
    Mdi().AdjustNcRect(&rect);
    EXPECT_EQ(rect.Width(), Access().MenuExtent()) << "never less than the menu";
    CSize size = Mdi().AdjustSize(CSize(100, 20), TRUE);
    EXPECT_EQ(size.cx, 100 + m_icon.cx + 3 * m_button.cx);
    EXPECT_EQ(size.cy, 20);
    size = Mdi().AdjustSize(CSize(100, 20), FALSE);
    EXPECT_EQ(size.cx, 100);
    EXPECT_EQ(size.cy, 20 + m_icon.cy + 3 * m_button.cy);
    EXPECT_EQ(bar.AdjustSize(CSize(100, 20), TRUE).cx, 100) << "a bar without an MDI client asks nobody";

    bar.SetBarStyle(CBRS_ALIGN_LEFT);
    Mdi().Layout();
    rect.SetRect(0, 0, 60, 400);
    Mdi().AdjustNcRect(&rect);
    EXPECT_EQ(rect, CRect(0, m_icon.cy, 60, 400 - 3 * m_button.cy));
    rect.SetRect(0, 0, 60, 10);
    Mdi().AdjustNcRect(&rect);
    EXPECT_EQ(rect.Height(), Access().MenuExtent());
}

TEST_F(MdiButtons, ABarWithoutButtonsHasNoExtent) {
    Make();
    const HMENU menu = bar.GetMenu();
    bar.SynchronizeMenubar(nullptr);
    Mdi().Layout();
    EXPECT_EQ(Access().MenuExtent(), 0);
    bar.SynchronizeMenubar(menu);
}

TEST_F(MdiButtons, PopupsOpenBesideTheBar) {
    Make();
    CRect desktop;
    ::GetWindowRect(::GetDesktopWindow(), &desktop);
    const CRect button(100, 200, 150, 221);
    const auto check = [&](DWORD side, CPoint at, CRect exclude) {
        SCOPED_TRACE(side);
        bar.SetBarStyle(side);
        TPMPARAMS params{};
        const CPoint point = Mdi().PopupPosition(button, params);
        EXPECT_TRUE(point == at);
        EXPECT_EQ(params.cbSize, 20u);
        EXPECT_EQ(CRect(params.rcExclude), exclude);
    };
    check(CBRS_ALIGN_TOP, {100, 221}, desktop);
    check(0, {100, 221}, desktop);
    CRect cut = desktop;
    cut.right = 150;
    check(CBRS_ALIGN_LEFT, {150, 200}, cut);
    cut = desktop;
    cut.left = 100;
    check(CBRS_ALIGN_RIGHT, {100, 200}, cut);
    cut = desktop;
    cut.top = 200;
    check(CBRS_ALIGN_BOTTOM, {100, 200}, cut);
}

TEST_F(MdiButtons, HitTestTakesTheFirstRectangleThatHoldsThePoint) {
    Make();
    Mdi().Layout();
    for (int i = 0; i < 4; ++i) {
        const CRect rect = Access().Rect(i);
        // Minimise and restore overlap by two columns; the first comes first.
        EXPECT_EQ(Mdi().HitTest(rect.left, rect.top), i);
    }
    EXPECT_EQ(Mdi().HitTest(-500, 0), -1);
}

TEST_F(MdiButtons, ArePressedAndReleasedIfABarLetsThem) {
    Make();
    Mdi().Layout();
    const CRect restore = Access().Rect(2);
    const int x = restore.left + 3, y = restore.top + 3;
    EXPECT_FALSE(Mdi().OnMouseMessage(WM_LBUTTONDOWN, 0, x, y)) << "no child is maximised";
    Access().SetChildMaximized(true);
    frame.log.Listen({WM_SYSCOMMAND});
    frame.log.Clear();
    frame.handler = [](const Received& r) -> std::optional<LRESULT> {
        return r.message == WM_SYSCOMMAND ? std::optional<LRESULT>(0) : std::nullopt;
    };
    EXPECT_FALSE(Mdi().OnMouseMessage(WM_MOUSEMOVE, 0, x, y)) << "nothing is pressed";
    EXPECT_FALSE(Mdi().OnMouseMessage(WM_LBUTTONUP, 0, x, y));
    EXPECT_FALSE(Mdi().OnMouseMessage(WM_LBUTTONDOWN, 0, 5, -200));
    EXPECT_FALSE(Mdi().OnMouseMessage(WM_LBUTTONUP, 0, 5, -200));
    EXPECT_TRUE(Mdi().OnMouseMessage(WM_LBUTTONDOWN, 0, x, y));
    EXPECT_EQ(Access().Pressed(), 2);
    EXPECT_EQ(::GetCapture(), bar.m_hWnd);
    EXPECT_TRUE(Mdi().OnMouseMessage(WM_MOUSEMOVE, 0, x + 200, y));
    EXPECT_TRUE(Mdi().OnMouseMessage(WM_LBUTTONUP, 0, x + 200, y));
    EXPECT_TRUE(frame.log.Entries().empty()) << "released elsewhere";
    EXPECT_EQ(Access().Pressed(), 0);
    EXPECT_EQ(::GetCapture(), nullptr);
    EXPECT_TRUE(Mdi().OnMouseMessage(WM_LBUTTONDOWN, 0, x, y));
    EXPECT_TRUE(Mdi().OnMouseMessage(WM_MOUSEMOVE, 0, x + 200, y));
    EXPECT_TRUE(Mdi().OnMouseMessage(WM_MOUSEMOVE, 0, x, y));
    EXPECT_TRUE(Mdi().OnMouseMessage(WM_LBUTTONUP, 0, x, y));
    ASSERT_EQ(frame.log.Entries().size(), 1u);
    EXPECT_EQ(frame.log.Entries()[0].wParam, static_cast<WPARAM>(SC_RESTORE));
    EXPECT_FALSE(Mdi().OnMouseMessage(WM_RBUTTONDOWN, 0, x, y));
}

TEST_F(MdiButtons, AreDrawnInTheSystemsLook) {
    Make();
    Mdi().Layout();
    const CRect close = Access().Rect(3);
    const auto drawn = [&](int index, BOOL pressed) {
        Canvas canvas(close.right + 10, close.bottom + 10, RGB(1, 2, 3));
        CDC dc(canvas.Dc());
        Mdi().DrawButton(&dc, index, pressed);
        return canvas.Take();
    };
    const auto touched = [](const Picture& p) {
        return static_cast<int>(p.pixels.size()) - p.CountOf(RGB(1, 2, 3));
    };
    for (int i = 1; i < 4; ++i) {
        EXPECT_EQ(touched(drawn(i, FALSE)), Access().Rect(i).Width() * Access().Rect(i).Height()) << i;
        EXPECT_NE(drawn(i, FALSE), drawn(i, TRUE)) << i;
    }
    EXPECT_EQ(touched(drawn(0, FALSE)), 0) << "no child, no icon";
    EXPECT_EQ(touched(drawn(-1, FALSE)), 0);
    EXPECT_EQ(touched(drawn(4, FALSE)), 0);
    Mdi().DrawButton(nullptr, 1, FALSE);
}

TEST_F(MdiButtons, TheIconOpensTheSystemMenuIfABarLetsIt) {
    Make();
    Mdi().Layout();
    Access().SetChildMaximized(true);
    ASSERT_TRUE(BringToFront(frame.m_hWnd));
    User user(bar, frame.m_hWnd);
    const CRect icon = Access().Rect(0);
    user.Does(
            "press the icon",
            [&] { EXPECT_TRUE(Mdi().OnMouseMessage(WM_LBUTTONDOWN, 0, icon.left + 2, icon.top + 2)); },
            [] { return CountPopups() == 1; })
        .Does(
            "close", [] { ::EndMenu(); }, [] { return CountPopups() == 0; });
    EXPECT_TRUE(user.Run());
    EXPECT_EQ(CountPopups(), 0);
}

}  // namespace
}  // namespace tavix_test
