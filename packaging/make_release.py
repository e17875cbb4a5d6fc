#!/usr/bin/env python3
"""Makes the zip of a release: the installer, the documents, the administrative template, and the checksums of all of these.

Usage: make_release.py INSTALLER.msi OUTPUT.zip
"""
import hashlib
import pathlib
import shutil
import sys
import tempfile
import zipfile

import make_msi
import make_policy

CHECKSUMS = "SHA256SUMS"
REGISTRATION = ["register.reg", "unregister.reg"]  # where the documents look for them


def gather(installer: pathlib.Path, folder: pathlib.Path) -> None:
    shutil.copy(installer, folder)
    make_msi.copy_papers(folder)
    make_policy.make(folder / "policy")
    shutil.copytree(make_msi.ROOT / "docs", folder / "docs", ignore=shutil.ignore_patterns(".*"))
    (folder / "packaging").mkdir()
    for name in REGISTRATION:
        shutil.copy(make_msi.PACKAGING / name, folder / "packaging")


def files_of(folder: pathlib.Path) -> list[str]:
    return sorted(path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file())


def write_checksums(folder: pathlib.Path) -> None:
    """For `sha256sum -c`."""
    sums = [f"{hashlib.sha256((folder / name).read_bytes()).hexdigest()}  {name}\n" for name in files_of(folder)]
    (folder / CHECKSUMS).write_text("".join(sums), encoding="utf-8")


def make(installer: pathlib.Path, output: pathlib.Path) -> None:
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        gather(installer, folder)
        write_checksums(folder)
        with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED) as archive:
            for file in files_of(folder):
                archive.write(folder / file, f"{output.stem}/{file}")


if __name__ == "__main__":
    make(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
