#!/usr/bin/env python3
"""Uses the bundle of all Windows tests as a user with a Windows machine does, from a folder that cannot be written to.

Usage: bundle_test.py BUNDLE.zip FOLDER-FOR-FILES [TEST...], from the tree's root, started by bundle_test.sh
"""
import getpass
import pathlib
import re
import shutil
import stat
import subprocess
import sys
import time
import unittest
import zipfile

from windows_machine import DRIVE_C, files_below, import_registry, processes, read_registry, windows_path

BUNDLE, STATE = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
FOLDER = STATE / "Prüf-Ordner 日本 mit Leerzeichen"
LONGEST_RUN = 600
PICTURES = ["page", "gestures", "gesture-editor", "keys", "profiles", "profile-name", "programs", "window-program"]

SETTINGS_KEY = r"HKEY_CURRENT_USER\Software\KORVEN"
SAVED_KEY = r"HKEY_CURRENT_USER\Software\KvnMouseTestsSaved"
SETTINGS = f'Windows Registry Editor Version 5.00\n\n[{SETTINGS_KEY}\\Theirs]\n"Own"=dword:00000007\n'
USER = DRIVE_C / "users" / getpass.getuser()
PROFILES = USER / "AppData/Roaming/KORVEN"
STARTED_BY_RUNNER = ("model_tests.exe", "control_panel.exe", "KvnMouseApl.exe", "KvnMouseAplDouble.exe")
REPORT = USER / "Desktop/KvnMouse-test-report.html"


def work_folders() -> list[pathlib.Path]:
    return [*USER.glob("Temp/kvn-bundle-*"), *USER.glob("AppData/Local/Temp/kvn-bundle-*")]


def start(*options: str) -> subprocess.Popen:
    [script] = FOLDER.glob("*/run-tests.cmd")
    return subprocess.Popen(["wine", "cmd", "/c", windows_path(script), *options], stdin=subprocess.DEVNULL,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def run_tests(*programs: str) -> int:
    options = [option for program in programs for option in ("--only", program)]
    return start(*options).wait(LONGEST_RUN)


def await_that(condition, seconds: float = 120) -> None:
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            raise AssertionError("the condition was never met")
        time.sleep(0.05)


class Bundle(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        zipfile.ZipFile(BUNDLE).extractall(FOLDER)
        for path in [FOLDER, *FOLDER.rglob("*")]:
            path.chmod(path.stat().st_mode & ~(stat.S_IWUSR | stat.S_IWGRP | stat.S_IWOTH))

    def setUp(self):
        REPORT.unlink(missing_ok=True)
        shutil.rmtree(PROFILES, ignore_errors=True)
        PROFILES.mkdir()
        (PROFILES / "own.xml").write_text("theirs")
        self.assertEqual(import_registry(SETTINGS), 0)
        self.settings = read_registry(SETTINGS_KEY)

    def expect_the_users_own(self):
        self.assertEqual(read_registry(SETTINGS_KEY), self.settings)
        self.assertEqual(files_below(PROFILES), {pathlib.Path("own.xml"): b"theirs"})
        self.assertEqual(read_registry(SAVED_KEY), {})
        self.assertEqual(processes("KvnMouseApl.exe"), {})
        self.assertEqual(list(USER.glob("AppData/Roaming/KORVEN?*")), [])
        self.assertEqual(work_folders(), [])

    def test_run_leaves_one_report_and_nothing_else(self):
        before = files_below(FOLDER)
        self.assertEqual(run_tests("service_engine_tests", "user_language_tests"), 0)
        text = REPORT.read_text(encoding="utf-8")
        self.assertRegex(text, r"<h1>[^<]*: [1-9]\d\d passed, 0 failed, 0 skipped</h1>")
        self.assertRegex(text, r"<td>Windows</td><td>[^<]*Windows")
        self.assertEqual(re.findall(r'<img alt="([^"]*)" src="data:image/png;base64,iVBOR', text), PICTURES)
        self.assertIn("<td>service_engine_tests</td>", text)
        self.assertIn("<td>The installed page opens</td><td>passed</td>", text)
        self.assertNotIn("http", text)
        self.assertEqual(files_below(FOLDER), before)
        self.expect_the_users_own()

    def test_run_that_was_cut_off_is_made_good_by_the_next_one(self):
        cut_off = start("--only", "model_tests")
        await_that(lambda: not (PROFILES / "own.xml").exists())
        time.sleep(1)  # somewhere in the middle
        # As in a power cut, every program ends.
        for program in ("bundle_runner.exe", *STARTED_BY_RUNNER):
            for process in processes(program):
                subprocess.run(["kill", "-9", str(process)], check=False)
        cut_off.wait(LONGEST_RUN)
        await_that(lambda: not any(map(processes, STARTED_BY_RUNNER)))
        cut_off_folders = work_folders()
        self.assertEqual(run_tests("service_engine_tests"), 0)
        for left in cut_off_folders:
            shutil.rmtree(left, ignore_errors=True)
        self.expect_the_users_own()

    def test_unknown_option_changes_nothing(self):
        self.assertEqual(start("--nonsense").wait(LONGEST_RUN), 2)
        self.expect_the_users_own()

    def test_every_test_program_is_in_it_or_left_out_for_a_reason(self):
        [programs] = FOLDER.glob("*/programs")
        tests = {line.split()[0] for line in (programs / "tests.txt").read_text().splitlines()}
        self.assertGreater(len(tests), 15)
        self.assertEqual({test for test in tests if not (programs / f"{test}.exe").exists()}, set())
        self.assertEqual({path.stem for path in programs.glob("*_tests.exe")}, tests)
        self.assertIn("service_end_to_end_tests: ", (programs / "left-out.txt").read_text())


unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
