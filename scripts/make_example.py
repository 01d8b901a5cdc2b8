#!/usr/bin/python3
"""Cuts the example renders down from the renderer's own, much larger, multilayer files.

    scripts/make_example.py still SOURCE.exr examples/still.exr
    scripts/make_example.py anim SOURCE.####.exr examples/anim.####.exr 1-5

Channels and metadata that are kept are kept bit for bit: a channel has the type that it had in the
source, and nothing is recomputed. Needs Debian's python3-openimageio.
"""
import re
import sys

import OpenImageIO as oiio

VIEW_LAYER = "ViewLayer"

# Passes (the part of the name between the view layer and the channel) that an example keeps.
STILL_PASSES = (
    "Combined "
    "DiffDir DiffInd DiffCol GlossDir GlossInd GlossCol TransDir TransInd TransCol "
    "Emit Env AO Shadow Depth Normal "
    "CryptoObject00 CryptoObject01 CryptoObject02 "
    "CryptoMaterial00 CryptoMaterial01 CryptoMaterial02").split()
ANIM_PASSES = "Combined Depth CryptoObject00 CryptoObject01 CryptoObject02".split()

# Facts of the machine that rendered, which an example has no use for.
DROPPED_ATTRIBUTES = re.compile(r"^(Date|File|RenderTime|cycles\..*_time|DateTime)$")


def cut(source, target, passes):
    """Writes the channels of `passes` and the metadata that belongs to them to `target`."""
    image = oiio.ImageInput.open(source)
    if image is None:
        raise SystemExit(f"make_example: {source}: {oiio.geterror()}")
    spec = image.spec()
    kept = [index for index, name in enumerate(spec.channelnames)
            if name.split(".")[0] == VIEW_LAYER and name.split(".")[1] in passes]
    missing = set(passes) - {spec.channelnames[index].split(".")[1] for index in kept}
    if missing:
        raise SystemExit(f"make_example: {source} has no {', '.join(sorted(missing))}")
    formats = list(spec.channelformats) or [spec.format] * spec.nchannels

    # A manifest stays only where the ranks that it names stay.
    keys = {attribute.name.split("/")[1] for attribute in spec.extra_attribs
            if attribute.name.startswith("cryptomatte/") and attribute.name.endswith("/name")
            and attribute.value.split(".")[-1] + "00" in passes}
    out = oiio.ImageSpec(spec.width, spec.height, len(kept), oiio.FLOAT)
    out.x, out.y = spec.x, spec.y
    out.full_x, out.full_y = spec.full_x, spec.full_y
    out.full_width, out.full_height = spec.full_width, spec.full_height
    out.channelnames = tuple(spec.channelnames[index] for index in kept)
    out.channelformats = tuple(formats[index] for index in kept)
    for attribute in spec.extra_attribs:
        name = attribute.name
        if DROPPED_ATTRIBUTES.match(name) or name == "oiio:subimages":
            continue
        if name.startswith("cryptomatte/") and name.split("/")[1] not in keys:
            continue
        out.attribute(name, attribute.type, attribute.value)
    out.attribute("compression", "zip")
    out.attribute("DateTime", "2000:01:01 00:00:00")  # else the hour at which this script ran

    # 32-bit floats hold every half exactly, so the way through them changes no bit of a half, and
    # OpenImageIO copies floats as they are, whatever a Cryptomatte id looks like as a number.
    pixels = image.read_image(0, 0, 0, spec.nchannels, oiio.FLOAT)
    image.close()
    writer = oiio.ImageOutput.create(target)
    if not writer.open(target, out) or not writer.write_image(pixels[:, :, kept].copy()):
        raise SystemExit(f"make_example: {target}: {writer.geterror()}")
    writer.close()
    verify(source, target, passes)


def verify(source, target, passes):
    """Reads both files again and compares every kept channel bit by bit."""
    before, after = (oiio.ImageInput.open(name) for name in (source, target))
    specs = before.spec(), after.spec()
    for name in specs[1].channelnames:
        left, right = (
            image.read_image(0, 0, spec.channelnames.index(name),
                             spec.channelnames.index(name) + 1, oiio.FLOAT).tobytes()
            for image, spec in ((before, specs[0]), (after, specs[1])))
        if left != right:
            raise SystemExit(f"make_example: {target}: channel {name} differs from {source}")


def main(arguments):
    if len(arguments) == 3 and arguments[0] == "still":
        cut(arguments[1], arguments[2], STILL_PASSES)
    elif len(arguments) == 4 and arguments[0] == "anim":
        first, last = map(int, arguments[3].split("-"))
        for frame in range(first, last + 1):
            cut(*(name.replace("####", f"{frame:04d}") for name in arguments[1:3]), ANIM_PASSES)
    else:
        raise SystemExit(__doc__)


if __name__ == "__main__":
    main(sys.argv[1:])
