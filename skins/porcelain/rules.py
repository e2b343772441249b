"""What a skin has to observe for the library's painting to come out whole; draw.py --check tests each rule."""

import theme

STATES = ('NORMAL', 'HOT', 'DOWN')


def expected_bitmaps():
    names = ['BMP_%s_%s_%s' % (window, kind, state) for state in STATES
             for window, kinds in (('FRAME', ('CLOSE', 'MAX', 'MIN')), ('DLG', ('CLOSE', 'MIN', 'MAX', 'HELP')))
             for kind in kinds]
    names += ['BMP_FRAME_' + part for part in (
        'CAPTION_LEFT', 'CAPTION_TILE', 'CAPTION_RIGHT', 'CAPTION_TITLE', 'GRIPPER')]
    names += ['BMP_DLG_CAPTION_' + part for part in ('LEFT', 'RIGHT', 'TILE')]
    names += ['BMP_COMBO_' + part for part in (
        'LEFT', 'RIGHT', 'TILE', 'DROP_NORMAL', 'DROP_HOT', 'DROP_DISABLED')]
    names += ['BMP_TAB_' + part for part in (
        'LEFT', 'TILE', 'RIGHT', 'SEL_LEFT', 'SEL_TILE', 'SEL_RIGHT', 'PANE_TOPLEFT', 'PANE_TOP', 'PANE_TOPRIGHT',
        'PANE_LEFT', 'PANE_RIGHT', 'PANE_BOTTOM', 'PANE_BOTTOMLEFT', 'PANE_BOTTOMRIGHT')]
    names += ['BMP_HEAD_' + part for part in (
        'LEFT', 'TILE', 'RIGHT', 'DOWN_LEFT', 'DOWN_TILE', 'DOWN_RIGHT', 'SPARE')]
    names += ['BMP_LIST_' + part for part in (
        'TOPLEFT', 'TOPRIGHT', 'BOTTOMLEFT', 'BOTTOMRIGHT', 'TOP', 'LEFT', 'RIGHT', 'BOTTOM')]
    names += ['BMP_BTN_' + part for part in ('CHECK_ON', 'CHECK_OFF', 'RADIO_ON', 'RADIO_OFF')]
    names += ['BMP_TOOL_' + part for part in (
        'SPARE', 'BTN_HOT', 'BTN_DOWN', 'FRAME_LEFT', 'FRAME_RIGHT', 'BACKGROUND',
        'DROP_ARROW', 'DROP_HOT', 'DROP_DOWN')]
    names += ['BMP_SB_ARROW%s_%s' % (number, state)
              for number in ('', '2') for state in ('NORMAL', 'DOWN', 'DISABLED')]
    names += ['BMP_SB_' + part for part in ('TRACK', 'TRACK_DISABLED', 'STUB')]
    names += ['BMP_SB_THUMB_%s%s' % (state, part) for state in ('', 'HOT_') for part in ('TOP', 'BOTTOM', 'TILE')]
    names += ['BMP_MENU_CHECK', 'BMP_MENU_RADIO']
    return names + ['BMP_DOCK_%02d' % i for i in range(32)]


def broken_rules(art):
    """One line for each rule that the art breaks."""
    faults = []

    def need(holds, rule):
        if not holds:
            faults.append(rule)

    expected = expected_bitmaps()
    need(len(expected) == 126, 'the list of ids itself: 126 bitmaps are set by a record')
    need(sorted(art) == sorted(expected), 'bitmap ids: %s' % sorted(set(art) ^ set(expected)))
    need(len(theme.COLOURS) == 64, 'colours 3 to 16 and 19 to 68 are set by a record')
    need(len(theme.SIZES) == 18, 'sizes 0 to 17 are set by a record')
    if faults:
        return faults

    def canvas(name, kind=None):
        return (art['BMP_' + name][kind] if kind else art['BMP_' + name])[1]

    def size(name, kind=None):
        return canvas(name, kind).width, canvas(name, kind).height

    def pixels(name):
        return [tuple(int(channel + 0.5) for channel in pixel) for row in canvas(name).rows for pixel in row]

    # Frame: the region takes its right corner at the right border's width, the painting at the bitmap's; the tile
    # starts at the left border's width, whatever the left end's.
    for side in ('LEFT', 'RIGHT'):
        need(canvas('FRAME_CAPTION_' + side).width == theme.SIZES['SZ_FRAME_' + side],
             'a caption end is as wide as the border below it, ' + side)
    for part in ('LEFT', 'TILE', 'RIGHT', 'TITLE'):
        need(canvas('FRAME_CAPTION_' + part).height == theme.SIZES['SZ_FRAME_CAPTION'],
             'frame caption height, ' + part)
    for part in ('LEFT', 'TILE', 'RIGHT'):
        need(canvas('DLG_CAPTION_' + part).height == theme.SIZES['SZ_DLG_CAPTION'],
             'dialog caption height, ' + part)
    need(canvas('FRAME_CAPTION_TITLE').width + theme.SIZES['SZ_FRAME_LEFT'] + theme.SIZES['SZ_FRAME_RIGHT']
         <= theme.SIZES['SZ_MIN_TRACK_X'] - 100, 'the narrowest frame holds the title plate between its corners')
    need(pixels('TOOL_FRAME_LEFT')[-1] == pixels('TOOL_FRAME_RIGHT')[-1] ==
         tuple(theme.COLOURS['CLR_FRAME_BORDER_FROM']), 'menu bar patches end in the colour of the borders below')

    # Caption buttons: bytes with a sign, inside the caption, of their rectangle's size.
    for packed, window, kinds in (('SZ_FRAME_BUTTONS', 'FRAME', ('CLOSE', 'MAX', 'MIN')),
                                  ('SZ_DLG_BUTTONS', 'DLG', ('CLOSE', 'MIN', 'MAX', 'HELP'))):
        box = theme.SIZES[packed]
        need(all(-128 <= value <= 127 for value in box.values()), packed + ' fits bytes with a sign')
        need(box['top'] + box['height'] < theme.SIZES['SZ_%s_CAPTION' % window], packed + ' lies in the caption')
        for kind in kinds:
            for state in STATES:
                need(size('%s_%s_%s' % (window, kind, state)) == (box['width'], box['height']),
                     '%s %s %s has the size of its rectangle' % (window, kind, state))
            need(len({tuple(pixels('%s_%s_%s' % (window, kind, state))) for state in STATES}) == 3,
                 '%s %s shows three different states' % (window, kind))
    frame_row = theme.SIZES['SZ_FRAME_BUTTONS']
    need(frame_row['left'] + 3 * frame_row['width'] + 2 <= -theme.SIZES['SZ_FRAME_RIGHT'],
         'three buttons end left of the right border')

    # Keys: present where a shape is cut, absent from what is copied whole.
    region_cut = ['FRAME_CAPTION_LEFT', 'FRAME_CAPTION_RIGHT', 'DLG_CAPTION_LEFT', 'DLG_CAPTION_RIGHT',
                  'LIST_TOPLEFT', 'LIST_TOPRIGHT', 'LIST_BOTTOMLEFT', 'LIST_BOTTOMRIGHT']
    keyed = ['FRAME_GRIPPER', 'COMBO_LEFT', 'COMBO_RIGHT', 'TAB_PANE_BOTTOMLEFT', 'TAB_PANE_BOTTOMRIGHT',
             'TOOL_DROP_ARROW', 'BTN_CHECK_ON', 'BTN_CHECK_OFF', 'BTN_RADIO_ON', 'BTN_RADIO_OFF']
    menu_marks = ['MENU_CHECK', 'MENU_RADIO']
    for key, users in ((theme.REGION_KEY, region_cut), (theme.KEY, keyed), (theme.MENU_KEY, menu_marks)):
        for name in expected:
            if not name.startswith('BMP_SB_') or name == 'BMP_SB_STUB':
                holds = tuple(key) in pixels(name[4:])
                need(holds == (name[4:] in users),
                     '%s %s key %s' % (name, 'lacks' if name[4:] in users else 'holds', key))

    # Stretched and tiled parts.
    need(size('COMBO_LEFT')[1] % 2 == size('COMBO_TILE')[1] % 2 == size('COMBO_RIGHT')[1] % 2 == 0,
         'combo faces are even: the last row of an odd one is lost')
    need(size('COMBO_LEFT')[0] >= 4 and size('COMBO_RIGHT')[0] >= 4, 'combo caps cover the border of four pixels')
    ends = ('LEFT', 'TILE', 'RIGHT')
    for what, group in (
            ('page sides, bottom and bottom corners',
             ['TAB_PANE_' + part for part in ('LEFT', 'RIGHT', 'BOTTOM', 'BOTTOMLEFT', 'BOTTOMRIGHT')]),
            ('tabs', ['TAB_' + state + part for state in ('', 'SEL_') for part in ends]),
            ('header pieces', ['HEAD_' + state + part for state in ('', 'DOWN_') for part in ends])):
        need(len({size(name)[1] for name in group}) == 1, what + ' are of one height')
    need(size('LIST_TOPLEFT') == size('LIST_TOPRIGHT') == size('LIST_BOTTOMLEFT') == size('LIST_BOTTOMRIGHT'),
         'list corners are of one size')
    need(size('BTN_CHECK_ON') == size('BTN_CHECK_OFF') and size('BTN_RADIO_ON') == size('BTN_RADIO_OFF'),
         'a mark is of one size in both states')
    need(size('BTN_RADIO_ON')[0] <= size('BTN_CHECK_ON')[0] + 2,
         'the refreshed strip of a radio button holds its mark')
    for name in menu_marks:
        need(size(name) == (16, 16), name + ' is 16 by 16')

    # Scroll bars: the shortest thumb is 12, and a tile higher than the end cap could leave a gap before it.
    for kind, width in (('small', 16), ('large', 17)):
        for state in ('', 'HOT_'):
            top, tile, end = (size('SB_THUMB_%s%s' % (state, part), kind) for part in ('TOP', 'TILE', 'BOTTOM'))
            need(top[0] == tile[0] == end[0] == width - 2, '%s thumb leaves a pixel at each side' % kind)
            need(top[1] + end[1] <= 12 and 0 < tile[1] <= end[1], '%s thumb caps and tile' % kind)
        need(size('SB_TRACK', kind)[0] == size('SB_TRACK_DISABLED', kind)[0] == width, '%s track width' % kind)
        for state in ('NORMAL', 'DOWN', 'DISABLED'):
            need(size('SB_ARROW_' + state, kind) == size('SB_ARROW2_' + state, kind) == (width - 2, width - 2),
                 '%s arrow %s has the size of its rectangle' % (kind, state))
    return faults
