#!/usr/bin/env python3
"""Plays the transcripts of a document and compares what comes out with what stands there.

A transcript is a fenced block marked `console`. The blocks of a document are played in order and share all: one empty
folder that is gone afterwards, one bash in it, with filem in PATH. So the first block sets the scene. In a block

    $ COMMAND           is run by bash; lines that begin with "> " directly below go on with it
    FileM> COMMAND      is typed in the session of filem that the last "$ filem ..." opened, which stays open over
                        blocks and over commands for bash; whatever the prompt says must be what it says then
    ... Go on? [y/N] y  what stands behind the question is typed as its answer

and the lines below are what is printed. "$ filem ..." directly above the line of a prompt opens a session, at a terminal
as wide as COLUMNS=N in front of it says.
A command for bash whose output shows a question and its answer is run at a terminal too.

A fenced block marked `c` or `cpp` whose first line is a comment with a file name, as in "/* main.c */", is that file from
there on; "/* host.h, continued */" is more of it.

Times, durations, the names of users and of temporary files don't count. With --update the document gets what came
out: write the commands alone, and for a question the answer as "? y".
"""

import argparse
import dataclasses
import difflib
import os
import pathlib
import re
import secrets
import shlex
import subprocess
import sys
import tempfile

import pexpect

PATIENCE = 60  # seconds
HOME = "/home/operator"  # what the folder is called in a document

FENCE_BEGIN = re.compile(r"^```(?:console|c|cpp)\s*$")
TRANSCRIPT_BEGIN = re.compile(r"^```console\s*$")
SOURCE_NAME = re.compile(r"^/\* ([\w.]+)(, continued)? \*/$")
FENCE_END = re.compile(r"^```\s*$")
PROMPT = re.compile(r"^(FileM(?::\S.*?)?(?: \([^)]*\))?> )(.*)$")
QUESTION = re.compile(r"^(.*\? (?:\[\w/\w\] )?)(\w*)$")

NORMAL_FORMS = [
    (re.compile(r"\d{4}-\d\d-\d\d([T ])\d\d:\d\d(:\d\d)?(\.\d+)?"), r"2026-01-01\g<1>00:00\g<2>"),
    (re.compile(r"(?<=00:00):\d\d"), ":00"),
    (re.compile(r"\b\d+(\.\d+)? (?=m?s\b)"), "0.00 "),
    (re.compile(r'("seconds": ?)[\d.e-]+'), r"\g<1>0"),
    (re.compile(r'("user": ?)"[^"]*"'), r'\g<1>"operator"'),
    (re.compile(r'("uid": ?)\d+'), r"\g<1>1000"),
    (re.compile(r"^([-bcdlps][-rwxsStT]{9}[.+]? +\d+) \S+ +\S+ +"), r"\g<1> operator operator "),
    (re.compile(r"/tmp/[\w.]+"), "/tmp/temporary"),
]


def normal(line):
    for pattern, form in NORMAL_FORMS:
        line = pattern.sub(form, line)
    return line


class Unplayable(Exception):
    pass


@dataclasses.dataclass
class Step:
    prompt: str
    command: str
    head: list  # the lines that it stands in
    expected: list = dataclasses.field(default_factory=list)
    opens_session: bool = False

    @property
    def is_typed(self):
        return self.prompt != "$ "

    def answers(self):
        return [found[2] for found in map(QUESTION.match, self.expected) if found and found[2]]


@dataclasses.dataclass
class Block:
    begin: int  # the first line between the fences
    lines: list

    def steps(self):
        steps = []
        for number, line in enumerate(self.lines):
            prompt = PROMPT.match(line)
            if line.startswith("$ "):
                steps.append(Step("$ ", line[2:], [line]))
            elif prompt:
                if steps and not steps[-1].is_typed and not steps[-1].expected and \
                        re.match(r"(COLUMNS=\d+ )?filem", steps[-1].command):
                    steps[-1].opens_session = True
                steps.append(Step(prompt[1], prompt[2], [line]))
            elif not steps:
                raise Unplayable(f"line {self.begin + number + 1}: there is no command above it")
            elif line.startswith("> ") and not steps[-1].is_typed and not steps[-1].expected:
                steps[-1].command += "\n" + line[2:]
                steps[-1].head.append(line)
            else:
                steps[-1].expected.append(line)
        return steps


@dataclasses.dataclass
class Source:
    name: str
    continues: bool
    lines: list

    def write_into(self, folder):
        text = "".join(line + "\n" for line in self.lines)
        with open(folder / self.name, "a" if self.continues else "w", encoding="utf-8") as file:
            file.write(text)


def blocks_of(lines):
    """Transcripts and files, in the order of the document."""
    blocks = []
    begin = None
    for number, line in enumerate(lines):
        if begin is None and FENCE_BEGIN.match(line):
            begin = number + 1
        elif begin is not None and FENCE_END.match(line):
            name = SOURCE_NAME.match(lines[begin])
            if TRANSCRIPT_BEGIN.match(lines[begin - 1]):
                blocks.append(Block(begin, lines[begin:number]))
            elif name:
                blocks.append(Source(name[1], bool(name[2]), lines[begin:number]))
            begin = None
    if begin is not None:
        raise Unplayable(f"line {begin}: the block has no end")
    return blocks


def shown(output):
    """The lines that a terminal shows after this output; the last one is where the cursor is."""
    lines = [""]
    column = 0
    for part in re.findall(r"\x1b\[[\d;?]*[A-Za-z]|\x1b.|.|\n", output):
        line = lines[-1]
        if part == "\n":
            lines.append("")
            column = 0
        elif part == "\r":
            column = 0
        elif part == "\b":
            column = max(column - 1, 0)
        elif part.startswith("\x1b["):
            if part.endswith("K"):
                lines[-1] = line[:column]
        elif part >= " ":
            lines[-1] = line[:column].ljust(column) + part + line[column + 1:]
            column += 1
    return lines


class Terminal:
    """A program at a terminal of its own."""

    def __init__(self, command, environment, folder):
        width = re.search(r"\bCOLUMNS=(\d+) ", command)
        self._child = pexpect.spawn("/bin/bash", ["-c", command], env=environment, cwd=folder, encoding="utf-8",
                                    dimensions=(1000, int(width[1]) if width else 200), timeout=PATIENCE)
        self._child.delaybeforesend = None
        self.is_over = False

    def read(self):
        """The lines up to the next prompt or question, which is the last of them, or up to the end."""
        output = ""
        patience = PATIENCE
        while True:
            try:
                output += self._child.read_nonblocking(65536, patience)
            except pexpect.EOF:
                self.is_over = True
                self._child.close()
                lines = shown(output)
                return lines[:-1] if lines[-1] == "" else lines
            except pexpect.TIMEOUT:
                if patience < PATIENCE:
                    return lines
                raise Unplayable("nothing comes any more after:\n" + "\n".join(shown(output)))
            lines = shown(output)
            prompt = PROMPT.match(lines[-1])
            if prompt and not prompt[2]:
                # before, what is typed would be shown twice
                self._child.waitnoecho()
                return lines
            # what looks like a question may be the beginning of a longer line
            question = QUESTION.match(lines[-1])
            patience = 0.3 if question and not question[2] else PATIENCE

    def type(self, line):
        self._child.send(line + "\r")

    def close(self):
        self._child.close(force=True)


def talk(terminal, lines, answers):
    """Gives answers as long as the program asks questions. The last line is a prompt, if it isn't over."""
    answers = list(answers)
    while not terminal.is_over and not PROMPT.match(lines[-1]):
        answer = answers.pop(0) if answers else ""
        terminal.type(answer)
        more = terminal.read()
        # the first line repeats the answer
        lines[-1] += answer
        lines += more[1:]
    return lines


class Bash:
    """One bash that runs the commands of a document. They have no terminal and find nothing to read."""

    def __init__(self, environment, folder):
        self._bash = subprocess.Popen(["/bin/bash", "--norc", "--noprofile"], env=environment, cwd=folder,
                                      stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                      encoding="utf-8", errors="backslashreplace")
        # a session is opened by another bash, which knows the exported variables
        self.run("set -a")

    def run(self, command):
        end = secrets.token_hex(16)
        self._bash.stdin.write(f"(exit $replayed); eval {shlex.quote(command)} </dev/null; replayed=$?; echo {end}\n")
        self._bash.stdin.flush()
        output = ""
        while not output.endswith(end + "\n"):
            line = self._bash.stdout.readline()
            if not line:
                raise Unplayable("bash is gone after: " + command)
            output += line
        output = output[:-len(end) - 1]
        return output.removesuffix("\n").split("\n") if output else []

    def surroundings(self):
        """A command that gives another bash the folder and the variables of this one."""
        return "\n".join(self.run("declare -px; printf 'cd %q\\n' \"$PWD\"")) + "\n"

    def close(self):
        self._bash.stdin.close()
        self._bash.wait()


class Player:
    def __init__(self, programs, variables, folder, state):
        self._folder = str(folder)
        self._environment = {
            "HOME": self._folder,
            "LC_ALL": "C.UTF-8",
            "NO_COLOR": "1",
            "PAGER": "cat",
            "PATH": f"{programs}:{os.environ['PATH']}",
            "TERM": "dumb",
            "TZ": "UTC",
            "XDG_STATE_HOME": str(state),
            **variables,
        }
        for name, value in os.environ.items():
            if name.endswith("SAN_OPTIONS"):
                self._environment[name] = value
        self._bash = Bash(self._environment, self._folder)
        self._session = None
        self._prompt = ""

    def close(self):
        if self._session:
            self._session.close()
        self._bash.close()

    def play(self, step):
        """The lines that the step should have in the document."""
        if step.is_typed:
            lines = self._play_typed(step)
        elif step.opens_session:
            if self._session:
                raise Unplayable("there is a session already: " + step.command)
            lines = step.head + self._take(self._at_terminal(step), step)
        elif step.answers():
            terminal = self._at_terminal(step)
            lines = step.head + talk(terminal, terminal.read(), step.answers())
            if not terminal.is_over:
                raise Unplayable("it opens a session: " + step.command)
        else:
            lines = step.head + self._bash.run(step.command)
        return [line.replace(self._folder, HOME) for line in lines]

    def _at_terminal(self, step):
        command = self._bash.surroundings() + step.command
        return Terminal(command, self._environment, self._folder)

    def _play_typed(self, step):
        if not self._session:
            raise Unplayable("there is no session: " + step.prompt + step.command)
        head = self._prompt + step.command
        self._session.type(step.command)
        return [head] + self._take(self._session, step, echo=1)

    def _take(self, session, step, echo=0):
        lines = session.read()
        lines = talk(session, lines[echo:], step.answers())
        if session.is_over:
            self._session = None
            if step.opens_session:
                raise Unplayable("no session: " + step.command + "\n" + "\n".join(lines))
            return lines
        self._session = session
        self._prompt = lines[-1]
        return lines[:-1]


def replayed(lines, programs, variables):
    """For each transcript its lines in the document, and those that it should have."""
    with tempfile.TemporaryDirectory() as temporary, tempfile.TemporaryDirectory() as state:
        folder = pathlib.Path(temporary).resolve()
        player = Player(programs, variables, folder, state)
        try:
            for block in blocks_of(lines):
                if isinstance(block, Source):
                    block.write_into(folder)
                    continue
                yield block, [line for step in block.steps() for line in player.play(step)]
        finally:
            player.close()


def merged(old, new):
    """The new lines, but old ones where nothing that counts has changed."""
    result = []
    matcher = difflib.SequenceMatcher(a=[normal(line) for line in old], b=[normal(line) for line in new],
                                      autojunk=False)
    for kind, old_begin, old_end, new_begin, new_end in matcher.get_opcodes():
        result += old[old_begin:old_end] if kind == "equal" else new[new_begin:new_end]
    return result


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bin", required=True, type=pathlib.Path, help="where the built filem is")
    parser.add_argument("--update", action="store_true", help="rewrite the transcripts")
    parser.add_argument("--variable", action="append", default=[], metavar="NAME=VALUE",
                        help="a variable that the commands find set")
    parser.add_argument("document", type=pathlib.Path)
    arguments = parser.parse_args()

    lines = arguments.document.read_text(encoding="utf-8").split("\n")
    result = []
    taken = 0
    differs = False
    try:
        for block, actual in replayed(lines, arguments.bin.resolve(),
                                      dict(variable.split("=", 1) for variable in arguments.variable)):
            result += lines[taken:block.begin] + merged(block.lines, actual)
            taken = block.begin + len(block.lines)
            difference = list(difflib.unified_diff(
                [normal(line) for line in block.lines], [normal(line) for line in actual],
                f"{arguments.document}:{block.begin + 1}", "replayed", lineterm=""))
            differs = differs or bool(difference)
            if not arguments.update and difference:
                print("\n".join(difference))
    except Unplayable as failure:
        print(f"{arguments.document}: {failure}", file=sys.stderr)
        return 2
    if not arguments.update:
        return 1 if differs else 0
    result += lines[taken:]
    if result != lines:
        arguments.document.write_text("\n".join(result), encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
