#!/usr/bin/python3
"""Lists what is in layered documents, from the records in the file; needs nothing but Python.

    scripts/list_layers.py DOCUMENT.psd...
"""
import pathlib
import struct
import sys

CHANNEL_NAMES = 1006  # the image resource that names the channels beyond red, green and blue
MASK_CHANNEL, MASK_DISABLED, HIDDEN = -2, 2, 2


class Reader:
    """Walks big-endian numbers, from `position` on."""

    def __init__(self, data, large=False):
        self.data, self.position, self.large = data, 0, large

    def bytes(self, count):
        if count > len(self.data) - self.position:
            raise ValueError("the file is cut off")
        self.position += count
        return self.data[self.position - count:self.position]

    def number(self, code):
        return struct.unpack(">" + code, self.bytes(struct.calcsize(code)))[0]

    def section(self, code="I", align=1):
        """What a length that stands here counts, as a reader of its own."""
        length = self.number(code)
        inside = Reader(self.bytes(length), self.large)
        self.position = min(self.position + -length % align, len(self.data))
        return inside

    def __bool__(self):
        return self.position < len(self.data)


def channel_names(resources):
    names = []
    while resources:
        resources.bytes(4)
        number = resources.number("H")
        name_length = resources.number("B")
        resources.bytes(name_length + (name_length + 1) % 2)
        data = resources.section(align=2)
        while number == CHANNEL_NAMES and data:
            names.append(data.section("B").data.decode("latin-1"))
    return names


def layers_info(section):
    """The layers' own section, which 16 and 32-bit documents keep in a tagged block."""
    wide = "Q" if section.large else "I"
    info = section.section(wide)
    if info:
        return info
    section.section()
    while section:
        key = section.bytes(8)[4:]
        data = section.section(wide if key in (b"Lr16", b"Lr32", b"LMsk") else "I", align=4)
        if key in (b"Lr16", b"Lr32"):
            return data
    return info


def layer(info):
    """Name, kind of set (0 none, 1 and 2 open and closed, 3 its end) and a description."""
    top, left, bottom, right = (info.number("i") for _ in range(4))
    channels = []
    for _ in range(info.number("H")):
        channels.append(info.number("h"))
        info.number("Q" if info.large else "I")
    blend = info.bytes(8)[4:].decode("latin-1").strip()
    _, clipping, flags, _ = info.bytes(4)
    extra = info.section()
    mask = extra.section()
    extra.section()
    name_length = extra.number("B")
    name = extra.bytes(name_length).decode("latin-1")
    extra.bytes(-(name_length + 1) % 4)
    kind = 0
    while extra:
        key = extra.bytes(8)[4:]
        block = extra.section()
        if key == b"luni":
            name = block.bytes(block.number("I") * 2).decode("utf-16-be")
        elif key == b"lsct":
            kind = block.number("I")
    told = ["set" if kind else f"{right - left} x {bottom - top}", blend]
    if flags & HIDDEN:
        told.append("hidden")
    if clipping:
        told.append("clipped")
    if MASK_CHANNEL in channels:
        told.append("disabled mask" if mask.data[17] & MASK_DISABLED else "mask")
    return name, kind, ", ".join(told)


def describe(path):
    file = Reader(pathlib.Path(path).read_bytes())
    if file.bytes(4) != b"8BPS":
        raise ValueError("it is no layered document")
    version = file.number("H")
    file.bytes(6)
    _, height, width, depth, _ = (file.number(code) for code in "HIIHH")
    file.large = version == 2
    file.section()
    channels = channel_names(file.section())
    info = layers_info(file.section("Q" if file.large else "I"))

    yield (f"{'PSB' if file.large else 'PSD'}, {width} x {height}, {depth} bits a channel")
    count = abs(info.number("h")) if info else 0
    indent = "  "
    for name, kind, text in reversed([layer(info) for _ in range(count)]):  # topmost first
        if kind == 3:
            indent = indent[2:]
            continue
        yield f"{indent}{name}: {text}"
        if kind:
            indent += "  "
    for name in channels:
        yield f"  channel {name}"


def main(paths):
    if not paths:
        raise SystemExit(__doc__)
    for path in paths:
        try:
            print(*describe(path), sep="\n")
        except (OSError, ValueError) as fault:
            raise SystemExit(f"list_layers: {path}: {fault}") from fault


if __name__ == "__main__":
    main(sys.argv[1:])
