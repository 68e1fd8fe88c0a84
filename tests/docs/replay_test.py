#!/usr/bin/env python3
"""Tests of replay.py. The argument is where the built filem is."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

REPLAY = pathlib.Path(__file__).with_name("replay.py")
PROGRAMS = ""


def document(*blocks):
    return "Text\n" + "".join("\n```console\n" + block + "```\n\nMore text\n" for block in blocks)


class Replay(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.file = pathlib.Path(folder.name) / "document.md"

    def run_on(self, text, *options):
        self.file.write_text(text, encoding="utf-8")
        return subprocess.run([sys.executable, REPLAY, "--bin", PROGRAMS, *options, self.file],
                              capture_output=True, encoding="utf-8", timeout=100)

    def assert_plays(self, text):
        outcome = self.run_on(text)
        self.assertEqual((outcome.returncode, outcome.stdout, outcome.stderr), (0, "", ""))

    def assert_differs(self, text, *lines):
        outcome = self.run_on(text)
        self.assertEqual((outcome.returncode, outcome.stderr), (1, ""))
        for line in lines:
            self.assertIn(line + "\n", outcome.stdout)

    def assert_unplayable(self, text, why):
        outcome = self.run_on(text)
        self.assertEqual((outcome.returncode, outcome.stdout), (2, ""))
        self.assertIn(why, outcome.stderr)

    def updated(self, text):
        outcome = self.run_on(text, "--update")
        self.assertEqual((outcome.returncode, outcome.stdout, outcome.stderr), (0, "", ""))
        return self.file.read_text(encoding="utf-8")

    def test_a_document_without_transcripts_plays(self):
        self.assert_plays("Text\n\n```\n$ echo a\nb\n```\n")

    def test_what_is_printed_must_stand_there(self):
        self.assert_plays(document("$ echo a; echo b >&2\na\nb\n"))
        self.assert_differs(document("$ echo a\nb\n"), "-b", "+a")
        self.assert_differs(document("$ echo a\n"), "+a")
        self.assert_differs(document("$ true\na\n"), "-a")

    def test_a_difference_in_any_block_counts(self):
        self.assert_differs(document("$ echo a\nb\n", "$ echo a\na\n"), "-b", "+a")

    def test_blocks_share_folder_variables_and_exit_code(self):
        self.assert_plays(document("$ mkdir new; cd new; x=1; touch file\n$ false\n",
                                   "$ echo $? $x\n1 1\n$ ls; cd ..; ls\nfile\nnew\n"))

    def test_a_command_goes_on_in_further_lines(self):
        self.assert_plays(document("$ cat <<'END'; echo '> c'\n> a $x\n> END\na $x\n> c\n"))

    def test_output_without_an_end_of_line_is_a_line(self):
        self.assert_plays(document("$ printf a\na\n$ echo b\nb\n"))

    def test_commands_have_nothing_to_read(self):
        self.assert_plays(document("$ cat\n$ echo a\na\n"))

    def test_times_durations_users_and_temporary_files_do_not_count(self):
        for printed, written in [("2026-11-21T12:35:01", "2025-01-02T03:04:05"),
                                 ("2026-11-21T12:35:01Z", "2025-01-02T03:04:05Z"),
                                 ("took 0.02 s", "took 13.10 s"),
                                 ('{"user": "root", "uid": 0}', '{"user": "anna", "uid": 17}'),
                                 ("-rw-r--r-- 1 root root 5 a", "-rw-r--r-- 1 anna staff 5 a"),
                                 ("/tmp/tmp.a1/x", "/tmp/b/x")]:
            self.assert_plays(document(f"$ echo '{printed}'\n{written}\n"))

    def test_other_numbers_count(self):
        self.assert_differs(document("$ echo 12 files\n13 files\n"), "-13 files", "+12 files")
        self.assert_differs(document("$ echo 2026\n2025\n"), "-2025", "+2026")

    def test_the_folder_has_a_name_of_its_own(self):
        self.assert_plays(document("$ pwd\n/home/operator\n$ echo ~\n/home/operator\n"))

    def test_a_session_is_typed_into_over_blocks(self):
        self.assert_plays(document("$ mkdir -p tree/a\n$ filem --root tree\nFileM> cd a\n",
                                   "FileM:a> pwd\nManagedElement=1,SystemFunctions=1,FileM=1,FileGroup=a\n"
                                   "$ ls tree\na\nFileM:a> quit\n"))

    def test_a_prompt_counts(self):
        self.assert_differs(document("$ mkdir -p tree/a\n$ filem --root tree\nFileM> cd a\nFileM> quit\n"),
                            "-FileM> quit", "+FileM:a> quit")

    def test_a_session_knows_variables_and_folder(self):
        self.assert_plays(document("$ mkdir -p tree/a; cd tree; x=a\n$ filem --root $x\nFileM> ls\nFileMConfigData=1\n"
                                   "FileM> quit\n"))

    def test_an_answer_is_typed_behind_its_question(self):
        for answer, rest in [("n", "filem: nothing is done\n$ ls tree/d\na\nb\n"), ("y", "$ ls tree/d\n")]:
            outcome = self.updated(document("$ mkdir -p tree/d; touch tree/d/a tree/d/b\n"
                                            f"$ filem --root tree rm d/a d/b\n? {answer}\n$ ls tree/d\n"))
            self.assertRegex(outcome, r"\nfilem: 2 files .* Go on\? \[y/N\] " + answer + "\n")
            self.assertIn(rest, outcome)
            self.assert_plays(outcome)

    def test_files_are_there_from_their_place_on(self):
        self.assert_plays(document("$ ls\n") + "\n```c\n/* a.c */\nint a;\n```\n" +
                          document("$ cat a.c\n/* a.c */\nint a;\n") + "\n```cpp\n/* a.c */\nint b;\n```\n" +
                          document("$ cat a.c\n/* a.c */\nint b;\n"))

    def test_a_file_can_go_on(self):
        self.assert_plays("```c\n/* a.h */\nint a;\n```\n```c\n/* a.h, continued */\n\nint b;\n```\n" +
                          document("$ cat a.h\n/* a.h */\nint a;\n/* a.h, continued */\n\nint b;\n"))

    def test_code_that_names_no_file_is_none(self):
        self.assert_plays("```c\nint a;\n```\n```c\n```\n" + document("$ ls\n"))

    def test_variables_are_set(self):
        text = document("$ echo $a $b\nx=y z\n")
        outcome = self.run_on(text, "--variable", "a=x=y", "--variable", "b=z")
        self.assertEqual((outcome.returncode, outcome.stdout, outcome.stderr), (0, "", ""))

    def test_an_update_writes_what_comes_out(self):
        self.assertEqual(self.updated(document("$ echo a\nb\n$ pwd\n")),
                         document("$ echo a\na\n$ pwd\n/home/operator\n"))

    def test_an_update_keeps_what_does_not_count(self):
        text = document("$ date +%FT%T; echo b\n2025-01-02T03:04:05\nb\n")
        self.assertEqual(self.updated(text), text)
        self.assertEqual(self.updated(text.replace("\nb\n", "\nc\n")), text)

    def test_an_update_writes_prompts(self):
        self.assertEqual(self.updated(document("$ mkdir -p tree/a\n$ filem --root tree\nFileM> cd a\nFileM> quit\n")),
                         document("$ mkdir -p tree/a\n$ filem --root tree\nFileM> cd a\nFileM:a> quit\n"))

    def test_what_can_not_be_played_is_told(self):
        self.assert_unplayable(document("a\n"), "line 4: there is no command above it")
        self.assert_unplayable("```console\n$ true\n", "line 1: the block has no end")
        self.assert_unplayable(document("FileM> ls\n"), "there is no session: FileM> ls")
        self.assert_unplayable(document("$ exit\n"), "bash is gone after: exit")
        self.assert_unplayable(document("$ filem --root none\nFileM> ls\n"), "there is no root none")

    def test_an_unplayable_document_stays_as_it_is(self):
        text = document("$ echo a\n", "FileM> ls\n")
        self.assertEqual(self.run_on(text, "--update").returncode, 2)
        self.assertEqual(self.file.read_text(encoding="utf-8"), text)


if __name__ == "__main__":
    PROGRAMS = sys.argv.pop(1)
    unittest.main()
