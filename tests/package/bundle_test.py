#!/usr/bin/env python3
"""Uses the bundle of all Windows tests as somebody with a Windows machine does, from a folder that cannot be written to.

Usage: bundle_test.py BUNDLE.zip FOLDER-FOR-FILES [TEST...], from the tree's root, started by bundle_test.sh
"""
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


def only(path: str) -> pathlib.Path:
    [found] = DRIVE_C.glob(path)
    return found


def data_folder() -> pathlib.Path:
    return only("users/*/AppData/Roaming") / "KORVEN"


def report() -> pathlib.Path:
    return only("users/*/Desktop") / "KvnMouse-test-report.html"


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
            raise AssertionError("it has not come true")
        time.sleep(0.05)


class Bundle(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        zipfile.ZipFile(BUNDLE).extractall(FOLDER)
        for path in [FOLDER, *FOLDER.rglob("*")]:
            path.chmod(path.stat().st_mode & ~(stat.S_IWUSR | stat.S_IWGRP | stat.S_IWOTH))

    def setUp(self):
        report().unlink(missing_ok=True)
        shutil.rmtree(data_folder(), ignore_errors=True)
        data_folder().mkdir()
        (data_folder() / "own.xml").write_text("theirs")
        self.assertEqual(import_registry(SETTINGS), 0)
        self.settings = read_registry(SETTINGS_KEY)

    def expect_the_users_own(self):
        self.assertEqual(read_registry(SETTINGS_KEY), self.settings)
        self.assertEqual(files_below(data_folder()), {pathlib.Path("own.xml"): b"theirs"})
        self.assertEqual(read_registry(SAVED_KEY), {})
        self.assertEqual(processes("KvnMouseApl.exe"), {})
        self.assertEqual(list(DRIVE_C.glob("users/*/AppData/Roaming/KORVEN?*")), [])
        self.assertEqual(list(DRIVE_C.glob("users/*/AppData/Local/Temp/kvn-bundle-*")), [])

    def test_run_leaves_one_report_and_nothing_else(self):
        before = files_below(FOLDER)
        self.assertEqual(run_tests("service_engine_tests", "user_language_tests"), 0)
        text = report().read_text(encoding="utf-8")
        self.assertRegex(text, r"<h1>[^<]*: [1-9]\d\d passed, 0 failed, 0 skipped</h1>")
        self.assertRegex(text, r"<td>Windows</td><td>[^<]*Windows")
        self.assertEqual(re.findall(r'<img alt="([^"]*)" src="data:image/png;base64,iVBOR', text), PICTURES)
        self.assertIn("<td>service_engine_tests</td>", text)
        self.assertIn("<td>The page opens from where it is installed</td><td>passed</td>", text)
        self.assertNotIn("http", text)
        self.assertEqual(files_below(FOLDER), before)
        self.expect_the_users_own()

    def test_run_that_was_cut_off_is_made_good_by_the_next_one(self):
        cut_off = start("--only", "model_tests")
        await_that(lambda: not (data_folder() / "own.xml").exists())
        time.sleep(1)  # somewhere in the middle of it
        for process in processes("bundle_runner.exe"):
            subprocess.run(["kill", "-9", str(process)], check=True)
        cut_off.wait(LONGEST_RUN)
        await_that(lambda: not processes("control_panel.exe") and not processes("bundle_runner.exe"))
        self.assertEqual(run_tests("service_engine_tests"), 0)
        for left in DRIVE_C.glob("users/*/AppData/Local/Temp/kvn-bundle-*"):
            shutil.rmtree(left)
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
