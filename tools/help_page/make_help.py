#!/usr/bin/env python3
"""Makes the help page of service/help, in both languages, with its pictures.

    make_help.py FOLDER MOUSE-PICTURES-FOLDER VERSION

writes FOLDER/KvnUtilHelp.htm and FOLDER/HelpImages/. Facts about the programs come from their sources: the texts, the list of
functions and when each acts. It fails if a mark names nothing.

In the texts of service/help:
    [[Text]], [[ID]]         a text of the programs by its English words or its id, in the language of the page
    {{text ID}}              the same without its look
    {{picture NAME|alt}}     docs/images/NAME.png, or ja/NAME.png
    {{mouse NUMBER|alt}}     the sample mouse with this control marked
    {{contents}}, {{functions}}, {{messages page}}, {{messages service}}, {{when Held}}, {{version}}
A heading's id and a link's # are those of one language; the page puts the language in front.
"""
import html
import pathlib
import re
import shutil
import struct
import sys

from resource_texts import LANGUAGES, ROOT, load

TEXTS = load()
SOURCES = ROOT / "service/help"
IMAGES = ROOT / "docs/images"

WHEN = {
    "Held": {"en": "held", "ja": "押している間"},
    "Once": {"en": "once", "ja": "1 回"},
    "Repeats": {"en": "repeated", "ja": "繰り返し"},
    "Gesture": {"en": "while drawing", "ja": "描いている間"},
    "Nothing": {"en": "never", "ja": "なし"},
}
WORDS = {
    "Contents": {"en": "Contents", "ja": "目次"},
    "Function": {"en": "Function", "ja": "機能"},
    "When": {"en": "When", "ja": "動作するとき"},
    "What it does": {"en": "What it does", "ja": "動作"},
    "Message": {"en": "Message", "ja": "メッセージ"},
    "Meaning": {"en": "What it means, and what to do", "ja": "意味と対処"},
    "Windows 8": {"en": "Offered on Windows 8.0 only", "ja": "Windows 8.0 でのみ選択できる機能"},
}
KEYS = {"kShift": "Shift", "kCtrl": "Ctrl", "kAlt": "Alt", "kTab": "Tab", "kEnter": "Enter", "kEscape": "Esc",
        "kDelete": "Delete", "kBackspace": "Back Space", "kWindows": "Windows"}


def read(path: str) -> str:
    return (ROOT / path).read_text(encoding="utf-8")


def plain(name: str, language: str) -> str:
    """A text by its id, or by its English words if their translation is the same everywhere."""
    if name in TEXTS:
        return TEXTS[name][language]
    found = {texts[language] for texts in all_texts() if texts["en"] == name}
    if len(found) != 1:
        sys.exit(f"help: '{name}' is {'no text of the programs' if not found else f'several texts: {found}'}")
    return found.pop()


def all_texts() -> list[dict[str, str]]:
    return [*TEXTS.values(), *LABELS]


def labels() -> list[dict[str, str]]:
    """The texts of the dialogs that have no id."""
    pairs = re.findall(r'UI_TEXT\("([^"]*)", "([^"]*)"\)', read("resources/dialogs.rc"))
    return [{"en": english, "ja": japanese} for english, japanese in pairs]


LABELS = labels()


def shown(text: str) -> str:
    """A message with its placeholders left open."""
    return html.escape(re.sub(r"%[12]", "…", text).replace("%d", "100"))


class Function:
    """A row of the catalogue, and the service's action for it."""

    def __init__(self, text_id: str, code: int, first_charm: int, last_charm: int) -> None:
        self.text_id, self.code = text_id, code
        self.is_charm = first_charm <= code <= last_charm
        row = re.search(rf"\.code = {code},[^}}]*\}}", read("service/engine/functions.cpp"))[0]
        self.kind = re.search(r"FunctionKind::(\w+)", row)[1]
        keys = re.search(r"\.keys = \{([^}]*)\}", row)
        self.keys = [key for key in keys[1].split(", ") if key != "kNoKey"] if keys else []

    def chord(self) -> str:
        return "+".join(f"<kbd>{KEYS.get(key, key.strip(chr(39)))}</kbd>" for key in self.keys)


def number(constant: str, source: str) -> int:
    return int(re.search(rf"{constant} = (\d+);", source)[1])


def functions() -> list[Function]:
    source = read("model/function_catalogue.h")
    charms = number("kFirstCharmFunction", source), number("kLastCharmFunction", source)
    rows = re.findall(r"^    \{(IDS_\w+), (\w+)\},", source, re.MULTILINE)
    codes = [(text_id, int(code) if code.isdigit() else number(code, source)) for text_id, code in rows]
    return [Function(text_id, code, *charms) for text_id, code in codes if code != 0]


def explanations(language: str) -> dict[str, str]:
    """By id, in the order of the file. Japanese has no spaces between words."""
    space = "" if language == "ja" else " "
    source = (SOURCES / f"explanations.{language}.txt").read_text(encoding="utf-8")
    found = re.findall(r"^(IDS_\w+): (.*(?:\n  .*)*)", source, re.MULTILINE)
    return {name: text.replace("\n  ", space) for name, text in found}


def size_of(png: pathlib.Path) -> tuple[int, int]:
    return struct.unpack(">II", png.read_bytes()[16:24])


class Page:
    """The part of the page in one language."""

    def __init__(self, language: str, folder: pathlib.Path, mice: pathlib.Path, version: str) -> None:
        self.language, self.images, self.mice, self.version = language, folder / "HelpImages", mice, version
        self.explanations = explanations(language)

    def word(self, name: str) -> str:
        return WORDS[name][self.language]

    def ui(self, name: str) -> str:
        return f'<span class="ui">{shown(plain(name, self.language))}</span>'

    def image(self, source: pathlib.Path, name: str, alt: str) -> str:
        shutil.copyfile(source, self.images / name)
        width, height = size_of(source)
        return f'<img src="HelpImages/{name}" width="{width}" height="{height}" alt="{html.escape(alt)}">'

    def picture(self, name: str, alt: str) -> str:
        folder = IMAGES if self.language == "en" else IMAGES / self.language
        return f"<figure>{self.image(folder / f'{name}.png', f'{name}-{self.language}.png', alt)}</figure>"

    def mouse(self, control: str, alt: str) -> str:
        return self.image(self.mice / f"mouse-{control}.png", f"mouse-{control}.png", alt)

    def table(self, kind: str, heads: list[str], rows: list[str]) -> str:
        cells = "".join(f'<th scope="col">{self.word(head)}</th>' for head in heads)
        return (f'<div class="wide"><table class="{kind}">\n<thead><tr>{cells}</tr></thead>\n<tbody>\n'
                + "\n".join(rows) + "\n</tbody>\n</table></div>")

    def function_row(self, function: Function) -> str:
        explanation = " ".join(filter(None, (self.explain(function.text_id), function.chord())))
        return (f'<tr><th scope="row">{html.escape(plain(function.text_id, self.language))}</th>'
                f"<td>{WHEN[function.kind][self.language]}</td><td>{explanation}</td></tr>")

    def functions(self) -> str:
        rows = [self.function_row(function) for function in functions() if not function.is_charm]
        rows.append(f'<tr><th class="group" colspan="3">{self.word("Windows 8")}</th></tr>')
        rows += [self.function_row(function) for function in functions() if function.is_charm]
        return self.table("functions", ["Function", "When", "What it does"], rows)

    def explain(self, name: str) -> str:
        if name not in self.explanations:
            sys.exit(f"help: explanations.{self.language}.txt lacks {name}")
        return self.filled(self.explanations[name])

    def messages(self, program: str) -> str:
        file = {"page": "resources/strings.rc", "service": "service/resources/service_strings.rc"}[program]
        own = set(re.findall(r"^\s*(IDS_\w+)", read(file), re.MULTILINE)) - {f.text_id for f in functions()}
        rows = [f'<tr id="m-{name[4:].lower().replace("_", "-")}"><th scope="row">{shown(TEXTS[name][self.language])}</th>'
                f"<td>{self.explain(name)}</td></tr>" for name in self.explanations if name in own]
        return self.table("messages", ["Message", "Meaning"], rows)

    def contents(self) -> str:
        source = (SOURCES / f"{self.language}.html").read_text(encoding="utf-8")
        links = re.findall(r'<h2 id="([\w-]+)">(.*?)</h2>', source)
        items = "\n".join(f'<li><a href="#{place}">{title}</a></li>' for place, title in links)
        label = self.word("Contents")
        return f'<nav aria-label="{label}">\n<h2>{label}</h2>\n<ol>\n{items}\n</ol>\n</nav>'

    def command(self, match: re.Match) -> str:
        verb, _, rest = match[1].partition(" ")
        commands = {
            "text": lambda: html.escape(plain(rest, self.language)),
            "picture": lambda: self.picture(*rest.split("|")),
            "mouse": lambda: self.mouse(*rest.split("|")),
            "when": lambda: WHEN[rest][self.language],
            "messages": lambda: self.messages(rest),
            "functions": self.functions,
            "contents": self.contents,
            "version": lambda: self.version,
        }
        return commands[verb]()

    def filled(self, text: str) -> str:
        text = re.sub(r"\{\{([^}]+)\}\}", self.command, text)
        return re.sub(r"\[\[([^]]+)\]\]", lambda match: self.ui(match[1]), text)

    def make(self) -> str:
        text = self.filled((SOURCES / f"{self.language}.html").read_text(encoding="utf-8").strip())
        return re.sub(r'(\bid="|href="#)(?=[\w-]+")', rf"\g<1>{self.language}-", text)


def main() -> None:
    folder, mice, version = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    shutil.rmtree(folder / "HelpImages", ignore_errors=True)
    (folder / "HelpImages").mkdir(parents=True)
    page = (SOURCES / "frame.html").read_text(encoding="utf-8")
    for language in LANGUAGES:
        page = page.replace(f"{{{{{language}}}}}", Page(language, folder, mice, version).make())
    (folder / "KvnUtilHelp.htm").write_text(page, encoding="utf-8", newline="\n")


if __name__ == "__main__":
    main()
