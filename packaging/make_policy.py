#!/usr/bin/env python3
"""Makes the administrative template from policy/: an ADMX file with its ADML files in English and Japanese.

The functions come from the catalogue that the page offers, key and value from the model's constants, texts from the page.

Usage: make_policy.py FOLDER
"""
import pathlib
import re
import sys
from xml.sax.saxutils import escape

PACKAGING = pathlib.Path(__file__).resolve().parent
ROOT = PACKAGING.parent
TEMPLATES = PACKAGING / "policy"
ADML = "KvnMouseUtil.adml"
LANGUAGES = {"en-US": 0, "ja-JP": 1}  # with the place of their texts in UI_TEXT

CATALOGUE = "model/function_catalogue.h"

Functions = list[tuple[int, str]]  # codes with the ids of their texts, in the order of the lists


def read(path: str) -> str:
    return (ROOT / path).read_text(encoding="utf-8")


def number_constants() -> dict[str, int]:
    return {name: int(value) for name, value in re.findall(r"constexpr FunctionCode (\w+) = (\d+);", read(CATALOGUE))}


def offered_functions() -> Functions:
    """What the page offers for the wheel button on today's Windows, without "Arbitrary key": the value cannot hold keys."""
    numbers = number_constants()
    rows = [(int(numbers.get(code, code)), text) for text, code in re.findall(r"\{(IDS_\w+), (\w+)\},", read(CATALOGUE))]
    charms = range(numbers["kFirstCharmFunction"], numbers["kLastCharmFunction"] + 1)
    left_out = {numbers["kFunctionNone"], numbers["kFunctionArbitraryKey"], *charms}
    return [row for row in rows if row[0] not in left_out]


def page_texts(language: int) -> dict[str, str]:
    """Texts by their ids. Those outside UI_TEXT are the same in all languages."""
    texts = read("resources/strings.rc")
    same = dict(re.findall(r'^ +(IDS_\w+) "(.*)"', texts, re.MULTILINE))
    own = {row[0]: row[1 + language] for row in re.findall(r'^ +(IDS_\w+) UI_TEXT\("(.*)", "(.*)"\)', texts, re.MULTILINE)}
    return same | own


def wide_constant(name: str) -> str:
    value = re.search(rf'{name}\[\] = L"(.*)";', read("model/registry_values.h")).group(1)
    return value.replace("\\\\", "\\")


def lines(elements: list[str], template: str, mark: str) -> str:
    """One element a line, each indented as the mark that they replace."""
    indent = re.search(rf"^( *){mark}", template, re.MULTILINE).group(1)
    return f"\n{indent}".join(elements)


def filled_in(template: str, values: dict[str, str]) -> str:
    return re.sub(r"@(\w+)@", lambda mark: values[mark.group(1)], template)


def admx(functions: Functions) -> str:
    template = (TEMPLATES / "KvnMouseUtil.admx").read_text(encoding="utf-8")
    items = [f'<item displayName="$(string.Function{code})"><value><decimal value="{code}" /></value></item>'
             for code, _ in functions]
    return filled_in(template, {"DefaultKey": wide_constant("kDefaultBindKey"),
                                "DefaultValue": wide_constant("kDefaultCenterValue"),
                                "Items": lines(items, template, "@Items@")})


def adml(functions: Functions, language: str) -> str:
    template = (TEMPLATES / language / ADML).read_text(encoding="utf-8")
    texts = {code: escape(page_texts(LANGUAGES[language])[text]) for code, text in functions}
    strings = [f'<string id="Function{code}">{text}</string>' for code, text in texts.items()]
    natural = number_constants()["kFunctionAutoScroll"]
    return filled_in(template, {"NaturalFunction": texts[natural], "NaturalItem": str(list(texts).index(natural)),
                                "Strings": lines(strings, template, "@Strings@")})


def write(path: pathlib.Path, text: str) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8", newline="\r\n")


def make(folder: pathlib.Path) -> None:
    functions = offered_functions()
    write(folder / "KvnMouseUtil.admx", admx(functions))
    for language in LANGUAGES:
        write(folder / language / ADML, adml(functions, language))


if __name__ == "__main__":
    make(pathlib.Path(sys.argv[1]))
