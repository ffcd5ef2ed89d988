"""The targets on a Mac, and their settings in Xcode."""

import unittest

from darwin_project import DarwinTestCase, EXTENSIONS, SOURCE, words_after

LIBRARIES = {
    f"velmora_{name}"
    for name in (
        "extension",
        "handoff",
        "json",
        "localization",
        "platform",
        "platform_macos",
        "platform_posix",
        "resolution",
        "text",
        "warpshared",
    )
}


class TargetsTestCase(DarwinTestCase):
    def named(self, *types):
        targets = self.project.targets()
        return {name for name, properties in targets.items() if properties["TYPE"] in types}


class TargetsTest(TargetsTestCase):
    def test_libraries_are_those_for_macos(self):
        self.assertEqual(
            self.named("STATIC_LIBRARY", "SHARED_LIBRARY", "MODULE_LIBRARY"), LIBRARIES
        )

    def test_the_two_extensions_are_the_only_programs(self):
        self.assertEqual(self.named("EXECUTABLE"), set(EXTENSIONS))

    def test_xcode_builds_extensions_that_stay_in_the_sandbox(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                described = self.project.targets()[extension]
                entitlements = self.project.directory / f"entitlements/{extension}.entitlements"
                self.assertTrue(entitlements.is_file())
                self.assertEqual(
                    described,
                    {
                        "TYPE": "EXECUTABLE",
                        "XCODE_PRODUCT_TYPE": "com.apple.product-type.app-extension",
                        "XCODE_EXPLICIT_FILE_TYPE": "wrapper.app-extension",
                        "XCODE_ATTRIBUTE_PRODUCT_BUNDLE_IDENTIFIER":
                            f"io.tolvane.Velmora.{extension}",
                        "XCODE_ATTRIBUTE_CODE_SIGN_ENTITLEMENTS": str(entitlements),
                        # Without this setting, Xcode removes the sandbox from the entitlements.
                        "XCODE_ATTRIBUTE_ENABLE_APP_SANDBOX": "YES",
                        "XCODE_ATTRIBUTE_ENABLE_HARDENED_RUNTIME": "YES",
                        "XCODE_ATTRIBUTE_APPLICATION_EXTENSION_API_ONLY": "YES",
                        "XCODE_ATTRIBUTE_CLANG_ENABLE_OBJC_ARC": "NO",
                        "XCODE_ATTRIBUTE_SKIP_INSTALL": "YES",
                    },
                )


class DevelopmentTest(TargetsTestCase):
    preset = "mac-dev"

    def test_every_test_of_portable_code_is_there(self):
        programs = self.named("EXECUTABLE")
        for folder in ("extension", "handoff", "json", "localization", "platform", "resolution",
                       "text", "warpshared"):
            with self.subTest(folder):
                self.assertIn(f"{folder}_test", programs)
        self.assertLessEqual(set(EXTENSIONS), programs)

    def test_no_target_needs_linux(self):
        folders = ("src/platform/linux", "tests/platform/linux", "tests/process", "apps/common",
                   "apps/velmora-finder-action", "apps/velmora-warp-inspect", "tests/gnustep")
        for source, _, command in self.project.compilations():
            with self.subTest(source.name):
                for folder in folders:
                    self.assertNotIn(SOURCE / folder, source.parents)
                words = " ".join(command)
                self.assertNotIn("glib", words)
                self.assertNotIn("GNUstep", words)

    def test_everything_is_built_for_this_machine_only(self):
        for source, _, command in self.project.compilations():
            with self.subTest(source.name):
                self.assertEqual(words_after(command, "-arch"), [])


class HostTest(TargetsTestCase):
    options = {"VELMORA_BUILD_EXTENSION_HOST": "ON"}

    def test_each_build_copies_the_extensions_into_it(self):
        embedding = "apps/macos/host/CMakeFiles/velmora_embedded_extensions.util"
        command = " ".join(self.project.command(embedding))
        for extension in EXTENSIONS:
            with self.subTest(extension):
                bundle = self.project.bundle(extension)
                plugins = self.project.directory / "bin/Velmora.app/Contents/PlugIns"
                copy = f"-E copy_directory {bundle} {plugins}/{extension}.appex "
                self.assertIn(copy, f"{command} ")

    def test_it_has_the_properties_of_the_application(self):
        self.assertIn("velmora_extension_host", self.named("EXECUTABLE"))
        plist = self.project.info_plist_below("bin/Velmora.app")
        self.assertEqual(plist["CFBundleIdentifier"], "io.tolvane.Velmora")
        self.assertEqual(plist["CFBundlePackageType"], "APPL")
        for extension in EXTENSIONS:
            with self.subTest(extension):
                inner = self.project.info_plist(extension)
                # The system refuses another prefix, and Xcode warns of other versions.
                self.assertTrue(
                    inner["CFBundleIdentifier"].startswith(plist["CFBundleIdentifier"] + ".")
                )
                for key in ("CFBundleVersion", "CFBundleShortVersionString"):
                    self.assertEqual(inner[key], plist[key])


if __name__ == "__main__":
    unittest.main()
