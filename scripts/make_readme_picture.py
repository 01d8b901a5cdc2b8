#!/usr/bin/python3
"""Makes the README's picture from a document that the built command has just saved.

    scripts/make_readme_picture.py

It saves examples/still.exr with its alpha as a mask and for display, reads the document back with
psd-tools, and puts three panels side by side: the layer's colours as they stand in the file, its
mask, and both together. Needs a build (./demo makes one) and Debian's python3-psd-tools.
"""
import pathlib
import subprocess
import tempfile

import numpy
from PIL import Image
from psd_tools import PSDImage

ROOT = pathlib.Path(__file__).resolve().parents[1]
COMMAND = ROOT / "build/linux/bin/veltrane"
PICTURE = ROOT / "docs/images/document.png"

CHECKER = 12  # pixels a square of the background that shows through
GAP = 12
COLORS, MASK = (0, 1, 2), -2


def save(folder):
    document = pathlib.Path(folder) / "still.psd"
    subprocess.run([COMMAND, "save", ROOT / "examples/still.exr", "-o", document, "-q",
                    "--set", "bitDepth=8", "--set", "outputRenderAs=2",
                    "--set", "premultipliedAlpha=0", "--set", "renderSRGBCorrect=1"], check=True)
    return PSDImage.open(document)


def plane(layer, wanted, document):
    """One channel of a layer as it stands in the file, untouched by any compositing."""
    for info, data in zip(layer._record.channel_info, layer._channels):
        if info.id == wanted:
            return numpy.frombuffer(
                data.get_data(document.width, document.height, document.depth, document.version),
                numpy.uint8).reshape(document.height, document.width)
    raise SystemExit(f"make_readme_picture: the layer has no channel {wanted}")


def main():
    with tempfile.TemporaryDirectory() as folder:
        document = save(folder)
        layer = next(layer for layer in document if layer.name == "Render")
        colors = numpy.dstack([plane(layer, channel, document) for channel in COLORS])
        mask = plane(layer, MASK, document)

    rows, columns = numpy.indices(mask.shape) // CHECKER
    background = numpy.where((rows + columns) % 2, 204, 255)[..., None]
    opacity = mask[..., None] / 255.0
    together = colors * opacity + background * (1 - opacity)
    panels = [colors, numpy.repeat(mask[..., None], 3, axis=2), together]
    gap = numpy.full((mask.shape[0], GAP, 3), 255)
    row = numpy.hstack([panels[0], gap, panels[1], gap, panels[2]]).astype(numpy.uint8)
    picture = Image.fromarray(row)
    picture = picture.resize((1320, round(1320 * picture.height / picture.width)), Image.LANCZOS)
    PICTURE.parent.mkdir(parents=True, exist_ok=True)
    picture.save(PICTURE, optimize=True)
    print(PICTURE.relative_to(ROOT))


if __name__ == "__main__":
    main()
