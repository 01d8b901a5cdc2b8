#!/usr/bin/python3
"""Keeps the house in order: who may include whom, words that don't belong, tests that mirror.

The rules are the three tables below; the functions after them know nothing about this project. Run
without arguments it checks the project that it lies in, and then itself: a small good tree passes,
and one break a rule is told with its whole message.
"""
import pathlib
import posixpath
import re
import subprocess
import tempfile
import unittest

# ---- The rules -----------------------------------------------------------------------------------

# Headers in angle brackets, by whom they belong to. The first pattern that fits decides; a header
# that lies in sdk/ under that very name belongs to "sdk" whatever stands here.
LIBRARIES = (
    ("windows", r"(windows|windowsx|cderr|commctrl|commdlg|shellapi|wincodec|io|process|share)\.h"),
    ("posix", r"(unistd|fcntl|dirent|dlfcn|malloc|signal|sys/\w+)\.h"),
    ("std", r"[a-z_0-9]+"),
    ("intrinsics", r"[a-z]+intrin\.h"),
    ("smart_ptr", r"boost/(smart_ptr/.*|shared_ptr|weak_ptr|make_shared|pointer_cast|"
                  r"enable_shared_from_this)(\.hpp)?"),
    ("boost", r"boost/.*"),
    ("zlib", r"zlib\.h"),
    ("highway", r"hwy/.*"),
    ("isal", r"(isa-l|isa-l/.*|igzip_lib)(\.h)?"),
    ("openexr", r"(OpenEXR|Imath)/.*|I(mf|ex|math)\w+\.h"),
    ("openimageio", r"OpenImageIO/.*"),
    ("littlecms", r"lcms2\.h"),
    ("cli11", r"CLI/.*"),
    ("json", r"nlohmann/.*"),
    ("googletest", r"g(test|mock)/.*"),
    ("benchmark", r"benchmark/.*"),
)

INPUT_LIBRARIES = ("posix", "windows", "intrinsics", "highway", "smart_ptr", "zlib", "isal",
                   "openexr", "openimageio", "littlecms", "cli11", "json")

# What a folder may include besides itself and "std": folders, single files or files by pattern of
# the project, and libraries.
ROWS = {
    "psdfile": {"libraries": ("smart_ptr", "zlib", "intrinsics")},
    "psdbuilder": {"project": ("psdfile/",), "libraries": ("smart_ptr",)},
    "sdk": {"libraries": ("windows",)},
    "sources": {"project": ("psdfile/", "psdbuilder/compositor"),
                "libraries": ("sdk", "smart_ptr", "highway")},
    "effect": {"project": ("psdfile/", "psdbuilder/", "sources/", "plugin/parameters.h"),
               # The system's own file functions: the standard library opens no shared file.
               "libraries": ("sdk", "smart_ptr", "posix", "windows")},
    "plugin": {"project": ("psdfile/", "psdbuilder/", "sources/", "effect/"),
               "libraries": ("sdk", "smart_ptr", "zlib", "posix", "windows")},
    "ui": {"project": ("psdfile/", "psdbuilder/", "sources/", "effect/", "plugin/"),
           "libraries": ("sdk", "smart_ptr", "zlib", "windows")},
    "host": {"libraries": ("sdk", *INPUT_LIBRARIES)},
    "command": {"project": ("host/", "plugin/entry.h"), "libraries": ("sdk", *INPUT_LIBRARIES)},
}

# Rooms of the workshop, which look into every folder.
ROOMS = ("tests", "bench", "fuzz", "examples")
EVERYTHING = {"project": tuple(f"{folder}/" for folder in (*ROWS, *ROOMS)),
              "libraries": ("sdk", *INPUT_LIBRARIES, "googletest", "benchmark")}
ROWS |= {room: EVERYTHING for room in ROOMS}

# What no text of the project says: where it was written, and papers that its reader doesn't have.
WORDS = (
    ("a numbered chapter of another text", r"\bParts? [1-9]\.[1-9]\b"),
    ("another text's file", r"\bspec\.md\b"),
    ("another text", r"\b(the|our|this) spec(ification)?\b"),
    ("a path of one machine", r"(?<![\w.])/(wor[k]|roo[t])/"),
    ("a path outside the project", r"\.\./share[d]\b"),
    ("a package registry's host", r"\bregistry\.[\w-]+\.\w+"),
)

SOURCE_SUFFIXES = {".h", ".cpp", ".hpp", ".cc", ".inl"}

# ---- The checks ----------------------------------------------------------------------------------

INCLUDE = re.compile(r"^[ \t]*#[ \t]*include\b[ \t]*(.*)$", re.MULTILINE)
TARGET = re.compile(r'<(?P<library>[^>]+)>|"(?P<project>[^"]+)"')


def project_files(root):
    """Every file that belongs to the project below `root`, relative to it: in a git checkout what
    git doesn't ignore, elsewhere all."""
    if (root / ".git").exists():
        names = subprocess.run(
            ["git", "-c", "safe.directory=*", "-C", root, "ls-files", "-z", "--cached", "--others",
             "--exclude-standard"],
            check=True, capture_output=True, text=True).stdout.split("\0")
        found = {pathlib.Path(name) for name in names if name}
    else:
        found = {path.relative_to(root) for path in root.rglob("*") if path.is_file()}
    return sorted(path for path in found if (root / path).is_file())


def line_of(text, position):
    return text.count("\n", 0, position) + 1


def library_of(header, sdk_headers):
    if header in sdk_headers:
        return "sdk"
    return next((name for name, pattern in LIBRARIES if re.fullmatch(pattern, header)), None)


def include_fault(includer, target, files, sdk_headers):
    """What is wrong with the file `includer` including `target` (as written, with its quotes), or
    None."""
    folder = includer.parts[0]
    row = ROWS[folder]
    match = TARGET.match(target)
    if not match:
        return f"includes {target}, which no reader can follow"
    if header := match["library"]:
        library = library_of(header, sdk_headers)
        if library is None:
            return f"includes <{header}>, which belongs to no known library"
        if library != "std" and library not in row.get("libraries", ()) and library != folder:
            return f"includes <{header}>; {folder}/ may not include {library}"
        return None
    path = match["project"]
    if folder == "sdk":  # whose headers stand beside each other, as the vendor's do
        path = posixpath.normpath((includer.parent / path).as_posix())
    if pathlib.Path(path) not in files:
        return f'includes "{path}", which no file of the project is'
    owner = path.split("/")[0]
    if owner == "sdk" != folder:
        return f'includes "{path}"; headers of sdk/ are written in angle brackets'
    if owner != folder and not path.startswith(row.get("project", ())):
        return f'includes "{path}"; {folder}/ may not include it'
    return None


def include_faults(root, files):
    sdk_headers = {str(path.relative_to("sdk")) for path in files if path.parts[0] == "sdk"}
    known = set(files)
    faults = []
    for path in files:
        if path.suffix not in SOURCE_SUFFIXES:
            continue
        folder = path.parts[0]
        if len(path.parts) < 2 or folder not in ROWS:
            faults.append(f"{path}: {folder} has no row in the table of who may include whom")
            continue
        text = (root / path).read_text(encoding="utf-8")
        for match in INCLUDE.finditer(text):
            if fault := include_fault(path, match[1], known, sdk_headers):
                faults.append(f"{path}:{line_of(text, match.start())}: {fault}")
    return faults


def word_faults(root, files):
    faults = []
    for path in files:
        content = (root / path).read_bytes()
        if b"\0" in content:
            continue
        text = content.decode("utf-8", errors="replace")
        for meaning, pattern in WORDS:
            faults += [f'{path}:{line_of(text, match.start())}: "{match[0]}" is {meaning}'
                       for match in re.finditer(pattern, text)]
    return faults


def mirror_faults(files):
    """tests/folder/x_test.cpp tests folder/x, and so does tests/folder/x_side_test.cpp one side of
    it, so that the tests of a large file needn't be one."""
    sources = {path.with_suffix("") for path in files if path.suffix in (".h", ".cpp")}
    faults = []
    for path in files:
        if path.parts[0] != "tests" or not path.name.endswith("_test.cpp"):
            continue
        subject = pathlib.Path(*path.parts[1:]).with_name(path.name.removesuffix("_test.cpp"))
        words = subject.name.split("_")
        if not any(subject.with_name("_".join(words[:count])) in sources
                   for count in range(1, len(words) + 1)):
            faults.append(f"{path}: there is no {subject}.h or {subject}.cpp that it could test")
    return faults


def all_faults(root):
    files = project_files(root)
    return include_faults(root, files) + word_faults(root, files) + mirror_faults(files)


# ---- The checks, checked -------------------------------------------------------------------------

GOOD = {
    "psdfile/part.h": "#pragma once\n#include <cstdint>\n#include <boost/shared_ptr.hpp>\n",
    "psdfile/part.cpp": '#include "psdfile/part.h"\n#include <zlib.h>\n',
    "psdbuilder/compositor.h": '#include "psdfile/part.h"\n',
    "psdbuilder/document.h": '#include "psdfile/part.h"\n',
    "sdk/bitmap.h": "#include <vector>\n#include \"maxtypes.h\"\n",
    "sdk/maxtypes.h": "#include <cstdint>\n",
    "sdk/maxscript/maxscript.h": '#include "../maxtypes.h"\n',
    "sources/row.cpp": '#include <bitmap.h>\n  #  include "psdbuilder/compositor.h"\n'
                       "#include <hwy/highway.h>\n",
    "plugin/parameters.h": "#include <bitmap.h>\n",
    "plugin/entry.h": "#pragma once\n",
    "effect/driver.cpp": '#include "plugin/parameters.h"\n#include "psdbuilder/document.h"\n',
    "host/reader.cpp": "#include <OpenEXR/ImfInputFile.h>\n#include <unistd.h>\n",
    "host/reader.h": "",
    "command/main.cpp": '#include "plugin/entry.h"\n#include "host/reader.h"\n',
    "tests/psdfile/part_lengths_test.cpp": "",
    "tests/psdfile/part_test.cpp": '#include <gtest/gtest.h>\n#include "psdfile/part.h"\n',
    "README.md": "Works with paths like framework/out and a spectrum of specifications.\n",
    "examples/still.exr": "\0Part",
}

# One break a rule: what is added to the good tree, and the one fault that must be told.
BREAKS = {
    "a folder that the row doesn't name":
        ("psdfile/a.cpp", '\n#include "psdbuilder/document.h"\n',
         'psdfile/a.cpp:2: includes "psdbuilder/document.h"; psdfile/ may not include it'),
    "another file of a folder of which the row names one":
        ("sources/a.cpp", '#include "psdbuilder/document.h"\n',
         'sources/a.cpp:1: includes "psdbuilder/document.h"; sources/ may not include it'),
    "more of the plug-in than its entry":
        ("command/a.cpp", '#include "plugin/parameters.h"\n',
         'command/a.cpp:1: includes "plugin/parameters.h"; command/ may not include it'),
    "a library that the row doesn't name":
        ("psdbuilder/a.cpp", "#include <zlib.h>\n",
         "psdbuilder/a.cpp:1: includes <zlib.h>; psdbuilder/ may not include zlib"),
    "more of Boost than its smart pointers":
        ("psdfile/a.cpp", "#include <boost/optional.hpp>\n",
         "psdfile/a.cpp:1: includes <boost/optional.hpp>; psdfile/ may not include boost"),
    "a header of the host where no host is known":
        ("psdfile/a.cpp", "#include <bitmap.h>\n",
         "psdfile/a.cpp:1: includes <bitmap.h>; psdfile/ may not include sdk"),
    "a header of the host in quotes":
        ("effect/a.cpp", '#include "sdk/bitmap.h"\n',
         'effect/a.cpp:1: includes "sdk/bitmap.h"; headers of sdk/ are written in angle brackets'),
    "a library in the declarations of the host":
        ("sdk/a.h", "#include <boost/shared_ptr.hpp>\n",
         "sdk/a.h:1: includes <boost/shared_ptr.hpp>; sdk/ may not include smart_ptr"),
    "a header of another folder in the declarations of the host":
        ("sdk/a.h", '#include "../psdfile/part.h"\n',
         'sdk/a.h:1: includes "psdfile/part.h"; sdk/ may not include it'),
    "an include beside the file":
        ("psdfile/a.cpp", '#include "part.h"\n',
         'psdfile/a.cpp:1: includes "part.h", which no file of the project is'),
    "an unknown library":
        ("host/a.cpp", "#include <tiffio.h>\n",
         "host/a.cpp:1: includes <tiffio.h>, which belongs to no known library"),
    "an include by macro":
        ("psdfile/a.cpp", "#include HEADER\n",
         "psdfile/a.cpp:1: includes HEADER, which no reader can follow"),
    "a folder without a row":
        ("engine/a.cpp", "",
         "engine/a.cpp: engine has no row in the table of who may include whom"),
    "a chapter of another text":
        ("README.md", "See\nPart " + "3.1.\n",
         'README.md:2: "Part ' + '3.1" is a numbered chapter of another text'),
    "another text":
        ("README.md", "As the " + "spec says.\n", 'README.md:1: "the ' + 'spec" is another text'),
    "another text's file":
        ("README.md", "spec" + ".md\n", 'README.md:1: "spec' + '.md" is another text\'s file'),
    "a path of one machine":
        ("demo", "cd /wor" + "k/main\n", 'demo:1: "/wor' + 'k/" is a path of one machine'),
    "a path outside the project":
        ("demo", "cp ../share" + "d/a .\n",
         'demo:1: "../share' + 'd" is a path outside the project'),
    "a package registry's host":
        ("a.json", '"https://registry' + '.example.org/x"\n',
         'a.json:1: "registry' + '.example.org" is a package registry\'s host'),
    "a test of nothing":
        ("tests/psdfile/a_test.cpp", "",
         "tests/psdfile/a_test.cpp: there is no psdfile/a.h or psdfile/a.cpp that it could test"),
}


class TheProject(unittest.TestCase):
    def test_keeps_its_rules(self):
        faults = all_faults(pathlib.Path(__file__).resolve().parents[2])
        self.assertEqual(faults, [], "\n" + "\n".join(faults))


class TheChecks(unittest.TestCase):
    def faults_of(self, tree):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in tree.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text, encoding="utf-8")
            return all_faults(root)

    def test_pass_a_good_tree(self):
        self.assertEqual(self.faults_of(GOOD), [])

    def test_tell_each_break_with_its_whole_message(self):
        for title, (name, text, fault) in BREAKS.items():
            with self.subTest(title):
                self.assertEqual(self.faults_of(GOOD | {name: text}), [fault])


if __name__ == "__main__":
    unittest.main()
