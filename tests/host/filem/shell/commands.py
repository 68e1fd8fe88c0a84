"""What verbs say in a shell."""

import os

from support import CTRL_C, Skip, can_run, contains, equal, lacks, main


def test_a_failing_command_is_told_and_the_shell_goes_on(surroundings):
    with surroundings.shell() as shell:
        equal(shell.run("nonsense"), "filem: there is no command nonsense, see help\n")
        equal(shell.run("ls 'logs"), "filem: a single quote has no end\n")
        equal(shell.run("pwd"), "ManagedElement=1,SystemFunctions=1,FileM=1\n")


def test_refusals_say_why(surroundings):
    surroundings.tree.file("tmp/.filemnodirectorydelete")
    root = "ManagedElement=1,SystemFunctions=1,FileM=1"
    with surroundings.shell() as shell:
        contains(shell.run("rm logs/archive"), f"filem: can't rm, on {root},FileGroup=logs,FileInformation=archive: ")
        contains(shell.run("rmdir logs"), f"filem: can't rmdir, on {root},FileGroup=logs: ")
        contains(shell.run("rmdir tmp"), f"filem: can't rmdir, on {root},FileGroup=tmp: ")
        contains(shell.run("rmtree /"), "filem: can't rmtree, ")
        contains(shell.run("ls ../.."), "filem: can't ls, on ../..: it would leave the tree\n")
        equal(shell.prompt, "FileM> ")


def test_why_tells_what_would_refuse_a_change(surroundings):
    surroundings.tree.file("tmp/.filemnodirectorydelete")
    with surroundings.shell() as shell:
        contains(shell.run("why rmdir logs"), "rmdir logs: refused: ")
        contains(shell.run("why rm logs/a.log"), "rm logs/a.log: nothing speaks against it\n")
        contains(shell.run("why rmdir tmp"), "marker: .filemnodirectorydelete is in it\n")


def test_diff_shows_what_a_commit_would_do(surroundings):
    with surroundings.shell() as shell:
        shell.run("mkdir tmp/new; rm logs/a.log")
        shown = shell.run("diff")
        contains(shown, "+ tmp/new")
        contains(shown, "- logs/a.log")
        equal(surroundings.tree.names("logs"), ["a.log", "archive", "b.log"])


def test_status_lists_what_is_staged_and_what_changed_under_it(surroundings):
    with surroundings.shell() as shell:
        shell.run("rm logs/a.log")
        lacks(shell.run("status"), "since it was staged")
        os.remove(surroundings.tree("logs/a.log"))
        contains(shell.run("status"), "logs/a.log  vanished since it was staged\n")


def test_commit_gives_a_receipt(surroundings):
    with surroundings.shell() as shell:
        shell.run("mkdir tmp/new; rm logs/a.log")
        receipt = shell.run("commit")
        contains(receipt, "done     - logs/a.log")
        contains(receipt, "done     + tmp/new")
        equal(shell.prompt, "FileM> ")
    equal(surroundings.tree.names("logs"), ["archive", "b.log"])
    equal(surroundings.tree.names("tmp"), ["new"])


class Unremovable:
    """A file that stays, by whatever this machine allows."""

    def __init__(self, tree):
        self.directory = tree.directory("kept")
        self.file = tree.file("kept/file")
        self.undo = None

    def __enter__(self):
        if can_run("chattr", "+i", self.file):
            self.undo = ("chattr", "-i", self.file)
        elif os.getuid() != 0:
            os.chmod(self.directory, 0o555)
        elif can_run("mount", "--bind", self.file, self.file):
            self.undo = ("umount", self.file)
        else:
            raise Skip("no file can be made immutable, and nothing be mounted")
        return self

    def __exit__(self, *_):
        if self.undo:
            can_run(*self.undo)


def test_receipt_tells_what_remains_and_why(surroundings):
    with Unremovable(surroundings.tree), surroundings.shell() as shell:
        shell.run("rm kept/file; rm logs/a.log")
        receipt = shell.run("commit")
        contains(receipt, "done     - logs/a.log")
        contains(receipt, "REMAINS  - kept/file  ")
        contains(receipt, "1 done, 1 remains")
    equal(surroundings.tree.names("kept"), ["file"])


def test_leaving_by_a_commit_that_leaves_something_stays(surroundings):
    with Unremovable(surroundings.tree), surroundings.shell() as shell:
        shell.run("rm kept/file")
        shell.type("quit\n")
        shell.wait_for("[s]tay? ")
        shell.type("c\n")
        contains(shell.wait_for_prompt(), "REMAINS  - kept/file  ")


def test_abort_drops_and_restage_brings_back(surroundings):
    with surroundings.shell() as shell:
        shell.run("mkdir tmp/new; rm logs/a.log")
        equal(shell.run("abort"), "")
        equal(shell.prompt, "FileM> ")
        contains(shell.run("restage"), "logs/a.log\n")
        equal(shell.prompt, "FileM (+1 dir -1 file)> ")


def test_one_goes_about_in_the_tree(surroundings):
    root = "ManagedElement=1,SystemFunctions=1,FileM=1"
    with surroundings.shell() as shell:
        shell.run("cd logs/archive")
        equal(shell.run("pwd"), f"{root},FileGroup=logs,FileGroup=archive\n")
        equal(shell.run("ls"), "old.log\n")
        shell.run("up")
        equal(shell.run("pwd"), f"{root},FileGroup=logs\n")
        shell.run("cd FileGroup=logs,FileGroup=archive")
        equal(shell.prompt, "FileM:logs/archive> ")
        shell.run("top")
        equal(shell.run("pwd"), f"{root}\n")
        contains(shell.run("cd nowhere"), "there is no such directory\n")


def test_filters_take_what_a_command_prints(surroundings):
    with surroundings.shell() as shell:
        equal(shell.run("ls logs | match '^[ab][.]'"), "a.log\nb.log\n")
        equal(shell.run("ls logs | except log"), "archive/\n")
        equal(shell.run("ls logs | match log | count"), "2\n")
        contains(shell.run("ls | sort"), "filem: there is no filter sort; ")


def test_help_explains_verbs(surroundings):
    with surroundings.shell(options=["--no-pager"]) as shell:
        contains(shell.run("?"), "draws a directory")
        contains(shell.run("help rmtree"), "--force-root")


def test_a_listing_shows_what_is_staged(surroundings):
    with surroundings.shell(environment={"NO_COLOR": "1"}) as shell:
        shell.run("mkdir logs/new; rm logs/a.log")
        equal(sorted(shell.run("ls logs").split()), ["+", "archive/", "b.log", "new/"])


def test_colours_are_off_with_no_color(surroundings):
    with surroundings.shell() as shell:
        shell.run("ls")
        contains(shell.raw, "\x1b[1;34mlogs/\x1b[0m")
    with surroundings.shell(environment={"NO_COLOR": "1"}) as shell:
        shell.run("ls")
        lacks(shell.raw, "\x1b[1;34m")
        contains(shell.raw, "logs/")


def test_what_is_longer_than_the_screen_goes_to_the_pager(surroundings):
    with surroundings.shell(environment={"PAGER": "sed s/^/paged:/"}) as shell:
        contains(shell.run("help"), "paged:  mkdir")
        lacks(shell.run("ls logs"), "paged:")
        lacks(shell.run("help | count"), "paged:")
    with surroundings.shell(environment={"PAGER": "sed s/^/paged:/"}, rows=3) as shell:
        contains(shell.run("ls logs"), "paged:a.log")
        shell.run("mkdir tmp/1 tmp/2 tmp/3")
        contains(shell.run("diff"), "paged:+ tmp/1")
        contains(shell.run("status"), "paged:mkdir tmp/1")
    with surroundings.shell(environment={"PAGER": "no-such-pager -R"}) as shell:
        contains(shell.run("help"), "  mkdir, create")


def test_a_pager_that_is_left_early_is_no_failure(surroundings):
    for i in range(3000):
        surroundings.tree.file(f"tmp/file{i}")
    with surroundings.shell(environment={"PAGER": "head -n 1"}) as shell:
        equal(shell.run("ls tmp; pwd").split("\n")[1:], ["ManagedElement=1,SystemFunctions=1,FileM=1", ""])


def test_ctrl_c_belongs_to_the_pager_while_it_runs(surroundings):
    # Blocked before it prints: a signal that comes between two steps of the pager waits, and none is lost.
    surroundings.home.file("pager.py", """
import signal, sys
signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGINT])
print(sys.stdin.read(), flush=True)
signal.sigwait([signal.SIGINT])
print("caught", flush=True)
open("/dev/tty").readline()
""")
    with surroundings.shell(environment={"PAGER": "python3 " + surroundings.home("pager.py")}, rows=3) as shell:
        shell.type("ls logs\n")
        shell.wait_for("b.log")
        shell.type(CTRL_C)
        shell.wait_for("caught")
        assert shell.has_no_prompt_within(0.5)
        shell.type("\n")
        lacks(shell.wait_for_prompt(), "interrupted")


if __name__ == "__main__":
    main(globals())
