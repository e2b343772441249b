/* What the tests of the tab control's skin share. */
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "draw/gradient.h"
#include "support/control_test.h"
#include "tavixskin.h"
#include "tavixskin/framework/gdi.h"

namespace tavix_test {

class TabCtrlTest : public ControlTest {
protected:
    void PrepareSkin() override {
        // Each piece of a size of its own.
        skin.SetBitmapSize(36, 5, 17).SetBitmapSize(37, 3, 18).SetBitmapSize(38, 4, 16);
        skin.SetBitmapSize(39, 6, 19).SetBitmapSize(40, 7, 20).SetBitmapSize(41, 8, 21);
        skin.SetBitmapSize(42, 9, 6).SetBitmapSize(43, 11, 4).SetBitmapSize(44, 10, 7);
        skin.SetBitmapSize(45, 2, 5).SetBitmapSize(46, 3, 7).SetBitmapSize(47, 8, 4);
        skin.SetBitmapSize(48, 7, 6).SetBitmapSize(49, 9, 8);
    }

    void Make(const std::vector<std::string>& names, RECT place = {10, 20, 270, 150}, DWORD style = 0) {
        MakeIn(Parent(), names, place, style);
    }
    void MakeIn(HWND parent, const std::vector<std::string>& names, RECT place, DWORD style = 0) {
        tabs = CreateControl(GetParam().charset, parent, "SysTabControl32", "", style, place);
        ASSERT_TRUE(IsSkinned(tabs));
        texts.clear();
        for (const std::string& name : names) Add(name);
    }
    void Add(const std::string& name) {
        TCITEMA item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<char*>(name.c_str());
        const auto index = static_cast<int>(texts.size());
        ASSERT_EQ(::SendMessageA(tabs, TCM_INSERTITEMA, 1000, reinterpret_cast<LPARAM>(&item)), index);
        texts.push_back(name);
    }
    CRect TabRect(int index) const {
        CRect rect;
        ::SendMessageA(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(index),
                       reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect)));
        return rect;
    }
    int Selected() const { return static_cast<int>(::SendMessageA(tabs, TCM_GETCURSEL, 0, 0)); }
    void Select(int index) { ::SendMessageA(tabs, TCM_SETCURSEL, static_cast<WPARAM>(index), 0); }
    CSize ClientSize() const {
        CRect client;
        ::GetClientRect(tabs, &client);
        return client.Size();
    }
    int Width(DWORD bitmap) const { return static_cast<int>(skin.BitmapSize(bitmap).cx); }
    int Height(DWORD bitmap) const { return static_cast<int>(skin.BitmapSize(bitmap).cy); }

    /* The control as it ought to look, with flat bitmaps. `parentSize` is that of the parent's client area.
     */
    Picture Model(CSize parentSize = {400, 300}, CPoint at = {10, 20}) {
        const CSize size = ClientSize();
        Canvas canvas(size.cx, size.cy, RGB(0, 0, 0));
        if (texts.empty()) return LessChildren(canvas.Take());
        CDC dc(canvas.Dc());
        const auto fill = [&](DWORD bitmap, int left, int top, int right, int bottom) {
            if (left < right && top < bottom)
                dc.FillSolidRect(CRect(left, top, right, bottom), TestSkin::ColourOfBitmap(bitmap));
        };
        const auto whole = [&](DWORD bitmap, int left, int top) {
            fill(bitmap, left, top, left + Width(bitmap), top + Height(bitmap));
        };
        tavix::DrawGradient(&dc, CRect(-at.x, -at.y, parentSize.cx - at.x, parentSize.cy - at.y),
                            skin.Colour(26), skin.Colour(27), 0, 0);
        const int top = TabRect(0).bottom + 1, corner = Height(48);
        if (size.cy - corner > top)
            dc.FillSolidRect(CRect(0, top, size.cx, size.cy - corner), skin.Colour(39));
        whole(42, 0, top);
        for (int x = Width(42); x < size.cx; x += Width(43)) whole(43, x, top);
        whole(44, size.cx - Width(44), top);
        const int limit = size.cy - top - corner;
        for (const DWORD side : {45, 46}) {
            const int left = side == 45 ? 0 : size.cx - Width(side);
            for (int y = Height(42); y < limit; y += Height(side)) {
                const bool last = y + corner >= limit;
                const int height = last ? std::min(limit - y, Height(side)) : Height(side);
                fill(side, left, top + y, left + Width(side), top + y + height);
            }
        }
        whole(48, 0, size.cy - corner);
        fill(47, Width(48), size.cy - Height(47), size.cx - Width(46), size.cy);
        whole(49, size.cx - Width(49), size.cy - Height(49));

        ::SetBkMode(dc, TRANSPARENT);
        const SelectionGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
        for (int i = 0; i < static_cast<int>(texts.size()); ++i) {
            const bool selected = i == Selected();
            const DWORD left = selected ? 39 : 36, middle = left + 1, right = left + 2;
            CRect rect = TabRect(i);
            whole(left, rect.left, rect.top);
            fill(middle, rect.left + Width(left), rect.top, rect.right, rect.top + Height(middle));
            whole(right, rect.right - Width(right), rect.top);
            ::SetTextColor(dc, selected ? 0xFFFFFF : ::GetSysColor(COLOR_WINDOWTEXT));
            dc.DrawText(texts[static_cast<std::size_t>(i)].c_str(), -1, rect,
                        DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        }
        ::GdiFlush();
        return LessChildren(canvas.Take());
    }
    /* Black where the arrows are that scroll through tabs which find no room: they paint themselves. */
    Picture LessChildren(Picture picture) const {
        for (HWND child = ::GetWindow(tabs, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
            if (!::IsWindowVisible(child)) continue;
            CRect rect;
            ::GetWindowRect(child, &rect);
            ::MapWindowPoints(nullptr, tabs, reinterpret_cast<POINT*>(static_cast<RECT*>(&rect)), 2);
            for (int i = 0; i < picture.width * picture.height; ++i)
                if (rect.PtInRect({i % picture.width, i / picture.width}))
                    picture.pixels[static_cast<std::size_t>(i)] = RGB(0, 0, 0);
        }
        return picture;
    }
    Picture Shown() { return LessChildren(RepaintedClient(tabs)); }

    HWND tabs = nullptr;
    std::vector<std::string> texts;  // as they are to be shown
};

}  // namespace tavix_test
