"""The shell of filem in a pseudo-terminal, on a tree of the test's own."""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile

import pexpect

PROGRAM = os.environ["FILEM_PROGRAM"]
SKIPPED = 77
PROMPT = re.compile(r"FileM[^>\r\n]*> ")
ESCAPE_SEQUENCE = re.compile(r"\x1b(\[[0-9;?]*[ -/]*[@-~]|[=>])")
CTRL_C = "\x03"
CTRL_D = "\x04"
TAB = "\t"
UP = "\x1b[A"
LEFT = "\x1b[D"


class Skip(Exception):
    pass


def equal(found, expected):
    assert found == expected, f"found {found!r}, expected {expected!r}"


def contains(text, part):
    assert part in text, f"{part!r} is not in {text!r}"


def lacks(text, part):
    assert part not in text, f"{part!r} is in {text!r}"


class Folder:
    """Gone with all that is in it at the end, whatever modes say."""

    def __init__(self):
        self.path = os.path.realpath(tempfile.mkdtemp(prefix="filem-shell-"))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for directory, _, _ in os.walk(self.path):
            os.chmod(directory, 0o700)
        shutil.rmtree(self.path)

    def __call__(self, name=""):
        return os.path.join(self.path, name)

    def directory(self, name):
        os.makedirs(self(name), exist_ok=True)
        return self(name)

    def file(self, name, content="x"):
        self.directory(os.path.dirname(name))
        with open(self(name), "w", encoding="utf-8") as file:
            file.write(content)
        return self(name)

    def names(self, name=""):
        return sorted(os.listdir(self(name)))


class Shell:
    """One session. Texts that it gives are without escape sequences and carriage returns."""

    def __init__(self, tree, home, options=(), environment=None, rows=24, columns=80, umask=None):
        surroundings = {
            "HOME": home,
            "PATH": os.environ["PATH"],
            "TERM": "xterm",
            "ZOL_LOG_LEVEL": "0",
            "LC_ALL": "C",
            **{name: os.environ[name] for name in os.environ if name.endswith("SAN_OPTIONS")},
            **(environment or {}),
        }
        self.child = pexpect.spawn(
            PROGRAM,
            ["--root", tree, *options],
            env=surroundings,
            encoding="utf-8",
            timeout=60,
            dimensions=(rows, columns),
            preexec_fn=None if umask is None else lambda: os.umask(umask),
        )
        self.child.delaybeforesend = None
        self.raw = ""
        self.prompt = ""
        self.wait_for_prompt()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.child.close(force=True)

    @staticmethod
    def plain(text):
        return ESCAPE_SEQUENCE.sub("", text).replace("\r", "")

    def wait_for(self, text):
        """What comes before it."""
        self.child.expect_exact(text)
        return self.plain(self.child.before)

    def wait_for_prompt(self):
        """What comes before it."""
        self.child.expect(PROMPT)
        self.raw = self.child.before
        self.prompt = self.child.after
        return self.plain(self.raw)

    def type(self, keys):
        self.child.send(keys)

    def run(self, line):
        """What the commands of a line print."""
        self.type(line + "\n")
        return self.wait_for_prompt().split("\n", 1)[1]

    def leave(self):
        """The exit code at the end."""
        self.child.expect(pexpect.EOF)
        self.child.wait()
        return self.child.exitstatus

    def hang_up(self):
        """The exit code of a shell that loses its terminal."""
        os.close(self.child.child_fd)
        _, status = os.waitpid(self.child.pid, 0)
        self.child.ptyproc.terminated = True
        self.child.closed = self.child.ptyproc.closed = True
        return os.waitstatus_to_exitcode(status)

    def kill(self, number=signal.SIGKILL):
        os.kill(self.child.pid, number)


class Surroundings:
    """A tree with a few files, and a home."""

    def __init__(self, tree, home):
        self.tree = tree
        self.home = home
        tree.file("logs/a.log", "aa")
        tree.file("logs/b.log", "b")
        tree.file("logs/archive/old.log", "old")
        tree.directory("tmp")

    def shell(self, **options):
        return Shell(self.tree(), self.home(), **options)


def can_run(*command):
    return subprocess.run(command, check=False, capture_output=True).returncode == 0


def main(tests):
    """Runs the function that the command line names."""
    with Folder() as tree, Folder() as home:
        try:
            tests["test_" + sys.argv[1]](Surroundings(tree, home))
        except Skip as skip:
            print("skipped:", skip)
            sys.exit(SKIPPED)
