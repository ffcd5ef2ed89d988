"""The texts in five languages. One fault in a table makes all of its texts English."""

import itertools
import os
import pathlib
import subprocess
import tempfile
import unittest

import strings_table
from darwin_project import DarwinTestCase, EXTENSIONS, LANGUAGES, SOURCE

SFPARSE = os.environ.get("VELMORA_SFPARSE", "sfparse")

LABEL_KEYS = {"CFBundleDisplayName", "CFBundleName", "NSExtensionServiceFinderPreviewLabel"}
MESSAGE_KEYS = {
    f"consumer.finder-service.error.{what}"
    for what in (
        "choose-warp-folders",
        "choose-warped-item",
        "warp-handoff-failed",
        "restore-handoff-failed",
    )
}
LABELS = {
    "FinderWarpAction": {
        "en": "Warp to Velmora",
        "ja": "Velmora に Warp",
        "zh-Hans": "Warp 到 Velmora",
        "es": "Warp a Velmora",
        "pt-BR": "Warp para o Velmora",
    },
    "FinderRestoreAction": {
        "en": "Restore from Velmora",
        "ja": "Velmora から復元",
        "zh-Hans": "从 Velmora 恢复",
        "es": "Restaurar desde Velmora",
        "pt-BR": "Restaurar do Velmora",
    },
}
IN_EACH_LANGUAGE = tuple(itertools.product(EXTENSIONS, LANGUAGES))


def sfparse(path):
    """The exit status and the output of GNUstep's reader for a table."""
    # GNUstep's reader does not detect UTF-8.
    environment = {**os.environ, "LC_ALL": "C.UTF-8"}
    return subprocess.run(
        [SFPARSE, str(path)],
        env=environment,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        check=False,
    )


class StringsTest(DarwinTestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        for extension in EXTENSIONS:
            cls.project.build(*cls.project.resource_outputs(extension))

    def table_file(self, extension, language, name):
        resources = self.project.bundle(extension) / "Contents/Resources"
        return resources / f"{language}.lproj" / name

    def table(self, extension, language, name):
        return strings_table.parse(self.table_file(extension, language, name).read_bytes())

    def test_each_language_has_the_labels_of_the_action(self):
        for extension, language in IN_EACH_LANGUAGE:
            with self.subTest(extension=extension, language=language):
                label = LABELS[extension][language]
                self.assertEqual(
                    self.table(extension, language, "InfoPlist.strings"),
                    {key: label for key in LABEL_KEYS},
                )

    def test_the_english_labels_are_those_of_the_info_plist(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                plist = self.project.info_plist(extension)
                attributes = plist["NSExtension"]["NSExtensionAttributes"]
                described = {key: (plist | attributes)[key] for key in LABEL_KEYS}
                self.assertEqual(self.table(extension, "en", "InfoPlist.strings"), described)

    def test_each_language_has_every_message(self):
        for extension, language in IN_EACH_LANGUAGE:
            with self.subTest(extension=extension, language=language):
                table = self.table(extension, language, "Localizable.strings")
                self.assertEqual(set(table), MESSAGE_KEYS)
                for key, message in table.items():
                    self.assertTrue(message.strip(), key)

    def test_each_language_has_messages_of_its_own(self):
        for extension in EXTENSIONS:
            tables = [self.table(extension, language, "Localizable.strings")
                      for language in LANGUAGES]
            for key in MESSAGE_KEYS:
                with self.subTest(extension=extension, key=key):
                    self.assertEqual(len({table[key] for table in tables}), len(LANGUAGES))

    def test_another_reader_understands_every_table(self):
        for extension, language in IN_EACH_LANGUAGE:
            for name in ("InfoPlist.strings", "Localizable.strings"):
                with self.subTest(extension=extension, language=language, table=name):
                    said = sfparse(self.table_file(extension, language, name))
                    self.assertEqual(said.returncode, 0, said.stdout)

    def test_the_messages_are_copies_of_those_that_linux_reads(self):
        for extension, language in IN_EACH_LANGUAGE:
            with self.subTest(extension=extension, language=language):
                source = SOURCE / "resources" / f"{language}.lproj" / "Localizable.strings"
                copy = self.table_file(extension, language, "Localizable.strings")
                self.assertEqual(copy.read_bytes(), source.read_bytes())

    def test_every_folder_of_the_resources_is_a_language(self):
        self.assertEqual(
            {path.name for path in (SOURCE / "resources").iterdir() if path.is_dir()},
            {f"{language}.lproj" for language in LANGUAGES},
        )


class StringsTableTest(unittest.TestCase):
    """Both readers refuse faulty tables. A reader that accepts everything proves nothing."""

    def test_a_table_is_read(self):
        table = strings_table.parse('/* "a" = "x"; */ "a" = "é \\"b\\"";\n// c\n"d"="";'.encode())
        self.assertEqual(table, {"a": 'é "b"', "d": ""})

    def test_faults_are_found(self):
        faults = {
            "byte-order mark": b'\xef\xbb\xbf"a" = "b";',
            "not UTF-8": b'"a" = "\xff";',
            "UTF-16": '"a" = "b";'.encode("utf-16"),
            "no semicolon": b'"a" = "b"\n"c" = "d";',
            "no semicolon at the end": b'"a" = "b"',
            "no value": b'"a" = ;',
            "only a key": b'"a";',
            "key without quotes": b'a = "b";',
            "value without quotes": b'"a" = b;',
            "quote in a value": b'"a" = "b"c";',
            "text without an end": b'"a" = "b;',
            "comment without an end": b'"a" = "b"; /* c',
            "unknown escape": b'"a" = "\\q";',
            "key given twice": b'"a" = "b"; "a" = "c";',
        }
        for name, data in faults.items():
            with self.subTest(name), self.assertRaises(strings_table.Fault):
                strings_table.parse(data)

    def test_the_other_reader_finds_faults(self):
        with tempfile.TemporaryDirectory() as scratch:
            path = pathlib.Path(scratch, "Localizable.strings")
            for data in ('"a" = "b"\n"c" = "d";', '"a" = "b', '"a" = "b"c";'):
                with self.subTest(data):
                    path.write_text(data, encoding="utf-8")
                    self.assertNotEqual(sfparse(path).returncode, 0)


if __name__ == "__main__":
    unittest.main()
