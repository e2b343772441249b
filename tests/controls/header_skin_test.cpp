// Headers: what is painted, what a press shows, and what goes on to the native control.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "support/control_test.h"
#include "support/object_rounds.h"
#include "tavixskin/framework/gdi.h"

namespace tavix_test {
namespace {

constexpr int kWidth = 360, kHeight = 24;
constexpr DWORD kItemStyle =
    0;  // without HDS_BUTTONS the native control repaints nothing of its own at a press

/* A column as the tests make it, and as the model paints it. */
struct Column {
    int width;
    int format = 0;
    std::string text{};
    HBITMAP bitmap = nullptr;
};

class HeaderSkin : public ControlTest {
protected:
    void PrepareSkin() override {
        // Each piece of a width of its own.
        skin.SetBitmapSize(50, 4, 9).SetBitmapSize(51, 3, 9).SetBitmapSize(52, 5, 9);
        skin.SetBitmapSize(53, 6, 9).SetBitmapSize(54, 2, 9).SetBitmapSize(55, 7, 9);
    }

    void Make(const std::vector<Column>& columns, DWORD style = kItemStyle) {
        header = CreateControl(GetParam().charset, Parent(), "SysHeader32", "", style, {10, 20, 370, 44});
        ASSERT_TRUE(IsSkinned(header));
        for (const Column& column : columns) {
            HDITEMA item{};
            item.mask = HDI_WIDTH | HDI_FORMAT;
            item.cxy = column.width;
            item.fmt = column.format;
            // A text that is set brings the format of strings with it.
            if (!column.text.empty()) item.mask |= HDI_TEXT;
            item.pszText = const_cast<char*>(column.text.c_str());
            if (column.bitmap) {
                item.mask |= HDI_BITMAP;
                item.hbm = column.bitmap;
            }
            const int index = static_cast<int>(m_columns.size());
            ASSERT_EQ(::SendMessageA(header, HDM_INSERTITEMA, 1000, reinterpret_cast<LPARAM>(&item)), index);
            m_columns.push_back(column);
        }
        Validate();
    }
    CRect ItemRect(int index) const {
        CRect rect;
        ::SendMessageA(header, HDM_GETITEMRECT, static_cast<WPARAM>(index),
                       reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect)));
        return rect;
    }
    void Validate() { ::ValidateRect(header, nullptr); }
    CRect Invalid() const {
        CRect rect;
        ::GetUpdateRect(header, &rect, FALSE);
        return rect;
    }
    void Press(POINT at) { ::SendMessageA(header, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y)); }
    void LetGo(POINT at) { ::SendMessageA(header, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y)); }
    CPoint MiddleOf(int index) const {
        const CRect rect = ItemRect(index);
        return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    }

    /* The header as it ought to look with that item pressed. */
    Picture Model(int pressed = -1) {
        Canvas canvas(kWidth, kHeight, RGB(0, 0, 0));
        CDC dc(canvas.Dc());
        const auto fill = [&](DWORD bitmap, int from, int to, const CRect& rows) {
            const CRect area(from, rows.top, to, rows.bottom);
            dc.FillSolidRect(area, TestSkin::ColourOfBitmap(bitmap));
        };
        const auto width = [&](DWORD bitmap) { return static_cast<int>(skin.BitmapSize(bitmap).cx); };
        fill(51, 0, kWidth, {0, 0, 0, kHeight});
        ::SetBkMode(dc, TRANSPARENT);
        const HGDIOBJ former = ::SelectObject(dc, ::GetStockObject(DEFAULT_GUI_FONT));
        for (int i = 0; i < static_cast<int>(m_columns.size()); ++i) {
            const Column& column = m_columns[static_cast<std::size_t>(i)];
            CRect rect = ItemRect(i);
            const DWORD first = i == pressed ? 53 : 50;
            fill(first, rect.left, rect.left + width(first), rect);
            // The last middle piece is not cut at the item's end.
            int end = rect.left + width(first);
            while (end < rect.right) end += width(first + 1);
            fill(first + 1, rect.left + width(first), std::max<int>(end, rect.left + width(first)), rect);
            fill(first + 2, rect.right - width(first + 2), rect.right, rect);
            rect.left += 2;
            if (column.format & HDF_STRING) {
                dc.DrawText(column.text.c_str(), -1, rect, 35108);
            } else if ((column.format & HDF_BITMAP) && column.bitmap) {
                BITMAP facts{};
                ::GetObjectA(column.bitmap, sizeof facts, &facts);
                CMemoryDC source(dc);
                const SelectionGuard selection(source, column.bitmap);
                ::BitBlt(dc, rect.left, (rect.Height() - facts.bmHeight) / 2, facts.bmWidth, facts.bmHeight,
                         source, 0, 0, SRCCOPY);
            }
        }
        ::SelectObject(dc, former);
        dc.Detach();
        return canvas.Take();
    }
    Picture Shown() { return RepaintedClient(header); }

    /* A column whose text its parent is asked for. */
    void AddColumnToAskFor(int width) {
        HDITEMA item{};
        item.mask = HDI_WIDTH | HDI_FORMAT | HDI_TEXT;
        item.cxy = width;
        item.fmt = HDF_STRING;
        item.pszText = LPSTR_TEXTCALLBACKA;
        ASSERT_EQ(::SendMessageA(header, HDM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)), 0);
    }
    /* The parent ends at the first notification of one of these codes. */
    void EndParentAt(std::initializer_list<UINT> codes) {
        Parent().handler = [parent = Parent().Handle(),
                            wanted = std::vector(codes)](const Received& received) -> std::optional<LRESULT> {
            if (received.message != WM_NOTIFY) return std::nullopt;
            const UINT code = reinterpret_cast<const NMHDR*>(received.lParam)->code;
            if (std::find(wanted.begin(), wanted.end(), code) != wanted.end()) ::DestroyWindow(parent);
            return 0;
        };
    }

    HWND header = nullptr;
    std::vector<Column> m_columns;

private:
};

// ---------------------------------------------------------------- painting

TEST_P(HeaderSkin, WithoutItemsTheMiddlePieceCoversTheWidth) {
    Make({});
    const Picture shown = Shown();
    EXPECT_EQ(shown.CountOf(TestSkin::ColourOfBitmap(51)), kWidth * kHeight);
}

TEST_P(HeaderSkin, ItemsHaveTheirPiecesAndTheRestTheMiddleOne) {
    Make({{60}, {41}, {100}});
    EXPECT_EQ(Shown(), Model());
}

TEST_P(HeaderSkin, PiecesOfANarrowItemOverlapWithTheRightOneOnTop) {
    for (const int width : {8, 6, 5, 3, 1}) {
        Make({{40}, {width}, {40}});
        EXPECT_EQ(Shown(), Model()) << width;
        EXPECT_EQ(Shown().At(40 + width - 1, 5), TestSkin::ColourOfBitmap(52)) << width;
        m_columns.clear();
        ::DestroyWindow(header);
    }
}

TEST_P(HeaderSkin, PiecesAreStretchedToTheHeight) {
    const auto halves = [](COLORREF upper, COLORREF lower) {
        return [=](int, int y) { return y < 5 ? upper : lower; };
    };
    skin.SetBitmap(51, 3, 10, halves(RGB(10, 20, 30), RGB(40, 50, 60)));
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    Make({});
    const Picture shown = Shown();
    EXPECT_EQ(shown.At(5, 0), RGB(10, 20, 30));
    EXPECT_EQ(shown.At(5, 11), RGB(10, 20, 30));
    EXPECT_EQ(shown.At(5, 12), RGB(40, 50, 60));
    EXPECT_EQ(shown.At(359, 23), RGB(40, 50, 60));
}

TEST_P(HeaderSkin, TextStandsLeftWhateverItsAlignment) {
    Make({{80, HDF_STRING | HDF_LEFT, "Name"},
          {80, HDF_STRING | HDF_CENTER, "Size"},
          {80, HDF_STRING | HDF_RIGHT, "Date"}});
    const Picture shown = Shown();
    EXPECT_EQ(shown, Model());
    EXPECT_GT(shown.CountOf(RGB(0, 0, 0)), 20) << "in black";
}

TEST_P(HeaderSkin, LongTextEndsInAnEllipsis) {
    Make({{60, HDF_STRING, "A rather long heading of a column"}, {60, HDF_STRING, "A rather l"}});
    EXPECT_EQ(Shown(), Model());
    // Not simply cut off where the item ends.
    m_columns[0].text = "A rather";
    EXPECT_NE(Shown(), Model());
}

TEST_P(HeaderSkin, AmpersandIsShownAsItStands) {
    Make({{100, HDF_STRING, "Salt & pepper"}, {100, HDF_STRING, "&Oil"}});
    EXPECT_EQ(Shown(), Model());
    m_columns[1].text = "Oil";
    EXPECT_NE(Shown(), Model());
}

TEST_P(HeaderSkin, FormatWithoutAStringShowsNoText) {
    Make({{100, 0, "Name"}});
    HDITEMA item{};
    item.mask = HDI_FORMAT;
    ASSERT_TRUE(::SendMessageA(header, HDM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item)));
    ASSERT_TRUE(::SendMessageA(header, HDM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)));
    ASSERT_FALSE(item.fmt & HDF_STRING);
    EXPECT_EQ(Shown(), Model());
    EXPECT_EQ(Shown().CountOf(RGB(0, 0, 0)), 0);
}

TEST_P(HeaderSkin, TextThatIsAskedForIsShown) {
    Parent().handler = [](const Received& received) -> std::optional<LRESULT> {
        if (received.message != WM_NOTIFY) return std::nullopt;
        const auto* notice = reinterpret_cast<const NMHDR*>(received.lParam);
        if (notice->code == HDN_GETDISPINFOA) {
            auto* info = reinterpret_cast<NMHDDISPINFOA*>(received.lParam);
            if (info->mask & HDI_TEXT) info->pszText = const_cast<char*>("asked");
        } else if (notice->code == HDN_GETDISPINFOW) {
            auto* info = reinterpret_cast<NMHDDISPINFOW*>(received.lParam);
            if (info->mask & HDI_TEXT) info->pszText = const_cast<wchar_t*>(L"asked");
        }
        return 0;
    };
    Make({});
    AddColumnToAskFor(90);
    m_columns.push_back({90, HDF_STRING, "asked"});
    EXPECT_EQ(Shown(), Model());
}

TEST_P(HeaderSkin, BitmapStandsLeftAndInTheMiddleOfTheHeight) {
    const auto bitmap = MakeBitmap(12, 8, RGB(200, 20, 90));
    const auto tall = MakeBitmap(6, 40, RGB(20, 200, 90));
    Make({{60, HDF_BITMAP, "", *bitmap}, {60, HDF_BITMAP | HDF_RIGHT, "", *tall}, {60, HDF_BITMAP}});
    const Picture shown = Shown();
    EXPECT_EQ(shown, Model());
    EXPECT_EQ(shown.CountOf(RGB(200, 20, 90)), 12 * 8);
    EXPECT_EQ(shown.At(2, 8), RGB(200, 20, 90));
}

TEST_P(HeaderSkin, ColumnAsWideAsANumberCanBeIsPaintedLikeOneThatLeavesTheHeader) {
    Make({{60, HDF_STRING, "Name"}, {1'000, HDF_STRING, "Wide"}, {50, HDF_STRING, "Beyond"}});
    const Picture shown = Shown();
    HDITEMA item{};
    item.mask = HDI_WIDTH;
    for (const int width : {100'000, 0x4000'0000, 0x7FFF'FFF0}) {
        SCOPED_TRACE(width);
        item.cxy = width;
        ASSERT_TRUE(::SendMessageA(header, HDM_SETITEMA, 1, reinterpret_cast<LPARAM>(&item)));
        const DWORD start = ::GetTickCount();
        EXPECT_EQ(Shown(), shown);
        EXPECT_LT(::GetTickCount() - start, 5'000u) << "what lies outside takes no time";
    }
}

TEST_P(HeaderSkin, TextGoesBeforeABitmap) {
    const auto bitmap = MakeBitmap(12, 8, RGB(200, 20, 90));
    Make({{60, HDF_BITMAP | HDF_STRING, "Name", *bitmap}});
    const Picture shown = Shown();
    EXPECT_EQ(shown.CountOf(RGB(200, 20, 90)), 0);
    EXPECT_EQ(shown, Model());
}

TEST_P(HeaderSkin, HeaderWithAnOwnerDrawnItemPaintsNothingAtAll) {
    for (const int owner : {0, 1, 2}) {
        std::vector<Column> columns{{60, HDF_STRING, "a"}, {60, HDF_STRING, "b"}, {60, HDF_STRING, "c"}};
        columns[static_cast<std::size_t>(owner)].format = HDF_OWNERDRAW;
        Make(columns);
        ::UpdateWindow(header);
        constexpr COLORREF kMark = RGB(250, 10, 250);
        {
            CClientDC dc(header);
            dc.FillSolidRect({0, 0, kWidth, kHeight}, kMark);
        }
        Parent().log.Clear();
        ::InvalidateRect(header, nullptr, TRUE);
        ::UpdateWindow(header);
        EXPECT_EQ(PictureOfClient(header).CountOf(kMark), kWidth * kHeight) << owner;
        EXPECT_FALSE(Parent().log.Has(WM_DRAWITEM)) << "the owner isn't asked either";
        EXPECT_FALSE(::GetUpdateRect(header, nullptr, FALSE)) << "though it counts as painted";
        m_columns.clear();
        ::DestroyWindow(header);
    }
}

TEST_P(HeaderSkin, MissingBitmapsAreSkipped) {
    skin.RemoveBitmaps(skinHeadCtrl);
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    Make({{60, HDF_STRING, "Name"}});
    Press(MiddleOf(0));
    const Picture shown = Shown();
    EXPECT_EQ(shown.CountOf(RGB(0, 0, 0)), kWidth * kHeight) << "black text on what is left black";
}

// ---------------------------------------------------------------- messages

TEST_P(HeaderSkin, EraseIsAnsweredWithNothingDone) {
    Make({});
    ClassSpy below("SysHeader32");
    HWND other = CreateControl(GetParam().charset, Parent(), "SysHeader32", "", 0, {10, 60, 100, 80});
    below.log.Clear();
    Canvas canvas(30, 20, RGB(1, 2, 3));
    EXPECT_EQ(::SendMessageA(other, WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0), 1);
    EXPECT_EQ(canvas.Take().CountOf(RGB(1, 2, 3)), 600);
    EXPECT_FALSE(below.log.Has(WM_ERASEBKGND));
    ::InvalidateRect(other, nullptr, TRUE);
    EXPECT_EQ(::SendMessageA(other, WM_PAINT, 0, 0), 0);
    EXPECT_FALSE(below.log.Has(WM_PAINT));
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_NOTIFY, WM_MOUSEMOVE, WM_RBUTTONDOWN}) {
        below.log.Clear();
        NMHDR notice{};
        ::SendMessageA(other, message, 0, message == WM_NOTIFY ? reinterpret_cast<LPARAM>(&notice) : 0);
        EXPECT_TRUE(below.log.Has(message)) << message << " goes on";
    }
    ::ReleaseCapture();
    ::DestroyWindow(other);
}

TEST_P(HeaderSkin, PressShowsTheItemPressedUntilTheReleaseAnywhere) {
    Make({{60}, {60}, {100}, {50}});
    Validate();
    Press(MiddleOf(2));
    CRect strip = ItemRect(2);
    strip.SetRect(strip.left + 2, strip.top + 1, strip.right - 1, strip.bottom - 2);
    EXPECT_TRUE(Invalid() == strip) << "without its edges";
    EXPECT_EQ(Shown(), Model(2));
    Validate();
    LetGo({5, 200});
    EXPECT_TRUE(Invalid() == ItemRect(2)) << "with its edges";
    EXPECT_EQ(Shown(), Model());
    Validate();
    LetGo({5, 5});
    EXPECT_TRUE(Invalid().IsRectEmpty()) << "there is nothing to release";
}

TEST_P(HeaderSkin, PressOnTheEdgesOfAnItemChangesNoFace) {
    Make({{60}, {60}, {60}});
    const CRect item = ItemRect(1);
    for (int y = item.top; y < item.bottom; ++y)
        for (const int x : {item.left, item.left + 1, item.left + 2, item.right - 2, item.right - 1}) {
            Validate();
            Press({x, y});
            const bool proper = x >= item.left + 2 && x < item.right - 1 && y >= 1 && y < item.bottom - 2;
            EXPECT_EQ(!Invalid().IsRectEmpty(), proper) << x - item.left << " " << y;
            LetGo({x, y});
            ::ReleaseCapture();
        }
    EXPECT_EQ(Shown(), Model());
}

TEST_P(HeaderSkin, PressRightOfTheItemsChangesNothing) {
    Make({{60}});
    Press({200, 10});
    EXPECT_EQ(Shown(), Model());
    LetGo({200, 10});
}

TEST_P(HeaderSkin, NoPressIsNotedWhileADividerIsDragged) {
    Make({{60}, {60}});
    NMHDR notice{header, 0, 0};
    const auto notify = [&](int id) {
        ::SendMessageA(header, WM_NOTIFY, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&notice));
    };
    notify(-306);
    Press(MiddleOf(1));
    EXPECT_EQ(Shown(), Model());
    LetGo(MiddleOf(1));
    notify(-307);
    Press(MiddleOf(1));
    EXPECT_EQ(Shown(), Model(1));
    LetGo(MiddleOf(1));
}

TEST_P(HeaderSkin, CodeOfANotificationIsNotLookedAt) {
    Make({{60}, {60}});
    for (const int code : {-306, -326}) {
        NMHDR notice{header, 100, static_cast<UINT>(code)};
        ::SendMessageA(header, WM_NOTIFY, 100, reinterpret_cast<LPARAM>(&notice));
    }
    Press(MiddleOf(1));
    EXPECT_EQ(Shown(), Model(1));
    LetGo(MiddleOf(1));
}

TEST_P(HeaderSkin, ItemThatGoesWhilePressedIsNoDanger) {
    Make({{60}, {60}});
    Press(MiddleOf(1));
    ::SendMessageA(header, HDM_DELETEITEM, 1, 0);
    m_columns.pop_back();
    EXPECT_EQ(Shown(), Model());
    LetGo({5, 5});
    EXPECT_EQ(Shown(), Model());
}

TEST_P(HeaderSkin, ChangeOfSkinErasesAndRepaints) {
    Make({{60}});
    Validate();
    MessageSpy spy(header);
    skin.SetBitmap(51, 3, 9, RGB(3, 60, 90));
    ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1);
    EXPECT_TRUE(spy.log.Has(WM_NCPAINT));
    CRect whole;
    ::GetClientRect(header, &whole);
    EXPECT_TRUE(Invalid() == whole);
    spy.log.Clear();
    ::UpdateWindow(header);
    EXPECT_TRUE(spy.log.Has(WM_ERASEBKGND));
    EXPECT_EQ(PictureOfClient(header).At(300, 10), RGB(3, 60, 90));
}

TEST_P(HeaderSkin, MousePressesAndReleasesAsAUserDoes) {
    Make({{60, HDF_STRING, "Name"}, {80, HDF_STRING, "Size"}}, HDS_BUTTONS);
    MoveMouse(header, MiddleOf(1));
    PressMouse();
    EXPECT_EQ(Shown(), Model(1));
    ReleaseMouse();
    EXPECT_EQ(Shown(), Model());
    EXPECT_TRUE(Parent().log.Has(WM_NOTIFY)) << "the native control tells of the click";
    ParkMouse();
}

TEST_P(HeaderSkin, NativeControlStillDragsDividers) {
    Make({{60}, {80}}, HDS_BUTTONS);
    MoveMouse(header, {60, 12});
    PressMouse();
    MoveMouse(header, {95, 12});
    ReleaseMouse();
    EXPECT_EQ(ItemRect(0).right, 95);
    EXPECT_EQ(Shown(), Model());
    ParkMouse();
}

TEST_P(HeaderSkin, ParentMayBeDestroyedByAClick) {
    Make({{60, HDF_STRING, "Name"}, {80, HDF_STRING, "Size"}}, HDS_BUTTONS);
    HWND parent = Parent();
    EndParentAt({HDN_ITEMCLICKA, HDN_ITEMCLICKW});
    Press(MiddleOf(1));
    EXPECT_TRUE(::IsWindow(parent));
    LetGo(MiddleOf(1));
    EXPECT_FALSE(::IsWindow(parent));
    EXPECT_FALSE(::IsWindow(header));
    EXPECT_FALSE(IsSkinned(header));
}

TEST_P(HeaderSkin, ParentMayBeDestroyedWhileItIsAskedForATextToPaint) {
    Make({{60, HDF_STRING, "Name"}});
    AddColumnToAskFor(90);
    HWND parent = Parent();
    EndParentAt({HDN_GETDISPINFOA, HDN_GETDISPINFOW});
    ::InvalidateRect(header, nullptr, FALSE);
    ::UpdateWindow(header);
    EXPECT_FALSE(::IsWindow(parent));
    EXPECT_FALSE(::IsWindow(header));
    EXPECT_FALSE(IsSkinned(header));
}

// No more of it is read than a buffer takes, which in a wide column ends before the column does.
TEST_P(HeaderSkin, OfTenThousandCharactersNinetyNineAreRead) {
    const std::string wide(10'000, 'W'), narrow(10'000, 'i');
    Make({{60, HDF_STRING, wide}, {kWidth, HDF_STRING, narrow}});
    m_columns[0].text = wide.substr(0, 99);
    m_columns[1].text = narrow.substr(0, 99);
    EXPECT_EQ(Shown(), Model());
    m_columns[1].text = narrow.substr(0, 98);
    EXPECT_NE(Shown(), Model());
}

TEST_P(HeaderSkin, MissingTextIsEmpty) {
    Make({{100, HDF_STRING, "Name"}, {100, HDF_STRING, "Next"}});
    HDITEMA item{};
    item.mask = HDI_TEXT;
    ::SendMessageA(header, HDM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
    m_columns[0].text = "";
    EXPECT_EQ(Shown(), Model());
}

TEST_P(HeaderSkin, LeavesNoObjects) {
    const auto round = [this] {
        m_columns.clear();
        Make({{60, HDF_STRING, "Name"}, {80, HDF_STRING, "Size"}});
        Press(MiddleOf(1));
        Shown();
        LetGo(MiddleOf(1));
        Shown();
        ::DestroyWindow(header);
    };
    ExpectNoMoreObjects(round);
}

INSTANTIATE_TEST_SUITE_P(Worlds, HeaderSkin, kControlWorlds, NameOfWorld);

}  // namespace
}  // namespace tavix_test
