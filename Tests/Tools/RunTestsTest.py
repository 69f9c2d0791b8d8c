#!/usr/bin/env python3
"""Tests of Tools/desktop/run-tests on a stand-in for a desktop, with a program that fails and crashes as each test needs."""
import os
import pathlib
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "Tools" / "desktop" / "run-tests"

SESSION = """#!/bin/sh
[ -e "$(dirname "$0")/no-desktop" ] && { rm "$(dirname "$0")/no-desktop"; exit 125; }
while [ "$1" != -- ]; do shift; done
shift
exec "$@"
"""

# Prints as GoogleTest does. TESTS says how each test ends, run by run: p(ass), f(ail), c(rash).
PROGRAM = """#!{python}
import fnmatch, os, pathlib, sys
tests = {tests!r}
chosen = [a.split("=", 1)[1] for a in sys.argv if a.startswith("--gtest_filter=")][0]
wanted, _, unwanted = chosen.partition("-")
def fits(name, patterns):
    return any(fnmatch.fnmatchcase(name, each) for each in patterns.split(":") if each)
status = {end}
for name, runs in tests.items():
    if not fits(name, wanted) or fits(name, unwanted):
        continue
    count = pathlib.Path(__file__).parent / name.replace("/", "_")
    nth = int(count.read_text()) if count.exists() else 0
    count.write_text(str(nth + 1))
    outcome = runs[min(nth, len(runs) - 1)]
    print("[ RUN      ]", name, flush=True)
    if outcome == "c":
        os.abort()
    if outcome == "f":
        print("why", name)
        print(f"[  FAILED  ] {{name}}, where GetParam() = (1) (3 ms)", flush=True)
        status = 1
    else:
        print(f"[       OK ] {{name}} (3 ms)", flush=True)
print("[  FAILED  ] nothing that counts")
sys.exit(status)
"""


class RunTests(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.place = pathlib.Path(directory.name)
        shutil.copy(TOOL, self.place)
        self.script("session", SESSION)

    def script(self, name, text):
        path = self.place / name
        path.write_text(text)
        path.chmod(path.stat().st_mode | stat.S_IXUSR)

    def run_tool(self, tests, end=0):
        self.script("Program", PROGRAM.format(python=sys.executable, tests=tests, end=end))
        notes = self.place / "notes"
        done = subprocess.run(
            [self.place / "run-tests", "--no-panel", "--", self.place / "Program"],
            env={**os.environ, "ORVANE_TEST_NOTES": str(notes)}, capture_output=True, text=True)
        self.output = done.stdout
        self.notes = notes.read_text() if notes.exists() else ""
        return done.returncode

    def times(self, test):
        count = self.place / test.replace("/", "_")
        return int(count.read_text()) if count.exists() else 0

    def test_each_test_that_passes_is_run_once(self):
        self.assertEqual(self.run_tool({"A.One": "p", "A.Two": "p"}), 0)
        self.assertEqual([self.times("A.One"), self.times("A.Two")], [1, 1])
        self.assertEqual(self.notes, "")

    def test_only_the_failed_one_is_tried_again_and_is_named(self):
        self.assertEqual(self.run_tool({"A.One": "p", "P/A.Two/Linux": "fp"}), 0)
        self.assertEqual([self.times("A.One"), self.times("P/A.Two/Linux")], [1, 2])
        self.assertIn("passed only at the second try: Program P/A.Two/Linux\n", self.notes)
        self.assertIn("    why P/A.Two/Linux\n", self.notes)

    def test_what_fails_twice_fails_and_is_not_tried_a_third_time(self):
        self.assertEqual(self.run_tool({"A.One": "f", "A.Two": "fp", "A.Three": "p"}), 1)
        self.assertEqual(self.times("A.One"), 2)
        self.assertIn("FAILED twice: Program A.One\n", self.notes)
        self.assertIn("passed only at the second try: Program A.Two\n", self.notes)

    def test_after_a_crash_the_others_get_their_turn(self):
        self.assertEqual(self.run_tool({"A.One": "p", "A.Two": "cp", "A.Three": "p"}), 0)
        self.assertEqual([self.times("A.One"), self.times("A.Two"), self.times("A.Three")], [1, 2, 1])
        self.assertIn("passed only at the second try: Program A.Two\n", self.notes)

    def test_a_second_crash_fails_and_the_others_still_get_their_turn(self):
        self.assertEqual(self.run_tool({"A.One": "c", "A.Two": "fp", "A.Three": "p"}), 1)
        self.assertEqual([self.times("A.One"), self.times("A.Two"), self.times("A.Three")], [2, 2, 1])
        self.assertIn("FAILED twice: Program A.One\n", self.notes)

    def test_a_crash_of_the_last_one_fails(self):
        self.assertEqual(self.run_tool({"A.One": "p", "A.Two": "c"}), 1)
        self.assertEqual([self.times("A.One"), self.times("A.Two")], [1, 2])

    def test_a_program_that_ends_badly_without_a_failed_test_fails(self):
        self.assertEqual(self.run_tool({"A.One": "p"}, end=23), 2)

    def test_a_program_without_tests_fails(self):
        self.assertEqual(self.run_tool({}), 2)

    def test_a_desktop_that_does_not_come_up_is_tried_once_more(self):
        (self.place / "no-desktop").touch()
        self.assertEqual(self.run_tool({"A.One": "p"}), 0)
        self.assertEqual(self.times("A.One"), 1)


unittest.main()
