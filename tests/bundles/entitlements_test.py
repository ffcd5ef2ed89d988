"""The entitlements of the extensions in the sandbox."""

import plistlib
import unittest

from darwin_project import DarwinTestCase, EXTENSIONS

# The whole dictionary, because users or App Review must agree to each further entitlement.
GRANTED = {
    # The system starts no extension without the sandbox.
    "com.apple.security.app-sandbox": True,
    "com.apple.security.application-groups": ["group.io.tolvane.Velmora"],
    "com.apple.security.files.user-selected.read-only": True,
}
EXCEPTION = {"com.apple.security.temporary-exception.files.absolute-path.read-only": ["/"]}


class EntitlementsTestCase(DarwinTestCase):
    def entitlements(self, extension):
        path = self.project.directory / "entitlements" / f"{extension}.entitlements"
        with open(path, "rb") as file:
            return plistlib.load(file)

    def assert_granted(self, expected):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                granted = self.entitlements(extension)
                self.assertEqual(granted, expected)
                # assertEqual treats 1 as True.
                for key in GRANTED:
                    self.assertIs(type(granted[key]), type(GRANTED[key]))


class EntitlementsTest(EntitlementsTestCase):
    def test_markers_of_folders_that_are_not_selected_can_be_read(self):
        self.assert_granted(GRANTED | EXCEPTION)

    def test_there_is_a_file_for_each_extension_and_no_other(self):
        directory = self.project.directory / "entitlements"
        self.assertEqual(
            {path.name for path in directory.iterdir()},
            {f"{extension}.entitlements" for extension in EXTENSIONS},
        )

    def test_no_comment_stands_in_what_codesign_reads(self):
        # The kernel reads entitlements with a parser that does not support all of XML.
        for extension in EXTENSIONS:
            with self.subTest(extension):
                path = self.project.directory / "entitlements" / f"{extension}.entitlements"
                self.assertNotIn("<!--", path.read_text(encoding="utf-8"))


class AppStoreEntitlementsTest(EntitlementsTestCase):
    options = {"VELMORA_APP_STORE": "ON"}

    def test_there_is_no_exception_that_app_review_rejects(self):
        self.assert_granted(GRANTED)


if __name__ == "__main__":
    unittest.main()
