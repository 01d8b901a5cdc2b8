#!/usr/bin/python3
"""Makes what users of Windows get of a build, as two zips:

    scripts/make_package.py [--build build/windows] [--output build/windows]

OUTPUT/veltrane-VERSION.zip is the application package: the plug-in, its help and
PackageContents.xml. What is in it goes into one of the folders "ApplicationPlugins" that the
application searches. OUTPUT/veltrane-VERSION-programs.zip is a folder from which veltrane-panel.exe
and veltrane.exe run without the application.

The help is made of the pages in docs/ with Free Pascal's chmcmd. The same files give the same zips.
"""
import argparse
import html
import pathlib
import re
import shutil
import subprocess
import tempfile
import uuid
import zipfile

import markdown

ROOT = pathlib.Path(__file__).resolve().parent.parent
# In the order of the table of contents. The first is what opens.
PAGES = ("panel", "passes", "colour", "parameters", "configuration", "scene-file", "scene-data")
PLUGIN = ("veltrane.dlv", "veltrane-about.dll")
PROGRAMS = ("veltrane-panel.exe", "veltrane.exe", "veltrane_host.dll")
# Of the compiler.
COMPILER = "x86_64-w64-mingw32-gcc-posix"
RUNTIME = ("libgcc_s_seh-1.dll", "libstdc++-6.dll", "libwinpthread-1.dll")
# What is linked into the files or lies beside them, and the package of Debian that tells its terms.
LIBRARIES = {"zlib": "libz-mingw-w64-dev", "Boost": "libboost1.74-dev", "Highway": "libhwy-dev",
             "Imath": "libimath-dev", "OpenEXR": "libopenexr-dev", "Little CMS": "liblcms2-dev",
             "JSON for Modern C++": "nlohmann-json3-dev", "CLI11": "libcli11-dev",
             "GCC's libraries": "gcc-mingw-w64-base", "MinGW-w64": "mingw-w64-common"}
# The time of every file in the zip; a zip knows none before.
EPOCH = (1980, 1, 1, 0, 0, 0)
# What a library imports that was made for this project's own host.
OWN_HOST = b"veltrane_host.dll"
# In a help file four bytes of clock follow its header's first 16, and in #SYSTEM, which starts with
# its version, those of its first entry.
CLOCKS = (re.compile(rb"\AITSF.{12}", re.DOTALL), re.compile(rb"\x03\0\0\0\x0a\0\x04\0"))

PAGE = """<!DOCTYPE html PUBLIC "-//W3C//DTD HTML 4.01//EN">
<html><head><meta http-equiv="Content-Type" content="text/html; charset=utf-8">
<title>{title}</title>
<style>body {{ font: 10pt sans-serif; margin: 1.5em; max-width: 50em }}
table {{ border-collapse: collapse }} td, th {{ border: 1px solid #999; padding: 2px 6px;
text-align: left; vertical-align: top }} pre {{ background: #eee; padding: 0.5em }}
img {{ max-width: 100% }}</style></head>
<body>{body}</body></html>
"""

PROJECT = """[OPTIONS]
Compiled file=veltrane.chm
Contents file=contents.hhc
Default topic={first}.html
Full-text search=Yes
Language=0x409 English (United States)
Title=veltrane

[FILES]
{files}
"""

ENTRY = """<LI><OBJECT type="text/sitemap"><param name="Name" value="{title}">
<param name="Local" value="{page}.html"></OBJECT>"""


def version():
    found = re.search(r"project\(veltrane VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())
    return found.group(1)


def package_contents(version_text):
    """PackageContents.xml. Every version has a ProductCode of its own, and all the UpgradeCode."""
    text = (ROOT / "ui" / "PackageContents.xml.in").read_text(encoding="utf-8")
    upgrade = uuid.UUID(re.search(r'UpgradeCode="({[^"]+})"', text).group(1))
    product = f"{{{uuid.uuid5(upgrade, version_text)}}}"
    return text.replace("@VERSION@", version_text).replace("@PRODUCT_CODE@", product)


def without_clocks(made):
    """The help file as at any other time."""
    for clock in CLOCKS:
        found = clock.search(made)
        if not found:
            raise SystemExit("make_package: chmcmd made no help file")
        made = made[:found.end()] + bytes(4) + made[found.end() + 4:]
    return made


def make_help(folder):
    """The help file's bytes. Leaves its parts in `folder`."""
    titles = {}
    images = set()
    for page in PAGES:
        text = (ROOT / "docs" / f"{page}.md").read_text(encoding="utf-8")
        titles[page] = re.match(r"# (.*)", text).group(1)
        images |= set(re.findall(r"\]\(([^):]+\.(?:png|jpg|svg))\)", text))
        body = markdown.markdown(text, extensions=["tables", "fenced_code", "toc"])
        body = re.sub(r'href="([\w-]+)\.md', r'href="\1.html', body)
        (folder / f"{page}.html").write_text(
            PAGE.format(title=html.escape(titles[page]), body=body), encoding="utf-8")
    for image in sorted(images):
        (folder / image).parent.mkdir(exist_ok=True)
        shutil.copy(ROOT / "docs" / image, folder / image)
    entries = [ENTRY.format(title=html.escape(titles[page]), page=page) for page in PAGES]
    (folder / "contents.hhc").write_text("<HTML><BODY><UL>\n" + "\n".join(entries) +
                                         "\n</UL></BODY></HTML>\n", encoding="utf-8")
    files = [f"{page}.html" for page in PAGES] + sorted(images)
    (folder / "veltrane.hhp").write_text(
        PROJECT.format(first=PAGES[0], files="\n".join(files)), encoding="utf-8")
    subprocess.run(["chmcmd", "--verbosity", "1", "veltrane.hhp"], cwd=folder, check=True,
                   stdout=subprocess.DEVNULL)
    return without_clocks((folder / "veltrane.chm").read_bytes())


def built(folder, names):
    """The files of the build, by their names."""
    for name in names:
        if not (folder / name).is_file():
            raise SystemExit(f"make_package: {folder / name} is not there; build the preset "
                             "\"windows\" first")
    return {name: (folder / name).read_bytes() for name in names}


def runtime():
    """The compiler's libraries that the programs need."""
    def place(name):
        return subprocess.run([COMPILER, f"-print-file-name={name}"], check=True,
                              stdout=subprocess.PIPE, text=True).stdout.strip()

    return {name: pathlib.Path(place(name)).read_bytes() for name in RUNTIME}


def notices():
    """What others want to be said of their libraries."""
    parts = ["veltrane is built with the libraries below. Each part is what Debian says of one.\n"]
    for name, package in LIBRARIES.items():
        terms = pathlib.Path("/usr/share/doc", package, "copyright").read_text(encoding="utf-8")
        parts.append(f"{'=' * 78}\n{name}\n{'=' * 78}\n\n{terms}")
    return "\n".join(parts).encode()


def write_zip(output, files):
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED) as package:
        for name, data in files.items():
            entry = zipfile.ZipInfo(name, EPOCH)
            # A file that all may read.
            entry.external_attr = 0o100644 << 16
            package.writestr(entry, data, zipfile.ZIP_DEFLATED)
    print(f"{output}: {', '.join(files)}")


def main():
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("--build", type=pathlib.Path, default=ROOT / "build" / "windows")
    options.add_argument("--output", type=pathlib.Path, help="a folder; the build's by default")
    arguments = options.parse_args()
    output = arguments.output or arguments.build
    plugin = built(arguments.build / "bin", PLUGIN)
    programs = built(arguments.build / "bin", PROGRAMS)
    with tempfile.TemporaryDirectory() as place:
        plugin["veltrane.chm"] = make_help(pathlib.Path(place))
    plugin["third-party.txt"] = notices()
    contents = package_contents(version()).encode()
    write_zip(output / f"veltrane-{version()}.zip",
              {"veltrane/PackageContents.xml": contents,
               **{f"veltrane/Contents/{name}": data for name, data in plugin.items()}})
    write_zip(output / f"veltrane-{version()}-programs.zip",
              {f"veltrane/{name}": data
               for name, data in {**programs, **plugin, **runtime()}.items()})
    if OWN_HOST in plugin["veltrane.dlv"]:
        print("make_package: this veltrane.dlv is for veltrane's own host; the application loads "
              "only what is built with its SDK")


if __name__ == "__main__":
    main()
