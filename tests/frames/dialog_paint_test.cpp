/* What surrounds a dialog's client area, held against the rules pixel by pixel. */
#include <string>

#include "frames/dialog_paint.h"
#include "frames/host_dialog.h"
#include "main/gui_objects.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {
namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);

class DialogPaint : public DialogTest {
protected:
    void ExpectLook(const HostDialog& dialog, const DialogLook& look) {
        EXPECT_EQ(PaintedDifference(skin, dialog, look), "");
    }
};

TEST_F(DialogPaint, DrawsSurfaceLinesCaptionAndButtons) {
    HostDialog dialog;
    ExpectLook(dialog, LookOf(dialog));
}

TEST_F(DialogPaint, LooksTheSameActiveAndInactive) {
    HostDialog dialog;
    dialog.Send(WM_NCACTIVATE, TRUE);
    const Picture active = PictureOfWindow(dialog);
    dialog.Send(WM_NCACTIVATE, FALSE);
    EXPECT_EQ(PictureOfWindow(dialog), active);
}

TEST_F(DialogPaint, AnyBitOfTheCaptionMakesOne) {
    for (const DWORD bits :
         {static_cast<DWORD>(WS_BORDER), static_cast<DWORD>(WS_DLGFRAME), static_cast<DWORD>(WS_CAPTION)}) {
        HostDialog dialog({.style = WS_POPUP | bits});
        SCOPED_TRACE(testing::Message() << std::hex << bits);
        EXPECT_EQ(dialog.Client(), CRect(4, 24, 395, 234));
        ExpectLook(dialog, LookOf(dialog));
    }
}

// The native borders that WS_THICKFRAME brings give the painting its room.
TEST_F(DialogPaint, WithoutACaptionLinesStartAtTheTopAndThereIsNoRegion) {
    HostDialog dialog({.style = WS_POPUP | WS_THICKFRAME | WS_SYSMENU, .title = L"Hidden"});
    ASSERT_GT(dialog.Client().top, 1);
    const FlatIcon icon(RGB(250, 120, 10));
    dialog.Send(WM_SETICON, ICON_SMALL, icon);
    ExpectLook(dialog, LookOf(dialog));
    const Picture picture = PictureOfWindow(dialog);
    EXPECT_EQ(picture.At(0, 0), skin.Colour(CLR_FRAME_OUTER_FROM));
    EXPECT_EQ(picture.At(1, 0), skin.Colour(CLR_FRAME_INNER_FROM));
    const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(::GetWindowRgn(dialog, region), ERROR);
    ::DeleteObject(region);
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
}

TEST_F(DialogPaint, BareWindowsHaveNothingToPaint) {
    HostDialog dialog({.style = WS_POPUP});
    EXPECT_EQ(dialog.Client(), CRect(0, 0, 400, 240));
    const Picture before = PictureOfWindow(dialog);
    EXPECT_EQ(dialog.Send(WM_NCPAINT, 1), 0);
    EXPECT_EQ(PictureOfWindow(dialog), before);
}

TEST_F(DialogPaint, OddSizesAndNarrowWindowsPaintTheEndsOverEachOther) {
    for (const SIZE size : {SIZE{401, 241}, SIZE{14, 60}, SIZE{11, 31}, SIZE{61, 39}, SIZE{40, 33}}) {
        HostDialog dialog({.place = CRect(50, 50, 50 + size.cx, 50 + size.cy)});
        SCOPED_TRACE(testing::Message() << size.cx << "x" << size.cy);
        ASSERT_EQ(CRect(dialog.Rect()).Size().cx, size.cx);
        ExpectLook(dialog, LookOf(dialog));
    }
}

TEST_F(DialogPaint, TheSparesOfTheRecordHaveNoInfluence) {
    HostDialog dialog;
    dialog.Send(WM_NCPAINT, 1);
    const Picture frame = PictureOfWindow(dialog);
    const Picture client = RepaintedClient(dialog);
    for (DWORD id = CLR_DLG_SPARE_28; id <= CLR_DLG_SPARE_37; ++id) skin.SetColour(id, RGB(0, 255, id));
    UseChangedSkin();
    dialog.Send(WM_NCPAINT, 1);
    EXPECT_EQ(PictureOfWindow(dialog), frame);
    EXPECT_EQ(RepaintedClient(dialog), client);
}

TEST_F(DialogPaint, FollowsAChangeOfSkinAtOnce) {
    HostDialog dialog;
    skin.SetColour(CLR_FRAME_OUTER_FROM, RGB(9, 8, 7)).SetColour(CLR_FRAME_BOTTOM3_TO, RGB(90, 80, 70));
    skin.SetBitmap(BMP_DLG_CAPTION_TILE, 3, 24, TestSkin::ColourOfBitmap(BMP_DLG_CAPTION_TILE));
    UseChangedSkin();
    const CRect rect = dialog.Rect();
    EXPECT_EQ(DifferenceOutside(ExpectedDialog(skin, rect.Width(), rect.Height(), LookOf(dialog)),
                                PictureOfWindow(dialog), dialog.Client()),
              "");
}

TEST_F(DialogPaint, TheClientAreaIsNeverPaintedOver) {
    HostDialog dialog;
    const CRect client(0, 0, 391, 210);
    {
        CClientDC dc(dialog);
        dc.FillSolidRect(client, RGB(7, 77, 177));
    }
    dialog.Send(WM_NCPAINT, 1);
    EXPECT_EQ(PictureOfClient(dialog).CountOf(RGB(7, 77, 177)), 391 * 210);
}

/* The pixels of a caption that differ from one without a title. */
struct Ink {
    CRect bounds{0x7FFF, 0x7FFF, 0, 0};
    int count = 0;
    int white = 0;
};
Ink InkBetween(const Picture& with, const Picture& without, int height) {
    Ink ink;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < with.width; ++x) {
            if (with.At(x, y) == without.At(x, y)) continue;
            ++ink.count;
            ink.white += with.At(x, y) == kWhite;
            ink.bounds =
                CRect(std::min<int>(ink.bounds.left, x), std::min<int>(ink.bounds.top, y),
                      std::max<int>(ink.bounds.right, x + 1), std::max<int>(ink.bounds.bottom, y + 1));
        }
    return ink;
}

class DialogTitle : public DialogPaint {
protected:
    Ink InkOf(const HostDialog& dialog) const {
        dialog.Send(WM_NCPAINT, 1);
        const CRect rect = dialog.Rect();
        return InkBetween(PictureOfWindow(dialog),
                          ExpectedDialog(skin, rect.Width(), rect.Height(), LookOf(dialog)), 24);
    }
};

TEST_F(DialogTitle, IsWhiteAndStartsFivePixelsAfterTheLeftEnd) {
    HostDialog dialog({.style = WS_POPUP | WS_CAPTION, .title = L"HHHH"});
    const Ink ink = InkOf(dialog);
    EXPECT_GT(ink.white, 15);
    EXPECT_GE(ink.bounds.left, 6 + 5);
    EXPECT_LE(ink.bounds.left, 6 + 5 + 3) << "left-aligned";
    EXPECT_GE(ink.bounds.top, 5);
    EXPECT_LE(ink.bounds.bottom, 23);
}

/* Another system colour for the length of a scope. */
class SystemColour {
public:
    SystemColour(INT element, COLORREF colour) : m_element(element), m_former(::GetSysColor(element)) {
        EXPECT_TRUE(::SetSysColors(1, &element, &colour));
    }
    ~SystemColour() { ::SetSysColors(1, &m_element, &m_former); }
    SystemColour(const SystemColour&) = delete;
    SystemColour& operator=(const SystemColour&) = delete;

private:
    INT m_element;
    COLORREF m_former;
};

TEST_F(DialogTitle, StaysWhiteWhateverTheHighlightColourIs) {
    // The colour of a frame's title; the skin takes it from the system when it is installed.
    const COLORREF red = RGB(255, 0, 0);
    ::UnInstallTavixSkin();
    const SystemColour highlight(COLOR_HIGHLIGHTTEXT, red);
    ASSERT_EQ(::InstallTavixSkin(skin.Write()), 1);
    ASSERT_EQ(CTavixSkin::GetGloalTavixSkinColor(CLR_TEXT_HIGHLIGHT), red);
    HostDialog dialog({.title = L"HHHH"});
    EXPECT_GT(InkOf(dialog).white, 15);
    EXPECT_EQ(PictureOfWindow(dialog).CountOf(red), 0);
}

TEST_F(DialogTitle, MakesRoomForTheIcon) {
    HostDialog dialog({.style = WS_POPUP | WS_CAPTION, .title = L"HHHH"});
    const int without = InkOf(dialog).bounds.left;
    const FlatIcon icon(RGB(10, 200, 30));
    dialog.Send(WM_SETICON, ICON_SMALL, icon);
    dialog.Send(WM_NCPAINT, 1);
    DialogLook look = LookOf(dialog);
    look.icon = RGB(10, 200, 30);
    const Ink ink = InkBetween(PictureOfWindow(dialog), ExpectedDialog(skin, 400, 240, look), 24);
    EXPECT_EQ(ink.bounds.left, without + ::GetSystemMetrics(SM_CXSMICON) + 1);
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
}

TEST_F(DialogTitle, IsCutAtTheRightEndWithoutAnEllipsis) {
    const std::wstring longTitle(200, L'H');
    HostDialog dialog({.style = WS_POPUP | WS_CAPTION, .title = longTitle.c_str()});
    const Ink ink = InkOf(dialog);
    EXPECT_LE(ink.bounds.right, 400 - 7);
    EXPECT_GT(ink.bounds.right, 400 - 7 - 4) << "letters up to the edge, no gap for dots";
}

TEST_F(DialogTitle, LiesUnderTheButtons) {
    const std::wstring longTitle(200, L'H');
    HostDialog dialog({.title = longTitle.c_str()});
    dialog.Send(WM_NCPAINT, 1);
    const Picture picture = PictureOfWindow(dialog);
    for (const LRESULT code : kButtonCodes) {
        const CRect place = dialog.Button(code);
        const Picture button = PieceOf(picture, place);
        EXPECT_EQ(button.CountOf(button.At(0, 0)), 256) << code;
    }
}

TEST_F(DialogTitle, LongTitlesAreCutAtTheBuffersEndAndShown) {
    const std::wstring veryLong(5000, L'i');
    HostDialog dialog({.style = WS_POPUP | WS_CAPTION, .title = veryLong.c_str()});
    EXPECT_GT(InkOf(dialog).count, 100);
}

TEST_F(DialogTitle, FollowsANewTextAtOnce) {
    HostDialog dialog({.style = WS_POPUP | WS_CAPTION, .title = L"HHHH"});
    dialog.Send(WM_NCPAINT, 1);
    const Picture before = PictureOfWindow(dialog);
    ::SetWindowTextA(dialog, "");
    EXPECT_EQ(DifferenceOutside(ExpectedDialog(skin, 400, 240, LookOf(dialog)), PictureOfWindow(dialog),
                                dialog.Client()),
              "");
    ::SetWindowTextA(dialog, "HHHH");
    EXPECT_EQ(PictureOfWindow(dialog), before);
}

class DialogIcon : public DialogPaint {};

TEST_F(DialogIcon, StandsFivePixelsRightOfTheBorder) {
    HostDialog dialog;
    const FlatIcon icon(RGB(10, 200, 30));
    dialog.Send(WM_SETICON, ICON_SMALL, icon);
    DialogLook look = LookOf(dialog);
    look.icon = RGB(10, 200, 30);
    // It shows at once, without a paint of the test's own.
    EXPECT_EQ(
        DifferenceOutside(ExpectedDialog(skin, 400, 240, look), PictureOfWindow(dialog), dialog.Client()),
        "");
    ExpectLook(dialog, look);
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
    EXPECT_EQ(DifferenceOutside(ExpectedDialog(skin, 400, 240, LookOf(dialog)), PictureOfWindow(dialog),
                                dialog.Client()),
              "");
}

TEST_F(DialogIcon, ALargeOneIsMadeSmall) {
    HostDialog dialog;
    const FlatIcon icon(RGB(10, 200, 30), {48, 48});
    dialog.Send(WM_SETICON, ICON_SMALL, icon);
    DialogLook look = LookOf(dialog);
    look.icon = RGB(10, 200, 30);
    ExpectLook(dialog, look);
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
}

TEST_F(DialogIcon, TheBigIconAloneIsNotShown) {
    HostDialog dialog;
    const FlatIcon icon(RGB(10, 200, 30), {32, 32});
    dialog.Send(WM_SETICON, ICON_BIG, icon);
    ExpectLook(dialog, LookOf(dialog));
    dialog.Send(WM_SETICON, ICON_BIG, 0);
}

TEST_F(DialogIcon, TheHostMayHandItOutItself) {
    HostDialog dialog;
    const FlatIcon icon(RGB(10, 200, 30));
    dialog.handler = [&](const Received& r) -> std::optional<LRESULT> {
        if (r.message == WM_GETICON && r.wParam == ICON_SMALL) return static_cast<LRESULT>(icon);
        return std::nullopt;
    };
    DialogLook look = LookOf(dialog);
    look.icon = RGB(10, 200, 30);
    ExpectLook(dialog, look);
    // A handle that is none is left out.
    dialog.handler = Answering(WM_GETICON, 0x1234);
    ExpectLook(dialog, LookOf(dialog));
    dialog.handler = nullptr;
}

TEST_F(DialogIcon, PaintingItLeavesNoHandleBehind) {
    HostDialog dialog({.title = L"Title"});
    const FlatIcon icon(RGB(10, 200, 30));
    dialog.Send(WM_SETICON, ICON_SMALL, icon);
    const auto paint = [&](int times) {
        for (int i = 0; i < times; ++i) dialog.Send(WM_NCPAINT, 1);
    };
    paint(50);
    const int gdi = CountGdiObjects();
    ASSERT_GT(gdi, 0);
    paint(500);
    EXPECT_LE(CountGdiObjects() - gdi, 1);
    dialog.Send(WM_SETICON, ICON_SMALL, 0);
}

class DialogRegion : public DialogPaint {
protected:
    static bool InRegion(HWND window, int x, int y) {
        CRgn region;
        region.CreateRectRgn(0, 0, 0, 0);
        EXPECT_NE(::GetWindowRgn(window, region), ERROR);
        return ::PtInRegion(region, x, y) != 0;
    }
};

TEST_F(DialogRegion, CornersAreCutByTheShapesOfBothEnds) {
    skin.SetBitmap(BMP_DLG_CAPTION_LEFT, 8, 24,
                   [](int x, int y) { return x + y < 3 ? RGB(255, 0, 0) : RGB(1, 2, 3); });
    skin.SetBitmap(BMP_DLG_CAPTION_RIGHT, 10, 24,
                   [](int x, int y) { return x >= 9 && y < 2 ? RGB(255, 0, 0) : RGB(4, 5, 6); });
    UseChangedSkin();
    HostDialog dialog;
    const auto check = [&](int width, int height) {
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 6; ++x) EXPECT_EQ(InRegion(dialog, x, y), x + y >= 3) << x << "," << y;
            for (int x = width - 4; x < width; ++x)
                EXPECT_EQ(InRegion(dialog, x, y), x != width - 1 || y >= 2) << x << "," << y;
        }
        EXPECT_TRUE(InRegion(dialog, width - 1, height - 1));
        EXPECT_TRUE(InRegion(dialog, 0, height - 1));
        EXPECT_FALSE(InRegion(dialog, width, 10));
        EXPECT_FALSE(InRegion(dialog, 10, height));
    };
    check(400, 240);
    // The region follows the window's size.
    ::SetWindowPos(dialog, nullptr, 0, 0, 333, 222, SWP_NOMOVE | SWP_NOZORDER);
    check(333, 222);
}

TEST_F(DialogRegion, ShapesInAnotherRedCutNothing) {
    skin.SetBitmap(BMP_DLG_CAPTION_LEFT, 8, 24, RGB(254, 0, 0));
    UseChangedSkin();
    HostDialog dialog;
    EXPECT_TRUE(InRegion(dialog, 0, 0));
}

// Its window region is not cut, so its corners are painted like the rest.
TEST_F(DialogRegion, WithoutACaptionCornersArePaintedToo) {
    skin.SetBitmap(BMP_DLG_CAPTION_LEFT, 6, 24, RGB(255, 0, 0))
        .SetBitmap(BMP_DLG_CAPTION_RIGHT, 7, 24, RGB(255, 0, 0));
    UseChangedSkin();
    HostDialog dialog({.style = WS_POPUP | WS_THICKFRAME});
    ASSERT_GT(dialog.Client().top, 1);
    EXPECT_EQ(PaintedDifference(skin, dialog, LookOf(dialog)), "");
}

// Such a shape is no corner: the window stays rectangular.
TEST_F(DialogRegion, AShapeOfTooManyPiecesCutsNothing) {
    const auto chequered = [](int x, int y) { return (x + y) % 2 ? RGB(255, 0, 0) : RGB(0, 0, 9); };
    skin.SetBitmap(BMP_DLG_CAPTION_LEFT, 400, 240, chequered);
    UseChangedSkin();
    HostDialog dialog;
    EXPECT_TRUE(InRegion(dialog, 1, 0));
    EXPECT_TRUE(InRegion(dialog, 0, 1));
    EXPECT_FALSE(InRegion(dialog, 400, 0));
    // A moderate one still does.
    skin.SetBitmap(BMP_DLG_CAPTION_LEFT, 40, 24, chequered);
    UseChangedSkin();
    ::SetWindowPos(dialog, nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_FALSE(InRegion(dialog, 1, 0));
    EXPECT_TRUE(InRegion(dialog, 0, 0));
}

TEST_F(DialogRegion, MissingEndsCutNothing) {
    skin.RemoveBitmaps(skinDialog);
    UseChangedSkin();
    HostDialog dialog;
    EXPECT_TRUE(InRegion(dialog, 0, 0));
    EXPECT_TRUE(InRegion(dialog, 399, 0));
    EXPECT_FALSE(InRegion(dialog, 400, 0));
}

/* No time that a user would notice as a stop. */
class TimeBound {
public:
    explicit TimeBound(ULONGLONG milliseconds) : m_end(::GetTickCount64() + milliseconds) {}
    ~TimeBound() { EXPECT_LT(::GetTickCount64(), m_end); }
    TimeBound(const TimeBound&) = delete;
    TimeBound& operator=(const TimeBound&) = delete;

private:
    ULONGLONG m_end;
};

class DialogOddSkin : public DialogPaint {
protected:
    void PaintAndResize() {
        const TimeBound bound(2000);
        HostDialog dialog({.title = L"Title"});
        EXPECT_EQ(dialog.Send(WM_NCPAINT, 1), 0);
        EXPECT_NE(dialog.Send(WM_NCHITTEST, 0, dialog.Packed({200, 239})), 22);
        ::SetWindowPos(dialog, nullptr, 0, 0, 200, 150, SWP_NOMOVE | SWP_NOZORDER | SWP_FRAMECHANGED);
        RepaintedClient(dialog);
    }
};

TEST_F(DialogOddSkin, PaintsWithAnyBitmapMissing) {
    for (DWORD id = BMP_DLG_CLOSE_NORMAL; id <= BMP_DLG_CAPTION_TILE; ++id) {
        if (id == 20) continue;
        DialogSkin poor;
        poor.RemoveBitmap(id);
        ASSERT_EQ(::SetSkinFromFile(poor.Write()), 1);
        HostDialog dialog({.title = L"Title"});
        EXPECT_EQ(dialog.Send(WM_NCPAINT, 1), 0);
        EXPECT_EQ(PictureOfWindow(dialog).At(0, 239), poor.Colour(CLR_FRAME_BOTTOM3_FROM)) << id;
    }
}

TEST_F(DialogOddSkin, WithoutAnyBitmapTheSurfaceAndTheLinesShow) {
    skin.RemoveBitmaps(skinDialog);
    UseChangedSkin();
    HostDialog dialog;
    dialog.Send(WM_NCPAINT, 1);
    PaintModel model(skin, 400, 240);
    model.Gradient({0, 0, 400, 240}, 0xEFF0EC, 0xD9D9D9);
    model.BorderLines(24);
    EXPECT_EQ(DifferenceOutside(model.Result(), PictureOfWindow(dialog), dialog.Client()), "");
}

TEST_F(DialogOddSkin, SizesOfAbsurdExtentCostNoTime) {
    for (const DWORD id : {SZ_DLG_LEFT, SZ_DLG_RIGHT, SZ_DLG_BOTTOM, SZ_DLG_CAPTION})
        for (const DWORD size : {0u, 1u, 5000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
            SCOPED_TRACE(testing::Message() << "size " << id << " is " << size);
            DialogSkin odd;
            odd.SetSize(id, size);
            ASSERT_EQ(::SetSkinFromFile(odd.Write()), 1);
            PaintAndResize();
        }
}

TEST_F(DialogOddSkin, ButtonsOfAbsurdGeometryCostNoTime) {
    for (const int extent : {-128, -1, 0, 1, 127})
        for (const int left : {-128, 127}) {
            skin.SetButtons(SZ_DLG_BUTTONS, left, extent, extent, extent);
            UseChangedSkin();
            PaintAndResize();
        }
}

TEST_F(DialogOddSkin, LargeAndTinyBitmapsCostNoTime) {
    // Every second row is cut away.
    const auto stripes = [](int, int y) { return y % 2 ? RGB(255, 0, 0) : RGB(0, 0, 9); };
    skin.SetBitmap(BMP_DLG_CAPTION_LEFT, 1500, 1500, stripes);
    skin.SetBitmap(BMP_DLG_CAPTION_RIGHT, 1500, 1500, stripes);
    skin.SetBitmapSize(BMP_DLG_CAPTION_TILE, 1, 1).SetBitmapSize(BMP_DLG_CLOSE_NORMAL, 2000, 2000);
    UseChangedSkin();
    PaintAndResize();
}

// Without a skin file all values are 0.
TEST_F(DialogOddSkin, AnEmptySkinPaints) {
    EXPECT_EQ(::SetSkinFromFile("no such file.skn"), 0);
    PaintAndResize();
}

TEST_F(DialogPaint, NeedsNoWindowButAMemoryContext) {
    const Canvas canvas(200, 100, RGB(9, 9, 9));
    CDC dc(canvas.Dc());
    const FlatIcon icon(RGB(10, 200, 30));
    const tavix::DialogButtons all{true, true, true, true};
    const tavix::DialogParts parts{.style = kDialogStyle,
                                   .closeState = 2,
                                   .maxState = 1,
                                   .minState = 0,
                                   .helpState = 2,
                                   .present = all,
                                   .buttons = tavix::LayoutDialogButtons(200, CRect(-8, 4, 16, 16), all),
                                   .icon = reinterpret_cast<HICON>(static_cast<LPARAM>(icon)),
                                   .title = "",
                                   .titleFont = nullptr};
    tavix::PaintDialog(dc, CSize(200, 100), parts);
    DialogLook look{};
    look.style = kDialogStyle;
    look.closeState = 2;
    look.maxState = 1;
    look.helpState = 2;
    look.icon = RGB(10, 200, 30);
    EXPECT_EQ(DifferenceOutside(ExpectedDialog(skin, 200, 100, look), canvas.Take(), {}), "");
}

}  // namespace
}  // namespace tavix_test
