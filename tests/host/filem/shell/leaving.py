"""Ways out of a shell, and what becomes of what is staged."""

import signal

from support import CTRL_C, CTRL_D, contains, equal, main

QUESTION = "2 changes are staged. [c]ommit, [d]rop, [s]tay? "


def staged(surroundings):
    shell = surroundings.shell()
    shell.run("mkdir tmp/new; rm logs/a.log")
    return shell


def is_committed(surroundings):
    return surroundings.tree.names("tmp") == ["new"]


def test_without_changes_nothing_is_asked(surroundings):
    for word in ("quit", "exit"):
        with surroundings.shell() as shell:
            shell.type(word + "\n")
            equal(shell.leave(), 0)


def test_without_changes_that_are_left_nothing_is_asked(surroundings):
    with surroundings.shell() as shell:
        shell.run("mkdir tmp/new; rmdir tmp/new")
        equal(shell.prompt, "FileM> ")
        shell.type("quit\n")
        equal(shell.leave(), 0)


def test_one_change_is_asked_about_too(surroundings):
    with surroundings.shell() as shell:
        shell.run("mkdir tmp/new")
        shell.type("quit\n")
        shell.wait_for("1 change is staged. [c]ommit, [d]rop, [s]tay? ")


def test_commit_prints_the_receipt_and_leaves(surroundings):
    with staged(surroundings) as shell:
        shell.type("quit\n")
        shell.wait_for(QUESTION)
        shell.type("c\n")
        shell.wait_for("2 done")
        equal(shell.leave(), 0)
    assert is_committed(surroundings)


def test_drop_leaves(surroundings):
    with staged(surroundings) as shell:
        shell.type("exit\n")
        shell.wait_for(QUESTION)
        shell.type("d\n")
        equal(shell.leave(), 0)
    assert not is_committed(surroundings)


def stays(surroundings, answer):
    with staged(surroundings) as shell:
        shell.type("quit\n")
        shell.wait_for(QUESTION)
        shell.type(answer)
        shell.wait_for_prompt()
        equal(shell.prompt, "FileM (+1 dir -1 file)> ")
        contains(shell.run("commit"), "2 done")


def test_stay_stays(surroundings):
    stays(surroundings, "s\n")


def test_no_answer_stays(surroundings):
    stays(surroundings, "\n")


def test_ctrl_d_at_the_question_stays(surroundings):
    stays(surroundings, CTRL_D)


def test_ctrl_c_at_the_question_stays(surroundings):
    stays(surroundings, CTRL_C)


def test_ctrl_d_asks_as_quit_does(surroundings):
    with staged(surroundings) as shell:
        shell.type(CTRL_D)
        shell.wait_for(QUESTION)
        shell.type("drop\n")
        equal(shell.leave(), 0)


def test_a_quit_that_is_not_meant_is_forgotten(surroundings):
    with staged(surroundings) as shell:
        shell.type("quit\n")
        shell.wait_for(QUESTION)
        shell.type("s\n")
        shell.wait_for_prompt()
        equal(shell.run("pwd"), "ManagedElement=1,SystemFunctions=1,FileM=1\n")


def test_a_lost_terminal_drops_changes_and_fails(surroundings):
    with staged(surroundings) as shell:
        equal(shell.hang_up(), 1)
    assert not is_committed(surroundings)


def test_a_terminal_lost_at_the_question_drops_changes_and_fails(surroundings):
    with staged(surroundings) as shell:
        shell.type("quit\n")
        shell.wait_for(QUESTION)
        equal(shell.hang_up(), 1)
    assert not is_committed(surroundings)


def test_a_lost_terminal_without_changes_is_no_failure(surroundings):
    with surroundings.shell() as shell:
        equal(shell.hang_up(), 0)


def test_sigterm_drops_changes_and_fails(surroundings):
    with staged(surroundings) as shell:
        shell.kill(signal.SIGTERM)
        shell.wait_for("filem: no commit: what is staged is dropped")
        equal(shell.leave(), 1)
    assert not is_committed(surroundings)


if __name__ == "__main__":
    main(globals())
