#!/usr/bin/python3
"""The command built for Windows, run by Wine, against the one built for this machine: the same
documents byte for byte, the same texts, the same exit status.

The environment's VELTRANE names this machine's command, VELTRANE_WINDOWS that for Windows. Needs
Debian's Python 3. Without that of VELTRANE the test is skipped (status 77).
"""
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import zlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples"
CORPUS = ROOT / "fuzz/corpus"
HERE = [os.environ.get("VELTRANE", "")]
THERE = [ROOT / "scripts/run-in-wine", os.environ.get("VELTRANE_WINDOWS", "")]

# What Wine tells of displays that are gone, and no switch of its own keeps back.
WINES_OWN = re.compile(rb"^(X connection to |Authorization required, |\r?$)[^\n]*\n", re.MULTILINE)

LOOK = ["--lut", "warm.cube"]
SCENE = ["--scene", "still.scene.json"]
EIGHT = ["--set", "bitDepth=8"]
FLOATS = ["--set", "bitDepth=32"]


def chunk(kind, data):
    return (struct.pack(">I", len(data)) + kind + data +
            struct.pack(">I", zlib.crc32(kind + data)))


def png(width, height, bits, color_type, samples, more=b""):
    """`samples` are all values of all rows."""
    a_row = len(samples) // height
    code = ">%dH" if bits == 16 else ">%dB"
    rows = b"".join(b"\0" + struct.pack(code % a_row, *samples[y * a_row:(y + 1) * a_row])
                    for y in range(height))
    return (b"\x89PNG\r\n\x1a\n" +
            chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, bits, color_type, 0, 0, 0)) +
            more + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def every_value(bits, channels):
    """A picture of 256 by 256 pixels in which a channel takes all 65536 values, or each of 256
    together with each alpha."""
    if bits == 16:
        return [(pixel * (1 + 2 * i)) % 65536 for pixel in range(65536) for i in range(channels)]
    return [pixel % 256 if i < 3 else pixel // 256 for pixel in range(65536)
            for i in range(channels)]


def images():
    """PNG files whose every pixel both systems' decoders give alike."""
    yield png(256, 256, 8, 6, every_value(8, 4))
    yield png(256, 256, 8, 2, every_value(8, 3))
    yield png(256, 256, 16, 6, every_value(16, 4))
    yield png(256, 256, 16, 2, every_value(16, 3))
    yield png(256, 256, 16, 0, every_value(16, 1))
    yield png(256, 256, 8, 2, every_value(8, 3), chunk(b"gAMA", struct.pack(">I", 55556)))


class SameDocuments(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        """A folder for each of the two, with the same files in it."""
        whole = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="veltrane ")))
        self.here = whole / "here"
        self.there = whole / "thêre 水"
        for folder in (self.here, self.there):
            folder.mkdir()

    def give(self, name, content):
        """A file, by its bytes or as a copy of another, to both."""
        for folder in (self.here, self.there):
            path = folder / name
            path.parent.mkdir(exist_ok=True)
            if isinstance(content, bytes):
                path.write_bytes(content)
            else:
                shutil.copy(content, path)

    def examples(self, *names):
        for name in names:
            self.give(name, EXAMPLES / name)

    def run_one(self, program, folder, arguments):
        # Files, since Wine's own processes keep the streams open when the program has ended.
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            done = subprocess.run([*program, *arguments], cwd=folder, stdout=output, stderr=errors,
                                  timeout=600, check=False)
            texts = []
            for stream in (output, errors):
                stream.seek(0)
                texts.append(WINES_OWN.sub(b"", stream.read()))
        return done.returncode, *texts

    def run_both(self, *arguments):
        """Exit status, output and errors, which are the same but for the folder's place and the
        separators in paths."""
        here = self.run_one(HERE, self.here, arguments)
        there = self.run_one(THERE, self.there, arguments)
        windows_folder = "Z:" + str(self.there).replace("/", "\\")

        def plain(text, prefix):
            return text.decode("utf-8").replace(prefix, "").replace("\\", "/")

        texts = [plain(text, str(self.here) + "/") for text in here[1:]]
        windows_texts = [plain(text, windows_folder + "\\") for text in there[1:]]
        self.assertEqual((there[0], *windows_texts), (here[0], *texts), arguments)
        return (here[0], *texts)

    def compare_documents(self, least=1):
        """All of them, in both folders."""
        names = sorted(str(path.relative_to(self.here)) for path in self.here.rglob("*.ps[db]"))
        self.assertGreaterEqual(len(names), least)
        self.assertEqual(names, sorted(str(path.relative_to(self.there))
                                       for path in self.there.rglob("*.ps[db]")))
        for name in names:
            here = (self.here / name).read_bytes()
            there = (self.there / name).read_bytes()
            if here == there:
                continue
            differing = [i for i, pair in enumerate(zip(here, there)) if pair[0] != pair[1]]
            self.fail(f"{name}: {len(here)} and {len(there)} bytes, {len(differing)} of them "
                      f"differ, the first at {differing[:5]}")

    def save(self, *arguments):
        """Saves still.exr, and compares."""
        self.examples("still.exr", "still.scene.json", "warm.cube")
        status, _, errors = self.run_both("save", "still.exr", "--deflate", "zlib", *arguments)
        self.assertEqual((status, errors), (0, ""))
        self.compare_documents()

    def test_with_the_defaults(self):
        self.save()

    def test_with_everything(self):
        self.save("--all", *SCENE)

    def test_with_everything_in_eight_bits(self):
        self.save("--all", *EIGHT, "-o", "still.psb")

    def test_with_everything_in_floats(self):
        self.save("--all", *FLOATS)

    def test_uncompressed(self):
        self.save("--set", "compression=0")

    def test_with_a_look_as_a_layer(self):
        self.save(*LOOK, *SCENE)

    def test_with_a_look_in_the_pixels(self):
        for depth in (EIGHT, FLOATS):
            self.save(*LOOK, *depth, "--set", "colorCorrectConfig=0", "-o",
                      f"still{depth[1][-1]}.psd")

    def test_with_gamma_in_the_pixels(self):
        for depth in (EIGHT, FLOATS):
            self.save("--gamma", "1.8", *depth, "--set", "gammaCorrectConfig=2", "--all", "-o",
                      f"still{depth[1][-1]}.psd")

    def test_a_sequence(self):
        for frame in (1, 2, 4):
            self.examples(f"anim.000{frame}.exr")
        status, output, errors = self.run_both("save", "anim.####.exr", "--frames", "1-4",
                                               "--progress", "lines", "--deflate", "zlib")
        self.assertEqual((status, errors),
                         (1, "veltrane: error: anim.0003.exr: no such file; check the path\n"))
        self.assertIn("PROGRESS: 100%\n", output)
        self.compare_documents(3)

    def test_every_kind_of_openexr(self):
        """Compressions, tiles, deep and subsampled pixels, several parts, and what is broken."""
        files = sorted((CORPUS / "exr").iterdir())
        for frame, path in enumerate(files):
            self.give(f"f.{frame:04}.exr", path)
        for depth in (EIGHT, FLOATS):
            status, output, errors = self.run_both(
                "save", "f.####.exr", "--frames", f"0-{len(files) - 1}", "--all", "--deflate",
                "zlib", *depth)
            self.assertEqual(status, 1)
            self.assertIn("saved f.0000.psd", output)
            self.assertIn("veltrane: error: ", errors)
            self.compare_documents(len(files) // 2)

    def test_other_images(self):
        files = list(images())
        files += [(CORPUS / "image" / name).read_bytes()
                  for name in ("alpha.png", "colors.png", "colors.tif", "deep.png", "floats.tif",
                               "grey.png", "premultiplied.tif")]
        for frame, content in enumerate(files):
            self.give(f"f.{frame:04}.png", content)
        for depth in (EIGHT, FLOATS):
            self.assertEqual(self.run_both("save", "f.####.png", "--frames",
                                           f"0-{len(files) - 1}", "--deflate", "zlib",
                                           *depth)[0], 0)
            self.compare_documents(len(files))

    def test_names_with_any_letters(self):
        name = "Größe 水/Bild 1 – ‘x’.exr"
        self.give(name, EXAMPLES / "anim.0001.exr")
        status, output, errors = self.run_both("save", name, "-o", "Größe 水/Ö é.psd")
        self.assertEqual((status, errors), (0, ""))
        self.assertTrue(output.startswith("saved Größe 水/Ö é.psd ("), output)
        self.compare_documents()
        self.assertEqual(self.run_both("save", "Größe 水/ß.exr")[0], 1)

    def test_what_is_told_of_a_file(self):
        self.examples("still.exr")
        self.assertEqual(self.run_both("info", "still.exr")[0], 0)
        self.assertEqual(self.run_both("info", "still.exr", "--json")[0], 0)

    def test_listings(self):
        for arguments in (["--json"], ["--markdown"], [], ["--elements"]):
            status, output, _ = self.run_both("params", *arguments)
            self.assertEqual(status, 0)
            self.assertNotIn("\r", output)
        self.assertEqual(self.run_both("--version")[0], 0)

    def test_wrong_usage(self):
        for arguments in ([], ["save"], ["nonsense"], ["save", "a.exr", "-o", "a.exr"],
                          ["save", "a.exr", "--set", "bitDepth=7"],
                          ["save", "a.exr", "--no-such"], ["save", "a.exr", "--frames", "x"],
                          ["save", "a.exr", "-o", ""]):
            self.assertEqual(self.run_both(*arguments)[0], 2, arguments)

    def test_input_that_is_none(self):
        self.examples("anim.0001.exr")
        self.give("text.exr", b"just text\n")
        self.give("empty.exr", b"")
        self.give("cut.exr", (EXAMPLES / "anim.0001.exr").read_bytes()[:100_000])
        self.give("cut.png", (CORPUS / "image/cut.png").read_bytes()[:40])
        self.give("scene.json", b'{"veltrane": 1, "nodes": [{"name": 7}]}')
        for arguments in (["missing.exr"], ["no/missing.exr"], ["."], ["empty.exr"], ["cut.exr"],
                          ["anim.0001.exr", "--scene", "scene.json"],
                          ["anim.0001.exr", "--lut", "missing.cube"],
                          ["anim.0001.exr", "-o", "no/a.psd"]):
            self.assertEqual(self.run_both("save", *arguments)[0], 1, arguments)
        for folder in (self.here, self.there):
            (folder / "folder.psd").mkdir()
        self.assertEqual(self.run_both("save", "anim.0001.exr", "-o", "folder.psd")[0], 1)

    def test_what_windows_lacks_is_told(self):
        self.give("a.exr", b"just text\n")
        self.give("a.tga", (CORPUS / "image/alpha.tga").read_bytes())
        self.examples("anim.0001.exr")
        for arguments, status, text in (
                (["a.exr"], 1, "a.exr: not an image that can be read; give an OpenEXR, PNG, TIFF "
                               "or JPEG file"),
                (["a.tga"], 1, "a.tga: Windows reads no TGA files; convert it to OpenEXR, PNG or "
                               "TIFF"),
                (["anim.0001.exr", "--deflate", "fast"], 2,
                 "--deflate fast: this build has no ISA-L; use --deflate zlib")):
            told = self.run_one(THERE, self.there, ["save", *arguments])
            self.assertEqual(told, (status, b"", f"veltrane: error: {text}\n".encode()))

    def test_paths_of_windows(self):
        """Drive letters and backslashes, in the pattern of a sequence too."""
        self.examples("anim.0001.exr", "anim.0002.exr")
        folder = "Z:" + str(self.there).replace("/", "\\")
        done = self.run_one(THERE, "/", ["save", folder + "\\anim.####.exr", "--frames", "1-2",
                                         "-o", folder + "\\out_####.psb"])
        self.assertEqual((done[0], done[2]), (0, b""))
        lines = done[1].decode().splitlines()
        for frame, line in enumerate(lines, 1):
            self.assertTrue(line.startswith(f"saved {folder}\\out_000{frame}.psb ("), line)
        self.assertEqual(len(lines), 2)
        done = self.run_one(THERE, "/", ["info", folder + "\\missing.exr"])
        self.assertEqual(done, (1, b"", f"veltrane: error: {folder}\\missing.exr: no such file; "
                                        "check the path\n".encode()))


if __name__ == "__main__":
    if not pathlib.Path(HERE[0]).is_file() or not THERE[1]:
        print("VELTRANE and VELTRANE_WINDOWS are to name the two commands, which are to be built")
        sys.exit(77)
    if not os.environ.get("WINEPREFIX"):
        # One session for all runs, in place of one each.
        os.execv(THERE[0], [THERE[0], "--session", sys.executable, *sys.argv])
    started = time.monotonic()
    program = unittest.main(exit=False, verbosity=2)
    print(f"{time.monotonic() - started:.1f} s")
    sys.exit(not program.result.wasSuccessful())
