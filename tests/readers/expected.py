#!/usr/bin/python3
"""What a document's pixels must be, computed from the render file by a road of its own.

It shares nothing with the program: OpenImageIO for Python reads the file, and numpy does the
arithmetic on whole images, in integers or double precision wherever the program counts in 16 bits.

Run as a program it prints the red, green, blue and alpha planes of the render's layer, one after
the other, as raw bytes of an 8-bit document:

    expected.py RENDER.exr
"""
import sys

import numpy
import OpenImageIO as oiio

FULL = 65535


def read_beauty(path):
    """The picture's red, green, blue and alpha as float32, each as high and wide as the display
    window, zero where the data window doesn't reach; alpha is None where the file has none."""
    image = oiio.ImageInput.open(str(path))
    if image is None:
        raise OSError(oiio.geterror())
    spec = image.spec()
    pixels = numpy.asarray(image.read_image(0, 0, 0, spec.nchannels, oiio.FLOAT),
                           dtype=numpy.float32).reshape(spec.height, spec.width, spec.nchannels)
    image.close()

    def plane(channel):
        candidates = [index for index, name in enumerate(spec.channelnames)
                      if name in (channel, f"ViewLayer.Combined.{channel}")]
        if not candidates:
            return None
        frame = numpy.zeros((spec.full_height, spec.full_width), numpy.float32)
        left, top = spec.x - spec.full_x, spec.y - spec.full_y
        x0, x1 = max(left, 0), min(left + spec.width, spec.full_width)
        y0, y1 = max(top, 0), min(top + spec.height, spec.full_height)
        if x0 < x1 and y0 < y1:
            frame[y0:y1, x0:x1] = pixels[y0 - top:y1 - top, x0 - left:x1 - left, candidates[0]]
        return frame

    if plane("R") is None:  # a grey picture is one in which all three colours are the same
        return [plane("Y")] * 3 + [plane("A")]
    return [plane(channel) for channel in "RGBA"]


def to_16_bits(plane):
    """A linear float plane in the 16 bits in which a host hands rows on, 65535 being 1.0."""
    return numpy.floor(numpy.clip(plane.astype(numpy.float64), 0, 1) * FULL + 0.5).astype(
        numpy.int64)


def power_table(gamma):
    """A host's file gamma, which it holds in single precision: 8192 entries, taken with the upper
    13 bits of a sample."""
    power = 1.0 / float(numpy.float32(gamma))
    return numpy.floor(FULL * (numpy.arange(8192) / 8191.0) ** power + 0.5).astype(numpy.int64)


def srgb_table():
    linear = numpy.arange(8192) / 8191.0
    curved = numpy.where(linear <= 0.0031308, linear * 12.92,
                         1.055 * linear ** 0.4166666666666667 - 0.055)
    return numpy.minimum(65535.0, curved * 65536.0).astype(numpy.int64)


def unpremultiplied(color, alpha):
    """Integer division of 16-bit colours by their alpha, which counts 13 bits."""
    short = alpha >> 3
    return numpy.where(short == 0, color,
                       numpy.minimum(color * 8191 // numpy.maximum(short, 1), FULL))


def layer_planes(beauty, depth, premultiplied=True, table=None):
    """Red, green, blue and alpha (None where the render has none) of the render's layer in a
    document of 8, 16 or 32 bits. `table` is applied to the colours below 32 bits."""
    *colors, alpha = beauty
    if depth == 32:
        if not premultiplied and alpha is not None:
            with numpy.errstate(divide="ignore", invalid="ignore"):
                colors = [numpy.where(alpha != 0, color / alpha, color) for color in colors]
        return [*colors, alpha]

    wide_alpha = None if alpha is None else to_16_bits(alpha)
    wide = [to_16_bits(color) for color in colors]
    if not premultiplied and alpha is not None:
        wide = [unpremultiplied(color, wide_alpha) for color in wide]
    if table is not None:
        wide = [table[color >> 3] for color in wide]
    wide.append(wide_alpha)
    kind, shift = (numpy.uint8, 8) if depth == 8 else (numpy.uint16, 0)
    return [None if plane is None else (plane >> shift).astype(kind) for plane in wide]


def full_plane(like, depth):
    """The white of a document: the largest integer, or 1.0 in 32 bits."""
    value, kind = {8: (255, numpy.uint8), 16: (FULL, numpy.uint16),
                   32: (1.0, numpy.float32)}[depth]
    return numpy.full(like.shape, value, kind)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    for expected_plane in layer_planes(read_beauty(sys.argv[1]), 8):
        sys.stdout.buffer.write(expected_plane.tobytes())
