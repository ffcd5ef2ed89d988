"""What the system is told about the extensions."""

import unittest

from darwin_project import DarwinTestCase, EXTENSIONS, LANGUAGES

# A folder among what is selected, which must not be more than the Finder hands over.
ACTIVATION_RULE = (
    "SUBQUERY(extensionItems, $item, $item.attachments.@count >= 1"
    " AND $item.attachments.@count <= 64"
    " AND SUBQUERY($item.attachments, $file,"
    ' ANY $file.registeredTypeIdentifiers UTI-CONFORMS-TO "public.directory").@count >= 1'
    ").@count == 1"
)


LABELS = {"FinderWarpAction": "Warp to Velmora", "FinderRestoreAction": "Restore from Velmora"}


def expected(extension, *, point, version, build):
    # The whole dictionary: a key too many can hide an action or put it elsewhere.
    label = LABELS[extension]
    return {
        "CFBundleIdentifier": f"io.tolvane.Velmora.{extension}",
        "CFBundleExecutable": extension,
        "CFBundleName": label,
        "CFBundleDisplayName": label,
        "CFBundlePackageType": "XPC!",
        "CFBundleInfoDictionaryVersion": "6.0",
        "CFBundleVersion": build,
        "CFBundleShortVersionString": version,
        "CFBundleSupportedPlatforms": ["MacOSX"],
        "CFBundleDevelopmentRegion": "en",
        "CFBundleLocalizations": list(LANGUAGES),
        "LSMinimumSystemVersion": "11.0",
        "LSUIElement": True,
        "NSExtension": {
            "NSExtensionPointIdentifier": point,
            "NSExtensionPrincipalClass": "VelmoraFinderActionExtension",
            "NSExtensionAttributes": {
                "NSExtensionActivationRule": ACTIVATION_RULE,
                "NSExtensionServiceRoleType": "NSExtensionServiceRoleTypeViewer",
                "NSExtensionServiceAllowsFinderPreviewItem": True,
                "NSExtensionServiceFinderPreviewLabel": label,
                "NSExtensionServiceFinderPreviewIconName": "NSActionTemplate",
            },
        },
    }


class InfoPlistTest(DarwinTestCase):
    def attributes(self, extension):
        return self.project.info_plist(extension)["NSExtension"]["NSExtensionAttributes"]

    def test_nobody_loses_the_selected_folders(self):
        # To an editor the Finder looks for a replacement of what was selected. Since there is none,
        # it moves the selected folders into a hidden folder and leaves them there.
        for extension in EXTENSIONS:
            with self.subTest(extension):
                self.assertEqual(
                    self.attributes(extension)["NSExtensionServiceRoleType"],
                    "NSExtensionServiceRoleTypeViewer",
                )

    def test_the_extensions_are_described_whole(self):
        version = self.project.cached("CMAKE_PROJECT_VERSION")
        for extension in EXTENSIONS:
            with self.subTest(extension):
                self.assertEqual(
                    self.project.info_plist(extension),
                    expected(
                        extension, point="com.apple.ui-services", version=version, build=version
                    ),
                )

    def test_the_rule_comes_through_as_one_line(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                self.assertEqual(
                    self.attributes(extension)["NSExtensionActivationRule"], ACTIVATION_RULE
                )

    def test_flags_are_no_numbers(self):
        # assertEqual takes 1 for True.
        for extension in EXTENSIONS:
            with self.subTest(extension):
                self.assertIs(self.project.info_plist(extension)["LSUIElement"], True)
                self.assertIs(
                    self.attributes(extension)["NSExtensionServiceAllowsFinderPreviewItem"], True
                )


class ChosenInfoPlistTest(DarwinTestCase):
    options = {
        "VELMORA_EXTENSION_POINT": "com.apple.services",
        "VELMORA_APPLICATION_VERSION": "3.2",
        "VELMORA_APPLICATION_BUILD": "417",
        "CMAKE_OSX_DEPLOYMENT_TARGET": "12.3",
    }

    def test_the_choices_and_nothing_else_differ(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                chosen = expected(extension, point="com.apple.services", version="3.2", build="417")
                self.assertEqual(
                    self.project.info_plist(extension), chosen | {"LSMinimumSystemVersion": "12.3"}
                )


if __name__ == "__main__":
    unittest.main()
