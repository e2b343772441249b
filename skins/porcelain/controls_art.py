"""Art of the controls: combo box, tabs, header, list box, check and radio marks, scroll bars, menu marks."""

from raster import Canvas, disc, mix, rounded, stroke
from theme import *

# ---- combo box ---------------------------------------------------------------------------------------------


def combo_cap():
    """The left cap. Its height is even and its lower half mirrors the upper one: it is stretched by repeating
    the middle row, and the last row of an odd height would be lost. Four columns of it stay visible."""
    cap = Canvas(4, 8, SURFACE)
    cap.fill(rounded(0, 0, 8, 8, 2.6), LINE)
    cap.fill(rounded(1, 1, 8, 7, 1.6), WHITE)
    for y in (0, 7):
        cap.put(0, y, KEY)
    return cap


def combo_drop(face, edge, glyph):
    """The drop button. It is copied unscaled into a client area of any height, so its face runs on to the bottom
    and the arrow is placed for the usual 17 rows."""
    button = Canvas(17, 28, face)
    if edge:
        button.rect(0, 0, 1, 28, edge)
    button.fill(stroke([(5.3, 7), (9, 10.7), (12.7, 7)], 1.7), glyph)
    return button


def combobox():
    left = combo_cap()
    tile = Canvas(16, 8, WHITE)
    tile.rect(0, 0, 16, 1, LINE)
    tile.rect(0, 7, 16, 8, LINE)
    return {
        'BMP_COMBO_LEFT': ('combobox/left', left),
        'BMP_COMBO_RIGHT': ('combobox/right', left.mirrored()),
        'BMP_COMBO_TILE': ('combobox/tile', tile),
        'BMP_COMBO_DROP_NORMAL': ('combobox/drop_normal', combo_drop(WHITE, None, SLATE_DEEP)),
        'BMP_COMBO_DROP_HOT': ('combobox/drop_hot', combo_drop(MIST, MIST_LINE, INK)),
        'BMP_COMBO_DROP_DISABLED': ('combobox/drop_disabled', combo_drop(WHITE, None, MUTED)),
    }


# ---- tabs --------------------------------------------------------------------------------------------------

TAB_HEIGHT = 20         # from the tab's top to the first row of the page frame, with the stock font
ACCENT = SLATE_DEEP     # the line along the top of the page, into which the selected tab runs


def tab(selected):
    """A whole tab of 28 pixels. Its last row is the page's accent line, so that it may lie on that line."""
    whole = Canvas(28, TAB_HEIGHT, SURFACE_TOP)
    outer, inner = rounded(0, 0, 28, TAB_HEIGHT + 8, 3.5), rounded(1, 1, 27, TAB_HEIGHT + 8, 2.6)
    if selected:
        whole.fill(outer, ACCENT)
        whole.fill_fall(inner, 1, TAB_HEIGHT, SLATE_LIGHT, ACCENT)
    else:
        whole.fill(outer, LINE)
        whole.fill_fall(inner, 1, TAB_HEIGHT, WHITE, mix(SURFACE_END, LINE_SOFT, 0.35))
    whole.rect(0, TAB_HEIGHT - 1, 28, TAB_HEIGHT, ACCENT)
    return whole.crop(0, 0, 4, TAB_HEIGHT), whole.crop(8, 0, 24, TAB_HEIGHT), whole.crop(24, 0, 28, TAB_HEIGHT)


PANE = 8    # height of bottom corners, bottom edge and side tiles: the painting wants them equal


def pane():
    top = Canvas(16, 4, PAGE)
    top.rect(0, 0, 16, 2, ACCENT)
    top_left = top.crop(0, 0, PANE, 4)
    top_left.rect(0, 2, 1, 4, LINE)
    side = Canvas(2, PANE, PAGE)
    side.rect(0, 0, 1, PANE, LINE)
    bottom = Canvas(16, PANE, PAGE)
    bottom.rect(0, PANE - 1, 16, PANE, LINE)
    corner = Canvas(PANE, PANE, SURFACE_END)
    outer = rounded(0, -8, 24, PANE, 3.5)
    corner.fill(outer, LINE)
    corner.fill(rounded(1, -8, 24, PANE - 1, 2.6), PAGE)
    corner.key_outside(outer, KEY)
    return {
        'BMP_TAB_PANE_TOPLEFT': ('tabctrl/pane_top_left', top_left),
        'BMP_TAB_PANE_TOP': ('tabctrl/pane_top', top),
        'BMP_TAB_PANE_TOPRIGHT': ('tabctrl/pane_top_right', top_left.mirrored()),
        'BMP_TAB_PANE_LEFT': ('tabctrl/pane_left', side),
        'BMP_TAB_PANE_RIGHT': ('tabctrl/pane_right', side.mirrored()),
        'BMP_TAB_PANE_BOTTOM': ('tabctrl/pane_bottom', bottom),
        'BMP_TAB_PANE_BOTTOMLEFT': ('tabctrl/pane_bottom_left', corner),
        'BMP_TAB_PANE_BOTTOMRIGHT': ('tabctrl/pane_bottom_right', corner.mirrored()),
    }


def tabctrl():
    art = pane()
    for selected, name in ((False, ''), (True, 'SEL_')):
        for part, canvas in zip(('LEFT', 'TILE', 'RIGHT'), tab(selected)):
            art['BMP_TAB_%s%s' % (name, part)] = ('tabctrl/tab_%s%s' % (name.lower(), part.lower()), canvas)
    return art


# ---- header ------------------------------------------------------------------------------------------------

def header_tile(first, second, foot):
    """17 rows, the least height of a header: it is only ever stretched, never shrunk."""
    tile = Canvas(16, 17)
    tile.fall(0, 0, 16, 16, first, second)
    tile.rect(0, 16, 16, 17, foot)
    return tile


def headctrl():
    art = {}
    for state, tile in (('', header_tile(WHITE, mix(SURFACE_TOP, SURFACE_END, 0.8), LINE)),
                        ('DOWN_', header_tile(MIST_DEEP, MIST, MIST_LINE))):
        left, right = tile.crop(0, 0, 2, 17), tile.crop(0, 0, 2, 17)
        if state:
            left.rect(0, 0, 1, 16, MIST_LINE)
        else:
            right.rect(1, 3, 2, 14, LINE, 0.8)
        for part, canvas in (('LEFT', left), ('TILE', tile), ('RIGHT', right)):
            art['BMP_HEAD_%s%s' % (state, part)] = ('headctrl/%s%s' % (state.lower(), part.lower()), canvas)
    art['BMP_HEAD_SPARE'] = ('headctrl/spare', header_tile(PORCELAIN, SURFACE_TOP, LINE))
    return art


# ---- list box ----------------------------------------------------------------------------------------------

def listbox():
    """A hairline and a white margin; one pixel of each corner is cut from the window."""
    corner = Canvas(4, 4, WHITE)
    corner.rect(0, 0, 4, 1, LINE)
    corner.rect(0, 0, 1, 4, LINE)
    corner.put(0, 0, REGION_KEY)
    corner.put(1, 1, LINE, 0.5)
    top = Canvas(16, 2, WHITE)
    top.rect(0, 0, 16, 1, LINE)
    left = Canvas(2, 16, WHITE)
    left.rect(0, 0, 1, 16, LINE)
    return {
        'BMP_LIST_TOPLEFT': ('listbox/top_left', corner),
        'BMP_LIST_TOPRIGHT': ('listbox/top_right', corner.mirrored()),
        'BMP_LIST_BOTTOMLEFT': ('listbox/bottom_left', corner.flipped()),
        'BMP_LIST_BOTTOMRIGHT': ('listbox/bottom_right', corner.mirrored().flipped()),
        'BMP_LIST_TOP': ('listbox/top', top),
        'BMP_LIST_LEFT': ('listbox/left', left),
        'BMP_LIST_RIGHT': ('listbox/right', left.mirrored()),
        'BMP_LIST_BOTTOM': ('listbox/bottom', top.flipped()),
    }


# ---- check and radio marks ---------------------------------------------------------------------------------

MARK_EDGE = rgb('#8194AA')


def mark(width, outer, inner, checked):
    """A 13-pixel box or disc; clear columns at the right hold the label off."""
    canvas = Canvas(width, 13, SURFACE)
    canvas.fill(outer, SLATE_DEEP if checked else MARK_EDGE)
    canvas.fill_fall(inner, 1, 12, SLATE_LIGHT if checked else rgb('#F1F4F7'), SLATE if checked else WHITE)
    return canvas


def button():
    box, inside = rounded(0, 0, 13, 13, 2.8), rounded(1, 1, 12, 12, 1.9)
    ring, core = disc(6.5, 6.5, 6.5), disc(6.5, 6.5, 5.5)
    check_on, check_off = mark(15, box, inside, True), mark(15, box, inside, False)
    check_on.fill(stroke([(3.3, 6.7), (5.6, 9.1), (9.8, 4.1)], 1.9), WHITE)
    radio_on, radio_off = mark(14, ring, core, True), mark(14, ring, core, False)
    radio_on.fill(disc(6.5, 6.5, 2.5), WHITE)
    for canvas, shape in ((check_on, box), (check_off, box), (radio_on, ring), (radio_off, ring)):
        canvas.key_outside(shape, KEY)
    return {
        'BMP_BTN_CHECK_ON': ('button/check_on', check_on),
        'BMP_BTN_CHECK_OFF': ('button/check_off', check_off),
        'BMP_BTN_RADIO_ON': ('button/radio_on', radio_on),
        'BMP_BTN_RADIO_OFF': ('button/radio_off', radio_off),
    }


# ---- scroll bars -------------------------------------------------------------------------------------------

THUMB, THUMB_EDGE = rgb('#C3D0DE'), rgb('#8FA4BA')
CAP = 6     # two caps make the shortest thumb, 12 pixels; the middle tile must not be higher than a cap


def arrow(size, up, state):
    """Drawn for the vertical bar, pointing up or down; a horizontal bar transposes it."""
    canvas = Canvas(size, size, TRACK_DISABLED if state == 'disabled' else TRACK)
    if state == 'down':
        canvas.fill(rounded(0, 0, size, size, 2.5), SLATE_DEEP)
        canvas.fill_fall(rounded(1, 1, size - 1, size - 1, 1.8), 1, size - 1, SLATE, SLATE_LIGHT)
    colour = {'normal': mix(SLATE_DEEP, SLATE_LIGHT, 0.3), 'down': WHITE, 'disabled': rgb('#AFBAC5')}[state]
    middle = size / 2
    tip = -1.8 if up else 1.8
    foot = middle - tip
    canvas.fill(stroke([(middle - 3.4, foot), (middle, middle + tip), (middle + 3.4, foot)], 1.8), colour)
    return canvas


def thumb(width, first, second, edge):
    """Cap, cap and tile. The outermost columns are track: where a bar stretches the thumb across, only the margin
    and the flat middle grow."""
    whole = Canvas(width, 24, TRACK)
    whole.fill(rounded(1, 1, width - 1, 23, 3.5), edge)
    face = Canvas(width, 24)
    face.across(1, 0, width - 1, 24, first, second)
    inner = rounded(2, 2, width - 2, 22, 2.6)
    for y in range(24):
        for x in range(width):
            whole.put(x, y, face.get(x, y), min(1, max(0, 0.5 - inner(x + 0.5, y + 0.5))))
    return whole.crop(0, 0, width, CAP), whole.crop(0, 24 - CAP, width, 24), whole.crop(0, 9, width, 9 + CAP)


def scrollbar():
    """Every piece twice: for bars up to 16 pixels wide, and for wider ones."""
    art = {}

    def add(name, file, draw):
        art[name] = {kind: ('scrollbar/%s/%s' % (kind, file), draw(width)) for kind, width in
                     (('small', 16), ('large', 17))}

    for number, up in (('', True), ('2', False)):
        for state in ('normal', 'down', 'disabled'):
            add('BMP_SB_ARROW%s_%s' % (number, state.upper()), 'arrow%s_%s' % (number, state),
                lambda width, up=up, state=state: arrow(width - 2, up, state))
    add('BMP_SB_TRACK', 'track', lambda width: Canvas(width, 32, TRACK))
    add('BMP_SB_TRACK_DISABLED', 'track_disabled', lambda width: Canvas(width, 32, TRACK_DISABLED))
    for state, look in (('', (mix(THUMB, WHITE, 0.85), mix(THUMB, WHITE, 0.45), THUMB_EDGE)),
                        ('HOT_', (SLATE_LIGHT, SLATE, SLATE_DEEP))):
        for index, part in enumerate(('TOP', 'BOTTOM', 'TILE')):
            add('BMP_SB_THUMB_%s%s' % (state, part), 'thumb_%s%s' % (state.lower(), part.lower()),
                lambda width, index=index, look=look: thumb(width - 2, *look)[index])
    art['BMP_SB_STUB'] = ('scrollbar/stub', Canvas(16, 16, TRACK))
    return art


# ---- menu marks --------------------------------------------------------------------------------------------

def menu_chip(shape, inner):
    """Marks stand on white and on the selection alike, so each brings a light ground of its own; its outer edge
    is hard, since what lies outside is cut by an exact key."""
    chip = Canvas(16, 16, MENU_KEY)
    for y in range(16):
        for x in range(16):
            if shape(x + 0.5, y + 0.5) < 0:
                chip.put(x, y, MIST_LINE)
    chip.fill(inner, mix(MIST, WHITE, 0.45))
    return chip


def menu():
    check = menu_chip(rounded(0, 0, 16, 16, 2.4), rounded(1, 1, 15, 15, 1.6))
    check.fill(stroke([(4.2, 8.2), (7, 11), (11.8, 5.2)], 2.0), INK)
    # The radio mark is placed 4 further left and 1 higher than the check mark: it stands right of its middle.
    radio = menu_chip(disc(10.5, 9, 5.5), disc(10.5, 9, 4.5))
    radio.fill(disc(10.5, 9, 2.4), INK)
    return {'BMP_MENU_CHECK': ('menu/check', check), 'BMP_MENU_RADIO': ('menu/radio', radio)}
