#include "skindata/record_tables.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "tavixskin/value_ids.h"

/*
 * One table a record, in load order: numbers first, then bitmaps. The order of the bitmaps
 * counts, because a name without a usable stream takes the bitmap of the name before it.
 */
namespace tavix {
namespace {

constexpr TSkinField Colour(std::size_t offset, DWORD id) {
    return {skinFieldColour, skinSetBoth, id, static_cast<DWORD>(offset), 0};
}
constexpr TSkinField Size(std::size_t offset, DWORD id) {
    return {skinFieldSize, skinSetBoth, id, static_cast<DWORD>(offset), 0};
}
constexpr TSkinField Rect(std::size_t offset, DWORD id) {
    return {skinFieldRect, skinSetBoth, id, static_cast<DWORD>(offset), 0};
}
constexpr TSkinField Bitmap(std::size_t offset, std::size_t slot, DWORD id, TSkinFieldSet set = skinSetBoth) {
    return {skinFieldBitmap, set, id, static_cast<DWORD>(offset), static_cast<DWORD>(slot)};
}

#define AT(member) offsetof(Record, member)
#define SLOT(index) offsetof(Record, bitmaps[index])

namespace frame {
using Record = TSkinFrameInfo;
constexpr TSkinField kFields[] = {
    Rect(AT(buttons), SZ_FRAME_BUTTONS),
    Size(AT(leftBorder), SZ_FRAME_LEFT),
    Size(AT(bottomBorder), SZ_FRAME_BOTTOM),
    Size(AT(rightBorder), SZ_FRAME_RIGHT),
    Size(AT(captionHeight), SZ_FRAME_CAPTION),
    Size(AT(menuStrip), SZ_FRAME_MENU_STRIP),
    Colour(AT(borderFrom), CLR_FRAME_BORDER_FROM),
    Colour(AT(borderTo), CLR_FRAME_BORDER_TO),
    Colour(AT(outerFrom), CLR_FRAME_OUTER_FROM),
    Colour(AT(outerTo), CLR_FRAME_OUTER_TO),
    Colour(AT(innerFrom), CLR_FRAME_INNER_FROM),
    Colour(AT(innerTo), CLR_FRAME_INNER_TO),
    Colour(AT(bottom1From), CLR_FRAME_BOTTOM1_FROM),
    Colour(AT(bottom1To), CLR_FRAME_BOTTOM1_TO),
    Colour(AT(bottom2From), CLR_FRAME_BOTTOM2_FROM),
    Colour(AT(bottom2To), CLR_FRAME_BOTTOM2_TO),
    Colour(AT(bottom3From), CLR_FRAME_BOTTOM3_FROM),
    Colour(AT(bottom3To), CLR_FRAME_BOTTOM3_TO),
    Bitmap(AT(closeNormal), SLOT(0), BMP_FRAME_CLOSE_NORMAL),
    Bitmap(AT(closeHot), SLOT(1), BMP_FRAME_CLOSE_HOT),
    Bitmap(AT(closeDown), SLOT(2), BMP_FRAME_CLOSE_DOWN),
    Bitmap(AT(maxNormal), SLOT(3), BMP_FRAME_MAX_NORMAL),
    Bitmap(AT(maxHot), SLOT(4), BMP_FRAME_MAX_HOT),
    Bitmap(AT(maxDown), SLOT(5), BMP_FRAME_MAX_DOWN),
    Bitmap(AT(minNormal), SLOT(6), BMP_FRAME_MIN_NORMAL),
    Bitmap(AT(minHot), SLOT(7), BMP_FRAME_MIN_HOT),
    Bitmap(AT(minDown), SLOT(8), BMP_FRAME_MIN_DOWN),
    Bitmap(AT(captionLeft), SLOT(9), BMP_FRAME_CAPTION_LEFT),
    Bitmap(AT(captionRight), SLOT(10), BMP_FRAME_CAPTION_RIGHT),
    Bitmap(AT(captionTile), SLOT(11), BMP_FRAME_CAPTION_TILE),
    Bitmap(AT(captionTitle), SLOT(12), BMP_FRAME_CAPTION_TITLE),
    Bitmap(AT(gripper), SLOT(13), BMP_FRAME_GRIPPER),
};
}  // namespace frame

namespace dialog {
using Record = TSkinDialogInfo;
constexpr TSkinField kFields[] = {
    Colour(AT(backFrom), CLR_DLG_BACK_FROM),
    Colour(AT(backTo), CLR_DLG_BACK_TO),
    Colour(AT(spare[0]), CLR_DLG_SPARE_28),
    Colour(AT(spare[1]), CLR_DLG_SPARE_29),
    Colour(AT(spare[2]), CLR_DLG_SPARE_30),
    Colour(AT(spare[3]), CLR_DLG_SPARE_31),
    Colour(AT(spare[4]), CLR_DLG_SPARE_32),
    Colour(AT(spare[5]), CLR_DLG_SPARE_33),
    Colour(AT(spare[6]), CLR_DLG_SPARE_34),
    Colour(AT(spare[7]), CLR_DLG_SPARE_35),
    Colour(AT(spare[8]), CLR_DLG_SPARE_36),
    Colour(AT(spare[9]), CLR_DLG_SPARE_37),
    Rect(AT(buttons), SZ_DLG_BUTTONS),
    Size(AT(leftBorder), SZ_DLG_LEFT),
    Size(AT(bottomBorder), SZ_DLG_BOTTOM),
    Size(AT(rightBorder), SZ_DLG_RIGHT),
    Size(AT(captionHeight), SZ_DLG_CAPTION),
    Bitmap(AT(closeNormal), SLOT(0), BMP_DLG_CLOSE_NORMAL),
    Bitmap(AT(closeHot), SLOT(1), BMP_DLG_CLOSE_HOT),
    Bitmap(AT(closeDown), SLOT(2), BMP_DLG_CLOSE_DOWN),
    Bitmap(AT(maxNormal), SLOT(3), BMP_DLG_MAX_NORMAL),
    Bitmap(AT(maxHot), SLOT(4), BMP_DLG_MAX_HOT),
    Bitmap(AT(maxDown), SLOT(5), BMP_DLG_MAX_DOWN),
    Bitmap(AT(minNormal), SLOT(6), BMP_DLG_MIN_NORMAL),
    Bitmap(AT(minHot), SLOT(7), BMP_DLG_MIN_HOT),
    Bitmap(AT(minDown), SLOT(8), BMP_DLG_MIN_DOWN),
    Bitmap(AT(helpNormal), SLOT(9), BMP_DLG_HELP_NORMAL),
    Bitmap(AT(helpHot), SLOT(10), BMP_DLG_HELP_HOT),
    Bitmap(AT(helpDown), SLOT(11), BMP_DLG_HELP_DOWN),
    Bitmap(AT(captionLeft), SLOT(12), BMP_DLG_CAPTION_LEFT),
    Bitmap(AT(captionRight), SLOT(13), BMP_DLG_CAPTION_RIGHT),
    Bitmap(AT(captionTile), SLOT(14), BMP_DLG_CAPTION_TILE),
};
}  // namespace dialog

namespace button {
using Record = TSkinButtonInfo;
constexpr TSkinField kFields[] = {
    Colour(AT(spare44), CLR_BTN_SPARE_44),
    Colour(AT(border), CLR_BTN_BORDER),
    Colour(AT(normalFrom), CLR_BTN_NORMAL_FROM),
    Colour(AT(normalTo), CLR_BTN_NORMAL_TO),
    Colour(AT(spare48), CLR_BTN_SPARE_48),
    Colour(AT(spare49), CLR_BTN_SPARE_49),
    Colour(AT(hotFrom), CLR_BTN_HOT_FROM),
    Colour(AT(hotTo), CLR_BTN_HOT_TO),
    Colour(AT(spare52), CLR_BTN_SPARE_52),
    Colour(AT(spare53), CLR_BTN_SPARE_53),
    Colour(AT(downFrom), CLR_BTN_DOWN_FROM),
    Colour(AT(downTo), CLR_BTN_DOWN_TO),
    Colour(AT(disabledBorder), CLR_BTN_DISABLED_BORDER),
    Colour(AT(spare57), CLR_BTN_SPARE_57),
    Colour(AT(disabledFrom), CLR_BTN_DISABLED_FROM),
    Colour(AT(disabledTo), CLR_BTN_DISABLED_TO),
    Colour(AT(groupInner), CLR_GROUP_INNER),
    Colour(AT(groupOuter), CLR_GROUP_OUTER),
    Bitmap(AT(checkOn), SLOT(0), BMP_BTN_CHECK_ON),
    Bitmap(AT(checkOff), SLOT(1), BMP_BTN_CHECK_OFF),
    Bitmap(AT(radioOn), SLOT(2), BMP_BTN_RADIO_ON),
    Bitmap(AT(radioOff), SLOT(3), BMP_BTN_RADIO_OFF),
};
}  // namespace button

namespace tool_bar {
using Record = TSkinToolBarInfo;
// The last two groups of slots stand the other way round than their names.
constexpr TSkinField kFields[] = {
    Colour(AT(backFrom), CLR_TOOL_BACK_FROM),
    Colour(AT(backTo), CLR_TOOL_BACK_TO),
    Bitmap(AT(spare), AT(buttonBitmaps[0]), BMP_TOOL_SPARE),
    Bitmap(AT(buttonHot), AT(buttonBitmaps[1]), BMP_TOOL_BTN_HOT),
    Bitmap(AT(buttonDown), AT(buttonBitmaps[2]), BMP_TOOL_BTN_DOWN),
    Bitmap(AT(frameLeft), AT(frameBitmaps[0]), BMP_TOOL_FRAME_LEFT),
    Bitmap(AT(frameRight), AT(frameBitmaps[1]), BMP_TOOL_FRAME_RIGHT),
    Bitmap(AT(background), AT(frameBitmaps[2]), BMP_TOOL_BACKGROUND),
    Bitmap(AT(dropArrow), AT(dropBitmaps[0]), BMP_TOOL_DROP_ARROW),
    Bitmap(AT(dropHot), AT(dropBitmaps[1]), BMP_TOOL_DROP_HOT),
    Bitmap(AT(dropDown), AT(dropBitmaps[2]), BMP_TOOL_DROP_DOWN),
};
}  // namespace tool_bar

namespace combobox {
using Record = TSkinComboboxInfo;
constexpr TSkinField kFields[] = {
    Size(AT(spare8), SZ_COMBO_SPARE_8),
    Size(AT(spare9), SZ_COMBO_SPARE_9),
    Size(AT(spare10), SZ_COMBO_SPARE_10),
    Size(AT(spare11), SZ_COMBO_SPARE_11),
    Bitmap(AT(left), SLOT(0), BMP_COMBO_LEFT),
    Bitmap(AT(right), SLOT(1), BMP_COMBO_RIGHT),
    Bitmap(AT(tile), SLOT(2), BMP_COMBO_TILE),
    Bitmap(AT(dropNormal), SLOT(3), BMP_COMBO_DROP_NORMAL),
    Bitmap(AT(dropHot), SLOT(4), BMP_COMBO_DROP_HOT),
    Bitmap(AT(dropDisabled), SLOT(5), BMP_COMBO_DROP_DISABLED),
};
}  // namespace combobox

namespace tab_ctrl {
using Record = TSkinTabCtrlInfo;
// The selected tile comes first, and the left edge before the top edge.
constexpr TSkinField kFields[] = {
    Colour(AT(spare), CLR_TAB_SPARE),
    Colour(AT(page), CLR_TAB_PAGE),
    Bitmap(AT(selTile), SLOT(2), BMP_TAB_SEL_TILE),
    Bitmap(AT(selLeft), SLOT(0), BMP_TAB_SEL_LEFT),
    Bitmap(AT(selRight), SLOT(1), BMP_TAB_SEL_RIGHT),
    Bitmap(AT(left), SLOT(3), BMP_TAB_LEFT),
    Bitmap(AT(right), SLOT(4), BMP_TAB_RIGHT),
    Bitmap(AT(tile), SLOT(5), BMP_TAB_TILE),
    Bitmap(AT(paneTopLeft), SLOT(6), BMP_TAB_PANE_TOPLEFT),
    Bitmap(AT(paneTopRight), SLOT(7), BMP_TAB_PANE_TOPRIGHT),
    Bitmap(AT(paneBottomLeft), SLOT(8), BMP_TAB_PANE_BOTTOMLEFT),
    Bitmap(AT(paneBottomRight), SLOT(9), BMP_TAB_PANE_BOTTOMRIGHT),
    Bitmap(AT(paneLeft), SLOT(11), BMP_TAB_PANE_LEFT),
    Bitmap(AT(paneTop), SLOT(10), BMP_TAB_PANE_TOP),
    Bitmap(AT(paneRight), SLOT(12), BMP_TAB_PANE_RIGHT),
    Bitmap(AT(paneBottom), SLOT(13), BMP_TAB_PANE_BOTTOM),
};
}  // namespace tab_ctrl

namespace head_ctrl {
using Record = TSkinHeadCtrlInfo;
constexpr TSkinField kFields[] = {
    Size(AT(spareSize), SZ_HEAD_SPARE),
    Bitmap(AT(left), SLOT(0), BMP_HEAD_LEFT),
    Bitmap(AT(downLeft), SLOT(1), BMP_HEAD_DOWN_LEFT),
    Bitmap(AT(tile), SLOT(2), BMP_HEAD_TILE),
    Bitmap(AT(downTile), SLOT(3), BMP_HEAD_DOWN_TILE),
    Bitmap(AT(right), SLOT(4), BMP_HEAD_RIGHT),
    Bitmap(AT(downRight), SLOT(5), BMP_HEAD_DOWN_RIGHT),
    Bitmap(AT(spare), SLOT(6), BMP_HEAD_SPARE),
};
}  // namespace head_ctrl

namespace edit {
using Record = TSkinEditInfo;
constexpr TSkinField kFields[] = {
    Colour(AT(back), CLR_EDIT_BACK),
    Colour(AT(border), CLR_EDIT_BORDER),
    Colour(AT(backDisabled), CLR_EDIT_BACK_DISABLED),
    Colour(AT(spare), CLR_EDIT_SPARE),
};
}  // namespace edit

namespace list_box {
using Record = TSkinListBoxInfo;
// The edges come before the corners.
constexpr TSkinField kFields[] = {
    Colour(AT(back), CLR_LIST_BACK),
    Bitmap(AT(top), SLOT(4), BMP_LIST_TOP),
    Bitmap(AT(left), SLOT(5), BMP_LIST_LEFT),
    Bitmap(AT(right), SLOT(6), BMP_LIST_RIGHT),
    Bitmap(AT(bottom), SLOT(7), BMP_LIST_BOTTOM),
    Bitmap(AT(topLeft), SLOT(0), BMP_LIST_TOPLEFT),
    Bitmap(AT(topRight), SLOT(1), BMP_LIST_TOPRIGHT),
    Bitmap(AT(bottomLeft), SLOT(2), BMP_LIST_BOTTOMLEFT),
    Bitmap(AT(bottomRight), SLOT(3), BMP_LIST_BOTTOMRIGHT),
};
}  // namespace list_box

namespace scroll_bar {
using Record = TSkinScrollBarInfo;

// The names stand without a gap, and the k-th slot serves the k-th name.
constexpr TSkinField Piece(std::size_t offset, DWORD id, TSkinFieldSet set) {
    return Bitmap(offset, SLOT(0) + offset / sizeof(TSkinName) * sizeof(TSkinBitmapSlot), id, set);
}

#define BOTH_SETS(small_name, large_name, id) \
    Piece(AT(small_name), id, skinSetSmall), Piece(AT(large_name), id, skinSetLarge)

// The two arrows take turns.
constexpr TSkinField kFields[] = {
    Colour(AT(gripLight), CLR_SB_GRIP_LIGHT),
    Colour(AT(gripDark), CLR_SB_GRIP_DARK),
    Colour(AT(gripPressedLight), CLR_SB_GRIP_PRESSED_LIGHT),
    Colour(AT(gripPressedDark), CLR_SB_GRIP_PRESSED_DARK),
    BOTH_SETS(arrowSmall[0], arrowLarge[0], BMP_SB_ARROW_NORMAL),
    BOTH_SETS(arrow2Small[0], arrow2Large[0], BMP_SB_ARROW2_NORMAL),
    BOTH_SETS(arrowSmall[1], arrowLarge[1], BMP_SB_ARROW_DOWN),
    BOTH_SETS(arrow2Small[1], arrow2Large[1], BMP_SB_ARROW2_DOWN),
    BOTH_SETS(arrowSmall[2], arrowLarge[2], BMP_SB_ARROW_DISABLED),
    BOTH_SETS(arrow2Small[2], arrow2Large[2], BMP_SB_ARROW2_DISABLED),
    BOTH_SETS(trackSmall[0], trackLarge[0], BMP_SB_TRACK),
    BOTH_SETS(trackSmall[1], trackLarge[1], BMP_SB_TRACK_DISABLED),
    BOTH_SETS(thumbSmall[0], thumbLarge[0], BMP_SB_THUMB_TOP),
    BOTH_SETS(thumbSmall[1], thumbLarge[1], BMP_SB_THUMB_BOTTOM),
    BOTH_SETS(thumbSmall[2], thumbLarge[2], BMP_SB_THUMB_TILE),
    BOTH_SETS(thumbSmall[3], thumbLarge[3], BMP_SB_THUMB_HOT_TOP),
    BOTH_SETS(thumbSmall[4], thumbLarge[4], BMP_SB_THUMB_HOT_BOTTOM),
    BOTH_SETS(thumbSmall[5], thumbLarge[5], BMP_SB_THUMB_HOT_TILE),
    Piece(AT(stub), BMP_SB_STUB, skinSetBoth),
};
#undef BOTH_SETS
}  // namespace scroll_bar

namespace global {
using Record = TSkinGlobalInfo;
constexpr TSkinField kFields[] = {
    Colour(AT(transparent), CLR_TRANSPARENT),
    Colour(AT(highlight), CLR_HIGHLIGHT),
    Size(AT(minFrameWidth), SZ_MIN_TRACK_X),
    Size(AT(minFrameHeight), SZ_MIN_TRACK_Y),
};
}  // namespace global

namespace menu {
using Record = TSkinMenuInfo;
constexpr TSkinField kFields[] = {
    Colour(AT(back), CLR_MENU_BACK),
    Colour(AT(border), CLR_MENU_BORDER),
    Colour(AT(stripe), CLR_MENU_STRIPE),
    Colour(AT(textBack), CLR_MENU_TEXT_BACK),
    Colour(AT(separator), CLR_MENU_SEPARATOR),
    Colour(AT(selBack), CLR_MENU_SEL_BACK),
    Colour(AT(selBorder), CLR_MENU_SEL_BORDER),
    Bitmap(AT(check), SLOT(0), BMP_MENU_CHECK),
    Bitmap(AT(radio), SLOT(1), BMP_MENU_RADIO),
};
}  // namespace menu

namespace dock_bar {
using Record = TSkinDockBarInfo;
constexpr auto kFields = [] {
    std::array<TSkinField, 32> fields{};
    for (DWORD k = 0; k < fields.size(); ++k)
        fields[k] = Bitmap(k * sizeof(TSkinName), SLOT(0) + k * sizeof(TSkinBitmapSlot), BMP_DOCK_00 + k);
    return fields;
}();
}  // namespace dock_bar

#undef AT
#undef SLOT

#define LAYOUT(kind, storage, folder) \
    { kind, storage, sizeof(folder::Record), std::data(folder::kFields), std::size(folder::kFields) }

// By the number of the kind.
constexpr TSkinRecordLayout kLayouts[] = {
    LAYOUT(skinButton, "Button", button),        LAYOUT(skinFrame, "Frame", frame),
    LAYOUT(skinDialog, "Dialog", dialog),        LAYOUT(skinToolBar, "ToolBar", tool_bar),
    LAYOUT(skinCombobox, "Combobox", combobox),  LAYOUT(skinTabCtrl, "TabCtrl", tab_ctrl),
    LAYOUT(skinHeadCtrl, "HeadCtrl", head_ctrl), LAYOUT(skinEdit, "Edit", edit),
    LAYOUT(skinListBox, "ListBox", list_box),    LAYOUT(skinScrollbar, "Scrollbar", scroll_bar),
    LAYOUT(skinGlobal, "Global", global),        LAYOUT(skinMenu, "Menu", menu),
    LAYOUT(skinDockBar, "DockBar", dock_bar),
};
#undef LAYOUT
static_assert(std::size(kLayouts) == TAVIX_RECORD_COUNT);

constexpr bool TablesHoldTogether() {
    for (int kind = 0; kind < TAVIX_RECORD_COUNT; ++kind) {
        const TSkinRecordLayout& layout = kLayouts[kind];
        if (layout.kind != kind || layout.size > kLargestRecord) return false;
        for (const TSkinField& field : layout) {
            const DWORD extent = field.kind == skinFieldBitmap ? sizeof(TSkinName)
                                 : field.kind == skinFieldRect ? sizeof(RECT)
                                                               : sizeof(DWORD);
            if (field.offset + extent > layout.size || field.slotOffset + 4 > layout.size) return false;
            if (field.offset % 4 || field.slotOffset % 4 || field.id >= TAVIX_VALUE_COUNT) return false;
        }
    }
    return true;
}
static_assert(TablesHoldTogether(), "a field lies outside its record, or a table stands in the wrong place");

}  // namespace

DWORD PackRect(const RECT& rect) {
    const auto byte = [](LONG value) { return static_cast<DWORD>(value) & 0xFF; };
    return byte(rect.top) | byte(rect.left) << 8 | byte(rect.right) << 16 | byte(rect.bottom) << 24;
}

}  // namespace tavix

const TSkinRecordLayout* GetSkinRecordLayout(TSkinType kind) {
    const auto index = static_cast<unsigned>(kind);
    return index < std::size(tavix::kLayouts) ? &tavix::kLayouts[index] : nullptr;
}
