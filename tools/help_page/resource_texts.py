#!/usr/bin/env python3
"""The texts of the programs' resource files, in both languages.

    resource_texts.py LANGUAGE ID...

prints the texts with these ids, one a line; a dialog's id stands for its title.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
LANGUAGES = ("en", "ja")
FILES = ("resources/strings.rc", "resources/dialogs.rc", "service/resources/service_strings.rc")

QUOTED = r'"((?:[^"\\]|\\.)*)"'
TEXT = rf"(?:UI_TEXT\(\s*{QUOTED}\s*,\s*{QUOTED}\s*\)|{QUOTED})"
STRING = re.compile(rf"^\s*(IDS_\w+)\s+{TEXT}", re.MULTILINE)
TITLE = re.compile(rf"^(\w+) DIALOGEX?\b(?:(?!^BEGIN)[^\n]*\n)*?CAPTION {TEXT}", re.MULTILINE)
CONTROL = re.compile(rf"^\s*(?:CONTROL|GROUPBOX|PUSHBUTTON|LTEXT|RTEXT) {TEXT},\s*(ID\w+)", re.MULTILINE)


def plain(text: str) -> str:
    """The text as shown: without the mark of an access key, and with lines broken where the program breaks them."""
    return re.sub(r"\(&\w\)|&(?=\w)", "", text).replace("\\n", "\n").replace("\\\\", "\\")


def pair(english: str, japanese: str, both: str) -> dict[str, str]:
    return {"en": plain(english or both), "ja": plain(japanese or both)}


def load() -> dict[str, dict[str, str]]:
    """The texts by their ids: of the string table, of a dialog (its title), or of a control that has its own text."""
    texts: dict[str, dict[str, str]] = {}
    for file in FILES:
        source = (ROOT / file).read_text(encoding="utf-8")
        for name, *languages in STRING.findall(source) + TITLE.findall(source):
            texts[name] = pair(*languages)
        for *languages, name in CONTROL.findall(source):
            texts.setdefault(name, pair(*languages))
    return texts


if __name__ == "__main__":
    for name in sys.argv[2:]:
        print(load()[name][sys.argv[1]])
