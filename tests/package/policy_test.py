#!/usr/bin/env python3
"""Checks the administrative template: against its schema, its texts, the documented functions and the documented value.

Usage: policy_test.py, from the tree's root, with packaging/ among the folders of Python's modules
"""
import pathlib
import re
import subprocess
import tempfile
import unittest
from xml.etree import ElementTree

import make_policy

SCHEMA = pathlib.Path(__file__).with_name("policy_definitions.xsd")
NAMESPACE = "{http://schemas.microsoft.com/GroupPolicy/2006/07/PolicyDefinitions}"
LANGUAGES = ["en-US", "ja-JP"]

ARBITRARY_KEY = 37  # needs keys, for which the value has no room


def tags(root: ElementTree.Element, *names: str) -> list[ElementTree.Element]:
    return [element for name in names for element in root.iter(NAMESPACE + name)]


def document(name: str) -> str:
    return pathlib.Path("docs", name).read_text(encoding="utf-8")


def documented_functions() -> dict[int, str]:
    return {int(code): name for code, name in re.findall(r"^\| (\d+) \| (.*) \|$", document("function-codes.md"), re.MULTILINE)}


def functions_of_windows_8_alone() -> range:
    first, last = re.search(r"^- (\d+) to (\d+) are offered only on Windows 8\.0", document("function-codes.md"),
                            re.MULTILINE).groups()
    return range(int(first), int(last) + 1)


class Policy(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        make_policy.make(cls.folder)
        cls.definitions = ElementTree.parse(cls.folder / "KvnMouseUtil.admx").getroot()
        cls.resources = {language: ElementTree.parse(cls.folder / language / "KvnMouseUtil.adml").getroot()
                         for language in LANGUAGES}

    def strings(self, language: str) -> dict[str, str]:
        return {string.get("id"): string.text for string in tags(self.resources[language], "string")}

    def items(self) -> dict[int, str]:
        """The offered functions with the names of their texts."""
        return {int(tags(item, "decimal")[0].get("value")): item.get("displayName") for item in tags(self.definitions, "item")}

    def test_template_follows_its_schema(self):
        for file in ["KvnMouseUtil.admx", *(f"{language}/KvnMouseUtil.adml" for language in LANGUAGES)]:
            result = subprocess.run(["xmllint", "--noout", "--schema", SCHEMA, self.folder / file], capture_output=True, text=True)
            self.assertEqual(result.returncode, 0, result.stderr)

    def test_schema_refuses_a_template_with_a_fault(self):
        template = (self.folder / "KvnMouseUtil.admx").read_text(encoding="utf-8")
        for good, bad in (('class="Machine"', 'class="Computer"'), ("$(string.Function9)", "Function9"),
                          ('<decimal value="9" />', ""), ('<supportedOn ref="SUPPORTED_AllVersions" />', "")):
            self.assertIn(good, template)
            file = self.folder / "faulty.admx"
            file.write_text(template.replace(good, bad), encoding="utf-8")
            result = subprocess.run(["xmllint", "--noout", "--schema", SCHEMA, file], capture_output=True)
            self.assertNotEqual(result.returncode, 0, bad)

    def test_every_text_is_there_in_both_languages_and_none_is_left_over(self):
        definitions = ElementTree.tostring(self.definitions, encoding="unicode")
        used = set(re.findall(r"\$\(string\.(\w+)\)", definitions))
        for language in LANGUAGES:
            strings = self.strings(language)
            self.assertEqual(strings.keys(), used, language)
            self.assertEqual([name for name, text in strings.items() if not text.strip()], [])
            self.assertEqual(len(tags(self.resources[language], "string")), len(strings))

    def test_presentation_is_there_in_both_languages_and_shows_the_element(self):
        [policy] = tags(self.definitions, "policy")
        [element] = tags(self.definitions, "enum")
        for language in LANGUAGES:
            [presentation] = tags(self.resources[language], "presentation")
            self.assertEqual(policy.get("presentation"), f"$(presentation.{presentation.get('id')})")
            [chooser] = tags(presentation, "dropdownList")
            self.assertEqual(chooser.get("refId"), element.get("id"))
            self.assertEqual(list(self.items())[int(chooser.get("defaultItem"))], 9)
            self.assertEqual(chooser.get("noSort"), "true")

    def test_references_name_what_the_template_defines(self):
        defined = {element.get("name") for element in tags(self.definitions, "category", "definition")}
        referred = {element.get("ref") for element in tags(self.definitions, "parentCategory", "supportedOn") if element.get("ref")}
        self.assertEqual(referred - defined, set())

    def test_policy_sets_the_documented_value_for_the_machine(self):
        [policy], [element] = tags(self.definitions, "policy"), tags(self.definitions, "enum")
        value, key = re.search(r"^`(\w+)` \(REG_DWORD\) under `HKEY_LOCAL_MACHINE\\(.*?)`", document("registry.md"),
                               re.MULTILINE).groups()
        self.assertEqual(policy.get("class"), "Machine")
        self.assertEqual((policy.get("key"), element.get("valueName")), (key, value))
        self.assertEqual(element.get("required"), "true")

    def test_policy_offers_what_the_page_offers_for_the_wheel_button_but_arbitrary_keys(self):
        offered = documented_functions().keys() - {0, ARBITRARY_KEY, *functions_of_windows_8_alone()}
        self.assertEqual(self.items().keys(), offered)

    def test_functions_have_the_names_that_the_page_shows(self):
        functions, english = documented_functions(), self.strings("en-US")
        for code, reference in self.items().items():
            self.assertEqual(reference, f"$(string.Function{code})")
            self.assertEqual(english[f"Function{code}"], functions[code])
        self.assertEqual(self.strings("ja-JP")["Function1"], "左クリック")

    def test_categories_and_namespace_are_our_own(self):
        [target] = tags(self.definitions, "target")
        self.assertTrue(target.get("namespace").startswith("KORVEN."))
        self.assertEqual(tags(self.definitions, "using"), [])


unittest.main(verbosity=2)
