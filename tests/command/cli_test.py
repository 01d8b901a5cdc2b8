#!/usr/bin/python3
"""The veltrane command as a process: streams, exit status, memory. VELTRANE names the program, and
VELTRANE_EXAMPLES the folder of sample renders."""
import json
import os
import pathlib
import pty
import resource
import shutil
import struct
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["VELTRANE"]
EXAMPLES = pathlib.Path(os.environ["VELTRANE_EXAMPLES"])
FILES = pathlib.Path(__file__).resolve().parent / "files"
# The sanitizers' own bookkeeping takes the address space that the limits below leave.
LIMITS_WORK = os.environ.get("VELTRANE_SANITIZED") != "1"


class CommandTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.still = self.folder / "still.exr"
        shutil.copy(EXAMPLES / "still.exr", self.still)

    def tearDown(self):
        shutil.rmtree(self.folder)

    def run_command(self, *arguments, **options):
        return subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True,
                              timeout=300, check=False, cwd=self.folder, **options)

    def test_save_writes_the_document_and_one_line(self):
        done = self.run_command("save", "still.exr")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        header = (self.folder / "still.psd").read_bytes()[:26]
        signature, version, channels, height, width, depth, mode = struct.unpack(
            ">4sH6xHIIHH", header)
        self.assertEqual((signature, version, depth, mode), (b"8BPS", 1, 16, 3))
        self.assertGreaterEqual(channels, 3)
        self.assertRegex(done.stdout,
                         rf"^saved .*/still\.psd \({width}x{height}, 16 bits, PSD, [\d.]+ MB\)\n$")

    def test_two_processes_write_the_same_bytes(self):
        for name in ("a.psd", "b.psd"):
            self.assertEqual(self.run_command("save", "still.exr", "-o", name, "--set",
                                              "bitDepth=8").returncode, 0)
        self.assertEqual((self.folder / "a.psd").read_bytes(), (self.folder / "b.psd").read_bytes())

    def test_a_sequence_with_a_missing_frame_saves_the_others(self):
        for frame in (1, 2, 4, 5):
            shutil.copy(EXAMPLES / f"anim.000{frame}.exr", self.folder)
        done = self.run_command("save", "anim.####.exr", "--frames", "1-5")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr,
                         "veltrane: error: anim.0003.exr: no such file; check the path\n")
        self.assertEqual(sorted(path.name for path in self.folder.glob("*.psd")),
                         [f"anim.000{frame}.psd" for frame in (1, 2, 4, 5)])

    def test_progress_lines_are_not_held_back(self):
        with subprocess.Popen([PROGRAM, "save", "still.exr", "--progress", "lines"],
                              stdout=subprocess.PIPE, text=True, cwd=self.folder) as process:
            lines = list(process.stdout)
        self.assertEqual(process.returncode, 0)
        progress = [line for line in lines if line.startswith("PROGRESS: ")]
        percents = [int(line[len("PROGRESS: "):-2]) for line in progress]
        self.assertEqual(percents, sorted(set(percents)))
        self.assertEqual((percents[0], percents[-1]), (0, 100))

    def test_the_bar_is_drawn_on_a_terminal_only(self):
        terminal, other_end = pty.openpty()
        done = subprocess.run([PROGRAM, "save", "still.exr"], stdout=subprocess.PIPE,
                              stderr=other_end, check=False, cwd=self.folder)
        os.close(other_end)
        drawn = os.read(terminal, 100000)
        os.close(terminal)
        self.assertEqual(done.returncode, 0)
        self.assertIn(b"\r[", drawn)
        self.assertTrue(drawn.endswith(b" \r"), "the bar is taken away")
        self.assertEqual(self.run_command("save", "still.exr").stderr, "")

    def test_without_its_module_the_program_still_reads_openexr(self):
        alone = self.folder / "veltrane"
        shutil.copy(PROGRAM, alone)
        done = subprocess.run([alone, "save", "still.exr", "-q"], check=False, cwd=self.folder)
        self.assertEqual(done.returncode, 0)
        (self.folder / "a.png").write_bytes(b"\x89PNG\r\n\x1a\n")
        done = subprocess.run([alone, "save", "a.png"], capture_output=True, text=True, check=False,
                              cwd=self.folder)
        self.assertEqual((done.returncode, done.stderr),
                         (1, "veltrane: error: a.png: the reader of PNG files, "
                             "libveltrane_images.so, can't be loaded; install veltrane again\n"))

    def test_quiet_says_nothing(self):
        done = self.run_command("save", "still.exr", "-q")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def test_wrong_usage_is_two_with_one_line(self):
        for arguments in ([], ["save"], ["save", "still.exr", "--set", "bitDepth=9"],
                          ["save", "still.exr", "-o", "a.exr"], ["nonsense"],
                          ["save", "still.exr", "--frames", "x"]):
            done = self.run_command(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertRegex(done.stderr, r"^veltrane: error: [^\n]+\n$")

    def test_info_as_json_names_the_beauty(self):
        done = self.run_command("info", "still.exr", "--json")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        told = json.loads(done.stdout)
        layers = [layer["name"] for part in told["parts"] for layer in part["layers"]]
        self.assertIn(told["beauty"]["layer"], layers)
        self.assertEqual(told["format"], "OpenEXR")

    def test_params_as_json_are_what_set_takes(self):
        told = json.loads(self.run_command("params", "--json").stdout)
        depth = next(entry for entry in told if entry["name"] == "bitDepth")
        self.assertEqual([choice["value"] for choice in depth["values"]], [8, 16, 32])

    def test_help_and_version(self):
        self.assertRegex(self.run_command("--version").stdout, r"^veltrane \d+\.\d+\.\d+\n$")
        self.assertIn("veltrane save still.exr", self.run_command("--help").stdout)

    def test_a_cut_file_is_one_line(self):
        whole = self.still.read_bytes()
        for size in (3, 8, 1000, len(whole) // 2, len(whole) - 1):
            self.still.write_bytes(whole[:size])
            done = self.run_command("save", "still.exr")
            self.assertEqual((done.returncode, done.stdout), (1, ""), size)
            self.assertRegex(done.stderr, r"^veltrane: error: still\.exr: [^\n]+\n$")

    @unittest.skipUnless(LIMITS_WORK, "the sanitizers need the address space")
    def test_a_header_that_lies_allocates_nothing(self):
        """A small file whose windows claim 65535 x 65535 pixels, under a limit of 1 GB."""
        lie = bytearray(self.still.read_bytes()[:200_000])
        for name in (b"dataWindow", b"displayWindow"):
            at = lie.index(name + b"\0box2i\0") + len(name) + 7 + 4
            lie[at:at + 16] = struct.pack("<iiii", 0, 0, 65534, 65534)
        self.still.write_bytes(lie)
        limit = 1 << 30
        done = self.run_command(
            "save", "still.exr",
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertRegex(done.stderr, r"^veltrane: error: still\.exr: [^\n]+\n$")

    @unittest.skipUnless(LIMITS_WORK, "the sanitizers need the address space")
    def test_a_frame_too_large_for_the_memory_is_told_as_such(self):
        """All pixels are there, in a display window of 65535 x 65535."""
        large = bytearray(self.still.read_bytes())
        at = large.index(b"displayWindow\0box2i\0") + 20 + 4
        large[at:at + 16] = struct.pack("<iiii", 0, 0, 65534, 65534)
        self.still.write_bytes(large)
        limit = 1 << 30
        done = self.run_command(
            "save", "still.exr", "--all",
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (1, "", "veltrane: error: still.exr: not enough memory to read it; close "
                                 "other programs or render it smaller\n"))

    def test_all_takes_what_the_file_and_the_scene_have(self):
        plain = self.run_command("save", "still.exr", "-o", "plain.psd")
        done = self.run_command("save", "still.exr", "--all", "--scene",
                                EXAMPLES / "still.scene.json", "-o", "all.psd")
        self.assertEqual((plain.returncode, done.returncode, done.stderr), (0, 0, ""))
        self.assertGreater((self.folder / "all.psd").stat().st_size,
                           (self.folder / "plain.psd").stat().st_size)

    def test_a_saved_scene_is_loaded_as_the_application_does(self):
        """The effect is of version 101: 8 bits, and its layers keep the order that they had."""
        shutil.copy(FILES / "scene_of_version_101.json", self.folder / "old.json")
        done = self.run_command("save", "still.exr", "--scene", "old.json", "-o", "a.psd")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(struct.unpack(">H", (self.folder / "a.psd").read_bytes()[22:24]), (8,))
        self.assertRegex(done.stdout, r"^saved .*/a\.psd \(\d+x\d+, 8 bits, PSD, [\d.]+ MB\)\n$")

    def test_a_scene_that_is_no_scene_is_one_line_and_saves_nothing(self):
        whole = (FILES / "scene_of_version_4.json").read_text(encoding="utf-8")
        later = whole.replace('"veltrane": 2', '"veltrane": 3')
        faults = {
            whole[:1000]: "this is not JSON",
            later: "veltrane: this version of scene files is not known; this program reads version "
                   "1 to 2",
            whole.replace('"version": 4', '"version": "4"'): "must be a whole number",
            whole.replace("1879475721", "1879475722"): "no library offers the class",
            whole.replace('"values": [8, 9, 10]', '"values": [8, 9, 99]'): "99",
            whole.replace('"effects": [11]', '"effects": [11, 11]'): "the effect stands twice",
            "[" * 100000: "more than 256 levels in each other",
        }
        for text, fault in faults.items():
            (self.folder / "a.json").write_text(text, encoding="utf-8")
            done = self.run_command("save", "still.exr", "--scene", "a.json", "-o", "a.psd")
            self.assertEqual((done.returncode, done.stdout), (1, ""), fault)
            self.assertRegex(done.stderr, r"^veltrane: error: a\.json: [^\n]+\n$")
            self.assertIn(fault, done.stderr)
            self.assertFalse((self.folder / "a.psd").exists())

    def test_params_of_elements_are_what_element_takes(self):
        told = json.loads(self.run_command("params", "--elements", "--json").stdout)
        self.assertIn("blendingMode", [entry["name"] for entry in told])
        done = self.run_command("save", "still.exr", "--element", "*:blendingMode=Screen")
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    @unittest.skipUnless(LIMITS_WORK, "the sanitizers need the address space")
    def test_a_file_size_limit_is_told_as_such(self):
        limit = 100_000
        done = self.run_command(
            "save", "still.exr",
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr,
                         r"^veltrane: error: Error writing to .*/still\.psd: File too large; ")


if __name__ == "__main__":
    unittest.main()
