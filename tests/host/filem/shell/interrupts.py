"""Ctrl-C while a command is at work."""

import os
import signal
import time

from support import CTRL_C, CTRL_D, TAB, contains, equal, lacks, main

# the aim is a tenth of a second; a machine that builds something else meanwhile needs more
BOUND = 1.0


def time_to_prompt(shell):
    start = time.monotonic()
    shell.type(CTRL_C)
    text = shell.wait_for_prompt()
    taken = time.monotonic() - start
    print(f"prompt after {taken:.4f} s")
    assert taken < BOUND, taken
    return text


def test_ctrl_c_ends_a_running_listing_at_once(surroundings):
    for i in range(20000):
        surroundings.tree.file(f"tmp/a-file-of-very-many-{i:06}")
    with surroundings.shell(options=["--no-pager"]) as shell:
        shell.type("ls tmp\n")
        # the rest doesn't fit into the terminal, so the listing can't be at its end
        shell.wait_for("a-file-of-very-many-")
        text = time_to_prompt(shell)
        # or given up, on a busy machine
        contains(text, "filem: interrupted")
        equal(shell.run("pwd"), "ManagedElement=1,SystemFunctions=1,FileM=1\n")


class Blocked:
    """An external command that doesn't answer before it is told to; the component waits for it in one call."""

    COMMAND = "get FileMConfigData=1 internalRoot"

    def __init__(self, surroundings):
        self.fifo = surroundings.home("fifo")
        os.mkfifo(self.fifo)
        command = surroundings.home.file(
            "bin/zolea", f'#!/bin/sh\ntrap "" INT HUP TERM\necho asked >{self.fifo}.asked\nread answer <{self.fifo}\necho {surroundings.tree()}\n'
        )
        os.chmod(command, 0o755)
        os.mkfifo(self.fifo + ".asked")
        self.environment = {"PATH": surroundings.home("bin") + ":" + os.environ["PATH"]}

    def wait(self):
        """Until it is asked."""
        with open(self.fifo + ".asked", encoding="utf-8") as asked:
            asked.read()

    def answer(self):
        with open(self.fifo, "w", encoding="utf-8") as fifo:
            fifo.write("\n")


def test_a_call_of_the_component_that_takes_long_is_given_up(surroundings):
    blocked = Blocked(surroundings)
    with surroundings.shell(environment=blocked.environment) as shell:
        shell.type(Blocked.COMMAND + "\n")
        blocked.wait()
        text = time_to_prompt(shell)
        contains(text, "filem: interrupted; the component is still at work on it\n")
        shell.type("pwd\n")
        shell.wait_for("pwd")
        blocked.answer()
        text = shell.wait_for_prompt()
        lacks(text, "internalRoot")
        contains(text, "ManagedElement=1,SystemFunctions=1,FileM=1\n")


def test_a_command_that_waits_for_one_that_was_given_up_can_be_given_up(surroundings):
    blocked = Blocked(surroundings)
    with surroundings.shell(environment=blocked.environment) as shell:
        shell.type(Blocked.COMMAND + "\n")
        blocked.wait()
        time_to_prompt(shell)
        shell.type("mkdir tmp/never\n")
        shell.wait_for("never")
        contains(time_to_prompt(shell), "the component is still at work on it\n")
        blocked.answer()
        equal(shell.run("ls tmp"), "")
        equal(shell.prompt, "FileM> ")


def test_tab_does_not_wait_for_what_was_given_up(surroundings):
    blocked = Blocked(surroundings)
    with surroundings.shell(environment=blocked.environment) as shell:
        shell.type(Blocked.COMMAND + "\n")
        blocked.wait()
        time_to_prompt(shell)
        shell.type("ls l" + TAB)
        shell.wait_for("\a")
        shell.type(CTRL_C)
        shell.wait_for_prompt()
        blocked.answer()
        shell.run("pwd")


def test_a_shell_ends_when_what_was_given_up_has_ended(surroundings):
    blocked = Blocked(surroundings)
    with surroundings.shell(environment=blocked.environment) as shell:
        shell.run("mkdir tmp/never")
        shell.type(Blocked.COMMAND + "\n")
        blocked.wait()
        time_to_prompt(shell)
        shell.kill(signal.SIGTERM)
        blocked.answer()
        equal(shell.leave(), 1)
    equal(surroundings.tree.names("tmp"), [])


class BlockedCommit:
    """A commit that isn't at its end before somebody reads the audit file: a pipe that is full."""

    def __init__(self, surroundings):
        path = surroundings.home("audit")
        os.mkfifo(path)
        self.pipe = os.open(path, os.O_RDWR | os.O_NONBLOCK)
        self.options = ["--audit", path]
        self.made = surroundings.tree("tmp/new")

    def fill(self):
        try:
            while True:
                os.write(self.pipe, b"x" * 4096)
        except BlockingIOError:
            pass

    def wait(self):
        while not os.path.exists(self.made):
            os.sched_yield()

    def go_on(self):
        os.read(self.pipe, 65536)


def test_ctrl_c_does_not_stop_a_commit(surroundings):
    blocked = BlockedCommit(surroundings)
    with surroundings.shell(options=blocked.options) as shell:
        shell.run("mkdir tmp/new")
        blocked.fill()
        shell.type("commit\n")
        blocked.wait()
        for _ in range(2):
            shell.type(CTRL_C)
            shell.wait_for("filem: a commit can't be stopped")
        blocked.go_on()
        receipt = shell.wait_for_prompt()
        contains(receipt, "1 done")
        equal(shell.prompt, "FileM> ")
        shell.type(CTRL_D)
        equal(shell.leave(), 0)


def test_sigterm_waits_for_a_commit(surroundings):
    blocked = BlockedCommit(surroundings)
    with surroundings.shell(options=blocked.options) as shell:
        shell.run("mkdir tmp/new")
        blocked.fill()
        shell.type("commit\n")
        blocked.wait()
        shell.kill(signal.SIGTERM)
        blocked.go_on()
        shell.wait_for("1 done")
        equal(shell.leave(), 0)


if __name__ == "__main__":
    main(globals())
