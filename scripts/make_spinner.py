#!/usr/bin/env python3
"""Draws demo/spinner.avi: twelve dots on a ring, one step a frame, as an uncompressed film."""
import math
import struct
import sys

SIDE, FRAMES, DOTS = 24, 12, 12
GROUND = (255, 0, 255)  # what an animation control takes for transparent: its first pixel


def frame(step):
    rows = []
    for y in reversed(range(SIDE)):
        row = bytearray()
        for x in range(SIDE):
            colour = GROUND
            for dot in range(DOTS):
                angle = 2 * math.pi * dot / DOTS
                distance = math.hypot(x - 11.5 - 9 * math.sin(angle), y - 11.5 + 9 * math.cos(angle))
                if distance <= 2:
                    fade = (step - dot) % DOTS / (DOTS - 1)
                    colour = tuple(round(dark + (206 - dark) * fade) for dark in (48, 92, 140))
            row += bytes(reversed(colour))
        rows.append(bytes(row))
    return b"".join(rows)


def chunk(name, body):
    return name + struct.pack("<I", len(body)) + body + b"\0" * (len(body) % 2)


def film():
    size = SIDE * SIDE * 3
    main = struct.pack("<14I", 80000, size * 12, 0, 0x10, FRAMES, 0, 1, size, SIDE, SIDE, 0, 0, 0, 0)
    stream = struct.pack("<4s4sIHHIIIIIIIIhhhh", b"vids", b"DIB ", 0, 0, 0, 0, 1, 12, 0, FRAMES, size,
                         10000, 0, 0, 0, SIDE, SIDE)
    bitmap = struct.pack("<IiiHHIIiiII", 40, SIDE, SIDE, 1, 24, 0, size, 0, 0, 0, 0)
    headers = chunk(b"LIST", b"hdrl" + chunk(b"avih", main) +
                    chunk(b"LIST", b"strl" + chunk(b"strh", stream) + chunk(b"strf", bitmap)))
    frames, index, place = b"", b"", 4
    for step in range(FRAMES):
        piece = chunk(b"00db", frame(step))
        index += struct.pack("<4sIII", b"00db", 0x10, place, size)
        frames += piece
        place += len(piece)
    return chunk(b"RIFF", b"AVI " + headers + chunk(b"LIST", b"movi" + frames) + chunk(b"idx1", index))


with open(sys.argv[1], "wb") as out:
    out.write(film())
