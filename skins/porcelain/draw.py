#!/usr/bin/env python3
"""Draws the Porcelain skin: every image and the manifest, from the palette and sizes in theme.py.

    draw.py            writes the images and manifest.json beside this script
    draw.py --check    draws in memory, compares with the files byte for byte and tests the skin's own rules

The images are kept in the source tree; this script is how they were made. It needs Python 3 and nothing else.
"""

import json
import os
import sys

sys.dont_write_bytecode = True

import controls_art
import theme
import windows_art
from rules import broken_rules

HERE = os.path.dirname(os.path.abspath(__file__))


def collect():
    """All bitmap ids with their file stem and canvas; the scroll bar's with one pair for each of its two sets."""
    art = {}
    for part in (windows_art.frame, windows_art.dialog, controls_art.combobox, controls_art.tabctrl,
                 controls_art.headctrl, controls_art.listbox, controls_art.button, windows_art.toolbar,
                 controls_art.scrollbar, controls_art.menu, windows_art.dockbar):
        art.update(part())
    return art


def hex_colour(colour):
    return '#%02X%02X%02X' % tuple(int(channel + 0.5) for channel in colour)


def manifest(art):
    def paths(entry):
        if isinstance(entry, dict):
            return {kind: stem + '.png' for kind, (stem, _) in entry.items()}
        return entry[0] + '.png'

    return {
        'name': 'Porcelain',
        'bitmaps': {name: paths(entry) for name, entry in art.items()},
        'colours': {name: hex_colour(colour) for name, colour in theme.COLOURS.items()},
        'sizes': theme.SIZES,
    }


def files(art):
    """Relative path to contents, of everything that the script makes."""
    made = {'manifest.json': (json.dumps(manifest(art), indent=2) + '\n').encode()}
    for entry in art.values():
        for stem, canvas in (entry.values() if isinstance(entry, dict) else (entry,)):
            made[stem + '.png'] = canvas.png()
    return made


def write(made):
    for path, contents in made.items():
        target = os.path.join(HERE, *path.split('/'))
        os.makedirs(os.path.dirname(target), exist_ok=True)
        with open(target, 'wb') as file:
            file.write(contents)
    print('%d files, %d bytes' % (len(made), sum(map(len, made.values()))))


def differences(made):
    """What in the folder differs from what the script draws, images that it doesn't draw included."""
    found = []
    for path, contents in made.items():
        target = os.path.join(HERE, *path.split('/'))
        if not os.path.isfile(target):
            found.append(path + ': missing')
        else:
            with open(target, 'rb') as file:
                if file.read() != contents:
                    found.append(path + ': differs from what is drawn')
    for folder, _, names in os.walk(HERE):
        for name in names:
            path = os.path.relpath(os.path.join(folder, name), HERE).replace(os.sep, '/')
            if path.endswith('.png') and path not in made:
                found.append(path + ': drawn by nothing')
    return found


def main():
    art = collect()
    made = files(art)
    if sys.argv[1:] == ['--check']:
        faults = differences(made) + broken_rules(art)
        print('\n'.join(faults) if faults else '%d files agree, all rules hold' % len(made))
        return 1 if faults else 0
    if sys.argv[1:]:
        print(__doc__)
        return 2
    write(made)
    return 0


if __name__ == '__main__':
    sys.exit(main())
