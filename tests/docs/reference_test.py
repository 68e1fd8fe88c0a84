#!/usr/bin/env python3
"""Tests of the reference. The arguments are doxygen and the settings that it makes the reference by."""

import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

DOXYGEN = ""
SETTINGS = ""


class Reference(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def make(self, further=""):
        settings = pathlib.Path(SETTINGS).read_text(encoding="utf-8")
        settings += f"\nOUTPUT_DIRECTORY = {self.folder}\nGENERATE_XML = YES\n{further}\n"
        return subprocess.run([DOXYGEN, "-"], input=settings, capture_output=True, encoding="utf-8", timeout=100)

    def members(self, kind):
        for file in sorted((self.folder / "xml").glob("*.xml")):
            for member in xml.etree.ElementTree.parse(file).iter("memberdef"):
                if member.get("kind") == kind:
                    yield member

    def test_everything_public_is_documented(self):
        outcome = self.make()
        self.assertEqual((outcome.returncode, outcome.stderr), (0, ""))
        html = {file.name for file in (self.folder / "html").iterdir()}
        self.assertLessEqual({"index.html", "structZolOamSpiManagedObject__3.html", "ZolReturnT_8h.html",
                              "classZol_1_1MoRepository.html"}, html)

    def test_every_operation_of_the_boundary_tells_its_codes(self):
        self.make()
        operations = {}
        for kind in ["variable", "function"]:
            for member in self.members(kind):
                returns = "".join(member.find("type").itertext()).startswith("ZolReturnT")
                if returns and "/spi/" in member.find("location").get("file"):
                    tells = member.find(".//parameterlist[@kind='retval']") is not None
                    operations[member.findtext("name")] = tells
        self.assertLessEqual({"zolLCMinit", "start", "registerParticipant", "join", "createMo"}, set(operations))
        self.assertEqual([name for name, tells in operations.items() if not tells], [])

    def test_what_says_nothing_is_an_error(self):
        header = self.folder / "Silent.h"
        header.write_text("/** @file\n * Silent. */\nvoid says(void);\n", encoding="utf-8")
        outcome = self.make(f"INPUT += {header}")
        self.assertNotEqual(outcome.returncode, 0)
        self.assertIn("says(void)", outcome.stderr)


if __name__ == "__main__":
    SETTINGS = sys.argv.pop(2)
    DOXYGEN = sys.argv.pop(1)
    unittest.main()
