#!/usr/bin/python3
"""The camera and helper blocks of the built command's documents, read by the program that
docs/scene-data.md prints, and compared with the scene file.

The environment's VELTRANE names the command. Needs Debian's Python 3.
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import numpy

VELTRANE = os.environ["VELTRANE"]
ROOT = pathlib.Path(__file__).resolve().parents[2]
STILL = ROOT / "examples/still.exr"
SCENE = ROOT / "examples/still.scene.json"

NUMBER = r"(-?[\d.e+-]+)"
TRIPLE = f"{NUMBER} {NUMBER} {NUMBER}"


def program_of_the_page():
    page = (ROOT / "docs/scene-data.md").read_text(encoding="utf-8")
    return next(block for block in re.findall(r"```python\n(.*?)```", page, re.DOTALL)
                if "sys.argv" in block)


def numbers(pattern, text):
    found = re.search(pattern, text)
    if found is None:
        raise AssertionError(f"{pattern} isn't in {text!r}")
    return [float(number) for number in found.groups()]


class SceneData(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.scene = json.loads(SCENE.read_text(encoding="utf-8"))

    def read(self, *arguments):
        document = self.folder / "document.psd"
        command = [VELTRANE, "save", STILL, "-o", document, "-q", "--set", "bitDepth=8",
                   *arguments]
        result = subprocess.run(command, capture_output=True, text=True, timeout=120)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        result = subprocess.run([sys.executable, "-c", program_of_the_page(), document],
                                capture_output=True, text=True, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout

    def transform(self, name):
        node = next(node for node in self.scene["nodes"] if node["name"] == name)
        return numpy.array(node["transform"])

    def test_the_camera_is_the_scene_files(self):
        told = self.read("--scene", SCENE)
        self.assertEqual(told.count("camera, field"), 1)
        self.assertIn("camera, field 1 perspective", told)
        self.assertNotIn("helper", told)
        camera = self.scene["render"]["camera"]
        transform = self.transform(camera)
        x, y, z = transform[:3, 3]
        numpy.testing.assert_allclose(numbers(f"position {TRIPLE}", told), (x, -z, y), rtol=1e-4)
        back = transform[:3, 2] / numpy.linalg.norm(transform[:3, 2])
        numpy.testing.assert_allclose(numbers(f"looks along {TRIPLE}", told), -back, atol=1e-4)
        view = next(node for node in self.scene["nodes"] if node["name"] == camera)["view"]
        numpy.testing.assert_allclose(
            numbers(f"width of view {NUMBER} range {NUMBER} {NUMBER}", told),
            (view["fov"], view.get("near", 0), view.get("far", 0)), rtol=1e-4)

    def test_helpers_come_by_their_names(self):
        helpers = [node["name"] for node in self.scene["nodes"] if node.get("type") == "helper"]
        self.assertGreater(len(helpers), 1)
        told = self.read("--scene", SCENE, "--set", "embedHelpersInfo=true")
        for name in helpers:
            entry = told[told.index(f"helper {name} field 1"):]
            transform = self.transform(name)
            x, y, z = transform[:3, 3]
            numpy.testing.assert_allclose(numbers(f"position {TRIPLE}", entry), (x, -z, y),
                                          rtol=1e-4, atol=1e-6)
            lengths = sorted(numpy.linalg.norm(transform[:3, :3], axis=0))
            numpy.testing.assert_allclose(sorted(numbers(f"scale {TRIPLE}", entry)), lengths,
                                          rtol=1e-4)
        told = self.read("--scene", SCENE, "--set", "embedHelpersInfo=true", "--set",
                         f"embedHelpersWildcard={helpers[0].upper()}")
        self.assertEqual(told.count("helper"), 1)
        self.assertIn(f"helper {helpers[0]} field 1", told)

    def test_there_is_none_without_a_camera_or_without_the_wish(self):
        self.assertEqual(self.read(), "")
        self.assertEqual(self.read("--scene", SCENE, "--set", "embedCameraInfo=false"), "")


if __name__ == "__main__":
    unittest.main()
