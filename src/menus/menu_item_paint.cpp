// Items of a popup, measured and drawn. Members are those of menu_skin.h.
#include <algorithm>

#include "draw/bitmap_draw.h"
#include "draw/offscreen.h"
#include "draw/skin_bitmap.h"
#include "engine/skin_values.h"
#include "menus/menu_skin.h"

namespace {

constexpr int kSeparatorHeight = 12;
constexpr int kHeightMargin = 3;
constexpr int kWidthMargin = 40;  // the stripe, and room at the end
constexpr int kStripeEnd = 20;    // where captions' ground begins, in the popup's own co-ordinates
constexpr COLORREF kGround = 0xFFFFFF;
constexpr COLORREF kMarkKey = 0xCFCBC2;  // transparent in the check and radio marks
constexpr int kMarkSide = 16;

bool IsSystemCommand(UINT id) {
    const UINT command = id & 0xFFF0;
    return command >= SC_SIZE && command <= 0xF150;
}

/* The caption as it shows: a single "&" is gone, a double one is one. */
CString ShownText(const char* caption) {
    CString shown;
    char* out = shown.GetBuffer(::lstrlenA(caption));
    while (*caption) {
        if (*caption == '&') {
            ++caption;
            if (*caption != '&') continue;
        } else if (::IsDBCSLeadByte(static_cast<BYTE>(*caption)) && caption[1]) {
            *out++ = *caption++;
        }
        *out++ = *caption++;
    }
    *out = '\0';
    shown.ReleaseBuffer();
    return shown;
}

/* The mark of a checked item. */
struct CheckMark {
    CBitmap* bitmap = nullptr;
    CRect place;
};

CheckMark MarkOf(const DRAWITEMSTRUCT& item, const CSkinMenuItem& record, CRect stripe) {
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_CHECKMARKS;
    ::GetMenuItemInfoA(reinterpret_cast<HMENU>(item.hwndItem), static_cast<UINT>(record.m_nPosition), TRUE,
                       &info);
    stripe.DeflateRect(3, 3);
    CBitmap* bitmap = tavix::SkinBitmap(BMP_MENU_CHECK);
    // A host's own check bitmap is never drawn: it only chooses the other mark.
    if ((info.fType & MFT_RADIOCHECK) || info.hbmpChecked) {
        stripe.InflateRect(4, 1);
        bitmap = tavix::SkinBitmap(BMP_MENU_RADIO);
    }
    return {bitmap, CRect(stripe.TopLeft(), CSize(kMarkSide, kMarkSide))};
}

void DrawMark(CDC& dc, const CheckMark& mark) {
    if (!mark.bitmap) return;
    const int saved = ::SaveDC(dc);
    ::IntersectClipRect(dc, mark.place.left, mark.place.top, mark.place.right, mark.place.bottom);
    tavix::DrawTransparent(&dc, mark.bitmap, mark.place.left, mark.place.top, 0, 0, kMarkKey);
    ::RestoreDC(dc, saved);
}

bool IsSelected(const DRAWITEMSTRUCT& item) {
    return (item.itemState & (ODS_SELECTED | ODS_HOTLIGHT)) && !(item.itemState & ODS_INACTIVE);
}

}  // namespace

// ---------------------------------------------------------------- measuring

/* All at once: one context serves a whole menu. */
void CSkinMenu::MeasureTexts() {
    if (!m_ItemFont.GetSafeHandle()) return;
    const CClientDC dc(nullptr);
    const SelectionGuard font(dc, m_ItemFont.GetSafeHandle());
    for (const auto& record : m_arrItems) {
        CSize& size = record->m_textSize;
        if (size.cx >= 0) continue;
        const CString text = ShownText(record->m_strText);
        if (!::GetTextExtentPoint32A(dc, text, text.GetLength(), &size)) size = CSize();
    }
}

void CSkinMenu::MeasureItem(MEASUREITEMSTRUCT& item, CSkinMenuItem& record) {
    if (record.m_nFlags & MF_SEPARATOR) {
        item.itemHeight = kSeparatorHeight;
        return;
    }
    if (record.m_textSize.cx < 0) MeasureTexts();
    const CSize text(std::max<LONG>(record.m_textSize.cx, 0), std::max<LONG>(record.m_textSize.cy, 0));
    item.itemHeight = static_cast<UINT>(std::max<LONG>(text.cy, m_nMinItemHeight) + kHeightMargin);
    LONG width = text.cx;

    // A system command is as wide as the item after it too, which may be another one.
    UINT id = item.itemID;
    auto at = std::ranges::find_if(m_arrItems, [&](const auto& entry) { return entry.get() == &record; });
    while (at != m_arrItems.end() && IsSystemCommand(id)) {
        at = std::find_if(at + 1, m_arrItems.end(), [](const auto& entry) { return entry->m_nID != 0; });
        if (at == m_arrItems.end()) break;
        id = static_cast<UINT>((*at)->m_nID);
        width = std::max(width, (*at)->m_textSize.cx);
    }
    item.itemWidth = static_cast<UINT>(width + kWidthMargin);
}

// ---------------------------------------------------------------- drawing

void CSkinMenu::DrawItem(const DRAWITEMSTRUCT& item, const CSkinMenuItem& record) {
    const CRect full(item.rcItem);
    // Sums of co-ordinates below stay in range.
    constexpr LONG kFarthest = 0xFFFF;
    if (full.IsRectEmpty() || full.left < -kFarthest || full.top < -kFarthest || full.right > kFarthest ||
        full.bottom > kFarthest)
        return;
    CRect stripe(full);
    stripe.right = kStripeEnd;
    CRect textRect(full);
    textRect.left = kStripeEnd;
    const bool isChecked = (item.itemState & ODS_CHECKED) != 0;
    const CheckMark mark = isChecked ? MarkOf(item, record, stripe) : CheckMark{};
    // One that reaches beyond the item is drawn on the target itself.
    RECT united;
    ::UnionRect(&united, &full, &mark.place);
    const bool markFits = full == united;

    tavix::PaintOffscreen(item.hDC, full, [&](CDC& dc) {
        const bool isSeparator = (record.m_nFlags & MF_SEPARATOR) != 0;
        const bool isSelected = !isSeparator && IsSelected(item);
        if (isSelected) {
            const COLORREF line = tavix::SkinColour(CLR_MENU_SEL_BORDER);
            dc.FillSolidRect(full, tavix::SkinColour(CLR_MENU_SEL_BACK));
            dc.Draw3dRect(full, line, line);
        } else {
            // White lies over the stripe of an item: the skin's stripe shows beneath the items only.
            if (!stripe.IsRectEmpty()) dc.FillSolidRect(stripe, kGround);
            dc.FillSolidRect(textRect, tavix::SkinColour(CLR_MENU_TEXT_BACK));
        }
        textRect.left += 6;
        textRect.right -= 12;
        if (isSeparator) {
            const int middle = full.top + full.Height() / 2;
            dc.FillSolidRect({textRect.left, middle, full.right, middle + 1},
                             tavix::SkinColour(CLR_MENU_SEPARATOR));
        } else {
            DrawItemText(dc, item, record, textRect);
        }
        DrawCommandGlyph(dc, item, stripe);
        if (isChecked && markFits) DrawMark(dc, mark);
    });

    CDC target(item.hDC);
    // The system draws a submenu's arrow on it, in places as a picture of two colours.
    ::SetBkColor(target, tavix::SkinColour(IsSelected(item) ? CLR_MENU_SEL_BACK : CLR_MENU_TEXT_BACK));
    if (isChecked && !markFits)
        DrawMark(target, mark);
    else if (!isChecked && record.m_pImageList)
        DrawIcon(target, item, *record.m_pImageList, stripe);
}

void CSkinMenu::DrawItemText(CDC& dc, const DRAWITEMSTRUCT& item, const CSkinMenuItem& record,
                             RECT textRect) const {
    int colour = COLOR_WINDOWTEXT;
    if (item.itemState & (ODS_GRAYED | ODS_DISABLED))
        colour = COLOR_GRAYTEXT;
    else if (IsSelected(item))
        colour = COLOR_HIGHLIGHTTEXT;
    const SelectionGuard font(dc, m_ItemFont.GetSafeHandle());
    ::SetBkMode(dc, TRANSPARENT);
    const COLORREF former = ::SetTextColor(dc, ::GetSysColor(colour));
    const char* text = record.m_strText;
    const char* tab = std::find(text, text + record.m_strText.GetLength(), '\t');
    dc.DrawText(text, static_cast<int>(tab - text), textRect, DT_VCENTER | DT_SINGLELINE);
    if (*tab && tab[1]) dc.DrawText(tab + 1, -1, textRect, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
    ::SetTextColor(dc, former);
}

/* In a system menu four commands have the pictures of their caption buttons. */
void CSkinMenu::DrawCommandGlyph(CDC& dc, const DRAWITEMSTRUCT& item, RECT stripe) {
    if (!IsSystemCommand(item.itemID)) return;
    char glyph = 0;
    switch (item.itemID & 0xFFF0) {
        case SC_CLOSE:
            glyph = 'r';
            break;
        case SC_MINIMIZE:
            glyph = '0';
            break;
        case SC_MAXIMIZE:
            glyph = '1';
            break;
        case SC_RESTORE:
            glyph = '2';
            break;
        default:
            return;
    }
    constexpr int kGlyphHeight = 16;
    CRect rect(stripe);
    rect.InflateRect(0, (kGlyphHeight - rect.Height()) >> 1);
    const bool isBold = (item.itemState & ODS_DEFAULT) != 0;
    const COLORREF former = ::GetTextColor(dc);
    if (item.itemState & (ODS_GRAYED | ODS_INACTIVE)) {
        ::SetTextColor(dc, ::GetSysColor(COLOR_GRAYTEXT));
    } else if (IsSelected(item)) {
        // Embossed: in the selection's colour, and again two pixels up and left in the surface's own, black.
        ::SetTextColor(dc, ::GetSysColor(COLOR_HIGHLIGHTTEXT));
        rect.OffsetRect(1, 1);
        DrawGlyph(dc, rect, glyph, isBold);
        ::SetTextColor(dc, former);
        rect.OffsetRect(-2, -2);
    } else {
        ::SetTextColor(dc, ::GetSysColor(COLOR_WINDOWTEXT));
    }
    DrawGlyph(dc, rect, glyph, isBold);
    ::SetTextColor(dc, former);
}

void CSkinMenu::DrawGlyph(CDC& dc, RECT rect, char glyph, bool isBold) {
    CRect inner(rect);
    inner.DeflateRect(2, 2);
    const LONG weight = isBold ? FW_BOLD : FW_NORMAL;
    if (!m_GlyphFont.GetSafeHandle() || m_nGlyphHeight != inner.Height() || m_nGlyphWeight != weight) {
        LOGFONTA font{};
        font.lfHeight = -inner.Height();
        font.lfWeight = weight;
        font.lfCharSet = DEFAULT_CHARSET;
        ::lstrcpynA(font.lfFaceName, "Marlett", LF_FACESIZE);
        if (!m_GlyphFont.CreateFontIndirect(font)) return;
        m_nGlyphHeight = inner.Height();
        m_nGlyphWeight = weight;
    }
    const SelectionGuard font(dc, m_GlyphFont.GetSafeHandle());
    ::SetBkMode(dc, TRANSPARENT);
    dc.DrawText(&glyph, 1, inner, DT_CENTER | DT_SINGLELINE);
}

void CSkinMenu::DrawIcon(CDC& dc, const DRAWITEMSTRUCT& item, const CImageList& icons,
                         const RECT& stripe) const {
    enum { kNormal, kHot, kDisabled };
    int width = 0;
    int height = 0;
    if (!::ImageList_GetIconSize(icons, &width, &height)) return;
    const POINT at{stripe.left + 4, stripe.top + 5};
    const auto draw = [&](int icon, POINT place) { icons.Draw(dc, icon, place.x, place.y, ILD_TRANSPARENT); };
    const auto drawMono = [&](int colour, POINT place) {
        HICON icon = ::ImageList_GetIcon(icons, kNormal, ILD_NORMAL);
        if (!icon) return;
        const CBrush brush(::GetSysColor(colour));
        ::DrawStateA(dc, brush, nullptr, reinterpret_cast<LPARAM>(icon), 0, place.x, place.y, width, height,
                     DST_ICON | DSS_MONO);
        ::DestroyIcon(icon);
    };
    if (item.itemState & ODS_GRAYED) {
        if (icons.GetImageCount() > kDisabled)
            draw(kDisabled, at);
        else
            drawMono(COLOR_GRAYTEXT, at);
    } else if (item.itemState & (ODS_SELECTED | ODS_HOTLIGHT | ODS_INACTIVE)) {
        const POINT lower{at.x + 1, at.y + 1};
        if (icons.GetImageCount() > kHot) {
            draw(kHot, lower);
        } else {
            drawMono(COLOR_3DDKSHADOW, lower);
            draw(kNormal, {at.x - 1, at.y - 1});
        }
    } else {
        draw(kNormal, at);
    }
}
