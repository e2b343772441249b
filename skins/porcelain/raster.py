"""A small rasteriser for skin art: an RGB canvas, anti-aliased shapes, and a PNG writer.

Shapes are signed distance functions (negative inside, in pixels); a pixel's coverage is read from the distance
at its centre. Only sums, products and square roots are used, so every machine draws the same bytes.
"""

import math
import struct
import zlib


def rgb(text):
    """'#RRGGBB' to a tuple of three numbers."""
    return tuple(int(text[i:i + 2], 16) for i in (1, 3, 5))


def mix(first, second, amount):
    """The colour `amount` (0 to 1) of the way from `first` to `second`."""
    return tuple(a + (b - a) * amount for a, b in zip(first, second))


# ---- shapes ------------------------------------------------------------------------------------------------

def rounded(left, top, right, bottom, radius):
    """A rectangle with round corners; its edges lie on pixel borders."""
    cx, cy = (left + right) / 2, (top + bottom) / 2
    hx, hy = (right - left) / 2 - radius, (bottom - top) / 2 - radius

    def distance(x, y):
        dx, dy = abs(x - cx) - hx, abs(y - cy) - hy
        outside = math.sqrt(max(dx, 0) ** 2 + max(dy, 0) ** 2)
        return outside + min(max(dx, dy), 0) - radius
    return distance


def disc(cx, cy, radius):
    return lambda x, y: math.sqrt((x - cx) ** 2 + (y - cy) ** 2) - radius


def stroke(points, width):
    """A polyline of the given width with round ends."""
    def distance(x, y):
        best = 1e9
        for (ax, ay), (bx, by) in zip(points, points[1:]):
            ux, uy = bx - ax, by - ay
            length = ux * ux + uy * uy
            t = 0 if length == 0 else min(1, max(0, ((x - ax) * ux + (y - ay) * uy) / length))
            best = min(best, math.sqrt((x - ax - t * ux) ** 2 + (y - ay - t * uy) ** 2))
        return best - width / 2
    return distance


def coverage(shape, x, y):
    return min(1, max(0, 0.5 - shape(x + 0.5, y + 0.5)))


# ---- canvas ------------------------------------------------------------------------------------------------

class Canvas:
    """A picture of `width` by `height` pixels, kept as colours with fractions until it is written."""

    def __init__(self, width, height, colour=(255, 255, 255)):
        self.width, self.height = width, height
        self.rows = [[colour] * width for _ in range(height)]

    def get(self, x, y):
        return self.rows[y][x]

    def put(self, x, y, colour, alpha=1):
        if 0 <= x < self.width and 0 <= y < self.height and alpha > 0:
            self.rows[y][x] = colour if alpha >= 1 else mix(self.rows[y][x], colour, alpha)

    def rect(self, left, top, right, bottom, colour, alpha=1):
        for y in range(top, bottom):
            for x in range(left, right):
                self.put(x, y, colour, alpha)

    def fall(self, left, top, right, bottom, first, second):
        """A vertical gradient: `first` in the top row, `second` in the bottom row."""
        for y in range(top, bottom):
            self.rect(left, y, right, y + 1, mix(first, second, (y - top) / max(1, bottom - top - 1)))

    def across(self, left, top, right, bottom, first, second):
        """A horizontal gradient: `first` in the left column, `second` in the right column."""
        for x in range(left, right):
            self.rect(x, top, x + 1, bottom, mix(first, second, (x - left) / max(1, right - left - 1)))

    def fill(self, shape, colour, alpha=1):
        for y in range(self.height):
            for x in range(self.width):
                self.put(x, y, colour, coverage(shape, x, y) * alpha)

    def fill_fall(self, shape, top, bottom, first, second):
        """Fills a shape with a vertical gradient that runs over the rows `top` to `bottom` - 1."""
        for y in range(self.height):
            colour = mix(first, second, min(1, max(0, (y - top) / max(1, bottom - top - 1))))
            for x in range(self.width):
                self.put(x, y, colour, coverage(shape, x, y))

    def key_outside(self, shape, key, threshold=0.08):
        """Gives the key colour to every pixel that the shape doesn't cover. The key stays exact: a pixel is
        either the key or opaque, with its edge already blended against the surface it will stand on."""
        for y in range(self.height):
            for x in range(self.width):
                if coverage(shape, x, y) < threshold:
                    self.rows[y][x] = key

    def blit(self, source, x0, y0, left=0, top=0, right=None, bottom=None):
        for y in range(top, source.height if bottom is None else bottom):
            for x in range(left, source.width if right is None else right):
                self.put(x0 + x - left, y0 + y - top, source.get(x, y))

    def mirrored(self):
        """A copy with left and right exchanged."""
        copy = Canvas(self.width, self.height)
        copy.rows = [row[::-1] for row in self.rows]
        return copy

    def flipped(self):
        """A copy with top and bottom exchanged."""
        copy = Canvas(self.width, self.height)
        copy.rows = [list(row) for row in self.rows[::-1]]
        return copy

    def crop(self, left, top, right, bottom):
        piece = Canvas(right - left, bottom - top)
        piece.blit(self, 0, 0, left, top, right, bottom)
        return piece

    def png(self):
        """The picture as the bytes of a 24-bit PNG file. The pixels stand in stored blocks, so that the bytes
        don't depend on the release of a compressor."""
        raw = b''.join(b'\0' + bytes(min(255, max(0, int(channel + 0.5))) for pixel in row for channel in pixel)
                       for row in self.rows)
        blocks = [raw[i:i + 65535] for i in range(0, len(raw), 65535)]
        body = b'\x78\x01' + b''.join(
            struct.pack('<BHH', i == len(blocks) - 1, len(block), len(block) ^ 0xFFFF) + block
            for i, block in enumerate(blocks)) + struct.pack('>I', zlib.adler32(raw))

        def chunk(kind, data):
            return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))
        header = struct.pack('>IIBBBBB', self.width, self.height, 8, 2, 0, 0, 0)
        return b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', header) + chunk(b'IDAT', body) + chunk(b'IEND', b'')
