#!/usr/bin/python3
"""The application package and the folder of programs: what is in them, and what the package says of
itself. $VELTRANE_DLV is the library, in the folder bin of its build."""
import importlib.util
import os
import pathlib
import re
import subprocess
import tempfile
import unittest
import uuid
import xml.etree.ElementTree
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "scripts/make_package.py"
LIBRARY = pathlib.Path(os.environ["VELTRANE_DLV"])

spec = importlib.util.spec_from_file_location("make_package", SCRIPT)
make_package = importlib.util.module_from_spec(spec)
spec.loader.exec_module(make_package)


# Of Windows 10, on every machine.
SYSTEM = {name + ".dll" for name in (
    "advapi32", "comctl32", "comdlg32", "gdi32", "kernel32", "msvcrt", "ole32", "oleaut32", "shell32",
    "shlwapi", "user32", "uxtheme", "windowscodecs")}


def make(folder):
    """The paths of package and programs in a new folder, and what making them printed."""
    folder.mkdir()
    done = subprocess.run([SCRIPT, "--build", LIBRARY.parent.parent, "--output", folder], check=True,
                          capture_output=True, text=True, timeout=600)
    name = f"veltrane-{make_package.version()}"
    return folder / f"{name}.zip", folder / f"{name}-programs.zip", done.stdout


def imports(data):
    """The libraries that a program or library is loaded with."""
    with tempfile.NamedTemporaryFile() as file:
        file.write(data)
        file.flush()
        told = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", file.name], check=True,
                              capture_output=True, text=True, timeout=60).stdout
    return set(re.findall(r"DLL Name: (\S+)", told))


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.path, cls.programs, cls.printed = make(cls.folder / "made")
        with zipfile.ZipFile(cls.path) as package:
            cls.entries = package.infolist()
            cls.files = {entry.filename: package.read(entry) for entry in cls.entries}
        cls.contents = xml.etree.ElementTree.fromstring(cls.files["veltrane/PackageContents.xml"])

    def test_is_one_folder_of_files_that_all_may_read(self):
        self.assertEqual(sorted(self.files), ["veltrane/Contents/third-party.txt",
                                              "veltrane/Contents/veltrane-about.dll",
                                              "veltrane/Contents/veltrane.chm",
                                              "veltrane/Contents/veltrane.dlv",
                                              "veltrane/PackageContents.xml"])
        for entry in self.entries:
            self.assertEqual(entry.external_attr >> 16, 0o100644, entry.filename)

    def test_has_the_libraries_of_the_build(self):
        for name in ("veltrane.dlv", "veltrane-about.dll"):
            self.assertEqual(self.files[f"veltrane/Contents/{name}"],
                             LIBRARY.with_name(name).read_bytes())

    def test_made_later_is_the_same(self):
        later, programs, _ = make(self.folder / "later")
        self.assertEqual(later.read_bytes(), self.path.read_bytes())
        self.assertEqual(programs.read_bytes(), self.programs.read_bytes())

    def test_of_programs_has_all_that_they_load(self):
        with zipfile.ZipFile(self.programs) as folder:
            files = {name.removeprefix("veltrane/"): folder.read(name)
                     for name in folder.namelist()}
        self.assertEqual(sorted(files), [
            "libgcc_s_seh-1.dll", "libstdc++-6.dll", "libwinpthread-1.dll", "third-party.txt",
            "veltrane-about.dll", "veltrane-panel.exe", "veltrane.chm", "veltrane.dlv",
            "veltrane.exe", "veltrane_host.dll"])
        for name, data in files.items():
            if not name.endswith((".chm", ".txt")):
                missing = {library for library in imports(data)
                           if library not in files and library.lower() not in SYSTEM}
                self.assertEqual(missing, set(), name)

    def test_says_what_others_want_to_be_said_of_their_libraries(self):
        text = self.files["veltrane/Contents/third-party.txt"].decode()
        for name in make_package.LIBRARIES:
            self.assertIn(f"\n{name}\n=====", text)
        self.assertIn("Jean-loup Gailly and Mark Adler", text)
        self.assertIn("Contributors to the OpenEXR Project", text)

    def test_tells_that_a_library_for_this_host_is_not_for_the_application(self):
        self.assertIn(b"veltrane_host.dll", LIBRARY.read_bytes())
        self.assertEqual(self.printed.splitlines()[2],
                         "make_package: this veltrane.dlv is for veltrane's own host; the "
                         "application loads only what is built with its SDK")

    def test_is_for_the_release_that_the_library_is_made_for(self):
        package = self.contents
        self.assertEqual((package.tag, package.get("SchemaVersion"), package.get("AutodeskProduct"),
                          package.get("ProductType"), package.get("Name")),
                         ("ApplicationPackage", "1.0", "3ds Max", "Application", "veltrane"))
        self.assertEqual([child.tag for child in package], ["CompanyDetails", "Components"])
        components = package.find("Components")
        self.assertEqual(components.get("Description"), "plugins parts")
        self.assertEqual([(child.tag, child.attrib) for child in components], [
            ("RuntimeRequirements", {"OS": "Win64", "Platform": "3ds Max", "SeriesMin": "2019",
                                     "SeriesMax": "2019"}),
            ("ComponentEntry", {"AppName": "veltrane", "Version": make_package.version(),
                                "ModuleName": "./Contents/veltrane.dlv"})])

    def test_names_files_that_are_in_it(self):
        for name in (self.contents.get("HelpFile"),
                     self.contents.find("Components/ComponentEntry").get("ModuleName")):
            self.assertIn("veltrane/" + name.removeprefix("./"), self.files)

    def test_of_another_version_is_the_same_product_in_another_version(self):
        codes = []
        for version in ("0.1.0", "0.1.1", "0.1.1"):
            package = xml.etree.ElementTree.fromstring(make_package.package_contents(version))
            self.assertEqual(package.get("AppVersion"), version)
            self.assertRegex(package.get("AppVersion"), r"\A\d+\.\d+\.\d+\Z")
            codes.append((uuid.UUID(package.get("UpgradeCode")),
                          uuid.UUID(package.get("ProductCode"))))
        self.assertEqual(codes[0][0], codes[1][0])
        self.assertNotEqual(codes[0][1], codes[1][1])
        self.assertEqual(codes[1], codes[2])

    def test_has_help_whose_links_all_lead_somewhere(self):
        folder = self.folder / "help"
        folder.mkdir()
        (folder / "veltrane.chm").write_bytes(self.files["veltrane/Contents/veltrane.chm"])
        subprocess.run(["chmls", "extractall", "veltrane.chm", "."], cwd=folder, check=True,
                       capture_output=True, timeout=60)
        pages = {path.name: path.read_text(encoding="utf-8") for path in folder.glob("*.html")}
        self.assertEqual(sorted(pages), sorted(f"{page}.html" for page in make_package.PAGES))
        links = [(page, link) for page, text in pages.items()
                 for link in re.findall(r'(?:href|src)="([^"]*)"', text)]
        self.assertIn(("passes.html", "scene-file.html"), links)
        for page, link in links:
            if re.match("https?:", link):
                continue
            file, _, anchor = link.partition("#")
            self.assertTrue((folder / (file or page)).is_file(), f"{page}: {link}")
            if anchor:
                self.assertIn(f'id="{anchor}"', pages[file or page], f"{page}: {link}")


if __name__ == "__main__":
    unittest.main()
