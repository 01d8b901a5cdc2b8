#!/usr/bin/python3
"""Documents with adjustment layers look like the render: the built command's documents are put
together by composite.py and compared with their merged image, and with what numpy makes of the
render file.

The environment's VELTRANE names the command. Needs Debian's Python 3.
"""
import os
import pathlib
import struct
import subprocess
import tempfile
import unittest

import numpy
import OpenImageIO as oiio
from psd_tools import PSDImage
from psd_tools.constants import Tag

import composite
import cryptomatte
import expected

VELTRANE = os.environ["VELTRANE"]
EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"
STILL = EXAMPLES / "still.exr"

PICTURE_ONLY = {"createRenderElementLayers": 0, "outputRenderAs": 0}


def run(*arguments):
    return subprocess.run([VELTRANE, *map(str, arguments)], capture_output=True, text=True,
                          timeout=300)


def names(layers):
    """From the top down; a set is a pair of its name and what is in it."""
    return [[layer.name, names(layer)] if layer.is_group() else layer.name
            for layer in reversed(list(layers))]


class ColorTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def save(self, *arguments, source=STILL, name="document.psd", **values):
        command = ["save", source, "-o", self.folder / name, "-q", *arguments]
        for setting, value in values.items():
            command += ["--set", f"{setting}={value}"]
        result = run(*command)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        with self.assertNoLogs("psd_tools", "WARNING"):
            return PSDImage.open(self.folder / name)

    def merged(self, image):
        header = image._record.header
        planes = [numpy.frombuffer(plane, composite.SAMPLES[header.depth]).reshape(
                      header.height, header.width) / composite.FULL[header.depth]
                  for plane in image._record.image_data.get_data(header)]
        return numpy.dstack(planes[:3])

    def layer(self, image, name):
        return next(layer for layer in image.descendants() if layer.name == name)


class TheGammaLayer(ColorTest):
    def test_stands_on_top_and_names_its_gamma(self):
        image = self.save(**PICTURE_ONLY)
        self.assertEqual(names(image), ["Gamma Correction (2.2)", "Render"])
        image = self.save("--gamma", "1.8", **PICTURE_ONLY)
        self.assertEqual(names(image), ["Gamma Correction (1.8)", "Render"])

    def test_makes_of_linear_layers_what_the_merged_image_is(self):
        for depth, least, at_most in ((16, 0.1, 64 / 65535), (8, 0.25, 2.5 / 255)):
            with self.subTest(depth=depth):
                image = self.save(bitDepth=depth, **PICTURE_ONLY)
                seen = composite.Composite(image)
                # The glow where nothing covers is in the merged image alone.
                merged = self.merged(image)[seen.alpha > 0]
                error = numpy.abs(seen.color[seen.alpha > 0] - merged)
                print(f"{depth} bits: largest error {error.max():.2e}, mean {error.mean():.2e}, "
                      f"largest above {least} {error[merged > least].max():.2e}")
                # The file gamma of the merged image has 8192 steps, which are wide in the dark.
                self.assertLess(error[merged > least].max(), at_most)

    def test_is_not_there_without_gamma_nor_at_32_bits(self):
        self.assertEqual(names(self.save("--gamma", "off", **PICTURE_ONLY)), ["Render"])
        self.assertEqual(names(self.save("--gamma", "1", **PICTURE_ONLY)), ["Render"])
        self.assertEqual(names(self.save(bitDepth=32, **PICTURE_ONLY)), ["Render"])

    def test_leaves_its_place_to_gamma_in_the_pixels(self):
        image = self.save(gammaCorrectConfig=0, **PICTURE_ONLY)
        self.assertEqual(names(image), ["Render"])
        seen = composite.Composite(image)
        numpy.testing.assert_array_equal(seen.color[seen.alpha > 0],
                                         self.merged(image)[seen.alpha > 0])

    def test_has_a_profile_of_that_gamma_alone(self):
        image = self.save(**PICTURE_ONLY)
        profile = composite.profile_of(self.layer(image, "Gamma Correction (2.2)"))
        self.assertEqual(len(profile), struct.unpack(">I", profile[:4])[0])
        self.assertEqual(profile[12:24], b"linkRGB RGB ")
        count, = struct.unpack(">I", profile[128:132])
        tags = {profile[at:at + 4]: struct.unpack(">II", profile[at + 4:at + 12])
                for at in range(132, 132 + 12 * count, 12)}
        at, size = tags[b"A2B0"]
        self.assertEqual(size, 32 + 3 * 16)
        curve = b"para" + bytes(8) + struct.pack(">i", int(65536 / float(numpy.float32(2.2))))
        self.assertEqual(profile[at + 32:at + size], curve * 3)


class TheCurvesLayer(ColorTest):
    def test_stands_at_the_head_of_the_elements(self):
        image = self.save("--all", "--gamma", "off", createCurvesAdjustmentLayer=1,
                          curvesAdjustmentLayerName="Lift", createRenderElementsLayerSet=1)
        elements = next(layer for layer in image if layer.name == "Render Elements")
        self.assertEqual(names(elements)[0], "Lift")
        curves = self.layer(image, "Lift")
        self.assertIsNotNone(curves._record.tagged_blocks.get_data(Tag.CURVES))

    def test_is_not_there_at_32_bits(self):
        image = self.save("--all", createCurvesAdjustmentLayer=1, bitDepth=32)
        self.assertNotIn("Curves", [layer.name for layer in image.descendants()])


class TheBackground(ColorTest):
    def test_is_white_below_all(self):
        image = self.save("--gamma", "off", backgroundLayer=1, **PICTURE_ONLY)
        self.assertEqual(names(image), ["Render", "Background"])
        beauty = expected.layer_planes(expected.read_beauty(STILL), 16)
        colors = numpy.dstack(beauty[:3]) / 65535
        alpha = beauty[3][..., None] / 65535
        numpy.testing.assert_allclose(composite.Composite(image).color,
                                      colors * alpha + 1 - alpha, atol=1e-6)


def read_table(path):
    """The points of a .cube file with neither comments nor a domain, as [blue][green][red]."""
    lines = path.read_text().splitlines()
    size = next(int(line.split()[1]) for line in lines if line.startswith("LUT_3D_SIZE"))
    rows = [[float(word) for word in line.split()] for line in lines if line[0].isdigit()]
    return numpy.array(rows).reshape(size, size, size, 3)


def look_up(table, colors):
    """Between the points of a cell, goes along its edges from the black corner to the white one,
    the largest fraction first: tetrahedral interpolation."""
    place = numpy.clip(colors, 0, 1) * (len(table) - 1)
    cell = numpy.minimum(place.astype(int), len(table) - 2)
    fraction = place - cell
    order = numpy.argsort(-fraction, axis=-1, kind="stable")
    corner = cell.copy()
    made = table[corner[..., 2], corner[..., 1], corner[..., 0]]
    for step in range(3):
        axis = order[..., step:step + 1]
        before = table[corner[..., 2], corner[..., 1], corner[..., 0]]
        numpy.put_along_axis(corner, axis, numpy.take_along_axis(corner, axis, -1) + 1, -1)
        after = table[corner[..., 2], corner[..., 1], corner[..., 0]]
        made = made + (after - before) * numpy.take_along_axis(fraction, axis, -1)
    return made


class ALook(ColorTest):
    LOOK = EXAMPLES / "warm.cube"

    @classmethod
    def setUpClass(cls):
        cls.table = read_table(cls.LOOK)

    def linear(self, image):
        """What stands in the picture's layer."""
        render = self.layer(image, "Render")
        header = image._record.header
        planes = [numpy.frombuffer(
            data.get_data(header.width, header.height, header.depth, header.version),
            composite.SAMPLES[header.depth]).reshape(header.height, header.width)
            for info, data in zip(render._record.channel_info, render._channels)
            if info.id in (0, 1, 2)]
        return numpy.dstack(planes) / composite.FULL[header.depth]

    def test_is_a_layer_below_the_gamma_over_linear_pixels(self):
        plain = self.save(name="plain.psd", **PICTURE_ONLY)
        image = self.save("--lut", self.LOOK, **PICTURE_ONLY)
        self.assertEqual(names(image), ["Gamma Correction (2.2)", "Color Corrections", "Render"])
        numpy.testing.assert_array_equal(self.linear(image), self.linear(plain))
        seen = composite.Composite(image)
        wanted = look_up(self.table, self.linear(image)) ** (1 / 2.2)
        error = numpy.abs(seen.color - wanted)[seen.alpha > 0]
        print(f"look: largest error {error.max():.2e}, mean {error.mean():.2e}")
        # The gamma magnifies half a step of the profile's 16 bits near black.
        self.assertLess(error.max(), 0.004)
        self.assertLess(error.mean(), 2e-5)

    def test_in_the_pixels_looks_like_the_layer(self):
        layered = composite.Composite(self.save("--lut", self.LOOK, "--gamma", "off",
                                                premultipliedAlpha=0, **PICTURE_ONLY))
        for config in (0, 2):
            image = self.save("--lut", self.LOOK, "--gamma", "off", premultipliedAlpha=0,
                              colorCorrectConfig=config, **PICTURE_ONLY)
            self.assertEqual(names(image), ["Render"])
            # Straight colours of nearly nothing come from few steps of the premultiplied ones.
            inside = layered.alpha > 0.05
            error = numpy.abs(composite.Composite(image).color - layered.color)[inside]
            print(f"look in the pixels: largest error {error.max():.2e}, mean {error.mean():.2e}")
            self.assertLess(error.max(), 0.005)
            self.assertLess(error.mean(), 1e-4)

    def test_reaches_32_bits_as_a_layer_too(self):
        image = self.save("--lut", self.LOOK, bitDepth=32, **PICTURE_ONLY)
        self.assertEqual(names(image), ["Color Corrections", "Render"])
        seen = composite.Composite(image)
        error = numpy.abs(seen.color - look_up(self.table, self.linear(image)))[seen.alpha > 0]
        self.assertLess(error.max(), 2 / 65535)

    def test_is_nowhere_when_corrections_are_off(self):
        plain = self.save(name="plain.psd", **PICTURE_ONLY)
        image = self.save("--lut", self.LOOK, vrayColorCorrections=0, **PICTURE_ONLY)
        self.assertEqual(names(image), ["Gamma Correction (2.2)", "Render"])
        numpy.testing.assert_array_equal(self.linear(image), self.linear(plain))
        numpy.testing.assert_array_equal(self.merged(image), self.merged(plain))


class AShadow(ColorTest):
    def write_shadow(self, name, width=640, height=360):
        """Half black in a bar across the picture."""
        pixels = numpy.zeros((height, width, 4), numpy.float32)
        pixels[height // 3:height // 2, :, 3] = 0.5
        path = self.folder / name
        output = oiio.ImageOutput.create(str(path))
        spec = oiio.ImageSpec(width, height, 4, oiio.FLOAT)
        self.assertTrue(output.open(str(path), spec))
        self.assertTrue(output.write_image(pixels))
        output.close()
        return path

    def test_multiplies_what_lies_below(self):
        path = self.write_shadow("shadow.exr")
        image = self.save("--gamma", "off", "--shadow", path, backgroundLayer=1, renderOrder=950,
                          **PICTURE_ONLY)
        self.assertEqual(names(image), ["Shadows", "Render", "Background"])
        shaded = composite.Composite(image).color
        plain = composite.Composite(self.save("--gamma", "off", backgroundLayer=1,
                                              **PICTURE_ONLY)).color
        wanted = plain.copy()
        wanted[120:180] *= 1 - 32768 / 65535
        numpy.testing.assert_allclose(shaded, wanted, atol=1e-6)

    def test_as_a_plain_layer_covers_with_black(self):
        path = self.write_shadow("shadow.exr")
        image = self.save("--gamma", "off", "--shadow", path, shadowPassLayerStyle=1,
                          backgroundLayer=1, renderOrder=950, **PICTURE_ONLY)
        shadow = self.layer(image, "Shadows")
        self.assertEqual(shadow.kind, "pixel")
        plain = composite.Composite(self.save("--gamma", "off", backgroundLayer=1,
                                              **PICTURE_ONLY)).color
        wanted = plain.copy()
        wanted[120:180] *= 1 - 32768 / 65535
        numpy.testing.assert_allclose(composite.Composite(image).color, wanted, atol=1e-6)

    def test_of_another_size_is_told_and_the_frame_is_saved_without_it(self):
        path = self.write_shadow("small.exr", 64, 36)
        target = self.folder / "document.psd"
        result = run("save", STILL, "-o", target, "-q", "--shadow", path)
        self.assertEqual(result.returncode, 1)
        line, = result.stderr.splitlines()
        self.assertTrue(line.startswith("veltrane: error: "), line)
        self.assertIn("small.exr", line)
        self.assertNotIn("Shadows", names(PSDImage.open(target)))


class Depth(ColorTest):
    def test_is_white_near_and_black_far(self):
        image = self.save("--gamma", "off", depthLayer=1, createZDepthChannel=1, **PICTURE_ONLY)
        self.assertEqual(names(image), ["Render", "Depth"])
        header = image._record.header
        depth = self.layer(image, "Depth")
        self.assertEqual(composite.fill_of(depth).tolist(), [1, 1, 1])
        mask = next(numpy.frombuffer(data.get_data(header.width, header.height, 16, 1), ">u2")
                    for info, data in zip(depth._record.channel_info, depth._channels)
                    if info.id == -2).reshape(header.height, header.width)
        spare = numpy.frombuffer(image._record.image_data.get_data(header)[-1],
                                 ">u2").reshape(mask.shape)
        numpy.testing.assert_array_equal(spare, mask)

        z = read_plane(STILL, "ViewLayer.Depth.Z")
        coverages = list(cryptomatte.Render(STILL).coverage("CryptoObject").values())
        counts = (numpy.max(coverages, axis=0) >= 0.05) & (z < 1e9)
        near, far = z[counts].min(), z[counts].max()
        self.assertLess(far, 20)
        wanted = 65535 * (1 - (z - near) / (far - near))
        whole = (numpy.max(coverages, axis=0) == 1) & counts
        self.assertGreater(whole.sum(), 10_000)
        self.assertLess(numpy.abs(mask - wanted)[whole].max(), 2)
        nothing = numpy.sum(coverages, axis=0) == 0
        self.assertGreater(nothing.sum(), 10_000)
        self.assertEqual(set(mask[nothing].tolist()), {65535})


def read_plane(path, channel):
    image = oiio.ImageInput.open(str(path))
    spec = image.spec()
    pixels = numpy.asarray(image.read_image(0, 0, 0, spec.nchannels, oiio.FLOAT)).reshape(
        spec.height, spec.width, spec.nchannels)
    image.close()
    return pixels[..., list(spec.channelnames).index(channel)].astype(numpy.float64)


if __name__ == "__main__":
    unittest.main()
