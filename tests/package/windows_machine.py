"""The Windows on which the installer is tested: its programs, registry and files, as Wine shows them."""
import os
import pathlib
import re
import subprocess
import tempfile
import time
from collections.abc import Callable

PREFIX = os.environ["WINEPREFIX"]
DRIVE_C = pathlib.Path(PREFIX) / "drive_c"

Registry = dict[str, dict[str, str]]  # key, value name ("@" is the default value), data as .reg files write it


def windows_path(path: pathlib.Path) -> str:
    return "Z:" + str(path.resolve()).replace("/", "\\")


def run(program: str | pathlib.Path, *arguments: str) -> tuple[int, str]:
    """Exit status and output. The output goes through a file: other programs that Wine starts would keep a pipe open."""
    with tempfile.TemporaryFile() as output:
        status = subprocess.run(["wine", program, *arguments], stdout=output, stderr=output, timeout=60).returncode
        output.seek(0)
        return status, output.read().decode("utf-8", "replace")


def processes(program: str) -> dict[int, str]:
    """The running programs of this Windows with a file name: their process ids on this machine and their command lines."""
    found = {}
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            command = (folder / "cmdline").read_bytes().replace(b"\0", b" ").decode("utf-8", "replace").strip()
            environment = (folder / "environ").read_bytes().split(b"\0")
        except OSError:  # ended meanwhile
            continue
        if f"\\{program}" in command and f"WINEPREFIX={PREFIX}".encode() in environment:
            found[int(folder.name)] = command
    return found


def wait_until(condition: Callable[[], bool], what: str, seconds: int = 60) -> None:
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            raise AssertionError(f"{what} did not happen within {seconds} seconds")
        time.sleep(0.1)


def read_registry(key: str) -> Registry:
    """A key and all keys below it; nothing if it is missing. Key names are in lower case, since their case does not matter."""
    with tempfile.TemporaryDirectory() as folder:
        export = pathlib.Path(folder) / "export.reg"
        status, output = run("regedit", "/E", windows_path(export), key)
        if "Unable to open the registry key" in output:
            return {}
        if status != 0 or not export.exists():
            raise AssertionError(f"{key} could not be read: regedit ended with {status}: {output}")
        return parse_registry(export.read_text("utf-16"))


def settled_registry(key: str) -> Registry:
    """A key and all keys below it, once two readings agree: programs that are still ending may change keys during a reading."""
    readings = [read_registry(key)]

    def last_two_agree() -> bool:
        readings.append(read_registry(key))
        return readings[-1] == readings[-2]

    wait_until(last_two_agree, f"two equal readings of {key}")
    return readings[-1]


def parse_registry(export: str) -> Registry:
    registry: Registry = {}
    values: dict[str, str] = {}
    for line in re.sub(r"\\\n\s*", "", export).splitlines()[1:]:
        if line.startswith("["):
            values = registry.setdefault(line[1:-1].lower(), {})
        elif match := re.fullmatch(r'(@|"(?:[^"\\]|\\.)*")=(.*)', line, re.DOTALL):
            values[match.group(1).strip('"')] = match.group(2)
    return registry


def import_registry(text: str) -> int:
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "import.reg"
        file.write_text(text, encoding="utf-8", newline="\r\n")
        return run("regedit", windows_path(file))[0]


def files_below(folder: pathlib.Path) -> dict[pathlib.Path, bytes | None]:
    """All files with their contents, and folders with nothing."""
    return {path.relative_to(folder): None if path.is_dir() else path.read_bytes() for path in folder.rglob("*")}
