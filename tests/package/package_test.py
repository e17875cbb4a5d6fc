#!/usr/bin/env python3
"""Installs, upgrades and uninstalls the settings page as an administrator does, and opens it as a user does.

Usage: package_test.py FOLDER-OF-PROGRAMS VERSION FOLDER-FOR-FILES, from the tree's root, started by package_test.sh
"""
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

import make_msi
from windows_machine import (DRIVE_C, Registry, files_below, import_registry, parse_registry, read_registry, run,
                             windows_path)

PROGRAMS, STATE = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[3])
VERSION = sys.argv[2]
HOST = PROGRAMS / "control_panel.exe"
PICTURE = STATE / "page.png"
INSTALLER = pathlib.Path(f"build/KvnMouseUtil-{VERSION}.msi")
PACKED_DLL = pathlib.Path("build/windows/KvnMouseUtil.dll")  # what scripts/package packs

MAKER_FOLDER = DRIVE_C / "Program Files/KORVEN"
INSTALLED_DLL = MAKER_FOLDER / "Tarsel3/KvnMouseUtil.dll"
INSTALLED_PATH = r"C:\Program Files\KORVEN\Tarsel3\KvnMouseUtil.dll"

SOFTWARE = r"HKEY_LOCAL_MACHINE\Software"
CLASS_KEY = rf"{SOFTWARE}\Classes\CLSID\{make_msi.class_id()}"
HANDLERS_KEY = rf"{SOFTWARE}\Microsoft\Windows\CurrentVersion\Controls Folder\Mouse"
UNINSTALL_KEY = rf"{SOFTWARE}\Microsoft\Windows\CurrentVersion\Uninstall"

# Two keys that are removed with all that is below them.
REMOVAL = f"Windows Registry Editor Version 5.00\n\n[-{CLASS_KEY}]\n\n[-{HANDLERS_KEY}]\n"

REFUSED = 1603 & 0xFF  # a fatal error during installation; a Unix exit status has eight bits


def msiexec(action: str, installer: pathlib.Path = INSTALLER) -> int:
    return run("msiexec", action, windows_path(installer), "/qn")[0]


def registration() -> Registry:
    """Everything by which the Mouse control panel finds the page."""
    return {**read_registry(CLASS_KEY), **read_registry(HANDLERS_KEY)}


def registration_without_empty_keys() -> Registry:
    return {key: values for key, values in registration().items() if values}


def table(name: str) -> str:
    """A table of the installer, a line for each row."""
    return subprocess.run(["msiinfo", "export", INSTALLER, name], check=True, capture_output=True, text=True).stdout


def changed_keys(before: Registry, after: Registry) -> set[str]:
    return {key for key in before.keys() | after.keys() if before.get(key) != after.get(key)}


def products() -> Registry:
    """What "Programs and Features" lists of the page, by product code."""
    name = make_msi.version_text("FileDescription")
    return {key.rsplit("\\")[-1]: values for key, values in read_registry(UNINSTALL_KEY).items()
            if values.get("DisplayName") == f'"{name}"'}


def installer_of(version: str) -> tuple[pathlib.Path, bytes]:
    """An installer of another build, and the DLL that it holds: one that a linker has made a little longer."""
    dll, installer = STATE / f"{version}.dll", STATE / f"{version}.msi"
    dll.write_bytes(PACKED_DLL.read_bytes() + version.encode())
    make_msi.make(version, dll, installer)
    return installer, dll.read_bytes()


def open_page(*options: str) -> tuple[int, str]:
    """Opens the Mouse control panel, takes its picture and closes it."""
    PICTURE.unlink(missing_ok=True)
    return run(HOST, "--screenshot", windows_path(PICTURE), *options)


def picture_of_the_page(*options: str) -> bytes:
    status, output = open_page(*options)
    if status != 0:
        raise AssertionError(output)
    return PICTURE.read_bytes()


def register_file(name: str) -> str:
    text = pathlib.Path("packaging", name).read_text(encoding="utf-8")
    return text.replace('@="<DLL>"', '@="{}"'.format(INSTALLED_PATH.replace("\\", "\\\\")))


def documented_registration() -> Registry:
    """The table of docs/install.md in the words of a .reg file."""
    lines, key = ["header"], ""
    for row in pathlib.Path("docs/install.md").read_text(encoding="utf-8").splitlines():
        cells = [cell.strip() for cell in row.strip("|").split("|")]
        if len(cells) != 3 or cells[0] == "key" or cells[0].startswith("---"):
            continue
        key = key if cells[0] == "the same" else cells[0].strip("`").replace("HKLM\\", "HKEY_LOCAL_MACHINE\\")
        name = "@" if cells[1] == "(default)" else '"{}"'.format(cells[1].strip("`"))
        data = INSTALLED_PATH if cells[2] == "the DLL's full path" else cells[2].strip("`")
        lines += [f"[{key}]", '{}="{}"'.format(name, data.replace("\\", "\\\\"))]
    return parse_registry("\n".join(lines))


class Installer(unittest.TestCase):
    def test_installer_says_why_it_refuses(self):
        self.assertIn("A newer version of KORVEN mouse settings page is already installed.", table("LaunchCondition"))

    def test_installer_knows_the_version_of_the_dll(self):
        [row] = [line.split("\t") for line in table("File").splitlines() if line.startswith("KvnMouseUtil.dll")]
        self.assertEqual(row[4:6], [f"{VERSION}.0", "1033"])

    def test_this_version_is_the_newest_release_of_the_changelog(self):
        changelog = pathlib.Path("CHANGELOG.md").read_text(encoding="utf-8")
        self.assertEqual(re.search(r"^## \[(\d[^\]]*)\]", changelog, re.MULTILINE).group(1), VERSION)


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.clean()
        import_registry(REMOVAL)

    def tearDown(self):
        self.clean()

    @staticmethod
    def clean():
        """Uninstalls what a test has left, so that one that failed does not make the next one fail."""
        for product_code in products():
            run("msiexec", "/x", product_code, "/qn")
        shutil.rmtree(MAKER_FOLDER, ignore_errors=True)

    def copy_dll_by_hand(self):
        """Does what an installer without MSI does; the caller registers the DLL."""
        INSTALLED_DLL.parent.mkdir(parents=True)
        shutil.copy(PACKED_DLL, INSTALLED_DLL)
        self.addCleanup(import_registry, REMOVAL)

    def test_installing_copies_the_dll_and_its_papers(self):
        self.assertEqual(msiexec("/i"), 0)
        self.assertEqual(INSTALLED_DLL.read_bytes(), PACKED_DLL.read_bytes())
        self.assertEqual({path.name for path in INSTALLED_DLL.parent.iterdir()},
                         {"KvnMouseUtil.dll", *make_msi.PAPERS.values()})
        for source, installed in make_msi.PAPERS.items():
            self.assertEqual(INSTALLED_DLL.with_name(installed).read_bytes().replace(b"\r\n", b"\n"),
                             pathlib.Path(source).read_bytes())

    def test_installing_lists_one_program(self):
        self.assertEqual(msiexec("/i"), 0)
        [product] = products().values()
        self.assertEqual(product["DisplayVersion"], f'"{VERSION}"')
        self.assertEqual(product["Publisher"], '"KORVEN"')
        self.assertEqual(product["NoModify"], "dword:00000001")

    def test_installer_writes_the_documented_registration(self):
        self.assertEqual(msiexec("/i"), 0)
        self.assertEqual(registration_without_empty_keys(), documented_registration())

    def test_host_and_reg_file_write_the_registration_of_the_installer(self):
        self.assertEqual(msiexec("/i"), 0)
        installed = registration()
        self.assertEqual(msiexec("/x"), 0)

        self.copy_dll_by_hand()
        self.assertEqual(run(HOST, "--register", INSTALLED_PATH)[0], 0)
        self.assertEqual(registration(), installed)
        self.assertEqual(run(HOST, "--unregister")[0], 0)
        self.assertEqual(registration_without_empty_keys(), {})

        self.assertEqual(import_registry(register_file("register.reg")), 0)
        self.assertEqual(registration(), installed)

    def test_mouse_control_panel_shows_the_installed_page(self):
        page = picture_of_the_page("--dll", windows_path(PACKED_DLL))
        self.assertIn("No property-sheet handler is registered", open_page()[1])
        self.assertEqual(msiexec("/i"), 0)
        self.assertEqual(picture_of_the_page(), page)
        INSTALLED_DLL.rename(INSTALLED_DLL.with_suffix(".away"))
        self.assertEqual(open_page()[0], 1)  # no other DLL was taken

    def test_mouse_control_panel_shows_the_page_of_the_reg_file_until_it_is_taken_back(self):
        page = picture_of_the_page("--dll", windows_path(PACKED_DLL))
        self.copy_dll_by_hand()
        self.assertEqual(import_registry(register_file("register.reg")), 0)
        self.assertEqual(picture_of_the_page(), page)
        self.assertEqual(import_registry(register_file("unregister.reg")), 0)
        self.assertEqual(registration_without_empty_keys(), {})
        self.assertIn("No property-sheet handler is registered", open_page()[1])

    def test_higher_version_takes_the_place_of_the_installed_one(self):
        self.assertEqual(msiexec("/i"), 0)
        before = registration()
        version = make_msi.next_version(VERSION)
        higher, dll = installer_of(version)
        self.assertEqual(msiexec("/i", higher), 0)
        self.assertEqual([product["DisplayVersion"] for product in products().values()], [f'"{version}"'])
        self.assertEqual(INSTALLED_DLL.read_bytes(), dll)
        self.assertEqual(registration(), before)

    def test_another_build_of_the_same_version_takes_its_place(self):
        self.assertEqual(msiexec("/i"), 0)
        another, dll = installer_of(VERSION)
        self.assertEqual(msiexec("/i", another), 0)
        self.assertEqual(len(products()), 1)
        self.assertEqual(INSTALLED_DLL.read_bytes(), dll)

    def test_installing_twice_is_installing_once(self):
        self.assertEqual(msiexec("/i"), 0)
        before = registration()
        self.assertEqual(msiexec("/i"), 0)
        self.assertEqual(registration(), before)
        self.assertEqual(len(products()), 1)
        self.assertEqual(INSTALLED_DLL.read_bytes(), PACKED_DLL.read_bytes())

    def test_lower_version_is_refused_and_changes_nothing(self):
        higher, dll = installer_of(make_msi.next_version(VERSION))
        self.assertEqual(msiexec("/i", higher), 0)
        before = read_registry(SOFTWARE)
        self.assertEqual(msiexec("/i"), REFUSED)
        self.assertEqual(changed_keys(before, read_registry(SOFTWARE)), set())
        self.assertEqual(INSTALLED_DLL.read_bytes(), dll)

    def test_uninstalling_leaves_nothing_but_the_profiles(self):
        registry_before = read_registry(SOFTWARE)
        folders = [DRIVE_C / "Program Files", DRIVE_C / "windows/Installer", DRIVE_C / "ProgramData"]
        files_before = [files_below(folder) for folder in folders]
        self.assertEqual(msiexec("/i"), 0)
        picture_of_the_page()  # for which the page makes the sample mouse's profile
        [data] = DRIVE_C.glob("users/*/AppData/Roaming/KORVEN")
        profiles = files_below(data)
        self.assertIn(pathlib.Path("Tarsel3/VID1234PID5678.xml"), profiles)
        self.addCleanup(shutil.rmtree, data)

        self.assertEqual(msiexec("/x"), 0)
        self.assertEqual(files_below(data), profiles)
        self.assertEqual([files_below(folder) for folder in folders], files_before)
        registry = read_registry(SOFTWARE)
        for key in changed_keys(registry_before, registry):
            self.assertIn("\\installer", key)  # Windows Installer's own keys, which it keeps
            self.assertEqual(registry.get(key), {}, key)

    def test_uninstalling_leaves_what_others_have_put_beside_the_dll(self):
        self.assertEqual(msiexec("/i"), 0)
        neighbour = INSTALLED_DLL.with_name("KvnMouseApl.exe")
        neighbour.write_bytes(b"the service")
        self.assertEqual(msiexec("/x"), 0)
        self.assertEqual(list(MAKER_FOLDER.rglob("*.*")), [neighbour])


unittest.main(argv=sys.argv[:1], verbosity=2)
