#!/usr/bin/env python3
"""Checks the finished DLL as a loader and an administrator see it: exports, imports, hardening, size, version.

Usage: dll_image_test.py OBJDUMP DLL VERSION
"""
import pathlib
import re
import subprocess
import sys
import unittest

OBJDUMP, DLL, VERSION = sys.argv[1:4]
MAX_BYTES = 350 * 1024

EXPORTS = {"CPlApplet", "DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"}

# Libraries of Windows. Add one only on purpose.
IMPORTS = {"advapi32.dll", "comctl32.dll", "gdi32.dll", "gdiplus.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
           "psapi.dll", "shell32.dll", "shlwapi.dll", "user32.dll"}

HARDENING = {"HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"}

HEADERS = subprocess.run([OBJDUMP, "-p", DLL], check=True, capture_output=True, text=True).stdout


class DllImage(unittest.TestCase):
    def test_exports_its_five_functions_and_nothing_else(self):
        table = HEADERS.split("[Ordinal/Name Pointer] Table", 1)[1].split("\n\n", 1)[0]
        self.assertEqual(set(re.findall(r"\[\s*\d+\]\s+(\w+)", table)), EXPORTS)

    def test_imports_only_libraries_of_windows(self):
        self.assertEqual({name.lower() for name in re.findall(r"DLL Name: (\S+)", HEADERS)}, IMPORTS)

    def test_is_hardened(self):
        self.assertLessEqual(HARDENING, set(HEADERS.split()))

    def test_is_for_64_bit_windows(self):
        self.assertIn("pei-x86-64", HEADERS)

    def test_is_small(self):
        self.assertLessEqual(pathlib.Path(DLL).stat().st_size, MAX_BYTES)

    def test_carries_its_version(self):
        image = pathlib.Path(DLL).read_bytes()
        value = image.split("FileVersion".encode("utf-16-le"), 1)[1].lstrip(b"\0")
        self.assertTrue(value.startswith(VERSION.encode("utf-16-le")))


unittest.main(argv=sys.argv[:1], verbosity=2)
