"""Porcelain's palette, and the colours and sizes of its manifest: the one place where a value is chosen."""

from raster import mix, rgb

# ---- palette -----------------------------------------------------------------------------------------------

WHITE = rgb('#FFFFFF')
INK = rgb('#22374F')            # glyphs on light surfaces
OUTLINE = rgb('#324D6A')        # edge of captions and of the window beside them
SLATE_DEEP = rgb('#3E5C7E')     # pressed faces, foot of captions
SLATE = rgb('#4A6D94')          # selection
SLATE_LIGHT = rgb('#5B7FA6')    # head of captions, hot faces
MIST = rgb('#D6E1ED')           # light tint of the accent: hot tool buttons, drop buttons
MIST_DEEP = rgb('#BCCDDF')      # the same, pressed
MIST_LINE = rgb('#9CB4CD')      # edge of tinted faces
LINE = rgb('#AEBAC8')           # hairline round fields, lists and pages
LINE_SOFT = rgb('#D3DAE2')      # hairline between parts of one surface
PORCELAIN = rgb('#F7F8FA')      # the lightest surface that isn't white
SURFACE_TOP = rgb('#EEF1F5')    # dialog surface, top
SURFACE_END = rgb('#E3E9EE')    # dialog surface, bottom
SURFACE = mix(SURFACE_TOP, SURFACE_END, 0.35)   # what marks and corners are blended against
PAGE = rgb('#F3F5F8')           # tab page; an edit field has no border, and its white must stand out here
TRACK = rgb('#D8E0E8')          # scroll bar track, darker than any surface it stands on
TRACK_DISABLED = rgb('#DFE5EB') # the same of a disabled bar
MUTED = rgb('#A3AFBC')          # glyphs of disabled parts
RED_LIGHT = rgb('#DE6A60')      # hot close button, head
RED = rgb('#C8473E')            # hot close button, foot
RED_DEEP = rgb('#A2352D')       # pressed close button

KEY = rgb('#FF00FF')            # transparent key of marks, grips, arrows and corners (CLR_TRANSPARENT)
REGION_KEY = rgb('#FF0000')     # key of window corners; the library's own fixed value
MENU_KEY = rgb('#C2CBCF')       # key of the two menu marks; the library's own fixed value

# ---- sizes -------------------------------------------------------------------------------------------------

BORDER = 5      # side and bottom borders; the two ends of a frame's caption are as wide, and must be
FRAME_CAPTION = 30
DIALOG_CAPTION = 25     # icon (from row 5), title (rows 5 to 24) and buttons then stand within 2 pixels of one middle
FRAME_BUTTON = {'left': -86, 'top': 6, 'width': 26, 'height': 18}     # left: left edge of the left-most one
DIALOG_BUTTON = {'left': -7, 'top': 5, 'width': 24, 'height': 16}     # left: right edge of the right-most one
PLATE_WIDTH = 310       # the title gets this less 60; a plate wider than the window would cover the corners

SIZES = {
    'SZ_FRAME_LEFT': BORDER,
    'SZ_FRAME_RIGHT': BORDER,
    'SZ_FRAME_BOTTOM': BORDER,
    'SZ_FRAME_CAPTION': FRAME_CAPTION,
    'SZ_MIN_TRACK_X': 420,          # less 100: 320, which holds the title plate
    'SZ_MIN_TRACK_Y': 180,          # less 100: 80
    'SZ_FRAME_BUTTONS': FRAME_BUTTON,
    'SZ_FRAME_MENU_STRIP': 25,         # as high as a menu bar: its buttons and 2 pixels above and below
    'SZ_COMBO_SPARE_8': 0,
    'SZ_COMBO_SPARE_9': 0,
    'SZ_COMBO_SPARE_10': 0,
    'SZ_COMBO_SPARE_11': 0,
    'SZ_DLG_LEFT': BORDER,
    'SZ_DLG_RIGHT': BORDER,
    'SZ_DLG_BOTTOM': BORDER,
    'SZ_DLG_CAPTION': DIALOG_CAPTION,
    'SZ_DLG_BUTTONS': DIALOG_BUTTON,
    'SZ_HEAD_SPARE': 0,
}

# ---- colours -----------------------------------------------------------------------------------------------

FRAME_SIDE = rgb('#E8EDF2')     # side borders at the top; the patches of a menu bar frame end in it
FRAME_FOOT = rgb('#DCE3EA')
FRAME_EDGE = rgb('#8798AC')     # outermost line at the bottom
FRAME_INNER = rgb('#F9FAFC')
BAND_FOOT = rgb('#EAEAEA')      # foot of the menu bar's band; the library's own fixed value

COLOURS = {
    'CLR_TRANSPARENT': KEY,
    'CLR_HIGHLIGHT': SLATE,
    'CLR_FRAME_BORDER_FROM': FRAME_SIDE,
    'CLR_FRAME_BORDER_TO': FRAME_FOOT,
    'CLR_FRAME_OUTER_FROM': OUTLINE,
    'CLR_FRAME_OUTER_TO': FRAME_EDGE,
    'CLR_FRAME_INNER_FROM': FRAME_INNER,
    'CLR_FRAME_INNER_TO': FRAME_INNER,
    'CLR_FRAME_BOTTOM1_FROM': FRAME_FOOT,
    'CLR_FRAME_BOTTOM1_TO': FRAME_FOOT,
    'CLR_FRAME_BOTTOM2_FROM': FRAME_INNER,
    'CLR_FRAME_BOTTOM2_TO': FRAME_INNER,
    'CLR_FRAME_BOTTOM3_FROM': FRAME_EDGE,
    'CLR_FRAME_BOTTOM3_TO': FRAME_EDGE,
    'CLR_MENU_BACK': WHITE,             # items are filled white by the library, so the rest is white too
    'CLR_MENU_BORDER': LINE,
    'CLR_MENU_STRIPE': WHITE,
    'CLR_MENU_TEXT_BACK': WHITE,
    'CLR_MENU_SEPARATOR': LINE_SOFT,
    'CLR_MENU_SEL_BACK': SLATE,         # under white text
    'CLR_MENU_SEL_BORDER': SLATE_DEEP,
    'CLR_DLG_BACK_FROM': SURFACE_TOP,
    'CLR_DLG_BACK_TO': SURFACE_END,
    'CLR_DLG_SPARE_28': OUTLINE,        # 28 to 37 echo the frame's lines; nothing draws with them
    'CLR_DLG_SPARE_29': FRAME_EDGE,
    'CLR_DLG_SPARE_30': FRAME_INNER,
    'CLR_DLG_SPARE_31': FRAME_INNER,
    'CLR_DLG_SPARE_32': FRAME_FOOT,
    'CLR_DLG_SPARE_33': FRAME_FOOT,
    'CLR_DLG_SPARE_34': FRAME_INNER,
    'CLR_DLG_SPARE_35': FRAME_INNER,
    'CLR_DLG_SPARE_36': FRAME_EDGE,
    'CLR_DLG_SPARE_37': FRAME_EDGE,
    'CLR_TAB_SPARE': PAGE,
    'CLR_TAB_PAGE': PAGE,
    'CLR_EDIT_BORDER': LINE,
    'CLR_EDIT_BACK': WHITE,
    'CLR_EDIT_SPARE': WHITE,
    'CLR_EDIT_BACK_DISABLED': rgb('#E9EDF1'),
    'CLR_BTN_SPARE_44': rgb('#788FA9'),
    'CLR_BTN_BORDER': rgb('#788FA9'),
    'CLR_BTN_NORMAL_FROM': WHITE,       # under black text
    'CLR_BTN_NORMAL_TO': rgb('#E4EAF0'),
    'CLR_BTN_SPARE_48': rgb('#788FA9'),
    'CLR_BTN_SPARE_49': rgb('#788FA9'),
    'CLR_BTN_HOT_FROM': rgb('#6389B1'),     # hot and pressed: under white text
    'CLR_BTN_HOT_TO': rgb('#4C7099'),
    'CLR_BTN_SPARE_52': SLATE_DEEP,
    'CLR_BTN_SPARE_53': SLATE_DEEP,
    'CLR_BTN_DOWN_FROM': rgb('#385372'),
    'CLR_BTN_DOWN_TO': rgb('#476788'),
    'CLR_BTN_DISABLED_BORDER': rgb('#C8D0D9'),
    'CLR_BTN_SPARE_57': rgb('#C8D0D9'),
    'CLR_BTN_DISABLED_FROM': rgb('#F3F5F8'),
    'CLR_BTN_DISABLED_TO': rgb('#ECEFF3'),
    'CLR_GROUP_INNER': rgb('#FBFCFD'),
    'CLR_GROUP_OUTER': rgb('#C0CAD5'),
    'CLR_LIST_BACK': WHITE,             # a row that loses the selection is white until the next full painting
    'CLR_TOOL_BACK_FROM': PORCELAIN,
    'CLR_TOOL_BACK_TO': SURFACE_END,
    'CLR_SB_GRIP_LIGHT': WHITE,
    'CLR_SB_GRIP_DARK': rgb('#8FA3B9'),
    'CLR_SB_GRIP_PRESSED_LIGHT': rgb('#86A3C2'),
    'CLR_SB_GRIP_PRESSED_DARK': rgb('#3A5777'),
}
