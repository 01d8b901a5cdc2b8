#!/usr/bin/python3
"""The plug-in exports its four entry points and nothing else. $VELTRANE_DLV is the library."""
import os
import re
import subprocess
import unittest


class Exports(unittest.TestCase):
    def test_are_the_four_entry_points(self):
        listing = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", os.environ["VELTRANE_DLV"]],
                                 check=True, capture_output=True, text=True).stdout
        table = listing.split("[Ordinal/Name Pointer] Table", 1)[1]
        names = re.findall(r"^\s*\[\s*\d+\]\s*(?:\+base\[\s*\d+\]\s*)?(?:[0-9a-f]+\s+)?(\S+)\s*$",
                           table.split("\n\n", 1)[0], re.MULTILINE)
        self.assertEqual(sorted(names),
                         ["LibClassDesc", "LibDescription", "LibNumberClasses", "LibVersion"])


if __name__ == "__main__":
    unittest.main()
