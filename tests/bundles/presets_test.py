"""The properties of the presets for macOS that can be checked without a Mac."""

import re
import unittest

from darwin_project import SOURCE, presets

TRIPLET = SOURCE / "cmake/triplets/universal-osx-static.cmake"


def triplet():
    text = TRIPLET.read_text(encoding="utf-8")
    variables = re.findall(r"^set\((\w+) (.*)\)$", text, re.MULTILINE)
    return {name: value.strip('"') for name, value in variables}


class PresetsTest(unittest.TestCase):
    def test_the_presets_for_macos_are_offered_on_macos_only(self):
        for name in ("mac-release", "mac-xcode", "mac-dev"):
            with self.subTest(name):
                self.assertEqual(
                    presets()[name]["condition"],
                    {"type": "equals", "lhs": "${hostSystemName}", "rhs": "Darwin"},
                )

    def test_released_extensions_contain_their_libraries(self):
        # The sandbox lets an extension load no library from outside its bundle.
        for name in ("mac-release", "mac-xcode"):
            with self.subTest(name):
                preset = presets()[name]
                variables = preset["cacheVariables"]
                self.assertTrue(preset["toolchainFile"].endswith("/buildsystems/vcpkg.cmake"))
                self.assertEqual(variables["VCPKG_TARGET_TRIPLET"], TRIPLET.stem)
                folder = variables["VCPKG_OVERLAY_TRIPLETS"].replace("${sourceDir}", str(SOURCE))
                self.assertEqual(folder, str(TRIPLET.parent))
        self.assertEqual(triplet()["VCPKG_LIBRARY_LINKAGE"], "static")

    def test_the_libraries_are_for_the_processors_and_systems_of_the_extensions(self):
        project = (SOURCE / "CMakeLists.txt").read_text(encoding="utf-8")
        oldest = re.search(r"^set\(CMAKE_OSX_DEPLOYMENT_TARGET (\S+) CACHE", project, re.MULTILINE)
        # A later setting does not reach the compiler.
        self.assertLess(oldest.start(), project.index("\nproject("))
        self.assertEqual(triplet()["VCPKG_OSX_DEPLOYMENT_TARGET"], oldest[1])
        for name in ("mac-release", "mac-xcode"):
            with self.subTest(name):
                self.assertEqual(
                    presets()[name]["cacheVariables"]["CMAKE_OSX_ARCHITECTURES"],
                    triplet()["VCPKG_OSX_ARCHITECTURES"],
                )

    def test_released_builds_have_no_test_libraries(self):
        variables = presets()["mac-release"]["cacheVariables"]
        self.assertEqual(variables["CMAKE_BUILD_TYPE"], "Release")
        self.assertEqual(variables["VCPKG_MANIFEST_NO_DEFAULT_FEATURES"], "ON")
        self.assertNotIn("VELMORA_BUILD_TESTS", variables)

    def test_development_is_for_this_machine_with_all_tests(self):
        variables = presets()["mac-dev"]["cacheVariables"]
        self.assertEqual(variables["VELMORA_BUILD_TESTS"], "ON")
        self.assertNotIn("CMAKE_OSX_ARCHITECTURES", variables)

    def test_xcode_gets_an_xcode_project(self):
        self.assertEqual(presets()["mac-xcode"]["generator"], "Xcode")


if __name__ == "__main__":
    unittest.main()
