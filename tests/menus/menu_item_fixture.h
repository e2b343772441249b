/* Items under test: an open popup, its items measured and drawn through the owner's messages. */
#pragma once

#include "menu_fixture.h"

namespace tavix_test {

inline constexpr COLORREF kWhite = RGB(255, 255, 255);
inline constexpr COLORREF kUntouched = RGB(1, 2, 3);
inline constexpr COLORREF kMarkKey = 0xCFCBC2;
inline constexpr RECT kPlace{3, 2, 203, 25};  // 200 by 23

class MenuItem : public MenuTest {
protected:
    MenuItem() {
        // Grounds that differ from all else, and from the system's text colours.
        skin.SetBitmap(BMP_MENU_CHECK, 16, 16, RGB(200, 10, 20));
        skin.SetBitmap(BMP_MENU_RADIO, 16, 16, RGB(10, 200, 20));
    }
    void SetUp() override {
        MenuTest::SetUp();
        menu.emplace();
    }
    void TearDown() override {
        m_popup.reset();
        menu.reset();
        MenuTest::TearDown();
    }

    void Open() {
        m_popup.emplace();
        m_popup->Bind(*owner, *menu);
    }
    CSkinMenuItem& Record(int position) {
        return *m_popup->Skin()->Items().at(static_cast<std::size_t>(position));
    }
    MEASUREITEMSTRUCT Measured(int position) {
        MEASUREITEMSTRUCT item{};
        item.CtlType = ODT_MENU;
        item.itemID = static_cast<UINT>(Record(position).m_nID);
        item.itemWidth = 7;
        item.itemHeight = 7;
        item.itemData = reinterpret_cast<ULONG_PTR>(&Record(position));
        m_result = ::SendMessageA(*owner, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item));
        return item;
    }
    DRAWITEMSTRUCT Drawing(int position, UINT state, HDC dc, const RECT& place = kPlace) {
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_MENU;
        item.itemID = static_cast<UINT>(Record(position).m_nID);
        item.itemAction = ODA_DRAWENTIRE;
        item.itemState = state;
        item.hwndItem = reinterpret_cast<HWND>(static_cast<HMENU>(*menu));
        item.hDC = dc;
        item.rcItem = place;
        item.itemData = reinterpret_cast<ULONG_PTR>(&Record(position));
        return item;
    }
    Picture Drawn(int position, UINT state = 0, const RECT& place = kPlace) {
        Canvas canvas(210, 40, kUntouched);
        ::SetTextColor(canvas.Dc(), RGB(250, 250, 0));  // whatever the system has set
        DRAWITEMSTRUCT item = Drawing(position, state, canvas.Dc(), place);
        m_result = ::SendMessageA(*owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
        return canvas.Take();
    }
    /* What an item's picture is made of, drawn with the platform's own operations. */
    struct Reference {
        COLORREF stripe, ground, border, text;
    };
    Picture Expected(const Reference& look, const char* left, const char* right) const {
        Canvas canvas(210, 40, kUntouched);
        HDC dc = canvas.Dc();
        const auto fill = [dc](const RECT& rect, COLORREF colour) {
            HBRUSH brush = ::CreateSolidBrush(colour);
            ::FillRect(dc, &rect, brush);
            ::DeleteObject(brush);
        };
        fill(kPlace, look.border);
        fill({kPlace.left + 1, kPlace.top + 1, kPlace.right - 1, kPlace.bottom - 1}, look.ground);
        if (look.stripe != look.ground) {
            fill({kPlace.left, kPlace.top, 20, kPlace.bottom}, look.stripe);
            fill({20, kPlace.top, kPlace.right, kPlace.bottom}, look.ground);
        }
        HFONT font = MenuFont();
        HGDIOBJ former = ::SelectObject(dc, font);
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, look.text);
        RECT text{26, kPlace.top, kPlace.right - 12, kPlace.bottom};
        ::DrawTextA(dc, left, -1, &text, DT_VCENTER | DT_SINGLELINE);
        ::DrawTextA(dc, right, -1, &text, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
        ::SelectObject(dc, former);
        ::DeleteObject(font);
        return canvas.Take();
    }
    static HFONT MenuFont() {
        NONCLIENTMETRICSA metrics{};
        metrics.cbSize = 340;
        ::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
        return ::CreateFontIndirectA(&metrics.lfMenuFont);
    }
    static SIZE ExtentOf(const char* text) {
        HDC dc = ::GetDC(nullptr);
        HFONT font = MenuFont();
        HGDIOBJ former = ::SelectObject(dc, font);
        SIZE size{};
        ::GetTextExtentPoint32A(dc, text, ::lstrlenA(text), &size);
        ::SelectObject(dc, former);
        ::DeleteObject(font);
        ::ReleaseDC(nullptr, dc);
        return size;
    }
    Reference Plain() const {
        return {kWhite, Colour(CLR_MENU_TEXT_BACK), Colour(CLR_MENU_TEXT_BACK),
                ::GetSysColor(COLOR_WINDOWTEXT)};
    }
    Reference Selected() const {
        const COLORREF ground = Colour(CLR_MENU_SEL_BACK);
        return {ground, ground, Colour(CLR_MENU_SEL_BORDER), ::GetSysColor(COLOR_HIGHLIGHTTEXT)};
    }
    LRESULT Result() const { return m_result; }
    BarePopup& Popup() { return *m_popup; }

    std::optional<OwnedMenu> menu;

private:
    std::optional<BarePopup> m_popup;
    LRESULT m_result = -1;
};

}  // namespace tavix_test
