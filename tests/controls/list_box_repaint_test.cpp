// What list boxes repaint by themselves, and when: nothing here asks for a painting before it looks.
#include "controls/list_box_fixture.h"

namespace tavix_test {
namespace {

constexpr COLORREF kSpoilt = RGB(1, 2, 3), kBare = RGB(255, 255, 255);

class ListBoxRepaint : public ListBoxTest {
protected:
    void Spoil() { SpoilClient(list, kSpoilt); }
    COLORREF Marked() const { return skin.Colour(CLR_HIGHLIGHT); }
    COLORREF Back() const { return skin.Colour(CLR_LIST_BACK); }
    /* Right of the texts. */
    static COLORREF RowColour(const Picture& shown, int row) { return shown.At(150, row * kItemHeight + 2); }

    struct Row {
        int row;
        COLORREF colour;
    };
    /* These rows have been painted by now, and no others. */
    void ExpectPainted(const std::vector<Row>& rows) {
        const Picture shown = PictureOfClient(list);
        for (int row = 0; row < 8; ++row) {
            COLORREF expected = kSpoilt;
            for (const Row& painted : rows)
                if (painted.row == row) expected = painted.colour;
            EXPECT_EQ(RowColour(shown, row), expected) << "row " << row;
        }
    }
    /* Nothing waits for a painting. */
    void ExpectPaintedAtOnce(const std::vector<Row>& rows) {
        ExpectPainted(rows);
        EXPECT_TRUE(Invalid().IsRectEmpty());
    }
    /* What shows is what a painting of the whole list shows. */
    void ExpectUpToDate() {
        const Picture shown = PictureOfClient(list);
        EXPECT_EQ(shown.CountOf(kSpoilt), 0);
        EXPECT_EQ(shown, RepaintedClient(list));
    }
    /* All of the list waits for a painting, background and all, and gets it when nothing else is to do. */
    template <class Change>
    void ExpectAllRepainted(const CRect& area, Change change) {
        Spoil();
        MessageSpy spy(list);
        spy.log.Listen({WM_ERASEBKGND});
        change();
        // Whether the place of a bar counts too is the system's business.
        CRect waiting;
        const CRect invalid = Invalid();
        ::IntersectRect(&waiting, &invalid, &area);
        EXPECT_EQ(waiting, area);
        PumpMessages();
        EXPECT_TRUE(spy.log.Has(WM_ERASEBKGND));
        ExpectUpToDate();
    }
    static CRect Client(bool withBar = false) {
        return {0, 0, 200 - (withBar ? ::GetSystemMetrics(SM_CXVSCROLL) : 0), 96};
    }
};
INSTANTIATE_TEST_SUITE_P(Worlds, ListBoxRepaint, kControlWorlds, NameOfWorld);

// ---------------------------------------------------------------- selection by messages

TEST_P(ListBoxRepaint, SettingTheCurrentItemPaintsTheOldAndTheNewRow) {
    MakeList(0, 8);
    Spoil();
    Send(LB_SETCURSEL, 2);
    ExpectPaintedAtOnce({{2, Marked()}});
    Spoil();
    Send(LB_SETCURSEL, 5);
    ExpectPaintedAtOnce({{2, Back()}, {5, Marked()}});
    Spoil();
    Send(LB_SETCURSEL, static_cast<WPARAM>(-1));
    ExpectPaintedAtOnce({{5, Back()}});
}

TEST_P(ListBoxRepaint, SettingAMarkPaintsItsRow) {
    MakeList(LBS_MULTIPLESEL, 8);
    Spoil();
    Send(LB_SETSEL, TRUE, 3);
    ExpectPaintedAtOnce({{3, Marked()}});
    Spoil();
    Send(LB_SETSEL, FALSE, 3);
    ExpectPaintedAtOnce({{3, Back()}});
}

TEST_P(ListBoxRepaint, MarkingARangePaintsAll) {
    MakeList(LBS_MULTIPLESEL, 8);
    for (const auto& [first, last] : {std::pair{2, 5}, std::pair{5, 2}}) {
        Spoil();
        MessageSpy spy(list);
        spy.log.Listen({WM_ERASEBKGND});
        Send(LB_SELITEMRANGEEX, static_cast<WPARAM>(first), last);
        EXPECT_TRUE(Invalid().IsRectEmpty());
        EXPECT_TRUE(spy.log.Has(WM_ERASEBKGND));
        EXPECT_EQ(RowColour(PictureOfClient(list), 4), Marked());
        EXPECT_EQ(RowColour(PictureOfClient(list), 5), Back());
        ExpectUpToDate();
    }
}

// ---------------------------------------------------------------- selection by mouse and keys

TEST_P(ListBoxRepaint, PressOfAMultipleSelectionPaintsWhatLosesItsMarkAndWhatGetsIt) {
    MakeList(LBS_MULTIPLESEL, 8);
    Mark({0, 4, 6});
    Spoil();
    Press(RowPoint(2));
    ExpectPaintedAtOnce({{0, Back()}, {2, Marked()}, {4, Back()}, {6, Back()}});
}

TEST_P(ListBoxRepaint, TogglingDrawsTheRowStraightOnTheScreen) {
    MakeList(LBS_MULTIPLESEL, 8);
    for (const WPARAM key : {MK_CONTROL, MK_SHIFT}) {
        Spoil();
        Press(RowPoint(5), key);
        ExpectPaintedAtOnce({{5, Marked()}});
        Press(RowPoint(5), key);
        ExpectPaintedAtOnce({{5, kBare}});
    }
}

TEST_P(ListBoxRepaint, DraggingDrawsEachRowStraightOnTheScreen) {
    MakeList(LBS_MULTIPLESEL, 8);
    Spoil();
    Send(WM_MOUSEMOVE, MK_LBUTTON, Packed(RowPoint(3)));
    ExpectPaintedAtOnce({{3, Marked()}});
    Send(WM_MOUSEMOVE, MK_LBUTTON, Packed(RowPoint(4)));
    ExpectPaintedAtOnce({{3, Marked()}, {4, Marked()}});
}

TEST_P(ListBoxRepaint, UpDrawsTwoRowsStraightOnTheScreen) {
    MakeList(0, 8);
    Select(4);
    Spoil();
    Key(VK_UP);
    ExpectPaintedAtOnce({{3, Marked()}, {4, kBare}});
}

TEST_P(ListBoxRepaint, UpOutOfTheTopRowRepaintsAll) {
    MakeList(WS_VSCROLL, 20);
    SetTop(5);
    Select(5);
    ExpectAllRepainted(Client(true), [this] { Key(VK_UP); });
    EXPECT_EQ(Top(), 4);
    EXPECT_EQ(RowColour(PictureOfClient(list), 0), Marked());
    EXPECT_EQ(RowColour(PictureOfClient(list), 1), Back());
}

TEST_P(ListBoxRepaint, DownDrawsTwoRowsAtOnceAndRepaintsAll) {
    MakeList(0, 8);
    Select(4);
    ExpectAllRepainted(Client(), [this] {
        Key(VK_DOWN);
        ExpectPainted({{4, kBare}, {5, Marked()}});
    });
    EXPECT_EQ(RowColour(PictureOfClient(list), 4), Back());
    EXPECT_EQ(RowColour(PictureOfClient(list), 5), Marked());
}

TEST_P(ListBoxRepaint, LeftLeavesWhatShowsToTheNextPainting) {
    MakeList(LBS_MULTICOLUMN, 40, {340, 96});
    SetTop(8);
    Select(9);
    Spoil();
    Key(VK_LEFT);
    EXPECT_EQ(Top(), 0);
    ExpectPaintedAtOnce({});
}

// The current item of columns can't be asked for, but it shows.
TEST_P(ListBoxRepaint, RightTakesTheSelectionNoFurtherThanTheLastItem) {
    MakeList(LBS_MULTICOLUMN, 40, {340, 96});
    SetTop(24);
    Select(36);
    Key(VK_RIGHT);
    PumpMessages();
    EXPECT_EQ(Top(), 32);
    const Picture shown = PictureOfClient(list);
    for (int row = 0; row < 8; ++row) EXPECT_EQ(RowColour(shown, row), row == 7 ? Marked() : Back()) << row;
}

// ---------------------------------------------------------------- items that come and go

TEST_P(ListBoxRepaint, ItemsThatComeAndGoRepaintAll) {
    MakeList(0, 6);
    Select(1);
    ExpectAllRepainted(Client(), [this] { Add("At the end"); });
    ExpectAllRepainted(Client(), [this] { Insert(4, "Between"); });
    ExpectAllRepainted(Client(), [this] { Send(LB_DELETESTRING, 5); });
    EXPECT_EQ(RowColour(PictureOfClient(list), 1), Marked());
}

TEST_P(ListBoxRepaint, ItemsThatAreRefusedRepaintNothing) {
    MakeList(0, 6);
    Spoil();
    EXPECT_EQ(Insert(9, "Beyond"), LB_ERR);
    EXPECT_EQ(Send(LB_DELETESTRING, 9), LB_ERR);
    EXPECT_TRUE(Invalid().IsRectEmpty());
    ExpectPaintedAtOnce({});
}

}  // namespace
}  // namespace tavix_test
