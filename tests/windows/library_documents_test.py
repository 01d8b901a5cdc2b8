#!/usr/bin/python3
"""The plug-in library, loaded into the host as the application loads it, saves the documents that
this machine's command saves, byte for byte.

The environment's VELTRANE names this machine's command, VELTRANE_WITH_LIBRARY the program for
Windows that loads a library, VELTRANE_DLV the library. Without that of VELTRANE the test is skipped (77).
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
FILES = ("still.exr", "still.scene.json", "warm.cube")
HERE = [os.environ.get("VELTRANE", "")]
THERE = [ROOT / "scripts/run-in-wine", os.environ.get("VELTRANE_WITH_LIBRARY", ""),
         os.environ.get("VELTRANE_DLV", "")]


class LibraryDocuments(unittest.TestCase):
    def save(self, program, folder, *arguments):
        done = subprocess.run([*program, "save", "still.exr", "--deflate", "zlib", *arguments],
                              cwd=folder, capture_output=True, timeout=600, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        return (folder / "still.psd").read_bytes()

    def compare(self, *arguments):
        documents = []
        for program in (HERE, THERE):
            folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
            for name in FILES:
                shutil.copy(ROOT / "examples" / name, folder)
            documents.append(self.save(program, folder, *arguments))
        self.assertGreater(len(documents[0]), 100_000)
        self.assertTrue(documents[0] == documents[1], "the documents differ")

    def test_with_the_defaults(self):
        self.compare()

    def test_with_everything(self):
        self.compare("--all", "--scene", "still.scene.json", "--lut", "warm.cube")

    def test_with_settings_of_its_own(self):
        self.compare("--set", "bitDepth=32", "--set", "outputRenderAs=0", "--all", "--element",
                     "*:visible=true")

    def test_a_file_that_is_no_library_is_told(self):
        done = subprocess.run([*THERE[:-1], ROOT / "README.md", "save", "x.exr"],
                              capture_output=True, timeout=600, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"README.md: cannot be loaded", done.stderr)


if __name__ == "__main__":
    if not pathlib.Path(HERE[0]).is_file():
        print("VELTRANE is to name this machine's command, which is to be built")
        sys.exit(77)
    unittest.main()
