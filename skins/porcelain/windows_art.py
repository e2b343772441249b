"""Art of the window surround: frame, dialog, menu bar patches, tool bar, and pieces for a host's dock panes."""

from raster import Canvas, disc, mix, rounded, stroke
from theme import *

CORNER = (5, 3, 2, 1, 1)    # pixels cut from each of the first rows of a caption's corner
CAPTION_HEAD, CAPTION_FOOT = mix(SLATE_LIGHT, SLATE, 0.15), mix(SLATE, SLATE_DEEP, 0.75)


# ---- captions ----------------------------------------------------------------------------------------------

def caption_tile(width, height):
    """Outline, a light row under it, a gradient, and a dark row towards the client area."""
    tile = Canvas(width, height)
    tile.fall(0, 1, width, height - 1, CAPTION_HEAD, CAPTION_FOOT)
    tile.rect(0, 0, width, 1, OUTLINE)
    tile.rect(0, 1, width, 2, mix(CAPTION_HEAD, WHITE, 0.28))
    tile.rect(0, height - 1, width, height, OUTLINE)
    return tile


def caption_left(width, height):
    """The left end. The corner is cut by pixels of the exact region key, so it can't be smooth: the outline
    follows the cut, and the pixels in the bends of the outline are half dark, which reads as a curve."""
    end = caption_tile(width, height)

    def cut(x, y):
        return x < 0 or y < 0 or (y < len(CORNER) and x < CORNER[y])

    for y in range(height):
        for x in range(width):
            beside = any(cut(x + dx, y + dy) for dx, dy in ((-1, 0), (0, -1)))
            diagonal = cut(x - 1, y - 1)
            if cut(x, y):
                end.put(x, y, REGION_KEY)
            elif beside:
                end.put(x, y, OUTLINE)
            elif diagonal:
                end.put(x, y, OUTLINE, 0.45)
            elif y < height - 1 and (x == 1 or cut(x - 2, y) or cut(x, y - 2)):
                end.put(x, y, WHITE, 0.14)
    return end


# ---- caption buttons ---------------------------------------------------------------------------------------

def glyph_close(button, colour):
    cx, cy = button.width / 2, button.height / 2
    for turn in (1, -1):
        button.fill(stroke([(cx - 3.6, cy - 3.6 * turn), (cx + 3.6, cy + 3.6 * turn)], 1.7), colour)


def glyph_max(button, colour):
    left, top = button.width // 2 - 5, button.height // 2 - 4
    button.rect(left, top, left + 10, top + 2, colour)
    button.rect(left, top + 8, left + 10, top + 9, colour)
    button.rect(left, top + 2, left + 1, top + 8, colour)
    button.rect(left + 9, top + 2, left + 10, top + 8, colour)


def glyph_min(button, colour):
    left, top = button.width // 2 - 5, button.height // 2 + 2
    button.rect(left, top, left + 10, top + 2, colour)


def glyph_help(button, colour):
    cx, cy = button.width / 2, button.height / 2
    bow = [(cx - 2.7, cy - 2.5), (cx - 2.2, cy - 4.0), (cx - 0.8, cy - 4.9), (cx + 0.9, cy - 4.9),
           (cx + 2.3, cy - 4.0), (cx + 2.6, cy - 2.4), (cx + 1.7, cy - 1.1), (cx + 0.4, cy - 0.2), (cx, cy + 1.5)]
    button.fill(stroke(bow, 1.7), colour)
    button.fill(disc(cx, cy + 4.2, 1.15), colour)


def caption_button(caption_height, box, glyph, state, alarming):
    """A button is copied opaquely, so it carries the piece of caption that it stands on."""
    top = box['top']
    button = caption_tile(box['width'], caption_height).crop(0, top, box['width'], top + box['height'])
    face = rounded(0, 0, button.width, button.height, 3.5)
    if state == 'hot':
        if alarming:
            button.fill_fall(face, 0, button.height, RED_LIGHT, RED)
        else:
            button.fill(face, WHITE, 0.26)
    elif state == 'down':
        button.fill(face, RED_DEEP if alarming else mix(OUTLINE, INK, 0.5), 1 if alarming else 0.8)
    glyph(button, mix(CAPTION_HEAD, WHITE, 0.9) if state == 'normal' else WHITE)
    return button


# ---- records -----------------------------------------------------------------------------------------------

STATES = ('normal', 'hot', 'down')


def gripper():
    """Six dots towards the bottom right corner. The last column and row stay clear: on a frame they would fall
    on the border."""
    grip = Canvas(13, 13, KEY)
    for x, y in ((9, 1), (9, 5), (9, 9), (5, 5), (5, 9), (1, 9)):
        grip.rect(x + 1, y + 1, x + 3, y + 3, WHITE)
        grip.rect(x, y, x + 2, y + 2, mix(LINE, INK, 0.25))
    grip.rect(12, 0, 13, 13, KEY)
    grip.rect(0, 12, 13, 13, KEY)
    return grip


def frame():
    left = caption_left(BORDER, FRAME_CAPTION)
    art = {
        'BMP_FRAME_CAPTION_LEFT': ('frame/caption_left', left),
        'BMP_FRAME_CAPTION_TILE': ('frame/caption_tile', caption_tile(32, FRAME_CAPTION)),
        'BMP_FRAME_CAPTION_RIGHT': ('frame/caption_right', left.mirrored()),
        'BMP_FRAME_CAPTION_TITLE': ('frame/caption_title', caption_tile(PLATE_WIDTH, FRAME_CAPTION)),
        'BMP_FRAME_GRIPPER': ('frame/gripper', gripper()),
    }
    for kind, glyph in (('close', glyph_close), ('max', glyph_max), ('min', glyph_min)):
        for state in STATES:
            art['BMP_FRAME_%s_%s' % (kind.upper(), state.upper())] = (
                'frame/%s_%s' % (kind, state),
                caption_button(FRAME_CAPTION, FRAME_BUTTON, glyph, state, kind == 'close'))
    return art


def dialog():
    left = caption_left(BORDER + 3, DIALOG_CAPTION)     # 3 more: keeps the title clear of the icon
    art = {
        'BMP_DLG_CAPTION_LEFT': ('dialog/caption_left', left),
        'BMP_DLG_CAPTION_RIGHT': ('dialog/caption_right', left.mirrored()),
        'BMP_DLG_CAPTION_TILE': ('dialog/caption_tile', caption_tile(32, DIALOG_CAPTION)),
    }
    for kind, glyph in (('close', glyph_close), ('min', glyph_min), ('max', glyph_max), ('help', glyph_help)):
        for state in STATES:
            art['BMP_DLG_%s_%s' % (kind.upper(), state.upper())] = (
                'dialog/%s_%s' % (kind, state),
                caption_button(DIALOG_CAPTION, DIALOG_BUTTON, glyph, state, kind == 'close'))
    return art


def frame_patch(width):
    """From the foot of the menu bar's band to the colour that the side border starts with. The last rows hold
    that colour exactly, since the border's start is read from them."""
    patch = Canvas(width, 10, FRAME_SIDE)
    patch.fall(0, 0, width, 8, BAND_FOOT, FRAME_SIDE)
    return patch


def small_arrow(canvas, left, top, colour):
    """A filled triangle, 7 by 4 pixels, pointing down."""
    for row in range(4):
        canvas.rect(left + row, top + row, left + 7 - row, top + row + 1, colour)


TOOL_SURFACE = mix(PORCELAIN, SURFACE_END, 0.4)


def tool_face(width, first, second, edge):
    """A soft face with little contrast at its edge: it is stretched whole, and a doubled row must not show."""
    face = Canvas(width, 22, TOOL_SURFACE)
    face.fill(rounded(0, 0, width, 22, 2.5), edge)
    face.fill_fall(rounded(1, 1, width - 1, 21, 1.8), 1, 21, first, second)
    return face


def drop_face(first, second, edge):
    face = tool_face(38, first, second, edge)
    face.rect(23, 4, 24, 18, edge, 0.7)
    small_arrow(face, 28, 10, INK)
    return face


def toolbar():
    hot = (mix(MIST, WHITE, 0.45), MIST, MIST_LINE)
    down = (MIST_DEEP, mix(MIST_DEEP, MIST, 0.5), mix(MIST_LINE, SLATE, 0.45))
    background = Canvas(16, 80, SURFACE_END)
    background.fall(0, 0, 16, 48, PORCELAIN, SURFACE_END)
    arrow = Canvas(7, 4, KEY)
    small_arrow(arrow, 0, 0, INK)
    spare = tool_face(23, PORCELAIN, SURFACE_TOP, LINE_SOFT)
    return {
        'BMP_TOOL_SPARE': ('toolbar/spare', spare),
        'BMP_TOOL_BTN_HOT': ('toolbar/button_hot', tool_face(23, *hot)),
        'BMP_TOOL_BTN_DOWN': ('toolbar/button_down', tool_face(23, *down)),
        'BMP_TOOL_FRAME_LEFT': ('toolbar/frame_left', frame_patch(BORDER - 1)),
        'BMP_TOOL_FRAME_RIGHT': ('toolbar/frame_right', frame_patch(BORDER)),
        'BMP_TOOL_BACKGROUND': ('toolbar/background', background),
        'BMP_TOOL_DROP_ARROW': ('toolbar/drop_arrow', arrow),
        'BMP_TOOL_DROP_HOT': ('toolbar/drop_hot', drop_face(*hot)),
        'BMP_TOOL_DROP_DOWN': ('toolbar/drop_down', drop_face(*down)),
    }


# ---- dock panes --------------------------------------------------------------------------------------------

def dock_caption(active):
    tile = Canvas(24, 22)
    if active:
        tile.fall(0, 0, 24, 22, SLATE_LIGHT, SLATE)
    else:
        tile.fall(0, 0, 24, 22, PORCELAIN, mix(SURFACE_END, LINE_SOFT, 0.5))
    edge = OUTLINE if active else LINE
    tile.rect(0, 0, 24, 1, edge)
    tile.rect(0, 21, 24, 22, edge)
    left = tile.crop(0, 0, 4, 22)
    left.rect(0, 0, 1, 22, edge)
    return left, tile, left.mirrored()


def dock_glyph(button, kind, colour):
    if kind == 'close':
        for turn in (1, -1):
            button.fill(stroke([(5, 8 - 3 * turn), (11, 8 + 3 * turn)], 1.5), colour)
    elif kind == 'pin':         # upright: the pane stays
        button.rect(6, 3, 10, 9, colour)
        button.rect(7, 4, 8, 8, WHITE, 0.6)
        button.rect(4, 9, 12, 10, colour)
        button.rect(8, 10, 9, 13, colour)
    elif kind == 'unpin':       # lying: the pane hides
        button.rect(7, 6, 13, 10, colour)
        button.rect(8, 7, 12, 8, WHITE, 0.6)
        button.rect(6, 4, 7, 12, colour)
        button.rect(3, 8, 6, 9, colour)
    else:
        small_arrow(button, 5, 6, colour)


def dock_button(kind, state):
    base = mix(PORCELAIN, SURFACE_END, 0.6)
    button = Canvas(16, 16, base)
    if state != 'normal':
        button.fill(rounded(0, 0, 16, 16, 2.5), MIST_LINE if state == 'hot' else SLATE_DEEP)
        button.fill(rounded(1, 1, 15, 15, 1.8), MIST if state == 'hot' else SLATE)
    dock_glyph(button, kind, WHITE if state == 'down' else INK)
    return button


def dock_tab(selected):
    tab = Canvas(24, 20, SURFACE_END)
    shape = rounded(0, -6, 24, 20, 3)      # tabs hang below the pane
    tab.fill(shape, LINE if selected else LINE_SOFT)
    tab.fill_fall(rounded(1, -6, 23, 19, 2), 0, 19, WHITE if selected else SURFACE_TOP,
                  PORCELAIN if selected else mix(SURFACE_END, LINE_SOFT, 0.3))
    if not selected:
        tab.rect(0, 0, 24, 1, LINE)
    return tab.crop(0, 0, 4, 20), tab.crop(4, 0, 20, 20), tab.crop(20, 0, 24, 20)


def dock_grip(upright):
    grip = Canvas(8, 16, TOOL_SURFACE)
    for y in (2, 6, 10):
        grip.rect(4, y + 1, 6, y + 3, WHITE)
        grip.rect(3, y, 5, y + 2, mix(LINE, INK, 0.2))
    if upright:
        return grip
    turned = Canvas(16, 8)
    turned.rows = [[grip.get(x, y) for y in range(16)] for x in range(8)]
    return turned


def dock_edge(width, height, line):
    edge = Canvas(width, height, SURFACE_END)
    edge.rect(*line, LINE)
    return edge


def dockbar():
    """Pieces a host may draw its dock panes with, in the order of the ids."""
    pieces = []
    for active in (True, False):
        name = 'active' if active else 'inactive'
        pieces += zip(('caption_%s_left' % name, 'caption_%s_tile' % name, 'caption_%s_right' % name),
                      dock_caption(active))
    for kind in ('close', 'pin', 'unpin', 'menu'):
        pieces += [('%s_%s' % (kind, state), dock_button(kind, state)) for state in STATES]
    pieces += [('grip_upright', dock_grip(True)), ('grip_level', dock_grip(False))]
    for selected in (False, True):
        name = 'tab_selected' if selected else 'tab'
        pieces += zip((name + '_left', name + '_tile', name + '_right'), dock_tab(selected))
    pieces += [
        ('edge_left', dock_edge(3, 16, (0, 0, 1, 16))), ('edge_top', dock_edge(16, 3, (0, 0, 16, 1))),
        ('edge_right', dock_edge(3, 16, (2, 0, 3, 16))), ('edge_bottom', dock_edge(16, 3, (0, 2, 16, 3))),
        ('splitter_upright', Canvas(4, 16, SURFACE_END)), ('splitter_level', Canvas(16, 4, SURFACE_END)),
    ]
    return {'BMP_DOCK_%02d' % i: ('dockbar/%02d_%s' % (i, name), canvas)
            for i, (name, canvas) in enumerate(pieces)}
