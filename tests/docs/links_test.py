#!/usr/bin/env python3
"""Every relative link and picture in the tree's Markdown files has a target.

Usage: links_test.py ROOT
"""
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(sys.argv[1])
FENCED = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
CODE = re.compile(r"`[^`\n]*`")
LINK = re.compile(r"\]\(\s*([^)\s]+)\s*\)")
FOREIGN = re.compile(r"^[a-z]+:")


def documents() -> list[pathlib.Path]:
    return [path for path in sorted(ROOT.rglob("*.md")) if path.relative_to(ROOT).parts[0] not in ("build", ".git")]


def prose(document: str) -> str:
    return CODE.sub("", FENCED.sub("", document))


def anchors(document: str) -> set[str]:
    """The names by which the document's headings can be linked."""
    headings = re.findall(r"^#+ +(.+)$", FENCED.sub("", document), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def fault_of(document: pathlib.Path, link: str) -> str | None:
    path, _, anchor = link.partition("#")
    target = (document.parent / path) if path else document
    if not target.exists():
        return f"{link}: there is no such file"
    if anchor and anchor not in anchors(target.read_text()):
        return f"{link}: there is no such heading"
    return None


class Links(unittest.TestCase):
    def test_point_to_something(self):
        checked = 0
        for document in documents():
            for link in LINK.findall(prose(document.read_text())):
                if FOREIGN.match(link):
                    continue
                checked += 1
                with self.subTest(document=str(document.relative_to(ROOT)), link=link):
                    self.assertIsNone(fault_of(document, link))
        self.assertGreater(checked, 20)

    def test_every_document_of_docs_is_linked_from_another_one(self):
        linked = set()
        for document in documents():
            for link in LINK.findall(prose(document.read_text())):
                linked.add((document.parent / link.partition("#")[0]).resolve())
        for document in (ROOT / "docs").glob("*.md"):
            if document.name != "README.md":
                with self.subTest(document=document.name):
                    self.assertIn(document.resolve(), linked)


unittest.main(argv=sys.argv[:1])
