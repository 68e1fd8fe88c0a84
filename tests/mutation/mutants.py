#!/usr/bin/python3
"""Changes the component and its companion in one place at a time and sees whether a test fails.

All mutants are in one build, each behind a switch that an environment variable throws. A first run of every test
notes which places it reaches, so that a mutant meets only tests that can see it; the first failure kills it. Fails
if too few are killed or if one survives that judged.txt doesn't name."""
import argparse
import fcntl
import os
import random
import re
import shutil
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from points import find_points
from sandbox import World
from schemata import render

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
SKIPPED = 77
PROGRAMS = (
    "names_tests", "changes_tests", "reads_tests", "front_tests", "interface_binders_tests", "zol_common_tests",
    "races_tests", "boundary_tests", "plain_tests", "bench_tests",
)
FIRST_TESTS = 10
NUMBERS_OF_A_FILE = 50  # or a multiple
RECORDS = 500  # descriptors from there on, which no test gets for its own files


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--database", type=Path, default=ROOT / "build/debug/compile_commands.json",
                        help="how the sources are compiled")
    parser.add_argument("--scratch", type=Path, default=ROOT / "build/mutants",
                        help="where the mutants are built; anyone must be able to read there")
    parser.add_argument("--sample", type=int, default=500, help="how many mutants to take")
    parser.add_argument("--all", action="store_true", help="take all mutants")
    parser.add_argument("--seed", type=int, default=1, help="which sample it is")
    parser.add_argument("--only", default="", help="take the mutants whose description has this in it")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="how much to do at a time")
    parser.add_argument("--least", type=float, default=95, help="how many percent must be killed")
    return parser.parse_args()


def say(text):
    print(f"{time.strftime('%H:%M:%S')} {text}", flush=True)


def choose(mutants, arguments):
    """Numbers of all mutants, or of the same share of every file's, by the seed."""
    if arguments.only:
        return [number for number, point in mutants.items() if arguments.only in point.key]
    if arguments.all or arguments.sample >= len(mutants):
        return list(mutants)
    by_file = {}
    for number, point in mutants.items():
        by_file.setdefault(point.file, []).append(number)
    chosen = []
    for file, numbers in by_file.items():
        count = max(1, round(len(numbers) * arguments.sample / len(mutants)))
        chosen += random.Random(f"{arguments.seed} {file}").sample(numbers, count)
    return chosen


def numbered(sources):
    """The points by number. A change of a file renumbers few others, which would have to be built anew."""
    mutants = {}
    first = 1
    for _, source in sorted(sources.items()):
        points = sorted(source.points.values(), key=lambda point: (point.start, point.end, point.mutated))
        mutants.update(enumerate(points, first))
        first += (len(points) + NUMBERS_OF_A_FILE - 1) // NUMBERS_OF_A_FILE * NUMBERS_OF_A_FILE
    return mutants


class Build:
    """A copy of the project with mutants in its sources."""

    def __init__(self, scratch, jobs):
        self.source = scratch / "source"
        self.folder = scratch / "build"
        self.jobs = jobs
        self.not_compiled = []

    def write(self, path, content):
        # an unchanged file stays as old as it is
        if not path.exists() or path.read_bytes() != content:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)

    def copy_project(self, sources):
        for origin in (each for each in ROOT.iterdir() if each.name != "build" and not each.name.startswith(".")):
            for path in [origin] if origin.is_file() else origin.rglob("*"):
                relative = path.relative_to(ROOT)
                if path.is_file() and "__pycache__" not in path.parts and str(relative) not in sources:
                    self.write(self.source / relative, path.read_bytes())
        # most of the time would go into the headers of the test framework
        self.write(self.source / "tests/CMakeLists.txt", (ROOT / "tests/CMakeLists.txt").read_bytes() + b"".join(
            f"target_precompile_headers({target} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)\n".encode()
            for target in PROGRAMS))

    def write_sources(self, sources, mutants):
        for name, source in sources.items():
            own = {number: point for number, point in mutants.items() if point.file == name}
            unlocked = {} if not own else {
                extent: text for extent, text in source.unlocked.items()
                if any(self.is_value_of(source.text, extent, point) for point in own.values())}
            self.write(self.source / name, render(source.text, own, unlocked).encode("latin-1"))

    @staticmethod
    def is_value_of(text, constexpr, point):
        return constexpr[1] < point.start and text.find(";", constexpr[1]) >= point.end

    def configure(self):
        shown = subprocess.run(
            ["cmake", "-S", self.source, "-B", self.folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
             "-DZOL_SANITIZERS=leak", "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g0", "-DCMAKE_C_FLAGS_DEBUG=-O0 -g0",
             f"-DCMAKE_CXX_FLAGS=-w -include {HERE / 'Mutant.h'}"],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        if shown.returncode != 0:
            raise SystemExit(shown.stdout)

    def compile(self, sources, mutants):
        """Builds, and leaves out what the compiler refuses."""
        while True:
            self.write_sources(sources, mutants)
            shown = subprocess.run(
                ["cmake", "--build", self.folder, f"-j{self.jobs}", "--target", *PROGRAMS, "--", "-k", "0"],
                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
            if shown.returncode == 0:
                return
            refused = self.refused(shown.stdout, mutants)
            if not refused:
                raise SystemExit(shown.stdout[-20000:])
            for number in refused:
                self.not_compiled.append(mutants.pop(number))
            say(f"not compiled: {len(self.not_compiled)} mutants")

    def refused(self, output, mutants):
        numbers = set()
        for name, line in re.findall(r"^(\S+?):(\d+):\d+: error:", output, re.MULTILINE):
            path = Path(os.path.normpath(self.folder / name))
            if path.is_relative_to(self.source):
                text = path.read_text("latin-1").splitlines()[int(line) - 1]
                numbers.update(int(number) for number in re.findall(r"zolMutant\((\d+)\)", text))
        return numbers & set(mutants)


class Tests:
    """The tests of the mutated build and which mutants each of them reaches."""

    def __init__(self, build, world, jobs):
        self.world = world
        self.bin = build.folder / "bin"
        self.records = world.folder / "records"
        self.jobs = jobs
        self.seconds = {}
        self.reaching = {}
        suppressions = f"suppressions={build.source}/tests/support/lsan.supp:print_suppressions=0"
        self.environment = {"LSAN_OPTIONS": suppressions, "GTEST_BRIEF": "1"}

    def names(self):
        for program in PROGRAMS:
            listed = self.world.run([self.bin / program, "--gtest_list_tests"], 60, self.environment)
            suite = ""
            for line in listed.output.splitlines():
                name = line.split("#")[0].rstrip()
                if not line.startswith(" "):
                    suite = name
                elif name.strip():
                    yield program, suite + name.strip()

    def record(self):
        shutil.rmtree(self.records, ignore_errors=True)
        self.records.mkdir()
        tests = [test for test in self.names() if ".DISABLED_" not in test[1]]
        with ThreadPoolExecutor(self.jobs) as pool:
            failures = [failure for failure in pool.map(self.record_test, range(len(tests)), tests) if failure]
        return failures

    def record_test(self, index, test):
        record = self.records / str(index)
        begin = time.monotonic()
        with record.open("wb") as file:
            descriptor = fcntl.fcntl(file, fcntl.F_DUPFD, RECORDS)
        outcome = self.run(test[0], [test[1]], 120, {"ZOL_MUTANT_RECORD": str(descriptor)}, (descriptor,))
        os.close(descriptor)
        self.seconds[test] = time.monotonic() - begin
        if not outcome.passed:  # which may be for what is written: some count what the library asks of the system
            outcome = self.run(test[0], [test[1]], 120, {})
        if not outcome.passed:
            return f"{test[0]} {test[1]}\n{outcome.output}"
        self.reaching[test] = {int(line) for line in record.read_text().split()}
        return ""

    def run(self, program, names, seconds, environment, descriptors=()):
        command = [self.bin / program, f"--gtest_filter={':'.join(names)}", "--gtest_fail_fast"]
        return self.world.run(command, seconds, {**self.environment, **environment}, descriptors)

    def kill(self, number):
        """What kills the mutant, or nothing. Tests that reach few places know most of theirs."""
        able = [test for test, reached in self.reaching.items() if number in reached]
        able.sort(key=lambda test: (len(self.reaching[test]), self.seconds[test]))
        for batch in (able[:FIRST_TESTS], able[FIRST_TESTS:]):
            for program in PROGRAMS:
                names = [name for owner, name in batch if owner == program]
                if names:
                    seconds = 10 + 5 * sum(self.seconds[program, name] for name in names)
                    outcome = self.run(program, names, seconds, {"ZOL_MUTANT": str(number)})
                    if not outcome.passed:
                        failed = re.search(r"\[  FAILED  \] (\S+)", outcome.output)
                        return "hangs" if outcome.hung else failed.group(1) if failed else "crash or leak"
        return ""

    def is_reached(self, number):
        return any(number in reached for reached in self.reaching.values())


def read_judged():
    """Description to reason: a line for each mutant, and its reason indented below it."""
    judged = {}
    key = ""
    for line in (HERE / "judged.txt").read_text().splitlines():
        if line.startswith(" "):
            judged[key] = (judged[key] + " " + line.strip()).strip()
        elif line and not line.startswith("#"):
            key = line.strip()
            judged[key] = ""
    return judged


def main():
    arguments = parse_arguments()
    begin = time.monotonic()
    arguments.scratch.mkdir(parents=True, exist_ok=True)
    scratch = arguments.scratch.resolve()
    world = World(scratch)
    impossible = world.why_not()
    if impossible:
        print(f"skipped: {impossible}")
        return SKIPPED

    say("finding points")
    sources = find_points(ROOT, arguments.database, arguments.jobs)
    mutants = numbered(sources)
    possible = {point.key for point in mutants.values()}
    left_out = sum(source.left_out for source in sources.values())
    say(f"{len(mutants)} mutants possible, {left_out} constants of the compiler left out")

    build = Build(scratch, arguments.jobs)
    build.copy_project(sources)
    build.write_sources(sources, mutants)
    build.configure()
    build.compile(sources, mutants)
    say(f"{len(mutants)} built, {len(build.not_compiled)} not compiled")
    for point in build.not_compiled:
        print(f"    {point.key}")

    tests = Tests(build, world, arguments.jobs)
    for failure in tests.record():
        print(f"can't be used, fails without a mutant: {failure[:1000]}")
    say(f"{len(tests.reaching)} tests can be used")

    chosen = choose(mutants, arguments)
    killers = {}
    with ThreadPoolExecutor(arguments.jobs) as pool, (scratch / "report.txt").open("w", buffering=1) as report:
        for number, killer in zip(chosen, pool.map(tests.kill, chosen)):
            killers[number] = killer
            fate = killer or ("SURVIVED" if tests.is_reached(number) else "NOT REACHED")
            report.write(f"{fate}\t{mutants[number].key}\n")
    judged = read_judged()
    survivors = [mutants[number] for number, killer in killers.items() if not killer]
    unjudged = [point for point in survivors if not judged.get(point.key)]
    for point in survivors:
        verdict = "unjudged" if point in unjudged else "judged"
        print(f"survived, {verdict}: line {point.line}, {point.key}")
    for key in sorted(set(judged) - possible):
        print(f"judged, but no mutant any more: {key}")
    for number, killer in killers.items():
        if killer and mutants[number].key in judged:
            print(f"judged, but killed by {killer}: {mutants[number].key}")
    killed = len(chosen) - len(survivors)
    percent = 100 * killed / len(chosen) if chosen else 0
    say(f"{len(chosen)} mutants run, {killed} killed ({percent:.1f} %), {len(survivors)} survived, "
        f"{len(unjudged)} of them unjudged; {time.monotonic() - begin:.0f} s")
    return 0 if percent >= arguments.least and not unjudged else 1


if __name__ == "__main__":
    sys.exit(main())
