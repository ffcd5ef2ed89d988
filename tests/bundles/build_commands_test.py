"""The commands that a build on a Mac would run."""

import pathlib
import unittest

from darwin_project import ACTIONS, DarwinTestCase, EXTENSIONS, LANGUAGES, SOURCE, words_after

PRINCIPAL = SOURCE / "apps/macos/VelmoraFinderActionExtension.mm"
BOTH_PROCESSORS = ["arm64", "x86_64"]


class CompilingTest(DarwinTestCase):
    def of_extension(self, extension):
        """The compile commands of the extension's own sources."""
        return [
            compilation
            for compilation in self.project.compilations()
            if f"/{extension}.dir/" in compilation[1]
        ]

    def test_sources_are_compiled_for_both_processors_and_the_oldest_system(self):
        compilations = list(self.project.compilations())
        self.assertTrue(compilations)
        for source, _, command in compilations:
            with self.subTest(source.name):
                self.assertEqual(words_after(command, "-arch"), BOTH_PROCESSORS)
                self.assertIn("-mmacosx-version-min=11.0", command)
                self.assertIn("-std=c++20", command)

    def test_automatic_reference_counting_is_off(self):
        compilations = [entry for entry in self.project.compilations() if entry[0].suffix == ".mm"]
        self.assertTrue(compilations)
        for source, _, command in compilations:
            with self.subTest(source.name):
                self.assertIn("-fno-objc-arc", command)
                self.assertNotIn("-fobjc-arc", command)

    def test_both_extensions_have_the_same_sources(self):
        sources = [sorted(entry[0] for entry in self.of_extension(name)) for name in EXTENSIONS]
        self.assertIn(PRINCIPAL, sources[0])
        self.assertEqual(sources[0], sources[1])

    def test_both_extensions_are_compiled_in_the_same_way(self):
        def options(extension):
            # The commands without the names of their output files.
            return sorted(
                (source, [word for word in command if extension not in word])
                for source, _, command in self.of_extension(extension)
            )

        self.assertEqual(options(EXTENSIONS[0]), options(EXTENSIONS[1]))

    def test_the_compiler_refuses_calls_that_extensions_must_not_make(self):
        for extension in EXTENSIONS:
            for source, _, command in self.of_extension(extension):
                with self.subTest(extension=extension, source=source.name):
                    self.assertIn("-fapplication-extension", command)
        for source, _, command in self.project.compilations():
            if source.suffix == ".mm":
                with self.subTest(source.name):
                    self.assertIn("-fapplication-extension", command)

    def test_the_libraries_lack_only_the_sources_for_linux(self):
        folder = SOURCE / "src"
        sources = {
            path
            for suffix in ("cpp", "mm")
            for path in folder.rglob(f"*.{suffix}")
            if folder / "platform/linux" not in path.parents
        }
        compiled = {
            source for source, _, _ in self.project.compilations() if folder in source.parents
        }
        self.assertEqual(compiled, sources)

    def test_no_program_for_linux_is_built(self):
        compiled = {source for source, _, _ in self.project.compilations()}
        programs = {source for source in compiled if SOURCE / "apps" in source.parents}
        self.assertEqual({source.parent for source in programs}, {SOURCE / "apps/macos"})


class LinkingTest(DarwinTestCase):
    def test_the_entry_point_is_the_systems(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                command = " ".join(self.project.link_command(extension))
                # Compilers spell the linker's option differently.
                self.assertRegex(
                    command, " (-Xlinker -e -Xlinker |-Wl,-e,)_NSExtensionMain "
                )

    def test_the_linker_is_told_to_make_an_extension(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                command = self.project.link_command(extension)
                self.assertIn("-fapplication-extension", command)
                self.assertNotIn("-bundle", command)
                self.assertNotIn("-dynamiclib", command)

    def test_the_program_is_linked_for_both_processors_and_the_oldest_system(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                command = self.project.link_command(extension)
                self.assertEqual(words_after(command, "-arch"), BOTH_PROCESSORS)
                self.assertIn("-mmacosx-version-min=11.0", command)

    def test_the_principal_class_is_linked_as_an_object_file(self):
        # The system finds the class by its name, so the linker would not take it from a library.
        for extension in EXTENSIONS:
            with self.subTest(extension):
                objects = {
                    output
                    for source, output, _ in self.project.compilations()
                    if source == PRINCIPAL and f"/{extension}.dir/" in output
                }
                self.assertEqual(len(objects), 1)
                self.assertLessEqual(objects, set(self.project.link_command(extension)))

    def test_only_two_frameworks_are_linked(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                command = self.project.link_command(extension)
                self.assertEqual(set(words_after(command, "-framework")), {"Foundation", "AppKit"})
                self.assertEqual([word for word in command if ".framework" in word], [])
                self.assertEqual([word for word in command if "-weak" in word], [])

    def test_the_libraries_are_ours_and_three_others(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                command = self.project.link_command(extension)
                self.assertEqual([word for word in command if word.startswith("-l")], [])
                libraries = [
                    pathlib.PurePath(word)
                    for word in command
                    if word.endswith((".a", ".so", ".dylib", ".tbd"))
                ]
                ours = [path for path in libraries if path.name.startswith("libvelmora_")]
                self.assertTrue(ours)
                for path in ours:
                    self.assertEqual(path.suffix, ".a")
                    self.assertNotIn("linux", path.name)
                self.assertEqual(
                    {path.stem for path in libraries if path not in ours},
                    {"libsimdjson", "libutf8proc", "libxxhash"},
                )

    def test_no_library_path_of_the_build_is_kept(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                command = " ".join(self.project.link_command(extension))
                self.assertNotIn("rpath", command)

    def test_both_are_linked_in_the_same_way(self):
        commands = [
            " ".join(self.project.link_command(f"Finder{action}Action")).replace(action, "ACTION")
            for action in ACTIONS
        ]
        self.assertEqual(commands[0], commands[1])


class ResourcesTest(DarwinTestCase):
    def test_each_table_is_copied_to_its_language(self):
        for extension in EXTENSIONS:
            resources = f"bin/{extension}.appex/Contents/Resources"
            sources = {
                "InfoPlist.strings": f"apps/macos/{extension}",
                "Localizable.strings": f"{SOURCE}/resources",
            }
            expected = {
                f"{resources}/{language}.lproj/{name}": f"{folder}/{language}.lproj/{name}"
                for language in LANGUAGES
                for name, folder in sources.items()
            }
            with self.subTest(extension):
                self.assertEqual(self.project.resource_outputs(extension), sorted(expected))
            for output, source in expected.items():
                with self.subTest(output):
                    copy = self.project.command(output)
                    self.assertEqual(copy[1:], ["-E", "copy", source, output])


if __name__ == "__main__":
    unittest.main()
