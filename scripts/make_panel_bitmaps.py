#!/usr/bin/python3
"""Draws the pictures of the panel into ui/bitmaps/.

    scripts/make_panel_bitmaps.py           writes them
    scripts/make_panel_bitmaps.py --check   says which of them aren't what this would write

No font and no picture is read, and the same bytes come out everywhere: letters are strokes, and a
pixel's coverage comes from its distance to them.
"""
import math
import pathlib
import struct
import sys

FOLDER = pathlib.Path(__file__).resolve().parents[1] / "ui/bitmaps"

# ---- Drawing -------------------------------------------------------------------------------------


class Picture:
    """Opaque or empty pixels, red, green and blue from 0 to 255, the first row on top."""

    def __init__(self, width, height, color=None):
        self.width, self.height = width, height
        self.pixels = [color] * (width * height)

    def put(self, x, y, color, coverage=1.0):
        if coverage <= 0 or not (0 <= x < self.width and 0 <= y < self.height):
            return
        below = self.pixels[y * self.width + x] or color
        self.pixels[y * self.width + x] = mix(below, color, min(coverage, 1.0))

    def fill(self, left, top, right, bottom, color):
        for y in range(top, bottom):
            for x in range(left, right):
                self.put(x, y, color)

    def outline(self, left, top, right, bottom, color):
        for x in range(left, right):
            self.put(x, top, color)
            self.put(x, bottom - 1, color)
        for y in range(top, bottom):
            self.put(left, y, color)
            self.put(right - 1, y, color)

    def stroke(self, lines, width, color):
        """Lines of points, with round ends, as one shape."""
        segments = [pair for line in lines for pair in zip(line, line[1:])]
        xs = [x for line in lines for x, _ in line]
        ys = [y for line in lines for _, y in line]
        reach = width / 2 + 1
        for y in range(int(min(ys) - reach), int(max(ys) + reach) + 1):
            for x in range(int(min(xs) - reach), int(max(xs) + reach) + 1):
                near = min(distance((x + 0.5, y + 0.5), *segment) for segment in segments)
                self.put(x, y, color, width / 2 - near + 0.5)

    def polygon(self, points, color):
        """A convex one."""
        for y in range(int(min(y for _, y in points)), int(max(y for _, y in points)) + 1):
            for x in range(int(min(x for x, _ in points)), int(max(x for x, _ in points)) + 1):
                inside = sum(within((x + (i + 0.5) / 4, y + (j + 0.5) / 4), points)
                             for i in range(4) for j in range(4))
                self.put(x, y, color, inside / 16)

    def paste(self, other, left):
        for y in range(self.height):
            for x in range(other.width):
                self.pixels[y * self.width + left + x] = other.pixels[y * other.width + x]

    def bmp(self, alpha):
        """The file's bytes; with an alpha of 255 or 0 a pixel, or without alpha."""
        rows = bytearray()
        for y in reversed(range(self.height)):
            row = bytearray()
            for pixel in self.pixels[y * self.width:(y + 1) * self.width]:
                red, green, blue = (int(value + 0.5) for value in pixel or (0, 0, 0))
                row += bytes((blue, green, red))
                if alpha:
                    row.append(255 if pixel else 0)
            rows += row + bytes(-len(row) % 4)
        header = struct.pack("<IiiHHIIiiII", 40, self.width, self.height, 1, 32 if alpha else 24,
                             0, len(rows), 0, 0, 0, 0)
        return struct.pack("<2sIHHI", b"BM", 54 + len(rows), 0, 0, 54) + header + rows


def mix(below, above, part):
    return tuple(b + (a - b) * part for b, a in zip(below, above))


def distance(point, start, end):
    (px, py), (sx, sy), (ex, ey) = point, start, end
    dx, dy = ex - sx, ey - sy
    length = dx * dx + dy * dy
    along = max(0.0, min(1.0, ((px - sx) * dx + (py - sy) * dy) / length)) if length else 0.0
    return math.hypot(px - sx - along * dx, py - sy - along * dy)


def within(point, points):
    sides = [(x1 - x0) * (point[1] - y0) - (y1 - y0) * (point[0] - x0)
             for (x0, y0), (x1, y1) in zip(points, points[1:] + points[:1])]
    return all(side >= 0 for side in sides) or all(side <= 0 for side in sides)


# ---- Letters -------------------------------------------------------------------------------------


def arc(x, y, radius_x, radius_y, start, end):
    steps = 24
    turns = [math.radians(start + (end - start) * i / steps) for i in range(steps + 1)]
    return [(x + radius_x * math.cos(turn), y + radius_y * math.sin(turn)) for turn in turns]


BOWL = arc(0.28, 0.35, 0.28, 0.35, 0, 360)

# Width and strokes of a letter: y upwards from the base line, capitals 1 high, small letters 0.7.
LETTERS = {
    "A": (0.7, [[(0, 0), (0.35, 1), (0.7, 0)], [(0.11, 0.32), (0.59, 0.32)]]),
    "H": (0.62, [[(0, 0), (0, 1)], [(0.62, 0), (0.62, 1)], [(0, 0.52), (0.62, 0.52)]]),
    "a": (0.56, [BOWL, [(0.56, 0.7), (0.56, 0)]]),
    "b": (0.56, [BOWL, [(0, 1), (0, 0)]]),
    "e": (0.58, [[(0, 0.37), (0.58, 0.37)], arc(0.29, 0.35, 0.29, 0.35, 3, 318)]),
    "l": (0.0, [[(0, 1), (0, 0)]]),
    "n": (0.52, [[(0, 0.7), (0, 0)], arc(0.26, 0.43, 0.26, 0.27, 180, 0) + [(0.52, 0)]]),
    "o": (0.6, [arc(0.3, 0.35, 0.3, 0.35, 0, 360)]),
    "p": (0.56, [BOWL, [(0, 0.7), (0, -0.3)]]),
    "r": (0.34, [[(0, 0.7), (0, 0)], arc(0.28, 0.4, 0.28, 0.3, 180, 75)]),
    "t": (0.4, [[(0, 0.7), (0.4, 0.7)], [(0.14, 0.95), (0.14, 0.18)]
                + arc(0.32, 0.18, 0.18, 0.18, 180, 290)]),
    "u": (0.52, [[(0, 0.7)] + arc(0.26, 0.27, 0.26, 0.27, 180, 360), [(0.52, 0.7), (0.52, 0)]]),
    "v": (0.56, [[(0, 0.7), (0.28, 0), (0.56, 0.7)]]),
}
BETWEEN = 0.24


def word_width(word, height):
    return height * (sum(LETTERS[letter][0] for letter in word) + BETWEEN * (len(word) - 1))


def draw_word(picture, word, left, base, height, weight, color):
    for letter in word:
        width, lines = LETTERS[letter]
        picture.stroke([[(left + x * height, base - y * height) for x, y in line]
                        for line in lines], weight, color)
        left += (width + BETWEEN) * height


# ---- The header of the main rollup ---------------------------------------------------------------

# By per cent of the host's scale: the size of the header's 217 by 20 dialog units in pixels, as the
# dialogs' font has them.
HEADERS = {100: (326, 30), 125: (434, 38), 150: (488, 43), 200: (651, 58)}
# The words that can be clicked, with the middle and width of their zones in the dialog, and the
# height of their middle, in dialog units.
LINKS = (("About", 16.5, 27), ("Help", 196.5, 23))
LINK_HEIGHT = 8.25

TOP, BOTTOM, LINE = (58, 68, 80), (36, 43, 52), (79, 157, 222)
NAME, LINK = (240, 244, 248), (150, 200, 242)
SHEETS = ((52, 104, 158), (79, 157, 222), (184, 219, 246))


def header(scale):
    width, height = HEADERS[scale]
    unit_x, unit_y = width / 217, height / 20
    picture = Picture(width, height)
    for y in range(height):
        picture.fill(0, y, width, y + 1, mix(TOP, BOTTOM, y / (height - 1)))
    picture.fill(0, height - max(1, scale // 100), width, height, LINE)

    size = 5.4 * unit_y
    for word, middle, room in LINKS:
        left = middle * unit_x - word_width(word, size) / 2
        draw_word(picture, word, left, LINK_HEIGHT * unit_y + size * 0.4, size, 0.15 * size, LINK)
        assert word_width(word, size) < room * unit_x

    size = 10.0 * unit_y
    sheet = 1.5 * size
    left = (width - word_width("veltrane", size) - sheet - 0.5 * size) / 2
    middle = 0.46 * height
    for i, color in enumerate(SHEETS):
        y = middle + (1 - i) * 0.22 * size
        x = left + sheet / 2
        picture.polygon([(x - sheet / 2, y), (x, y - 0.3 * size), (x + sheet / 2, y),
                         (x, y + 0.3 * size)], color)
    draw_word(picture, "veltrane", left + sheet + 0.5 * size, middle + 0.4 * size, size,
              0.125 * size, NAME)
    return picture


# ---- What a matte becomes ------------------------------------------------------------------------

KIND_WIDTH, KIND_HEIGHT = 27, 18
FRAME, FADED = (70, 76, 84), (150, 150, 150)


def kind(background, disc):
    """A frame with a disc; both are functions of the place in the picture."""
    picture = Picture(KIND_WIDTH, KIND_HEIGHT)
    for y in range(KIND_HEIGHT):
        for x in range(KIND_WIDTH):
            picture.put(x, y, background(x, y))
            away = math.hypot(x + 0.5 - KIND_WIDTH / 2, y + 0.5 - KIND_HEIGHT / 2)
            picture.put(x, y, disc(x, y), 6.0 - away + 0.5)
    picture.outline(0, 0, KIND_WIDTH, KIND_HEIGHT, FRAME)
    return picture


def checkers(x, y):
    return (255, 255, 255) if ((x - 1) // 4 + (y - 1) // 4) % 2 == 0 else (192, 192, 192)


def shaded(x, y):
    light = max(0.0, 1 - math.hypot(x - 11.0, y - 6.0) / 11)
    return mix((120, 40, 20), (255, 170, 90), light)


def flat(color):
    return lambda x, y: color


def faded(picture):
    other = Picture(picture.width, picture.height)
    other.pixels = [mix(pixel, FADED, 0.55) for pixel in picture.pixels]
    return other


def output_kinds():
    channels = kind(flat((0, 0, 0)), flat((255, 255, 255)))
    alpha_matte = kind(checkers, flat((60, 110, 170)))
    cut_out = kind(checkers, shaded)
    kinds = [channels, alpha_matte, cut_out]
    return strip(kinds + [faded(each) for each in kinds])


def strip(pictures):
    whole = Picture(sum(picture.width for picture in pictures), pictures[0].height)
    left = 0
    for picture in pictures:
        whole.paste(picture, left)
        left += picture.width
    return whole


# ---- Check boxes of the lists --------------------------------------------------------------------

CHECK = [[(4.5, 8.2), (7.2, 11.0), (11.7, 5.0)]]
ON, OFF = ((96, 104, 114), (255, 255, 255), (24, 92, 168)), ((165, 170, 176), (236, 236, 236),
                                                          (150, 156, 163))


def check_box(mark, colors):
    edge, inside, ink = colors
    picture = Picture(16, 16)
    picture.fill(1, 1, 15, 15, inside)
    picture.outline(1, 1, 15, 15, edge)
    if mark == "check":
        picture.stroke(CHECK, 2.0, ink)
    elif mark == "mixed":
        picture.fill(4, 4, 12, 12, ink)
    return picture


def checks():
    return strip([check_box("", ON), check_box("check", ON), check_box("", OFF),
                  check_box("check", OFF), check_box("mixed", ON)])


# ---- The files -----------------------------------------------------------------------------------


def pictures():
    """The bytes of each file, by its name."""
    made = {f"header_{scale}.bmp": header(scale).bmp(alpha=False) for scale in HEADERS}
    made["output_kinds.bmp"] = output_kinds().bmp(alpha=False)
    made["checks.bmp"] = checks().bmp(alpha=True)
    made["check_off.bmp"] = check_box("", ON).bmp(alpha=True)
    return made


def differing():
    """Names of files that aren't what this makes, or that this doesn't make."""
    made = pictures()
    there = {path.name: path.read_bytes() for path in FOLDER.glob("*")}
    return sorted(name for name in made.keys() | there.keys() if made.get(name) != there.get(name))


def main():
    if sys.argv[1:] == ["--check"]:
        names = differing()
        if names:
            sys.exit("ui/bitmaps: run scripts/make_panel_bitmaps.py for " + ", ".join(names))
        return
    FOLDER.mkdir(exist_ok=True)
    for name, content in pictures().items():
        (FOLDER / name).write_bytes(content)


if __name__ == "__main__":
    main()
