#!/usr/bin/env python3
"""Installs, upgrades and uninstalls page and service as an administrator does, and uses them as a user does.

Usage: package_test.py FOLDER-OF-PROGRAMS VERSION FOLDER-FOR-FILES [TEST...], from the tree's root, started by package_test.sh
"""
import contextlib
import hashlib
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
import zipfile

import make_msi
from windows_machine import (DRIVE_C, Registry, files_below, import_registry, parse_registry, processes, read_registry,
                             run, settled_registry, wait_until, windows_path)

PROGRAMS, STATE = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[3])
VERSION = sys.argv[2]
HOST = PROGRAMS / "control_panel.exe"
PICTURE = STATE / "page.png"
INSTALLER = pathlib.Path(f"build/KvnMouseUtil-{VERSION}.msi")
RELEASE = INSTALLER.with_suffix(".zip")
BUILD = pathlib.Path("build/windows")  # what scripts/package packs
PACKED_DLL, PACKED_SERVICE = BUILD / "KvnMouseUtil.dll", BUILD / "service/KvnMouseApl.exe"
SAMPLE_MOUSE = ["--mouse", "1234:5678:7:1:KvnSample"]

MAKER_FOLDER = DRIVE_C / "Program Files/KORVEN"
FOLDER = MAKER_FOLDER / "Tarsel3"
INSTALLED_DLL, INSTALLED_SERVICE = FOLDER / "KvnMouseUtil.dll", FOLDER / "KvnMouseApl.exe"
WINDOWS_FOLDER = r"C:\Program Files\KORVEN\Tarsel3"
INSTALLED_PATH = WINDOWS_FOLDER + r"\KvnMouseUtil.dll"

# A folder that an administrator has chosen, and one in which users keep another copy of the service.
CHOSEN_FOLDER, CHOSEN_WINDOWS_FOLDER = DRIVE_C / "Mäuse und 鼠/Dienst", "C:\\Mäuse und 鼠\\Dienst"
OWN_FOLDER, OWN_WINDOWS_FOLDER = DRIVE_C / "My tools", r"C:\My tools"

FIRST_RELEASE = pathlib.Path("tests/package/release_1.0.0/KvnMouseUtil.wxs")

SOFTWARE = r"HKEY_LOCAL_MACHINE\Software"
CLASS_KEY = rf"{SOFTWARE}\Classes\CLSID\{make_msi.class_id()}"
HANDLERS_KEY = rf"{SOFTWARE}\Microsoft\Windows\CurrentVersion\Controls Folder\Mouse"
USERS_KEY = r"HKEY_CURRENT_USER\Software\KORVEN"
SETTINGS_KEY = rf"{USERS_KEY}\MouseUtility\VID1234PID5678"
USERS_FOLDERS = "users/*/AppData/Roaming/KORVEN"
RUN_KEY = rf"{SOFTWARE}\Microsoft\Windows\CurrentVersion\Run"
UNINSTALL_KEY = rf"{SOFTWARE}\Microsoft\Windows\CurrentVersion\Uninstall"

REG_FILE = "Windows Registry Editor Version 5.00\n\n"
# A .reg file that removes two keys with everything below them.
REMOVAL = f"{REG_FILE}[-{CLASS_KEY}]\n\n[-{HANDLERS_KEY}]\n"
# The registry key in which files in use wait for the next start of Windows.
NOTHING_PENDING = (REG_FILE + r"[HKEY_LOCAL_MACHINE\System\CurrentControlSet\Control\Session Manager]"
                   '\n"PendingFileRenameOperations"=-\n')

# The results of msiexec, in the eight bits of a Unix exit status: a fatal error, and a file in use that waits for the
# next start.
REFUSED, RESTART_NEEDED = 1603 & 0xFF, 3010 & 0xFF
REPAIR = ["REINSTALL=ALL", "REINSTALLMODE=amus"]  # Wine's msiexec does not know /f
HIGHER_VERSION = make_msi.next_version(VERSION)
FIXED_FILE_INFO = bytes.fromhex("bd04effe")  # the mark of a version resource


def msiexec(action: str, installer: pathlib.Path = INSTALLER, *properties: str) -> int:
    status, output = run("msiexec", action, windows_path(installer), "/qn", *properties)
    if output:
        print(output, file=sys.stderr)
    return status


def running_services() -> dict[int, str]:
    """Without the watchers."""
    return {pid: command for pid, command in processes("KvnMouseApl.exe").items() if "--watch " not in command}


def service_answers() -> bool:
    return run(PACKED_SERVICE, "--status")[0] == 0


def is_running_from(folder: str) -> bool:
    return [command.split(".exe")[0] for command in running_services().values()] == [rf"{folder}\KvnMouseApl"]


def install(installer: pathlib.Path = INSTALLER, *properties: str, folder: str = WINDOWS_FOLDER) -> int:
    """Installs, and waits for the service, which starts by itself."""
    status = msiexec("/i", installer, *properties)
    if status == 0:
        wait_until(lambda: is_running_from(folder) and service_answers(), f"the start of the service in {folder}")
    return status


def start_at_login() -> str | None:
    """The command line that Windows starts at each login."""
    value = read_registry(RUN_KEY).get(RUN_KEY.lower(), {}).get("KvnMouseApl")
    return None if value is None else value[1:-1].replace('\\"', '"').replace("\\\\", "\\")


def start_own_service(program: str) -> None:
    run("start", program, *SAMPLE_MOUSE)
    wait_until(service_answers, "the start of a service")


def quit_service() -> None:
    run(PACKED_SERVICE, "--quit")


def show_sample_mouse() -> None:
    """For the page, in place of the attached mouse; starts a service if none runs."""
    if running_services():
        run(PACKED_SERVICE, *SAMPLE_MOUSE)
    else:
        start_own_service(windows_path(PACKED_SERVICE))


def registration() -> Registry:
    """All entries by which the Mouse control panel finds the page."""
    return {**read_registry(CLASS_KEY), **read_registry(HANDLERS_KEY)}


def registration_without_empty_keys() -> Registry:
    return {key: values for key, values in registration().items() if values}


def table(name: str) -> str:
    """A table of the installer, a line for each row."""
    return subprocess.run(["msiinfo", "export", INSTALLER, name], check=True, capture_output=True, text=True).stdout


def rows(name: str) -> list[list[str]]:
    """A table's rows, without the three lines that describe it."""
    return [line.split("\t") for line in table(name).splitlines()[3:]]


def changes(before: Registry, after: Registry) -> dict[str, tuple]:
    """The keys that differ, with their values before and after; None means that the key is missing."""
    pairs = {key: (before.get(key), after.get(key)) for key in before.keys() | after.keys()}
    return {key: values for key, values in pairs.items() if values[0] != values[1]}


def products() -> Registry:
    """This maker's entries in "Programs and Features", by product code."""
    return {key.rsplit("\\")[-1]: values for key, values in read_registry(UNINSTALL_KEY).items()
            if values.get("Publisher") == '"KORVEN"'}


def installer_of(version: str) -> pathlib.Path:
    """An installer of another build: a linker has made its programs a little longer."""
    programs, installer = STATE / version, STATE / f"{version}.msi"
    shutil.rmtree(programs, ignore_errors=True)
    (programs / "service").mkdir(parents=True)
    for name in ("KvnMouseUtil.dll", "service/KvnMouseApl.exe"):
        (programs / name).write_bytes((BUILD / name).read_bytes() + version.encode())
    for file in make_msi.files_beside_service(BUILD / "service"):
        (programs / "service" / file).parent.mkdir(exist_ok=True)
        shutil.copy(BUILD / "service" / file, programs / "service" / file)
    make_msi.make(version, programs, installer)
    return installer


def dll_of(version: str) -> bytes:
    return (STATE / version / "KvnMouseUtil.dll").read_bytes()


def with_file_version(program: bytes, version: str) -> bytes:
    """A program whose version resource names another version."""
    major, minor, patch = (int(number) for number in version.split("."))
    numbers = b"".join(number.to_bytes(2, "little") for number in (minor, major, 0, patch))
    place = program.index(FIXED_FILE_INFO) + 8
    return program[:place] + 2 * numbers + program[place + 16:]


def first_release() -> pathlib.Path:
    """The installer of version 1.0.0, by its own description: the page without a service."""
    installer = STATE / "first_release.msi"
    defines = {"Version": "1.0.0", "NextVersion": "1.0.1", "ClassId": "{B7C1D9A4-3E52-4F0B-9C86-2D7A51E8F043}",
               "Name": "KORVEN mouse settings page", "Manufacturer": "KORVEN"}
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        make_msi.copy_papers(folder)
        (folder / "KvnMouseUtil.dll").write_bytes(with_file_version(PACKED_DLL.read_bytes(), "1.0.0"))
        shutil.copy(FIRST_RELEASE, folder)
        make_msi.compile_msi(folder, defines, [make_msi.file_version("KvnMouseUtil.dll", "1.0.0")], installer)
    return installer


def users_settings() -> tuple[dict, Registry]:
    """The profiles of all users, and what the page has stored for the sample mouse."""
    [data] = DRIVE_C.glob(USERS_FOLDERS)
    return files_below(data), read_registry(SETTINGS_KEY)


def open_page(*options: str) -> tuple[int, str]:
    """Opens the Mouse control panel with the sample mouse, takes its picture and closes it."""
    show_sample_mouse()
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
    """The table of docs/install.md as a .reg file."""
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
        self.assertIn("A newer version of KORVEN mouse settings tool is already installed.", table("LaunchCondition"))

    def test_installer_knows_the_version_of_both_programs(self):
        for program in ("KvnMouseUtil.dll", "KvnMouseApl.exe"):
            [row] = [row for row in rows("File") if row[0] == program]
            self.assertEqual(row[4:6], [f"{VERSION}.0", "1033"])

    def test_both_programs_have_the_version_of_the_installer(self):
        for program in (PACKED_DLL.read_bytes(), PACKED_SERVICE.read_bytes()):
            self.assertEqual(program, with_file_version(program, VERSION))

    def test_this_version_is_the_newest_release_of_the_changelog(self):
        changelog = pathlib.Path("CHANGELOG.md").read_text(encoding="utf-8")
        self.assertEqual(re.search(r"^## \[(\d[^\]]*)\]", changelog, re.MULTILINE).group(1), VERSION)

    def test_service_is_closed_before_any_file_is_looked_at_and_started_after_all(self):
        actions = [row[0] for row in sorted(rows("InstallExecuteSequence"), key=lambda row: int(row[2]))]
        self.assertLess(actions.index("CostFinalize"), actions.index("CloseService"))
        self.assertLess(actions.index("CloseService"), actions.index("InstallValidate"))
        self.assertEqual(actions[-2:], ["InstallFinalize", "StartService"])

    def test_service_is_closed_and_started_as_the_user_and_never_as_the_system(self):
        deferred, not_impersonated = 0x400, 0x800
        for row in rows("CustomAction"):
            self.assertEqual(int(row[1]) & (deferred | not_impersonated), 0, row)
        [start] = [row for row in rows("InstallExecuteSequence") if row[0] == "StartService"]
        self.assertIn('UserSID <> "S-1-5-18"', start[1])

    def test_administrators_can_give_the_properties_without_their_rights_at_hand(self):
        [secure] = [row[1] for row in rows("Property") if row[0] == "SecureCustomProperties"]
        self.assertLessEqual({"INSTALLDIR", "STARTATLOGIN"}, set(secure.split(";")))


class Release(unittest.TestCase):
    def setUp(self):
        self.archive = self.enterContext(zipfile.ZipFile(RELEASE))

    def read(self, file: str) -> bytes:
        return self.archive.read(f"{RELEASE.stem}/{file}")

    def test_release_holds_the_installer_the_documents_and_the_administrative_template(self):
        self.assertEqual(self.read(INSTALLER.name), INSTALLER.read_bytes())
        self.assertEqual(self.read("docs/install.md"), pathlib.Path("docs/install.md").read_bytes())
        for file in ("policy/KvnMouseUtil.admx", "policy/en-US/KvnMouseUtil.adml", "policy/ja-JP/KvnMouseUtil.adml",
                     "packaging/register.reg", "packaging/unregister.reg", *make_msi.PAPERS.values()):
            self.assertNotEqual(self.read(file), b"", file)

    def test_release_holds_the_checksum_of_every_file(self):
        sums = dict(reversed(line.split("  ")) for line in self.read("SHA256SUMS").decode().splitlines())
        files = {name.removeprefix(f"{RELEASE.stem}/") for name in self.archive.namelist()} - {"SHA256SUMS"}
        self.assertEqual(set(sums), files)
        for file, checksum in sums.items():
            self.assertEqual(hashlib.sha256(self.read(file)).hexdigest(), checksum, file)


class InstallationFixture(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.clean()
        import_registry(REMOVAL)

    def tearDown(self):
        self.clean()

    @staticmethod
    def clean():
        """Ends and uninstalls everything that a test has left, so that a failed test does not make the next one fail."""
        quit_service()
        for product_code in products():
            run("msiexec", "/x", product_code, "/qn")
        for folder in (MAKER_FOLDER, CHOSEN_FOLDER.parent, OWN_FOLDER, *DRIVE_C.glob(USERS_FOLDERS)):
            shutil.rmtree(folder, ignore_errors=True)
        import_registry(f"{REG_FILE}[-{USERS_KEY}]\n")


class Installation(InstallationFixture):
    def copy_dll_by_hand(self):
        """Does what an installer without MSI does; the caller registers the DLL."""
        INSTALLED_DLL.parent.mkdir(parents=True)
        shutil.copy(PACKED_DLL, INSTALLED_DLL)
        self.addCleanup(import_registry, REMOVAL)

    def test_installing_copies_both_programs_with_help_pictures_and_papers(self):
        self.assertEqual(install(), 0)
        beside = {file: (BUILD / "service" / file).read_bytes() for file in make_msi.files_beside_service(BUILD / "service")}
        self.assertIn(pathlib.PurePath("KvnUtilHelp.htm"), beside)
        self.assertIn(pathlib.PurePath("MouseImage/KvnSample.png"), beside)
        papers = {pathlib.PurePath(name): FOLDER.joinpath(name).read_bytes() for name in make_msi.PAPERS.values()}
        folders = {folder: None for file in beside for folder in file.parents if folder.parts}
        self.assertEqual(files_below(FOLDER), {
            pathlib.PurePath("KvnMouseUtil.dll"): PACKED_DLL.read_bytes(),
            pathlib.PurePath("KvnMouseApl.exe"): PACKED_SERVICE.read_bytes(), **beside, **folders, **papers})
        for source, installed in make_msi.PAPERS.items():
            self.assertEqual(FOLDER.joinpath(installed).read_bytes().replace(b"\r\n", b"\n"),
                             pathlib.Path(source).read_bytes())

    def test_installing_lists_one_program(self):
        self.assertEqual(install(), 0)
        [product] = products().values()
        self.assertEqual(product["DisplayName"], '"KORVEN mouse settings tool"')
        self.assertEqual(product["DisplayVersion"], f'"{VERSION}"')
        self.assertEqual(product["NoModify"], "dword:00000001")

    def test_installer_writes_the_documented_registration(self):
        self.assertEqual(install(), 0)
        self.assertEqual(registration_without_empty_keys(), documented_registration())

    def test_host_and_reg_file_write_the_registration_of_the_installer(self):
        self.assertEqual(install(), 0)
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
        self.assertEqual(install(), 0)
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

    def test_another_build_of_the_same_version_takes_its_place(self):
        self.assertEqual(install(), 0)
        self.assertEqual(install(installer_of(VERSION)), 0)
        self.assertEqual(len(products()), 1)
        self.assertEqual(INSTALLED_DLL.read_bytes(), dll_of(VERSION))

    def test_installing_twice_is_installing_once(self):
        self.assertEqual(install(), 0)
        before = registration()
        self.assertEqual(install(), 0)
        self.assertEqual(registration(), before)
        self.assertEqual(len(products()), 1)
        self.assertEqual(INSTALLED_DLL.read_bytes(), PACKED_DLL.read_bytes())

    def test_lower_version_is_refused_and_changes_nothing(self):
        self.assertEqual(install(installer_of(HIGHER_VERSION)), 0)
        before, services = settled_registry(SOFTWARE), running_services()
        self.assertEqual(msiexec("/i"), REFUSED)
        self.assertEqual(changes(before, settled_registry(SOFTWARE)), {})
        self.assertEqual(INSTALLED_DLL.read_bytes(), dll_of(HIGHER_VERSION))
        self.assertEqual(running_services(), services)

    def test_repair_brings_back_what_is_missing(self):
        self.assertEqual(install(), 0)
        files, registry = files_below(FOLDER), registration()
        quit_service()
        for file in ("KvnMouseUtil.dll", "KvnMouseApl.exe", "KvnUtilHelp.htm", "MouseImage/KvnSample_3.png"):
            FOLDER.joinpath(file).unlink()
        import_registry(f'{REMOVAL}\n[{RUN_KEY}]\n"KvnMouseApl"=-\n')
        self.assertEqual(install(INSTALLER, *REPAIR), 0)
        self.assertEqual(files_below(FOLDER), files)
        self.assertEqual(registration(), registry)
        self.assertEqual(start_at_login(), rf'"{WINDOWS_FOLDER}\KvnMouseApl.exe"')

    def test_uninstalling_leaves_nothing_but_the_settings(self):
        registry_before = settled_registry(SOFTWARE)
        folders = [DRIVE_C / "Program Files", DRIVE_C / "windows/Installer", DRIVE_C / "ProgramData"]
        files_before = [files_below(folder) for folder in folders]
        self.assertEqual(install(), 0)
        picture_of_the_page()  # the page makes the sample mouse's profile for it
        settings = users_settings()
        self.assertIn(pathlib.Path("Tarsel3/VID1234PID5678.xml"), settings[0])
        self.assertNotEqual(settings[1], {})

        self.assertEqual(msiexec("/x"), 0)
        self.assertEqual(users_settings(), settings)
        self.assertEqual([files_below(folder) for folder in folders], files_before)
        left = {key: values for key, values in changes(registry_before, settled_registry(SOFTWARE)).items()
                if "\\installer" not in key or values[1] != {}}  # Windows Installer keeps its own empty keys
        self.assertEqual(left, {})

    def test_uninstalling_leaves_what_others_have_put_beside_the_programs(self):
        self.assertEqual(install(), 0)
        neighbour = FOLDER / "MouseImage/Another.png"
        neighbour.write_bytes(b"a picture")
        self.assertEqual(msiexec("/x"), 0)
        self.assertEqual(list(MAKER_FOLDER.rglob("*.*")), [neighbour])

    def test_folder_with_blanks_and_letters_of_every_language_serves(self):
        property_of_it = f"INSTALLDIR={CHOSEN_WINDOWS_FOLDER}"
        self.assertEqual(install(INSTALLER, property_of_it, folder=CHOSEN_WINDOWS_FOLDER), 0)
        self.assertEqual(start_at_login(), rf'"{CHOSEN_WINDOWS_FOLDER}\KvnMouseApl.exe"')
        picture_of_the_page()
        self.assertFalse(INSTALLED_DLL.exists())
        self.assertEqual(msiexec("/x"), 0)
        self.assertFalse(CHOSEN_FOLDER.exists())

    def test_folder_that_was_chosen_stays_at_upgrade_and_repair(self):
        self.assertEqual(install(INSTALLER, f"INSTALLDIR={CHOSEN_WINDOWS_FOLDER}", folder=CHOSEN_WINDOWS_FOLDER), 0)
        self.assertEqual(install(INSTALLER, *REPAIR, folder=CHOSEN_WINDOWS_FOLDER), 0)
        self.assertEqual(install(installer_of(HIGHER_VERSION), folder=CHOSEN_WINDOWS_FOLDER), 0)
        self.assertFalse(INSTALLED_DLL.exists())
        self.assertEqual(CHOSEN_FOLDER.joinpath("KvnMouseUtil.dll").read_bytes(), dll_of(HIGHER_VERSION))


def send(sign: signal.Signals, processes_of_wine: dict[int, str]) -> None:
    for pid in processes_of_wine:
        with contextlib.suppress(ProcessLookupError):
            os.kill(pid, sign)


class Service(InstallationFixture):
    def freeze(self, hung: dict[int, str]) -> None:
        """Makes processes hang."""
        self.assertNotEqual(hung, {})
        self.addCleanup(import_registry, NOTHING_PENDING)
        self.addCleanup(self.kill, hung)
        send(signal.SIGSTOP, hung)

    @staticmethod
    def kill(hung: dict[int, str]) -> None:
        """Kills processes while they hang: a watcher that continues would start a service that is never ended."""
        send(signal.SIGKILL, hung)
        wait_until(lambda: not hung.keys() & processes("KvnMouseApl.exe").keys(), "the end of the hanging processes")

    def test_installing_starts_the_service(self):
        self.assertEqual(install(), 0)
        status, output = run(INSTALLED_SERVICE, "--status")
        self.assertEqual(status, 0)
        self.assertIn(f"version={VERSION}", output.splitlines())

    def test_service_starts_at_each_login(self):
        self.assertEqual(install(), 0)
        self.assertEqual(start_at_login(), rf'"{WINDOWS_FOLDER}\KvnMouseApl.exe"')
        quit_service()
        run("wineboot")  # starts what a login starts
        wait_until(lambda: is_running_from(WINDOWS_FOLDER), "the start at the login")

    def test_service_does_not_start_at_login_if_the_administrator_says_so(self):
        self.assertEqual(install(INSTALLER, "STARTATLOGIN=0"), 0)
        self.assertIsNone(start_at_login())

    def test_start_at_login_stays_off_at_repair_and_upgrade_until_it_is_turned_on(self):
        self.assertEqual(install(INSTALLER, "STARTATLOGIN=0"), 0)
        self.assertEqual(install(INSTALLER, *REPAIR), 0)
        self.assertIsNone(start_at_login())
        higher = installer_of(HIGHER_VERSION)
        self.assertEqual(install(higher), 0)
        self.assertIsNone(start_at_login())
        self.assertEqual(install(higher, "STARTATLOGIN=1", *REPAIR), 0)
        self.assertIsNotNone(start_at_login())

    def test_start_at_login_can_be_turned_off_later(self):
        self.assertEqual(install(), 0)
        self.assertEqual(install(INSTALLER, "STARTATLOGIN=0", *REPAIR), 0)
        self.assertIsNone(start_at_login())

    def test_start_at_login_stays_on_at_upgrade(self):
        self.assertEqual(install(), 0)
        self.assertEqual(install(installer_of(HIGHER_VERSION)), 0)
        self.assertIsNotNone(start_at_login())

    def test_upgrade_replaces_the_running_service(self):
        self.assertEqual(install(), 0)
        before = processes("KvnMouseApl.exe")
        self.assertEqual(install(installer_of(HIGHER_VERSION)), 0)
        self.assertEqual(before.keys() & processes("KvnMouseApl.exe").keys(), set())
        self.assertEqual(INSTALLED_SERVICE.read_bytes(), PACKED_SERVICE.read_bytes() + HIGHER_VERSION.encode())
        self.assertEqual([product["DisplayVersion"] for product in products().values()], [f'"{HIGHER_VERSION}"'])

    def test_uninstalling_ends_the_service_and_its_watcher(self):
        self.assertEqual(install(), 0)
        self.assertEqual(msiexec("/x"), 0)
        self.assertEqual(processes("KvnMouseApl.exe"), {})
        self.assertIsNone(start_at_login())

    def test_upgrade_replaces_a_hung_service(self):
        self.assertEqual(install(), 0)
        hung = running_services()
        self.freeze(hung)
        self.assertEqual(msiexec("/i", installer_of(HIGHER_VERSION)), 0)
        wait_until(lambda: running_services().keys() - hung.keys() and service_answers(), "the start of the new service")
        self.assertEqual(INSTALLED_SERVICE.read_bytes(), PACKED_SERVICE.read_bytes() + HIGHER_VERSION.encode())

    def test_hung_service_and_watcher_do_not_stop_the_upgrade(self):
        self.assertEqual(install(), 0)
        self.freeze(processes("KvnMouseApl.exe"))
        self.assertIn(msiexec("/i", installer_of(HIGHER_VERSION)), (0, RESTART_NEEDED))
        self.assertEqual([product["DisplayVersion"] for product in products().values()], [f'"{HIGHER_VERSION}"'])
        self.assertEqual(INSTALLED_DLL.read_bytes(), dll_of(HIGHER_VERSION))

    def test_hung_service_and_watcher_do_not_stop_the_removal(self):
        self.assertEqual(install(), 0)
        self.freeze(processes("KvnMouseApl.exe"))
        self.assertIn(msiexec("/x"), (0, RESTART_NEEDED))
        self.assertEqual(products(), {})
        self.assertFalse(INSTALLED_DLL.exists())
        self.assertIsNone(start_at_login())


class UpgradeOfTheFirstRelease(InstallationFixture):
    def install_first_release(self, *properties: str) -> None:
        self.assertEqual(msiexec("/i", first_release(), *properties), 0)
        [product] = products().values()
        self.assertEqual(product["DisplayVersion"], '"1.0.0"')

    def start_service_of_the_users_own(self) -> None:
        shutil.copytree(BUILD / "service", OWN_FOLDER)
        start_own_service(rf"{OWN_WINDOWS_FOLDER}\KvnMouseApl.exe")
        self.assertTrue(is_running_from(OWN_WINDOWS_FOLDER))

    def test_page_and_service_are_installed_as_one_product(self):
        self.install_first_release()
        self.assertFalse(INSTALLED_SERVICE.exists())
        registration_before = registration()
        self.assertEqual(install(), 0)
        [product] = products().values()
        self.assertEqual(product["DisplayVersion"], f'"{VERSION}"')
        self.assertEqual(registration(), registration_before)
        self.assertEqual(INSTALLED_DLL.read_bytes(), PACKED_DLL.read_bytes())
        self.assertEqual(start_at_login(), rf'"{WINDOWS_FOLDER}\KvnMouseApl.exe"')

    def test_users_keep_their_settings(self):
        self.install_first_release()
        self.start_service_of_the_users_own()
        picture_of_the_page()
        settings = users_settings()
        self.assertIn(pathlib.Path("Tarsel3/VID1234PID5678.xml"), settings[0])
        self.assertNotEqual(settings[1], {})
        self.assertEqual(install(), 0)
        self.assertEqual(users_settings(), settings)

    def test_installed_service_takes_the_place_of_one_that_runs_from_elsewhere(self):
        self.install_first_release()
        self.start_service_of_the_users_own()
        before = processes("KvnMouseApl.exe")
        self.assertEqual(install(), 0)
        self.assertEqual(before.keys() & processes("KvnMouseApl.exe").keys(), set())
        self.assertTrue(OWN_FOLDER.joinpath("KvnMouseApl.exe").exists())

    def test_folder_that_was_chosen_stays(self):
        self.install_first_release(f"INSTALLDIR={CHOSEN_WINDOWS_FOLDER}")
        self.assertEqual(install(folder=CHOSEN_WINDOWS_FOLDER), 0)
        self.assertEqual(CHOSEN_FOLDER.joinpath("KvnMouseUtil.dll").read_bytes(), PACKED_DLL.read_bytes())
        self.assertFalse(INSTALLED_DLL.exists())


unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)
