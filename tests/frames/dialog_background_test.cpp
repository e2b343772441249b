/* The client background of dialogs, pages and nested dialogs. */
#include <windows.h>

#include <commctrl.h>

#include "frames/host_dialog.h"
#include "tavixskin.h"

namespace tavix_test {
namespace {

constexpr DWORD kPageStyle = DS_CONTROL | WS_CHILD;
constexpr RECT kTabPlace{20, 30, 320, 190};

class DialogBackground : public DialogTest {
protected:
    static void SetUpTestSuite() {
        ParkMouse();
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TAB_CLASSES};
        ::InitCommonControlsEx(&classes);
    }

    /* The gradient of a client area. */
    Picture Gradient(int width, int height) const {
        PaintModel model(skin, width, height);
        model.Gradient({0, 0, width, height}, skin.Colour(CLR_DLG_BACK_FROM), skin.Colour(CLR_DLG_BACK_TO));
        return model.Result();
    }
    Picture Gradient(HWND window) const {
        CRect client;
        ::GetClientRect(window, &client);
        return Gradient(client.right, client.bottom);
    }
    Picture PageColour(HWND window) const {
        CRect client;
        ::GetClientRect(window, &client);
        PaintModel model(skin, client.right, client.bottom);
        model.Fill(client, skin.Colour(CLR_TAB_PAGE));
        return model.Result();
    }
    static HWND MakeTab(HWND parent, const RECT& place = kTabPlace) {
        return CreateControl(Charset::Ansi, parent, "SysTabControl32", "", WS_CLIPSIBLINGS, place);
    }
    static DialogSetup ChildOf(HWND parent, const RECT& place, DWORD style = kPageStyle) {
        return {.style = style, .place = CRect(place), .parent = parent};
    }
};

TEST_F(DialogBackground, ATopLevelDialogShowsTheGradient) {
    HostDialog dialog;
    EXPECT_EQ(RepaintedClient(dialog), Gradient(391, 210));
    ::SetWindowPos(dialog, nullptr, 0, 0, 301, 201, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(RepaintedClient(dialog), Gradient(292, 171))
        << "an odd height keeps the second colour in its last row";
}

TEST_F(DialogBackground, ErasesOnTheContextThatItIsGiven) {
    HostDialog dialog;
    const Canvas canvas(400, 240, RGB(9, 9, 9));
    EXPECT_EQ(dialog.Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc())), 1);
    const Picture picture = canvas.Take();
    EXPECT_EQ(PieceOf(picture, {0, 0, 391, 210}), Gradient(391, 210));
    EXPECT_EQ(picture.At(391, 100), RGB(9, 9, 9)) << "the client area and no more";
    EXPECT_EQ(picture.At(100, 210), RGB(9, 9, 9));
}

TEST_F(DialogBackground, ErasesWithinTheClipOfTheContext) {
    HostDialog dialog;
    const Canvas canvas(400, 240, RGB(9, 9, 9));
    ::IntersectClipRect(canvas.Dc(), 10, 21, 30, 52);
    dialog.Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()));
    ::SelectClipRgn(canvas.Dc(), nullptr);
    const Picture picture = canvas.Take();
    EXPECT_EQ(PieceOf(picture, {10, 21, 30, 52}), PieceOf(Gradient(391, 210), {10, 21, 30, 52}));
    EXPECT_EQ(picture.At(9, 30), RGB(9, 9, 9));
    EXPECT_EQ(picture.At(20, 52), RGB(9, 9, 9));
}

TEST_F(DialogBackground, WithoutAContextItPaintsTheWindow) {
    HostDialog dialog;
    RepaintedClient(dialog);
    {
        CClientDC dc(dialog);
        dc.FillSolidRect(CRect(0, 0, 391, 210), RGB(9, 9, 9));
    }
    ::InvalidateRect(dialog, nullptr, FALSE);
    EXPECT_EQ(dialog.Send(WM_ERASEBKGND, 0), 1);
    EXPECT_EQ(PictureOfClient(dialog), Gradient(391, 210));
    EXPECT_FALSE(::GetUpdateRect(dialog, nullptr, FALSE)) << "what was invalid is painted";
}

TEST_F(DialogBackground, APageOnATabControlHasThePageColour) {
    HostDialog dialog;
    HWND tab = MakeTab(dialog);
    HostDialog page(ChildOf(tab, {5, 25, 105, 85}));
    EXPECT_EQ(RepaintedClient(page), PageColour(page));
    EXPECT_EQ(page.Skin().OnTabPage(), 0) << "told by its parent, without any search";
    // So it follows its parent.
    ::SetParent(page, dialog);
    ::SetWindowPos(page, HWND_TOP, 325, 10, 60, 60, 0);
    EXPECT_EQ(RepaintedClient(page), PieceOf(Gradient(dialog), {325, 10, 385, 70}));
}

TEST_F(DialogBackground, APageOnATabControlMayReachBeyondIt) {
    HostDialog dialog;
    HWND tab = MakeTab(dialog);
    HostDialog page(ChildOf(tab, {-5, -5, 600, 400}));
    const Canvas canvas(605, 405, RGB(9, 9, 9));
    page.Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()));
    EXPECT_EQ(canvas.Take(), PageColour(page));
}

TEST_F(DialogBackground, APageWithoutAContextHasThePageColourToo) {
    HostDialog dialog;
    HWND tab = MakeTab(dialog);
    HostDialog page(ChildOf(tab, {5, 25, 105, 85}));
    {
        CClientDC dc(page);
        dc.FillSolidRect(CRect(0, 0, 100, 60), RGB(9, 9, 9));
    }
    ::InvalidateRect(page, nullptr, FALSE);
    page.Send(WM_ERASEBKGND, 0);
    EXPECT_EQ(PictureOfClient(page), PageColour(page));
}

TEST_F(DialogBackground, APageCoveredByATabControlBesideItHasThePageColour) {
    HostDialog dialog;
    MakeTab(dialog);
    // All four edges included: the page may be as large as the control.
    HostDialog page(ChildOf(dialog, kTabPlace));
    ::SetWindowPos(page, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(RepaintedClient(page), PageColour(page));
    EXPECT_EQ(page.Skin().OnTabPage(), 1);
}

TEST_F(DialogBackground, OnePixelOutsideIsNotOnThePage) {
    HostDialog dialog;
    MakeTab(dialog);
    const CRect at(kTabPlace);
    for (const CRect& place :
         {CRect(at.left - 1, at.top, at.right, at.bottom), CRect(at.left, at.top - 1, at.right, at.bottom),
          CRect(at.left, at.top, at.right + 1, at.bottom), CRect(at.left, at.top, at.right, at.bottom + 1)}) {
        HostDialog page(ChildOf(dialog, place));
        ::SetWindowPos(page, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        EXPECT_EQ(RepaintedClient(page), PieceOf(Gradient(dialog), place));
        EXPECT_EQ(page.Skin().OnTabPage(), 0);
    }
}

TEST_F(DialogBackground, OnceFoundOnAPageItStaysSo) {
    HostDialog dialog;
    HWND tab = MakeTab(dialog);
    HostDialog page(ChildOf(dialog, {30, 50, 130, 110}));
    ::SetWindowPos(page, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(RepaintedClient(page), PageColour(page));
    ::DestroyWindow(tab);
    EXPECT_EQ(RepaintedClient(page), PageColour(page));
    EXPECT_EQ(page.Skin().OnTabPage(), 1);
}

TEST_F(DialogBackground, ATabControlAnywhereUpTheChainCounts) {
    HostDialog dialog;
    MakeTab(dialog);
    HWND between = CreateControl(Charset::Ansi, dialog, "Static", "", 0, {30, 50, 300, 180});
    HWND inner = CreateControl(Charset::Ansi, between, "Static", "", 0, {5, 5, 200, 100});
    HostDialog page(ChildOf(inner, {2, 2, 100, 60}));
    EXPECT_EQ(RepaintedClient(page), PageColour(page));
    EXPECT_EQ(page.Skin().OnTabPage(), 1);
}

// The walk goes past captioned dialogs, to the very top.
TEST_F(DialogBackground, TheSearchDoesNotEndAtACaptionedDialog) {
    HostDialog outer;
    MakeTab(outer);
    HostDialog inner(ChildOf(outer, {25, 35, 300, 180}, WS_CHILD | WS_CAPTION));
    ASSERT_NE(inner.WindowStyle() & WS_CAPTION, 0u);
    HostDialog page(ChildOf(inner, {10, 10, 110, 70}));
    EXPECT_EQ(RepaintedClient(page), PageColour(page));
}

TEST_F(DialogBackground, WithoutTheControlStyleNothingIsAPage) {
    HostDialog dialog;
    HWND tab = MakeTab(dialog);
    HostDialog child(ChildOf(tab, {5, 25, 105, 85}, WS_CHILD));
    CRect place;
    ::GetWindowRect(child, &place);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(RepaintedClient(child), PieceOf(Gradient(dialog), place));
}

TEST_F(DialogBackground, ANestedDialogShowsTheAncestorsPiece) {
    HostDialog dialog;
    for (const CRect& place : {CRect(0, 0, 60, 40), CRect(33, 47, 133, 118), CRect(300, 150, 391, 210)}) {
        HostDialog child(ChildOf(dialog, place, WS_CHILD));
        EXPECT_EQ(RepaintedClient(child), PieceOf(Gradient(dialog), place));
    }
}

TEST_F(DialogBackground, NestingGoesDeeper) {
    HostDialog dialog;
    HostDialog child(ChildOf(dialog, {33, 47, 233, 187}, WS_CHILD));
    HWND between = CreateControl(Charset::Ansi, child, "Static", "", 0, {11, 13, 180, 120});
    HostDialog grandchild(ChildOf(between, {7, 5, 107, 65}, WS_CHILD));
    EXPECT_EQ(RepaintedClient(grandchild),
              PieceOf(Gradient(dialog), {33 + 11 + 7, 47 + 13 + 5, 33 + 11 + 107, 47 + 13 + 65}));
}

TEST_F(DialogBackground, TheNearestCaptionedDialogGivesTheGradient) {
    HostDialog outer;
    HostDialog inner(ChildOf(outer, {20, 20, 320, 190}, WS_CHILD | WS_CAPTION));
    HostDialog child(ChildOf(inner, {31, 17, 131, 97}, WS_CHILD));
    EXPECT_EQ(RepaintedClient(child), PieceOf(Gradient(inner), {31, 17, 131, 97}));
    EXPECT_NE(Gradient(inner), Gradient(outer));
}

TEST_F(DialogBackground, ACaptionedChildItselfShowsItsAncestorsPiece) {
    HostDialog outer;
    HostDialog inner(ChildOf(outer, {20, 20, 320, 190}, WS_CHILD | WS_CAPTION));
    // Its client area starts at its borders.
    EXPECT_EQ(RepaintedClient(inner), PieceOf(Gradient(outer), {24, 44, 315, 184}));
}

TEST_F(DialogBackground, WithoutACaptionedAncestorItShowsAGradientOfItsOwn) {
    ProbeWindow host(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    HostDialog child(ChildOf(host, {33, 47, 133, 118}, WS_CHILD));
    EXPECT_EQ(RepaintedClient(child), Gradient(100, 71)) << "captioned, but no dialog";
    HostDialog bare({.style = WS_POPUP});
    HostDialog inBare(ChildOf(bare, {33, 47, 133, 118}, WS_CHILD));
    EXPECT_EQ(RepaintedClient(inBare), Gradient(100, 71)) << "a dialog, but without a caption";
}

TEST_F(DialogBackground, WithoutAContextANestedDialogShowsAGradientOfItsOwn) {
    HostDialog dialog;
    HostDialog child(ChildOf(dialog, {33, 47, 133, 118}, WS_CHILD));
    RepaintedClient(child);
    ::InvalidateRect(child, nullptr, FALSE);
    child.Send(WM_ERASEBKGND, 0);
    EXPECT_EQ(PictureOfClient(child), Gradient(100, 71));
}

// A dialog that is larger than its ancestor: beyond the ancestor's client area there is nothing to show.
TEST_F(DialogBackground, BeyondTheAncestorNothingIsPainted) {
    HostDialog dialog;
    HostDialog child(ChildOf(dialog, {-20, -10, 430, 230}, WS_CHILD));
    const Canvas canvas(450, 240, RGB(9, 9, 9));
    child.Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()));
    PaintModel model(skin, 450, 240);
    model.Fill({0, 0, 450, 240}, RGB(9, 9, 9));
    model.Gradient({20, 10, 20 + 391, 10 + 210}, skin.Colour(CLR_DLG_BACK_FROM),
                   skin.Colour(CLR_DLG_BACK_TO));
    EXPECT_EQ(canvas.Take(), model.Result());
}

TEST_F(DialogBackground, AChildsBordersAreEmptySurface) {
    HostDialog dialog;
    for (const DWORD style : {static_cast<DWORD>(WS_CHILD), static_cast<DWORD>(WS_CHILD | DS_CONTROL)}) {
        HostDialog child(ChildOf(dialog, {33, 47, 193, 158}, style | WS_BORDER));
        EXPECT_EQ(PaintedDifference(skin, child, LookOf(child)), "");
        HostDialog plain(ChildOf(dialog, {203, 47, 293, 158}, style));
        EXPECT_EQ(plain.Client(), CRect(0, 0, 90, 111)) << "nothing surrounds it";
        EXPECT_EQ(plain.Send(WM_NCPAINT, 1), 0);
        EXPECT_EQ(RepaintedClient(plain), PieceOf(Gradient(dialog), {203, 47, 293, 158}));
    }
}

TEST_F(DialogBackground, FollowsAChangeOfSkin) {
    HostDialog dialog;
    HWND tab = MakeTab(dialog);
    HostDialog page(ChildOf(tab, {5, 25, 105, 85}));
    skin.SetColour(CLR_DLG_BACK_FROM, RGB(0, 10, 20)).SetColour(CLR_DLG_BACK_TO, RGB(200, 210, 220));
    skin.SetColour(CLR_TAB_PAGE, RGB(7, 6, 5));
    UseChangedSkin();
    ::DestroyWindow(tab);
    EXPECT_EQ(RepaintedClient(dialog), Gradient(dialog));
    HWND other = MakeTab(dialog);
    HostDialog later(ChildOf(other, {5, 25, 105, 85}));
    EXPECT_EQ(RepaintedClient(later), PageColour(later));
}

}  // namespace
}  // namespace tavix_test
