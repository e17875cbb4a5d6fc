#!/usr/bin/env python3
"""The help page: well-formed, complete in both languages, and without a broken link or picture.

Usage: help_test.py ROOT
"""
import html.parser
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

sys.path.append("/usr/lib/python3/dist-packages")  # Debian's libraries, if this is not Debian's Python
import html5lib  # noqa: E402

ROOT = pathlib.Path(sys.argv[1])
LANGUAGES = ("en", "ja")
LARGEST_FOLDER = 400_000  # bytes of the page and its pictures
NO_MESSAGES = {"IDS_SERVICE_ABOUT", "IDS_USAGE", "IDS_TRY_EXPLANATION"}
STRING = re.compile(r'^\s*(IDS_\w+)\s+(?:UI_TEXT\(\s*"((?:[^"\\]|\\.)*)"\s*,\s*"((?:[^"\\]|\\.)*)"\s*\)|"([^"]*)")',
                    re.MULTILINE)
XHTML = "{http://www.w3.org/1999/xhtml}"


def strings(file: str) -> dict[str, dict[str, str]]:
    found = STRING.findall((ROOT / file).read_text(encoding="utf-8"))
    return {name: {"en": english or both, "ja": japanese or both} for name, english, japanese, both in found}


def is_message(name: str, text: str) -> bool:
    """A sentence, perhaps followed by a file's name."""
    return name not in NO_MESSAGES and bool(re.search(r"[.?]( File: %1)?$", text) or text.endswith(": %1"))


def messages() -> dict[str, dict[str, str]]:
    own = {**strings("resources/strings.rc"), **strings("service/resources/service_strings.rc")}
    prefixes = ("IDS_OPTION_", "IDS_TRAY_", "IDS_TRY_", "IDS_MENU_", "IDS_FILE_TYPE_")
    chosen = {name: texts for name, texts in own.items() if is_message(name, texts["en"])}
    return {name: texts for name, texts in chosen.items() if not name.startswith(prefixes)}


def shown(text: str) -> str:
    return re.sub(r"%[12]", "…", text).replace("%d", "100")


def plain(element) -> str:
    return " ".join("".join(element.itertext()).split())


def documented_functions() -> list[str]:
    """The names of docs/function-codes.md, which its own test compares with the catalogue."""
    document = (ROOT / "docs/function-codes.md").read_text(encoding="utf-8")
    return [name for name in re.findall(r"^\| \d+ \| (.+) \|$", document, re.MULTILINE) if name != "(blank)"]


class Help(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.work.name)
        mice = cls.folder / "mice"
        mice.mkdir()
        for number in range(1, 8):  # the build draws them
            (mice / f"mouse-{number}.png").write_bytes((ROOT / "docs/images/keys.png").read_bytes())
        maker = ROOT / "tools/help_page/make_help.py"
        subprocess.run([sys.executable, maker, cls.folder, mice, "1.2.3"], check=True)
        cls.source = (cls.folder / "KvnUtilHelp.htm").read_text(encoding="utf-8")
        parser = html5lib.HTMLParser(strict=False)
        cls.page = parser.parse(cls.source)
        cls.faults = parser.errors

    @classmethod
    def tearDownClass(cls):
        cls.work.cleanup()

    def all(self, tag: str, within=None) -> list:
        return list((self.page if within is None else within).iter(XHTML + tag))

    def article(self, language: str):
        return next(each for each in self.all("article") if each.get("id") == language)

    def rows(self, language: str, kind: str) -> dict[str, str]:
        tables = [table for table in self.all("table", self.article(language)) if table.get("class") == kind]
        rows = [row for table in tables for row in self.all("tr", table) if len(row) > 1]
        return {plain(row[0]): plain(row[-1]) for row in rows}

    def test_is_well_formed(self):
        self.assertEqual(self.faults, [])

    def test_closes_every_element_that_it_opens(self):
        checker = Balance()
        checker.feed(self.source)
        self.assertEqual(checker.faults, [])
        self.assertEqual(checker.open, [])

    def test_leaves_no_mark_of_its_making(self):
        for mark in ("[[", "]]", "{{", "}}", "%1", "%2", "%d"):
            with self.subTest(mark=mark):
                self.assertNotIn(mark, re.sub(r"<(style|script)>.*?</\1>", "", self.source, flags=re.DOTALL))

    def test_links_and_places_agree(self):
        places = [element.get("id") for element in self.page.iter() if element.get("id")]
        self.assertEqual(len(places), len(set(places)))
        links = [link.get("href") for link in self.all("a")]
        self.assertGreater(len(links), 50)
        for link in links:
            with self.subTest(link=link):
                self.assertTrue(link.startswith("#"), "the page must not need other pages")
                self.assertIn(link[1:], places)

    def test_links_stay_in_their_language(self):
        for language in LANGUAGES:
            for link in self.all("a", self.article(language)):
                with self.subTest(link=link.get("href")):
                    self.assertTrue(link.get("href").startswith(f"#{language}-") or link.get("hreflang"))

    def test_both_languages_have_the_same_places(self):
        places = {}
        for language in LANGUAGES:
            ids = [element.get("id") for element in self.article(language).iter() if element.get("id")]
            places[language] = [name.removeprefix(f"{language}-") for name in ids[1:]]
        self.assertEqual(places["en"], places["ja"])

    def test_every_picture_is_there_and_is_used(self):
        sources = {image.get("src") for image in self.all("img")}
        files = {f"HelpImages/{path.name}" for path in (self.folder / "HelpImages").iterdir()}
        self.assertEqual(sources, files)

    def test_every_picture_says_what_it_shows(self):
        for image in self.all("img"):
            with self.subTest(picture=image.get("src")):
                self.assertGreater(len(image.get("alt", "")), 2)

    def test_languages_show_the_same_pictures(self):
        pictures = [[re.sub("-(en|ja)", "", image.get("src")) for image in self.all("img", self.article(language))]
                    for language in LANGUAGES]
        self.assertEqual(*pictures)

    def test_headings_go_down_one_step_at_a_time(self):
        for language in LANGUAGES:
            levels = [int(each.tag[-1]) for each in self.article(language).iter() if re.fullmatch(XHTML + "h[1-6]", each.tag)]
            self.assertEqual(levels[0], 1)
            self.assertEqual(levels.count(1), 1)
            for before, after in zip(levels, levels[1:]):
                self.assertLessEqual(after, before + 1)

    def test_names_the_language_of_each_part(self):
        self.assertEqual([each.get("lang") for each in self.all("article")], list(LANGUAGES))
        self.assertEqual(self.all("html")[0].get("lang") if self.all("html") else self.page.get("lang"), "en")

    def test_every_function_is_explained(self):
        texts = strings("resources/strings.rc")
        for language in LANGUAGES:
            rows = self.rows(language, "functions")
            names = {texts_of["en"]: texts_of[language] for name, texts_of in texts.items() if "_FUNCTION_" in name}
            self.assertGreater(len(documented_functions()), 40)
            for function in documented_functions():
                with self.subTest(function=function, language=language):
                    self.assertTrue(rows.get(names[function]))

    def test_every_message_is_explained(self):
        self.assertGreater(len(messages()), 30)
        for language in LANGUAGES:
            rows = self.rows(language, "messages")
            for name, texts in messages().items():
                with self.subTest(message=name, language=language):
                    self.assertTrue(rows.get(shown(texts[language])), texts[language])

    def test_every_item_of_the_menu_is_explained(self):
        items = [texts for name, texts in strings("service/resources/service_strings.rc").items() if name.startswith("IDS_MENU_")]
        self.assertGreater(len(items), 5)
        for language in LANGUAGES:
            names = {plain(span) for span in self.all("span", self.article(language)) if span.get("class") == "ui"}
            for item in items:
                name = re.sub(r"\(&\w\)|&", "", item[language])
                with self.subTest(item=name):
                    self.assertIn(name, names)

    def test_explains_the_same_in_both_languages(self):
        names = [re.findall(r"^(IDS_\w+): ", (ROOT / f"service/help/explanations.{language}.txt").read_text(encoding="utf-8"),
                            re.MULTILINE) for language in LANGUAGES]
        self.assertEqual(*names)
        texts = {**strings("resources/strings.rc"), **strings("service/resources/service_strings.rc")}
        self.assertEqual([name for name in names[0] if name not in texts], [], "the programs have no such text")

    def test_says_how_to_report(self):
        for language in LANGUAGES:
            text = plain(self.article(language))
            for option in ("--log", "--status"):
                self.assertIn(option, text)

    def test_is_small(self):
        pictures = sum(path.stat().st_size for path in (ROOT / "docs/images").rglob("*.png"))
        self.assertLess(pictures + len(self.source.encode()), LARGEST_FOLDER)


class Balance(html.parser.HTMLParser):
    """html5lib accepts a missing closing tag; a browser then guesses."""

    VOID = {"meta", "img", "br", "link", "input", "hr"}

    def __init__(self):
        super().__init__()
        self.open, self.faults = [], []

    def handle_starttag(self, tag, attrs):
        if tag not in self.VOID:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.faults.append((tag, self.getpos()))


unittest.main(argv=sys.argv[:1])
