#!/usr/bin/python3
"""Mattes and passes in the built command's documents, read by psd-tools and compared with what
cryptomatte.py and numpy make of the render files.

The environment's VELTRANE names the command. Needs Debian's Python 3. For another reader it prints
what it sees of a document:

    passes_test.py --tree DOCUMENT              names from the top down, as JSON
    passes_test.py --matte DOCUMENT NAME...     a layer's transparency, as raw bytes
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import numpy
from psd_tools import PSDImage
from psd_tools.constants import Resource

import cryptomatte

VELTRANE = os.environ["VELTRANE"]
EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"
STILL = EXAMPLES / "still.exr"
BALL = "Kugel 07"

SAMPLES = {8: ">u1", 16: ">u2", 32: ">f4"}
FULL = {8: 255, 16: 65535, 32: 1}


def save(source, target, *arguments, **values):
    command = [VELTRANE, "save", source, "-o", target, "-q", "--gamma", "off", *arguments]
    for name, value in values.items():
        command += ["--set", f"{name}={value}"]
    result = subprocess.run([str(each) for each in command], capture_output=True, text=True,
                            timeout=300)
    if result.returncode or result.stderr:
        raise AssertionError(f"{command}: {result.returncode}, {result.stderr}")


def tree(layers):
    """Names from the top down; a set is a pair of its name and what is in it."""
    return [[layer.name, tree(layer)] if layer.is_group() else layer.name
            for layer in reversed(list(layers))]


class Document:
    def __init__(self, path):
        self.image = PSDImage.open(path)
        self.header = self.image._record.header

    def layer(self, *path):
        found = self.image
        for name in path:
            found = next(layer for layer in found if layer.name == name)
        return found

    def plane(self, layer, channel):
        """0, 1, 2 for the colours and -1 for the transparency, as numpy counts."""
        width, height, depth = self.header.width, self.header.height, self.header.depth
        for info, data in zip(layer._record.channel_info, layer._channels):
            if info.id == channel:
                samples = numpy.frombuffer(
                    data.get_data(width, height, depth, self.header.version), SAMPLES[depth])
                return samples.reshape(height, width).astype(samples.dtype.newbyteorder("="))
        raise AssertionError(f"{layer.name} has no channel {channel}")


    def spare(self, name):
        """A channel beside the layers."""
        names = [each.rstrip("\0") for each in
                 self.image.image_resources.get_data(Resource.ALPHA_NAMES_UNICODE)]
        samples = self.image._record.image_data.get_data(self.header)[3 + names.index(name)]
        samples = numpy.frombuffer(samples, SAMPLES[self.header.depth])
        return samples.reshape(self.header.height, self.header.width).astype(
            samples.dtype.newbyteorder("="))


def path_of(name):
    """A name is a path in which a slash begins a set's content."""
    return name.split("/")


class DocumentTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))

    def assert_matte(self, document, path, coverage):
        depth = document.header.depth
        matte = document.plane(document.layer(*path), -1).astype(numpy.float64) / FULL[depth] * 255
        wanted = numpy.floor(numpy.clip(coverage, 0, 1) * 255 + 0.5)
        worst = numpy.abs(numpy.rint(matte) - wanted).max()
        self.assertLessEqual(worst, 1, "/".join(path))


class TheMattesOfAStill(DocumentTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.render = cryptomatte.Render(STILL)
        save(STILL, cls.folder / "still.psd", "--all", bitDepth=8)
        cls.document = Document(cls.folder / "still.psd")

    def check_group(self, group, kind):
        mattes = {name: matte for name, matte in self.render.coverage(kind).items()
                  if matte.max() > 0}
        self.assertGreater(len(mattes), 5)
        for name, matte in mattes.items():
            self.assert_matte(self.document, [group, *path_of(name)], matte)
        leaves = []

        def collect(layers, before):
            for layer in layers:
                if layer.is_group():
                    collect(layer, [*before, layer.name])
                else:
                    leaves.append("/".join([*before, layer.name]))
        collect(self.document.layer(group), [])
        self.assertEqual(sorted(leaves), sorted(mattes))

    def test_of_objects_are_those_of_the_render_one_each(self):
        self.check_group("Objects", "CryptoObject")

    def test_of_materials_are_those_of_the_render_one_each(self):
        self.check_group("Material IDs", "CryptoMaterial")

    def test_have_exact_names(self):
        objects = tree(self.document.layer("Objects"))
        self.assertIn("Würfel", objects)
        self.assertIn(["Pot", ["Lid"]], objects)

    def test_are_the_same_at_16_and_32_bits(self):
        for depth in (16, 32):
            save(STILL, self.folder / "deep.psd", "--all", bitDepth=depth)
            document = Document(self.folder / "deep.psd")
            for name, matte in self.render.coverage("CryptoObject").items():
                if matte.max() > 0:
                    self.assert_matte(document, ["Objects", *path_of(name)], matte)


class ThePassesOfAStill(DocumentTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.render = cryptomatte.Render(STILL)
        save(STILL, cls.folder / "still.psd", bitDepth=32)
        cls.document = Document(cls.folder / "still.psd")

    def colors(self, name):
        layer = self.document.layer(name)
        return numpy.stack([self.document.plane(layer, channel) for channel in (0, 1, 2)], -1)

    def test_are_one_layer_each_with_the_files_own_values(self):
        passes = {"AO", "DiffCol", "DiffDir", "DiffInd", "Emit", "Env", "GlossCol", "GlossDir",
                  "GlossInd", "Shadow", "TransCol", "TransDir", "TransInd"}
        for name in passes:
            wanted = numpy.stack([self.render.plane(f"ViewLayer.{name}.{channel}")
                                  for channel in "RGB"], -1)
            self.assertTrue(numpy.array_equal(self.colors(name), wanted), name)
        for channel, index in (("X", 0), ("Y", 1), ("Z", 2)):
            self.assertTrue(numpy.array_equal(self.colors("Normal")[..., index],
                                              self.render.plane(f"ViewLayer.Normal.{channel}")))

    def test_of_depth_is_a_spare_channel(self):
        # The mean of three equal values, which single precision rounds.
        self.assertTrue(numpy.allclose(self.document.spare("Depth"),
                                       self.render.plane("ViewLayer.Depth.Z"), rtol=3e-7))

    def test_add_up_to_the_picture(self):
        total = self.colors("Emit").astype(numpy.float64)
        for group in ("Diff", "Gloss", "Trans"):
            total += self.colors(f"{group}Col").astype(numpy.float64) * (
                self.colors(f"{group}Dir").astype(numpy.float64) + self.colors(f"{group}Ind"))
        picture = self.colors("Render")
        # The environment is in the picture where alpha isn't 0, and halfs have eleven bits.
        error = numpy.abs(total - picture) / numpy.maximum(1.0, numpy.abs(picture))
        self.assertLess(error.max(), 4e-3)
        self.assertLess(error.mean(), 1e-4)
        print(f"sum of the passes: largest error {error.max():.2e}, mean {error.mean():.2e}",
              file=sys.stderr)

    def test_are_blended_so_that_a_group_of_raw_light_is_multiplied_by_its_color(self):
        names = tree(self.document.image)
        places = [names.index(name) for name in ("DiffCol", "DiffDir", "DiffInd")]
        self.assertEqual(places, list(range(places[0], places[0] + 3)), names)
        modes = [self.document.layer(name)._record.blend_mode.value
                 for name in ("DiffCol", "DiffDir", "DiffInd")]
        self.assertEqual(modes, [b"mul ", b"lddg", b"lddg"])
        self.assertEqual([self.document.layer(name)._record.clipping
                          for name in ("DiffCol", "DiffDir", "DiffInd")], [1, 1, 0])

    def test_that_are_data_are_hidden(self):
        self.assertFalse(self.document.layer("Normal").visible)


class TheFramesOfAnAnimation(DocumentTest):
    FRAMES = range(1, 6)

    def save_frames(self, folder, **values):
        (self.folder / folder).mkdir()
        save(EXAMPLES / "anim.####.exr", self.folder / folder / "shot.psd", "--all", "--frames",
             "1-5", bitDepth=8, **values)
        return [Document(self.folder / folder / f"shot{number:04d}.psd")
                for number in self.FRAMES]

    def test_have_the_same_layers_and_a_matte_for_what_has_left_the_picture(self):
        documents = self.save_frames("default")
        trees = [tree(document.image) for document in documents]
        self.assertTrue(all(each == trees[0] for each in trees), trees)
        for number, document in zip(self.FRAMES, documents):
            coverage = cryptomatte.Render(
                EXAMPLES / f"anim.{number:04d}.exr").coverage("CryptoObject")[BALL]
            self.assertEqual(coverage.max() > 0, number < 4)
            self.assert_matte(document, ["Objects", BALL], coverage)

    def test_lose_empty_mattes_when_the_filters_are_on_for_animations(self):
        documents = self.save_frames("filtered", filterEmptyLayersAndChannelsForAnimations=1)
        for number, document in zip(self.FRAMES, documents):
            self.assertEqual(BALL in tree(document.layer("Objects")), number < 4)


if __name__ == "__main__":
    if len(sys.argv) == 3 and sys.argv[1] == "--tree":
        print(json.dumps(tree(PSDImage.open(sys.argv[2])), ensure_ascii=False))
    elif len(sys.argv) > 3 and sys.argv[1] == "--matte":
        document = Document(sys.argv[2])
        sys.stdout.buffer.write(document.plane(document.layer(*sys.argv[3:]), -1).tobytes())
    else:
        unittest.main()
