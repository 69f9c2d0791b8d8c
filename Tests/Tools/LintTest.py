#!/usr/bin/env python3
"""Tools/lint on a made-up tree with a history, in which each test makes what it wants to be found."""
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]

CMAKE = """cmake_minimum_required(VERSION 3.25)
project(Sample LANGUAGES CXX)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
file(GLOB_RECURSE sources CONFIGURE_DEPENDS Sources/*.cpp)
add_library(sample STATIC ${sources})
target_include_directories(sample PRIVATE Sources)
"""
PRESETS = """{ "version": 6, "configurePresets": [ { "name": "tidy", "generator": "Ninja",
  "binaryDir": "${sourceDir}/build/tidy", "cacheVariables": { "CMAKE_CXX_COMPILER": "clang++" } } ] }
"""
RULES = """Checks: '-*,modernize-use-nullptr'
HeaderFilterRegex: '/Sources/'
"""
CLEAN = "int* nothing()\n{\n    return nullptr;\n}\n"
FINDING = "int* nothing()\n{\n    return 0;\n}\n"
HEADER_FINDING = "#pragma once\n\ninline int* none()\n{\n    return 0;\n}\n"


class Lint(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        directory = tempfile.TemporaryDirectory()
        cls.addClassCleanup(directory.cleanup)
        cls.place = pathlib.Path(directory.name).resolve()
        for name in ("Tools/lint", "Tools/tidy/OwnCode.cpp", ".clang-format"):
            cls.write(name, (ROOT / name).read_text())
        (cls.place / "Tools/lint").chmod(0o755)
        cls.write("CMakeLists.txt", CMAKE)
        cls.write("CMakePresets.json", PRESETS)
        cls.write(".clang-tidy", RULES)
        cls.write(".gitignore", "/build/\n")
        cls.write("Sources/A/Old.cpp", FINDING)
        cls.write("Sources/A/Clean.cpp", CLEAN)
        cls.write("Sources/A/Shared.h", "#pragma once\n")
        cls.write("Sources/A/Shared.cpp", '#include "Shared.h"\n')
        cls.write("Sources/A/User.cpp", '#include "A/Shared.h"\n')
        cls.git("init", "-q", "-b", "main")
        cls.commit("first")
        cls.write("README.md", "Changed.\n")
        cls.commit("second")
        cls.git("update-ref", "refs/remotes/origin/main", "HEAD")
        cls.git("tag", "start")

    def setUp(self):
        self.git("reset", "-q", "--hard", "start")
        self.git("clean", "-q", "-f", "-d")

    @classmethod
    def write(cls, name, text):
        path = cls.place / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    @classmethod
    def git(cls, *arguments):
        subprocess.run(["git", "-c", "user.name=A", "-c", "user.email=a@example.com", *arguments],
                       cwd=cls.place, check=True, stdout=subprocess.DEVNULL)

    @classmethod
    def commit(cls, subject):
        cls.git("add", "-A")
        cls.git("commit", "-q", "-m", subject)

    def lint(self, *arguments):
        done = subprocess.run([self.place / "Tools" / "lint", *arguments], stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True)
        self.output = done.stdout
        return done.returncode

    def test_a_tree_without_changes_has_no_finding(self):
        self.assertEqual(self.lint(), 0)
        self.assertIn("no finding", self.output)

    def test_a_badly_formatted_file_is_named_even_when_it_has_not_changed(self):
        self.write("Sources/A/Clean.cpp", "int* nothing( ) { return nullptr ; }\n")
        self.commit("badly formatted")
        self.git("update-ref", "refs/remotes/origin/main", "HEAD")
        self.write("README.md", "Changed again.\n")
        self.commit("something else")
        self.addCleanup(self.git, "update-ref", "refs/remotes/origin/main", "start")
        self.assertEqual(self.lint(), 1)
        self.assertIn("Sources/A/Clean.cpp: isn't as clang-format has it", self.output)

    def test_a_finding_in_uncommitted_work_is_shown(self):
        self.write("Sources/A/Clean.cpp", FINDING)
        self.assertEqual(self.lint(), 1)
        self.assertIn("Sources/A/Clean.cpp:3:12: warning: use nullptr", self.output)
        self.assertNotIn("Old.cpp", self.output)

    def test_a_finding_in_a_new_file_is_shown(self):
        self.write("Sources/B/New.cpp", FINDING)
        self.assertEqual(self.lint(), 1)
        self.assertIn("Sources/B/New.cpp:3:12: warning: use nullptr", self.output)

    def test_all_commits_since_main_are_checked(self):
        self.write("Sources/A/Clean.cpp", FINDING)
        self.commit("third")
        self.write("README.md", "Changed again.\n")
        self.commit("fourth")
        self.assertEqual(self.lint(), 1)
        self.assertIn("Sources/A/Clean.cpp:3:12", self.output)

    def test_on_main_the_last_commit_is_checked(self):
        self.write("Sources/A/Clean.cpp", FINDING)
        self.commit("third")
        self.git("update-ref", "refs/remotes/origin/main", "HEAD")
        self.addCleanup(self.git, "update-ref", "refs/remotes/origin/main", "start")
        self.assertEqual(self.lint(), 1)
        self.assertIn("Sources/A/Clean.cpp:3:12", self.output)

    def test_a_changed_header_is_checked_through_the_sources_that_include_it_and_shown_once(self):
        self.write("Sources/A/Shared.h", HEADER_FINDING)
        self.assertEqual(self.lint(), 1)
        self.assertEqual(self.output.count("Shared.h:5:12: warning: use nullptr"), 1)
        self.assertIn("2 source files", self.output)
        self.assertIn("lint: 1 findings", self.output)

    def test_all_finds_what_has_not_changed(self):
        self.assertEqual(self.lint("--all"), 1)
        self.assertIn("Sources/A/Old.cpp:3:12", self.output)

    def test_a_named_file_is_checked_alone(self):
        self.write("Sources/A/Clean.cpp", FINDING)
        self.assertEqual(self.lint(str(self.place / "Sources/A/Shared.cpp")), 0)
        self.assertIn("1 source files", self.output)

    def test_what_passed_is_checked_again_only_when_something_has_changed(self):
        user = str(self.place / "Sources/A/User.cpp")
        self.write("Sources/A/User.cpp", '#include "A/Shared.h"\n\nint* other();\n')
        self.assertEqual(self.lint(user), 0)
        self.assertEqual(self.lint(user), 0)
        self.assertIn("1 of them unchanged", self.output)
        self.write("Sources/A/Shared.h", HEADER_FINDING)
        for _ in range(2):  # What failed is never taken for passed.
            self.assertEqual(self.lint(user), 1)
            self.assertIn("Shared.h:5:12: warning: use nullptr", self.output)

    def test_a_file_that_does_not_compile_fails(self):
        self.write("Sources/A/Clean.cpp", "int* nothing() { return missing; }\n")
        self.assertEqual(self.lint(), 1)
        self.assertIn("use of undeclared identifier 'missing'", self.output)

    def test_errors_of_syntax_in_scripts_are_found(self):
        self.write("Tools/shell", "#!/bin/bash\nif true; then\n")
        self.write("Tools/careless", "#!/bin/bash\ncd /nowhere\nrm -r *\n")
        self.write("Tools/snake.py", "def f(:\n")
        self.assertEqual(self.lint(), 1)
        self.assertIn("Tools/shell: line", self.output)
        self.assertIn("Tools/careless:2:1: warning: Use 'cd ... || exit'", self.output)
        self.assertIn("Tools/snake.py:1:", self.output)

    def test_a_tree_without_history_is_checked_whole(self):
        git = self.place / ".git"
        git.rename(self.place / "history")
        self.addCleanup((self.place / "history").rename, git)
        self.assertEqual(self.lint(), 1)
        self.assertIn("Sources/A/Old.cpp:3:12", self.output)

    def test_without_the_tools_it_says_so(self):
        tools = self.place / "build" / "bin"
        tools.mkdir(parents=True, exist_ok=True)
        for name in ("env", "python3", "git"):
            link = tools / name
            link.unlink(missing_ok=True)
            link.symlink_to(shutil.which(name))
        done = subprocess.run([self.place / "Tools" / "lint"], env={"PATH": str(tools)}, capture_output=True, text=True)
        self.assertEqual(done.returncode, 2)
        self.assertIn("clang-format isn't installed; Tools/setup installs it", done.stderr)


unittest.main()
