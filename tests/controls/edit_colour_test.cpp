// Edits: the colours and the brush that the skin answers with.
#include <atomic>
#include <thread>

#include "controls/edit_fixture.h"

namespace tavix_test {
namespace {

class EditColours : public EditTest {
protected:
    static COLORREF PixelOf(HWND window, int x, int y) {
        HDC dc = ::GetDC(window);
        const COLORREF pixel = ::GetPixel(dc, x, y);
        ::ReleaseDC(window, dc);
        return pixel;
    }
};
INSTANTIATE_TEST_SUITE_P(Worlds, EditColours, kControlWorlds, NameOfWorld);

TEST_P(EditColours, EnabledTakesTheColourOnItsLeftWhateverItsParentClips) {
    for (const DWORD clipping : {DWORD{0}, DWORD{WS_CLIPCHILDREN}}) {
        UseParent(clipping);
        DotAbout(kTextPlace);
        HWND edit = MakeEdit();
        const Picture before = PictureOfClient(edit);
        ::SetBkMode(canvas.Dc(), OPAQUE);
        EXPECT_EQ(ColourOf(AskColour(edit)), kLeftColour);
        EXPECT_EQ(::GetBkMode(canvas.Dc()), TRANSPARENT);
        EXPECT_EQ(::GetTextColor(canvas.Dc()), TextColour());
        EXPECT_EQ(PictureOfClient(edit), before) << "nothing is filled";
        EXPECT_EQ(canvas.Take().CountOf(kCanvasColour), 100);
    }
}

TEST_P(EditColours, AtTheParentsLeftEdgeTakesTheColourOnItsRight) {
    DotAbout(kAtLeftEdge);
    EXPECT_EQ(ColourOf(AskColour(MakeEdit(0, kAtLeftEdge))), kRightColour);
}

TEST_P(EditColours, FromEdgeToEdgeTakesTheColourOfTheParentsCorner) {
    // The edit starts in the row below, so that the corner is the parent's own.
    DotAbout(kEdgeToEdge);
    EXPECT_EQ(ColourOf(AskColour(MakeEdit(0, kEdgeToEdge))), kOriginColour);
}

TEST_P(EditColours, OnAParentWithoutAPixelTakeNoColourAsItStands) {
    HWND edit = MakeEdit();
    EXPECT_EQ(ColourOf(AskColour(edit)), kParentColour);
    ::SetWindowPos(Parent(), nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(ColourOf(AskColour(edit)), CLR_INVALID);
}

TEST_P(EditColours, FollowTheParentAtEachMessage) {
    HWND edit = MakeEdit();
    EXPECT_EQ(ColourOf(AskColour(edit)), kParentColour);
    DotAbout(kTextPlace);
    EXPECT_EQ(ColourOf(AskColour(edit)), kLeftColour);
    ::MoveWindow(edit, 0, 30, 120, 60, FALSE);
    Dot(121, 30, kRightColour);
    EXPECT_EQ(ColourOf(AskColour(edit)), kRightColour);
}

TEST_P(EditColours, WithoutAParentAreWhite) {
    HWND edit = MakeAlone("Edit", 0);
    ASSERT_NE(SkinOf<CSkinEdit>(edit), nullptr);
    EXPECT_EQ(ColourOf(AskColour(edit)), RGB(255, 255, 255));
    EXPECT_EQ(ColourOf(AskColour(edit)), RGB(255, 255, 255));
    ::DestroyWindow(edit);
}

TEST_P(EditColours, ReadOnlyIsAnEnabledEdit) {
    DotAbout(kTextPlace);
    HWND edit = MakeEdit(ES_READONLY);
    EXPECT_EQ(ColourOf(AskColour(edit)), kLeftColour);
    EXPECT_EQ(::GetTextColor(canvas.Dc()), TextColour());
}

TEST_P(EditColours, DisabledHasTheSkinsBrushAndTextColour) {
    DotAbout(kTextPlace);
    HWND edit = MakeEdit(WS_DISABLED);
    ::SetBkMode(canvas.Dc(), OPAQUE);
    EXPECT_EQ(ColourOf(AskColour(edit)), skin.Colour(43));
    EXPECT_EQ(::GetBkMode(canvas.Dc()), TRANSPARENT);
    EXPECT_EQ(::GetTextColor(canvas.Dc()), DisabledTextColour());
    ::EnableWindow(edit, TRUE);
    EXPECT_EQ(ColourOf(AskColour(edit)), kLeftColour);
    ::EnableWindow(edit, FALSE);
    EXPECT_EQ(ColourOf(AskColour(edit)), skin.Colour(43));
}

TEST_P(EditColours, ChangeOfSkinLeavesTheDisabledBrushToNewEdits) {
    HWND edit = MakeEdit(WS_DISABLED);
    const COLORREF former = skin.Colour(43);
    const LRESULT brush = AskColour(edit);
    skin.SetColour(43, RGB(33, 66, 99));
    UseChangedSkin();
    EXPECT_EQ(AskColour(edit), brush);
    EXPECT_EQ(ColourOf(AskColour(edit)), former);
    EXPECT_EQ(ColourOf(AskColour(MakeEdit(WS_DISABLED, {40, 100, 160, 130}))), RGB(33, 66, 99));
}

TEST_P(EditColours, EditMessageIsAnsweredWithNothingThoughTheContextIsPrepared) {
    for (const DWORD style : {DWORD{0}, DWORD{WS_DISABLED}}) {
        HWND edit = MakeEdit(style);
        ::SetBkMode(canvas.Dc(), OPAQUE);
        EXPECT_EQ(AskColour(edit, WM_CTLCOLOREDIT), 0);
        EXPECT_EQ(::GetBkMode(canvas.Dc()), TRANSPARENT);
        EXPECT_EQ(::GetTextColor(canvas.Dc()), (style ? DisabledTextColour() : TextColour()));
    }
}

TEST_P(EditColours, ShowInASkinnedDialogueForReadOnlyAndDisabledEdits) {
    Dialog dialog;
    HWND readOnly = MakeEditIn(dialog, ES_READONLY, {40, 30, 160, 50});
    HWND disabled = MakeEditIn(dialog, WS_DISABLED, {40, 60, 160, 80});
    HWND enabled = MakeEditIn(dialog, 0, {40, 90, 160, 110});
    ::RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    const auto mostly = [](HWND edit, COLORREF colour) {
        const Picture shown = RepaintedClient(edit);
        return shown.CountOf(colour) > shown.width * shown.height / 2;
    };
    EXPECT_TRUE(mostly(readOnly, PixelOf(dialog, 39, 30)));
    EXPECT_TRUE(mostly(disabled, skin.Colour(43)));
    EXPECT_TRUE(mostly(enabled, ::GetSysColor(COLOR_WINDOW))) << "the parent's answer";
}

// A host may put an edit of the skinned thread on a window of a thread that isn't.
TEST_P(EditColours, OnAParentOfAnotherThreadAreSampledToo) {
    std::atomic<HWND> foreign{nullptr};
    std::atomic<bool> ended{false};
    std::thread owner([&] {
        {
            ProbeWindow window(WS_POPUP | WS_VISIBLE, {300, 200}, {500, 300}, RGB(90, 40, 10));
            foreign = window;
            MSG message;
            while (::GetMessageA(&message, nullptr, 0, 0) > 0) ::DispatchMessageA(&message);
        }
        ended = true;
    });
    PumpUntil([&] { return foreign != nullptr; });
    HWND edit = MakeEditIn(foreign);
    EXPECT_EQ(ColourOf(AskColour(edit)), RGB(90, 40, 10));
    EXPECT_EQ(::SendMessageA(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("x")), 1);
    ::DestroyWindow(edit);
    ::PostThreadMessageA(::GetWindowThreadProcessId(foreign, nullptr), WM_QUIT, 0, 0);
    PumpUntil([&] { return ended.load(); });  // the activation comes back to this thread
    owner.join();
}

TEST_P(EditColours, KeepNoObjects) {
    ExpectNoGrowth([&] {
        HWND edit = MakeEdit();
        for (int i = 0; i < 5; ++i) {
            AskColour(edit);
            AskColour(edit, WM_CTLCOLOREDIT);
        }
        ::EnableWindow(edit, FALSE);
        AskColour(edit);
        ::DestroyWindow(edit);
    });
}

}  // namespace
}  // namespace tavix_test
