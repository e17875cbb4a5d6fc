#!/usr/bin/env python3
"""Makes the installer of one DLL: the MSI that KvnMouseUtil.wxs describes.

Class id, name and maker come from the sources that the DLL is built from, so that they stand in one place.

Usage: make_msi.py VERSION DLL OUTPUT.msi
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

PACKAGING = pathlib.Path(__file__).resolve().parent
ROOT = PACKAGING.parent
PAPERS = {"LICENSE": "LICENSE.txt", "THIRD-PARTY": "THIRD-PARTY.txt", "CHANGELOG.md": "CHANGELOG.txt"}


def find(pattern: str, path: str) -> str:
    """The one group of a pattern that must be in a file of the tree."""
    match = re.search(pattern, (ROOT / path).read_text(encoding="utf-8"), re.DOTALL)
    if not match:
        sys.exit(f"{path} does not hold {pattern}")
    return match.group(1)


def class_id() -> str:
    """The class that the DLL serves, as the registry writes it."""
    digits = find(r"kServerClassId = (\{.*?\});", "resources/server_class.h")
    fields = re.findall(r"0x([0-9A-Fa-f]+)", digits)
    texts = [field.zfill(width).upper() for field, width in zip(fields, [8, 4, 4] + 8 * [2], strict=True)]
    return "{%s-%s-%s-%s-%s}" % (*texts[:3], "".join(texts[3:5]), "".join(texts[5:]))


def version_text(name: str) -> str:
    return find(rf'VALUE "{name}", "(.*?)"', "resources/version.rc")


def next_version(version: str) -> str:
    major, minor, patch = (int(number) for number in version.split("."))
    return f"{major}.{minor}.{patch + 1}"


def gather(dll: pathlib.Path, folder: pathlib.Path) -> None:
    """Puts all installed files into one folder, texts with the line ends of Windows."""
    shutil.copy(dll, folder / "KvnMouseUtil.dll")
    for source, target in PAPERS.items():
        text = (ROOT / source).read_text(encoding="utf-8")
        (folder / target).write_text(text, encoding="utf-8", newline="\r\n")
    shutil.copy(PACKAGING / "KvnMouseUtil.wxs", folder)


def make(version: str, dll: pathlib.Path, output: pathlib.Path) -> None:
    defines = {"Version": version, "NextVersion": next_version(version), "ClassId": class_id(),
               "Name": version_text("FileDescription"), "Manufacturer": version_text("CompanyName")}
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        gather(dll, folder)
        options = [option for pair in defines.items() for option in ("-D", "=".join(pair))]
        subprocess.run(["wixl", "-a", "x64", *options, "-o", "page.msi", "KvnMouseUtil.wxs"], cwd=folder, check=True)
        # wixl does not read a DLL's version. Without it Windows takes an installed DLL for newer and leaves it.
        subprocess.run(["msibuild", "page.msi", "-q", f"UPDATE `File` SET `Version`='{version}.0', `Language`='1033' "
                        "WHERE `File`='KvnMouseUtil.dll'"], cwd=folder, check=True)
        output.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(folder / "page.msi", output)


if __name__ == "__main__":
    make(sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]))
