/* CSkinMenu: the skin of a popup menu's window, class "#32768". */
#pragma once

#include <memory>
#include <vector>

#include "draw/drop_shadow.h"
#include "engine/skin_wnd_base.h"
#include "menus/menu_item.h"
#include "tavixskin/framework/gdi.h"

/*
 * Paints the popup's frame and shadow. The window doesn't tell which menu it shows; once it is
 * bound to the menu (menu_binding.h), the menu's items are the library's to paint, and go back to
 * the host when the window ends.
 */
class CSkinMenu : public CSkinWndBaseClass {
    DECLARE_DYNAMIC(CSkinMenu)
public:
    /* Takes the menu that waits for its window, if there is one; else this waits for its menu. */
    CSkinMenu();
    ~CSkinMenu() override;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /* Shows this menu from now on. One that is none has no items. */
    void BindMenu(HMENU menu);
    HMENU Menu() const { return m_hMenu; }
    void SetOwnerWindow(HWND window) { m_hOwnerWnd = window; }
    HWND OwnerWindow() const { return m_hOwnerWnd; }
    HMENU ParentMenu() const { return m_hParentMenu; }
    bool IsSubMenu() const { return m_bIsSubMenu != 0; }
    CPoint WindowPosition() const { return m_ptWindow; }
    bool HasBackdrop() const { return static_cast<bool>(m_backdrop); }

    // menu_conversion.cpp
    /* Turns all items of the menu to owner-draw, with a record of this skin as their data. */
    void ConvertItems();
    /* Gives the items back as they were, less what the host changed meanwhile. Safe at any time. */
    void RestoreItems();
    const std::vector<std::unique_ptr<CSkinMenuItem>>& Items() const { return m_arrItems; }

    // menu_item_paint.cpp
    void MeasureItem(MEASUREITEMSTRUCT& item, CSkinMenuItem& record);
    void DrawItem(const DRAWITEMSTRUCT& item, const CSkinMenuItem& record);

private:
    LRESULT OnPaint(UINT message, WPARAM wParam, LPARAM lParam);
    void OnWindowPos(WINDOWPOS& position, bool isChanging);
    void AdjustClientRect(RECT& rect) const;
    void EraseClient(CDC dc) const;
    void PaintMargin() const;
    void CaptureBackdrop();
    void PaintFrame(HRGN region) const;
    bool HasNativeBorder() const;

    void RestoreItem(const CSkinMenuItem& record) const;
    int FindItem(const CSkinMenuItem& record) const;

    void MeasureTexts();
    void DrawItemText(CDC& dc, const DRAWITEMSTRUCT& item, const CSkinMenuItem& record, RECT textRect) const;
    void DrawCommandGlyph(CDC& dc, const DRAWITEMSTRUCT& item, RECT stripe);
    void DrawGlyph(CDC& dc, RECT rect, char glyph, bool isBold);
    void DrawIcon(CDC& dc, const DRAWITEMSTRUCT& item, const CImageList& icons, const RECT& stripe) const;

    CFont m_ItemFont;
    BOOL m_bIsSubMenu = FALSE;  // found as a submenu of another skin's menu
    HMENU m_hMenu = nullptr;
    HWND m_hOwnerWnd = nullptr;
    HMENU m_hParentMenu = nullptr;
    int m_nMinItemHeight = 20;
    tavix::ScreenBackdrop m_backdrop;
    CPoint m_ptWindow;
    std::vector<std::unique_ptr<CSkinMenuItem>> m_arrItems;

    CFont m_GlyphFont;  // of the last system command glyph
    LONG m_nGlyphHeight = 0;
    LONG m_nGlyphWeight = 0;
};
