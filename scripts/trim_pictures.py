#!/usr/bin/python3
"""Turns bitmaps of windows into PNG files without the empty rows at their lower end.

    scripts/trim_pictures.py FROM TO SUFFIX

FROM/NAME.bmp becomes TO/NAMESUFFIX.png.
"""
import pathlib
import sys

import numpy
from PIL import Image

# Pixels kept below what the window shows.
MARGIN = 8


def trimmed(picture):
    """Without the rows at the end that are of one colour each, but for a margin."""
    pixels = numpy.asarray(picture)
    plain = (pixels == pixels[:, :1]).all(axis=(1, 2))
    last = len(pixels) - int(numpy.argmin(plain[::-1]))
    return picture.crop((0, 0, picture.width, min(last + MARGIN, picture.height)))


def main(source, target, suffix):
    for path in sorted(pathlib.Path(source).glob("*.bmp")):
        trimmed(Image.open(path).convert("RGB")).save(pathlib.Path(target) / f"{path.stem}{suffix}.png")


main(*sys.argv[1:])
