"""Keys, completion, history and prompt."""

import os
import stat

from support import CTRL_C, CTRL_D, LEFT, TAB, UP, contains, equal, lacks, main


def test_first_tab_completes_a_verb(surroundings):
    with surroundings.shell() as shell:
        shell.type("rest" + TAB + "\n")
        contains(shell.wait_for_prompt(), "nothing was dropped that could be staged again")


def test_first_tab_completes_to_what_candidates_have_in_common(surroundings):
    surroundings.tree.file("logs/server-1.log")
    surroundings.tree.file("logs/server-2.log")
    with surroundings.shell() as shell:
        shell.type("ls logs/s" + TAB)
        shell.wait_for("erver-")


def test_second_tab_lists(surroundings):
    with surroundings.shell() as shell:
        shell.type("ls logs/" + TAB)
        lacks(shell.wait_for("\a"), "archive")
        shell.type(TAB)
        contains(shell.wait_for_prompt(), "a.log     archive/  b.log\n")
        shell.wait_for("ls logs/")


def test_list_of_candidates_stays_on_one_screen(surroundings):
    for i in range(500):
        surroundings.tree.file(f"logs/a-file-with-a-long-name-{i:03}")
    with surroundings.shell() as shell:
        shell.type("ls logs/a-" + TAB)
        shell.wait_for("name-")
        shell.type(TAB)
        shown = shell.wait_for_prompt()
        contains(shown, "and 460 more\n")
        assert shown.count("\n") < 24, shown


def test_tab_completes_what_is_staged(surroundings):
    with surroundings.shell() as shell:
        shell.run("mkdir tmp/fresh")
        shell.type("ls tmp/f" + TAB)
        shell.wait_for("resh/")


def test_tab_quotes_names_that_need_it(surroundings):
    surroundings.tree.file("tmp/a b", "x")
    with surroundings.shell() as shell:
        shell.type("ls tmp/a" + TAB + "\n")
        equal(shell.wait_for_prompt().split("\n", 1)[1], "'a b'\n")


def test_tab_completes_in_the_middle_of_a_line(surroundings):
    with surroundings.shell() as shell:
        shell.type("ls l | count" + LEFT * len(" | count") + TAB + "\n")
        equal(shell.wait_for_prompt().split("\n", 1)[1], "3\n")


def test_names_never_reach_the_terminal_raw_in_lists(surroundings):
    surroundings.tree.file("tmp/x\x1b]0;evil\x07")
    surroundings.tree.file("tmp/y\nz")
    with surroundings.shell() as shell:
        shell.type("ls tmp/" + TAB)
        shell.wait_for("\a")
        shell.type(TAB)
        shell.wait_for_prompt()
        lacks(shell.raw, "\x1b]0;evil")
        contains(shell.plain(shell.raw), r"$'x\x1b]0;evil\x07'  $'y\nz'")


def history_file(surroundings):
    return surroundings.home(".local/state/filem/history")


def test_history_is_kept_across_sessions(surroundings):
    with surroundings.shell() as shell:
        shell.run("ls logs")
        shell.type(CTRL_D)
        shell.leave()
    with surroundings.shell() as shell:
        shell.type(UP)
        shell.wait_for("ls logs")
        shell.type("\n")
        contains(shell.wait_for_prompt(), "a.log")


def test_history_is_for_the_owner_alone_whatever_the_umask(surroundings):
    with surroundings.shell(umask=0) as shell:
        shell.run("pwd")
    equal(stat.S_IMODE(os.stat(history_file(surroundings)).st_mode), 0o600)
    for directory in (".local", ".local/state", ".local/state/filem"):
        equal(stat.S_IMODE(os.stat(surroundings.home(directory)).st_mode), 0o700)


def test_history_goes_where_xdg_state_home_says(surroundings):
    with surroundings.shell(environment={"XDG_STATE_HOME": surroundings.home("state")}) as shell:
        shell.run("pwd")
    with open(surroundings.home("state/filem/history"), encoding="utf-8") as file:
        equal(file.read(), "pwd\n")


def test_history_survives_a_kill_without_residue(surroundings):
    with surroundings.shell() as shell:
        shell.run("pwd")
        shell.run("mkdir tmp/never")
        shell.kill()
    equal(surroundings.home.names(".local/state/filem"), ["history"])
    with open(history_file(surroundings), encoding="utf-8") as file:
        equal(file.read(), "pwd\nmkdir tmp/never\n")
    equal(surroundings.tree.names("tmp"), [])


def test_history_that_cannot_be_kept_is_warned_of_once(surroundings):
    surroundings.home.file(".local")
    with surroundings.shell() as shell:
        contains(shell.run("pwd"), "filem: the history can't be kept: Not a directory\n")
        equal(shell.run("pwd"), "ManagedElement=1,SystemFunctions=1,FileM=1\n")


def test_prompt_shows_the_place_and_what_is_staged(surroundings):
    with surroundings.shell() as shell:
        equal(shell.prompt, "FileM> ")
        shell.run("cd logs")
        equal(shell.prompt, "FileM:logs> ")
        shell.run("mkdir /tmp/one")
        equal(shell.prompt, "FileM:logs (+1 dir)> ")
        shell.run("mkdir /tmp/two; rm a.log")
        equal(shell.prompt, "FileM:logs (+2 dirs -1 file)> ")
        shell.run("rm b.log; rmtree archive")
        equal(shell.prompt, "FileM:logs (+2 dirs -1 dir -2 files)> ")
        shell.run("abort")
        equal(shell.prompt, "FileM:logs> ")
        shell.run("cd archive")
        equal(shell.prompt, "FileM:logs/archive> ")


def test_prompt_escapes_names(surroundings):
    surroundings.tree.directory("odd\x1b]0;evil\x07")
    with surroundings.shell() as shell:
        shell.run(r"cd $'odd\x1b]0;evil\x07'")
        equal(shell.prompt, r"FileM:odd\x1b]0;evil\x07> ")


def test_ctrl_c_cancels_the_line(surroundings):
    with surroundings.shell() as shell:
        shell.type("mkdir tmp/never")
        shell.wait_for("never")
        shell.type(CTRL_C)
        equal(shell.wait_for_prompt(), "^C\n")
        equal(shell.prompt, "FileM> ")
        equal(shell.run("ls tmp"), "")


def test_ctrl_d_leaves(surroundings):
    with surroundings.shell() as shell:
        shell.type(CTRL_D)
        equal(shell.leave(), 0)


def test_characters_beyond_ascii_are_typed_and_shown(surroundings):
    surroundings.tree.file("tmp/größe")
    with surroundings.shell() as shell:
        equal(shell.run("ls tmp/größe"), "'größe'\n")
        shell.type("ls tmp/gr" + TAB)
        shell.wait_for("öße")


if __name__ == "__main__":
    main(globals())
