#!/usr/bin/env python3
"""Tests of the component as it is built against another libzol_common, that of the folder other_common. The
arguments are a build folder with the examples and the folder of that library."""

import pathlib
import sys
import tempfile
import unittest

from support import PROJECT, dynamic, names, run, tree_with_logs

BUILD = pathlib.Path()
OTHER_LIBRARY = pathlib.Path()


class OtherCommon(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.scratch = pathlib.Path(folder.name)
        cls.other = cls.scratch / "other"
        cls.other.mkdir()
        (cls.other / "lib").symlink_to(OTHER_LIBRARY)
        (cls.other / "include").symlink_to(pathlib.Path(__file__).resolve().parent / "other_common/include")
        build = cls.scratch / "build"
        run("cmake", "-G", "Ninja", "-S", PROJECT, "-B", build, f"-DZOL_COMMON_ROOT={cls.other}",
            "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0")
        run("cmake", "--build", build, "--parallel", "2")
        run("cmake", "--install", build, "--prefix", cls.scratch / "installed")
        cls.lib = cls.scratch / "installed/lib"
        cls.component = cls.lib / "libzol_file_management.so.1"

    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir=self.scratch)
        self.addCleanup(folder.cleanup)
        self.root = tree_with_logs(pathlib.Path(folder.name) / "root")

    def host(self, root, directory):
        """A host that knows of no companion."""
        return run(BUILD / "bin/minimal_host", self.component, root, directory, "new",
                   environment={"LD_LIBRARY_PATH": str(self.other / "lib")})

    def test_the_component_needs_that_one(self):
        self.assertIn("libzol_common.so.7", dynamic(self.component, "NEEDED"))
        with self.assertRaisesRegex(AssertionError, "libzol_common.so.7: cannot open"):
            run(BUILD / "bin/minimal_host", self.component, self.root, "logs", "new")

    def test_the_component_works_with_it(self):
        self.assertEqual(self.host(self.root, "logs"), "a.log 5\nb.log 5\nc.txt 5\n")
        self.assertEqual(names(self.root / "logs"), ["a.log", "b.log", "c.txt", "new"])

    def test_the_log_is_that_one_s(self):
        with self.assertRaisesRegex(AssertionError, "other companion, severity 3: .* does not exist"):
            self.host(self.root / "missing", "logs")

    def test_the_component_finds_it_beside_itself(self):
        beside = self.scratch / "beside"
        beside.mkdir()
        for library in (self.component, self.other / "lib/libzol_common.so.7"):
            (beside / library.name).write_bytes(library.read_bytes())
        said = run(BUILD / "bin/minimal_host", beside / self.component.name, self.root, "logs", "new")
        self.assertEqual(said, "a.log 5\nb.log 5\nc.txt 5\n")

    def test_the_installed_examples_are_built_that_know_of_no_companion(self):
        build = self.scratch / "examples"
        installed = self.lib.parent
        run("cmake", "-G", "Ninja", "-S", installed / "share/doc/zol_file_management/examples", "-B", build,
            f"-DCMAKE_PREFIX_PATH={installed}")
        run("cmake", "--build", build)
        self.assertFalse((build / "removing_host").exists())
        said = run(build / "minimal_host", self.component, self.root, "logs", "new",
                   environment={"LD_LIBRARY_PATH": str(self.other / "lib")})
        self.assertEqual(said, "a.log 5\nb.log 5\nc.txt 5\n")

    def test_the_component_alone_is_built_and_installed(self):
        self.assertEqual(names(self.lib), ["cmake", "libzol_file_management.so", "libzol_file_management.so.1",
                                           "libzol_file_management.so.1.0.0", "pkgconfig"])
        self.assertEqual(names(self.lib / "pkgconfig"), ["zol-file-management.pc", "zol-spi.pc"])
        self.assertEqual(names(self.lib.parent), ["include", "lib", "share"])
        self.assertEqual(names(self.lib.parent / "include/zol"), ["spi"])


if __name__ == "__main__":
    BUILD = pathlib.Path(sys.argv.pop(1)).resolve()
    OTHER_LIBRARY = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main()
