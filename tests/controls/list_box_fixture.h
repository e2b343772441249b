/* What the tests of the list box skin share. */
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/control_test.h"
#include "tavixskin/framework/geometry.h"

namespace tavix_test {

constexpr int kListId = 321;
constexpr int kListBarId = 10001;
// The margins of the tests' skin: each of its own extent.
constexpr int kLeftEdge = 3, kTopEdge = 2, kRightEdge = 4, kBottomEdge = 5;
constexpr int kItemHeight = 12;
inline const CPoint kListPlace{20, 10};

/* A skin whose list boxes have a frame of unequal edges. */
class ListBoxTest : public ControlTest {
protected:
    void PrepareSkin() override {
        for (DWORD corner : {57u, 58u, 59u, 60u}) skin.SetBitmapSize(corner, 6, 6);
        skin.SetBitmapSize(61, 7, kTopEdge).SetBitmapSize(64, 9, kBottomEdge);
        skin.SetBitmapSize(62, kLeftEdge, 7).SetBitmapSize(63, kRightEdge, 5);
    }

    /* A list whose client area has that size, with items "Item 0" and so on, laid out. */
    HWND MakeList(DWORD listStyle, int itemCount, CSize client = {200, 96}, int height = kItemHeight) {
        const CSize outer(client.cx + kLeftEdge + kRightEdge, client.cy + kTopEdge + kBottomEdge);
        list = CreateControl(GetParam().charset, Parent(), "ListBox", "", listStyle | LBS_NOINTEGRALHEIGHT,
                             CRect(kListPlace, outer), kListId);
        EXPECT_EQ(VersionOf(list), GetParam().controls);
        EXPECT_TRUE(IsSkinned(list));
        if (height) Send(LB_SETITEMHEIGHT, 0, height);
        for (int i = 0; i < itemCount; ++i) Add("Item " + std::to_string(i));
        LayOut();
        ::UpdateWindow(list);
        Parent().log.Listen({WM_COMMAND});
        Parent().log.Clear();
        return list;
    }
    /* The list has the focus, and nothing of that is in the log. */
    HWND MakeFocused(DWORD listStyle, int count, CSize client = {200, 96}) {
        MakeList(listStyle, count, client);
        EXPECT_TRUE(BringToFront(Parent()));
        ::SetFocus(list);
        Parent().log.Clear();
        return list;
    }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageA(list, message, wParam, lParam);
    }
    int Add(const std::string& text) {
        return static_cast<int>(Send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())));
    }
    int Insert(int at, const std::string& text) {
        return static_cast<int>(
            Send(LB_INSERTSTRING, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(text.c_str())));
    }
    /* What a new size brings about, with the size that the list has. */
    void LayOut() {
        CRect client;
        ::GetClientRect(list, &client);
        Send(WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
    }
    void Resize(CSize client) {
        ::SetWindowPos(list, nullptr, 0, 0, client.cx + kLeftEdge + kRightEdge,
                       client.cy + kTopEdge + kBottomEdge, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    HWND Bar() const { return ::GetDlgItem(list, kListBarId); }
    bool BarShows() const { return Bar() && ::IsWindowVisible(Bar()); }
    SCROLLINFO BarInfo() const { return ScrollInfoOf(Bar()); }
    int Rows() const { return static_cast<int>(BarInfo().nPage); }
    int Pos() const { return BarInfo().nPos; }
    int Top() { return static_cast<int>(Send(LB_GETTOPINDEX)); }
    int Current() { return static_cast<int>(Send(LB_GETCURSEL)); }
    int Count() { return static_cast<int>(Send(LB_GETCOUNT)); }
    void SetTop(int item) { ASSERT_EQ(Send(LB_SETTOPINDEX, static_cast<WPARAM>(item)), 0); }
    std::vector<int> Marked() {
        const LRESULT count = Send(LB_GETSELCOUNT);
        if (count < 0) return {-1};
        std::vector<int> items(static_cast<std::size_t>(count));
        EXPECT_EQ(Send(LB_GETSELITEMS, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(items.data())),
                  count);
        return items;
    }
    void Mark(std::initializer_list<int> items) {
        for (int item : items) ASSERT_EQ(Send(LB_SETSEL, TRUE, item), 1);
        Parent().log.Clear();
    }
    void Select(int item) {
        ASSERT_EQ(Send(LB_SETCURSEL, static_cast<WPARAM>(item)), 1);
        Parent().log.Clear();
    }

    /* The codes of the list's notifications since the last call, in order. Each is checked whole. */
    std::vector<int> Told() {
        std::vector<int> codes;
        for (const Received& received : Parent().log.Entries()) {
            if (received.message != WM_COMMAND) continue;
            EXPECT_EQ(LOWORD(received.wParam), kListId);
            EXPECT_EQ(received.lParam, reinterpret_cast<LPARAM>(list));
            codes.push_back(HIWORD(received.wParam));
        }
        Parent().log.Clear();
        return codes;
    }
    using Codes = std::vector<int>;

    static LPARAM Packed(POINT point) { return MAKELPARAM(point.x, point.y); }
    static POINT RowPoint(int row, int x = 20) { return {x, row * kItemHeight + kItemHeight / 2}; }
    void Press(POINT at, WPARAM keys = 0) { Send(WM_LBUTTONDOWN, MK_LBUTTON | keys, Packed(at)); }
    void LetGo(POINT at) { Send(WM_LBUTTONUP, 0, Packed(at)); }
    void Key(WORD key) { Send(WM_KEYDOWN, key, 1); }
    void Scroll(int code, int position = 0) { Send(WM_VSCROLL, MAKEWPARAM(code, position), 0); }
    CRect Invalid() const {
        CRect rect;
        ::GetUpdateRect(list, &rect, FALSE);
        return rect;
    }
    void Validate() { ::ValidateRect(list, nullptr); }

    HWND list = nullptr;
};

}  // namespace tavix_test
