#!/usr/bin/python3
"""Makes the picture of passes and mattes in docs/passes.md from a document that the built command
has just saved.

    scripts/make_passes_picture.py

It saves examples/still.exr with --all, reads the document back with psd-tools, and shows its layers
from the top down as they stand in the file, each with its name, brightened for display; the
transparency of mattes is shown as white. The command is $VELTRANE, or the one of the preset "linux".
Needs Debian's python3-psd-tools.
"""
import os
import pathlib
import subprocess
import tempfile

import numpy
from PIL import Image, ImageDraw
from psd_tools import PSDImage

ROOT = pathlib.Path(__file__).resolve().parents[1]
COMMAND = os.environ.get("VELTRANE", ROOT / "build/linux/bin/veltrane")
PICTURE = ROOT / "docs/images/passes.png"

COLUMNS, WIDTH, HEIGHT, TEXT, GAP = 6, 220, 124, 14, 6
SETS_OF_MATTES = ("Objects", "Material IDs")


def planes(layer, document):
    """The 8-bit samples of the layer's channels, by the channel's number."""
    return {int(info.id): numpy.frombuffer(
        data.get_data(document.width, document.height, document.depth, document.version),
        numpy.uint8).reshape(document.height, document.width)
        for info, data in zip(layer._record.channel_info, layer._channels) if info.id >= -1}


def tiles(layers, document, path=""):
    for layer in reversed(list(layers)):
        if layer.is_group():
            yield from tiles(layer, document, f"{path}{layer.name}/")
            continue
        if not layer.width:
            continue  # an adjustment layer has no pixels
        samples = planes(layer, document)
        if path.startswith(SETS_OF_MATTES):
            picture = numpy.repeat(samples[-1][..., None], 3, axis=2)
        else:
            colors = numpy.dstack([samples[index] for index in range(3)])
            picture = (255 * (colors / 255.0) ** (1 / 2.2)).astype(numpy.uint8)
        yield path + layer.name, Image.fromarray(picture).resize((WIDTH, HEIGHT), Image.LANCZOS)


def main():
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "still.psd"
        subprocess.run([COMMAND, "save", ROOT / "examples/still.exr", "-o", file, "-q", "--all",
                        "--set", "bitDepth=8"], check=True)
        document = PSDImage.open(file)
        found = list(tiles(document, document))
    rows = -(-len(found) // COLUMNS)
    sheet = Image.new("RGB", (COLUMNS * (WIDTH + GAP) - GAP, rows * (HEIGHT + TEXT + GAP) - GAP),
                      "white")
    draw = ImageDraw.Draw(sheet)
    for index, (name, picture) in enumerate(found):
        left, top = index % COLUMNS * (WIDTH + GAP), index // COLUMNS * (HEIGHT + TEXT + GAP)
        draw.text((left, top), name, fill="black")
        sheet.paste(picture, (left, top + TEXT))
    PICTURE.parent.mkdir(parents=True, exist_ok=True)
    sheet.save(PICTURE, optimize=True)
    print(PICTURE.relative_to(ROOT))


if __name__ == "__main__":
    main()
