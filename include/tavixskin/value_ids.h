/*
 * The numbers of a skin's values. A skin holds three tables: bitmaps, colours (COLORREF,
 * 0x00BBGGRR) and sizes (pixels). Each list below names every number in use, the record of
 * the skin file that sets it, and what it is for. Numbers that are missing are reserved.
 */
#pragma once

/* How many numbers each table has: 0 to TAVIX_VALUE_COUNT - 1. */
enum { TAVIX_VALUE_COUNT = 255 };

/*
 * A button's bitmap is its base number plus its state: 0 normal, 1 hot, 2 pressed.
 * Each row: number, name, record, use.
 */
// clang-format off
#define TAVIX_BITMAP_IDS(X) \
    X(0, BMP_FRAME_CLOSE_NORMAL, "Frame", "caption close button, normal state") \
    X(1, BMP_FRAME_CLOSE_HOT, "Frame", "caption close button, hot state") \
    X(2, BMP_FRAME_CLOSE_DOWN, "Frame", "caption close button, pressed state") \
    X(3, BMP_FRAME_MAX_NORMAL, "Frame", "caption maximise button, normal state") \
    X(4, BMP_FRAME_MAX_HOT, "Frame", "caption maximise button, hot state") \
    X(5, BMP_FRAME_MAX_DOWN, "Frame", "caption maximise button, pressed state") \
    X(6, BMP_FRAME_MIN_NORMAL, "Frame", "caption minimise button, normal state") \
    X(7, BMP_FRAME_MIN_HOT, "Frame", "caption minimise button, hot state") \
    X(8, BMP_FRAME_MIN_DOWN, "Frame", "caption minimise button, pressed state") \
    X(9, BMP_FRAME_CAPTION_LEFT, "Frame", "left end of the caption; its shape (transparent colour 255) cuts the top-left corner of the window region") \
    X(10, BMP_FRAME_CAPTION_TILE, "Frame", "middle of the caption, tiled left and right of the title plate") \
    X(11, BMP_FRAME_CAPTION_RIGHT, "Frame", "right end of the caption; cuts the top-right corner of the window region") \
    X(12, BMP_FRAME_CAPTION_TITLE, "Frame", "title plate, centred in the caption; the title text is drawn on it") \
    X(13, BMP_FRAME_GRIPPER, "Frame", "size grip at the bottom right of a frame (transparent blit); also shown by the skin scroll bar and its window region") \
    X(14, BMP_DLG_CLOSE_NORMAL, "Dialog", "dialog caption close button, normal state") \
    X(15, BMP_DLG_CLOSE_HOT, "Dialog", "dialog caption close button, hot state") \
    X(16, BMP_DLG_CLOSE_DOWN, "Dialog", "dialog caption close button, pressed state") \
    X(17, BMP_DLG_MIN_NORMAL, "Dialog", "dialog caption minimise button, normal state") \
    X(18, BMP_DLG_MIN_HOT, "Dialog", "dialog caption minimise button, hot state") \
    X(19, BMP_DLG_MIN_DOWN, "Dialog", "dialog caption minimise button, pressed state") \
    X(21, BMP_DLG_MAX_NORMAL, "Dialog", "dialog caption maximise button, normal state") \
    X(22, BMP_DLG_MAX_HOT, "Dialog", "dialog caption maximise button, hot state") \
    X(23, BMP_DLG_MAX_DOWN, "Dialog", "dialog caption maximise button, pressed state") \
    X(24, BMP_DLG_HELP_NORMAL, "Dialog", "dialog caption context help button, normal state") \
    X(25, BMP_DLG_HELP_HOT, "Dialog", "dialog caption context help button, hot state") \
    X(26, BMP_DLG_HELP_DOWN, "Dialog", "dialog caption context help button, pressed state") \
    X(27, BMP_DLG_CAPTION_LEFT, "Dialog", "left end of the dialog caption; region source") \
    X(28, BMP_DLG_CAPTION_RIGHT, "Dialog", "right end of the dialog caption; region source") \
    X(29, BMP_DLG_CAPTION_TILE, "Dialog", "middle of the dialog caption, tiled") \
    X(30, BMP_COMBO_LEFT, "Combobox", "left end of the combo box face") \
    X(31, BMP_COMBO_RIGHT, "Combobox", "right end of the combo box face; its width also places the arrow") \
    X(32, BMP_COMBO_TILE, "Combobox", "middle of the combo box face, tiled") \
    X(33, BMP_COMBO_DROP_NORMAL, "Combobox", "drop-down button, normal") \
    X(34, BMP_COMBO_DROP_HOT, "Combobox", "drop-down button, hot") \
    X(35, BMP_COMBO_DROP_DISABLED, "Combobox", "spare") \
    X(36, BMP_TAB_LEFT, "TabCtrl", "unselected tab, left end") \
    X(37, BMP_TAB_TILE, "TabCtrl", "unselected tab, middle tile") \
    X(38, BMP_TAB_RIGHT, "TabCtrl", "unselected tab, right end") \
    X(39, BMP_TAB_SEL_LEFT, "TabCtrl", "selected tab, left end") \
    X(40, BMP_TAB_SEL_TILE, "TabCtrl", "selected tab, middle tile") \
    X(41, BMP_TAB_SEL_RIGHT, "TabCtrl", "selected tab, right end") \
    X(42, BMP_TAB_PANE_TOPLEFT, "TabCtrl", "page frame, top-left corner") \
    X(43, BMP_TAB_PANE_TOP, "TabCtrl", "page frame, top edge tile") \
    X(44, BMP_TAB_PANE_TOPRIGHT, "TabCtrl", "page frame, top-right corner") \
    X(45, BMP_TAB_PANE_LEFT, "TabCtrl", "page frame, left edge tile") \
    X(46, BMP_TAB_PANE_RIGHT, "TabCtrl", "page frame, right edge tile") \
    X(47, BMP_TAB_PANE_BOTTOM, "TabCtrl", "page frame, bottom edge tile") \
    X(48, BMP_TAB_PANE_BOTTOMLEFT, "TabCtrl", "page frame, bottom-left corner (transparent blit); also gives the corner size") \
    X(49, BMP_TAB_PANE_BOTTOMRIGHT, "TabCtrl", "page frame, bottom-right corner (transparent blit)") \
    X(50, BMP_HEAD_LEFT, "HeadCtrl", "header item, left end") \
    X(51, BMP_HEAD_TILE, "HeadCtrl", "header item, middle tile; also fills the free area right of the last item") \
    X(52, BMP_HEAD_RIGHT, "HeadCtrl", "header item, right end") \
    X(53, BMP_HEAD_DOWN_LEFT, "HeadCtrl", "pressed header item, left end") \
    X(54, BMP_HEAD_DOWN_TILE, "HeadCtrl", "pressed header item, middle tile") \
    X(55, BMP_HEAD_DOWN_RIGHT, "HeadCtrl", "pressed header item, right end") \
    X(56, BMP_HEAD_SPARE, "HeadCtrl", "spare") \
    X(57, BMP_LIST_TOPLEFT, "ListBox", "list border, top-left corner; also cuts the region") \
    X(58, BMP_LIST_TOPRIGHT, "ListBox", "list border, top-right corner; also cuts the region") \
    X(59, BMP_LIST_BOTTOMLEFT, "ListBox", "list border, bottom-left corner; also cuts the region") \
    X(60, BMP_LIST_BOTTOMRIGHT, "ListBox", "list border, bottom-right corner; also cuts the region") \
    X(61, BMP_LIST_TOP, "ListBox", "list border, top edge tile; its height gives the top margin") \
    X(62, BMP_LIST_LEFT, "ListBox", "list border, left edge tile; its width gives the left margin") \
    X(63, BMP_LIST_RIGHT, "ListBox", "list border, right edge tile; its width gives the right margin") \
    X(64, BMP_LIST_BOTTOM, "ListBox", "list border, bottom edge tile; its height gives the bottom margin") \
    X(65, BMP_BTN_CHECK_ON, "Button", "check box mark, checked (transparent blit)") \
    X(66, BMP_BTN_CHECK_OFF, "Button", "check box mark, unchecked (transparent blit)") \
    X(67, BMP_BTN_RADIO_ON, "Button", "radio button mark, checked") \
    X(68, BMP_BTN_RADIO_OFF, "Button", "radio button mark, unchecked") \
    X(69, BMP_TOOL_SPARE, "ToolBar", "spare") \
    X(70, BMP_TOOL_BTN_HOT, "ToolBar", "tool bar button face when hot (stretched)") \
    X(71, BMP_TOOL_BTN_DOWN, "ToolBar", "tool bar button face when pressed or checked (stretched)") \
    X(72, BMP_TOOL_FRAME_LEFT, "ToolBar", "patch above the left border of a frame with a menu bar") \
    X(73, BMP_TOOL_FRAME_RIGHT, "ToolBar", "patch above the right border of a frame with a menu bar") \
    X(74, BMP_TOOL_BACKGROUND, "ToolBar", "tool bar background, used when the bar is more than 30 pixels high") \
    X(75, BMP_TOOL_DROP_ARROW, "ToolBar", "small arrow of a drop-down button (transparent blit)") \
    X(76, BMP_TOOL_DROP_HOT, "ToolBar", "face of a drop-down button when hot (stretched)") \
    X(77, BMP_TOOL_DROP_DOWN, "ToolBar", "face of a drop-down button when pressed (stretched)") \
    X(79, BMP_SB_ARROW_NORMAL, "Scrollbar", "first arrow button, normal (small or large set chosen by the system metric at load)") \
    X(80, BMP_SB_ARROW_DOWN, "Scrollbar", "first arrow button, pressed") \
    X(81, BMP_SB_ARROW_DISABLED, "Scrollbar", "first arrow button, disabled") \
    X(82, BMP_SB_ARROW2_NORMAL, "Scrollbar", "second arrow button, normal") \
    X(83, BMP_SB_ARROW2_DOWN, "Scrollbar", "second arrow button, pressed") \
    X(84, BMP_SB_ARROW2_DISABLED, "Scrollbar", "second arrow button, disabled") \
    X(85, BMP_SB_TRACK, "Scrollbar", "track of the skin scroll bar, enabled") \
    X(86, BMP_SB_TRACK_DISABLED, "Scrollbar", "track of the skin scroll bar, disabled") \
    X(87, BMP_SB_THUMB_TOP, "Scrollbar", "thumb start cap, normal") \
    X(88, BMP_SB_THUMB_BOTTOM, "Scrollbar", "thumb end cap, normal") \
    X(89, BMP_SB_THUMB_TILE, "Scrollbar", "thumb middle tile, normal") \
    X(90, BMP_SB_THUMB_HOT_TOP, "Scrollbar", "thumb start cap, hot") \
    X(91, BMP_SB_THUMB_HOT_BOTTOM, "Scrollbar", "thumb end cap, hot") \
    X(92, BMP_SB_THUMB_HOT_TILE, "Scrollbar", "thumb middle tile, hot") \
    X(93, BMP_SB_STUB, "Scrollbar", "filler at the corner of two skin scroll bars") \
    X(94, BMP_MENU_CHECK, "Menu", "check mark of a checked popup menu item") \
    X(95, BMP_MENU_RADIO, "Menu", "mark of a radio-checked popup menu item") \
    X(96, BMP_DOCK_00, "DockBar", "dock bar bitmap, for the host") \
    X(97, BMP_DOCK_01, "DockBar", "dock bar bitmap, for the host") \
    X(98, BMP_DOCK_02, "DockBar", "dock bar bitmap, for the host") \
    X(99, BMP_DOCK_03, "DockBar", "dock bar bitmap, for the host") \
    X(100, BMP_DOCK_04, "DockBar", "dock bar bitmap, for the host") \
    X(101, BMP_DOCK_05, "DockBar", "dock bar bitmap, for the host") \
    X(102, BMP_DOCK_06, "DockBar", "dock bar bitmap, for the host") \
    X(103, BMP_DOCK_07, "DockBar", "dock bar bitmap, for the host") \
    X(104, BMP_DOCK_08, "DockBar", "dock bar bitmap, for the host") \
    X(105, BMP_DOCK_09, "DockBar", "dock bar bitmap, for the host") \
    X(106, BMP_DOCK_10, "DockBar", "dock bar bitmap, for the host") \
    X(107, BMP_DOCK_11, "DockBar", "dock bar bitmap, for the host") \
    X(108, BMP_DOCK_12, "DockBar", "dock bar bitmap, for the host") \
    X(109, BMP_DOCK_13, "DockBar", "dock bar bitmap, for the host") \
    X(110, BMP_DOCK_14, "DockBar", "dock bar bitmap, for the host") \
    X(111, BMP_DOCK_15, "DockBar", "dock bar bitmap, for the host") \
    X(112, BMP_DOCK_16, "DockBar", "dock bar bitmap, for the host") \
    X(113, BMP_DOCK_17, "DockBar", "dock bar bitmap, for the host") \
    X(114, BMP_DOCK_18, "DockBar", "dock bar bitmap, for the host") \
    X(115, BMP_DOCK_19, "DockBar", "dock bar bitmap, for the host") \
    X(116, BMP_DOCK_20, "DockBar", "dock bar bitmap, for the host") \
    X(117, BMP_DOCK_21, "DockBar", "dock bar bitmap, for the host") \
    X(118, BMP_DOCK_22, "DockBar", "dock bar bitmap, for the host") \
    X(119, BMP_DOCK_23, "DockBar", "dock bar bitmap, for the host") \
    X(120, BMP_DOCK_24, "DockBar", "dock bar bitmap, for the host") \
    X(121, BMP_DOCK_25, "DockBar", "dock bar bitmap, for the host") \
    X(122, BMP_DOCK_26, "DockBar", "dock bar bitmap, for the host") \
    X(123, BMP_DOCK_27, "DockBar", "dock bar bitmap, for the host") \
    X(124, BMP_DOCK_28, "DockBar", "dock bar bitmap, for the host") \
    X(125, BMP_DOCK_29, "DockBar", "dock bar bitmap, for the host") \
    X(126, BMP_DOCK_30, "DockBar", "dock bar bitmap, for the host") \
    X(127, BMP_DOCK_31, "DockBar", "dock bar bitmap, for the host")
// clang-format on

// clang-format off
#define TAVIX_COLOUR_IDS(X) \
    X(0, CLR_TEXT, "none", "normal text; set once from GetSysColor(COLOR_WINDOWTEXT)") \
    X(1, CLR_TEXT_HIGHLIGHT, "none", "text on a highlight and frame title text; set once from GetSysColor(COLOR_HIGHLIGHTTEXT)") \
    X(2, CLR_TEXT_DISABLED, "none", "disabled text; set once from GetSysColor(COLOR_GRAYTEXT)") \
    X(3, CLR_TRANSPARENT, "Global", "transparent key of skin bitmaps") \
    X(4, CLR_HIGHLIGHT, "Global", "selection background") \
    X(5, CLR_FRAME_BORDER_FROM, "Frame", "side borders of a frame: vertical gradient, top") \
    X(6, CLR_FRAME_BORDER_TO, "Frame", "side borders, vertical gradient, bottom; also the solid colour of the bottom border") \
    X(7, CLR_FRAME_OUTER_FROM, "Frame", "outermost column at both sides of frames and dialogs: vertical gradient, top") \
    X(8, CLR_FRAME_OUTER_TO, "Frame", "the same, bottom") \
    X(9, CLR_FRAME_INNER_FROM, "Frame", "second column from each side of frames and dialogs: vertical gradient, top") \
    X(10, CLR_FRAME_INNER_TO, "Frame", "the same, bottom") \
    X(11, CLR_FRAME_BOTTOM1_FROM, "Frame", "third row from the bottom of frames and dialogs: horizontal gradient, left") \
    X(12, CLR_FRAME_BOTTOM1_TO, "Frame", "the same, right") \
    X(13, CLR_FRAME_BOTTOM2_FROM, "Frame", "second row from the bottom: horizontal gradient, left") \
    X(14, CLR_FRAME_BOTTOM2_TO, "Frame", "the same, right") \
    X(15, CLR_FRAME_BOTTOM3_FROM, "Frame", "bottom row: horizontal gradient, left") \
    X(16, CLR_FRAME_BOTTOM3_TO, "Frame", "the same, right") \
    X(19, CLR_MENU_BACK, "Menu", "popup menu background") \
    X(20, CLR_MENU_BORDER, "Menu", "popup menu border") \
    X(21, CLR_MENU_STRIPE, "Menu", "20- to 25-pixel stripe at the left of a popup menu") \
    X(22, CLR_MENU_TEXT_BACK, "Menu", "background beside the stripe of a popup item") \
    X(23, CLR_MENU_SEPARATOR, "Menu", "separator of a popup menu") \
    X(24, CLR_MENU_SEL_BACK, "Menu", "background of the selected item; also the hot item of the menu bar") \
    X(25, CLR_MENU_SEL_BORDER, "Menu", "border of the selected item") \
    X(26, CLR_DLG_BACK_FROM, "Dialog", "client gradient of a dialog, tab strip: start; also the default static background") \
    X(27, CLR_DLG_BACK_TO, "Dialog", "client gradient of a dialog, tab strip: end; also scroll bar corner") \
    X(28, CLR_DLG_SPARE_28, "Dialog", "spare") \
    X(29, CLR_DLG_SPARE_29, "Dialog", "spare") \
    X(30, CLR_DLG_SPARE_30, "Dialog", "spare") \
    X(31, CLR_DLG_SPARE_31, "Dialog", "spare") \
    X(32, CLR_DLG_SPARE_32, "Dialog", "spare") \
    X(33, CLR_DLG_SPARE_33, "Dialog", "spare") \
    X(34, CLR_DLG_SPARE_34, "Dialog", "spare") \
    X(35, CLR_DLG_SPARE_35, "Dialog", "spare") \
    X(36, CLR_DLG_SPARE_36, "Dialog", "spare") \
    X(37, CLR_DLG_SPARE_37, "Dialog", "spare") \
    X(38, CLR_TAB_SPARE, "TabCtrl", "spare") \
    X(39, CLR_TAB_PAGE, "TabCtrl", "page colour of a tab control and background of dialogs that live on a tab page") \
    X(40, CLR_EDIT_BORDER, "Edit", "spare") \
    X(41, CLR_EDIT_BACK, "Edit", "spare") \
    X(42, CLR_EDIT_SPARE, "Edit", "spare") \
    X(43, CLR_EDIT_BACK_DISABLED, "Edit", "fill and background brush of a disabled edit") \
    X(44, CLR_BTN_SPARE_44, "Button", "spare") \
    X(45, CLR_BTN_BORDER, "Button", "border of an enabled push button") \
    X(46, CLR_BTN_NORMAL_FROM, "Button", "push button face, normal: gradient start") \
    X(47, CLR_BTN_NORMAL_TO, "Button", "push button face, normal: gradient end") \
    X(48, CLR_BTN_SPARE_48, "Button", "spare") \
    X(49, CLR_BTN_SPARE_49, "Button", "spare") \
    X(50, CLR_BTN_HOT_FROM, "Button", "push button face, hot: gradient start") \
    X(51, CLR_BTN_HOT_TO, "Button", "push button face, hot: gradient end") \
    X(52, CLR_BTN_SPARE_52, "Button", "spare") \
    X(53, CLR_BTN_SPARE_53, "Button", "spare") \
    X(54, CLR_BTN_DOWN_FROM, "Button", "push button face, pressed: gradient start") \
    X(55, CLR_BTN_DOWN_TO, "Button", "push button face, pressed: gradient end") \
    X(56, CLR_BTN_DISABLED_BORDER, "Button", "border of a disabled push button") \
    X(57, CLR_BTN_SPARE_57, "Button", "spare") \
    X(58, CLR_BTN_DISABLED_FROM, "Button", "push button face, disabled: gradient start") \
    X(59, CLR_BTN_DISABLED_TO, "Button", "push button face, disabled: gradient end") \
    X(60, CLR_GROUP_INNER, "Button", "the lower of the group box's etched pair of lines, one pixel right and down; also inner line of the splitter bar border") \
    X(61, CLR_GROUP_OUTER, "Button", "the upper of the group box's etched pair of lines; also outer line of the splitter bar border") \
    X(62, CLR_LIST_BACK, "ListBox", "background of list box and drop-down list") \
    X(63, CLR_TOOL_BACK_FROM, "ToolBar", "tool bar background gradient: start") \
    X(64, CLR_TOOL_BACK_TO, "ToolBar", "tool bar background gradient: end") \
    X(65, CLR_SB_GRIP_LIGHT, "Scrollbar", "grip lines on the thumb of the skin scroll bar, first pen") \
    X(66, CLR_SB_GRIP_DARK, "Scrollbar", "grip lines on the thumb, second pen") \
    X(67, CLR_SB_GRIP_PRESSED_LIGHT, "Scrollbar", "grip lines on a pressed thumb, first pen") \
    X(68, CLR_SB_GRIP_PRESSED_DARK, "Scrollbar", "grip lines on a pressed thumb, second pen")
// clang-format on

// clang-format off
#define TAVIX_SIZE_IDS(X) \
    X(0, SZ_FRAME_LEFT, "Frame", "left border width of a frame") \
    X(1, SZ_FRAME_RIGHT, "Frame", "right border width of a frame") \
    X(2, SZ_FRAME_BOTTOM, "Frame", "bottom border height of a frame") \
    X(3, SZ_FRAME_CAPTION, "Frame", "caption height of a frame") \
    X(4, SZ_MIN_TRACK_X, "Global", "minimum tracking width of a frame is this value less 100") \
    X(5, SZ_MIN_TRACK_Y, "Global", "minimum tracking height of a frame is this value less 100") \
    X(6, SZ_FRAME_BUTTONS, "Frame", "packed caption button geometry: bytes top, left, width, height") \
    X(7, SZ_FRAME_MENU_STRIP, "Frame", "height of the light strip at the top of the side borders of a frame with a menu bar") \
    X(8, SZ_COMBO_SPARE_8, "Combobox", "spare") \
    X(9, SZ_COMBO_SPARE_9, "Combobox", "spare") \
    X(10, SZ_COMBO_SPARE_10, "Combobox", "spare") \
    X(11, SZ_COMBO_SPARE_11, "Combobox", "spare") \
    X(12, SZ_DLG_LEFT, "Dialog", "left border width of a dialog") \
    X(13, SZ_DLG_RIGHT, "Dialog", "right border width of a dialog") \
    X(14, SZ_DLG_BOTTOM, "Dialog", "bottom border height of a dialog") \
    X(15, SZ_DLG_CAPTION, "Dialog", "caption height of a dialog") \
    X(16, SZ_DLG_BUTTONS, "Dialog", "packed caption button geometry, as size 6") \
    X(17, SZ_HEAD_SPARE, "HeadCtrl", "spare")
// clang-format on

#define TAVIX_ENUMERATOR(number, name, record, use) name = number,
enum TavixBitmapId { TAVIX_BITMAP_IDS(TAVIX_ENUMERATOR) };
enum TavixColourId { TAVIX_COLOUR_IDS(TAVIX_ENUMERATOR) };
enum TavixSizeId { TAVIX_SIZE_IDS(TAVIX_ENUMERATOR) };
#undef TAVIX_ENUMERATOR
