#!/usr/bin/python3
"""Writes docs/parameters.md from the command's own listing; with --check only compares.

The command is $VELTRANE, or the one of the preset "linux".
"""
import os
import pathlib
import subprocess
import sys

root = pathlib.Path(__file__).resolve().parent.parent
page = root / "docs" / "parameters.md"
command = os.environ.get("VELTRANE", str(root / "build" / "linux" / "bin" / "veltrane"))

INTRO = """# Parameters

What `--set NAME=VALUE` takes, from the effect's one table (`plugin/parameters.h`). A parameter may
also be named by its id: `--set '#46=32'`. This page is made by `scripts/make_parameter_page.py`.

"""

listing = subprocess.run([command, "params", "--markdown"], check=True, capture_output=True,
                         encoding="utf-8").stdout
wanted = INTRO + listing
if "--check" not in sys.argv[1:]:
    page.write_text(wanted, encoding="utf-8")
elif page.read_text(encoding="utf-8") != wanted:
    sys.exit(f"{page} is out of date; run scripts/make_parameter_page.py")
