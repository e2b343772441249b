/* What the tests of combo boxes and of their lists share. */
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/combo_box_skin.h"
#include "controls/drop_list_skin.h"
#include "support/control_test.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {

constexpr int kComboId = 140;
constexpr RECT kComboPlace{20, 20, 180, 150};

/* One combo box on the parent. */
class ComboTest : public ControlTest {
protected:
    void Make(DWORD style, int items = 0, const RECT& place = kComboPlace) {
        combo = CreateControl(GetParam().charset, Parent(), "ComboBox", "", style, place, kComboId);
        ASSERT_TRUE(combo);
        ASSERT_EQ(VersionOf(combo), GetParam().controls);
        ASSERT_TRUE(IsSkinned(combo));
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        ASSERT_TRUE(::GetComboBoxInfo(combo, &info));
        list = info.hwndList;
        edit = info.hwndItem != combo ? info.hwndItem : nullptr;
        ASSERT_TRUE(IsSkinned(list));
        for (int i = 0; i < items; ++i) Add("Item " + std::to_string(i));
        ::UpdateWindow(Parent());
        ::UpdateWindow(combo);
        Parent().log.Clear();
    }
    void MakeListOnly(int items = 0, DWORD style = 0) { Make(CBS_DROPDOWNLIST | WS_VSCROLL | style, items); }

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageA(combo, message, wParam, lParam);
    }
    LRESULT SendList(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageA(list, message, wParam, lParam);
    }
    int Add(const std::string& text) {
        return static_cast<int>(Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())));
    }
    std::string Text() {
        char buffer[300] = {};
        Send(WM_GETTEXT, sizeof buffer, reinterpret_cast<LPARAM>(buffer));
        return buffer;
    }
    int Current() { return static_cast<int>(Send(CB_GETCURSEL)); }
    bool IsOpen() { return Send(CB_GETDROPPEDSTATE) != 0; }
    void Open() {
        Send(CB_SHOWDROPDOWN, TRUE);
        ::UpdateWindow(list);
    }
    CSkinDropList& List() {
        return *static_cast<CSkinDropList*>(
            CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->Lookup(list));
    }
    CSkinComboBox& Combo() {
        return *static_cast<CSkinComboBox*>(
            CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->Lookup(combo));
    }
    HWND Bar() { return ::FindWindowExA(list, nullptr, "TavixScrollBar10", nullptr); }

    static CRect ClientOf(HWND window) {
        CRect rect;
        ::GetClientRect(window, &rect);
        return rect;
    }
    CPoint ArrowPoint() { return {ClientOf(combo).right - 4, ClientOf(combo).bottom / 2}; }
    CPoint BodyPoint() { return {10, ClientOf(combo).bottom / 2}; }
    int RowHeight() { return static_cast<int>(Send(CB_GETITEMHEIGHT, 0)); }
    CPoint RowPoint(int row) { return {12, row * RowHeight() + RowHeight() / 2}; }
    static LPARAM At(POINT point) { return MAKELPARAM(point.x, point.y); }

    /* What the parent was told by the combo box since the last time: the CBN_ codes in order. */
    std::vector<int> Notices() {
        std::vector<int> codes;
        for (const Received& received : Parent().log.Entries()) {
            if (received.message != WM_COMMAND) continue;
            EXPECT_EQ(received.lParam, reinterpret_cast<LPARAM>(combo));
            EXPECT_EQ(LOWORD(received.wParam), kComboId);
            codes.push_back(HIWORD(received.wParam));
        }
        Parent().log.Clear();
        return codes;
    }
    /* A window's rectangle in the client co-ordinates of another. */
    static CRect PlaceIn(HWND other, HWND window) {
        CRect place;
        ::GetWindowRect(window, &place);
        ::MapWindowPoints(nullptr, other, reinterpret_cast<POINT*>(static_cast<RECT*>(&place)), 2);
        return place;
    }
    static std::string WindowText(HWND window) {
        char buffer[300] = {};
        ::GetWindowTextA(window, buffer, sizeof buffer);
        return buffer;
    }

    HWND combo = nullptr;
    HWND list = nullptr;
    HWND edit = nullptr;
};

}  // namespace tavix_test
