#!/usr/bin/env python3
"""Tests of the reference. The arguments are doxygen and the settings that it makes the reference by."""

import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

# what hosts tell apart; any operation may also give -1 for want of memory
CODES = {
    "zolLCMinit": "0 -1",
    "getInterface": "0 other",
    "registerComponent": "0 other",
    "unregisterComponent": "any",
    "start": "0 -1",
    "stop": "0",
    "registerParticipant": "0 other",
    "addMessage": "0 other",
    "join": "0 other",
    "prepare": "0",
    "commit": "0 -1 -2",
    "abort": "0 -2",
    "finish": "0 -2",
    "setMoAttribute": "-1",
    "getMoAttribute": "0 -1 -2 other",
    "getMoAttributes": "0 other",
    "newMoIterator": "0 -1 -2",
    "nextMo": "0 -1 -2",
    "createMo": "0 -1",
    "deleteMo": "0 -1 -2",
    "action": "0 -1 -2 -8",
    "finalizeMoIterator": "0",
    "existsMo": "0 -2",
    "countMoChildren": "0 -2",
}

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
        codes = {}
        for kind in ["variable", "function"]:
            for member in self.members(kind):
                returns = "".join(member.find("type").itertext()).startswith("ZolReturnT")
                if returns and "/spi/" in member.find("location").get("file"):
                    told = member.findall(".//parameterlist[@kind='retval']//parametername")
                    codes[member.findtext("name")] = " ".join("".join(code.itertext()) for code in told)
        self.assertEqual(codes, CODES)

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
