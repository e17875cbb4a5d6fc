#!/usr/bin/env python3
"""Makes the installer of one build: the MSI that KvnMouseUtil.wxs and additions.sql describe.

Class id, names and maker come from the sources of the build, so that each is written once.

Usage: make_msi.py VERSION FOLDER-OF-THE-BUILD OUTPUT.msi
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import uuid
from xml.sax.saxutils import quoteattr

PACKAGING = pathlib.Path(__file__).resolve().parent
ROOT = PACKAGING.parent
DLL, SERVICE = "KvnMouseUtil.dll", "KvnMouseApl.exe"
PAPERS = {"LICENSE": "LICENSE.txt", "THIRD-PARTY": "THIRD-PARTY.txt", "CHANGELOG.md": "CHANGELOG.txt"}

# What belongs next to the service: the help and all pictures. The build has more in that folder.
BESIDE_SERVICE = {".htm", ".css", ".png", ".jpg", ".gif", ".svg"}
# The ids of these files' components come from this one and their names. It never changes.
COMPONENTS = uuid.UUID("{0C5B7E31-9F28-4D64-8A17-E3D2096F4BC5}")

Defines = dict[str, str]


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


def product_name() -> str:
    """The name in "Programs and Features"."""
    return version_text("ProductName")


def next_version(version: str) -> str:
    major, minor, patch = (int(number) for number in version.split("."))
    return f"{major}.{minor}.{patch + 1}"


def files_beside_service(service_folder: pathlib.Path) -> list[pathlib.PurePath]:
    return sorted(path.relative_to(service_folder) for path in service_folder.rglob("*")
                  if path.suffix in BESIDE_SERVICE)


def component(file: pathlib.PurePath, number: int) -> str:
    guid = str(uuid.uuid5(COMPONENTS, file.as_posix().lower())).upper()
    source = quoteattr(file.as_posix())
    return (f'<Component Id="Beside{number}" Guid="{{{guid}}}" Win64="yes">'
            f'<File Id="Beside{number}" Name={quoteattr(file.name)} Source={source} KeyPath="yes" /></Component>')


def directory(folder: pathlib.PurePath, files: list[pathlib.PurePath], number: int) -> str:
    """A folder of the service with its files, or the files next to the service itself."""
    rows = "".join(component(file, files.index(file)) for file in files if file.parent == folder)
    if not folder.parts:
        return rows
    if len(folder.parts) > 1:
        sys.exit(f"{folder} is too deep for this installer")
    return f'<Directory Id="Folder{number}" Name={quoteattr(folder.name)}>{rows}</Directory>'


def fragment(files: list[pathlib.PurePath]) -> str:
    """A component for each file next to the service."""
    folders = sorted({file.parent for file in files})
    rows = [directory(folder, files, number) for number, folder in enumerate(folders)]
    references = [f'<ComponentRef Id="Beside{number}" />' for number in range(len(files))]
    return ('<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi"><Fragment>'
            f'<DirectoryRef Id="INSTALLDIR">{"".join(rows)}</DirectoryRef>'
            f'<ComponentGroup Id="HelpAndPictures">{"".join(references)}</ComponentGroup></Fragment></Wix>')


def additions(defines: Defines) -> list[str]:
    """The statements of additions.sql."""
    text = (PACKAGING / "additions.sql").read_text(encoding="utf-8").replace("$(ClassId)", defines["ClassId"])
    return [line for line in text.splitlines() if line and not line.startswith("--")]


def file_version(file: str, version: str) -> str:
    """wixl does not read a file's version. Without one, Windows takes an installed file for newer and keeps it."""
    return f"UPDATE `File` SET `Version`='{version}.0', `Language`='1033' WHERE `File`='{file}'"


def copy_papers(folder: pathlib.Path) -> None:
    """Texts with the line ends of Windows."""
    for source, target in PAPERS.items():
        text = (ROOT / source).read_text(encoding="utf-8")
        (folder / target).write_text(text, encoding="utf-8", newline="\r\n")


def copy_programs(programs: pathlib.Path, folder: pathlib.Path) -> list[pathlib.PurePath]:
    """Puts both programs and what belongs to them into one folder; returns the help and the pictures."""
    shutil.copy(programs / DLL, folder)
    service = programs / "service"
    shutil.copy(service / SERVICE, folder)
    files = files_beside_service(service)
    for file in files:
        (folder / file).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(service / file, folder / file)
    return files


def compile_msi(folder: pathlib.Path, defines: Defines, statements: list[str], output: pathlib.Path) -> None:
    """Compiles the sources in a folder, which holds the installed files too."""
    options = [option for pair in defines.items() for option in ("-D", "=".join(pair))]
    sources = sorted(path.name for path in folder.glob("*.wxs"))
    subprocess.run(["wixl", "-a", "x64", *options, "-o", "made.msi", *sources], cwd=folder, check=True)
    for statement in statements:
        subprocess.run(["msibuild", "made.msi", "-q", statement], cwd=folder, check=True)
    output.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy(folder / "made.msi", output)


def make(version: str, programs: pathlib.Path, output: pathlib.Path) -> None:
    defines = {"Version": version, "NextVersion": next_version(version), "ClassId": class_id(), "Name": product_name(),
               "PageName": version_text("FileDescription"), "Manufacturer": version_text("CompanyName")}
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        copy_papers(folder)
        files = copy_programs(programs, folder)
        shutil.copy(PACKAGING / "KvnMouseUtil.wxs", folder)
        (folder / "beside_service.wxs").write_text(fragment(files), encoding="utf-8")
        versions = [file_version(file, version) for file in (DLL, SERVICE)]
        compile_msi(folder, defines, versions + additions(defines), output)


if __name__ == "__main__":
    make(sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]))
