#!/usr/bin/python3
"""The mattes of a render file's Cryptomattes, summed up by a road of their own.

It shares nothing with the program: OpenImageIO for Python reads the file, the hash is worked out
here in Python's own integers, and numpy sums the coverages of all ranks.
"""
import json

import numpy
import OpenImageIO as oiio

MASK = 0xFFFFFFFF


def rotated(value, bits):
    return (value << bits | value >> 32 - bits) & MASK


def murmur3(data, seed=0):
    """MurmurHash3_x86_32, after its author's public description."""
    value = seed
    whole = len(data) // 4 * 4
    for at in range(0, whole, 4):
        block = int.from_bytes(data[at:at + 4], "little")
        value ^= rotated(block * 0xCC9E2D51 & MASK, 15) * 0x1B873593 & MASK
        value = (rotated(value, 13) * 5 + 0xE6546B64) & MASK
    if tail := data[whole:]:
        block = int.from_bytes(tail, "little")
        value ^= rotated(block * 0xCC9E2D51 & MASK, 15) * 0x1B873593 & MASK
    value ^= len(data)
    for shift, factor in ((16, 0x85EBCA6B), (13, 0xC2B2AE35)):
        value = (value ^ value >> shift) * factor & MASK
    return value ^ value >> 16


def pixel_id(hash_value):
    """The bits of the float that stands in the pixels: never denormal, infinite or no number."""
    exponent = hash_value >> 23 & 0xFF
    return hash_value ^ 1 << 23 if exponent in (0, 255) else hash_value


class Render:
    """A multilayer file of one part whose ids are floats."""

    def __init__(self, path):
        image = oiio.ImageInput.open(str(path))
        if image is None:
            raise OSError(oiio.geterror())
        spec = image.spec()
        self.channels = list(spec.channelnames)
        self.pixels = numpy.asarray(
            image.read_image(0, 0, 0, spec.nchannels, oiio.FLOAT),
            dtype=numpy.float32).reshape(spec.height, spec.width, spec.nchannels)
        self.attributes = {each.name: each.value for each in spec.extra_attribs}
        image.close()

    def plane(self, channel):
        return self.pixels[..., self.channels.index(channel)]

    def _metadata(self, kind):
        for key, value in self.attributes.items():
            if key.startswith("cryptomatte/") and key.endswith("/name") and value.endswith(kind):
                return value, key[:-len("name")]
        raise KeyError(kind)

    def names(self, kind):
        """The names of a Cryptomatte's manifest, "CryptoObject" or the like."""
        _, key = self._metadata(kind)
        return list(json.loads(self.attributes[key + "manifest"]))

    def coverage(self, kind):
        """Name to coverage (double precision, one value a pixel), for every name of the manifest."""
        layer, _ = self._metadata(kind)
        ranks = []
        for number in range(100):
            if f"{layer}{number:02d}.r" not in self.channels:
                break
            for name_id, amount in (("r", "g"), ("b", "a")):
                ranks.append((self.plane(f"{layer}{number:02d}.{name_id}").view(numpy.uint32),
                              self.plane(f"{layer}{number:02d}.{amount}").astype(numpy.float64)))
        mattes = {}
        for name in self.names(kind):
            wanted = pixel_id(murmur3(name.encode()))
            mattes[name] = sum(numpy.where(ids == wanted, amount, 0.0) for ids, amount in ranks)
        return mattes
