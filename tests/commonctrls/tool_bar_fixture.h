/* What the tests of the tool bar's skin share. */
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "draw/gradient.h"
#include "support/control_test.h"
#include "tavixskin.h"
#include "tavixskin/framework/gdi.h"
#include "tavixskin/framework/image_list.h"

namespace tavix_test {

/* A button as the tests make it. */
struct Button {
    BYTE style = BTNS_BUTTON;
    BYTE state = TBSTATE_ENABLED;
    int image = 0;
};

constexpr int kImageWidth = 10, kImageHeight = 8;

/* What an image list of the tests shows: two columns of nothing, one of white, the rest in one colour. */
constexpr COLORREF ImageColour(int list, int image) { return RGB(40 + 30 * list, 60 + 50 * image, 90); }
inline std::optional<COLORREF> ImagePixel(int list, int image, int x) {
    if (x < 2) return std::nullopt;
    return x == 2 ? RGB(255, 255, 255) : ImageColour(list, image);
}

class ToolBarTest : public ControlTest {
protected:
    enum List { Normal, Hot, Disabled };
    enum class Effect { None, Plain, Lifted, Pushed, Engraved, Silhouette };

    /* What a button is to show. */
    struct Look {
        DWORD face = 0;  // a bitmap's number, 0 for none
        enum { Whole, LessOne } height = Whole;
        bool arrow = false;
        List list = Normal;
        Effect effect = Effect::None;
    };

    void PrepareSkin() override {
        skin.SetBitmapSize(70, 7, 5).SetBitmapSize(71, 6, 9).SetBitmapSize(74, 11, 80);
        skin.SetBitmapSize(75, 5, 3).SetBitmapSize(76, 9, 4).SetBitmapSize(77, 3, 6);
    }
    void SetUp() override {
        ControlTest::SetUp();
        for (const List list : {Normal, Hot, Disabled}) {
            ASSERT_TRUE(images[list].Create(kImageWidth, kImageHeight, ILC_COLOR24 | ILC_MASK, 2, 2));
            for (const int image : {0, 1}) {
                const auto bitmap = MakeBitmap(kImageWidth, kImageHeight, [&](int x, int) {
                    return ImagePixel(list, image, x).value_or(RGB(255, 0, 255));
                });
                ASSERT_EQ(images[list].AddMasked(*bitmap, RGB(255, 0, 255)), image);
            }
        }
    }
    static constexpr DWORD kBarStyle = CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER;

    /* A bar at (20, 30) of the parent; its button i has the command 100 + i. */
    void Make(const std::vector<Button>& buttons, int height = 40, DWORD style = 0) {
        bar = CreateControl(GetParam().charset, Parent(), "ToolbarWindow32", "", kBarStyle | style,
                            {20, 30, 320, 30 + height});
        ASSERT_TRUE(IsSkinned(bar));
        // Its client area was measured before it had a skin.
        ::SetWindowPos(bar, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
        ::SendMessageA(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
        ::SendMessageA(bar, TB_SETBITMAPSIZE, 0, MAKELPARAM(kImageWidth, kImageHeight));
        ::SendMessageA(bar, TB_SETBUTTONSIZE, 0, MAKELPARAM(30, 22));
        Use(Normal);
        std::vector<TBBUTTON> facts;
        for (const Button& button : buttons) {
            TBBUTTON one{};
            one.iBitmap = button.image;
            one.idCommand = 100 + static_cast<int>(facts.size());
            one.fsState = button.state;
            one.fsStyle = button.style;
            one.iString = -1;
            facts.push_back(one);
        }
        ASSERT_TRUE(
            ::SendMessageA(bar, TB_ADDBUTTONSA, facts.size(), reinterpret_cast<LPARAM>(facts.data())));
        ::UpdateWindow(bar);
    }
    void Use(List list) {
        const UINT messages[] = {TB_SETIMAGELIST, TB_SETHOTIMAGELIST, TB_SETDISABLEDIMAGELIST};
        ::SendMessageA(bar, messages[list], 0,
                       reinterpret_cast<LPARAM>(static_cast<HIMAGELIST>(images[list])));
    }
    TBBUTTON Facts(int index) const {
        TBBUTTON facts{};
        ::SendMessageA(bar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&facts));
        return facts;
    }
    void SetState(int index, BYTE state) {
        ::SendMessageA(bar, TB_SETSTATE, static_cast<WPARAM>(100 + index), MAKELPARAM(state, 0));
    }
    CRect ItemRect(int index) const {
        CRect rect;
        ::SendMessageA(bar, TB_GETITEMRECT, static_cast<WPARAM>(index),
                       reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect)));
        return rect;
    }
    CPoint MiddleOf(int index) const {
        const CRect rect = ItemRect(index);
        return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    }
    /* A place of the bar where no button is. */
    CPoint Nowhere() const { return {ClientSize().cx - 4, ClientSize().cy / 2}; }
    CSize ClientSize() const {
        CRect client;
        ::GetClientRect(bar, &client);
        return client.Size();
    }
    CSize WindowSize() const {
        CRect window;
        ::GetWindowRect(bar, &window);
        return window.Size();
    }
    Picture Shown() { return RepaintedClient(bar); }
    /* As the native control would tell the skin; the pointer stays where it is. */
    LRESULT Move(CPoint to) { return ::SendMessageA(bar, WM_MOUSEMOVE, 0, MAKELPARAM(to.x, to.y)); }
    LRESULT Press(CPoint at) {
        return ::SendMessageA(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    }
    LRESULT LetGo(CPoint at) { return ::SendMessageA(bar, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y)); }

    static COLORREF Flat(DWORD bitmap) { return TestSkin::ColourOfBitmap(bitmap); }

    /* The client area as it ought to look, a look a button; nullopt for a button that doesn't show. */
    Picture Model(const std::vector<std::optional<Look>>& looks) {
        const CSize size = ClientSize(), window = WindowSize();
        Canvas canvas(size.cx, size.cy, Flat(74));
        CDC dc(canvas.Dc());
        // A flat parent goes on through a low bar.
        if (window.cy <= 30) dc.FillSolidRect(canvas.Area(), Parent().background);
        for (int i = 0; i < static_cast<int>(looks.size()); ++i)
            if (const auto& look = looks[static_cast<std::size_t>(i)]) Draw(dc, i, *look, size.cy);
        ::GdiFlush();
        return canvas.Take();
    }

    CImageList images[3];
    HWND bar = nullptr;

private:
    void Draw(CDC& dc, int index, const Look& look, int clientHeight) {
        const CRect rect = ItemRect(index);
        if (look.face) {
            const int height =
                look.height == Look::LessOne ? rect.Height() - 1 : std::min(rect.Height(), clientHeight);
            dc.FillSolidRect(CRect(rect.left, rect.top, rect.right, rect.top + height), Flat(look.face));
        }
        if (look.arrow) {
            const CPoint end(rect.right - 3, rect.bottom - 5);
            const SIZE arrow = skin.BitmapSize(75);
            dc.FillSolidRect(CRect(end.x - arrow.cx, end.y - arrow.cy, end.x, end.y), Flat(75));
        }
        const int image = Facts(index).iBitmap;
        const CPoint at(rect.left + (rect.Width() - kImageWidth) / 2 - 1,
                        rect.top + (rect.Height() - kImageHeight) / 2 - 1);
        const auto draw = [&](int shift, std::optional<COLORREF> shape) {
            for (int x = 0; x < kImageWidth; ++x) {
                const auto pixel = ImagePixel(look.list, image, x);
                if (!pixel || (shape && *pixel == RGB(255, 255, 255))) continue;
                for (int y = 0; y < kImageHeight; ++y)
                    ::SetPixel(dc, at.x + x + shift, at.y + y + shift, shape.value_or(*pixel));
            }
        };
        switch (look.effect) {
            case Effect::None:
                break;
            case Effect::Plain:
                draw(0, {});
                break;
            case Effect::Lifted:
                draw(1, {});
                draw(-1, {});
                break;
            case Effect::Pushed:
                draw(1, {});
                break;
            case Effect::Engraved:
                draw(1, ::GetSysColor(COLOR_3DHILIGHT));
                draw(0, ::GetSysColor(COLOR_3DSHADOW));
                break;
            case Effect::Silhouette:
                draw(0, ::GetSysColor(COLOR_GRAYTEXT));
                break;
        }
    }
};

}  // namespace tavix_test
