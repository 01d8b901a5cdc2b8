#!/usr/bin/python3
"""Documents of the built command, read by a reader that shares no code with it.

psd-tools (Debian's python3-psd-tools) opens them, mostly through its low-level records, since those
show what stands in the file; expected.py computes what the pixels must be. The environment's
VELTRANE names the command. Needs Debian's Python 3.
"""
import itertools
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import numpy
import OpenImageIO as oiio
from psd_tools import PSDImage
from psd_tools.constants import Compression, Resource

import expected

VELTRANE = os.environ["VELTRANE"]
EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"
FRAME = EXAMPLES / "anim.0001.exr"

# What the documents of these tests don't carry, so that they hold the render and nothing else.
RENDER_ONLY = {"createRenderElementLayers": 0, "embedCameraInfo": 0}

RED, GREEN, BLUE, ALPHA, MASK = 0, 1, 2, -1, -2
(WITH_TRANSPARENCY, WITHOUT_TRANSPARENCY, WITH_MASK, WITH_DISABLED_MASK,
 WITH_ALPHA_CHANNEL) = range(5)

SAMPLES = {8: ">u1", 16: ">u2", 32: ">f4"}


def run(*arguments):
    return subprocess.run([VELTRANE, *map(str, arguments)], capture_output=True, text=True,
                          timeout=120)


def settings(values):
    return itertools.chain.from_iterable(("--set", f"{name}={value}")
                                         for name, value in values.items())


class Document:
    """A document as psd-tools sees it, with the samples of every channel as numpy planes."""

    def __init__(self, path):
        self.image = PSDImage.open(path)
        self.header = self.image._record.header
        self.layers = list(self.image)

    def _plane(self, data, width, height):
        plane = numpy.frombuffer(data, SAMPLES[self.header.depth]).reshape(height, width)
        return plane.astype(plane.dtype.newbyteorder("="))

    def channel(self, layer, wanted):
        """The samples of a channel, and how they were compressed."""
        for info, data in zip(layer._record.channel_info, layer._channels):
            if info.id == wanted:
                height, width = self.header.height, self.header.width
                return (self._plane(data.get_data(width, height, self.header.depth,
                                                  self.header.version), width, height),
                        data.compression)
        raise AssertionError(f"no channel {wanted}")

    def channel_ids(self, layer):
        return [int(info.id) for info in layer._record.channel_info]

    def merged(self):
        width, height = self.header.width, self.header.height
        return [self._plane(plane, width, height)
                for plane in self.image._record.image_data.get_data(self.header)]

    def merged_compression(self):
        return self.image._record.image_data.compression

    def resource(self, key):
        return self.image.image_resources.get_data(key)


class DocumentTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def save(self, source=FRAME, name="document.psd", gamma="off", **values):
        target = self.folder / name
        result = run("save", source, "-o", target, "-q", "--gamma", gamma,
                     *settings(RENDER_ONLY | values))
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return self.open(target)

    def open(self, path):
        """Opens a document, of which the reader must find nothing to remark. The one exception is
        the width of the global mask's length in large 8-bit documents: eight bytes in ours, four in
        its book. What stands behind it is unharmed."""
        with open(path, "rb") as file:
            header = file.read(26)
        if header[5] == 2 and header[23] == 8:
            with self.assertLogs("psd_tools", "WARNING") as told:
                document = Document(path)
            self.assertEqual([record.getMessage() for record in told.records],
                             [r"Invalid signature (b'\x00\x00\x00\x0e')"])
            return document
        with self.assertNoLogs("psd_tools", "WARNING"):
            return Document(path)

    def assert_same(self, found, wanted, title):
        """Bit for bit the same, told by the first sample that isn't."""
        self.assertEqual((found.shape, found.dtype), (wanted.shape, wanted.dtype), title)
        unequal = numpy.argwhere(found.view(f"u{found.itemsize}") !=
                                 wanted.view(f"u{wanted.itemsize}"))
        if len(unequal):
            row, column = unequal[0]
            self.fail(f"{title}: {len(unequal)} samples differ, the first in row {row}, column "
                      f"{column}: {found[row, column]} where {wanted[row, column]} belongs")

    def assert_layer(self, document, layer, planes):
        for channel, wanted in zip((RED, GREEN, BLUE, ALPHA), planes):
            self.assert_same(document.channel(layer, channel)[0], wanted, f"channel {channel}")


def every_pair():
    """Style, depth, compression, compatibility and large format in 30 combinations, among which
    every value of one stands at least once with every value of another."""
    for style, depth, compression in itertools.product(range(5), (8, 16, 32), (0, 1)):
        index = (8, 16, 32).index(depth)
        yield (style, depth, compression, (style + index + compression) % 3,
               bool((style + index + compression * (style // 2)) % 2))


class ARenderInEveryForm(DocumentTest):
    @classmethod
    def setUpClass(cls):
        cls.beauty = expected.read_beauty(FRAME)

    def test_every_pair_of_settings_is_there(self):
        combinations = list(every_pair())
        for left, right in itertools.combinations(range(5), 2):
            values = [{combination[side] for combination in combinations}
                      for side in (left, right)]
            pairs = {(combination[left], combination[right]) for combination in combinations}
            self.assertEqual(pairs, set(itertools.product(*values)))

    def test_opens_and_holds_the_renders_pixels(self):
        for style, depth, compression, compatibility, large in every_pair():
            with self.subTest(style=style, depth=depth, compression=compression,
                              compatibility=compatibility, large=large):
                document = self.save(name="document.psb" if large else "document.psd",
                                     outputRenderAs=style, bitDepth=depth,
                                     compression=compression, compatibility=compatibility)
                planes = expected.layer_planes(self.beauty, depth)
                self.check_header(document, style, depth, compatibility, large)
                self.check_layer(document, style, depth, compression, planes)
                self.check_merged(document, style, depth, compression, compatibility, planes)

    def check_header(self, document, style, depth, compatibility, large):
        header = document.header
        self.assertEqual((header.width, header.height), (320, 180))
        self.assertEqual(header.depth, depth)
        self.assertEqual(header.color_mode, 3)
        self.assertEqual(header.version, 2 if large else 1)
        self.assertEqual(header.channels,
                         3 + (compatibility != 0) + (style == WITH_ALPHA_CHANNEL))
        resolution = document.resource(Resource.RESOLUTION_INFO)
        self.assertEqual((resolution.horizontal, resolution.vertical), (72 << 16, 72 << 16))
        version = document.resource(Resource.VERSION_INFO)
        self.assertEqual(version.has_composite, compatibility != 0)
        names = ((["Transparency"] if compatibility else []) +
                 (["Render Alpha"] if style == WITH_ALPHA_CHANNEL else []))
        self.assertEqual(list(document.resource(Resource.ALPHA_NAMES_PASCAL) or []), names)
        # These end with a zero that counts, and that this reader leaves on.
        self.assertEqual(list(document.resource(Resource.ALPHA_NAMES_UNICODE) or []),
                         [f"{name}\0" for name in names])

    def check_layer(self, document, style, depth, compression, planes):
        self.assertEqual([layer.name for layer in document.layers], ["Render"])
        layer, = document.layers
        record = layer._record
        self.assertEqual(record.name, "Render")
        self.assertEqual((record.top, record.left, record.bottom, record.right), (0, 0, 180, 320))
        self.assertEqual(record.blend_mode.value, b"norm")
        self.assertEqual((record.opacity, record.clipping), (255, 0))
        self.assertTrue(layer.visible)

        masked = style in (WITH_MASK, WITH_DISABLED_MASK)
        self.assertEqual(document.channel_ids(layer),
                         [ALPHA, RED, GREEN, BLUE] + ([MASK] if masked else []))
        alpha = planes[3] if style == WITH_TRANSPARENCY else expected.full_plane(planes[0], depth)
        self.assert_layer(document, layer, [*planes[:3], alpha])
        packed = {8: Compression.RLE, 16: Compression.ZIP, 32: Compression.ZIP_WITH_PREDICTION}
        self.assertEqual({data.compression for data in layer._channels},
                         {packed[depth] if compression else Compression.RAW})

        mask = record.mask_data
        self.assertEqual(mask is not None, masked)
        if masked:
            self.assertEqual((mask.top, mask.left, mask.bottom, mask.right), (0, 0, 180, 320))
            self.assertEqual(mask.background_color, 0)
            self.assertEqual(mask.flags.mask_disabled, style == WITH_DISABLED_MASK)
            self.assert_same(document.channel(layer, MASK)[0], planes[3], "the mask")

    def check_merged(self, document, style, depth, compression, compatibility, planes):
        white = expected.full_plane(planes[0], depth)
        wanted = [*planes] if compatibility else [white] * 3
        wanted += [planes[3]] if style == WITH_ALPHA_CHANNEL else []
        found = document.merged()
        self.assertEqual(len(found), len(wanted))
        for index, (left, right) in enumerate(zip(found, wanted)):
            self.assert_same(left, right, f"merged channel {index}")
        packed = compression and (depth == 8 or depth == 16 and compatibility != 2)
        self.assertEqual(document.merged_compression(),
                         Compression.RLE if packed else Compression.RAW)


class TheColours(DocumentTest):
    @classmethod
    def setUpClass(cls):
        cls.beauty = expected.read_beauty(FRAME)

    def check(self, depth, gamma="off", values=None, **way):
        with self.subTest(depth=depth, gamma=gamma):
            document = self.save(gamma=gamma, bitDepth=depth,
                                 outputRenderAs=WITH_TRANSPARENCY, **(values or {}))
            planes = expected.layer_planes(self.beauty, depth, **way)
            self.assert_layer(document, document.layers[0], planes)
            for index, (found, wanted) in enumerate(zip(document.merged(), planes)):
                self.assert_same(found, wanted, f"merged channel {index}")

    def test_are_divided_by_alpha_when_they_are_to_be_straight(self):
        for depth in (8, 16, 32):
            self.check(depth, values={"premultipliedAlpha": 0}, premultiplied=False)

    def test_take_the_srgb_curve_below_32_bits(self):
        table = expected.srgb_table()
        for depth in (8, 16, 32):
            self.check(depth, values={"renderSRGBCorrect": 1}, table=table)

    def test_take_the_file_gamma_below_32_bits(self):
        for gamma in (2.2, 1.8):
            table = expected.power_table(gamma)
            for depth in (8, 16, 32):
                self.check(depth, gamma=gamma, values={"gammaCorrectConfig": 2}, table=table)

    def test_of_a_straight_render_with_gamma_are_divided_first(self):
        self.check(16, gamma=2.2,
                   values={"gammaCorrectConfig": 2, "premultipliedAlpha": 0},
                   premultiplied=False, table=expected.power_table(2.2))

    def test_of_the_layer_stay_linear_where_an_adjustment_layer_is_to_carry_the_gamma(self):
        document = self.save(gamma=2.2, gammaCorrectConfig=3, bitDepth=16,
                             outputRenderAs=WITH_TRANSPARENCY)
        layer, = (layer for layer in document.layers if layer.name == "Render")
        self.assert_layer(document, layer, expected.layer_planes(self.beauty, 16))
        corrected = expected.layer_planes(self.beauty, 16, table=expected.power_table(2.2))
        for index, (found, wanted) in enumerate(zip(document.merged(), corrected)):
            self.assert_same(found, wanted, f"merged channel {index}")

    def test_stay_linear_without_gamma(self):
        self.check(16, values={"gammaCorrectConfig": 2})
        self.check(16, gamma=2.2, values={"gammaCorrectRender": 0})


class OtherRenders(DocumentTest):
    """Files made here, of shapes that the examples don't have."""

    def write(self, names, width=37, height=23, origin=(0, 0), display=None, kind=oiio.FLOAT,
              change=None):
        left, top, full_width, full_height = display or (0, 0, width, height)
        spec = oiio.ImageSpec(width, height, len(names), kind)
        spec.x, spec.y = origin
        spec.full_x, spec.full_y, spec.full_width, spec.full_height = (left, top, full_width,
                                                                       full_height)
        spec.channelnames = tuple(names)
        pixels = numpy.random.default_rng(7).uniform(-0.1, 1.5, (height, width, len(names))).astype(
            numpy.float32)
        if change:
            change(pixels)
        path = self.folder / "made.exr"
        writer = oiio.ImageOutput.create(str(path))
        self.assertTrue(writer.open(str(path), spec) and writer.write_image(pixels),
                        writer.geterror())
        writer.close()
        return path

    def check(self, path, depth=16):
        document = self.save(path, outputRenderAs=WITH_TRANSPARENCY, bitDepth=depth)
        *colors, alpha = expected.layer_planes(expected.read_beauty(path), depth)
        white = expected.full_plane(colors[0], depth)
        layer, = document.layers
        self.assert_layer(document, layer, [*colors, white if alpha is None else alpha])
        return document

    def test_the_frame_is_the_display_window(self):
        for origin, display in (((0, 0), (0, 0, 60, 40)), ((9, 5), (0, 0, 60, 40)),
                                ((-8, -3), (0, 0, 20, 10)), ((-8, -3), (-4, -1, 50, 9)),
                                ((100, 100), (0, 0, 20, 10))):
            with self.subTest(origin=origin, display=display):
                document = self.check(self.write("RGBA", origin=origin, display=display))
                self.assertEqual((document.header.width, document.header.height), display[2:])

    def test_without_alpha_the_layer_is_opaque_and_has_no_mask(self):
        path = self.write("RGB")
        document = self.check(path)
        self.assertEqual(document.header.channels, 3)
        for style in (WITH_MASK, WITH_DISABLED_MASK):
            document = self.save(path, outputRenderAs=style)
            self.assertIsNone(document.layers[0]._record.mask_data)
        document = self.save(path, outputRenderAs=WITH_ALPHA_CHANNEL, bitDepth=16)
        self.assert_same(document.merged()[3],
                         expected.full_plane(document.merged()[0], 16), "the alpha channel")

    def test_one_grey_channel_stands_in_all_three_colours(self):
        self.check(self.write("Y"))

    def test_half_floats_come_exactly_into_32_bits(self):
        self.check(self.write("RGBA", kind=oiio.HALF), depth=32)

    def test_a_png_is_srgb_with_straight_alpha(self):
        stored = numpy.random.default_rng(7).integers(0, 256, (23, 37, 4), dtype=numpy.uint8)
        spec = oiio.ImageSpec(37, 23, 4, oiio.UINT8)
        spec.attribute("oiio:UnassociatedAlpha", 1)
        path = self.folder / "made.png"
        writer = oiio.ImageOutput.create(str(path))
        self.assertTrue(writer.open(str(path), spec) and writer.write_image(stored),
                        writer.geterror())
        writer.close()

        encoded = stored / 255.0
        linear = numpy.where(encoded <= 0.04045, encoded / 12.92,
                             ((encoded + 0.055) / 1.055) ** 2.4)
        alpha = encoded[..., 3]
        wanted = [expected.to_16_bits(plane)
                  for plane in (*(linear[..., index] * alpha for index in range(3)), alpha)]
        document = self.save(path, outputRenderAs=WITH_TRANSPARENCY, bitDepth=16)
        for channel, plane in zip((RED, GREEN, BLUE, ALPHA), wanted):
            found, _ = document.channel(document.layers[0], channel)
            # The road through single precision may round the last bit otherwise.
            self.assertLessEqual(numpy.abs(found.astype(numpy.int64) - plane).max(), 1)

    def test_what_is_no_number_is_made_finite_with_one_warning(self):
        def spoil(pixels):
            pixels[1, 2, 0] = numpy.nan
            pixels[3, 4, 1] = numpy.inf
            pixels[5, 6, 2] = -numpy.inf
        path = self.write("RGBA", change=spoil)
        target = self.folder / "document.psd"
        result = run("save", path, "-o", target, "--progress", "none",
                     *settings(RENDER_ONLY | {"bitDepth": 32}))
        self.assertEqual(result.returncode, 0, result.stderr)
        told = [line for line in result.stderr.splitlines()
                if line.startswith("veltrane: warning:")]
        self.assertEqual(len(told), 1, result.stderr)
        self.assertIn("3 ", told[0])
        beauty = expected.read_beauty(path)
        largest = numpy.finfo(numpy.float32).max
        for plane in beauty:
            numpy.nan_to_num(plane, copy=False, nan=0.0, posinf=largest, neginf=-largest)
        document = self.open(target)
        self.assert_layer(document, document.layers[0], beauty[:3])


class ASequence(DocumentTest):
    def save_frames(self, frames):
        return run("save", frames / "anim.####.exr", "-o", self.folder / "out" / "shot.psd", "-q",
                   "--gamma", "off", "--frames", "1-5", *settings(RENDER_ONLY))

    def setUp(self):
        super().setUp()
        (self.folder / "out").mkdir()

    def documents(self):
        return sorted(path.name for path in (self.folder / "out").iterdir())

    def test_is_a_numbered_document_a_frame(self):
        result = self.save_frames(EXAMPLES)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(self.documents(), [f"shot{number:04d}.psd" for number in range(1, 6)])
        for number in (1, 5):
            beauty = expected.read_beauty(EXAMPLES / f"anim.{number:04d}.exr")
            document = self.open(self.folder / "out" / f"shot{number:04d}.psd")
            planes = expected.layer_planes(beauty, 16)
            self.assert_layer(document, document.layers[0],
                              [*planes[:3], expected.full_plane(planes[0], 16)])

    def assert_one_frame_is_lost(self, frames):
        result = self.save_frames(frames)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(self.documents(), [f"shot{number:04d}.psd" for number in (1, 2, 4, 5)])
        line, = result.stderr.splitlines()
        self.assertTrue(line.startswith("veltrane: error: "), line)
        self.assertIn("anim.0003.exr", line)

    def copied_frames(self):
        frames = self.folder / "frames"
        frames.mkdir()
        for path in EXAMPLES.glob("anim.*.exr"):
            shutil.copy(path, frames)
        return frames

    def test_goes_on_past_a_missing_frame(self):
        frames = self.copied_frames()
        (frames / "anim.0003.exr").unlink()
        self.assert_one_frame_is_lost(frames)

    def test_goes_on_past_a_broken_frame(self):
        frames = self.copied_frames()
        broken = frames / "anim.0003.exr"
        broken.write_bytes(broken.read_bytes()[:100_000])
        self.assert_one_frame_is_lost(frames)


class TheSameInput(DocumentTest):
    def test_gives_the_same_bytes_on_every_run(self):
        for depth in (8, 16, 32):
            with self.subTest(depth=depth):
                self.save(name="first.psd", bitDepth=depth)
                self.save(name="second.psd", bitDepth=depth)
                self.assertEqual((self.folder / "first.psd").read_bytes(),
                                 (self.folder / "second.psd").read_bytes())


if __name__ == "__main__":
    unittest.main()
