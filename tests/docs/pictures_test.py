#!/usr/bin/env python3
"""The documents' pictures exist, are made by scripts, and show every dialog.

Usage: pictures_test.py ROOT
"""
import pathlib
import re
import struct
import sys
import unittest

ROOT = pathlib.Path(sys.argv[1])
IMAGES = ROOT / "docs/images"
TOUR = (ROOT / "docs/tour.md").read_text()
README = (ROOT / "README.md").read_text()
SERVICE = (ROOT / "docs/service.md").read_text()
SCRIPT = (ROOT / "scripts/pictures").read_text()
CURVE_SCRIPT = (ROOT / "scripts/flying-curve").read_text()

MARKS_AND_PICTURE = re.compile(r"((?:<!-- IDD_\w+ -->\n)+)!\[[^]\n]+\]\((\S+)\)")
SMALLEST = 100  # pixels; every dialog is larger


def dialogs() -> set[str]:
    templates = (ROOT / "resources/dialogs.rc").read_text()
    return set(re.findall(r"^(\w+) DIALOG(?:EX)? ", templates, re.MULTILINE))


def pictures_of_tour() -> dict[str, pathlib.Path]:
    """The picture below the mark of each dialog."""
    pictures = {}
    for marks, picture in MARKS_AND_PICTURE.findall(TOUR):
        for dialog in re.findall(r"IDD_\w+", marks):
            pictures[dialog] = ROOT / "docs" / picture
    return pictures


def size_of(png: pathlib.Path) -> tuple[int, int]:
    head = png.read_bytes()[:24]
    if head[:8] != b"\x89PNG\r\n\x1a\n":
        return 0, 0
    return struct.unpack(">II", head[16:])


class Pictures(unittest.TestCase):
    def test_tour_shows_every_dialog(self):
        self.assertGreaterEqual(len(dialogs()), 10)
        self.assertEqual(set(pictures_of_tour()), dialogs())

    def test_tour_marks_nothing_without_a_picture(self):
        self.assertEqual(len(re.findall(r"<!-- IDD_\w+ -->", TOUR)), len(pictures_of_tour()))

    def test_all_are_pictures(self):
        for dialog, picture in pictures_of_tour().items():
            with self.subTest(dialog=dialog):
                self.assertTrue(picture.exists(), f"{picture} is missing: run scripts/pictures")
                self.assertGreaterEqual(min(size_of(picture)), SMALLEST)

    def test_one_script_makes_all_of_them(self):
        made = set(re.findall(r'"\$images/([\w-]+\.png)"', SCRIPT))
        for folder in (IMAGES, IMAGES / "ja"):
            with self.subTest(folder=folder.name):
                self.assertEqual({picture.name for picture in folder.glob("*.png")}, made)

    def test_drawings_have_their_script_and_are_shown(self):
        for drawing in IMAGES.glob("*.svg"):
            with self.subTest(drawing=drawing.name):
                self.assertIn(f"docs/images/{drawing.name}", CURVE_SCRIPT)
                self.assertIn(f"(images/{drawing.name})", SERVICE)

    def test_every_one_is_shown(self):
        for picture in IMAGES.glob("*.png"):
            with self.subTest(picture=picture.name):
                self.assertTrue(f"(images/{picture.name})" in TOUR or f"(docs/images/{picture.name})" in README)

    def test_readme_opens_with_the_story(self):
        first_picture = re.search(r"!\[[^]\n]+\]\((\S+)\)", README)
        self.assertEqual(first_picture[1], "docs/images/story.png")
        self.assertLess(README[: first_picture.start()].count("\n"), 10)


unittest.main(argv=sys.argv[:1])
