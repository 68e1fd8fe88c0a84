"""What the tests of installed products share."""

import os
import pathlib
import subprocess

PROJECT = pathlib.Path(__file__).resolve().parents[2]


def run(*command, **options):
    """What the command prints; a failure raises with all that it said."""
    environment = {**os.environ, **options.pop("environment", {})}
    outcome = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, encoding="utf-8",
                             env=environment, check=False, **options)
    if outcome.returncode != 0:
        raise AssertionError(f"{' '.join(map(str, command))}: exit code {outcome.returncode}\n{outcome.stdout}")
    return outcome.stdout


def tree_with_logs(folder):
    """A root with two log files and a text."""
    logs = folder / "logs"
    logs.mkdir(parents=True)
    for name in ("a.log", "b.log", "c.txt"):
        (logs / name).write_text("12345", encoding="utf-8")
    return folder


def names(folder):
    return sorted(path.name for path in folder.iterdir())


def dynamic(file, tag):
    """The values that a library or program has for a tag of its dynamic section, without brackets."""
    lines = run("readelf", "--dynamic", "--wide", file, environment={"LC_ALL": "C"}).splitlines()
    return [line.partition("[")[2].rstrip("]") for line in lines if f"({tag})" in line]
