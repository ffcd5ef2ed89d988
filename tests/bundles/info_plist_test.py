"""The Info.plist files of the extensions."""

import unittest

from darwin_project import DarwinTestCase, EXTENSIONS, LANGUAGES

# Requires a folder in the selection, and no more files than the Finder hands over.
ACTIVATION_RULE = (
    "SUBQUERY(extensionItems, $item, $item.attachments.@count >= 1"
    " AND $item.attachments.@count <= 64"
    " AND SUBQUERY($item.attachments, $file,"
    ' ANY $file.registeredTypeIdentifiers UTI-CONFORMS-TO "public.directory").@count >= 1'
    ").@count == 1"
)


LABELS = {"FinderWarpAction": "Warp to Velmora", "FinderRestoreAction": "Restore from Velmora"}


def expected(extension, *, point, version, build):
    # The whole dictionary, because a further key can hide or move an action.
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

    def test_the_finder_does_not_move_the_selected_folders(self):
        # The Finder expects a replacement for the selection from an editor. These actions return
        # none, so the Finder would move the selected folders into a hidden folder.
        for extension in EXTENSIONS:
            with self.subTest(extension):
                self.assertEqual(
                    self.attributes(extension)["NSExtensionServiceRoleType"],
                    "NSExtensionServiceRoleTypeViewer",
                )

    def test_the_dictionaries_are_complete(self):
        version = self.project.cached("CMAKE_PROJECT_VERSION")
        for extension in EXTENSIONS:
            with self.subTest(extension):
                self.assertEqual(
                    self.project.info_plist(extension),
                    expected(
                        extension, point="com.apple.ui-services", version=version, build=version
                    ),
                )

    def test_the_activation_rule_is_one_line(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                self.assertEqual(
                    self.attributes(extension)["NSExtensionActivationRule"], ACTIVATION_RULE
                )

    def test_flags_are_booleans(self):
        # assertEqual treats 1 as True.
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

    def test_only_the_intended_values_differ(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                chosen = expected(extension, point="com.apple.services", version="3.2", build="417")
                self.assertEqual(
                    self.project.info_plist(extension), chosen | {"LSMinimumSystemVersion": "12.3"}
                )


if __name__ == "__main__":
    unittest.main()
