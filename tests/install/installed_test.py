#!/usr/bin/env python3
"""Tests of what is installed, from a prefix that was moved afterwards. The argument is the build folder."""

import pathlib
import shlex
import shutil
import sys
import tempfile
import unittest

from support import PROJECT, dynamic, names, run, tree_with_logs

BUILD = pathlib.Path()
COMPONENT = "libzol_file_management.so.1"
TABLES = "ZolOamSpiManagedObject_3.h"


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="zol installed ")
        cls.addClassCleanup(folder.cleanup)
        cls.scratch = pathlib.Path(folder.name)
        first = cls.scratch / "first"
        run("cmake", "--install", BUILD, "--prefix", first)
        cls.prefix = cls.scratch / "elsewhere" / "moved"
        cls.prefix.parent.mkdir()
        first.rename(cls.prefix)
        cls.lib = cls.prefix / "lib"
        cls.examples = cls.prefix / "share/doc/zol_file_management/examples"

    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir=self.scratch)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.root = tree_with_logs(self.folder / "root")

    def pkg_config(self, *arguments):
        # a space in the path is quoted for a shell
        return shlex.split(run("pkg-config", *arguments, environment={
            "PKG_CONFIG_PATH": str(self.lib / "pkgconfig")}))

    def assert_hosts_work(self, minimal_host, removing_host):
        library = self.lib / COMPONENT
        self.assertEqual(run(removing_host, library, self.root, "logs", ".*log"), "2 of 3 files removed\n")
        self.assertEqual(run(minimal_host, library, self.root, "logs", "new"), "c.txt 5\n")
        self.assertEqual(names(self.root / "logs"), ["c.txt", "new"])

    def test_libraries_go_by_the_number_of_their_interface(self):
        for name in ("libzol_common.so", "libzol_file_management.so"):
            self.assertEqual(dynamic(self.lib / name, "SONAME"), [name + ".1"])
            self.assertEqual((self.lib / name).resolve().name, name + ".1.0.0")
            self.assertEqual(dynamic(self.lib / name, "RUNPATH"), ["$ORIGIN"])
        self.assertIn("libzol_common.so.1", dynamic(self.lib / COMPONENT, "NEEDED"))

    def test_nothing_knows_where_it_was_built_or_first_installed(self):
        for path in sorted(self.prefix.rglob("*")):
            if path.is_file():
                text = path.read_bytes()
                for place in (PROJECT, BUILD, self.scratch / "first"):
                    self.assertNotIn(str(place).encode(), text, path)

    def test_everything_is_there_and_nothing_else(self):
        expected = [
            "bin/filem", "include/zol/common/MoRepository.h", "include/zol/spi/" + TABLES,
            "lib/cmake/zol/zolConfig.cmake", "lib/libzol_common.so", "lib/libzol_file_management.so",
            "lib/pkgconfig/zol-common.pc", "lib/pkgconfig/zol-file-management.pc", "lib/pkgconfig/zol-spi.pc",
            "share/bash-completion/completions/filem", "share/doc/zol_file_management/LICENSE",
            "share/doc/zol_file_management/README.md", "share/doc/zol_file_management/docs/operating.md",
            "share/doc/zol_file_management/docs/reference/html/structZolOamSpiManagedObject__3.html",
            "share/doc/zol_file_management/examples/CMakeLists.txt", "share/fish/vendor_completions.d/filem.fish",
            "share/man/man1/filem.1", "share/man/man5/filem-config.5", "share/zsh/site-functions/_filem"]
        self.assertEqual([path for path in expected if not (self.prefix / path).is_file()], [])
        self.assertEqual(names(self.prefix), ["bin", "include", "lib", "share"])
        self.assertEqual(names(self.prefix / "bin"), ["filem"])
        self.assertEqual(names(self.prefix / "share/doc/zol_file_management/docs/reference"), ["html"])
        self.assertEqual([name for name in names(self.lib) if ".so" not in name], ["cmake", "pkgconfig"])

    def test_headers_need_nothing_that_is_not_installed(self):
        flags = self.pkg_config("--cflags", "zol-common")
        for header in sorted((self.prefix / "include/zol").rglob("*.h")):
            languages = ["c++"] if header.parent.name == "common" else ["c", "c++"]
            for language in languages:
                standard = "-std=c11" if language == "c" else "-std=c++20"
                run("cc", "-x", language, standard, "-Wall", "-Wextra", "-Wpedantic", "-Werror", *flags,
                    "-fsyntax-only", "-include", header, "/dev/null")

    def test_cmake_builds_the_examples_and_they_run(self):
        build = self.folder / "build"
        run("cmake", "-G", "Ninja", "-S", self.examples, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}")
        run("cmake", "--build", build)
        self.assert_hosts_work(build / "minimal_host", build / "removing_host")

    def test_a_compiler_with_pkg_config_builds_the_examples_and_they_run(self):
        minimal, removing = self.folder / "minimal", self.folder / "removing"
        run("cc", "-std=c11", "-o", minimal, self.examples / "minimal_host.c",
            *self.pkg_config("--cflags", "--libs", "zol-spi"), "-ldl")
        run("c++", "-std=c++20", "-o", removing, self.examples / "removing_host.cpp",
            *self.pkg_config("--cflags", "--libs", "zol-spi", "zol-common"), "-ldl",
            "-Wl,-rpath," + " ".join(self.pkg_config("--variable=libdir", "zol-common")))
        self.assert_hosts_work(minimal, removing)

    def test_pkg_config_knows_the_component(self):
        told = self.pkg_config("--variable=component", "zol-file-management")
        self.assertEqual(pathlib.Path(" ".join(told)).resolve(), (self.lib / COMPONENT).resolve())

    def cmake_project(self, text):
        source = self.folder / "source"
        source.mkdir()
        (source / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(user LANGUAGES C CXX)\n" + text, encoding="utf-8")
        return run("cmake", "-G", "Ninja", "-S", source, "-B", self.folder / "build",
                   f"-DCMAKE_PREFIX_PATH={self.prefix}")

    def test_cmake_knows_the_component(self):
        self.cmake_project("find_package(zol 1 REQUIRED COMPONENTS spi)\n"
                           "get_target_property(place zol::file_management IMPORTED_LOCATION)\n"
                           "file(GENERATE OUTPUT told CONTENT [[$<TARGET_FILE:zol::file_management>\n]])\n"
                           "file(WRITE ${CMAKE_BINARY_DIR}/also \"${place}\\n${zol_FILE_MANAGEMENT_LIBRARY}\\n\")\n")
        place = f"{self.lib / COMPONENT}\n"
        self.assertEqual((self.folder / "build/told").read_text(encoding="utf-8"), place)
        self.assertEqual((self.folder / "build/also").read_text(encoding="utf-8"), place * 2)

    def test_the_records_alone_need_no_other_library(self):
        self.cmake_project("set(CMAKE_DISABLE_FIND_PACKAGE_Poco ON)\n"
                           "find_package(zol 1 REQUIRED COMPONENTS spi)\n"
                           "if(NOT TARGET zol::spi OR TARGET zol::common)\n"
                           "    message(FATAL_ERROR \"the wrong targets\")\nendif()\n"
                           "find_package(zol 1 REQUIRED COMPONENTS spi OPTIONAL_COMPONENTS common engine)\n"
                           "if(zol_common_FOUND OR zol_engine_FOUND)\n"
                           "    message(FATAL_ERROR \"found what isn't there\")\nendif()\n")

    def test_cmake_says_what_is_missing(self):
        for text, why in (
                ("find_package(zol 2 REQUIRED)\n", "compatible"),
                ("find_package(zol 1 REQUIRED COMPONENTS engine)\n", "there is no component engine"),
                ("set(CMAKE_DISABLE_FIND_PACKAGE_Poco ON)\nfind_package(zol 1 REQUIRED COMPONENTS common)\n",
                 "POCO's libraries")):
            with self.subTest(text), self.assertRaisesRegex(AssertionError, why):
                shutil.rmtree(self.folder / "source", ignore_errors=True)
                self.cmake_project(text)

    def test_filem_finds_the_component(self):
        self.assertEqual(run(self.prefix / "bin/filem", "--root", self.root, "ls", "logs"), "a.log\nb.log\nc.txt\n")
        link = self.folder / "filem"
        link.symlink_to(self.prefix / "bin/filem")
        self.assertEqual(run(link, "--root", self.root, "ls", "logs"), "a.log\nb.log\nc.txt\n")

    def test_packagers_install_below_a_folder_of_theirs(self):
        stage = self.folder / "stage"
        run("cmake", "--install", BUILD, "--prefix", "/opt/zol", environment={"DESTDIR": str(stage)})
        self.assertEqual(names(stage), ["opt"])
        staged = {path.relative_to(stage / "opt/zol") for path in stage.rglob("*") if path.is_file()}
        self.assertEqual(staged, {path.relative_to(self.prefix) for path in self.prefix.rglob("*") if path.is_file()})


if __name__ == "__main__":
    BUILD = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main()
