#!/usr/bin/python3
"""Tests of the Debian packages: two builds in different surroundings give the same, lintian finds nothing, and in a
system of its own they are installed, used, upgraded and removed. Needs git, packages-long.txt and a Debian mirror.
"""

import os
import pathlib
import platform
import shutil
import subprocess
import sys
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
IN_ROOT = pathlib.Path(__file__).with_name("in_root")
SKIPPED = 77
VERSION = "1.0.0"
NEXT_VERSION = "1.0.0+next"

# what a cache of the compiler made for the first build would be compared with itself
os.environ["CCACHE_DISABLE"] = "1"


def run(*command, **options):
    outcome = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, encoding="utf-8",
                             errors="replace", check=False, **options)
    if outcome.returncode != 0:
        raise AssertionError(f"{' '.join(map(str, command))}: exit code {outcome.returncode}\n"
                             f"{outcome.stdout[-10000:]}")
    return outcome.stdout


def make_packages(folder, mask, **surroundings):
    run(PROJECT / "scripts/package", folder, umask=mask,
        env={key: value for key, value in os.environ.items() if key != "SOURCE_DATE_EPOCH"} | surroundings)


def renumber(package, target):
    """The same package with the next version."""
    with tempfile.TemporaryDirectory() as folder:
        content = pathlib.Path(folder) / "content"
        run("dpkg-deb", "--raw-extract", package, content)
        control = content / "DEBIAN/control"
        control.write_text(control.read_text(encoding="utf-8").replace(VERSION, NEXT_VERSION), encoding="utf-8")
        run("dpkg-deb", "--root-owner-group", "--build", content, target)


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.scratch = pathlib.Path(folder.name)
        cls.first = cls.scratch / "first"
        make_packages(cls.first, 0o022, TZ="UTC", LC_ALL="C")

    def packages(self):
        return sorted(path for path in self.first.glob("*.deb") if "dbgsym" not in path.name)

    def test_there_is_one_to_run_one_to_build_with_and_one_to_operate(self):
        self.assertEqual([path.name.split("_")[:2] for path in self.packages()],
                         [["filem", VERSION], ["libzol-dev", VERSION], ["libzol-file-management1", VERSION]])

    def test_two_builds_give_the_same(self):
        second = self.scratch / "another-folder-of-another-length" / "second"
        make_packages(second, 0o002, TZ="Asia/Kathmandu", LC_ALL="C.UTF-8", HOME="/nonexistent")
        made = sorted(self.first.glob("*.deb"))
        self.assertEqual([path.name for path in made], sorted(path.name for path in second.glob("*.deb")))
        self.assertEqual(len(made), 5)
        for package in made:
            run("cmp", package, second / package.name)

    def test_two_release_builds_give_the_same_libraries(self):
        second = self.scratch / "the-release-in-another-folder" / "source"
        shutil.copytree(self.first / "source", second, ignore=shutil.ignore_patterns("obj-*", "debian"))
        made = []
        for source in (self.first / "source", second):
            run("cmake", "--preset", "release", "-DBUILD_TESTING=OFF", cwd=source)
            run("cmake", "--build", "--preset", "release", "--target", "zol_file_management", cwd=source)
            made.append(source / "build/release/lib")
        for name in ("libzol_common.so", "libzol_file_management.so"):
            run("cmp", made[0] / name, made[1] / name)

    def test_lintian_finds_nothing(self):
        # it takes cut texts for words that are spelt wrongly
        found = run("lintian", "--allow-root", "--display-info", "--pedantic", "--suppress-tags",
                    "spelling-error-in-binary", "--fail-on", "error,warning,info,pedantic",
                    *self.first.glob("*.changes"))
        self.assertEqual(found, "")

    def test_a_system_installs_uses_upgrades_and_removes_them(self):
        shared = self.scratch / "shared"
        for name in ("first", "next"):
            (shared / name).mkdir(parents=True)
        for package in self.packages():
            shutil.copy(package, shared / "first")
            renumber(package, shared / "next" / package.name)
        shutil.copy(IN_ROOT, shared)
        suite = platform.freedesktop_os_release()["VERSION_CODENAME"]
        said = run("mmdebstrap", "--variant=apt", "--customize-hook=mkdir \"$1/packages\"",
                   f"--customize-hook=sync-in {shared} /packages",
                   f"--customize-hook=chroot \"$1\" /packages/in_root {VERSION} {NEXT_VERSION}", suite, "/dev/null",
                   umask=0o022)
        self.assertIn("\nall is as before\n", said)


if __name__ == "__main__":
    if not (PROJECT / ".git").exists():
        print("needs git")
        sys.exit(SKIPPED)
    unittest.main()
