#!/usr/bin/python3
"""Makes the picture in docs/colour.md from documents that the built command has just saved.

    scripts/make_colour_picture.py

It saves examples/still.exr at 16 bits, once as it is and once with a look, reads the documents back
with psd-tools, and puts their layers together: the picture alone, under the gamma layer, and under
the look and the gamma layer. The command is $VELTRANE, or the one of the preset "linux". Needs
Debian's python3-psd-tools and liblcms2-2.
"""
import os
import pathlib
import subprocess
import sys
import tempfile

import numpy
from PIL import Image
from psd_tools import PSDImage

ROOT = pathlib.Path(__file__).resolve().parents[1]
COMMAND = os.environ.get("VELTRANE", ROOT / "build/linux/bin/veltrane")
PICTURE = ROOT / "docs/images/colour.png"
GAP = 12

sys.path.insert(0, str(ROOT / "tests/readers"))
import composite  # noqa: E402 (the folder stands in the path only now)


def save(folder, *arguments):
    document = pathlib.Path(folder) / "still.psd"
    subprocess.run([COMMAND, "save", ROOT / "examples/still.exr", "-o", document, "-q",
                    "--set", "outputRenderAs=0", "--set", "createRenderElementLayers=0",
                    *arguments], check=True)
    return PSDImage.open(document)


def panel(image, hidden=()):
    for layer in image:
        if layer.name.startswith(hidden):
            layer.visible = False
    seen = composite.Composite(image)
    over_grey = seen.color * seen.alpha[..., None] + 0.2 * (1 - seen.alpha[..., None])
    return numpy.round(255 * numpy.clip(over_grey, 0, 1))


def main():
    with tempfile.TemporaryDirectory() as folder:
        panels = [panel(save(folder), ("Gamma",)), panel(save(folder)),
                  panel(save(folder, "--lut", ROOT / "examples/warm.cube"))]
    gap = numpy.full((panels[0].shape[0], GAP, 3), 255)
    row = numpy.hstack([panels[0], gap, panels[1], gap, panels[2]]).astype(numpy.uint8)
    picture = Image.fromarray(row)
    picture = picture.resize((1320, round(1320 * picture.height / picture.width)), Image.LANCZOS)
    picture.save(PICTURE, optimize=True)


if __name__ == "__main__":
    main()
