#!/usr/bin/env python3
"""Packs the installer and the Windows test programs into one zip file for a real Windows machine.

The test programs are those that ctest lists. FOLDER holds the files of the last bundle; the zip file is next to it.

Usage: make_bundle.py VERSION FOLDER-OF-PROGRAMS INSTALLER.msi FOLDER
"""
import json
import pathlib
import re
import shutil
import subprocess
import sys
import zipfile

import make_msi

PACKAGING = pathlib.Path(__file__).resolve().parent

# Test programs that need more than Windows, and why. The report names them.
LEFT_OUT = {
    "service_end_to_end_tests": "presses a real mouse through the X display; the service never acts on input that a program sends",
    "service_japanese_tests": "is the same program, for a Japanese user",
    "docs_examples_tests": "writes the examples of the documents into the source tree",
}
# Copies of one program, one for each Windows version or language that Wine can simulate.
COPIES = re.compile(r"^(os_version_tests|user_language_tests)_\w+$")
# Of no use to the tests.
OTHER_PROGRAMS = {"kvn_bench.exe", "kvn_empty_com.dll", "service_recorder.exe", "service_opened_program.exe"}
DEFAULT_SECONDS = 600


def tests_of(programs: pathlib.Path) -> dict[str, int]:
    """The test programs and how many seconds each may take."""
    listed = subprocess.run(["ctest", "--test-dir", programs, "--show-only=json-v1"], check=True, capture_output=True).stdout
    seconds: dict[str, int] = {}
    for test in json.loads(listed)["tests"]:
        limits = [entry["value"] for entry in test.get("properties", []) if entry["name"] == "TIMEOUT"]
        for argument in test.get("command", []):
            path = pathlib.Path(argument)
            if path.suffix == ".exe" and path.parent == programs:
                name = COPIES.sub(r"\1", path.stem)
                seconds[name] = max(seconds.get(name, 0), int(limits[0] if limits else DEFAULT_SECONDS))
    return {name: limit for name, limit in seconds.items() if name not in LEFT_OUT}


def is_packed(file: pathlib.Path) -> bool:
    return (file.suffix in (".exe", ".dll") and file.name not in OTHER_PROGRAMS and file.stem not in LEFT_OUT
            and not COPIES.match(file.stem))


def copy_programs(source: pathlib.Path, target: pathlib.Path) -> None:
    target.mkdir(parents=True)
    for file in filter(is_packed, source.iterdir()):
        shutil.copy(file, target)
    service = target / "service"
    service.mkdir()
    for file in (source / "service").rglob("*"):
        if file.suffix in make_msi.BESIDE_SERVICE | {".exe"}:
            copy = service / file.relative_to(source / "service")
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(file, copy)


def write_text(file: pathlib.Path, text: str) -> None:
    file.write_text(text, encoding="utf-8", newline="\r\n")


def gather(version: str, programs: pathlib.Path, installer: pathlib.Path, folder: pathlib.Path) -> None:
    shutil.rmtree(folder, ignore_errors=True)
    copy_programs(programs, folder / "programs")
    shutil.copy(installer, folder / "KvnMouseUtil.msi")
    for name in ("run-tests.cmd", "READ-ME.txt"):
        write_text(folder / name, (PACKAGING / name).read_text(encoding="utf-8"))
    lists = {"tests.txt": [f"{name} {seconds}" for name, seconds in tests_of(programs).items()],
             "left-out.txt": [f"{name}: {reason}" for name, reason in LEFT_OUT.items()], "version.txt": [version]}
    for name, lines in lists.items():
        write_text(folder / "programs" / name, "\n".join(lines) + "\n")


def pack(folder: pathlib.Path, bundle: pathlib.Path) -> None:
    with zipfile.ZipFile(bundle, "w", zipfile.ZIP_DEFLATED) as archive:
        for file in sorted(path for path in folder.rglob("*") if path.is_file()):
            archive.write(file, pathlib.Path(bundle.stem, file.relative_to(folder)))


def main() -> None:
    version, programs, installer, folder = sys.argv[1], *(pathlib.Path(path).resolve() for path in sys.argv[2:])
    gather(version, programs, installer, folder)
    pack(folder, folder.parent / f"KvnMouse-{version}-tests.zip")


if __name__ == "__main__":
    main()
