#include "menus/menu_binding.h"

#include "draw/menu_font.h"
#include "draw/offscreen.h"
#include "draw/recolour.h"
#include "engine/skin_values.h"
#include "menus/menu_skin.h"
#include "menus/menu_state.h"

namespace tavix {
namespace {

LRESULT Forward(WNDPROC previous, const MSG& inFlight) {
    return ::CallWindowProcA(previous, inFlight.hwnd, inFlight.message, inFlight.wParam, inFlight.lParam);
}

/* Forwards with the host's data in the structure, and puts the record's address back. */
LRESULT ForwardToHost(WNDPROC previous, const MSG& inFlight, ULONG_PTR& itemData, ULONG_PTR hostData) {
    const ULONG_PTR record = itemData;  // the record itself may be gone when the host returns
    itemData = hostData;
    const LRESULT result = Forward(previous, inFlight);
    itemData = record;
    return result;
}

LRESULT Measure(WNDPROC previous, const MSG& inFlight, MEASUREITEMSTRUCT& item) {
    const MenuState& menus = ThreadMenus();
    CSkinMenuItem* record = menus.RecordOf(item.itemData);
    if (!record) return Forward(previous, inFlight);
    if (!record->IsConverted())
        return ForwardToHost(previous, inFlight, item.itemData, record->m_dwHostItemData);
    if (CSkinMenu* skin = menus.FindSkinByItemId(record->m_nID)) skin->MeasureItem(item, *record);
    return 0;
}

/*
 * The host draws in the system's colours, on a surface of its own; what it left blank and what it
 * painted in the menu's or the selection's colour takes the skin's.
 */
LRESULT DrawByHost(WNDPROC previous, const MSG& inFlight, DRAWITEMSTRUCT& item, ULONG_PTR hostData) {
    constexpr COLORREF kBlank = 0xFEFEFE;
    const CRect place(item.rcItem);
    HDC target = item.hDC;
    const CRect area(CPoint(), place.Size());
    OffscreenSurface surface(target, area);
    if (!surface) return ForwardToHost(previous, inFlight, item.itemData, hostData);
    CDC& dc = surface.Dc();
    CFont font;
    CreateMenuFont(font);
    {
        const SelectionGuard selected(dc, font.GetSafeHandle());
        dc.FillSolidRect(area, kBlank);
        const int saved = ::SaveDC(dc);
        item.hDC = dc;
        item.rcItem = area;
        ForwardToHost(previous, inFlight, item.itemData, hostData);
        ::RestoreDC(dc, saved);
    }
    const COLORREF back = SkinColour(CLR_MENU_BACK);
    const ColourChange changes[] = {{::GetSysColor(COLOR_BTNFACE), back},
                                    {kBlank, back},
                                    {::GetSysColor(COLOR_HIGHLIGHT), SkinColour(CLR_HIGHLIGHT)}};
    ReplaceColours(dc, area, changes);
    ::BitBlt(target, place.left, place.top, place.Width(), place.Height(), dc, 0, 0, SRCCOPY);
    return 0;
}

LRESULT Draw(WNDPROC previous, const MSG& inFlight, DRAWITEMSTRUCT& item) {
    const MenuState& menus = ThreadMenus();
    HMENU menu = reinterpret_cast<HMENU>(item.hwndItem);
    if (!::IsMenu(menu)) return 0;
    const CSkinMenuItem* record = menus.RecordOf(item.itemData);
    if (!record) return Forward(previous, inFlight);
    if (!record->IsConverted()) return DrawByHost(previous, inFlight, item, record->m_dwHostItemData);
    CSkinMenu* skin = menus.SkinOf(menu);
    // Another skin with a record of that id would draw the same beneath: once is enough.
    if (skin && menus.FindSkinByItemId(record->m_nID)) skin->DrawItem(item, *record);
    return 0;
}

/* The key that stands behind the caption's "&", 0 if there is none. */
char MnemonicOf(const char* text) {
    for (; *text; ++text) {
        if (::IsDBCSLeadByte(static_cast<BYTE>(*text)) && text[1]) {
            ++text;
        } else if (*text == '&') {
            if (text[1] != '&') return text[1];
            ++text;
        }
    }
    return 0;
}

char Upper(char key) {
    char text[] = {key, '\0'};
    ::CharUpperBuffA(text, 1);
    return text[0];
}

/*
 * The system doesn't look into the captions of owner-draw items. A host that doesn't answer for
 * its items gets what the system does for plain ones: a single match is carried out, among
 * several the next one is selected.
 */
LRESULT AnswerMenuChar(HMENU menu, char key) {
    const CSkinMenu* skin = ThreadMenus().SkinOf(menu);
    if (!skin || skin->Menu() != menu) return MAKELRESULT(0, MNC_IGNORE);
    int matches = 0;
    int first = -1;
    int next = -1;
    bool passedSelected = false;
    for (const auto& item : skin->Items()) {
        const UINT state = ::GetMenuState(menu, static_cast<UINT>(item->m_nPosition), MF_BYPOSITION);
        if (item->IsConverted() && MnemonicOf(item->m_strText) &&
            Upper(MnemonicOf(item->m_strText)) == Upper(key)) {
            ++matches;
            if (first < 0) first = item->m_nPosition;
            if (next < 0 && passedSelected) next = item->m_nPosition;
        }
        if (state != static_cast<UINT>(-1) && (state & MF_HILITE)) passedSelected = true;
    }
    if (matches == 0) return MAKELRESULT(0, MNC_IGNORE);
    if (matches == 1) return MAKELRESULT(first, MNC_EXECUTE);
    return MAKELRESULT(next < 0 ? first : next, MNC_SELECT);
}

}  // namespace

void BindPopupMenu(HWND window, HMENU menu) {
    MenuState& menus = ThreadMenus();
    if (CSkinMenu* skin = menus.pendingSkin) {
        menus.pendingSkin = nullptr;
        menus.pendingMenu = nullptr;
        menus.SetSkinOf(menu, skin);
        if (::IsMenu(menu)) skin->BindMenu(menu);
    } else if (!menus.SkinOf(menu)) {
        menus.pendingMenu = menu;
    }
    if (!menu) return;
    if (CSkinMenu* skin = menus.SkinOf(menu)) skin->SetOwnerWindow(window);
}

void ForgetPendingPopup() {
    MenuState& menus = ThreadMenus();
    menus.pendingSkin = nullptr;
    menus.pendingMenu = nullptr;
}

LRESULT ForwardMenuMessage(WNDPROC previous, const MSG& inFlight, LPARAM lParam) {
    if (inFlight.message == WM_MEASUREITEM) {
        auto* item = reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        if (item && item->CtlType == ODT_MENU) return Measure(previous, inFlight, *item);
    } else if (inFlight.message == WM_DRAWITEM) {
        auto* item = reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
        if (item && item->CtlType == ODT_MENU) return Draw(previous, inFlight, *item);
    } else if (inFlight.message == WM_MENUCHAR) {
        if (const LRESULT answer = Forward(previous, inFlight)) return answer;
        return AnswerMenuChar(reinterpret_cast<HMENU>(inFlight.lParam),
                              static_cast<char>(LOWORD(inFlight.wParam)));
    }
    return Forward(previous, inFlight);
}

}  // namespace tavix
